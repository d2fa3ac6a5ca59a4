#include "blocks/record_splitter.h"

#include <algorithm>
#include <cstring>

namespace veltrane::host {
namespace {

constexpr const char* kQuoteInside = "a quote inside a cell that is not quoted";
constexpr const char* kTextBehind = "text behind a closing quote";
constexpr const char* kNotClosed = "a quote is not closed";

} // namespace

RecordSplitter::RecordSplitter(char delimiter) {
    fSigns[static_cast<unsigned char>('\n')] = fSigns[static_cast<unsigned char>('\r')] = LINE_END;
    fSigns[static_cast<unsigned char>('"')] = QUOTE;
    fSigns[static_cast<unsigned char>(delimiter)] = DELIMITER;
}

void RecordSplitter::SetColumns(std::size_t columns, std::vector<int> places) {
    fColumns = columns;
    fPlaces = std::move(places);
}

/// A line end behind the last byte lets cells be scanned without a look at where the bytes end.
void RecordSplitter::Begin(Chunk& chunk) {
    fBytes = chunk.bytes.data();
    fBytes[chunk.size] = '\n';
    fAt = fLine = fRecordLine = 0;
    fEnd = chunk.size;
    fAfterCarriageReturn = chunk.afterCarriageReturn;
    fFault = nullptr;
}

bool RecordSplitter::Split(CellTable& table, std::size_t most, std::uint32_t first, std::vector<RowNote>& notes) {
    table.bytes = fBytes;
    table.lines.clear();
    table.cells.resize(most * table.width);
    bool isEmptyLine = false;
    while (table.Rows() < most) {
        if (!SkipToRecord(isEmptyLine)) {
            return false;
        }
        const std::size_t row = table.Rows();
        Cell* const cells = table.cells.data() + row * table.width;
        const std::size_t count = isEmptyLine ? 1 : SplitRecord([&](std::size_t column, const Cell& cell) {
            if (column < fColumns && fPlaces[column] >= 0) {
                cells[fPlaces[column]] = cell;
            }
        });
        if (fFault != nullptr) {
            return false;
        }
        if (count != fColumns || isEmptyLine) {
            for (std::size_t column = isEmptyLine ? 0 : count; column < fColumns; ++column) {
                if (fPlaces[column] >= 0) {
                    cells[fPlaces[column]] = Cell();
                }
            }
        }
        if (count != fColumns) {
            notes.push_back({RowNote::Kind::RAGGED, static_cast<std::uint32_t>(first + row), fRecordLine, count, {}});
        }
        table.lines.push_back(static_cast<std::uint32_t>(fRecordLine));
    }
    return true;
}

bool RecordSplitter::SplitOne(std::vector<std::string_view>& cells) {
    bool isEmptyLine = false;
    if (!SkipToRecord(isEmptyLine)) {
        return false;
    }
    cells.clear();
    if (isEmptyLine) {
        cells.emplace_back();
        return true;
    }
    SplitRecord([&](std::size_t, const Cell& cell) { cells.emplace_back(fBytes + cell.start, cell.size); });
    return fFault == nullptr;
}

/// Passes the second half of a CR LF and empty lines. In a file of one column those are records of one empty cell.
/// @return false when the bytes are used up
bool RecordSplitter::SkipToRecord(bool& isEmptyLine) {
    isEmptyLine = false;
    while (fAt < fEnd && fFault == nullptr) {
        const char byte = fBytes[fAt];
        if (byte != '\n' && byte != '\r') {
            return true;
        }
        ++fAt;
        const bool isSecondHalf = byte == '\n' && fAfterCarriageReturn;
        fAfterCarriageReturn = byte == '\r';
        if (isSecondHalf) {
            continue;
        }
        fRecordLine = fLine++;
        if (fColumns == 1) {
            isEmptyLine = true;
            return true;
        }
    }
    return false;
}

/// @param keep takes the number of each cell and the cell
/// @return how many there are
template <typename Keep>
inline std::size_t RecordSplitter::SplitRecord(const Keep& keep) {
    fRecordLine = fLine;
    std::size_t count = 0;
    Cell cell;
    do {
        if (!SplitCell(cell)) {
            return count;
        }
        keep(count++, cell);
    } while (!fRecordEnds);
    return count;
}

/// @return false for a fault
inline bool RecordSplitter::SplitCell(Cell& cell) {
    std::size_t at = fAt;
    Sign sign;
    while ((sign = fSigns[static_cast<unsigned char>(fBytes[at])]) == NONE) {
        ++at;
    }
    if (sign == QUOTE) {
        if (at == fAt) {
            return SplitQuoted(cell);
        }
        fFault = kQuoteInside;
        return false;
    }
    cell.start = static_cast<std::uint32_t>(fAt);
    cell.size = static_cast<std::uint32_t>(at - fAt);
    return EndCell(at);
}

/// Passes what ends a cell: a delimiter, a line end or the end of the bytes.
inline bool RecordSplitter::EndCell(std::size_t at) {
    fRecordEnds = fBytes[at] == '\n' || fBytes[at] == '\r';
    if (fRecordEnds) {
        fAfterCarriageReturn = fBytes[at] == '\r';
        ++fLine;
    }
    fAt = std::min(at + 1, fEnd);
    return true;
}

bool RecordSplitter::SplitQuoted(Cell& cell) {
    char* const text = fBytes + fAt + 1;
    char* to = text;
    const char* from = text;
    const char* const end = fBytes + fEnd;
    for (;;) {
        const auto* quote = static_cast<const char*>(std::memchr(from, '"', static_cast<std::size_t>(end - from)));
        if (quote == nullptr) {
            fFault = kNotClosed;
            return false;
        }
        const bool isDoubled = quote + 1 < end && quote[1] == '"';
        const auto size = static_cast<std::size_t>(quote - from) + (isDoubled ? 1 : 0);
        if (to != from) {
            std::memmove(to, from, size);
        }
        to += size;
        from = quote + (isDoubled ? 2 : 1);
        if (!isDoubled) {
            break;
        }
    }
    cell.start = static_cast<std::uint32_t>(text - fBytes);
    cell.size = static_cast<std::uint32_t>(to - text);
    CountLines(cell);
    const auto behind = static_cast<std::size_t>(from - fBytes);
    const Sign sign = fSigns[static_cast<unsigned char>(fBytes[behind])];
    if (sign != DELIMITER && sign != LINE_END) {
        fFault = kTextBehind;
        return false;
    }
    return EndCell(behind);
}

/// A CR LF is one line end, also where the CR is the last byte of a cell: the LF behind it ends the record.
void RecordSplitter::CountLines(const Cell& cell) {
    const std::string_view text(fBytes + cell.start, cell.size);
    for (std::size_t at = text.find_first_of("\r\n"); at != text.npos; at = text.find_first_of("\r\n", at + 1)) {
        if (text[at] == '\n' || !text.substr(at + 1).starts_with('\n')) {
            ++fLine;
        }
    }
}

} // namespace veltrane::host
