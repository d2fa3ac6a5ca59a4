#include "support/faults/failure.h"
#include "translators/derived/derived_fields.h"

#include <MCVeltrane_900/ScoreValueLabel.h>
#include <MCVeltrane_900/ScoreValueLabelSet.h>

#include <gtest/gtest.h>

namespace veltrane::tests {
namespace {

using Labels = std::vector<std::string>;

TEST(DerivedFieldValues, AllValuesAreReadAtTheFirst) {
    const DerivedFields fields(NumericField("<Value value='1'/><Constant>1</Constant><Value value='2'/>"));
    EXPECT_EQ(LabelsOf(fields.Var("z")), (Labels{"1=1", "2=2"}));
}

TEST(DerivedFieldValues, MayFollowAnExpression) {
    const DerivedFields fields(NumericField("<Constant>1</Constant><Value value='1'/><Value value='2'/>"));
    EXPECT_EQ(LabelsOf(fields.Var("z")), (Labels{"1=1", "2=2"}));
}

TEST(DerivedFieldValues, TheLabelIsTheDisplayValueOrElseTheText) {
    const DerivedFields fields(NumericField("<Value value='1.50' displayValue='one'/><Value value='2.50'/>"
                                            "<Value value='3' displayValue=''/>"));
    EXPECT_EQ(LabelsOf(fields.Var("z")), (Labels{"1.5=one", "2.5=2.50", "3=3"}));
}

TEST(DerivedFieldValues, AnEmptyTextIsAValue) {
    EXPECT_EQ(LabelsOf(DerivedFields(TextField("<Value value=''/>")).Var("z")), (Labels{"="}));
}

TEST(DerivedFieldValues, DuplicatesStay) {
    const DerivedFields fields(TextField("<Value value='a'/><Value value='a' displayValue='A'/>"));
    EXPECT_EQ(LabelsOf(fields.Var("z")), (Labels{"a=a", "a=A"}));
}

TEST(DerivedFieldValues, AnAbsentOrEmptyPropertyIsValid) {
    const DerivedFields fields(
        TextField("<Value value='a'/><Value value='b' property='valid'/><Value value='c' property=''/>"));
    EXPECT_EQ(LabelsOf(fields.Var("z")), (Labels{"a=a", "b=b", "c=c"}));
}

TEST(DerivedFieldValues, AnyOtherPropertyIsRefused) {
    ExpectReadFailure(TextField("<Value value='a' property='missing'/>"),
                      {INVALID_ATTRIBUTE_VALUE_IN, "missing", "property", "Value"});
    ExpectReadFailure(TextField("<Value value='a' property='invalid'/>"),
                      {INVALID_ATTRIBUTE_VALUE_IN, "invalid", "property", "Value"});
    ExpectReadFailure(TextField("<Value property='Valid'/>"),
                      {INVALID_ATTRIBUTE_VALUE_IN, "Valid", "property", "Value"});
}

TEST(DerivedFieldValues, AnAbsentValueIsRefused) {
    ExpectReadFailure(TextField("<Value displayValue='a'/>"), {MISSING_ATTRIBUTE_OF, "value", "Value"});
}

TEST(DerivedFieldValues, ANumericFieldNeedsNumbers) {
    ExpectReadFailure(NumericField("<Value value='one'/>"), {INVALID_VALUE_OF_TYPE, "one", "double"});
    ExpectReadFailure(NumericField("<Value value=''/>"), {INVALID_VALUE_OF_TYPE, "", "double"});
}

TEST(DerivedFieldValues, ADateFieldTakesItsNumbers) {
    const DerivedFields fields(
        DerivedField("z", "optype='ordinal' dataType='dateDaysSince[1970]'", "<Value value='2' displayValue='two'/>"));
    const ScoreValueLabel* label = fields.Var("z").GetValueLabels()->GetAllValueLabels().front();
    EXPECT_EQ(label->GetValue()->GetType(), ScoreValue::DATETIME_VALUE);
    EXPECT_EQ(label->GetValue()->GetDouble(), 2.0);
    ExpectReadFailure(DerivedField("z", "optype='ordinal' dataType='date'", "<Value value='1970-01-03'/>"),
                      {INVALID_VALUE_OF_TYPE, "1970-01-03", "double"});
}

TEST(DerivedFieldValues, AValueThatIsMissingIsRefusedByItsLabel) {
    const std::string missing = "<Extension name='MissingValues'><Value value='b'/></Extension>";
    ExpectReadFailure(TextField(missing + "<Value value='a'/><Value value='b' displayValue='the b'/>"),
                      {VALUE_MISSING_OR_VALID_AND_INVALID, "the b", "z"});
}

TEST(DerivedFieldValues, AMissingValueDeclaredBehindTheListIsNotTested) {
    const DerivedFields fields(
        TextField("<Value value='b'/><Extension name='MissingValues'><Value value='b'/></Extension>"));
    EXPECT_EQ(LabelsOf(fields.Var("z")), Labels{"b=b"});
}

TEST(DerivedFieldValues, ALabelRescuesANumberFromAMissingRange) {
    const DerivedFields fields(
        NumericField("<Extension name='MissingValues'><Value value='9'/></Extension><Value value='9'/>"));
    EXPECT_EQ(LabelsOf(fields.Var("z")), Labels{"9=9"});
}

TEST(DerivedFieldValues, TheMissingNumberIsRefused) {
    ExpectReadFailure(NumericField("<Value value='-1.7976931348623157e+308'/>"),
                      {VALUE_MISSING_OR_VALID_AND_INVALID, "-1.7976931348623157e+308", "z"});
}

TEST(DerivedFieldValues, AListBehindBinsReplacesTheirLabels) {
    const DerivedFields fields(
        TextField("<Discretize field='x'><DiscretizeBin binValue='low'><Interval closure='openOpen'/></DiscretizeBin>"
                  "</Discretize><Value value='high'/>"));
    EXPECT_EQ(LabelsOf(fields.Var("z")), Labels{"high=high"});
}

} // namespace
} // namespace veltrane::tests
