#include "data/sets/range_index.h"
#include "data/values/value_cast.h"

#include <MCVeltrane_900/MissingValueSet.h>
#include <MCVeltrane_900/Range.h>
#include <MCVeltrane_900/ScoreValueRange.h>

#include <algorithm>

namespace MCVeltrane_900 {

namespace {

/// A shorter list is searched from end to end.
constexpr std::size_t kIndexedFrom = 16;

using Ranges = std::vector<ScoreValueRange*>;
using Index = std::unique_ptr<veltrane::data::RangeIndex>;

Index IndexOf(const Ranges& ranges) {
    return ranges.size() < kIndexedFrom ? nullptr : std::make_unique<veltrane::data::RangeIndex>(ranges);
}

/// Null when the ranges have to be walked.
const veltrane::data::RangePlaces* FindPlaces(const Ranges& ranges, const Index& index) {
    return index ? index->Get(ranges) : nullptr;
}

/// The ranges that are equal to the given one, which the set has no more.
std::vector<ScoreValueRange*> TakeOut(Ranges& ranges, Index& index, const ScoreValueRange& range) {
    std::vector<ScoreValueRange*> taken;
    veltrane::data::RangePlaces* places = index ? index->GetToChange(ranges) : nullptr;
    const ScoreValue* min = places ? range.GetMin() : nullptr;
    const ScoreValue* max = places ? range.GetMax() : nullptr;
    if (!min || !max) {
        const auto isKept = [&range](const ScoreValueRange* element) { return !(*element == range); };
        const auto kept = std::stable_partition(ranges.begin(), ranges.end(), isKept);
        taken.assign(kept, ranges.end());
        ranges.erase(kept, ranges.end());
        if (index && !taken.empty()) {
            index->Forget();
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
        index = IndexOf(ranges);
    }
    return taken;
}

} // namespace

MissingValueSet::MissingValueSet() = default;

MissingValueSet::MissingValueSet(const MissingValueSet& other) : ScoreMissingValueSet(other), fRanges(other.fRanges) {
    fIndex = IndexOf(fRanges.Items());
}

MissingValueSet& MissingValueSet::operator=(const MissingValueSet& other) {
    if (this != &other) {
        fIndex.reset();
        fRanges = other.fRanges;
        fIndex = IndexOf(fRanges.Items());
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
        fIndex = IndexOf(fRanges.Items());
    }
    return true;
}

bool MissingValueSet::Remove(const ScoreValueRange* range) {
    if (!range) {
        return false;
    }
    // The argument may be one of the elements, so nothing is deleted before the last comparison.
    const std::vector<ScoreValueRange*> doomed = TakeOut(fRanges.Items(), fIndex, *range);
    for (const ScoreValueRange* element : doomed) {
        delete element;
    }
    if (fRanges.Items().size() < kIndexedFrom) {
        fIndex.reset();
    }
    return !doomed.empty();
}

int MissingValueSet::Size() const {
    return fRanges.Size();
}

bool MissingValueSet::Contains(const ScoreValueRange* range) const {
    if (!range) {
        return false;
    }
    const auto& ranges = fRanges.Items();
    const veltrane::data::RangePlaces* places = FindPlaces(ranges, fIndex);
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
    const auto* places = value && veltrane::data::AgreesWithIndex(*value) ? FindPlaces(ranges, fIndex) : nullptr;
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

} // namespace MCVeltrane_900
