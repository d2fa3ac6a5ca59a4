#include "stats/numerics/guards.h"
#include "stats/numerics/saddle_point.h"

#include <MCMath_900/MCDistFun.h>
#include <MCMath_900/MCPower.h>

#include <cmath>
#include <limits>

/// The chi-square and the gamma distribution, through the incomplete gamma ratio. Their quantiles stand in
/// chi_square_quantile.cpp.
namespace MCMath_900 {

using namespace veltrane::stats;

namespace {

/// A product, and what its rounding leaves of it: a tail changes by that many of its last digits as the product has
/// standard deviations to the mean. Where the product has lost digits at an end of the range there is no rest.
struct Product {
    Product(double x, double y) : rounded(x * y), rest(std::fma(x, y, -rounded)) {
        if (!(rounded > kSmallestWithRest && rounded < std::numeric_limits<double>::max())) {
            rest = 0;
        }
    }

    static constexpr double kSmallestWithRest = 1e-290;

    double rounded, rest;
};

} // namespace

double MCDistFun::CdfChi(double x, double df) {
    return Checked([&](long& code) { return gammad(x / 2, df / 2, true, code); });
}

double MCDistFun::SigChi(double x, double df) {
    return Checked([&](long& code) { return gammad(x / 2, df / 2, false, code); });
}

double MCDistFun::CdfGam(double x, double shape, double rate) {
    if (!(shape > 0 && rate > 0) || std::isnan(x)) {
        return Missing();
    }
    if (x <= 0) {
        return 0.0;
    }
    if (shape == 1) {
        return Checked([&](long& code) { return cdfexp(x, rate, code); });
    }
    const Product scaled(x, rate);
    const double lower = Checked([&](long& code) { return gammad(scaled.rounded, shape, true, code); });
    if (IsMissing(lower) || scaled.rest == 0) {
        return lower;
    }
    const double logSlope = LogPoissonTerm(shape, scaled.rounded) + std::log(shape) - std::log(scaled.rounded);
    return ClampedProbability(lower + BoundedExp(logSlope) * scaled.rest);
}

double MCDistFun::PdfGamma(double x, double shape, double rate) {
    if (!(shape > 0 && rate > 0) || std::isnan(x)) {
        return Missing();
    }
    if (x == 0 && shape <= 1) {
        return shape == 1 ? FiniteOrMissing(rate) : Missing();
    }
    const Product scaled(x, rate);
    if (x <= 0 || std::isinf(scaled.rounded)) {
        return 0.0;
    }
    double logDensity = std::log(rate) - scaled.rounded;
    if (shape != 1 && scaled.rounded < Product::kSmallestWithRest) {
        logDensity += (shape - 1) * (std::log(x) + std::log(rate)) - dnlgam(shape);
    } else if (shape != 1) {
        logDensity = LogPoissonTerm(shape, scaled.rounded) + std::log(shape) - std::log(x) +
                     (shape - scaled.rounded) * (scaled.rest / scaled.rounded);
    }
    if (MCPower::ExpUnderflow(logDensity)) {
        return 0.0;
    }
    return logDensity <= kMaxExponent ? std::exp(logDensity) : Missing();
}

double MCDistFun::IdfGam(double p, double shape, double rate) {
    if (!(p >= 0 && p < 1) || !(shape >= 0) || !(rate > 0)) {
        return Missing();
    }
    if (p == 0) {
        return 0.0;
    }
    const double quantile = Checked([&](long& code) { return kordidfchi(p, 2 * shape, code); });
    return IsMissing(quantile) ? quantile : FiniteOrMissing(quantile * 0.5 / rate);
}

} // namespace MCMath_900
