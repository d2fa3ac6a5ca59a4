// Comparisons within expressions go by the order in which an ordinal field of texts lists its values.
#include "models/kit/scoring.h"
#include "support/rows.h"

#include <gtest/gtest.h>

using namespace veltrane::tests;

namespace {

const std::string kList = "<Value value='small'/><Value value='big'/><Value value='vast'/>";

/// The derived field d tells what the expression is: 1, 0, or -1 where it is missing.
std::string DocumentOf(const std::string& expression) {
    const auto field = [](const std::string& name, const std::string& level, const std::string& values) {
        return "<DataField name='" + name + "' optype='" + level + "' dataType='string'>" + values + "</DataField>";
    };
    return "<PMML version='4.3'><DataDictionary><DataField name='y' optype='continuous' dataType='double'/>" +
           field("o", "ordinal", kList) + field("p", "ordinal", kList) +
           field("q", "ordinal", "<Value value='vast'/><Value value='big'/><Value value='small'/>") +
           field("m", "categorical", kList) + field("c", "categorical", kList) + field("s", "categorical", "") +
           "</DataDictionary><TransformationDictionary><DefineFunction name='below' dataType='boolean'>"
           "<ParameterField name='l' dataType='string'/><ParameterField name='r' dataType='string'/>"
           "<Apply function='lessThan'><FieldRef field='l'/><FieldRef field='r'/></Apply></DefineFunction>"
           "<DerivedField name='h' optype='ordinal' dataType='string'><FieldRef field='s'/><Value value='10'/>"
           "<Value value='9'/></DerivedField></TransformationDictionary><RegressionModel functionName='regression'>"
           "<MiningSchema><MiningField name='y' usageType='target'/><MiningField name='o' "
           "invalidValueTreatment='asIs'/>"
           "<MiningField name='p'/><MiningField name='q'/><MiningField name='m' optype='ordinal'/>"
           "<MiningField name='c'/><MiningField name='s'/></MiningSchema><Output><OutputField name='shown' "
           "feature='transformedValue' dataType='double' optype='continuous'><Apply function='if'>" +
           expression +
           "<Constant>1</Constant><Constant>0</Constant></Apply></OutputField></Output><LocalTransformations>"
           "<DerivedField name='d' optype='continuous' dataType='double'><Apply function='if' defaultValue='-1'>" +
           expression +
           "<Constant>1</Constant><Constant>0</Constant></Apply></DerivedField></LocalTransformations>"
           "<RegressionTable intercept='0'><NumericPredictor name='d' coefficient='1'/></RegressionTable>"
           "</RegressionModel></PMML>";
}

std::string Compare(const std::string& function, const std::string& left, const std::string& right) {
    const auto argument = [](const std::string& text) {
        return text.front() == '=' ? "<Constant>" + text.substr(1) + "</Constant>" : "<FieldRef field='" + text + "'/>";
    };
    return "<Apply function='" + function + "'>" + argument(left) + argument(right) + "</Apply>";
}

struct Row {
    const char* name;
    std::string expression;
    Case values;
    double answer;
};

const Row kRows[] = {
    {"Less", Compare("lessThan", "o", "=vast"), {{"o", "small"}}, 1.0},
    {"NotLess", Compare("lessThan", "o", "=small"), {{"o", "big"}}, 0.0},
    {"NotLessThanItself", Compare("lessThan", "o", "=big"), {{"o", "big"}}, 0.0},
    {"LessOrEqual", Compare("lessOrEqual", "o", "=big"), {{"o", "big"}}, 1.0},
    {"Greater", Compare("greaterThan", "o", "=small"), {{"o", "big"}}, 1.0},
    {"NotGreater", Compare("greaterThan", "o", "=vast"), {{"o", "small"}}, 0.0},
    {"GreaterOrEqual", Compare("greaterOrEqual", "o", "=vast"), {{"o", "vast"}}, 1.0},
    {"ConstantFirst", Compare("lessThan", "=small", "o"), {{"o", "big"}}, 1.0},
    {"SameField", Compare("lessOrEqual", "o", "o"), {{"o", "big"}}, 1.0},
    {"SameList", Compare("lessThan", "o", "p"), {{"o", "small"}, {"p", "big"}}, 1.0},
    {"OtherListGoesByLetters", Compare("lessThan", "o", "q"), {{"o", "small"}, {"q", "big"}}, 0.0},
    {"FieldWithoutOrder", Compare("lessThan", "c", "o"), {{"c", "small"}, {"o", "big"}}, 1.0},
    {"NoOrderGoesByLetters", Compare("lessThan", "c", "=small"), {{"c", "big"}}, 1.0},
    {"LevelOfTheSchema", Compare("lessThan", "m", "=big"), {{"m", "small"}}, 1.0},
    {"DerivedList", Compare("lessThan", "h", "=9"), {{"s", "10"}}, 1.0},
    {"DerivedListOtherWay", Compare("lessThan", "h", "=10"), {{"s", "9"}}, 0.0},
    {"UnlistedIsNotBelow", Compare("lessOrEqual", "o", "=big"), {{"o", "a"}}, 0.0},
    {"UnlistedIsNotAbove", Compare("greaterOrEqual", "o", "=big"), {{"o", "z"}}, 0.0},
    {"NothingIsBelowUnlisted", Compare("lessOrEqual", "o", "=z"), {{"o", "big"}}, 0.0},
    {"NothingIsAboveUnlisted", Compare("greaterOrEqual", "o", "=a"), {{"o", "big"}}, 0.0},
    {"UnlistedIsNotOrderedWithItself", Compare("lessOrEqual", "o", "=z"), {{"o", "z"}}, 0.0},
    {"UnlistedIsEqualToItself", Compare("equal", "o", "=z"), {{"o", "z"}}, 1.0},
    {"Missing", Compare("lessThan", "o", "=vast"), {}, -1.0},
    {"MissingBesideUnlisted", Compare("lessThan", "o", "=z"), {}, -1.0},
    {"ReplacedReference",
     "<Apply function='lessThan'><FieldRef field='o' mapMissingTo='small'/><Constant>big</Constant></Apply>",
     {},
     1.0},
    {"ReplacedResult",
     "<Apply function='lessThan' mapMissingTo='true'><FieldRef field='o'/><Constant>big</Constant></Apply>",
     {},
     1.0},
    {"ReplacementUnused",
     "<Apply function='greaterThan' mapMissingTo='true'><FieldRef field='o'/><Constant>vast</Constant></Apply>",
     {{"o", "z"}},
     0.0},
    {"ParametersGoByLetters", Compare("below", "o", "=vast"), {{"o", "big"}}, 1.0},
    {"ParametersHaveNoOrder", Compare("below", "o", "=big"), {{"o", "small"}}, 0.0},
};

class OrdinalComparison : public testing::TestWithParam<Row> {};

TEST_P(OrdinalComparison, GoesByTheList) {
    Scored scored(DocumentOf(GetParam().expression));
    scored.Score(GetParam().values);
    EXPECT_EQ(scored.Number(), GetParam().answer);
    if (GetParam().answer >= 0.0) {
        EXPECT_EQ(scored.Number("shown"), GetParam().answer);
    }
}

INSTANTIATE_TEST_SUITE_P(Rows, OrdinalComparison, testing::ValuesIn(kRows), NameOfRow());

} // namespace
