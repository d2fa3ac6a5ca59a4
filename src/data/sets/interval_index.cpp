#include "data/sets/interval_index.h"

#include "data/values/number_tests.h"

#include <algorithm>
#include <cmath>

namespace veltrane::data {

namespace {

/// Wider than the relative tolerance of numeric equality.
constexpr double kWindow = 1.1 * kEqualityTolerance;

} // namespace

void IntervalIndex::Add(double low, double high, bool lowIncluded, bool highIncluded) {
    if (low < high) {
        fLows.Add(low);
        fHighs.Add(high);
    }
    if (lowIncluded) {
        AddEnd(low);
    }
    if (highIncluded) {
        AddEnd(high);
    }
}

void IntervalIndex::Remove(double low, double high, bool lowIncluded, bool highIncluded) {
    if (low < high) {
        fLows.Remove(low);
        fHighs.Remove(high);
    }
    if (lowIncluded) {
        RemoveEnd(low);
    }
    if (highIncluded) {
        RemoveEnd(high);
    }
}

/// An infinity and a NaN are equal to nothing.
void IntervalIndex::AddEnd(double end) {
    if (std::isfinite(end)) {
        ++fIncludedEnds[end];
    }
}

void IntervalIndex::RemoveEnd(double end) {
    const auto found = std::isfinite(end) ? fIncludedEnds.find(end) : fIncludedEnds.end();
    if (found != fIncludedEnds.end() && --found->second == 0) {
        fIncludedEnds.erase(found);
    }
}

bool IntervalIndex::Holds(double number) const {
    if (std::isnan(number)) {
        return false;
    }
    if (fLows.CountBelow(number) > fHighs.CountUpTo(number)) {
        return true;
    }
    if (!std::isfinite(number)) {
        return false;
    }
    const double window = std::abs(number) * kWindow;
    const auto end = fIncludedEnds.upper_bound(number + window);
    return std::any_of(fIncludedEnds.lower_bound(number - window), end,
                       [number](const auto& included) { return AreEqualNumbers(number, included.first); });
}

} // namespace veltrane::data
