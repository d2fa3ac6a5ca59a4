#ifndef VELTRANE_STATS_INCOMPLETE_GAMMA_H
#define VELTRANE_STATS_INCOMPLETE_GAMMA_H

namespace veltrane::stats {

/// The incomplete gamma ratio of shape a at x: its lower tail or its upper one.
/// @param code 0, or as of a distribution function
double GammaRatio(double x, double a, bool lower, long& code);

} // namespace veltrane::stats

#endif
