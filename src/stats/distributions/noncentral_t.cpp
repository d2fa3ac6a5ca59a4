#include "stats/numerics/constants.h"
#include "stats/numerics/guards.h"
#include "stats/numerics/incomplete_beta.h"
#include "stats/numerics/saddle_point.h"
#include "stats/numerics/steps.h"

#include <MCMath_900/MCDistFun.h>

#include <algorithm>
#include <cmath>
#include <numbers>

/// The non-central t distribution.
///
/// Cumulative function: R. V. Lenth, "Algorithm AS 243: Cumulative distribution function of the non-central t
/// distribution", Applied Statistics 38 (1989), 185-189, with the start of the Poisson weights where they begin to
/// count. Density: the series of N. L. Johnson and S. Kotz, "Continuous Univariate Distributions 2", 1970, chapter 31,
/// (5), its even and odd terms summed outwards from the largest.
///
/// Accuracy: absolute. The cumulative function leaves out 1e-12; the density stops at a term of 1e-10 of the sum, and
/// where x and ncp differ in sign the terms alternate, which costs what they cancel.
namespace MCMath_900 {

using namespace veltrane::stats;

namespace {

constexpr double kTolerance = 1e-12;
constexpr int kMaxRounds = 60000;

constexpr double kDensityTolerance = 1e-10;
constexpr int kMaxDensityRounds = 10000;

/// What is left of alternating terms below this part of their size is rounding.
constexpr double kCancelled = 1e-14;

/// The running quantities of one of the two sums of AS 243: weight times beta ratio, each by recurrence.
struct WeightedRatio {
    double weight; ///< Poisson-like weight of the term
    double ratio;  ///< I_x(first, b)
    double step;   ///< the next ratio is smaller by this
    double first;  ///< first parameter of the ratio

    double Term() const { return weight * ratio; }

    void Next(double x, double b, double weightFactor) {
        ratio -= step;
        first += 1;
        step *= x * (first + b - 1) / first;
        weight *= weightFactor;
    }
};

/// The terms of the density from the largest outwards, as multiples of it: those of even and of odd index apart.
class DensitySeries {
public:
    /// @param u  the argument of the power series, sqrt(2) ncp x / sqrt(df + x^2)
    DensitySeries(double u, double df) : fSquare(u * u), fDf(df), fSign(u < 0 ? -1 : 1) {
        const double quarter = fSquare / 4;
        fPeak = 2 * std::floor((quarter + std::sqrt(quarter * quarter + fSquare * df / 2)) / 2);
        const double logSize = std::log(std::fabs(u));
        fLogPeak = fPeak > 0 ? LogTerm(fPeak, logSize) : LogTerm(0, 0);
        fOddPeak = u == 0 ? 0 : std::exp(LogTerm(fPeak + 1, logSize) - fLogPeak);
    }

    double LogPeak() const { return fLogPeak; }

    /// The sum over the largest term; false when it doesn't end.
    bool Sum(double& sum) {
        int rounds = 0;
        if (!Walk(1, rounds) || !Walk(-1, rounds)) {
            return false;
        }
        fEven += 1;
        fOdd += fOddPeak;
        sum = fEven + fSign * fOdd;
        if (sum <= kCancelled * (fEven + fOdd)) {
            sum = 0;
        }
        return true;
    }

private:
    /// ln of Gamma((df + j + 1) / 2) / Gamma(df / 2) |u|^j / j!
    double LogTerm(double j, double logSize) const {
        return LogGammaStep(fDf / 2, (j + 1) / 2) + j * logSize - MCDistFun::korddnlgam(j + 1);
    }

    /// The ratio of the term of j + 2 to that of j.
    double Ratio(double j) const { return fSquare * (fDf + j + 1) / 2 / ((j + 1) * (j + 2)); }

    bool Walk(int direction, int& rounds) {
        double even = 1, odd = fOddPeak;
        for (double j = fPeak; direction > 0 || j >= 2; j += 2 * direction) {
            CountStep();
            if (++rounds > kMaxDensityRounds || j >= kLargestIndex) {
                return false;
            }
            even = direction > 0 ? even * Ratio(j) : even / Ratio(j - 2);
            odd = direction > 0 ? odd * Ratio(j + 1) : odd / Ratio(j - 1);
            fEven += even;
            fOdd += odd;
            const double reached = std::fabs(1 + fEven + fSign * (fOddPeak + fOdd));
            if (std::max(even, odd) <= kDensityTolerance * reached) {
                break;
            }
        }
        return true;
    }

    double fSquare, fDf, fSign, fPeak = 0, fLogPeak = 0, fOddPeak = 0;
    double fEven = 0, fOdd = 0;
};

/// The cumulative function less the normal tail at -ncp, for a positive x; missing when the sum doesn't end.
double PositivePart(double x, double df, double ncp) {
    const double b = df / 2;
    const double lambda = ncp * ncp / 2;
    const double index = std::floor(std::max(lambda - kStartQuantile * std::sqrt(lambda), 0.0));
    const double quotient = df / x;
    const double inner = std::isinf(quotient) ? 0.0 : x / (quotient + x);
    const double outer = std::isinf(quotient) ? 1.0 : quotient / (quotient + x);
    const auto start = [&](double first, double weight) {
        long code = SUCCESS;
        const double ratio = BetaRatio(inner, outer, first, b, code);
        const double step = inner > 0 && outer > 0
                                ? BoundedExp(LogBinomialTerm(first, b, inner, outer) + std::log(b / (first + b)))
                                : 0.0;
        return WeightedRatio{weight, code == SUCCESS ? ratio : Missing(), step, first};
    };
    const double logOddWeight = -LogGammaStep(index + 1, 0.5) + 0.5 * std::log(lambda);
    const double evenWeight = std::exp(LogPoissonTerm(index, lambda)) / 2;
    WeightedRatio even = start(index + 0.5, evenWeight);
    WeightedRatio odd = start(index + 1, std::copysign(evenWeight * std::exp(logOddWeight), ncp));
    if (IsMissing(even.ratio) || IsMissing(odd.ratio)) {
        return Missing();
    }
    double sum = even.Term() + odd.Term();
    double remaining = 0.5 - even.weight;
    double j = index;
    for (int round = 1; 2 * remaining * (even.ratio - even.step) > kTolerance; ++round) {
        CountStep();
        if (round == kMaxRounds || j >= kLargestIndex) {
            return Missing();
        }
        j += 1;
        even.Next(inner, b, lambda / j);
        odd.Next(inner, b, lambda / (j + 0.5));
        remaining -= even.weight;
        sum += even.Term() + odd.Term();
    }
    return FiniteOrMissing(sum);
}

} // namespace

double MCDistFun::NonCentralCdfT(double x, double df, double ncp) {
    if (!(df > 0) || std::isnan(x) || !std::isfinite(ncp)) {
        return Missing();
    }
    if (ncp == 0) {
        return CdfT(x, df);
    }
    if (x == 0) {
        return prbnrm(-ncp);
    }
    if (std::fabs(x) >= kLargestRoot) {
        return x > 0 ? 1.0 : 0.0;
    }
    const double mirrored = x < 0 ? -ncp : ncp;
    const double part = PositivePart(std::fabs(x), df, mirrored);
    if (IsMissing(part)) {
        return Missing();
    }
    return x > 0 ? ClampedProbability(part + prbnrm(-mirrored)) : ClampedProbability(prbnrm(mirrored) - part);
}

double MCDistFun::NonCentralPdfT(double x, double df, double ncp, long& code) {
    code = SUCCESS;
    if (!(df > 0) || std::isnan(x) || !std::isfinite(ncp)) {
        return Fail(code, BAD_ARGUMENT);
    }
    if (ncp == 0) {
        return PdfT(x, df, code);
    }
    if (std::fabs(x) >= kLargestRoot) {
        return 0.0;
    }
    const double root = std::sqrt(df + x * x);
    DensitySeries series(std::numbers::sqrt2 * ncp * (x / root), df);
    double sum = 0;
    if (!std::isfinite(series.LogPeak()) || !series.Sum(sum)) {
        return Fail(code, FAILED);
    }
    const double logFactor = -ncp * ncp / 2 - kLogSqrtPi - df / 2 * std::log1p(x * x / df) - std::log(root);
    return sum > 0 ? BoundedExp(series.LogPeak() + logFactor + std::log(sum)) : 0.0;
}

} // namespace MCMath_900
