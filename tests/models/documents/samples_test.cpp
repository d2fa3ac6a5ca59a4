// The documents of samples/: rows, and the answers that regression_answers.py computes apart from the plug-ins.
#include "models/kit/scoring.h"
#include "support/folders.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cmath>

using namespace veltrane::tests;

namespace {

constexpr double kTolerance = 1e-12;

void ExpectAnswer(Scored& scored, const std::string& output, const std::string& answer, const std::string& where) {
    const double number = scored.Number(output);
    const double expected = ToNumber(answer);
    if (answer.empty()) {
        EXPECT_EQ(number, kMissing) << where;
    } else if (std::isalpha(static_cast<unsigned char>(answer.front())) != 0) {
        EXPECT_EQ(scored.Text(output), answer) << where;
    } else {
        EXPECT_LE(std::abs(number - expected), kTolerance * std::max(1.0, std::abs(expected)))
            << where << ": " << number;
    }
}

class Sample : public testing::TestWithParam<const char*> {};

TEST_P(Sample, GivesTheAnswersComputedApart) {
    const std::string base = ModelSamplesFolder() + "/" + GetParam();
    Scored scored(ReadFile(base + ".pmml"));
    const std::vector<Case> rows = ReadRows(base + ".csv");
    const std::vector<Case> answers = ReadRows(base + ".expected.csv");
    ASSERT_EQ(rows.size(), answers.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_TRUE(scored.Score(rows[i]).IsOK()) << "row " << i;
        for (const auto& [output, answer] : answers[i]) {
            ExpectAnswer(scored, output, answer, "row " + std::to_string(i) + ", " + output);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Documents, Sample, testing::Values("prices", "health"),
                         [](const auto& info) { return std::string(info.param); });

std::string TableOf(const std::string& field, const std::string& category) {
    return "<RegressionTable intercept=\"0\"" + category + "><NumericPredictor name=\"" + field +
           "\" coefficient=\"1\"/></RegressionTable>";
}

/// A model whose tables give the fields y1, y2 and y3 as they are.
std::string NormalizingDocument(const Case& row) {
    const bool isClassification = row.at("function") == "classification";
    const std::string target = isClassification
                                   ? "<DataField name=\"t\" dataType=\"string\" optype=\"" + row.at("level") +
                                         "\"><Value value=\"a\"/><Value value=\"b\"/><Value value=\"c\"/></DataField>"
                                   : "<DataField name=\"t\" dataType=\"double\" optype=\"continuous\"/>";
    std::string document = "<PMML version=\"4.3\"><DataDictionary>" + target;
    for (const char* name : {"y1", "y2", "y3"}) {
        document += std::string("<DataField name=\"") + name + "\" dataType=\"double\" optype=\"continuous\"/>";
    }
    document += "</DataDictionary><RegressionModel functionName=\"" + row.at("function") + "\" normalizationMethod=\"" +
                row.at("method") + "\"><MiningSchema><MiningField name=\"t\" usageType=\"target\"/>";
    for (const char* name : {"y1", "y2", "y3"}) {
        document += std::string("<MiningField name=\"") + name + "\"/>";
    }
    document += "</MiningSchema>" + TableOf("y1", isClassification ? " targetCategory=\"a\"" : "");
    if (isClassification) {
        document += TableOf("y2", " targetCategory=\"b\"") + TableOf("y3", " targetCategory=\"c\"");
    }
    return document + "</RegressionModel></PMML>";
}

TEST(Normalization, EveryMethodWithEveryFunction) {
    const std::vector<Case> rows = ReadRows(TestsFolder() + "/models/normalizations.csv");
    ASSERT_GT(rows.size(), 100U);
    for (const Case& row : rows) {
        const std::string where = row.at("function") + " " + row.at("level") + " " + row.at("method") + " of " +
                                  row.at("y1") + " " + row.at("y2") + " " + row.at("y3");
        Scored scored(NormalizingDocument(row));
        ASSERT_TRUE(scored.Score(row).IsOK()) << where;
        if (row.at("function") == "regression") {
            const double expected = ToNumber(row.at("p1"));
            EXPECT_LE(std::abs(scored.Number() - expected), kTolerance * std::abs(expected)) << where;
            continue;
        }
        double best = -1e9;
        std::string predicted;
        for (const auto& [category, column] : Case{{"a", "p1"}, {"b", "p2"}, {"c", "p3"}}) {
            const double expected = ToNumber(row.at(column));
            EXPECT_NEAR(scored.Probability(category), expected, kTolerance) << where << ", " << category;
            predicted = scored.Probability(category) > best ? category : predicted;
            best = std::max(best, scored.Probability(category));
        }
        EXPECT_EQ(scored.Text(), predicted) << where;
        EXPECT_EQ(scored.Result().GetResultConfidence(), best) << where;
    }
}

TEST(Normalization, SumsWithoutASharedOutPartCantBeScored) {
    const Case row = {{"function", "classification"}, {"level", "categorical"}, {"method", "simplemax"}};
    Scored scored(NormalizingDocument(row));
    EXPECT_FALSE(scored.Score({{"y1", "1"}, {"y2", "-3"}, {"y3", "2"}}).IsOK());
    EXPECT_EQ(scored.Text(), "");
}

TEST(Normalization, SoftmaxOfHugeSumsDoesNotOverflow) {
    const Case row = {{"function", "classification"}, {"level", "categorical"}, {"method", "softmax"}};
    Scored scored(NormalizingDocument(row));
    ASSERT_TRUE(scored.Score({{"y1", "5000"}, {"y2", "4999"}, {"y3", "-5000"}}).IsOK());
    EXPECT_NEAR(scored.Probability("a"), 0.7310585786300049, kTolerance);
    EXPECT_EQ(scored.Probability("c"), 0.0);
}

TEST(Normalization, AnOverflowingNumberCantBeScored) {
    const Case row = {{"function", "regression"}, {"level", "continuous"}, {"method", "exp"}};
    Scored scored(NormalizingDocument(row));
    EXPECT_FALSE(scored.Score({{"y1", "800"}}).IsOK());
    EXPECT_TRUE(scored.Score({{"y1", "700"}}).IsOK());
}

} // namespace
