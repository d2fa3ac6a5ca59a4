// Every element and attribute that the plug-in of models of models reads missing, empty, wrong or doubled, and models
// that don't belong together.
#include "models/mining/small_ensemble.h"
#include "support/allocations.h"
#include "support/faults/fault.h"

#include <gtest/gtest.h>

using namespace veltrane::tests;

namespace {

/// A classification of t with two segments.
const std::string kSmallEnsemble = EnsembleDocument(
    "<MiningModel functionName='classification' algorithmName='any' modelName='small' isScorable='true'>" +
    Schema("t", Fields("xc")) +
    "<Output><OutputField name='o' feature='entityId' segmentId='one'/></Output>"
    "<Segmentation multipleModelMethod='weightedAverage' missingPredictionTreatment='skipSegment' "
    "missingThreshold='0.5'>"
    "<Segment id='one' weight='2'><SimplePredicate field='x' operator='lessThan' value='5'/>"
    "<TreeModel functionName='classification'>" +
    Schema("t", Fields("x")) +
    "<Node id='1' score='no'><True/></Node></TreeModel><VariableWeight field='x'/></Segment>"
    "<Segment id='two'><True/><TreeModel functionName='classification'>" +
    Schema("t", Fields("c")) + "<Node score='yes'><True/></Node></TreeModel></Segment></Segmentation></MiningModel>");

class MiningFault : public testing::TestWithParam<FaultyChange> {};

TEST_P(MiningFault, NamesElementAndAttribute) {
    ExpectRefused(kSmallEnsemble, GetParam());
}

constexpr FaultyChange kModelFaults[] = {
    {"FunctionMissing", "<MiningModel functionName='classification'", "<MiningModel",
     Failure(MISSING_ATTRIBUTE_OF, "functionName", "MiningModel")},
    {"FunctionEmpty", "<MiningModel functionName='classification'", "<MiningModel functionName=''",
     Failure(NULL_ATTRIBUTE, "functionName", "MiningModel")},
    {"FunctionWrong", "<MiningModel functionName='classification'", "<MiningModel functionName='mixed'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "mixed", "functionName", "MiningModel")},
    {"ScorableWrong", "isScorable='true'", "isScorable='maybe'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "maybe", "isScorable", "MiningModel")},
    {"ScorableFalse", "isScorable='true'", "isScorable='false'",
     Failure(UNSUPPORTED_VALUE_IN, "false", "isScorable", "MiningModel", "true")},
    {"ChildWrong", "<Segmentation", "<Node/><Segmentation", Failure(INVALID_NODE, "Node", "MiningModel")},
    {"SegmentationDoubled", "</Segmentation>", "</Segmentation><Segmentation multipleModelMethod='sum'/>",
     Failure(MORE_THAN_ONE, "Segmentation", "MiningModel")},
    {"SegmentationChildWrong", "</Segmentation>", "<True/></Segmentation>",
     Failure(INVALID_NODE, "True", "Segmentation")},
    {"MethodMissing", "multipleModelMethod='weightedAverage'", "",
     Failure(MISSING_ATTRIBUTE_OF, "multipleModelMethod", "Segmentation")},
    {"MethodEmpty", "'weightedAverage'", "''", Failure(NULL_ATTRIBUTE, "multipleModelMethod", "Segmentation")},
    {"MethodWrong", "'weightedAverage'", "'best'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "best", "multipleModelMethod", "Segmentation")},
    {"TreatmentEmpty", "'skipSegment'", "''", Failure(NULL_ATTRIBUTE, "missingPredictionTreatment", "Segmentation")},
    {"TreatmentWrong", "'skipSegment'", "'skip'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "skip", "missingPredictionTreatment", "Segmentation")},
    {"ThresholdEmpty", "missingThreshold='0.5'", "missingThreshold=''",
     Failure(NULL_ATTRIBUTE, "missingThreshold", "Segmentation")},
    {"ThresholdNoNumber", "missingThreshold='0.5'", "missingThreshold='half'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "half", "missingThreshold", "Segmentation")},
    {"ThresholdNoShare", "missingThreshold='0.5'", "missingThreshold='1.5'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "1.5", "missingThreshold", "Segmentation")},
    {"AskedSegmentUnknown", "segmentId='one'", "segmentId='three'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "three", "segmentId", "OutputField")},
    {"AskedSegmentEmpty", "segmentId='one'", "segmentId=''", Failure(NULL_ATTRIBUTE, "segmentId", "OutputField")},
    {"AskedOutputUnknown", "feature='entityId' segmentId", "feature='transformedValue' value='p' segmentId",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "p", "value", "OutputField")},
    {"AskedCategoryUnknown", "feature='entityId' segmentId", "feature='probability' value='perhaps' segmentId",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "perhaps", "value", "OutputField")},
};

constexpr FaultyChange kSegmentFaults[] = {
    {"IdEmpty", "<Segment id='one'", "<Segment id=''", Failure(NULL_ATTRIBUTE, "id", "Segment")},
    {"IdDoubled", "<Segment id='two'", "<Segment id='one'",
     Failure(DUPLICATE_DEFINITION, "Segment", "one", "Segmentation")},
    {"WeightEmpty", "weight='2'", "weight=''", Failure(NULL_ATTRIBUTE, "weight", "Segment")},
    {"WeightNoNumber", "weight='2'", "weight='much'", Failure(INVALID_ATTRIBUTE_VALUE_IN, "much", "weight", "Segment")},
    {"WeightNotFinite", "weight='2'", "weight='INF'", Failure(INVALID_ATTRIBUTE_VALUE_IN, "INF", "weight", "Segment")},
    {"WeightBelowZero", "weight='2'", "weight='-1'", Failure(INVALID_ATTRIBUTE_VALUE_IN, "-1", "weight", "Segment")},
    {"PredicateMissing", "<Segment id='two'><True/>", "<Segment id='two'>",
     Failure(MISSING_NODE_IN, "PREDICATE", "Segment")},
    {"PredicateDoubled", "<Segment id='two'><True/>", "<Segment id='two'><True/><False/>",
     Failure(MORE_THAN_ONE, "PREDICATE", "Segment")},
    {"PredicateFieldUnknown", "<SimplePredicate field='x'", "<SimplePredicate field='w'",
     Failure(MISSING_VARIABLE_IN_BOTH, "w", "DataDictionary", "TransformationDictionary")},
    {"PredicateFieldNotActive", "<SimplePredicate field='x'", "<SimplePredicate field='z'", Failure(NO_PREDICTOR, "z")},
    {"ModelDoubled", "</TreeModel></Segment>", "</TreeModel><TreeModel functionName='classification'/></Segment>",
     Failure(MORE_THAN_ONE, "MODEL-ELEMENT", "Segment")},
    {"ModelUnknown", "</TreeModel></Segment>", "</TreeModel><Regression/></Segment>",
     Failure(INVALID_NODE, "Regression", "Segment")},
    {"SchemaMissing", "<MiningField name='c'/></MiningSchema><Node", "<MiningField name='d'/></MiningSchema><Node",
     Failure(MISSING_VARIABLE, "d", "DataDictionary")},
    {"CategoryContradicts", "score='yes'", "score='perhaps'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "perhaps", "score", "Node")},
};

INSTANTIATE_TEST_SUITE_P(Model, MiningFault, testing::ValuesIn(kModelFaults), NameOfRow());
INSTANTIATE_TEST_SUITE_P(Segment, MiningFault, testing::ValuesIn(kSegmentFaults), NameOfRow());

std::string Segments(const std::string& function, const std::string& target, const std::string& method,
                     const std::string& segments) {
    return EnsembleDocument("<MiningModel functionName='" + function + "'>" + Schema(target, Fields("x")) +
                            "<Segmentation multipleModelMethod='" + method + "'>" + segments +
                            "</Segmentation></MiningModel>");
}

std::string TreeOf(const std::string& target, const std::string& score) {
    return "<TreeModel functionName='classification'>" + Schema(target, "") + "<Node score='" + score +
           "'><True/></Node></TreeModel>";
}

void ExpectFault(const std::string& document, const Failure& failure) {
    ExpectFailure([&document] { ReadModel(document); }, failure);
}

TEST(MiningFaults, SegmentsAndTheirModelsAreNeeded) {
    ExpectFault(EnsembleDocument("<MiningModel functionName='regression'>" + Schema("y", "") + "</MiningModel>"),
                {MISSING_NODE_IN, "Segmentation", "MiningModel"});
    ExpectFault(Segments("regression", "y", "sum", ""), {NO_CHILD_ELEMENT, "Segmentation"});
    ExpectFault(Segments("regression", "y", "sum", "<Segment><True/></Segment>"),
                {MISSING_NODE_IN, "MODEL-ELEMENT", "Segment"});
    ExpectFault(Segments("regression", "y", "sum", "<Segment><True/><TextModel functionName='regression'/></Segment>"),
                {UNSUPPORTED_MODEL, "TextModel"});
}

TEST(MiningFaults, PredictionsThatAreCombinedAreOfOneKind) {
    const Failure contradiction{CONFLICTING_VALUES_IN, "classification", "functionName", "TreeModel",
                                "regression",          "functionName",   "MiningModel"};
    for (const char* method : {"average", "sum", "selectFirst", "selectAll"}) {
        ExpectFault(Segments("regression", "y", method, SegmentOf(TreeOf("t", "no")) + SegmentOf(Line("x", 0.0, 1.0))),
                    contradiction);
    }
    ExpectFault(
        Segments("regression", "y", "modelChain", SegmentOf(Line("x", 0.0, 1.0)) + SegmentOf(TreeOf("t", "no"))),
        contradiction);
    EXPECT_NO_THROW(ReadModel(
        Segments("regression", "y", "modelChain", SegmentOf(TreeOf("t", "no")) + SegmentOf(Line("x", 0.0, 1.0)))));
}

TEST(MiningFaults, TheTargetHasTheCategoriesOfItsSegments) {
    ExpectFault(Segments("classification", "t", "majorityVote", SegmentOf(TreeOf("c", "a"))),
                {MISSING_VALUE_IN_LIST, "a", "t"});
}

TEST(MiningFaults, PredictionsThatAreCombinedAreOfOneField) {
    const Failure contradiction{CONFLICTING_VALUES_IN, "z", "target", "RegressionModel", "y", "target", "MiningModel"};
    const std::string other = SegmentOf(Line("x", 0.0, 1.0, "", "z"));
    const std::string own = SegmentOf(Line("x", 0.0, 1.0));
    for (const char* method : {"average", "sum", "selectFirst", "selectAll"}) {
        ExpectFailureWithDetail([&] { ReadModel(Segments("regression", "y", method, own + other)); }, contradiction,
                                " Segment '2'.");
        EXPECT_NO_THROW(ReadModel(Segments("regression", "", method, own + other))) << "one without a target";
        EXPECT_NO_THROW(ReadModel(Segments("regression", "y", method, own + SegmentOf(Line("x", 0.0, 1.0, "", "")))));
    }
    ExpectFault(Segments("regression", "y", "modelChain", own + other), contradiction);
    // A segment in the middle of a chain may predict what it likes, which is no prediction of the whole.
    Scored chain(Segments("regression", "y", "modelChain",
                          other + SegmentOf(Line("x", 0.0, 1.0), "",
                                            "<SimplePredicate field='x' operator='lessThan' "
                                            "value='3'/>")));
    ASSERT_TRUE(chain.Score({{"x", "2"}}).IsOK());
    EXPECT_EQ(chain.Number(), 2.0);
    EXPECT_FALSE(chain.Score({{"x", "4"}}).IsOK());
}

TEST(MiningFaults, AFailureTellsTheSegmentThatItComesFrom) {
    const std::string document =
        Segments("regression", "y", "sum",
                 SegmentOf(Line("x", 0.0, 1.0), "id='good'") +
                     SegmentOf("<MiningModel functionName='regression'>" + Schema("y", Fields("x")) +
                                   "<Segmentation multipleModelMethod='sum'>" +
                                   SegmentOf("<TreeModel functionName='regression'>" + Schema("y", Fields("x")) +
                                                 "<Node score='much'><True/></Node></TreeModel>",
                                             "id='inner'") +
                                   "</Segmentation></MiningModel>",
                               "id='outer'"));
    ExpectFailureWithDetail([&] { ReadModel(document); }, {INVALID_ATTRIBUTE_VALUE_IN, "much", "score", "Node"},
                            " Segment 'inner'. Segment 'outer'.");
    const std::string unknown = Segments("regression", "y", "sum", SegmentOf(Line("w", 0.0, 1.0), "id='a'"));
    ExpectFailureWithDetail([&] { ReadModel(unknown); }, {MISSING_VARIABLE, "w", "DataDictionary"},
                            " Attribute 'name' of 'MiningField'. Segment 'a'.");
    ExpectFailureWithDetail(
        [] { ReadModel(Segments("regression", "y", "sum", SegmentOf(Line("x", 0.0, 1.0), "id='a' weight='-1'"))); },
        {INVALID_ATTRIBUTE_VALUE_IN, "-1", "weight", "Segment"}, " Segment 'a'.");
}

TEST(MiningFaults, NumbersHaveNoVotes) {
    ExpectFault(Segments("regression", "y", "majorityVote", SegmentOf(Line("x", 0.0, 1.0))),
                {UNSUPPORTED_VALUE_IN, "majorityVote", "multipleModelMethod", "Segmentation",
                 "average, weightedAverage, median, weightedMedian, max, sum, weightedSum, selectFirst, selectAll, "
                 "modelChain"});
}

TEST(MiningFaults, ASegmentSeesNothingOfThoseBehindItOrOfItself) {
    const std::string output = "<Output><OutputField name='told' feature='predictedValue'/></Output>";
    const std::string asks = Line("told", 0.0, 1.0);
    ExpectFault(Segments("regression", "y", "modelChain", SegmentOf(asks) + SegmentOf(Line("x", 0.0, 1.0, output))),
                {MISSING_VARIABLE, "told", "DataDictionary"});
    ExpectFault(Segments("regression", "y", "modelChain", SegmentOf(Line("told", 0.0, 1.0, output))),
                {MISSING_VARIABLE, "told", "DataDictionary"});
}

std::string Nested(int levels) {
    std::string model = Line("x", 1.0, 1.0);
    for (int level = 0; level < levels; ++level) {
        model = "<MiningModel functionName='regression'>" + Schema("y", Fields("x")) +
                "<Segmentation multipleModelMethod='sum'>" + SegmentOf(model) + "</Segmentation></MiningModel>";
    }
    return EnsembleDocument(model);
}

TEST(MiningFaults, ModelsNestToABound) {
    Scored scored(Nested(32));
    ASSERT_TRUE(scored.Score({{"x", "4"}}).IsOK());
    EXPECT_EQ(scored.Number(), 5.0);
    std::string detail = " Models lie in 32 others at most.";
    for (int level = 0; level < 32; ++level) {
        detail += " Segment '1'.";
    }
    ExpectFailureWithDetail([] { ReadModel(Nested(33)); }, {UNSUPPORTED_ELEMENT, "MiningModel", "MiningModel"}, detail);
    ExpectFault(Nested(200), {UNSUPPORTED_ELEMENT, "MiningModel", "MiningModel"});
}

std::string ManySegments(int count) {
    std::string segments;
    const std::string segment = SegmentOf("<TreeModel functionName='regression'>" + Schema("", Fields("x")) +
                                          "<Node score='1'><True/></Node></TreeModel>");
    for (int i = 0; i < count; ++i) {
        segments += segment;
    }
    return Segments("regression", "y", "sum", segments);
}

TEST(MiningFaults, ThousandsOfSegmentsAreRead) {
    constexpr int kSegments = 100000;
    Scored scored(ManySegments(kSegments));
    ASSERT_TRUE(scored.Score({{"x", "4"}}).IsOK());
    EXPECT_EQ(scored.Number(), kSegments);
}

TEST(MiningFaults, SegmentsTakeAsMuchAsThereAreOfThem) {
    const auto allocationsOf = [](int count) {
        const std::string document = ManySegments(count);
        return AllocationsOf([&] { ReadModel(document); });
    };
    allocationsOf(1);
    const std::size_t few = allocationsOf(1000);
    const std::size_t many = allocationsOf(8000);
    EXPECT_LT(many, 9 * few);
    EXPECT_GT(many, 7 * few);
}

} // namespace
