#include "data/values/number_format.h"
#include "data/values/value_cast.h"
#include "platform/checked_cast.h"

#include <MCVeltrane_900/DateTimeValue.h>

namespace MCVeltrane_900 {

using veltrane::data::FindDateTime;

namespace {

constexpr double kDay = DateTimeValue::SECONDS_PER_DAY;

/// How the number of a storage type stands to the internal seconds: seconds = (number - epoch) * unit.
struct StorageType {
    DateTimeValue::DateTimeValType kind;
    double unit;  ///< seconds
    double epoch; ///< the number at 1970-01-01 00:00:00, in units
};

/// One row for each ScoreDictVar::DateTimeType, in the order of their numbers.
constexpr StorageType kStorageTypes[] = {
    {DateTimeValue::VAL_DATETIME, 1, 0},             // DT_NONE, no storage type
    {DateTimeValue::VAL_DATE, 1, 0},                 // DT_DATE
    {DateTimeValue::VAL_TIME, 1, 0},                 // DT_TIME
    {DateTimeValue::VAL_DATETIME, 1, 0},             // DT_DATETIME
    {DateTimeValue::VAL_DATE, kDay, 719528},         // DT_DAYS_SINCE_0
    {DateTimeValue::VAL_DATE, kDay, 3653},           // DT_DAYS_SINCE_1960
    {DateTimeValue::VAL_DATE, kDay, 0},              // DT_DAYS_SINCE_1970
    {DateTimeValue::VAL_DATE, kDay, -3652},          // DT_DAYS_SINCE_1980
    {DateTimeValue::VAL_TIME, 1, 0},                 // DT_TIME_SECONDS
    {DateTimeValue::VAL_DATETIME, 1, 62167219200.0}, // DT_SECONDS_SINCE_0
    {DateTimeValue::VAL_DATETIME, 1, 315619200},     // DT_SECONDS_SINCE_1960
    {DateTimeValue::VAL_DATETIME, 1, 0},             // DT_SECONDS_SINCE_1970
    {DateTimeValue::VAL_DATETIME, 1, -315532800},    // DT_SECONDS_SINCE_1980
};

/// The row of a storage type that converts numbers, null for DT_NONE and any number out of range.
const StorageType* FindStorageType(ScoreDictVar::DateTimeType type) {
    const bool known = type >= ScoreDictVar::DT_DATE && type <= ScoreDictVar::DT_SECONDS_SINCE_1980;
    return known ? &kStorageTypes[type] : nullptr;
}

/// The days from 1970-01-01 to the day before a month, plus the day: one more than the day number. A month of 0 counts
/// no days, as the parts of an empty text do.
long long DaysWithDay(long long year, long long month, long long day) {
    return DateTimeValue::DaysBetweenYear(1970, year) + DateTimeValue::DaysBeforeMonth(year, month) + day;
}

struct CalendarDate {
    explicit CalendarDate(double seconds) { DateTimeValue::ExtractDate(seconds, year, month, day); }
    long long year = 0, month = 0, day = 0;
};

struct TimeOfDay {
    explicit TimeOfDay(double seconds) { DateTimeValue::ExtractTime(seconds, hour, minute, second); }
    long long hour = 0, minute = 0, second = 0;
};

std::string DateText(double seconds) {
    const CalendarDate date(seconds);
    return std::to_string(date.year) + "-" + std::to_string(date.month) + "-" + std::to_string(date.day);
}

std::string TimeText(double seconds) {
    const TimeOfDay time(seconds);
    return std::to_string(time.hour) + ":" + std::to_string(time.minute) + ":" + std::to_string(time.second);
}

} // namespace

DateTimeValue::DateTimeValue() : fDateTimeValType(VAL_DATETIME) {}

DateTimeValue::DateTimeValue(double seconds, DateTimeValType kind) : NumericValue(seconds), fDateTimeValType(kind) {}

DateTimeValue::DateTimeValue(double value, ScoreDictVar::DateTimeType type) : fDateTimeValType(GetValType(type)) {
    FromNumeric(value, type);
}

DateTimeValue::DateTimeValue(const std::string& text, ScoreDictVar::DateTimeType type)
    : fDateTimeValType(GetValType(type)) {
    FromString(text, type);
}

DateTimeValue::DateTimeValue(const DateTimeValue& other)
    : NumericValue(other), fDateTimeValType(other.fDateTimeValType) {}

DateTimeValue::~DateTimeValue() = default;

DateTimeValue& DateTimeValue::operator=(const DateTimeValue& other) {
    if (this != &other) {
        NumericValue::operator=(other);
        fDateTimeValType = other.fDateTimeValType;
    }
    return *this;
}

void DateTimeValue::SetValue(const ScoreValue* other) {
    const bool readable = other != nullptr && (other->GetType() == NUMERIC_VALUE || other->GetType() == DATETIME_VALUE);
    SetDoubleValue(readable ? other->GetDouble() : GetSysmisValue());
    const DateTimeValue* dateTime = readable ? FindDateTime(*other) : nullptr;
    if (dateTime != nullptr) {
        fDateTimeValType = dateTime->GetDateTimeType();
    }
}

ScoreValue* DateTimeValue::GetValue() const {
    return new DateTimeValue(*this);
}
ScoreValue* DateTimeValue::GetValue(ScoreDictVar::DateTimeType type) const {
    return new NumericValue(GetDoubleValue(type));
}
ScoreValue* DateTimeValue::Clone() const {
    return new DateTimeValue(*this);
}

bool DateTimeValue::operator==(const ScoreValue& rhs) const {
    const DateTimeValue* other = FindDateTime(rhs);
    return other != nullptr && NumericValue::GetDouble() == other->NumericValue::GetDouble() &&
           fDateTimeValType == other->fDateTimeValType;
}

int DateTimeValue::GetInt() const {
    return veltrane::platform::TruncateToInt32(GetDouble());
}

double DateTimeValue::GetDouble() const {
    const double seconds = NumericValue::GetDouble();
    return fDateTimeValType == VAL_DATE ? seconds / kDay : seconds;
}

// Every ordinary value prints as "Undefined": readers of displays and string functions rely on it, and the numeric text
// of a date-time is GetNumericString().
std::string DateTimeValue::GetString() const {
    const double seconds = NumericValue::GetDouble();
    if (!(seconds <= GetSysmisValue())) {
        return "Undefined";
    }
    switch (fDateTimeValType) {
    case VAL_DATE:
        return DateText(seconds);
    case VAL_TIME:
        return TimeText(seconds);
    case VAL_DATETIME:
        return DateText(seconds) + "T" + TimeText(seconds);
    default:
        return NumericValue::GetString();
    }
}

ScoreValue::ValueType DateTimeValue::GetType() const {
    return DATETIME_VALUE;
}
void DateTimeValue::SetDateTimeType(DateTimeValType kind) {
    fDateTimeValType = kind;
    fChanges.Note();
}
DateTimeValue::DateTimeValType DateTimeValue::GetDateTimeType() const {
    return fDateTimeValType;
}

void DateTimeValue::SetDateTimeValue(double seconds, DateTimeValType kind) {
    SetDoubleValue(seconds);
    fDateTimeValType = kind;
}

void DateTimeValue::SetDateTimeValue(double value, ScoreDictVar::DateTimeType type) {
    FromNumeric(value, type);
    fDateTimeValType = GetValType(type);
}

double DateTimeValue::GetDoubleValue(ScoreDictVar::DateTimeType type) const {
    const StorageType* storage = FindStorageType(type);
    if (storage == nullptr || NumericValue::IsSystemMissingValue()) {
        return GetSysmisValue();
    }
    const double number = NumericValue::GetDouble() / storage->unit;
    return storage->epoch == 0 ? number : number + storage->epoch;
}

std::string DateTimeValue::GetNumericString() const {
    const double seconds = NumericValue::GetDouble();
    if (GetSysmisValue() >= seconds) {
        return "Undefined";
    }
    return veltrane::data::StreamFixedText(seconds);
}

double DateTimeValue::ExtractYear() const {
    return static_cast<double>(CalendarDate(NumericValue::GetDouble()).year);
}

double DateTimeValue::ExtractMonth() const {
    return static_cast<double>(CalendarDate(NumericValue::GetDouble()).month);
}

double DateTimeValue::ExtractDay() const {
    return static_cast<double>(CalendarDate(NumericValue::GetDouble()).day);
}

double DateTimeValue::ExtractHour() const {
    return static_cast<double>(TimeOfDay(NumericValue::GetDouble()).hour);
}

double DateTimeValue::ExtractMinute() const {
    return static_cast<double>(TimeOfDay(NumericValue::GetDouble()).minute);
}

double DateTimeValue::ExtractSecond() const {
    return static_cast<double>(TimeOfDay(NumericValue::GetDouble()).second);
}

double DateTimeValue::ComputeDurationSeconds(const DateTimeValue& other) const {
    return NumericValue::GetDouble() - other.NumericValue::GetDouble();
}

double DateTimeValue::ComputeDurationMinutes(const DateTimeValue& other) const {
    return ComputeDurationSeconds(other) / 60;
}

double DateTimeValue::ComputeDurationHours(const DateTimeValue& other) const {
    return ComputeDurationSeconds(other) / SECONDS_PER_HOUR;
}

double DateTimeValue::ComputeDurationDays(const DateTimeValue& other) const {
    return ComputeDurationSeconds(other) / SECONDS_PER_DAY;
}

double DateTimeValue::ComputeDurationMonths(const DateTimeValue& other) const {
    return ComputeDurationDays(other) / DAYS_PER_MONTH;
}

double DateTimeValue::ComputeDurationYears(const DateTimeValue& other) const {
    return ComputeDurationDays(other) / DAYS_PER_YEAR;
}

ScoreDictVar::DateTimeType DateTimeValue::GetDateTimeType(DateTimeValType kind) {
    switch (kind) {
    case VAL_DATE:
        return ScoreDictVar::DT_DATE;
    case VAL_TIME:
        return ScoreDictVar::DT_TIME;
    default:
        return ScoreDictVar::DT_DATETIME;
    }
}

DateTimeValue::DateTimeValType DateTimeValue::GetValType(ScoreDictVar::DateTimeType type) {
    const StorageType* storage = FindStorageType(type);
    return storage != nullptr ? storage->kind : VAL_DATETIME;
}

void DateTimeValue::FromNumeric(double value, ScoreDictVar::DateTimeType type) {
    const StorageType* storage = FindStorageType(type);
    if (storage == nullptr || value == GetSysmisValue()) {
        SetDoubleValue(GetSysmisValue());
    } else {
        SetDoubleValue((value - storage->epoch) * storage->unit);
    }
}

void DateTimeValue::FromString(const std::string& text, ScoreDictVar::DateTimeType type) {
    SetDoubleValue(GetSysmisValue());
    long long year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
    switch (type) {
    case ScoreDictVar::DT_DATE:
        if (ParseDate(text, year, month, day)) {
            SetDoubleValue(static_cast<double>(DaysWithDay(year, month, day) * SECONDS_PER_DAY - SECONDS_PER_DAY));
        }
        break;
    case ScoreDictVar::DT_TIME:
        if (ParseTime(text, hour, minute, second)) {
            SetDoubleValue(static_cast<double>((hour * 60 + minute) * 60 + second));
        }
        break;
    case ScoreDictVar::DT_DATETIME:
        if (ParseDateTime(text, year, month, day, hour, minute, second)) {
            SetDoubleValue(
                static_cast<double>(((DaysWithDay(year, month, day) * 24 - 24 + hour) * 60 + minute) * 60 + second));
        }
        break;
    default:
        NumericValue::FromString(text);
        FromNumeric(NumericValue::GetDouble(), type);
        break;
    }
}

} // namespace MCVeltrane_900
