#ifndef VELTRANE_HOST_CSV_WRITER_H
#define VELTRANE_HOST_CSV_WRITER_H

#include "files/byte_stream.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace veltrane::host {

/// Writes CSV, cell by cell, with LF behind each row. A cell is quoted where RFC 4180 asks for it. Whole rows are
/// gathered and go to the sink together.
class CsvWriter {
public:
    /// @param sink      borrowed
    /// @param delimiter no character that occurs in a number
    CsvWriter(ByteSink& sink, char delimiter);

    void Text(std::string_view text);

    /// The shortest decimal text that reads back to the same double.
    void Number(double number);

    /// A missing value: an empty cell.
    void Empty() { BeginCell(); }

    /// Ends the row. One with a single empty cell is written as `""`: many readers skip an empty line.
    void EndRow();

    /// Hands on what has been gathered. Rows that have not ended stay behind.
    void Flush();

private:
    void BeginCell();
    void Quoted(std::string_view text);

    ByteSink& fSink;
    char fDelimiter;
    std::array<bool, 256> fNeedsQuotes{};
    std::string fBuffer;
    std::size_t fRowStart = 0;
    std::size_t fCells = 0; ///< of the row under way
};

/// Appends the shortest decimal text that reads back to the same double.
void AppendNumber(std::string& text, double number);

} // namespace veltrane::host

#endif
