// The samples of scorecards and rules: their cases, and the answers that scripts beside the tests of each kind compute
// apart from the plug-ins.
#include "models/kit/scoring.h"
#include "support/folders.h"
#include "support/rows.h"

#include <MCVeltrane_900/ScoreResultField.h>
#include <MCVeltrane_900/ScoreValue.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using namespace veltrane::tests;

namespace {

constexpr double kTolerance = 1e-13;

/// A sample with one place changed, and its answers. A case with empty answers alone isn't scored.
struct Answered {
    const char* name;
    const char* sample;
    const char* from; ///< null for a document as it stands
    const char* to;
    const char* answers;
};

/// A cell of the answers holds none.
std::string WithoutCommas(std::string text) {
    std::replace(text.begin(), text.end(), ',', ';');
    return text;
}

void ExpectOutput(Scored& scored, const std::string& output, const std::string& answer, const std::string& where) {
    const MCVeltrane_900::ScoreValue* value = scored.Result().GetResultFields()->GetResultValue(output);
    if (value == nullptr || value->GetType() == MCVeltrane_900::ScoreValue::STRING_VALUE) {
        EXPECT_EQ(value == nullptr ? "" : WithoutCommas(value->GetString()), answer) << where;
        return;
    }
    const double expected = answer.empty() ? kMissing : ToNumber(answer);
    EXPECT_LE(std::abs(value->GetDouble() - expected), kTolerance * std::abs(expected))
        << where << ": " << value->GetDouble();
}

class KindAnswers : public testing::TestWithParam<Answered> {};

TEST_P(KindAnswers, AreThoseComputedApart) {
    const Answered& sample = GetParam();
    const std::string document = ReadFile(ModelSamplesFolder() + "/" + sample.sample + ".pmml");
    Scored scored(sample.from == nullptr ? document : Replaced(document, sample.from, sample.to));
    const std::vector<Case> rows = ReadRows(ModelSamplesFolder() + "/" + sample.sample + ".csv");
    const std::vector<Case> answers = ReadRows(ModelSamplesFolder() + "/" + sample.answers + ".csv");
    ASSERT_EQ(rows.size(), answers.size());
    ASSERT_GT(rows.size(), 10U);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const bool isScored = std::any_of(answers[i].begin(), answers[i].end(),
                                          [](const auto& answer) { return !answer.second.empty(); });
        EXPECT_EQ(scored.Score(rows[i]).IsOK(), isScored) << "row " << i;
        for (const auto& [output, answer] : answers[i]) {
            ExpectOutput(scored, output, answer, "row " + std::to_string(i) + ", " + output);
        }
    }
}

constexpr Answered kAnswered[] = {
    {"ScorecardPointsBelow", "credit", nullptr, nullptr, "credit.below"},
    {"ScorecardPointsAbove", "credit", "\"pointsBelow\"", "\"pointsAbove\"", "credit.above"},
    {"RuleSetFirstHit", "sorting", nullptr, nullptr, "sorting.firstHit"},
    {"RuleSetWeightedMax", "sorting", "\"firstHit\"", "\"weightedMax\"", "sorting.weightedMax"},
    {"RuleSetWeightedSum", "sorting", "\"firstHit\"", "\"weightedSum\"", "sorting.weightedSum"},
};

INSTANTIATE_TEST_SUITE_P(Samples, KindAnswers, testing::ValuesIn(kAnswered), NameOfRow());

} // namespace
