#include "translators/derived/derived_fields.h"

#include <gtest/gtest.h>

#include <string>

// What a document's Apply may not be. x and y are numbers, s and t texts, d is a date.

using namespace veltrane::tests;

namespace {

struct Row {
    const char* name;
    const char* apply;
    int id;
    const char* message;
};

std::string NameOf(const testing::TestParamInfo<Row>& info) {
    return info.param.name;
}

const char* const kX = "<FieldRef field='x'/>";

std::string Apply(const std::string& function, const std::string& arguments) {
    return "<Apply function='" + function + "'>" + arguments + "</Apply>";
}

class RefusedApply : public testing::TestWithParam<Row> {};

TEST_P(RefusedApply, EndsInItsMessage) {
    ExpectReadFailure(NumericField(GetParam().apply), GetParam().id, GetParam().message);
}

const Row kRows[] = {
    {"NoFunction", "<Apply/>", 260120, "Missing the attribute 'function' of 'Apply'."},
    {"UnknownFunction", "<Apply function='plus'/>", 260303, "Unsupported value 'plus' of attribute 'function'."},
    {"FunctionNamesMindCase", "<Apply function='ABS'/>", 260303, "Unsupported value 'ABS' of attribute 'function'."},
    {"EmptyFunction", "<Apply function=''/>", 260303, "Unsupported value '' of attribute 'function'."},
    {"PlusOfOne", "<Apply function='+'><FieldRef field='x'/></Apply>", 260173, "Require '2' parameters."},
    {"PlusOfThree", "<Apply function='+'><FieldRef field='x'/><FieldRef field='x'/><FieldRef field='x'/></Apply>",
     260173, "Require '2' parameters."},
    {"AbsOfNone", "<Apply function='abs'/>", 260173, "Require '1' parameters."},
    {"NormalOfTwo", "<Apply function='cdf.normal'><FieldRef field='x'/><FieldRef field='x'/></Apply>", 260173,
     "Require '3' parameters."},
    {"OutlierOfFive",
     "<Apply function='outlierHandle'><FieldRef field='x'/><Constant dataType='string'>asIs</Constant>"
     "<Constant>1</Constant><Constant>1</Constant><Constant>1</Constant></Apply>",
     260173, "Require '6' parameters."},
    {"DateOfTwo", "<Apply function='year-from-date'><FieldRef field='d'/><FieldRef field='d'/></Apply>", 260173,
     "Require '1' parameters."},
    {"CountBeforeType", "<Apply function='+'><FieldRef field='s'/></Apply>", 260173, "Require '2' parameters."},
    {"UnknownField", "<Apply function='abs'><FieldRef field='q'/></Apply>", 260125,
     "Missing variable:'q' definition in the 'DataDictionary' and 'TransformationDictionary'."},
    {"FieldRefWithoutField", "<Apply function='abs'><FieldRef/></Apply>", 260120,
     "Missing the attribute 'field' of 'FieldRef'."},
    {"TextUnderPlus", "<Apply function='+'><FieldRef field='x'/><FieldRef field='s'/></Apply>", 260245,
     "Type mismatch between function '+' and parameter variable 's'."},
    {"DateUnderPlus", "<Apply function='+'><FieldRef field='d'/><FieldRef field='x'/></Apply>", 260245,
     "Type mismatch between function '+' and parameter variable 'd'."},
    {"TextConstantUnderPlus",
     "<Apply function='+'><FieldRef field='x'/><Constant dataType='string'>1</Constant></Apply>", 260245,
     "Type mismatch between function '+' and parameter variable 'Constant_S_'."},
    {"PlainConstantThatIsNoNumber", "<Apply function='abs'><Constant>abc</Constant></Apply>", 260151,
     "The value: 'abc' is invalid of type: 'double'."},
    {"EmptyConstant", "<Apply function='abs'><Constant/></Apply>", 260114, "Missing node: 'Constant'."},
    {"NumberUnderLowercase", "<Apply function='lowercase'><FieldRef field='x'/></Apply>", 260245,
     "Type mismatch between function 'lowercase' and parameter variable 'x'."},
    {"NumberAsSubjectOfSubstr", "<Apply function='substr'><FieldRef field='x'/><Constant>1</Constant></Apply>", 260245,
     "Type mismatch between function 'substr' and parameter variable 'x'."},
    {"TextAsPlaceOfSubstr",
     "<Apply function='substr'><FieldRef field='s'/><Constant dataType='string'>1</Constant></Apply>", 260245,
     "Type mismatch between function 'substr' and parameter variable 'Constant_S_'."},
    {"TextAsLengthOfSubstring",
     "<Apply function='substring'><FieldRef field='s'/><Constant>1</Constant><FieldRef field='t'/></Apply>", 260245,
     "Type mismatch between function 'substring' and parameter variable 't'."},
    {"NumberUnderMatches", "<Apply function='matches'><FieldRef field='x'/><Constant>a</Constant></Apply>", 260245,
     "Type mismatch between function 'matches' and parameter variable 'x'."},
    {"NumberConstantUnderConcat",
     "<Apply function='concat'><FieldRef field='s'/><Constant dataType='double'>1</Constant></Apply>", 260153,
     "Invalid value: 'double' of attribute 'dataType' in 'Constant'."},
    {"ConstantUnderValue", "<Apply function='value'><Constant>1</Constant></Apply>", 260174,
     "Require 'FieldRef' in 'Apply'."},
    {"ApplyUnderValue", "<Apply function='value'><Apply function='abs'><FieldRef field='x'/></Apply></Apply>", 260174,
     "Require 'FieldRef' in 'Apply'."},
    {"ValueOfAnotherType", "<Apply function='value'><FieldRef field='s'/></Apply>", 260215,
     "Conflict definition between the reference variable 'z' and the variable 's'."},
    {"RecastToOrdinalOfAnotherType", "<Apply function='recast_to_ordinal'><FieldRef field='d'/></Apply>", 260215,
     "Conflict definition between the reference variable 'z' and the variable 'd'."},
    {"RecastToScaleOfConstant", "<Apply function='recast_to_scale'><Constant>1</Constant></Apply>", 260174,
     "Require 'FieldRef' in 'Apply'."},
    {"SysmisOfConstant", "<Apply function='sysmis'><Constant>1</Constant></Apply>", 260174,
     "Require 'FieldRef' in 'Apply'."},
    {"SysmisOfText", "<Apply function='sysmis'><FieldRef field='s'/></Apply>", 260245,
     "Type mismatch between function 'sysmis' and parameter variable 's'."},
    {"OutlierWord",
     "<Apply function='outlierHandle'><FieldRef field='x'/><Constant dataType='string'>asBefore</Constant>"
     "<Constant>1</Constant><Constant>1</Constant><Constant>1</Constant><Constant>1</Constant></Apply>",
     260303, "Unsupported value 'asBefore' of attribute 'string'."},
    {"NestedFaultComesFirst", "<Apply function='abs'><Apply function='plus'/><FieldRef field='s'/></Apply>", 260303,
     "Unsupported value 'plus' of attribute 'function'."},
    {"FaultDeepDown",
     "<Apply function='abs'><Apply function='abs'><Apply function='abs'><FieldRef field='s'/></Apply></Apply></Apply>",
     260245, "Type mismatch between function 'abs' and parameter variable 's'."},
    {"BadMapMissingTo", "<Apply function='abs' mapMissingTo='abc'><FieldRef field='x'/></Apply>", 260151,
     "The value: 'abc' is invalid of type: 'double'."},
    {"BadDefaultValue", "<Apply function='abs' defaultValue='abc'><FieldRef field='x'/></Apply>", 260151,
     "The value: 'abc' is invalid of type: 'double'."},
    {"BadMapMissingToOfAField", "<Apply function='abs'><FieldRef field='x' mapMissingTo='abc'/></Apply>", 260151,
     "The value: 'abc' is invalid of type: 'double'."},
    {"ExtensionWithoutArray", "<Apply function='abs'><FieldRef field='x'/><Extension/></Apply>", 260114,
     "Missing node: 'Array, x-BasisRow,X-BasisRow'."},
    {"ImputationWithoutArrays",
     "<Apply function='imputeCatFieldMissingAgainstConTarget'><FieldRef field='s'/><FieldRef field='x'/></Apply>",
     260221, "Error occurred in process 'imputeCatFieldMissingAgainstConTarget'."},
    {"ImputationOfOneField",
     "<Apply function='imputeCatFieldMissingAgainstConTarget'><FieldRef field='s'/><Extension><Array>1</Array>"
     "</Extension><Extension><Array>1</Array></Extension></Apply>",
     260221, "Error occurred in process 'imputeCatFieldMissingAgainstConTarget'."},
    {"ImputationOfUnevenArrays",
     "<Apply function='imputeCatFieldMissingAgainstConTarget'><FieldRef field='s'/><FieldRef field='x'/><Extension>"
     "<Array>1</Array></Extension><Extension><Array>1 2</Array></Extension></Apply>",
     260221, "Error occurred in process 'imputeCatFieldMissingAgainstConTarget'."},
};

INSTANTIATE_TEST_SUITE_P(Rows, RefusedApply, testing::ValuesIn(kRows), NameOf);

// Refusals that follow from the gaps of the families and from the kinds that count as neither number nor text.
class KeptRefusedApply : public testing::TestWithParam<Row> {};

TEST_P(KeptRefusedApply, EndsInItsMessage) {
    ExpectReadFailure(NumericField(GetParam().apply), GetParam().id, GetParam().message);
}

const Row kKeptRows[] = {
    {"DateConstantUnderPlus",
     "<Apply function='+'><FieldRef field='x'/><Constant dataType='dateDaysSince[1970]'>1</Constant></Apply>", 260245,
     "Type mismatch between function '+' and parameter variable 'Constant_T_'."},
    {"LengthUnderConcat",
     "<Apply function='concat'><FieldRef field='s'/><Apply function='length'><FieldRef field='s'/></Apply></Apply>",
     260243, "Type mismatch between parent function 'concat' and child function 'length'."},
    {"GreaterOrEqualUnderPlus",
     "<Apply function='+'><FieldRef field='x'/><Apply function='greaterOrEqual'><FieldRef field='x'/>"
     "<FieldRef field='x'/></Apply></Apply>",
     260243, "Type mismatch between parent function '+' and child function 'greaterOrEqual'."},
    {"ApplyUnderMatches",
     "<Apply function='matches'><Apply function='lowercase'><FieldRef "
     "field='s'/></Apply><Constant>a</Constant></Apply>",
     260243, "Type mismatch between parent function 'matches' and child function 'lowercase'."},
    {"ApplyUnderSubstring",
     "<Apply function='substring'><FieldRef field='s'/><Constant>1</Constant><Apply function='abs'>"
     "<FieldRef field='x'/></Apply></Apply>",
     260243, "Type mismatch between parent function 'substring' and child function 'abs'."},
    {"TextFunctionUnderSum", "<Apply function='sum'><Apply function='lower'><FieldRef field='s'/></Apply></Apply>",
     260243, "Type mismatch between parent function '<not defined>' and child function 'lower'."},
    {"SumNamesItselfNotDefined", "<Apply function='sum'><FieldRef field='s'/></Apply>", 260245,
     "Type mismatch between function '<not defined>' and parameter variable 's'."},
};

INSTANTIATE_TEST_SUITE_P(Rows, KeptRefusedApply, testing::ValuesIn(kKeptRows), NameOf);

TEST(RefusedApplyNesting, DeeperThanTheBound) {
    std::string apply = kX;
    for (int i = 0; i < 1001; ++i) {
        apply = Apply("abs", apply);
    }
    ExpectReadFailure(NumericField(apply), 260221, "Error occurred in process 'abs'.");
}

TEST(AcceptedApplyNesting, AsDeepAsTheBound) {
    std::string apply = kX;
    for (int i = 0; i < 1000; ++i) {
        apply = Apply("abs", apply);
    }
    DerivedFields fields(NumericField(apply));
    EXPECT_EQ(fields.Score("z", {{"x", "-2"}}), "2");
}

class AcceptedApply : public testing::TestWithParam<std::pair<const char*, const char*>> {};

TEST_P(AcceptedApply, IsRead) {
    EXPECT_NO_THROW(DerivedFields(NumericField(GetParam().second)));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, AcceptedApply,
    testing::Values(
        std::pair{"PlusOfIf", "<Apply function='+'><FieldRef field='x'/><Apply function='if'><FieldRef field='x'/>"
                              "<FieldRef field='y'/></Apply></Apply>"},
        std::pair{"PlusOfIsMissing", "<Apply function='+'><FieldRef field='x'/><Apply function='isMissing'>"
                                     "<FieldRef field='x'/></Apply></Apply>"},
        std::pair{"PlusOfGreaterThan", "<Apply function='+'><FieldRef field='x'/><Apply function='greaterThan'>"
                                       "<FieldRef field='x'/><FieldRef field='x'/></Apply></Apply>"},
        std::pair{"PlusOfLength", "<Apply function='+'><FieldRef field='x'/><Apply function='length'>"
                                  "<FieldRef field='s'/></Apply></Apply>"},
        std::pair{"OtherChildrenAreSkipped", "<Apply function='abs'><Note/><FieldRef field='x'/></Apply>"},
        std::pair{"OutlierWithNumberForMethod",
                  "<Apply function='outlierHandle'><FieldRef field='x'/><Constant>1</Constant><Constant>1</Constant>"
                  "<Constant>1</Constant><Constant>1</Constant><Constant>1</Constant></Apply>"}),
    [](const auto& info) { return std::string(info.param.first); });

// A quarter of the functions isn't checked at all, and these stay so.
class KeptUncheckedApply : public testing::TestWithParam<std::pair<const char*, const char*>> {};

TEST_P(KeptUncheckedApply, IsRead) {
    EXPECT_NO_THROW(DerivedFields(NumericField(GetParam().second)));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, KeptUncheckedApply,
    testing::Values(
        std::pair{"SumOfNothing", "<Apply function='sum'/>"},
        std::pair{"FloorOfThree",
                  "<Apply function='floor'><FieldRef field='x'/><FieldRef field='x'/><FieldRef field='x'/></Apply>"},
        std::pair{"FloorOfText", "<Apply function='floor'><FieldRef field='s'/></Apply>"},
        std::pair{"AndOfOne", "<Apply function='and'><FieldRef field='x'/></Apply>"},
        std::pair{"AndOfAnything", "<Apply function='and'><Apply function='greaterOrEqual'/>"
                                   "<Apply function='lower'><FieldRef field='s'/></Apply></Apply>"},
        std::pair{"YearOfAText", "<Apply function='year-from-date'><FieldRef field='s'/></Apply>"}),
    [](const auto& info) { return std::string(info.param.first); });

} // namespace
