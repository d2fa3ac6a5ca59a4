#ifndef VELTRANE_STATS_CONSTANTS_H
#define VELTRANE_STATS_CONSTANTS_H

#include <limits>

/// Constants that several families of distributions share.
namespace veltrane::stats {

/// What an expansion gives that couldn't be summed.
constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();

/// ln(sqrt(pi))
constexpr double kLogSqrtPi = 0.5723649429247001;

/// Degrees of freedom above which a t is taken as normal.
constexpr double kNormalFrom = 1e8;

/// The normal quantile of 1 - 1e-12: Poisson weights that many deviations below their mean are left out.
constexpr double kStartQuantile = 7.0344838253011;

/// From here on the index of a sum over Poisson weights no longer moves by 1, and the sum can't end.
constexpr double kLargestIndex = 0x1p53;

/// The sqrt of the largest double: the square of anything above it overflows.
constexpr double kLargestRoot = 1.3407807929942596e154;

} // namespace veltrane::stats

#endif
