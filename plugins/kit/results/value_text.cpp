#include "kit/results/value_text.h"

#include <MCVeltrane_900/DateTimeValue.h>

#include <charconv>
#include <cmath>
#include <cstdio>

namespace veltrane_kit {

using MCVeltrane_900::DateTimeValue;
using MCVeltrane_900::ScoreValue;

namespace {

/// Within these a number is written without an exponent.
constexpr double kSmallest = 1e-4;
constexpr double kLargest = 1e16;

/// Date-times write themselves as "Undefined".
std::string MomentText(const DateTimeValue& value) {
    char day[64];
    char time[64];
    std::snprintf(day, sizeof(day), "%04.0f-%02.0f-%02.0f", value.ExtractYear(), value.ExtractMonth(),
                  value.ExtractDay());
    std::snprintf(time, sizeof(time), "%02.0f:%02.0f:%02.0f", value.ExtractHour(), value.ExtractMinute(),
                  std::floor(value.ExtractSecond()));
    switch (value.GetDateTimeType()) {
    case DateTimeValue::VAL_DATE:
        return day;
    case DateTimeValue::VAL_TIME:
        return time;
    default:
        return std::string(day) + "T" + time;
    }
}

} // namespace

std::string NumberText(double number) {
    if (number == 0.0) {
        return "0";
    }
    char digits[32];
    const double size = std::abs(number);
    const auto form = size >= kSmallest && size < kLargest ? std::chars_format::fixed : std::chars_format::scientific;
    return std::string(digits, std::to_chars(digits, digits + sizeof(digits), number, form).ptr);
}

std::string ValueText(const ScoreValue& value) {
    switch (value.GetType()) {
    case ScoreValue::NUMERIC_VALUE:
        return NumberText(value.GetDouble());
    case ScoreValue::DATETIME_VALUE:
        if (const auto* moment = dynamic_cast<const DateTimeValue*>(&value); moment != nullptr) {
            return MomentText(*moment);
        }
        break;
    case ScoreValue::STRING_VALUE:
        break;
    }
    return value.GetString();
}

} // namespace veltrane_kit
