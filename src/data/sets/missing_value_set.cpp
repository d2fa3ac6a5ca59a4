#include "data/sets/range_index.h"
#include "data/values/value_cast.h"

#include <MCVeltrane_900/MissingValueSet.h>
#include <MCVeltrane_900/Range.h>
#include <MCVeltrane_900/ScoreValueRange.h>

#include <algorithm>

namespace MCVeltrane_900 {

namespace {

/// A shorter list is searched from end to end.
constexpr int kIndexedFrom = 16;

} // namespace

MissingValueSet::MissingValueSet() = default;

MissingValueSet::MissingValueSet(const MissingValueSet& other) : ScoreMissingValueSet(other), fRanges(other.fRanges) {
    MakeIndex();
}

MissingValueSet& MissingValueSet::operator=(const MissingValueSet& other) {
    if (this != &other) {
        fIndex.reset();
        fRanges = other.fRanges;
        MakeIndex();
    }
    return *this;
}

MissingValueSet::~MissingValueSet() = default;

ScoreMissingValueSet* MissingValueSet::Clone() const {
    return new MissingValueSet(*this);
}

bool MissingValueSet::Add(ScoreValueRange* range) {
    if (!range || Contains(range)) {
        return false;
    }
    fRanges.Items().push_back(range);
    if (fIndex) {
        fIndex->Any().Add(*range);
    } else {
        MakeIndex();
    }
    return true;
}

bool MissingValueSet::Remove(const ScoreValueRange* range) {
    if (!range) {
        return false;
    }
    // The argument may be one of the elements, so nothing is deleted before the last comparison.
    const std::vector<ScoreValueRange*> doomed = TakeOut(*range);
    for (const ScoreValueRange* element : doomed) {
        delete element;
    }
    if (Size() < kIndexedFrom) {
        fIndex.reset();
    }
    return !doomed.empty();
}

/// The ranges that are equal to the given one, which the set has no more.
std::vector<ScoreValueRange*> MissingValueSet::TakeOut(const ScoreValueRange& range) {
    auto& ranges = fRanges.Items();
    std::vector<ScoreValueRange*> taken;
    veltrane::data::RangePlaces* places = fIndex ? fIndex->GetToChange(ranges) : nullptr;
    const ScoreValue* min = places ? range.GetMin() : nullptr;
    const ScoreValue* max = places ? range.GetMax() : nullptr;
    if (!min || !max) {
        const auto isKept = [&range](const ScoreValueRange* element) { return !(*element == range); };
        const auto kept = std::stable_partition(ranges.begin(), ranges.end(), isKept);
        taken.assign(kept, ranges.end());
        ranges.erase(kept, ranges.end());
        if (fIndex && !taken.empty()) {
            fIndex->Forget();
        }
        return taken;
    }
    std::vector<int> found;
    places->SearchUntil(*min, *max, [&](int place) {
        if (*places->elements[place] == range) {
            found.push_back(place);
        }
        return false;
    });
    for (const int place : found) {
        taken.push_back(places->elements[place]);
        ranges.erase(ranges.begin() + places->Remove(place));
    }
    if (places->IsWorn(ranges.size())) {
        MakeIndex();
    }
    return taken;
}

int MissingValueSet::Size() const {
    return fRanges.Size();
}

bool MissingValueSet::Contains(const ScoreValueRange* range) const {
    if (!range) {
        return false;
    }
    const auto& ranges = fRanges.Items();
    const veltrane::data::RangePlaces* places = FindPlaces();
    const ScoreValue* min = places ? range->GetMin() : nullptr;
    const ScoreValue* max = places ? range->GetMax() : nullptr;
    if (!min || !max) {
        return std::any_of(ranges.begin(), ranges.end(),
                           [range](const ScoreValueRange* element) { return *element == *range; });
    }
    return places->SearchUntil(*min, *max, [&](int place) { return *places->elements[place] == *range; });
}

std::vector<const ScoreValueRange*> MissingValueSet::GetMissingValues() const {
    return {fRanges.Items().begin(), fRanges.Items().end()};
}

void MissingValueSet::Display(std::ostream& out) const {
    out << " Begin MissingValueSet Display:\n";
    for (const ScoreValueRange* range : fRanges.Items()) {
        range->Display(out);
    }
    out << "End MissingValueSet Display.\n";
}

bool MissingValueSet::IsInAnyRange(const ScoreValue* value) const {
    const auto& ranges = fRanges.Items();
    const auto* places = value && veltrane::data::AgreesWithIndex(*value) ? FindPlaces() : nullptr;
    if (!places) {
        return std::any_of(ranges.begin(), ranges.end(),
                           [value](const ScoreValueRange* range) { return range->IsInRange(value); });
    }
    const bool isNumber = veltrane::data::IsNumber(*value) || veltrane::data::IsDateTime(*value);
    if (isNumber && !value->IsSystemMissingValue() && places->intervals.Holds(value->GetDouble())) {
        return true;
    }
    return places->bySingleValue.FindLowest(*value, [&](int place) {
        return places->elements[place]->IsInRange(value);
    }) != veltrane::data::ValueIndex::kNowhere;
}

/// Null when the ranges have to be walked.
const veltrane::data::RangePlaces* MissingValueSet::FindPlaces() const {
    return fIndex ? fIndex->Get(fRanges.Items()) : nullptr;
}

void MissingValueSet::MakeIndex() {
    fIndex.reset();
    if (Size() >= kIndexedFrom) {
        fIndex = std::make_unique<veltrane::data::RangeIndex>(fRanges.Items());
    }
}

} // namespace MCVeltrane_900
