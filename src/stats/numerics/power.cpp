#include <MCCommon_900/MCMV.h>
#include <MCMath_900/MCPower.h>

#include <cmath>

namespace MCMath_900 {

using MCCommon_900::MCMV;

namespace {

/// How far, in machine epsilons, a power may lie from the reciprocal of an odd integer and still count as one.
constexpr double kReciprocalTolerance = 32.0;

bool IsWhole(double x) {
    return std::floor(x) == x;
}

/// x to the power y for a negative x; `out` comes in as missing. The sign of the result is that of the power's parity.
MCPower::PowerStatus NegativeBasePower(double x, double y, double& out) {
    const double exponent = std::log(-x) * y;
    if (MCPower::IsEvenInteger(y)) {
        return MCPower::Exponent(exponent, out);
    }
    if (!MCPower::IsOddInteger(y) && !MCPower::IsOneOverOddInteger(y, kReciprocalTolerance)) {
        return MCPower::POWER_NEG_BASE_NON_INTEGER;
    }
    const MCPower::PowerStatus status = MCPower::Exponent(exponent, out);
    if (MCMV::IsMissing(out)) {
        return y > 0 ? MCPower::POWER_NEG_BASE_OVERFLOW : status;
    }
    out = -out;
    return status;
}

MCPower::PowerStatus ZeroBasePower(double y, double& out) {
    if (y == 0) {
        out = 1.0;
        return MCPower::POWER_ZERO_ZERO;
    }
    if (y > 0) {
        out = 0.0;
        return MCPower::POWER_OK;
    }
    return MCPower::POWER_ZERO_BASE_NEG_EXP;
}

} // namespace

double MCPower::MaxExp() {
    return gMachineMaxExp;
}
double MCPower::MinExp() {
    return gMachineMinExp;
}
bool MCPower::ExpOverflow(double x) {
    return x > gMachineMaxExp;
}
bool MCPower::ExpUnderflow(double x) {
    return gMachineMinExp > x;
}
int MCPower::MaxInt() {
    return gMachineMaxInt;
}
double MCPower::MEpsilon() {
    return gMachineEpsilon;
}

bool MCPower::IsInteger(double x) {
    return x <= gMachineMaxInt && IsWhole(x);
}

bool MCPower::IsEvenInteger(double x) {
    return IsInteger(x) && IsWhole(x * 0.5);
}

bool MCPower::IsOddInteger(double x) {
    return IsInteger(x) && IsWhole(x * 0.5 + 0.5);
}

bool MCPower::AlmostEqual(double a, double b, double factor) {
    if (a == 0) {
        return b == 0;
    }
    if (b == 0 || (a > 0) != (b > 0)) {
        return false;
    }
    const double difference = std::fabs(a) - std::fabs(b);
    const double ratio = std::fabs(difference) / std::fabs(difference < 0 ? b : a);
    return gMachineEpsilon * factor >= ratio;
}

bool MCPower::IsOneOverOddInteger(double x, double factor) {
    if (x == 0) {
        return false;
    }
    const double reciprocal = 1 / x;
    if (!(reciprocal <= gMachineMaxInt)) {
        return false;
    }
    const double half = reciprocal * 0.5 + 0.5;
    return AlmostEqual(half, std::floor(half + 0.5), factor);
}

bool MCPower::IsOneOverEvenInteger(double x, double factor) {
    if (x == 0) {
        return false;
    }
    const double reciprocal = 1 / x;
    if (!(reciprocal <= gMachineMaxInt)) {
        return false;
    }
    const double half = reciprocal * 0.5;
    return AlmostEqual(half, std::floor(half + 0.5), factor);
}

MCPower::PowerStatus MCPower::Exponent(double x, double& out) {
    if (ExpUnderflow(x)) {
        out = 0.0;
        return POWER_UNDERFLOW;
    }
    if (ExpOverflow(x)) {
        out = MCMV::Missing();
        return POWER_OVERFLOW;
    }
    out = std::exp(x);
    return POWER_OK;
}

double MCPower::Multiply(double a, double b) {
    if (a == 0 || b == 0) {
        return 0;
    }
    double magnitude;
    Exponent(std::log(std::fabs(a)) + std::log(std::fabs(b)), magnitude);
    const bool sameSign = (a > 0) == (b > 0);
    return sameSign || MCMV::IsMissing(magnitude) ? magnitude : -magnitude;
}

MCPower::PowerStatus MCPower::Power(double x, double y, double& out) {
    out = MCMV::Missing();
    if (x == 0) {
        return ZeroBasePower(y, out);
    }
    if (y == 0) {
        out = 1.0;
        return x > 0 ? POWER_OK : POWER_NEG_BASE_ZERO_EXP;
    }
    return x > 0 ? Exponent(std::log(x) * y, out) : NegativeBasePower(x, y, out);
}

} // namespace MCMath_900
