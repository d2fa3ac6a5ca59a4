// Forests against the answers that forest_answers.py computes apart from the plug-ins.
#include "models/kit/scoring.h"
#include "support/folders.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

using namespace veltrane::tests;

namespace {

/// The answers are sums in fractions, rounded once.
void ExpectNear(double actual, const std::string& answer) {
    const double expected = ToNumber(answer);
    EXPECT_LE(std::abs(actual - expected), 4e-15 * std::max(1.0, std::abs(expected))) << actual << ", " << answer;
}

std::vector<Case> AnswersOf(const std::string& name) {
    std::vector<Case> answers = ReadRows(ModelSamplesFolder() + "/" + name + ".answers.csv");
    EXPECT_GE(answers.size(), 200U);
    return answers;
}

TEST(ForestAnswers, OfVotesAreThoseComputedApart) {
    Scored scored(ReadFile(ModelSamplesFolder() + "/grove.pmml"));
    for (const Case& answer : AnswersOf("grove")) {
        SCOPED_TRACE(answer.at("rain") + "," + answer.at("sun") + "," + answer.at("age") + "," + answer.at("soil"));
        ASSERT_TRUE(scored.Score(answer).IsOK());
        EXPECT_EQ(scored.Text(), answer.at("prediction"));
        ExpectNear(scored.Number("p"), answer.at("p_pear"));
    }
}

TEST(ForestAnswers, OfWeightedAveragesAreThoseComputedApart) {
    Scored scored(ReadFile(ModelSamplesFolder() + "/orchard.pmml"));
    for (const Case& answer : AnswersOf("orchard")) {
        SCOPED_TRACE(answer.at("rain") + "," + answer.at("sun") + "," + answer.at("age") + "," + answer.at("soil"));
        ASSERT_TRUE(scored.Score(answer).IsOK());
        ExpectNear(scored.Number(), answer.at("prediction"));
    }
}

} // namespace
