// Inputs of every distribution and with counts, against the answers that bayes_answers.py computes apart from the
// plug-in as plain products.
#include "models/columns/model_rows.h"
#include "models/kit/scoring.h"
#include "support/folders.h"
#include "support/rows.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

using namespace veltrane::tests;

namespace {

constexpr double kTolerance = 1e-12;

struct Variant {
    const char* name;
    const char* from; ///< null for the sample as it stands
    const char* to;
};

class BayesAnswers : public testing::TestWithParam<Variant> {};

TEST_P(BayesAnswers, AreThoseComputedApart) {
    const std::string sample = ReadFile(ModelSamplesFolder() + "/fruit.pmml");
    Scored scored(GetParam().from == nullptr ? sample : Replaced(sample, GetParam().from, GetParam().to));
    const std::vector<Case> rows = ReadRows(ModelSamplesFolder() + "/fruit.csv");
    const std::vector<Case> answers = ReadRows(ModelSamplesFolder() + "/fruit.answers.csv");
    ASSERT_EQ(rows.size(), answers.size());
    ASSERT_GT(rows.size(), 100U);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const bool isScored = scored.Score(rows[i]).IsOK();
        for (const std::string kind : {"pear", "apple", "plum"}) {
            const std::string output = "p(" + kind + ")";
            const std::string& answer = answers[i].at(GetParam().name + (" " + output));
            EXPECT_EQ(isScored, !answer.empty()) << "row " << i;
            const double expected = answer.empty() ? kMissing : ToNumber(answer);
            const double actual = scored.Number(output);
            EXPECT_LE(std::abs(actual - expected), kTolerance * std::abs(expected))
                << "row " << i << ", " << output << ": " << actual << " in place of " << answer;
        }
    }
}

TEST_P(BayesAnswers, HaveTheSameBitsInColumns) {
    const std::string sample = ReadFile(ModelSamplesFolder() + "/fruit.pmml");
    ModelRows rows(GetParam().from == nullptr ? sample : Replaced(sample, GetParam().from, GetParam().to));
    std::mt19937_64 random(31);
    rows.Fill(random, 400);
    const ModelAnswers expected = rows.CaseByCase();
    const auto state = rows.Scorer().NewState();
    EXPECT_EQ(rows.InBlocks(*state, 256, 0, false), expected);
    EXPECT_EQ(rows.InBlocks(*state, 19, 5, true), expected);
}

constexpr Variant kVariants[] = {
    {"usual", nullptr, nullptr},
    {"none", "threshold=\"0.01\"", "threshold=\"0\""},
    {"rattle", "<Header/>", "<Header><Application name=\"Rattle/PMML\" version=\"1.3\"/></Header>"},
};

INSTANTIATE_TEST_SUITE_P(Samples, BayesAnswers, testing::ValuesIn(kVariants), NameOfRow());

} // namespace
