#include "support/numbers.h"
#include "support/rows.h"

#include <MCVeltrane_900/DateTimeValue.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>

namespace {

using namespace veltrane::tests;
using MCVeltrane_900::DateTimeValue;

constexpr long long kMost = std::numeric_limits<long long>::max();
constexpr long long kLeast = std::numeric_limits<long long>::min();

TEST(LeapYears, FollowTheGregorianRule) {
    for (const long long year : {2000LL, 0LL, 2004LL, 2400LL, -4LL, -400LL, -2000LL}) {
        EXPECT_TRUE(DateTimeValue::IsLeapYear(year)) << year;
    }
    for (const long long year : {1900LL, 2001LL, 2100LL, -1LL, -100LL, -1900LL}) {
        EXPECT_FALSE(DateTimeValue::IsLeapYear(year)) << year;
    }
}

TEST(CalendarLookups, DaysInYear) {
    EXPECT_EQ(DateTimeValue::DaysInYear(2000), 366);
    EXPECT_EQ(DateTimeValue::DaysInYear(1900), 365);
}

TEST(CalendarLookups, DaysInMonthOfBothKindsOfYear) {
    const long long days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    for (int month = 1; month <= 12; ++month) {
        EXPECT_EQ(DateTimeValue::DaysInMonth(2001, month), days[month - 1]) << month;
        EXPECT_EQ(DateTimeValue::DaysInMonth(2000, month), month == 2 ? 29 : days[month - 1]) << month;
    }
}

TEST(CalendarLookups, DaysBeforeMonthOfBothKindsOfYear) {
    const long long days[] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334};
    for (int month = 1; month <= 12; ++month) {
        EXPECT_EQ(DateTimeValue::DaysBeforeMonth(2001, month), days[month - 1]) << month;
        EXPECT_EQ(DateTimeValue::DaysBeforeMonth(2000, month), days[month - 1] + (month >= 3 ? 1 : 0)) << month;
    }
}

TEST(CalendarLookups, MonthsOutOfRangeReadNothing) {
    for (const long long month : {0LL, -1LL, 13LL, kMost, kLeast}) {
        EXPECT_EQ(DateTimeValue::DaysInMonth(2001, month), 0) << month;
        EXPECT_EQ(DateTimeValue::DaysBeforeMonth(2001, month), 0) << month;
    }
}

struct TimeCase {
    const char* name;
    long long hour, minute, second;
    bool valid;
};

class ValidTime : public testing::TestWithParam<TimeCase> {};

TEST_P(ValidTime, IsJudged) {
    EXPECT_EQ(DateTimeValue::IsValidTime(GetParam().hour, GetParam().minute, GetParam().second), GetParam().valid);
}

constexpr TimeCase kTimeCases[] = {
    {"Midnight", 0, 0, 0, true},         {"LastSecond", 23, 59, 59, true},    {"Hour24", 24, 0, 0, false},
    {"Minute60", 0, 60, 0, false},       {"Second60", 0, 0, 60, false},       {"NegativeHour", -1, 0, 0, false},
    {"NegativeMinute", 0, -1, 0, false}, {"NegativeSecond", 0, 0, -1, false}, {"Least", kLeast, 0, 0, false},
};

INSTANTIATE_TEST_SUITE_P(Rows, ValidTime, testing::ValuesIn(kTimeCases), veltrane::tests::NameOfRow());

struct DateCase {
    const char* name;
    long long year, month, day;
    bool valid;
};

class ValidDate : public testing::TestWithParam<DateCase> {};

TEST_P(ValidDate, IsJudged) {
    EXPECT_EQ(DateTimeValue::IsValidDate(GetParam().year, GetParam().month, GetParam().day), GetParam().valid);
}

constexpr DateCase kDateCases[] = {
    {"First", 1970, 1, 1, true},       {"LeapDay", 2000, 2, 29, true},
    {"NoLeapDay", 2001, 2, 29, false}, {"CenturyNoLeapDay", 1900, 2, 29, false},
    {"YearZero", 0, 2, 29, true},      {"NegativeYear", -1, 12, 31, true},
    {"Month0", 2000, 0, 1, false},     {"Month13", 2000, 13, 1, false},
    {"Day0", 2000, 1, 0, false},       {"Day32", 2000, 1, 32, false},
    {"April31", 2000, 4, 31, false},   {"NegativeMonth", 2000, -1, 1, false},
};

INSTANTIATE_TEST_SUITE_P(Rows, ValidDate, testing::ValuesIn(kDateCases), veltrane::tests::NameOfRow());

// Both counts are the sum over the years of the range; the year at the upper end isn't counted.
long long LoopedLeapYears(long long a, long long b) {
    long long count = 0;
    for (long long year = std::min(a, b); year < std::max(a, b); ++year) {
        count += DateTimeValue::IsLeapYear(year) ? 1 : 0;
    }
    return count;
}

long long LoopedDays(long long a, long long b) {
    long long days = 0;
    for (long long year = std::min(a, b); year < std::max(a, b); ++year) {
        days += DateTimeValue::DaysInYear(year);
    }
    return a < b ? days : -days;
}

TEST(YearRanges, EqualTheLoopOverTheYears) {
    for (const long long from :
         {-2001LL, -800LL, -401LL, -400LL, -100LL, -5LL, -4LL, -1LL, 0LL, 1LL, 4LL, 399LL, 1970LL}) {
        for (long long to = -2100; to <= 2500; to += 7) {
            ASSERT_EQ(DateTimeValue::NumberOfLeapYear(from, to), LoopedLeapYears(from, to)) << from << " " << to;
            ASSERT_EQ(DateTimeValue::DaysBetweenYear(from, to), LoopedDays(from, to)) << from << " " << to;
        }
    }
}

TEST(YearRanges, EveryPairOfNeighbours) {
    for (long long year = -1000; year <= 1000; ++year) {
        EXPECT_EQ(DateTimeValue::NumberOfLeapYear(year, year + 1), DateTimeValue::IsLeapYear(year) ? 1 : 0) << year;
        EXPECT_EQ(DateTimeValue::NumberOfLeapYear(year + 1, year), DateTimeValue::IsLeapYear(year) ? 1 : 0) << year;
        EXPECT_EQ(DateTimeValue::NumberOfLeapYear(year, year), 0) << year;
    }
}

TEST(YearRanges, DaysBetweenYear) {
    EXPECT_EQ(DateTimeValue::DaysBetweenYear(1970, 0), -719528);
    EXPECT_EQ(DateTimeValue::DaysBetweenYear(1970, 1960), -3653);
    EXPECT_EQ(DateTimeValue::DaysBetweenYear(1970, 1980), 3652);
    EXPECT_EQ(DateTimeValue::DaysBetweenYear(1970, 1970), 0);
}

TEST(YearRanges, FarYearsAnswerAtOnce) {
    EXPECT_EQ(DateTimeValue::DaysBetweenYear(0, 400LL * 1000000000000LL), 146097LL * 1000000000000LL);
    EXPECT_EQ(DateTimeValue::NumberOfLeapYear(0, 2147483647), 520764785);
    EXPECT_EQ(DateTimeValue::NumberOfLeapYear(-2147483648LL, 2147483647), 1041529570);
    EXPECT_EQ(DateTimeValue::DaysBetweenYear(0, 2147483647), 2147483647LL * 365 + 520764785);
}

TEST(YearRanges, TheWholeRangeIsDefined) {
    EXPECT_EQ(DateTimeValue::NumberOfLeapYear(kLeast, kMost), 4473335437874566266LL);
    EXPECT_EQ(DateTimeValue::DaysBetweenYear(kLeast, kMost), -DateTimeValue::DaysBetweenYear(kMost, kLeast));
}

struct ExtractTimeCase {
    const char* name;
    double seconds;
    long long hour, minute, second;
};

class ExtractTime : public testing::TestWithParam<ExtractTimeCase> {};

TEST_P(ExtractTime, GivesTheFields) {
    const ExtractTimeCase& c = GetParam();
    long long hour = 0, minute = 0, second = 0;
    DateTimeValue::ExtractTime(c.seconds, hour, minute, second);
    EXPECT_EQ(hour, c.hour);
    EXPECT_EQ(minute, c.minute);
    EXPECT_EQ(second, c.second);
    const DateTimeValue value(c.seconds, DateTimeValue::VAL_DATE);
    EXPECT_EQ(value.ExtractHour(), static_cast<double>(c.hour));
    EXPECT_EQ(value.ExtractMinute(), static_cast<double>(c.minute));
    EXPECT_EQ(value.ExtractSecond(), static_cast<double>(c.second));
}

// A value that doesn't fit into 64 bits reads as the smallest integer: 08:29:52 of its day.
constexpr ExtractTimeCase kExtractTimeCases[] = {
    {"Epoch", 0, 0, 0, 0},
    {"LastSecond", 86399, 23, 59, 59},
    {"NextDay", 86400, 0, 0, 0},
    {"FractionIsDropped", 3661.9, 1, 1, 1},
    {"SecondBeforeTheEpoch", -1, 23, 59, 59},
    {"FractionBeforeTheEpoch", -0.5, 0, 0, 0},
    {"DayBeforeTheEpoch", -86400, 0, 0, 0},
    {"Missing", kMissing, 8, 29, 52},
    {"Infinity", kInfinity, 8, 29, 52},
    {"MinusInfinity", -kInfinity, 8, 29, 52},
    {"NotANumber", kNaN, 8, 29, 52},
};

INSTANTIATE_TEST_SUITE_P(Rows, ExtractTime, testing::ValuesIn(kExtractTimeCases), veltrane::tests::NameOfRow());

struct ExtractDateCase {
    const char* name;
    double seconds;
    long long year, month, day;
};

class ExtractDate : public testing::TestWithParam<ExtractDateCase> {};

TEST_P(ExtractDate, GivesTheFields) {
    const ExtractDateCase& c = GetParam();
    long long year = 0, month = 0, day = 0;
    DateTimeValue::ExtractDate(c.seconds, year, month, day);
    EXPECT_EQ(year, c.year);
    EXPECT_EQ(month, c.month);
    EXPECT_EQ(day, c.day);
    const DateTimeValue value(c.seconds, DateTimeValue::VAL_DATE);
    EXPECT_EQ(value.ExtractYear(), static_cast<double>(c.year));
    EXPECT_EQ(value.ExtractMonth(), static_cast<double>(c.month));
    EXPECT_EQ(value.ExtractDay(), static_cast<double>(c.day));
}

constexpr ExtractDateCase kExtractDateCases[] = {
    {"Epoch", 0, 1970, 1, 1},
    {"LeapDay", 951782400, 2000, 2, 29},
    {"DayAfterLeapDay", 951868800, 2000, 3, 1},
    {"Year1960", -315619200, 1960, 1, 1},
    {"YearZero", -62167219200, 0, 1, 1},
    {"DayBeforeYearZero", -62167305600, -1, 12, 31},
    {"Late", 253402300799, 9999, 12, 31},
};

INSTANTIATE_TEST_SUITE_P(Rows, ExtractDate, testing::ValuesIn(kExtractDateCases), veltrane::tests::NameOfRow());

TEST(KeptExtractDate, TheLastDayBefore1970ReadsAsTheFirstDayAfter) {
    for (const double seconds : {-1.0, -0.5, -86399.0}) {
        long long year = 0, month = 0, day = 0;
        DateTimeValue::ExtractDate(seconds, year, month, day);
        EXPECT_EQ(year, 1970);
        EXPECT_EQ(month, 1);
        EXPECT_EQ(day, 1);
    }
}

TEST(ExtractDateOfAnyDouble, IsDefined) {
    for (const double seconds : {kMissing, kInfinity, -kInfinity, kNaN, 9.2e18, -9.2e18}) {
        long long year = 0, month = 0, day = 0;
        DateTimeValue::ExtractDate(seconds, year, month, day);
        EXPECT_LE(std::abs(month), 12);
        EXPECT_LE(std::abs(day), 31);
    }
}

/// A calendar of its own, which counts on day by day. It knows its leap years by a count too: every fourth year, but
/// for three of four centuries.
class CountedCalendar {
public:
    /// The first day of a year that is a multiple of 400.
    CountedCalendar(long long year, long long dayNumber) : year(year), dayNumber(dayNumber) {}

    void GoToNextDay() {
        ++dayNumber;
        constexpr int kLast[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
        const int last = kLast[month - 1] + (month == 2 && isLeap ? 1 : 0);
        if (day++ < last) {
            return;
        }
        day = 1;
        if (month++ < 12) {
            return;
        }
        month = 1;
        ++year;
        fYearOfCycle = fYearOfCycle == 399 ? 0 : fYearOfCycle + 1;
        const bool isCentury = fYearOfCycle == 100 || fYearOfCycle == 200 || fYearOfCycle == 300;
        isLeap = fYearOfCycle % 4 == 0 && !isCentury;
    }

    long long year;
    int month = 1;
    int day = 1;
    long long dayNumber; ///< since 1970-01-01
    bool isLeap = true;

private:
    int fYearOfCycle = 0;
};

struct ExtractedDate {
    explicit ExtractedDate(double seconds) { DateTimeValue::ExtractDate(seconds, year, month, day); }
    bool operator==(const ExtractedDate&) const = default;
    long long year = 0, month = 0, day = 0;
};

/// The operations that know a day, each against the counted one.
bool AgreesOn(const CountedCalendar& date) {
    const ExtractedDate midnight(static_cast<double>(date.dayNumber * 86400));
    // Before 1970 the day number is rounded up at any other time than midnight.
    const ExtractedDate noon(static_cast<double>(date.dayNumber * 86400 + 43200));
    const ExtractedDate dayOfNoon(static_cast<double>((date.dayNumber + (date.dayNumber < 0 ? 1 : 0)) * 86400));
    const long long beforeMonth = DateTimeValue::DaysBeforeMonth(date.year, date.month);
    return midnight.year == date.year && midnight.month == date.month && midnight.day == date.day &&
           noon == dayOfNoon && DateTimeValue::IsValidDate(date.year, date.month, date.day) &&
           DateTimeValue::IsLeapYear(date.year) == date.isLeap &&
           DateTimeValue::DaysBetweenYear(1970, date.year) + beforeMonth + date.day - 1 == date.dayNumber;
}

/// What the operations tell of the end of a month, when this is its last day.
bool AgreesOnTheEnd(const CountedCalendar& date) {
    return DateTimeValue::DaysInMonth(date.year, date.month) == date.day &&
           !DateTimeValue::IsValidDate(date.year, date.month, date.day + 1) &&
           (date.month != 12 ||
            DateTimeValue::DaysInYear(date.year) == DateTimeValue::DaysBeforeMonth(date.year, 12) + date.day);
}

std::string Written(const CountedCalendar& date) {
    return std::to_string(date.year) + "-" + std::to_string(date.month) + "-" + std::to_string(date.day);
}

TEST(CalendarOfEveryDay, IsTheCountedOne) {
    CountedCalendar date(-400, -719528 - 146097);
    while (date.year < 3200) {
        ASSERT_TRUE(AgreesOn(date)) << Written(date);
        if (date.year >= 0) {
            const DateTimeValue read(Written(date), MCVeltrane_900::ScoreDictVar::DT_DATE);
            ASSERT_EQ(read.GetDouble(), static_cast<double>(date.dayNumber)) << Written(date);
        }
        const CountedCalendar before = date;
        date.GoToNextDay();
        if (date.day == 1) {
            ASSERT_TRUE(AgreesOnTheEnd(before)) << Written(before);
        }
    }
    // Where the counting has led: 1970 was on its way, and the year 3200 begins so many days behind it.
    EXPECT_EQ(date.dayNumber, 449248);
}

} // namespace
