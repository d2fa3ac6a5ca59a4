#include "files/encoding.h"
#include "run/progress_bar.h"
#include "run/report.h"
#include "run/table.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace veltrane::host {
namespace {

TEST(ProgressText, TellsShareRowsRateAndTimeLeft) {
    EXPECT_EQ(RenderProgress({1234567, 250, 1000, 2.0}, 100),
              "[##########                              ]  25%  1,234,567 rows  617,283 rows/s  0:06 left");
    EXPECT_EQ(RenderProgress({10, 1000, 1000, 1.0}, 60),
              "[######################] 100%  10 rows  10 rows/s  0:00 left");
}

TEST(ProgressText, DoesNotKnowTheTimeLeftAtTheStart) {
    EXPECT_EQ(RenderProgress({0, 0, 1000, 0.0}, 60), "[                        ]   0%  0 rows  0 rows/s  -:-- left");
}

TEST(ProgressText, CountsHours) {
    EXPECT_EQ(RenderProgress({1, 1, 10'000, 1.0}, 40), "  0%  1 rows  1 rows/s  2:46:39 left");
}

TEST(ProgressText, LeavesTheBarOutWhereThereIsNoRoom) {
    EXPECT_EQ(RenderProgress({10, 500, 1000, 1.0}, 35), " 50%  10 rows  10 rows/s  0:01 left");
    EXPECT_EQ(RenderProgress({10, 500, 1000, 1.0}, 12), " 50%  10 row");
    EXPECT_EQ(RenderProgress({10, 500, 1000, 1.0}, 0), "");
}

TEST(ProgressText, NeverPassesAHundred) {
    EXPECT_EQ(RenderProgress({10, 5000, 1000, 1.0}, 40), "100%  10 rows  10 rows/s  0:00 left");
    EXPECT_EQ(RenderProgress({0, 0, 0, 1.0}, 40), "100%  0 rows  0 rows/s  0:00 left");
}

TEST(EscapedText, StaysOnOneLine) {
    EXPECT_EQ(Escaped("plain \"text\""), "plain \"text\"");
    EXPECT_EQ(Escaped("a\nb\rc\td"), "a\\nb\\rc\\td");
    EXPECT_EQ(Escaped(std::string("\x1b[2J\0\x7f", 6)), "\\x1B[2J\\x00\\x7F");
    EXPECT_EQ(Escaped("sch\xC3\xB6n"), "sch\xC3\xB6n");
}

TEST(TextColumns, CountsWhatATerminalShows) {
    EXPECT_EQ(TextColumns(""), 0);
    EXPECT_EQ(TextColumns("abc"), 3);
    EXPECT_EQ(TextColumns("sch\xC3\xB6n"), 5);
    EXPECT_EQ(TextColumns("\xE6\x97\xA5\xE6\x9C\xAC"), 4); // two wide characters
    EXPECT_EQ(TextColumns("e\xCC\x81"), 1);                // a letter and a combining accent
    EXPECT_EQ(TextColumns("\xEF\xBC\xA1"), 2);             // a full-width letter
    EXPECT_EQ(TextColumns("\xEF\xBD\xB1"), 1);             // a half-width one
    EXPECT_EQ(TextColumns("a\u200Db"),
              2);                      // a joiner of no width
    EXPECT_EQ(TextColumns("\xFF"), 1); // no UTF-8
}

TEST(TableText, AlignsByTerminalColumns) {
    Table table({"name", "label"});
    table.AddRow({"a", "x"});
    table.AddRow({"\xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E", "Japanese"});
    table.AddRow({"e\xCC\x81t\xC3\xA9", ""});
    EXPECT_EQ(table.Text(), "name    label\n"
                            "------  --------\n"
                            "a       x\n"
                            "\xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E  Japanese\n"
                            "e\xCC\x81t\xC3\xA9\n");
}

TEST(TableText, ShowsHeadingsWithoutRows) {
    EXPECT_EQ(Table({"a", "bc"}).Text(), "a  bc\n-  --\n");
}

TEST(TableText, KeepsARowOnOneLine) {
    Table table({"a"});
    table.AddRow({"x\ny"});
    EXPECT_EQ(table.Text(), "a\n----\nx\\ny\n");
}

TEST(EncodingNames, AreChecked) {
    EXPECT_NO_THROW(Encoding("UTF-8"));
    EXPECT_NO_THROW(Encoding("CP1252"));
    EXPECT_NO_THROW(Encoding("ISO-8859-1"));
    EXPECT_NO_THROW(Encoding("GB18030"));
    EXPECT_THROW(Encoding("no-such-encoding"), std::invalid_argument);
    EXPECT_THROW(Encoding(""), std::invalid_argument);
    EXPECT_THROW(Encoding("UTF-16"), std::invalid_argument);
    EXPECT_THROW(Encoding("UTF-16LE"), std::invalid_argument);
    EXPECT_THROW(Encoding("IBM037"), std::invalid_argument);
}

TEST(EncodingText, GoesToUtf8AndBack) {
    const Encoding windows("CP1252");
    EXPECT_EQ(windows.ToUtf8("sch\xF6n \x80"), "sch\xC3\xB6n \xE2\x82\xAC");
    EXPECT_EQ(windows.FromUtf8("sch\xC3\xB6n \xE2\x82\xAC"), "sch\xF6n \x80");
    EXPECT_EQ(windows.FromUtf8(""), "");
    EXPECT_EQ(windows.ToUtf8(""), "");
    const Encoding utf8("UTF-8");
    EXPECT_EQ(utf8.ToUtf8("sch\xC3\xB6n"), "sch\xC3\xB6n");
    EXPECT_EQ(utf8.ToUtf8("\xFFx"), "\xEF\xBF\xBDx");
}

} // namespace
} // namespace veltrane::host
