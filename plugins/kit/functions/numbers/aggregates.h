#ifndef VELTRANE_PLUGINS_KIT_FUNCTIONS_AGGREGATES_H
#define VELTRANE_PLUGINS_KIT_FUNCTIONS_AGGREGATES_H

#include <cstddef>

/// Aggregates of at least one number, none of which is missing.
namespace veltrane_kit::standard {

// Two numbers combined, which folds make aggregates of.
inline double Smaller(double x, double y) {
    return y < x ? y : x;
}

inline double Larger(double x, double y) {
    return y > x ? y : x;
}

double Mean(const double* numbers, std::size_t count);

/// Of an even count the mean of the two in the middle.
double Median(const double* numbers, std::size_t count);

} // namespace veltrane_kit::standard

#endif
