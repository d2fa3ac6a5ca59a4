#ifndef VELTRANE_STATS_TAIL_INTEGRAL_H
#define VELTRANE_STATS_TAIL_INTEGRAL_H

namespace veltrane::stats {

/// log1p(v) - v, without cancellation for a small v.
double LogOfOnePlusLess(double v);

/// A factor (1 + scale * s)^power exp(-power * scale * s) of an integrand: 1 at s = 0, and falling from there on both
/// sides.
struct BellFactor {
    double power, scale;

    double Log(double s) const { return power * LogOfOnePlusLess(scale * s); }
    double Curvature() const { return power * scale * scale; }
};

/// The integral over s > 0 of exp(-slope * s) times two bell factors.
///
/// This is what the tails of the gamma and the binomial distribution come to once their leading factor is taken out,
/// with the large parts of the two exponents cancelled beforehand into the slope. It takes the same few steps for any
/// parameters, where the expansions need some multiple of the standard deviation.
///
/// Method: Gauss-Legendre quadrature on panels up to where nothing is left of the integrand; some 1e-15, relative.
/// @param slope positive, or so small that the integrand falls soon nevertheless
double TailIntegral(double slope, BellFactor first, BellFactor second);

} // namespace veltrane::stats

#endif
