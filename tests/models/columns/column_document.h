#ifndef VELTRANE_TESTS_MODELS_COLUMN_DOCUMENT_H
#define VELTRANE_TESTS_MODELS_COLUMN_DOCUMENT_H

#include "kit/model/transformation_columns.h"
#include "models/columns/random_cells.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace veltrane::tests {

/// Room for the results of a scorer in some rows.
class ResultColumns {
public:
    ResultColumns(const ColumnScorer& scorer, std::size_t rows);

    /// Where the results from a row on go.
    OutputBlock From(std::size_t first);

    /// Copies texts, which go with the state's next block.
    void KeepTexts(std::size_t first, std::size_t rows);

    bool IsText(std::size_t output) const { return !fTexts[output].empty() || fNumbers[output].empty(); }
    double Number(std::size_t output, std::size_t row) const { return fNumbers[output][row]; }
    bool IsMissingText(std::size_t output, std::size_t row) const { return fTexts[output][row].data() == nullptr; }
    const std::string& Text(std::size_t output, std::size_t row) const { return fKept[output][row]; }

    /// Whether all results are the same, bit for bit.
    bool operator==(const ResultColumns& other) const;

private:
    std::vector<std::vector<double>> fNumbers;
    std::vector<std::vector<std::string_view>> fTexts;
    std::vector<std::vector<std::string>> fKept;
    std::vector<OutputColumn> fColumns;
};

/// The derived fields of a document over random cells, in columns and case by case. Copies share the scorer.
class ColumnDocument {
public:
    explicit ColumnDocument(const std::string& document);

    const ColumnScorer& Scorer() const { return *fScorer; }

    /// Other cells.
    void Fill(Random& random, std::size_t rows);

    /// Scores all rows in blocks of a length, the first of which may be shorter.
    void Score(ColumnScorer::State& state, std::size_t length, std::size_t offset, bool hasDictionary,
               ResultColumns& results);

    /// Fails the test unless the results are those of the rows case by case.
    void ExpectCases(const ResultColumns& results) const;

    /// The same, all in one.
    void Check(std::size_t length, std::size_t offset, bool hasDictionary);

    std::size_t Rows() const { return fRows; }

private:
    std::string fDocument;
    std::shared_ptr<const veltrane_kit::Transformations> fTransformations;
    std::shared_ptr<const veltrane_kit::TransformationColumns> fScorer;
    std::size_t fRows = 0;
    std::vector<RandomCells> fCells;
};

} // namespace veltrane::tests

#endif
