// Sets of categories in each of their forms hold what they were made of and nothing else.
#include "kit/conditions/decide.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <vector>

namespace {

using namespace veltrane_kit;

/// A case with one category.
struct OneCategory {
    int category;

    static bool IsMissing(int /*slot*/) { return false; }
    static double Number(int /*slot*/) { return 0.0; }
    int Category(int /*slot*/) const { return category; }
};

veltrane_kit::Test ExpectSet(const std::vector<int>& codes) {
    Conditions conditions;
    Condition others; // so that the pools aren't empty
    conditions.SetCategories(others, {1, 70}, true);
    conditions.SetCategories(others, {9000}, true);
    Condition in;
    Condition notIn;
    conditions.SetCategories(in, codes, true);
    conditions.SetCategories(notIn, codes, false);
    conditions.Settle();
    for (int category = -2; category < 400; ++category) {
        const bool isThere = std::count(codes.begin(), codes.end(), category) > 0;
        bool usedSurrogate = false;
        EXPECT_EQ(conditions.Decide(in, OneCategory{category}, usedSurrogate), TruthOf(isThere)) << category;
        EXPECT_EQ(conditions.Decide(notIn, OneCategory{category}, usedSurrogate), TruthOf(!isThere)) << category;
    }
    const auto once = [](std::vector<int> some) {
        std::sort(some.begin(), some.end());
        some.erase(std::unique(some.begin(), some.end()), some.end());
        return some;
    };
    EXPECT_EQ(once(conditions.CategoriesOf(in)), once(codes));
    EXPECT_EQ(once(conditions.CategoriesOf(notIn)), once(codes));
    return in.test;
}

std::vector<int> From(int first, int count) {
    std::vector<int> codes(static_cast<std::size_t>(count));
    std::iota(codes.begin(), codes.end(), first);
    return codes;
}

TEST(CategorySets, OfTheFirstCategoriesStandInTheCondition) {
    for (const std::vector<int>& codes : {From(0, 0), From(0, 1), From(63, 1), From(0, 64), {5, 5, 0}}) {
        EXPECT_EQ(ExpectSet(codes), veltrane_kit::Test::IN_FIRST_CATEGORIES);
    }
}

TEST(CategorySets, OfMoreCategoriesAreBitsOfAPool) {
    for (const std::vector<int>& codes : {From(63, 2), From(0, 65), From(64, 2), From(100, 200)}) {
        EXPECT_EQ(ExpectSet(codes), veltrane_kit::Test::IN_CATEGORIES);
    }
}

TEST(CategorySets, OfFewAmongManyAreTheirCodes) {
    for (const std::vector<int>& codes : {From(64, 1), {3, 399}, From(127, 1)}) {
        EXPECT_EQ(ExpectSet(codes), veltrane_kit::Test::IN_FEW_CATEGORIES);
    }
}

TEST(CategorySets, OfAnyCodesHoldThem) {
    std::mt19937 random(3);
    for (int round = 0; round < 200; ++round) {
        std::vector<int> codes;
        const std::size_t count = random() % 20;
        const unsigned most = round % 3 == 0 ? 64 : round % 3 == 1 ? 130 : 400;
        for (std::size_t i = 0; i < count; ++i) {
            codes.push_back(static_cast<int>(random() % most));
        }
        ExpectSet(codes);
    }
}

} // namespace
