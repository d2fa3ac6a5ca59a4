#ifndef VELTRANE_PLUGINS_BASELINE_DISTRIBUTION_H
#define VELTRANE_PLUGINS_BASELINE_DISTRIBUTION_H

namespace veltrane_baseline {

/// A continuous distribution, as a document states it.
struct Distribution {
    enum class Kind { ANY, GAUSSIAN, POISSON, UNIFORM };

    Kind kind = Kind::ANY;
    double mean = 0.0;
    double variance = 1.0; ///< above 0
    double lower = 0.0;    ///< of a uniform one, as the upper end
    double upper = 0.0;

    static Distribution Any(double mean, double variance) { return {Kind::ANY, mean, variance}; }
    static Distribution Gaussian(double mean, double variance) { return {Kind::GAUSSIAN, mean, variance}; }
    static Distribution Poisson(double mean) { return {Kind::POISSON, mean, mean}; }
    static Distribution Uniform(double lower, double upper);

    /// How far a number is from the mean, in standard deviations.
    double Standardized(double number) const;

    /// Whether more is known than mean and variance.
    bool HasDensity() const { return kind != Kind::ANY; }

    /// The logarithm of the density at a number, of a Poisson distribution of the probability of it; minus infinity
    /// where there is none.
    double LogDensity(double number) const;
};

} // namespace veltrane_baseline

#endif
