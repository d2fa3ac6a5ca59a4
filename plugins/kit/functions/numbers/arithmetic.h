#ifndef VELTRANE_PLUGINS_KIT_FUNCTIONS_ARITHMETIC_H
#define VELTRANE_PLUGINS_KIT_FUNCTIONS_ARITHMETIC_H

#include <cmath>
#include <limits>

/// Arithmetic of one and two numbers. Not a number is missing, and so is what lies outside a function's domain: every
/// function here gives it for an argument that is not a number.
namespace veltrane_kit::standard {

inline constexpr double kUndefined = std::numeric_limits<double>::quiet_NaN();

inline double Plus(double x, double y) {
    return x + y;
}

inline double Minus(double x, double y) {
    return x - y;
}

inline double Times(double x, double y) {
    return x * y;
}

inline double Quotient(double x, double y) {
    return y == 0.0 ? kUndefined : x / y;
}

/// What is left of x over a whole multiple of y, with the sign of y.
inline double Modulo(double x, double y) {
    const double rest = std::fmod(x, y);
    if (rest == 0.0) {
        return std::copysign(0.0, y);
    }
    return (rest < 0.0) != (y < 0.0) ? rest + y : rest;
}

inline double Threshold(double x, double y) {
    return std::isnan(x) || std::isnan(y) ? kUndefined : x > y ? 1.0 : 0.0;
}

/// There is one zero, whose negative powers are infinite.
inline double Power(double x, double y) {
    return std::isnan(x) || std::isnan(y) ? kUndefined : std::pow(x == 0.0 ? 0.0 : x, y);
}

inline double Hypotenuse(double x, double y) {
    return std::isnan(x) || std::isnan(y) ? kUndefined : std::hypot(x, y);
}

inline double Magnitude(double x) {
    return std::fabs(x);
}

// Whole numbers have one zero.
inline double Floor(double x) {
    return std::floor(x) + 0.0;
}

inline double Ceiling(double x) {
    return std::ceil(x) + 0.0;
}

/// The nearest whole number; the larger of two that are equally near.
inline double Round(double x) {
    const double below = std::floor(x);
    return x - below >= 0.5 ? below + 1.0 : below + 0.0;
}

/// The nearest whole number; the even one of two that are equally near.
inline double RoundToEven(double x) {
    return std::rint(x) + 0.0;
}

} // namespace veltrane_kit::standard

#endif
