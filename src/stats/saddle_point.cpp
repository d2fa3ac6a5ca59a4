#include "stats/saddle_point.h"

#include "platform/platform.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace veltrane::stats {

namespace {

using platform::LogGamma;

/// ln(2 pi) / 2
constexpr double kHalfLogTwoPi = 0.91893853320467274178;

/// From here on Stirling's series is exact to double precision; below, ln Gamma has few enough digits to cancel.
constexpr double kStirlingFrom = 15;

/// Within this relative distance of the mean the deviance is summed as a series.
constexpr double kNearMean = 0.1;

} // namespace

double StirlingError(double x) {
    if (x < kStirlingFrom)
        return LogGamma(x + 1) - (x + 0.5) * std::log(x) + x - kHalfLogTwoPi;
    const double s = 1 / (x * x);
    return (1.0 / 12 - (1.0 / 360 - (1.0 / 1260 - (1.0 / 1680 - (1.0 / 1188 - s * 691 / 360360) * s) * s) * s) * s) / x;
}

double Deviance(double x, double mean) {
    const double difference = x - mean;
    if (!(std::fabs(difference) < kNearMean * (x + mean)))
        return x * std::log(x / mean) - difference;
    const double v = difference / (x + mean);
    double sum = difference * v;
    double term = 2 * x * v;
    for (int j = 3;; j += 2) {
        term *= v * v;
        const double next = sum + term / j;
        if (next == sum)
            return sum;
        sum = next;
    }
}

double LogPoissonTerm(double a, double x) {
    if (a < kStirlingFrom)
        return a * std::log(x) - x - LogGamma(a + 1);
    return -StirlingError(a) - Deviance(a, x) - kHalfLogTwoPi - 0.5 * std::log(a);
}

double LogBinomialTerm(double a, double b, double x, double y) {
    const double n = a + b;
    if (n < kStirlingFrom)
        return LogGamma(n + 1) - LogGamma(a + 1) - LogGamma(b + 1) + a * LogProbability(x, y) +
               b * LogProbability(y, x);
    const double stirling = StirlingError(n) - StirlingError(a) - StirlingError(b);
    const double deviance = Deviance(a, n * x) + Deviance(b, n * y);
    return stirling - deviance - kHalfLogTwoPi + 0.5 * (std::log(n / std::max(a, b)) - std::log(std::min(a, b)));
}

double LogChoose(double n, double k) {
    const double m = std::min(k, n - k);
    const double rest = n - m;
    if (n < kStirlingFrom)
        return LogGamma(n + 1) - LogGamma(m + 1) - LogGamma(rest + 1);
    const double entropy = -m * std::log(m / n) - rest * std::log1p(-m / n);
    const double stirling = StirlingError(n) - StirlingError(m) - StirlingError(rest);
    return entropy + stirling - kHalfLogTwoPi + 0.5 * (std::log(n / rest) - std::log(m));
}

double LogBeta(double a, double b) {
    return std::log1p(std::min(a, b) / std::max(a, b)) - std::log(std::min(a, b)) - LogChoose(a + b, a);
}

double LogGammaStep(double h, double d) {
    return LogGamma(d) - LogBeta(h, d);
}

double LogProbability(double x, double y) {
    return x < y ? std::log(x) : std::log1p(-y);
}

} // namespace veltrane::stats
