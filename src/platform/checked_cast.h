#ifndef VELTRANE_PLATFORM_CHECKED_CAST_H
#define VELTRANE_PLATFORM_CHECKED_CAST_H

#include <cstdint>
#include <limits>

/// Conversions of a double to an integer with a result for every double. What doesn't fit, a NaN and the system-missing
/// number included, gives the "integer indefinite" of the processor: the smallest integer. Results depend on it, so it
/// stands here in place of the undefined behaviour of a plain conversion.
namespace veltrane::platform {

/// Truncates toward zero; INT32_MIN for what leaves the range of 32 bits.
constexpr std::int32_t TruncateToInt32(double value) {
    return value > -2147483649.0 && value < 2147483648.0 ? static_cast<std::int32_t>(value)
                                                         : std::numeric_limits<std::int32_t>::min();
}

/// Truncates toward zero; INT64_MIN for what leaves the range of 64 bits.
constexpr std::int64_t TruncateToInt64(double value) {
    return value >= -0x1p63 && value < 0x1p63 ? static_cast<std::int64_t>(value)
                                              : std::numeric_limits<std::int64_t>::min();
}

} // namespace veltrane::platform

#endif
