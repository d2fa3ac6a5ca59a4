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

/// The number of a DATE, TIME or DATE_TIME that is written in the form of ISO 8601; a blank may stand for the T.
std::optional<double> ReadMoment(std::string_view text, DataType type);

/// In the form of ISO 8601, seconds without a fraction.
std::string WriteMoment(double number, DataType type);

/// A number of one of these types as one of another; none where the other one lacks what it would take, as a time
/// lacks the day of a date, and for a TIME beyond a day.
std::optional<double> ConvertMoment(double number, DataType from, DataType to);

/// Two numbers of different types brought to the same scale, where there is one.
void BringTogether(double& left, DataType leftType, double& right, DataType rightType);

} // namespace veltrane_kit

#endif
