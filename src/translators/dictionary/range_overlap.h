#ifndef VELTRANE_TRANSLATORS_RANGE_OVERLAP_H
#define VELTRANE_TRANSLATORS_RANGE_OVERLAP_H

#include <vector>

namespace veltrane::translators {

/// One bin's interval as numbers; either bound may be infinite, neither is a NaN.
struct BinRange {
    double low;
    double high;
    bool lowIncluded;
    bool highIncluded;
};

/// Whether any two of the ranges intersect. For a range `a` and a later one `b` that means any of:
///
/// 1. `a` and `b` have the same bounds, whatever their ends;
/// 2. the low end of one lies strictly between the bounds of the other;
/// 3. the high end of `a` lies strictly between the bounds of `b` - but not the other way round, so that a range passes
///    that starts where an earlier, longer one starts;
/// 4. the low end of one is the high end of the other, and both include it.
///
/// Bounds need not be in order. Takes O(n log n) steps; the pairs are not compared one by one.
bool AnyIntersect(const std::vector<BinRange>& ranges);

} // namespace veltrane::translators

#endif
