#include "stats/numerics/guards.h"
#include "stats/numerics/incomplete_beta.h"
#include "stats/numerics/saddle_point.h"
#include "stats/numerics/steps.h"
#include "stats/numerics/tail_integral.h"

#include <MCMath_900/MCDistFun.h>
#include <MCMath_900/MCPower.h>

#include <algorithm>
#include <cmath>

/// The binomial distribution.
///
/// Method: one probability on the logarithmic scale, and the rest by the ratio of neighbouring terms, summed away from
/// the mode; a sum of very many terms is had as an integral. Where even the largest term is out of range, the normal
/// approximation of D. B. Peizer and J. W. Pratt, J. Amer. Statist. Assoc. 63 (1968), 1416-1456.
///
/// Accuracy: some 1e-13 for the lower tail, 1e-12 down to 1e-300. The upper tail is its complement.
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

/// Both tails of the distribution at x: the probability of at most x and that of more.
struct Tails {
    double lower, upper;
};

/// Above this variance the terms from x outwards are summed as an integral, since they are some multiple of its root in
/// number. It is far enough for them all to fall off before they reach an end.
constexpr double kLargestSummedVariance = 1e6;

/// The probabilities of 0 to x over that of x, for an x not above the mode.
double SumOverLast(double x, double n, double prob) {
    if (n * prob * (1 - prob) > kLargestSummedVariance) {
        const double slope = -std::fma(-n, prob, x) / prob - 1;
        return (n - x) * TailIntegral(slope, {n - x - 1, -1}, {x, (1 - prob) / prob});
    }
    const double odds = (1 - prob) / prob;
    double sum = 1, term = 1;
    for (double k = x; k > 0; --k) {
        CountStep();
        term *= k / (n - k + 1) * odds;
        if (sum + term == sum) {
            break;
        }
        sum += term;
    }
    return sum;
}

/// The probabilities of x to n over that of x, for an x above the mode.
double SumOverFirst(double x, double n, double prob) {
    if (n * prob * (1 - prob) > kLargestSummedVariance) {
        const double slope = std::fma(-n, prob, x) / (1 - prob) - 1;
        return x * TailIntegral(slope, {x - 1, -1}, {n - x, prob / (1 - prob)});
    }
    const double odds = prob / (1 - prob);
    double sum = 1, term = 1;
    for (double k = x + 1; k <= n; ++k) {
        CountStep();
        term *= (n - k + 1) / k * odds;
        if (sum + term == sum) {
            break;
        }
        sum += term;
    }
    return sum;
}

/// The lower tail far from the mode, where no term is in the range of a double. 0 < x < n.
double NormalLowerTail(double x, double n, double prob) {
    const double q = 1 - prob;
    const double distance =
        x + 2.0 / 3 - (n + 1.0 / 3) * prob + (q / (x + 1) - prob / (n - x) + (q - 0.5) / (n + 1)) / 50;
    if (distance == 0) {
        return 0.5;
    }
    const double skew = q * PeizerPrattG((x + 0.5) / (n * prob)) + prob * PeizerPrattG((n - x - 0.5) / (n * q));
    return MCDistFun::CdfStdNorm(distance * std::sqrt((1 + skew) / ((n + 1.0 / 6) * prob * q)));
}

/// For a whole x with 0 <= x < n and 0 < prob < 1. The terms are summed from x away from the mode; what is left of 1 is
/// the other tail.
Tails BinomialTails(double x, double n, double prob) {
    const double mode = std::floor((n + 1) * prob);
    if (x >= mode) {
        const double first = x + 1 < n ? BoundedExp(LogPoint(x + 1, n, prob)) : std::pow(prob, n);
        const double upper = std::min(first * SumOverFirst(x + 1, n, prob), 1.0);
        return {1 - upper, upper};
    }
    if (x == 0) {
        const double logNone = n * LogProbability(1 - prob, prob);
        return {BoundedExp(logNone), ComplementedExp(logNone)};
    }
    const double logLast = LogPoint(x, n, prob);
    const double lower = logLast < kMinExponent ? NormalLowerTail(x, n, prob)
                                                : std::min(std::exp(logLast) * SumOverLast(x, n, prob), 1.0);
    return {lower, 1 - lower};
}

/// Whether the probability of at most x doesn't exceed p. It is asked of the tail that p is the smaller part of; but
/// where single terms are far above the rounding of p, the p that CdfBin gives for x belongs to x.
bool IsWithin(double x, double p, double n, double prob) {
    if (x < 0) {
        return true;
    }
    if (x >= n) {
        return p >= 1;
    }
    const Tails tails = BinomialTails(x, n, prob);
    if (p <= 0.5) {
        return tails.lower <= p;
    }
    if (tails.upper >= 1 - p) {
        return true;
    }
    constexpr double kResolved = 0x1p-50;
    return tails.lower == p &&
           BoundedExp(x > 0 ? LogPoint(x, n, prob) : n * LogProbability(1 - prob, prob)) > kResolved;
}

/// The largest x that is within p, from a guess of it: by steps of double length until it is passed, then by halves.
double LargestWithin(double guess, double p, double n, double prob) {
    double within = guess, beyond = guess;
    double stride = 1;
    if (IsWithin(guess, p, n, prob)) {
        for (beyond = std::min(within + stride, n); beyond < n && IsWithin(beyond, p, n, prob); stride *= 2) {
            within = beyond;
            beyond = std::min(within + stride, n);
        }
    } else {
        for (within = std::max(beyond - stride, -1.0); !IsWithin(within, p, n, prob); stride *= 2) {
            beyond = within;
            within = std::max(beyond - stride, -1.0);
        }
    }
    while (beyond - within > 1) {
        const double middle = std::floor((within + beyond) / 2);
        (IsWithin(middle, p, n, prob) ? within : beyond) = middle;
    }
    return within;
}

} // namespace

double MCDistFun::PdfBin(double x, double n, double prob, long& code) {
    code = SUCCESS;
    if (!IsProbability(prob) || !(n >= 1)) {
        return Fail(code, BAD_ARGUMENT);
    }
    if (x != std::floor(x + 0.5) || !(x >= 0 && x <= n)) {
        return 0.0;
    }
    if (prob == 0) {
        return x == 0 ? 1.0 : 0.0;
    }
    if (prob == 1) {
        return x == n ? 1.0 : 0.0;
    }
    if (x == n) {
        return std::pow(prob, n);
    }
    if (x == 0) {
        return NoneOf(n, prob);
    }
    const double logPoint = n <= kLargestProduct ? dnlbnc(n, x, code) + x * LogProbability(prob, 1 - prob) +
                                                       (n - x) * LogProbability(1 - prob, prob)
                                                 : LogPoint(x, n, prob);
    if (!(logPoint <= kMaxExponent)) {
        return Fail(code, FAILED);
    }
    return BoundedExp(logPoint);
}

double MCDistFun::CdfBin(double x, double n, double prob, long& code) {
    code = SUCCESS;
    if (!MCPower::IsInteger(n)) {
        return Fail(code, NOT_INTEGER);
    }
    if (n < 1 || !IsProbability(prob) || std::isnan(x)) {
        return Fail(code, BAD_ARGUMENT);
    }
    x = std::floor(x);
    if (prob == 0) {
        return x >= 0 ? 1.0 : 0.0;
    }
    if (prob == 1) {
        return x >= n ? 1.0 : 0.0;
    }
    if (x < 0) {
        return 0.0;
    }
    if (x >= n) {
        return 1.0;
    }
    return BinomialTails(x, n, prob).lower;
}

// The answer is the largest x whose cumulative probability doesn't exceed p: -1 when that of 0 does.
double MCDistFun::IdfBin(double p, double n, double prob, long& code) {
    code = SUCCESS;
    if (!MCPower::IsInteger(n)) {
        return Fail(code, BAD_ARGUMENT);
    }
    if (n < 1 || !IsProbability(prob) || !IsProbability(p)) {
        return Fail(code, FAILED);
    }
    if (p == 1) {
        return prob > 0 ? n : 0.0;
    }
    if (prob == 1) {
        return n - 1;
    }
    if (p == 0) {
        return -1.0;
    }
    const double guess = probit(p) * std::sqrt(n * prob * (1 - prob)) + n * prob - 0.5;
    const double x = std::clamp(std::floor(guess), 0.0, n);
    const double cumulative = CdfBin(x, n, prob, code);
    if (std::fabs(cumulative - p) <= kQuantileTolerance * MCPower::MEpsilon()) {
        return x;
    }
    if (prob == 0) {
        return -1.0;
    }
    return LargestWithin(x, p, n, prob);
}

} // namespace MCMath_900
