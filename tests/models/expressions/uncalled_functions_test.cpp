// A function that nothing calls is refused for what it would be refused for if something called it, and for nothing
// else.
#include "models/columns/column_document.h"
#include "models/kit/scoring.h"
#include "models/kit/small_documents.h"
#include "support/faults/fault.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace veltrane::tests;

std::string Function(const std::string& name, const std::string& parameters, const std::string& body) {
    return "<DefineFunction name='" + name + "'>" + parameters + body + "</DefineFunction>";
}

const std::string kAny = "<ParameterField name='p'/>";
const std::string kText = "<ParameterField name='p' dataType='string'/>";
const std::string kNumber = "<ParameterField name='p' dataType='double'/>";
const std::string kP = "<FieldRef field='p'/>";

std::string Call(const std::string& function, const std::string& arguments) {
    return "<Apply function='" + function + "'>" + arguments + "</Apply>";
}

std::string WithDictionary(const std::string& definitions) {
    return Replaced(kSmallRegression, "<RegressionModel ",
                    "<TransformationDictionary>" + definitions + "</TransformationDictionary><RegressionModel ");
}

/// A derived field that calls a function, with the only argument that a call of any of them takes.
const std::string kCaller = "<DerivedField name='d' optype='categorical' dataType='string'>" +
                            Call("f", "<FieldRef field='c'/>") + "</DerivedField>";

class UncalledFunction : public testing::TestWithParam<Fault> {};

TEST_P(UncalledFunction, IsRefusedAsOneThatIsCalled) {
    const std::string& functions = GetParam().document;
    ExpectFailure([&] { ReadModel(WithDictionary(functions)); }, GetParam().failure);
    ExpectFailure([&] { ReadModel(WithDictionary(functions + kCaller)); }, GetParam().failure);
}

TEST_P(UncalledFunction, IsRefusedWithoutAModel) {
    const std::string document = "<PMML version='4.4'><DataDictionary><DataField name='x' optype='continuous' "
                                 "dataType='double'/></DataDictionary><TransformationDictionary>" +
                                 GetParam().document + "</TransformationDictionary></PMML>";
    ExpectFailure([&] { const ColumnDocument read(document); }, GetParam().failure);
}

const std::string kTwoPoints = "<LinearNorm orig='0' norm='0'/><LinearNorm orig='1' norm='1'/>";

const Fault kFaults[] = {
    {"UnknownFunction", Function("f", kAny, Call("asinh", kP)),
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "asinh", "function", "Apply")},
    {"UnknownFunctionBelow", Function("f", kAny, Call("abs", Call("?!", kP))),
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "?!", "function", "Apply")},
    {"TooManyArguments", Function("f", kAny, Call("abs", kP + kP)),
     Failure(ELEMENT_NUMBER_MISMATCH, "abs", "function", "2", "EXPRESSION", "Apply")},
    {"TooFewArgumentsOfADefinedOne", Function("f", kAny, Call("g", "")) + Function("g", kAny, kP),
     Failure(ELEMENT_NUMBER_MISMATCH, "g", "function", "0", "EXPRESSION", "Apply")},
    {"NumberOfAText", Function("f", kText, "<NormContinuous field='p'>" + kTwoPoints + "</NormContinuous>"),
     Failure(REQUIRES_NUMERIC, "p")},
    {"IndicatorOfAnotherType", Function("f", kNumber, "<NormDiscrete field='p' value='a'/>"),
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "a", "value", "NormDiscrete")},
    {"ReplacementOfAnotherType", Function("f", kNumber, "<FieldRef field='p' mapMissingTo='none'/>"),
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "none", "mapMissingTo", "FieldRef")},
    {"UnknownAggregate", Function("f", kAny, "<Aggregate field='p' function='multiset'/>"),
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "multiset", "function", "Aggregate")},
    {"Recursion", Function("f", kAny, Call("f", kP)), Failure(INVALID_ATTRIBUTE_VALUE_IN, "f", "function", "Apply")},
    {"RecursionThroughAnotherOne", Function("f", kAny, Call("g", kP)) + Function("g", kAny, Call("f", kP)),
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "f", "function", "Apply")},
    {"ParameterTwice", Function("f", kAny + kNumber, kP),
     Failure(DUPLICATE_DEFINITION, "ParameterField", "p", "DefineFunction")},
    {"FunctionTwice", Function("f", kAny, kP) + Function("f", kNumber, kP),
     Failure(DUPLICATE_DEFINITION, "DefineFunction", "f", "TransformationDictionary")},
    {"BuiltInFunction", Function("abs", kAny, kP),
     Failure(DUPLICATE_DEFINITION, "DefineFunction", "abs", "TransformationDictionary")},
    {"NoExpression", Function("f", kAny, ""), Failure(MISSING_DEFINITION_OF, "EXPRESSION", "f", "DefineFunction")},
    {"UnknownType", "<DefineFunction name='f' dataType='text'>" + kAny + kP + "</DefineFunction>",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "text", "dataType", "DefineFunction")},
    {"UnknownTypeOfAParameter", Function("f", "<ParameterField name='p' dataType='text'/>", kP),
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "text", "dataType", "ParameterField")},
};
INSTANTIATE_TEST_SUITE_P(Faults, UncalledFunction, testing::ValuesIn(kFaults), NameOfRow());

struct Place {
    const char* name;
    const char* body;
    const char* parameter;
    const char* detail;
};

class UnknownParameter : public testing::TestWithParam<Place> {};

TEST_P(UnknownParameter, IsToldWithElementAndAttribute) {
    for (const std::string& caller : {std::string(), kCaller}) {
        ExpectFailureWithDetail([&] { ReadModel(WithDictionary(Function("f", kAny, GetParam().body) + caller)); },
                                {MISSING_VARIABLE, GetParam().parameter, "DefineFunction"}, GetParam().detail);
    }
}

const Place kPlaces[] = {
    {"Reference", "<FieldRef field='q'/>", "q", " Attribute 'field' of 'FieldRef'."},
    {"ReferenceToAField", "<FieldRef field='c'/>", "c", " Attribute 'field' of 'FieldRef'."},
    {"Indicator", "<NormDiscrete field='x' value='a'/>", "x", " Attribute 'field' of 'NormDiscrete'."},
    {"CaseBefore", "<Lag field='x'/>", "x", " Attribute 'field' of 'Lag'."},
    {"BlockOfCases", "<Lag field='p'><BlockIndicator field='x'/></Lag>", "x",
     " Attribute 'field' of 'BlockIndicator'."},
    {"Text", "<TextIndex textField='t'><Constant>a</Constant></TextIndex>", "t",
     " Attribute 'textField' of 'TextIndex'."},
};
INSTANTIATE_TEST_SUITE_P(Places, UnknownParameter, testing::ValuesIn(kPlaces), NameOfRow());

struct Lawful {
    const char* name;
    std::string functions;
};

void PrintTo(const Lawful& row, std::ostream* out) {
    *out << row.functions;
}

class LawfulFunction : public testing::TestWithParam<Lawful> {};

TEST_P(LawfulFunction, NeedsNoCall) {
    Scored scored(WithDictionary(GetParam().functions));
    EXPECT_TRUE(scored.Score({{"x", "2"}, {"z", "3"}, {"c", "a"}}).IsOK());
}

const Lawful kLawful[] = {
    {"WithoutParameters", Function("f", "", "<Constant>1</Constant>")},
    {"NumberOfAnyParameter", Function("f", kAny, "<NormContinuous field='p'>" + kTwoPoints + "</NormContinuous>")},
    {"TextOfAnyParameter", Function("f", kAny, "<NormDiscrete field='p' value='a'/>")},
    {"ArithmeticOfAText", Function("f", kText, Call("+", kP + "<Constant dataType='string'>1</Constant>"))},
    {"CallsTheNextOne", Function("f", kAny, Call("g", kP)) + Function("g", kAny, kP)},
    {"ParameterOfTheNameOfAFunction",
     Function("f", "<ParameterField name='abs'/>", Call("abs", "<FieldRef field='abs'/>"))},
    {"ParameterOfTheNameOfAField", Function("f", "<ParameterField name='x'/>", "<FieldRef field='x'/>")},
    {"NameOfAField", Function("x", kAny, kP)},
    {"LibrarysOwnName", Function("recast_to_scale", kAny, kP)},
};
INSTANTIATE_TEST_SUITE_P(Functions, LawfulFunction, testing::ValuesIn(kLawful), NameOfRow());

/// One that an output field calls is read for it, though no derived field does.
TEST(UncalledFunctions, AreStillThereForWhatIsReadLater) {
    const std::string output = "<OutputField name='o' feature='transformedValue' dataType='double'>" +
                               Call("f", "<FieldRef field='x'/>") + "</OutputField></Output>";
    const std::string functions = Function("f", kNumber, Call("g", Call("g", kP))) +
                                  Function("g", kNumber, Call("+", kP + "<Constant>0.5</Constant>"));
    Scored scored(Replaced(WithDictionary(functions), "</Output>", output));
    ASSERT_TRUE(scored.Score({{"x", "2"}, {"z", "3"}, {"c", "a"}}).IsOK());
    EXPECT_EQ(scored.Number("o"), 3.0);
}

TEST(UncalledFunctions, KeepNoCases) {
    const std::string function = Function("f", kNumber, "<Lag field='p' n='3'/>");
    const auto document = [&function](const std::string& expression) {
        return "<PMML version='4.4'><DataDictionary><DataField name='x' optype='continuous' dataType='double'/>"
               "</DataDictionary><TransformationDictionary>" +
               function + "<DerivedField name='d' optype='continuous' dataType='double'>" + expression +
               "</DerivedField></TransformationDictionary></PMML>";
    };
    EXPECT_FALSE(ColumnDocument(document("<FieldRef field='x'/>")).Scorer().NeedsOrder());
    EXPECT_TRUE(ColumnDocument(document(Call("f", "<FieldRef field='x'/>"))).Scorer().NeedsOrder());
}

std::string Name(const char* letter, int number) {
    return letter + std::to_string(number);
}

/// Each calls the next one as often as told.
std::string Chain(int length, int calls) {
    std::string functions;
    for (int i = 0; i + 1 < length; ++i) {
        std::string next;
        for (int call = 0; call < calls; ++call) {
            next += Call(Name("f", i + 1), kP);
        }
        functions += Function(Name("f", i), kNumber, calls == 1 ? next : Call("+", next));
    }
    return functions + Function(Name("f", length - 1), kNumber, kP);
}

TEST(UncalledFunctions, ThatCallOneAnotherAThousandDeepAreRead) {
    Scored scored(WithDictionary(Chain(1000, 1)));
    EXPECT_TRUE(scored.Score({{"x", "2"}, {"z", "3"}, {"c", "a"}}).IsOK());
}

TEST(UncalledFunctions, ThatAreNestedTooDeepAreRefused) {
    ExpectFailure([] { ReadModel(WithDictionary(Chain(3000, 1))); }, {PROCESSING_VARIABLE_FAILED, "FieldRef", ""});
}

TEST(UncalledFunctions, ThatCallTwiceAreBoundedByTheirCost) {
    ExpectFailure([] { ReadModel(WithDictionary(Chain(40, 2))); }, {PROCESSING_VARIABLE_FAILED, "Apply", "f22"});
}

} // namespace
