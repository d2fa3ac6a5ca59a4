#include "../../src/diagnostics/raise.h"
#include "support/faults/catalogue.h"

#include <MCVeltrane_900/ErrorFormater.h>
#include <MCVeltrane_900/Messages.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace {

using namespace MCVeltrane_900;
using namespace veltrane::tests;

struct Row {
    int id;
    std::string name;
    std::string pattern;
};

std::vector<Row> ReadTable() {
    return {
#define VELTRANE_MESSAGE(id, name, pattern) {id, #name, pattern},
#include <MCVeltrane_900/Messages.def>
#undef VELTRANE_MESSAGE
    };
}

/// The messages that the copy doesn't have stand behind its own.
TEST(MessageCatalogue, MessagesStandInOrder) {
    const auto& expected = CopyOfTheCatalogue();
    const auto table = ReadTable();
    ASSERT_GE(table.size(), expected.size());
    for (std::size_t row = 0; row < expected.size(); ++row) {
        EXPECT_EQ(table[row].id, expected[row].id) << "row " << row;
        EXPECT_EQ(table[row].name, expected[row].name) << "row " << row;
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
    for (const CataloguedMessage& row : CopyOfTheCatalogue()) {
        EXPECT_EQ(gErrorFormater.Format(row.id, {}), row.pattern) << row.id;
    }
}

TEST(MessageCatalogue, EveryMessageHasItsParameters) {
    for (const CataloguedMessage& row : CopyOfTheCatalogue()) {
        EXPECT_EQ(gErrorFormater.GetParameterNumber(row.id), static_cast<int>(row.parameters)) << row.id;
    }
}

TEST(MessageCatalogue, EveryNumberStandsOnce) {
    std::set<int> numbers;
    for (const Row& row : ReadTable()) {
        EXPECT_TRUE(numbers.insert(row.id).second) << row.id;
    }
}

/// What is checked where a message is raised is what the formater has places for.
TEST(MessageCatalogue, PlaceholdersAreCountedAsTheFormaterCountsThem) {
    for (const Row& row : ReadTable()) {
        const std::size_t places = CountPlaceholders(static_cast<Message>(row.id));
        EXPECT_EQ(static_cast<int>(places), gErrorFormater.GetParameterNumber(row.id)) << row.id;
    }
    EXPECT_EQ(CountPlaceholders(static_cast<Message>(1)), 0U);
    EXPECT_EQ(CountPlaceholders(Message::CONFLICTING_VALUES_IN), 6U);
    EXPECT_EQ(CountPlaceholders("{1} of {0, and {x} of {"), 2U);
}

template <Message kMessage, typename... Parameters>
concept CanBeRaised = requires(Parameters... parameters) { veltrane::diagnostics::Raise<kMessage>(parameters...); };

TEST(MessageCatalogue, MessageWithAnotherNumberOfParametersDoesNotCompile) {
    EXPECT_TRUE((CanBeRaised<Message::NO_ROOT>));
    EXPECT_FALSE((CanBeRaised<Message::NO_ROOT, const char*>));
    EXPECT_TRUE((CanBeRaised<Message::MISSING_NODE_IN, const char*, std::string>));
    EXPECT_FALSE((CanBeRaised<Message::MISSING_NODE_IN, const char*>));
    EXPECT_FALSE((CanBeRaised<Message::MISSING_NODE_IN, const char*, const char*, const char*>));
}

TEST(MessageCatalogue, EveryMessageFormatsWithItsParameters) {
    for (const CataloguedMessage& row : CopyOfTheCatalogue()) {
        std::vector<std::string> parameters;
        for (std::size_t place = 0; place < row.parameters; ++place) {
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
