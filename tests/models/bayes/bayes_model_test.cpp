// What naive Bayes models make of missing, unknown and odd values.
#include "models/bayes/small_bayes.h"
#include "models/kit/scoring.h"
#include "models/mining/small_ensemble.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace veltrane::tests;

namespace {

/// The probability of yes for likelihoods of both.
double Share(double yes, double no) {
    return yes / (yes + no);
}

TEST(NaiveBayes, LeavesOutWhatIsMissing) {
    Scored scored(kSmallBayes);
    ASSERT_TRUE(scored.Score({}).IsOK());
    EXPECT_DOUBLE_EQ(scored.Probability("yes"), 0.25);
    EXPECT_EQ(scored.Text(), "no");
    ASSERT_TRUE(scored.Score({{"c", "a"}}).IsOK());
    EXPECT_DOUBLE_EQ(scored.Probability("yes"), Share(2 * 0.4, 6));
}

TEST(NaiveBayes, LeavesOutAValueThatNoCountsAreToldOf) {
    Scored scored(kSmallBayes);
    ASSERT_TRUE(scored.Score({{"c", "z"}}).IsOK());
    EXPECT_DOUBLE_EQ(scored.Probability("yes"), 0.25);
}

TEST(NaiveBayes, TakesTheThresholdForWhatACategoryNeverHas) {
    Scored scored(kSmallBayes);
    ASSERT_TRUE(scored.Score({{"c", "b"}}).IsOK());
    EXPECT_DOUBLE_EQ(scored.Probability("yes"), Share(2 * 0.6, 6 * 0.25));
}

TEST(NaiveBayes, TakesTheThresholdForADensityBelowIt) {
    Scored scored(kSmallBayes); // the normal density at its mean is 0.1995
    ASSERT_TRUE(scored.Score({{"x", "1"}}).IsOK());
    EXPECT_DOUBLE_EQ(scored.Probability("yes"), Share(2 * 0.25, 6 * 0.5));
    ASSERT_TRUE(scored.Score({{"x", "1e300"}}).IsOK());
    EXPECT_DOUBLE_EQ(scored.Probability("yes"), 0.25);
}

TEST(NaiveBayes, TakesTheThresholdForACategoryWithoutADensity) {
    Scored scored(Replaced(kSmallBayes,
                           "<TargetValueStat value='yes'><GaussianDistribution mean='1' variance='4'/>"
                           "</TargetValueStat>",
                           ""));
    ASSERT_TRUE(scored.Score({{"x", "1"}}).IsOK());
    EXPECT_DOUBLE_EQ(scored.Probability("yes"), Share(2 * 0.25, 6 * 0.5));
}

TEST(NaiveBayes, PredictsNothingWhereNoCategoryCanBe) {
    Scored scored(Replaced(Replaced(kSmallBayes, "threshold='0.25'", "threshold='0'"),
                           "<GaussianDistribution mean='1' variance='4'/>",
                           "<UniformDistribution lower='0' upper='1'/>"));
    EXPECT_FALSE(scored.Score({{"x", "7"}}).IsOK());
    ASSERT_TRUE(scored.Score({{"x", "1.5"}}).IsOK());
    EXPECT_EQ(scored.Probability("yes"), 0.0);
    EXPECT_EQ(scored.Probability("no"), 1.0);
}

TEST(NaiveBayes, NeverPredictsACategoryThatNeverComes) {
    Scored scored(Replaced(kSmallBayes, "<TargetValueCount value='yes' count='2'/>",
                           "<TargetValueCount value='yes' count='0'/>"));
    ASSERT_TRUE(scored.Score({{"c", "b"}}).IsOK());
    EXPECT_EQ(scored.Probability("yes"), 0.0);
}

TEST(NaiveBayes, KeepsProductsOfMoreSmallNumbersThanADoubleHolds) {
    std::string inputs;
    std::string fields;
    std::string schema;
    for (int i = 0; i < 400; ++i) {
        const std::string name = "f" + std::to_string(i);
        fields += "<DataField name='" + name + "' optype='continuous' dataType='double'/>";
        schema += "<MiningField name='" + name + "'/>";
        inputs += "<BayesInput fieldName='" + name +
                  "'><TargetValueStats><TargetValueStat value='no'><GaussianDistribution mean='1' variance='0.25'/>"
                  "</TargetValueStat><TargetValueStat value='yes'><GaussianDistribution mean='-1' variance='0.25'/>"
                  "</TargetValueStat></TargetValueStats></BayesInput>";
    }
    std::string document = Replaced(kSmallBayes, "</DataDictionary>", fields + "</DataDictionary>");
    document = Replaced(document, "</MiningSchema>", schema + "</MiningSchema>");
    document = Replaced(document, "threshold='0.25'", "threshold='0'");
    Scored scored(Replaced(document, "<BayesInputs>", "<BayesInputs>" + inputs));
    Case row;
    for (int i = 0; i < 400; ++i) {
        row["f" + std::to_string(i)] = i % 2 == 0 ? "5" : "-5";
    }
    ASSERT_TRUE(scored.Score(row).IsOK()); // both are e^-20000 or so, and the same
    EXPECT_NEAR(scored.Probability("yes"), 0.25, 1e-10);
}

/// A share that is too small for a double is a logarithm all the same.
TEST(NaiveBayes, KeepsSharesThatNoDoubleHolds) {
    std::string document = Replaced(kSmallBayes, "value='no' count='3'", "value='no' count='1e-300'");
    document = Replaced(document, "value='yes' count='1'", "value='yes' count='1e-300'");
    document = Replaced(document, "<TargetValueCount value='yes' count='1.5'/>",
                        "<TargetValueCount value='no' count='1e308'/><TargetValueCount value='yes' count='1e308'/>");
    Scored scored(document);
    ASSERT_TRUE(scored.Score({{"c", "a"}}).IsOK());
    EXPECT_NEAR(scored.Probability("yes"), 0.25, 1e-12);
}

TEST(NaiveBayes, KeepsDensitiesOfIntervalsWiderThanADoubleHolds) {
    const auto uniform = [](const std::string& lower, const std::string& upper) {
        return "<UniformDistribution lower='" + lower + "' upper='" + upper + "'/>";
    };
    std::string document = Replaced(kSmallBayes, uniform("0", "2"), uniform("-1.5e308", "1.5e308"));
    document = Replaced(document, "<GaussianDistribution mean='1' variance='4'/>", uniform("-0.75e308", "0.75e308"));
    Scored scored(Replaced(document, "threshold='0.25'", "threshold='0'"));
    ASSERT_TRUE(scored.Score({{"x", "1"}}).IsOK());
    EXPECT_NEAR(scored.Probability("yes"), 2.0 * 2.0 / (2.0 * 2.0 + 6.0), 1e-12);
}

TEST(NaiveBayes, KnowsADerivedInputByTheNameOfTheDerivedField) {
    Scored scored(Replaced(kSmallBayes, "<BayesInput fieldName='c'>",
                           "<BayesInput fieldName='other'><DerivedField name='other' optype='categorical' "
                           "dataType='string'><FieldRef field='c'/></DerivedField>"));
    ASSERT_TRUE(scored.Score({{"c", "a"}}).IsOK());
    EXPECT_DOUBLE_EQ(scored.Probability("yes"), Share(2 * 0.4, 6));
}

TEST(NaiveBayes, ShowsItsInputsAndCategories) {
    Scored scored(kSmallBayes);
    std::ostringstream out;
    scored.Model().Display(out);
    EXPECT_NE(out.str().find("inputs of the model: 2\ncategories: no yes\n"), std::string::npos) << out.str();
}

TEST(NaiveBayes, IsASegment) {
    const std::string segment =
        "<NaiveBayesModel functionName='classification' threshold='0.1'>" + Schema("t", Fields("c")) +
        "<BayesInputs><BayesInput fieldName='c'><PairCounts value='a'><TargetValueCounts><TargetValueCount value='no' "
        "count='1'/><TargetValueCount value='yes' count='3'/></TargetValueCounts></PairCounts><PairCounts value='b'>"
        "<TargetValueCounts><TargetValueCount value='no' count='3'/><TargetValueCount value='yes' count='1'/>"
        "</TargetValueCounts></PairCounts></BayesInput></BayesInputs><BayesOutput fieldName='t'><TargetValueCounts>"
        "<TargetValueCount value='no' count='4'/><TargetValueCount value='yes' count='4'/></TargetValueCounts>"
        "</BayesOutput></NaiveBayesModel>";
    Scored scored(EnsembleDocument("<MiningModel functionName='classification'>" + Schema("t", Fields("c")) +
                                   "<Segmentation multipleModelMethod='average'>" + SegmentOf(segment) +
                                   "</Segmentation></MiningModel>"));
    ASSERT_TRUE(scored.Score({{"c", "a"}}).IsOK());
    EXPECT_EQ(scored.Text(), "yes");
    EXPECT_DOUBLE_EQ(scored.Probability("yes"), 0.75);
}

} // namespace
