#ifndef VELTRANE_TRANSFORM_NUMBERS_MISSING_H
#define VELTRANE_TRANSFORM_NUMBERS_MISSING_H

#include "data/values/number_tests.h"

#include <bit>
#include <cstdint>

namespace veltrane::functions {

/// The system-missing number.
inline constexpr double kMissing = data::kMissingNumber;

/// Exact: a NaN is no missing number. No other number equals the missing one, so that its bits tell, without the second
/// question that a comparison of doubles asks for a NaN.
constexpr bool IsMissing(double x) {
    return std::bit_cast<std::uint64_t>(x) == std::bit_cast<std::uint64_t>(kMissing);
}

/// Whether a number truncates into 32 bits. Both ends are excluded; a NaN does not fit.
constexpr bool FitsInt32(double x) {
    return -2147483648.0 < x && x < 2147483647.0;
}

} // namespace veltrane::functions

#endif
