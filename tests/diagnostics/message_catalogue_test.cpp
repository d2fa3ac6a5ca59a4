#include "support/folders.h"

#include <MCVeltrane_900/ErrorFormater.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace {

using MCVeltrane_900::gErrorFormater;

struct Row {
    int id;
    std::string pattern;
    int parameters = 0;
    /// The text with the parameters value0, value1 and so on.
    std::string formatted;
};

/// A copy of the catalogue that was made on its own, to hold the table against.
std::vector<Row> ReadExpected() {
    std::ifstream file(std::filesystem::path(veltrane::tests::TestsFolder()) / "diagnostics" / "messages.tsv");
    std::vector<Row> rows;
    std::string line;
    std::getline(file, line);
    while (std::getline(file, line)) {
        std::istringstream columns(line);
        Row row;
        std::string id;
        std::string parameters;
        std::getline(columns, id, '\t');
        std::getline(columns, row.pattern, '\t');
        std::getline(columns, parameters, '\t');
        std::getline(columns, row.formatted, '\t');
        row.id = std::stoi(id);
        row.parameters = std::stoi(parameters);
        rows.push_back(row);
    }
    EXPECT_EQ(rows.size(), 135U);
    return rows;
}

std::vector<Row> ReadTable() {
    return {
#define VELTRANE_MESSAGE(id, pattern) {id, pattern, 0, {}},
#include "../../src/diagnostics/messages.def"
#undef VELTRANE_MESSAGE
    };
}

TEST(MessageCatalogue, Has135Messages) {
    EXPECT_EQ(ReadTable().size(), 135U);
}

TEST(MessageCatalogue, MessagesStandInOrder) {
    const auto expected = ReadExpected();
    const auto table = ReadTable();
    ASSERT_EQ(table.size(), expected.size());
    for (std::size_t row = 0; row < expected.size(); ++row) {
        EXPECT_EQ(table[row].id, expected[row].id) << "row " << row;
        EXPECT_EQ(table[row].pattern, expected[row].pattern) << "row " << row;
    }
}

TEST(KeptMessages, Message260260StandsBetween260250And260251) {
    const auto table = ReadTable();
    const auto found = std::find_if(table.begin(), table.end(), [](const Row& row) { return row.id == 260260; });
    ASSERT_NE(found, table.end());
    EXPECT_EQ((found - 1)->id, 260250);
    EXPECT_EQ((found + 1)->id, 260251);
}

TEST(MessageCatalogue, EveryMessageIsLoadedWithItsPattern) {
    for (const Row& row : ReadExpected()) {
        EXPECT_EQ(gErrorFormater.Format(row.id, {}), row.pattern) << row.id;
    }
}

TEST(MessageCatalogue, EveryMessageHasItsParameters) {
    for (const Row& row : ReadExpected()) {
        EXPECT_EQ(gErrorFormater.GetParameterNumber(row.id), row.parameters) << row.id;
    }
}

TEST(MessageCatalogue, EveryMessageFormatsWithItsParameters) {
    for (const Row& row : ReadExpected()) {
        std::vector<std::string> parameters;
        for (int place = 0; place < row.parameters; ++place) {
            parameters.push_back("value" + std::to_string(place));
        }
        EXPECT_EQ(gErrorFormater.Format(row.id, parameters), row.formatted) << row.id;
    }
}

TEST(MessageCatalogue, IsLoadedBeforeAnythingRuns) {
    ScoreContext::MessageItem items[] = {{260101, const_cast<char*>("changed")}};
    EXPECT_FALSE(gErrorFormater.LoadMessages(1, items));
    EXPECT_EQ(gErrorFormater.Format(260101, {}), "Unexpected error.");
}

} // namespace
