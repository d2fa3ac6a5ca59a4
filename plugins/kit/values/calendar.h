#ifndef VELTRANE_PLUGINS_KIT_CALENDAR_H
#define VELTRANE_PLUGINS_KIT_CALENDAR_H

#include "kit/values/data_types.h"

#include <MCVeltrane_900/DateTimeValue.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Dates, times and the types that count. The calendar is the Gregorian one, extended to all years; a day has 86,400
/// seconds.
namespace veltrane_kit {

inline constexpr double kSecondsOfDay = MCVeltrane_900::DateTimeValue::SECONDS_PER_DAY;

struct Day {
    std::int64_t year;
    int month; ///< from 1
    int day;   ///< from 1
};

/// Days from 1970-01-01.
std::int64_t DaysOf(const Day& day);
Day DayOf(std::int64_t days);

/// Whether seconds from midnight are less than a day's; a TIME has no others.
bool IsTimeOfDay(double seconds);

/// A moment by its day and by the microsecond of that day that is nearest.
struct NearestMicrosecond {
    std::int64_t day;         ///< from 1970-01-01
    std::int64_t microsecond; ///< from midnight
};

/// @param seconds from 1970-01-01, so many that a double counts their days exactly: 8.64e15 at most, on both sides
NearestMicrosecond MicrosecondOf(double seconds);

/// The number of a DATE, TIME or DATE_TIME that is written in the form of ISO 8601. Seconds may have a fraction of any
/// length; a blank may stand for the T. There are no time zones.
std::optional<double> ReadMoment(std::string_view text, DataType type);

/// In the form of ISO 8601, seconds that are no whole number with up to six decimals. A year has four digits or more,
/// and a sign before year 0.
std::string WriteMoment(double number, DataType type);

/// A number of one of these types as one of another; none where the other one lacks what it would take, as a time
/// lacks the day of a date, and for a TIME beyond a day.
std::optional<double> ConvertMoment(double number, DataType from, DataType to);

/// Two numbers of different types brought to the same scale, where there is one.
void BringTogether(double& left, DataType leftType, double& right, DataType rightType);

} // namespace veltrane_kit

#endif
