#ifndef VELTRANE_HOST_CSV_READER_H
#define VELTRANE_HOST_CSV_READER_H

#include "files/byte_stream.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace veltrane::host {

/// One record of a CSV file. The cells are views into the reader and stand until its next `Next`.
struct CsvRow {
    std::size_t line = 0; ///< the physical line, from 1, on which the record starts
    std::vector<std::string_view> cells;
};

/// Reads CSV as RFC 4180 has it, record by record, in a bounded amount of memory.
///
/// A line ends with LF, CR LF or CR, and the last one may go without. A UTF-8 byte order mark is dropped. Blanks around
/// a cell belong to it. An empty line is a record of one empty cell in a file of one column, and is skipped in a wider
/// one. The cells of a record are given as they are, however many there are.
class CsvReader {
public:
    /// A record longer than this is refused: a quote that is never closed makes one cell of the rest of the file.
    static constexpr std::size_t kLongestRecord = std::size_t{64} << 20;

    /// @param source    borrowed
    /// @param name      the file's name, for messages
    /// @param delimiter the character between two cells
    CsvReader(ByteSource& source, std::string name, char delimiter);
    ~CsvReader();
    CsvReader(const CsvReader&) = delete;
    CsvReader& operator=(const CsvReader&) = delete;

    /// Reads the next record into `row`; false at the end. Throws a `Failure` with the file's name and line for text
    /// that is no CSV; the records in front of it have been given by then.
    bool Next(CsvRow& row);

    /// The first line as it stands in the file, without its end, from the first `Next` on. Where that failed it is
    /// what had been read by then. A long line is cut.
    std::string_view FirstLine() const;

    /// Whether `Next` gives a record without reading from the source, which may take long where it is a pipe.
    bool HasRecord() const;

private:
    struct State;

    bool Fill();
    void ReadStart();
    void Parse(std::string_view bytes);
    void Finish();
    void NoteMalformed();

    ByteSource& fSource;
    std::string fName;
    std::unique_ptr<State> fState;
};

} // namespace veltrane::host

#endif
