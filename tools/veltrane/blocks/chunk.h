#ifndef VELTRANE_HOST_CHUNK_H
#define VELTRANE_HOST_CHUNK_H

#include "blocks/text_buffer.h"

#include <cstddef>
#include <cstdint>
#include <exception>
#include <string_view>
#include <vector>

namespace veltrane::host {

/// Something to be told of a row: what could not be read of it, or that it has no results.
struct RowNote {
    enum class Kind : std::uint8_t { RAGGED, UNREADABLE, UNSCORED };

    Kind kind;
    std::uint32_t row;     ///< of the chunk
    std::size_t line;      ///< on which its record starts, counted from the start of the chunk
    std::size_t count = 0; ///< of cells, for a ragged row; else the column, or where the cells of an unscored row are
    std::string_view cell; ///< that can't be read
    const char* problem = nullptr; ///< with it
};

/// Whole records of a file of cases on their way: read by one thread, worked on by another, written by the first in
/// the order in which they were read.
struct Chunk {
    /// What was read, by ChunkReader. The cells that others refer to are in here, so it stays until all is written.
    std::vector<char> bytes; ///< with one to spare behind the last
    std::size_t size = 0;
    bool afterCarriageReturn = false; ///< whether the byte in front of the first one is one
    bool hasQuotes = false;
    bool isLast = false;         ///< whether the file ends here, or its text that is CSV
    std::uint64_t fileBytes = 0; ///< of the file, that had been read by then
    const char* fault = nullptr; ///< why the text behind these records is no CSV; null where it is

    /// What became of it, by ChunkWorker.
    TextBuffer results;                 ///< the rows of the output
    std::vector<std::uint32_t> rowEnds; ///< where each of them ends
    std::size_t lines = 0;              ///< that end in it
    std::vector<RowNote> notes;         ///< by rows, and of each in the order in which they are to be told
    std::vector<std::string_view>
        unscoredCells;          ///< of the columns that are fields, of one unscored row after the other
    std::size_t faultLine = 0;  ///< on which the record with a fault starts, counted from the start of the chunk
    std::exception_ptr failure; ///< what ended the work on it

    /// Makes it as good as new.
    void Clear() {
        size = 0;
        afterCarriageReturn = hasQuotes = isLast = false;
        results.Clear();
        rowEnds.clear();
        lines = faultLine = 0;
        notes.clear();
        unscoredCells.clear();
        fault = nullptr;
        failure = nullptr;
    }
};

} // namespace veltrane::host

#endif
