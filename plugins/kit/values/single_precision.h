#ifndef VELTRANE_PLUGINS_KIT_SINGLE_PRECISION_H
#define VELTRANE_PLUGINS_KIT_SINGLE_PRECISION_H

#include <cmath>
#include <limits>

namespace veltrane_kit {

/// Half way from the largest single to the next power of 2: what reaches it is rounded to infinity.
constexpr double kBeyondSingles = 0x1.ffffffp127;

/// The number of single precision that is nearest to a number, of two equally near ones the even one; infinite beyond
/// all of them. What is not a number stays none.
inline float NearestSingle(double number) {
    constexpr float kInfinite = std::numeric_limits<float>::infinity();
    if (std::abs(number) >= kBeyondSingles) {
        return number > 0.0 ? kInfinite : -kInfinite;
    }
    return static_cast<float>(number);
}

/// The least number that is rounded to a single or to one above it: with it a comparison of numbers decides one of
/// numbers in single precision, `NearestSingle(x) >= single` as `x >= LeastRoundedTo(single)`.
/// @param single not NaN, and not -infinity, to which nothing finite has a least one
double LeastRoundedTo(float single);

/// The next single above one; infinite above the largest.
float NextSingle(float single);

} // namespace veltrane_kit

#endif
