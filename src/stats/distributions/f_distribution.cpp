#include "stats/distributions/beta_quantile.h"
#include "stats/numerics/constants.h"
#include "stats/numerics/guards.h"
#include "stats/numerics/incomplete_beta.h"

#include <MCMath_900/MCDistFun.h>

#include <algorithm>
#include <cmath>
#include <numbers>

/// The F distribution, through the incomplete beta ratio (Abramowitz and Stegun 26.6.2) and its quantile. One degree of
/// freedom in the numerator is the square of a t.
namespace MCMath_900 {

using namespace veltrane::stats;

namespace {

/// The lower or the upper tail at an x above 0, of at least what is smaller by its own digits.
double Tail(double x, double df1, double df2, bool lower, long& code) {
    code = SUCCESS;
    if (std::isinf(x)) {
        return lower ? 1.0 : 0.0;
    }
    const double r = df2 / df1;
    const double below = x / (r + x);
    const double above = r / (x + r);
    const double a = df1 / 2, b = df2 / 2;
    const bool isAtEnd = IsAtEnd(below, above, a, b);
    const double logit = std::log(x) + std::log(df1) - std::log(df2);
    if (lower) {
        return isAtEnd ? BetaRatioAtEnd(logit, a, b) : BetaRatio(below, above, a, b, code);
    }
    return isAtEnd ? BetaRatioAtEnd(-logit, b, a) : BetaRatio(above, below, b, a, code);
}

} // namespace

double MCDistFun::kordcdff(double x, double df1, double df2, long& code) {
    code = SUCCESS;
    if (!(df1 > 0 && df2 > 0) || std::isnan(x)) {
        return Fail(code, BAD_ARGUMENT);
    }
    if (x <= 0) {
        return 0.0;
    }
    // 2 * kordcdft(sqrt(x), df2) - 1, in forms that don't cancel: what is left to the ratio below is the same number.
    if (df1 == 1 && df2 > kNormalFrom) {
        return derf(std::sqrt(x / 2));
    }
    if (df1 == 1 && df2 == 1) {
        return 2 / std::numbers::pi * std::atan(std::sqrt(x));
    }
    const double result = Tail(x, df1, df2, true, code);
    return code == SUCCESS ? result : Fail(code, FAILED);
}

double MCDistFun::CdfF(double x, double df1, double df2) {
    return Checked([&](long& code) { return kordcdff(x, df1, df2, code); });
}

double MCDistFun::SigF(double x, double df1, double df2) {
    if (!(df1 > 0 && df2 > 0) || std::isnan(x)) {
        return Missing();
    }
    if (x <= 0) {
        return 1.0;
    }
    return Checked([&](long& code) { return Tail(x, df1, df2, false, code); });
}

double MCDistFun::kordidff(double p, double df1, double df2, long& code) {
    code = SUCCESS;
    if (!(p >= 0 && p < 1) || !(df1 > 0 && df2 > 0)) {
        return Fail(code, BAD_ARGUMENT);
    }
    if (p == 0) {
        return 0.0;
    }
    // The square of the quantile of t at p / 2 + 0.5, or of that of the opposite tail, which keeps the digits of a p
    // near 1. As a quantile of its own it keeps those of a small p.
    if (df1 == 1 && df2 >= kNormalFrom && p < 0.5) {
        return kordidfchi(p, 1, code);
    }
    if (df1 == 1 && p >= 0.5) {
        const double t = kordidft((1 - p) / 2, df2, code);
        return code == SUCCESS ? FiniteOrMissing(t * t) : Missing();
    }
    // v / (1 - v) df2 / df1: the quotient of v and its complement comes with its own digits.
    BetaQuantile v;
    if (!SolveBeta(p, df1 / 2, df2 / 2, v)) {
        return Fail(code, FAILED);
    }
    const double quantile = std::exp(v.logit + std::log(df2) - std::log(df1));
    if (!std::isfinite(quantile)) {
        return Fail(code, FAILED);
    }
    return quantile;
}

double MCDistFun::IdfF(double p, double df1, double df2) {
    return Checked([&](long& code) { return kordidff(p, df1, df2, code); });
}

} // namespace MCMath_900
