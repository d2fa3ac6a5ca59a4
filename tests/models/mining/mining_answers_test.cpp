// Segments under every method and every treatment of missing predictions, against the answers that mining_answers.py
// computes apart from the plug-in; case by case and in columns.
#include "models/columns/model_rows.h"
#include "models/kit/scoring.h"
#include "support/folders.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <memory>
#include <random>

using namespace veltrane::tests;

namespace {

/// The answers are sums in fractions, rounded once.
void ExpectNumber(double actual, const std::string& answer, const std::string& where) {
    const double expected = answer.empty() ? kMissing : ToNumber(answer);
    EXPECT_LE(std::abs(actual - expected), 4e-15 * std::max(1.0, std::abs(expected))) << where << ": " << actual;
}

std::string DocumentOf(const std::string& name, const Case& answer) {
    std::string document = ReadFile(ModelSamplesFolder() + "/" + name + ".pmml");
    document = Replaced(document, "\"METHOD\"", "\"" + answer.at("method") + "\"");
    document = Replaced(document, "\"TREATMENT\"", "\"" + answer.at("treatment") + "\"");
    return Replaced(document, "\"THRESHOLD\"", "\"" + answer.at("threshold") + "\"");
}

class Ensemble : public testing::TestWithParam<const char*> {
protected:
    const std::vector<Case> fAnswers = ReadRows(ModelSamplesFolder() + "/" + std::string(GetParam()) + ".answers.csv");
    const bool fIsClassification = fAnswers.front().count("p_once") > 0;

    void ExpectAnswer(Scored& scored, const Case& answer, const std::string& where) const {
        if (fIsClassification) {
            EXPECT_EQ(scored.Text(), answer.at("prediction")) << where;
            for (const char* category : {"never", "once", "often"}) {
                const std::string output = std::string("p_") + category;
                ExpectNumber(scored.Number(output), answer.at(output), where + ", " + output);
                ExpectNumber(scored.Probability(category), answer.at(output), where + ", " + category);
            }
        } else {
            ExpectNumber(scored.Number(), answer.at("prediction"), where);
        }
        EXPECT_EQ(scored.Text("winner"), answer.at("winner")) << where;
    }
};

TEST_P(Ensemble, GivesTheAnswersComputedApart) {
    std::map<std::string, std::unique_ptr<Scored>> models;
    ASSERT_GT(fAnswers.size(), 1000U);
    for (std::size_t i = 0; i < fAnswers.size(); ++i) {
        const Case& answer = fAnswers[i];
        std::unique_ptr<Scored>& model =
            models[answer.at("method") + " " + answer.at("treatment") + " " + answer.at("threshold")];
        if (model == nullptr) {
            model = std::make_unique<Scored>(DocumentOf(GetParam(), answer));
        }
        const std::string where = answer.at("method") + " " + answer.at("treatment") + ", row " + std::to_string(i);
        EXPECT_EQ(model->Score(answer).IsOK(), !answer.at("prediction").empty()) << where;
        ExpectAnswer(*model, answer, where);
    }
}

TEST_P(Ensemble, AgreesInColumnsBitForBit) {
    std::map<std::string, bool> seen;
    for (const Case& answer : fAnswers) {
        const std::string document = DocumentOf(GetParam(), answer);
        if (!seen.emplace(document, true).second) {
            continue;
        }
        ModelRows rows(document);
        std::mt19937_64 random(seen.size());
        rows.Fill(random, 700);
        const auto state = rows.Scorer().NewState();
        EXPECT_EQ(rows.InBlocks(*state, 1024, 0, false), rows.CaseByCase()) << document;
        EXPECT_EQ(rows.InBlocks(*state, 300, 11, true), rows.CaseByCase()) << document;
    }
    EXPECT_GT(seen.size(), 40U);
}

INSTANTIATE_TEST_SUITE_P(Samples, Ensemble, testing::Values("harvest", "visits"),
                         [](const auto& info) { return std::string(info.param); });

} // namespace
