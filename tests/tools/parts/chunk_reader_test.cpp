#include "blocks/chunk_reader.h"
#include "cases/csv_reader.h"
#include "files/failure.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <numeric>
#include <random>

namespace veltrane::host {
namespace {

/// Gives a text in pieces of at most so many bytes, each of another length.
class PieceSource : public ByteSource {
public:
    PieceSource(const std::string& text, std::size_t most) : fText(text), fMost(most) {}

    std::size_t Read(char* buffer, std::size_t size) override {
        const std::size_t count = std::min({size, 1 + fRandom() % fMost, fText.size() - fAt});
        std::memcpy(buffer, fText.data() + fAt, count);
        fAt += count;
        return count;
    }

private:
    const std::string& fText;
    std::size_t fMost;
    std::mt19937 fRandom{11};
    std::size_t fAt = 0;
};

/// All that is read of a text, a record a line: its own line, its cells, the number of its cells.
struct Read {
    std::string records;
    std::string failure;
    std::string firstLine;
    bool operator==(const Read&) const = default;
};

void PrintTo(const Read& read, std::ostream* out) {
    *out << "first line: " << read.firstLine << "\nrecords:\n" << read.records << "failure: " << read.failure << "\n";
}

template <typename Cells>
std::string RecordText(std::size_t line, std::size_t count, std::size_t columns, const Cells& cells) {
    std::string text = std::to_string(line) + " (" + std::to_string(count) + ")";
    for (std::size_t column = 0; column < columns; ++column) {
        text += "|" + (column < count ? std::string(cells(column)) : std::string());
    }
    return text + "|\n";
}

Read ReadRecords(const std::string& text, std::size_t most) {
    PieceSource source(text, most);
    CsvReader reader(source, "f.csv", ',');
    Read read;
    CsvRow row;
    std::size_t columns = 0;
    try {
        while (reader.Next(row)) {
            columns = columns == 0 ? row.cells.size() : columns;
            read.records += RecordText(row.line, row.cells.size(), columns, [&](auto at) { return row.cells[at]; });
            read.firstLine = reader.FirstLine();
        }
    } catch (const Failure& failure) {
        read.failure = failure.what();
    }
    return read;
}

void SplitChunk(Chunk& chunk, RecordSplitter& splitter, std::size_t columns, std::size_t line, Read& read) {
    CellTable table;
    table.width = columns;
    splitter.Begin(chunk);
    for (bool more = true; more;) {
        std::vector<RowNote> notes;
        more = splitter.Split(table, 3, 0, notes);
        for (std::size_t row = 0; row < table.Rows(); ++row) {
            const auto note = std::find_if(notes.begin(), notes.end(), [&](const RowNote& n) { return n.row == row; });
            const std::size_t count = note == notes.end() ? columns : note->count;
            read.records +=
                RecordText(line + table.lines[row], count, columns, [&](auto column) { return table.At(row, column); });
        }
    }
}

Read ReadChunks(const std::string& text, std::size_t most) {
    PieceSource source(text, most);
    ChunkReader reader(source, "f.csv", ',');
    Read read;
    std::vector<std::string_view> header;
    std::size_t line = 0;
    try {
        if (!reader.ReadHeader(header, line)) {
            return read;
        }
        read.firstLine = reader.FirstLine();
        const std::size_t columns = header.size();
        read.records += RecordText(line, columns, columns, [&](auto at) { return header[at]; });
        RecordSplitter splitter(',');
        std::vector<int> places(columns);
        std::iota(places.begin(), places.end(), 0);
        splitter.SetColumns(columns, places);
        line = reader.LineBehindHeader();
        Chunk chunk;
        while (!reader.IsAtEnd()) {
            chunk.Clear();
            if (!reader.Read(chunk, 1 << 16)) {
                continue;
            }
            SplitChunk(chunk, splitter, columns, line, read);
            if (splitter.Fault() != nullptr) {
                read.failure = "f.csv:" + std::to_string(line + splitter.RecordLine()) + ": " + splitter.Fault();
            }
            line += splitter.Lines();
        }
    } catch (const Failure& failure) {
        read.failure = failure.what();
    }
    return read;
}

TEST(ChunkReader, FindsTheRecordsOfTheCsvReader) {
    const char* const kPieces[] = {
        "a", "bc", ",", ",", "\n", "\r\n", "\r", "\"", "\"\"", "\"q\"", "\"x,\ny\r\n\r\"", "\xEF\xBB\xBF", " "};
    std::mt19937 random(5);
    int failures = 0;
    for (int round = 0; round < 4'000; ++round) {
        std::string text = "h" + std::string(random() % 3, ',') + (random() % 2 == 0 ? "\n" : "\r\n");
        if (round % 4 == 0) {
            text.clear();
        }
        for (std::size_t pieces = random() % 25; pieces > 0; --pieces) {
            text += kPieces[random() % std::size(kPieces)];
        }
        const Read expected = ReadRecords(text, 1 << 20);
        failures += expected.failure.empty() ? 0 : 1;
        for (const std::size_t most : {std::size_t{1}, std::size_t{3}, std::size_t{1} << 20}) {
            Read read = ReadChunks(text, most);
            ASSERT_EQ(read.records, expected.records) << "read by " << most << ":\n" << text;
            ASSERT_EQ(read.failure, expected.failure) << "read by " << most << ":\n" << text;
        }
    }
    EXPECT_GT(failures, 500);
}

TEST(ChunkReader, KeepsTheFirstLine) {
    for (const std::string text : {"a;b\n1\n", "\n\r\na,b\r\n1,2\n", "a"}) {
        EXPECT_EQ(ReadChunks(text, 1), ReadRecords(text, 1)) << text;
    }
}

TEST(ChunkReader, ReadsOnlyWhenItsRecordsAreTaken) {
    const std::string text = "a,b\n1,2\n3,4";
    PieceSource source(text, 1 << 20);
    ChunkReader reader(source, "f.csv", ',');
    std::vector<std::string_view> header;
    std::size_t line = 0;
    ASSERT_TRUE(reader.ReadHeader(header, line));
    EXPECT_TRUE(reader.HasRecords());
    Chunk chunk;
    ASSERT_TRUE(reader.Read(chunk, 1 << 16));
    EXPECT_EQ(std::string_view(chunk.bytes.data(), chunk.size), "1,2\n");
    EXPECT_FALSE(reader.HasRecords());
    EXPECT_FALSE(reader.IsAtEnd());
    chunk.Clear();
    ASSERT_TRUE(reader.Read(chunk, 1 << 16));
    EXPECT_TRUE(reader.IsAtEnd());
    EXPECT_EQ(std::string_view(chunk.bytes.data(), chunk.size), "3,4");
}

TEST(ChunkReader, RefusesARecordThatIsTooLong) {
    const std::string text = "a,b\n1,2\n\"" + std::string(CsvReader::kLongestRecord + (1 << 20), 'x');
    const Read read = ReadChunks(text, 1 << 20);
    EXPECT_EQ(read.records, "1 (2)|a|b|\n2 (2)|1|2|\n");
    PieceSource source(text, 1 << 20);
    ChunkReader reader(source, "f.csv", ',');
    std::vector<std::string_view> header;
    std::size_t line = 0;
    ASSERT_TRUE(reader.ReadHeader(header, line));
    Chunk chunk;
    while (!reader.IsAtEnd()) {
        chunk.Clear();
        reader.Read(chunk, 1 << 16);
    }
    EXPECT_STREQ(chunk.fault, "a record is longer than 64 MiB; is a quote left open?");
}

} // namespace
} // namespace veltrane::host
