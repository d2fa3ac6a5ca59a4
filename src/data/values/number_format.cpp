#include "data/values/number_format.h"

#include <charconv>
#include <ios>
#include <limits>
#include <locale>
#include <sstream>

namespace veltrane::data {

namespace {

constexpr int kStreamPrecision = 6;

/// Room for the largest double in fixed notation: sign, integer digits, point and decimals.
constexpr int kLongestText = 1 + (std::numeric_limits<double>::max_exponent10 + 1) + 1 + kStreamPrecision;

std::string Written(double value, std::ios_base::fmtflags notation, std::chars_format format) {
    if (std::locale() != std::locale::classic()) {
        std::ostringstream out;
        out.setf(notation, std::ios_base::floatfield);
        out << value;
        return out.str();
    }
    // The same text without a stream, which a column of numbers is written with.
    char buffer[kLongestText];
    return std::string(buffer, std::to_chars(buffer, buffer + kLongestText, value, format, kStreamPrecision).ptr);
}

} // namespace

std::string StreamText(double value) {
    return Written(value, {}, std::chars_format::general);
}

std::string StreamFixedText(double value) {
    return Written(value, std::ios_base::fixed, std::chars_format::fixed);
}

} // namespace veltrane::data
