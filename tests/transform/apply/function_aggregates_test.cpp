#include "support/numbers.h"
#include "support/rows.h"

#include <MCVeltrane_900/TransformationDictionary.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

using namespace veltrane::tests;
using Functions = MCVeltrane_900::TransformationDictionary;

namespace {

const double kLargest = std::numeric_limits<double>::max();

struct Row {
    const char* name;
    double (*function)(const std::vector<double>&);
    std::vector<double> arguments;
    double expected;
};

class VectorFunction : public testing::TestWithParam<Row> {};

TEST_P(VectorFunction, GivesTheStatedNumber) {
    const Row& row = GetParam();
    EXPECT_EQ(row.function(row.arguments), row.expected);
}

const Row kArithmeticRows[] = {
    {"MinusOfTwo", Functions::Minus, {5.0, 3.0}, 2.0},
    {"MinusOfThree", Functions::Minus, {5.0, 3.0, 1.0}, kMissing},
    {"MinusOfOne", Functions::Minus, {5.0}, kMissing},
    {"MinusLeftMissing", Functions::Minus, {kMissing, 3.0}, kMissing},
    {"MinusRightMissing", Functions::Minus, {5.0, kMissing}, kMissing},
    {"MultiplyOfTwo", Functions::Multiply, {5.0, 3.0}, 15.0},
    {"MultiplyOfNone", Functions::Multiply, {}, kMissing},
    {"MultiplyMissing", Functions::Multiply, {0.0, kMissing}, kMissing},
    {"DividedOfTwo", Functions::Divided, {6.0, 3.0}, 2.0},
    {"DividedByZero", Functions::Divided, {6.0, 0.0}, kMissing},
    {"DividedByNegativeZero", Functions::Divided, {6.0, -0.0}, kMissing},
    {"DividedMissing", Functions::Divided, {6.0, kMissing}, kMissing},
};
INSTANTIATE_TEST_SUITE_P(Arithmetic, VectorFunction, testing::ValuesIn(kArithmeticRows), veltrane::tests::NameOfRow());

const Row kAggregateRows[] = {
    {"SumSkipsMissing", Functions::Sum, {1.0, kMissing, 2.0}, 3.0},
    {"SumOfMissing", Functions::Sum, {kMissing, kMissing}, kMissing},
    {"SumOfNone", Functions::Sum, {}, kMissing},
    {"MeanSkipsMissing", Functions::Mean, {1.0, kMissing, 2.0}, 1.5},
    {"MeanOfMissing", Functions::Mean, {kMissing}, kMissing},
    {"MeanOfNone", Functions::Mean, {}, kMissing},
    {"MinSkipsMissing", Functions::Min, {3.0, kMissing, 2.0}, 2.0},
    {"MinOfNone", Functions::Min, {}, kMissing},
    {"MinOfMissing", Functions::Min, {kMissing, kMissing}, kMissing},
    {"MinDoesNotCountTheLargestDouble", Functions::Min, {kLargest}, kMissing},
    {"MinSkipsNaN", Functions::Min, {kNaN, 4.0}, 4.0},
    {"MaxSkipsMissing", Functions::Max, {3.0, kMissing, 2.0}, 3.0},
    {"MaxOfNone", Functions::Max, {}, kMissing},
    {"MaxOfMissing", Functions::Max, {kMissing}, kMissing},
    {"MaxOfLargest", Functions::Max, {kLargest, 1.0}, kLargest},
    {"ProductSkipsMissing", Functions::ProductOperator, {2.0, kMissing, 4.0}, 8.0},
    {"ProductOfNone", Functions::ProductOperator, {}, kMissing},
    {"ProductOfMissing", Functions::ProductOperator, {kMissing}, kMissing},
    {"MedianSkipsMissing", Functions::MedianOperator, {1.0, kMissing, 3.0}, 2.0},
    {"MedianOfOdd", Functions::MedianOperator, {9.0, 1.0, 5.0}, 5.0},
    {"MedianOfEven", Functions::MedianOperator, {9.0, 1.0, 5.0, 7.0}, 6.0},
    {"MedianOfNone", Functions::MedianOperator, {}, kMissing},
    {"MedianOfMissing", Functions::MedianOperator, {kMissing}, kMissing},
    {"MedianKeepsNaN", Functions::MedianOperator, {kNaN, 1.0, 2.0}, 2.0},
    {"SdOfOne", Functions::Sd, {4.0}, kMissing},
    {"SdOfTwoEqual", Functions::Sd, {4.0, 4.0}, 0.0},
    {"SdOfTwo", Functions::Sd, {1.0, 3.0}, std::sqrt(2.0)},
    {"SdSkipsMissing", Functions::Sd, {1.0, kMissing, 3.0}, std::sqrt(2.0)},
    {"SdOfNone", Functions::Sd, {}, kMissing},
    {"SdDoesNotOverflow", Functions::Sd, {-1e300, 1e300}, std::sqrt(2.0) * 1e300},
    {"VarianceOfOne", Functions::Variance, {4.0}, kMissing},
    {"VarianceOfTwo", Functions::Variance, {1.0, 3.0}, std::pow(std::sqrt(2.0), 2.0)},
    {"VarianceOfNone", Functions::Variance, {}, kMissing},
};
INSTANTIATE_TEST_SUITE_P(Aggregates, VectorFunction, testing::ValuesIn(kAggregateRows), veltrane::tests::NameOfRow());

const Row kComparisonRows[] = {
    {"LessThan", Functions::lessThan, {1.0, 2.0}, 1.0},
    {"LessThanOfEqual", Functions::lessThan, {2.0, 2.0}, 0.0},
    {"LessThanOfThree", Functions::lessThan, {1.0, 2.0, 3.0}, 0.0},
    {"MissingIsTheLeast", Functions::lessThan, {kMissing, -1e308}, 1.0},
    {"LessOrEqualOfEqual", Functions::lessOrEqual, {2.0, 2.0}, 1.0},
    {"LessOrEqualIsExact", Functions::lessOrEqual, {1.0 + 4e-16, 1.0}, 0.0},
    {"LessOrEqualOfOne", Functions::lessOrEqual, {2.0}, 0.0},
    {"GreaterThan", Functions::greaterThan, {2.0, 1.0}, 1.0},
    {"GreaterThanNaN", Functions::greaterThan, {kNaN, 1.0}, 0.0},
    {"GreaterOrEqualOfEqual", Functions::greaterOrEqual, {2.0, 2.0}, 1.0},
    {"GreaterOrEqualOfNone", Functions::greaterOrEqual, {}, 0.0},
};
INSTANTIATE_TEST_SUITE_P(Comparisons, VectorFunction, testing::ValuesIn(kComparisonRows), veltrane::tests::NameOfRow());

// There is no three-valued logic: the missing number is a number that is not 0.
const Row kLogicRows[] = {
    {"AndOfTrue", Functions::AndOperator, {1.0, 2.0, -3.0}, 1.0},
    {"AndWithZero", Functions::AndOperator, {1.0, 0.0}, 0.0},
    {"AndOfNone", Functions::AndOperator, {}, 0.0},
    {"AndTakesMissingForTrue", Functions::AndOperator, {kMissing, 1.0}, 1.0},
    {"AndTakesNaNForTrue", Functions::AndOperator, {kNaN}, 1.0},
    {"OrOfZeros", Functions::OrOperator, {0.0, 0.0}, 0.0},
    {"OrWithOne", Functions::OrOperator, {0.0, 1.0}, 1.0},
    {"OrOfNone", Functions::OrOperator, {}, 0.0},
    {"OrTakesMissingForTrue", Functions::OrOperator, {kMissing, 0.0}, 1.0},
    {"NotOfZero", Functions::NotOperator, {0.0}, 1.0},
    {"NotOfOne", Functions::NotOperator, {1.0}, 0.0},
    {"NotOfMissing", Functions::NotOperator, {kMissing}, 0.0},
    {"NotOfNaN", Functions::NotOperator, {kNaN}, 0.0},
    {"NotOfTwo", Functions::NotOperator, {0.0, 0.0}, 0.0},
};
INSTANTIATE_TEST_SUITE_P(Logic, VectorFunction, testing::ValuesIn(kLogicRows), veltrane::tests::NameOfRow());

const double kTwoPi = 6.283185307179586;

const Row kNormalRows[] = {
    {"CdfNormalAtMean", Functions::CdfNormal, {3.0, 3.0, 2.0}, 0.5},
    {"CdfNormalOfZeroSd", Functions::CdfNormal, {3.0, 3.0, 0.0}, kMissing},
    {"CdfNormalOfNaNSd", Functions::CdfNormal, {3.0, 3.0, kNaN}, kMissing},
    {"CdfNormalOfTwo", Functions::CdfNormal, {3.0, 3.0}, kMissing},
    {"CdfNormalMissing", Functions::CdfNormal, {3.0, kMissing, 1.0}, kMissing},
    {"PdfNormalAtMean", Functions::PdfNormal, {3.0, 3.0, 2.0}, (1.0 / std::sqrt(kTwoPi)) / 2.0},
    {"PdfNormalBeyondReach", Functions::PdfNormal, {37.62, 0.0, 1.0}, 0.0},
    {"PdfNormalOfNegativeSd", Functions::PdfNormal, {1.0, 0.0, -1.0}, kMissing},
    {"PdfNormalMissing", Functions::PdfNormal, {kMissing, 0.0, 1.0}, kMissing},
    {"IdfNormalOfHalf", Functions::IdfNormal, {0.5, 3.0, 2.0}, 3.0},
    {"IdfNormalMissing", Functions::IdfNormal, {0.5, kMissing, 2.0}, kMissing},
    {"IdfNormalOfOne", Functions::IdfNormal, {0.5}, kMissing},
    {"StdCdfAtZero", Functions::stdNormalCDF, {0.0}, 0.5},
    {"StdCdfMissing", Functions::stdNormalCDF, {kMissing}, kMissing},
    {"StdPdfHasTheShorterConstant", Functions::stdNormalPDF, {0.0}, 1.0 / std::sqrt(6.2831853)},
    {"StdPdfOfTwo", Functions::stdNormalPDF, {0.0, 0.0}, kMissing},
    {"StdIdfOfZero", Functions::stdNormalIDF, {0.0}, kMissing},
    {"StdIdfOfOne", Functions::stdNormalIDF, {1.0}, kMissing},
    {"StdIdfOfHalf", Functions::stdNormalIDF, {0.5}, 0.0},
    {"StdIdfMissing", Functions::stdNormalIDF, {kMissing}, kMissing},
    {"ErfOfZero", Functions::Erf, {0.0}, 0.0},
    {"ErfMissing", Functions::Erf, {kMissing}, kMissing},
    {"ErfOfNone", Functions::Erf, {}, kMissing},
};
INSTANTIATE_TEST_SUITE_P(Normal, VectorFunction, testing::ValuesIn(kNormalRows), veltrane::tests::NameOfRow());

TEST(PdfNormal, ReachesAsFarAsItsBound) {
    EXPECT_NEAR(Functions::PdfNormal({37.61, 0.0, 1.0}) / 2.7765804287675450e-308, 1.0, 1e-15);
}

} // namespace
