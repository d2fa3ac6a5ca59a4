#include "support/numbers.h"
#include "support/rows.h"

#include <MCCommon_900/MCMV.h>
#include <MCMath_900/MCDistFun.h>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

namespace {

using namespace veltrane::tests;
using MCCommon_900::MCMV;
using MCMath_900::MCDistFun;

constexpr double kTiny = 5e-324;

/// A call without an error code whose arguments pass the checks of the call itself, but fail further inside.
struct InnerFailure {
    const char* name;
    std::function<double()> call;
};

class FailuresInside : public testing::TestWithParam<InnerFailure> {};

// Every function that stands on one with an error code, once in each place. Half of the smallest number is 0, which no
// ratio takes as a parameter.
TEST_P(FailuresInside, AreMissing) {
    EXPECT_EQ(GetParam().call(), MCMV::Missing());
}

const InnerFailure kInnerFailures[] = {
    {"StudentCumulative", [] { return MCDistFun::CdfT(1.5, kTiny); }},
    {"StudentCumulativeNearZero", [] { return MCDistFun::CdfT(0.5, kTiny); }},
    {"StudentUpperTail", [] { return MCDistFun::SigT(1.5, kTiny); }},
    {"StudentUpperTailNearZero", [] { return MCDistFun::SigT(0.5, kTiny); }},
    {"StudentUpperTailOfNegative", [] { return MCDistFun::SigT(-1.5, kTiny); }},
    {"StudentQuantile", [] { return MCDistFun::IdfT(0.25, kTiny); }},
    {"FCumulative", [] { return MCDistFun::CdfF(0.5, 3, kTiny); }},
    {"FCumulativeAboveOne", [] { return MCDistFun::CdfF(1.5, kTiny, 3); }},
    {"FUpperTail", [] { return MCDistFun::SigF(1.5, kTiny, 3); }},
    {"FQuantile", [] { return MCDistFun::IdfF(0.25, 3, kTiny); }},
    {"FQuantileOfOneDegree", [] { return MCDistFun::IdfF(0.25, 1, kTiny); }},
    {"ChiSquareCumulative", [] { return MCDistFun::CdfChi(1.5, kTiny); }},
    {"ChiSquareUpperTail", [] { return MCDistFun::SigChi(1.5, kTiny); }},
    {"ChiSquareQuantile", [] { return MCDistFun::IdfChi(0.25, kTiny); }},
    {"GammaCumulative", [] { return MCDistFun::CdfGam(kNaN, 2, 3); }},
    {"GammaCumulativeOfShapeOne", [] { return MCDistFun::CdfGam(kNaN, 1, 3); }},
    {"GammaQuantile", [] { return MCDistFun::IdfGam(0.25, 0, 3); }},
    {"BetaCumulative", [] { return MCDistFun::CdfBeta(0.5, 0, 3); }},
    {"NonCentralChiSquare", [] { return MCDistFun::NonCentralCdfChi(1.5, kTiny, 2); }},
    {"NonCentralF", [] { return MCDistFun::NonCentralCdfF(1.5, 3, kTiny, 2, 1e-12); }},
    {"NonCentralFThatDoesNotEnd", [] { return MCDistFun::NonCentralCdfF(1e10, 3, 4, 1e10, 1e-12); }},
    {"NonCentralT", [] { return MCDistFun::NonCentralCdfT(1.5, kTiny, 2); }},
    {"NonCentralTWithoutNonCentrality", [] { return MCDistFun::NonCentralCdfT(1.5, kTiny, 0); }},
};

INSTANTIATE_TEST_SUITE_P(Calls, FailuresInside, testing::ValuesIn(kInnerFailures), veltrane::tests::NameOfRow());

} // namespace
