#include "stats/guards.h"
#include "stats/saddle_point.h"

#include <MCMath_900/MCDistFun.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

/// The quantile of the beta distribution, on which those of t and F stand.
///
/// Method: G. W. Cran, K. J. Martin and G. E. Thomas, "Remark AS R19 and Algorithm AS 109: A remark on algorithms AS 63
/// and AS 64", Applied Statistics 26 (1977), 111-114, after K. L. Majumder and G. P. Bhattacharjee, "Algorithm AS 64:
/// Inverse of the incomplete beta function ratio", Applied Statistics 22 (1973), 411-414: a start from the normal
/// quantile, then Newton steps that are shortened until they help. The quantile of the smaller tail is solved.
///
/// Accuracy: absolute. The steps end at a length of 1e-10, after which one step more is exact for all but the smallest
/// quantiles; a quantile below 1e-10 isn't resolved.
namespace MCMath_900 {

using namespace veltrane::stats;

namespace {

/// The failure of this family, where the others have a missing number.
constexpr double kFailure = -1.0;

/// A parameter this much smaller than the other leaves the whole mass at 1.
constexpr double kNegligible = 1e-20;

/// Where the start is clamped to.
constexpr double kSmallestStart = 1e-8;
constexpr double kLargestStart = 0.9999999;

constexpr int kMaxRounds = 50;

/// The square of a step at which the iteration ends.
constexpr double kSquareTolerance = 1e-20;

/// The shortest move, and the distance that a value keeps from either end of the interval.
constexpr double kPrecision = 1e-12;
constexpr double kInPlaceOfOne = 0.999999999999;

/// The start for two parameters above 1: Abramowitz and Stegun 26.5.22 with the parts of the two parameters exchanged.
/// The steps come to the same quantile from either. `deviate` is positive for a small tail.
double CarterStart(double deviate, double a, double b) {
    const double r = (deviate * deviate - 3) / 6;
    const double s = 1 / (2 * b - 1);
    const double t = 1 / (2 * a - 1);
    const double h = 2 / (s + t);
    const double w = deviate * std::sqrt(h + r) / h - (t - s) * (r + 5.0 / 6 - 2 / (3 * h));
    return 2 * w > kMaxExponent ? 0.0 : a / (a + b * std::exp(2 * w));
}

/// The start by the chi-square approximation; the mean where an exponent overflows.
double ChiSquareStart(double deviate, double p, double a, double b, double logBeta) {
    const double mean = a / (a + b);
    const double ninth = 1 / (9 * b);
    const double chiSquare = 2 * b * std::pow(1 - ninth + deviate * std::sqrt(ninth), 3);
    if (chiSquare <= 0) {
        const double exponent = (std::log((1 - p) * b) + logBeta) / b;
        return exponent > kMaxExponent ? mean : 1 - std::exp(exponent);
    }
    const double ratio = (4 * a + 2 * b - 2) / chiSquare;
    if (ratio > 1)
        return 1 - 2 / (ratio + 1);
    const double exponent = (std::log(a * p) + logBeta) / a;
    return exponent > kMaxExponent ? mean : std::exp(exponent);
}

/// One Newton step from x, shortened until its square is below `previousSquare` and it stays inside the interval.
struct Step {
    double square;
    double to;
};

Step ShortenedStep(double x, double newton, double previousSquare) {
    for (double scale = 1;; scale /= 3) {
        const double step = scale * newton;
        const double to = std::min(x - step, kInPlaceOfOne);
        if (step * step < previousSquare && to >= kPrecision && x - step <= 1)
            return {step * step, to};
        if (std::fabs(step) < kPrecision)
            return {step * step, x};
    }
}

} // namespace

/// The quantile of a tail p of at most 0.5; kFailure when the ratio can't be computed.
double MCDistFun::solveBeta(double p, double a, double b) {
    const double logBeta = LogBeta(a, b);
    if (!std::isfinite(logBeta))
        return kFailure;
    const double mean = a / (a + b);
    const double deviate = -probit(p);
    const double start = a > 1 && b > 1 ? CarterStart(deviate, a, b) : ChiSquareStart(deviate, p, a, b, logBeta);
    double x = std::isnan(start) ? mean : std::clamp(start, kSmallestStart, kLargestStart);
    double previousNewton = 0, square = 1, previousSquare = 1;
    for (int round = 0; round < kMaxRounds; ++round) {
        long code = kSuccess;
        const double ratio = cdfbet(x, a, b, code);
        if (code != kSuccess)
            return kFailure;
        const double exponent = logBeta + (1 - a) * std::log(x) + (1 - b) * std::log1p(-x);
        if (!(exponent <= kMaxExponent))
            return mean;
        const double newton = (ratio - p) * std::exp(exponent);
        if (newton * previousNewton <= 0)
            previousSquare = std::max(square, kSquareTolerance * kSquareTolerance);
        const Step step = ShortenedStep(x, newton, previousSquare);
        if (previousSquare <= kSquareTolerance || newton * newton <= kSquareTolerance ||
            std::fabs(step.to - x) < kPrecision)
            return step.to;
        x = step.to;
        square = step.square;
        previousNewton = newton;
    }
    return x;
}

double MCDistFun::betinv(double p, double a, double b) {
    if (p == 0 || p == 1)
        return p;
    if (!(a > 0 && b > 0 && p > 0 && p < 1))
        return kFailure;
    if (a == b && p == 0.5)
        return 0.5;
    if (a == b && a == 0.5) {
        const double root = std::sin(p * std::numbers::pi / 2);
        return root * root;
    }
    if (a == 1)
        return ComplementedExp(std::log1p(-p) / b);
    if (b == 1)
        return BoundedExp(std::log(p) / a);
    if (a * kNegligible >= b)
        return 1.0;
    if (p <= 0.5)
        return solveBeta(p, a, b);
    const double complement = solveBeta(1 - p, b, a);
    return complement < 0 ? kFailure : 1 - complement;
}

double MCDistFun::IdfBeta(double p, double a, double b) {
    return betinv(p, a, b);
}

} // namespace MCMath_900
