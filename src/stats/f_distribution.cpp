#include "stats/constants.h"
#include "stats/guards.h"

#include <MCMath_900/MCDistFun.h>

#include <cmath>
#include <numbers>

/// The F distribution, through the incomplete beta ratio (Abramowitz and Stegun 26.6.2) and its quantile. One degree of
/// freedom in the numerator is the square of a t.
namespace MCMath_900 {

using namespace veltrane::stats;

double MCDistFun::kordcdff(double x, double df1, double df2, long& code) {
    code = kSuccess;
    if (!(df1 > 0 && df2 > 0) || std::isnan(x))
        return Fail(code, kBadArgument);
    if (x <= 0)
        return 0.0;
    // 2 * kordcdft(sqrt(x), df2) - 1, in forms that don't cancel: what is left to the ratio below is the same number.
    if (df1 == 1 && df2 > kNormalFrom)
        return derf(std::sqrt(x / 2));
    if (df1 == 1 && df2 == 1)
        return 2 / std::numbers::pi * std::atan(std::sqrt(x));
    const double r = df2 / df1;
    const double lower = std::isinf(x) ? 1.0 : x / (r + x);
    const double upper = std::isinf(x) ? 0.0 : r / (x + r);
    const double result =
        x >= 1 ? 1 - cdfbet(upper, lower, df2 / 2, df1 / 2, code) : cdfbet(lower, upper, df1 / 2, df2 / 2, code);
    return code == kSuccess ? result : Fail(code, kFailed);
}

double MCDistFun::CdfF(double x, double df1, double df2) {
    return Checked([&](long& code) { return kordcdff(x, df1, df2, code); });
}

double MCDistFun::SigF(double x, double df1, double df2) {
    if (!(df1 > 0 && df2 > 0) || std::isnan(x))
        return Missing();
    if (x <= 0)
        return 1.0;
    if (std::isinf(x))
        return 0.0;
    const double r = df2 / df1;
    return Checked([&](long& code) { return cdfbet(r / (x + r), x / (x + r), df2 / 2, df1 / 2, code); });
}

double MCDistFun::kordidff(double p, double df1, double df2, long& code) {
    code = kSuccess;
    if (!(p >= 0 && p < 1) || !(df1 > 0 && df2 > 0))
        return Fail(code, kBadArgument);
    if (p == 0)
        return 0.0;
    if (df1 == 1) {
        const double t = kordidft(p / 2 + 0.5, df2, code);
        return code == kSuccess ? t * t : Missing();
    }
    const double v = betinv(p, df1 / 2, df2 / 2);
    const double quantile = v / (1 - v) * df2 / df1;
    if (!(v >= 0 && v < 1) || !std::isfinite(quantile))
        return Fail(code, kFailed);
    return quantile;
}

double MCDistFun::IdfF(double p, double df1, double df2) {
    return Checked([&](long& code) { return kordidff(p, df1, df2, code); });
}

} // namespace MCMath_900
