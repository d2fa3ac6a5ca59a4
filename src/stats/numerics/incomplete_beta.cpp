#include "stats/numerics/incomplete_beta.h"

#include "stats/numerics/constants.h"
#include "stats/numerics/guards.h"
#include "stats/numerics/saddle_point.h"
#include "stats/numerics/steps.h"

#include <MCMath_900/MCDistFun.h>
#include <MCMath_900/MCPower.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

/// The incomplete beta ratio and the cumulative function of the beta distribution.
///
/// Method: for a parameter of at most 1 the power series of M. Abramowitz and I. A. Stegun, "Handbook of Mathematical
/// Functions", 1964, 26.5.4; otherwise the continued fraction 26.5.8, its even and odd parts a round. Where neither
/// converges, the normal approximation of D. B. Peizer and J. W. Pratt, J. Amer. Statist. Assoc. 63 (1968), 1416-1456.
/// Series and fraction sum the smaller tail; the other one is its complement.
///
/// Accuracy: some 1e-14 by the series, 1e-12 down to 1e-300. The fraction stops at a relative change of 10 (a + b)
/// machine epsilons, which bounds its accuracy: five digits are left for an a + b of 1e10, none beyond 1e14.
namespace veltrane::stats {

namespace {

constexpr int kMaxRounds = 10000;

/// The series is finished below this term.
constexpr double kSmallestTerm = 1e-15;

/// Around 1 the closed form of g(x) cancels, and its series is used.
constexpr double kNearOne = 0.1;

/// Above this sum of the parameters the fraction cannot converge where it matters, and its products would overflow.
constexpr double kLargestSum = 1e100;

/// The other series is of use up to this product: from there on it has no digits of the complement.
constexpr double kLargestProductForOther = 40;

/// Below this parameter the tail on the other side is small at any x.
constexpr double kSmallParameter = 0.3;

/// I_x(a, b), or 1 - I_y(b, a) once it is turned around. y is 1 - x.
struct Tail {
    double x, y, a, b;
    bool complement = false;

    void TurnAround() {
        std::swap(x, y);
        std::swap(a, b);
        complement = !complement;
    }

    /// Whether x lies where the fraction and the series are slow, and the ratio is the larger part of 1.
    bool IsBeyondCrossing() const { return x < y ? x >= (a + 1) / (a + b + 2) : y <= (b + 1) / (a + b + 2); }

    /// The relative change at which the fraction ends.
    double FractionTolerance() const { return MCMath_900::MCPower::MEpsilon() * 10 * std::max(a + b, 1.0); }
};

/// A ratio by the logarithm of its smaller part, which is the other part when it is a complement.
struct SmallerPart {
    double log;
    bool complement;

    double Ratio() const { return ClampedProbability(complement ? ComplementedExp(log) : BoundedExp(log)); }
    double LogRatio() const { return std::min(complement ? std::log1p(-BoundedExp(log)) : log, 0.0); }
};

/// Whether the power series ends in time, with b at most 1: after that many rounds its term is at least a / (a +
/// rounds) times that power of x.
bool SeriesEnds(const Tail& tail) {
    return std::log(tail.a / (tail.a + kMaxRounds)) + kMaxRounds * LogProbability(tail.x, tail.y) <
           std::log(kSmallestTerm);
}

/// The sum of the power series; a NaN when it doesn't finish.
double SeriesSum(const Tail& tail, int& rounds) {
    double term = 1, sum = 1;
    for (int i = 0; i < kMaxRounds; ++i) {
        CountStep();
        ++rounds;
        term *= (i + tail.a + tail.b) / (i + tail.a + 1) * tail.x;
        sum += term;
        if (std::fabs(term) < kSmallestTerm) {
            return sum;
        }
    }
    return kUnknown;
}

/// The value of the continued fraction, normalised to the same leading factor; a NaN when it doesn't converge, or when
/// its parts leave the range of a double.
double FractionValue(const Tail& tail, int& rounds) {
    const double a = tail.a, b = tail.b;
    if (!(a + b <= kLargestSum)) {
        return kUnknown;
    }
    const double tolerance = tail.FractionTolerance();
    double oldNumerator = 1, oldDenominator = 1, value = 1;
    double denominator = tail.x < tail.y ? 1 - (a + b) * tail.x / (a + 1) : (1 - b + (a + b) * tail.y) / (a + 1);
    for (int m = 1; m <= kMaxRounds; ++m) {
        CountStep();
        ++rounds;
        const double low = a + 2 * m - 1, high = a + 2 * m + 1;
        const double scaled = tail.x / (low * (a + 2 * m) * high);
        const double even = m * (b - m) * high * scaled;
        const double odd = -(a + m) * (a + b + m) * low * scaled;
        const double evenNumerator = value + even * oldNumerator;
        const double evenDenominator = denominator + even * oldDenominator;
        const double norm = 1 / (evenDenominator + odd * denominator);
        const double previous = value;
        value = (evenNumerator + odd * previous) * norm;
        oldNumerator = evenNumerator * norm;
        oldDenominator = evenDenominator * norm;
        denominator = 1;
        if (!(std::fabs(value - previous) > tolerance * std::fabs(value))) {
            return value;
        }
    }
    return kUnknown;
}

/// What stands before the sum of either expansion, as a logarithm.
double LogFactor(const Tail& tail) {
    return LogBinomialTerm(tail.a, tail.b, tail.x, tail.y) + std::log(tail.b / (tail.a + tail.b));
}

/// What no sum exceeds before the crossing, where its terms fall by at least the quotient of the first two.
double LogOfLargestSum(const Tail& tail) {
    return std::log(std::max((tail.a + tail.b) / 2 + 1, 1.0 + kMaxRounds));
}

/// The sum of either expansion times what stands before it, as a logarithm. A NaN stays one.
SmallerPart FromSum(const Tail& tail, double sum) {
    if (sum <= 0) {
        return {-std::numeric_limits<double>::infinity(), tail.complement};
    }
    return {LogFactor(tail) + std::log(sum), tail.complement};
}

/// The ratio by the power series of a tail before the crossing, with a parameter of at most 1; a NaN when it has to be
/// had by the fraction.
SmallerPart BySeries(Tail tail, int& rounds) {
    constexpr SmallerPart kNot{kUnknown, false};
    // A small a leaves little to the upper tail, wherever x is.
    if (tail.complement && tail.a < kSmallParameter) {
        Tail upper = tail;
        upper.TurnAround();
        const SmallerPart part = SeriesEnds(upper) ? FromSum(upper, SeriesSum(upper, rounds)) : kNot;
        if (!std::isnan(part.log)) {
            return part;
        }
    }
    if (tail.a <= 1 || SeriesEnds(tail)) {
        const SmallerPart part = FromSum(tail, SeriesSum(tail, rounds));
        if (!std::isnan(part.log)) {
            return part;
        }
    }
    // x is near 1. The series of the other tail is short, but where the complement of it is asked for and small, it has
    // fewer digits than the fraction.
    if (!(tail.a * tail.y <= kLargestProductForOther)) {
        return kNot;
    }
    const double tolerance = tail.FractionTolerance();
    tail.TurnAround();
    const SmallerPart part = FromSum(tail, SeriesSum(tail, rounds));
    const bool hasDigits = !part.complement || part.Ratio() * tolerance >= MCMath_900::MCPower::MEpsilon();
    return hasDigits ? part : kNot;
}

/// The arguments and weights of g are this library's own, not the published ones; models were built on the results.
/// Only parameters above 1e11 come here, where the fraction converges too slowly.
SmallerPart ByNormal(const Tail& tail) {
    const double a = tail.a, b = tail.b, x = tail.x, y = tail.y;
    const double n = a + b - 1;
    const double w = (1 + y * PeizerPrattG((b - 0.5) / n) + x * PeizerPrattG((a - 0.5) / n)) / ((n + 1.0 / 6) * x * y);
    double z = 0;
    if (w > 0) {
        z = std::sqrt(w) * ((x - a / n) * n + (x + 1) / 3 + (x / b - y / a + (x - 0.5) / (a + b)) / 50);
    }
    const double ratio = MCMath_900::MCDistFun::CdfStdNorm(tail.complement ? -z : z);
    return {IsMissing(ratio) ? kUnknown : std::log(ratio), false};
}

/// For parameters above 0 and an x within its range.
/// @param smallest below this logarithm a part counts as nothing
/// @param rounds   raised by those of the expansions
SmallerPart SmallerPartOf(double x, double y, double a, double b, double smallest, int& rounds) {
    Tail tail{x, y, a, b};
    if (tail.IsBeyondCrossing()) {
        tail.TurnAround();
    }
    if (LogFactor(tail) + LogOfLargestSum(tail) < smallest) {
        return {-std::numeric_limits<double>::infinity(), tail.complement};
    }
    if (a <= 1 || b <= 1) {
        const SmallerPart part = BySeries(tail, rounds);
        if (!std::isnan(part.log)) {
            return part;
        }
    }
    const double sum = FractionValue(tail, rounds);
    return std::isnan(sum) ? ByNormal(tail) : FromSum(tail, sum);
}

} // namespace

double PeizerPrattG(double x) {
    if (x < 0) {
        return Missing();
    }
    if (x == 0) {
        return 1.0;
    }
    if (x == 1) {
        return 0.0;
    }
    if (x > kLargestRoot) {
        return -1.0;
    }
    const double u = 1 - x;
    if (!(std::fabs(u) < kNearOne)) {
        return (1 - x * x + 2 * x * std::log(x)) / (u * u);
    }
    double sum = 0, power = u;
    for (int k = 3; sum + power != sum; ++k, power *= u) {
        CountStep();
        sum += 2 * power / (k * (k - 1));
    }
    return sum;
}

double BetaRatio(double x, double y, double a, double b, long& code) {
    code = SUCCESS;
    if (!(a > 0 && b > 0) || std::isnan(x)) {
        return Fail(code, BAD_ARGUMENT);
    }
    if (x <= 0) {
        return 0.0;
    }
    if (y <= 0) {
        return 1.0;
    }
    if (a == 1) {
        return b == 1 ? x : ComplementedExp(b * LogProbability(y, x));
    }
    if (b == 1) {
        return BoundedExp(a * LogProbability(x, y));
    }
    int rounds = 0;
    const double ratio = SmallerPartOf(x, y, a, b, kMinExponent, rounds).Ratio();
    return std::isnan(ratio) ? Fail(code, FAILED) : ratio;
}

bool IsAtEnd(double x, double y, double a, double b) {
    constexpr double kSmallest = 1e-290;
    constexpr double kLargestParameter = 1e250; // whose product with it is nothing beside 1
    return a > 0 && b > 0 && std::max(a, b) < kLargestParameter && !(std::min(x, y) >= kSmallest);
}

double BetaRatioAtEnd(double logit, double a, double b) {
    const double ratio =
        logit < 0 ? BoundedExp(a * logit - LogScaledBeta(a, b)) : ComplementedExp(-b * logit - LogScaledBeta(b, a));
    return ClampedProbability(ratio);
}

double LogBetaRatio(double x, double y, double a, double b, int& rounds) {
    constexpr double kNothing = -std::numeric_limits<double>::infinity();
    return SmallerPartOf(x, y, a, b, kNothing, rounds).LogRatio();
}

} // namespace veltrane::stats

namespace MCMath_900 {

double MCDistFun::cbtaux(double x) {
    return veltrane::stats::PeizerPrattG(x);
}

double MCDistFun::cdfbet(double x, double a, double b, long& code) {
    return veltrane::stats::BetaRatio(x, 1 - x, a, b, code);
}

double MCDistFun::CdfBeta(double x, double a, double b) {
    return veltrane::stats::Checked([&](long& code) { return cdfbet(x, a, b, code); });
}

} // namespace MCMath_900
