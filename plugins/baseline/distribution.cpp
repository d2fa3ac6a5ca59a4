#include "distribution.h"

#include <MCMath_900/MCDistFun.h>

#include <cmath>
#include <limits>
#include <numbers>

namespace veltrane_baseline {

namespace {

/// Of two numbers above 0, with all digits where they are nearly equal.
double LogOfRatio(double above, double below) {
    const double change = (above - below) / below;
    return std::abs(change) < 0.5 ? std::log1p(change) : std::log(above) - std::log(below);
}

} // namespace

/// The width may be one that no double holds; half of it always is.
Distribution Distribution::Uniform(double lower, double upper) {
    const double half = 0.5 * upper - 0.5 * lower;
    return {Kind::UNIFORM, lower + half, half / std::numbers::sqrt3, lower, upper};
}

bool Distribution::HasDensityAt(double number) const {
    switch (kind) {
    case Kind::GAUSSIAN:
        return true;
    case Kind::POISSON:
        return number >= 0.0 && number == std::floor(number);
    case Kind::UNIFORM:
        return number >= lower && number <= upper;
    default:
        return false;
    }
}

double Distribution::LogDensity(double number) const {
    if (!HasDensityAt(number)) {
        return -std::numeric_limits<double>::infinity();
    }
    switch (kind) {
    case Kind::GAUSSIAN: {
        const double z = Standardized(number);
        return -0.5 * (z * z + std::log(2.0 * std::numbers::pi)) - std::log(deviation);
    }
    case Kind::POISSON:
        return number * std::log(mean) - mean - MCMath_900::MCDistFun::korddnlgam(number + 1.0);
    default:
        return -std::log(0.5 * upper - 0.5 * lower) - std::numbers::ln2;
    }
}

double Distribution::LogRatio(const Distribution& other, double number) const {
    if (kind == Kind::POISSON && other.kind == Kind::POISSON) {
        return number * LogOfRatio(mean, other.mean) - (mean - other.mean);
    }
    if (kind == Kind::GAUSSIAN && other.kind == Kind::GAUSSIAN) {
        const double own = Standardized(number);
        const double others = other.Standardized(number);
        const double nearer = deviation == other.deviation ? (mean - other.mean) / deviation : others - own;
        return 0.5 * nearer * (others + own) - LogOfRatio(deviation, other.deviation);
    }
    return LogDensity(number) - other.LogDensity(number);
}

} // namespace veltrane_baseline
