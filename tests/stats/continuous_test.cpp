#include "support/numbers.h"

#include <MCMath_900/MCDistFun.h>

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace {

using namespace veltrane::tests;
using MCMath_900::MCDistFun;

// ---- t ----

TEST(StudentCumulative, SpecialCases) {
    EXPECT_EQ(MCDistFun::CdfT(0, 5), 0.5);
    EXPECT_EQ(MCDistFun::CdfT(1, 1), 0.75);
    EXPECT_EQ(MCDistFun::CdfT(-1, 1), 0.25);
    EXPECT_EQ(MCDistFun::CdfT(1.5, 2e8), MCDistFun::CdfStdNorm(1.5));
    EXPECT_EQ(MCDistFun::CdfT(kInfinity, 5), 1);
    EXPECT_EQ(MCDistFun::CdfT(-kInfinity, 5), 0);
}

TEST(StudentCumulative, OutsideItsDomainIsMissing) {
    for (const double df : {0.0, -1.0, kNaN}) {
        EXPECT_EQ(MCDistFun::CdfT(1, df), kMissing) << df;
        EXPECT_EQ(MCDistFun::SigT(1, df), kMissing) << df;
    }
    EXPECT_EQ(MCDistFun::CdfT(kNaN, 5), kMissing);
    EXPECT_EQ(MCDistFun::SigT(kNaN, 5), kMissing);
}

TEST(StudentCumulative, BothArrangementsMeetAtOne) {
    for (const double df : {0.3, 2.0, 30.0, 1e5}) {
        for (const double x : {1.0, -1.0}) {
            EXPECT_NEAR(MCDistFun::CdfT(std::nextafter(x, 0), df), MCDistFun::CdfT(std::nextafter(x, 2 * x), df),
                        1e-10);
        }
    }
}

TEST(StudentUpperTail, SpecialCases) {
    EXPECT_EQ(MCDistFun::SigT(0, 5), 0.5);
    EXPECT_EQ(MCDistFun::SigT(1, 1), 0.25);
    EXPECT_EQ(MCDistFun::SigT(kInfinity, 5), 0);
    EXPECT_NEAR(MCDistFun::SigT(1e200, 1) * std::numbers::pi * 1e200, 1, 1e-15);
}

TEST(StudentDensity, CodesAndSpecialCases) {
    long code = 9;
    EXPECT_EQ(MCDistFun::PdfT(1, 0, code), kMissing);
    EXPECT_EQ(code, 1);
    EXPECT_EQ(MCDistFun::PdfT(1, -2, code), kMissing);
    EXPECT_EQ(code, 1);
    EXPECT_NEAR(MCDistFun::PdfT(0, 1, code), 1 / std::numbers::pi, 1e-16);
    EXPECT_EQ(code, 0);
    EXPECT_EQ(MCDistFun::PdfT(1e10, 100, code), 0);
    EXPECT_EQ(code, 0);
}

TEST(StudentQuantile, SpecialCases) {
    EXPECT_EQ(MCDistFun::IdfT(0.5, 3), 0);
    EXPECT_EQ(MCDistFun::IdfT(0.9, 1e8), MCDistFun::IdfStdNorm(0.9));
    EXPECT_NEAR(MCDistFun::IdfT(0.75, 1), 1, 1e-12);
    EXPECT_NEAR(MCDistFun::IdfT(0.975, 10), 2.2281388519862739, 1e-13);
}

TEST(StudentQuantile, OutsideItsDomainIsMissing) {
    for (const double p : {0.0, 1.0, -0.5, 2.0, kNaN}) {
        EXPECT_EQ(MCDistFun::IdfT(p, 5), kMissing) << p;
    }
    EXPECT_EQ(MCDistFun::IdfT(0.3, 0), kMissing);
    EXPECT_EQ(MCDistFun::IdfT(0.3, -3), kMissing);
}

// ---- F ----

TEST(FCumulative, SpecialCases) {
    EXPECT_EQ(MCDistFun::CdfF(0, 3, 4), 0);
    EXPECT_EQ(MCDistFun::CdfF(-2, 3, 4), 0);
    EXPECT_EQ(MCDistFun::CdfF(kInfinity, 3, 4), 1);
    EXPECT_EQ(MCDistFun::SigF(0, 3, 4), 1);
    EXPECT_EQ(MCDistFun::SigF(-2, 3, 4), 1);
    EXPECT_EQ(MCDistFun::SigF(kInfinity, 3, 4), 0);
    EXPECT_EQ(MCDistFun::CdfF(1, 1, 1), 0.5);
}

TEST(FCumulative, OneDegreeIsTheSquareOfAT) {
    for (const double x : {0.3, 1.0, 4.0}) {
        for (const double df : {1.0, 7.5, 3e8}) {
            EXPECT_NEAR(MCDistFun::CdfF(x, 1, df), 2 * MCDistFun::CdfT(std::sqrt(x), df) - 1, 1e-14);
        }
    }
}

TEST(FFunctions, OutsideTheirDomainAreMissing) {
    for (const double df : {0.0, -1.0, kNaN}) {
        EXPECT_EQ(MCDistFun::CdfF(1, df, 3), kMissing) << df;
        EXPECT_EQ(MCDistFun::CdfF(1, 3, df), kMissing) << df;
        EXPECT_EQ(MCDistFun::SigF(1, df, 3), kMissing) << df;
        EXPECT_EQ(MCDistFun::SigF(1, 3, df), kMissing) << df;
        EXPECT_EQ(MCDistFun::IdfF(0.5, df, 3), kMissing) << df;
        EXPECT_EQ(MCDistFun::IdfF(0.5, 3, df), kMissing) << df;
    }
    for (const double p : {-0.1, 1.0, kNaN}) {
        EXPECT_EQ(MCDistFun::IdfF(p, 2, 3), kMissing) << p;
    }
}

TEST(FQuantile, SpecialCases) {
    EXPECT_EQ(MCDistFun::IdfF(0, 2, 3), 0);
    EXPECT_EQ(MCDistFun::IdfF(0, 1, 3), 0);
    const double t = MCDistFun::IdfT(0.95, 7);
    EXPECT_EQ(MCDistFun::IdfF(2 * 0.95 - 1, 1, 7), t * t);
}

// ---- chi-square and gamma ----

TEST(ChiSquare, SpecialCases) {
    EXPECT_EQ(MCDistFun::CdfChi(0, 1), 0);
    EXPECT_EQ(MCDistFun::SigChi(0, 1), 1);
    EXPECT_EQ(MCDistFun::CdfChi(-3, 1), 0);
    EXPECT_EQ(MCDistFun::SigChi(-3, 1), 1);
    EXPECT_EQ(MCDistFun::CdfChi(kInfinity, 3), 1);
    EXPECT_EQ(MCDistFun::SigChi(kInfinity, 3), 0);
    EXPECT_NEAR(MCDistFun::SigChi(3, 2), std::exp(-1.5), 1e-16);
    EXPECT_EQ(MCDistFun::SigChi(1417, 2), 0);
    EXPECT_EQ(MCDistFun::CdfChi(1417, 2), 1);
}

TEST(ChiSquare, OutsideItsDomainIsMissing) {
    EXPECT_EQ(MCDistFun::CdfChi(1, 0), kMissing);
    for (const double df : {0.0, -1.0, kNaN}) {
        EXPECT_EQ(MCDistFun::CdfChi(0, df), kMissing) << df;
        EXPECT_EQ(MCDistFun::SigChi(1, df), kMissing) << df;
        EXPECT_EQ(MCDistFun::IdfChi(0.5, df), kMissing) << df;
    }
    EXPECT_EQ(MCDistFun::CdfChi(kNaN, 3), kMissing);
}

TEST(ChiSquare, TheSeriesAndTheFractionMeet) {
    for (const double df : {0.5, 3.0, 40.0, 2000.0}) {
        EXPECT_NEAR(MCDistFun::CdfChi(std::nextafter(df, 0), df), MCDistFun::CdfChi(std::nextafter(df, 2 * df), df),
                    1e-13);
    }
}

TEST(ChiSquare, VeryFewDegreesLeaveLittleAboveASmallValue) {
    constexpr double kUpper = 2.1938393429e-10; // E1(1) half the degrees
    EXPECT_NEAR(MCDistFun::SigChi(2, 2e-9), kUpper, 1e-18);
    EXPECT_NEAR(1 - MCDistFun::CdfChi(2, 2e-9), kUpper, 1e-15);
}

TEST(ChiSquare, ApproximationsTakeOverForHugeDegrees) {
    for (const double df : {1e9, 1e12, 1e15}) {
        EXPECT_NEAR(MCDistFun::CdfChi(df, df), 0.5, 1e-5) << df;
        EXPECT_NEAR(MCDistFun::CdfChi(df, df) + MCDistFun::SigChi(df, df), 1, 1e-9) << df;
        EXPECT_NEAR(MCDistFun::CdfChi(df + 3 * std::sqrt(2 * df), df), MCDistFun::CdfStdNorm(3), 1e-4) << df;
        EXPECT_NEAR(MCDistFun::SigChi(df + 3 * std::sqrt(2 * df), df), MCDistFun::CdfStdNorm(-3), 1e-4) << df;
    }
}

TEST(ChiSquareQuantile, SpecialCases) {
    EXPECT_EQ(MCDistFun::IdfChi(0, 3), 0);
    EXPECT_EQ(MCDistFun::IdfChi(1, 3), kMissing);
    EXPECT_EQ(MCDistFun::IdfChi(-0.1, 3), kMissing);
    EXPECT_EQ(MCDistFun::IdfChi(kNaN, 3), kMissing);
    EXPECT_NEAR(MCDistFun::IdfChi(0.95, 3), 7.814727903251179, 1e-13);
}

TEST(ChiSquareQuantile, ATinyStartIsTheAnswer) {
    // The leading term of the cumulative function: (x / 2)^(df / 2) / Gamma(df / 2 + 1) = p.
    const double quantile = MCDistFun::IdfChi(1e-8, 1);
    EXPECT_LT(quantile, 5e-7);
    EXPECT_NEAR(quantile / (1e-16 * std::numbers::pi / 2), 1, 1e-12);
    EXPECT_EQ(MCDistFun::IdfChi(0.5, 1e-10), 0);
}

TEST(GammaDistribution, SpecialCases) {
    EXPECT_EQ(MCDistFun::CdfGam(0, 2, 3), 0);
    EXPECT_EQ(MCDistFun::CdfGam(-1, 2, 3), 0);
    EXPECT_EQ(MCDistFun::CdfGam(0, 1, 3), 0);
    EXPECT_EQ(MCDistFun::CdfGam(2, 1, 3), -std::expm1(-6.0));
    EXPECT_EQ(MCDistFun::CdfGam(300, 1, 3), 1);
    EXPECT_EQ(MCDistFun::IdfGam(0, 2, 3), 0);
    EXPECT_EQ(MCDistFun::IdfGam(0, 0, 3), 0);
    EXPECT_EQ(MCDistFun::IdfGam(0.3, 2, 3), MCDistFun::IdfChi(0.3, 4) * 0.5 / 3);
}

TEST(GammaDistribution, OutsideItsDomainIsMissing) {
    for (const double bad : {0.0, -1.0, kNaN}) {
        EXPECT_EQ(MCDistFun::CdfGam(1, bad, 1), kMissing) << bad;
        EXPECT_EQ(MCDistFun::CdfGam(1, 1, bad), kMissing) << bad;
        EXPECT_EQ(MCDistFun::PdfGamma(1, bad, 1), kMissing) << bad;
        EXPECT_EQ(MCDistFun::PdfGamma(1, 1, bad), kMissing) << bad;
        EXPECT_EQ(MCDistFun::IdfGam(0.5, 1, bad), kMissing) << bad;
    }
    EXPECT_EQ(MCDistFun::IdfGam(0.5, 0, 1), kMissing);
    EXPECT_EQ(MCDistFun::IdfGam(0.5, -1, 1), kMissing);
    EXPECT_EQ(MCDistFun::IdfGam(1, 1, 1), kMissing);
    EXPECT_EQ(MCDistFun::IdfGam(-0.1, 1, 1), kMissing);
}

TEST(GammaDensity, SpecialCases) {
    EXPECT_EQ(MCDistFun::PdfGamma(-1, 2, 3), 0);
    EXPECT_EQ(MCDistFun::PdfGamma(-1, 0.5, 3), 0);
    EXPECT_EQ(MCDistFun::PdfGamma(0, 2, 3), 0);
    EXPECT_EQ(MCDistFun::PdfGamma(0, 1, 3), 3);
    EXPECT_EQ(MCDistFun::PdfGamma(0, 0.5, 3), kMissing);
    EXPECT_EQ(MCDistFun::PdfGamma(1000, 2, 3), 0);
    EXPECT_EQ(MCDistFun::PdfGamma(kInfinity, 2, 3), 0);
    EXPECT_EQ(MCDistFun::PdfGamma(1e-320, 1e-5, 1), kMissing);
    EXPECT_NEAR(MCDistFun::PdfGamma(2, 1, 3), 3 * std::exp(-6.0), 1e-17);
}

// ---- beta ----

TEST(BetaCumulative, SpecialCases) {
    EXPECT_EQ(MCDistFun::CdfBeta(0.5, 1, 1), 0.5);
    EXPECT_EQ(MCDistFun::CdfBeta(0, 2, 3), 0);
    EXPECT_EQ(MCDistFun::CdfBeta(-1, 2, 3), 0);
    EXPECT_EQ(MCDistFun::CdfBeta(1, 2, 3), 1);
    EXPECT_EQ(MCDistFun::CdfBeta(2, 2, 3), 1);
    EXPECT_NEAR(MCDistFun::CdfBeta(0.3, 1, 3), 1 - std::pow(0.7, 3), 1e-15);
    EXPECT_NEAR(MCDistFun::CdfBeta(0.3, 3, 1), std::pow(0.3, 3), 1e-15);
    EXPECT_EQ(MCDistFun::CdfBeta(0.9, 1, 1000), 1);
    EXPECT_EQ(MCDistFun::CdfBeta(0.1, 1000, 1), 0);
    EXPECT_EQ(MCDistFun::CdfBeta(0.1, 1000, 2), 0);
}

TEST(BetaCumulative, OutsideItsDomainIsMissing) {
    for (const double bad : {0.0, -1.0, kNaN}) {
        EXPECT_EQ(MCDistFun::CdfBeta(0.5, bad, 1), kMissing) << bad;
        EXPECT_EQ(MCDistFun::CdfBeta(0.5, 1, bad), kMissing) << bad;
    }
    EXPECT_EQ(MCDistFun::CdfBeta(kNaN, 2, 3), kMissing);
}

TEST(BetaCumulative, ASeriesThatDoesntFinishGivesWayToTheFraction) {
    // With the argument so near 1 the series of the complement would need more than its 10000 terms.
    EXPECT_NEAR(MCDistFun::CdfBeta(1e-20, 0.5, 3) / (1.875e-10), 1, 1e-13);
}

// Near the mean of a distribution this narrow the fraction needs more than its 10000 rounds. The normal approximation
// that stands in has weights of its own: with the published ones the first result would be the normal tail at -0.01.
TEST(KeptBetaCumulative, TheNormalApproximationOfHugeParameters) {
    const double x = 0.5 - 0.01 * 0.5 / std::sqrt(2e13);
    EXPECT_NEAR(MCDistFun::CdfBeta(x, 1e13, 1e13), MCDistFun::CdfStdNorm(-0.01 * std::sqrt(1 + 0.22741127776021886)),
                1e-6);
    EXPECT_NEAR(MCDistFun::CdfBeta(0.5, 1e13, 1e13), 0.5, 1e-6);
}

TEST(BetaQuantile, SpecialCases) {
    EXPECT_EQ(MCDistFun::IdfBeta(0, 2, 3), 0);
    EXPECT_EQ(MCDistFun::IdfBeta(1, 2, 3), 1);
    EXPECT_EQ(MCDistFun::IdfBeta(0.5, 2, 2), 0.5);
    EXPECT_NEAR(MCDistFun::IdfBeta(0.2, 0.5, 0.5), std::pow(std::sin(0.1 * std::numbers::pi), 2), 1e-16);
    EXPECT_NEAR(MCDistFun::IdfBeta(0.3, 1, 3), 1 - std::pow(0.7, 1.0 / 3), 1e-16);
    EXPECT_NEAR(MCDistFun::IdfBeta(0.3, 3, 1), std::pow(0.3, 1.0 / 3), 1e-16);
    EXPECT_EQ(MCDistFun::IdfBeta(0.3, 1e-300, 1), 0);
    EXPECT_EQ(MCDistFun::IdfBeta(0.3, 1e21, 0.5), 1);
}

TEST(KeptBetaQuantile, AFailureIsMinusOne) {
    EXPECT_EQ(MCDistFun::IdfBeta(0.5, -1, 2), -1);
    EXPECT_EQ(MCDistFun::IdfBeta(0.5, 2, 0), -1);
    EXPECT_EQ(MCDistFun::IdfBeta(-0.1, 2, 3), -1);
    EXPECT_EQ(MCDistFun::IdfBeta(1.1, 2, 3), -1);
    EXPECT_EQ(MCDistFun::IdfBeta(kNaN, 2, 3), -1);
    EXPECT_EQ(MCDistFun::IdfBeta(0, -1, 2), 0);
    EXPECT_EQ(MCDistFun::IdfBeta(1, -1, 2), 1);
}

// The Newton steps end at a length of 1e-10. The start that they end from is the quantile itself, however small.
TEST(BetaQuantile, HasItsDigitsBelowTheShortestStep) {
    const auto leadingTerm = [](double p, double a, double b) {
        return std::exp((std::log(p * a) + std::lgamma(a) + std::lgamma(b) - std::lgamma(a + b)) / a);
    };
    for (const double p : {1e-10, 1e-30, 1e-100}) {
        EXPECT_NEAR(MCDistFun::IdfBeta(p, 0.5, 3) / leadingTerm(p, 0.5, 3), 1, 1e-12) << p;
        EXPECT_NEAR(MCDistFun::IdfBeta(p, 2.5, 0.2) / leadingTerm(p, 2.5, 0.2), 1, 2 * std::pow(p, 0.4) + 1e-12) << p;
    }
    EXPECT_NEAR(MCDistFun::IdfBeta(0.5, 0.01, 2) / leadingTerm(0.5, 0.01, 2), 1, 1e-11);
}

TEST(StudentQuantile, HasItsDigitsInTheFarTailAndNearTheMedian) {
    for (const double p : {1e-5, 1e-50, 1e-150}) {
        const double tail = MCDistFun::SigT(-MCDistFun::IdfT(p, 1.5), 1.5);
        EXPECT_NEAR(tail / p, 1, 1e-12) << p;
    }
    long code = 0;
    for (const double distance : {0x1p-10, 0x1p-26, 0x1p-50}) {
        EXPECT_NEAR(MCDistFun::IdfT(0.5 + distance, 1e4) * MCDistFun::PdfT(0, 1e4, code) / distance, 1,
                    2 * distance * distance * std::numbers::pi + 1e-12)
            << distance;
    }
}

// By the far tail of t, whose probability is exact where that of the near one is rounded to a quarter of its digits.
TEST(FQuantile, OneDegreeHasItsDigitsNearOne) {
    EXPECT_NEAR(MCDistFun::IdfF(0x1.fffffffffffffp-1, 1, 64.30125837750101) /
                    std::pow(MCDistFun::IdfT(0x1p-54, 64.30125837750101), 2),
                1, 1e-14);
    EXPECT_EQ(MCDistFun::IdfF(0x1.fffffffffffffp-1, 1, 1e9), std::pow(MCDistFun::IdfStdNorm(0x1p-54), 2));
}

TEST(FQuantile, HasItsDigitsAtBothEnds) {
    for (const double p : {1e-200, 1e-20, 1e-3, 0.999}) {
        const double x = MCDistFun::IdfF(p, 3, 0.1);
        EXPECT_NEAR(MCDistFun::CdfF(x, 3, 0.1) / p, 1, 1e-12) << p;
    }
}

// A start below 5e-7 is returned at once: with the terms after the leading one.
TEST(ChiSquareQuantile, HasItsDigitsBelowTheCorrections) {
    for (const double p : {1e-7, 1.5e-7, 1e-20, 1e-200}) {
        const double quantile = MCDistFun::IdfChi(p, 2);
        EXPECT_NEAR(quantile / (-2 * std::log1p(-p)), 1, 1e-13) << p;
    }
}

} // namespace
