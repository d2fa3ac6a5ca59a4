#ifndef VELTRANE_STATS_GUARDS_H
#define VELTRANE_STATS_GUARDS_H

#include <MCCommon_900/MCMV.h>

#include <cmath>

/// What the distribution functions share: their error codes, the result of a failure, and exponentials that never
/// leave the range of a double.
namespace veltrane::stats {

/// The error codes of the distribution functions.
enum ErrorCode : long {
    SUCCESS = 0,
    BAD_ARGUMENT = 1,
    FAILED = 2,
    NOT_INTEGER = 3,
};

/// Below this exponent exp() counts as 0 in the distribution functions, just within the range of normal numbers.
constexpr double kMinExponent = -708.0;

/// Above this exponent exp() counts as overflow.
constexpr double kMaxExponent = 709.0;

/// The result of a computation that failed.
inline double Missing() {
    return MCCommon_900::MCMV::Missing();
}
inline bool IsMissing(double value) {
    return MCCommon_900::MCMV::IsMissing(value);
}

/// Reports a failure by code; the result is the missing number.
inline double Fail(long& code, ErrorCode error) {
    code = error;
    return Missing();
}

/// The result of a function that reports by an error code, for wrappers without one: any failure gives the missing
/// number, whatever the function returned with it.
///
/// The function is called here, so that its code is read after it was set. As arguments of one call the result and the
/// code would be evaluated in either order.
/// @param function called with the error code that it sets
template <class Function>
double Checked(Function function) {
    long code = SUCCESS;
    const double result = function(code);
    return code == SUCCESS ? result : Missing();
}

/// A result that overflowed, or that is no number, is missing.
inline double FiniteOrMissing(double value) {
    return std::isfinite(value) ? value : Missing();
}

/// exp(x), with 0 below kMinExponent.
inline double BoundedExp(double x) {
    return x < kMinExponent ? 0.0 : std::exp(x);
}

/// 1 - exp(x), with 1 below kMinExponent.
inline double ComplementedExp(double x) {
    return x < kMinExponent ? 1.0 : -std::expm1(x);
}

/// A probability that rounding may have pushed out of its range.
inline double ClampedProbability(double p) {
    return p < 0 ? 0.0 : p > 1 ? 1.0 : p;
}

} // namespace veltrane::stats

#endif
