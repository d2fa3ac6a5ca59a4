#include "fields.h"
#include "support/numbers.h"
#include "support/rows.h"

using namespace veltrane::tests;

namespace {

struct Row {
    const char* name;
    double min, max;
    bool lowEnd, highEnd;
    const char* fieldForm;
    const char* bracketForm;
};

const Row kRows[] = {
    {"ClosedOpen", 1, 5, true, false, "1<=age<5", "[1,5)"},
    {"OpenClosed", 1, 5, false, true, "1<age<=5", "(1,5]"},
    {"ClosedClosed", 1, 5, true, true, "1<=age<=5", "[1,5]"},
    {"OpenOpen", 1.5, 5, false, false, "1.5<age<5", "(1.5,5)"},
    {"BelowOpen", -kInfinity, 5, true, false, "age<5", "<5"},
    {"BelowClosed", -kInfinity, 5, false, true, "age<=5", "<=5"},
    {"AboveOpen", 1, kInfinity, false, true, "1<age", ">1"},
    {"AboveClosed", 1, kInfinity, true, false, "1<=age", ">=1"},
    {"Unbounded", -kInfinity, kInfinity, true, true, "age", "age"},
};

class IntervalText : public ::testing::TestWithParam<Row> {};

} // namespace

TEST_P(IntervalText, HasBothForms) {
    const Row& row = GetParam();
    TransformVar field("d", kNumeric);
    field.AddBinningValue(new Range(row.min, row.max, row.lowEnd, row.highEnd), Num(3), "age");
    EXPECT_EQ(field.GetOrigIntervalForBinningValue("3", true), row.fieldForm);
    EXPECT_EQ(field.GetOrigIntervalForBinningValue("3", false), row.bracketForm);
}

INSTANTIATE_TEST_SUITE_P(, IntervalText, ::testing::ValuesIn(kRows), NameOfRow());

TEST(IntervalTexts, AnUnknownBinIsItsOwnText) {
    const TransformVar field("d", kNumeric);
    EXPECT_EQ(field.GetOrigIntervalForBinningValue("3", true), "3");
    EXPECT_EQ(field.GetOrigIntervalForBinningValue("3", false), "3");
}

TEST(IntervalTexts, TheFirstIntervalOfABinValueStays) {
    TransformVar field("d", kNumeric);
    field.AddBinningValue(new Range(1.0, 2.0, true, true), Num(3), "age");
    field.AddBinningValue(new Range(5.0, 6.0, true, true), Num(3), "age");
    EXPECT_EQ(field.GetOrigIntervalForBinningValue("3", true), "1<=age<=2");
    EXPECT_EQ(field.GetOrigIntervalForBinningValue("3", false), "[1,2]");
}

TEST(IntervalTexts, ABinWithoutRangeOrValueHasNone) {
    TransformVar field("d", kText);
    field.AddBinningValue(nullptr, Txt("a"), "age");
    field.AddBinningValue(new Range(1.0, 2.0, true, true), nullptr, "age");
    EXPECT_EQ(field.GetOrigIntervalForBinningValue("a", true), "a");
    EXPECT_EQ(field.GetOrigIntervalForBinningValue("", true), "");
}

TEST(IntervalTexts, BinsAreKnownByTheTextOfTheirValue) {
    TransformVar field("d", kNumeric);
    field.AddBinningValue(new Range(1.0, 2.0, true, true), Num(0.1), "age");
    field.AddBinningValue(new Range(3.0, 4.0, true, true), Num(kMissing), "age");
    EXPECT_EQ(field.GetOrigIntervalForBinningValue("0.1", false), "[1,2]");
    EXPECT_EQ(field.GetOrigIntervalForBinningValue("Undefined", false), "[3,4]");
}
