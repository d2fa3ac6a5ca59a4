#ifndef VELTRANE_TESTS_SUPPORT_NUMBERS_H
#define VELTRANE_TESTS_SUPPORT_NUMBERS_H

#include <bit>
#include <cstdint>
#include <limits>

namespace veltrane::tests {

inline constexpr double kInfinity = std::numeric_limits<double>::infinity();
inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// The number that stands for a missing one, as documents and hosts write it.
inline constexpr double kMissing = -1.7976931348623157e+308;

/// What tells zeros of either sign and numbers that aren't any from each other.
inline std::uint64_t Bits(double number) {
    return std::bit_cast<std::uint64_t>(number);
}

} // namespace veltrane::tests

#endif
