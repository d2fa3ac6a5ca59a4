#include "data/range_index.h"
#include "data/value_cast.h"

#include <MCVeltrane_900/MissingValueSet.h>
#include <MCVeltrane_900/Range.h>
#include <MCVeltrane_900/ScoreValueRange.h>

#include <algorithm>
#include <typeinfo>

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
        AddToIndex(Size() - 1);
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
    auto& ranges = fRanges.Items();
    const auto doomed = std::stable_partition(
        ranges.begin(), ranges.end(), [range](const ScoreValueRange* element) { return !(*element == *range); });
    const bool found = doomed != ranges.end();
    std::for_each(doomed, ranges.end(), [](const ScoreValueRange* element) { delete element; });
    ranges.erase(doomed, ranges.end());
    if (found) {
        MakeIndex();
    }
    return found;
}

int MissingValueSet::Size() const {
    return fRanges.Size();
}

bool MissingValueSet::Contains(const ScoreValueRange* range) const {
    if (!range) {
        return false;
    }
    const auto& ranges = fRanges.Items();
    const ScoreValue* min = fIndex ? range->GetMin() : nullptr;
    const ScoreValue* max = fIndex ? range->GetMax() : nullptr;
    if (!min || !max) {
        return std::any_of(ranges.begin(), ranges.end(),
                           [range](const ScoreValueRange* element) { return *element == *range; });
    }
    return fIndex->SearchUntil(*min, *max, [&](int position) { return *ranges[position] == *range; });
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
    if (!fIndex || !value || !veltrane::data::AgreesWithIndex(*value)) {
        return std::any_of(ranges.begin(), ranges.end(),
                           [value](const ScoreValueRange* range) { return range->IsInRange(value); });
    }
    const bool isNumber = veltrane::data::IsNumber(*value) || veltrane::data::IsDateTime(*value);
    if (isNumber && !value->IsSystemMissingValue() && fIndex->intervals.Holds(value->GetDouble())) {
        return true;
    }
    return fIndex->bySingleValue.SearchUntil(*value, [&](int position) { return ranges[position]->IsInRange(value); });
}

void MissingValueSet::MakeIndex() {
    fIndex.reset();
    if (Size() >= kIndexedFrom) {
        fIndex = std::make_unique<veltrane::data::RangeIndex>();
        for (int position = 0; position < Size(); ++position) {
            AddToIndex(position);
        }
    }
}

void MissingValueSet::AddToIndex(int position) {
    ScoreValueRange& element = *fRanges.Items()[position];
    if (typeid(element) != typeid(Range)) {
        fIndex->byMin.AddOther(position);
        fIndex->byMax.AddOther(position);
        fIndex->bySingleValue.AddOther(position);
        return;
    }
    auto& range = static_cast<Range&>(element);
    range.fIndexedIn.fSet = this;
    fIndex->byMin.Add(position, range.GetMin());
    fIndex->byMax.Add(position, range.GetMax());
    if (range.fSingleValue) {
        fIndex->bySingleValue.Add(position, range.GetMin());
    } else {
        fIndex->intervals.Add(range.fMinNumber, range.fMaxNumber, range.fLowEnd, range.fHighEnd);
    }
}

void MissingValueSet::DropIndex() {
    fIndex.reset();
}

} // namespace MCVeltrane_900
