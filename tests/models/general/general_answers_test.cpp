// General regressions of every type and with every link against the answers that general_answers.py computes apart from
// the plug-in.
#include "models/columns/model_rows.h"
#include "models/kit/scoring.h"
#include "support/folders.h"
#include "support/rows.h"

#include <MCVeltrane_900/ScoreDictionary.h>

#include <gtest/gtest.h>

#include <cmath>
#include <random>

using namespace veltrane::tests;

namespace {

constexpr double kTolerance = 1e-12;

/// A sample with a place changed. The answer of an output stands under the name of the variant, or under its own.
struct Variant {
    const char* name;
    const char* sample;
    const char* from; ///< null for a document as it stands
    const char* to;
};

class GeneralAnswers : public testing::TestWithParam<Variant> {};

std::string DocumentOf(const Variant& variant) {
    const std::string document = ReadFile(ModelSamplesFolder() + "/" + variant.sample + ".pmml");
    return variant.from == nullptr ? document : Replaced(document, variant.from, variant.to);
}

void ExpectCell(double actual, const std::string& answer, const std::string& where) {
    const double expected = answer.empty() ? kMissing : ToNumber(answer);
    EXPECT_LE(std::abs(actual - expected), kTolerance * std::max(std::abs(expected), 1e-3))
        << where << ": " << actual << " in place of " << answer;
}

/// The column of the answers that has an output's in a variant.
std::string ColumnOf(const Variant& variant, const std::string& output, const Case& answers) {
    if (output == "number" || output == "error") {
        const std::string own = variant.name + std::string(output == "error" ? " error" : "");
        return answers.count(own) > 0 ? own : output;
    }
    const std::string own = variant.name + (" " + output);
    return answers.count(own) > 0 ? own : output;
}

TEST_P(GeneralAnswers, AreThoseComputedApart) {
    const Variant& variant = GetParam();
    Scored scored(DocumentOf(variant));
    const std::string base = ModelSamplesFolder() + "/" + variant.sample;
    const std::vector<Case> rows = ReadRows(base + ".csv");
    const std::vector<Case> answers = ReadRows(base + ".answers.csv");
    ASSERT_EQ(rows.size(), answers.size());
    int predicted = 0;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const std::string where = "row " + std::to_string(i) + ", ";
        const bool isScored = scored.Score(rows[i]).IsOK();
        for (const std::string& output : scored.Model().GetResultDictionary()->GetVarNames()) {
            const std::string& answer = answers[i].at(ColumnOf(variant, output, answers[i]));
            EXPECT_EQ(isScored, !answer.empty()) << where << output;
            ExpectCell(scored.Number(output), answer, where + output);
        }
        predicted += isScored ? 1 : 0;
    }
    EXPECT_GT(predicted, 40);
    EXPECT_LT(predicted, static_cast<int>(rows.size()));
}

TEST_P(GeneralAnswers, HaveTheSameBitsInColumns) {
    ModelRows rows(DocumentOf(GetParam()));
    std::mt19937_64 random(29);
    rows.Fill(random, 400);
    const ModelAnswers expected = rows.CaseByCase();
    const auto state = rows.Scorer().NewState();
    EXPECT_EQ(rows.InBlocks(*state, 256, 0, false), expected);
    EXPECT_EQ(rows.InBlocks(*state, 19, 5, true), expected);
}

constexpr const char* kLogit = "linkFunction=\"logit\"";

constexpr Variant kLinks[] = {
    {"logit", "seedlings", nullptr, nullptr},
    {"cloglog", "seedlings", kLogit, "linkFunction=\"cloglog\""},
    {"identity", "seedlings", kLogit, "linkFunction=\"identity\""},
    {"log", "seedlings", kLogit, "linkFunction=\"log\""},
    {"logc", "seedlings", kLogit, "linkFunction=\"logc\""},
    {"loglog", "seedlings", kLogit, "linkFunction=\"loglog\""},
    {"negbin", "seedlings", kLogit, "linkFunction=\"negbin\""},
    {"oddspower", "seedlings", kLogit, "linkFunction=\"oddspower\""},
    {"oddspowerOfNone", "seedlings", "linkFunction=\"logit\" linkParameter=\"0.75\"",
     "linkFunction=\"oddspower\" linkParameter=\"0\""},
    {"power", "seedlings", kLogit, "linkFunction=\"power\""},
    {"powerOfNone", "seedlings", "linkFunction=\"logit\" linkParameter=\"0.75\"",
     "linkFunction=\"power\" linkParameter=\"0\""},
    {"probit", "seedlings", kLogit, "linkFunction=\"probit\""},
    {"trialsStated", "seedlings", "trialsVariable=\"seeds\"", "trialsValue=\"7\""},
    {"offsetStated", "seedlings", "offsetVariable=\"start\"", "offsetValue=\"-0.25\""},
    {"rootOfWater", "seedlings", "<PCell parameterName=\"p7\"",
     "<PCell parameterName=\"p6\" beta=\"-0.125\"/><PCell parameterName=\"p7\""},
    {"trialsOfOthers", "seedlings", "distribution=\"binomial\" distParameter=\"1.5\" linkFunction=\"logit\"",
     "distribution=\"poisson\" linkFunction=\"log\""},
};

constexpr Variant kTypes[] = {
    {"linear", "seedlings", "modelType=\"generalizedLinear\"", "modelType=\"generalLinear\""},
    {"regression", "seedlings", "modelType=\"generalizedLinear\"", "modelType=\"regression\""},
    {"multinomial", "lunch", nullptr, nullptr},
    {"cox", "pumps", nullptr, nullptr},
    {"coxOfItsTarget", "pumps",
     "<MiningField name=\"broken\" usageType=\"target\"/>\n      <MiningField name=\"until\"/>",
     "<MiningField name=\"until\" usageType=\"target\"/>"},
};

constexpr Variant kCumulativeLinks[] = {
    {"logit", "marks", nullptr, nullptr},
    {"probit", "marks", "cumulativeLink=\"logit\"", "cumulativeLink=\"probit\""},
    {"cloglog", "marks", "cumulativeLink=\"logit\"", "cumulativeLink=\"cloglog\""},
    {"loglog", "marks", "cumulativeLink=\"logit\"", "cumulativeLink=\"loglog\""},
    {"cauchit", "marks", "cumulativeLink=\"logit\"", "cumulativeLink=\"cauchit\""},
};

INSTANTIATE_TEST_SUITE_P(Links, GeneralAnswers, testing::ValuesIn(kLinks), NameOfRow());
INSTANTIATE_TEST_SUITE_P(Types, GeneralAnswers, testing::ValuesIn(kTypes), NameOfRow());
INSTANTIATE_TEST_SUITE_P(CumulativeLinks, GeneralAnswers, testing::ValuesIn(kCumulativeLinks), NameOfRow());

} // namespace
