#include "support/numbers.h"
#include "support/rows.h"

#include <MCVeltrane_900/DateTimeValue.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace MCVeltrane_900;
using namespace veltrane::tests;

/// A text of a storage type with the internal seconds that it holds, SYSMIS when it doesn't parse.
struct TextCase {
    const char* name;
    ScoreDictVar::DateTimeType type;
    const char* text;
    double seconds;
};

class DateTimeText : public testing::TestWithParam<TextCase> {};
class KeptDateTimeText : public DateTimeText {};

void ExpectText(const TextCase& c) {
    const DateTimeValue value(c.text, c.type);
    EXPECT_EQ(value.ComputeDurationSeconds(DateTimeValue(0.0, DateTimeValue::VAL_DATETIME)), c.seconds);
    EXPECT_EQ(value.GetDateTimeType(), DateTimeValue::GetValType(c.type));
    EXPECT_EQ(DateTimeValue::IsValidDateTime(c.text, c.type), c.seconds != kMissing);
}

TEST_P(DateTimeText, HoldsAndIsValid) {
    ExpectText(GetParam());
}
TEST_P(KeptDateTimeText, HoldsAndIsValid) {
    ExpectText(GetParam());
}

constexpr TextCase kTextCases[] = {
    {"DateEpoch", ScoreDictVar::DT_DATE, "1970-01-01", 0},
    {"DateNextDay", ScoreDictVar::DT_DATE, "1970-01-02", 86400},
    {"DateUnpadded", ScoreDictVar::DT_DATE, "1970-1-2", 86400},
    {"DateBeforeEpoch", ScoreDictVar::DT_DATE, "1960-01-01", -315619200},
    {"DateYearZero", ScoreDictVar::DT_DATE, "0-1-1", -62167219200},
    {"DateLeapDay", ScoreDictVar::DT_DATE, "2000-02-29", 951782400},
    {"DateNoLeapDay", ScoreDictVar::DT_DATE, "2001-02-29", kMissing},
    {"DateAfterFebruaryOfALeapYear", ScoreDictVar::DT_DATE, "2000-03-01", 951868800},
    {"DateMonth13", ScoreDictVar::DT_DATE, "2000-13-01", kMissing},
    {"DateMonth0", ScoreDictVar::DT_DATE, "2000-00-01", kMissing},
    {"DateDay0", ScoreDictVar::DT_DATE, "2000-01-00", kMissing},
    {"DateDay32", ScoreDictVar::DT_DATE, "2000-01-32", kMissing},
    {"DateWithoutDay", ScoreDictVar::DT_DATE, "2000-01", kMissing},
    {"DateYearOnly", ScoreDictVar::DT_DATE, "2000", kMissing},
    {"DateLetterInside", ScoreDictVar::DT_DATE, "2000-0x-01", kMissing},
    {"DateSlashes", ScoreDictVar::DT_DATE, "2000/01/01", kMissing},
    {"DateTab", ScoreDictVar::DT_DATE, "2000-\t1-01", kMissing},
    {"DateWithTime", ScoreDictVar::DT_DATE, "2000-01-01T00:00:00", kMissing},
    {"Time", ScoreDictVar::DT_TIME, "12:30:15", 45015},
    {"TimeMidnight", ScoreDictVar::DT_TIME, "00:00:00", 0},
    {"TimeLastSecond", ScoreDictVar::DT_TIME, "23:59:59", 86399},
    {"TimeHour24", ScoreDictVar::DT_TIME, "24:00:00", kMissing},
    {"TimeMinute60", ScoreDictVar::DT_TIME, "00:60:00", kMissing},
    {"TimeSecond60", ScoreDictVar::DT_TIME, "00:00:60", kMissing},
    {"TimeLetterInside", ScoreDictVar::DT_TIME, "1a:00:00", kMissing},
    {"TimeMinusInside", ScoreDictVar::DT_TIME, "-1:00:00", kMissing},
    {"DateTime", ScoreDictVar::DT_DATETIME, "1970-01-01T00:00:01", 1},
    {"DateTimeFull", ScoreDictVar::DT_DATETIME, "2000-02-29T12:30:15", 951827415},
    {"DateTimeBeforeEpoch", ScoreDictVar::DT_DATETIME, "1969-12-31T23:59:59", -1},
    {"DateTimeWithoutT", ScoreDictVar::DT_DATETIME, "1970-01-01 00:00:01", kMissing},
    {"DateTimeBadDate", ScoreDictVar::DT_DATETIME, "1970-13-01T00:00:01", kMissing},
    {"DateTimeBadTime", ScoreDictVar::DT_DATETIME, "1970-01-01T25:00:01", kMissing},
    {"DateTimeSecondT", ScoreDictVar::DT_DATETIME, "1970-01-01T00:00T:01", kMissing},
    {"DateTimeSmallT", ScoreDictVar::DT_DATETIME, "1970-01-01t00:00:01", kMissing},
    {"Days0", ScoreDictVar::DT_DAYS_SINCE_0, "719528", 0},
    {"Days1960", ScoreDictVar::DT_DAYS_SINCE_1960, "3653.5", 43200},
    {"Days1970", ScoreDictVar::DT_DAYS_SINCE_1970, "-1", -86400},
    {"Days1980", ScoreDictVar::DT_DAYS_SINCE_1980, "0", 315532800},
    {"TimeSeconds", ScoreDictVar::DT_TIME_SECONDS, "1e3", 1000},
    {"Seconds0", ScoreDictVar::DT_SECONDS_SINCE_0, "62167219200", 0},
    {"Seconds1960", ScoreDictVar::DT_SECONDS_SINCE_1960, "0", -315619200},
    {"Seconds1970", ScoreDictVar::DT_SECONDS_SINCE_1970, "12.5", 12.5},
    {"Seconds1980", ScoreDictVar::DT_SECONDS_SINCE_1980, ".5", 315532800.5},
    {"EmptyNumber", ScoreDictVar::DT_DAYS_SINCE_0, "", kMissing},
    {"WordNumber", ScoreDictVar::DT_SECONDS_SINCE_1970, "abc", kMissing},
};

INSTANTIATE_TEST_SUITE_P(Rows, DateTimeText, testing::ValuesIn(kTextCases), veltrane::tests::NameOfRow());

constexpr TextCase kKeptTextCases[] = {
    {"EmptyDateIsDayZero", ScoreDictVar::DT_DATE, "", -62167305600},
    {"EmptyTimeIsMidnight", ScoreDictVar::DT_TIME, "", 0},
    {"EmptyDateTimeIsDayZero", ScoreDictVar::DT_DATETIME, "", -62167305600},
    {"EmptyDateBeforeT", ScoreDictVar::DT_DATETIME, "T01:00:00", -62167302000},
    {"EmptyTimeAfterT", ScoreDictVar::DT_DATETIME, "1970-01-02T", 86400},
    {"TAlone", ScoreDictVar::DT_DATETIME, "T", -62167305600},
    {"LastCharacterIsExempt", ScoreDictVar::DT_DATE, "2001-01-1x", 978307200},
    {"LastCharacterAloneIsExempt", ScoreDictVar::DT_TIME, "12:00:x", 43200},
    {"LeadingMinusIsYearZero", ScoreDictVar::DT_DATE, "-1-5", -62166873600},
    {"TrailingSeparator", ScoreDictVar::DT_DATE, "2001-01-01-", 978307200},
    {"FurtherPiecesAreDropped", ScoreDictVar::DT_DATE, "2001-01-01-77", 978307200},
    {"FurtherTimePiecesAreDropped", ScoreDictVar::DT_TIME, "01:00:00:77", 3600},
    {"BlanksAroundPieces", ScoreDictVar::DT_DATE, " 2001 - 01 - 01 ", 978307200},
    {"BlankInsideAPieceEndsTheNumber", ScoreDictVar::DT_TIME, "1 2:00:00", 3600},
    {"BlankPieceIsZero", ScoreDictVar::DT_TIME, "  :30:00", 1800},
    {"WithoutSeconds", ScoreDictVar::DT_TIME, "12:30", 44999},
    {"HourOnly", ScoreDictVar::DT_TIME, "12", 43139},
    {"DateTimeWithoutSeconds", ScoreDictVar::DT_DATETIME, "1970-01-01T12:30", 44999},
    {"YearHasNoRange", ScoreDictVar::DT_DATE, "2147483647-01-01", (2147483647.0 * 365 + 520764785 - 719528) * 86400},
    {"OverlongYearIsTheLargest", ScoreDictVar::DT_DATE, "99999999999999999999-01-01",
     (2147483647.0 * 365 + 520764785 - 719528) * 86400},
};

INSTANTIATE_TEST_SUITE_P(Rows, KeptDateTimeText, testing::ValuesIn(kKeptTextCases), veltrane::tests::NameOfRow());

TEST(DateTimeTextOfOtherTypes, StaysMissingAndIsValid) {
    for (const int type : {0, -1, 13, 99}) {
        const auto other = static_cast<ScoreDictVar::DateTimeType>(type);
        EXPECT_TRUE(DateTimeValue("12", other).IsSystemMissingValue()) << type;
        EXPECT_EQ(DateTimeValue("12", other).GetDateTimeType(), DateTimeValue::VAL_DATETIME) << type;
        EXPECT_TRUE(DateTimeValue::IsValidDateTime("abc", other)) << type;
        EXPECT_TRUE(DateTimeValue::IsValidDateTime("", other)) << type;
    }
}

TEST(DateTimeTextOfNumbers, ReadsByTheRulesOfNumbers) {
    EXPECT_EQ(DateTimeValue("12abc", ScoreDictVar::DT_SECONDS_SINCE_1970).GetDouble(), 12);
    EXPECT_EQ(DateTimeValue("1e999", ScoreDictVar::DT_SECONDS_SINCE_1970).GetDouble(), kInfinity);
    EXPECT_TRUE(DateTimeValue("-1e999", ScoreDictVar::DT_SECONDS_SINCE_1970).IsSystemMissingValue());
}

/// Whether a text is accepted as a plain decimal number.
struct PlainNumberCase {
    const char* name;
    const char* text;
    bool plain;
};

class PlainNumber : public testing::TestWithParam<PlainNumberCase> {};

TEST_P(PlainNumber, IsJudgedForEveryNumericType) {
    for (int type = ScoreDictVar::DT_DAYS_SINCE_0; type <= ScoreDictVar::DT_SECONDS_SINCE_1980; ++type) {
        EXPECT_EQ(DateTimeValue::IsValidDateTime(GetParam().text, static_cast<ScoreDictVar::DateTimeType>(type)),
                  GetParam().plain)
            << type;
    }
}

constexpr PlainNumberCase kPlainNumberCases[] = {
    {"Empty", "", false},
    {"Integer", "12", true},
    {"Decimal", "12.5", true},
    {"NoIntegerPart", ".5", true},
    {"PointLast", "5.", false},
    {"PointAlone", ".", false},
    {"TwoPoints", "1.2.3", false},
    {"Minus", "-1.5", true},
    {"Plus", "+1.5", true},
    {"MinusInside", "1-5", false},
    {"TwoMinus", "--5", false},
    {"PlusInside", "1+5", false},
    {"BothSigns", "-+5", false},
    {"PlusMinus", "+-5", false},
    {"MinusLast", "5-", false},
    {"PlusLast", "5+", false},
    {"MinusAlone", "-", false},
    {"PlusAlone", "+", false},
    {"Exponent", "1e5", true},
    {"UpperExponent", "1E5", true},
    {"ExponentFirst", "e5", false},
    {"UpperExponentFirst", "E5", false},
    {"ExponentLast", "1e", false},
    {"UpperExponentLast", "1E", false},
    {"ExponentAlone", "e", false},
    {"TwoExponents", "1e2e3", false},
    {"TwoUpperExponents", "1E2E3", false},
    {"BothExponents", "1e2E3", false},
    {"BothExponentsUpperFirst", "1E2e3", false},
    {"MinusExponent", "1e-5", true},
    {"UpperMinusExponent", "1E-5", true},
    {"PlusExponent", "1e+5", true},
    {"UpperPlusExponent", "1E+5", true},
    {"MinusInsideTheExponent", "1e5-5", false},
    {"PlusInsideTheExponent", "1e5+5", false},
    {"MinusLastInTheExponent", "1e-", false},
    {"PlusLastInTheExponent", "1e+", false},
    {"SignAndExponentSign", "-1e+5", true},
    {"TwoMinusOneInTheExponent", "1-2e-5", true},
    {"PointBeforeTheExponent", "5.e3", false},
    {"UpperPointBeforeTheExponent", "5.E3", false},
    {"FractionBeforeTheExponent", "5.5e3", true},
    {"PointBehindTheExponent", "5e3.5", false},
    {"UpperPointBehindTheExponent", "5E3.5", false},
    {"Blank", " 5", false},
    {"TrailingBlank", "5 ", false},
    {"Letter", "5a", false},
    {"Hexadecimal", "0x5", false},
    {"InfinityByName", "inf", false},
    {"Comma", "1,5", false},
    {"MinusThenExponent", "-e5", true},
};

INSTANTIATE_TEST_SUITE_P(Rows, PlainNumber, testing::ValuesIn(kPlainNumberCases), veltrane::tests::NameOfRow());

TEST(KeptPlainNumber, TwoMinusOneInTheExponentReadsAsTheFirstNumber) {
    EXPECT_EQ(DateTimeValue("1-2e-5", ScoreDictVar::DT_SECONDS_SINCE_1970).GetDouble(), 1);
}

} // namespace
