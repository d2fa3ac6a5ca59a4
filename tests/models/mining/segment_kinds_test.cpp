// Segments of each kind that the plug-in knows itself, and what they tell of their grounds.
#include "models/columns/model_rows.h"
#include "models/mining/small_ensemble.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

using namespace veltrane::tests;

namespace {

const std::string kCard = "<Scorecard functionName='regression' initialScore='1' baselineScore='5'>" +
                          Schema("y", Fields("x")) +
                          "<Characteristics><Characteristic name='a' reasonCode='A'><Attribute partialScore='3'>"
                          "<SimplePredicate field='x' operator='lessThan' value='5'/></Attribute><Attribute "
                          "partialScore='8'><True/></Attribute></Characteristic></Characteristics></Scorecard>";

const std::string kRules = "<RuleSetModel functionName='classification'>" + Schema("t", Fields("x")) +
                           "<RuleSet defaultScore='no' defaultConfidence='0.25'><RuleSelectionMethod "
                           "criterion='firstHit'/><SimpleRule id='low' score='yes' confidence='0.75'><SimplePredicate "
                           "field='x' operator='lessThan' value='5'/></SimpleRule></RuleSet></RuleSetModel>";

TEST(SegmentKinds, AScorecardTellsItsReasonsWhereItIsSelected) {
    Scored scored(EnsembleDocument(
        Mining("selectFirst", SegmentOf(kCard), "<Output><OutputField name='why' feature='reasonCode'/></Output>")));
    ASSERT_TRUE(scored.Score({{"x", "3"}}).IsOK());
    EXPECT_EQ(scored.Number(), 4.0);
    EXPECT_EQ(scored.Text("why"), "A");
}

TEST(SegmentKinds, RulesVoteAndTellTheirConfidence) {
    const auto document = [](const std::string& method) {
        return EnsembleDocument(
            "<MiningModel functionName='classification'>" + Schema("t", Fields("x")) +
            "<Output><OutputField name='id' feature='ruleValue' ruleFeature='ruleId'/><OutputField "
            "name='sure' feature='confidence'/><OutputField name='p' feature='probability'/></Output>"
            "<Segmentation multipleModelMethod='" +
            method + "'>" + SegmentOf(kRules) + "</Segmentation></MiningModel>");
    };
    Scored selected(document("selectFirst"));
    ASSERT_TRUE(selected.Score({{"x", "3"}}).IsOK());
    EXPECT_EQ(selected.Text(), "yes");
    EXPECT_EQ(selected.Text("id"), "low");
    EXPECT_EQ(selected.Number("sure"), 0.75);
    Scored voted(document("majorityVote"));
    ASSERT_TRUE(voted.Score({{"x", "7"}}).IsOK());
    EXPECT_EQ(voted.Text(), "no");
    EXPECT_EQ(voted.Number("p"), 1.0);
    EXPECT_EQ(voted.Text("id"), "");
}

/// 1 + 2x with the variance 1 of the intercept and 4 of the slope.
const std::string kWithErrors =
    "<GeneralRegressionModel functionName='regression' modelType='generalLinear'>" + Schema("y", Fields("x")) +
    "<ParameterList><Parameter name='p0'/><Parameter name='p1'/></ParameterList><CovariateList><Predictor name='x'/>"
    "</CovariateList><PPMatrix><PPCell value='1' predictorName='x' parameterName='p1'/></PPMatrix><PCovMatrix>"
    "<PCovCell pRow='p0' pCol='p0' value='1'/><PCovCell pRow='p1' pCol='p1' value='4'/></PCovMatrix><ParamMatrix>"
    "<PCell parameterName='p0' beta='1'/><PCell parameterName='p1' beta='2'/></ParamMatrix></GeneralRegressionModel>";

std::string WithErrors(const std::string& method) {
    return EnsembleDocument(Mining(
        method,
        SegmentOf(kWithErrors, "", "<SimplePredicate field='z' operator='lessThan' value='5'/>") +
            SegmentOf(Line("x", 1.0, 2.0), "", "<SimplePredicate field='z' operator='greaterOrEqual' value='5'/>"),
        "<Output><OutputField name='error' feature='standardError'/></Output>"));
}

TEST(SegmentKinds, AGeneralRegressionTellsItsStandardErrorWhereItIsSelected) {
    for (const char* method : {"selectFirst", "selectAll", "modelChain"}) {
        Scored scored(WithErrors(method));
        ASSERT_TRUE(scored.Score({{"x", "2"}, {"z", "1"}}).IsOK());
        EXPECT_EQ(scored.Number(), 5.0);
        EXPECT_DOUBLE_EQ(scored.Number("error"), std::sqrt(17.0)) << method;
        ASSERT_TRUE(scored.Score({{"x", "2"}, {"z", "7"}}).IsOK());
        EXPECT_EQ(scored.Number(), 5.0);
        EXPECT_EQ(scored.Number("error"), kMissing) << method << ": that of the case before";
    }
    Scored averaged(WithErrors("average"));
    ASSERT_TRUE(averaged.Score({{"x", "2"}, {"z", "1"}}).IsOK());
    EXPECT_EQ(averaged.Number("error"), kMissing) << "a mean has none";
}

const std::string kDrift = "<BaselineModel functionName='regression'>" + Schema("y", Fields("x")) +
                           "<TestDistributions field='x' testStatistic='CUSUM' resetValue='0'><Baseline>"
                           "<GaussianDistribution mean='0' variance='1'/></Baseline><Alternate><GaussianDistribution "
                           "mean='2' variance='1'/></Alternate></TestDistributions></BaselineModel>";

/// A baseline that sums over the cases, of which those below 5 alone are its own.
const std::string kDriftBelowFive = EnsembleDocument(
    Mining("selectFirst", SegmentOf(kDrift, "", "<SimplePredicate field='z' operator='lessThan' value='5'/>") +
                              SegmentOf(Line("x", 1.0, 2.0))));

TEST(SegmentKinds, ABaselineSumsOverTheCasesThatAreItsOwn) {
    Scored scored(kDriftBelowFive);
    const auto score = [&](const std::string& z) {
        EXPECT_TRUE(scored.Score({{"x", "2"}, {"z", z}}).IsOK());
        return scored.Number();
    };
    EXPECT_EQ(score("1"), 2.0);
    score("9");
    EXPECT_EQ(score("1"), 4.0);
}

/// The categories no and yes have the numbers x and 1 - x.
const std::string kNetwork =
    "<NeuralNetwork functionName='classification' activationFunction='identity'>" + Schema("t", Fields("x")) +
    "<NeuralInputs><NeuralInput id='0'><DerivedField optype='continuous' dataType='double'><FieldRef field='x'/>"
    "</DerivedField></NeuralInput></NeuralInputs><NeuralLayer><Neuron id='1'><Con from='0' weight='1'/></Neuron>"
    "</NeuralLayer><NeuralOutputs><NeuralOutput outputNeuron='1'><DerivedField optype='continuous' dataType='double'>"
    "<NormDiscrete field='t' value='no'/></DerivedField></NeuralOutput></NeuralOutputs></NeuralNetwork>";

/// yes where x is above 2, else no.
const std::string kVectors =
    "<SupportVectorMachineModel functionName='classification' svmRepresentation='Coefficients' maxWins='true'>" +
    Schema("t", Fields("x")) +
    "<LinearKernelType/><VectorDictionary><VectorFields><FieldRef field='x'/></VectorFields></VectorDictionary>"
    "<SupportVectorMachine targetCategory='yes' alternateTargetCategory='no' threshold='2'><Coefficients><Coefficient "
    "value='1'/></Coefficients></SupportVectorMachine></SupportVectorMachineModel>";

std::string Selecting(const std::string& method, const std::string& segments) {
    return EnsembleDocument("<MiningModel functionName='classification'>" + Schema("t", Fields("xz")) +
                            "<Segmentation multipleModelMethod='" + method + "'>" + segments +
                            "</Segmentation></MiningModel>");
}

TEST(SegmentKinds, NetworksTellTheirProbabilities) {
    Scored scored(Selecting("average", SegmentOf(kNetwork) + SegmentOf(kRules)));
    ASSERT_TRUE(scored.Score({{"x", "0.25"}}).IsOK());
    EXPECT_EQ(scored.Text(), "yes");
    EXPECT_EQ(scored.Probability("yes"), (0.75 + 1.0) / 2);
}

TEST(SegmentKinds, SupportVectorsVoteForTheirCategory) {
    Scored scored(Selecting("majorityVote", SegmentOf(kVectors) + SegmentOf(kNetwork) + SegmentOf(kVectors)));
    ASSERT_TRUE(scored.Score({{"x", "3"}}).IsOK());
    EXPECT_EQ(scored.Text(), "yes");
    EXPECT_EQ(scored.Probability("yes"), 2.0 / 3);
    ASSERT_TRUE(scored.Score({{"x", "2"}}).IsOK());
    EXPECT_EQ(scored.Text(), "no");
}

/// Points that are twice z.
const std::string kComputingCard =
    "<Scorecard functionName='regression' initialScore='1' useReasonCodes='false'>" + Schema("y", Fields("z")) +
    "<Characteristics><Characteristic><Attribute><True/><ComplexPartialScore><Apply function='*'><FieldRef field='z'/>"
    "<Constant>2</Constant></Apply></ComplexPartialScore></Attribute></Characteristic></Characteristics></Scorecard>";

/// Counts of a derived input.
const std::string kBayes =
    "<NaiveBayesModel functionName='classification' threshold='0.25'>" + Schema("t", Fields("x")) +
    "<BayesInputs><BayesInput fieldName='x'><DerivedField optype='categorical' dataType='string'><Discretize field='x'>"
    "<DiscretizeBin binValue='low'><Interval closure='openOpen' rightMargin='2'/></DiscretizeBin><DiscretizeBin "
    "binValue='high'><Interval closure='closedOpen' leftMargin='2'/></DiscretizeBin></Discretize></DerivedField>"
    "<PairCounts value='low'><TargetValueCounts><TargetValueCount value='no' count='3'/><TargetValueCount value='yes' "
    "count='1'/></TargetValueCounts></PairCounts><PairCounts value='high'><TargetValueCounts><TargetValueCount "
    "value='no' count='1'/><TargetValueCount value='yes' count='3'/></TargetValueCounts></PairCounts></BayesInput>"
    "</BayesInputs><BayesOutput fieldName='t'><TargetValueCounts><TargetValueCount value='no' count='4'/>"
    "<TargetValueCount value='yes' count='4'/></TargetValueCounts></BayesOutput></NaiveBayesModel>";

TEST(SegmentKinds, ComputeFieldsThatHaveNoName) {
    Scored card(EnsembleDocument(Mining("sum", SegmentOf(kComputingCard) + SegmentOf(Line("x", 0.0, 1.0)))));
    ASSERT_TRUE(card.Score({{"x", "3"}, {"z", "5"}}).IsOK());
    EXPECT_EQ(card.Number(), 14.0);
    Scored bayes(Selecting("average", SegmentOf(kBayes)));
    ASSERT_TRUE(bayes.Score({{"x", "3"}}).IsOK());
    EXPECT_DOUBLE_EQ(bayes.Probability("yes"), 0.75);
    for (const std::string& document :
         {Selecting("average", SegmentOf(kNetwork)), Selecting("selectFirst", SegmentOf(kNetwork)),
          Selecting("max", SegmentOf(kBayes) + SegmentOf(kNetwork)),
          EnsembleDocument(Mining("modelChain", SegmentOf(kComputingCard))),
          EnsembleDocument(Mining("average", SegmentOf(kComputingCard) + SegmentOf(Line("x", 0.0, 1.0))))}) {
        ModelRows rows(document);
        std::mt19937_64 random(2);
        rows.Fill(random, 900);
        const ModelAnswers expected = rows.CaseByCase();
        EXPECT_GT(std::count_if(expected.begin(), expected.end(),
                                [](const std::string& answer) { return answer != "unscored"; }),
                  20);
        EXPECT_EQ(rows.InBlocks(*rows.Scorer().NewState(), 1024, 0, false), expected);
        EXPECT_EQ(rows.InBlocks(*rows.Scorer().NewState(), 50, 3, true), expected);
    }
}

TEST(SegmentKinds, AreTheSameInColumns) {
    for (const std::string& document :
         {kDriftBelowFive, WithErrors("selectFirst"), WithErrors("selectAll"), WithErrors("modelChain"),
          WithErrors("sum"),
          EnsembleDocument(Mining("selectFirst", SegmentOf(kCard),
                                  "<Output><OutputField name='why' feature='reasonCode'/></Output>")),
          EnsembleDocument(Mining("sum", SegmentOf(kCard) + SegmentOf(Line("z", 1.0, 2.0), "",
                                                                      "<SimplePredicate field='z' operator='lessThan' "
                                                                      "value='2'/>"))),
          EnsembleDocument("<MiningModel functionName='classification'>" + Schema("t", Fields("x")) +
                           "<Segmentation multipleModelMethod='max'>" + SegmentOf(kRules) +
                           "</Segmentation></MiningModel>")}) {
        ModelRows rows(document);
        std::mt19937_64 random(1);
        rows.Fill(random, 600);
        EXPECT_EQ(rows.InBlocks(*rows.Scorer().NewState(), 1024, 0, false), rows.CaseByCase());
        EXPECT_EQ(rows.InBlocks(*rows.Scorer().NewState(), 50, 3, true), rows.CaseByCase());
    }
}

} // namespace
