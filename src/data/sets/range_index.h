#ifndef VELTRANE_DATA_RANGE_INDEX_H
#define VELTRANE_DATA_RANGE_INDEX_H

#include "data/sets/interval_index.h"
#include "data/sets/kept_index.h"
#include "data/sets/value_index.h"

#include <MCVeltrane_900/Range.h>

#include <vector>

namespace veltrane::data {

/// Narrows the search in a long list of ranges: for an equal one, and for one that holds a value.
struct RangePlaces {
    using List = std::vector<MCVeltrane_900::ScoreValueRange*>;

    explicit RangePlaces(const List& ranges);

    bool IsTrue(const List& ranges) const;

    void Add(MCVeltrane_900::ScoreValueRange& element);
    /// @return the position that the list has for this place
    int Remove(int place);

    /// Whether so many ranges have been taken out that it's time for a new index.
    bool IsWorn(std::size_t size) const { return elements.size() > 2 * size + 64; }

    /// Visits the places of the ranges that may have these bounds, by the bound that fewer of them share, up to the
    /// first one for which visit(place) is true.
    /// @return whether there was one
    template <typename Visit>
    bool SearchUntil(const MCVeltrane_900::ScoreValue& min, const MCVeltrane_900::ScoreValue& max, Visit visit) const {
        for (int limit = 16;; limit *= 2) {
            if (!HasMoreThan(limit, byMin, min)) {
                return byMin.SearchUntil(min, visit);
            }
            if (!HasMoreThan(limit, byMax, max)) {
                return byMax.SearchUntil(max, visit);
            }
        }
    }

    /// The places in the order of the list.
    std::vector<int> order;
    /// What stands at a place, or stood there: places aren't given twice.
    std::vector<MCVeltrane_900::ScoreValueRange*> elements;
    /// By the bounds, which equal ranges have in common.
    ValueIndex byMin;
    ValueIndex byMax;
    /// By the value of a range that is a single value; those of other classes are visited in every search.
    ValueIndex bySingleValue;
    /// The ranges that are more than a single value.
    IntervalIndex intervals;

private:
    void RemoveKeys(int place);

    static bool HasMoreThan(int limit, const ValueIndex& index, const MCVeltrane_900::ScoreValue& bound) {
        int count = 0;
        return index.SearchUntil(bound, [&count, limit](int) { return ++count > limit; });
    }
};

/// The index of a set of ranges.
class RangeIndex : public KeptIndex<RangePlaces> {
public:
    using KeptIndex::KeptIndex;
};

} // namespace veltrane::data

#endif
