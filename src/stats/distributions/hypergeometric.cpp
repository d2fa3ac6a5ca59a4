#include "stats/numerics/guards.h"
#include "stats/numerics/saddle_point.h"
#include "stats/numerics/steps.h"

#include <MCMath_900/MCDistFun.h>
#include <MCMath_900/MCPower.h>

#include <algorithm>
#include <cmath>

/// The hypergeometric distribution.
///
/// Method: R. Lund, "Algorithm AS 152: Cumulative hypergeometric probabilities", Applied Statistics 29 (1980), 221-223,
/// with B. L. Shea, "Remark AS R77", Applied Statistics 38 (1989), 199-204: neighbouring terms by their ratio, summed
/// from the mode outwards and scaled to stay in range. A large population starts from a term by binomial coefficients;
/// where even that is out of range, the normal approximation.
///
/// Accuracy: some 1e-13.
namespace MCMath_900 {

using namespace veltrane::stats;

namespace {

/// A population above this starts from one term, a smaller one sums the whole distribution.
constexpr double kLargePopulation = 10000;

/// What the running terms are scaled with, and its natural logarithm.
constexpr double kScale = 1e35;
constexpr double kLogScale = 80.59047825479161;

struct Population {
    double total, sample, hits;

    double Smallest() const { return std::max(sample - total + hits, 0.0); }
    double Largest() const { return std::min(sample, hits); }
    double Mode() const { return std::floor((sample + 1) * (hits + 1) / (total + 2)); }

    /// The ratio of the probability of x to that of x - 1, and the other way round.
    double UpwardRatio(double x) const { return (hits - x + 1) * (sample - x + 1) / (x * (total - hits - sample + x)); }
    double DownwardRatio(double x) const {
        return x * (total - hits - sample + x) / ((hits - x + 1) * (sample - x + 1));
    }
};

/// ln of a binomial point probability, k = 0 and k = n included.
double LogPoint(double k, double n, double p, double q) {
    if (k == 0) {
        return n == 0 ? 0.0 : n * LogProbability(q, p);
    }
    if (k == n) {
        return n * LogProbability(p, q);
    }
    return LogBinomialTerm(k, n - k, p, q);
}

/// ln of the probability of x. The three binomial coefficients are taken with the powers of sample / total that make
/// them probabilities; the powers cancel, and so would the digits of the bare coefficients.
double LogPointProbability(double x, const Population& of) {
    if (of.sample == of.total) {
        return 0.0;
    }
    const double p = of.sample / of.total;
    const double q = (of.total - of.sample) / of.total;
    return LogPoint(x, of.hits, p, q) + LogPoint(of.sample - x, of.total - of.hits, p, q) -
           LogPoint(of.sample, of.total, p, q);
}

/// The sum of the terms from `from` down to the smallest x, relative to `first`, the one at `from`.
double SumDown(double from, double first, const Population& of) {
    const double smallest = of.Smallest();
    double sum = first, term = first;
    for (double x = from; x > smallest; --x) {
        CountStep();
        term *= of.DownwardRatio(x);
        if (sum + term == sum) {
            break;
        }
        sum += term;
    }
    return sum;
}

/// The sum of the terms from `from` up to `to`, relative to `first`, the one at `from`.
double SumUp(double from, double to, double first, const Population& of) {
    double sum = first, term = first;
    for (double x = from + 1; x <= to; ++x) {
        CountStep();
        term *= of.UpwardRatio(x);
        if (sum + term == sum) {
            break;
        }
        sum += term;
    }
    return sum;
}

/// The part of the whole distribution that lies at or below x.
double CumulativeFromMode(double x, const Population& of) {
    const double mode = std::clamp(of.Mode(), of.Smallest(), of.Largest());
    const double belowMode = SumDown(mode, kScale, of);
    const double whole = belowMode + (SumUp(mode, of.Largest(), kScale, of) - kScale);
    if (x >= mode) {
        return (belowMode + (SumUp(mode, x, kScale, of) - kScale)) / whole;
    }
    double term = kScale;
    for (double k = mode; k > x && term > 0; --k) {
        CountStep();
        term *= of.DownwardRatio(k);
    }
    return SumDown(x, term, of) / whole;
}

/// The terms from x, or from its upper neighbour, away from the mode; negative when the first is out of range.
double CumulativeFromTerm(double x, const Population& of) {
    const bool down = x <= of.Mode();
    const double from = down ? x : x + 1;
    const double logFirst = LogPointProbability(from, of) + kLogScale;
    if (logFirst < kMinExponent) {
        return -1;
    }
    const double first = std::exp(logFirst);
    const double tail = (down ? SumDown(from, first, of) : SumUp(from, of.Largest(), first, of)) / kScale;
    return down ? tail : 1 - tail;
}

/// The deviate of the normal approximation, corrected for continuity.
double NormalDeviate(double x, const Population& of) {
    const double mean = of.sample * (of.hits / of.total);
    const double variance = mean * ((of.total - of.hits) / of.total) * ((of.total - of.sample) / (of.total - 1));
    return (x + 0.5 - mean) / std::sqrt(variance);
}

bool IsWholeUpTo(double number, double largest) {
    return MCPower::IsInteger(number) && number >= 0 && number <= largest;
}

} // namespace

double MCDistFun::PdfHyper(int x, int total, int sample, int hits) {
    if (sample < 1 || sample > total || hits < 1 || hits > total) {
        return Missing();
    }
    const Population population{static_cast<double>(total), static_cast<double>(sample), static_cast<double>(hits)};
    if (!(x >= population.Smallest() && x <= population.Largest())) {
        return Missing();
    }
    long code = SUCCESS;
    const double logProbability =
        total <= kLargestProduct
            ? dnlbnc(hits, x, code) + dnlbnc(total - hits, sample - x, code) - dnlbnc(total, sample, code)
            : LogPointProbability(x, population);
    return MCPower::ExpUnderflow(logProbability) ? 0.0 : std::min(std::exp(logProbability), 1.0);
}

double MCDistFun::CDFHyper(double x, double total, double sample, double hits, int& code) {
    code = SUCCESS;
    const Population population{total, sample, hits};
    const bool whole = IsWholeUpTo(total, MCPower::MaxInt()) && IsWholeUpTo(sample, total) && IsWholeUpTo(hits, total);
    if (!whole || !(x >= population.Smallest() && x <= population.Largest())) {
        code = BAD_ARGUMENT;
        return Missing();
    }
    x = std::floor(x);
    if (x == population.Largest()) {
        return 1.0;
    }
    double cumulative =
        total > kLargePopulation ? CumulativeFromTerm(x, population) : CumulativeFromMode(x, population);
    if (cumulative < 0) {
        cumulative = prbnrm(NormalDeviate(x, population));
    }
    return ClampedProbability(cumulative);
}

} // namespace MCMath_900
