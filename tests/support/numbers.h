#ifndef VELTRANE_TESTS_SUPPORT_NUMBERS_H
#define VELTRANE_TESTS_SUPPORT_NUMBERS_H

#include <limits>

namespace veltrane::tests {

inline constexpr double kInfinity = std::numeric_limits<double>::infinity();
inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// The number that stands for a missing one, as documents and hosts write it.
inline constexpr double kMissing = -1.7976931348623157e+308;

} // namespace veltrane::tests

#endif
