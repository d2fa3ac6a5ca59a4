#ifndef VELTRANE_PLUGINS_KIT_FUNCTIONS_ANALYSIS_H
#define VELTRANE_PLUGINS_KIT_FUNCTIONS_ANALYSIS_H

#include "kit/functions/numbers/arithmetic.h"

/// Powers of e, logarithms, angles in radians and the hyperbolic functions. What grows beyond all doubles is infinite,
/// and the poles of the logarithms are outside of their domain.
namespace veltrane_kit::standard {

inline double Log10(double x) {
    return x > 0.0 ? std::log10(x) : kUndefined;
}

inline double Ln(double x) {
    return x > 0.0 ? std::log(x) : kUndefined;
}

inline double Ln1p(double x) {
    return x > -1.0 ? std::log1p(x) : kUndefined;
}

inline double Exp(double x) {
    return std::exp(x);
}

inline double Expm1(double x) {
    return std::expm1(x);
}

inline double SquareRoot(double x) {
    return std::sqrt(x);
}

inline double Sine(double x) {
    return std::sin(x);
}

inline double Cosine(double x) {
    return std::cos(x);
}

inline double Tangent(double x) {
    return std::tan(x);
}

inline double ArcSine(double x) {
    return std::asin(x);
}

inline double ArcCosine(double x) {
    return std::acos(x);
}

inline double ArcTangent(double x) {
    return std::atan(x);
}

/// @param y first, as in the standard
inline double AngleOf(double y, double x) {
    return std::atan2(y, x);
}

inline double HyperbolicSine(double x) {
    return std::sinh(x);
}

inline double HyperbolicCosine(double x) {
    return std::cosh(x);
}

inline double HyperbolicTangent(double x) {
    return std::tanh(x);
}

inline double ErrorFunction(double x) {
    return std::erf(x);
}

} // namespace veltrane_kit::standard

#endif
