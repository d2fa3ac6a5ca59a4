#include "transform/apply/child_values.h"
#include "transform/functions/rules.h"
#include "transform/numbers/missing.h"

#include <MCVeltrane_900/NumericValue.h>

#include <cmath>

namespace veltrane::functions {

double YearsBetween(const DateTimeValue& date, double difference) {
    return DaysBetween(date, difference) / DateTimeValue::DAYS_PER_YEAR;
}
double MonthsBetween(const DateTimeValue& date, double difference) {
    return DaysBetween(date, difference) / DateTimeValue::DAYS_PER_MONTH;
}
double DaysBetween(const DateTimeValue&, double difference) {
    return difference / DateTimeValue::SECONDS_PER_DAY;
}
double HoursBetween(const DateTimeValue&, double difference) {
    return difference / DateTimeValue::SECONDS_PER_HOUR;
}
double MinutesBetween(const DateTimeValue&, double difference) {
    return difference / 60.0;
}
double SecondsBetween(const DateTimeValue&, double difference) {
    return difference;
}

double YearOf(const DateTimeValue& date, double) {
    return date.ExtractYear();
}
double MonthOf(const DateTimeValue& date, double) {
    return date.ExtractMonth();
}
double DayOf(const DateTimeValue& date, double) {
    return date.ExtractDay();
}
double HourOf(const DateTimeValue& date, double) {
    return date.ExtractHour();
}
double MinuteOf(const DateTimeValue& date, double) {
    return date.ExtractMinute();
}
double SecondOf(const DateTimeValue& date, double) {
    return date.ExtractSecond();
}

/// A date, and a number. A third argument finds no date any more.
const ScoreValue* EvaluateDateTime(ApplyNode& node) {
    double result = 0.0;
    const ApplyNode::Arguments arguments = node.GetArguments();
    for (const Argument& argument : arguments) {
        if (argument.position > 0) {
            result = node.OfDate(node.Kept().Get(), transform::DoubleOf(argument.value));
            node.Kept().Clear();
            continue;
        }
        if (argument.value != nullptr && argument.value->GetType() == ScoreValue::DATETIME_VALUE) {
            node.Kept().Take(*argument.value);
        }
        if (arguments.size() == 1) {
            result = node.OfDate(node.Kept().Get(), 0.0);
        }
    }
    return node.Result(result);
}

} // namespace veltrane::functions

namespace MCVeltrane_900 {

/// The first operand is always the stored seconds, the second what its value reports: days for a plain date. The
/// subtraction takes the two as they are. A second operand that is no number at all makes the result missing too,
/// whatever the function.
double TransformVar::ApplyDateTimeFunction(const ScoreValue* date, double b,
                                           TransformationDictionary::TransformFunction function) {
    using veltrane::functions::kMissing;
    if (date == nullptr || date->GetType() != ScoreValue::DATETIME_VALUE || date->IsSystemMissingValue() ||
        NumericValue::IsSystemMissingValue(b) || std::isnan(b)) {
        return kMissing;
    }
    const auto* value = dynamic_cast<const DateTimeValue*>(date);
    const auto call = veltrane::transform::DispatchOf(function).date;
    return value != nullptr && call != nullptr ? call(*value, value->GetDoubleValue(ScoreDictVar::DT_DATETIME) - b)
                                               : kMissing;
}

} // namespace MCVeltrane_900
