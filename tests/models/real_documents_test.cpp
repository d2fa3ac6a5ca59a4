// Documents that modelling tools wrote, rows, and the predictions that the tools themselves gave.
#include "models/scoring.h"
#include "support/folders.h"

#include <MCVeltrane_900/ScoreDictVar.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>

using namespace veltrane::tests;

namespace {

/// The answers are printed with 6 to 15 digits.
void ExpectNear(double actual, double expected, const std::string& what) {
    EXPECT_LE(std::abs(actual - expected), 1e-6 * std::max(std::abs(expected), 1e-6)) << what << ": " << actual;
}

class RealDocument : public testing::TestWithParam<const char*> {};

TEST_P(RealDocument, GivesTheAnswersOfItsTool) {
    const std::string base = CasesFolder() + "/models/" + GetParam();
    if (!std::filesystem::exists(base + ".pmml")) {
        GTEST_SKIP() << "the real documents are not here: " << base;
    }
    Scored scored(ReadFile(base + ".pmml"));
    const std::vector<Case> rows = ReadRows(base + ".csv");
    const std::vector<Case> answers = ReadRows(base + ".expected.csv");
    ASSERT_EQ(rows.size(), answers.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        ASSERT_TRUE(scored.Score(rows[i]).IsOK()) << "row " << i;
        for (const auto& [column, answer] : answers[i]) {
            const std::string what = "row " + std::to_string(i) + ", " + column;
            if (column.rfind("Probability_", 0) == 0) {
                ExpectNear(scored.Probability(column.substr(12)), ToNumber(answer), what);
                ExpectNear(scored.Number(column), ToNumber(answer), what);
            } else if (scored.Number() != kMissing) {
                ExpectNear(scored.Number(), ToNumber(answer), what);
            } else {
                EXPECT_EQ(scored.Text(), answer) << what;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Documents, RealDocument,
                         testing::Values("rattle-regression-iris", "rattle-regression-ozone", "sklearn-linear-housing",
                                         "rattle-tree-iris", "rattle-tree-audit", "knime-tree-iris"),
                         [](const auto& info) {
                             std::string name = info.param;
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

} // namespace
