#include "models/columns/column_document.h"

#include "models/columns/random_columns.h"

#include <MCVeltrane_900/CaseRecord.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace veltrane::tests {

using veltrane_kit::Transformations;
using veltrane_kit::Value;

ResultColumns::ResultColumns(const ColumnScorer& scorer, std::size_t rows)
    : fNumbers(scorer.Outputs().size()), fTexts(fNumbers.size()), fKept(fNumbers.size()), fColumns(fNumbers.size()) {
    for (std::size_t i = 0; i < fNumbers.size(); ++i) {
        if (scorer.Outputs()[i].type == DataType::STRING) {
            fTexts[i].resize(rows);
            fKept[i].resize(rows);
        } else {
            fNumbers[i].resize(rows);
        }
    }
}

OutputBlock ResultColumns::From(std::size_t first) {
    for (std::size_t i = 0; i < fColumns.size(); ++i) {
        fColumns[i] = OutputColumn();
        fColumns[i].numbers = fNumbers[i].empty() ? nullptr : fNumbers[i].data() + first;
        fColumns[i].texts = fTexts[i].empty() ? nullptr : fTexts[i].data() + first;
    }
    OutputBlock out;
    out.columns = fColumns.data();
    return out;
}

void ResultColumns::KeepTexts(std::size_t first, std::size_t rows) {
    for (std::size_t i = 0; i < fTexts.size(); ++i) {
        for (std::size_t row = first; row < first + rows && row < fTexts[i].size(); ++row) {
            fKept[i][row].assign(fTexts[i][row]);
        }
    }
}

bool ResultColumns::operator==(const ResultColumns& other) const {
    for (std::size_t i = 0; i < fNumbers.size(); ++i) {
        if (!std::equal(fNumbers[i].begin(), fNumbers[i].end(), other.fNumbers[i].begin(), other.fNumbers[i].end(),
                        AreSameNumbers)) {
            return false;
        }
        for (std::size_t row = 0; row < fKept[i].size(); ++row) {
            if (IsMissingText(i, row) != other.IsMissingText(i, row) || fKept[i][row] != other.fKept[i][row]) {
                return false;
            }
        }
    }
    return true;
}

namespace {

std::shared_ptr<const Transformations> ReadDocument(const std::string& document) {
    std::istringstream in(document);
    return Transformations::Read(in, "UTF-8");
}

void ExpectSame(const ResultColumns& results, std::size_t output, std::size_t row, const Value& expected) {
    if (!results.IsText(output)) {
        EXPECT_TRUE(AreSameNumbers(results.Number(output, row), expected.number))
            << results.Number(output, row) << " and " << expected.number;
        return;
    }
    std::string buffer;
    EXPECT_EQ(results.IsMissingText(output, row), expected.isMissing);
    EXPECT_EQ(results.Text(output, row), expected.isMissing ? "" : veltrane_kit::TextOf(expected, buffer));
}

} // namespace

ColumnDocument::ColumnDocument(const std::string& document)
    : fDocument(document), fTransformations(ReadDocument(document)),
      fScorer(std::make_shared<const veltrane_kit::TransformationColumns>(fTransformations)) {}

void ColumnDocument::Fill(Random& random, std::size_t rows) {
    fRows = rows;
    fCells.clear();
    for (const ColumnField& input : fScorer->Inputs()) {
        fCells.emplace_back(random, input.type, rows);
    }
}

void ColumnDocument::Score(ColumnScorer::State& state, std::size_t length, std::size_t offset, bool hasDictionary,
                           ResultColumns& results) {
    for (std::size_t first = 0; first < fRows || fRows == 0;) {
        const std::size_t rows = std::min(first == 0 && offset > 0 ? offset : length, fRows - first);
        std::vector<InputColumn> columns;
        for (RandomCells& cells : fCells) {
            columns.push_back(cells.Column(hasDictionary, first));
        }
        const InputBlock in{rows, columns.data()};
        fScorer->Score(in, state, results.From(first));
        results.KeepTexts(first, rows);
        first += rows;
        if (fRows == 0) {
            break;
        }
    }
}

void ColumnDocument::ExpectCases(const ResultColumns& results) const {
    std::istringstream in(fDocument);
    const auto reference = Transformations::Read(in, "UTF-8");
    const std::vector<int> slots = reference->Derived().Slots();
    for (std::size_t row = 0; row < fRows; ++row) {
        MCVeltrane_900::CaseRecord record(static_cast<int>(fCells.size()));
        for (std::size_t i = 0; i < fCells.size(); ++i) {
            record.Add(fScorer->Inputs()[i].name, fCells[i].Raw(row).release());
        }
        reference->Compute(record);
        for (std::size_t output = 0; output < slots.size(); ++output) {
            SCOPED_TRACE("row " + std::to_string(row) + ", " + fScorer->Outputs()[output].name);
            ExpectSame(results, output, row, (*reference)[slots[output]]);
            if (testing::Test::HasFailure()) {
                return;
            }
        }
    }
}

void ColumnDocument::Check(std::size_t length, std::size_t offset, bool hasDictionary) {
    ResultColumns results(*fScorer, fRows);
    const auto state = fScorer->NewState();
    Score(*state, length, offset, hasDictionary, results);
    ExpectCases(results);
}

} // namespace veltrane::tests
