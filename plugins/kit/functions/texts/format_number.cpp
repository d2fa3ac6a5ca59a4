#include "kit/functions/texts/bounds.h"
#include "kit/functions/texts/patterns.h"
#include "kit/values/values.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>
#include <vector>

namespace veltrane_kit::standard {

namespace {

/// The greatest width and the greatest number of places.
constexpr int kWidest = 4096;

/// A conversion of a pattern of printf.
struct Conversion {
    bool isLeft = false;
    bool showsPlus = false;
    bool showsBlank = false;
    bool hasZeros = false;
    bool isAlternate = false;
    int width = 0;
    int precision = -1; ///< below 0 for none
    char letter = 0;
};

bool IsLetter(char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
}

bool TakeFlag(char byte, Conversion& conversion) {
    switch (byte) {
    case '-':
        return conversion.isLeft = true;
    case '+':
        return conversion.showsPlus = true;
    case ' ':
        return conversion.showsBlank = true;
    case '0':
        return conversion.hasZeros = true;
    case '#':
        return conversion.isAlternate = true;
    default:
        return false;
    }
}

/// @return what the digits at the front write, or one more than the greatest
int TakeCount(std::string_view& text) {
    int count = 0;
    while (!text.empty() && text.front() >= '0' && text.front() <= '9') {
        count = std::min(count * 10 + (text.front() - '0'), kWidest + 1);
        text.remove_prefix(1);
    }
    return count;
}

/// The lengths of C's types, as in "%ld", say nothing here.
void SkipLength(std::string_view& text) {
    for (const std::string_view length : {"hh", "h", "ll", "l", "L", "q", "j", "z", "t"}) {
        const std::string_view rest = text.starts_with(length) ? text.substr(length.size()) : std::string_view();
        if (!rest.empty() && (IsLetter(rest.front()) || rest.front() == '%')) {
            text = rest;
            return;
        }
    }
}

/// Takes a conversion off the front of a text, which begins with its sign.
/// @return none where the sign stands for itself
std::optional<Conversion> TakeConversion(std::string_view& text) {
    std::string_view rest = text.substr(1);
    Conversion conversion;
    while (!rest.empty() && TakeFlag(rest.front(), conversion)) {
        rest.remove_prefix(1);
    }
    conversion.width = TakeCount(rest);
    if (rest.starts_with('.')) {
        rest.remove_prefix(1);
        conversion.precision = TakeCount(rest);
    }
    SkipLength(rest);
    if (rest.empty() || (!IsLetter(rest.front()) && rest.front() != '%')) {
        return std::nullopt;
    }
    conversion.letter = rest.front();
    text = rest.substr(1);
    return conversion;
}

/// The digits of a whole number that isn't negative, however large it is.
std::string WholeDigits(double number, int base) {
    std::string digits;
    do {
        digits += "0123456789abcdef"[static_cast<int>(std::fmod(number, base))];
        number = std::trunc(number / base);
    } while (number > 0.0);
    std::reverse(digits.begin(), digits.end());
    return digits;
}

std::string Written(double number, std::chars_format format, int precision) {
    std::vector<char> room(static_cast<std::size_t>(precision) + 400); // the digits of the greatest double, and a sign
    const auto [end, error] = std::to_chars(room.data(), room.data() + room.size(), number, format, precision);
    return {room.data(), end};
}

/// A whole number without its sign.
std::string WholeBody(double number, const Conversion& conversion) {
    const bool isHex = conversion.letter == 'x' || conversion.letter == 'X';
    std::string digits = isHex                      ? WholeDigits(number, 16)
                         : conversion.letter == 'o' ? WholeDigits(number, 8)
                                                    : Written(number, std::chars_format::fixed, 0);
    if (static_cast<int>(digits.size()) < conversion.precision) {
        digits.insert(0, static_cast<std::size_t>(conversion.precision) - digits.size(), '0');
    }
    const bool lacksZero = conversion.isAlternate && conversion.letter == 'o' && digits.front() != '0';
    return (lacksZero ? std::string(1, '0') : std::string()) + digits;
}

/// As %g with all its digits, which std::to_chars has no form for.
std::string AlternateGeneral(double number, int precision) {
    const int digits = std::max(precision, 1);
    const std::string scientific = Written(number, std::chars_format::scientific, digits - 1);
    int exponent = 0;
    const std::size_t sign = scientific.find('e') + 1;
    const std::size_t first = sign + (scientific[sign] == '+' ? 1 : 0);
    std::from_chars(scientific.data() + first, scientific.data() + scientific.size(), exponent);
    const bool isFixed = exponent >= -4 && exponent < digits;
    return isFixed ? Written(number, std::chars_format::fixed, digits - 1 - exponent) : scientific;
}

/// A real number without its sign.
std::string RealBody(double number, const Conversion& conversion) {
    constexpr int kPrecision = 6;
    const int precision = conversion.precision < 0 ? kPrecision : conversion.precision;
    const char letter = static_cast<char>(conversion.letter | 0x20);
    if (std::isinf(number)) {
        return "inf";
    }
    std::string body = letter == 'f'             ? Written(number, std::chars_format::fixed, precision)
                       : letter == 'e'           ? Written(number, std::chars_format::scientific, precision)
                       : !conversion.isAlternate ? Written(number, std::chars_format::general, precision)
                                                 : AlternateGeneral(number, precision);
    if (conversion.isAlternate && body.find('.') == body.npos) {
        body.insert(body.begin() + static_cast<std::ptrdiff_t>(std::min(body.find('e'), body.size())), '.');
    }
    return body;
}

void MakeCapital(std::string& text) {
    for (char& byte : text) {
        byte = byte >= 'a' && byte <= 'z' ? static_cast<char>(byte - 'a' + 'A') : byte;
    }
}

/// @param prefix stands before zeros that fill the width up
std::string Filled(std::string_view prefix, std::string_view body, const Conversion& conversion) {
    const std::size_t length = prefix.size() + body.size();
    const auto width = static_cast<std::size_t>(conversion.width);
    const std::size_t missing = width > length ? width - length : 0;
    const bool hasZeros = conversion.hasZeros && !conversion.isLeft;
    std::string text(conversion.isLeft || hasZeros ? 0 : missing, ' ');
    text.append(prefix);
    text.append(hasZeros ? missing : 0, '0');
    text.append(body);
    text.append(conversion.isLeft ? missing : 0, ' ');
    return text;
}

std::string_view SignOf(double number, const Conversion& conversion) {
    return std::signbit(number) ? "-" : conversion.showsPlus ? "+" : conversion.showsBlank ? " " : "";
}

/// @return none for a number without a whole part
std::optional<std::string> WholeText(double number, Conversion conversion) {
    if (!std::isfinite(number)) {
        return std::nullopt;
    }
    number = std::trunc(number) + 0.0;
    std::string prefix(SignOf(number, conversion));
    const bool isHex = conversion.letter == 'x' || conversion.letter == 'X';
    prefix.append(isHex && conversion.isAlternate && number != 0.0 ? "0x" : "");
    conversion.hasZeros = conversion.hasZeros && conversion.precision < 0;
    std::string text = Filled(prefix, WholeBody(std::fabs(number), conversion), conversion);
    if (conversion.letter == 'X') {
        MakeCapital(text);
    }
    return text;
}

std::optional<std::string> RealText(double number, Conversion conversion) {
    if (std::isnan(number)) {
        return std::nullopt;
    }
    conversion.hasZeros = conversion.hasZeros && std::isfinite(number);
    std::string text = Filled(SignOf(number, conversion), RealBody(std::fabs(number), conversion), conversion);
    if (conversion.letter >= 'A' && conversion.letter <= 'Z') {
        MakeCapital(text);
    }
    return text;
}

/// A number as the text that it has anywhere else, cut to the precision.
std::optional<std::string> PlainText(const Value& value, Conversion conversion) {
    if (std::isnan(NumberOf(value))) {
        return std::nullopt;
    }
    std::string buffer;
    std::string_view text = TextOf(value, buffer);
    if (conversion.precision >= 0) {
        text = text.substr(0, static_cast<std::size_t>(conversion.precision));
    }
    conversion.hasZeros = false;
    return Filled("", text, conversion);
}

std::optional<std::string> Converted(const Value& value, const Conversion& conversion) {
    if (conversion.letter == '%') {
        return std::string(1, '%');
    }
    if (conversion.width > kWidest || conversion.precision > kWidest) {
        return std::nullopt;
    }
    switch (conversion.letter) {
    case 'd':
    case 'i':
    case 'u':
    case 'x':
    case 'X':
    case 'o':
        return WholeText(NumberOf(value), conversion);
    case 'e':
    case 'E':
    case 'f':
    case 'F':
    case 'g':
    case 'G':
        return RealText(NumberOf(value), conversion);
    case 's':
        return PlainText(value, conversion);
    default:
        return std::nullopt;
    }
}

} // namespace

Value FormatNumber(veltrane::FunctionCall& call) {
    std::string buffer;
    std::string_view pattern = TextOf(call.arguments[1], buffer);
    call.text.clear();
    while (!pattern.empty()) {
        const std::size_t plain = std::min(pattern.find('%'), pattern.size());
        call.text.append(pattern.substr(0, plain));
        pattern.remove_prefix(plain);
        if (pattern.empty()) {
            break;
        }
        const std::optional<Conversion> conversion = TakeConversion(pattern);
        if (!conversion) {
            call.text += '%';
            pattern.remove_prefix(1);
            continue;
        }
        const std::optional<std::string> text = Converted(call.arguments[0], *conversion);
        if (!text || call.text.size() + text->size() > kLongestText) {
            return MakeMissing(DataType::STRING);
        }
        call.text.append(*text);
    }
    return MakeText(call.text);
}

} // namespace veltrane_kit::standard
