#include "data/sets/counted_values.h"
#include "support/numbers.h"
#include "support/rows.h"

#include <MCVeltrane_900/Range.h>

#include <gtest/gtest.h>

#include <cmath>

namespace MCVeltrane_900 {
namespace {

using namespace veltrane::tests;

struct InRangeRow {
    const char* name;
    bool lowEnd;
    bool highEnd;
    double value;
    bool in;
};

void PrintTo(const InRangeRow& row, std::ostream* out) {
    *out << row.name;
}

/// A range from 1 to 2; 1e-15 is within the tolerance of both ends, 1e-12 is not.
class InRange : public testing::TestWithParam<InRangeRow> {};

TEST_P(InRange, ByNumber) {
    const InRangeRow& row = GetParam();
    EXPECT_EQ(Range(1.0, 2.0, row.lowEnd, row.highEnd).IsInRange(row.value), row.in);
}

TEST_P(InRange, ByValue) {
    const InRangeRow& row = GetParam();
    const NumericValue value(row.value);
    EXPECT_EQ(Range(1.0, 2.0, row.lowEnd, row.highEnd).IsInRange(&value), row.in);
}

TEST_P(InRange, BetweenValues) {
    const InRangeRow& row = GetParam();
    const Range range(new NumericValue(1.0), new NumericValue(2.0), row.lowEnd, row.highEnd);
    EXPECT_EQ(range.IsInRange(row.value), row.in);
}

const InRangeRow kInRangeRows[] = {
    {"ClosedClosedLow", true, true, 1.0, true},
    {"ClosedClosedHigh", true, true, 2.0, true},
    {"ClosedClosedInside", true, true, 1.5, true},
    {"ClosedClosedNearBelowLow", true, true, 1.0 - 1e-15, true},
    {"ClosedClosedNearAboveHigh", true, true, 2.0 + 1e-15, true},
    {"ClosedClosedFarBelowLow", true, true, 1.0 - 1e-12, false},
    {"ClosedClosedFarAboveHigh", true, true, 2.0 + 1e-12, false},
    {"ClosedOpenLow", true, false, 1.0, true},
    {"ClosedOpenHigh", true, false, 2.0, false},
    {"ClosedOpenInside", true, false, 1.5, true},
    {"ClosedOpenNearBelowLow", true, false, 1.0 - 1e-15, true},
    {"ClosedOpenNearBelowHigh", true, false, 2.0 - 1e-15, true},
    {"ClosedOpenNearAboveHigh", true, false, 2.0 + 1e-15, false},
    {"OpenClosedLow", false, true, 1.0, false},
    {"OpenClosedHigh", false, true, 2.0, true},
    {"OpenClosedInside", false, true, 1.5, true},
    {"OpenClosedNearBelowLow", false, true, 1.0 - 1e-15, false},
    {"OpenClosedNearAboveLow", false, true, 1.0 + 1e-15, true},
    {"OpenClosedNearAboveHigh", false, true, 2.0 + 1e-15, true},
    {"OpenOpenLow", false, false, 1.0, false},
    {"OpenOpenHigh", false, false, 2.0, false},
    {"OpenOpenInside", false, false, 1.5, true},
    {"OpenOpenNearAboveLow", false, false, 1.0 + 1e-15, true},
    {"OpenOpenNearBelowHigh", false, false, 2.0 - 1e-15, true},
    {"OpenOpenNearBelowLow", false, false, 1.0 - 1e-15, false},
    {"OpenOpenBelow", false, false, 0.0, false},
    {"OpenOpenAbove", false, false, 3.0, false},
    {"ClosedClosedMissing", true, true, kMissing, false},
    {"ClosedClosedInfinite", true, true, kInfinity, false},
    {"ClosedClosedMinusInfinite", true, true, -kInfinity, false},
    {"ClosedClosedNaN", true, true, kNaN, false},
};

INSTANTIATE_TEST_SUITE_P(Rows, InRange, testing::ValuesIn(kInRangeRows), veltrane::tests::NameOfRow());

TEST(Range, MissingIsInNoRangeAlsoWithInfiniteBounds) {
    const Range range(-kInfinity, kInfinity, true, true);
    const NumericValue missing;
    EXPECT_FALSE(range.IsInRange(kMissing));
    EXPECT_FALSE(range.IsInRange(&missing));
    EXPECT_TRUE(range.IsInRange(0.0));
    EXPECT_TRUE(range.IsInRange(std::nextafter(kMissing, 0.0)));
}

TEST(Range, IncludedInfiniteEndsMatchNoInfinity) {
    const Range range(-kInfinity, kInfinity, true, true);
    EXPECT_FALSE(range.IsInRange(kInfinity));
    EXPECT_FALSE(range.IsInRange(-kInfinity));
}

TEST(Range, NullValueIsInNoRange) {
    const ScoreValue* none = nullptr;
    EXPECT_FALSE(Range(-kInfinity, kInfinity, true, true).IsInRange(none));
    EXPECT_FALSE(Range(new NumericValue(1.0)).IsInRange(none));
}

TEST(Range, TextIsInNoRangeButASingleValue) {
    const StringValue text("1.5");
    EXPECT_FALSE(Range(1.0, 2.0, true, true).IsInRange(&text));
    EXPECT_FALSE(Range(new StringValue("1"), new StringValue("2"), true, true).IsInRange(&text));
    EXPECT_TRUE(Range(new StringValue("1.5  ")).IsInRange(&text));
    EXPECT_FALSE(Range(new NumericValue(1.5)).IsInRange(&text));
}

TEST(Range, DateTimeIsTestedByItsDouble) {
    const DateTimeValue day(86400.0, DateTimeValue::VAL_DATE);
    const DateTimeValue second(86400.0, DateTimeValue::VAL_DATETIME);
    const DateTimeValue missing;
    const Range days(0.0, 2.0, false, false);
    EXPECT_TRUE(days.IsInRange(&day));
    EXPECT_FALSE(days.IsInRange(&second));
    EXPECT_FALSE(Range(-kInfinity, kInfinity, true, true).IsInRange(&missing));
}

TEST(Range, SingleValueIsComparedByTheOperatorOfTheAskedValue) {
    const Range number(1.0, 1.0, false, false);
    const NumericValue near(1.0 + 1e-15);
    const DateTimeValue date(1.0, DateTimeValue::VAL_DATETIME);
    EXPECT_TRUE(number.IsInRange(&near));
    EXPECT_TRUE(number.IsInRange(1.0 + 1e-15));
    EXPECT_FALSE(number.IsInRange(&date));

    const Range moment(new DateTimeValue(86400.0, DateTimeValue::VAL_DATE));
    const DateTimeValue same(86400.0, DateTimeValue::VAL_DATE);
    const DateTimeValue otherKind(86400.0, DateTimeValue::VAL_DATETIME);
    EXPECT_TRUE(moment.IsInRange(&same));
    EXPECT_FALSE(moment.IsInRange(&otherKind));
}

TEST(Range, EqualityTakesBoundsAndEnds) {
    const Range range(1.0, 2.0, true, false);
    EXPECT_TRUE(range == Range(1.0, 2.0, true, false));
    EXPECT_TRUE(range == Range(1.0 + 1e-15, 2.0, true, false));
    EXPECT_FALSE(range == Range(1.0, 2.0, true, true));
    EXPECT_FALSE(range == Range(1.0, 2.0, false, false));
    EXPECT_FALSE(range == Range(1.0, 3.0, true, false));
    EXPECT_FALSE(range == Range(0.0, 2.0, true, false));
    EXPECT_FALSE(range == Range(new StringValue("1"), new StringValue("2"), true, false));
    EXPECT_TRUE(Range(new StringValue("a")) == Range(new StringValue("a ")));
}

TEST(Range, DisplaysNumbers) {
    EXPECT_EQ(Dump(Range(1.0, 2.5, true, false)),
              "  Start Range Display   \nMinValue: 1;  MaxValue: 2.5; High End not included; lower End included\n "
              "End of Range Display\n\n");
    EXPECT_EQ(Dump(Range(-kInfinity, 0.0000001, false, true)),
              "  Start Range Display   \nMinValue: -inf;  MaxValue: 1e-07; High End included; lower End not "
              "included\n End of Range Display\n\n");
}

TEST(Range, DisplaysDatesAsNumbers) {
    EXPECT_EQ(Dump(Range(new DateTimeValue(86400.0, DateTimeValue::VAL_DATE))),
              "  Start Range Display   \nMinValue: 1;  MaxValue: 1; High End included; lower End included\n End of "
              "Range Display\n\n");
}

TEST(KeptRange, DisplayWritesBothBoundsAsTheKindOfTheLowerOneSays) {
    EXPECT_EQ(Dump(Range(new StringValue("a b"), new NumericValue(), false, false)),
              "  Start Range Display   \nMinValue: a b;  MaxValue: Undefined; High End not included; lower End not "
              "included\n End of Range Display\n\n");
    EXPECT_EQ(Dump(Range(new NumericValue(3.0), new StringValue("x"), false, false)),
              "  Start Range Display   \nMinValue: 3;  MaxValue: 0; High End not included; lower End not included\n "
              "End of Range Display\n\n");
}

} // namespace
} // namespace MCVeltrane_900
