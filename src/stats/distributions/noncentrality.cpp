#include "stats/numerics/constants.h"
#include "stats/numerics/guards.h"
#include "stats/numerics/steps.h"

#include <MCMath_900/MCDistFun.h>
#include <MCMath_900/MCPower.h>

#include <cmath>

/// The non-centrality at which a cumulative function takes a given value: bracketed by doubling or halving, then
/// bisected.
namespace MCMath_900 {

using namespace veltrane::stats;

namespace {

/// How near the ends of the bracket may come, in machine epsilons.
constexpr double kClosest = 8.0;

/// Doublings, halvings and bisections that the range of a double allows.
constexpr int kMaxRounds = 2200;

/// The truncation error of the non-central F function during the search.
constexpr double kTruncation = 1e-12;

bool IsDomain(double p, double tol) {
    return p >= 0 && p <= 1 && tol >= 0;
}

/// @param excess the cumulative function at a non-centrality, less p; a NaN when it can't be computed
/// @param lower  a non-centrality with an excess above 0
/// @param upper  one with an excess below 0
template <class Excess>
double Bisect(Excess excess, double lower, double upper, double tol) {
    double middle = (lower + upper) * 0.5;
    for (int round = 0; round < kMaxRounds; ++round) {
        CountStep();
        const double difference = excess(middle);
        if (std::isnan(difference)) {
            return Missing();
        }
        if (std::fabs(difference) <= tol || std::fabs(upper - lower) <= tol ||
            MCPower::AlmostEqual(lower, upper, kClosest)) {
            break;
        }
        (difference > 0 ? lower : upper) = middle;
        middle = (lower + upper) * 0.5;
    }
    return middle;
}

/// @param cumulative the cumulative function of the non-centrality, which falls with it
/// @param start      the first non-centrality tried, above 0
template <class Cumulative>
double FindNonCentrality(Cumulative cumulative, double start, double p, double tol) {
    const auto excess = [&](double ncp) {
        const double value = cumulative(ncp);
        return IsMissing(value) ? kUnknown : value - p;
    };
    const double central = excess(0);
    if (std::isnan(central)) {
        return Missing();
    }
    if (central <= 0) {
        return 0.0;
    }
    const double first = excess(start);
    if (std::isnan(first)) {
        return Missing();
    }
    if (first == 0) {
        return start;
    }
    const double factor = first > 0 ? 2 : 0.5;
    double near = start, far = start * factor;
    for (int round = 0; round < kMaxRounds; ++round, near = far, far *= factor) {
        CountStep();
        const double difference = excess(far);
        if (std::isnan(difference)) {
            return Missing();
        }
        if ((difference > 0) != (first > 0)) {
            return first > 0 ? Bisect(excess, near, far, tol) : Bisect(excess, far, near, tol);
        }
    }
    return Missing();
}

} // namespace

double MCDistFun::FindNCParamChi(double x, double df, double p, double tol) {
    if (!(df > 0) || !IsDomain(p, tol) || std::isnan(x)) {
        return Missing();
    }
    return FindNonCentrality([=](double ncp) { return NonCentralCdfChi(x, df, ncp); }, x, p, tol);
}

double MCDistFun::FindNCParamF(double x, double df1, double df2, double p, double tol) {
    if (!(df1 > 0 && df2 > 0) || !IsDomain(p, tol) || std::isnan(x)) {
        return Missing();
    }
    return FindNonCentrality([=](double ncp) { return NonCentralCdfF(x, df1, df2, ncp, kTruncation); }, x, p, tol);
}

// Doubling a negative x would walk away from the answer for ever, so the search starts from its size.
double MCDistFun::FindNCParamT(double x, double df, double p, double tol) {
    if (!(df > 0) || !IsDomain(p, tol) || std::isnan(x)) {
        return Missing();
    }
    const double start = x == 0 ? 1.0 : std::fabs(x);
    return FindNonCentrality([=](double ncp) { return NonCentralCdfT(x, df, ncp); }, start, p, tol);
}

} // namespace MCMath_900
