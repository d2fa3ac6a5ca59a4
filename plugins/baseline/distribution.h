#ifndef VELTRANE_PLUGINS_BASELINE_DISTRIBUTION_H
#define VELTRANE_PLUGINS_BASELINE_DISTRIBUTION_H

#include <cmath>

namespace veltrane_baseline {

/// A continuous distribution, as a document states it.
struct Distribution {
    enum class Kind { ANY, GAUSSIAN, POISSON, UNIFORM };

    Kind kind = Kind::ANY;
    double mean = 0.0;
    double deviation = 1.0; ///< the standard one, above 0
    double lower = 0.0;     ///< of a uniform one, as the upper end
    double upper = 0.0;

    static Distribution Any(double mean, double variance) { return {Kind::ANY, mean, std::sqrt(variance)}; }
    static Distribution Gaussian(double mean, double variance) { return {Kind::GAUSSIAN, mean, std::sqrt(variance)}; }
    static Distribution Poisson(double mean) { return {Kind::POISSON, mean, std::sqrt(mean)}; }
    static Distribution Uniform(double lower, double upper);

    /// How far a number is from the mean, in standard deviations.
    double Standardized(double number) const { return (number - mean) / deviation; }

    /// Whether more is known than mean and variance.
    bool HasDensity() const { return kind != Kind::ANY; }

    /// Whether there is a density at a number, however low.
    bool HasDensityAt(double number) const;

    /// The logarithm of the density at a number, of a Poisson distribution of the probability of it; minus infinity
    /// where there is none.
    double LogDensity(double number) const;

    /// The logarithm of the density at a number over that of another distribution, where both have one. Of two Gaussian
    /// or two Poisson distributions no digits are lost for numbers far out.
    /// @return not a finite number where no double holds it
    double LogRatio(const Distribution& other, double number) const;
};

} // namespace veltrane_baseline

#endif
