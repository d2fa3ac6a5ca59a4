// Models of models whose segments are general regressions, naive Bayes models and networks of several targets: votes,
// means and chains.
#include "models/columns/model_rows.h"
#include "models/mining/small_ensemble.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

using namespace veltrane::tests;

namespace {

/// no and yes are equally likely; no has a once in four, yes every second time.
const std::string kBayes =
    "<NaiveBayesModel functionName='classification' threshold='0.001'>" + Schema("t", Fields("c")) +
    "<BayesInputs><BayesInput fieldName='c'><PairCounts value='a'><TargetValueCounts><TargetValueCount value='no' "
    "count='1'/><TargetValueCount value='yes' count='2'/></TargetValueCounts></PairCounts><PairCounts value='b'>"
    "<TargetValueCounts><TargetValueCount value='no' count='3'/><TargetValueCount value='yes' count='2'/>"
    "</TargetValueCounts></PairCounts></BayesInput></BayesInputs><BayesOutput fieldName='t'><TargetValueCounts>"
    "<TargetValueCount value='no' count='4'/><TargetValueCount value='yes' count='4'/></TargetValueCounts>"
    "</BayesOutput></NaiveBayesModel>";

/// The same over what is derived from z, in the input itself.
const std::string kDerivedBayes = Replaced(
    Replaced(kBayes, "<BayesInput fieldName='c'>",
             "<BayesInput fieldName='bin'><DerivedField name='bin' optype='categorical' dataType='string'><Discretize "
             "field='z'><DiscretizeBin binValue='a'><Interval closure='openOpen' rightMargin='2'/></DiscretizeBin>"
             "<DiscretizeBin binValue='b'><Interval closure='closedOpen' leftMargin='2'/></DiscretizeBin></Discretize>"
             "</DerivedField>"),
    "<MiningField name='c'/>", "<MiningField name='z'/>");

/// A general regression over a field: intercept p0, coefficient p1.
std::string General(const std::string& attributes, const std::string& target, const std::string& field,
                    const std::string& intercept, const std::string& coefficient) {
    return "<GeneralRegressionModel " + attributes + ">" + Schema(target, "<MiningField name='" + field + "'/>") +
           "<ParameterList><Parameter name='p0'/><Parameter name='p1'/></ParameterList><CovariateList><Predictor "
           "name='" +
           field + "'/></CovariateList><PPMatrix><PPCell value='1' predictorName='" + field +
           "' parameterName='p1'/></PPMatrix><ParamMatrix><PCell parameterName='p0' beta='" + intercept +
           "'/><PCell parameterName='p1' beta='" + coefficient + "'/></ParamMatrix></GeneralRegressionModel>";
}

/// yes has the logistic of x.
const std::string kLogistic =
    General("functionName='classification' modelType='generalizedLinear' linkFunction='logit' "
            "targetReferenceCategory='no'",
            "t", "x", "0", "1");

/// t, whose no has x and yes 1 - x, and y = 10x.
std::string TwoTargets(const std::string& function) {
    const auto output = [](const std::string& neuron, const std::string& expression) {
        return "<NeuralOutput outputNeuron='" + neuron + "'><DerivedField optype='continuous' dataType='double'>" +
               expression + "</DerivedField></NeuralOutput>";
    };
    return "<NeuralNetwork functionName='" + function + "' activationFunction='identity'>" +
           Schema("t", "<MiningField name='y' usageType='target'/>" + Fields("x")) +
           "<Output><OutputField name='ofT' feature='predictedValue' targetField='t'/><OutputField name='ofY' "
           "feature='predictedValue' targetField='y'/><OutputField name='sure' feature='probability' targetField='t'/>"
           "</Output><NeuralInputs><NeuralInput id='0'><DerivedField optype='continuous' dataType='double'><FieldRef "
           "field='x'/></DerivedField></NeuralInput></NeuralInputs><NeuralLayer><Neuron id='1'><Con from='0' "
           "weight='1'/></Neuron><Neuron id='2'><Con from='0' weight='10'/></Neuron></NeuralLayer><NeuralOutputs>" +
           output("1", "<NormDiscrete field='t' value='no'/>") + output("2", "<FieldRef field='y'/>") +
           "</NeuralOutputs></NeuralNetwork>";
}

std::string OfCategories(const std::string& method, const std::string& segments, const std::string& output = "") {
    return EnsembleDocument("<MiningModel functionName='classification'>" + Schema("t", Fields("xzc")) + output +
                            "<Segmentation multipleModelMethod='" + method + "'>" + segments +
                            "</Segmentation></MiningModel>");
}

std::string OfNumbers(const std::string& method, const std::string& segments) {
    return EnsembleDocument(Mining(method, segments));
}

const std::string kLinear = General("functionName='regression' modelType='generalLinear'", "y", "z", "1", "2");

const std::string kVotes =
    OfCategories("weightedMajorityVote", SegmentOf(kBayes, "weight='2'") + SegmentOf(kLogistic, "weight='1'") +
                                             SegmentOf(TwoTargets("classification")));
const std::string kShares =
    OfCategories("average", SegmentOf(kBayes) + SegmentOf(kDerivedBayes) + SegmentOf(kLogistic));
const std::string kMeans =
    OfNumbers("average", SegmentOf(kLinear) + SegmentOf(TwoTargets("mixed")) + SegmentOf(TwoTargets("regression")) +
                             SegmentOf(Line("x", 4.0, 0.0)));
const std::string kChain = OfCategories(
    "modelChain",
    SegmentOf(TwoTargets("classification")) +
        SegmentOf(General("functionName='classification' modelType='generalizedLinear' linkFunction='logit' "
                          "targetReferenceCategory='no'",
                          "t", "ofY", "-5", "1")),
    "<Output><OutputField name='p' feature='probability' value='yes'/></Output>");
const std::string kFirst =
    OfCategories("selectFirst", SegmentOf(TwoTargets("classification"), "id='net'",
                                          "<SimplePredicate field='z' operator='lessThan' value='5'/>") +
                                    SegmentOf(kBayes, "id='bayes'"));

TEST(SegmentFits, VotesOfBayesAndRegressionsAreCounted) {
    Scored scored(kVotes);
    ASSERT_TRUE(scored.Score({{"x", "2"}, {"c", "b"}}).IsOK());
    EXPECT_EQ(scored.Text(), "no") << "that of Bayes, of weight 2, and the network's against the regression's";
    EXPECT_EQ(scored.Probability("no"), 0.75);
    ASSERT_TRUE(scored.Score({{"x", "2"}, {"c", "a"}}).IsOK());
    EXPECT_EQ(scored.Text(), "yes");
}

TEST(SegmentFits, ProbabilitiesAreAveraged) {
    Scored scored(kShares);
    ASSERT_TRUE(scored.Score({{"x", "0"}, {"c", "a"}, {"z", "3"}}).IsOK());
    EXPECT_EQ(scored.Text(), "yes");
    EXPECT_DOUBLE_EQ(scored.Probability("yes"), (2.0 / 3 + 0.4 + 0.5) / 3);
}

/// Of its targets a network predicts that of the whole model.
TEST(SegmentFits, NumbersAreAveraged) {
    Scored scored(kMeans);
    ASSERT_TRUE(scored.Score({{"x", "0.5"}, {"z", "3"}}).IsOK());
    EXPECT_EQ(scored.Number(), (7.0 + 5.0 + 5.0 + 4.0) / 4);
}

TEST(SegmentFits, AChainAsksForTheOutputsOfFurtherTargets) {
    Scored scored(kChain);
    ASSERT_TRUE(scored.Score({{"x", "0.25"}}).IsOK());
    EXPECT_DOUBLE_EQ(scored.Number("p"), 1 / (1 + std::exp(2.5)));
    EXPECT_EQ(scored.Text(), "no");
}

TEST(SegmentFits, ASelectedNetworkTellsOfAllItsTargets) {
    Scored scored(kFirst);
    ASSERT_TRUE(scored.Score({{"x", "0.75"}, {"z", "1"}, {"c", "a"}}).IsOK());
    EXPECT_EQ(scored.Text(), "no");
    EXPECT_EQ(scored.Text("ofT"), "no");
    EXPECT_EQ(scored.Number("ofY"), 7.5);
    EXPECT_EQ(scored.Number("sure"), 0.75);
    ASSERT_TRUE(scored.Score({{"x", "0.75"}, {"z", "6"}, {"c", "a"}}).IsOK());
    EXPECT_EQ(scored.Text(), "yes");
    EXPECT_EQ(scored.Number("ofY"), kMissing);
}

TEST(SegmentFits, AreTheSameInColumns) {
    for (const std::string& document : {kVotes, kShares, kMeans, kChain, kFirst}) {
        ModelRows rows(document);
        std::mt19937_64 random(5);
        rows.Fill(random, 500);
        EXPECT_EQ(rows.InBlocks(*rows.Scorer().NewState(), 256, 0, false), rows.CaseByCase()) << document;
        EXPECT_EQ(rows.InBlocks(*rows.Scorer().NewState(), 30, 7, true), rows.CaseByCase()) << document;
    }
}

} // namespace
