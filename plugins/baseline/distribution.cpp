#include "distribution.h"

#include <MCMath_900/MCDistFun.h>

#include <cmath>
#include <limits>
#include <numbers>

namespace veltrane_baseline {

Distribution Distribution::Uniform(double lower, double upper) {
    const double width = upper - lower;
    return {Kind::UNIFORM, lower + width / 2.0, width * width / 12.0, lower, upper};
}

double Distribution::Standardized(double number) const {
    return (number - mean) / std::sqrt(variance);
}

double Distribution::LogDensity(double number) const {
    constexpr double kNone = -std::numeric_limits<double>::infinity();
    switch (kind) {
    case Kind::GAUSSIAN: {
        const double z = Standardized(number);
        return -0.5 * (z * z + std::log(2.0 * std::numbers::pi * variance));
    }
    case Kind::POISSON: {
        const bool isCount = number >= 0.0 && number == std::floor(number);
        return isCount ? number * std::log(mean) - mean - MCMath_900::MCDistFun::korddnlgam(number + 1.0) : kNone;
    }
    case Kind::UNIFORM:
        return number >= lower && number <= upper ? -std::log(upper - lower) : kNone;
    default:
        return kNone;
    }
}

} // namespace veltrane_baseline
