#include "stats/numerics/steps.h"
#include "stats/steps/argument_source.h"

#include <MCCommon_900/MCMV.h>
#include <MCMath_900/MCDistFun.h>

#include <climits>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

/// The statistics of grouped data for any arguments.
namespace {

using MCCommon_900::MCMV;
using MCMath_900::MCDistFun;
using veltrane::stats::stepsTaken;
using veltrane::tests::ArgumentSource;

#ifdef VELTRANE_SANITIZED
constexpr int kPatterns = 20000; // a sanitizer looks at every step
#else
constexpr int kPatterns = 1000000;
#endif

constexpr int kMostClasses = 6;

/// A round for each class, and what the binomial quantile and the beta ratio may take behind limits of a median.
constexpr long kMillisecond = 125000;

/// Grouped data whose numbers all come from one draw.
struct Grouped {
    template <class Draw>
    Grouped(ArgumentSource& source, Draw draw) : n(CountOf(source)), mode(static_cast<int>(source.Below(1U << 31))) {
        if (source.Coin()) {
            mode = static_cast<int>(source.Below(5)) - 1;
        }
        for (std::vector<double>* column : {&values, &freqs, &widths}) {
            for (double& number : *column) {
                number = draw();
            }
        }
        pct = draw();
        count = draw();
        level = draw();
    }

    /// Any count that the arrays can hold, and some of those that they don't have to.
    static int CountOf(ArgumentSource& source) {
        constexpr int kFew[] = {INT_MIN, -1, 0, 1};
        return source.Below(8) == 0 ? kFew[source.Below(std::size(kFew))]
                                    : 1 + static_cast<int>(source.Below(kMostClasses));
    }

    /// The values and frequencies as they are meant: ascending and not below 0.
    void MakeOrdinary(ArgumentSource& source) {
        for (double& value : values) {
            value = source.Between(-100, 100);
        }
        std::sort(values.begin(), values.end());
        for (std::vector<double>* column : {&freqs, &widths}) {
            for (double& number : *column) {
                number = static_cast<double>(source.Below(9));
            }
        }
        freqs[source.Below(static_cast<std::uint64_t>(std::max(n, 1)))] = 3;
    }

    /// Calls the percentile and gives its code.
    long Percentile(double& out) const {
        long code = 77;
        MCDistFun::GPTile(n, pct, values.data(), freqs.data(), widths.data(), mode, out, code);
        return code;
    }

    std::array<double, 3> Limits(bool exact) const {
        std::array<double, 3> limits{};
        MCDistFun::Mednci(n, values.data(), freqs.data(), count, level, exact, limits[0], limits[1], limits[2]);
        return limits;
    }

    bool IsAValue(double x) const {
        return std::any_of(values.begin(), values.begin() + n,
                           [&](double value) { return value == x || (std::isnan(value) && std::isnan(x)); });
    }

    int n, mode;
    std::vector<double> values = std::vector<double>(kMostClasses), freqs = values, widths = values;
    double pct = 0, count = 0, level = 0;
};

/// What is true of a percentile whatever the numbers are.
void ExpectPercentile(const Grouped& data) {
    stepsTaken = 0;
    double out = 0;
    const long code = data.Percentile(out);
    ASSERT_LE(stepsTaken, kMostClasses);
    ASSERT_TRUE(data.n < 2 ? code == -1 : code >= 0 && code <= 2) << code;
    ASSERT_TRUE(code == 0 || MCMV::IsMissing(out)) << out;
}

/// What is true of limits of a median whatever the numbers are.
void ExpectLimits(const Grouped& data) {
    stepsTaken = 0;
    const auto [lower, upper, coverage] = data.Limits(true);
    ASSERT_LE(stepsTaken, kMillisecond);
    ASSERT_TRUE(MCMV::IsMissing(coverage) || (coverage >= 0 && coverage <= 100)) << coverage;
    if (data.n < 1 || !(data.count >= 2)) {
        ASSERT_TRUE(MCMV::IsMissing(lower) && MCMV::IsMissing(upper) && MCMV::IsMissing(coverage));
        return;
    }
    // A value may be the missing number itself.
    ASSERT_TRUE(MCMV::IsMissing(lower) || data.IsAValue(lower)) << lower;
    ASSERT_TRUE(MCMV::IsMissing(upper) || data.IsAValue(upper)) << upper;
}

TEST(GroupedDataOfAnyArgument, EndsForAnyBits) {
    ArgumentSource source(51);
    for (int call = 0; call < kPatterns && !testing::Test::HasFatalFailure(); ++call) {
        const Grouped data(source, [&] { return source.Bits(); });
        ExpectPercentile(data);
        ExpectLimits(data);
    }
}

TEST(GroupedDataOfAnyArgument, EndsForBitsAmongEdgesAndOrdinaryNumbers) {
    ArgumentSource source(52);
    for (int call = 0; call < kPatterns && !testing::Test::HasFatalFailure(); ++call) {
        const Grouped data(source, [&] {
            return source.Coin() ? source.Bits() : source.Coin() ? source.Edge() : source.Ordinary();
        });
        ExpectPercentile(data);
        ExpectLimits(data);
    }
}

/// A percentage or a number of observations of any kind.
double AnyNumber(ArgumentSource& source) {
    switch (source.Below(4)) {
    case 0:
        return source.Bits();
    case 1:
        return source.Edge();
    default:
        return source.Between(0, 100);
    }
}

TEST(PercentileOfAnyPercentage, LiesBetweenTheEndsAndRises) {
    ArgumentSource source(53);
    int found = 0;
    for (int call = 0; call < kPatterns / 4; ++call) {
        Grouped data(source, [&] { return AnyNumber(source); });
        data.MakeOrdinary(source);
        double out = 0;
        const long code = data.Percentile(out);
        if (code != 0 || std::isnan(data.pct)) {
            continue;
        }
        ++found;
        const double reach = *std::max_element(data.widths.begin(), data.widths.end()) / 2;
        ASSERT_GE(out, data.values.front() - reach - 1e-9);
        ASSERT_LE(out, data.values[data.n - 1] + reach + 1e-9);
        // Classes of widths may lie over each other, where a larger percentage may come to a lower place.
        Grouped more = data;
        more.pct = data.pct + source.Log(1e-6, 10);
        double next = 0;
        const bool hasNext = data.mode != 1 && more.Percentile(next) == 0;
        ASSERT_TRUE(!hasNext || next >= out - 1e-9 * std::fabs(out)) << data.pct << " and " << more.pct;
    }
    EXPECT_GT(found, kPatterns / 20);
}

TEST(MedianLimitsOfAnyLevel, AreInOrderAndWiderForAHigherOne) {
    ArgumentSource source(54);
    int found = 0;
    for (int call = 0; call < kPatterns / 4; ++call) {
        Grouped data(source, [&] { return AnyNumber(source); });
        data.MakeOrdinary(source);
        if (data.n < 1) {
            continue;
        }
        data.count = 0;
        for (int i = 0; i < data.n; ++i) {
            data.count += data.freqs[i];
        }
        const auto [lower, upper, coverage] = data.Limits(true);
        if (MCMV::IsMissing(lower) || MCMV::IsMissing(upper) || !(data.level >= 0)) {
            continue;
        }
        ++found;
        ASSERT_LE(lower, upper) << data.level << " of " << data.count;
        ASSERT_EQ(data.Limits(false)[0], lower);
        ASSERT_TRUE(MCMV::IsMissing(data.Limits(false)[2]) || data.Limits(false)[2] == 100);
        Grouped wider = data;
        wider.level = data.level + (100 - data.level) / 2;
        const auto [below, above, covered] = wider.Limits(true);
        if (!MCMV::IsMissing(covered)) {
            ASSERT_LE(below, lower);
            ASSERT_GE(above, upper);
            ASSERT_GE(covered, coverage - 1e-9);
        }
    }
    EXPECT_GT(found, kPatterns / 20);
}

} // namespace
