// A Target without a field in a model whose mining schema names no target: the model's own.
#include "models/kit/scoring.h"
#include "models/kit/small_documents.h"
#include "support/faults/failure.h"

#include <MCVeltrane_900/ScoreDictionary.h>

#include <gtest/gtest.h>

#include <cmath>

using namespace veltrane::tests;

namespace {

/// y = x, with these Targets and no target field.
std::string OwnRegression(const std::string& targets) {
    return "<PMML version='4.4'><DataDictionary><DataField name='x' optype='continuous' dataType='double'/>"
           "</DataDictionary><RegressionModel functionName='regression'><MiningSchema><MiningField name='x'/>"
           "</MiningSchema><Output><OutputField name='v' feature='predictedDisplayValue'/></Output><Targets>" +
           targets +
           "</Targets><RegressionTable intercept='0'><NumericPredictor name='x' coefficient='1'/>"
           "</RegressionTable></RegressionModel></PMML>";
}

/// The small classification, with these Targets and no target field.
std::string OwnClassification(const std::string& targets) {
    std::string document = Replaced(kSmallClassification, "<MiningField name='t' usageType='target'/>", "");
    document = Replaced(document, "<OutputField name='P'",
                        "<OutputField name='v' feature='predictedDisplayValue'/><OutputField name='P'");
    return Replaced(document, "</Output>", "</Output><Targets>" + targets + "</Targets>");
}

TEST(OwnTarget, AdjustsANumber) {
    Scored scored(OwnRegression("<Target min='0' max='10' rescaleFactor='2' rescaleConstant='0.75' "
                                "castInteger='floor'/>"));
    scored.Score({{"x", "3"}});
    EXPECT_EQ(scored.Number(), 6);
    scored.Score({{"x", "30"}});
    EXPECT_EQ(scored.Number(), 20);
    EXPECT_EQ(scored.Model().GetTargetVar(), nullptr);
    EXPECT_EQ(scored.Model().GetDictionary()->Size(), 1);
}

TEST(OwnTarget, HasADefault) {
    Scored scored(OwnRegression("<Target optype='continuous'><TargetValue defaultValue='-7'/></Target>"));
    ASSERT_TRUE(scored.Score({}).IsOK());
    EXPECT_EQ(scored.Number(), -7);
    EXPECT_EQ(scored.Text("v"), "-7");
    ASSERT_TRUE(scored.Model().SetOption("missingValuePolicy", "noPrediction"));
    EXPECT_FALSE(scored.Score({}).IsOK());
    EXPECT_EQ(scored.Number(), kMissing);
}

TEST(OwnTarget, WithoutADefaultLeavesACaseWithoutAPrediction) {
    Scored number(OwnRegression("<Target castInteger='round'/>"));
    EXPECT_EQ(number.Score({}).GetErrorCode(), kNoPrediction);
    Scored category(OwnClassification("<Target/>"));
    EXPECT_EQ(category.Score({}).GetErrorCode(), kNoPrediction);
    Scored none(OwnRegression(""));
    EXPECT_EQ(none.Score({}).GetErrorCode(), kNoPrediction);
}

TEST(OwnTarget, NamesAndWeighsCategories) {
    Scored scored(OwnClassification("<Target optype='categorical'>"
                                    "<TargetValue value='no' displayValue='never' priorProbability='0.75'/>"
                                    "<TargetValue value='yes' displayValue='always' priorProbability='0.25'/>"
                                    "</Target>"));
    scored.Score({{"x", "1"}});
    EXPECT_EQ(scored.Text(), "yes");
    EXPECT_EQ(scored.Text("v"), "always");
    ASSERT_TRUE(scored.Score({}).IsOK());
    EXPECT_EQ(scored.Text(), "no");
    EXPECT_EQ(scored.Text("v"), "never");
    EXPECT_EQ(scored.Probability("no"), 0.75);
    EXPECT_EQ(scored.Probability("yes"), 0.25);
    EXPECT_EQ(scored.Number("P"), 0.25);
    EXPECT_EQ(scored.Result().GetResultConfidence(), 0.75);
}

TEST(OwnTarget, NeedNotListEveryCategory) {
    Scored scored(OwnClassification("<Target><TargetValue value='yes' displayValue='always'/></Target>"));
    scored.Score({{"x", "-1"}});
    EXPECT_EQ(scored.Text(), "no");
    EXPECT_EQ(scored.Text("v"), "no");
    EXPECT_DOUBLE_EQ(scored.Probability("yes"), 1 / (1 + std::exp(1.0)));
}

TEST(OwnTarget, StandsBesideThoseOfFields) {
    Scored scored(OwnRegression("<Target field='x' optype='continuous' rescaleFactor='5'/>"
                                "<Target rescaleFactor='2'/>"));
    scored.Score({{"x", "3"}});
    EXPECT_EQ(scored.Number(), 6);
}

TEST(OwnTarget, IsOne) {
    ExpectFailure([] { ReadModel(OwnRegression("<Target/><Target/>")); }, {MORE_THAN_ONE, "Target", "Targets"});
}

TEST(OwnTarget, HasTheKindOfTheFunction) {
    ExpectFailure([] { ReadModel(OwnRegression("<Target optype='categorical'/>")); },
                  {CONFLICTING_VALUES_IN, "categorical", "optype", "DataDictionary", "continuous", "optype", "Target"});
    ExpectFailure([] { ReadModel(OwnClassification("<Target optype='continuous'/>")); },
                  {CONFLICTING_VALUES_IN, "continuous", "optype", "DataDictionary", "categorical", "optype", "Target"});
    ExpectFailure([] { ReadModel(OwnRegression("<Target field=''/>")); }, {NULL_ATTRIBUTE, "field", "Target"});
}

} // namespace
