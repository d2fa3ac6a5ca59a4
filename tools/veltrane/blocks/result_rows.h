#ifndef VELTRANE_HOST_RESULT_ROWS_H
#define VELTRANE_HOST_RESULT_ROWS_H

#include "blocks/text_buffer.h"
#include "cases/date_text.h"
#include "files/csv_writer.h"

#include <veltrane/column_scorer.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veltrane::host {

/// Appends the shortest decimal text that reads back to the same double. Results of many rows have few numbers, so the
/// texts of the last ones are kept.
class NumberTexts {
public:
    static constexpr std::size_t kLongest = 32;

    NumberTexts();

    /// @param text has room for kLongest bytes
    void Put(double number, TextBuffer& text);

private:
    struct Kept {
        std::uint64_t bits;
        std::size_t size;
        std::array<char, kLongest> text;
    };

    std::vector<Kept> fKept;
};

/// The results of a block and their rows of CSV.
class ResultRows {
public:
    /// @param forms of the date-times, by results; none where their texts are those of the standard
    ResultRows(const ColumnScorer& scorer, const std::vector<DateForm>& forms, char delimiter);

    /// Where the results go. The rows of Unscored() are empty.
    const OutputBlock& Block() const { return fBlock; }
    bool IsUnscored(std::size_t row) const { return fUnscored[row] != 0; }
    std::size_t Cells() const { return fColumns.size(); }

    /// Appends the cells of a row, parted by delimiters.
    void Put(std::size_t row, TextBuffer& text);

    /// Appends a text as a cell.
    void PutText(std::string_view cell, TextBuffer& text) const;

private:
    struct Column {
        DataType type = DataType::DOUBLE;
        std::optional<DateForm> form;
        std::vector<std::string> categories; ///< as cells
        std::vector<double> numbers;
        std::vector<std::int32_t> codes;
        std::vector<std::string_view> texts;
        NumberTexts numberTexts;
    };

    void PutCell(Column& column, std::size_t row, TextBuffer& text);
    void PutNumber(Column& column, double number, TextBuffer& text);

    char fDelimiter;
    CsvQuoting fQuoting;
    std::vector<Column> fColumns;
    std::vector<OutputColumn> fOutputs;
    std::vector<std::uint8_t> fUnscored;
    OutputBlock fBlock;
    std::string fText;
};

} // namespace veltrane::host

#endif
