#include "tools/parts/string_sink.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>

namespace veltrane::host {
namespace {

std::string OneCell(std::string_view text, char delimiter = ',') {
    StringSink sink;
    CsvWriter writer(sink, delimiter);
    writer.Text(text);
    writer.EndRow();
    writer.Flush();
    return sink.text;
}

TEST(CsvWriter, QuotesWhereItIsNeeded) {
    EXPECT_EQ(OneCell("plain text"), "plain text\n");
    EXPECT_EQ(OneCell(" blanks "), " blanks \n");
    EXPECT_EQ(OneCell("a,b"), "\"a,b\"\n");
    EXPECT_EQ(OneCell("say \"hi\""), "\"say \"\"hi\"\"\"\n");
    EXPECT_EQ(OneCell("two\nlines"), "\"two\nlines\"\n");
    EXPECT_EQ(OneCell("two\rlines"), "\"two\rlines\"\n");
    EXPECT_EQ(OneCell("a;b"), "a;b\n");
    EXPECT_EQ(OneCell("a;b", ';'), "\"a;b\"\n");
    EXPECT_EQ(OneCell("a,b", ';'), "a,b\n");
    EXPECT_EQ(OneCell("sch\xC3\xB6n"), "sch\xC3\xB6n\n");
}

TEST(CsvWriter, WritesAMissingValueAsAnEmptyCell) {
    StringSink sink;
    CsvWriter writer(sink, ',');
    writer.Empty();
    writer.Text("a");
    writer.Empty();
    writer.EndRow();
    writer.Empty();
    writer.Empty();
    writer.EndRow();
    writer.Flush();
    EXPECT_EQ(sink.text, ",a,\n,\n");
}

TEST(CsvWriter, WritesASingleEmptyCellQuoted) {
    StringSink sink;
    CsvWriter writer(sink, ',');
    writer.Empty();
    writer.EndRow();
    writer.Text("");
    writer.EndRow();
    writer.Text("x");
    writer.EndRow();
    writer.Flush();
    EXPECT_EQ(sink.text, "\"\"\n\"\"\nx\n");
}

TEST(CsvWriter, WritesNumbersInTheShortestForm) {
    StringSink sink;
    CsvWriter writer(sink, ',');
    for (const double number : {0.1, 1.0, -2.5, 1e100, 100000.0, 0.0, -0.0, 1.0 / 3}) {
        writer.Number(number);
    }
    writer.EndRow();
    writer.Flush();
    EXPECT_EQ(sink.text, "0.1,1,-2.5,1e+100,1e+05,0,-0,0.3333333333333333\n");
}

TEST(CsvWriter, WritesNumbersThatReadBackToTheSameDouble) {
    for (const double number :
         {0.1 + 0.2, std::nextafter(1.0, 2.0), std::numeric_limits<double>::max(),
          std::numeric_limits<double>::denorm_min(), -1.7976931348623155e308, 123456789.123456789}) {
        std::string text;
        AppendNumber(text, number);
        EXPECT_EQ(std::strtod(text.c_str(), nullptr), number) << text;
    }
}

TEST(CsvWriter, HandsOnWholeRowsOnly) {
    StringSink sink;
    CsvWriter writer(sink, ',');
    writer.Text("whole");
    writer.EndRow();
    writer.Text("begun");
    writer.Flush();
    EXPECT_EQ(sink.text, "whole\n");
    writer.EndRow();
    writer.Flush();
    EXPECT_EQ(sink.text, "whole\nbegun\n");
}

TEST(CsvWriter, GathersRowsBeforeItWrites) {
    StringSink sink;
    CsvWriter writer(sink, ',');
    for (int i = 0; i < 10'000; ++i) {
        writer.Text("0123456789");
        writer.EndRow();
    }
    EXPECT_EQ(sink.writes, 1);
    writer.Flush();
    EXPECT_EQ(sink.writes, 2);
    EXPECT_EQ(sink.text.size(), 110'000u);
}

} // namespace
} // namespace veltrane::host
