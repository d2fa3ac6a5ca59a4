// What baselines make of cases where the standard leaves room, and what hosts get to know.
#include "baseline/distribution.h"
#include "models/baseline/small_baseline.h"
#include "models/kit/scoring.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>

using namespace veltrane::tests;
using veltrane_baseline::Distribution;

namespace {

TEST(Baseline, HasMeanAndVarianceOfItsDistribution) {
    EXPECT_EQ(Distribution::Gaussian(3, 4).Standardized(7), 2);
    EXPECT_EQ(Distribution::Any(3, 4).Standardized(-1), -2);
    EXPECT_EQ(Distribution::Poisson(4).Standardized(10), 3);
    EXPECT_NEAR(Distribution::Uniform(-6, 6).Standardized(6), std::sqrt(3.0), 1e-15);
}

TEST(Baseline, HasNoDensityWhereNothingCanBe) {
    EXPECT_TRUE(std::isinf(Distribution::Poisson(4).LogDensity(1.5)));
    EXPECT_TRUE(std::isinf(Distribution::Poisson(4).LogDensity(-1)));
    EXPECT_NEAR(Distribution::Poisson(4).LogDensity(0), -4, 1e-13);
    EXPECT_TRUE(std::isinf(Distribution::Uniform(0, 2).LogDensity(2.1)));
    EXPECT_NEAR(Distribution::Uniform(0, 2).LogDensity(2), -std::log(2.0), 1e-15);
    EXPECT_TRUE(std::isinf(Distribution::Any(0, 2).LogDensity(0)));
}

/// In single precision of the square no density is left, but its logarithm is.
TEST(Baseline, TellsDensitiesFarOut) {
    EXPECT_NEAR(Distribution::Gaussian(0, 1).LogDensity(1000), -500000.918938533204, 1e-8);
}

/// The digits of the difference are those of the means; both logarithms have none of them.
TEST(Baseline, ComparesDensitiesFarOut) {
    const Distribution gaussian = Distribution::Gaussian(1, 4);
    EXPECT_EQ(Distribution::Gaussian(0, 4).LogRatio(gaussian, 1e9), -249999999.875);
    EXPECT_EQ(Distribution::Gaussian(3, 16).LogRatio(gaussian, 1e170), std::numeric_limits<double>::infinity());
    EXPECT_NEAR(Distribution::Gaussian(3, 16).LogRatio(gaussian, 5), 1.875 - std::log(2.0), 1e-15);
    const Distribution poisson = Distribution::Poisson(1e10);
    EXPECT_NEAR(Distribution::Poisson(1.5e10).LogRatio(poisson, 1e10), -945348918.918356, 1e-5);
    EXPECT_EQ(Distribution::Poisson(1e10).LogRatio(poisson, 3e10), 0);
    EXPECT_NEAR(Distribution::Poisson(1e10 + 1).LogRatio(poisson, 1e10), -5e-11, 1e-15);
}

/// A width that no double holds has a half.
TEST(Baseline, HasUniformDistributionsOfAnyWidth) {
    const Distribution wide = Distribution::Uniform(-1e308, 1e308);
    EXPECT_NEAR(wide.Standardized(1e308), std::sqrt(3.0), 1e-15);
    EXPECT_NEAR(wide.LogDensity(0), -709.88935582272602, 1e-12);
    EXPECT_EQ(wide.mean, 0);
}

/// Neither a gain nor a sum that no double holds is taken into account, and none is a prediction.
TEST(Baseline, LeavesOutPartsBeyondAllDoubles) {
    const std::string document =
        BaselineDocument("field='x' testStatistic='CUSUM' weightField='w'>"
                         "<Baseline><GaussianDistribution mean='0' variance='1'/></Baseline>"
                         "<Alternate><GaussianDistribution mean='1' variance='1'/></Alternate>");
    Scored scored(document);
    EXPECT_TRUE(scored.Score({{"x", "2.5"}, {"w", "1"}}).IsOK());
    EXPECT_EQ(scored.Number(), 2);
    EXPECT_FALSE(scored.Score({{"x", "1e300"}, {"w", "1e300"}}).IsOK());
    EXPECT_TRUE(scored.Score({{"x", "2.5"}, {"w", "5e307"}}).IsOK());
    EXPECT_EQ(scored.Number(), 1e308);
    EXPECT_FALSE(scored.Score({{"x", "2.5"}, {"w", "5e307"}}).IsOK());
    EXPECT_FALSE(scored.Score({{"x", "-1e300"}, {"w", "1e300"}}).IsOK());
    EXPECT_TRUE(scored.Score({{"x", "0.5"}, {"w", "1"}}).IsOK());
    EXPECT_EQ(scored.Number(), 1e308);
}

/// A sum from which the great weight was taken away would have lost the small ones.
TEST(Baseline, ForgetsGreatWeightsThatLeaveTheWindow) {
    Scored scored(Replaced(kSmallTable, "normalizationScheme='Independent'", "windowSize='2' weightField='w'"));
    scored.Score({{"c", "u"}, {"d", "a"}, {"w", "1e17"}});
    EXPECT_NEAR(scored.Number(), 0.8, 1e-15);
    scored.Score({{"c", "u"}, {"d", "a"}, {"w", "3"}});
    scored.Score({{"c", "v"}, {"d", "a"}, {"w", "4"}});
    EXPECT_NEAR(scored.Number(), 24.0 / 25.0, 1e-15);
}

TEST(Baseline, ComparesCountsWhoseSquaresNoDoubleHolds) {
    for (const auto* size : {"e200", "e-320"}) {
        std::string document = Replaced(kSmallTable, "count='4'", std::string("count='4") + size + "'");
        document = Replaced(document, "count='3'", std::string("count='3") + size + "'");
        Scored scored(Replaced(document, "normalizationScheme='Independent'", "weightField='w'"));
        for (const auto* weight : {"1e200", "1e-200"}) {
            scored.Score({{"c", "u"}, {"d", "a"}, {"w", weight}});
            EXPECT_NEAR(scored.Number(), 0.8, 1e-4) << size << " " << weight;
        }
    }
}

/// What stands in the place of a missing value is mentioned by the schema, not by the table.
TEST(Baseline, CountsReplacementsThatTheTableDoesNotMentionAsOneValue) {
    const std::string document =
        Replaced(kSmallTable, "<MiningField name='d'/>", "<MiningField name='d' missingValueReplacement='b'/>");
    Scored scored(document);
    scored.Score({{"c", "u"}, {"d", "a"}});
    scored.Score({{"c", "u"}});
    scored.Score({{"c", "u"}, {"d", "elsewhere"}});
    EXPECT_NEAR(scored.Number(), 4 / (5 * std::sqrt(5.0)), 1e-15); // once a, twice another one
}

/// A share of a table is what is left when its counts are beyond 1e154 as well.
TEST(Baseline, TestsCountsWhoseSquaresNoDoubleHolds) {
    const std::string document =
        Replaced(Replaced(kSmallTable, "scalarProduct", "chiSquareDistribution"), "count='3'", "count='4'");
    Scored scored(Replaced(document, "normalizationScheme='Independent'", "weightField='w'"));
    scored.Score({{"c", "u"}, {"d", "a"}, {"w", "4e307"}});
    EXPECT_EQ(scored.Number(), 0);
    EXPECT_TRUE(scored.Score({{"c", "v"}, {"d", "a"}, {"w", "4e307"}}).IsOK());
    EXPECT_EQ(scored.Number(), 1);
    EXPECT_FALSE(scored.Score({{"c", "v"}, {"d", "a"}, {"w", "1.5e308"}}).IsOK());
    EXPECT_EQ(scored.Number("p"), kMissing);
}

TEST(Baseline, LeavesOutCasesThatLackAValue) {
    Scored scored(Replaced(kSmallSum, " weightField='w'", ""));
    EXPECT_TRUE(scored.Score({{"x", "5"}}).IsOK());
    const double first = scored.Number();
    EXPECT_EQ(scored.Score({}).GetErrorCode(), kNoPrediction);
    EXPECT_EQ(scored.Number("p"), kMissing);
    scored.Score({{"x", "-9"}}); // can't be under the alternate
    EXPECT_EQ(scored.Number(), 0.5);
    scored.Score({{"x", "5"}});
    EXPECT_EQ(scored.Number(), first);
}

TEST(Baseline, LeavesOutCasesThatCannotBeUnderIt) {
    const std::string document =
        BaselineDocument("field='x' testStatistic='CUSUM'>"
                         "<Baseline><UniformDistribution lower='0' upper='1'/></Baseline>"
                         "<Alternate><UniformDistribution lower='0.5' upper='2'/></Alternate>");
    Scored scored(document);
    EXPECT_TRUE(scored.Score({{"x", "0.75"}}).IsOK());
    EXPECT_EQ(scored.Number(), 0);
    EXPECT_FALSE(scored.Score({{"x", "1.5"}}).IsOK());
    EXPECT_TRUE(scored.Score({{"x", "0.75"}}).IsOK());
}

TEST(Baseline, LeavesOutCasesOfNegativeWeight) {
    Scored scored(kSmallSum);
    EXPECT_TRUE(scored.Score({{"x", "5"}, {"w", "2"}}).IsOK());
    const double first = scored.Number();
    EXPECT_FALSE(scored.Score({{"x", "5"}, {"w", "-1"}}).IsOK());
    EXPECT_FALSE(scored.Score({{"x", "5"}}).IsOK());
    EXPECT_TRUE(scored.Score({{"x", "5"}, {"w", "0"}}).IsOK());
    EXPECT_EQ(scored.Number(), first);
}

TEST(Baseline, CountsACaseByItsWeight) {
    Scored once(kSmallSum);
    once.Score({{"x", "5"}, {"w", "2"}});
    Scored twice(kSmallSum);
    twice.Score({{"x", "5"}, {"w", "1"}});
    twice.Score({{"x", "5"}, {"w", "1"}});
    EXPECT_NEAR(once.Number(), twice.Number(), 1e-15);
}

TEST(Baseline, TakesTheDirectionOfCounts) {
    Scored scored(kSmallTable);
    scored.Score({{"c", "u"}, {"d", "a"}});
    EXPECT_NEAR(scored.Number(), 0.8, 1e-15); // 4 of the length 5
    scored.Score({{"c", "v"}, {"d", "a"}});
    EXPECT_NEAR(scored.Number(), 7 / (5 * std::sqrt(2.0)), 1e-15);
    scored.Score({{"c", "v"}, {"d", "elsewhere"}}); // not in the baseline
    EXPECT_NEAR(scored.Number(), 7 / (5 * std::sqrt(3.0)), 1e-15);
}

TEST(Baseline, NeedsTwoValuesForATestOfIndependence) {
    Scored scored(Replaced(Replaced(kSmallTable, "scalarProduct", "chiSquareIndependence"),
                           "<FieldValue field='c' value='v'><FieldValueCount field='d' value='a' count='3'/>"
                           "</FieldValue>",
                           ""));
    EXPECT_FALSE(scored.Score({{"c", "u"}, {"d", "a"}}).IsOK());
    EXPECT_FALSE(scored.Score({{"c", "v"}, {"d", "a"}}).IsOK());
    EXPECT_TRUE(scored.Score({{"c", "v"}, {"d", "b"}}).IsOK());
}

/// A model in another thread or of another host knows nothing of this one's cases.
TEST(Baseline, RemembersTheCasesOfOneModel) {
    Scored first(kSmallTable);
    Scored second(kSmallTable);
    first.Score({{"c", "v"}, {"d", "a"}});
    second.Score({{"c", "u"}, {"d", "a"}});
    EXPECT_NEAR(second.Number(), 0.8, 1e-15);
}

TEST(Baseline, HoldsTheTargetsAdjustment) {
    Scored scored(
        Replaced(kSmallTable, " <Output>", "<Targets><Target field='y' rescaleFactor='10'/></Targets><Output>"));
    scored.Score({{"c", "u"}, {"d", "a"}});
    EXPECT_NEAR(scored.Number(), 8, 1e-14);
}

TEST(Baseline, ShowsItself) {
    const auto model = ReadModel(kSmallTable);
    std::ostringstream out;
    model->Display(out);
    EXPECT_EQ(out.str(), "BaselineModel\nfunction: regression\ntarget: y\ninputs: x c d w\ntest: scalarProduct\n");
}

} // namespace
