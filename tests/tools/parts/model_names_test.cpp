#include "commands/commands.h"

#include <gtest/gtest.h>

namespace veltrane::host {
namespace {

std::string NamesOf(std::vector<OutlinedModel> models) {
    DocumentOutline outline;
    outline.models = std::move(models);
    return ModelNames(outline);
}

TEST(ModelNamesTest, AreNamesOrNumbers) {
    EXPECT_EQ(NamesOf({}), "");
    EXPECT_EQ(NamesOf({{"TreeModel", "churn risk"}, {"TreeModel", ""}, {"RegressionModel", "cost"}}),
              "churn risk\n2\ncost\n");
}

TEST(ModelNamesTest, TellModelsOfOneNameApart) {
    EXPECT_EQ(NamesOf({{"TreeModel", "a"}, {"TreeModel", "b"}, {"TreeModel", "a"}}), "1\nb\n3\n");
}

TEST(ModelNamesTest, LeaveNamesOutThatCannotBeTyped) {
    EXPECT_EQ(NamesOf({{"TreeModel", "a\nb"}, {"TreeModel", "\x7F"}, {"TreeModel", "--json"}, {"TreeModel", "\u00E9"}}),
              "1\n2\n3\n\u00E9\n");
}

TEST(ModelNamesTest, LeaveNumbersOutThatAreNamesOfOthers) {
    EXPECT_EQ(NamesOf({{"TreeModel", ""}, {"TreeModel", "1"}}), "1\n");
}

} // namespace
} // namespace veltrane::host
