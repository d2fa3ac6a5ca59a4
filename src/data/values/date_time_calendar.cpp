#include "platform/checked_cast.h"

#include <MCVeltrane_900/DateTimeValue.h>

#include <algorithm>

/// Calendar arithmetic of the proleptic Gregorian calendar on 64-bit integers: pure functions, defined for every
/// argument.
namespace MCVeltrane_900 {

namespace {

constexpr long long kMonths = 12;
constexpr long long kJulianDayOf1970 = 2440588;

constexpr long long kDaysInMonth[kMonths + 1] = {0, 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
constexpr long long kDaysBeforeMonth[kMonths + 1] = {0, 0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334};

long long MonthEntry(const long long (&table)[kMonths + 1], long long month) {
    return month >= 0 && month <= kMonths ? table[month] : 0;
}

/// The multiples of n in [0, year), negative for a negative year: a difference of two of them counts a range.
long long MultiplesBelow(long long year, long long n) {
    return year / n + (year % n > 0 ? 1 : 0);
}

long long LeapYearsBelow(long long year) {
    return MultiplesBelow(year, 4) - MultiplesBelow(year, 100) + MultiplesBelow(year, 400);
}

/// Arithmetic that wraps around for years that no date reaches.
unsigned long long Wrapping(long long number) {
    return static_cast<unsigned long long>(number);
}

} // namespace

bool DateTimeValue::IsLeapYear(long long year) {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

long long DateTimeValue::DaysBeforeMonth(long long year, long long month) {
    return MonthEntry(kDaysBeforeMonth, month) + (month >= 3 && IsLeapYear(year) ? 1 : 0);
}

long long DateTimeValue::DaysInYear(long long year) {
    return IsLeapYear(year) ? 366 : 365;
}

long long DateTimeValue::DaysInMonth(long long year, long long month) {
    return month == 2 && IsLeapYear(year) ? 29 : MonthEntry(kDaysInMonth, month);
}

bool DateTimeValue::IsValidTime(long long hour, long long minute, long long second) {
    return Wrapping(hour) < 24 && Wrapping(minute) < 60 && Wrapping(second) < 60;
}

bool DateTimeValue::IsValidDate(long long year, long long month, long long day) {
    return month >= 1 && month <= kMonths && day >= 1 && day <= DaysInMonth(year, month);
}

long long DateTimeValue::NumberOfLeapYear(long long from, long long to) {
    const auto [first, last] = std::minmax(from, to);
    return LeapYearsBelow(last) - LeapYearsBelow(first);
}

long long DateTimeValue::DaysBetweenYear(long long from, long long to) {
    const unsigned long long leapDays = Wrapping(LeapYearsBelow(to)) - Wrapping(LeapYearsBelow(from));
    return static_cast<long long>((Wrapping(to) - Wrapping(from)) * 365 + leapDays);
}

void DateTimeValue::ExtractTime(double seconds, long long& hour, long long& minute, long long& second) {
    long long rest = veltrane::platform::TruncateToInt64(seconds) % SECONDS_PER_DAY;
    if (rest < 0) {
        rest += SECONDS_PER_DAY;
    }
    hour = rest / SECONDS_PER_HOUR;
    minute = (rest - hour * SECONDS_PER_HOUR) / 60;
    second = rest - (hour * 60 + minute) * 60;
}

// E. G. Richards' conversion of a Julian day number, in "Explanatory Supplement to the Astronomical Almanac", 3rd
// edition, 2013, section 15.11. The division toward zero keeps every moment of the day before 1970 on 1970-01-01.
void DateTimeValue::ExtractDate(double seconds, long long& year, long long& month, long long& day) {
    const long long julianDay = veltrane::platform::TruncateToInt64(seconds) / SECONDS_PER_DAY + kJulianDayOf1970;
    const long long f = julianDay + 1401 + (((4 * julianDay + 274277) / 146097) * 3) / 4 - 38;
    const long long e = 4 * f + 3;
    const long long g = (e % 1461) / 4;
    const long long u = 5 * g + 2;
    day = (u % 153) / 5 + 1;
    month = ((u / 153 + 2) % 12) + 1;
    year = e / 1461 - 4716 + (14 - month) / 12;
}

} // namespace MCVeltrane_900
