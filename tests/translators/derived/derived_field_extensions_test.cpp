#include "support/faults/failure.h"
#include "support/rows.h"
#include "translators/derived/derived_fields.h"

#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreMissingValueSet.h>
#include <MCVeltrane_900/StringValue.h>

#include <gtest/gtest.h>

namespace veltrane::tests {
namespace {

std::string MissingValues(const std::string& content) {
    return "<Extension name='MissingValues'>" + content + "</Extension>";
}

bool IsMissing(const TransformVar& var, double number) {
    const NumericValue value(number);
    return var.IsMissingValue(&value);
}

bool IsMissing(const TransformVar& var, const std::string& text) {
    const StringValue value(text);
    return var.IsMissingValue(&value);
}

TEST(DerivedFieldExtension, WidthAndStringLengthSetTheWidth) {
    EXPECT_EQ(DerivedFields(TextField("<Extension name='width' value='12'/>")).Var("z").GetWidth(), 12);
    EXPECT_EQ(DerivedFields(TextField("<Extension name='stringLength' value='4'/>")).Var("z").GetWidth(), 4);
}

TEST(DerivedFieldExtension, AWidthThatIsNotPositiveIsDropped) {
    EXPECT_EQ(DerivedFields(TextField("<Extension name='width' value='0'/>")).Var("z").GetWidth(), -1);
    EXPECT_EQ(DerivedFields(TextField("<Extension name='width' value='-5'/>")).Var("z").GetWidth(), -1);
}

TEST(DerivedFieldExtension, AWidthNeedsAnIntegerValue) {
    ExpectReadFailure(TextField("<Extension name='width'/>"), {MISSING_ATTRIBUTE_OF, "value", "Extension"});
    ExpectReadFailure(TextField("<Extension name='stringLength' value='1.5'/>"),
                      {INVALID_VALUE_OF_TYPE, "1.5", "integer"});
}

TEST(DerivedFieldExtension, OtherNamesAndTheExtenderAreIgnored) {
    const DerivedFields fields(TextField("<Extension name='Width' value='9'/><Extension extender='e' value='w'/>"
                                         "<Extension name='decimals' value='x'/><Extension/>"));
    EXPECT_EQ(fields.Var("z").GetWidth(), -1);
    EXPECT_EQ(fields.Var("z").GetDecimal(), -1);
}

TEST(DerivedFieldExtension, AnyExtensionMayDisableTheUsageType) {
    const std::string disable = "<UsageType value='disable'/>";
    EXPECT_FALSE(DerivedFields(TextField("<Extension>" + disable + "</Extension>")).Var("z").IsUsageTypeEnable());
    EXPECT_FALSE(DerivedFields(TextField("<Extension name='width' value='1'>" + disable + "</Extension>"))
                     .Var("z")
                     .IsUsageTypeEnable());
    EXPECT_FALSE(DerivedFields(TextField(MissingValues(disable))).Var("z").IsUsageTypeEnable());
    EXPECT_TRUE(
        DerivedFields(TextField("<Extension><UsageType value='enable'/></Extension>")).Var("z").IsUsageTypeEnable());
}

TEST(DerivedFieldMissingValues, ValuesAreSingleMissingValues) {
    const DerivedFields fields(NumericField(MissingValues("<Value value='9'/><Value value='99'/>")));
    const TransformVar& var = fields.Var("z");
    EXPECT_EQ(var.GetMissingValues()->Size(), 2);
    EXPECT_TRUE(IsMissing(var, 9));
    EXPECT_TRUE(IsMissing(var, 99));
    EXPECT_FALSE(IsMissing(var, 50));
}

TEST(DerivedFieldMissingValues, AValueHasTheTypeOfTheField) {
    const DerivedFields fields(TextField(MissingValues("<Value value='none'/><Value value=''/>")));
    EXPECT_TRUE(IsMissing(fields.Var("z"), "none"));
    EXPECT_TRUE(IsMissing(fields.Var("z"), ""));
    EXPECT_FALSE(IsMissing(fields.Var("z"), "some"));
}

TEST(DerivedFieldMissingValues, AnEqualValueIsTakenOnce) {
    const DerivedFields fields(NumericField(MissingValues("<Value value='9'/><Value value='9.0'/>")));
    EXPECT_EQ(fields.Var("z").GetMissingValues()->Size(), 1);
}

TEST(DerivedFieldMissingValues, AnEmptyListIsASetOfItsOwn) {
    const DerivedFields fields(NumericField(MissingValues("<Foo/>text")));
    ASSERT_NE(fields.Var("z").GetMissingValues(), nullptr);
    EXPECT_EQ(fields.Var("z").GetMissingValues()->Size(), 0);
}

TEST(DerivedFieldMissingValues, ALaterListReplacesAnEarlierOne) {
    const DerivedFields fields(NumericField(MissingValues("<Value value='1'/>") + MissingValues("<Value value='2'/>")));
    EXPECT_FALSE(IsMissing(fields.Var("z"), 1));
    EXPECT_TRUE(IsMissing(fields.Var("z"), 2));
}

TEST(DerivedFieldMissingValues, AValueMustBeThereAndOfTheType) {
    ExpectReadFailure(NumericField(MissingValues("<Value/>")), {MISSING_ATTRIBUTE_OF, "value", "Value"});
    ExpectReadFailure(NumericField(MissingValues("<Value value='x'/>")), {INVALID_VALUE_OF_TYPE, "x", "double"});
}

TEST(DerivedFieldMissingValues, AnIntervalMakesItsComplementMissing) {
    const DerivedFields fields(
        NumericField(MissingValues("<Interval closure='closedClosed' leftMargin='0' rightMargin='10'/>")));
    EXPECT_TRUE(IsMissing(fields.Var("z"), -1));
    EXPECT_FALSE(IsMissing(fields.Var("z"), 5));
    EXPECT_TRUE(IsMissing(fields.Var("z"), 11));
}

TEST(DerivedFieldMissingValues, AnIntervalOnATextFieldIsRefused) {
    ExpectReadFailure(TextField(MissingValues("<Interval closure='closedClosed' leftMargin='0'/>")),
                      {CONFLICTING_ELEMENTS, "Interval", "categorical,ordinal"});
}

TEST(DerivedFieldMissingValues, AnIntervalOnADateFieldIsRefused) {
    ExpectReadFailure(DerivedField("z", "optype='continuous' dataType='date'", MissingValues("<Interval/>")),
                      {CONFLICTING_ELEMENTS, "Interval", "categorical,ordinal"});
}

struct RangeRow {
    const char* name;
    const char* content;
    bool minusTenMissing;
    bool zeroMissing;
    bool tenMissing;
};
class DerivedFieldInvalidRange : public testing::TestWithParam<RangeRow> {};

TEST_P(DerivedFieldInvalidRange, IsMissing) {
    const DerivedFields fields(NumericField(MissingValues(GetParam().content)));
    EXPECT_EQ(IsMissing(fields.Var("z"), -10), GetParam().minusTenMissing);
    EXPECT_EQ(IsMissing(fields.Var("z"), 0), GetParam().zeroMissing);
    EXPECT_EQ(IsMissing(fields.Var("z"), 10), GetParam().tenMissing);
}

INSTANTIATE_TEST_SUITE_P(
    Bounds, DerivedFieldInvalidRange,
    testing::Values(RangeRow{"Lower", "<Extension name='invalidRangeLower' value='0'/>", false, true, true},
                    RangeRow{"Upper", "<Extension name='invalidRangeUpper' value='0'/>", true, true, false},
                    RangeRow{"Both",
                             "<Extension name='invalidRangeUpper' value='5'/>"
                             "<Extension name='invalidRangeLower' value='-5'/>",
                             false, true, false},
                    RangeRow{"OtherName", "<Extension name='invalidRange' value='0'/>", false, false, false}),
    NameOfRow());

TEST(DerivedFieldMissingValues, ABoundGivenTwiceIsRefused) {
    const std::string lower = "<Extension name='invalidRangeLower' value='0'/>";
    const std::string upper = "<Extension name='invalidRangeUpper' value='0'/>";
    constexpr Failure kFailure{MORE_THAN_ONE, "invalidRangeLower, invalidRangeUpper", "Value"};
    ExpectReadFailure(NumericField(MissingValues(lower + lower)), kFailure);
    ExpectReadFailure(NumericField(MissingValues(upper + upper)), kFailure);
    ExpectReadFailure(NumericField(MissingValues(lower + upper + lower)), kFailure);
}

TEST(DerivedFieldMissingValues, ABoundMustBeANumber) {
    ExpectReadFailure(NumericField(MissingValues("<Extension name='invalidRangeLower' value='low'/>")),
                      {INVALID_VALUE_OF_TYPE, "low", "double"});
    ExpectReadFailure(NumericField(MissingValues("<Extension name='invalidRangeUpper'/>")),
                      {INVALID_VALUE_OF_TYPE, "", "double"});
}

} // namespace
} // namespace veltrane::tests
