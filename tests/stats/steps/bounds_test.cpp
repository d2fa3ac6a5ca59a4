#include "stats/numerics/steps.h"
#include "support/rows.h"

#include <MCMath_900/MCDistFun.h>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <numbers>

namespace {

using MCMath_900::MCDistFun;
using veltrane::stats::stepsTaken;

constexpr double kLargest = 1.797e308;

long StepsOf(const std::function<double()>& call) {
    stepsTaken = 0;
    EXPECT_FALSE(std::isnan(call()));
    return stepsTaken;
}

struct Call {
    const char* name;
    std::function<double()> call;
    long bound;
};

class Bounds : public testing::TestWithParam<Call> {};

TEST_P(Bounds, HoldWhereAnExpansionCouldGoOn) {
    EXPECT_LE(StepsOf(GetParam().call), GetParam().bound);
}

long code = 0;

const Call kCalls[] = {
    {"GammaDensityOfTheLargest", [] { return MCDistFun::PdfGamma(1e308, 1e308, 1); }, 100},
    {"BinomialOfTheLargest", [] { return MCDistFun::PdfBin(15, kLargest, 1e-205, code); }, 100},
    {"BetaOfTheLargest", [] { return MCDistFun::CdfBeta(0.5, 0.01, kLargest); }, 20100},
    {"BetaOfTwoOfTheLargest", [] { return MCDistFun::CdfBeta(0.5, kLargest, kLargest); }, 20100},
    {"NonCentralChiSquareOfTheLargest", [] { return MCDistFun::NonCentralCdfChi(1e308, 1e308, 1e308); }, 61000},
    {"NonCentralFOfTheLargest", [] { return MCDistFun::NonCentralCdfF(1e308, 1e308, 1e308, 1e308, 1e-12); }, 61000},
    {"NonCentralTOfTheLargest", [] { return MCDistFun::NonCentralCdfT(1e150, 1e308, 1e308); }, 61000},
    {"NonCentralTDensityOfTheLargest", [] { return MCDistFun::NonCentralPdfT(1e150, 1e308, 1e308, code); }, 10100},
    {"ChiSquareNearTheMeanOfManyDegrees", [] { return MCDistFun::CdfChi(1e12 - 1e6, 1e12); }, 100},
    {"ChiSquareAboveTheMeanOfManyDegrees", [] { return MCDistFun::SigChi(1e12 + 1e6, 1e12); }, 100},
    {"ChiSquareQuantileOfManyDegrees", [] { return MCDistFun::IdfChi(0.3, 1e12); }, 1000},
    {"ChiSquareQuantileByBisection", [] { return MCDistFun::IdfChi(1e-300, 1e6); }, 20000},
    {"BinomialOfManyTrials", [] { return MCDistFun::CdfBin(1e9, 2e9, 0.5, code); }, 100},
    {"BinomialQuantileWhereSumsStall", [] { return MCDistFun::IdfBin(1 - 1e-13, 1e9, 0.5, code); }, 100000},
    {"BinomialQuantileWhereTermsVanish", [] { return MCDistFun::IdfBin(1e-280, 2e9, 1e-3, code); }, 100000},
    {"HypergeometricOfTheLargest",
     [] {
         int error = 0;
         return MCDistFun::CDFHyper(536870911, 2147483647, 1073741823, 1073741824, error);
     },
     100000},
    {"BetaQuantileWithoutDigits", [] { return MCDistFun::IdfBeta(0.4961, 6.5e10, 3.6e10); }, 100000},
};

INSTANTIATE_TEST_SUITE_P(Calls, Bounds, testing::ValuesIn(kCalls), veltrane::tests::NameOfRow());

// What the calls that used not to end come to.
TEST(BoundedCalls, HaveTheirResults) {
    EXPECT_NEAR(MCDistFun::PdfGamma(1e308, 1e308, 1) * std::sqrt(2 * std::numbers::pi) * 1e154, 1, 1e-12);
    EXPECT_EQ(MCDistFun::PdfBin(15, kLargest, 1e-205, code), 0);
    EXPECT_EQ(code, 0);
    EXPECT_EQ(MCDistFun::CdfBeta(0.5, 0.01, kLargest), 1);
    EXPECT_EQ(MCDistFun::NonCentralCdfChi(1e308, 1e308, 1e308), 0);
    EXPECT_NEAR(MCDistFun::NonCentralCdfChi(1e308, 1e308, 1), 0.5, 1e-11);
}

// Exact by integers: the smallest number of failures whose tail is above p, taken from the number of trials.
TEST(BinomialQuantileOfAFarTail, IsExact) {
    EXPECT_EQ(MCDistFun::IdfBin(7.1e-101, 369, 0.99962, code), 322);
    EXPECT_EQ(code, 0);
    // The guess lies within 128 machine epsilons of p here, which makes it the answer.
    const double x = MCDistFun::IdfBin(1 - 1e-13, 1e9, 0.5, code);
    EXPECT_LE(std::fabs(MCDistFun::CdfBin(x, 1e9, 0.5, code) - (1 - 1e-13)), 128 * 0x1p-52);
}

} // namespace
