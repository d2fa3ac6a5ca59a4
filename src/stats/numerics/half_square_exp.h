#ifndef VELTRANE_STATS_HALF_SQUARE_EXP_H
#define VELTRANE_STATS_HALF_SQUARE_EXP_H

#include <cmath>

namespace veltrane::stats {

/// exp(-z^2 / 2), the shape of the normal density, to a few units in the last place. The square is split into a head
/// that is exact and a small rest, since its rounding alone would cost three digits far out.
/// @return 0 from 40 on, and for a z that is no number
inline double HalfSquareExp(double z) {
    constexpr double kFarthest = 40;
    if (!(std::fabs(z) < kFarthest)) {
        return 0.0;
    }
    const double head = std::trunc(z * 16) / 16;
    return std::exp(-head * head / 2) * std::exp(-(z - head) * (z + head) / 2);
}

} // namespace veltrane::stats

#endif
