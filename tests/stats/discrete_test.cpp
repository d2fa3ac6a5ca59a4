#include "support/numbers.h"
#include "support/rows.h"

#include <MCMath_900/MCDistFun.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {

using namespace veltrane::tests;
using MCMath_900::MCDistFun;

/// A function of three arguments with an error code, its result and the code.
struct CodeCase {
    const char* name;
    double x, n, prob;
    double result;
    long code;
};

using Function = double (*)(double, double, double, long&);

void Expect(Function function, const CodeCase& c) {
    long code = 77;
    const double result = function(c.x, c.n, c.prob, code);
    EXPECT_EQ(code, c.code);
    if (c.result == kMissing || c.result == 0) {
        EXPECT_EQ(result, c.result);
    } else {
        EXPECT_NEAR(result, c.result, 1e-14 * std::fabs(c.result));
    }
}

class BinomialPoint : public testing::TestWithParam<CodeCase> {};
TEST_P(BinomialPoint, ResultAndCode) {
    Expect(MCDistFun::PdfBin, GetParam());
}

const CodeCase kPointCases[] = {
    {"XNotWhole", 2.5, 5, 0.5, 0, 0},
    {"NoTrials", 1, 0, 0.5, kMissing, 1},
    {"NegativeProbability", 1, 5, -0.1, kMissing, 1},
    {"ProbabilityAboveOne", 1, 5, 1.1, kMissing, 1},
    {"ProbabilityNotANumber", 1, 5, kNaN, kMissing, 1},
    {"TrialsNotANumber", 1, kNaN, 0.5, kMissing, 1},
    {"Below", -1, 5, 0.5, 0, 0},
    {"Above", 6, 5, 0.5, 0, 0},
    {"XNotANumber", kNaN, 5, 0.5, 0, 0},
    {"ImpossibleAtNone", 0, 5, 0, 1, 0},
    {"ImpossibleElsewhere", 1, 5, 0, 0, 0},
    {"CertainAtAll", 5, 5, 1, 1, 0},
    {"CertainElsewhere", 4, 5, 1, 0, 0},
    {"All", 5, 5, 0.3, 0.00243, 0},
    {"None", 0, 5, 0.3, 0.16807, 0},
    {"NoneOfManyRare", 0, 1e20, 1e-20, 0.36787944117144233, 0},
    {"Middle", 2, 5, 0.5, 0.3125, 0},
    {"TooSmall", 10, 100000, 0.9, 0, 0},
    {"TrialsNotWhole", 2, 4.5, 0.5, 0.34802911886525384444, 0},
};

INSTANTIATE_TEST_SUITE_P(Rows, BinomialPoint, testing::ValuesIn(kPointCases), veltrane::tests::NameOfRow());

class BinomialCumulative : public testing::TestWithParam<CodeCase> {};
TEST_P(BinomialCumulative, ResultAndCode) {
    Expect(MCDistFun::CdfBin, GetParam());
}

const CodeCase kCumulativeCases[] = {
    {"TrialsNotWhole", 1, 2.5, 0.5, kMissing, 3},
    {"TrialsNotWholeAndProbabilityBad", 1, 2.5, 7, kMissing, 3},
    {"TrialsBeyondTheIntegers", 1, 2147483648.0, 0.5, kMissing, 3},
    {"TrialsNotANumber", 1, kNaN, 0.5, kMissing, 3},
    {"NoTrials", 1, 0, 0.5, kMissing, 1},
    {"NegativeProbability", 1, 5, -0.1, kMissing, 1},
    {"ProbabilityAboveOne", 1, 5, 1.1, kMissing, 1},
    {"XNotANumber", kNaN, 5, 0.5, kMissing, 1},
    {"Impossible", 0, 5, 0, 1, 0},
    {"ImpossibleBelow", -1, 5, 0, 0, 0},
    {"CertainAtAll", 5, 5, 1, 1, 0},
    {"CertainBelow", 4.9, 5, 1, 0, 0},
    {"Below", -0.5, 5, 0.5, 0, 0},
    {"None", 0.9, 5, 0.3, 0.16807, 0},
    {"NoneTooSmall", 0, 2000, 0.5, 0, 0},
    {"XIsFloored", 2.9, 5, 0.5, 0.5, 0},
    {"All", 5, 5, 0.5, 1, 0},
    {"Beyond", 7, 5, 0.5, 1, 0},
    {"Infinity", kInfinity, 5, 0.5, 1, 0},
    {"OutOfRangeIsApproximated", 10, 100000, 0.9, 0, 0},
};

INSTANTIATE_TEST_SUITE_P(Rows, BinomialCumulative, testing::ValuesIn(kCumulativeCases), veltrane::tests::NameOfRow());

TEST(BinomialCumulativeApproximation, TakesOverWhereTheTermsVanish) {
    // The largest term is 1e-308 or so here: the sum before it and the approximation after it must meet.
    long code = 0;
    double last = 0;
    for (double x = 0; x <= 160; ++x) {
        const double cumulative = MCDistFun::CdfBin(x, 1400, 0.5, code);
        EXPECT_EQ(code, 0);
        EXPECT_GE(cumulative, last) << x;
        last = cumulative;
    }
    EXPECT_GT(last, 0);
    EXPECT_LT(last, 1e-150);
}

class BinomialQuantile : public testing::TestWithParam<CodeCase> {};
TEST_P(BinomialQuantile, ResultAndCode) {
    Expect(MCDistFun::IdfBin, GetParam());
}

const CodeCase kQuantileCases[] = {
    {"Zero", 0, 10, 0.5, -1, 0},
    {"ZeroOfCertain", 0, 10, 1, 9, 0},
    {"One", 1, 10, 0.5, 10, 0},
    {"OneOfImpossible", 1, 10, 0, 0, 0},
    {"TrialsNotWhole", 0.5, 2.5, 0.5, kMissing, 1},
    {"NoTrials", 0.5, 0, 0.5, kMissing, 2},
    {"NegativeProbability", 0.5, 5, -0.1, kMissing, 2},
    {"ProbabilityAboveOne", 0.5, 5, 1.1, kMissing, 2},
    {"PNegative", -0.1, 5, 0.5, kMissing, 2},
    {"PAboveOne", 1.1, 5, 0.5, kMissing, 2},
    {"PNotANumber", kNaN, 5, 0.5, kMissing, 2},
    {"ExactlyACumulative", 0.5, 5, 0.5, 2, 0},
    {"BelowTheFirst", 0.001, 5, 0.5, -1, 0},
    {"BetweenTwo", 0.6, 5, 0.5, 2, 0},
    {"CertainBelowOne", 0.5, 5, 1, 4, 0},
    {"ImpossibleBelowOne", 0.5, 5, 0, -1, 0},
};

INSTANTIATE_TEST_SUITE_P(Rows, BinomialQuantile, testing::ValuesIn(kQuantileCases), veltrane::tests::NameOfRow());

// The first guess is the answer when its cumulative probability lies within 128 machine epsilons of p, an absolute
// distance: below 1e-14 that is any guess far enough out.
TEST(KeptBinomialQuantile, AGuessWithinTheToleranceIsTheAnswer) {
    long code = 9;
    const double x = MCDistFun::IdfBin(1e-300, 1000, 0.99, code);
    EXPECT_EQ(code, 0);
    EXPECT_GT(MCDistFun::CdfBin(x, 1000, 0.99, code), 1e-300);
    EXPECT_LT(MCDistFun::CdfBin(x, 1000, 0.99, code), 128 * 0x1p-52);
}

// ---- hypergeometric ----

TEST(HypergeometricPoint, OutsideItsDomainIsMissing) {
    EXPECT_EQ(MCDistFun::PdfHyper(1, 10, 0, 5), kMissing);
    EXPECT_EQ(MCDistFun::PdfHyper(1, 10, 11, 5), kMissing);
    EXPECT_EQ(MCDistFun::PdfHyper(1, 10, 5, 0), kMissing);
    EXPECT_EQ(MCDistFun::PdfHyper(1, 10, 5, 11), kMissing);
    EXPECT_EQ(MCDistFun::PdfHyper(-1, 10, 5, 5), kMissing);
    EXPECT_EQ(MCDistFun::PdfHyper(6, 10, 5, 5), kMissing);
    EXPECT_EQ(MCDistFun::PdfHyper(3, 10, 9, 5), kMissing);
}

TEST(HypergeometricPoint, SpecialCases) {
    EXPECT_NEAR(MCDistFun::PdfHyper(2, 10, 5, 4), 60.0 * 2 / 252, 1e-14);
    EXPECT_EQ(MCDistFun::PdfHyper(4, 10, 10, 4), 1);
    EXPECT_NEAR(MCDistFun::PdfHyper(5, 10, 5, 10), 1, 1e-15);
    EXPECT_EQ(MCDistFun::PdfHyper(0, 100000, 50000, 50000), 0);
    EXPECT_GT(MCDistFun::PdfHyper(1073741823, 2147483647, 2147483646, 1073741824), 0);
}

struct HyperCase {
    const char* name;
    double x, total, sample, hits;
};

class HypergeometricDomain : public testing::TestWithParam<HyperCase> {};

TEST_P(HypergeometricDomain, IsCodeOneAndMissing) {
    int code = 0;
    const HyperCase& c = GetParam();
    EXPECT_EQ(MCDistFun::CDFHyper(c.x, c.total, c.sample, c.hits, code), kMissing);
    EXPECT_EQ(code, 1);
}

constexpr HyperCase kHyperCases[] = {
    {"TotalTooLarge", 1, 2147483648.0, 5, 5},
    {"TotalNotWhole", 1, 10.5, 5, 5},
    {"SampleNotWhole", 1, 10, 5.5, 5},
    {"HitsNotWhole", 1, 10, 5, 5.5},
    {"SampleAboveTotal", 1, 10, 11, 5},
    {"HitsAboveTotal", 1, 10, 5, 11},
    {"NegativeSample", 0, 10, -1, 5},
    {"NegativeHits", 0, 10, 5, -1},
    {"Below", -1, 10, 5, 5},
    {"BelowTheOverlap", 3, 10, 9, 5},
    {"Above", 6, 10, 5, 5},
    {"NotANumber", kNaN, 10, 5, 5},
    {"TotalNotANumber", 1, kNaN, 5, 5},
};

INSTANTIATE_TEST_SUITE_P(Rows, HypergeometricDomain, testing::ValuesIn(kHyperCases), veltrane::tests::NameOfRow());

TEST(HypergeometricCumulative, SpecialCases) {
    int code = 9;
    EXPECT_EQ(MCDistFun::CDFHyper(4, 10, 5, 4, code), 1);
    EXPECT_EQ(code, 0);
    EXPECT_EQ(MCDistFun::CDFHyper(0, 10, 0, 4, code), 1);
    EXPECT_NEAR(MCDistFun::CDFHyper(1.7, 10, 5, 4, code), 66.0 / 252, 1e-15);
    EXPECT_EQ(MCDistFun::CDFHyper(0, 100000, 50000, 50000, code), 0);
    EXPECT_EQ(code, 0);
}

TEST(HypergeometricCumulative, TheTwoMethodsAgree) {
    int code = 0;
    for (double x = 900; x <= 1100; x += 10) {
        const double below = MCDistFun::CDFHyper(x, 10000, 4000, 2500, code);
        double sum = 0;
        for (int k = 0; k <= static_cast<int>(x); ++k) {
            sum += MCDistFun::PdfHyper(k, 10000, 4000, 2500);
        }
        EXPECT_NEAR(below, sum, 1e-13) << x;
    }
}

} // namespace
