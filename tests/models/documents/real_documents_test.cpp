// Documents that modelling tools wrote, rows, and the predictions that the tools themselves gave. They stand outside
// the tree; each has a small document of its shape inside, whose answers tests/documents/make_answers.py computes
// apart.
#include "models/kit/scoring.h"
#include "support/folders.h"
#include "support/rows.h"

#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/ScoreResultField.h>

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

void ExpectAnswers(Scored& scored, const Case& answers, const std::string& row) {
    for (const auto& [column, answer] : answers) {
        const std::string what = row + ", " + column;
        if (column.rfind("Probability_", 0) == 0) {
            ExpectNear(scored.Probability(column.substr(12)), ToNumber(answer), what);
            // A document may have an output for one of two categories alone.
            if (scored.Result().GetResultFields()->GetResultValue(column) != nullptr) {
                ExpectNear(scored.Number(column), ToNumber(answer), what);
            }
        } else if (column.rfind("Confidence_", 0) == 0) {
            // A document of rules without such outputs tells the confidence of the rule alone.
            if (scored.Result().GetResultFields()->GetResultValue(column) != nullptr) {
                ExpectNear(scored.Number(column), ToNumber(answer), what);
            }
            if (column.substr(11) == scored.Text()) {
                ExpectNear(scored.Result().GetResultConfidence(), ToNumber(answer), what);
            }
        } else if (scored.Number() != kMissing) {
            ExpectNear(scored.Number(), ToNumber(answer), what);
        } else {
            EXPECT_EQ(scored.Text(), answer) << what;
        }
    }
}

/// @param base the path of a document without its ending; its rows and answers stand beside it
void ExpectDocument(const std::string& base) {
    Scored scored(ReadFile(base + ".pmml"));
    const std::vector<Case> rows = ReadRows(base + ".csv");
    const std::vector<Case> answers = ReadRows(base + ".expected.csv");
    ASSERT_EQ(rows.size(), answers.size());
    ASSERT_FALSE(rows.empty());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        ASSERT_TRUE(scored.Score(rows[i]).IsOK()) << "row " << i;
        ExpectAnswers(scored, answers[i], "row " + std::to_string(i));
    }
}

class RealDocument : public testing::TestWithParam<const char*> {};

TEST_P(RealDocument, GivesTheAnswersOfItsTool) {
    const std::string base = CasesFolder() + "/models/" + GetParam();
    if (!std::filesystem::exists(base + ".pmml")) {
        GTEST_SKIP() << "the real documents are not at ../shared/cases";
    }
    ExpectDocument(base);
}

INSTANTIATE_TEST_SUITE_P(Documents, RealDocument,
                         testing::Values("rattle-regression-iris", "rattle-regression-ozone", "sklearn-linear-housing",
                                         "rattle-tree-iris", "rattle-tree-audit", "knime-tree-iris",
                                         "rapidminer-rules-iris", "rattle-forest-iris", "forest-audit",
                                         "sklearn-gbt-housing", "rattle-network-iris", "rattle-svm-iris",
                                         "rattle-glm-audit", "rattle-glm-ozone", "rattle-bayes-iris",
                                         "rattle-kmeans-iris"),
                         NameOfFile{});

class OwnDocument : public testing::TestWithParam<const char*> {};

TEST_P(OwnDocument, GivesTheAnswersComputedApart) {
    ExpectDocument(OwnDocumentsFolder() + "/models/" + GetParam());
}

// In the order of the real documents above.
INSTANTIATE_TEST_SUITE_P(Documents, OwnDocument,
                         testing::Values("grain-multinomial", "dough-linear", "stall-scaled", "mushroom-surrogates",
                                         "parcel-sets", "apple-binary", "cheese-rules"),
                         NameOfFile{});

} // namespace
