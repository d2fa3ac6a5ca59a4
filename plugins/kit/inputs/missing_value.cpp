#include "kit/inputs/missing_value.h"

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/StringValue.h>

namespace veltrane_kit {

using namespace MCVeltrane_900;

namespace {

/// Below this lies no moment that a date can hold: the range of the calendar's 64-bit seconds ends above it.
constexpr double kEarliestMoment = -1e19;

} // namespace

bool IsMissingMoment(double seconds) {
    for (double missing = NumericValue::GetSysmisValue(); seconds < kEarliestMoment && missing <= seconds;
         missing /= DateTimeValue::SECONDS_PER_DAY) {
        if (missing == seconds) {
            return true;
        }
    }
    return false;
}

bool IsMissing(const ScoreValue* value) {
    if (value == nullptr || value->IsSystemMissingValue()) {
        return true;
    }
    const DateTimeValue* dateTime =
        value->GetType() == ScoreValue::DATETIME_VALUE ? dynamic_cast<const DateTimeValue*>(value) : nullptr;
    return dateTime != nullptr && IsMissingMoment(dateTime->NumericValue::GetDouble());
}

std::unique_ptr<ScoreValue> MakeMissing(ScoreValue::ValueType kind) {
    switch (kind) {
    case ScoreValue::STRING_VALUE:
        return std::make_unique<StringValue>("");
    case ScoreValue::DATETIME_VALUE:
        return std::make_unique<DateTimeValue>();
    default:
        return std::make_unique<NumericValue>();
    }
}

} // namespace veltrane_kit
