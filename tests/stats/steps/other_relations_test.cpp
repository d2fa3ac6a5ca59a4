#include "stats/steps/argument_source.h"

#include <MCCommon_900/MCMV.h>
#include <MCMath_900/MCDistFun.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

/// What holds between the results of the discrete and the non-central distributions.
namespace {

using MCCommon_900::MCMV;
using MCMath_900::MCDistFun;
using veltrane::tests::ArgumentSource;

constexpr int kDraws = 20000;
constexpr int kDearDraws = 2000;

/// What the non-central sums leave out, at either end.
constexpr double kLeftOut = 4e-12;

/// How near a cumulative probability must be to p to be the answer of the quantile.
constexpr double kQuantileTolerance = 128 * 0x1p-52;

/// Trials and a probability whose complement is exact.
struct Binomial {
    explicit Binomial(ArgumentSource& source)
        : n(source.Whole(1, 2.1e9)), prob(std::round(source.Uniform() * 0x1p40) / 0x1p40) {
        prob = std::clamp(prob, 0x1p-40, 1 - 0x1p-40);
    }

    double AtMost(double x) const { return MCDistFun::CdfBin(x, n, prob, code); }
    double Quantile(double p) const { return MCDistFun::IdfBin(p, n, prob, code); }

    double n, prob;
    mutable long code = 0;
};

TEST(BinomialRelations, TailsMakeOne) {
    ArgumentSource source(21);
    for (int i = 0; i < kDraws; ++i) {
        const Binomial binomial(source);
        const double x = binomial.Quantile(source.Probability());
        if (x < 0 || x >= binomial.n) {
            continue;
        }
        long code = 0;
        const double more = MCDistFun::CdfBin(binomial.n - x - 1, binomial.n, 1 - binomial.prob, code);
        ASSERT_NEAR(binomial.AtMost(x) + more, 1, 1e-12) << x << " of " << binomial.n << ", " << binomial.prob;
    }
}

TEST(BinomialRelations, TheCumulativeRisesByThePointProbability) {
    ArgumentSource source(22);
    for (int i = 0; i < kDraws; ++i) {
        const Binomial binomial(source);
        const double x = binomial.Quantile(source.Probability());
        if (x < 1) {
            continue;
        }
        long code = 0;
        const double before = binomial.AtMost(x - 1);
        const double point = MCDistFun::PdfBin(x, binomial.n, binomial.prob, code);
        ASSERT_NEAR(before + point, binomial.AtMost(x), 1e-12 * binomial.AtMost(x) + 1e-307)
            << x << " of " << binomial.n;
        ASSERT_LE(before, binomial.AtMost(x));
    }
}

TEST(BinomialRelations, TheQuantileIsTheLargestValueWithinItsProbability) {
    ArgumentSource source(23);
    for (int i = 0; i < kDraws; ++i) {
        const Binomial binomial(source);
        const double p = source.Probability();
        if (p >= 1) {
            continue;
        }
        const double x = binomial.Quantile(p);
        ASSERT_TRUE(x >= -1 && x <= binomial.n) << x;
        if (std::fabs(binomial.AtMost(x) - p) <= kQuantileTolerance) {
            continue; // then the guess may have been the answer
        }
        ASSERT_LE(binomial.AtMost(x), p) << x << " of " << binomial.n << ", " << binomial.prob;
        ASSERT_GT(binomial.AtMost(x + 1), p) << x << " of " << binomial.n << ", " << binomial.prob;
    }
}

TEST(BinomialRelations, TheQuantileOfACumulativeProbabilityIsItsValue) {
    ArgumentSource source(24);
    for (int i = 0; i < kDraws; ++i) {
        Binomial binomial(source);
        binomial.n = source.Whole(1, 1e4);
        const double x = std::floor(binomial.n * source.Uniform());
        const double p = binomial.AtMost(x);
        if (p < 1e-3 || p > 0.999) {
            continue;
        }
        ASSERT_EQ(binomial.Quantile(p), x) << p << " of " << binomial.n << ", " << binomial.prob;
    }
}

TEST(HypergeometricRelations, TailsMakeOne) {
    ArgumentSource source(25);
    for (int i = 0; i < kDearDraws; ++i) {
        const double total = source.Whole(2, 2147483647), sample = source.Whole(1, total),
                     hits = source.Whole(1, total);
        const double smallest = std::max(sample + hits - total, 0.0), largest = std::min(sample, hits);
        const double mean = sample * (hits / total);
        const double spread = std::sqrt(mean * (1 - hits / total) * (1 - sample / total)) + 1;
        const double x = std::clamp(std::floor(mean + source.Between(-6, 6) * spread), smallest, largest);
        if (x >= largest) {
            continue;
        }
        // The hits outside the sample are those of the rest of the population.
        int code = 0;
        const double atMost = MCDistFun::CDFHyper(x, total, sample, hits, code);
        const double more = MCDistFun::CDFHyper(hits - x - 1, total, total - sample, hits, code);
        ASSERT_NEAR(atMost + more, 1, 1e-9) << x << " of " << total << ", " << sample << ", " << hits;
    }
}

/// A non-central cumulative function at a draw, as a function of the non-centrality.
struct NonCentral {
    explicit NonCentral(ArgumentSource& source)
        : df1(source.Log(0.1, 1e4)), df2(source.Log(0.1, 1e4)), ncp(source.Log(1e-3, 1e4)) {}

    double Chi(double x, double of) const { return MCDistFun::NonCentralCdfChi(x, df1, of); }
    double F(double x, double of) const { return MCDistFun::NonCentralCdfF(x, df1, df2, of, 1e-12); }
    double T(double x, double of) const { return MCDistFun::NonCentralCdfT(x, df1, of); }

    double df1, df2, ncp;
};

TEST(NonCentralRelations, ItIsTheCentralFunctionWithoutNonCentrality) {
    ArgumentSource source(26);
    for (int i = 0; i < kDearDraws; ++i) {
        const NonCentral of(source);
        const double x = source.Log(1e-3, 1e3);
        EXPECT_NEAR(of.Chi(x, 0), MCDistFun::CdfChi(x, of.df1), 1e-13);
        EXPECT_NEAR(of.F(x, 0), MCDistFun::CdfF(x, of.df1, of.df2), 1e-9);
        EXPECT_EQ(of.T(x, 0), MCDistFun::CdfT(x, of.df1));
        EXPECT_EQ(of.T(-x, 0), MCDistFun::CdfT(-x, of.df1));
    }
}

TEST(NonCentralRelations, ItRisesWithXAndFallsWithTheNonCentrality) {
    ArgumentSource source(27);
    for (int i = 0; i < kDearDraws; ++i) {
        const NonCentral of(source);
        const double x = source.Log(1e-3, 1e4), above = x * (1 + source.Log(1e-6, 1));
        const double more = of.ncp * (1 + source.Log(1e-6, 1));
        ASSERT_LE(of.Chi(x, of.ncp), of.Chi(above, of.ncp) + kLeftOut);
        ASSERT_GE(of.Chi(x, of.ncp), of.Chi(x, more) - kLeftOut);
        ASSERT_LE(of.F(x, of.ncp), of.F(above, of.ncp) + 1e-9);
        ASSERT_GE(of.F(x, of.ncp), of.F(x, more) - 1e-9);
        const double shift = source.Between(-30, 30), size = source.Log(1e-3, 1e3);
        for (const double t : {size, -size}) {
            ASSERT_LE(of.T(t, shift), of.T(t + 0.1, shift) + 1e-9);
            ASSERT_GE(of.T(t, shift), of.T(t, shift + 0.1) - 1e-9);
        }
    }
}

TEST(NonCentralRelations, TheSignsOfBothTurnTheTailAround) {
    ArgumentSource source(28);
    for (int i = 0; i < kDearDraws; ++i) {
        const NonCentral of(source);
        const double x = source.Log(1e-3, 1e2), shift = source.Between(-30, 30);
        ASSERT_NEAR(of.T(x, shift) + of.T(-x, -shift), 1, kLeftOut) << x << " of " << of.df1 << ", " << shift;
    }
}

TEST(NonCentralRelations, TheNonCentralityThatIsFoundHasTheProbability) {
    ArgumentSource source(29);
    int found = 0;
    for (int i = 0; i < kDearDraws; ++i) {
        const NonCentral of(source);
        const double x = source.Log(1e-1, 1e3), p = source.Uniform();
        const double ncp = MCDistFun::FindNCParamChi(x, of.df1, p, 1e-10);
        if (MCMV::IsMissing(ncp)) {
            continue;
        }
        if (ncp == 0) {
            ASSERT_GE(p, MCDistFun::CdfChi(x, of.df1) - kLeftOut);
            continue;
        }
        ++found;
        ASSERT_NEAR(of.Chi(x, ncp), p, 2e-10) << x << " of " << of.df1;
    }
    EXPECT_GT(found, kDearDraws / 10);
}

} // namespace
