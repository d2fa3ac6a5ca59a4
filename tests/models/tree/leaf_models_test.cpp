// The older models in leaves of a tree, which predict for the cases that come to them.
#include "models/columns/model_rows.h"
#include "models/kit/scoring.h"
#include "models/mining/small_ensemble.h"
#include "support/faults/failure.h"

#include <gtest/gtest.h>

#include <random>

using namespace veltrane::tests;

namespace {

std::string Split(const std::string& below, const std::string& above) {
    return "<Node id='root' score='1'><True/><Node id='below'><SimplePredicate field='x' operator='lessThan' "
           "value='5'/>" +
           below + "</Node><Node id='above'><SimplePredicate field='x' operator='greaterOrEqual' value='5'/>" + above +
           "</Node></Node>";
}

std::string TreeDocument(const std::string& nodes, const std::string& function = "regression",
                         const std::string& attributes = "") {
    const std::string target = function == "regression" ? "y" : "t";
    return EnsembleDocument("<TreeModel functionName='" + function + "' " + attributes + ">" +
                            Schema(target, Fields("xz")) +
                            "<Output><OutputField name='node' feature='entityId'/><OutputField name='p' "
                            "feature='predictedValue'/></Output>" +
                            nodes + "</TreeModel>");
}

const std::string kLine = "<Regression functionName='regression'><RegressionTable intercept='1'><NumericPredictor "
                          "name='x' coefficient='2'/></RegressionTable></Regression>";

const std::string kPast =
    "<Regression functionName='regression'><LocalTransformations><DerivedField name='past' optype='continuous' "
    "dataType='double'><Lag field='x'/></DerivedField></LocalTransformations><RegressionTable intercept='0'>"
    "<NumericPredictor name='past' coefficient='1'/></RegressionTable></Regression>";

const std::string kSteps = "<DecisionTree functionName='regression'><Node><True/><Node score='10'><SimplePredicate "
                           "field='z' operator='lessThan' value='0'/></Node><Node><True/>" +
                           kLine + "</Node></Node></DecisionTree>";

const std::string kLogit = "<Regression functionName='classification' normalizationMethod='logit'><RegressionTable "
                           "intercept='0' targetCategory='yes'><NumericPredictor name='x' coefficient='1'/>"
                           "</RegressionTable><RegressionTable intercept='0' targetCategory='no'/></Regression>";

TEST(LeafModels, PredictForTheCasesThatComeToThem) {
    Scored scored(TreeDocument(Split(kLine, kSteps)));
    ASSERT_TRUE(scored.Score({{"x", "3"}, {"z", "0"}}).IsOK());
    EXPECT_EQ(scored.Number(), 7.0);
    EXPECT_EQ(scored.Text("node"), "below");
    ASSERT_TRUE(scored.Score({{"x", "6"}, {"z", "-1"}}).IsOK());
    EXPECT_EQ(scored.Number(), 10.0);
    EXPECT_EQ(scored.Text("node"), "above");
    ASSERT_TRUE(scored.Score({{"x", "6"}, {"z", "1"}}).IsOK());
    EXPECT_EQ(scored.Number(), 13.0);
}

TEST(LeafModels, TellTheProbabilitiesOfTheirCategories) {
    const std::string other = "<ScoreDistribution value='no' recordCount='3'/><ScoreDistribution value='yes' "
                              "recordCount='1'/>";
    Scored scored(Replaced(Replaced(TreeDocument(Split(other, kLogit), "classification"), "score='1'", ""),
                           "<OutputField name='p' feature='predictedValue'/>",
                           "<OutputField name='p' feature='probability' value='yes'/>"));
    ASSERT_TRUE(scored.Score({{"x", "3"}}).IsOK());
    EXPECT_EQ(scored.Text(), "no");
    EXPECT_EQ(scored.Number("p"), 0.25);
    ASSERT_TRUE(scored.Score({{"x", "6"}}).IsOK());
    EXPECT_EQ(scored.Text(), "yes");
    EXPECT_DOUBLE_EQ(scored.Number("p"), 1.0 / (1.0 + std::exp(-6.0)));
}

TEST(LeafModels, WithoutAPredictionLeaveTheCaseWithoutOne) {
    Scored scored(TreeDocument(Split(kLine, Replaced(kLine, "name='x'", "name='z'"))));
    EXPECT_TRUE(scored.Score({{"x", "3"}, {"z", ""}}).IsOK());
    EXPECT_FALSE(scored.Score({{"x", "7"}, {"z", ""}}).IsOK());
}

TEST(LeafModels, TheDefaultChildMayHaveOne) {
    Scored scored(TreeDocument(
        Replaced(Split(Replaced(kLine, "name='x'", "name='z'"), kLine), "score='1'", "defaultChild='below'"),
        "regression", "missingValueStrategy='defaultChild'"));
    ASSERT_TRUE(scored.Score({{"x", ""}, {"z", "2"}}).IsOK());
    EXPECT_EQ(scored.Number(), 5.0);
}

TEST(LeafModels, LookBackOnAllCases) {
    Scored scored(TreeDocument(Split(kPast, kLine)));
    ASSERT_TRUE(scored.Score({{"x", "6"}, {"z", "0"}}).IsOK());
    ASSERT_TRUE(scored.Score({{"x", "3"}, {"z", "0"}}).IsOK());
    EXPECT_EQ(scored.Number(), 6.0) << "of a case that came to the other leaf";
}

TEST(LeafModels, AreTheSameInColumns) {
    for (const std::string& document :
         {TreeDocument(Split(kLine, kSteps)), TreeDocument(Split(kPast, kSteps)),
          Replaced(TreeDocument(Split(kLogit, kLogit), "classification", "missingValuePenalty='0.5'"), "score='1'",
                   "")}) {
        ModelRows rows(document);
        std::mt19937_64 random(1);
        rows.Fill(random, 600);
        EXPECT_EQ(rows.InBlocks(*rows.Scorer().NewState(), 1024, 0, false), rows.CaseByCase());
        EXPECT_EQ(rows.InBlocks(*rows.Scorer().NewState(), 50, 3, true), rows.CaseByCase());
    }
}

TEST(LeafModels, HaveTheFunctionOfTheTree) {
    ExpectFailure([] { ReadModel(TreeDocument(Split(kLogit, kLine))); },
                  {CONFLICTING_VALUES_IN, "classification", "functionName", "Regression", "regression", "functionName",
                   "TreeModel"});
}

TEST(LeafModels, HaveCategoriesOfTheTree) {
    ExpectFailure(
        [] {
            ReadModel(Replaced(Replaced(TreeDocument(Split("", kLogit), "classification"), "score='1'", ""),
                               "targetCategory='yes'", "targetCategory='perhaps'"));
        },
        {INVALID_ATTRIBUTE_VALUE_IN, "perhaps", "targetCategory", "RegressionTable"});
}

TEST(LeafModels, StandAlone) {
    ExpectFailure([] { ReadModel(TreeDocument(Split(kLine + kLine, kLine))); }, {MORE_THAN_ONE, "Regression", "Node"});
    ExpectFailure([] { ReadModel(TreeDocument(Split(kLine + "<Node score='1'><True/></Node>", kLine))); },
                  {INVALID_NODE, "Regression", "Node"});
}

TEST(LeafModels, HaveNoPartInWeighedPredictions) {
    for (const char* strategy : {"weightedConfidence", "aggregateNodes"}) {
        ExpectFailure(
            [strategy] {
                ReadModel(Replaced(Replaced(TreeDocument(Split(kLine, kLine), "regression",
                                                         "missingValueStrategy='" + std::string(strategy) + "'"),
                                            "id='below'", "id='below' recordCount='1'"),
                                   "id='above'", "id='above' recordCount='1'"));
            },
            {UNSUPPORTED_VALUE_IN, strategy, "missingValueStrategy", "TreeModel",
             "none, lastPrediction, nullPrediction, defaultChild"});
    }
}

/// Each within the leaf of the one around it.
TEST(LeafModels, NestToABound) {
    const auto nested = [](int depth) {
        std::string tree = kLine;
        for (int level = 0; level < depth; ++level) {
            tree = "<DecisionTree functionName='regression'><Node><True/>" + tree + "</Node></DecisionTree>";
        }
        return TreeDocument(Split(tree, kLine));
    };
    Scored scored(nested(31));
    ASSERT_TRUE(scored.Score({{"x", "3"}, {"z", "0"}}).IsOK());
    EXPECT_EQ(scored.Number(), 7.0);
    ExpectFailure([&] { ReadModel(nested(32)); }, {UNSUPPORTED_ELEMENT, "Regression", "Regression"});
}

} // namespace
