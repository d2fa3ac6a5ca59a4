#include "stats/guards.h"
#include "stats/saddle_point.h"

#include <MCMath_900/MCDistFun.h>
#include <MCMath_900/MCPower.h>

#include <cmath>

/// The chi-square and the gamma distribution, through the incomplete gamma ratio. Their quantiles stand in
/// chi_square_quantile.cpp.
namespace MCMath_900 {

using namespace veltrane::stats;

double MCDistFun::CdfChi(double x, double df) {
    return Checked([&](long& code) { return gammad(x / 2, df / 2, true, code); });
}

double MCDistFun::SigChi(double x, double df) {
    return Checked([&](long& code) { return gammad(x / 2, df / 2, false, code); });
}

double MCDistFun::CdfGam(double x, double shape, double rate) {
    if (!(shape > 0 && rate > 0))
        return Missing();
    return Checked(
        [&](long& code) { return shape == 1 ? cdfexp(x, rate, code) : gammad(x * rate, shape, true, code); });
}

double MCDistFun::PdfGamma(double x, double shape, double rate) {
    if (!(shape > 0 && rate > 0) || std::isnan(x))
        return Missing();
    const double scaled = x * rate;
    if (x >= 0 && scaled == 0 && shape <= 1)
        return shape == 1 ? rate : Missing();
    if (scaled <= 0 || std::isinf(scaled))
        return 0.0;
    double logDensity = std::log(rate) - scaled;
    if (shape != 1)
        logDensity = LogPoissonTerm(shape, scaled) + std::log(shape) - std::log(x);
    if (MCPower::ExpUnderflow(logDensity))
        return 0.0;
    return logDensity <= kMaxExponent ? std::exp(logDensity) : Missing();
}

double MCDistFun::IdfGam(double p, double shape, double rate) {
    if (!(p >= 0 && p < 1) || !(shape >= 0) || !(rate > 0))
        return Missing();
    if (p == 0)
        return 0.0;
    const double quantile = Checked([&](long& code) { return kordidfchi(p, 2 * shape, code); });
    return IsMissing(quantile) ? quantile : FiniteOrMissing(quantile * 0.5 / rate);
}

} // namespace MCMath_900
