#include "kit/values/single_precision.h"

namespace veltrane_kit {

namespace {

constexpr float kInfinite = std::numeric_limits<float>::infinity();

} // namespace

float NextSingle(float single) {
    return std::nextafter(single, kInfinite);
}

double LeastRoundedTo(float single) {
    if (std::isinf(single)) {
        return std::copysign(kBeyondSingles, static_cast<double>(single));
    }
    const float below = std::nextafter(single, -kInfinite);
    // Exact: a double has room for the half of a single's last digit, down to the smallest.
    const double middle = std::isinf(below) ? -kBeyondSingles : (static_cast<double>(below) + single) / 2.0;
    return NearestSingle(middle) >= single ? middle : std::nextafter(middle, std::numeric_limits<double>::infinity());
}

} // namespace veltrane_kit
