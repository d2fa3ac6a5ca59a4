#include "density.h"

#include <numbers>

namespace veltrane_bayes {

Density Density::Normal(double mean, double variance) {
    return {Kind::NORMAL, -0.5 * (std::log(2.0 * std::numbers::pi) + std::log(variance)), mean, 0.5 / variance};
}

Density Density::Poisson(double mean) {
    return {Kind::POISSON, -mean, mean, std::log(mean)};
}

/// A width that no double holds is twice its half.
Density Density::Uniform(double lower, double upper) {
    const double width = upper - lower;
    const double logarithm =
        std::isfinite(width) ? std::log(width) : std::log(0.5 * upper - 0.5 * lower) + std::numbers::ln2;
    return {Kind::UNIFORM, -logarithm, lower, upper};
}

} // namespace veltrane_bayes
