// What general regressions make of references, categories, missing values and numbers that overflow.
#include "models/general/small_general.h"
#include "models/kit/scoring.h"
#include "models/mining/small_ensemble.h"

#include <MCVeltrane_900/ScoreRegResult.h>

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

using namespace veltrane::tests;

namespace {

double Logistic(double x) {
    return 1 / (1 + std::exp(-x));
}

TEST(GeneralRegression, TakesTheCategoryWithoutCellsForTheReference) {
    Scored scored(Binary("<PCell targetCategory='no' parameterName='p0' beta='0.5'/>"));
    ASSERT_TRUE(scored.Score({{"x", "1"}}).IsOK());
    EXPECT_DOUBLE_EQ(scored.Probability("no"), Logistic(0.5));
    EXPECT_DOUBLE_EQ(scored.Probability("yes"), 1 - Logistic(0.5));
    EXPECT_EQ(scored.Text(), "no");
}

TEST(GeneralRegression, TakesTheFirstOfTwoForTheReferenceWhereCellsNameNone) {
    Scored scored(Binary("<PCell parameterName='p0' beta='0.5'/>"));
    ASSERT_TRUE(scored.Score({{"x", "1"}}).IsOK());
    EXPECT_DOUBLE_EQ(scored.Probability("yes"), Logistic(0.5));
}

TEST(GeneralRegression, TakesTheReferenceThatIsStated) {
    Scored scored(Replaced(Binary("<PCell parameterName='p0' beta='0.5'/>"), "linkFunction",
                           "targetReferenceCategory='yes' linkFunction"));
    ASSERT_TRUE(scored.Score({{"x", "1"}}).IsOK());
    EXPECT_DOUBLE_EQ(scored.Probability("no"), Logistic(0.5));
}

TEST(GeneralRegression, HoldsTheProbabilityOfOneOfTwoWithinItsBounds) {
    const std::string document =
        Replaced(Binary("<PCell parameterName='p1' beta='1'/>"), "linkFunction='logit'", "linkFunction='identity'");
    Scored scored(document);
    for (const auto& [x, expected] : {std::pair("-3", 0.0), std::pair("0.25", 0.25), std::pair("7", 1.0)}) {
        ASSERT_TRUE(scored.Score({{"x", x}}).IsOK());
        EXPECT_EQ(scored.Probability("yes"), expected) << x;
        EXPECT_EQ(scored.Probability("no"), 1 - expected) << x;
    }
}

TEST(GeneralRegression, LinksTheReferenceOfRattlesDocuments) {
    Scored scored(Replaced(Binary("<PCell parameterName='p0' beta='0.5'/>"), "<DataDictionary>",
                           "<Header><Application name='Rattle/PMML' version='1.3'/></Header><DataDictionary>"));
    ASSERT_TRUE(scored.Score({{"x", "1"}}).IsOK());
    EXPECT_DOUBLE_EQ(scored.Probability("yes"), Logistic(0.5) / (Logistic(0.5) + 0.5));
    EXPECT_DOUBLE_EQ(scored.Probability("no"), 0.5 / (Logistic(0.5) + 0.5));
}

TEST(GeneralRegression, OrdersTheReferenceOfAnOrdinalModelBehindTheOthers) {
    Scored scored(General("functionName='classification' modelType='ordinalMultinomial' cumulativeLink='logit' "
                          "targetReferenceCategory='low'",
                          "g", "",
                          "<PCell targetCategory='mid' parameterName='p0' beta='-1'/>"
                          "<PCell targetCategory='high' parameterName='p0' beta='1'/>"));
    ASSERT_TRUE(scored.Score({{"x", "1"}}).IsOK());
    EXPECT_DOUBLE_EQ(scored.Probability("mid"), Logistic(-1));
    EXPECT_DOUBLE_EQ(scored.Probability("high"), Logistic(1) - Logistic(-1));
    EXPECT_DOUBLE_EQ(scored.Probability("low"), 1 - Logistic(1));
}

TEST(GeneralRegression, GivesNoShareToACategoryWhoseCumulativeProbabilityFalls) {
    Scored scored(General("functionName='classification' modelType='ordinalMultinomial' cumulativeLink='cauchit'", "g",
                          "",
                          "<PCell targetCategory='low' parameterName='p0' beta='1'/>"
                          "<PCell targetCategory='mid' parameterName='p0' beta='0'/>"));
    ASSERT_TRUE(scored.Score({{"x", "1"}}).IsOK());
    EXPECT_DOUBLE_EQ(scored.Probability("low"), 0.75);
    EXPECT_EQ(scored.Probability("mid"), 0.0);
    EXPECT_DOUBLE_EQ(scored.Probability("high"), 0.25);
}

TEST(GeneralRegression, TellsWhatACaseLacks) {
    Scored scored(Linear("<PCell parameterName='p0' beta='1'/><PCell parameterName='p1' beta='2'/>"
                         "<PCell parameterName='p2' beta='4'/>"));
    EXPECT_FALSE(scored.Score({{"c", "a"}}).IsOK());
    EXPECT_FALSE(scored.Score({{"x", "3"}}).IsOK());
    ASSERT_TRUE(scored.Score({{"x", "3"}, {"c", "a"}}).IsOK());
    EXPECT_EQ(scored.Number(), 11.0);
    ASSERT_TRUE(scored.Score({{"x", "3"}, {"c", "b"}}).IsOK());
    EXPECT_EQ(scored.Number(), 7.0);
}

TEST(GeneralRegression, PredictsNothingOfWhatOverflows) {
    Scored scored(Replaced(Linear("<PCell parameterName='p1' beta='1e300'/>"), "modelType='generalLinear'",
                           "modelType='generalizedLinear' linkFunction='log'"));
    EXPECT_FALSE(scored.Score({{"x", "1"}}).IsOK());
    EXPECT_FALSE(scored.Score({{"x", "-1e300"}}).IsOK()); // the link of -infinity would be 0
    ASSERT_TRUE(scored.Score({{"x", "-1"}}).IsOK());
    EXPECT_EQ(scored.Number(), 0.0);
}

TEST(GeneralRegression, TellsTheStandardErrorInItsResult) {
    Scored scored(Linear("<PCell parameterName='p0' beta='1'/><PCell parameterName='p1' beta='2'/>",
                         "<PCovMatrix><PCovCell pRow='p0' pCol='p0' value='4'/><PCovCell pRow='p1' pCol='p1' "
                         "value='1'/></PCovMatrix>"));
    const auto& result = dynamic_cast<const MCVeltrane_900::ScoreRegResult&>(scored.Result());
    ASSERT_TRUE(scored.Score({{"x", "3"}}).IsOK());
    EXPECT_DOUBLE_EQ(result.GetStandardError(), std::sqrt(13.0));
    scored.Score({});
    EXPECT_EQ(result.GetStandardError(), kMissing);
}

TEST(GeneralRegression, HasNoStandardErrorOfCovariancesThatAreNone) {
    Scored scored(Linear("<PCell parameterName='p0' beta='1'/>",
                         "<PCovMatrix><PCovCell pRow='p0' pCol='p0' value='-4'/></PCovMatrix>"));
    ASSERT_TRUE(scored.Score({{"x", "3"}}).IsOK());
    EXPECT_EQ(dynamic_cast<const MCVeltrane_900::ScoreRegResult&>(scored.Result()).GetStandardError(), kMissing);
}

TEST(GeneralRegression, KeepsTheOrderOfItsTermsWithCategoriesThatComeAgain) {
    // 0.1 + 0.2 - 0.3 isn't 0 in doubles, in this order.
    Scored scored(Replaced(Linear("<PCell parameterName='p2' beta='0.1'/><PCell parameterName='p3' beta='0.2'/>"
                                  "<PCell parameterName='p0' beta='-0.3'/>"),
                           "</PPMatrix>", "<PPCell value='a' predictorName='c' parameterName='p3'/></PPMatrix>"));
    ASSERT_TRUE(scored.Score({{"x", "1"}, {"c", "a"}}).IsOK());
    EXPECT_EQ(scored.Number(), 0.1 + 0.2 - 0.3);
}

TEST(GeneralRegression, ReadsContrastsOfSparseMatrices) {
    const std::string contrasts = "<Predictor name='c'><Matrix kind='symmetric' nbRows='2' nbCols='2' diagDefault='3' "
                                  "offDiagDefault='9'><MatCell row='1' col='2'>-5</MatCell></Matrix></Predictor>";
    Scored scored(Replaced(Linear("<PCell parameterName='p2' beta='2'/>"), "<Predictor name='c'/>", contrasts));
    ASSERT_TRUE(scored.Score({{"c", "a"}}).IsOK());
    EXPECT_EQ(scored.Number(), 6.0);
    ASSERT_TRUE(scored.Score({{"c", "b"}}).IsOK());
    EXPECT_EQ(scored.Number(), -10.0);
}

TEST(GeneralRegression, ReadsContrastsOfTriangles) {
    const std::string contrasts = "<Predictor name='c'><Categories><Category value='b'/><Category value='a'/>"
                                  "</Categories><Matrix kind='symmetric' nbRows='2' nbCols='2'><Array>7</Array>"
                                  "<Array>-2 3</Array></Matrix></Predictor>";
    Scored scored(Replaced(Linear("<PCell parameterName='p2' beta='2'/>"), "<Predictor name='c'/>", contrasts));
    ASSERT_TRUE(scored.Score({{"c", "a"}}).IsOK());
    EXPECT_EQ(scored.Number(), 6.0);
    ASSERT_TRUE(scored.Score({{"c", "b"}}).IsOK());
    EXPECT_EQ(scored.Number(), -4.0);
}

TEST(GeneralRegression, HasNoPredictionForACategoryWithoutContrasts) {
    Scored scored(Replaced(Linear("<PCell parameterName='p2' beta='2'/>"), "<Predictor name='c'/>",
                           "<Predictor name='c'><Categories><Category value='a'/></Categories><Matrix><Array>1</Array>"
                           "</Matrix></Predictor>"));
    EXPECT_FALSE(scored.Score({{"c", "b"}}).IsOK());
    ASSERT_TRUE(scored.Score({{"c", "a"}}).IsOK());
    EXPECT_EQ(scored.Number(), 2.0);
}

TEST(GeneralRegression, CumulatesTheHazardOfOneBaseline) {
    Scored scored(General("functionName='regression' modelType='CoxRegression' endTimeVariable='x' offsetValue='0.5'",
                          "y",
                          "<BaseCumHazardTables maxTime='10'><BaselineCell time='2' cumHazard='0.25'/>"
                          "<BaselineCell time='5' cumHazard='1'/></BaseCumHazardTables>",
                          "<PCell parameterName='p2' beta='2'/>"));
    for (const auto& [time, hazard] :
         {std::pair("1.5", 0.0), std::pair("2", 0.25), std::pair("4.5", 0.25), std::pair("10", 1.0)}) {
        ASSERT_TRUE(scored.Score({{"x", time}, {"c", "a"}}).IsOK()) << time;
        EXPECT_DOUBLE_EQ(scored.Number(), hazard * std::exp(2.5)) << time;
        ASSERT_TRUE(scored.Score({{"x", time}, {"c", "b"}}).IsOK()) << time;
        EXPECT_DOUBLE_EQ(scored.Number(), hazard * std::exp(0.5)) << time;
    }
    EXPECT_FALSE(scored.Score({{"x", "10.5"}, {"c", "a"}}).IsOK());
    EXPECT_FALSE(scored.Score({{"c", "a"}}).IsOK());
}

/// Until when a case has run is its own value of the target; without one it isn't scored.
TEST(GeneralRegression, TakesTheEndTimeFromTheTarget) {
    Scored scored(General("functionName='regression' modelType='CoxRegression' endTimeVariable='y'", "y",
                          "<BaseCumHazardTables maxTime='10'><BaselineCell time='2' cumHazard='0.25'/>"
                          "<BaselineCell time='5' cumHazard='1'/></BaseCumHazardTables>",
                          "<PCell parameterName='p2' beta='2'/>"));
    for (const auto& [time, hazard] : {std::pair("1.5", 0.0), std::pair("2", 0.25), std::pair("10", 1.0)}) {
        ASSERT_TRUE(scored.Score({{"y", time}, {"c", "a"}}).IsOK()) << time;
        EXPECT_DOUBLE_EQ(scored.Number(), hazard * std::exp(2.0)) << time;
    }
    EXPECT_EQ(scored.Score({{"y", "10.5"}, {"c", "a"}}).GetErrorCode(), kNoPrediction);
    EXPECT_EQ(scored.Score({{"c", "a"}}).GetErrorCode(), kNoPrediction);
}

TEST(GeneralRegression, PredictsTheSameForEveryDistributionButTrials) {
    for (const char* distribution : {"binomial", "gamma", "igauss", "negbin", "normal", "poisson", "tweedie"}) {
        const std::string attributes = std::string("modelType='generalizedLinear' linkFunction='log' distribution='") +
                                       distribution + "' distParameter='2' trialsValue='3'";
        Scored scored(
            Replaced(Linear("<PCell parameterName='p1' beta='0.5'/>"), "modelType='generalLinear'", attributes));
        ASSERT_TRUE(scored.Score({{"x", "2"}}).IsOK()) << distribution;
        const double trials = distribution == std::string("binomial") ? 3.0 : 1.0;
        EXPECT_DOUBLE_EQ(scored.Number(), trials * std::exp(1.0)) << distribution;
    }
}

TEST(GeneralRegression, IgnoresTheTrialsOfAClassification) {
    Scored scored(Replaced(Binary("<PCell parameterName='p0' beta='0.5'/>"), "linkFunction",
                           "trialsValue='9' distribution='binomial' linkFunction"));
    ASSERT_TRUE(scored.Score({{"x", "1"}}).IsOK());
    EXPECT_DOUBLE_EQ(scored.Probability("yes"), Logistic(0.5));
}

TEST(GeneralRegression, SharesOutSumsBeyondTheRangeOfExponentials) {
    Scored scored(General("functionName='classification' modelType='multinomialLogistic' "
                          "targetReferenceCategory='low'",
                          "g", "",
                          "<PCell targetCategory='mid' parameterName='p0' beta='5000'/>"
                          "<PCell targetCategory='high' parameterName='p0' beta='5000'/>"));
    ASSERT_TRUE(scored.Score({{"x", "1"}}).IsOK());
    EXPECT_EQ(scored.Probability("low"), 0.0);
    EXPECT_EQ(scored.Probability("mid"), 0.5);
}

TEST(GeneralRegression, ShowsItsTypeAndTerms) {
    Scored scored(Binary("<PCell targetCategory='no' parameterName='p0' beta='0.5'/>"));
    std::ostringstream out;
    scored.Model().Display(out);
    EXPECT_NE(out.str().find("type: generalizedLinear\nterms: 0\nterms of no: 1\nterms of yes: 0\n"), std::string::npos)
        << out.str();
}

TEST(GeneralRegression, IsASegment) {
    Scored scored(EnsembleDocument(
        Mining("sum", SegmentOf("<GeneralRegressionModel functionName='regression' modelType='generalLinear'>" +
                                Schema("y", Fields("x")) +
                                "<ParameterList><Parameter name='p0'/><Parameter name='p1'/></ParameterList>"
                                "<CovariateList><Predictor name='x'/></CovariateList><PPMatrix><PPCell value='2' "
                                "predictorName='x' parameterName='p1'/></PPMatrix><ParamMatrix><PCell "
                                "parameterName='p0' beta='1'/><PCell parameterName='p1' beta='0.5'/></ParamMatrix>"
                                "</GeneralRegressionModel>") +
                          SegmentOf(Line("x", 1.0, 2.0)))));
    ASSERT_TRUE(scored.Score({{"x", "4"}}).IsOK());
    EXPECT_EQ(scored.Number(), 18.0);
}

} // namespace
