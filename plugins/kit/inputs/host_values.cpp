#include "kit/inputs/host_values.h"

#include "kit/values/calendar.h"

#include <MCVeltrane_900/StringValue.h>

#include <typeinfo>

namespace veltrane_kit {

using namespace MCVeltrane_900;

namespace {

ScoreDictVar::DateTimeType CountingTypeOf(DataType type) {
    const int distance =
        static_cast<int>(ScoreDictVar::DT_DAYS_SINCE_0) - static_cast<int>(DataType::DATE_DAYS_SINCE_0);
    return static_cast<ScoreDictVar::DateTimeType>(static_cast<int>(type) + distance);
}

/// The number of a date-time of the library, whose seconds are counted from 1970.
double NumberOfMoment(const DateTimeValue& moment, DataType type) {
    if (IsCounting(type)) {
        return moment.GetDoubleValue(CountingTypeOf(type));
    }
    const double seconds = moment.GetDoubleValue(ScoreDictVar::DT_SECONDS_SINCE_1970);
    return type == DataType::DATE ? seconds / kSecondsOfDay : seconds;
}

Value Unreadable(DataType type) {
    Value value = MakeNumber(kMissing, type);
    value.isInvalid = true;
    return value;
}

Value OrUnreadable(const Value& value) {
    return value.isMissing ? Unreadable(value.type) : value;
}

/// A TIME beyond a day is none.
Value OfMoment(double number, DataType type) {
    return type == DataType::TIME && !IsTimeOfDay(number) ? Unreadable(type) : MakeNumber(number, type);
}

Value FromNumber(double number, DataType type) {
    if (number == NumericValue::GetSysmisValue() || std::isnan(number)) {
        return MakeNumber(kMissing, type);
    }
    if (IsText(type)) {
        return Unreadable(type);
    }
    if (IsMoment(type)) {
        return OfMoment(number, type);
    }
    std::string unused;
    return OrUnreadable(CastValue(MakeNumber(number, DataType::DOUBLE), type, unused));
}

} // namespace

Value FromHost(const ScoreValue* raw, DataType type) {
    if (raw == nullptr) {
        return MakeNumber(kMissing, type);
    }
    switch (raw->GetType()) {
    case ScoreValue::STRING_VALUE: {
        const auto* text = typeid(*raw) == typeid(StringValue) ? static_cast<const StringValue*>(raw)
                                                               : dynamic_cast<const StringValue*>(raw);
        if (text == nullptr || text->GetText().empty()) {
            return text == nullptr ? Unreadable(type) : MakeNumber(kMissing, type);
        }
        const Value value = ReadValue(text->GetText(), type);
        // A number beyond the range of numbers is none.
        return std::isinf(value.number) ? Unreadable(type) : OrUnreadable(value);
    }
    case ScoreValue::DATETIME_VALUE: {
        const auto* moment = dynamic_cast<const DateTimeValue*>(raw);
        if (moment == nullptr || raw->IsSystemMissingValue()) {
            return moment == nullptr ? Unreadable(type) : MakeNumber(kMissing, type);
        }
        const bool isDate = IsMoment(type) || IsCounting(type);
        return isDate ? OfMoment(NumberOfMoment(*moment, type), type) : Unreadable(type);
    }
    default:
        return FromNumber(raw->GetDouble(), type);
    }
}

ScoreValue::ValueType HostKindOf(DataType type) {
    if (IsText(type) || type == DataType::BOOLEAN) {
        return ScoreValue::STRING_VALUE;
    }
    return IsMoment(type) ? ScoreValue::DATETIME_VALUE : ScoreValue::NUMERIC_VALUE;
}

DateTimeValue MakeMoment(const Value& value) {
    switch (value.type) {
    case DataType::DATE:
        return DateTimeValue(value.number * kSecondsOfDay, DateTimeValue::VAL_DATE);
    case DataType::TIME:
        return DateTimeValue(value.number, DateTimeValue::VAL_TIME);
    default:
        return DateTimeValue(value.number, DateTimeValue::VAL_DATETIME);
    }
}

std::unique_ptr<ScoreValue> ToHost(const Value& value) {
    if (value.isMissing) {
        return nullptr;
    }
    std::string buffer;
    switch (value.type) {
    case DataType::STRING:
    case DataType::BOOLEAN:
        return std::make_unique<StringValue>(std::string(TextOf(value, buffer)));
    case DataType::DATE:
    case DataType::TIME:
    case DataType::DATE_TIME:
        return std::make_unique<DateTimeValue>(MakeMoment(value));
    default:
        return std::make_unique<NumericValue>(value.number);
    }
}

} // namespace veltrane_kit
