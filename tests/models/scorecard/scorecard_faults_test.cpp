// Every element and attribute that the plug-in of scorecards reads missing, empty, wrong or doubled.
#include "models/kit/scoring.h"
#include "models/scorecard/small_card.h"
#include "support/faults/fault.h"

#include <gtest/gtest.h>

using namespace veltrane::tests;

namespace {

class ScorecardFault : public testing::TestWithParam<FaultyChange> {};

TEST_P(ScorecardFault, NamesElementAndAttribute) {
    ExpectRefused(kSmallCard, GetParam());
}

constexpr FaultyChange kModelFaults[] = {
    {"FunctionMissing", " functionName='regression'", "", Failure(MISSING_ATTRIBUTE_OF, "functionName", "Scorecard")},
    {"FunctionEmpty", "functionName='regression'", "functionName=''",
     Failure(NULL_ATTRIBUTE, "functionName", "Scorecard")},
    {"FunctionWrong", "functionName='regression'", "functionName='score'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "score", "functionName", "Scorecard")},
    {"FunctionOfOtherModels", "functionName='regression'", "functionName='classification'",
     Failure(UNSUPPORTED_VALUE_IN, "classification", "functionName", "Scorecard", "regression")},
    {"InitialScoreEmpty", "initialScore='2'", "initialScore=''", Failure(NULL_ATTRIBUTE, "initialScore", "Scorecard")},
    {"InitialScoreWrong", "initialScore='2'", "initialScore='two'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "two", "initialScore", "Scorecard")},
    {"UseReasonCodesEmpty", "useReasonCodes='true'", "useReasonCodes=''",
     Failure(NULL_ATTRIBUTE, "useReasonCodes", "Scorecard")},
    {"UseReasonCodesWrong", "useReasonCodes='true'", "useReasonCodes='yes'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "yes", "useReasonCodes", "Scorecard")},
    {"AlgorithmEmpty", "reasonCodeAlgorithm='pointsBelow'", "reasonCodeAlgorithm=''",
     Failure(NULL_ATTRIBUTE, "reasonCodeAlgorithm", "Scorecard")},
    {"AlgorithmWrong", "reasonCodeAlgorithm='pointsBelow'", "reasonCodeAlgorithm='below'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "below", "reasonCodeAlgorithm", "Scorecard")},
    {"BaselineMissing", " baselineScore='5'", "", Failure(MISSING_ATTRIBUTE_OF, "baselineScore", "Characteristic")},
    {"BaselineEmpty", "baselineScore='5'", "baselineScore=''", Failure(NULL_ATTRIBUTE, "baselineScore", "Scorecard")},
    {"BaselineWrong", "baselineScore='5'", "baselineScore='NaN'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "NaN", "baselineScore", "Scorecard")},
    {"MethodEmpty", "baselineMethod='mean'", "baselineMethod=''",
     Failure(NULL_ATTRIBUTE, "baselineMethod", "Scorecard")},
    {"MethodWrong", "baselineMethod='mean'", "baselineMethod='median'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "median", "baselineMethod", "Scorecard")},
    {"NotScorable", "isScorable='true'", "isScorable='false'",
     Failure(UNSUPPORTED_VALUE_IN, "false", "isScorable", "Scorecard", "true")},
    {"ChildWrong", "<MiningSchema>", "<Node/><MiningSchema>", Failure(INVALID_NODE, "Node", "Scorecard")},
    {"CharacteristicsDoubled", "</Scorecard>", "<Characteristics/></Scorecard>",
     Failure(MORE_THAN_ONE, "Characteristics", "Scorecard")},
};

constexpr FaultyChange kCharacteristicFaults[] = {
    {"ChildOfCharacteristicsWrong", " <Characteristics>", "<Characteristics><Attribute/>",
     Failure(INVALID_NODE, "Attribute", "Characteristics")},
    {"ReasonEmpty", "reasonCode='C'", "reasonCode=''", Failure(NULL_ATTRIBUTE, "reasonCode", "Characteristic")},
    {"ReasonMissing", " reasonCode='C'", "", Failure(MISSING_ATTRIBUTE_OF, "reasonCode", "Attribute")},
    {"BaselineEmpty", "baselineScore='12'", "baselineScore=''",
     Failure(NULL_ATTRIBUTE, "baselineScore", "Characteristic")},
    {"BaselineWrong", "baselineScore='12'", "baselineScore='1e999'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "1e999", "baselineScore", "Characteristic")},
    {"ChildWrong", "<Characteristic name='colour' reasonCode='C'>",
     "<Characteristic name='colour' reasonCode='C'><True/>", Failure(INVALID_NODE, "True", "Characteristic")},
    {"WithoutAttributes", "<Characteristic name='colour' reasonCode='C'>",
     "<Characteristic name='none' reasonCode='N'/><Characteristic name='colour' reasonCode='C'>",
     Failure(MISSING_NODE_IN, "Attribute", "Characteristic")},
};

constexpr FaultyChange kAttributeFaults[] = {
    {"ReasonEmpty", "reasonCode='XX'", "reasonCode=''", Failure(NULL_ATTRIBUTE, "reasonCode", "Attribute")},
    {"PointsMissing", " partialScore='4'", "", Failure(MISSING_ATTRIBUTE_OF, "partialScore", "Attribute")},
    {"PointsEmpty", "partialScore='4'", "partialScore=''", Failure(NULL_ATTRIBUTE, "partialScore", "Attribute")},
    {"PointsWrong", "partialScore='4'", "partialScore='four'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "four", "partialScore", "Attribute")},
    {"PredicateMissing", "<True/>", "", Failure(MISSING_NODE_IN, "predicate", "Attribute")},
    {"PredicateDoubled", "<True/>", "<True/><False/>", Failure(MORE_THAN_ONE, "predicate", "Attribute")},
    {"ChildWrong", "<True/>", "<True/><Apply/>", Failure(INVALID_NODE, "Apply", "Attribute")},
    {"FieldOfThePredicateMissing", "<SimplePredicate field='c'", "<SimplePredicate",
     Failure(MISSING_ATTRIBUTE_OF, "field", "SimplePredicate")},
    {"FieldOfThePredicateUnknown", "<SimplePredicate field='c'", "<SimplePredicate field='w'",
     Failure(MISSING_VARIABLE_IN_BOTH, "w", "DataDictionary", "TransformationDictionary")},
    {"ExpressionMissing", "<Apply function='*'><FieldRef field='x'/><FieldRef field='x'/></Apply>", "",
     Failure(MISSING_NODE_IN, "EXPRESSION", "ComplexPartialScore")},
    {"ExpressionDoubled", "<ComplexPartialScore>", "<ComplexPartialScore><Constant>1</Constant>",
     Failure(MORE_THAN_ONE_EXPRESSION, "ComplexPartialScore")},
    {"ExpressionWrong", "<ComplexPartialScore>", "<ComplexPartialScore><True/>",
     Failure(INVALID_NODE, "True", "ComplexPartialScore")},
    {"ComplexDoubled", "<ComplexPartialScore>",
     "<ComplexPartialScore><Constant>1</Constant></ComplexPartialScore><ComplexPartialScore>",
     Failure(MORE_THAN_ONE, "ComplexPartialScore", "Attribute")},
    {"FieldOfTheExpressionUnknown", "<FieldRef field='x'/><FieldRef", "<FieldRef field='w'/><FieldRef",
     Failure(MISSING_VARIABLE_IN_BOTH, "w", "DataDictionary", "TransformationDictionary")},
    {"FieldOfTheExpressionClosed", "<FieldRef field='x'/><FieldRef", "<FieldRef field='y'/><FieldRef",
     Failure(NO_PREDICTOR, "y")},
};

INSTANTIATE_TEST_SUITE_P(Model, ScorecardFault, testing::ValuesIn(kModelFaults), NameOfRow());
INSTANTIATE_TEST_SUITE_P(Characteristics, ScorecardFault, testing::ValuesIn(kCharacteristicFaults), NameOfRow());
INSTANTIATE_TEST_SUITE_P(Attributes, ScorecardFault, testing::ValuesIn(kAttributeFaults), NameOfRow());

TEST(ScorecardFault, NeedsCharacteristics) {
    const std::size_t begin = kSmallCard.find(" <Characteristics>");
    const std::size_t end = kSmallCard.find("</Scorecard>");
    std::string document = kSmallCard;
    document.erase(begin, end - begin);
    ExpectFailure([&] { ReadModel(document); }, {MISSING_NODE_IN, "Characteristics", "Scorecard"});
    document.insert(begin, "<Characteristics/>");
    ExpectFailure([&] { ReadModel(document); }, {MISSING_NODE_IN, "Characteristic", "Characteristics"});
}

} // namespace
