// The prediction that a case has got so far, the winner of a node that tells no score, and the steps that are
// penalized. The answers were worked out by hand.
#include "models/kit/scoring.h"
#include "support/rows.h"

#include <gtest/gtest.h>

using namespace veltrane::tests;

namespace {

std::string Document(const std::string& function, const std::string& attributes, const std::string& root) {
    const bool isNumber = function == "regression";
    return std::string("<PMML version='4.4'><DataDictionary>") +
           (isNumber ? "<DataField name='t' optype='continuous' dataType='double'/>"
                     : "<DataField name='t' optype='categorical' dataType='string'><Value value='a'/>"
                       "<Value value='b'/><Value value='c'/></DataField>") +
           "<DataField name='x' optype='continuous' dataType='double'/>"
           "<DataField name='z' optype='continuous' dataType='double'/></DataDictionary>"
           "<TreeModel functionName='" +
           function + "' " + attributes +
           "><MiningSchema><MiningField name='t' usageType='target'/>"
           "<MiningField name='x'/><MiningField name='z'/></MiningSchema>"
           "<Output><OutputField name='conf' feature='confidence'/><OutputField name='node' feature='entityId'/>"
           "</Output>" +
           root + "</TreeModel></PMML>";
}

std::string Shares(const std::string& a, const std::string& b) {
    return "<ScoreDistribution value='a' " + a + "/><ScoreDistribution value='b' " + b + "/>";
}

const char* const kBelow = "<SimplePredicate field='x' operator='lessThan' value='0'/>";
const char* const kAbove = "<SimplePredicate field='x' operator='greaterThan' value='0'/>";
const char* const kDeep = "<SimplePredicate field='z' operator='equal' value='1'/>";

/// A root that predicts, a node below it that doesn't, and a leaf below that for z = 1.
std::string ThreeLevels(const std::string& top, const std::string& middle, const std::string& leaf) {
    return "<Node id='top' " + top + "<Node id='side' score='" + leaf + "'>" + kBelow + "</Node><Node id='middle' " +
           middle + "<Node id='leaf' score='" + leaf + "'>" + kDeep + "</Node></Node></Node>";
}

struct LastPrediction {
    const char* name;
    std::string document;
    Case values;
    const char* predicted;
    const char* node;
};

class TreeLastPrediction : public testing::TestWithParam<LastPrediction> {};

TEST_P(TreeLastPrediction, IsThatOfTheNearestNodeThatPredicts) {
    const LastPrediction& row = GetParam();
    Scored scored(row.document);
    const bool isPredicted = *row.predicted != 0;
    EXPECT_EQ(scored.Score(row.values).IsOK(), isPredicted);
    EXPECT_EQ(scored.Text(), row.predicted);
    EXPECT_EQ(scored.Text("node"), row.node);
}

const std::string kScored = ThreeLevels("score='a'><True/>", std::string(">") + kAbove, "b");
const std::string kShared =
    ThreeLevels("><True/>" + Shares("recordCount='1'", "recordCount='3'"), std::string(">") + kAbove, "a");
const std::string kOwn = ThreeLevels("score='a'><True/>", std::string("score='c'>") + kAbove, "b");
const std::string kSilent = ThreeLevels("><True/>", std::string(">") + kAbove, "b");
const std::string kEmpty =
    ThreeLevels("score='c'><True/>", std::string(">") + kAbove + Shares("recordCount='0'", "recordCount='0'"), "b");
const std::string kNumbers = ThreeLevels("score='2.5'><True/>", std::string(">") + kAbove, "7");
const char* const kNoTrueChild = "noTrueChildStrategy='returnLastPrediction'";
const char* const kMissing = "missingValueStrategy='lastPrediction'";

const LastPrediction kLastPredictions[] = {
    {"noTrueChild", Document("classification", kNoTrueChild, kScored), {{"x", "1"}, {"z", "2"}}, "a", "top"},
    {"noTrueChildShares", Document("classification", kNoTrueChild, kShared), {{"x", "1"}, {"z", "2"}}, "b", "top"},
    {"noTrueChildOwn", Document("classification", kNoTrueChild, kOwn), {{"x", "1"}, {"z", "2"}}, "c", "middle"},
    {"noTrueChildNone", Document("classification", kNoTrueChild, kSilent), {{"x", "1"}, {"z", "2"}}, "", ""},
    {"noTrueChildNoRecords", Document("classification", kNoTrueChild, kEmpty), {{"x", "1"}, {"z", "2"}}, "c", "top"},
    {"noTrueChildNumber", Document("regression", kNoTrueChild, kNumbers), {{"x", "1"}, {"z", "2"}}, "2.5", "top"},
    {"unknown", Document("classification", kMissing, kScored), {{"x", "1"}}, "a", "top"},
    {"unknownOwn", Document("classification", kMissing, kOwn), {{"x", "1"}}, "c", "middle"},
    {"unknownNone", Document("classification", kMissing, kSilent), {{"x", "1"}}, "", ""},
    {"unknownNumber", Document("regression", kMissing, kNumbers), {{"x", "1"}}, "2.5", "top"},
    {"leaf", Document("classification", kMissing, kScored), {{"x", "1"}, {"z", "1"}}, "b", "leaf"},
};
INSTANTIATE_TEST_SUITE_P(Nodes, TreeLastPrediction, testing::ValuesIn(kLastPredictions), NameOfRow());

// A leaf that says nothing has no prediction: the case has come to an end.
TEST(TreeLeaf, WithoutAScoreDoesNotFallBack) {
    Scored scored(Document("classification", kNoTrueChild,
                           "<Node score='a'><True/><Node>" + std::string(kBelow) + "</Node></Node>"));
    EXPECT_FALSE(scored.Score({{"x", "-1"}}).IsOK());
    EXPECT_TRUE(scored.Score({{"x", "1"}}).IsOK());
}

// Half of the case, by records, comes to a node without a true child: it predicts what the node above it does.
TEST(TreeWeighted, ANodeWithoutATrueChildHasThePredictionAboveIt) {
    const std::string root = "<Node score='10' recordCount='4'><True/><Node recordCount='1'>" + std::string(kBelow) +
                             "<Node score='1' recordCount='1'>" + kDeep +
                             "</Node></Node><Node score='20' recordCount="
                             "'3'>" +
                             kAbove + "</Node></Node>";
    Scored scored(Document(
        "regression", "missingValueStrategy='weightedConfidence' noTrueChildStrategy='returnLastPrediction'", root));
    scored.Score({{"z", "2"}});
    EXPECT_EQ(scored.Number(), 0.25 * 10 + 0.75 * 20);
}

struct Winner {
    const char* name;
    std::string shares;
    const char* predicted;
};

class TreeWinner : public testing::TestWithParam<Winner> {};

TEST_P(TreeWinner, IsTheMostProbableThenThatOfMostRecords) {
    Scored scored(Document("classification", "", "<Node><True/>" + GetParam().shares + "</Node>"));
    scored.Score({});
    EXPECT_EQ(scored.Text(), GetParam().predicted);
}

const Winner kWinners[] = {
    {"records", Shares("recordCount='2'", "recordCount='5'"), "b"},
    {"probabilitiesOverRecords", Shares("recordCount='2' probability='0.75'", "recordCount='5' probability='0.25'"),
     "a"},
    {"equalProbabilities", Shares("recordCount='2' probability='0.5'", "recordCount='5' probability='0.5'"), "b"},
    {"allEqual", Shares("recordCount='3'", "recordCount='3'"), "a"},
    {"allEqualInTheOrderOfTheNode",
     "<ScoreDistribution value='c' recordCount='3'/><ScoreDistribution value='b' recordCount='3'/>", "c"},
    {"noRecords", Shares("recordCount='0'", "recordCount='0'"), ""},
};
INSTANTIATE_TEST_SUITE_P(Shares, TreeWinner, testing::ValuesIn(kWinners), NameOfRow());

// The surrogate of the first child stands in, says no, and is left behind; that of the second one counts.
TEST(TreePenalty, IsForTheStepsThatAreTaken) {
    const auto surrogate = [](const std::string& value) {
        return "<CompoundPredicate booleanOperator='surrogate'><SimplePredicate field='x' operator='equal' value='1'/>"
               "<SimplePredicate field='z' operator='equal' value='" +
               value + "'/></CompoundPredicate>";
    };
    const std::string shares = Shares("recordCount='1'", "recordCount='3'");
    Scored scored(Document("classification", "missingValuePenalty='0.5'",
                           "<Node><True/><Node id='1'>" + surrogate("1") + shares + "</Node><Node id='2'>" +
                               surrogate("2") + shares + "</Node><Node id='3'><True/>" + shares + "</Node></Node>"));
    for (const auto& [z, node, confidence] : {std::tuple("1", "1", 0.375), {"2", "2", 0.375}, {"3", "3", 0.75}}) {
        scored.Score({{"z", z}});
        EXPECT_EQ(scored.Text("node"), node);
        EXPECT_EQ(scored.Number("conf"), confidence) << node;
    }
    scored.Score({{"x", "1"}});
    EXPECT_EQ(scored.Number("conf"), 0.75);
}

/// Two open children of equal records below the root for an unknown x: in the left one a surrogate leads to the leaf,
/// in the right one nothing does. Each leaf has 1 record of "a" and 3 of "b", or the other way round.
std::string TwoOpenChildren(const std::string& strategy) {
    const std::string surrogate = "<CompoundPredicate booleanOperator='surrogate'><SimplePredicate field='x' "
                                  "operator='equal' value='1'/><SimplePredicate field='z' operator='equal' value='1'/>"
                                  "</CompoundPredicate>";
    return Document("classification", "missingValuePenalty='0.5' missingValueStrategy='" + strategy + "'",
                    "<Node><True/><Node recordCount='4'>" + std::string(kBelow) + "<Node recordCount='4'>" + surrogate +
                        Shares("recordCount='1'", "recordCount='3'") + "</Node></Node><Node recordCount='4'>" + kAbove +
                        "<Node recordCount='4'><True/>" + Shares("recordCount='3'", "recordCount='1'") +
                        "</Node></Node></Node>");
}

// a: (1/4 / 2 + 3/4) / 2, b: (3/4 / 2 + 1/4) / 2.
TEST(TreePenalty, OfOneOfSeveralNodesIsItsOwn) {
    for (const char* strategy : {"weightedConfidence", "aggregateNodes"}) {
        Scored scored(TwoOpenChildren(strategy));
        ASSERT_TRUE(scored.Score({{"z", "1"}}).IsOK());
        EXPECT_EQ(scored.Text(), "a") << strategy;
        EXPECT_EQ(scored.Number("conf"), 0.4375) << strategy;
        EXPECT_EQ(scored.Probability("a"), 0.5) << strategy;
        EXPECT_EQ(scored.Probability("b"), 0.5) << strategy;
    }
}

// a: 10 of 10 records behind the surrogate and 1 of 10 elsewhere; less the penalty that is below b's 9 of 10.
TEST(TreePenalty, DecidesWhereConfidencesAreWeighed) {
    const auto document = [](const std::string& strategy) {
        std::string changed = Replaced(TwoOpenChildren(strategy), Shares("recordCount='1'", "recordCount='3'"),
                                       Shares("recordCount='10'", "recordCount='0'"));
        return Replaced(changed, Shares("recordCount='3'", "recordCount='1'"),
                        Shares("recordCount='1'", "recordCount='9'"));
    };
    Scored weighed(document("weightedConfidence"));
    ASSERT_TRUE(weighed.Score({{"z", "1"}}).IsOK());
    EXPECT_DOUBLE_EQ(weighed.Probability("a"), 0.55);
    EXPECT_EQ(weighed.Text(), "b");
    EXPECT_DOUBLE_EQ(weighed.Number("conf"), 0.45);
    Scored added(document("aggregateNodes"));
    ASSERT_TRUE(added.Score({{"z", "1"}}).IsOK());
    EXPECT_DOUBLE_EQ(added.Probability("a"), 0.55);
    EXPECT_EQ(added.Text(), "a");
    EXPECT_DOUBLE_EQ(added.Number("conf"), 0.3);
}

} // namespace
