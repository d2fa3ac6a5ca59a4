#include "support/numbers.h"
#include "support/rows.h"

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/StringValue.h>

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>

namespace {

using namespace MCVeltrane_900;
using namespace veltrane::tests;

double Seconds(const DateTimeValue& value) {
    return value.NumericValue::GetDouble();
}

/// A storage type with a number of it and the internal seconds of that number.
struct TypeCase {
    const char* name;
    int type;
    double number, seconds;
    DateTimeValue::DateTimeValType kind;
};

class StorageTypes : public testing::TestWithParam<TypeCase> {
protected:
    const ScoreDictVar::DateTimeType type = static_cast<ScoreDictVar::DateTimeType>(GetParam().type);
};

TEST_P(StorageTypes, NumberToSeconds) {
    const DateTimeValue value(GetParam().number, type);
    EXPECT_EQ(Seconds(value), GetParam().seconds);
    EXPECT_EQ(value.GetDateTimeType(), GetParam().kind);
    DateTimeValue set(5, DateTimeValue::VAL_DATETIME);
    set.SetDateTimeValue(GetParam().number, type);
    EXPECT_EQ(Seconds(set), GetParam().seconds);
    EXPECT_EQ(set.GetDateTimeType(), GetParam().kind);
}

TEST_P(StorageTypes, SecondsToNumber) {
    const DateTimeValue value(GetParam().seconds, GetParam().kind);
    EXPECT_EQ(value.GetDoubleValue(type), GetParam().number);
    const std::unique_ptr<ScoreValue> number(value.GetValue(type));
    EXPECT_EQ(number->GetType(), ScoreValue::NUMERIC_VALUE);
    EXPECT_EQ(number->GetDouble(), GetParam().number);
}

TEST_P(StorageTypes, MissingBothWays) {
    EXPECT_TRUE(DateTimeValue(kMissing, type).IsSystemMissingValue());
    EXPECT_EQ(DateTimeValue(kMissing, type).GetDateTimeType(), GetParam().kind);
    EXPECT_EQ(DateTimeValue().GetDoubleValue(type), kMissing);
}

TEST_P(StorageTypes, KindOfTheType) {
    EXPECT_EQ(DateTimeValue::GetValType(type), GetParam().kind);
}

constexpr TypeCase kTypeCases[] = {
    {"Date", 1, 86400.5, 86400.5, DateTimeValue::VAL_DATE},
    {"Time", 2, 45000.25, 45000.25, DateTimeValue::VAL_TIME},
    {"DateTime", 3, -1.5, -1.5, DateTimeValue::VAL_DATETIME},
    {"DaysSince0", 4, 0, -62167219200, DateTimeValue::VAL_DATE},
    {"DaysSince1960", 5, 0, -315619200, DateTimeValue::VAL_DATE},
    {"DaysSince1970", 6, 1.5, 129600, DateTimeValue::VAL_DATE},
    {"DaysSince1980", 7, 0, 315532800, DateTimeValue::VAL_DATE},
    {"TimeSeconds", 8, 3600.5, 3600.5, DateTimeValue::VAL_TIME},
    {"SecondsSince0", 9, 0, -62167219200, DateTimeValue::VAL_DATETIME},
    {"SecondsSince1960", 10, 0, -315619200, DateTimeValue::VAL_DATETIME},
    {"SecondsSince1970", 11, 12.5, 12.5, DateTimeValue::VAL_DATETIME},
    {"SecondsSince1980", 12, 0, 315532800, DateTimeValue::VAL_DATETIME},
    {"DaysSince0WithFraction", 4, 719528.25, 21600, DateTimeValue::VAL_DATE},
    {"DaysSince1960WithFraction", 5, 3653.25, 21600, DateTimeValue::VAL_DATE},
    {"DaysSince1980WithFraction", 7, -3651.75, 21600, DateTimeValue::VAL_DATE},
    {"InfinityPasses", 4, kInfinity, kInfinity, DateTimeValue::VAL_DATE},
};

INSTANTIATE_TEST_SUITE_P(Rows, StorageTypes, testing::ValuesIn(kTypeCases), veltrane::tests::NameOfRow());

TEST(StorageTypeNumbers, AreFixed) {
    EXPECT_EQ(ScoreDictVar::DT_NONE, 0);
    EXPECT_EQ(ScoreDictVar::DT_DATE, 1);
    EXPECT_EQ(ScoreDictVar::DT_TIME, 2);
    EXPECT_EQ(ScoreDictVar::DT_DATETIME, 3);
    EXPECT_EQ(ScoreDictVar::DT_DAYS_SINCE_0, 4);
    EXPECT_EQ(ScoreDictVar::DT_DAYS_SINCE_1960, 5);
    EXPECT_EQ(ScoreDictVar::DT_DAYS_SINCE_1970, 6);
    EXPECT_EQ(ScoreDictVar::DT_DAYS_SINCE_1980, 7);
    EXPECT_EQ(ScoreDictVar::DT_TIME_SECONDS, 8);
    EXPECT_EQ(ScoreDictVar::DT_SECONDS_SINCE_0, 9);
    EXPECT_EQ(ScoreDictVar::DT_SECONDS_SINCE_1960, 10);
    EXPECT_EQ(ScoreDictVar::DT_SECONDS_SINCE_1970, 11);
    EXPECT_EQ(ScoreDictVar::DT_SECONDS_SINCE_1980, 12);
}

TEST(StorageTypesOutOfRange, GiveMissingAndDateTime) {
    for (const int number : {-1, 0, 13, 1000}) {
        const auto type = static_cast<ScoreDictVar::DateTimeType>(number);
        EXPECT_TRUE(DateTimeValue(5.0, type).IsSystemMissingValue()) << number;
        EXPECT_EQ(DateTimeValue(5.0, type).GetDateTimeType(), DateTimeValue::VAL_DATETIME) << number;
        EXPECT_EQ(DateTimeValue(5.0, DateTimeValue::VAL_TIME).GetDoubleValue(type), kMissing) << number;
        EXPECT_EQ(DateTimeValue::GetValType(type), DateTimeValue::VAL_DATETIME) << number;
    }
}

TEST(StorageTypesUnconverted, KeepTheSignOfZero) {
    const DateTimeValue value(-0.0, ScoreDictVar::DT_SECONDS_SINCE_1970);
    EXPECT_EQ(std::bit_cast<std::uint64_t>(Seconds(value)), std::bit_cast<std::uint64_t>(-0.0));
    EXPECT_EQ(std::bit_cast<std::uint64_t>(value.GetDoubleValue(ScoreDictVar::DT_DATETIME)),
              std::bit_cast<std::uint64_t>(-0.0));
}

TEST(DateTimeKinds, HaveTheirNumbersAndStorageTypes) {
    EXPECT_EQ(DateTimeValue::VAL_DATE, 0);
    EXPECT_EQ(DateTimeValue::VAL_TIME, 1);
    EXPECT_EQ(DateTimeValue::VAL_DATETIME, 2);
    EXPECT_EQ(DateTimeValue::GetDateTimeType(DateTimeValue::VAL_DATE), 1);
    EXPECT_EQ(DateTimeValue::GetDateTimeType(DateTimeValue::VAL_TIME), 2);
    EXPECT_EQ(DateTimeValue::GetDateTimeType(DateTimeValue::VAL_DATETIME), 3);
    EXPECT_EQ(DateTimeValue::GetDateTimeType(static_cast<DateTimeValue::DateTimeValType>(17)), 3);
}

TEST(DateTimeConstruction, DefaultIsAMissingDateTime) {
    EXPECT_TRUE(DateTimeValue().IsSystemMissingValue());
    EXPECT_EQ(DateTimeValue().GetDateTimeType(), DateTimeValue::VAL_DATETIME);
    EXPECT_EQ(DateTimeValue().GetType(), ScoreValue::DATETIME_VALUE);
}

TEST(DateTimeConstruction, CopyAssignmentCloneAndGetValueKeepBothFields) {
    const DateTimeValue value(86400, DateTimeValue::VAL_DATE);
    const DateTimeValue copy(value);
    DateTimeValue assigned;
    assigned = value;
    DateTimeValue& same = assigned;
    assigned = same;
    const std::unique_ptr<ScoreValue> clone(value.Clone());
    const std::unique_ptr<ScoreValue> taken(value.GetValue());
    for (const ScoreValue* other :
         {static_cast<const ScoreValue*>(&copy), static_cast<const ScoreValue*>(&assigned),
          static_cast<const ScoreValue*>(clone.get()), static_cast<const ScoreValue*>(taken.get())}) {
        EXPECT_TRUE(value == *other);
        EXPECT_EQ(other->GetDouble(), 1);
    }
}

TEST(DateTimeConstruction, SetDateTimeValueStoresAsGiven) {
    DateTimeValue value;
    value.SetDateTimeValue(12.5, DateTimeValue::VAL_TIME);
    EXPECT_EQ(Seconds(value), 12.5);
    EXPECT_EQ(value.GetDateTimeType(), DateTimeValue::VAL_TIME);
}

TEST(DateTimeGetDouble, IsDaysForADateAndSecondsOtherwise) {
    EXPECT_EQ(DateTimeValue(129600, DateTimeValue::VAL_DATE).GetDouble(), 1.5);
    EXPECT_EQ(DateTimeValue(129600, DateTimeValue::VAL_TIME).GetDouble(), 129600);
    EXPECT_EQ(DateTimeValue(129600, DateTimeValue::VAL_DATETIME).GetDouble(), 129600);
}

TEST(DateTimeGetDouble, FollowsSetDateTimeType) {
    DateTimeValue value(86400, DateTimeValue::VAL_TIME);
    value.SetDateTimeType(DateTimeValue::VAL_DATE);
    EXPECT_EQ(value.GetDouble(), 1);
    EXPECT_EQ(Seconds(value), 86400);
}

TEST(DateTimeGetInt, TruncatesGetDouble) {
    EXPECT_EQ(DateTimeValue(129600, DateTimeValue::VAL_DATE).GetInt(), 1);
    EXPECT_EQ(DateTimeValue(-129600, DateTimeValue::VAL_DATE).GetInt(), -1);
    EXPECT_EQ(DateTimeValue(129600.9, DateTimeValue::VAL_TIME).GetInt(), 129600);
    EXPECT_EQ(DateTimeValue(1e12, DateTimeValue::VAL_TIME).GetInt(), std::numeric_limits<int>::min());
    EXPECT_EQ(DateTimeValue().GetInt(), std::numeric_limits<int>::min());
}

TEST(DateTimeEquality, IsExactInSecondsAndKind) {
    const DateTimeValue date(86400, DateTimeValue::VAL_DATE);
    EXPECT_TRUE(date == DateTimeValue(86400, DateTimeValue::VAL_DATE));
    EXPECT_FALSE(date == DateTimeValue(86400 + 1e-9, DateTimeValue::VAL_DATE));
    EXPECT_FALSE(date == DateTimeValue(86400, DateTimeValue::VAL_DATETIME));
    EXPECT_FALSE(date == NumericValue(86400));
    EXPECT_FALSE(NumericValue(1) == date);
    EXPECT_FALSE(date == StringValue("1"));
    EXPECT_TRUE(DateTimeValue() == DateTimeValue());
}

TEST(DateTimeEquality, EqualIsInheritedAndTrue) {
    EXPECT_TRUE(DateTimeValue(1, DateTimeValue::VAL_TIME).Equal(nullptr, false, false));
}

TEST(DateTimeSetValue, TakesNumbersAndDateTimes) {
    DateTimeValue value(1, DateTimeValue::VAL_TIME);
    const NumericValue number(5);
    value.SetValue(&number);
    EXPECT_EQ(Seconds(value), 5);
    EXPECT_EQ(value.GetDateTimeType(), DateTimeValue::VAL_TIME);
    const DateTimeValue other(7, DateTimeValue::VAL_DATETIME);
    value.SetValue(&other);
    EXPECT_EQ(Seconds(value), 7);
    EXPECT_EQ(value.GetDateTimeType(), DateTimeValue::VAL_DATETIME);
}

TEST(DateTimeSetValue, NullAndTextGiveMissingAndLeaveTheKind) {
    const StringValue text("5");
    for (const ScoreValue* other : {static_cast<const ScoreValue*>(nullptr), static_cast<const ScoreValue*>(&text)}) {
        DateTimeValue value(1, DateTimeValue::VAL_TIME);
        value.SetValue(other);
        EXPECT_TRUE(value.IsSystemMissingValue());
        EXPECT_EQ(value.GetDateTimeType(), DateTimeValue::VAL_TIME);
    }
}

TEST(KeptDateTimeSetValue, ADateIsStoredAsItsDayCount) {
    const DateTimeValue date(86400 * 10, DateTimeValue::VAL_DATE);
    DateTimeValue value;
    value.SetValue(&date);
    EXPECT_EQ(Seconds(value), 10);
    EXPECT_EQ(value.GetDateTimeType(), DateTimeValue::VAL_DATE);
    value.SetDateTimeValue(86400, DateTimeValue::VAL_DATE);
    value.SetValue(&value);
    EXPECT_EQ(Seconds(value), 1);
}

TEST(KeptDateTimeOrder, ComparesSecondsOnTheLeftWithDaysOnTheRight) {
    const DateTimeValue earlier(86400, DateTimeValue::VAL_DATE), later(86400 * 2, DateTimeValue::VAL_DATE);
    EXPECT_TRUE(earlier > later);
    EXPECT_TRUE(earlier >= later);
    EXPECT_FALSE(earlier < later);
    EXPECT_FALSE(earlier <= earlier);
}

TEST(DateTimeOrder, ComparesSecondsOfTheOtherKinds) {
    const DateTimeValue noon(43200, DateTimeValue::VAL_TIME), one(46800, DateTimeValue::VAL_DATETIME);
    EXPECT_TRUE(noon < one);
    EXPECT_TRUE(one > noon);
    EXPECT_TRUE(noon <= NumericValue(43200));
    EXPECT_TRUE(noon >= NumericValue(43200));
    EXPECT_FALSE(noon < DateTimeValue());
    EXPECT_FALSE(DateTimeValue() < noon);
}

TEST(DateTimeDurations, DivideTheDifference) {
    const DateTimeValue start(1000, DateTimeValue::VAL_DATETIME), end(1000 + 86400 * 2, DateTimeValue::VAL_DATE);
    EXPECT_EQ(end.ComputeDurationSeconds(start), 172800);
    EXPECT_EQ(start.ComputeDurationSeconds(end), -172800);
    EXPECT_EQ(end.ComputeDurationMinutes(start), 2880);
    EXPECT_EQ(end.ComputeDurationHours(start), 48);
    EXPECT_EQ(end.ComputeDurationDays(start), 2);
    EXPECT_EQ(end.ComputeDurationMonths(start), 2 / 30.4375);
    EXPECT_EQ(end.ComputeDurationYears(start), 2 / 365.25);
}

TEST(DateTimeDurations, MonthsAndYearsAreAverages) {
    const DateTimeValue start(0, DateTimeValue::VAL_DATETIME);
    EXPECT_EQ(DateTimeValue(30.4375 * 86400, DateTimeValue::VAL_DATETIME).ComputeDurationMonths(start), 1);
    EXPECT_EQ(DateTimeValue(365.25 * 86400, DateTimeValue::VAL_DATETIME).ComputeDurationYears(start), 1);
}

TEST(DateTimeDurations, DontTestForMissing) {
    const DateTimeValue missing, zero(0, DateTimeValue::VAL_DATETIME);
    EXPECT_EQ(missing.ComputeDurationSeconds(zero), kMissing);
    EXPECT_EQ(missing.ComputeDurationSeconds(missing), 0);
}

TEST(KeptDateTimeGetString, OrdinaryValuesAreUndefined) {
    for (const auto kind : {DateTimeValue::VAL_DATE, DateTimeValue::VAL_TIME, DateTimeValue::VAL_DATETIME}) {
        EXPECT_EQ(DateTimeValue(86400.0, kind).GetString(), "Undefined");
        EXPECT_EQ(DateTimeValue(kInfinity, kind).GetString(), "Undefined");
    }
}

// The fields of a missing value are those of the smallest 64-bit number of seconds.
TEST(KeptDateTimeGetString, AMissingValueIsFormattedByItsKind) {
    for (const double seconds : {kMissing, -kInfinity}) {
        EXPECT_EQ(DateTimeValue(seconds, DateTimeValue::VAL_DATE).GetString(), "-292277022657-3--28");
        EXPECT_EQ(DateTimeValue(seconds, DateTimeValue::VAL_TIME).GetString(), "8:29:52");
        EXPECT_EQ(DateTimeValue(seconds, DateTimeValue::VAL_DATETIME).GetString(), "-292277022657-3--28T8:29:52");
        EXPECT_EQ(DateTimeValue(seconds, static_cast<DateTimeValue::DateTimeValType>(9)).GetString(), "Undefined");
    }
}

TEST(DateTimeNumericString, HasSixDecimals) {
    EXPECT_EQ(DateTimeValue(86400.0, DateTimeValue::VAL_DATE).GetNumericString(), "86400.000000");
    EXPECT_EQ(DateTimeValue(946684800, DateTimeValue::VAL_DATETIME).GetNumericString(), "946684800.000000");
    EXPECT_EQ(DateTimeValue(-0.12345678, DateTimeValue::VAL_TIME).GetNumericString(), "-0.123457");
    EXPECT_EQ(DateTimeValue(kInfinity, DateTimeValue::VAL_TIME).GetNumericString(), "inf");
    EXPECT_EQ(DateTimeValue(1e308, DateTimeValue::VAL_TIME).GetNumericString().size(), 309u + 7);
    EXPECT_EQ(DateTimeValue(-1.7e308, DateTimeValue::VAL_TIME).GetNumericString().size(), 310u + 7);
}

TEST(DateTimeNumericString, IsUndefinedAtOrBelowMissing) {
    EXPECT_EQ(DateTimeValue().GetNumericString(), "Undefined");
    EXPECT_EQ(DateTimeValue(-kInfinity, DateTimeValue::VAL_TIME).GetNumericString(), "Undefined");
}

} // namespace
