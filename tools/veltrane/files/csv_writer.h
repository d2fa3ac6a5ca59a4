#ifndef VELTRANE_HOST_CSV_WRITER_H
#define VELTRANE_HOST_CSV_WRITER_H

#include "files/byte_stream.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace veltrane::host {

/// Which cells are quoted: those that hold the delimiter, a quote or a line end.
class CsvQuoting {
public:
    explicit CsvQuoting(char delimiter);

    bool Needs(std::string_view text) const;

    /// Hands over the text between quotes, its own ones doubled, byte by byte.
    template <typename Put>
    static void Quote(std::string_view text, const Put& put) {
        put('"');
        for (const char c : text) {
            if (c == '"') {
                put('"');
            }
            put(c);
        }
        put('"');
    }

private:
    std::array<bool, 256> fNeedsQuotes{};
};

/// The row that stands for a single empty cell: many readers skip an empty line.
inline constexpr std::string_view kEmptyRow = "\"\"";

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

    /// Ends the row. One with a single empty cell is written as kEmptyRow.
    void EndRow();

    /// Takes rows that are written already. Between two rows only.
    /// @param ends where each of them ends, its LF included, counted from some place
    /// @param start of the first one, counted from there
    void Rows(std::string_view rows, std::span<const std::uint32_t> ends, std::size_t start);

    /// Hands on what has been gathered. Rows that have not ended stay behind.
    void Flush();

private:
    void BeginCell();

    ByteSink& fSink;
    char fDelimiter;
    CsvQuoting fQuoting;
    std::string fBuffer;
    std::size_t fRowStart = 0;
    std::size_t fCells = 0; ///< of the row under way
};

/// Appends the shortest decimal text that reads back to the same double.
void AppendNumber(std::string& text, double number);

} // namespace veltrane::host

#endif
