#ifndef VELTRANE_DATA_NUMBER_TESTS_H
#define VELTRANE_DATA_NUMBER_TESTS_H

#include <MCVeltrane_900/NumericValue.h>

#include <algorithm>
#include <cmath>

/// The tests of NumericValue on plain doubles, for what asks them many times in a case.
namespace veltrane::data {

/// The number of a plain NumericValue, the same as its GetDouble() without the call.
struct StoredNumber {
    static double Of(const MCVeltrane_900::NumericValue& value) { return value.fValue; }

    static constexpr double kMissing = MCVeltrane_900::NumericValue::gSysmisValue;
    static constexpr double kTolerance = MCVeltrane_900::NumericValue::fEpsilon;
};

inline constexpr double kMissingNumber = StoredNumber::kMissing;
inline constexpr double kEqualityTolerance = StoredNumber::kTolerance;

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
