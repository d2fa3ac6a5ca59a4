#include "run/error_limit.h"

#include <charconv>

namespace veltrane::host {
namespace {

constexpr std::size_t kDecimals = 9;
constexpr std::uint64_t kOnePercent = 1'000'000'000;
constexpr std::uint64_t kLargestShare = 100 * kOnePercent;

/// A product of two numbers of rows fits.
__extension__ using Wide = unsigned __int128;

std::optional<std::uint64_t> Digits(std::string_view text) {
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (text.empty() || error != std::errc() || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return number;
}

/// A decimal number in billionths.
std::optional<std::uint64_t> Billionths(std::string_view text) {
    const std::size_t point = text.find('.');
    const std::optional<std::uint64_t> whole = Digits(text.substr(0, point));
    if (!whole || *whole > 100) {
        return std::nullopt;
    }
    if (point == text.npos) {
        return *whole * kOnePercent;
    }
    const std::string_view decimals = text.substr(point + 1);
    std::optional<std::uint64_t> part = Digits(decimals);
    if (!part || decimals.size() > kDecimals) {
        return std::nullopt;
    }
    for (std::size_t digits = decimals.size(); digits < kDecimals; ++digits) {
        *part *= 10;
    }
    return *whole * kOnePercent + *part;
}

} // namespace

std::optional<ErrorLimit> ErrorLimit::Parse(std::string_view text) {
    ErrorLimit limit;
    limit.fIsShare = text.ends_with('%');
    if (limit.fIsShare) {
        text.remove_suffix(1);
    }
    const std::optional<std::uint64_t> number = limit.fIsShare ? Billionths(text) : Digits(text);
    if (!number || (limit.fIsShare && *number > kLargestShare)) {
        return std::nullopt;
    }
    limit.fNumber = *number;
    return limit;
}

bool ErrorLimit::Allows(std::uint64_t errors, std::uint64_t rows) const {
    return fIsShare ? Wide{errors} * kLargestShare <= Wide{fNumber} * rows : errors <= fNumber;
}

} // namespace veltrane::host
