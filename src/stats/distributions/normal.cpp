#include "stats/numerics/guards.h"
#include "stats/numerics/half_square_exp.h"

#include <MCMath_900/MCDistFun.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <span>

/// The normal distribution.
///
/// Cumulative function: by erf for the upper and erfc for the lower half, so that the lower tail keeps its relative
/// accuracy down to the smallest exponent. Quantile: AS 241. All of it is good to a few units in the last place.
namespace MCMath_900 {

using namespace veltrane::stats;

namespace {

/// 1 / sqrt(2 pi)
constexpr double kDensityAtMean = 0.3989422804014327;

/// M. J. Wichura, "Algorithm AS 241: The percentage points of the normal distribution", Applied Statistics 37 (1988),
/// 477-484, routine PPND16: three rational approximations, each of degree 7 over 7, accurate to about 1e-16. The
/// coefficients stand in ascending order.
struct RationalApproximation {
    double numerator[8];
    double denominator[8];

    static double Polynomial(std::span<const double> coefficients, double x) {
        double sum = 0;
        for (auto c = coefficients.rbegin(); c != coefficients.rend(); ++c) {
            sum = sum * x + *c;
        }
        return sum;
    }

    double operator()(double x) const { return Polynomial(numerator, x) / Polynomial(denominator, x); }
};

/// Half-width of the central region, in probability.
constexpr double kCentralHalfWidth = 0.425;

/// Where the middle region ends, as sqrt(-ln p).
constexpr double kFarTail = 5.0;

/// In kCentralHalfWidth^2 - (p - 0.5)^2.
constexpr double kCentralOffset = 0.180625;
constexpr RationalApproximation kCentral = {
    {3.3871328727963666080e0, 1.3314166789178437745e+2, 1.9715909503065514427e+3, 1.3731693765509461125e+4,
     4.5921953931549871457e+4, 6.7265770927008700853e+4, 3.3430575583588128105e+4, 2.5090809287301226727e+3},
    {1.0, 4.2313330701600911252e+1, 6.8718700749205790830e+2, 5.3941960214247511077e+3, 2.1213794301586595867e+4,
     3.9307895800092710610e+4, 2.8729085735721942674e+4, 5.2264952788528545610e+3}};

/// In sqrt(-ln p) - 1.6.
constexpr double kMiddleOffset = 1.6;
constexpr RationalApproximation kMiddle = {
    {1.42343711074968357734e0, 4.63033784615654529590e0, 5.76949722146069140550e0, 3.64784832476320460504e0,
     1.27045825245236838258e0, 2.41780725177450611770e-1, 2.27238449892691845833e-2, 7.74545014278341407640e-4},
    {1.0, 2.05319162663775882187e0, 1.67638483018380384940e0, 6.89767334985100004550e-1, 1.48103976427480074590e-1,
     1.51986665636164571966e-2, 5.47593808499534494600e-4, 1.05075007164441684324e-9}};

/// In sqrt(-ln p) - 5.
constexpr RationalApproximation kTail = {
    {6.65790464350110377720e0, 5.46378491116411436990e0, 1.78482653991729133580e0, 2.96560571828504891230e-1,
     2.65321895265761230930e-2, 1.24266094738807843860e-3, 2.71155556874348757815e-5, 2.01033439929228813265e-7},
    {1.0, 5.99832206555887937690e-1, 1.36929880922735805310e-1, 1.48753612908506148525e-2, 7.86869131145613259100e-4,
     1.84631831751005468180e-5, 1.42151175831644588870e-7, 2.04426310338993978564e-15}};

/// exp(-708): a tail below it counts as 0.
constexpr double kSmallestTail = 3.307553003638408e-308;

/// The lower tail at z, made up for the rounding of z / sqrt(2) that the tail was computed at. The relative change of a
/// tail with its argument is the hazard, density over tail.
double LowerTail(double z, double tail) {
    if (tail == 0) {
        return tail;
    }
    constexpr double kSqrt2Rest = -9.667293313452913e-17; // sqrt(2) less its nearest double
    const double scaled = -z / std::numbers::sqrt2;
    const double rest = std::fma(-scaled, std::numbers::sqrt2, -z) - scaled * kSqrt2Rest;
    return tail - rest * HalfSquareExp(z) * kDensityAtMean;
}

} // namespace

double MCDistFun::probit(double p) {
    if (!(p > 0 && p < 1)) {
        return Missing();
    }
    const double q = p - 0.5;
    if (std::fabs(q) <= kCentralHalfWidth) {
        return q * kCentral(kCentralOffset - q * q);
    }
    const double r = std::sqrt(-std::log(std::min(p, 1 - p)));
    const double z = r <= kFarTail ? kMiddle(r - kMiddleOffset) : kTail(r - kFarTail);
    return q < 0 ? -z : z;
}

double MCDistFun::derf(double x) {
    return std::erf(x);
}

double MCDistFun::derfc(double x) {
    const double value = std::erfc(x);
    return value < kSmallestTail ? 0.0 : value;
}

double MCDistFun::prbnrm(double z) {
    if (z > 0) {
        return (derf(z / std::numbers::sqrt2) + 1) * 0.5;
    }
    if (z < 0) {
        return LowerTail(z, derfc(-z / std::numbers::sqrt2) * 0.5);
    }
    return z == 0 ? 0.5 : Missing();
}

double MCDistFun::CdfStdNorm(double z) {
    return prbnrm(z);
}

double MCDistFun::CdfNorm(double x, double mean, double sd) {
    return sd > 0 ? prbnrm((x - mean) / sd) : Missing();
}

double MCDistFun::PdfNormalStandard(double z) {
    return std::isnan(z) ? Missing() : HalfSquareExp(z) * kDensityAtMean;
}

double MCDistFun::PdfNormal(double x, double mean, double sd) {
    const double z = (x - mean) / sd;
    return sd != 0 && !std::isnan(z) ? FiniteOrMissing(PdfNormalStandard(z) / sd) : Missing();
}

double MCDistFun::IdfStdNorm(double p) {
    return p == 0.5 ? 0.0 : probit(p);
}

double MCDistFun::IdfNorm(double p, double mean, double sd) {
    if (!(p > 0 && p < 1) || !(sd > 0)) {
        return Missing();
    }
    return FiniteOrMissing(p == 0.5 ? mean : probit(p) * sd + mean);
}

} // namespace MCMath_900
