#include "translators/frame/number_check.h"

#include "data/values/number_text.h"
#include "platform/platform.h"

#include <MCVeltrane_900/NumericValue.h>

#include <string>

namespace veltrane::translators {
namespace {

using MCVeltrane_900::NumericValue;

constexpr std::size_t kNone = std::string_view::npos;

/// How often a character occurs, and where last.
struct Occurrence {
    std::size_t count = 0;
    std::size_t last = kNone;

    void Note(std::size_t position) {
        ++count;
        last = position;
    }
};

struct NumberShape {
    Occurrence exponent, minus, plus, point;
    bool onlyNumberCharacters = true;
};

NumberShape FindShape(std::string_view text) {
    NumberShape shape;
    for (std::size_t i = 0; i < text.size(); ++i) {
        switch (text[i]) {
        case 'e':
        case 'E':
            shape.exponent.Note(i);
            break;
        case '-':
            shape.minus.Note(i);
            break;
        case '+':
            shape.plus.Note(i);
            break;
        case '.':
            shape.point.Note(i);
            break;
        default:
            shape.onlyNumberCharacters &= text[i] >= '0' && text[i] <= '9';
        }
    }
    return shape;
}

bool IsExponentInPlace(const Occurrence& exponent, std::size_t size) {
    return exponent.count == 0 || (exponent.count == 1 && exponent.last != 0 && exponent.last != size - 1);
}

/// Without an exponent a sign stands alone and in front; with one only the place of the last sign counts.
bool IsSignInPlace(const Occurrence& sign, const Occurrence& exponent, std::size_t size) {
    if (sign.count == 0) {
        return true;
    }
    if (exponent.count == 0 && (sign.count > 1 || sign.last != 0)) {
        return false;
    }
    return sign.last != size - 1 && (sign.last == 0 || sign.last == exponent.last + 1);
}

bool IsPointInPlace(const Occurrence& point, const Occurrence& exponent, std::size_t size) {
    if (point.count == 0) {
        return true;
    }
    if (point.count > 1 || point.last == size - 1) {
        return false;
    }
    return exponent.count == 0 || point.last + 1 < exponent.last;
}

} // namespace

std::string_view TrimBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == kNone) {
        return text;
    }
    return text.substr(first, text.find_last_not_of(' ') + 1);
}

bool IsDoubleText(std::string_view text) {
    if (text.empty()) {
        return false;
    }
    const NumberShape shape = FindShape(text);
    const bool bothSignsAlone = shape.exponent.count == 0 && shape.minus.count > 0 && shape.plus.count > 0;
    return shape.onlyNumberCharacters && !bothSignsAlone && IsExponentInPlace(shape.exponent, text.size()) &&
           IsSignInPlace(shape.minus, shape.exponent, text.size()) &&
           IsSignInPlace(shape.plus, shape.exponent, text.size()) &&
           IsPointInPlace(shape.point, shape.exponent, text.size());
}

double ReadDoubleText(std::string_view text) {
    double value = NumericValue::GetSysmisValue();
    if (!data::ReadStreamDouble(text, value) &&
        platform::ReadDouble(std::string(text).c_str()) == NumericValue::GetInfinity()) {
        return NumericValue::GetInfinity();
    }
    return value;
}

bool IsIntText(std::string_view text) {
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        text.remove_prefix(1);
    }
    return !text.empty() && text.find_first_not_of("0123456789") == kNone;
}

} // namespace veltrane::translators
