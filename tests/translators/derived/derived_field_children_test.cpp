#include "support/faults/failure.h"
#include "support/rows.h"
#include "translators/derived/derived_fields.h"

#include <gtest/gtest.h>

// The children of a DerivedField: expressions, values and extensions, and in what order they may stand.

namespace veltrane::tests {
namespace {

using Dictionary = TransformationDictionary;

const std::string kConstant = "<Constant>1</Constant>";
const std::string kValue = "<Value value='1'/>";
constexpr Failure kMoreThanOne{MORE_THAN_ONE_EXPRESSION, "DerivedField"};

struct KindRow {
    const char* name;
    std::string expression;
    Dictionary::TransExpression kind;
    std::string source;
};
class DerivedFieldExpression : public testing::TestWithParam<KindRow> {};

TEST_P(DerivedFieldExpression, SetsKindAndSource) {
    const DerivedFields fields(NumericField(GetParam().expression));
    EXPECT_EQ(fields.Var("z").GetTransExpression(), GetParam().kind);
    EXPECT_EQ(fields.Var("z").GetFieldName(), GetParam().source);
}

TEST_P(DerivedFieldExpression, ASecondExpressionIsRefused) {
    ExpectReadFailure(NumericField(GetParam().expression + kConstant), kMoreThanOne);
}

TEST_P(DerivedFieldExpression, IsRefusedBehindAnother) {
    ExpectReadFailure(NumericField(kConstant + GetParam().expression), kMoreThanOne);
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, DerivedFieldExpression,
    testing::Values(
        KindRow{"Constant", kConstant, Dictionary::TE_CONSTANT, ""},
        KindRow{"FieldRef", "<FieldRef field='x'/>", Dictionary::TE_FIELD_REF, "x"},
        KindRow{"NormContinuous",
                "<NormContinuous field='x'><LinearNorm orig='0' norm='0'/><LinearNorm orig='1' norm='1'/>"
                "</NormContinuous>",
                Dictionary::TE_NORM_CONTINUOUS, "x"},
        KindRow{"NormDiscrete", "<NormDiscrete field='s' value='a'/>", Dictionary::TE_NORM_DISCRETE, "s"},
        KindRow{"Discretize",
                "<Discretize field='x'><DiscretizeBin binValue='1'><Interval closure='openOpen'/></DiscretizeBin>"
                "</Discretize>",
                Dictionary::TE_DISCRETIZE, "x"},
        KindRow{"MapValues", "<MapValues outputColumn='out'><FieldColumnPair field='s' column='in'/></MapValues>",
                Dictionary::TE_MAP_VALUES, "s"},
        KindRow{"Apply", "<Apply function='+'><FieldRef field='x'/><FieldRef field='y'/></Apply>", Dictionary::TE_APPLY,
                ""},
        KindRow{"Lag", "<Lag field='x'/>", Dictionary::TE_LAG, "x"}),
    NameOfRow());

TEST(DerivedFieldChildren, NoExpressionIsAccepted) {
    const DerivedFields fields(NumericField(""));
    EXPECT_EQ(fields.Var("z").GetTransExpression(), Dictionary::TE_NONE);
    EXPECT_EQ(fields.Var("z").GetFieldName(), "");
}

TEST(DerivedFieldChildren, AggregateAlwaysFails) {
    ExpectReadFailure(NumericField("<Aggregate field='x' function='sum'/>"), {UNSUPPORTED_VALUE, "Aggregate", "name"});
    ExpectReadFailure(NumericField(kValue + "<Aggregate/>"), {UNSUPPORTED_VALUE, "Aggregate", "name"});
}

TEST(DerivedFieldChildren, AggregateBehindAnExpressionIsASecondExpression) {
    ExpectReadFailure(NumericField(kConstant + "<Aggregate/>"), kMoreThanOne);
}

TEST(DerivedFieldChildren, AnUnknownTagIsRefused) {
    ExpectReadFailure(NumericField("<Foo/>"), {INVALID_ATTRIBUTE_VALUE, "Foo", "name"});
}

TEST(DerivedFieldChildren, ANestedFieldIsAnUnknownTag) {
    ExpectReadFailure(NumericField(DerivedField("w", "optype='continuous' dataType='double'", kConstant)),
                      {INVALID_ATTRIBUTE_VALUE, "DerivedField", "name"});
}

TEST(DerivedFieldChildren, AnUnknownTagIsIgnoredBehindAValue) {
    const DerivedFields fields(NumericField(kValue + "<Foo/>" + kConstant));
    EXPECT_EQ(fields.Var("z").GetTransExpression(), Dictionary::TE_CONSTANT);
}

TEST(DerivedFieldChildren, AnUnknownTagIsRefusedAheadOfAValue) {
    ExpectReadFailure(NumericField("<Foo/>" + kValue), {INVALID_ATTRIBUTE_VALUE, "Foo", "name"});
}

TEST(DerivedFieldChildren, AnUnknownTagBehindAnExpressionIsASecondExpression) {
    ExpectReadFailure(NumericField(kConstant + "<Foo/>"), kMoreThanOne);
    ExpectReadFailure(NumericField(kValue + kConstant + "<Foo/>"), kMoreThanOne);
}

TEST(DerivedFieldChildren, ExtensionsAndValuesMayFollowAnExpression) {
    const DerivedFields fields(NumericField(kConstant + "<Extension name='width' value='8'/>" + kValue));
    EXPECT_EQ(fields.Var("z").GetWidth(), 8);
    EXPECT_EQ(LabelsOf(fields.Var("z")), std::vector<std::string>{"1=1"});
}

TEST(DerivedFieldChildren, ValuesBehindAnApplyAreReadOnce) {
    DerivedFields fields(NumericField("<Apply function='+'><FieldRef field='x'/><Constant>1</Constant></Apply>" +
                                      kValue + "<Value value='2'/>"));
    EXPECT_EQ(LabelsOf(fields.Var("z")), (std::vector<std::string>{"1=1", "2=2"}));
    EXPECT_EQ(fields.Score("z", {{"x", "1"}}), "2");
}

TEST(DerivedFieldChildren, AFailedApplyLeavesNothing) {
    ExpectReadFailure(NumericField("<Apply function='plus'/>"), {UNSUPPORTED_VALUE, "plus", "function"});
}

TEST(DerivedFieldChildren, TextAndCommentsAreNoChildren) {
    DerivedFields fields(NumericField("text<!-- comment --><?pi data?>" + kConstant + "<![CDATA[text]]>"));
    EXPECT_EQ(fields.Score("z", {}), "1");
}

// A text field that calls itself continuous: the conflict is reported by the first child that needs the variable, or
// else by the end of the field.

std::string ContinuousText(const std::string& content) {
    return DerivedField("z", "optype='continuous' dataType='string'", content);
}

constexpr Failure kConflict{CONFLICTING_VALUES, "continuous", "optype", "string", "dataType"};

struct ConflictRow {
    const char* name;
    std::string content;
};
class KeptContinuousText : public testing::TestWithParam<ConflictRow> {};

TEST_P(KeptContinuousText, IsRefusedWhereTheVariableIsNeeded) {
    ExpectReadFailure(ContinuousText(GetParam().content), kConflict);
}

INSTANTIATE_TEST_SUITE_P(
    Children, KeptContinuousText,
    testing::Values(ConflictRow{"NoChild", ""}, ConflictRow{"Constant", "<Constant/>"},
                    ConflictRow{"FieldRef", "<FieldRef/>"}, ConflictRow{"NormContinuous", "<NormContinuous/>"},
                    ConflictRow{"NormDiscrete", "<NormDiscrete/>"}, ConflictRow{"Discretize", "<Discretize/>"},
                    ConflictRow{"MapValues", "<MapValues/>"}, ConflictRow{"Lag", "<Lag/>"},
                    ConflictRow{"Apply", "<Apply/>"}, ConflictRow{"Value", "<Value/>"},
                    ConflictRow{"MissingValues", "<Extension name='MissingValues'><Value/></Extension>"},
                    ConflictRow{"Width", "<Extension name='width' value='3'/><Foo/>"},
                    ConflictRow{"UsageType", "<Extension><UsageType value='disable'/></Extension><Foo/>"},
                    ConflictRow{"ExtensionThatSetsNothing", "<Extension name='width' value='0'/>"}),
    NameOfRow());

TEST(KeptContinuousText, AnotherFaultAheadOfTheNeedIsTheOneReported) {
    ExpectReadFailure(ContinuousText("<Extension/><Foo/>"), {INVALID_ATTRIBUTE_VALUE, "Foo", "name"});
    ExpectReadFailure(ContinuousText("<Aggregate/>"), {UNSUPPORTED_VALUE, "Aggregate", "name"});
    ExpectReadFailure(ContinuousText("<Extension name='width' value='w'/>"), {INVALID_VALUE_OF_TYPE, "w", "integer"});
}

} // namespace
} // namespace veltrane::tests
