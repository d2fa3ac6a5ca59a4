#include "support/function_numbers.h"
#include "transform/function_table.h"

#include <MCVeltrane_900/TransformationDictionary.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

using TD = MCVeltrane_900::TransformationDictionary;

namespace {

std::vector<std::string> Words(std::initializer_list<const char*> words) {
    return {words.begin(), words.end()};
}
template <typename... Word>
std::vector<std::string> List(Word... words) {
    return Words({words...});
}

struct Line {
    std::string enumerator;
    int number;
    std::vector<std::string> literals;
};

const std::vector<Line>& Table() {
    static const std::vector<Line> table{
#define VELTRANE_TRANSFORM_FUNCTION(enumerator, number, names, ...) {#enumerator, TD::enumerator, List names},
#include <MCVeltrane_900/TransformFunctions.def>
    };
    return table;
}

/// Documents and plug-ins know these functions by their numbers. What is added has a number from 1,000 on.
constexpr std::size_t kPinned = 79;
constexpr int kFirstOwn = 1000;

/// The names of the pinned ones, written out a second time: a number that moves breaks documents and plug-ins.
const std::map<std::string, int> kNumbers{
    {"+", 0},
    {"-", 1},
    {"*", 2},
    {"/", 3},
    {"pow", 4},
    {"abs", 5},
    {"exp", 6},
    {"log10", 7},
    {"lg10", 7},
    {"ln", 8},
    {"mod", 9},
    {"round", 10},
    {"sqrt", 11},
    {"trunc", 12},
    {"floor", 13},
    {"ceil", 14},
    {"product", 15},
    {"min", 16},
    {"max", 17},
    {"mean", 18},
    {"avg", 19},
    {"median", 20},
    {"sum", 21},
    {"sd", 22},
    {"variance", 23},
    {"cdf.normal", 24},
    {"cdfnorm", 25},
    {"idf.normal", 26},
    {"pdf.normal", 27},
    {"date_years_difference", 28},
    {"date_months_difference", 29},
    {"date_days_difference", 30},
    {"year-from-date", 31},
    {"month-from-date", 32},
    {"day-from-date", 33},
    {"time_hours_difference", 34},
    {"time_minutes_difference", 35},
    {"time_seconds_difference", 36},
    {"hour-from-time", 37},
    {"minute-from-time", 38},
    {"second-from-time", 39},
    {"isMissing", 40},
    {"isNotMissing", 41},
    {"equal", 42},
    {"notEqual", 43},
    {"lessThan", 44},
    {"lessOrEqual", 45},
    {"greaterThan", 46},
    {"greaterOrEqual", 47},
    {"isIn", 48},
    {"isNotIn", 49},
    {"and", 50},
    {"or", 51},
    {"not", 52},
    {"matches", 53},
    {"lowercase", 54},
    {"uppercase", 55},
    {"lower", 56},
    {"concat", 57},
    {"replace", 58},
    {"ltrim", 59},
    {"rtrim", 60},
    {"trimend", 60},
    {"substr", 61},
    {"substring", 62},
    {"length", 63},
    {"if", 64},
    {"value", 65},
    {"threshold", 66},
    {"sysmis", 67},
    {"recast_to_ordinal", 68},
    {"recast_to_scale", 69},
    {"outlierHandle", 70},
    {"imputeCatFieldMissingAgainstConTarget", 71},
    {"normalCDF", 72},
    {"normalPDF", 73},
    {"stdNormalCDF", 74},
    {"stdNormalPDF", 75},
    {"erf", 76},
    {"normalIDF", 77},
    {"stdNormalIDF", 78},
};

} // namespace

TEST(FunctionTable, StartsWithThePinnedNumbers) {
    ASSERT_GE(Table().size(), kPinned);
    for (std::size_t i = 0; i < kPinned; ++i) {
        EXPECT_EQ(Table()[i].number, static_cast<int>(i)) << Table()[i].enumerator;
    }
    EXPECT_EQ(TD::TF_NONE, 79);
}

TEST(FunctionTable, GoesOnWithAscendingNumbersFromOneThousandOn) {
    int last = kFirstOwn - 1;
    for (std::size_t i = kPinned; i < Table().size(); ++i) {
        EXPECT_GT(Table()[i].number, last) << Table()[i].enumerator;
        last = Table()[i].number;
    }
}

TEST(FunctionTable, EveryNumberHasItsRowOrNone) {
    const std::vector<int> numbers = veltrane::tests::FunctionNumbers();
    for (int number = -3; number <= numbers.back() + 2000; ++number) {
        const auto row = std::find(numbers.begin(), numbers.end(), number) - numbers.begin();
        EXPECT_EQ(veltrane::transform::RowOf(number), static_cast<std::size_t>(row)) << number;
    }
}

TEST(FunctionTable, NoNameStandsForTwoFunctions) {
    std::set<std::string> names;
    for (const Line& line : Table()) {
        EXPECT_FALSE(line.literals.empty()) << line.enumerator;
        for (const std::string& literal : line.literals) {
            EXPECT_TRUE(names.insert(literal).second) << literal;
        }
    }
}

TEST(FunctionTable, PinnedNamesHaveTheirNumbers) {
    std::map<std::string, int> numbers;
    for (const Line& line : Table()) {
        for (const std::string& literal : line.literals) {
            if (line.number < kFirstOwn) {
                numbers.emplace(literal, line.number);
            }
        }
    }
    EXPECT_EQ(numbers, kNumbers);
}

TEST(FunctionTable, TheUsualLiteralStandsFirst) {
    EXPECT_EQ(Table()[7].literals, (std::vector<std::string>{"log10", "lg10"}));
    EXPECT_EQ(Table()[60].literals, (std::vector<std::string>{"rtrim", "trimend"}));
}

TEST(ExpressionKinds, HaveTheirNumbers) {
    EXPECT_EQ(TD::TE_CONSTANT, 0);
    EXPECT_EQ(TD::TE_FIELD_REF, 1);
    EXPECT_EQ(TD::TE_NORM_CONTINUOUS, 2);
    EXPECT_EQ(TD::TE_NORM_DISCRETE, 3);
    EXPECT_EQ(TD::TE_DISCRETIZE, 4);
    EXPECT_EQ(TD::TE_MAP_VALUES, 5);
    EXPECT_EQ(TD::TE_APPLY, 6);
    EXPECT_EQ(TD::TE_LAG, 7);
    EXPECT_EQ(TD::TE_NONE, 8);
}
