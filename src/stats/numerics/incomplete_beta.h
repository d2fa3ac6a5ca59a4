#ifndef VELTRANE_STATS_INCOMPLETE_BETA_H
#define VELTRANE_STATS_INCOMPLETE_BETA_H

namespace veltrane::stats {

/// The incomplete beta ratio I_x(a, b). What is relatively small comes with its own digits, not as a difference from 1.
/// @param y    1 - x, as exactly as the caller knows it: an x that rounds to 1 isn't at the end while y is above 0
/// @param code 0, or as of a distribution function
double BetaRatio(double x, double y, double a, double b, long& code);

/// Whether an x or its complement y is so small that it is better given by its logarithm.
bool IsAtEnd(double x, double y, double a, double b);

/// The incomplete beta ratio at an end, by the leading term there.
/// @param logit ln(x / y)
double BetaRatioAtEnd(double logit, double a, double b);

/// The logarithm of the ratio, which may be far below those of numbers, for 0 < x < 1 and parameters above 0; a NaN
/// when it can't be computed.
/// @param rounds raised by the rounds that it took, 20000 at most
double LogBetaRatio(double x, double y, double a, double b, int& rounds);

/// g(x) = (1 - x^2 + 2 x ln x) / (1 - x)^2 of Peizer and Pratt; missing below 0.
double PeizerPrattG(double x);

} // namespace veltrane::stats

#endif
