#include "support/numbers.h"

#include <MCMath_900/MCDistFun.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {

using namespace veltrane::tests;
using MCMath_900::MCDistFun;

TEST(NormalCumulative, IsExactlyHalfAtZero) {
    EXPECT_EQ(MCDistFun::CdfStdNorm(0), 0.5);
    EXPECT_EQ(MCDistFun::CdfStdNorm(-0.0), 0.5);
    EXPECT_EQ(MCDistFun::CdfNorm(3, 3, 2), 0.5);
}

TEST(NormalCumulative, ReachesBothEnds) {
    EXPECT_EQ(MCDistFun::CdfStdNorm(9), 1);
    EXPECT_EQ(MCDistFun::CdfStdNorm(kInfinity), 1);
    EXPECT_GT(MCDistFun::CdfStdNorm(-37.4), 0);
    EXPECT_EQ(MCDistFun::CdfStdNorm(-37.6), 0);
    EXPECT_EQ(MCDistFun::CdfStdNorm(-kInfinity), 0);
}

TEST(NormalCumulative, OutsideItsDomainIsMissing) {
    EXPECT_EQ(MCDistFun::CdfNorm(1, 0, 0), kMissing);
    EXPECT_EQ(MCDistFun::CdfNorm(1, 0, -1), kMissing);
    EXPECT_EQ(MCDistFun::CdfNorm(1, 0, kNaN), kMissing);
    EXPECT_EQ(MCDistFun::CdfStdNorm(kNaN), kMissing);
}

TEST(NormalDensity, IsTheStatedConstantAtTheMean) {
    EXPECT_EQ(MCDistFun::PdfNormalStandard(0), 0.3989422804014327);
    EXPECT_EQ(MCDistFun::PdfNormal(5, 5, 2), 0.3989422804014327 / 2);
}

TEST(NormalDensity, VanishesFarOut) {
    EXPECT_EQ(MCDistFun::PdfNormalStandard(41), 0);
    EXPECT_EQ(MCDistFun::PdfNormalStandard(-kInfinity), 0);
}

TEST(NormalDensity, OutsideItsDomainIsMissing) {
    EXPECT_EQ(MCDistFun::PdfNormal(1, 0, 0), kMissing);
    EXPECT_EQ(MCDistFun::PdfNormalStandard(kNaN), kMissing);
    EXPECT_EQ(MCDistFun::PdfNormal(0, 0, 1e-320), kMissing);
}

TEST(KeptNormalDensity, ANegativeDeviationIsNotRefused) {
    EXPECT_EQ(MCDistFun::PdfNormal(1, 0, -2), -MCDistFun::PdfNormal(1, 0, 2));
}

TEST(NormalQuantile, IsExactlyZeroAtHalf) {
    EXPECT_EQ(MCDistFun::IdfStdNorm(0.5), 0);
    EXPECT_EQ(MCDistFun::IdfNorm(0.5, 1.25, 7), 1.25);
}

TEST(NormalQuantile, OutsideItsDomainIsMissing) {
    for (const double p : {0.0, 1.0, -0.1, 1.1, kNaN}) {
        EXPECT_EQ(MCDistFun::IdfStdNorm(p), kMissing) << p;
        EXPECT_EQ(MCDistFun::IdfNorm(p, 0, 1), kMissing) << p;
    }
    EXPECT_EQ(MCDistFun::IdfNorm(0.3, 0, 0), kMissing);
    EXPECT_EQ(MCDistFun::IdfNorm(0.5, 0, -1), kMissing);
    EXPECT_EQ(MCDistFun::IdfNorm(0.9, 1e308, 1.7e308), kMissing);
}

TEST(NormalQuantile, JoinsItsApproximations) {
    // |p - 0.5| of 0.425, and sqrt(-ln p) of 5.
    for (const double p : {0.075, 0.925, std::exp(-25.0)}) {
        const double below = MCDistFun::IdfStdNorm(std::nextafter(p, 0));
        const double above = MCDistFun::IdfStdNorm(std::nextafter(p, 1));
        EXPECT_NEAR(below, above, 1e-14 * std::fabs(above)) << p;
    }
}

TEST(LogGamma, IsExactAtItsZerosAndAtHalf) {
    EXPECT_EQ(MCDistFun::korddnlgam(1), 0);
    EXPECT_EQ(MCDistFun::korddnlgam(2), 0);
    EXPECT_EQ(MCDistFun::korddnlgam(0.5), 0.5723649429247001);
}

TEST(LogGamma, OutsideItsDomainIsMissing) {
    for (const double x : {0.0, -0.5, -1.5, -kInfinity, kNaN, kInfinity, 1e308}) {
        EXPECT_EQ(MCDistFun::korddnlgam(x), kMissing) << x;
    }
}

} // namespace
