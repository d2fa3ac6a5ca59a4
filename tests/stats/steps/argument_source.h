#ifndef VELTRANE_TESTS_STATS_STEPS_ARGUMENT_SOURCE_H
#define VELTRANE_TESTS_STATS_STEPS_ARGUMENT_SOURCE_H

#include <bit>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <limits>
#include <random>

namespace veltrane::tests {

/// The ends of every range that an argument may have, and where the methods of the functions change.
constexpr double kEdges[] = {
    0.0,
    -0.0,
    5e-324,
    -5e-324,
    1e-310,
    -1e-310,
    std::numeric_limits<double>::min(),
    1e-300,
    -1e-300,
    1e-100,
    1e-20,
    std::numeric_limits<double>::epsilon(),
    1e-6,
    0.01,
    0.5,
    1 - 0x1p-53,
    1.0,
    1 + 0x1p-52,
    2.0,
    -3.0,
    7.5,
    33.0,
    34.0,
    1e3,
    1e5,
    1e8,
    1.1e8,
    1e12,
    2147483647.0,
    2147483648.0,
    1e18,
    1e100,
    1.3407807929942596e154,
    1e300,
    -1e300,
    std::numeric_limits<double>::max(),
    -std::numeric_limits<double>::max(),
    std::numeric_limits<double>::infinity(),
    -std::numeric_limits<double>::infinity(),
    std::numeric_limits<double>::quiet_NaN(),
};

/// Draws arguments from a seed of its own, the same on every machine.
class ArgumentSource {
public:
    explicit ArgumentSource(std::uint64_t seed) : fRandom(seed) {}

    /// Any of the 2^64 bit patterns.
    double Bits() { return std::bit_cast<double>(fRandom()); }

    double Edge() { return kEdges[fRandom() % std::size(kEdges)]; }

    /// Between 0 and 1.
    double Uniform() { return static_cast<double>(fRandom() >> 11) * 0x1p-53; }
    double Between(double low, double high) { return low + (high - low) * Uniform(); }

    /// With every power of ten as likely as another.
    double Log(double low, double high) { return std::exp(Between(std::log(low), std::log(high))); }

    double Whole(double low, double high) { return std::floor(Log(low, high)); }
    bool Coin() { return fRandom() % 2 == 0; }
    std::uint64_t Below(std::uint64_t count) { return fRandom() % count; }

    /// A probability, in either tail as often as near the middle.
    double Probability() {
        switch (Below(3)) {
        case 0:
            return std::pow(10, -Between(0, 300));
        case 1:
            return 1 - std::pow(10, -Between(0, 15));
        default:
            return Uniform();
        }
    }

    /// What arguments usually are: probabilities, counts, parameters and values of either sign.
    double Ordinary() {
        switch (Below(4)) {
        case 0:
            return Probability();
        case 1:
            return Whole(1, 3e9);
        case 2:
            return (Coin() ? 1 : -1) * Log(1e-6, 1e12);
        default:
            return Log(1e-3, 1e3);
        }
    }

private:
    std::mt19937_64 fRandom;
};

} // namespace veltrane::tests

#endif
