#include "data/sets/range_index.h"

#include <algorithm>
#include <typeinfo>

namespace veltrane::data {

using MCVeltrane_900::Range;
using MCVeltrane_900::ScoreValueRange;

namespace {

/// A range of the library's own class; null for any other, whose operations may tell more than its bounds.
const Range* AsPlain(const ScoreValueRange& element) {
    return typeid(element) == typeid(Range) ? static_cast<const Range*>(&element) : nullptr;
}

} // namespace

RangePlaces::RangePlaces(const List& ranges) {
    elements.reserve(ranges.size());
    for (ScoreValueRange* range : ranges) {
        Add(*range);
    }
}

bool RangePlaces::IsTrue(const List& ranges) const {
    return std::all_of(ranges.begin(), ranges.end(), [](const ScoreValueRange* element) {
        const Range* range = AsPlain(*element);
        return !range || (Marks::IsMarked(Marks::Of(*range)) && Marks::IsUnchanged(range->GetMin()) &&
                          Marks::IsUnchanged(range->GetMax()));
    });
}

void RangePlaces::Add(ScoreValueRange& element) {
    const int place = static_cast<int>(elements.size());
    elements.push_back(&element);
    order.push_back(place);
    const Range* range = AsPlain(element);
    if (!range) {
        byMin.AddOther(place);
        byMax.AddOther(place);
        bySingleValue.AddOther(place);
        return;
    }
    Marks::Mark(Marks::Of(*range));
    Marks::MarkValue(range->GetMin());
    Marks::MarkValue(range->GetMax());
    byMin.Add(place, range->GetMin());
    byMax.Add(place, range->GetMax());
    if (range->fSingleValue) {
        bySingleValue.Add(place, range->GetMin());
    } else {
        intervals.Add(range->fMinNumber, range->fMaxNumber, range->fLowEnd, range->fHighEnd);
    }
}

int RangePlaces::Remove(int place) {
    RemoveKeys(place);
    const auto position = std::lower_bound(order.begin(), order.end(), place);
    return static_cast<int>(order.erase(position) - order.begin());
}

void RangePlaces::RemoveKeys(int place) {
    const Range* range = AsPlain(*elements[place]);
    if (!range) {
        byMin.RemoveOther(place);
        byMax.RemoveOther(place);
        bySingleValue.RemoveOther(place);
        return;
    }
    byMin.Remove(place, range->GetMin());
    byMax.Remove(place, range->GetMax());
    if (range->fSingleValue) {
        bySingleValue.Remove(place, range->GetMin());
    } else {
        intervals.Remove(range->fMinNumber, range->fMaxNumber, range->fLowEnd, range->fHighEnd);
    }
}

} // namespace veltrane::data
