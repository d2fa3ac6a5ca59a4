// Documents whose expressions would take the stack or the time of the process.
#include "models/kit/scoring.h"
#include "models/kit/small_documents.h"
#include "support/faults/failure.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace veltrane::tests;

std::string Repeated(const std::string& text, int count) {
    std::string repeated;
    for (int i = 0; i < count; ++i) {
        repeated += text;
    }
    return repeated;
}

std::string Name(const char* letter, int number) {
    return letter + std::to_string(number);
}

/// A document with a TransformationDictionary in front of the small regression.
std::string WithFields(const std::string& fields) {
    return Replaced(kSmallRegression, "<RegressionModel ",
                    "<TransformationDictionary>" + fields + "</TransformationDictionary><RegressionModel ");
}

std::string Derived(const std::string& name, const std::string& expression) {
    return "<DerivedField name='" + name + "' optype='continuous' dataType='double'>" + expression + "</DerivedField>";
}

std::string Nested(int depth, const std::string& innermost) {
    return Repeated("<Apply function='abs'>", depth) + innermost + Repeated("</Apply>", depth);
}

std::string Defined(const std::string& name, const std::string& expression) {
    return "<DefineFunction name='" + name +
           "' optype='continuous' dataType='double'><ParameterField name='a' dataType='double'/>" + expression +
           "</DefineFunction>";
}

TEST(HostileExpressions, FieldsThatReferFarBackAreRead) {
    std::string fields = Derived("d0", "<FieldRef field='x'/>");
    for (int i = 1; i < 20000; ++i) {
        fields += Derived(Name("d", i), "<FieldRef field='" + Name("d", i - 1) + "'/>");
    }
    Scored scored(Replaced(WithFields(fields), "<NumericPredictor name='x'", "<NumericPredictor name='d19999'"));
    EXPECT_TRUE(scored.Score({{"x", "2"}, {"z", "3"}, {"c", "a"}}).IsOK());
}

TEST(HostileExpressions, FieldsThatReferFarAheadThroughDeepExpressionsAreRefused) {
    std::string fields;
    for (int i = 0; i < 100; ++i) {
        fields += Derived(Name("d", i), Nested(900, "<FieldRef field='" + (i < 99 ? Name("d", i + 1) : "x") + "'/>"));
    }
    ExpectFailure([&] { ReadModel(WithFields(fields)); }, {PROCESSING_VARIABLE_FAILED, "Apply", "abs"});
}

TEST(HostileExpressions, FunctionsThatCallOneAnotherDeepAreRefused) {
    std::string functions = Defined("f0", "<FieldRef field='a'/>");
    for (int i = 1; i < 5000; ++i) {
        const std::string call = "<Apply function='" + Name("f", i - 1) + "'><FieldRef field='a'/></Apply>";
        functions += Defined(Name("f", i), call);
    }
    const std::string field = Derived("d", "<Apply function='f4999'><FieldRef field='x'/></Apply>");
    ExpectFailure([&] { ReadModel(WithFields(functions + field)); }, {PROCESSING_VARIABLE_FAILED, "FieldRef", ""});
}

TEST(HostileExpressions, FunctionsThatAreReadOneByOneAreBoundedToo) {
    std::string functions = Defined("f0", "<FieldRef field='a'/>");
    std::string fields = Derived("d0", "<Apply function='f0'><FieldRef field='x'/></Apply>");
    for (int i = 1; i < 3000; ++i) {
        const std::string call = "<Apply function='" + Name("f", i - 1) + "'><FieldRef field='a'/></Apply>";
        functions += Defined(Name("f", i), call);
        fields += Derived(Name("d", i), "<Apply function='" + Name("f", i) + "'><FieldRef field='x'/></Apply>");
    }
    ExpectFailure([&] { ReadModel(WithFields(functions + fields)); }, {PROCESSING_VARIABLE_FAILED, "Apply", "f1999"});
}

TEST(HostileExpressions, FunctionsThatCallTwiceAreBoundedByTheirCost) {
    std::string functions = Defined("f0", "<FieldRef field='a'/>");
    for (int i = 1; i < 40; ++i) {
        const std::string call = "<Apply function='" + Name("f", i - 1) + "'><FieldRef field='a'/></Apply>";
        functions += Defined(Name("f", i), "<Apply function='+'>" + call + call + "</Apply>");
    }
    const std::string field = Derived("d", "<Apply function='f39'><FieldRef field='x'/></Apply>");
    ExpectFailure([&] { ReadModel(WithFields(functions + field)); }, {PROCESSING_VARIABLE_FAILED, "Apply", "f17"});
}

TEST(HostileExpressions, AFunctionThatCallsItselfIsRefused) {
    const std::string field = Derived("d", "<Apply function='f'><FieldRef field='x'/></Apply>");
    ExpectFailure(
        [&] { ReadModel(WithFields(Defined("f", "<Apply function='f'><FieldRef field='a'/></Apply>") + field)); },
        {INVALID_ATTRIBUTE_VALUE_IN, "f", "function", "Apply"});
}

TEST(HostileExpressions, ACircleOfFieldsIsRefused) {
    const std::string fields = Derived("a", "<FieldRef field='b'/>") + Derived("b", "<FieldRef field='a'/>");
    ExpectFailure([&] { ReadModel(WithFields(fields)); }, {SOURCE_IS_DESTINATION, "a", "DerivedField"});
}

TEST(HostileExpressions, ADeepOneIsEvaluated) {
    for (const bool isLocal : {false, true}) {
        const std::string field = Derived("d", Nested(1000, "<FieldRef field='x'/>"));
        const std::string document =
            isLocal
                ? Replaced(kSmallRegression, " <RegressionTable intercept='1'>",
                           "<LocalTransformations>" + field + "</LocalTransformations><RegressionTable intercept='1'>")
                : WithFields(field);
        Scored scored(Replaced(document, "<NumericPredictor name='x'", "<NumericPredictor name='d'"));
        EXPECT_TRUE(scored.Score({{"x", "2"}, {"z", "3"}, {"c", "a"}}).IsOK());
    }
}

} // namespace
