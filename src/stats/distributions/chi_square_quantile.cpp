#include "stats/numerics/constants.h"
#include "stats/numerics/guards.h"
#include "stats/numerics/incomplete_gamma.h"
#include "stats/numerics/saddle_point.h"
#include "stats/numerics/steps.h"

#include <MCMath_900/MCDistFun.h>

#include <cmath>
#include <numbers>

/// The quantile of the chi-square distribution, on which that of gamma stands.
///
/// Method: D. J. Best and D. E. Roberts, "Algorithm AS 91: The percentage points of the chi-square distribution",
/// Applied Statistics 24 (1975), 385-388: one of three starts, then the seven-term Taylor series of the quantile. The
/// empirical constants keep the single precision that they were first compiled with. Where the series doesn't converge,
/// bisection.
///
/// Accuracy: a correction ends when it moves the value by less than 5e-7, which leaves an error far below it, so that
/// the incomplete gamma ratio decides; below half a degree the logarithm of a quantile moves by 1 / df of the rounding
/// of p. Bisection ends at a relative width of 1e-8; every p below some 1e-60 comes to it, unless its quantile is below
/// 5e-7.
namespace MCMath_900 {

using namespace veltrane::stats;

namespace {

constexpr double kSmallStartFactor = 1.24f;
constexpr double kSmallDf = 0.32f;
constexpr double kSmallDfStart = 0.4f;
constexpr double kSmallDfTolerance = 0.01f;
constexpr double kNewton467 = 4.67f;
constexpr double kNewton666 = 6.66f;
constexpr double kNewton673 = 6.73f;
constexpr double kNewton1332 = 13.32f;
constexpr double kTwoNinths = 0.222222f;
constexpr double kLargeStartFactor = 2.2f;

/// The overflow limit of the exponents here, in place of the usual one.
constexpr double kLargestExponent = 141.8f;

/// Relative accuracy of the value, and the value below which the small-p start is exact enough.
constexpr double kAccuracy = 5e-7;

/// Below this p the start by Wilson and Hilferty may be too far off for the corrections.
constexpr double kFarLowerTail = 0.01;

constexpr int kMaxCorrections = 20;
constexpr int kMaxNewtonRounds = 100;
constexpr int kMaxBisections = 40;
constexpr double kBisectionAccuracy = 1e-8;

/// What all steps share: c = df / 2 - 1 and ln Gamma(df / 2).
struct ChiSquare {
    explicit ChiSquare(double freedom) : df(freedom), half(freedom / 2), c(half - 1) {
        logGamma = MCDistFun::korddnlgam(half);
    }

    /// -ln of the density at ch, but for p-free factors: the exponent of every correction.
    double Exponent(double ch) const {
        return -LogPoissonTerm(half, ch / 2) - std::log(half) + std::log(ch / 2) + std::numbers::ln2;
    }

    double df, half, c, logGamma;
};

/// The start for a small p: the leading term of the cumulative function, solved.
double SmallStart(const ChiSquare& chi, double p) {
    return 2 * std::exp((std::log(p) + LogGammaOfOnePlus(chi.half)) / chi.half);
}

/// A start nearer to the quantile, by Newton's method on the logarithm of the lower tail over that of the value. That
/// curve is concave, so that the steps come up to its root from below, whatever the first one was.
double Improved(double start, const ChiSquare& chi, double p) {
    double x = start / 2;
    for (int round = 0; round < kMaxNewtonRounds; ++round) {
        CountStep();
        long code = SUCCESS;
        const double logLower = std::log(GammaRatio(x, chi.half, true, code));
        const double slope = std::exp(LogPoissonTerm(chi.half, x) + std::log(chi.half) - logLower);
        const double step = (std::log(p) - logLower) / slope;
        if (!std::isfinite(step)) {
            break;
        }
        x *= std::exp(step);
        if (std::fabs(step) <= kSmallDfTolerance) {
            break;
        }
    }
    return 2 * x;
}

/// What a start too small for corrections lacks: the next two terms of the series of the quantile.
double Completed(double start, double half) {
    const double x = start / 2;
    const double next = x / (half + 1);
    return start * (1 + next * (1 + next * (3 * half + 5) / (2 * (half + 2))));
}

/// The start for few degrees of freedom: Newton's method on an approximation of the upper tail.
double SmallDfStart(const ChiSquare& chi, double p) {
    const double logUpper = std::log1p(-p);
    double ch = kSmallDfStart;
    for (int round = 0; round < kMaxNewtonRounds; ++round) {
        CountStep();
        const double previous = ch;
        const double p1 = 1 + ch * (kNewton467 + ch);
        const double p2 = ch * (kNewton673 + ch * (kNewton666 + ch));
        const double slope = -0.5 + (kNewton467 + 2 * ch) / p1 - (kNewton673 + ch * (kNewton1332 + 3 * ch)) / p2;
        const double exponent = logUpper + chi.logGamma + 0.5 * ch + chi.c * std::numbers::ln2;
        if (exponent > kLargestExponent) {
            return previous;
        }
        ch -= (1 - std::exp(exponent) * p2 / p1) / slope;
        if (std::fabs(previous / ch - 1) <= kSmallDfTolerance) {
            break;
        }
    }
    return ch;
}

/// The start by Wilson and Hilferty from the normal quantile, with another one for a far upper tail.
double WilsonHilfertyStart(const ChiSquare& chi, double p, double deviate) {
    const double p1 = kTwoNinths / chi.df;
    const double ch = chi.df * std::pow(deviate * std::sqrt(p1) + 1 - p1, 3);
    if (ch > kLargeStartFactor * chi.df + 6) {
        return -2 * (std::log1p(-p) - chi.c * std::log(0.5 * ch) + chi.logGamma);
    }
    return ch;
}

/// The seven-term Taylor correction of a value ch, with t the distance in probability over the density.
double Corrected(double ch, double t, double c) {
    const double b = t / ch;
    const double a = 0.5 * t - b * c;
    const double s1 = (210 + a * (140 + a * (105 + a * (84 + a * (70 + 60 * a))))) / 420;
    const double s2 = (420 + a * (735 + a * (966 + a * (1141 + 1278 * a)))) / 2520;
    const double s3 = (210 + a * (462 + a * (707 + 932 * a))) / 2520;
    const double s4 = (252 + a * (672 + 1182 * a) + c * (294 + a * (889 + 1740 * a))) / 5040;
    const double s5 = (84 + 264 * a + c * (175 + 606 * a)) / 2520;
    const double s6 = (120 + c * (346 + 127 * c)) / 5040;
    return ch + t * (1 + 0.5 * t * s1 - b * c * (s1 - b * (s2 - b * (s3 - b * (s4 - b * (s5 - b * s6))))));
}

/// The corrections of a start; a NaN when they don't converge.
double CorrectedChi(double p, double df, double start) {
    const ChiSquare chi(df);
    double ch = start;
    for (int round = 0; round < kMaxCorrections; ++round) {
        CountStep();
        const double previous = ch;
        if (!(ch > 0) || std::isinf(ch)) {
            return kUnknown;
        }
        long code = SUCCESS;
        // Above the median the difference of the upper tails is the same number with more digits.
        const double difference = p > 0.5 ? GammaRatio(ch / 2, chi.half, false, code) - (1 - p)
                                          : p - GammaRatio(ch / 2, chi.half, true, code);
        const double exponent = chi.Exponent(ch);
        if (code != SUCCESS || !(exponent <= kLargestExponent)) {
            return kUnknown;
        }
        ch = Corrected(ch, difference * std::exp(exponent), chi.c);
        if (ch > 0 && std::fabs(previous / ch - 1) <= kAccuracy) {
            return ch;
        }
    }
    return kUnknown;
}

} // namespace

double MCDistFun::idfchb(double p, double df, double start, long& code) {
    code = SUCCESS;
    double lower = start / 4, upper = start;
    const auto below = [&](double x) { return gammad(x, df / 2, true, code) < p; };
    bool bracketed = below(lower) && code == SUCCESS;
    if (bracketed && below(upper)) {
        upper *= 2;
        bracketed = !below(upper);
    }
    if (!bracketed || code != SUCCESS || !(start > 0)) {
        return Fail(code, FAILED);
    }
    double middle = (lower + upper) / 2;
    for (int round = 0; round < kMaxBisections && upper - lower > kBisectionAccuracy * middle; ++round) {
        CountStep();
        (below(middle) ? lower : upper) = middle;
        middle = (lower + upper) / 2;
    }
    return code == SUCCESS ? 2 * middle : Missing();
}

double MCDistFun::kordidfchi(double p, double df, long& code) {
    code = SUCCESS;
    if (!(p >= 0 && p < 1) || !(df > 0)) {
        return Fail(code, BAD_ARGUMENT);
    }
    if (p == 0) {
        return 0.0;
    }
    const ChiSquare chi(df);
    if (IsMissing(chi.logGamma)) {
        return Fail(code, FAILED);
    }
    double start;
    if (df < -kSmallStartFactor * std::log(p)) {
        start = SmallStart(chi, p);
        if (start < kAccuracy) {
            return Completed(start, chi.half);
        }
        start = Improved(start, chi, p);
    } else {
        start = df <= kSmallDf ? SmallDfStart(chi, p) : WilsonHilfertyStart(chi, p, probit(p));
        if (p < kFarLowerTail) {
            start = Improved(start > 0 ? start : SmallStart(chi, p), chi, p);
        }
    }
    const double quantile = CorrectedChi(p, df, start);
    return std::isnan(quantile) ? idfchb(p, df, start, code) : quantile;
}

double MCDistFun::IdfChi(double p, double df) {
    return Checked([&](long& code) { return kordidfchi(p, df, code); });
}

} // namespace MCMath_900
