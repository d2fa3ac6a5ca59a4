#ifndef VELTRANE_DATA_NUMBER_TESTS_H
#define VELTRANE_DATA_NUMBER_TESTS_H

#include <algorithm>
#include <cmath>
#include <limits>

/// The tests of NumericValue on plain doubles, for what asks them many times in a case.
namespace veltrane::data {

inline constexpr double kMissingNumber = -std::numeric_limits<double>::max();
inline constexpr double kEqualityTolerance = 2.22045e-14;

/// The absolute tolerance of the ordering operators.
inline constexpr double kOrderTolerance = 1e-14;

/// NumericValue::IsSystemMissingValue: an absolute tolerance by contract, although at this magnitude only the number
/// itself lies within it.
inline bool IsMissingNumber(double value) {
    return kEqualityTolerance > std::fabs(value - kMissingNumber);
}

/// NumericValue::IsEqual.
inline bool AreEqualNumbers(double a, double b) {
    if (a == 0 && b == 0) {
        return true;
    }
    if (a == kMissingNumber || b == kMissingNumber) {
        return a == b;
    }
    const double tolerance = std::max(std::fabs(a), std::fabs(b)) * kEqualityTolerance;
    return tolerance > std::fabs(a - b);
}

} // namespace veltrane::data

#endif
