#include "stats/distributions/beta_quantile.h"

#include "stats/numerics/guards.h"
#include "stats/numerics/incomplete_beta.h"
#include "stats/numerics/saddle_point.h"
#include "stats/numerics/steps.h"

#include <MCMath_900/MCDistFun.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <utility>

/// The quantile of the beta distribution, on which those of t and F stand.
///
/// Method: G. W. Cran, K. J. Martin and G. E. Thomas, "Remark AS R19 and Algorithm AS 109: A remark on algorithms AS 63
/// and AS 64", Applied Statistics 26 (1977), 111-114, after K. L. Majumder and G. P. Bhattacharjee, "Algorithm AS 64:
/// Inverse of the incomplete beta function ratio", Applied Statistics 22 (1973), 411-414: a start from the normal
/// quantile, then Newton steps that are shortened until they help. The quantile of the smaller tail is solved.
///
/// The start is made better beforehand on the scale of ln(x / y), where the logarithm of the ratio is a concave
/// function with known derivatives and the smallest quantile has all its digits. From such a start the Newton steps end
/// at once, by their own rule.
///
/// Accuracy: that of the ratio, divided by the smaller parameter when it is below 1: the logarithm of a quantile moves
/// by 1 / a of the relative rounding of p. Of x and its complement each is relatively exact.
namespace veltrane::stats {

namespace {

using MCMath_900::MCDistFun;

/// A parameter this much smaller than the other leaves the whole mass at 1.
constexpr double kNegligible = 1e-20;

/// The logarithm of what is so small that the terms after the leading one don't count: a parameter would have to be
/// above 1e80 for them.
constexpr double kLogOfEnd = -400;

/// Where a start from the normal quantile is clamped to.
constexpr double kSmallestStart = 1e-8;
constexpr double kLargestStart = 0.9999999;

/// Rounds of the improved start, and of the Newton steps.
constexpr int kMaxStartRounds = 40;
constexpr int kMaxRounds = 50;

/// Rounds of the ratio's expansions after which no more of either is begun. Only parameters above 1e9 come to it, whose
/// ratio has too few digits for the steps to settle.
constexpr int kMaxRatioRounds = 80000;

/// The square of a step at which the iteration ends.
constexpr double kSquareTolerance = 1e-20;

/// The shortest move, and the distance that a value keeps from either end of the interval.
constexpr double kPrecision = 1e-12;
constexpr double kInPlaceOfOne = 0.999999999999;

/// A step of the improved start that is no more than rounding.
constexpr double kNoStep = 2e-16;

BetaQuantile AtLogit(double logit) {
    return {1 / (1 + std::exp(-logit)), 1 / (1 + std::exp(logit)), logit};
}

/// The lower tail of two parameters at p, which is at most 0.5.
class LowerTail {
public:
    LowerTail(double p, double a, double b) : fP(p), fA(a), fB(b), fLogP(std::log(p)), fLogBeta(LogBeta(a, b)) {}

    bool IsComputable() const { return std::isfinite(fLogBeta); }

    bool Solve(BetaQuantile& quantile) {
        if (SolveAtAnEnd(quantile)) {
            return true;
        }
        double step = 0;
        if (!Improve(Start(), quantile, step)) {
            return false;
        }
        return std::fabs(step) * quantile.x * quantile.y <= std::sqrt(kSquareTolerance) || Iterate(quantile);
    }

private:
    double LeadingLogit() const { return (fLogP + LogScaledBeta(fA, fB)) / fA; }
    bool SolveAtAnEnd(BetaQuantile& quantile) const;
    double CarterStart(double deviate) const;
    double ChiSquareStart(double deviate) const;
    double Start() const;
    bool Improve(double logit, BetaQuantile& quantile, double& step);
    bool Iterate(BetaQuantile& quantile);

    double fP, fA, fB, fLogP, fLogBeta;
    int fRatioRounds = 0;
};

/// A quantile so near to either end that the leading term of its tail is all of it; it need not be in the range of a
/// double.
bool LowerTail::SolveAtAnEnd(BetaQuantile& quantile) const {
    const double logOfX = LeadingLogit();
    const double logOfY = (std::log1p(-fP) + LogScaledBeta(fB, fA)) / fB;
    if (logOfX >= kLogOfEnd && logOfY >= kLogOfEnd) {
        return false;
    }
    quantile = AtLogit(logOfX < kLogOfEnd ? logOfX : -logOfY);
    return true;
}

/// The start for two parameters above 1: Abramowitz and Stegun 26.5.22 with the parts of the two parameters exchanged.
/// The steps come to the same quantile from either. `deviate` is positive for a small tail.
double LowerTail::CarterStart(double deviate) const {
    const double r = (deviate * deviate - 3) / 6;
    const double s = 1 / (2 * fB - 1);
    const double t = 1 / (2 * fA - 1);
    const double h = 2 / (s + t);
    const double w = deviate * std::sqrt(h + r) / h - (t - s) * (r + 5.0 / 6 - 2 / (3 * h));
    return 2 * w > kMaxExponent ? 0.0 : fA / (fA + fB * std::exp(2 * w));
}

/// The start by the chi-square approximation; the mean where an exponent overflows.
double LowerTail::ChiSquareStart(double deviate) const {
    const double mean = fA / (fA + fB);
    const double ninth = 1 / (9 * fB);
    const double chiSquare = 2 * fB * std::pow(1 - ninth + deviate * std::sqrt(ninth), 3);
    if (chiSquare <= 0) {
        const double exponent = (std::log((1 - fP) * fB) + fLogBeta) / fB;
        return exponent > kMaxExponent ? mean : 1 - std::exp(exponent);
    }
    const double ratio = (4 * fA + 2 * fB - 2) / chiSquare;
    if (ratio > 1) {
        return 1 - 2 / (ratio + 1);
    }
    const double exponent = (std::log(fA * fP) + fLogBeta) / fA;
    return exponent > kMaxExponent ? mean : std::exp(exponent);
}

/// ln(x / y) of the start: of the leading term of the ratio where that is small, else of one of the two above.
double LowerTail::Start() const {
    const double leading = LeadingLogit();
    if (leading < std::log(kSmallestStart / (1 + fB))) {
        return leading;
    }
    const double deviate = -MCDistFun::IdfStdNorm(fP);
    const double start = fA > 1 && fB > 1 ? CarterStart(deviate) : ChiSquareStart(deviate);
    const double x = std::isnan(start) ? fA / (fA + fB) : std::clamp(start, kSmallestStart, kLargestStart);
    return std::log(x) - std::log1p(-x);
}

/// Halley's method on the logarithm of the ratio, kept inside what is known of the root.
/// @param step the last step
bool LowerTail::Improve(double logit, BetaQuantile& quantile, double& step) {
    double lower = kLogOfEnd - 10, upper = -lower;
    double previous = std::numeric_limits<double>::infinity();
    for (int round = 0; round < kMaxStartRounds && fRatioRounds < kMaxRatioRounds; ++round) {
        CountStep();
        quantile = AtLogit(logit);
        const double logRatio = LogBetaRatio(quantile.x, quantile.y, fA, fB, fRatioRounds);
        if (std::isnan(logRatio)) {
            return false;
        }
        const double excess = logRatio - fLogP;
        (excess < 0 ? lower : upper) = logit;
        const double logDensity =
            fA * LogProbability(quantile.x, quantile.y) + fB * LogProbability(quantile.y, quantile.x) - fLogBeta;
        const double slope = std::exp(logDensity - logRatio);
        const double bend = fA * quantile.y - fB * quantile.x - slope;
        step = -excess / slope / std::clamp(1 - excess * bend / (2 * slope), 0.5, 2.0);
        const bool isRounding = std::fabs(step) >= previous / 2 && previous < kSmallestStart;
        if (isRounding || std::fabs(step) <= kNoStep * std::max(1.0, std::fabs(logit))) {
            return true;
        }
        double next = logit + step;
        if (!(next > lower && next < upper)) {
            next = (lower + upper) / 2;
        }
        previous = std::fabs(step);
        logit = next;
    }
    return true;
}

/// One Newton step from x, shortened until its square is below `previousSquare` and it stays inside the interval.
struct Step {
    double square;
    double to;
};

Step ShortenedStep(double x, double newton, double previousSquare) {
    for (double scale = 1;; scale /= 3) {
        CountStep();
        const double step = scale * newton;
        const double to = std::min(x - step, kInPlaceOfOne);
        if (step * step < previousSquare && to >= kPrecision && x - step <= 1) {
            return {step * step, to};
        }
        if (!(std::fabs(step) >= kPrecision)) {
            return {step * step, x};
        }
    }
}

/// The Newton steps.
bool LowerTail::Iterate(BetaQuantile& quantile) {
    double x = std::clamp(quantile.x, kSmallestStart, kLargestStart);
    double previousNewton = 0, square = 1, previousSquare = 1;
    for (int round = 0; round < kMaxRounds && fRatioRounds < kMaxRatioRounds; ++round) {
        const double ratio = std::exp(LogBetaRatio(x, 1 - x, fA, fB, fRatioRounds));
        if (std::isnan(ratio)) {
            return false;
        }
        const double exponent = fLogBeta + (1 - fA) * std::log(x) + (1 - fB) * std::log1p(-x);
        if (!(exponent <= kMaxExponent)) {
            x = fA / (fA + fB);
            break;
        }
        const double newton = (ratio - fP) * std::exp(exponent);
        if (newton * previousNewton <= 0) {
            previousSquare = std::max(square, kSquareTolerance * kSquareTolerance);
        }
        const Step step = ShortenedStep(x, newton, previousSquare);
        const bool isEnd = previousSquare <= kSquareTolerance || newton * newton <= kSquareTolerance ||
                           std::fabs(step.to - x) < kPrecision;
        x = step.to;
        if (isEnd) {
            break;
        }
        square = step.square;
        previousNewton = newton;
    }
    quantile = {x, 1 - x, std::log(x) - std::log1p(-x)};
    return true;
}

/// The quantile of the arcsine distribution.
BetaQuantile ArcsineQuantile(double p) {
    const double x = std::pow(std::sin(p * std::numbers::pi / 2), 2);
    const double y = std::pow(std::cos(p * std::numbers::pi / 2), 2);
    return {x, y, std::log(x / y)};
}

/// The quantile whose complement has the logarithm `logComplement`.
BetaQuantile PowerQuantile(double logComplement) {
    const double x = ComplementedExp(logComplement), y = BoundedExp(logComplement);
    return {x, y, std::log(x) - logComplement};
}

BetaQuantile Mirrored(const BetaQuantile& quantile) {
    return {quantile.y, quantile.x, -quantile.logit};
}

} // namespace

bool SolveBeta(double p, double a, double b, BetaQuantile& quantile) {
    if (a == b && p == 0.5) {
        quantile = {0.5, 0.5, 0};
        return true;
    }
    if (a == b && a == 0.5) {
        quantile = ArcsineQuantile(p);
        return true;
    }
    if (a == 1) {
        quantile = PowerQuantile(std::log1p(-p) / b);
        return true;
    }
    if (b == 1) {
        quantile = Mirrored(PowerQuantile(std::log(p) / a));
        return true;
    }
    if (a * kNegligible >= b) {
        quantile = {1, 0, std::numeric_limits<double>::infinity()};
        return true;
    }
    const bool isLower = p <= 0.5;
    LowerTail tail = isLower ? LowerTail(p, a, b) : LowerTail(1 - p, b, a);
    if (!tail.IsComputable() || !tail.Solve(quantile)) {
        return false;
    }
    if (!isLower) {
        quantile = Mirrored(quantile);
    }
    return true;
}

} // namespace veltrane::stats

namespace MCMath_900 {

namespace {

/// The failure of this family, where the others have a missing number.
constexpr double kFailure = -1.0;

} // namespace

double MCDistFun::betinv(double p, double a, double b) {
    if (p == 0 || p == 1) {
        return p;
    }
    if (!(a > 0 && b > 0 && p > 0 && p < 1)) {
        return kFailure;
    }
    veltrane::stats::BetaQuantile quantile;
    return veltrane::stats::SolveBeta(p, a, b, quantile) ? quantile.x : kFailure;
}

double MCDistFun::IdfBeta(double p, double a, double b) {
    return betinv(p, a, b);
}

} // namespace MCMath_900
