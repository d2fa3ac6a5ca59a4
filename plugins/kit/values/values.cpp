#include "kit/values/values.h"

#include "kit/values/calendar.h"

#include <charconv>
#include <limits>
#include <system_error>

namespace veltrane_kit {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";

std::string_view Stripped(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    return first == text.npos ? std::string_view() : text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

/// Beyond the range of doubles a number is infinite, or 0.
double Extreme(std::string_view text) {
    const std::size_t exponent = text.find_first_of("eE");
    const bool isSmall = exponent != text.npos && exponent + 1 < text.size() && text[exponent + 1] == '-';
    const double size = isSmall ? 0.0 : std::numeric_limits<double>::infinity();
    return text.front() == '-' ? -size : size;
}

double TruthIn(std::string_view text) {
    if (text == "true" || text == "1" || text == "TRUE" || text == "True") {
        return 1.0;
    }
    return text == "false" || text == "0" || text == "FALSE" || text == "False" ? 0.0 : kMissing;
}

bool IsWhole(double number) {
    return std::isfinite(number) && number == std::trunc(number);
}

/// The fewest digits that read back: plain from 0.0001 up to 1e16, else with an exponent. A whole number has no point.
void WriteNumber(double number, DataType type, std::string& text) {
    char digits[352]; // all digits of the greatest integer that a double keeps
    char* const end = digits + sizeof digits;
    const bool isInteger = type == DataType::INTEGER;
    const double size = std::abs(number);
    if (IsWhole(number) && (isInteger || size < 1e16)) {
        text.assign(digits, std::to_chars(digits, end, number + 0.0, std::chars_format::fixed, 0).ptr);
    } else if (!std::isfinite(number)) {
        text = std::isnan(number) ? "nan" : number < 0.0 ? "-inf" : "inf";
    } else if (size >= 1e-4 && size < 1e16) {
        text.assign(digits, std::to_chars(digits, end, number, std::chars_format::fixed).ptr);
    } else {
        text.assign(digits, std::to_chars(digits, end, number, std::chars_format::scientific).ptr);
    }
}

Value CastNumber(const Value& value, DataType type) {
    Value cast = MakeNumber(value.number, type);
    cast.isInvalid = value.isInvalid;
    if (type == DataType::BOOLEAN && value.number != 0.0 && value.number != 1.0) {
        return MakeNumber(kMissing, type);
    }
    if (type == DataType::INTEGER && !IsWhole(value.number)) {
        return MakeNumber(kMissing, type);
    }
    if (type == DataType::INTEGER || type == DataType::BOOLEAN) {
        cast.number += 0.0; // there is one zero
    }
    return cast;
}

} // namespace

std::optional<double> NumberIn(std::string_view text) {
    text = Stripped(text);
    std::string_view digits = text;
    if (!digits.empty() && (digits.front() == '+' || digits.front() == '-')) {
        digits.remove_prefix(1);
    }
    const bool isNumber = !digits.empty() && (IsDigit(digits.front()) ||
                                              (digits.front() == '.' && digits.size() > 1 && IsDigit(digits[1])));
    if (!isNumber) {
        return std::nullopt;
    }
    double number = 0.0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (end != digits.data() + digits.size()) {
        return std::nullopt;
    }
    if (error == std::errc::result_out_of_range) {
        return Extreme(text);
    }
    return text.front() == '-' ? -number : number;
}

Value ReadValue(std::string_view text, DataType type) {
    if (IsText(type)) {
        return MakeText(text);
    }
    if (type == DataType::BOOLEAN) {
        return MakeNumber(TruthIn(Stripped(text)), type);
    }
    if (IsMoment(type)) {
        return MakeNumber(ReadMoment(Stripped(text), type).value_or(kMissing), type);
    }
    return CastNumber(MakeNumber(NumberIn(text).value_or(kMissing), DataType::DOUBLE), type);
}

Value ReadUntyped(std::string_view text) {
    const std::optional<double> number = NumberIn(text);
    if (!number) {
        return MakeText(text);
    }
    const bool isInteger = Stripped(text).find_first_of(".eE") == text.npos && IsWhole(*number);
    return MakeNumber(*number, isInteger ? DataType::INTEGER : DataType::DOUBLE);
}

std::string_view TextOf(const Value& value, std::string& buffer) {
    if (IsText(value.type)) {
        return value.text;
    }
    if (value.type == DataType::BOOLEAN) {
        return value.number != 0.0 ? "true" : "false";
    }
    if (IsMoment(value.type)) {
        buffer = WriteMoment(value.number, value.type);
    } else {
        WriteNumber(value.number, value.type, buffer);
    }
    return buffer;
}

double NumberOf(const Value& value) {
    return IsText(value.type) && !value.isMissing ? NumberIn(value.text).value_or(kMissing) : value.number;
}

Value CastValue(const Value& value, DataType type, std::string& buffer) {
    if (value.type == type) {
        return value;
    }
    if (value.isMissing) {
        return MakeNumber(kMissing, type);
    }
    if (IsText(type)) {
        Value text = MakeText(TextOf(value, buffer));
        text.isInvalid = value.isInvalid;
        return text;
    }
    if (IsText(value.type)) {
        return ReadValue(value.text, type);
    }
    const bool fromDate = IsMoment(value.type) || IsCounting(value.type);
    if (fromDate && (IsMoment(type) || IsCounting(type))) {
        return MakeNumber(ConvertMoment(value.number, value.type, type).value_or(kMissing), type);
    }
    if (IsMoment(type) || IsMoment(value.type)) {
        return MakeNumber(kMissing, type);
    }
    return CastNumber(value, type);
}

int Order(const Value& left, const Value& right) {
    double first = left.number;
    double second = right.number;
    if (IsText(left.type) || IsText(right.type)) {
        std::string buffer;
        if (left.type != right.type) {
            const bool leftIsText = IsText(left.type);
            const Value cast = ReadValue(leftIsText ? left.text : right.text, leftIsText ? right.type : left.type);
            if (!cast.isMissing) {
                return leftIsText ? Order(cast, right) : Order(left, cast);
            }
        }
        std::string other;
        return TextOf(left, buffer).compare(TextOf(right, other));
    }
    const bool areDates =
        (IsMoment(left.type) || IsCounting(left.type)) && (IsMoment(right.type) || IsCounting(right.type));
    if (areDates && left.type != right.type) {
        BringTogether(first, left.type, second, right.type);
    }
    return first < second ? -1 : first > second ? 1 : 0;
}

bool AreEqual(const Value& left, const Value& right) {
    return Order(left, right) == 0;
}

bool IsWrittenAs(const Value& value, std::string_view text) {
    const Value written = ReadValue(text, value.type);
    return !written.isMissing && AreEqual(value, written);
}

std::optional<bool> TruthOfValue(const Value& value, bool& isTruth) {
    isTruth = true;
    if (value.isMissing) {
        return std::nullopt;
    }
    if (IsText(value.type)) {
        isTruth = value.text == "true" || value.text == "false";
        return isTruth ? std::optional<bool>(value.text == "true") : std::nullopt;
    }
    isTruth = !IsMoment(value.type) && !IsCounting(value.type) && (value.number == 0.0 || value.number == 1.0);
    return isTruth ? std::optional<bool>(value.number == 1.0) : std::nullopt;
}

} // namespace veltrane_kit
