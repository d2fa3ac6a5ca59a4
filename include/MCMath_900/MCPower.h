#ifndef MCMATH_900_MCPOWER_H
#define MCMATH_900_MCPOWER_H

#include <veltrane_export.h>

namespace MCMath_900 {

/// Guarded arithmetic: exponentials, products and powers that answer with a status and never overflow into an infinity.
/// A result that can't be computed is MCMV::Missing(). All functions are pure, throw nothing and ignore errno.
class VELTRANE_API MCPower {
public:
    enum PowerStatus {
        POWER_OK = 0,                   ///< the result is valid
        POWER_UNDERFLOW = 1,            ///< the exponent is below MinExp(); the result is 0.0
        POWER_OVERFLOW = 2,             ///< the exponent is above MaxExp(); the result is missing
        POWER_NEG_BASE_OVERFLOW = 3,    ///< a negative base to an odd positive power overflowed; missing
        POWER_NEG_BASE_NON_INTEGER = 4, ///< a negative base to a power that allows none; missing
        POWER_NEG_BASE_ZERO_EXP = 5,    ///< a negative base to the power 0; the result is 1.0
        POWER_ZERO_BASE_NEG_EXP = 6,    ///< zero to a negative power; missing
        POWER_ZERO_ZERO = 7,            ///< zero to the power zero; the result is 1.0
    };

    /// The largest exponent of e that is computed, 709.0.
    static double MaxExp();

    /// The smallest exponent of e that is computed, -708.39.
    static double MinExp();

    /// Whether exp(x) counts as overflow: x > MaxExp(), strict.
    static bool ExpOverflow(double x);

    /// Whether exp(x) counts as underflow: x < MinExp(), strict.
    static bool ExpUnderflow(double x);

    /// The largest number that the integer tests accept, 2147483647.
    static int MaxInt();

    /// Whether x is a whole number of at most MaxInt(). There is no lower bound.
    static bool IsInteger(double x);
    static bool IsEvenInteger(double x);
    static bool IsOddInteger(double x);

    /// The machine epsilon, 2^-52.
    static double MEpsilon();

    /// Equality within a relative tolerance.
    /// @param factor the tolerance in machine epsilons, inclusive
    static bool AlmostEqual(double a, double b, double factor);

    /// Whether x is the reciprocal of an odd integer of at most MaxInt().
    /// @param factor the tolerance of AlmostEqual()
    static bool IsOneOverOddInteger(double x, double factor);

    /// Whether x is the reciprocal of an even integer of at most MaxInt().
    /// @param factor the tolerance of AlmostEqual()
    static bool IsOneOverEvenInteger(double x, double factor);

    /// e to the power x.
    /// @param out exp(x), 0.0 on POWER_UNDERFLOW, missing on POWER_OVERFLOW
    static PowerStatus Exponent(double x, double& out);

    /// A product through logarithms that can't overflow. A product beyond the range of Exponent() is missing, whatever
    /// its sign; one below it is 0.0, or -0.0 with opposite signs.
    static double Multiply(double a, double b);

    /// x to the power y. A negative x allows an integer y and the reciprocal of an odd integer.
    static PowerStatus Power(double x, double y, double& out);

private:
    static constexpr double gMachineMaxExp = 709.0;
    static constexpr double gMachineMinExp = -708.39;
    static constexpr int gMachineMaxInt = 0x7FFFFFFF;
    static constexpr double gMachineEpsilon = 0x1p-52;
};

} // namespace MCMath_900

#endif
