#ifndef VELTRANE_HOST_PLAIN_NUMBER_H
#define VELTRANE_HOST_PLAIN_NUMBER_H

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace veltrane::host {

/// The powers of ten that doubles hold exactly.
inline constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                          1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

/// Reads a number as nearly all cells write one: an optional sign and digits, with a point among or around them. Such a
/// number is a whole one divided by a power of ten, which one division rounds as it should be if a double holds both.
/// @return false, and `number` untouched, for any other text; ReadNumber reads those too
inline bool ReadPlainNumber(std::string_view text, double& number) {
    constexpr std::size_t kMostDigits = 19; // that any 64 bits hold
    constexpr std::uint64_t kLargestWhole = std::uint64_t{1} << 53;
    const char* at = text.data();
    const char* const end = at + text.size();
    const bool isSigned = at != end && (*at == '-' || *at == '+');
    const bool isNegative = isSigned && *at == '-';
    at += isSigned ? 1 : 0;
    std::uint64_t whole = 0;
    const auto readDigits = [&] {
        const char* const first = at;
        for (; at != end && static_cast<unsigned char>(*at - '0') < 10; ++at) {
            whole = whole * 10 + static_cast<unsigned char>(*at - '0');
        }
        return static_cast<std::size_t>(at - first);
    };
    std::size_t digits = readDigits();
    std::size_t decimals = 0;
    if (at != end && *at == '.') {
        ++at;
        decimals = readDigits();
        digits += decimals;
    }
    if (at != end || digits == 0 || digits > kMostDigits || whole > kLargestWhole) {
        return false;
    }
    const double read = static_cast<double>(whole) / kPowersOfTen[decimals];
    number = isNegative ? -read : read;
    return true;
}

} // namespace veltrane::host

#endif
