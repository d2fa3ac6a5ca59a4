#include "baseline_scorer.h"

#include "kit/document/common_elements.h"
#include "kit/document/raise.h"

#include <cmath>
#include <ostream>

namespace veltrane_baseline {

using veltrane_kit::CaseView;
using veltrane_kit::Element;
using veltrane_kit::Message;
using veltrane_kit::ModelParts;
using veltrane_kit::Prediction;
using veltrane_kit::Raise;
using veltrane_kit::Target;

BaselineScorer::BaselineScorer(const Element& element, ModelParts& parts) {
    if (parts.IsClassification()) {
        Raise<Message::UNSUPPORTED_VALUE_IN>(element.Text(u"functionName"), "functionName", element.Tag(),
                                             "regression");
    }
    for (const Element child : element.Children()) {
        if (!child.Is(u"TestDistributions")) {
            veltrane_kit::RequireCommonElement(child);
        }
    }
    fTest = BaselineReader(parts).Read(element.RequireChild(u"TestDistributions"));
}

struct BaselineScorer::Memory : State {
    Event event;
    std::unique_ptr<Statistic::Memory> memory;
};

std::unique_ptr<veltrane_kit::Scorer::State> BaselineScorer::NewState() const {
    auto state = std::make_unique<Memory>();
    state->event.values.resize(fTest.slots.size());
    state->memory = fTest.statistic->NewMemory();
    return state;
}

/// A case that lacks a value, or whose weight is negative, isn't one for the test.
bool BaselineScorer::Predict(const CaseView& fields, Prediction& prediction, State& state) const {
    prediction.lacking = LackingSlot(fields);
    if (prediction.lacking != Prediction::kNoSlot) {
        return false;
    }
    auto& own = static_cast<Memory&>(state);
    for (std::size_t i = 0; i < fTest.slots.size(); ++i) {
        const std::int32_t value = fields.Category(fTest.slots[i]);
        own.event.values[i] = fTest.mentioned[i].count(value) > 0 ? value : Event::kOther;
    }
    own.event.number = fTest.slots.empty() ? fields.Number(fTest.slot) : 0.0;
    own.event.weight = fTest.weightSlot == BaselineTest::kNoSlot ? 1.0 : fields.Number(fTest.weightSlot);
    if (!std::isfinite(own.event.number) || !std::isfinite(own.event.weight) || own.event.weight < 0.0) {
        return false;
    }
    prediction.number = fTest.statistic->Test(own.event, *own.memory);
    return prediction.number != Statistic::kNone && std::isfinite(prediction.number);
}

int BaselineScorer::LackingSlot(const CaseView& fields) const {
    if (fields.IsMissing(fTest.slot)) {
        return fTest.slot;
    }
    for (const int slot : fTest.slots) {
        if (fields.IsMissing(slot)) {
            return slot;
        }
    }
    const bool hasWeight = fTest.weightSlot != BaselineTest::kNoSlot;
    return hasWeight && fields.IsMissing(fTest.weightSlot) ? fTest.weightSlot : Prediction::kNoSlot;
}

void BaselineScorer::Display(std::ostream& out, const Target& /*target*/) const {
    out << "test: " << fTest.name << "\n";
}

std::unique_ptr<const veltrane_kit::Scorer> MakeBaselineScorer(const Element& element, ModelParts& parts) {
    return std::make_unique<const BaselineScorer>(element, parts);
}

} // namespace veltrane_baseline
