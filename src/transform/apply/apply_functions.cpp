#include "transform/apply/function_dispatch.h"
#include "transform/functions/missing.h"

#include <MCVeltrane_900/ApplyNodeStats.h>
#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/StringValue.h>
#include <MCVeltrane_900/TransformVar.h>

#include <algorithm>
#include <cmath>

namespace MCVeltrane_900 {

using veltrane::functions::kMissing;
using veltrane::transform::DispatchOf;
using TD = TransformationDictionary;

double TransformVar::ApplyTransFunction(double a, double b, TD::TransformFunction function) {
    const auto fold = DispatchOf(function).fold;
    return fold != nullptr ? fold(a, b) : 0.0;
}

double TransformVar::ApplyAccumulateFunction(const std::vector<double>& arguments, TD::TransformFunction function) {
    const auto accumulate = DispatchOf(function).accumulate;
    return accumulate != nullptr ? accumulate(arguments) : kMissing;
}

/// The first operand is always the stored seconds, the second what its value reports: days for a plain date. The
/// subtraction takes the two as they are. A second operand that is no number at all makes the result missing too,
/// whatever the function.
double TransformVar::ApplyDateTimeFunction(const ScoreValue* date, double b, TD::TransformFunction function) {
    if (date == nullptr || date->GetType() != ScoreValue::DATETIME_VALUE || date->IsSystemMissingValue() ||
        NumericValue::IsSystemMissingValue(b) || std::isnan(b)) {
        return kMissing;
    }
    const auto* value = dynamic_cast<const DateTimeValue*>(date);
    if (value == nullptr) {
        return kMissing;
    }
    const double difference = value->GetDoubleValue(ScoreDictVar::DT_DATETIME) - b;
    switch (function) {
    case TD::TF_DATE_YEARS_DIFFERENCE:
        return difference / 86400.0 / 365.25;
    case TD::TF_DATE_MONTHS_DIFFERENCE:
        return difference / 86400.0 / 30.4375;
    case TD::TF_DATE_DAYS_DIFFERENCE:
        return difference / 86400.0;
    case TD::TF_YEAR_FROM_DATE:
        return value->ExtractYear();
    case TD::TF_MONTH_FROM_DATE:
        return value->ExtractMonth();
    case TD::TF_DAY_FROM_DATE:
        return value->ExtractDay();
    case TD::TF_TIME_HOURS_DIFFERENCE:
        return difference / 3600.0;
    case TD::TF_TIME_MINUTES_DIFFERENCE:
        return difference / 60.0;
    case TD::TF_TIME_SECONDS_DIFFERENCE:
        return difference;
    case TD::TF_HOUR_FROM_TIME:
        return value->ExtractHour();
    case TD::TF_MINUTE_FROM_TIME:
        return value->ExtractMinute();
    case TD::TF_SECOND_FROM_TIME:
        return value->ExtractSecond();
    default:
        return kMissing;
    }
}

bool TransformVar::HandleMissingAndInvalidOfApply(const std::vector<double>& arguments, TD::TransformFunction,
                                                  ScoreValue* result, const ApplyNodeStats& stats, bool resultIsSysmis,
                                                  bool resultIsInvalid) {
    // One argument alone never counts as a missing one, nor do those of functions that gather no numbers.
    const bool hasMissingArgument =
        resultIsSysmis && arguments.size() >= 2 &&
        std::any_of(arguments.begin(), arguments.end(), [](double x) { return NumericValue::IsSystemMissingValue(x); });
    if (hasMissingArgument) {
        const ScoreValue* replacement = stats.GetRecodeMissValueRep();
        if (replacement != nullptr && !replacement->IsSystemMissingValue()) {
            result->SetValue(replacement);
            return true;
        }
        if (stats.GetDefaultValue() != nullptr) {
            result->SetValue(stats.GetDefaultValue());
            return true;
        }
    }
    if (!resultIsInvalid) {
        return true;
    }
    if (stats.GetInvalidValueTreatmentMethod() != ApplyNodeStats::IV_AS_MISSING) {
        return false;
    }
    if (stats.GetDefaultValue() != nullptr) {
        result->SetValue(stats.GetDefaultValue());
    } else if (auto* number = dynamic_cast<NumericValue*>(result)) {
        number->SetDoubleValue(kMissing);
    } else if (auto* text = dynamic_cast<StringValue*>(result)) {
        text->SetLength(0);
        text->SetString(std::string());
    }
    return true;
}

} // namespace MCVeltrane_900
