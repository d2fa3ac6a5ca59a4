#include "stats/numerics/incomplete_gamma.h"

#include "stats/numerics/constants.h"
#include "stats/numerics/guards.h"
#include "stats/numerics/saddle_point.h"
#include "stats/numerics/steps.h"
#include "stats/numerics/tail_integral.h"

#include <MCMath_900/MCDistFun.h>
#include <MCMath_900/MCPower.h>

#include <algorithm>
#include <cmath>

/// The incomplete gamma ratio.
///
/// Method: B. L. Shea, "Algorithm AS 239: Chi-squared and incomplete gamma integral", Applied Statistics 37 (1988),
/// 466-473: Pearson's series for the lower tail, Legendre's continued fraction for the upper one. Where neither can be
/// had: D. B. Peizer and J. W. Pratt, "A normal approximation for binomial, F, beta, and other common, related tail
/// probabilities, I", J. Amer. Statist. Assoc. 63 (1968), 1416-1456, and E. B. Wilson and M. M. Hilferty, "The
/// distribution of chi-square", Proc. Nat. Acad. Sci. 17 (1931), 684-688.
///
/// Near the mean of a large parameter either expansion needs some multiple of the standard deviation of rounds; there
/// its sum is had as an integral instead, which is the same number. The upper tail of a small parameter is summed on
/// its own.
///
/// Accuracy: some 1e-14 for the smaller tail, 1e-12 down to 1e-300; the other one is its complement.
namespace veltrane::stats {

using MCMath_900::MCDistFun;
using MCMath_900::MCPower;

namespace {

/// The relative size of the last term of either expansion, and its decimal logarithm.
constexpr double kTolerance = 1e-14;
constexpr double kLogTolerance = -14;

/// The values of the fraction are scaled down from here on: sqrt of the largest double.
constexpr double kRescaleFrom = 1.34e154;

/// Rounds that either expansion may take, as no more are needed: up to kIntegralFrom, or away from the mean.
constexpr int kMaxRounds = 10000;

/// From this parameter on, and this near to it, the integral takes the place of either expansion.
constexpr double kIntegralFrom = 1e4;
constexpr double kIntegralReach = 0.05;

/// Below this parameter the upper tail of an x up to 1 is too small to be what the lower one leaves of 1.
constexpr double kSmallShape = 0.3;

/// Below it the upper tail is what the lower one lacks of 1, which the rounding of a logarithm near 0 may take for
/// more.
constexpr double kSmallTail = 0.1;

bool HasIntegral(double a, double x) {
    return a >= kIntegralFrom && std::fabs(x - a) < kIntegralReach * a;
}

/// Whether the series would need too many terms: by its ratio of terms at the start.
bool SeriesIsTooLong(double a, double x) {
    const double logRatio = std::log10(x / (a + 1));
    if (logRatio == 0) {
        return true;
    }
    const double quotient = kLogTolerance / logRatio;
    if (!(quotient > 0)) {
        return false;
    }
    const double rounds = std::sqrt(quotient) * 2 + 10;
    return rounds * rounds >= MCPower::MaxInt();
}

/// The logarithm of the lower tail by Pearson's series; a NaN when it can't be had.
double LogLowerBySeries(double a, double x) {
    if (SeriesIsTooLong(a, x) || IsMissing(MCDistFun::korddnlgam(a + 1))) {
        return kUnknown;
    }
    if (HasIntegral(a, x)) {
        return LogPoissonTerm(a, x) + std::log(a * TailIntegral(a - x - 1, {a - 1, -1}, {}));
    }
    double sum = 1, term = 1, c = a;
    for (int round = 0; round < kMaxRounds; ++round) {
        CountStep();
        c += 1;
        term *= x / c;
        sum += term;
        if (term < kTolerance) {
            return LogPoissonTerm(a, x) + std::log(sum);
        }
    }
    return kUnknown;
}

/// Two convergents A / B of Legendre's continued fraction.
struct Convergents {
    double a0, b0, a1, b1;

    void Step(double nextA, double nextB) {
        a0 = a1;
        b0 = b1;
        a1 = nextA;
        b1 = nextB;
        if (std::fabs(nextA) >= kRescaleFrom) {
            for (double* part : {&a0, &b0, &a1, &b1}) {
                *part /= kRescaleFrom;
            }
        }
    }
};

/// The logarithm of the upper tail by Legendre's continued fraction; a NaN when it can't be had.
double LogUpperByFraction(double shape, double x) {
    if (IsMissing(MCDistFun::korddnlgam(shape)) || 4 * std::log(x) >= kMaxExponent) {
        return kUnknown;
    }
    if (HasIntegral(shape, x)) {
        return LogPoissonTerm(shape, x) + std::log(shape * TailIntegral(x - shape + 1, {shape - 1, 1}, {}));
    }
    double a = 1 - shape, b = x + a + 1;
    Convergents values{1, x, x + 1, x * b};
    double previous = values.a1 / values.b1;
    for (int round = 1; round < kMaxRounds; ++round) {
        CountStep();
        a += 1;
        b += 2;
        const double weight = a * round;
        const double nextA = b * values.a1 - weight * values.a0;
        const double nextB = b * values.b1 - weight * values.b0;
        if (std::fabs(nextB) > 0) {
            const double ratio = nextA / nextB;
            if (std::fabs(previous - ratio) <= std::min(kTolerance, kTolerance * ratio)) {
                return LogPoissonTerm(shape, x) + std::log(shape) + std::log(ratio);
            }
            previous = ratio;
        }
        values.Step(nextA, nextB);
    }
    return kUnknown;
}

/// The upper tail of a small shape at an x of at most 1, where 1 less the lower tail would cancel: the lower one is a
/// factor near 1 times a sum near 1, and what each lacks of 1 is small. W. Gautschi, "A computational procedure for
/// incomplete gamma functions", ACM Trans. Math. Software 5 (1979), 466-481.
double UpperOfSmallShape(double a, double x) {
    const double logFactor = a * std::log(x) - LogGammaOfOnePlus(a);
    double sum = 0, term = 1;
    for (int n = 1; std::fabs(term) > kTolerance * kTolerance; ++n) {
        CountStep();
        term *= -x / n;
        sum -= term / (a + n);
    }
    return a * sum * std::exp(logFactor) - std::expm1(logFactor);
}

/// The normal deviate of an upper tail, by Peizer and Pratt; for a of at least 0.5.
double PeizerPrattDeviate(double a, double x) {
    const double w = (a - 0.5) / x;
    double scale;
    if (w == 0) {
        scale = std::sqrt(2 / x);
    } else if (w == 1) {
        scale = std::sqrt(1 / x);
    } else {
        scale = std::sqrt(Deviance(w, 1) * 2 / x) / std::fabs(1 - w);
    }
    return (0.022 / a + a - x - 1.0 / 3) * scale;
}

/// The normal deviate of the lower tail, by Wilson and Hilferty.
double WilsonHilfertyDeviate(double a, double x) {
    const double s = 3 * std::sqrt(a);
    if (x == a) {
        return 1 / s;
    }
    const double cubeRootLessOne = std::expm1(std::log1p((x - a) / a) / 3);
    return s * (1 / (9 * a) + cubeRootLessOne);
}

} // namespace

double GammaRatio(double x, double a, bool lower, long& code) {
    code = SUCCESS;
    if (!(a > 0) || std::isnan(x)) {
        return Fail(code, BAD_ARGUMENT);
    }
    if (x <= 0 || std::isinf(x)) {
        return (x > 0) == lower ? 1 : 0;
    }
    if (a == 1) {
        return lower ? ComplementedExp(-x) : BoundedExp(-x);
    }
    if (a < kSmallShape && x <= 1) {
        const double upper = UpperOfSmallShape(a, x);
        if (!lower) {
            return upper;
        }
        if (upper < kSmallTail) {
            return 1 - upper;
        }
    }
    const bool lowerIsComputed = x <= 1 || a >= x;
    const double logTail = lowerIsComputed ? LogLowerBySeries(a, x) : LogUpperByFraction(a, x);
    if (logTail <= 0) {
        return lowerIsComputed == lower ? BoundedExp(logTail) : ComplementedExp(logTail);
    }
    const double deviate = !lower && a >= 0.5 ? PeizerPrattDeviate(a, x)
                           : lower            ? WilsonHilfertyDeviate(a, x)
                                              : -WilsonHilfertyDeviate(a, x);
    const double tail = MCDistFun::CdfStdNorm(deviate);
    return IsMissing(tail) ? Fail(code, FAILED) : tail;
}

} // namespace veltrane::stats

namespace MCMath_900 {

using namespace veltrane::stats;

double MCDistFun::gammad(double x, double a, bool lower, long& code) {
    return GammaRatio(x, a, lower, code);
}

double MCDistFun::cdfexp(double x, double rate, long& code) {
    code = SUCCESS;
    if (!(rate > 0) || std::isnan(x)) {
        return Fail(code, BAD_ARGUMENT);
    }
    if (x <= 0) {
        return 0.0;
    }
    return MCPower::ExpUnderflow(-x * rate) ? 1.0 : -std::expm1(-x * rate);
}

} // namespace MCMath_900
