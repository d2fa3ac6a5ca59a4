#include "data/interval_index.h"

#include "data/number_tests.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace veltrane::data {

namespace {

/// Wider than the relative tolerance of numeric equality.
constexpr double kWindow = 1.1 * kEqualityTolerance;

} // namespace

void IntervalIndex::Add(double low, double high, bool lowIncluded, bool highIncluded) {
    if (low < high) {
        AddInside(low, high);
    }
    if (lowIncluded) {
        AddEnd(low);
    }
    if (highIncluded) {
        AddEnd(high);
    }
}

// Two open intervals that overlap are together one. Two that only share an end are not: the end is in neither.
void IntervalIndex::AddInside(double low, double high) {
    auto next = fInsides.upper_bound(low);
    if (next != fInsides.begin()) {
        const auto before = std::prev(next);
        if (before->second > low) {
            low = before->first;
            high = std::max(high, before->second);
            next = fInsides.erase(before);
        }
    }
    while (next != fInsides.end() && next->first < high) {
        high = std::max(high, next->second);
        next = fInsides.erase(next);
    }
    fInsides[low] = high;
}

/// An infinity and a NaN are equal to nothing.
void IntervalIndex::AddEnd(double end) {
    if (std::isfinite(end)) {
        fIncludedEnds.insert(end);
    }
}

bool IntervalIndex::Holds(double number) const {
    const auto behind = fInsides.lower_bound(number);
    if (behind != fInsides.begin() && number < std::prev(behind)->second) {
        return true;
    }
    if (!std::isfinite(number)) {
        return false;
    }
    const double window = std::abs(number) * kWindow;
    const auto end = fIncludedEnds.upper_bound(number + window);
    return std::any_of(fIncludedEnds.lower_bound(number - window), end,
                       [number](double included) { return AreEqualNumbers(number, included); });
}

} // namespace veltrane::data
