// Random models of models: the same answers case by case and in columns, and whatever the length of the blocks.
#include "models/columns/model_rows.h"
#include "models/mining/random_segments.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

using namespace veltrane::tests;

namespace {

/// The first row that differs, with both answers; empty where none does.
std::string DifferenceOf(const ModelAnswers& actual, const ModelAnswers& expected) {
    const auto [one, other] = std::mismatch(actual.begin(), actual.end(), expected.begin(), expected.end());
    if (one == actual.end() && other == expected.end()) {
        return "";
    }
    return "row " + std::to_string(one - actual.begin()) + ": " + *one + "\n case by case: " + *other;
}

TEST(RandomSegments, AreTheSameInColumns) {
    constexpr unsigned kDocuments = 400;
    std::size_t scored = 0;
    for (unsigned seed = 0; seed < kDocuments; ++seed) {
        const std::string document = RandomSegments(seed).Document();
        SCOPED_TRACE(document);
        ModelRows rows(document);
        std::mt19937_64 random(seed);
        rows.Fill(random, 120);
        const ModelAnswers expected = rows.CaseByCase();
        scored += static_cast<std::size_t>(std::count_if(
            expected.begin(), expected.end(), [](const std::string& answer) { return answer != "unscored"; }));
        const auto state = rows.Scorer().NewState();
        EXPECT_EQ(DifferenceOf(rows.InBlocks(*state, 1024, 0, false), expected), "") << seed;
        EXPECT_EQ(DifferenceOf(rows.InBlocks(*state, 37, 5, true), expected), "") << seed;
    }
    EXPECT_GT(scored, kDocuments * 20U);
}

} // namespace
