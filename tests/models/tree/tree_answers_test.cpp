// Trees under every strategy for missing values, against the answers that tree_answers.py computes apart from the
// plug-in.
#include "models/kit/scoring.h"
#include "support/folders.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <memory>
#include <utility>

using namespace veltrane::tests;

namespace {

constexpr double kTolerance = 1e-14;

/// A number that is computed in another order than that of the script.
void ExpectNumber(double actual, const std::string& answer, const std::string& where) {
    const double expected = answer.empty() ? kMissing : ToNumber(answer);
    EXPECT_LE(std::abs(actual - expected), kTolerance * std::abs(expected)) << where << ": " << actual;
}

/// The models of a sample, one for each pair of strategies.
class Models {
public:
    explicit Models(const std::string& name) : fDocument(ReadFile(ModelSamplesFolder() + "/" + name + ".pmml")) {}

    Scored& Of(const std::string& strategy, const std::string& noChild) {
        std::unique_ptr<Scored>& model = fModels[{strategy, noChild}];
        if (model == nullptr) {
            model = std::make_unique<Scored>(Replaced(Replaced(fDocument, "\"STRATEGY\"", "\"" + strategy + "\""),
                                                      "\"NOCHILD\"", "\"" + noChild + "\""));
        }
        return *model;
    }

private:
    std::string fDocument;
    std::map<std::pair<std::string, std::string>, std::unique_ptr<Scored>> fModels;
};

void ExpectAnswer(Scored& scored, const Case& answer, bool isClassification, const std::string& where) {
    if (isClassification) {
        EXPECT_EQ(scored.Text(), answer.at("prediction")) << where;
        for (const char* output : {"p_no", "p_maybe", "p_yes", "confidence"}) {
            ExpectNumber(scored.Number(output), answer.at(output), where + ", " + output);
        }
        ExpectNumber(scored.Probability("maybe"), answer.at("p_maybe"), where);
    } else {
        ExpectNumber(scored.Number(), answer.at("prediction"), where);
    }
    EXPECT_EQ(scored.Text("entity"), answer.at("entity")) << where;
}

class TreeAnswers : public testing::TestWithParam<const char*> {};

TEST_P(TreeAnswers, AreThoseComputedApart) {
    const std::string name = GetParam();
    Models models(name);
    const std::vector<Case> rows = ReadRows(ModelSamplesFolder() + "/" + name + ".answers.csv");
    ASSERT_GT(rows.size(), 600U);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const Case& row = rows[i];
        Scored& scored = models.Of(row.at("strategy"), row.at("noChild"));
        const MCScore::MCStatus status = scored.Score(row);
        EXPECT_EQ(status.GetErrorCode(), row.at("prediction").empty() ? kNoPrediction : 0) << "row " << i;
        ExpectAnswer(scored, row, name == "play", "row " + std::to_string(i));
    }
}

INSTANTIATE_TEST_SUITE_P(Samples, TreeAnswers, testing::Values("play", "rent"),
                         [](const auto& info) { return std::string(info.param); });

} // namespace
