#include "models/kit/answers.h"

#include "models/kit/scoring.h"
#include "support/folders.h"

#include <MCVeltrane_900/ScoreResultField.h>
#include <MCVeltrane_900/ScoreValue.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <sstream>

namespace veltrane::tests {
namespace {

constexpr double kTolerance = 1e-12;

void ExpectAnswer(Scored& scored, const std::string& output, const std::string& answer, const std::string& where) {
    const MCVeltrane_900::ScoreValue* value = scored.Result().GetResultFields()->GetResultValue(output);
    if (value == nullptr || value->GetType() == MCVeltrane_900::ScoreValue::STRING_VALUE) {
        EXPECT_EQ(value == nullptr ? "" : value->GetString(), answer) << where;
        return;
    }
    const double expected = answer.empty() ? kMissing : ToNumber(answer);
    EXPECT_LE(std::abs(value->GetDouble() - expected), kTolerance * std::max(1.0, std::abs(expected)))
        << where << ": " << value->GetDouble();
}

/// The answers of one variant by row.
std::map<std::size_t, Case> AnswersOf(const std::string& variant, const std::string& path) {
    std::map<std::size_t, Case> answers;
    for (const Case& line : ReadRows(path)) {
        if (line.at("variant") == variant) {
            answers[std::stoul(line.at("row"))][line.at("output")] = line.at("answer");
        }
    }
    return answers;
}

/// A document without the first element of a tag.
std::string Without(const std::string& tag, std::string document) {
    const std::string end = "</" + tag + ">";
    const std::size_t first = document.find("<" + tag);
    return document.erase(first, document.find(end) + end.size() - first);
}

} // namespace

std::vector<SampleVariant> ReadVariants(const std::string& path) {
    std::istringstream lines(ReadFile(path));
    std::string line;
    std::getline(lines, line); // the header
    std::vector<SampleVariant> variants;
    while (std::getline(lines, line)) {
        std::istringstream cells(line);
        SampleVariant& variant = variants.emplace_back();
        std::getline(cells, variant.name, '\t');
        std::getline(cells, variant.sample, '\t');
        std::getline(cells, variant.from, '\t');
        std::getline(cells, variant.to, '\t');
    }
    return variants;
}

std::string DocumentOf(const SampleVariant& variant) {
    const std::string sample = ReadFile(ModelSamplesFolder() + "/" + variant.sample + ".pmml");
    std::string text;
    for (std::size_t at = 0; at < sample.size(); ++at) {
        text += sample[at];
        const std::size_t next = sample.find_first_not_of(" \n", at + 1);
        if (sample[at] == '>' && next != std::string::npos && sample[next] == '<') {
            at = next - 1;
        }
    }
    if (variant.from == "OUTPUTS") {
        return Without("NeuralOutputs", text);
    }
    if (variant.to.find("\"Coefficients\"") != std::string::npos) {
        text = Without("SupportVectors", text);
    }
    return variant.from.empty() ? text : Replaced(text, variant.from, variant.to);
}

void ExpectVariantAnswers(const SampleVariant& variant, const std::string& path) {
    Scored scored(DocumentOf(variant));
    const std::vector<Case> rows = ReadRows(ModelSamplesFolder() + "/" + variant.sample + ".csv");
    const std::map<std::size_t, Case> answers = AnswersOf(variant.name, path);
    ASSERT_EQ(rows.size(), answers.size());
    ASSERT_GT(rows.size(), 10U);
    for (const auto& [row, outputs] : answers) {
        const bool isScored =
            std::any_of(outputs.begin(), outputs.end(), [](const auto& output) { return !output.second.empty(); });
        EXPECT_EQ(scored.Score(rows[row]).IsOK(), isScored) << "row " << row;
        for (const auto& [output, answer] : outputs) {
            ExpectAnswer(scored, output, answer, "row " + std::to_string(row) + ", " + output);
        }
    }
}

} // namespace veltrane::tests
