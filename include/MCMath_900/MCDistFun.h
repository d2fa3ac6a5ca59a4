#ifndef MCMATH_900_MCDISTFUN_H
#define MCMATH_900_MCDISTFUN_H

#include <veltrane_export.h>

namespace MCMath_900 {

/// Density, cumulative and inverse functions of the classical distributions, their non-central forms, and two
/// statistics of grouped data.
///
/// `x` is a quantile, `p` a probability, `df` degrees of freedom, `ncp` a non-centrality. A function that fails returns
/// MCMV::Missing(); IdfBeta alone returns -1. Where a function has an error code, that is
///   0  success
///   1  an argument is outside its domain
///   2  the computation failed, overflowed or didn't converge
///   3  CdfBin only: n isn't an integer
/// Every function is re-entrant and throws nothing. Those of single numbers return a finite one whatever they are
/// given, after 125,000 rounds of their loops at most, which is within a millisecond; only the searches FindNCParam...
/// need up to 36 times as many, since each of their bisections sums up to 60,000 terms. docs/accuracy.md holds the
/// error of each function, by region.
class VELTRANE_API MCDistFun {
public:
    /// Standard normal distribution: cumulative function, density and quantile (0 < p < 1).
    static double CdfStdNorm(double z);
    static double PdfNormalStandard(double z);
    static double IdfStdNorm(double p);

    /// Normal cumulative function.
    /// @param sd > 0
    static double CdfNorm(double x, double mean, double sd);

    /// Normal density. A negative sd isn't refused; it negates the density.
    /// @param sd not 0
    static double PdfNormal(double x, double mean, double sd);

    /// Normal quantile.
    /// @param p  0 < p < 1
    /// @param sd > 0
    static double IdfNorm(double p, double mean, double sd);

    /// Student's t: cumulative function, density, quantile (0 < p < 1) and upper tail, for df > 0.
    static double CdfT(double x, double df);
    static double PdfT(double x, double df, long& code);
    static double IdfT(double p, double df);
    static double SigT(double x, double df);

    /// F distribution: cumulative function, quantile (0 <= p < 1) and upper tail, for df1, df2 > 0.
    static double CdfF(double x, double df1, double df2);
    static double IdfF(double p, double df1, double df2);
    static double SigF(double x, double df1, double df2);

    /// Chi-square: cumulative function, upper tail and quantile (0 <= p < 1), for df > 0.
    static double CdfChi(double x, double df);
    static double SigChi(double x, double df);
    static double IdfChi(double p, double df);

    /// Gamma distribution of shape and rate, both > 0: cumulative function, density and quantile (0 <= p < 1).
    static double CdfGam(double x, double shape, double rate);
    static double PdfGamma(double x, double shape, double rate);
    static double IdfGam(double p, double shape, double rate);

    /// Beta distribution of a, b > 0: cumulative function and quantile (0 <= p <= 1).
    /// @return IdfBeta gives -1 for an argument outside its domain
    static double CdfBeta(double x, double a, double b);
    static double IdfBeta(double p, double a, double b);

    /// Binomial distribution of n trials, 0 <= prob <= 1: probability of x, probability of at most x, and the largest
    /// x whose cumulative probability doesn't exceed p, -1 when there is none.
    static double PdfBin(double x, double n, double prob, long& code);
    static double CdfBin(double x, double n, double prob, long& code);
    static double IdfBin(double p, double n, double prob, long& code);

    /// Hypergeometric probability of exactly x, and of at most x, hits in a sample without replacement. `code` is 0 on
    /// success, else 1 or 2 as above.
    /// @param total  size of the population
    /// @param sample size of the sample
    /// @param hits   hits in the population
    static double PdfHyper(int x, int total, int sample, int hits);
    static double CDFHyper(double x, double total, double sample, double hits, int& code);

    /// Non-central cumulative functions, for df > 0 and, but for t, ncp >= 0. `tol` is the bound on the truncation
    /// error.
    static double NonCentralCdfChi(double x, double df, double ncp);
    static double NonCentralCdfF(double x, double df1, double df2, double ncp, double tol);
    static double NonCentralCdfT(double x, double df, double ncp);
    static double NonCentralPdfT(double x, double df, double ncp, long& code);

    /// The non-centrality for which the cumulative function at x is p.
    /// @param p   0 <= p <= 1; at or above the central cumulative function the result is 0
    /// @param tol >= 0, the accuracy in the cumulative function or in the non-centrality, whichever is met first
    static double FindNCParamChi(double x, double df, double p, double tol);
    static double FindNCParamF(double x, double df1, double df2, double p, double tol);
    static double FindNCParamT(double x, double df, double p, double tol);

    /// A percentile of grouped data: the place on the scale where the cumulative frequency reaches pct percent of all,
    /// interpolated linearly between the two ends of the stretch that holds it.
    ///
    /// | mode    | values[i] is                      | a stretch runs                                              |
    /// |---------|-----------------------------------|-------------------------------------------------------------|
    /// | below 1 | the midpoint of class i           | from midpoint to midpoint, each with half its class below it |
    /// | 1       | the midpoint of class i           | over a class, half of widths[i] to either side              |
    /// | above 1 | the upper limit of class i        | from limit to limit, each with its whole class below it     |
    ///
    /// @param n      number of classes, at least 2
    /// @param pct    the percentage, 0 to 100
    /// @param values n midpoints or upper limits, ascending
    /// @param freqs  n frequencies
    /// @param widths n widths of classes; read in mode 1 only and may be null in the others
    /// @param mode   which of the three, as above
    /// @param out    the percentile; missing when there is none
    /// @param code   0 found, 1 below the first midpoint, class or limit, 2 above the last one, -1 fewer than two
    ///               classes
    static void GPTile(int n, double pct, const double* values, const double* freqs, const double* widths, int mode,
                       double& out, long& code);

    /// Confidence limits of a median, from order statistics.
    /// @param n        number of distinct values
    /// @param values   the values, ascending
    /// @param freqs    frequency of each
    /// @param count    number of observations
    /// @param level    confidence level in percent
    /// @param exact    whether to compute the coverage
    /// @param lower    lower limit, missing when there is none
    /// @param upper    upper limit, missing when there is none
    /// @param coverage coverage of the interval in percent, missing when it isn't computed
    static void Mednci(int n, const double* values, const double* freqs, double count, double level, bool exact,
                       double& lower, double& upper, double& coverage);

    /// ln Gamma(x), for x > 0.
    static double korddnlgam(double x);

private:
    static double probit(double p);
    static double dnlgam(double x);
    static double dnlbnc(double n, double k, long& code);
    static double derf(double x);
    static double derfc(double x);
    static double prbnrm(double z);
    static double cbtaux(double x);
    static double gammad(double x, double a, bool lower, long& code);
    static double cdfexp(double x, double rate, long& code);
    static double cdfbet(double x, double a, double b, long& code);
    static double betinv(double p, double a, double b);
    static double kordcdft(double x, double df, long& code);
    static double kordidft(double p, double df, long& code);
    static double kordcdff(double x, double df1, double df2, long& code);
    static double kordidff(double p, double df1, double df2, long& code);
    static double ncdbet(double x, double a, double b, double ncp, long& code, double tol);
    static double ncdbet(double x, double y, double a, double b, double ncp, long& code, double tol);
    static double idfchb(double p, double df, double start, long& code);
    static double kordidfchi(double p, double df, long& code);
};

} // namespace MCMath_900

#endif
