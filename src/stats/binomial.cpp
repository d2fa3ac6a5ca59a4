#include "stats/guards.h"
#include "stats/saddle_point.h"

#include <MCMath_900/MCDistFun.h>
#include <MCMath_900/MCPower.h>

#include <algorithm>
#include <cmath>

/// The binomial distribution.
///
/// Method: one probability on the logarithmic scale, and the rest by the ratio of neighbouring terms, summed away from
/// the mode. Where even the largest term is out of range, the normal approximation of D. B. Peizer and J. W. Pratt,
/// J. Amer. Statist. Assoc. 63 (1968), 1416-1456.
///
/// Accuracy: some 1e-14 up to 1e5 trials; each of the summed terms adds a rounding, of which there are some 1e5 at the
/// largest number of trials.
namespace MCMath_900 {

using namespace veltrane::stats;

namespace {

/// How near a cumulative probability must be to p to be the answer of the quantile, in machine epsilons.
constexpr double kQuantileTolerance = 128;

bool IsProbability(double p) {
    return p >= 0 && p <= 1;
}

/// (1 - prob)^n
double NoneOf(double n, double prob) {
    return std::exp(n * LogProbability(1 - prob, prob));
}

/// ln of the probability of 0 < x < n hits.
double LogPoint(double x, double n, double prob) {
    return LogBinomialTerm(x, n - x, prob, 1 - prob);
}

/// The ratio of the probability of x to that of x - 1.
double UpwardRatio(double x, double n, double prob) {
    return (n - x + 1) / x * (prob / (1 - prob));
}

/// The sum of the probabilities of 0 to x over that of `start`, which is at most x, walking from `start` both ways
/// until the sum stands.
double SumOverStart(double start, double x, double n, double prob) {
    double sum = 1, term = 1;
    for (double k = start; k > 0; --k) {
        term /= UpwardRatio(k, n, prob);
        if (sum + term == sum)
            break;
        sum += term;
    }
    term = 1;
    for (double k = start + 1; k <= x; ++k) {
        term *= UpwardRatio(k, n, prob);
        if (sum + term == sum)
            break;
        sum += term;
    }
    return sum;
}

} // namespace

double MCDistFun::PdfBin(double x, double n, double prob, long& code) {
    code = kSuccess;
    if (!IsProbability(prob) || !(n >= 1))
        return Fail(code, kBadArgument);
    if (x != std::floor(x + 0.5) || !(x >= 0 && x <= n))
        return 0.0;
    if (prob == 0)
        return x == 0 ? 1.0 : 0.0;
    if (prob == 1)
        return x == n ? 1.0 : 0.0;
    if (x == n)
        return std::pow(prob, n);
    if (x == 0)
        return NoneOf(n, prob);
    const double logPoint = n <= kLargestProduct ? dnlbnc(n, x, code) + x * LogProbability(prob, 1 - prob) +
                                                       (n - x) * LogProbability(1 - prob, prob)
                                                 : LogPoint(x, n, prob);
    if (!(logPoint <= kMaxExponent))
        return Fail(code, kFailed);
    return BoundedExp(logPoint);
}

/// The lower tail far from the mode, where no term is in the range of a double. 0 < x < n.
double MCDistFun::cdfbinNormal(double x, double n, double prob) {
    const double q = 1 - prob;
    const double distance =
        x + 2.0 / 3 - (n + 1.0 / 3) * prob + (q / (x + 1) - prob / (n - x) + (q - 0.5) / (n + 1)) / 50;
    if (distance == 0)
        return 0.5;
    const double skew = q * cbtaux((x + 0.5) / (n * prob)) + prob * cbtaux((n - x - 0.5) / (n * q));
    return prbnrm(distance * std::sqrt((1 + skew) / ((n + 1.0 / 6) * prob * q)));
}

double MCDistFun::CdfBin(double x, double n, double prob, long& code) {
    code = kSuccess;
    if (!MCPower::IsInteger(n))
        return Fail(code, kNotInteger);
    if (n < 1 || !IsProbability(prob) || std::isnan(x))
        return Fail(code, kBadArgument);
    x = std::floor(x);
    if (prob == 0)
        return x >= 0 ? 1.0 : 0.0;
    if (prob == 1)
        return x >= n ? 1.0 : 0.0;
    if (x < 0)
        return 0.0;
    if (x >= n)
        return 1.0;
    if (x == 0)
        return BoundedExp(n * LogProbability(1 - prob, prob));
    const double start = std::min(x, std::floor((n + 1) * prob));
    const double logStart = start > 0 ? LogPoint(start, n, prob) : n * LogProbability(1 - prob, prob);
    if (logStart < kMinExponent)
        return cdfbinNormal(x, n, prob);
    return std::min(std::exp(logStart) * SumOverStart(start, x, n, prob), 1.0);
}

// The answer is the largest x whose cumulative probability doesn't exceed p: -1 when that of 0 does.
double MCDistFun::IdfBin(double p, double n, double prob, long& code) {
    code = kSuccess;
    if (!MCPower::IsInteger(n))
        return Fail(code, kBadArgument);
    if (n < 1 || !IsProbability(prob) || !IsProbability(p))
        return Fail(code, kFailed);
    if (p == 1)
        return prob > 0 ? n : 0.0;
    if (prob == 1)
        return n - 1;
    if (p == 0)
        return -1.0;
    const double guess = probit(p) * std::sqrt(n * prob * (1 - prob)) + n * prob - 0.5;
    double x = std::clamp(std::floor(guess), 0.0, n);
    double cumulative = CdfBin(x, n, prob, code);
    double density = code == kSuccess ? PdfBin(x, n, prob, code) : 0;
    if (code != kSuccess)
        return Fail(code, kFailed);
    if (std::fabs(cumulative - p) <= kQuantileTolerance * MCPower::MEpsilon())
        return x;
    for (; x >= 0 && cumulative > p; --x) {
        cumulative -= density;
        density = x > 0 ? density / UpwardRatio(x, n, prob) : 0;
    }
    while (x < n) {
        const double nextDensity = x >= 0 ? density * UpwardRatio(x + 1, n, prob) : NoneOf(n, prob);
        if (cumulative + nextDensity > p)
            break;
        cumulative += nextDensity;
        density = nextDensity;
        ++x;
    }
    return x;
}

} // namespace MCMath_900
