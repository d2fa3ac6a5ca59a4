#ifndef VELTRANE_HOST_RECORD_SPLITTER_H
#define VELTRANE_HOST_RECORD_SPLITTER_H

#include "blocks/chunk.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace veltrane::host {

/// A cell among the bytes of a chunk, without its quotes.
struct Cell {
    std::uint32_t start = 0;
    std::uint32_t size = 0;
};

/// The cells of some rows, of the columns that somebody reads.
struct CellTable {
    const char* bytes = nullptr;      ///< of the chunk
    std::size_t width = 0;            ///< columns that are read
    std::vector<Cell> cells;          ///< row by row; an empty one where a row has too few
    std::vector<std::uint32_t> lines; ///< on which each record starts, counted from the start of the chunk

    std::size_t Rows() const { return lines.size(); }
    std::string_view At(std::size_t row, std::size_t place) const {
        const Cell& cell = cells[row * width + place];
        return {bytes + cell.start, cell.size};
    }
};

/// Parts the bytes of chunks into records and cells. It takes the same text for CSV as CsvReader, with the same cells,
/// and finds the same faults.
class RecordSplitter {
public:
    explicit RecordSplitter(char delimiter);

    /// Says how wide the file is. Before, a record has as many cells as it has, and empty lines are none.
    /// @param columns of the header
    /// @param places  by column, where its cells go in a table; negative for one that nobody reads
    void SetColumns(std::size_t columns, std::vector<int> places);

    /// Begins a chunk, whose doubled quotes are made single ones on the way.
    /// @param chunk borrowed until the next one
    void Begin(Chunk& chunk);

    /// Splits the next records.
    /// @param most  rows of the table
    /// @param notes gets one for each ragged row
    /// @param first the number of the table's first row in the chunk
    /// @return false when the chunk is used up or has a fault; the rows in front of that are in the table
    bool Split(CellTable& table, std::size_t most, std::uint32_t first, std::vector<RowNote>& notes);

    /// Splits one record, however many cells it has.
    /// @return false when there is none
    bool SplitOne(std::vector<std::string_view>& cells);

    std::size_t Position() const { return fAt; }           ///< in the chunk
    std::size_t Lines() const { return fLine; }            ///< that have ended
    std::size_t RecordLine() const { return fRecordLine; } ///< on which the last record has started
    /// What is wrong with the record that comes next; null for nothing.
    const char* Fault() const { return fFault; }

private:
    enum Sign : unsigned char { NONE, DELIMITER, LINE_END, QUOTE };

    bool SkipToRecord(bool& isEmptyLine);
    template <typename Keep>
    std::size_t SplitRecord(const Keep& keep);
    bool SplitCell(Cell& cell);
    bool SplitQuoted(Cell& cell);
    bool EndCell(std::size_t at);
    void CountLines(const Cell& cell);

    std::array<Sign, 256> fSigns{};
    std::size_t fColumns = 0;
    std::vector<int> fPlaces;
    char* fBytes = nullptr;
    std::size_t fAt = 0;
    std::size_t fEnd = 0;
    std::size_t fLine = 0;
    std::size_t fRecordLine = 0;
    bool fAfterCarriageReturn = false;
    bool fRecordEnds = false; ///< with the cell that was split last
    const char* fFault = nullptr;
};

} // namespace veltrane::host

#endif
