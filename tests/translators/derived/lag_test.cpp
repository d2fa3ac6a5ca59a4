#include "support/faults/failure.h"
#include "translators/derived/derived_fields.h"

#include <gtest/gtest.h>

namespace veltrane::tests {
namespace {

TEST(LagReading, WithoutNLooksBackOneCase) {
    DerivedFields fields(NumericField("<Lag field='x'/>"));
    EXPECT_EQ(fields.Score("z", {{"x", "1"}}), "missing");
    EXPECT_EQ(fields.Score("z", {{"x", "2"}}), "1");
    EXPECT_EQ(fields.Score("z", {{"x", "3"}}), "2");
}

TEST(LagReading, NIsTheNumberOfCases) {
    DerivedFields fields(NumericField("<Lag field='x' n='2'/>"));
    EXPECT_EQ(fields.Score("z", {{"x", "1"}}), "missing");
    EXPECT_EQ(fields.Score("z", {{"x", "2"}}), "missing");
    EXPECT_EQ(fields.Score("z", {{"x", "3"}}), "1");
}

TEST(LagReading, AnEmptyNIsOne) {
    DerivedFields fields(NumericField("<Lag field='x' n=''/>"));
    EXPECT_EQ(fields.Score("z", {{"x", "1"}}), "missing");
    EXPECT_EQ(fields.Score("z", {{"x", "2"}}), "1");
}

TEST(LagReading, NMustBeAPositiveInteger) {
    ExpectReadFailure(NumericField("<Lag field='x' n='0'/>"), {INVALID_VALUE_OF_TYPE, "0", "positiveInteger"});
    ExpectReadFailure(NumericField("<Lag field='x' n='-2'/>"), {INVALID_VALUE_OF_TYPE, "-2", "positiveInteger"});
    ExpectReadFailure(NumericField("<Lag field='x' n='1.0'/>"), {INVALID_VALUE_OF_TYPE, "1.0", "integer"});
}

TEST(LagReading, TheFieldMustBeNamedAndKnown) {
    ExpectReadFailure(NumericField("<Lag n='0'/>"), {MISSING_ATTRIBUTE_OF, "field", "Lag"});
    ExpectReadFailure(NumericField("<Lag field='w' n='0'/>"),
                      {MISSING_VARIABLE_IN_BOTH, "w", "DataDictionary", "TransformationDictionary"});
}

TEST(LagReading, EveryChildIsABlockIndicator) {
    DerivedFields fields(NumericField("<Lag field='x'><BlockIndicator field='s'/><Extension field='y'/></Lag>"));
    EXPECT_EQ(fields.Score("z", {{"x", "1"}, {"s", "a"}, {"y", "0"}}), "missing");
    EXPECT_EQ(fields.Score("z", {{"x", "2"}, {"s", "a"}, {"y", "0"}}), "1");
    EXPECT_EQ(fields.Score("z", {{"x", "3"}, {"s", "b"}, {"y", "0"}}), "missing");
    EXPECT_EQ(fields.Score("z", {{"x", "4"}, {"s", "b"}, {"y", "0"}}), "3");
    EXPECT_EQ(fields.Score("z", {{"x", "5"}, {"s", "b"}, {"y", "1"}}), "missing");
}

TEST(LagReading, ABlockIndicatorMustBeKnown) {
    ExpectReadFailure(NumericField("<Lag field='x'><BlockIndicator field='w'/></Lag>"),
                      {MISSING_VARIABLE_IN_BOTH, "w", "DataDictionary", "TransformationDictionary"});
    ExpectReadFailure(NumericField("<Lag field='x'><BlockIndicator/></Lag>"),
                      {MISSING_VARIABLE_IN_BOTH, "", "DataDictionary", "TransformationDictionary"});
}

TEST(LagReading, NIsTestedBeforeTheBlockIndicators) {
    ExpectReadFailure(NumericField("<Lag field='x' n='0'><BlockIndicator field='w'/></Lag>"),
                      {INVALID_VALUE_OF_TYPE, "0", "positiveInteger"});
}

TEST(LagReading, FieldAndIndicatorsMayBeDerived) {
    DerivedFields fields(DerivedField("w", "optype='continuous' dataType='double'", "<FieldRef field='x'/>") +
                         NumericField("<Lag field='w'><BlockIndicator field='w'/></Lag>"));
    EXPECT_EQ(fields.Score("z", {{"x", "1"}}), "missing");
    EXPECT_EQ(fields.Score("z", {{"x", "1"}}), "1");
    EXPECT_EQ(fields.Score("z", {{"x", "2"}}), "missing");
}

} // namespace
} // namespace veltrane::tests
