#include "support/folders.h"
#include "support/rows.h"
#include "translators/derived/derived_fields.h"

#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/StringValue.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>

// Whole documents with rows of inputs and the derived values that they must give. The data dictionary of each stands
// in its document.

namespace veltrane::tests {
namespace {

namespace fs = std::filesystem;

using Row = std::vector<std::string>;

std::string ReadFile(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    EXPECT_TRUE(in) << path;
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

/// The lines of a file without quoted cells, the head first.
std::vector<Row> ReadCsv(const fs::path& path) {
    std::vector<Row> rows;
    std::istringstream in(ReadFile(path));
    for (std::string line; std::getline(in, line);) {
        Row row(1);
        for (const char c : line) {
            c == ',' ? row.emplace_back() : row.back() += c;
        }
        rows.push_back(row);
    }
    return rows;
}

/// A document's two dictionaries, and its rows one after another.
class Sample {
public:
    explicit Sample(const fs::path& base) : inputs(ReadCsv(base.string() + ".csv")) {
        const ParsedXml document = ParseXml(ReadFile(base.string() + ".pmml"));
        PMMLTranslator translator("UTF-8");
        dictionary.reset(translator.ParseDictionary(document.Find("DataDictionary"), false));
        derived.reset(
            translator.HandleTransformationDictionary(document.Find("TransformationDictionary"), dictionary.get()));
        derived->SetUpDerivedCaseRecord();
        for (const std::string& name : inputs.front()) {
            record.Add(name, nullptr);
        }
    }

    std::size_t Rows() const { return inputs.size() - 1; }

    const ScoreCaseRecord& Score(std::size_t row) {
        for (std::size_t i = 0; i < inputs.front().size(); ++i) {
            const std::string& name = inputs.front()[i];
            const std::string& cell = inputs[row][i];
            if (dictionary->GetVar(name)->GetVarType() == ScoreDictVar::STRING_VAR) {
                record.SetValue(name, cell);
            } else {
                record.SetValue(name, NumericValue(cell).GetDouble());
            }
        }
        return *derived->GetValuesForDerivedVars(&record, dictionary.get());
    }

private:
    std::vector<Row> inputs;
    CaseRecord record;
    std::unique_ptr<ScoreDictionary> dictionary;
    std::unique_ptr<TransformationDictionary> derived;
};

/// A number agrees within 1e-12, relative and below 1 absolute; an empty cell is a missing value.
void ExpectCell(const ScoreValue* value, const std::string& expected, const std::string& where) {
    ASSERT_NE(value, nullptr) << where;
    if (value->GetType() == ScoreValue::STRING_VALUE) {
        EXPECT_EQ(value->GetString(), expected) << where;
        return;
    }
    ASSERT_EQ(value->IsSystemMissingValue(), expected.empty()) << where;
    if (!expected.empty()) {
        const double number = std::stod(expected);
        EXPECT_LE(std::abs(value->GetDouble() - number), 1e-12 * std::max(1.0, std::abs(number))) << where;
    }
}

void ExpectSample(const fs::path& base) {
    Sample sample(base);
    const std::vector<Row> expected = ReadCsv(base.string() + ".expected.csv");
    ASSERT_EQ(expected.size() - 1, sample.Rows());
    for (std::size_t row = 1; row < expected.size(); ++row) {
        const ScoreCaseRecord& values = sample.Score(row);
        ASSERT_EQ(expected[row].size(), expected.front().size()) << "row " << row;
        for (std::size_t i = 0; i < expected[row].size(); ++i) {
            const std::string& name = expected.front()[i];
            ExpectCell(values.Get(name), expected[row][i], "row " + std::to_string(row) + ", " + name);
        }
    }
}

class DerivedSample : public testing::TestWithParam<const char*> {};

TEST_P(DerivedSample, GivesTheExpectedValues) {
    ExpectSample(fs::path(SamplesFolder()) / GetParam());
}

INSTANTIATE_TEST_SUITE_P(Expressions, DerivedSample,
                         testing::Values("constants", "field-references", "norm-continuous", "norm-discrete",
                                         "discretize", "map-values", "lag", "chain"),
                         NameOfFile{});

class ToolDocument : public testing::TestWithParam<const char*> {};

TEST_P(ToolDocument, GivesTheKnownAnswers) {
    const fs::path cases = fs::path(CasesFolder()) / "transform";
    if (!fs::exists(cases)) {
        GTEST_SKIP() << "the real documents are not at ../shared/cases";
    }
    ExpectSample(cases / GetParam());
}

INSTANTIATE_TEST_SUITE_P(Documents, ToolDocument, testing::Values("iris-scale", "ozone-scale"), NameOfFile{});

class OwnDocument : public testing::TestWithParam<const char*> {};

TEST_P(OwnDocument, GivesTheAnswersComputedApart) {
    ExpectSample(fs::path(OwnDocumentsFolder()) / "transform" / GetParam());
}

INSTANTIATE_TEST_SUITE_P(Documents, OwnDocument, testing::Values("grain-scale", "tide-minmax", "stall-components"),
                         NameOfFile{});

} // namespace
} // namespace veltrane::tests
