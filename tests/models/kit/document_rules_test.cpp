// What several attributes and children of an element have to fulfil together, and what looks odd and is lawful.
#include "models/kit/checked_documents.h"
#include "models/kit/scoring.h"
#include "models/kit/small_documents.h"
#include "support/faults/fault.h"
#include "support/rows.h"

#include <gtest/gtest.h>

using namespace veltrane::tests;
using enum MCVeltrane_900::Message;

namespace {

class DocumentRule : public testing::TestWithParam<FaultyChange> {};

TEST_P(DocumentRule, NamesElementAndAttribute) {
    const FaultyChange& fault = GetParam();
    ExpectFailure([&] { Check(Replaced(kCheckedRegression, fault.from, fault.to)); }, fault.failure);
}

constexpr FaultyChange kDictionaryFaults[] = {
    {"ListedValueOfNumbers", "<Value value='1'/>", "<Value value='one'/>",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "one", "value", "Value")},
    {"ListedEmptyValueOfNumbers", "<Value value='1'/>", "<Value value='' property='valid'/>",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "", "value", "Value")},
    {"IntervalWithoutMargins", "leftMargin='0' rightMargin='100'", "",
     Failure(MISSING_VALUES_OF_BOTH, "leftMargin", "rightMargin", "Interval")},
    {"LeftMarginAboveRight", "leftMargin='0' rightMargin='100'", "leftMargin='100.5' rightMargin='1e2'",
     Failure(VALUE_ABOVE_OTHER, "100.5", "leftMargin", "1e2", "rightMargin", "Interval")},
    {"TopElementUnknown", "<Header copyright='none'/>", "<Headr/>", Failure(INVALID_NODE, "Headr", "PMML")},
};

constexpr FaultyChange kExpressionFaults[] = {
    {"FieldWithoutExpression", "<NormDiscrete field='t' value='a' mapMissingTo='0'/>", "",
     Failure(MISSING_DEFINITION_OF, "EXPRESSION", "is", "DerivedField")},
    {"FieldWithTwoExpressions", "<NormDiscrete field='t' value='a' mapMissingTo='0'/>",
     "<FieldRef field='x'/><Constant>1</Constant>", Failure(MORE_THAN_ONE_EXPRESSION_IN, "DerivedField", "is")},
    {"FunctionWithoutExpression", "</DefineFunction>",
     "</DefineFunction><DefineFunction name='g'><ParameterField name='p'/></DefineFunction>",
     Failure(MISSING_DEFINITION_OF, "EXPRESSION", "g", "DefineFunction")},
    {"FunctionWithTwoExpressions", "</DefineFunction>", "<Constant>1</Constant></DefineFunction>",
     Failure(MORE_THAN_ONE_EXPRESSION_IN, "DefineFunction", "f")},
    {"ParameterTwice", "<Apply function='+' mapMissingTo='0'", "<ParameterField name='p'/><Apply function='+'",
     Failure(DUPLICATE_DEFINITION, "ParameterField", "p", "DefineFunction")},
    {"OutputWithTwoExpressions", "<FieldRef field='p'/><Value", "<FieldRef field='p'/><FieldRef field='p'/><Value",
     Failure(MORE_THAN_ONE_EXPRESSION_IN, "OutputField", "q")},
    {"IndexWithoutTerm", "<Constant>a</Constant></TextIndex>", "</TextIndex>",
     Failure(MISSING_DEFINITION_OF, "EXPRESSION", "t", "TextIndex")},
    {"IndexWithTwoTerms", "<Constant>a</Constant></TextIndex>",
     "<Constant>a</Constant><Constant>b</Constant></TextIndex>",
     Failure(MORE_THAN_ONE_EXPRESSION_IN, "TextIndex", "t")},
    {"ConstantOfNoNumber", "missing='false'>1<", "missing='false'>zzz<", Failure(INVALID_CONTENT, "zzz", "Constant")},
    {"ConstantOfBlanks", "missing='false'>1<", "missing='0'> <", Failure(INVALID_CONTENT, " ", "Constant")},
    {"ConstantOfNoTruthValue", "dataType='double' missing='false'>1<", "dataType='boolean'>yes<",
     Failure(INVALID_CONTENT, "yes", "Constant")},
    {"PointsGoDown", "orig='1' norm='1'", "orig='-0.5' norm='1'",
     Failure(VALUE_NOT_ASCENDING, "-0.5", "orig", "LinearNorm", "0")},
    {"PointsAreEqual", "orig='1' norm='1'", "orig='0.0' norm='1'",
     Failure(VALUE_NOT_ASCENDING, "0.0", "orig", "LinearNorm", "0")},
    {"OnePoint", "<LinearNorm orig='1' norm='1'/>", "",
     Failure(REQUIRES_MORE_THAN_ONE, "LinearNorm", "NormContinuous")},
    {"BinWithoutInterval", "<Interval closure='openOpen' rightMargin='5'/>", "",
     Failure(MISSING_NODE_IN, "Interval", "DiscretizeBin")},
    {"BinWithTwoIntervals", "<Interval closure='openOpen' rightMargin='5'/>",
     "<Interval closure='openOpen' rightMargin='5'/><Interval closure='openOpen' leftMargin='6'/>",
     Failure(MORE_THAN_ONE, "Interval", "DiscretizeBin")},
    {"KeyTwice", "<row><k>b</k><o>B</o></row>", "<row><o>B</o><k>a</k></row>",
     Failure(DUPLICATE_DEFINITION, "row", "a", "InlineTable")},
    {"KeysTwice", "<InlineTable><row><k>a</k><o>A</o></row><row><k>b</k><o>B</o></row>",
     "<FieldColumnPair field='x' column='l'/><InlineTable><row><k>a</k><l>1</l><o>A</o></row>"
     "<row><k>a</k><l>2</l><o>A</o></row><row><l>2</l><k>a</k></row>",
     Failure(DUPLICATE_DEFINITION, "row", "a, 2", "InlineTable")},
};

constexpr FaultyChange kTypeFaults[] = {
    {"BinOfNoNumber", "<Discretize field='x' dataType='string' mapMissingTo='m' defaultValue='d'>",
     "<Discretize field='x' dataType='double'>",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "low", "binValue", "DiscretizeBin")},
    {"EmptyBinOfANumber",
     "<Discretize field='x' dataType='string' mapMissingTo='m' defaultValue='d'><DiscretizeBin binValue='low'>",
     "<Discretize field='x' dataType='float'><DiscretizeBin binValue=''>",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "", "binValue", "DiscretizeBin")},
    {"MissingBinOfNoNumber", "dataType='string' mapMissingTo='m' defaultValue='d'><DiscretizeBin binValue='low'>",
     "dataType='integer' mapMissingTo='m'><DiscretizeBin binValue='5'>",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "m", "mapMissingTo", "Discretize")},
    {"OtherBinOfNoNumber", "dataType='string' mapMissingTo='m' defaultValue='d'><DiscretizeBin binValue='low'>",
     "dataType='integer' mapMissingTo='' defaultValue='d'><DiscretizeBin binValue='5'>",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "d", "defaultValue", "Discretize")},
    {"BinOfANumericField",
     "<DerivedField name='bin' optype='categorical' dataType='string'><Discretize field='x' dataType='string' "
     "mapMissingTo='m' defaultValue='d'>",
     "<DerivedField name='bin' optype='continuous' dataType='double'><Discretize field='x'>",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "low", "binValue", "DiscretizeBin")},
    {"CellOfNoNumber", "outputColumn='o' dataType='string' mapMissingTo='m' defaultValue='d'",
     "outputColumn='o' dataType='double'", Failure(INVALID_CONTENT, "A", "o")},
    {"MissingCellOfNoNumber", "outputColumn='o' dataType='string' mapMissingTo='m' defaultValue='d'",
     "outputColumn='o' dataType='double' mapMissingTo='m'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "m", "mapMissingTo", "MapValues")},
    {"OtherCellOfNoNumber", "outputColumn='o' dataType='string' mapMissingTo='m' defaultValue='d'",
     "outputColumn='o' dataType='double' defaultValue='d'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "d", "defaultValue", "MapValues")},
    {"ResultOfNoNumber", "<NormDiscrete field='t' value='a' mapMissingTo='0'/>",
     "<Apply function='+' defaultValue='none'/>", Failure(INVALID_ATTRIBUTE_VALUE_IN, "none", "defaultValue", "Apply")},
    {"MissingResultOfNoNumber", "<NormDiscrete field='t' value='a' mapMissingTo='0'/>",
     "<Apply function='+' mapMissingTo='none'/>", Failure(INVALID_ATTRIBUTE_VALUE_IN, "none", "mapMissingTo", "Apply")},
};

constexpr FaultyChange kTableFaults[] = {
    {"KeyColumnOfNoRow", "column='k'", "column='kk'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "kk", "column", "FieldColumnPair")},
    {"OutputColumnOfNoRow", "outputColumn='o'", "outputColumn='oo'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "oo", "outputColumn", "MapValues")},
};

constexpr FaultyChange kModelFaults[] = {
    {"LowAboveHigh", "lowValue='1' highValue='50'", "lowValue='51' highValue='50'",
     Failure(VALUE_ABOVE_OTHER, "51", "lowValue", "50", "highValue", "MiningField")},
    {"MinAboveMax", "min='0' max='9'", "min='10' max='9'",
     Failure(VALUE_ABOVE_OTHER, "10", "min", "9", "max", "Target")},
    {"TwoTargets", "<Targets>", "<Targets><Target field='y' max='1'/>",
     Failure(DUPLICATE_DEFINITION, "Target", "y", "Targets")},
    {"TwoTargetsOneOfThemUnnamed", "<Targets>", "<Targets><Target max='1'/>",
     Failure(DUPLICATE_DEFINITION, "Target", "y", "Targets")},
    {"PriorAboveOne", "priorProbability='0.5'", "priorProbability='1.5'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "1.5", "priorProbability", "TargetValue")},
    {"PriorBelowZero", "priorProbability='0.5'", "priorProbability='-0.1'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "-0.1", "priorProbability", "TargetValue")},
    {"ExponentOfAHalf", "exponent='2'", "exponent='0.5'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "0.5", "exponent", "NumericPredictor")},
    {"LagOfNoCase", "n='2'", "n='0'", Failure(INVALID_ATTRIBUTE_VALUE_IN, "0", "n", "Lag")},
    {"LagOfHalfACase", "n='2'", "n='1.5'", Failure(INVALID_ATTRIBUTE_VALUE_IN, "1.5", "n", "Lag")},
};

INSTANTIATE_TEST_SUITE_P(Dictionary, DocumentRule, testing::ValuesIn(kDictionaryFaults), NameOfRow());
INSTANTIATE_TEST_SUITE_P(Expressions, DocumentRule, testing::ValuesIn(kExpressionFaults), NameOfRow());
INSTANTIATE_TEST_SUITE_P(Types, DocumentRule, testing::ValuesIn(kTypeFaults), NameOfRow());
INSTANTIATE_TEST_SUITE_P(Tables, DocumentRule, testing::ValuesIn(kTableFaults), NameOfRow());
INSTANTIATE_TEST_SUITE_P(Model, DocumentRule, testing::ValuesIn(kModelFaults), NameOfRow());

struct LawfulChange {
    const char* name;
    const char* from;
    const char* to;
};

class LawfulDocument : public testing::TestWithParam<LawfulChange> {};

TEST_P(LawfulDocument, Passes) {
    Check(Replaced(kCheckedRegression, GetParam().from, GetParam().to));
}

constexpr LawfulChange kLawful[] = {
    {"PointAtTheEnd", "leftMargin='0'", "leftMargin='0.'"},
    {"PointAtTheStart", "leftMargin='0'", "leftMargin='-.5'"},
    {"PlusSign", "leftMargin='0'", "leftMargin='+5'"},
    {"Exponent", "rightMargin='100'", "rightMargin='1E2'"},
    {"WhiteSpaceAround", "rightMargin='100'", "rightMargin='&#10; 100&#9;'"},
    {"ManyDigits", "rightMargin='100'", "rightMargin='100.00000000000000000000000000000000000000001'"},
    {"EqualMargins", "leftMargin='0' rightMargin='100'", "leftMargin='0' rightMargin='0'"},
    {"WholeWithAPoint", "exponent='2'", "exponent='2.0'"},
    {"NegativeExponent", "exponent='2'", "exponent='-2'"},
    {"ConstantOfLineBreaks", "missing='false'>1<", "missing='false'>\n 5.\n<"},
    {"ConstantOfNothing", "missing='false'>1<", "missing='false'><"},
    {"ConstantThatIsMissing", "missing='false'>1<", "missing='true'>zzz<"},
    {"ConstantOfACapitalTruth", "dataType='double' missing='false'>1<", "dataType='boolean'>TRUE<"},
    {"ConstantOfADate", "dataType='double' missing='false'>1<", "dataType='date'>2020-01-01<"},
    {"ConstantWithoutAType", "dataType='double' missing='false'>1<", ">any<"},
    {"RowTwice", "<row><k>b</k><o>B</o></row>", "<row><k>a</k><o>A</o></row>"},
    {"KeysThatDifferByBlanks", "<row><k>b</k><o>B</o></row>", "<row><k>a </k><o>B</o></row>"},
    {"RowWithoutAKey", "<row><k>b</k><o>B</o></row>", "<row><o>B</o></row>"},
    {"KeysThatJoinToTheSame", "<InlineTable><row><k>a</k><o>A</o></row><row><k>b</k><o>B</o></row>",
     "<FieldColumnPair field='x' column='l'/><InlineTable><row><k>ab</k><l>c</l><o>A</o></row>"
     "<row><k>a</k><l>bc</l><o>B</o></row>"},
    {"ColumnsOfATableWithoutRows", "<row><k>a</k><o>A</o></row><row><k>b</k><o>B</o></row>", ""},
    {"ColumnsWithAPrefix", "<row><k>b</k><o>B</o></row>", "<row><d:k>b</d:k><d:o>B</d:o></row>"},
    {"OutputThatIsAKey", "outputColumn='o'", "outputColumn='k'"},
    {"OneColumnOfTwoFields", "<FieldColumnPair field='t' column='k'/>",
     "<FieldColumnPair field='t' column='k'/><FieldColumnPair field='x' column='k'/>"},
    {"BinsOfNumbers", "dataType='string' mapMissingTo='m' defaultValue='d'><DiscretizeBin binValue='low'>",
     "dataType='double' mapMissingTo='-1.' defaultValue=' 7 '><DiscretizeBin binValue='+5'>"},
    {"TextsWithinAnotherExpression", "<NormDiscrete field='t' value='a' mapMissingTo='0'/>",
     "<Apply function='if'><Apply function='equal' defaultValue='none'/><Constant>1</Constant></Apply>"},
    {"EmptyCellOfANumber",
     "outputColumn='o' dataType='string' mapMissingTo='m' defaultValue='d'><FieldColumnPair field='t' column='k'/>"
     "<InlineTable><row><k>a</k><o>A</o></row><row><k>b</k><o>B</o></row>",
     "outputColumn='o' dataType='double'><FieldColumnPair field='t' column='k'/>"
     "<InlineTable><row><k>a</k><o/></row><row><k>b</k><o>2</o></row>"},
    {"InvalidValueOfNoNumber", "<Value value='1'/>", "<Value value='-' property='invalid'/>"},
    {"TextStoredForANumber", "dataType='integer'><Value value='1'/>",
     "dataType='integer' x-storageType='string'><Value value='one'/>"},
    {"OldUsage", "usageType='target'", "usageType='predicted'"},
    {"OtherModelIsNotRead", "</RegressionModel></PMML>",
     "</RegressionModel><TreeModel functionName='any'><Foo/></TreeModel></PMML>"},
    {"OptionalVersion", " version='4.4'", ""},
};

INSTANTIATE_TEST_SUITE_P(Kit, LawfulDocument, testing::ValuesIn(kLawful), NameOfRow());

/// A classification with a Target for its categories.
std::string WithTargetValue(const std::string& value, const std::string& field = "<DataField name='t' ") {
    return Replaced(Replaced(kSmallClassification, "<RegressionTable targetCategory='yes'",
                             "<Targets><Target field='t'><TargetValue value='" + value +
                                 "' priorProbability='0.5'/></Target></Targets><RegressionTable targetCategory='yes'"),
                    "<DataField name='t' ", field);
}

TEST(TargetValues, AreCategoriesOfTheTarget) {
    Check(WithTargetValue("yes"));
    ExpectFailure([] { Check(WithTargetValue("pink")); },
                  {VALUE_TARGET_MISMATCH, "pink", "value", "TargetValue", "t", "DataDictionary"});
    ExpectFailure([] { ReadModel(WithTargetValue("pink")); },
                  {VALUE_TARGET_MISMATCH, "pink", "value", "TargetValue", "t", "DataDictionary"});
}

TEST(TargetValues, OfATargetThatListsNoneAreAny) {
    Check(Replaced(WithTargetValue("pink"), "<Value value='no'/><Value value='yes'/>",
                   "<Value value='no' property='missing'/>"));
}

TEST(TargetValues, AreTheSameNumbersHoweverWritten) {
    const std::string document =
        Replaced(Replaced(WithTargetValue("1.0"), "<Value value='no'/><Value value='yes'/>", "<Value value='1'/>"),
                 "optype='categorical' dataType='string'", "optype='categorical' dataType='integer'");
    Check(document);
    ExpectFailure([&] { Check(Replaced(document, "value='1.0'", "value='1.5'")); },
                  {VALUE_TARGET_MISMATCH, "1.5", "value", "TargetValue", "t", "DataDictionary"});
}

/// A document of a kind of model that has no row: what all kinds have in common is checked.
TEST(DocumentCheck, OfAKindOfModelWithoutARow) {
    const std::string open = "<PMML><DataDictionary/><OtherModel any='1'><Any/><MiningSchema>";
    const std::string close = "</MiningSchema></OtherModel></PMML>";
    Check(open + "<MiningField name='x'/>" + close);
    ExpectFailure([&] { Check(open + "<MiningField name='x' usageType='activ'/>" + close); },
                  {INVALID_ATTRIBUTE_VALUE_IN, "activ", "usageType", "MiningField"});
}

TEST(DocumentCheck, OfADeepDocumentTakesNoDeepCalls) {
    std::string document = "<PMML><DataDictionary/><TransformationDictionary><DerivedField name='d' "
                           "optype='continuous' dataType='double'>";
    constexpr int kDeep = 100000;
    for (int i = 0; i < kDeep; ++i) {
        document += "<Apply function='abs'>";
    }
    for (int i = 0; i < kDeep; ++i) {
        document += "</Apply>";
    }
    Check(document + "</DerivedField></TransformationDictionary></PMML>");
}

/// The names of what is faulty, in the encoding of the host.
TEST(DocumentCheck, ComesBeforeAllReaders) {
    ExpectFailure([] { ReadModel(Replaced(kSmallRegression, "<DataField name='z'", "<Foo/><DataField name='z'")); },
                  {INVALID_NODE, "Foo", "DataDictionary"});
    ExpectFailure([] { ReadModel(Replaced(kSmallRegression, "dataType='integer'", "dataType='inte\xC3\xA9ger'")); },
                  {INVALID_ATTRIBUTE_VALUE_IN, "inte\xC3\xA9ger", "dataType", "DataField"});
}

} // namespace
