#include "blocks/chunk_reader.h"

#include "cases/csv_reader.h"
#include "files/failure.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>

namespace veltrane::host {
namespace {

/// So many are read for the header. What stands behind it makes the first chunk.
constexpr std::size_t kHeaderBytes = std::size_t{16} << 10;

constexpr std::size_t kMebibyte = std::size_t{1} << 20;
static_assert(CsvReader::kLongestRecord == 64 * kMebibyte, "the text says so");
constexpr const char* kTooLong = "a record is longer than 64 MiB; is a quote left open?";

bool IsLineEnd(char byte) {
    return byte == '\n' || byte == '\r';
}

/// Where the last line of some bytes ends; 0 for none.
std::size_t EndOfLastLine(const char* bytes, std::size_t size) {
    while (size > 0 && !IsLineEnd(bytes[size - 1])) {
        --size;
    }
    return size;
}

} // namespace

ChunkReader::ChunkReader(ByteSource& source, std::string name, char delimiter)
    : fSource(source), fName(std::move(name)), fSplitter(delimiter), fDelimiter(delimiter) {}

bool ChunkReader::ReadHeader(std::vector<std::string_view>& cells, std::size_t& line) {
    while (!IsAtEnd()) {
        ReadMore(kHeaderBytes);
        const std::size_t size = WholeSize();
        fHeader.Clear();
        fHeader.bytes.assign(fBytes.begin(), fBytes.begin() + static_cast<std::ptrdiff_t>(size));
        fHeader.bytes.push_back('\0');
        fHeader.size = size;
        fHeader.afterCarriageReturn = fAfterCarriageReturn;
        fSplitter.Begin(fHeader);
        const bool found = fSplitter.SplitOne(cells);
        line = fLine + fSplitter.RecordLine();
        if (fSplitter.Fault() != nullptr) {
            throw Failure(fmt::format("{}:{}: {}", fName, line, fSplitter.Fault()));
        }
        fLine += fSplitter.Lines();
        Drop(fSplitter.Position());
        if (found) {
            return true;
        }
        if (IsTooLong()) {
            throw Failure(fmt::format("{}:{}: {}", fName, fLine, kTooLong));
        }
    }
    return false;
}

bool ChunkReader::Read(Chunk& chunk, std::size_t size) {
    if (!HasRecords()) { // else the header has left some
        ReadMore(size);
    }
    Take(chunk, WholeSize());
    if (IsTooLong()) {
        chunk.fault = kTooLong;
        fEnded = true;
        fSize = 0;
    }
    chunk.isLast = IsAtEnd();
    return chunk.size > 0 || chunk.isLast;
}

/// Reads once, if there may be more. The first bytes are read apart: a byte order mark may stand there.
void ChunkReader::ReadMore(std::size_t size) {
    if (fEnded) {
        return;
    }
    const std::size_t room = fSize + std::max(size, kHeaderBytes);
    if (fBytes.size() < room) {
        fBytes.resize(std::max(room, fBytes.size() + fBytes.size() / 2));
    }
    char* const to = fBytes.data() + fSize;
    std::string_view read;
    if (fStarted) {
        read = {to, fSource.Read(to, size)};
        fEnded = read.empty();
    } else {
        fStarted = true;
        read = {to, ReadFirstBytes(fSource, to, size)};
        fEnded = read.empty();
        read = WithoutByteOrderMark(read, fName);
        std::memmove(to, read.data(), read.size());
    }
    fFirstLine.Note({to, read.size()});
    fSize += read.size();
    FindEnd();
}

/// Goes on to look for the ends of records, as far as there are bytes.
void ChunkReader::FindEnd() {
    while (fPassed < fSize && !fHasFault) {
        const std::size_t before = fPassed;
        if (fIsInQuotes) {
            PassQuoted();
        } else {
            PassUnquoted();
        }
        if (fPassed == before) {
            return;
        }
    }
}

/// Passes bytes that stand in no quotes, and a quote behind them.
void ChunkReader::PassUnquoted() {
    const char* const from = fBytes.data() + fPassed;
    const auto* quote = static_cast<const char*>(std::memchr(from, '"', fSize - fPassed));
    const std::size_t size = quote == nullptr ? fSize - fPassed : static_cast<std::size_t>(quote - from);
    if (const std::size_t end = EndOfLastLine(from, size); end > 0) {
        fRecordsEnd = fPassed + end;
    }
    fPassed += size;
    if (quote == nullptr) {
        return;
    }
    fHasQuotes = true;
    fHasFault = fPassed > 0 && quote[-1] != fDelimiter && !IsLineEnd(quote[-1]);
    fIsInQuotes = true;
    ++fPassed;
}

/// Passes bytes in quotes and the closing one. It takes the next byte to tell that from a doubled one.
void ChunkReader::PassQuoted() {
    const char* const from = fBytes.data() + fPassed;
    const auto* quote = static_cast<const char*>(std::memchr(from, '"', fSize - fPassed));
    fPassed = quote == nullptr ? fSize : static_cast<std::size_t>(quote - fBytes.data());
    if (quote == nullptr || fPassed + 1 == fSize) {
        return;
    }
    const bool isDoubled = quote[1] == '"';
    fIsInQuotes = isDoubled;
    fHasFault = !isDoubled && quote[1] != fDelimiter && !IsLineEnd(quote[1]);
    fPassed += isDoubled || fHasFault ? 2 : 1;
}

/// How many bytes can be taken. Where the text stops being CSV, all up to there: that ends the file.
std::size_t ChunkReader::WholeSize() const {
    return fHasFault ? fPassed : fEnded ? fSize : fRecordsEnd;
}

/// Whether the rest is the beginning of a record that is too long.
bool ChunkReader::IsTooLong() const {
    return !fEnded && fSize > CsvReader::kLongestRecord;
}

/// Moves the first bytes into a chunk.
void ChunkReader::Take(Chunk& chunk, std::size_t size) {
    if (chunk.bytes.size() <= size) {
        chunk.bytes.resize(size + 1);
    }
    std::copy_n(fBytes.begin(), size, chunk.bytes.begin());
    chunk.size = size;
    chunk.afterCarriageReturn = fAfterCarriageReturn;
    chunk.hasQuotes = fHasQuotes;
    Drop(size);
    if (fHasFault) {
        fEnded = true;
        fSize = 0;
    }
}

void ChunkReader::Drop(std::size_t size) {
    if (size > 0) {
        fAfterCarriageReturn = fBytes[size - 1] == '\r';
    }
    fSize -= size;
    std::memmove(fBytes.data(), fBytes.data() + size, fSize);
    fPassed -= std::min(fPassed, size);
    fRecordsEnd -= std::min(fRecordsEnd, size);
    fHasQuotes = fHasQuotes && std::memchr(fBytes.data(), '"', fPassed) != nullptr;
}

} // namespace veltrane::host
