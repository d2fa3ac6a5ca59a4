#ifndef VELTRANE_TRANSFORM_NUMBERS_KERNELS_H
#define VELTRANE_TRANSFORM_NUMBERS_KERNELS_H

#include "transform/numbers/missing.h"

#include <cmath>
#include <cstddef>

/// The functions of numbers that plug-ins have no public one of, and kernels of the commonest public ones for the loop
/// that runs a plan. The table of built-in functions names them.
namespace veltrane::functions {

/// The power of an Apply takes two doubles; TransformationDictionary::Pow takes an integer exponent.
inline double Power(double a, double b) {
    return IsMissing(a) || IsMissing(b) ? kMissing : std::pow(a, b);
}

inline double Difference(double a, double b) {
    return IsMissing(a) || IsMissing(b) ? kMissing : a - b;
}

inline double Product(double a, double b) {
    return IsMissing(a) || IsMissing(b) ? kMissing : a * b;
}

inline double Quotient(double a, double b) {
    return IsMissing(a) || IsMissing(b) || b == 0.0 ? kMissing : a / b;
}

/// Over what is not missing; missing when nothing is left.
inline double Total(const double* values, std::size_t count) {
    double sum = 0.0;
    bool found = false;
    for (std::size_t i = 0; i < count; ++i) {
        if (!IsMissing(values[i])) {
            sum += values[i];
            found = true;
        }
    }
    return found ? sum : kMissing;
}

/// The median of what is not missing; missing when nothing is left. It leaves the numbers in another order.
double Median(double* values, std::size_t count);

} // namespace veltrane::functions

#endif
