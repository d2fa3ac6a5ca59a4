#include "support/function_numbers.h"
#include "transform/function_table.h"

#include <MCVeltrane_900/TransformationDictionary.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

using namespace veltrane::tests;
using TD = MCVeltrane_900::TransformationDictionary;

namespace {

template <typename... Word>
std::vector<std::string> List(Word... words) {
    return {words...};
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

} // namespace

TEST(FunctionTable, StartsWithThePinnedNumbers) {
    ASSERT_GE(Table().size(), kPinnedCount);
    for (std::size_t i = 0; i < kPinnedCount; ++i) {
        EXPECT_EQ(Table()[i].number, static_cast<int>(i)) << Table()[i].enumerator;
    }
    EXPECT_EQ(TD::TF_NONE, 79);
}

TEST(FunctionTable, GoesOnWithAscendingNumbersFromOneThousandOn) {
    int last = kFirstOwnNumber - 1;
    for (std::size_t i = kPinnedCount; i < Table().size(); ++i) {
        EXPECT_GT(Table()[i].number, last) << Table()[i].enumerator;
        last = Table()[i].number;
    }
}

TEST(FunctionTable, EveryNumberHasItsRowOrNone) {
    const std::vector<int> numbers = FunctionNumbers();
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
