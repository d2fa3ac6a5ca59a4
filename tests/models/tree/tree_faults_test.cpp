// Every element and attribute that the plug-in of trees reads missing, empty, wrong or doubled.
#include "models/kit/scoring.h"
#include "models/tree/small_tree.h"
#include "support/faults/fault.h"

#include <gtest/gtest.h>

using namespace veltrane::tests;

namespace {

class TreeFault : public testing::TestWithParam<FaultyChange> {};

TEST_P(TreeFault, NamesElementAndAttribute) {
    ExpectRefused(kSmallTree, GetParam());
}

constexpr FaultyChange kModelFaults[] = {
    {"StrategyEmpty", "'defaultChild' missing", "'' missing",
     Failure(NULL_ATTRIBUTE, "missingValueStrategy", "TreeModel")},
    {"StrategyWrong", "'defaultChild' missing", "'guess' missing",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "guess", "missingValueStrategy", "TreeModel")},
    {"PenaltyEmpty", "missingValuePenalty='0.5'", "missingValuePenalty=''",
     Failure(NULL_ATTRIBUTE, "missingValuePenalty", "TreeModel")},
    {"PenaltyWrong", "missingValuePenalty='0.5'", "missingValuePenalty='much'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "much", "missingValuePenalty", "TreeModel")},
    {"PenaltyAboveOne", "missingValuePenalty='0.5'", "missingValuePenalty='1.5'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "1.5", "missingValuePenalty", "TreeModel")},
    {"PenaltyBelowZero", "missingValuePenalty='0.5'", "missingValuePenalty='-1'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "-1", "missingValuePenalty", "TreeModel")},
    {"NoTrueChildEmpty", "'returnLastPrediction'", "''", Failure(NULL_ATTRIBUTE, "noTrueChildStrategy", "TreeModel")},
    {"NoTrueChildWrong", "'returnLastPrediction'", "'stop'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "stop", "noTrueChildStrategy", "TreeModel")},
    {"SplitWrong", "'binarySplit'", "'threeway'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "threeway", "splitCharacteristic", "TreeModel")},
    {"ChildWrong", "<MiningSchema>", "<Regression/><MiningSchema>", Failure(INVALID_NODE, "Regression", "TreeModel")},
    {"NodeDoubled", "</TreeModel>", "<Node><True/></Node></TreeModel>", Failure(MORE_THAN_ONE, "Node", "TreeModel")},
    {"FunctionWrong", "functionName='classification'", "functionName='clustering'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "clustering", "functionName", "TreeModel")},
};

constexpr FaultyChange kNodeFaults[] = {
    {"PredicateMissing", "  <True/>\n", "", Failure(MISSING_NODE_IN, "predicate", "Node")},
    {"PredicateDoubled", "  <True/>\n", "<True/><False/>", Failure(MORE_THAN_ONE, "predicate", "Node")},
    {"ChildWrong", "  <True/>\n", "<True/><Segment/>", Failure(INVALID_NODE, "Segment", "Node")},
    {"ScoreUnlisted", "score='b'", "score='c'", Failure(INVALID_ATTRIBUTE_VALUE_IN, "c", "score", "Node")},
    {"RecordCountEmpty", "recordCount='10'", "recordCount=''", Failure(NULL_ATTRIBUTE, "recordCount", "Node")},
    {"RecordCountWrong", "recordCount='10'", "recordCount='ten'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "ten", "recordCount", "Node")},
    {"RecordCountNegative", "recordCount='10'", "recordCount='-10'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "-10", "recordCount", "Node")},
    {"DefaultChildEmpty", "defaultChild='2'", "defaultChild=''", Failure(NULL_ATTRIBUTE, "defaultChild", "Node")},
    {"DefaultChildElsewhere", "defaultChild='2'", "defaultChild='1'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "1", "defaultChild", "Node")},
    {"DefaultChildOfALeaf", "<Node id='2'", "<Node defaultChild='3' id='2'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "3", "defaultChild", "Node")},
    {"ShareValueMissing", "<ScoreDistribution value='a'", "<ScoreDistribution",
     Failure(MISSING_ATTRIBUTE_OF, "value", "ScoreDistribution")},
    {"ShareValueUnlisted", "<ScoreDistribution value='a'", "<ScoreDistribution value='z'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "z", "value", "ScoreDistribution")},
    {"ShareDoubled", "<ScoreDistribution value='a'", "<ScoreDistribution value='b'",
     Failure(DUPLICATE_DEFINITION, "ScoreDistribution", "b", "Node")},
    {"ShareCountMissing", " recordCount='4'", "", Failure(MISSING_ATTRIBUTE_OF, "recordCount", "ScoreDistribution")},
    {"ShareCountNegative", "recordCount='4'", "recordCount='-4'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "-4", "recordCount", "ScoreDistribution")},
    {"ProbabilityAboveOne", "probability='0.4'", "probability='1.4'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "1.4", "probability", "ScoreDistribution")},
    {"ProbabilityEmpty", "probability='0.4'", "probability=''",
     Failure(NULL_ATTRIBUTE, "probability", "ScoreDistribution")},
    {"ConfidenceWrong", "confidence='0.3'", "confidence='high'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "high", "confidence", "ScoreDistribution")},
};

constexpr FaultyChange kPredicateFaults[] = {
    {"FieldMissing", "<SimplePredicate field='x'", "<SimplePredicate",
     Failure(MISSING_ATTRIBUTE_OF, "field", "SimplePredicate")},
    {"FieldEmpty", "<SimplePredicate field='x'", "<SimplePredicate field=''",
     Failure(NULL_ATTRIBUTE, "field", "SimplePredicate")},
    {"FieldUnknown", "<SimplePredicate field='x'", "<SimplePredicate field='y'",
     Failure(MISSING_VARIABLE_IN_BOTH, "y", "DataDictionary", "TransformationDictionary")},
    {"FieldInactive", "<SimplePredicate field='x'", "<SimplePredicate field='t'", Failure(NO_PREDICTOR, "t")},
    {"OperatorMissing", " operator='greaterThan'", "", Failure(MISSING_ATTRIBUTE_OF, "operator", "SimplePredicate")},
    {"OperatorEmpty", "operator='greaterThan'", "operator=''", Failure(NULL_ATTRIBUTE, "operator", "SimplePredicate")},
    {"OperatorWrong", "operator='greaterThan'", "operator='above'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "above", "operator", "SimplePredicate")},
    {"ValueMissing", " value='1'/>", "/>", Failure(MISSING_ATTRIBUTE_OF, "value", "SimplePredicate")},
    {"ValueEmpty", "value='1'/>", "value=''/>", Failure(INVALID_ATTRIBUTE_VALUE_IN, "", "value", "SimplePredicate")},
    {"ValueWrong", "value='1'/>", "value='one'/>",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "one", "value", "SimplePredicate")},
    {"ValueBesideIsMissing", "operator='greaterThan'", "operator='isMissing'",
     Failure(CONFLICTING_ATTRIBUTES, "value", "isMissing")},
    {"ValueBesideIsNotMissing", "operator='greaterThan'", "operator='isNotMissing'",
     Failure(CONFLICTING_ATTRIBUTES, "value", "isNotMissing")},
    {"CategoriesHaveNoOrder", "field='x' operator='greaterThan'", "field='c' operator='greaterThan'",
     Failure(UNSUPPORTED_VALUE_IN, "greaterThan", "operator", "SimplePredicate",
             "equal, notEqual, isMissing, isNotMissing")},
    {"PlaceOfAnUnlistedValue", "field='x' operator='greaterThan' value='1'",
     "field='o' operator='greaterThan' value='middle'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "middle", "value", "SimplePredicate")},
    {"CompoundOperatorMissing", " booleanOperator='or'", "",
     Failure(MISSING_ATTRIBUTE_OF, "booleanOperator", "CompoundPredicate")},
    {"CompoundOperatorWrong", "booleanOperator='or'", "booleanOperator='nor'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "nor", "booleanOperator", "CompoundPredicate")},
    {"CompoundChildWrong", "<SimplePredicate field", "<Apply/><SimplePredicate field",
     Failure(INVALID_NODE, "Apply", "CompoundPredicate")},
    {"CompoundOfNothing", "<SimplePredicate field='x' operator='greaterThan' value='1'/>",
     "<CompoundPredicate booleanOperator='and'/>", Failure(NO_CHILD_ELEMENT, "CompoundPredicate")},
    {"SetFieldMissing", "<SimpleSetPredicate field='c'", "<SimpleSetPredicate",
     Failure(MISSING_ATTRIBUTE_OF, "field", "SimpleSetPredicate")},
    {"SetOperatorMissing", " booleanOperator='isIn'", "",
     Failure(MISSING_ATTRIBUTE_OF, "booleanOperator", "SimpleSetPredicate")},
    {"SetOperatorWrong", "booleanOperator='isIn'", "booleanOperator='in'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "in", "booleanOperator", "SimpleSetPredicate")},
    {"ArrayMissing", "<Array n='2' type='string'>u v</Array>", "",
     Failure(MISSING_NODE_IN, "Array", "SimpleSetPredicate")},
    {"ArrayDoubled", "<Array n='2'", "<Array>u</Array><Array n='2'",
     Failure(MORE_THAN_ONE, "Array", "SimpleSetPredicate")},
    {"ArrayOfNumbersHoldsAText", "<SimpleSetPredicate field='c' booleanOperator='isIn'><Array n='2' type='string'>",
     "<SimpleSetPredicate field='x' booleanOperator='isIn'><Array n='2'>",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "u", "Array", "SimpleSetPredicate")},
};

INSTANTIATE_TEST_SUITE_P(Model, TreeFault, testing::ValuesIn(kModelFaults), NameOfRow());
INSTANTIATE_TEST_SUITE_P(Node, TreeFault, testing::ValuesIn(kNodeFaults), NameOfRow());
INSTANTIATE_TEST_SUITE_P(Predicate, TreeFault, testing::ValuesIn(kPredicateFaults), NameOfRow());

TEST(TreeFaults, ANodeIsNeeded) {
    const std::size_t node = kSmallTree.find("<Node id='1'");
    const std::string document = kSmallTree.substr(0, node) + "</TreeModel></PMML>";
    ExpectFailure([&document] { ReadModel(document); }, {MISSING_NODE_IN, "Node", "TreeModel"});
}

TEST(TreeFaults, WeighingNeedsTheRecordsOfANode) {
    std::string document = Replaced(kSmallTree, "'defaultChild' missing", "'weightedConfidence' missing");
    document = Replaced(document, " recordCount='3'", "");
    ExpectFailure([&document] { ReadModel(document); }, {MISSING_ATTRIBUTE_OF, "recordCount", "Node"});
}

/// A tree of numbers: the scores are numbers, and there are no shares of categories.
std::string NumberTree(const std::string& node) {
    return R"(<PMML version='4.3'><DataDictionary><DataField name='y' optype='continuous' dataType='double'/>
<DataField name='x' optype='continuous' dataType='double'/></DataDictionary>
<TreeModel functionName='regression'><MiningSchema><MiningField name='y' usageType='target'/><MiningField name='x'/></MiningSchema>)" +
           node + "</TreeModel></PMML>";
}

TEST(TreeFaults, AScoreOfARegressionIsANumber) {
    ExpectFailure([] { ReadModel(NumberTree("<Node score='b'><True/></Node>")); },
                  {INVALID_ATTRIBUTE_VALUE_IN, "b", "score", "Node"});
    ExpectFailure([] { ReadModel(NumberTree("<Node score=''><True/></Node>")); }, {NULL_ATTRIBUTE, "score", "Node"});
}

TEST(TreeFaults, ARegressionHasNoShares) {
    ExpectFailure(
        [] { ReadModel(NumberTree("<Node score='1'><True/><ScoreDistribution value='1' recordCount='1'/></Node>")); },
        {INVALID_NODE, "ScoreDistribution", "Node"});
}

} // namespace
