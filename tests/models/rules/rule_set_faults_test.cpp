// Every element and attribute that the plug-in of rules reads missing, empty, wrong or doubled.
#include "models/kit/scoring.h"
#include "models/rules/small_rules.h"
#include "support/faults/fault.h"

#include <gtest/gtest.h>

using namespace veltrane::tests;

namespace {

class RuleSetFault : public testing::TestWithParam<FaultyChange> {};

TEST_P(RuleSetFault, NamesElementAndAttribute) {
    ExpectRefused(kSmallRules, GetParam());
}

constexpr FaultyChange kModelFaults[] = {
    {"FunctionMissing", " functionName='classification'", "",
     Failure(MISSING_ATTRIBUTE_OF, "functionName", "RuleSetModel")},
    {"FunctionEmpty", "functionName='classification'", "functionName=''",
     Failure(NULL_ATTRIBUTE, "functionName", "RuleSetModel")},
    {"FunctionOfOtherModels", "functionName='classification'", "functionName='clustering'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "clustering", "functionName", "RuleSetModel")},
    {"NotScorable", "isScorable='true'", "isScorable='false'",
     Failure(UNSUPPORTED_VALUE_IN, "false", "isScorable", "RuleSetModel", "true")},
    {"ChildWrong", "<MiningSchema>", "<SimpleRule/><MiningSchema>",
     Failure(INVALID_NODE, "SimpleRule", "RuleSetModel")},
    {"RuleSetDoubled", "</RuleSetModel>",
     "<RuleSet><RuleSelectionMethod criterion='firstHit'/></RuleSet></RuleSetModel>",
     Failure(MORE_THAN_ONE, "RuleSet", "RuleSetModel")},
    {"RuleFeatureEmpty", "ruleFeature='rule'", "ruleFeature=''", Failure(NULL_ATTRIBUTE, "ruleFeature", "OutputField")},
    {"RuleFeatureWrong", "ruleFeature='rule'", "ruleFeature='id'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "id", "ruleFeature", "OutputField")},
};

constexpr FaultyChange kRuleSetFaults[] = {
    {"MethodMissing", "<RuleSelectionMethod criterion='firstHit'/>", "",
     Failure(MISSING_NODE_IN, "RuleSelectionMethod", "RuleSet")},
    {"CriterionMissing", " criterion='firstHit'", "",
     Failure(MISSING_ATTRIBUTE_OF, "criterion", "RuleSelectionMethod")},
    {"CriterionEmpty", "criterion='firstHit'", "criterion=''",
     Failure(NULL_ATTRIBUTE, "criterion", "RuleSelectionMethod")},
    {"CriterionWrong", "criterion='firstHit'", "criterion='lastHit'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "lastHit", "criterion", "RuleSelectionMethod")},
    {"SecondCriterionWrong", "<RuleSelectionMethod",
     "<RuleSelectionMethod criterion='firstHit'/><RuleSelectionMethod criterion='none'/><RuleSelectionMethod",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "none", "criterion", "RuleSelectionMethod")},
    {"ChildWrong", "<RuleSelectionMethod", "<True/><RuleSelectionMethod", Failure(INVALID_NODE, "True", "RuleSet")},
    {"RecordsEmpty", "recordCount='20'", "recordCount=''", Failure(NULL_ATTRIBUTE, "recordCount", "RuleSet")},
    {"RecordsNegative", "recordCount='20'", "recordCount='-20'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "-20", "recordCount", "RuleSet")},
    {"CorrectWrong", "nbCorrect='12'", "nbCorrect='some'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "some", "nbCorrect", "RuleSet")},
    {"CorrectNegative", "nbCorrect='12'", "nbCorrect='-1'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "-1", "nbCorrect", "RuleSet")},
    {"CorrectAboveAll", "nbCorrect='12'", "nbCorrect='21'",
     Failure(VALUE_ABOVE_OTHER, "21", "nbCorrect", "20", "recordCount", "RuleSet")},
    {"DefaultUnlisted", "defaultScore='c'", "defaultScore='d'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "d", "defaultScore", "RuleSet")},
    {"DefaultEmpty", "defaultScore='c'", "defaultScore=''",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "", "defaultScore", "RuleSet")},
    {"DefaultConfidenceEmpty", "defaultConfidence='0.5'", "defaultConfidence=''",
     Failure(NULL_ATTRIBUTE, "defaultConfidence", "RuleSet")},
    {"DefaultConfidenceWrong", "defaultConfidence='0.5'", "defaultConfidence='half'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "half", "defaultConfidence", "RuleSet")},
    {"DefaultConfidenceNegative", "defaultConfidence='0.5'", "defaultConfidence='-0.5'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "-0.5", "defaultConfidence", "RuleSet")},
    {"ShareOfAllUnlisted", "value='a' recordCount='12'", "value='z' recordCount='12'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "z", "value", "ScoreDistribution")},
    {"ShareOfAllDoubled", "value='a' recordCount='12'", "value='c' recordCount='12'",
     Failure(DUPLICATE_DEFINITION, "ScoreDistribution", "c", "RuleSet")},
};

constexpr FaultyChange kRuleFaults[] = {
    {"IdEmpty", "id='low'", "id=''", Failure(NULL_ATTRIBUTE, "id", "SimpleRule")},
    {"IdDoubled", "id='mid'", "id='low'", Failure(DUPLICATE_DEFINITION, "SimpleRule", "low", "RuleSet")},
    {"ScoreMissing", "id='mid' score='b'", "id='mid'", Failure(MISSING_ATTRIBUTE_OF, "score", "SimpleRule")},
    {"ScoreEmpty", "id='mid' score='b'", "id='mid' score=''",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "", "score", "SimpleRule")},
    {"ScoreUnlisted", "id='mid' score='b'", "id='mid' score='d'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "d", "score", "SimpleRule")},
    {"WeightEmpty", "weight='2'", "weight=''", Failure(NULL_ATTRIBUTE, "weight", "SimpleRule")},
    {"WeightWrong", "weight='2'", "weight='heavy'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "heavy", "weight", "SimpleRule")},
    {"ConfidenceEmpty", "confidence='0.75' weight", "confidence='' weight",
     Failure(NULL_ATTRIBUTE, "confidence", "SimpleRule")},
    {"ConfidenceWrong", "confidence='0.75' weight", "confidence='sure' weight",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "sure", "confidence", "SimpleRule")},
    {"ConfidenceNegative", "confidence='0.75' weight", "confidence='-1' weight",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "-1", "confidence", "SimpleRule")},
    {"RecordsWrong", "recordCount='8' nbCorrect", "recordCount='INF' nbCorrect",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "INF", "recordCount", "SimpleRule")},
    {"RecordsNegative", "recordCount='8' nbCorrect", "recordCount='-8' nbCorrect",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "-8", "recordCount", "SimpleRule")},
    {"CorrectAboveAll", "nbCorrect='6'", "nbCorrect='9'",
     Failure(VALUE_ABOVE_OTHER, "9", "nbCorrect", "8", "recordCount", "SimpleRule")},
    {"PredicateMissing", "<SimplePredicate field='x' operator='lessThan' value='1'/>", "",
     Failure(MISSING_NODE_IN, "predicate", "SimpleRule")},
    {"PredicateDoubled", "<SimplePredicate field='x' operator='lessThan' value='1'/>", "<True/><True/>",
     Failure(MORE_THAN_ONE, "predicate", "SimpleRule")},
    {"ChildWrong", "<SimplePredicate field='x' operator='lessThan' value='1'/>", "<True/><SimpleRule/>",
     Failure(INVALID_NODE, "SimpleRule", "SimpleRule")},
    {"ShareUnlisted", "value='b' recordCount", "value='d' recordCount",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "d", "value", "ScoreDistribution")},
    {"ShareDoubled", "value='b' recordCount", "value='a' recordCount",
     Failure(DUPLICATE_DEFINITION, "ScoreDistribution", "a", "SimpleRule")},
    {"ShareCountMissing", "recordCount='2' ", "", Failure(MISSING_ATTRIBUTE_OF, "recordCount", "ScoreDistribution")},
    {"ShareCountsBeyondAllDoubles",
     "recordCount='6' probability='0.7' confidence='0.75'/>\n   <ScoreDistribution value='b' recordCount='2'",
     "recordCount='1e308'/><ScoreDistribution value='b' recordCount='1e308'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "1e308", "recordCount", "ScoreDistribution")},
    {"ShareCountNegative", "recordCount='2' ", "recordCount='-2' ",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "-2", "recordCount", "ScoreDistribution")},
    {"ProbabilityAboveOne", "probability='0.3'", "probability='3'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "3", "probability", "ScoreDistribution")},
    {"ConfidenceOfShareWrong", "confidence='0.25'", "confidence='low'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "low", "confidence", "ScoreDistribution")},
};

constexpr FaultyChange kCompoundFaults[] = {
    {"PredicateMissing", "<SimplePredicate field='k' operator='equal' value='u'/>", "",
     Failure(MISSING_NODE_IN, "predicate", "CompoundRule")},
    {"PredicateDoubled", "<SimplePredicate field='k'", "<True/><SimplePredicate field='k'",
     Failure(MORE_THAN_ONE, "predicate", "CompoundRule")},
    {"RuleMissing", "<CompoundRule>", "<CompoundRule><True/></CompoundRule><CompoundRule>",
     Failure(MISSING_NODE_IN, "rule", "CompoundRule")},
    {"ChildWrong", "<CompoundRule>", "<CompoundRule><ScoreDistribution value='a' recordCount='1'/>",
     Failure(INVALID_NODE, "ScoreDistribution", "CompoundRule")},
};

INSTANTIATE_TEST_SUITE_P(Model, RuleSetFault, testing::ValuesIn(kModelFaults), NameOfRow());
INSTANTIATE_TEST_SUITE_P(Sets, RuleSetFault, testing::ValuesIn(kRuleSetFaults), NameOfRow());
INSTANTIATE_TEST_SUITE_P(Rules, RuleSetFault, testing::ValuesIn(kRuleFaults), NameOfRow());
INSTANTIATE_TEST_SUITE_P(Compounds, RuleSetFault, testing::ValuesIn(kCompoundFaults), NameOfRow());

TEST(RuleSetFault, NeedsARuleSet) {
    std::string document = kSmallRules;
    const std::size_t begin = document.find(" <RuleSet ");
    document.erase(begin, document.find("</RuleSetModel>") - begin);
    ExpectFailure([&] { ReadModel(document); }, {MISSING_NODE_IN, "RuleSet", "RuleSetModel"});
}

TEST(RuleSetFault, OfARegression) {
    ExpectFailure([] { ReadModel(Replaced(kNumberRules, "score='20'", "score='twenty'")); },
                  {INVALID_ATTRIBUTE_VALUE_IN, "twenty", "score", "SimpleRule"});
    ExpectFailure([] { ReadModel(Replaced(kNumberRules, "defaultScore='-1'", "defaultScore=''")); },
                  {NULL_ATTRIBUTE, "defaultScore", "RuleSet"});
    ExpectFailure(
        [] {
            ReadModel(Replaced(kNumberRules, "<SimpleRule score='20' weight='3'>",
                               "<SimpleRule score='20' weight='3'><ScoreDistribution value='20' recordCount='1'/>"));
        },
        {INVALID_NODE, "ScoreDistribution", "SimpleRule"});
}

} // namespace
