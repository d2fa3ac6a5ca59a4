#include "stats/numerics/constants.h"
#include "stats/numerics/guards.h"
#include "stats/numerics/incomplete_beta.h"
#include "stats/numerics/saddle_point.h"
#include "stats/numerics/steps.h"

#include <MCMath_900/MCDistFun.h>

#include <algorithm>
#include <cmath>

/// The non-central chi-square and F distributions.
///
/// Method: R. V. Lenth, "Algorithm AS 226: Computing noncentral beta probabilities", Applied Statistics 36 (1987),
/// 241-244, with the start that its remark AS R84 (Applied Statistics 39 (1990), 311-313) gives it: a sum of central
/// ratios with Poisson weights, where neighbouring ratios differ by one term of their series. The chi-square is summed
/// in the same way on the gamma ratio.
///
/// Accuracy: absolute. The weights that are left out at either end sum to 1e-12, or to the tolerance of the caller.
namespace MCMath_900 {

using namespace veltrane::stats;

namespace {

constexpr double kTolerance = 1e-12;
constexpr int kMaxTerms = 60000;

/// The Poisson weights of mean c from the first one that counts, and what is left of them.
class PoissonWeights {
public:
    explicit PoissonWeights(double mean)
        : fMean(mean), fIndex(std::floor(std::max(mean - kStartQuantile * std::sqrt(mean), 0.0))),
          fWeight(mean > 0 ? std::exp(LogPoissonTerm(fIndex, mean)) : 1.0), fRemaining(1 - fWeight) {}

    double Index() const { return fIndex; }
    double Weight() const { return fWeight; }
    double Remaining() const { return fRemaining; }

    void Next() {
        fIndex += 1;
        fWeight *= fMean / fIndex;
        fRemaining -= fWeight;
    }

private:
    double fMean, fIndex, fWeight, fRemaining;
};

} // namespace

double MCDistFun::NonCentralCdfChi(double x, double df, double ncp) {
    if (!(df > 0) || !(ncp >= 0) || std::isnan(x) || std::isinf(ncp)) {
        return Missing();
    }
    if (x <= 0 || std::isinf(x)) {
        return x > 0 ? 1.0 : 0.0;
    }
    PoissonWeights weights(ncp / 2);
    const double half = x / 2;
    double shape = df / 2 + weights.Index();
    long code = SUCCESS;
    double ratio = gammad(half, shape, true, code);
    if (code != SUCCESS) {
        return Missing();
    }
    double step = BoundedExp(LogPoissonTerm(shape, half));
    double sum = weights.Weight() * ratio;
    for (int term = 1; weights.Remaining() * ratio > kTolerance; ++term) {
        CountStep();
        if (term == kMaxTerms || weights.Index() >= kLargestIndex) {
            return Missing();
        }
        ratio -= step;
        shape += 1;
        step *= half / shape;
        weights.Next();
        sum += weights.Weight() * ratio;
    }
    return ClampedProbability(sum);
}

double MCDistFun::ncdbet(double x, double a, double b, double ncp, long& code, double tol) {
    return ncdbet(x, 1 - x, a, b, ncp, code, tol);
}

/// y is 1 - x.
double MCDistFun::ncdbet(double x, double y, double a, double b, double ncp, long& code, double tol) {
    code = SUCCESS;
    if (!(a > 0 && b > 0) || !(ncp >= 0) || std::isnan(x) || std::isinf(ncp)) {
        return Fail(code, BAD_ARGUMENT);
    }
    if (ncp == 0) {
        return BetaRatio(x, y, a, b, code);
    }
    if (x <= 0) {
        return 0.0;
    }
    if (y <= 0) {
        return 1.0;
    }
    PoissonWeights weights(ncp / 2);
    double first = a + weights.Index();
    double ratio = BetaRatio(x, y, first, b, code);
    if (code != SUCCESS) {
        return Missing();
    }
    double step = BoundedExp(LogBinomialTerm(first, b, x, y) + std::log(b / (first + b)));
    double sum = weights.Weight() * ratio;
    for (int term = 1; !(weights.Remaining() * ratio <= tol); ++term) {
        CountStep();
        if (term == kMaxTerms || weights.Index() >= kLargestIndex) {
            return Fail(code, FAILED);
        }
        ratio -= step;
        first += 1;
        step *= x * (first + b - 1) / first;
        weights.Next();
        sum += weights.Weight() * ratio;
    }
    return ClampedProbability(sum);
}

double MCDistFun::NonCentralCdfF(double x, double df1, double df2, double ncp, double tol) {
    if (!(df1 > 0 && df2 > 0) || !(ncp >= 0) || std::isnan(x)) {
        return Missing();
    }
    if (x <= 0) {
        return 0.0;
    }
    if (std::isinf(x * df1)) {
        return 1.0;
    }
    const double scale = x * df1 + df2;
    return Checked([&](long& code) { return ncdbet(x * df1 / scale, df2 / scale, df1 / 2, df2 / 2, ncp, code, tol); });
}

} // namespace MCMath_900
