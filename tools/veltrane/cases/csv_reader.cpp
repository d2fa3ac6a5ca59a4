#include "cases/csv_reader.h"

#include "cases/csv_start.h"
#include "files/byte_stream.h"
#include "files/failure.h"

#include <fmt/format.h>

extern "C" {
#include <csv.h>
}

namespace veltrane::host {
namespace {

constexpr std::size_t kCellBlockSize = std::size_t{1} << 20;

/// No blank is special: the parser would drop those around a cell that is not quoted.
int NoBlank(unsigned char) {
    return 0;
}

} // namespace

/// The records of the chunk that was parsed last, and the beginning of one that the next chunk completes.
struct CsvReader::State {
    struct Record {
        std::size_t endCell; ///< the record's cells stand in front of this one
        std::size_t line;
    };

    csv_parser parser{};
    std::vector<char> chunk = std::vector<char>(kChunkSize);
    std::string text;                  ///< the cells' bytes, one behind the other
    std::vector<std::size_t> cellEnds; ///< where each cell ends in `text`
    std::vector<Record> records;
    std::size_t nextRecord = 0;
    std::size_t nextCell = 0;
    std::size_t columns = 0;    ///< of the first record, 0 before it
    std::size_t line = 1;       ///< the line of the byte that comes next
    std::size_t recordLine = 1; ///< the line on which the record under way has started
    bool afterCarriageReturn = false;
    bool started = false;
    bool ended = false;
    host::FirstLine firstLine;
    std::string malformed; ///< what is wrong behind the records; told when they have been given

    State(char delimiter) {
        csv_init(&parser, CSV_STRICT | CSV_STRICT_FINI | CSV_REPALL_NL);
        csv_set_delim(&parser, static_cast<unsigned char>(delimiter));
        csv_set_space_func(&parser, NoBlank);
        csv_set_blk_size(&parser, kCellBlockSize);
    }
    ~State() { csv_free(&parser); }

    std::size_t PendingCell() const { return records.empty() ? 0 : records.back().endCell; }
    std::size_t CellStart(std::size_t cell) const { return cell == 0 ? 0 : cellEnds[cell - 1]; }

    void AddCell(std::string_view bytes) {
        afterCarriageReturn = false;
        text.append(bytes);
        cellEnds.push_back(text.size());
        line += CountLineEnds(bytes);
    }

    /// A line ends; `terminator` is its character, or -1 at the end of the file.
    void EndLine(int terminator) {
        const bool empty = cellEnds.size() == PendingCell();
        if (terminator == '\n' && afterCarriageReturn && empty) { // the second half of CR LF
            afterCarriageReturn = false;
            return;
        }
        if (empty && columns == 1) {
            AddCell({});
        }
        if (cellEnds.size() > PendingCell()) {
            AddRecord();
        }
        afterCarriageReturn = terminator == '\r';
        recordLine = ++line;
    }

    void AddRecord() {
        if (columns == 0) {
            columns = cellEnds.size() - PendingCell();
        }
        records.push_back({cellEnds.size(), recordLine});
    }

    /// Drops the records that have been given; the beginning of the next one moves to the front.
    void DropRecords() {
        const std::size_t cell = PendingCell();
        const std::size_t start = CellStart(cell);
        text.erase(0, start);
        cellEnds.erase(cellEnds.begin(), cellEnds.begin() + static_cast<std::ptrdiff_t>(cell));
        for (std::size_t& end : cellEnds) {
            end -= start;
        }
        records.clear();
        nextRecord = nextCell = 0;
    }

    static std::size_t CountLineEnds(std::string_view bytes) {
        std::size_t count = 0;
        for (std::size_t at = 0; at < bytes.size(); ++at) {
            if (bytes[at] == '\n' || (bytes[at] == '\r' && !bytes.substr(at + 1).starts_with('\n'))) {
                ++count;
            }
        }
        return count;
    }

    static void OnCell(void* bytes, std::size_t size, void* self) noexcept {
        static_cast<State*>(self)->AddCell({static_cast<const char*>(bytes), size});
    }
    static void OnLineEnd(int terminator, void* self) noexcept { static_cast<State*>(self)->EndLine(terminator); }
};

CsvReader::CsvReader(ByteSource& source, std::string name, char delimiter)
    : fSource(source), fName(std::move(name)), fState(std::make_unique<State>(delimiter)) {}

CsvReader::~CsvReader() = default;

bool CsvReader::Next(CsvRow& row) {
    State& state = *fState;
    if (state.nextRecord == state.records.size() && !Fill()) {
        return false;
    }
    const State::Record& record = state.records[state.nextRecord++];
    row.line = record.line;
    row.cells.clear();
    std::size_t start = state.CellStart(state.nextCell);
    for (; state.nextCell < record.endCell; ++state.nextCell) {
        const std::size_t end = state.cellEnds[state.nextCell];
        row.cells.emplace_back(state.text.data() + start, end - start);
        start = end;
    }
    return true;
}

bool CsvReader::HasRecord() const {
    return fState->nextRecord < fState->records.size();
}

std::string_view CsvReader::FirstLine() const {
    return fState->firstLine.Text();
}

/// Parses chunks until there is a record; false when there is none any more.
bool CsvReader::Fill() {
    State& state = *fState;
    state.DropRecords();
    while (state.records.empty()) {
        if (!state.malformed.empty()) {
            throw Failure(state.malformed);
        }
        if (state.ended) {
            return false;
        }
        if (!state.started) {
            ReadStart();
            continue;
        }
        const std::size_t size = fSource.Read(state.chunk.data(), state.chunk.size());
        if (size == 0) {
            Finish();
        } else {
            Parse({state.chunk.data(), size});
        }
    }
    return true;
}

/// Reads the first bytes apart: a byte order mark may stand there.
void CsvReader::ReadStart() {
    State& state = *fState;
    state.started = true;
    const std::size_t size = ReadFirstBytes(fSource, state.chunk.data(), state.chunk.size());
    Parse(WithoutByteOrderMark({state.chunk.data(), size}, fName));
}

void CsvReader::Parse(std::string_view bytes) {
    State& state = *fState;
    state.firstLine.Note(bytes);
    const std::size_t parsed =
        csv_parse(&state.parser, bytes.data(), bytes.size(), State::OnCell, State::OnLineEnd, &state);
    if (parsed != bytes.size()) {
        NoteMalformed();
    } else if (state.text.size() - state.CellStart(state.PendingCell()) + state.parser.entry_pos > kLongestRecord) {
        state.malformed = fmt::format("{}:{}: a record is longer than {} MiB; is a quote left open?", fName,
                                      state.recordLine, kLongestRecord >> 20);
    }
}

void CsvReader::Finish() {
    State& state = *fState;
    state.ended = true;
    if (csv_fini(&state.parser, State::OnCell, State::OnLineEnd, &state) != 0) {
        state.malformed = fmt::format("{}:{}: a quote is not closed", fName, state.recordLine);
    }
}

void CsvReader::NoteMalformed() {
    State& state = *fState;
    const int error = csv_error(&state.parser);
    const char* text = csv_strerror(error);
    if (error == CSV_EPARSE) {
        text = state.parser.quoted ? "text behind a closing quote" : "a quote inside a cell that is not quoted";
    }
    state.malformed = fmt::format("{}:{}: {}", fName, state.recordLine, text);
}

} // namespace veltrane::host
