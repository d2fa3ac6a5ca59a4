// The older models within a model, Regression and DecisionTree: what they tell is a field of the models behind them.
#include "models/columns/model_rows.h"
#include "models/mining/small_ensemble.h"
#include "support/faults/failure.h"

#include <gtest/gtest.h>

#include <random>

using namespace veltrane::tests;

namespace {

const std::string kTree =
    "<DecisionTree modelName='steps' functionName='classification'>"
    "<ResultField name='step' feature='predictedValue'/><ResultField name='sure' feature='probability' value='yes'/>"
    "<Node><True/><Node><SimplePredicate field='x' operator='lessThan' value='5'/><ScoreDistribution value='no' "
    "recordCount='3'/><ScoreDistribution value='yes' recordCount='1'/></Node><Node score='yes'><True/></Node></Node>"
    "</DecisionTree>";

const std::string kLine =
    "<Regression modelName='line' functionName='regression'><LocalTransformations><DerivedField name='twice' "
    "optype='continuous' dataType='double'><Apply function='*'><FieldRef field='x'/><Constant>2</Constant></Apply>"
    "</DerivedField></LocalTransformations><ResultField name='told' feature='predictedValue'/>"
    "<RegressionTable intercept='1'><NumericPredictor name='twice' coefficient='1'/><CategoricalPredictor name='step' "
    "value='yes' coefficient='100'/></RegressionTable></Regression>";

std::string DocumentOf(const std::string& models) {
    return EnsembleDocument("<MiningModel functionName='regression'>" + Schema("y", Fields("xz")) +
                            "<Output><OutputField name='o' feature='transformedValue'><FieldRef field='sure'/>"
                            "</OutputField></Output>" +
                            models + "</MiningModel>");
}

const std::string kSegments = "<Segmentation multipleModelMethod='sum'>" + SegmentOf(Line("told", 0.0, 10.0)) +
                              SegmentOf(Line("z", 0.0, 1.0)) + "</Segmentation>";

TEST(EmbeddedModels, AreAChainWhoseLastModelPredicts) {
    Scored scored(DocumentOf(kTree + kLine));
    ASSERT_TRUE(scored.Score({{"x", "3"}}).IsOK());
    EXPECT_EQ(scored.Number(), 7.0);
    EXPECT_EQ(scored.Number("o"), 0.25);
    ASSERT_TRUE(scored.Score({{"x", "6"}}).IsOK());
    EXPECT_EQ(scored.Number(), 113.0);
    EXPECT_EQ(scored.Number("o"), kMissing) << "a score alone tells no probability";
}

TEST(EmbeddedModels, TellFieldsToTheSegmentsBehindThem) {
    Scored scored(DocumentOf(kTree + kLine + kSegments));
    ASSERT_TRUE(scored.Score({{"x", "3"}, {"z", "0.5"}}).IsOK());
    EXPECT_EQ(scored.Number(), 70.5);
    ASSERT_TRUE(scored.Score({{"x", "6"}, {"z", "0.5"}}).IsOK());
    EXPECT_EQ(scored.Number(), 1130.5);
    EXPECT_FALSE(scored.Score({{"x", ""}, {"z", "0.5"}}).IsOK());
}

TEST(EmbeddedModels, AreTheSameInColumns) {
    for (const std::string& document : {DocumentOf(kTree + kLine), DocumentOf(kTree + kLine + kSegments)}) {
        ModelRows rows(document);
        std::mt19937_64 random(1);
        rows.Fill(random, 600);
        const auto state = rows.Scorer().NewState();
        EXPECT_EQ(rows.InBlocks(*state, 1024, 0, false), rows.CaseByCase());
        EXPECT_EQ(rows.InBlocks(*state, 50, 3, true), rows.CaseByCase());
    }
}

TEST(EmbeddedModels, SeeNothingOfThoseBehindThem) {
    ExpectFailure([] { ReadModel(DocumentOf(kLine + kTree)); },
                  {MISSING_VARIABLE_IN_BOTH, "step", "DataDictionary", "TransformationDictionary"});
}

TEST(EmbeddedModels, OfAnotherFunctionAreNoLastOnes) {
    ExpectFailure([] { ReadModel(DocumentOf(kTree)); }, {CONFLICTING_VALUES_IN, "classification", "functionName",
                                                         "DecisionTree", "regression", "functionName", "MiningModel"});
}

TEST(EmbeddedModels, TellEachResultOnce) {
    const std::string twice = Replaced(kTree, "<ResultField name='sure'", "<ResultField name='step'");
    ExpectFailure([&] { ReadModel(DocumentOf(twice + kLine)); },
                  {DUPLICATE_DEFINITION, "ResultField", "step", "Output"});
}

} // namespace
