// Every element and attribute that the plug-in of trees reads missing, empty, wrong or doubled.
#include "models/kit/fault.h"
#include "models/kit/scoring.h"
#include "models/tree/small_tree.h"
#include "support/failure.h"

#include <gtest/gtest.h>

using namespace veltrane::tests;

namespace {

class TreeFault : public testing::TestWithParam<Fault> {};

TEST_P(TreeFault, NamesElementAndAttribute) {
    const std::string document = Replaced(kSmallTree, GetParam().from, GetParam().to);
    ExpectFailure([&document] { ReadModel(document); }, GetParam().id, GetParam().text);
}

constexpr Fault kModelFaults[] = {
    {"StrategyEmpty", "\"defaultChild\" missing", "\"\" missing", 260285,
     "The 'missingValueStrategy' of element 'TreeModel' is null."},
    {"StrategyWrong", "\"defaultChild\" missing", "\"guess\" missing", 260153,
     "Invalid value: 'guess' of attribute 'missingValueStrategy' in 'TreeModel'."},
    {"PenaltyEmpty", "missingValuePenalty=\"0.5\"", "missingValuePenalty=\"\"", 260285,
     "The 'missingValuePenalty' of element 'TreeModel' is null."},
    {"PenaltyWrong", "missingValuePenalty=\"0.5\"", "missingValuePenalty=\"much\"", 260153,
     "Invalid value: 'much' of attribute 'missingValuePenalty' in 'TreeModel'."},
    {"PenaltyAboveOne", "missingValuePenalty=\"0.5\"", "missingValuePenalty=\"1.5\"", 260153,
     "Invalid value: '1.5' of attribute 'missingValuePenalty' in 'TreeModel'."},
    {"PenaltyBelowZero", "missingValuePenalty=\"0.5\"", "missingValuePenalty=\"-1\"", 260153,
     "Invalid value: '-1' of attribute 'missingValuePenalty' in 'TreeModel'."},
    {"NoTrueChildEmpty", "\"returnLastPrediction\"", "\"\"", 260285,
     "The 'noTrueChildStrategy' of element 'TreeModel' is null."},
    {"NoTrueChildWrong", "\"returnLastPrediction\"", "\"stop\"", 260153,
     "Invalid value: 'stop' of attribute 'noTrueChildStrategy' in 'TreeModel'."},
    {"SplitWrong", "\"binarySplit\"", "\"threeway\"", 260153,
     "Invalid value: 'threeway' of attribute 'splitCharacteristic' in 'TreeModel'."},
    {"ChildWrong", "<MiningSchema>", "<Regression/><MiningSchema>", 260159,
     "Invalid node 'Regression' in 'TreeModel'."},
    {"NodeDoubled", "</TreeModel>", "<Node><True/></Node></TreeModel>", 260272,
     "More than one 'Node' defined in 'TreeModel'."},
    {"FunctionWrong", "functionName=\"classification\"", "functionName=\"clustering\"", 260153,
     "Invalid value: 'clustering' of attribute 'functionName' in 'TreeModel'."},
};

constexpr Fault kNodeFaults[] = {
    {"PredicateMissing", "  <True/>\n", "", 260115, "Missing node of 'predicate' element  in 'Node'."},
    {"PredicateDoubled", "  <True/>\n", "<True/><False/>", 260272, "More than one 'predicate' defined in 'Node'."},
    {"ChildWrong", "  <True/>\n", "<True/><DecisionTree/>", 260159, "Invalid node 'DecisionTree' in 'Node'."},
    {"ScoreUnlisted", "score=\"b\"", "score=\"c\"", 260153, "Invalid value: 'c' of attribute 'score' in 'Node'."},
    {"RecordCountEmpty", "recordCount=\"10\"", "recordCount=\"\"", 260285,
     "The 'recordCount' of element 'Node' is null."},
    {"RecordCountWrong", "recordCount=\"10\"", "recordCount=\"ten\"", 260153,
     "Invalid value: 'ten' of attribute 'recordCount' in 'Node'."},
    {"RecordCountNegative", "recordCount=\"10\"", "recordCount=\"-10\"", 260153,
     "Invalid value: '-10' of attribute 'recordCount' in 'Node'."},
    {"DefaultChildEmpty", "defaultChild=\"2\"", "defaultChild=\"\"", 260285,
     "The 'defaultChild' of element 'Node' is null."},
    {"DefaultChildElsewhere", "defaultChild=\"2\"", "defaultChild=\"1\"", 260153,
     "Invalid value: '1' of attribute 'defaultChild' in 'Node'."},
    {"DefaultChildOfALeaf", "<Node id=\"2\"", "<Node defaultChild=\"3\" id=\"2\"", 260153,
     "Invalid value: '3' of attribute 'defaultChild' in 'Node'."},
    {"ShareValueMissing", "<ScoreDistribution value=\"a\"", "<ScoreDistribution", 260120,
     "Missing the attribute 'value' of 'ScoreDistribution'."},
    {"ShareValueUnlisted", "<ScoreDistribution value=\"a\"", "<ScoreDistribution value=\"z\"", 260153,
     "Invalid value: 'z' of attribute 'value' in 'ScoreDistribution'."},
    {"ShareDoubled", "<ScoreDistribution value=\"a\"", "<ScoreDistribution value=\"b\"", 260203,
     "Duplicate definition of 'ScoreDistribution': 'b', already in 'Node'."},
    {"ShareCountMissing", " recordCount=\"4\"", "", 260120,
     "Missing the attribute 'recordCount' of 'ScoreDistribution'."},
    {"ShareCountNegative", "recordCount=\"4\"", "recordCount=\"-4\"", 260153,
     "Invalid value: '-4' of attribute 'recordCount' in 'ScoreDistribution'."},
    {"ProbabilityAboveOne", "probability=\"0.4\"", "probability=\"1.4\"", 260153,
     "Invalid value: '1.4' of attribute 'probability' in 'ScoreDistribution'."},
    {"ProbabilityEmpty", "probability=\"0.4\"", "probability=\"\"", 260285,
     "The 'probability' of element 'ScoreDistribution' is null."},
    {"ConfidenceWrong", "confidence=\"0.3\"", "confidence=\"high\"", 260153,
     "Invalid value: 'high' of attribute 'confidence' in 'ScoreDistribution'."},
};

constexpr Fault kPredicateFaults[] = {
    {"FieldMissing", "<SimplePredicate field=\"x\"", "<SimplePredicate", 260120,
     "Missing the attribute 'field' of 'SimplePredicate'."},
    {"FieldEmpty", "<SimplePredicate field=\"x\"", "<SimplePredicate field=\"\"", 260285,
     "The 'field' of element 'SimplePredicate' is null."},
    {"FieldUnknown", "<SimplePredicate field=\"x\"", "<SimplePredicate field=\"y\"", 260125,
     "Missing variable:'y' definition in the 'DataDictionary' and 'TransformationDictionary'."},
    {"FieldInactive", "<SimplePredicate field=\"x\"", "<SimplePredicate field=\"t\"", 260161,
     "Variable: 't' is not defined as predictor."},
    {"OperatorMissing", " operator=\"greaterThan\"", "", 260120,
     "Missing the attribute 'operator' of 'SimplePredicate'."},
    {"OperatorEmpty", "operator=\"greaterThan\"", "operator=\"\"", 260285,
     "The 'operator' of element 'SimplePredicate' is null."},
    {"OperatorWrong", "operator=\"greaterThan\"", "operator=\"above\"", 260153,
     "Invalid value: 'above' of attribute 'operator' in 'SimplePredicate'."},
    {"ValueMissing", " value=\"1\"/>", "/>", 260120, "Missing the attribute 'value' of 'SimplePredicate'."},
    {"ValueEmpty", "value=\"1\"/>", "value=\"\"/>", 260153,
     "Invalid value: '' of attribute 'value' in 'SimplePredicate'."},
    {"ValueWrong", "value=\"1\"/>", "value=\"one\"/>", 260153,
     "Invalid value: 'one' of attribute 'value' in 'SimplePredicate'."},
    {"ValueBesideIsMissing", "operator=\"greaterThan\"", "operator=\"isMissing\"", 260212,
     "Conflict setting between the attribute 'value' and 'isMissing'."},
    {"ValueBesideIsNotMissing", "operator=\"greaterThan\"", "operator=\"isNotMissing\"", 260212,
     "Conflict setting between the attribute 'value' and 'isNotMissing'."},
    {"CategoriesHaveNoOrder", "field=\"x\" operator=\"greaterThan\"", "field=\"c\" operator=\"greaterThan\"", 260179,
     "Unsupported value 'greaterThan' of attribute 'operator' in 'SimplePredicate, expect 'equal, notEqual, isMissing, "
     "isNotMissing'."},
    {"PlaceOfAnUnlistedValue", "field=\"x\" operator=\"greaterThan\" value=\"1\"",
     "field=\"o\" operator=\"greaterThan\" value=\"middle\"", 260153,
     "Invalid value: 'middle' of attribute 'value' in 'SimplePredicate'."},
    {"CompoundOperatorMissing", " booleanOperator=\"or\"", "", 260120,
     "Missing the attribute 'booleanOperator' of 'CompoundPredicate'."},
    {"CompoundOperatorWrong", "booleanOperator=\"or\"", "booleanOperator=\"nor\"", 260153,
     "Invalid value: 'nor' of attribute 'booleanOperator' in 'CompoundPredicate'."},
    {"CompoundChildWrong", "<SimplePredicate field", "<Apply/><SimplePredicate field", 260159,
     "Invalid node 'Apply' in 'CompoundPredicate'."},
    {"CompoundOfNothing", "<SimplePredicate field=\"x\" operator=\"greaterThan\" value=\"1\"/>",
     "<CompoundPredicate booleanOperator=\"and\"/>", 260283, "No child element in Node 'CompoundPredicate'."},
    {"SetFieldMissing", "<SimpleSetPredicate field=\"c\"", "<SimpleSetPredicate", 260120,
     "Missing the attribute 'field' of 'SimpleSetPredicate'."},
    {"SetOperatorMissing", " booleanOperator=\"isIn\"", "", 260120,
     "Missing the attribute 'booleanOperator' of 'SimpleSetPredicate'."},
    {"SetOperatorWrong", "booleanOperator=\"isIn\"", "booleanOperator=\"in\"", 260153,
     "Invalid value: 'in' of attribute 'booleanOperator' in 'SimpleSetPredicate'."},
    {"ArrayMissing", "<Array n=\"2\" type=\"string\">u v</Array>", "", 260115,
     "Missing node of 'Array' element  in 'SimpleSetPredicate'."},
    {"ArrayDoubled", "<Array n=\"2\"", "<Array>u</Array><Array n=\"2\"", 260272,
     "More than one 'Array' defined in 'SimpleSetPredicate'."},
    {"ArrayOfAnotherSize", "<Array n=\"2\"", "<Array n=\"3\"", 260241,
     "The value: '2' of attribute 'n' does not match the array size: '3'."},
    {"ArrayOfNumbersHoldsAText",
     "<SimpleSetPredicate field=\"c\" booleanOperator=\"isIn\"><Array n=\"2\" type=\"string\">",
     "<SimpleSetPredicate field=\"x\" booleanOperator=\"isIn\"><Array n=\"2\">", 260153,
     "Invalid value: 'u' of attribute 'Array' in 'SimpleSetPredicate'."},
};

INSTANTIATE_TEST_SUITE_P(Model, TreeFault, testing::ValuesIn(kModelFaults), NameOf);
INSTANTIATE_TEST_SUITE_P(Node, TreeFault, testing::ValuesIn(kNodeFaults), NameOf);
INSTANTIATE_TEST_SUITE_P(Predicate, TreeFault, testing::ValuesIn(kPredicateFaults), NameOf);

TEST(TreeFaults, ANodeIsNeeded) {
    const std::size_t node = kSmallTree.find("<Node id=\"1\"");
    const std::string document = kSmallTree.substr(0, node) + "</TreeModel></PMML>";
    ExpectFailure([&document] { ReadModel(document); }, 260115, "Missing node of 'Node' element  in 'TreeModel'.");
}

TEST(TreeFaults, WeighingNeedsTheRecordsOfANode) {
    std::string document = Replaced(kSmallTree, "\"defaultChild\" missing", "\"weightedConfidence\" missing");
    document = Replaced(document, " recordCount=\"3\"", "");
    ExpectFailure([&document] { ReadModel(document); }, 260120, "Missing the attribute 'recordCount' of 'Node'.");
}

/// A tree of numbers: the scores are numbers, and there are no shares of categories.
std::string NumberTree(const std::string& node) {
    return R"(<PMML version="4.3"><DataDictionary><DataField name="y" optype="continuous" dataType="double"/>
<DataField name="x" optype="continuous" dataType="double"/></DataDictionary>
<TreeModel functionName="regression"><MiningSchema><MiningField name="y" usageType="target"/><MiningField name="x"/></MiningSchema>)" +
           node + "</TreeModel></PMML>";
}

TEST(TreeFaults, AScoreOfARegressionIsANumber) {
    ExpectFailure([] { ReadModel(NumberTree("<Node score=\"b\"><True/></Node>")); }, 260153,
                  "Invalid value: 'b' of attribute 'score' in 'Node'.");
    ExpectFailure([] { ReadModel(NumberTree("<Node score=\"\"><True/></Node>")); }, 260285,
                  "The 'score' of element 'Node' is null.");
}

TEST(TreeFaults, ARegressionHasNoShares) {
    ExpectFailure(
        [] {
            ReadModel(NumberTree("<Node score=\"1\"><True/><ScoreDistribution value=\"1\" recordCount=\"1\"/></Node>"));
        },
        260159, "Invalid node 'ScoreDistribution' in 'Node'.");
}

} // namespace
