#ifndef VELTRANE_HOST_CHUNK_READER_H
#define VELTRANE_HOST_CHUNK_READER_H

#include "blocks/chunk.h"
#include "blocks/record_splitter.h"
#include "cases/csv_start.h"
#include "files/byte_stream.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace veltrane::host {

/// Reads a file of cases in chunks of whole records, in a bounded amount of memory. What a record is, is said at
/// CsvReader; here only its end is looked for.
class ChunkReader {
public:
    /// @param source    borrowed
    /// @param name      the file's name, for messages
    /// @param delimiter the character between two cells
    ChunkReader(ByteSource& source, std::string name, char delimiter);

    /// Reads the header.
    /// @param cells stand until the next call of anything
    /// @param line  from 1, on which it starts
    /// @return false for a file without one
    /// @throws Failure for text that is no CSV
    bool ReadHeader(std::vector<std::string_view>& cells, std::size_t& line);

    /// The first line as it stands in the file, without its end, from the header on. Where that failed it is what had
    /// been read by then.
    std::string_view FirstLine() const { return fFirstLine.Text(); }

    /// Reads once, and then takes all whole records that are there. A record that is too long is the chunk's fault.
    /// @param chunk cleared
    /// @param size  how many bytes to read
    /// @return whether there are any in the chunk, or it is the last one
    bool Read(Chunk& chunk, std::size_t size);

    /// Whether whole records are there already, so that the next `Read` takes these.
    bool HasRecords() const { return fRecordsEnd > 0 || fHasFault; }

    /// Whether there is nothing more to take.
    bool IsAtEnd() const { return fEnded && fSize == 0; }

    /// The line of the first byte behind the header.
    std::size_t LineBehindHeader() const { return fLine; }

private:
    void ReadMore(std::size_t size);
    void FindEnd();
    void PassUnquoted();
    void PassQuoted();
    std::size_t WholeSize() const;
    bool IsTooLong() const;
    void Take(Chunk& chunk, std::size_t size);
    void Drop(std::size_t size);

    ByteSource& fSource;
    std::string fName;
    RecordSplitter fSplitter;
    char fDelimiter;
    host::FirstLine fFirstLine;
    std::vector<char> fBytes; ///< read and not taken
    std::size_t fSize = 0;
    std::size_t fPassed = 0;     ///< of these, looked at
    std::size_t fRecordsEnd = 0; ///< and behind the last record that is whole
    bool fIsInQuotes = false;    ///< at `fPassed`
    bool fHasQuotes = false;
    bool fHasFault = false;            ///< whether a quote stands where none may
    bool fAfterCarriageReturn = false; ///< whether the last byte that was taken is one
    bool fStarted = false;
    bool fEnded = false; ///< whether the source isn't read any more
    std::size_t fLine = 1;
    Chunk fHeader;
};

} // namespace veltrane::host

#endif
