#ifndef VELTRANE_DATA_RANGE_INDEX_H
#define VELTRANE_DATA_RANGE_INDEX_H

#include "data/interval_index.h"
#include "data/value_index.h"

namespace veltrane::data {

/// Narrows the search in a long list of ranges: for an equal one, and for one that holds a value.
struct RangeIndex {
    /// By the lower bound, which equal ranges have in common.
    ValueIndex byMin;
    /// By the value of a range that is a single value; those of other classes are visited in every search.
    ValueIndex bySingleValue;
    /// The ranges that are more than a single value.
    IntervalIndex intervals;
};

} // namespace veltrane::data

#endif
