#include "stats/distributions/beta_quantile.h"
#include "stats/numerics/constants.h"
#include "stats/numerics/guards.h"
#include "stats/numerics/incomplete_beta.h"
#include "stats/numerics/saddle_point.h"

#include <MCMath_900/MCDistFun.h>

#include <algorithm>
#include <cmath>
#include <numbers>

/// Student's t distribution.
///
/// Method: the incomplete beta ratio (Abramowitz and Stegun 26.7.1), with the closed form of Cauchy at one degree of
/// freedom and the normal distribution from 1e8 on. The density is computed on the logarithmic scale.
namespace MCMath_900 {

using namespace veltrane::stats;

namespace {

/// From here on a square is near the end of the range.
constexpr double kLargeX = 1e150;

/// ln(1 + x^2 / df)
double LogOfOnePlusSquare(double x, double df) {
    if (std::fabs(x) < kLargeX) {
        return std::log1p(x * x / df);
    }
    const double quotient = std::fabs(x) / std::sqrt(df);
    return quotient < kLargeX ? std::log1p(quotient * quotient) : 2 * std::log(quotient);
}

/// The lower tail of the Cauchy distribution, as an angle, which keeps the far tail.
double CauchyTail(double x) {
    return std::atan2(1, -x) / std::numbers::pi;
}

/// The lower tail through the beta ratio. The ratio is taken at the smaller of x^2 / (df + x^2) and its complement,
/// whose quotients are formed so that neither overflows.
double LowerTail(double x, double df, long& code) {
    const double size = std::fabs(x);
    const double quotient = df / size;
    const double inner = size / (quotient + size);
    const double outer = quotient / (quotient + size);
    if (size <= 1) {
        const double half = BetaRatio(inner, outer, 0.5, df / 2, code) / 2;
        return x < 0 ? 0.5 - half : 0.5 + half;
    }
    const double half =
        (IsAtEnd(outer, inner, df / 2, 0.5) ? BetaRatioAtEnd(std::log(df) - 2 * std::log(size), df / 2, 0.5)
                                            : BetaRatio(outer, inner, df / 2, 0.5, code)) /
        2;
    return x <= 1 ? half : 1 - half;
}

} // namespace

double MCDistFun::kordcdft(double x, double df, long& code) {
    code = SUCCESS;
    if (!(df > 0) || std::isnan(x)) {
        return Fail(code, BAD_ARGUMENT);
    }
    if (df > kNormalFrom) {
        return prbnrm(x);
    }
    if (x == 0) {
        return 0.5;
    }
    if (df == 1) {
        return CauchyTail(x);
    }
    const double tail = LowerTail(x, df, code);
    return code == SUCCESS ? tail : Missing();
}

double MCDistFun::CdfT(double x, double df) {
    return Checked([&](long& code) { return kordcdft(x, df, code); });
}

double MCDistFun::SigT(double x, double df) {
    if (!(df > 0) || std::isnan(x)) {
        return Missing();
    }
    if (x == 0) {
        return 0.5;
    }
    if (df == 1) {
        return CauchyTail(-x);
    }
    return Checked([&](long& code) { return LowerTail(-x, df, code); });
}

double MCDistFun::PdfT(double x, double df, long& code) {
    code = SUCCESS;
    if (!(df > 0) || std::isnan(x)) {
        return Fail(code, BAD_ARGUMENT);
    }
    const double half = df / 2;
    const double logDensity =
        LogGammaStep(half, 0.5) - kLogSqrtPi - 0.5 * std::log(df) - (half + 0.5) * LogOfOnePlusSquare(x, df);
    return std::isnan(logDensity) ? Fail(code, FAILED) : BoundedExp(logDensity);
}

double MCDistFun::kordidft(double p, double df, long& code) {
    code = SUCCESS;
    if (!(p > 0 && p < 1) || !(df > 0)) {
        return Fail(code, BAD_ARGUMENT);
    }
    if (p == 0.5) {
        return 0.0;
    }
    if (df >= kNormalFrom) {
        return IdfStdNorm(p);
    }
    // The root of (1 / v - 1) df: the quotient of the complement of v and v comes with its own digits.
    BetaQuantile v;
    if (!SolveBeta(2 * std::min(p, 1 - p), df / 2, 0.5, v)) {
        return Fail(code, FAILED);
    }
    const double size = std::sqrt(df) * std::exp(-v.logit / 2);
    if (!std::isfinite(size)) {
        return Fail(code, FAILED);
    }
    return p < 0.5 ? -size : size;
}

double MCDistFun::IdfT(double p, double df) {
    return Checked([&](long& code) { return kordidft(p, df, code); });
}

} // namespace MCMath_900
