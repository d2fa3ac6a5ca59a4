// The output fields of segments as results of the whole model.
#include "models/columns/model_rows.h"
#include "models/mining/small_ensemble.h"

#include <MCVeltrane_900/ScoreResultField.h>

#include <gtest/gtest.h>

#include <random>
#include <set>

using namespace veltrane::tests;

namespace {

const std::string kAbove = "<SimplePredicate field='x' operator='greaterThan' value='0'/>";

std::string Told(const std::string& name, const std::string& more = "") {
    return "<OutputField name='" + name + "' optype='continuous' dataType='double' " + more + "/>";
}

std::string OutputOf(const std::string& fields) {
    return "<Output>" + fields + "</Output>";
}

/// The names of the values of a result.
std::set<std::string> NamesOf(Scored& scored) {
    std::set<std::string> names;
    for (const auto& [name, value] : scored.Result().GetResultFields()->GetMapResultValue()) {
        names.insert(name);
    }
    return names;
}

/// A number, and the category that it makes likely, as producers write boosted classifications.
const std::string kBoosted = EnsembleDocument(
    "<MiningModel functionName='classification'>" + Schema("t", Fields("xzc")) +
    "<Segmentation multipleModelMethod='modelChain'>" +
    SegmentOf(Line("x", 0.0, 2.0, OutputOf(Told("hidden", "isFinalResult='false'") + Told("shown")), "")) +
    SegmentOf("<RegressionModel functionName='classification' normalizationMethod='simplemax'>" +
              Schema("t", "<MiningField name='hidden'/>") +
              OutputOf(Told("probability(yes)", "feature='probability' value='yes' displayName='likely'") +
                       "<OutputField name='kind' feature='predictedValue'/>") +
              "<RegressionTable targetCategory='yes' intercept='0'><NumericPredictor name='hidden' coefficient='1'/>"
              "</RegressionTable><RegressionTable targetCategory='no' intercept='4'/></RegressionModel>") +
    "</Segmentation></MiningModel>");

TEST(MiningResults, OfAChainAreThoseOfItsSegmentsThatAreFinal) {
    Scored scored(kBoosted);
    ASSERT_TRUE(scored.Score({{"x", "6"}, {"z", "1"}, {"c", "a"}}).IsOK());
    EXPECT_EQ(NamesOf(scored), (std::set<std::string>{"shown", "probability(yes)", "kind"}));
    EXPECT_EQ(scored.Number("shown"), 12.0);
    EXPECT_EQ(scored.Number("probability(yes)"), 0.75);
    EXPECT_EQ(scored.Text("kind"), "yes");
    EXPECT_EQ(scored.Text(), "yes");
}

TEST(MiningResults, AreMissingForACaseWithoutAPrediction) {
    Scored scored(kBoosted);
    ASSERT_TRUE(scored.Score({{"x", "6"}, {"z", "1"}, {"c", "a"}}).IsOK());
    EXPECT_FALSE(scored.Score({{"x", ""}, {"z", "1"}, {"c", "a"}}).IsOK());
    EXPECT_EQ(scored.Number("shown"), kMissing);
    EXPECT_EQ(scored.Text("kind"), "");
}

TEST(MiningResults, OfTheWholeModelStandInTheDictionaryBehindItsOwnAndGoBeforeThoseOfSegments) {
    const std::string document =
        Replaced(kBoosted, Schema("t", Fields("xzc")) + "<Seg",
                 Schema("t", Fields("xzc")) + OutputOf(Told("shown", "feature='probability' value='no'")) + "<Seg");
    Scored scored(document);
    ASSERT_TRUE(scored.Score({{"x", "6"}, {"z", "1"}, {"c", "a"}}).IsOK());
    EXPECT_EQ(scored.Number("shown"), 0.25);
    EXPECT_EQ(scored.Number("probability(yes)"), 0.75);
    EXPECT_EQ(NamesOf(scored).size(), 3U);
}

TEST(MiningResults, OfASelectionAreThoseOfTheSegmentThatHasThePrediction) {
    Scored scored(EnsembleDocument(
        Mining("selectFirst", SegmentOf(Line("x", 0.0, 1.0, OutputOf(Told("first") + Told("either"))), "", kAbove) +
                                  SegmentOf(Line("x", 5.0, 1.0, OutputOf(Told("second") + Told("either")))))));
    ASSERT_TRUE(scored.Score({{"x", "2"}, {"z", "1"}, {"c", "a"}}).IsOK());
    EXPECT_EQ(scored.Number("first"), 2.0);
    EXPECT_EQ(scored.Number("either"), 2.0);
    EXPECT_EQ(scored.Number("second"), kMissing);
    ASSERT_TRUE(scored.Score({{"x", "-2"}, {"z", "1"}, {"c", "a"}}).IsOK());
    EXPECT_EQ(scored.Number("first"), kMissing);
    EXPECT_EQ(scored.Number("either"), 3.0);
    EXPECT_EQ(scored.Number("second"), 3.0);
}

TEST(MiningResults, OfAChainWithinAChainAreThoseOfTheWhole) {
    const std::string inner = "<MiningModel functionName='regression'>" + Schema("", Fields("x")) +
                              "<Segmentation multipleModelMethod='modelChain'>" +
                              SegmentOf(Line("x", 1.0, 1.0, OutputOf(Told("deep")), "")) +
                              "</Segmentation></MiningModel>";
    Scored scored(EnsembleDocument(Mining("modelChain", SegmentOf(inner) + SegmentOf(Line("deep", 0.0, 10.0)))));
    ASSERT_TRUE(scored.Score({{"x", "2"}, {"z", "1"}, {"c", "a"}}).IsOK());
    EXPECT_EQ(scored.Number("deep"), 3.0);
    EXPECT_EQ(scored.Number(), 30.0);
}

TEST(MiningResults, OfPredictionsThatAreCombinedAreThoseOfTheWholeAlone) {
    Scored scored(EnsembleDocument(Mining("sum", SegmentOf(Line("x", 0.0, 1.0, OutputOf(Told("part")))) +
                                                     SegmentOf(Line("x", 0.0, 2.0, OutputOf(Told("part")))))));
    ASSERT_TRUE(scored.Score({{"x", "2"}, {"z", "1"}, {"c", "a"}}).IsOK());
    EXPECT_EQ(NamesOf(scored), std::set<std::string>());
    EXPECT_EQ(scored.Number(), 6.0);
}

TEST(MiningResults, AreColumnsWithTheBitsOfCaseByCase) {
    const std::string byRows = Replaced(
        kBoosted, Schema("t", Fields("xzc")) + "<Seg",
        Schema("t", Fields("xzc")) + OutputOf("<OutputField name='next' rank='2' feature='predictedValue'/>") + "<Seg");
    for (const std::string& document : {kBoosted, byRows}) {
        ModelRows rows(document);
        std::mt19937_64 random(5);
        rows.Fill(random, 700);
        const auto state = rows.Scorer().NewState();
        const ModelAnswers expected = rows.CaseByCase();
        EXPECT_EQ(rows.InBlocks(*state, 1024, 0, false), expected);
        EXPECT_EQ(rows.InBlocks(*state, 100, 17, true), expected);
    }
}

} // namespace
