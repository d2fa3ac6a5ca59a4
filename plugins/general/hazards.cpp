#include "hazards.h"

#include "amount.h"
#include "kit/document/raise.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace veltrane_general {

using veltrane_kit::CaseView;
using veltrane_kit::Element;
using veltrane_kit::Message;
using veltrane_kit::ModelParts;
using veltrane_kit::Narrow;
using veltrane_kit::Raise;

namespace {

constexpr const XMLCh* kTime = u"time";
constexpr const XMLCh* kHazard = u"cumHazard";
constexpr const XMLCh* kEndTime = u"endTimeVariable";
constexpr const XMLCh* kStrata = u"baselineStrataVariable";
constexpr const XMLCh* kValue = u"value";

struct ReadCell {
    double time;
    double hazard;
    Element element;
};

/// Time goes up, and what has accumulated until then doesn't go down.
void CheckOrder(const std::vector<ReadCell>& cells, const Element& parent) {
    for (std::size_t i = 1; i < cells.size(); ++i) {
        const Element& element = cells[i].element;
        if (cells[i].time == cells[i - 1].time) {
            Raise<Message::DUPLICATE_DEFINITION>(element.Tag(), element.Text(kTime), parent.Tag());
        }
        if (cells[i].hazard < cells[i - 1].hazard) {
            Raise<Message::VALUE_NOT_ASCENDING>(element.Text(kHazard), Narrow(kHazard), element.Tag(),
                                                cells[i - 1].element.Text(kHazard));
        }
    }
}

/// The slot of the time until which a case runs. Where that is the target, it is what the case itself has for it.
int RequireTime(const Element& element, ModelParts& parts) {
    const std::string& target = parts.schema.target;
    const bool isTarget = element.Has(kEndTime) && !target.empty() && element.Text(kEndTime) == target;
    const int slot = isTarget ? parts.inputs->WatchTarget(target) : veltrane_kit::Inputs::kNoSlot;
    return slot == veltrane_kit::Inputs::kNoSlot ? RequireNumber(element, kEndTime, *parts.inputs)
                                                 : RequireNumber(element, kEndTime, slot, *parts.inputs);
}

} // namespace

Baseline::Baseline(const Element& element) : fMaxTime(element.Number(u"maxTime")) {
    std::vector<ReadCell> cells;
    for (const Element child : element.Children()) {
        if (!child.Is(u"BaselineCell")) {
            child.RaiseMisplaced();
        }
        cells.push_back({child.Number(kTime), child.Number(kHazard), child});
        if (cells.back().hazard < 0.0) {
            child.RaiseInvalid(kHazard);
        }
    }
    std::stable_sort(cells.begin(), cells.end(), [](const ReadCell& a, const ReadCell& b) { return a.time < b.time; });
    CheckOrder(cells, element);
    for (const ReadCell& cell : cells) {
        fCells.push_back({cell.time, cell.hazard});
    }
}

double Baseline::At(double time) const {
    if (!(time <= fMaxTime)) {
        return kLacks;
    }
    const auto later = std::upper_bound(fCells.begin(), fCells.end(), time,
                                        [](double at, const Cell& cell) { return at < cell.time; });
    return later == fCells.begin() ? 0.0 : (later - 1)->hazard;
}

Hazards::Hazards(const Element& element, ModelParts& parts) : fTimeSlot(RequireTime(element, parts)) {
    const Element tables = element.RequireChild(u"BaseCumHazardTables");
    if (element.Has(kStrata)) {
        fStrataSlot = parts.inputs->RequireSlot(element, kStrata);
        ReadStrata(tables, parts);
        return;
    }
    if (!tables.FirstChild()) {
        Raise<Message::NO_CHILD_ELEMENT>(tables.Tag());
    }
    fBaselines.emplace_back(tables);
}

void Hazards::ReadStrata(const Element& tables, ModelParts& parts) {
    for (const Element child : tables.Children()) {
        if (!child.Is(u"BaselineStratum")) {
            child.RaiseMisplaced();
        }
        const int stratum = parts.inputs->CategoryOf(fStrataSlot, child, kValue);
        if (!fPlaces.emplace(stratum, fBaselines.size()).second) {
            Raise<Message::DUPLICATE_DEFINITION>(child.Tag(), child.AnyText(kValue), tables.Tag());
        }
        fBaselines.emplace_back(child);
    }
    if (fBaselines.empty()) {
        Raise<Message::NO_CHILD_ELEMENT>(tables.Tag());
    }
}

int Hazards::LackingSlot(const CaseView& fields) const {
    if (fields.IsMissing(fTimeSlot)) {
        return fTimeSlot;
    }
    return fStrataSlot != kNoSlot && fields.IsMissing(fStrataSlot) ? fStrataSlot : kNoSlot;
}

} // namespace veltrane_general
