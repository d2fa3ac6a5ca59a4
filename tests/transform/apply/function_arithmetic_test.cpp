#include "support/numbers.h"
#include "support/rows.h"

#include <MCVeltrane_900/TransformationDictionary.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace veltrane::tests;
using Functions = MCVeltrane_900::TransformationDictionary;

namespace {

struct UnaryRow {
    const char* name;
    double (*function)(double);
    double argument;
    double expected;
};

class UnaryFunction : public testing::TestWithParam<UnaryRow> {};

TEST_P(UnaryFunction, GivesTheStatedNumber) {
    const UnaryRow& row = GetParam();
    EXPECT_EQ(row.function(row.argument), row.expected);
}

const UnaryRow kUnaryRows[] = {
    {"AbsOfNegative", Functions::Abs, -2.5, 2.5},
    {"AbsOfMissing", Functions::Abs, kMissing, kMissing},
    {"ExpOfZero", Functions::Exp, 0.0, 1.0},
    {"ExpAtUpperBound", Functions::Exp, 709.0, std::exp(709.0)},
    {"ExpAboveUpperBound", Functions::Exp, 709.0000001, kMissing},
    {"ExpAboveLowerBound", Functions::Exp, -707.9999, std::exp(-707.9999)},
    {"ExpAtLowerBound", Functions::Exp, -708.0, 0.0},
    {"ExpOfMissing", Functions::Exp, kMissing, kMissing},
    {"ExpOfNaN", Functions::Exp, kNaN, 0.0},
    {"Log10OfThousand", Functions::Log10, 1000.0, 3.0},
    {"Log10OfZero", Functions::Log10, 0.0, kMissing},
    {"Log10OfNegative", Functions::Log10, -1.0, kMissing},
    {"Log10OfMissing", Functions::Log10, kMissing, kMissing},
    {"LnOfOne", Functions::Ln, 1.0, 0.0},
    {"LnOfZero", Functions::Ln, 0.0, kMissing},
    {"LnOfMissing", Functions::Ln, kMissing, kMissing},
    {"SqrtOfNine", Functions::Sqrt, 9.0, 3.0},
    {"SqrtOfZero", Functions::Sqrt, 0.0, 0.0},
    {"SqrtOfNegative", Functions::Sqrt, -1e-300, kMissing},
    {"SqrtOfMissing", Functions::Sqrt, kMissing, kMissing},
    {"TruncTowardZero", Functions::Trunc, -2.9, -2.0},
    {"TruncBelowUpperEnd", Functions::Trunc, 2147483646.9, 2147483646.0},
    {"TruncAtUpperEnd", Functions::Trunc, 2147483647.0, kMissing},
    {"TruncAtLowerEnd", Functions::Trunc, -2147483648.0, kMissing},
    {"TruncAboveLowerEnd", Functions::Trunc, -2147483647.5, -2147483647.0},
    {"TruncOfMissing", Functions::Trunc, kMissing, kMissing},
    {"TruncOfNaN", Functions::Trunc, kNaN, kMissing},
    {"RoundHalfAway", Functions::Rnd, 2.5, 3.0},
    {"RoundHalfAwayBelowZero", Functions::Rnd, -2.5, -3.0},
    {"RoundBelowHalf", Functions::Rnd, 2.4999999, 2.0},
    {"RoundBelowHalfBelowZero", Functions::Rnd, -2.4999999, -2.0},
    {"RoundZero", Functions::Rnd, 0.0, 0.0},
    {"RoundOutOfRange", Functions::Rnd, 2147483647.0, kMissing},
    {"RoundOfMissing", Functions::Rnd, kMissing, kMissing},
    {"FloorOfNegative", Functions::Floor, -0.5, -1.0},
    {"FloorHasNoMissingTest", Functions::Floor, kMissing, kMissing},
    {"FloorOfInfinity", Functions::Floor, kInfinity, kInfinity},
    {"CeilOfPositive", Functions::Ceil, 0.5, 1.0},
    {"CeilHasNoMissingTest", Functions::Ceil, kMissing, kMissing},
    {"CdfNormOfMissing", Functions::CdfNorm, kMissing, kMissing},
    {"CdfNormOfZero", Functions::CdfNorm, 0.0, 0.5},
};

INSTANTIATE_TEST_SUITE_P(Rows, UnaryFunction, testing::ValuesIn(kUnaryRows), veltrane::tests::NameOfRow());

struct BinaryRow {
    const char* name;
    double (*function)(double, double);
    double left;
    double right;
    double expected;
};

class BinaryFunction : public testing::TestWithParam<BinaryRow> {};

TEST_P(BinaryFunction, GivesTheStatedNumber) {
    const BinaryRow& row = GetParam();
    EXPECT_EQ(row.function(row.left, row.right), row.expected);
}

const BinaryRow kBinaryRows[] = {
    {"PlusOfTwo", Functions::Plus, 1.5, 2.0, 3.5},
    {"PlusLeftMissing", Functions::Plus, kMissing, 2.0, kMissing},
    {"PlusRightMissing", Functions::Plus, 2.0, kMissing, kMissing},
    {"ModOfPositive", Functions::Mod, 7.5, 2.0, 1.5},
    {"ModKeepsSignOfDividend", Functions::Mod, -7.5, 2.0, -1.5},
    {"ModByZero", Functions::Mod, 7.0, 0.0, kMissing},
    {"ModOfMissing", Functions::Mod, kMissing, 2.0, kMissing},
    {"ModByMissing", Functions::Mod, 2.0, kMissing, kMissing},
    {"ModQuotientOutOfRange", Functions::Mod, 2147483647.0, 1.0, kMissing},
    {"ModQuotientInRange", Functions::Mod, 2147483646.0, 1.0, 0.0},
    {"ThresholdAbove", Functions::Threshold, 2.0, 1.0, 1.0},
    {"ThresholdEqual", Functions::Threshold, 1.0, 1.0, 0.0},
    {"ThresholdHasNoMissingTest", Functions::Threshold, 0.0, kMissing, 1.0},
};

INSTANTIATE_TEST_SUITE_P(Rows, BinaryFunction, testing::ValuesIn(kBinaryRows), veltrane::tests::NameOfRow());

struct PowRow {
    const char* name;
    double base;
    int exponent;
    double expected;
};

class IntegerPower : public testing::TestWithParam<PowRow> {};

TEST_P(IntegerPower, GivesTheStatedNumber) {
    const PowRow& row = GetParam();
    EXPECT_EQ(Functions::Pow(row.base, row.exponent), row.expected);
}

const PowRow kPowRows[] = {
    {"Square", 3.0, 2, 9.0},
    {"NegativeExponent", 2.0, -3, 0.125},
    {"ZeroToZero", 0.0, 0, 1.0},
    {"NegativeToZero", -5.0, 0, 1.0},
    {"MissingToZeroIsTestedBeforeMissing", kMissing, 0, 1.0},
    {"MissingToOne", kMissing, 1, kMissing},
    {"LargeToZero", 7.0, 0, 1.0},
    {"LeastExponent", 1.0, std::numeric_limits<int>::min(), 1.0},
    {"OddPowerOfNegative", -2.0, 3, -8.0},
};

INSTANTIATE_TEST_SUITE_P(Rows, IntegerPower, testing::ValuesIn(kPowRows), veltrane::tests::NameOfRow());

struct OutlierRow {
    const char* name;
    double x;
    int method;
    double expected;
};

class OutlierHandling : public testing::TestWithParam<OutlierRow> {};

// Centre 10, reach 2 * 3 / sqrt(4) = 3: the bounds are 7 and 13.
TEST_P(OutlierHandling, KeepsCutsOrDrops) {
    const OutlierRow& row = GetParam();
    EXPECT_EQ(Functions::OutlierHandle(row.x, row.method, 10.0, 2.0, 3.0, 4.0), row.expected);
}

const OutlierRow kOutlierRows[] = {
    {"InsideStays", 11.0, 2, 11.0},
    {"LowerBoundStays", 7.0, 1, 7.0},
    {"UpperBoundStays", 13.0, 1, 13.0},
    {"BelowAsExtreme", 6.0, 2, 7.0},
    {"AboveAsExtreme", 14.0, 2, 13.0},
    {"BelowAsMissing", 6.0, 1, kMissing},
    {"AboveAsIsIsMissingToo", 14.0, 0, kMissing},
    {"MissingStaysMissing", kMissing, 2, kMissing},
};

INSTANTIATE_TEST_SUITE_P(Rows, OutlierHandling, testing::ValuesIn(kOutlierRows), veltrane::tests::NameOfRow());

} // namespace
