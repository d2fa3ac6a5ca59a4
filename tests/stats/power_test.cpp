#include "support/numbers.h"
#include "support/rows.h"

#include <MCCommon_900/MCMV.h>
#include <MCMath_900/MCPower.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace {

using namespace veltrane::tests;
using MCCommon_900::MCMV;
using MCMath_900::MCPower;

constexpr double kTiny = std::numeric_limits<double>::denorm_min();

TEST(MissingNumber, HasTheBitsOfMinusTheLargestDouble) {
    EXPECT_EQ(Bits(MCMV::Missing()), 0xFFEFFFFFFFFFFFFFu);
}

TEST(MissingNumber, IsMissingTestsExactEquality) {
    EXPECT_TRUE(MCMV::IsMissing(-1.7976931348623157e+308));
    EXPECT_FALSE(MCMV::IsMissing(std::nextafter(MCMV::Missing(), 0)));
    EXPECT_FALSE(MCMV::IsMissing(-MCMV::Missing()));
    EXPECT_FALSE(MCMV::IsMissing(-kInfinity));
}

TEST(MissingNumber, NotANumberIsNotMissing) {
    EXPECT_FALSE(MCMV::IsMissing(kNaN));
}

TEST(PowerConstants, AreThoseOfTheMachine) {
    EXPECT_EQ(MCPower::MaxExp(), 709.0);
    EXPECT_EQ(MCPower::MinExp(), -708.39);
    EXPECT_EQ(MCPower::MaxInt(), 2147483647);
    EXPECT_EQ(Bits(MCPower::MEpsilon()), 0x3CB0000000000000u);
}

TEST(PowerConstants, StatusNumbers) {
    EXPECT_EQ(MCPower::POWER_OK, 0);
    EXPECT_EQ(MCPower::POWER_UNDERFLOW, 1);
    EXPECT_EQ(MCPower::POWER_OVERFLOW, 2);
    EXPECT_EQ(MCPower::POWER_NEG_BASE_OVERFLOW, 3);
    EXPECT_EQ(MCPower::POWER_NEG_BASE_NON_INTEGER, 4);
    EXPECT_EQ(MCPower::POWER_NEG_BASE_ZERO_EXP, 5);
    EXPECT_EQ(MCPower::POWER_ZERO_BASE_NEG_EXP, 6);
    EXPECT_EQ(MCPower::POWER_ZERO_ZERO, 7);
}

TEST(ExponentBounds, OverflowIsStrictAt709) {
    EXPECT_FALSE(MCPower::ExpOverflow(709.0));
    EXPECT_TRUE(MCPower::ExpOverflow(709.0000001));
    EXPECT_TRUE(MCPower::ExpOverflow(kInfinity));
    EXPECT_FALSE(MCPower::ExpOverflow(kNaN));
}

TEST(ExponentBounds, UnderflowIsStrictAtMinus708Point39) {
    EXPECT_FALSE(MCPower::ExpUnderflow(-708.39));
    EXPECT_TRUE(MCPower::ExpUnderflow(-708.3900001));
    EXPECT_TRUE(MCPower::ExpUnderflow(-kInfinity));
    EXPECT_FALSE(MCPower::ExpUnderflow(kNaN));
}

struct IntegerCase {
    const char* name;
    double x;
    bool integer, even, odd;
};

class IntegerTests : public testing::TestWithParam<IntegerCase> {};

TEST_P(IntegerTests, Classify) {
    const IntegerCase& c = GetParam();
    EXPECT_EQ(MCPower::IsInteger(c.x), c.integer);
    EXPECT_EQ(MCPower::IsEvenInteger(c.x), c.even);
    EXPECT_EQ(MCPower::IsOddInteger(c.x), c.odd);
}

constexpr IntegerCase kIntegerCases[] = {
    {"Zero", 0.0, true, true, false},
    {"One", 1.0, true, false, true},
    {"MinusOne", -1.0, true, false, true},
    {"Two", 2.0, true, true, false},
    {"MinusTwo", -2.0, true, true, false},
    {"Half", 0.5, false, false, false},
    {"MaxInt", 2147483647.0, true, false, true},
    {"AboveMaxInt", 2147483648.0, false, false, false},
    {"BelowMinIntHasNoBound", -2147483649.0, true, false, true},
    {"MinusInfinityHasNoBound", -kInfinity, true, true, true},
    {"Infinity", kInfinity, false, false, false},
    {"NotANumber", kNaN, false, false, false},
};

INSTANTIATE_TEST_SUITE_P(Rows, IntegerTests, testing::ValuesIn(kIntegerCases), veltrane::tests::NameOfRow());

struct AlmostEqualCase {
    const char* name;
    double a, b, factor;
    bool equal;
};

class AlmostEqualTests : public testing::TestWithParam<AlmostEqualCase> {};

TEST_P(AlmostEqualTests, Compare) {
    const AlmostEqualCase& c = GetParam();
    EXPECT_EQ(MCPower::AlmostEqual(c.a, c.b, c.factor), c.equal);
}

constexpr AlmostEqualCase kAlmostEqualCases[] = {
    {"ZeroAndZero", 0.0, 0.0, 1.0, true},
    {"ZeroAndTiny", 0.0, kTiny, 1e9, false},
    {"TinyAndZero", kTiny, 0.0, 1e9, false},
    {"OppositeSigns", 1.0, -1.0, 1e9, false},
    {"NegativeSameSign", -1.0, -1.0, 1.0, true},
    {"OneEpsilonBelowIsInclusive", 1.0, 1.0 - 0x1p-53, 0.5, true},
    {"OneEpsilonAboveRelativeToTheLarger", 1.0, 1.0 + 0x1p-52, 1.0, true},
    {"TwoEpsilonsAbove", 1.0, 1.0 + 0x1p-51, 1.0, false},
    {"LargerFirst", 1.0 + 0x1p-51, 1.0, 2.0, true},
    {"FarApart", 1.0, 2.0, 1.0, false},
    {"WideFactor", 1.0, 2.0, 0x1p51, true},
    {"InfinitiesHaveNoRatio", kInfinity, kInfinity, 1.0, false},
    {"NotANumber", kNaN, 1.0, 1e9, false},
};

INSTANTIATE_TEST_SUITE_P(Rows, AlmostEqualTests, testing::ValuesIn(kAlmostEqualCases), veltrane::tests::NameOfRow());

struct ReciprocalCase {
    const char* name;
    double x, factor;
    bool odd, even;
};

class ReciprocalTests : public testing::TestWithParam<ReciprocalCase> {};

TEST_P(ReciprocalTests, Classify) {
    const ReciprocalCase& c = GetParam();
    EXPECT_EQ(MCPower::IsOneOverOddInteger(c.x, c.factor), c.odd);
    EXPECT_EQ(MCPower::IsOneOverEvenInteger(c.x, c.factor), c.even);
}

constexpr ReciprocalCase kReciprocalCases[] = {
    {"Zero", 0.0, 32.0, false, false},
    {"Third", 1.0 / 3, 32.0, true, false},
    {"MinusThird", -1.0 / 3, 32.0, true, false},
    {"One", 1.0, 32.0, true, false},
    {"Half", 0.5, 32.0, false, true},
    {"MinusHalf", -0.5, 32.0, false, true},
    {"FortyNinth", 1.0 / 49, 32.0, true, false},
    {"WithinTolerance", (1.0 / 3) * (1 + 20 * 0x1p-52), 32.0, true, false},
    {"OutsideTolerance", (1.0 / 3) * (1 + 100 * 0x1p-52), 32.0, false, false},
    {"TwoThirds", 2.0 / 3, 32.0, false, false},
    {"BeyondMaxInt", 1.0 / 4294967297.0, 32.0, false, false},
    {"NegativeHasNoBound", -1.0 / 4294967297.0, 32.0, true, false},
    {"NotANumber", kNaN, 32.0, false, false},
};

INSTANTIATE_TEST_SUITE_P(Rows, ReciprocalTests, testing::ValuesIn(kReciprocalCases), veltrane::tests::NameOfRow());

TEST(Exponent, OrdinaryIsExp) {
    double out = 0;
    EXPECT_EQ(MCPower::Exponent(1.0, out), MCPower::POWER_OK);
    EXPECT_EQ(out, std::exp(1.0));
}

TEST(Exponent, BothBoundsAreComputed) {
    double out = 0;
    EXPECT_EQ(MCPower::Exponent(709.0, out), MCPower::POWER_OK);
    EXPECT_EQ(out, std::exp(709.0));
    EXPECT_EQ(MCPower::Exponent(-708.39, out), MCPower::POWER_OK);
    EXPECT_EQ(out, std::exp(-708.39));
}

TEST(Exponent, BelowIsZero) {
    double out = 5;
    EXPECT_EQ(MCPower::Exponent(-708.4, out), MCPower::POWER_UNDERFLOW);
    EXPECT_EQ(Bits(out), Bits(0.0));
}

TEST(Exponent, AboveIsMissing) {
    double out = 5;
    EXPECT_EQ(MCPower::Exponent(709.1, out), MCPower::POWER_OVERFLOW);
    EXPECT_TRUE(MCMV::IsMissing(out));
}

TEST(Multiply, ZeroGivesZero) {
    EXPECT_EQ(Bits(MCPower::Multiply(0.0, 5.0)), Bits(0.0));
    EXPECT_EQ(Bits(MCPower::Multiply(-5.0, 0.0)), Bits(0.0));
    EXPECT_EQ(Bits(MCPower::Multiply(0.0, kInfinity)), Bits(0.0));
}

TEST(Multiply, SignsAndMagnitude) {
    EXPECT_NEAR(MCPower::Multiply(2.0, 3.0), 6.0, 1e-14);
    EXPECT_NEAR(MCPower::Multiply(-2.0, -3.0), 6.0, 1e-14);
    EXPECT_NEAR(MCPower::Multiply(-2.0, 3.0), -6.0, 1e-14);
    EXPECT_NEAR(MCPower::Multiply(2.0, -3.0), -6.0, 1e-14);
}

TEST(Multiply, OverflowIsMissing) {
    EXPECT_TRUE(MCMV::IsMissing(MCPower::Multiply(1e200, 1e200)));
}

TEST(Multiply, OverflowOfOppositeSignsIsMissingToo) {
    EXPECT_TRUE(MCMV::IsMissing(MCPower::Multiply(-1e200, 1e200)));
}

TEST(Multiply, UnderflowIsASignedZero) {
    EXPECT_EQ(Bits(MCPower::Multiply(1e-200, 1e-200)), Bits(0.0));
    EXPECT_EQ(Bits(MCPower::Multiply(-1e-200, 1e-200)), Bits(-0.0));
}

struct PowerCase {
    const char* name;
    double x, y, out;
    MCPower::PowerStatus status;
};

class PowerTests : public testing::TestWithParam<PowerCase> {};

TEST_P(PowerTests, ResultAndStatus) {
    const PowerCase& c = GetParam();
    double out = 12345;
    EXPECT_EQ(MCPower::Power(c.x, c.y, out), c.status);
    EXPECT_NEAR(out, c.out, std::fabs(c.out) * 1e-13);
    EXPECT_EQ(MCMV::IsMissing(out), MCMV::IsMissing(c.out));
}

const PowerCase kPowerCases[] = {
    {"ZeroToZero", 0, 0, 1.0, MCPower::POWER_ZERO_ZERO},
    {"ZeroToPositive", 0, 2.5, 0.0, MCPower::POWER_OK},
    {"ZeroToNegative", 0, -1, kMissing, MCPower::POWER_ZERO_BASE_NEG_EXP},
    {"ZeroToNotANumber", 0, kNaN, kMissing, MCPower::POWER_ZERO_BASE_NEG_EXP},
    {"PositiveToZero", 5, 0, 1.0, MCPower::POWER_OK},
    {"PositiveToFraction", 2, 0.5, 1.4142135623730951, MCPower::POWER_OK},
    {"PositiveToNegative", 2, -3, 0.125, MCPower::POWER_OK},
    {"PositiveOverflow", 2, 2000, kMissing, MCPower::POWER_OVERFLOW},
    {"PositiveUnderflow", 2, -2000, 0.0, MCPower::POWER_UNDERFLOW},
    {"NegativeToZero", -3, 0, 1.0, MCPower::POWER_NEG_BASE_ZERO_EXP},
    {"NegativeToEven", -3, 4, 81.0, MCPower::POWER_OK},
    {"NegativeToEvenOverflow", -3, 2000, kMissing, MCPower::POWER_OVERFLOW},
    {"NegativeToNegativeEven", -2, -2, 0.25, MCPower::POWER_OK},
    {"NegativeToOdd", -3, 3, -27.0, MCPower::POWER_OK},
    {"NegativeToNegativeOdd", -2, -1, -0.5, MCPower::POWER_OK},
    {"NegativeToOddOverflow", -3, 2001, kMissing, MCPower::POWER_NEG_BASE_OVERFLOW},
    {"NegativeToNegativeOddOverflow", -1e-300, -3, kMissing, MCPower::POWER_OVERFLOW},
    {"NegativeToNegativeOddUnderflow", -1e300, -3, 0.0, MCPower::POWER_UNDERFLOW},
    {"CubeRootOfMinusEight", -8, 1.0 / 3, -2.0, MCPower::POWER_OK},
    {"FifthRootReciprocal", -32, -1.0 / 5, -0.5, MCPower::POWER_OK},
    {"SquareRootOfNegative", -8, 0.5, kMissing, MCPower::POWER_NEG_BASE_NON_INTEGER},
    {"NegativeToTwoThirds", -8, 2.0 / 3, kMissing, MCPower::POWER_NEG_BASE_NON_INTEGER},
    {"NegativeBeyondMaxInt", -2, 4294967296.0, kMissing, MCPower::POWER_NEG_BASE_NON_INTEGER},
    {"NotANumberToZero", kNaN, 0, 1.0, MCPower::POWER_NEG_BASE_ZERO_EXP},
    {"NotANumberToFraction", kNaN, 0.5, kMissing, MCPower::POWER_NEG_BASE_NON_INTEGER},
};

INSTANTIATE_TEST_SUITE_P(Rows, PowerTests, testing::ValuesIn(kPowerCases), veltrane::tests::NameOfRow());

TEST(Power, UnderflowOfANegativeBaseToAnOddPowerIsMinusZero) {
    double out = 1;
    MCPower::Power(-1e300, -3, out);
    EXPECT_EQ(Bits(out), Bits(-0.0));
}

TEST(Power, LeavesErrnoUnread) {
    errno = EDOM;
    double out = 0;
    EXPECT_EQ(MCPower::Power(2, 3, out), MCPower::POWER_OK);
}

} // namespace
