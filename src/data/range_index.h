#ifndef VELTRANE_DATA_RANGE_INDEX_H
#define VELTRANE_DATA_RANGE_INDEX_H

#include "data/interval_index.h"
#include "data/value_index.h"

namespace veltrane::data {

/// Narrows the search in a long list of ranges: for an equal one, and for one that holds a value.
struct RangeIndex {
    /// By the bounds, which equal ranges have in common.
    ValueIndex byMin;
    ValueIndex byMax;
    /// By the value of a range that is a single value; those of other classes are visited in every search.
    ValueIndex bySingleValue;
    /// The ranges that are more than a single value.
    IntervalIndex intervals;

    /// Visits the ranges that may have these bounds, by the bound that fewer of them share, up to the first one for
    /// which visit(position) is true.
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

private:
    static bool HasMoreThan(int limit, const ValueIndex& index, const MCVeltrane_900::ScoreValue& bound) {
        int count = 0;
        return index.SearchUntil(bound, [&count, limit](int) { return ++count > limit; });
    }
};

} // namespace veltrane::data

#endif
