#include "data/values/number_text.h"

#include "platform/platform.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace veltrane::data {

namespace {

bool IsSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}
bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}
bool IsSign(char c) {
    return c == '+' || c == '-';
}

const char* SkipSpace(const char* at, const char* end) {
    return std::find_if_not(at, end, IsSpace);
}
const char* SkipDigits(const char* at, const char* end) {
    return std::find_if_not(at, end, IsDigit);
}

/// The characters that a stream gathers for a number, and whether they are one.
struct GatheredNumber {
    const char* begin;
    const char* end;
    bool readable;
};

GatheredNumber Gather(const char* at, const char* end) {
    GatheredNumber number{at, at, false};
    if (at != end && IsSign(*at)) {
        ++at;
    }
    const char* mantissa = at;
    at = SkipDigits(at, end);
    bool anyDigit = at != mantissa;
    if (at != end && *at == '.') {
        const char* fraction = ++at;
        at = SkipDigits(at, end);
        anyDigit = anyDigit || at != fraction;
    }
    number.readable = anyDigit;
    if (anyDigit && at != end && (*at == 'e' || *at == 'E')) {
        ++at;
        if (at != end && IsSign(*at)) {
            ++at;
        }
        const char* exponent = at;
        at = SkipDigits(at, end);
        number.readable = at != exponent;
    }
    number.end = at;
    return number;
}

} // namespace

bool ReadStreamDouble(std::string_view text, double& out) {
    const char* end = text.data() + text.size();
    const GatheredNumber number = Gather(SkipSpace(text.data(), end), end);
    if (!number.readable) {
        return false;
    }
    const char* begin = number.begin + (*number.begin == '+' ? 1 : 0);
    double value = 0;
    const auto result = std::from_chars(begin, number.end, value);
    if (result.ec == std::errc::result_out_of_range) {
        // Too large or too small: only the C library tells which, and gives the nearest small number.
        value = platform::ReadDouble(std::string(begin, number.end).c_str());
        if (std::isinf(value)) {
            return false;
        }
    }
    out = value;
    return true;
}

int ReadInteger(std::string_view text) {
    const char* end = text.data() + text.size();
    const char* at = SkipSpace(text.data(), end);
    const bool negative = at != end && *at == '-';
    if (at != end && IsSign(*at)) {
        ++at;
    }
    if (at == end || !IsDigit(*at)) {
        return 0;
    }
    long long magnitude = 0;
    for (; at != end && IsDigit(*at) && magnitude <= std::numeric_limits<int>::max(); ++at) {
        magnitude = magnitude * 10 + (*at - '0');
    }
    return static_cast<int>(std::clamp<long long>(negative ? -magnitude : magnitude, std::numeric_limits<int>::min(),
                                                  std::numeric_limits<int>::max()));
}

} // namespace veltrane::data
