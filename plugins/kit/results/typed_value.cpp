#include "kit/results/typed_value.h"

#include "kit/inputs/missing_value.h"
#include "kit/values/calendar.h"

#include <MCVeltrane_900/StringValue.h>

#include <typeinfo>

namespace veltrane_kit {

using MCVeltrane_900::DateTimeValue;
using MCVeltrane_900::ScoreDictVar;
using MCVeltrane_900::ScoreValue;
using MCVeltrane_900::StringValue;

namespace {

Value TypedMoment(const DateTimeValue& value) {
    switch (value.GetDateTimeType()) {
    case DateTimeValue::VAL_DATE:
        return MakeNumber(value.GetDouble(), DataType::DATE);
    case DateTimeValue::VAL_TIME:
        return MakeNumber(value.GetDouble(), DataType::TIME);
    default:
        return MakeNumber(value.GetDouble(), DataType::DATE_TIME);
    }
}

} // namespace

const std::string& TextOf(const ScoreValue& value, std::string& buffer) {
    if (typeid(value) == typeid(StringValue)) {
        return static_cast<const StringValue&>(value).GetText();
    }
    buffer = value.GetString();
    return buffer;
}

Value TypedValue(const ScoreValue& value, std::string& buffer) {
    if (IsMissing(&value)) {
        return {};
    }
    switch (value.GetType()) {
    case ScoreValue::NUMERIC_VALUE:
        return MakeNumber(value.GetDouble(), DataType::DOUBLE);
    case ScoreValue::DATETIME_VALUE:
        if (const auto* moment = dynamic_cast<const DateTimeValue*>(&value); moment != nullptr) {
            return TypedMoment(*moment);
        }
        return MakeNumber(value.GetDouble(), DataType::DATE_TIME);
    case ScoreValue::STRING_VALUE:
        break;
    }
    const std::string& text = TextOf(value, buffer);
    return text.empty() ? Value() : MakeText(text);
}

ScoreValue::ValueType KindOf(DataType type, ScoreValue::ValueType natural) {
    if (IsText(type) || (type == DataType::BOOLEAN && natural == ScoreValue::STRING_VALUE)) {
        return ScoreValue::STRING_VALUE;
    }
    return IsMoment(type) ? ScoreValue::DATETIME_VALUE : ScoreValue::NUMERIC_VALUE;
}

ScoreDictVar::DateTimeType DateTimeTypeOf(DataType type) {
    switch (type) {
    case DataType::DATE:
        return ScoreDictVar::DT_DATE;
    case DataType::TIME:
        return ScoreDictVar::DT_TIME;
    case DataType::DATE_TIME:
        return ScoreDictVar::DT_DATETIME;
    default:
        return ScoreDictVar::DT_NONE;
    }
}

} // namespace veltrane_kit
