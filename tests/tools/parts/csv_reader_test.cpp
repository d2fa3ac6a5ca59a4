#include "cases/csv_reader.h"
#include "files/failure.h"
#include "support/rows.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace veltrane::host {
namespace {

/// Gives a text a few bytes at a time, as a slow pipe does.
class TextSource : public ByteSource {
public:
    explicit TextSource(std::string text, std::size_t step = 1 << 20) : fText(std::move(text)), fStep(step) {}

    std::size_t Read(char* buffer, std::size_t size) override {
        const std::size_t count = std::min({size, fStep, fText.size() - fAt});
        std::memcpy(buffer, fText.data() + fAt, count);
        fAt += count;
        return count;
    }

private:
    std::string fText;
    std::size_t fStep;
    std::size_t fAt = 0;
};

using Rows = std::vector<std::vector<std::string>>;

struct ReadResult {
    Rows rows;
    std::vector<std::size_t> lines;
    std::string failure;
};

ReadResult ReadAll(const std::string& text, std::size_t step, char delimiter = ',') {
    TextSource source(text, step);
    CsvReader reader(source, "f.csv", delimiter);
    ReadResult result;
    CsvRow row;
    try {
        while (reader.Next(row)) {
            result.rows.emplace_back(row.cells.begin(), row.cells.end());
            result.lines.push_back(row.line);
        }
    } catch (const Failure& failure) {
        result.failure = failure.what();
    }
    return result;
}

struct ReaderCase {
    const char* name;
    std::string text;
    Rows rows;
    std::vector<std::size_t> lines;
    std::string failure = {};
};

void PrintTo(const ReaderCase& c, std::ostream* out) {
    *out << c.name;
}

class CsvReaderRows : public testing::TestWithParam<ReaderCase> {};

TEST_P(CsvReaderRows, AreTheSameInOnePieceAndByteByByte) {
    const ReaderCase& c = GetParam();
    for (const std::size_t step : {std::size_t{1}, std::size_t{2}, std::size_t{1} << 20}) {
        const ReadResult result = ReadAll(c.text, step);
        EXPECT_EQ(result.rows, c.rows) << "read " << step << " bytes at a time";
        EXPECT_EQ(result.lines, c.lines) << "read " << step << " bytes at a time";
        EXPECT_EQ(result.failure, c.failure) << "read " << step << " bytes at a time";
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, CsvReaderRows,
    testing::Values(
        ReaderCase{"Empty", "", {}, {}}, ReaderCase{"OnlyLineEnds", "\n\r\n\n", {}, {}},
        ReaderCase{"HeaderOnly", "a,b\n", {{"a", "b"}}, {1}},
        ReaderCase{"HeaderOnlyWithoutLineEnd", "a,b", {{"a", "b"}}, {1}},
        ReaderCase{"LineFeed", "a,b\n1,2\n3,4\n", {{"a", "b"}, {"1", "2"}, {"3", "4"}}, {1, 2, 3}},
        ReaderCase{"CarriageReturnLineFeed", "a,b\r\n1,2\r\n3,4\r\n", {{"a", "b"}, {"1", "2"}, {"3", "4"}}, {1, 2, 3}},
        ReaderCase{"CarriageReturn", "a,b\r1,2\r3,4", {{"a", "b"}, {"1", "2"}, {"3", "4"}}, {1, 2, 3}},
        ReaderCase{"NoLastLineEnd", "a,b\n1,2", {{"a", "b"}, {"1", "2"}}, {1, 2}},
        ReaderCase{"LastCellEmptyWithoutLineEnd", "a,b\n1,", {{"a", "b"}, {"1", ""}}, {1, 2}},
        ReaderCase{"EmptyCells", "a,b,c\n,,\n", {{"a", "b", "c"}, {"", "", ""}}, {1, 2}},
        ReaderCase{"QuotedEmptyCell", "a,b\n\"\",\"\"\n", {{"a", "b"}, {"", ""}}, {1, 2}},
        ReaderCase{"Quotes", "a\n\"say \"\"hi\"\"\"\n\"x,y\"\n", {{"a"}, {"say \"hi\""}, {"x,y"}}, {1, 2, 3}},
        ReaderCase{"BlanksBelongToTheCell", "a,b\n  x , \t\n", {{"a", "b"}, {"  x ", " \t"}}, {1, 2}},
        ReaderCase{"QuotedLineEndsCount",
                   "a,b\n\"1\n2\r\n3\r4\",x\ny,z\n",
                   {{"a", "b"}, {"1\n2\r\n3\r4", "x"}, {"y", "z"}},
                   {1, 2, 6}},
        ReaderCase{"EmptyLinesOfAWideFileAreSkipped",
                   "\na,b\n\n1,2\r\n\r\n3,4\n\n",
                   {{"a", "b"}, {"1", "2"}, {"3", "4"}},
                   {2, 4, 6}},
        ReaderCase{
            "EmptyLinesOfOneColumnAreCases", "a\n1\n\n2\r\n\r\n", {{"a"}, {"1"}, {""}, {"2"}, {""}}, {1, 2, 3, 4, 5}},
        ReaderCase{"RaggedRowsAreGivenAsTheyAre", "a,b\n1\n1,2,3\n", {{"a", "b"}, {"1"}, {"1", "2", "3"}}, {1, 2, 3}},
        ReaderCase{"ByteOrderMarkIsDropped", "\uFEFFa,b\n1,2\n", {{"a", "b"}, {"1", "2"}}, {1, 2}},
        ReaderCase{"ByteOrderMarkInFrontOfAQuote", "\xEF\xBB\xBF\"a\",b\n", {{"a", "b"}}, {1}},
        ReaderCase{"ByteOrderMarkAlone", "\xEF\xBB\xBF", {}, {}},
        ReaderCase{"NulIsAnOrdinaryByte", std::string("a\nx\0y\n", 6), {{"a"}, {std::string("x\0y", 3)}}, {1, 2}},
        ReaderCase{"Utf16IsRefused", "\377\376a", {}, {}, "f.csv: the file is UTF-16; convert it to UTF-8 first"},
        ReaderCase{
            "Utf16BigEndianIsRefused", "\376\377a", {}, {}, "f.csv: the file is UTF-16; convert it to UTF-8 first"},
        ReaderCase{"Utf16WithoutAMarkIsRefused",
                   std::string("a\0,\0b\0\n\0", 8),
                   {},
                   {},
                   "f.csv: the file is UTF-16; convert it to UTF-8 first"},
        ReaderCase{"Utf16BigEndianWithoutAMarkIsRefused",
                   std::string("\0a\0\n", 4),
                   {},
                   {},
                   "f.csv: the file is UTF-16; convert it to UTF-8 first"},
        ReaderCase{"TextBehindAQuote",
                   "a,b\n1,2\n\"x\"y,3\n4,5\n",
                   {{"a", "b"}, {"1", "2"}},
                   {1, 2},
                   "f.csv:3: text behind a closing quote"},
        ReaderCase{"QuoteInsideACell",
                   "a,b\n1,2\n5\" pipe,3\n",
                   {{"a", "b"}, {"1", "2"}},
                   {1, 2},
                   "f.csv:3: a quote inside a cell that is not quoted"},
        ReaderCase{"QuoteLeftOpen",
                   "a,b\n1,2\n3,\"x\n4,5\n",
                   {{"a", "b"}, {"1", "2"}},
                   {1, 2},
                   "f.csv:3: a quote is not closed"}),
    veltrane::tests::NameOfRow());

TEST(CsvReader, TakesAnotherDelimiter) {
    EXPECT_EQ(ReadAll("a;b\n1,5;2\n", 1, ';').rows, (Rows{{"a", "b"}, {"1,5", "2"}}));
    EXPECT_EQ(ReadAll("a\tb\n\tx \n", 1, '\t').rows, (Rows{{"a", "b"}, {"", "x "}}));
    EXPECT_EQ(ReadAll("a b\n1  \n", 1, ' ').rows, (Rows{{"a", "b"}, {"1", "", ""}}));
}

TEST(CsvReader, GivesVeryLongCellsWhole) {
    const std::string plain(3 << 20, 'x');
    const std::string lines(1 << 20, '\n');
    const ReadResult result = ReadAll("a,b\n" + plain + ",\"" + lines + "\"\n1,2\n", 100'000);
    ASSERT_EQ(result.rows.size(), 3u);
    EXPECT_TRUE(result.rows[1][0] == plain);
    EXPECT_TRUE(result.rows[1][1] == lines);
    EXPECT_EQ(result.lines[2], 3u + (1 << 20));
    EXPECT_EQ(result.failure, "");
}

TEST(CsvReader, RefusesARecordThatIsTooLong) {
    const std::string open = "a,b\n1,\"" + std::string(CsvReader::kLongestRecord + 1, 'x');
    EXPECT_EQ(ReadAll(open, 1 << 20).failure, "f.csv:2: a record is longer than 64 MiB; is a quote left open?");
    const std::string wide = "a,b\n" + std::string(CsvReader::kLongestRecord / 2, 'x') + "," +
                             std::string(CsvReader::kLongestRecord / 2 + 1, 'y');
    EXPECT_EQ(ReadAll(wide, 1 << 20).failure, "f.csv:2: a record is longer than 64 MiB; is a quote left open?");
}

TEST(CsvReader, GivesManyRowsOverManyChunks) {
    std::string text = "n\n";
    for (int i = 0; i < 200'000; ++i) {
        text += std::to_string(i) + "\n";
    }
    TextSource source(text, 70'001);
    CsvReader reader(source, "f.csv", ',');
    CsvRow row;
    ASSERT_TRUE(reader.Next(row));
    for (int i = 0; i < 200'000; ++i) {
        ASSERT_TRUE(reader.Next(row));
        ASSERT_EQ(row.cells.size(), 1u);
        ASSERT_EQ(row.cells[0], std::to_string(i));
        ASSERT_EQ(row.line, static_cast<std::size_t>(i) + 2);
    }
    EXPECT_FALSE(reader.Next(row));
    EXPECT_FALSE(reader.Next(row));
}

TEST(CsvReader, KnowsWhetherARecordWaits) {
    TextSource source("a\n1\n2", 2);
    CsvReader reader(source, "f.csv", ',');
    CsvRow row;
    EXPECT_FALSE(reader.HasRecord());
    ASSERT_TRUE(reader.Next(row));
    TextSource whole("a\n1\n2\n");
    CsvReader other(whole, "f.csv", ',');
    ASSERT_TRUE(other.Next(row));
    EXPECT_TRUE(other.HasRecord());
    ASSERT_TRUE(other.Next(row));
    ASSERT_TRUE(other.Next(row));
    EXPECT_FALSE(other.HasRecord());
}

TEST(CsvReaderTest, KeepsTheFirstLineOfWhatIsNoCsv) {
    TextSource source("\"a\";\"b\"\n1;2\n");
    CsvReader reader(source, "f.csv", ',');
    CsvRow row;
    EXPECT_THROW(reader.Next(row), Failure);
    EXPECT_EQ(reader.FirstLine(), "\"a\";\"b\"");
}

TEST(CsvReaderTest, KeepsTheFirstLineAsItStands) {
    const std::string longest(std::size_t{64} << 10, 'a');
    const std::pair<std::string, std::string> cases[] = {
        {"a; b ;c\r\n1;2;3\r\n", "a; b ;c"}, {"\xEF\xBB\xBF\n\r\nab\n", "ab"}, {"a", "a"}, {"", ""},
        {"\"a,b\",c\n", "\"a,b\",c"},        {longest + "b\nc\n", longest},
    };
    for (const auto& [text, line] : cases) {
        for (const std::size_t step : {1, 7, 1 << 20}) {
            TextSource source(text, step);
            CsvReader reader(source, "f.csv", ',');
            CsvRow row;
            reader.Next(row);
            EXPECT_EQ(reader.FirstLine(), line) << "by " << step;
        }
    }
}

} // namespace
} // namespace veltrane::host
