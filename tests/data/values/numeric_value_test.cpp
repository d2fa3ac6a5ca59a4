#include "support/numbers.h"
#include "support/rows.h"

#include <MCCommon_900/MCMV.h>
#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/StringValue.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <locale>
#include <memory>
#include <sstream>

namespace {

using namespace MCVeltrane_900;
using namespace veltrane::tests;

// Built while this program loads: they read the constant at a moment when other modules may not be set up yet.
const NumericValue gCopiedAtLoad = NumericValue::SYSMIS;
const bool gMissingAtLoad = NumericValue::SYSMIS.IsSystemMissingValue();
const double gSysmisAtLoad = NumericValue::GetSysmisValue();

TEST(NumericValueConstants, HaveTheirBits) {
    EXPECT_EQ(Bits(NumericValue::GetSysmisValue()), 0xFFEFFFFFFFFFFFFFu);
    EXPECT_EQ(Bits(NumericValue::GetInfinity()), 0x7FF0000000000000u);
    EXPECT_EQ(Bits(NumericValue::SYSMIS.GetDouble()), 0xFFEFFFFFFFFFFFFFu);
}

TEST(NumericValueConstants, MissingIsTheNumberOfTheStatisticalFunctions) {
    EXPECT_EQ(Bits(NumericValue::GetSysmisValue()), Bits(MCCommon_900::MCMV::Missing()));
}

TEST(NumericValueConstants, AreReadyWhileStaticObjectsAreBuilt) {
    EXPECT_TRUE(gCopiedAtLoad.IsSystemMissingValue());
    EXPECT_TRUE(gMissingAtLoad);
    EXPECT_EQ(Bits(gSysmisAtLoad), 0xFFEFFFFFFFFFFFFFu);
}

TEST(NumericValueConstants, KindsHaveTheirNumbers) {
    EXPECT_EQ(ScoreValue::NUMERIC_VALUE, 0);
    EXPECT_EQ(ScoreValue::STRING_VALUE, 1);
    EXPECT_EQ(ScoreValue::DATETIME_VALUE, 5);
    EXPECT_EQ(NumericValue().GetType(), ScoreValue::NUMERIC_VALUE);
}

TEST(NumericValueConstruction, DefaultIsMissing) {
    EXPECT_TRUE(NumericValue().IsSystemMissingValue());
}

TEST(NumericValueConstruction, FromDoubleAndCopy) {
    const NumericValue value(2.5);
    const NumericValue copy(value);
    EXPECT_EQ(value.GetDouble(), 2.5);
    EXPECT_EQ(copy.GetDouble(), 2.5);
}

TEST(NumericValueConstruction, AssignmentCopiesAndTakesItself) {
    NumericValue value(2.5);
    NumericValue other;
    other = value;
    EXPECT_EQ(other.GetDouble(), 2.5);
    NumericValue& same = value;
    value = same;
    EXPECT_EQ(value.GetDouble(), 2.5);
    value.SetDoubleValue(-1);
    EXPECT_EQ(value.GetDouble(), -1);
    EXPECT_EQ(other.GetDouble(), 2.5);
}

TEST(NumericValueConstruction, GetValueAndCloneGiveNewObjects) {
    const NumericValue value(7.25);
    const std::unique_ptr<ScoreValue> first(value.GetValue());
    const std::unique_ptr<ScoreValue> second(value.Clone());
    EXPECT_NE(first.get(), second.get());
    for (const ScoreValue* copy : {first.get(), second.get()}) {
        EXPECT_EQ(copy->GetType(), ScoreValue::NUMERIC_VALUE);
        EXPECT_EQ(copy->GetDouble(), 7.25);
    }
}

TEST(NumericValueSetValue, TakesANumber) {
    NumericValue value(1);
    const NumericValue other(2);
    value.SetValue(&other);
    EXPECT_EQ(value.GetDouble(), 2);
    value.SetValue(&NumericValue::SYSMIS);
    EXPECT_TRUE(value.IsSystemMissingValue());
}

TEST(KeptNumericSetValue, OtherKindsLeaveTheNumber) {
    NumericValue value(1);
    const StringValue text("5");
    const DateTimeValue time(7, DateTimeValue::VAL_TIME);
    value.SetValue(&text);
    EXPECT_EQ(value.GetDouble(), 1);
    value.SetValue(&time);
    EXPECT_EQ(value.GetDouble(), 1);
}

TEST(MissingTests, VirtualTestIsExact) {
    EXPECT_TRUE(NumericValue(kMissing).IsSystemMissingValue());
    EXPECT_FALSE(NumericValue(std::nextafter(kMissing, 0)).IsSystemMissingValue());
    EXPECT_FALSE(NumericValue(-kInfinity).IsSystemMissingValue());
    EXPECT_FALSE(NumericValue(kNaN).IsSystemMissingValue());
}

TEST(MissingTests, StaticTestAcceptsOnlyTheSameBits) {
    EXPECT_TRUE(NumericValue::IsSystemMissingValue(kMissing));
    EXPECT_FALSE(NumericValue::IsSystemMissingValue(std::nextafter(kMissing, 0)));
    EXPECT_FALSE(NumericValue::IsSystemMissingValue(kNaN));
    EXPECT_FALSE(NumericValue::IsSystemMissingValue(kInfinity));
    EXPECT_FALSE(NumericValue::IsSystemMissingValue(-kInfinity));
    EXPECT_FALSE(NumericValue::IsSystemMissingValue(-kMissing));
    EXPECT_FALSE(NumericValue::IsSystemMissingValue(0.0));
}

struct EqualityCase {
    const char* name;
    double a, b;
    bool equal;
};

class NumericEquality : public testing::TestWithParam<EqualityCase> {};

TEST_P(NumericEquality, StaticAndOperatorAgreeBothWays) {
    const EqualityCase& c = GetParam();
    EXPECT_EQ(NumericValue::IsEqual(c.a, c.b), c.equal);
    EXPECT_EQ(NumericValue::IsEqual(c.b, c.a), c.equal);
    EXPECT_EQ(NumericValue(c.a) == NumericValue(c.b), c.equal);
    EXPECT_EQ(NumericValue(c.b) == NumericValue(c.a), c.equal);
}

const EqualityCase kEqualityCases[] = {
    {"Zeros", 0.0, 0.0, true},
    {"ZerosOfBothSigns", 0.0, -0.0, true},
    {"MissingAndMissing", kMissing, kMissing, true},
    {"MissingAndNumber", kMissing, 1.0, false},
    {"MissingAndZero", kMissing, 0.0, false},
    {"MissingAndItsNeighbour", kMissing, std::nextafter(kMissing, 0), false},
    {"ZeroAndTiny", 0.0, 1e-300, false},
    {"WithinTheRelativeTolerance", 1.0, 1.0 + 2.2e-14, true},
    {"OutsideTheRelativeTolerance", 1.0, 1.0 + 2.3e-14, false},
    {"TheToleranceItselfIsStrict", 1 / 2.22045e-14, 1 / 2.22045e-14 - 1, false},
    {"JustWithinTheTolerance", 1 / 2.22045e-14, 1 / 2.22045e-14 - 0.9921875, true},
    {"LargeWithinTheRelativeTolerance", 1e20, 1e20 * (1 + 2e-14), true},
    {"TinyWithinTheRelativeTolerance", 1e-300, 1e-300 * (1 + 2e-14), true},
    {"TinyOutside", 1e-300, 2e-300, false},
    {"InfinitiesHaveNoDifference", kInfinity, kInfinity, false},
    {"NotANumber", kNaN, kNaN, false},
    {"NotANumberAndNumber", kNaN, 1.0, false},
};

INSTANTIATE_TEST_SUITE_P(Rows, NumericEquality, testing::ValuesIn(kEqualityCases), veltrane::tests::NameOfRow());

TEST(NumericEqualityAcrossKinds, IsFalse) {
    const NumericValue zero(0.0);
    const StringValue text("0");
    const DateTimeValue time(0.0, DateTimeValue::VAL_TIME);
    EXPECT_FALSE(zero == text);
    EXPECT_FALSE(zero == time);
    EXPECT_FALSE(static_cast<const ScoreValue&>(zero) == time);
}

TEST(KeptNumericEqual, IsTrueWhateverItsArguments) {
    const NumericValue one(1), two(2);
    const StringValue text("x");
    EXPECT_TRUE(one.Equal(nullptr, false, false));
    EXPECT_TRUE(one.Equal(&two, true, false));
    EXPECT_TRUE(one.Equal(&text, false, true));
}

struct OrderCase {
    const char* name;
    double left, right;
    bool less, greater, lessEqual, greaterEqual;
};

class NumericOrder : public testing::TestWithParam<OrderCase> {};

TEST_P(NumericOrder, FourOperators) {
    const OrderCase& c = GetParam();
    const NumericValue left(c.left), right(c.right);
    EXPECT_EQ(left < right, c.less);
    EXPECT_EQ(left > right, c.greater);
    EXPECT_EQ(left <= right, c.lessEqual);
    EXPECT_EQ(left >= right, c.greaterEqual);
}

constexpr OrderCase kOrderCases[] = {
    {"Below", 1, 2, true, false, true, false},
    {"Above", 2, 1, false, true, false, true},
    {"Same", 1, 1, false, false, true, true},
    {"WithinTheAbsoluteTolerance", 1.0, 1.0 + 1e-15, false, false, true, true},
    {"TheToleranceItselfIsOutside", 0.0, 1e-14, true, false, true, false},
    {"TinyNumbersTouch", 1e-300, 2e-300, false, false, true, true},
    {"LargeNeighboursDiffer", 1e20, 1e20 + 16384, true, false, true, false},
    {"MissingLeft", kMissing, 1, false, false, false, false},
    {"MissingRight", 1, kMissing, false, false, false, false},
    {"MissingBoth", kMissing, kMissing, false, false, false, false},
    {"MinusInfinityBelow", -kInfinity, 1, true, false, true, false},
    {"InfinitiesHaveNoDifference", kInfinity, kInfinity, false, true, false, true},
    {"NotANumberIsNotBelow", kNaN, 1, false, true, false, true},
};

INSTANTIATE_TEST_SUITE_P(Rows, NumericOrder, testing::ValuesIn(kOrderCases), veltrane::tests::NameOfRow());

TEST(KeptNumericOrder, EqualAndLessAtOnceWhenLarge) {
    const NumericValue a(1e20), b(1e20 + 16384);
    EXPECT_TRUE(a == b);
    EXPECT_TRUE(a < b);
}

TEST(KeptNumericOrder, BothInclusiveButUnequalWhenSmall) {
    const NumericValue a(1e-300), b(2e-300);
    EXPECT_TRUE(a <= b);
    EXPECT_TRUE(a >= b);
    EXPECT_FALSE(a == b);
}

TEST(KeptNumericOrder, MissingEqualsItselfButHasNoOrder) {
    EXPECT_TRUE(NumericValue::SYSMIS == NumericValue());
    EXPECT_FALSE(NumericValue::SYSMIS <= NumericValue());
    EXPECT_FALSE(NumericValue::SYSMIS >= NumericValue());
}

TEST(NumericOrderAcrossKinds, ReadsTheDoubleOfAnyKind) {
    EXPECT_TRUE(NumericValue(1) < StringValue("2.5"));
    EXPECT_TRUE(NumericValue(1) > StringValue("text"));
    EXPECT_TRUE(NumericValue(2) >= DateTimeValue(86400, DateTimeValue::VAL_DATE));
    EXPECT_FALSE(NumericValue(1) < DateTimeValue());
}

struct IntegerCase {
    const char* name;
    double value;
    int integer;
};

class NumericGetInt : public testing::TestWithParam<IntegerCase> {};

TEST_P(NumericGetInt, Truncates) {
    EXPECT_EQ(NumericValue(GetParam().value).GetInt(), GetParam().integer);
}

constexpr int kIndefinite = std::numeric_limits<int>::min();

constexpr IntegerCase kIntegerCases[] = {
    {"Positive", 2.9, 2},
    {"NegativeTowardZero", -2.9, -2},
    {"NegativeFraction", -0.5, 0},
    {"Largest", 2147483647.0, 2147483647},
    {"LargestWithFraction", 2147483647.9, 2147483647},
    {"AboveTheRange", 2147483648.0, kIndefinite},
    {"Smallest", -2147483648.0, kIndefinite},
    {"SmallestWithFraction", -2147483648.9, kIndefinite},
    {"BelowTheRange", -2147483649.0, kIndefinite},
    {"Missing", kMissing, kIndefinite},
    {"Infinity", kInfinity, kIndefinite},
    {"MinusInfinity", -kInfinity, kIndefinite},
    {"NotANumber", kNaN, kIndefinite},
};

INSTANTIATE_TEST_SUITE_P(Rows, NumericGetInt, testing::ValuesIn(kIntegerCases), veltrane::tests::NameOfRow());

struct TextCase {
    const char* name;
    double value;
    const char* text;
};

class NumericGetString : public testing::TestWithParam<TextCase> {};

TEST_P(NumericGetString, IsThatOfAStream) {
    EXPECT_EQ(NumericValue(GetParam().value).GetString(), GetParam().text);
}

constexpr TextCase kTextCases[] = {
    {"Missing", kMissing, "Undefined"},
    {"MinusInfinity", -kInfinity, "Undefined"},
    {"Infinity", kInfinity, "inf"},
    {"NotANumber", kNaN, "nan"},
    {"AboveMissing", -1.797693134862315e308, "-1.79769e+308"},
    {"Integer", 5.0, "5"},
    {"SixDigits", 1234567.0, "1.23457e+06"},
    {"Rounded", 3.14159265, "3.14159"},
    {"Small", 0.0001, "0.0001"},
    {"Smaller", 0.00001, "1e-05"},
    {"MinusZero", -0.0, "-0"},
};

INSTANTIATE_TEST_SUITE_P(Rows, NumericGetString, testing::ValuesIn(kTextCases), veltrane::tests::NameOfRow());

TEST(NumericGetStringOverTheRange, EqualsADefaultStream) {
    for (double value = 1e-320; value < 1e308; value *= 1.37) {
        for (const double signedValue : {value, -value, std::round(value)}) {
            std::ostringstream out;
            out << signedValue;
            EXPECT_EQ(NumericValue(signedValue).GetString(), out.str());
        }
    }
}

struct CommaPoint : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
};

TEST(NumericGetStringLocale, FollowsTheGlobalLocale) {
    const std::locale before = std::locale::global(std::locale(std::locale::classic(), new CommaPoint));
    const std::string text = NumericValue(1.5).GetString();
    std::locale::global(before);
    EXPECT_EQ(text, "1,5");
}

} // namespace
