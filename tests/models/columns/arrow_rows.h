#ifndef VELTRANE_TESTS_MODELS_ARROW_ROWS_H
#define VELTRANE_TESTS_MODELS_ARROW_ROWS_H

#include "columns/support/test_batch.h"

#include <MCVeltrane_900/CaseRecord.h>
#include <veltrane/document.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <vector>

/// A document over random rows, in batches of the interface and case by case.
namespace veltrane::tests {

/// One field: what each row has, and as a column of a type that the field takes.
struct ArrowField {
    std::string name;
    DataType type = DataType::DOUBLE;
    std::vector<double> numbers; ///< of a type without texts; not a number for a missing one
    TestTexts texts;

    /// @param variant which of the types and kinds of buffers
    TestColumn Column(std::size_t variant) const;
};

class ArrowRows {
public:
    /// @throws VTException for a document that is refused
    ArrowRows(const std::string& text, std::size_t rows);
    ~ArrowRows();

    const Document& Opened() const { return fDocument; }
    std::size_t Rows() const { return fRows; }

    /// Fails the test unless results from a row on are those of the cases, with the same bits.
    void ExpectCases(const TestResults& results, std::size_t first) const;

    /// Scores rows, which the struct shows by its offset, or each of its columns by theirs.
    void Score(Document::State& state, std::size_t first, std::size_t length, bool byColumns, TestResults& results);

private:
    /// A cell of the results of a case: missing, a number or a text.
    struct Cell {
        std::optional<double> number;
        std::optional<std::string> text;
    };

    void AddField(const ColumnField& input, const std::string& text, std::mt19937_64& random);
    std::unique_ptr<MCVeltrane_900::CaseRecord> Record(std::size_t row) const;
    void ScoreModelCases(const std::string& text);
    void ComputeCases(const std::string& text);
    bool IsSame(const ArrowArray& column, const std::string& format, std::size_t row, const Cell& cell) const;

    Document fDocument;
    std::size_t fRows;
    std::vector<ArrowField> fFields;
    std::unique_ptr<TestBatch> fBatch;
    std::vector<std::vector<Cell>> fExpected; ///< by output
};

} // namespace veltrane::tests

#endif
