#include "stats/numerics/saddle_point.h"

#include "platform/platform.h"
#include "stats/numerics/steps.h"
#include "stats/numerics/tail_integral.h"

#include <algorithm>
#include <cmath>

namespace veltrane::stats {

namespace {

using platform::LogGamma;

/// ln(2 pi) / 2
constexpr double kHalfLogTwoPi = 0.91893853320467274178;

/// From here on Stirling's series is exact to double precision; below, ln Gamma has few enough digits to cancel.
constexpr double kStirlingFrom = 15;

/// Within this relative distance of the mean the deviance is summed as a series, which this many terms end.
constexpr double kNearMean = 0.5;
constexpr int kMaxDevianceTerms = 40;

/// Euler's constant: ln Gamma falls with it at 1.
constexpr double kEuler = 0.57721566490153286061;

/// part - (part + other) x. The rounding of the sum and of the product, which far from the mean would cost as many
/// digits as the distance has standard deviations, is made up for.
/// @param whole the sum of `part` and `other`, rounded
double DifferenceFromMean(double part, double other, double whole, double x) {
    const double mean = whole * x;
    const double meanRest = std::fma(whole, x, -mean);
    const double larger = std::max(part, other);
    const double wholeRest = std::min(part, other) - (whole - larger);
    return (part - mean) - meanRest - wholeRest * x;
}

/// The deviance of an x that differs from its mean by `difference`.
double DevianceOf(double x, double mean, double difference) {
    const double v = difference / 2 / (x / 2 + mean / 2);
    if (!(std::fabs(v) < kNearMean)) {
        return x * std::log(x / mean) - difference;
    }
    const double square = v * v;
    double sum = difference * v;
    double term = 2 * (x * v);
    for (int k = 1; k <= kMaxDevianceTerms; ++k) {
        CountStep();
        term *= square;
        const double next = sum + term / (2 * k + 1);
        if (next == sum) {
            break;
        }
        sum = next;
    }
    return sum;
}

/// ln Gamma(b + a) - ln Gamma(b), to the relative accuracy of a small a.
double LogGammaRise(double b, double a) {
    double rise = 0;
    for (; b < kStirlingFrom; b += 1) {
        CountStep();
        rise -= std::log1p(a / b);
    }
    const double v = a / b;
    return rise + a * std::log(b) + (a - 0.5) * v + (b + a - 0.5) * LogOfOnePlusLess(v) + StirlingError(b + a) -
           StirlingError(b);
}

} // namespace

double StirlingError(double x) {
    if (x < kStirlingFrom) {
        return LogGamma(x + 1) - (x + 0.5) * std::log(x) + x - kHalfLogTwoPi;
    }
    const double s = 1 / (x * x);
    return (1.0 / 12 - (1.0 / 360 - (1.0 / 1260 - (1.0 / 1680 - (1.0 / 1188 - s * 691 / 360360) * s) * s) * s) * s) / x;
}

double Deviance(double x, double mean) {
    return DevianceOf(x, mean, x - mean);
}

double LogGammaOfOnePlus(double h) {
    const double rest = h - ((1 + h) - 1);
    return LogGamma(1 + h) - kEuler * rest;
}

double LogPoissonTerm(double a, double x) {
    if (a < kStirlingFrom) {
        return a * std::log(x) - x - LogGamma(a + 1);
    }
    return -StirlingError(a) - Deviance(a, x) - kHalfLogTwoPi - 0.5 * std::log(a);
}

double LogBinomialTerm(double a, double b, double x, double y) {
    const double n = a + b;
    if (n < kStirlingFrom) {
        return LogGamma(n + 1) - LogGamma(a + 1) - LogGamma(b + 1) + a * LogProbability(x, y) +
               b * LogProbability(y, x);
    }
    const double stirling = StirlingError(n) - StirlingError(a) - StirlingError(b);
    const double difference = x < y ? DifferenceFromMean(a, b, n, x) : -DifferenceFromMean(b, a, n, y);
    const double deviance = DevianceOf(a, n * x, difference) + DevianceOf(b, n * y, -difference);
    return stirling - deviance - kHalfLogTwoPi + 0.5 * (std::log(n / std::max(a, b)) - std::log(std::min(a, b)));
}

double LogChoose(double n, double k) {
    const double m = std::min(k, n - k);
    const double rest = n - m;
    if (n < kStirlingFrom) {
        return LogGamma(n + 1) - LogGamma(m + 1) - LogGamma(rest + 1);
    }
    const double entropy = -m * std::log(m / n) - rest * std::log1p(-m / n);
    const double stirling = StirlingError(n) - StirlingError(m) - StirlingError(rest);
    return entropy + stirling - kHalfLogTwoPi + 0.5 * (std::log(n / rest) - std::log(m));
}

double LogBeta(double a, double b) {
    const double m = std::min(a, b);
    const double rest = std::max(a, b);
    const double n = m + rest;
    if (n < kStirlingFrom) {
        return LogGammaOfOnePlus(m) + LogGammaOfOnePlus(rest) - LogGamma(n) - std::log(m) - std::log(rest);
    }
    const double entropy = (m - 0.5) * std::log(m / n) + (rest - 0.5) * std::log1p(-m / n) - 0.5 * std::log(n);
    return entropy + StirlingError(m) + StirlingError(rest) - StirlingError(n) + kHalfLogTwoPi;
}

double LogScaledBeta(double a, double b) {
    return a < 1 ? LogGammaOfOnePlus(a) - LogGammaRise(b, a) : std::log(a) + LogBeta(a, b);
}

double LogGammaStep(double h, double d) {
    return LogGamma(d) - LogBeta(h, d);
}

double LogProbability(double x, double y) {
    return x < y ? std::log(x) : std::log1p(-y);
}

} // namespace veltrane::stats
