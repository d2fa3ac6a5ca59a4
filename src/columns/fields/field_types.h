#ifndef VELTRANE_COLUMNS_FIELD_TYPES_H
#define VELTRANE_COLUMNS_FIELD_TYPES_H

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/ScoreDictVar.h>
#include <veltrane/value.h>

/// What the types of fields have in common.
namespace veltrane::columns {

inline constexpr double kSecondsOfDay = MCVeltrane_900::DateTimeValue::SECONDS_PER_DAY;

inline bool IsNumber(DataType type) {
    return type == DataType::INTEGER || type == DataType::FLOAT || type == DataType::DOUBLE;
}

/// Whether a type counts days or seconds from the first moment of a year, or seconds from midnight.
inline bool IsCounting(DataType type) {
    return type >= DataType::DATE_DAYS_SINCE_0;
}

inline bool CountsDays(DataType type) {
    return type >= DataType::DATE_DAYS_SINCE_0 && type <= DataType::DATE_DAYS_SINCE_1980;
}

inline bool CountsSecondsSinceAYear(DataType type) {
    return type >= DataType::DATE_TIME_SECONDS_SINCE_0;
}

/// The name of a type as documents write it.
const char* NameOf(DataType type);

/// How the library's own values store a type that is a date or counts; DT_NONE for any other.
MCVeltrane_900::ScoreDictVar::DateTimeType DateTimeTypeOf(DataType type);

/// The type of a variable as far as it tells.
DataType TypeOf(const MCVeltrane_900::ScoreDictVar& variable);

/// The days from the start of the year that a type counts from to 1970-01-01.
double DaysTo1970(DataType type);

} // namespace veltrane::columns

#endif
