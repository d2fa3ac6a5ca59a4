#include "support/failure.h"
#include "translators/derived/derived_fields.h"

#include <gtest/gtest.h>

// The children of a DerivedField: expressions, values and extensions, and in what order they may stand.

namespace veltrane::tests {
namespace {

using namespace MCVeltrane_900;
using Dictionary = TransformationDictionary;

const std::string kConstant = "<Constant>1</Constant>";
const std::string kValue = "<Value value='1'/>";
const std::string kMoreThanOne = "More than one expression defined in 'DerivedField'.";

struct KindRow {
    const char* label;
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
    ExpectReadFailure(NumericField(GetParam().expression + kConstant), 260274, kMoreThanOne);
}

TEST_P(DerivedFieldExpression, IsRefusedBehindAnother) {
    ExpectReadFailure(NumericField(kConstant + GetParam().expression), 260274, kMoreThanOne);
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
    [](const auto& row) { return row.param.label; });

TEST(DerivedFieldChildren, NoExpressionIsAccepted) {
    const DerivedFields fields(NumericField(""));
    EXPECT_EQ(fields.Var("z").GetTransExpression(), Dictionary::TE_NONE);
    EXPECT_EQ(fields.Var("z").GetFieldName(), "");
}

TEST(DerivedFieldChildren, AggregateAlwaysFails) {
    ExpectReadFailure(NumericField("<Aggregate field='x' function='sum'/>"), 260303,
                      "Unsupported value 'Aggregate' of attribute 'name'.");
    ExpectReadFailure(NumericField(kValue + "<Aggregate/>"), 260303,
                      "Unsupported value 'Aggregate' of attribute 'name'.");
}

TEST(DerivedFieldChildren, AggregateBehindAnExpressionIsASecondExpression) {
    ExpectReadFailure(NumericField(kConstant + "<Aggregate/>"), 260274, kMoreThanOne);
}

TEST(DerivedFieldChildren, AnUnknownTagIsRefused) {
    ExpectReadFailure(NumericField("<Foo/>"), 260152, "Invalid value 'Foo' of attribute 'name'.");
}

TEST(DerivedFieldChildren, ANestedFieldIsAnUnknownTag) {
    ExpectReadFailure(NumericField(DerivedField("w", "optype='continuous' dataType='double'", kConstant)), 260152,
                      "Invalid value 'DerivedField' of attribute 'name'.");
}

TEST(DerivedFieldChildren, AnUnknownTagIsIgnoredBehindAValue) {
    const DerivedFields fields(NumericField(kValue + "<Foo/>" + kConstant));
    EXPECT_EQ(fields.Var("z").GetTransExpression(), Dictionary::TE_CONSTANT);
}

TEST(DerivedFieldChildren, AnUnknownTagIsRefusedAheadOfAValue) {
    ExpectReadFailure(NumericField("<Foo/>" + kValue), 260152, "Invalid value 'Foo' of attribute 'name'.");
}

TEST(DerivedFieldChildren, AnUnknownTagBehindAnExpressionIsASecondExpression) {
    ExpectReadFailure(NumericField(kConstant + "<Foo/>"), 260274, kMoreThanOne);
    ExpectReadFailure(NumericField(kValue + kConstant + "<Foo/>"), 260274, kMoreThanOne);
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
    ExpectReadFailure(NumericField("<Apply function='plus'/>"), 260303,
                      "Unsupported value 'plus' of attribute 'function'.");
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

const char* const kConflict =
    "Conflict setting between the value 'continuous' of attribute 'optype' and the value 'string' of attribute "
    "'dataType'.";

struct ConflictRow {
    const char* label;
    std::string content;
};
class KeptContinuousText : public testing::TestWithParam<ConflictRow> {};

TEST_P(KeptContinuousText, IsRefusedWhereTheVariableIsNeeded) {
    ExpectReadFailure(ContinuousText(GetParam().content), 260211, kConflict);
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
    [](const auto& row) { return row.param.label; });

TEST(KeptContinuousText, AnotherFaultAheadOfTheNeedIsTheOneReported) {
    ExpectReadFailure(ContinuousText("<Extension/><Foo/>"), 260152, "Invalid value 'Foo' of attribute 'name'.");
    ExpectReadFailure(ContinuousText("<Aggregate/>"), 260303, "Unsupported value 'Aggregate' of attribute 'name'.");
    ExpectReadFailure(ContinuousText("<Extension name='width' value='w'/>"), 260151,
                      "The value: 'w' is invalid of type: 'integer'.");
}

} // namespace
} // namespace veltrane::tests
