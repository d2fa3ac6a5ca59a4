#include "support/numbers.h"
#include "support/rows.h"

#include <MCMath_900/MCDistFun.h>

#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace veltrane::tests;
using MCMath_900::MCDistFun;

/// Classes of 2, 6 and 2 around 10, 20 and 40.
struct Percentile {
    explicit Percentile(double pct, int mode, int n = 3) {
        const double values[] = {10, 20, 40}, freqs[] = {2, 6, 2}, widths[] = {10, 10, 20};
        MCDistFun::GPTile(n, pct, values, freqs, widths, mode, value, code);
    }
    double value = 5;
    long code = 5;
};

struct PercentileCase {
    const char* name;
    double pct;
    int mode;
    double value;
    long code;
};

class GroupedPercentile : public testing::TestWithParam<PercentileCase> {};

TEST_P(GroupedPercentile, ValueAndCode) {
    const Percentile percentile(GetParam().pct, GetParam().mode);
    EXPECT_EQ(percentile.value, GetParam().value);
    EXPECT_EQ(percentile.code, GetParam().code);
}

// Ten observations. At the midpoints 1, 5 and 9 lie at or below; at the upper limits 2, 8 and 10.
const PercentileCase kPercentileCases[] = {
    {"MidpointsFirst", 10, 0, 10, 0},
    {"MidpointsBetween", 30, 0, 15, 0},
    {"MidpointsMiddle", 50, 0, 20, 0},
    {"MidpointsLast", 90, 0, 40, 0},
    {"MidpointsBelow", 9, 0, kMissing, 1},
    {"MidpointsAbove", 91, 0, kMissing, 2},
    {"NegativeModeIsMidpoints", 30, -7, 15, 0},
    {"WidthsFirst", 0, 1, 5, 0},
    {"WidthsInTheFirst", 10, 1, 10, 0},
    {"WidthsMiddle", 50, 1, 20, 0},
    {"WidthsInTheLast", 90, 1, 40, 0},
    {"WidthsLast", 100, 1, 50, 0},
    {"WidthsBelow", -1, 1, kMissing, 1},
    {"WidthsAbove", 101, 1, kMissing, 2},
    {"LimitsFirst", 20, 2, 10, 0},
    {"LimitsMiddle", 50, 2, 15, 0},
    {"LimitsLast", 100, 2, 40, 0},
    {"LimitsBelow", 19, 2, kMissing, 1},
    {"LimitsAbove", 101, 2, kMissing, 2},
    {"AnyLargerModeIsLimits", 50, 9, 15, 0},
};

INSTANTIATE_TEST_SUITE_P(Rows, GroupedPercentile, testing::ValuesIn(kPercentileCases), veltrane::tests::NameOfRow());

TEST(GroupedPercentileTooFew, IsMissingWithCodeMinusOne) {
    for (const int n : {1, 0, -1}) {
        EXPECT_EQ(Percentile(50, 1, n).value, kMissing);
        EXPECT_EQ(Percentile(50, 1, n).code, -1);
    }
}

TEST(GroupedPercentileEmptyClass, IsPassedOver) {
    const double values[] = {10, 20, 30}, freqs[] = {2, 0, 2}, widths[] = {10, 10, 10};
    double value = 0;
    long code = 0;
    MCDistFun::GPTile(3, 75, values, freqs, widths, 1, value, code);
    EXPECT_EQ(value, 30);
    EXPECT_EQ(code, 0);
}

struct Median {
    Median(std::vector<double> values, std::vector<double> freqs, double count, double level, bool exact) {
        MCDistFun::Mednci(static_cast<int>(values.size()), values.data(), freqs.data(), count, level, exact, lower,
                          upper, coverage);
    }
    double lower = 5, upper = 5, coverage = 5;
};

TEST(MedianLimits, TwoObservationsGiveTheirRange) {
    const Median median({3, 7}, {1, 1}, 2, 95, false);
    EXPECT_EQ(median.lower, 3);
    EXPECT_EQ(median.upper, 7);
    EXPECT_EQ(median.coverage, 100);
}

TEST(MedianLimits, FewerThanTwoGiveNothing) {
    for (const double count : {1.0, 0.0, -3.0}) {
        const Median median({3}, {1}, count, 95, true);
        EXPECT_EQ(median.lower, kMissing);
        EXPECT_EQ(median.upper, kMissing);
        EXPECT_EQ(median.coverage, kMissing);
    }
}

TEST(MedianLimits, ALevelOutOfReachGivesTheRange) {
    // Four observations: even the range covers 1 - 2 / 16 only.
    const Median median({1, 2, 3, 4}, {1, 1, 1, 1}, 4, 95, true);
    EXPECT_EQ(median.lower, 1);
    EXPECT_EQ(median.upper, 4);
    EXPECT_EQ(median.coverage, 100);
}

TEST(MedianLimits, OrderStatisticsOfTen) {
    // P(X <= 1) of ten fair coins is 11 / 1024, P(X <= 2) is 56 / 1024: at 95 % the second value from either end.
    const Median median({1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, std::vector<double>(10, 1), 10, 95, true);
    EXPECT_EQ(median.lower, 2);
    EXPECT_EQ(median.upper, 9);
    EXPECT_NEAR(median.coverage, (1 - 2 * 11.0 / 1024) * 100, 1e-12);
}

TEST(MedianLimits, WalkTheFrequenciesFromBothEnds) {
    const Median median({1, 5, 9}, {1, 7, 2}, 10, 95, false);
    EXPECT_EQ(median.lower, 5);
    EXPECT_EQ(median.upper, 9);
    EXPECT_EQ(median.coverage, kMissing);
}

TEST(MedianLimits, ACountThatIsNotWholeGivesNothing) {
    const Median median({1, 5, 9}, {1, 7, 2.5}, 10.5, 95, true);
    EXPECT_EQ(median.lower, kMissing);
    EXPECT_EQ(median.upper, kMissing);
    EXPECT_EQ(median.coverage, kMissing);
}

TEST(MedianLimits, ALevelOutsideItsRangeGivesNothing) {
    const Median median({1, 5, 9}, {1, 7, 2}, 10, 150, true);
    EXPECT_EQ(median.lower, kMissing);
    EXPECT_EQ(median.coverage, kMissing);
}

TEST(MedianLimits, CoverageIsNeverNegative) {
    const Median median({1, 2, 3}, {1, 1, 1}, 3, 0, true);
    EXPECT_EQ(median.lower, 2);
    EXPECT_EQ(median.upper, 2);
    EXPECT_EQ(median.coverage, 0);
}

} // namespace
