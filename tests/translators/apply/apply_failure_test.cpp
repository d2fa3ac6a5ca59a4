#include "support/faults/fault.h"
#include "translators/derived/derived_fields.h"

#include <gtest/gtest.h>

#include <string>

// What a document's Apply may not be. x and y are numbers, s and t texts, d is a date.

using namespace veltrane::tests;

namespace {

const char* const kX = "<FieldRef field='x'/>";

class RefusedApply : public testing::TestWithParam<Fault> {};

TEST_P(RefusedApply, EndsInItsMessage) {
    ExpectReadFailure(NumericField(GetParam().document), GetParam().failure);
}

const Fault kRows[] = {
    {"NoFunction", "<Apply/>", Failure(MISSING_ATTRIBUTE_OF, "function", "Apply")},
    {"UnknownFunction", "<Apply function='plus'/>", Failure(UNSUPPORTED_VALUE, "plus", "function")},
    {"FunctionNamesMindCase", "<Apply function='ABS'/>", Failure(UNSUPPORTED_VALUE, "ABS", "function")},
    {"EmptyFunction", "<Apply function=''/>", Failure(UNSUPPORTED_VALUE, "", "function")},
    {"PlusOfOne", "<Apply function='+'><FieldRef field='x'/></Apply>", Failure(REQUIRES_PARAMETERS, "2")},
    {"PlusOfThree", "<Apply function='+'><FieldRef field='x'/><FieldRef field='x'/><FieldRef field='x'/></Apply>",
     Failure(REQUIRES_PARAMETERS, "2")},
    {"AbsOfNone", "<Apply function='abs'/>", Failure(REQUIRES_PARAMETERS, "1")},
    {"NormalOfTwo", "<Apply function='cdf.normal'><FieldRef field='x'/><FieldRef field='x'/></Apply>",
     Failure(REQUIRES_PARAMETERS, "3")},
    {"OutlierOfFive",
     "<Apply function='outlierHandle'><FieldRef field='x'/><Constant dataType='string'>asIs</Constant>"
     "<Constant>1</Constant><Constant>1</Constant><Constant>1</Constant></Apply>",
     Failure(REQUIRES_PARAMETERS, "6")},
    {"DateOfTwo", "<Apply function='year-from-date'><FieldRef field='d'/><FieldRef field='d'/></Apply>",
     Failure(REQUIRES_PARAMETERS, "1")},
    {"CountBeforeType", "<Apply function='+'><FieldRef field='s'/></Apply>", Failure(REQUIRES_PARAMETERS, "2")},
    {"UnknownField", "<Apply function='abs'><FieldRef field='q'/></Apply>",
     Failure(MISSING_VARIABLE_IN_BOTH, "q", "DataDictionary", "TransformationDictionary")},
    {"FieldRefWithoutField", "<Apply function='abs'><FieldRef/></Apply>",
     Failure(MISSING_ATTRIBUTE_OF, "field", "FieldRef")},
    {"TextUnderPlus", "<Apply function='+'><FieldRef field='x'/><FieldRef field='s'/></Apply>",
     Failure(FUNCTION_PARAMETER_TYPE_MISMATCH, "+", "s")},
    {"DateUnderPlus", "<Apply function='+'><FieldRef field='d'/><FieldRef field='x'/></Apply>",
     Failure(FUNCTION_PARAMETER_TYPE_MISMATCH, "+", "d")},
    {"TextConstantUnderPlus",
     "<Apply function='+'><FieldRef field='x'/><Constant dataType='string'>1</Constant></Apply>",
     Failure(FUNCTION_PARAMETER_TYPE_MISMATCH, "+", "Constant_S_")},
    {"PlainConstantThatIsNoNumber", "<Apply function='abs'><Constant>abc</Constant></Apply>",
     Failure(INVALID_VALUE_OF_TYPE, "abc", "double")},
    {"EmptyConstant", "<Apply function='abs'><Constant/></Apply>", Failure(MISSING_NODE, "Constant")},
    {"NumberUnderLowercase", "<Apply function='lowercase'><FieldRef field='x'/></Apply>",
     Failure(FUNCTION_PARAMETER_TYPE_MISMATCH, "lowercase", "x")},
    {"NumberAsSubjectOfSubstr", "<Apply function='substr'><FieldRef field='x'/><Constant>1</Constant></Apply>",
     Failure(FUNCTION_PARAMETER_TYPE_MISMATCH, "substr", "x")},
    {"TextAsPlaceOfSubstr",
     "<Apply function='substr'><FieldRef field='s'/><Constant dataType='string'>1</Constant></Apply>",
     Failure(FUNCTION_PARAMETER_TYPE_MISMATCH, "substr", "Constant_S_")},
    {"TextAsLengthOfSubstring",
     "<Apply function='substring'><FieldRef field='s'/><Constant>1</Constant><FieldRef field='t'/></Apply>",
     Failure(FUNCTION_PARAMETER_TYPE_MISMATCH, "substring", "t")},
    {"NumberUnderMatches", "<Apply function='matches'><FieldRef field='x'/><Constant>a</Constant></Apply>",
     Failure(FUNCTION_PARAMETER_TYPE_MISMATCH, "matches", "x")},
    {"NumberConstantUnderConcat",
     "<Apply function='concat'><FieldRef field='s'/><Constant dataType='double'>1</Constant></Apply>",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "double", "dataType", "Constant")},
    {"ConstantUnderValue", "<Apply function='value'><Constant>1</Constant></Apply>",
     Failure(REQUIRES_IN, "FieldRef", "Apply")},
    {"ApplyUnderValue", "<Apply function='value'><Apply function='abs'><FieldRef field='x'/></Apply></Apply>",
     Failure(REQUIRES_IN, "FieldRef", "Apply")},
    {"ValueOfAnotherType", "<Apply function='value'><FieldRef field='s'/></Apply>",
     Failure(CONFLICTING_REFERENCE, "z", "s")},
    {"RecastToOrdinalOfAnotherType", "<Apply function='recast_to_ordinal'><FieldRef field='d'/></Apply>",
     Failure(CONFLICTING_REFERENCE, "z", "d")},
    {"RecastToScaleOfConstant", "<Apply function='recast_to_scale'><Constant>1</Constant></Apply>",
     Failure(REQUIRES_IN, "FieldRef", "Apply")},
    {"SysmisOfConstant", "<Apply function='sysmis'><Constant>1</Constant></Apply>",
     Failure(REQUIRES_IN, "FieldRef", "Apply")},
    {"SysmisOfText", "<Apply function='sysmis'><FieldRef field='s'/></Apply>",
     Failure(FUNCTION_PARAMETER_TYPE_MISMATCH, "sysmis", "s")},
    {"OutlierWord",
     "<Apply function='outlierHandle'><FieldRef field='x'/><Constant dataType='string'>asBefore</Constant>"
     "<Constant>1</Constant><Constant>1</Constant><Constant>1</Constant><Constant>1</Constant></Apply>",
     Failure(UNSUPPORTED_VALUE, "asBefore", "string")},
    {"NestedFaultComesFirst", "<Apply function='abs'><Apply function='plus'/><FieldRef field='s'/></Apply>",
     Failure(UNSUPPORTED_VALUE, "plus", "function")},
    {"FaultDeepDown",
     "<Apply function='abs'><Apply function='abs'><Apply function='abs'><FieldRef field='s'/></Apply></Apply></Apply>",
     Failure(FUNCTION_PARAMETER_TYPE_MISMATCH, "abs", "s")},
    {"BadMapMissingTo", "<Apply function='abs' mapMissingTo='abc'><FieldRef field='x'/></Apply>",
     Failure(INVALID_VALUE_OF_TYPE, "abc", "double")},
    {"BadDefaultValue", "<Apply function='abs' defaultValue='abc'><FieldRef field='x'/></Apply>",
     Failure(INVALID_VALUE_OF_TYPE, "abc", "double")},
    {"BadMapMissingToOfAField", "<Apply function='abs'><FieldRef field='x' mapMissingTo='abc'/></Apply>",
     Failure(INVALID_VALUE_OF_TYPE, "abc", "double")},
    {"ExtensionWithoutArray", "<Apply function='abs'><FieldRef field='x'/><Extension/></Apply>",
     Failure(MISSING_NODE, "Array, x-BasisRow,X-BasisRow")},
    {"ImputationWithoutArrays",
     "<Apply function='imputeCatFieldMissingAgainstConTarget'><FieldRef field='s'/><FieldRef field='x'/></Apply>",
     Failure(PROCESSING_FAILED, "imputeCatFieldMissingAgainstConTarget")},
    {"ImputationOfOneField",
     "<Apply function='imputeCatFieldMissingAgainstConTarget'><FieldRef field='s'/><Extension><Array>1</Array>"
     "</Extension><Extension><Array>1</Array></Extension></Apply>",
     Failure(PROCESSING_FAILED, "imputeCatFieldMissingAgainstConTarget")},
    {"ImputationOfUnevenArrays",
     "<Apply function='imputeCatFieldMissingAgainstConTarget'><FieldRef field='s'/><FieldRef field='x'/><Extension>"
     "<Array>1</Array></Extension><Extension><Array>1 2</Array></Extension></Apply>",
     Failure(PROCESSING_FAILED, "imputeCatFieldMissingAgainstConTarget")},
};

INSTANTIATE_TEST_SUITE_P(Rows, RefusedApply, testing::ValuesIn(kRows), NameOfRow());

// Refusals that follow from the gaps of the families and from the kinds that count as neither number nor text.
class KeptRefusedApply : public testing::TestWithParam<Fault> {};

TEST_P(KeptRefusedApply, EndsInItsMessage) {
    ExpectReadFailure(NumericField(GetParam().document), GetParam().failure);
}

const Fault kKeptRows[] = {
    {"DateConstantUnderPlus",
     "<Apply function='+'><FieldRef field='x'/><Constant dataType='dateDaysSince[1970]'>1</Constant></Apply>",
     Failure(FUNCTION_PARAMETER_TYPE_MISMATCH, "+", "Constant_T_")},
    {"LengthUnderConcat",
     "<Apply function='concat'><FieldRef field='s'/><Apply function='length'><FieldRef field='s'/></Apply></Apply>",
     Failure(FUNCTION_TYPE_MISMATCH, "concat", "length")},
    {"GreaterOrEqualUnderPlus",
     "<Apply function='+'><FieldRef field='x'/><Apply function='greaterOrEqual'><FieldRef field='x'/>"
     "<FieldRef field='x'/></Apply></Apply>",
     Failure(FUNCTION_TYPE_MISMATCH, "+", "greaterOrEqual")},
    {"ApplyUnderMatches",
     "<Apply function='matches'><Apply function='lowercase'><FieldRef "
     "field='s'/></Apply><Constant>a</Constant></Apply>",
     Failure(FUNCTION_TYPE_MISMATCH, "matches", "lowercase")},
    {"ApplyUnderSubstring",
     "<Apply function='substring'><FieldRef field='s'/><Constant>1</Constant><Apply function='abs'>"
     "<FieldRef field='x'/></Apply></Apply>",
     Failure(FUNCTION_TYPE_MISMATCH, "substring", "abs")},
    {"TextFunctionUnderSum", "<Apply function='sum'><Apply function='lower'><FieldRef field='s'/></Apply></Apply>",
     Failure(FUNCTION_TYPE_MISMATCH, "<not defined>", "lower")},
    {"SumNamesItselfNotDefined", "<Apply function='sum'><FieldRef field='s'/></Apply>",
     Failure(FUNCTION_PARAMETER_TYPE_MISMATCH, "<not defined>", "s")},
};

INSTANTIATE_TEST_SUITE_P(Rows, KeptRefusedApply, testing::ValuesIn(kKeptRows), NameOfRow());

TEST(RefusedApplyNesting, DeeperThanTheBound) {
    std::string apply = kX;
    for (int i = 0; i < 1001; ++i) {
        apply = Apply("abs", apply);
    }
    ExpectReadFailure(NumericField(apply), {PROCESSING_FAILED, "abs"});
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
