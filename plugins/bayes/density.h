#ifndef VELTRANE_PLUGINS_BAYES_DENSITY_H
#define VELTRANE_PLUGINS_BAYES_DENSITY_H

#include <MCMath_900/MCDistFun.h>

#include <cmath>
#include <limits>

namespace veltrane_bayes {

/// The logarithm of 0.
constexpr double kNever = -std::numeric_limits<double>::infinity();

/// The logarithm of a density that is too low for a double: half of the smallest one above 0.
constexpr double kVanishing = -745.13321910194122;

/// The densities of a category at the values of an input, as logarithms: so many products of small numbers stay in the
/// range of doubles.
struct Density {
    enum class Kind { STATED, NORMAL, POISSON, UNIFORM };

    Kind kind = Kind::STATED; ///< the same at all values
    double constant = kNever; ///< added
    double mean = 0.0;        ///< of a normal one, and the lower end of a uniform one
    double factor = 0.0; ///< of the square of a normal one; of the number of a Poisson one; upper end of a uniform one

    static Density Stated(double logarithm) { return {Kind::STATED, logarithm}; }
    static Density Normal(double mean, double variance);
    static Density Poisson(double mean);
    static Density Uniform(double lower, double upper);

    /// @param number     no missing one
    /// @param factorials LogFactorial(number), which several densities share
    double At(double number, double factorials) const {
        switch (kind) {
        case Kind::NORMAL: {
            const double difference = number - mean;
            return constant - difference * difference * factor;
        }
        case Kind::POISSON:
            return Poisson(number, factorials);
        case Kind::UNIFORM:
            return number >= mean && number <= factor ? constant : kNever;
        default:
            return constant;
        }
    }

    /// ln(number!) of a whole number from 0 on, kNever for any other.
    static double LogFactorial(double number) {
        constexpr double kHighest = 1e300; // beyond which it leaves the range of doubles
        const bool isCount = number >= 0.0 && number <= kHighest && number == std::floor(number);
        return isCount ? MCMath_900::MCDistFun::korddnlgam(number + 1.0) : kNever;
    }

private:
    /// A mean of 0 has nothing but 0.
    double Poisson(double number, double factorials) const {
        if (factorials == kNever) {
            return kNever;
        }
        return number == 0.0 ? constant : number * factor + constant - factorials;
    }
};

/// What stands in for densities that are too low.
struct Threshold {
    double bound = kNever;   ///< logarithm below which it stands in
    double instead = kNever; ///< its logarithm

    double Applied(double logarithm) const { return logarithm < bound ? instead : logarithm; }
};

} // namespace veltrane_bayes

#endif
