#include "run/nearest_name.h"

#include <gtest/gtest.h>

namespace veltrane::host {
namespace {

const std::vector<std::string> kCommands = {"transform", "score", "verify", "inspect", "functions"};

TEST(NearestNameTest, MindsOneSlipInAShortWordAndMoreInALongOne) {
    EXPECT_EQ(NearestName("scor", kCommands), "score");
    EXPECT_EQ(NearestName("csore", kCommands), "score");
    EXPECT_EQ(NearestName("scroe", kCommands), "score");
    EXPECT_EQ(NearestName("scoring", kCommands), "");
    EXPECT_EQ(NearestName("trasnfrom", kCommands), "transform");
    EXPECT_EQ(NearestName("inspector", kCommands), "inspect");
}

TEST(NearestNameTest, DoesNotMindCaseAndBlanksAround) {
    EXPECT_EQ(NearestName("SCORE", kCommands), "score");
    EXPECT_EQ(NearestName(" \tage ", {"Income", "Age"}), "Age");
    EXPECT_EQ(NearestName("age", {" Age "}), " Age ");
}

TEST(NearestNameTest, TakesABeginning) {
    EXPECT_EQ(NearestName("trans", kCommands), "transform");
    EXPECT_EQ(NearestName("fun", kCommands), "functions");
    EXPECT_EQ(NearestName("fu", kCommands), "");
}

TEST(NearestNameTest, PrefersTheNearerAndThenTheFirst) {
    EXPECT_EQ(NearestName("income", {"incomes", "Income"}), "Income");
    EXPECT_EQ(NearestName("x2y", {"x1y", "x3y"}), "x1y");
}

TEST(NearestNameTest, FindsNothingWhereNothingIsNear) {
    EXPECT_EQ(NearestName("", kCommands), "");
    EXPECT_EQ(NearestName("x", {"a", "b"}), "");
    EXPECT_EQ(NearestName("score", {}), "");
    EXPECT_EQ(NearestName("train", kCommands), "");
}

TEST(NearestNameTest, ComparesLongNamesForEqualityOnly) {
    const std::string name(1'000'000, 'x');
    EXPECT_EQ(NearestName(name + "y", {name}), "");
    EXPECT_EQ(NearestName(name, {"short", name}), name);
}

TEST(SuggestionTest, IsTheEndOfASentence) {
    EXPECT_EQ(Suggestion("scor", kCommands), "; did you mean \"score\"?");
    EXPECT_EQ(Suggestion("a\nb", {"a\nc"}), "; did you mean \"a\\nc\"?");
    EXPECT_EQ(Suggestion("nothing", kCommands), "");
}

} // namespace
} // namespace veltrane::host
