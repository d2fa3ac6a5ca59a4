#include "density.h"

#include <numbers>

namespace veltrane_bayes {

Density Density::Normal(double mean, double variance) {
    return {Kind::NORMAL, -0.5 * (std::log(2.0 * std::numbers::pi) + std::log(variance)), mean, 0.5 / variance};
}

Density Density::Poisson(double mean) {
    return {Kind::POISSON, -mean, mean, std::log(mean)};
}

Density Density::Uniform(double lower, double upper) {
    return {Kind::UNIFORM, -std::log(upper - lower), lower, upper};
}

} // namespace veltrane_bayes
