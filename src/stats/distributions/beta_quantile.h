#ifndef VELTRANE_STATS_BETA_QUANTILE_H
#define VELTRANE_STATS_BETA_QUANTILE_H

namespace veltrane::stats {

/// A quantile of the beta distribution with its complement, each to its own digits.
struct BetaQuantile {
    double x, y;  ///< y is 1 - x
    double logit; ///< ln(x / y), for a quotient of the two whose parts would leave the range of a double
};

/// The quantile at p of the beta distribution of a, b > 0, for 0 < p < 1.
/// @return false when the ratio can't be computed
bool SolveBeta(double p, double a, double b, BetaQuantile& quantile);

} // namespace veltrane::stats

#endif
