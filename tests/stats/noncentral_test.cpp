#include "support/numbers.h"

#include <MCMath_900/MCDistFun.h>

#include <gtest/gtest.h>

namespace {

using namespace veltrane::tests;
using MCMath_900::MCDistFun;

TEST(NonCentral, WithoutNonCentralityIsCentral) {
    for (const double x : {0.1, 1.0, 7.5, 40.0}) {
        for (const double df : {0.5, 3.0, 20.0}) {
            EXPECT_EQ(MCDistFun::NonCentralCdfChi(x, df, 0), MCDistFun::CdfChi(x, df));
            EXPECT_NEAR(MCDistFun::NonCentralCdfF(x, df, 7, 0, 1e-12), MCDistFun::CdfF(x, df, 7), 1e-15);
            EXPECT_EQ(MCDistFun::NonCentralCdfT(x, df, 0), MCDistFun::CdfT(x, df));
            long code = 9, centralCode = 9;
            EXPECT_EQ(MCDistFun::NonCentralPdfT(x, df, 0, code), MCDistFun::PdfT(x, df, centralCode));
            EXPECT_EQ(code, 0);
        }
    }
}

TEST(NonCentralChiSquare, SpecialCases) {
    EXPECT_EQ(MCDistFun::NonCentralCdfChi(0, 3, 5), 0);
    EXPECT_EQ(MCDistFun::NonCentralCdfChi(-1, 3, 5), 0);
    EXPECT_EQ(MCDistFun::NonCentralCdfChi(kInfinity, 3, 5), 1);
    EXPECT_EQ(MCDistFun::NonCentralCdfChi(1, 0, 5), kMissing);
    EXPECT_EQ(MCDistFun::NonCentralCdfChi(1, -1, 5), kMissing);
    EXPECT_EQ(MCDistFun::NonCentralCdfChi(1, 3, -1), kMissing);
    EXPECT_EQ(MCDistFun::NonCentralCdfChi(kNaN, 3, 1), kMissing);
    EXPECT_EQ(MCDistFun::NonCentralCdfChi(1, 3, kNaN), kMissing);
    EXPECT_EQ(MCDistFun::NonCentralCdfChi(1, 3, kInfinity), kMissing);
}

TEST(NonCentralChiSquare, NotConvergingIsMissing) {
    EXPECT_EQ(MCDistFun::NonCentralCdfChi(1e9, 3, 1e9), kMissing);
}

TEST(NonCentralF, SpecialCases) {
    EXPECT_EQ(MCDistFun::NonCentralCdfF(0, 3, 4, 5, 1e-12), 0);
    EXPECT_EQ(MCDistFun::NonCentralCdfF(-1, 3, 4, 5, 1e-12), 0);
    EXPECT_EQ(MCDistFun::NonCentralCdfF(kInfinity, 3, 4, 5, 1e-12), 1);
    for (const double bad : {0.0, -1.0, kNaN}) {
        EXPECT_EQ(MCDistFun::NonCentralCdfF(1, bad, 4, 5, 1e-12), kMissing) << bad;
        EXPECT_EQ(MCDistFun::NonCentralCdfF(1, 3, bad, 5, 1e-12), kMissing) << bad;
    }
    EXPECT_EQ(MCDistFun::NonCentralCdfF(1, 3, 4, -1, 1e-12), kMissing);
    EXPECT_EQ(MCDistFun::NonCentralCdfF(1, 3, 4, kNaN, 1e-12), kMissing);
}

TEST(NonCentralF, StopsAtTheToleranceOfTheCaller) {
    const double exact = MCDistFun::NonCentralCdfF(3, 4, 10, 20, 1e-14);
    const double rough = MCDistFun::NonCentralCdfF(3, 4, 10, 20, 1e-3);
    EXPECT_NE(rough, exact);
    EXPECT_NEAR(rough, exact, 1e-3);
    EXPECT_EQ(MCDistFun::NonCentralCdfF(3, 4, 10, 20, -1), kMissing);
}

TEST(NonCentralT, SpecialCases) {
    EXPECT_EQ(MCDistFun::NonCentralCdfT(0, 5, 1.5), MCDistFun::CdfStdNorm(-1.5));
    EXPECT_EQ(MCDistFun::NonCentralCdfT(0, 5, -1.5), MCDistFun::CdfStdNorm(1.5));
    EXPECT_EQ(MCDistFun::NonCentralCdfT(1.4e154, 5, 1.5), 1);
    EXPECT_EQ(MCDistFun::NonCentralCdfT(-1.4e154, 5, 1.5), 0);
    EXPECT_EQ(MCDistFun::NonCentralCdfT(kInfinity, 5, 1.5), 1);
    for (const double bad : {0.0, -1.0, kNaN}) {
        EXPECT_EQ(MCDistFun::NonCentralCdfT(1, bad, 1.5), kMissing) << bad;
    }
    EXPECT_EQ(MCDistFun::NonCentralCdfT(kNaN, 5, 1.5), kMissing);
    EXPECT_EQ(MCDistFun::NonCentralCdfT(1, 5, kInfinity), kMissing);
}

TEST(NonCentralT, ANegativeXIsTheMirrorImage) {
    for (const double x : {0.3, 2.0, 5.0}) {
        for (const double ncp : {-2.0, 1.5}) {
            EXPECT_NEAR(MCDistFun::NonCentralCdfT(-x, 8, ncp), 1 - MCDistFun::NonCentralCdfT(x, 8, -ncp), 1e-15);
        }
    }
}

TEST(NonCentralT, NotConvergingIsMissing) {
    EXPECT_EQ(MCDistFun::NonCentralCdfT(1e5, 5, 1e5), kMissing);
    EXPECT_EQ(MCDistFun::NonCentralCdfT(1, 5, 1e200), kMissing);
}

TEST(NonCentralTDensity, CodesAndSpecialCases) {
    long code = 9;
    EXPECT_EQ(MCDistFun::NonCentralPdfT(1, 0, 1, code), kMissing);
    EXPECT_EQ(code, 1);
    EXPECT_EQ(MCDistFun::NonCentralPdfT(kNaN, 3, 1, code), kMissing);
    EXPECT_EQ(code, 1);
    EXPECT_EQ(MCDistFun::NonCentralPdfT(1, 3, kNaN, code), kMissing);
    EXPECT_EQ(code, 1);
    EXPECT_EQ(MCDistFun::NonCentralPdfT(kInfinity, 3, 1, code), 0);
    EXPECT_EQ(code, 0);
    const double central = MCDistFun::PdfT(0, 3, code);
    EXPECT_NEAR(MCDistFun::NonCentralPdfT(0, 3, 1.5, code), central * 0.32465246735834974, 1e-15);
    EXPECT_EQ(code, 0);
}

TEST(NonCentralTDensity, NotConvergingIsCodeTwo) {
    long code = 9;
    EXPECT_EQ(MCDistFun::NonCentralPdfT(1e5, 3, 1e5, code), kMissing);
    EXPECT_EQ(code, 2);
}

TEST(NonCentralTDensity, WhatCancelsToNothingIsZero) {
    long code = 9;
    EXPECT_EQ(MCDistFun::NonCentralPdfT(-8, 20, 8, code), 0);
    EXPECT_EQ(code, 0);
}

TEST(FindNonCentrality, OutsideItsDomainIsMissing) {
    for (const double df : {0.0, -1.0, kNaN}) {
        EXPECT_EQ(MCDistFun::FindNCParamChi(1, df, 0.5, 1e-8), kMissing) << df;
        EXPECT_EQ(MCDistFun::FindNCParamF(1, df, 4, 0.5, 1e-8), kMissing) << df;
        EXPECT_EQ(MCDistFun::FindNCParamF(1, 3, df, 0.5, 1e-8), kMissing) << df;
        EXPECT_EQ(MCDistFun::FindNCParamT(1, df, 0.5, 1e-8), kMissing) << df;
    }
    for (const double p : {-0.1, 1.1, kNaN}) {
        EXPECT_EQ(MCDistFun::FindNCParamChi(1, 3, p, 1e-8), kMissing) << p;
        EXPECT_EQ(MCDistFun::FindNCParamF(1, 3, 4, p, 1e-8), kMissing) << p;
        EXPECT_EQ(MCDistFun::FindNCParamT(1, 3, p, 1e-8), kMissing) << p;
    }
    EXPECT_EQ(MCDistFun::FindNCParamChi(1, 3, 0.5, -1), kMissing);
    EXPECT_EQ(MCDistFun::FindNCParamF(1, 3, 4, 0.5, -1), kMissing);
    EXPECT_EQ(MCDistFun::FindNCParamT(1, 3, 0.5, -1), kMissing);
}

TEST(FindNonCentrality, AtOrAboveTheCentralCumulativeIsZero) {
    EXPECT_EQ(MCDistFun::FindNCParamChi(2, 3, MCDistFun::CdfChi(2, 3), 1e-8), 0);
    EXPECT_EQ(MCDistFun::FindNCParamChi(2, 3, 0.99, 1e-8), 0);
    EXPECT_EQ(MCDistFun::FindNCParamF(2, 3, 4, 0.99, 1e-8), 0);
    EXPECT_EQ(MCDistFun::FindNCParamT(2, 3, 0.99, 1e-8), 0);
    EXPECT_EQ(MCDistFun::FindNCParamChi(0, 3, 0, 1e-8), 0);
}

TEST(FindNonCentrality, TheStartItselfMayBeTheAnswer) {
    const double p = MCDistFun::NonCentralCdfChi(5, 3, 5);
    EXPECT_EQ(MCDistFun::FindNCParamChi(5, 3, p, 0), 5);
}

TEST(FindNonCentrality, ReachesTheClosestBracketWithoutATolerance) {
    const double p = MCDistFun::NonCentralCdfT(2, 10, 1.25);
    EXPECT_NEAR(MCDistFun::FindNCParamT(2, 10, p, 0), 1.25, 1e-10);
}

TEST(FindNonCentrality, AWideToleranceStopsEarly) {
    const double found = MCDistFun::FindNCParamChi(10, 3, 0.2, 0.05);
    EXPECT_NEAR(MCDistFun::NonCentralCdfChi(10, 3, found), 0.2, 0.05);
}

// Doubling or halving from x itself would never end here.
TEST(FindNonCentrality, ANegativeOrZeroXOfTIsSearchedFromItsSize) {
    for (const double x : {-0.5, 0.0}) {
        const double p = MCDistFun::NonCentralCdfT(x, 10, 2);
        EXPECT_NEAR(MCDistFun::FindNCParamT(x, 10, p, 1e-13), 2, 1e-7) << x;
    }
}

TEST(FindNonCentrality, AMissingCumulativeIsMissing) {
    EXPECT_EQ(MCDistFun::FindNCParamChi(1e9, 3, 0.5, 1e-8), kMissing);
    EXPECT_EQ(MCDistFun::FindNCParamT(1e6, 3, 0.5, 1e-8), kMissing);
    EXPECT_EQ(MCDistFun::FindNCParamChi(kNaN, 3, 0.5, 1e-8), kMissing);
    EXPECT_EQ(MCDistFun::FindNCParamChi(kInfinity, 3, 0.5, 1e-8), kMissing);
}

} // namespace
