#ifndef VELTRANE_STATS_SADDLE_POINT_H
#define VELTRANE_STATS_SADDLE_POINT_H

/// The leading factors of the gamma, beta and binomial families, as logarithms.
///
/// Written as differences of ln Gamma they lose as many digits as ln Gamma has before its point: at a parameter of 1e6
/// the result of an otherwise exact series is good to 1e-9 only. Here the large parts are cancelled beforehand: C.
/// Loader, "Fast and accurate computation of binomial probabilities", 2000. All arguments are positive unless stated.
namespace veltrane::stats {

/// Up to this n a binomial coefficient is better multiplied out: every partial product is exact or nearly so.
constexpr double kLargestProduct = 33;

/// ln Gamma(x + 1) less Stirling's formula (x + 1/2) ln x - x + ln(2 pi) / 2.
double StirlingError(double x);

/// x ln(x / mean) + mean - x, without cancellation for an x near its mean.
double Deviance(double x, double mean);

/// ln Gamma(1 + h), to the relative accuracy of a small h.
double LogGammaOfOnePlus(double h);

/// ln of x^a exp(-x) / Gamma(a + 1). An a of 0 is allowed.
double LogPoissonTerm(double a, double x);

/// ln of x^a y^b Gamma(a + b + 1) / (Gamma(a + 1) Gamma(b + 1)), where y is 1 - x as exactly as the caller knows it.
/// The smaller of the two is taken as exact.
double LogBinomialTerm(double a, double b, double x, double y);

/// ln of Gamma(n + 1) / (Gamma(k + 1) Gamma(n - k + 1)) for 0 < k < n.
double LogChoose(double n, double k);

/// ln of the beta function.
double LogBeta(double a, double b);

/// ln of a times the beta function, to the relative accuracy of a small a, where it is proportional to a.
double LogScaledBeta(double a, double b);

/// ln Gamma(h + d) - ln Gamma(h).
double LogGammaStep(double h, double d);

/// The logarithm of a probability x whose complement is y: through the smaller of the two.
double LogProbability(double x, double y);

} // namespace veltrane::stats

#endif
