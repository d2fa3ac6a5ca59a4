// Dates and times as texts: what a cell holds shows wherever it is made a text, and the text is read again.
#include "kit/values/values.h"
#include "models/kit/scoring.h"
#include "support/rows.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>

namespace {

using namespace veltrane::tests;
using veltrane::DataType;
using veltrane_kit::CastValue;
using veltrane_kit::MakeNumber;
using veltrane_kit::ReadValue;
using veltrane_kit::Value;

struct Row {
    const char* name;
    DataType type;
    double number;
    const char* text;
};

void PrintTo(const Row& row, std::ostream* out) {
    *out << row.name;
}

class MomentText : public testing::TestWithParam<Row> {};

TEST_P(MomentText, IsThatOfTheNearestMicrosecond) {
    std::string buffer;
    const Value text = CastValue(MakeNumber(GetParam().number, GetParam().type), DataType::STRING, buffer);
    EXPECT_EQ(text.text, GetParam().text);
}

const Row kWritten[] = {
    {"Whole", DataType::DATE_TIME, 1709164800.0 + 45296, "2024-02-29T12:34:56"},
    {"Half", DataType::DATE_TIME, 1.5, "1970-01-01T00:00:01.5"},
    {"BeforeTheEpoch", DataType::DATE_TIME, -0.25, "1969-12-31T23:59:59.75"},
    {"Tenth", DataType::DATE_TIME, 946684800.1, "2000-01-01T00:00:00.1"},
    {"SixDecimals", DataType::TIME, 86399.999999, "23:59:59.999999"},
    {"ZerosInFront", DataType::TIME, 3661.000001, "01:01:01.000001"},
    {"RoundsDown", DataType::TIME, 0.0000004, "00:00:00"},
    {"RoundsUp", DataType::TIME, 59.9999996, "00:01:00"},
    {"RoundsToTheNextYear", DataType::DATE_TIME, 946684799.9999999, "2000-01-01T00:00:00"},
    {"NearlyTheEpoch", DataType::DATE_TIME, -1e-20, "1970-01-01T00:00:00"},
    {"TheEndOfADayIsNoTime", DataType::TIME, 86399.9999999, "23:59:59.999999"},
    {"Far", DataType::DATE_TIME, 253402300799.5, "9999-12-31T23:59:59.5"},
    {"DateOfAHalfDay", DataType::DATE, 1.5, "1970-01-02"},
    {"BeforeYear0", DataType::DATE_TIME, -62167219200.5, "-0001-12-31T23:59:59.5"},
    {"LongYear", DataType::DATE_TIME, 253402300800.25, "10000-01-01T00:00:00.25"},
    {"FartherThanAnyText", DataType::DATE_TIME, 1e300, "273792670-09-13T00:00:00"},
};
INSTANTIATE_TEST_SUITE_P(Written, MomentText, testing::ValuesIn(kWritten), NameOfRow());

class WrittenMoment : public testing::TestWithParam<Row> {};

TEST_P(WrittenMoment, IsReadWithItsFraction) {
    const Value value = ReadValue(GetParam().text, GetParam().type);
    EXPECT_EQ(value.isMissing, std::isnan(GetParam().number));
    if (!value.isMissing) {
        EXPECT_EQ(value.number, GetParam().number);
    }
}

const std::string kLongFraction = "12:00:00." + std::string(1000000, '3');
const std::string kTinyFraction = "12:00:00." + std::string(1000, '0') + "1";

const Row kRead[] = {
    {"Half", DataType::DATE_TIME, 1.5, "1970-01-01T00:00:01.5"},
    {"Blanks", DataType::DATE_TIME, -0.25, " 1969-12-31 23:59:59.75\t"},
    {"Zeros", DataType::TIME, 3600.0, "1:0:0.000"},
    {"NoDigit", DataType::TIME, kNaN, "01:00:00."},
    {"NoSeconds", DataType::TIME, kNaN, "01:00.5"},
    {"Comma", DataType::TIME, kNaN, "01:00:00,5"},
    {"Exponent", DataType::TIME, kNaN, "01:00:00.5e1"},
    {"Zone", DataType::DATE_TIME, kNaN, "1970-01-01T00:00:01.5Z"},
    {"LeapSecond", DataType::DATE_TIME, kNaN, "2016-12-31T23:59:60.5"},
    {"FractionOfADay", DataType::DATE, kNaN, "1970-01-01.5"},
    {"TheEndOfADay", DataType::TIME, kNaN, "23:59:59.99999999999999999"},
    {"TheEndOfADateTime", DataType::DATE_TIME, 86400.0, "1970-01-01T23:59:59.99999999999999999"},
    {"ManyDigits", DataType::TIME, 43200.0 + 1.0 / 3.0, kLongFraction.c_str()},
    {"SmallerThanAnyNumber", DataType::TIME, 43200.0, kTinyFraction.c_str()},
};
INSTANTIATE_TEST_SUITE_P(Read, WrittenMoment, testing::ValuesIn(kRead), NameOfRow());

/// A text is read as the number that it was made of, for as long as a double tells one microsecond from the next.
TEST(MomentTexts, AreReadAsWhatTheyWere) {
    std::mt19937_64 random(20311);
    std::string buffer;
    for (int round = 0; round < 100000; ++round) {
        const double whole = static_cast<double>(random() % (1ULL << 31U)) * (round % 2 == 0 ? 1 : -1);
        const double number = whole + static_cast<double>(random() % 1000000) / 1e6;
        const Value value = MakeNumber(number, DataType::DATE_TIME);
        const Value again = CastValue(CastValue(value, DataType::STRING, buffer), DataType::DATE_TIME, buffer);
        ASSERT_EQ(again.number, number) << buffer;
    }
}

/// A dateTime with a fraction reaches an expression as the cast of a count, or as a value of the host.
TEST(MomentTexts, AreTheSameOnEveryRoad) {
    const std::string concat = "<Apply function='concat'><FieldRef field='m'/><Constant dataType='string'/></Apply>";
    const std::string document =
        "<PMML version='4.4'><DataDictionary><DataField name='n' optype='continuous' "
        "dataType='dateTimeSecondsSince[1970]'/></DataDictionary><TransformationDictionary>"
        "<DerivedField name='m' optype='ordinal' dataType='dateTime'><FieldRef field='n'/></DerivedField>"
        "<DerivedField name='s' optype='categorical' dataType='string'><FieldRef field='m'/></DerivedField>"
        "</TransformationDictionary><RegressionModel functionName='regression'><MiningSchema><MiningField name='n'/>"
        "</MiningSchema><Output><OutputField name='joined' feature='transformedValue' dataType='string'>" +
        concat +
        "</OutputField><OutputField name='text' feature='transformedValue' dataType='string'><FieldRef field='s'/>"
        "</OutputField><OutputField name='cast' feature='transformedValue' dataType='string'><FieldRef field='m'/>"
        "</OutputField></Output><RegressionTable intercept='1'/></RegressionModel></PMML>";
    Scored scored(document);
    ASSERT_TRUE(scored.Score({{"n", "1.25"}}).IsOK());
    EXPECT_EQ(scored.Text("joined"), "1970-01-01T00:00:01.25");
    EXPECT_EQ(scored.Text("text"), "1970-01-01T00:00:01.25");
    EXPECT_EQ(scored.Text("cast"), "1970-01-01T00:00:01.25");
}

} // namespace
