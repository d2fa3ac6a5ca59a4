// Blocks of cases: their fields, single rows of them, texts from dictionaries and the room that expressions take.
#include "kit/columns/block.h"
#include "support/numbers.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace {

using namespace veltrane_kit;
using veltrane::tests::kNaN;

/// A block of three rows with a field of numbers, two of texts, one of which comes from a dictionary, and one that has
/// no column.
class Blocks : public testing::Test {
protected:
    enum Slot { NUMBER, TEXT, ENTRY, ABSENT, MIXED, COUNT };

    Blocks() {
        layout.fields = COUNT;
        block = std::make_unique<Block>(layout);
        block->Start(3);
        FieldColumn& number = block->Field(NUMBER);
        number.numbers = numbers.data();
        number.invalid = invalid.data();
        number.categories = categories.data();
        FieldColumn& text = block->Field(TEXT);
        text.type = DataType::STRING;
        text.texts = texts.data();
        FieldColumn& entry = block->Field(ENTRY);
        entry.type = DataType::STRING;
        entry.entries = entries.data();
        entry.table = &table;
        table = {dictionary.data(), nullptr, dictionary.size(), 7};
        mixed = {MakeText("a"), MakeNumber(2.0, DataType::INTEGER), Value()};
        block->Field(MIXED).values = mixed.data();
    }

    FrameLayout layout;
    std::unique_ptr<Block> block;
    std::array<double, 3> numbers{1.5, kNaN, 3.0};
    std::array<std::uint8_t, 3> invalid{0, 0, 1};
    std::array<std::int32_t, 3> categories{4, -1, 0};
    std::array<std::string_view, 3> texts{"red", {}, ""};
    std::array<std::string_view, 3> dictionary{"x", "y", {}};
    std::array<std::int32_t, 3> entries{1, 2, 0};
    std::array<Value, 3> mixed;
    EntryTable table;
};

TEST_F(Blocks, GiveNumbersOfARow) {
    EXPECT_EQ(block->ValueAt(NUMBER, 0).number, 1.5);
    EXPECT_EQ(block->ValueAt(NUMBER, 0).category, 4);
    EXPECT_FALSE(block->ValueAt(NUMBER, 0).isInvalid);
    EXPECT_TRUE(block->ValueAt(NUMBER, 1).isMissing);
    EXPECT_TRUE(block->ValueAt(NUMBER, 2).isInvalid);
}

TEST_F(Blocks, TellMissingTextsFromEmptyOnes) {
    EXPECT_EQ(block->ValueAt(TEXT, 0).text, "red");
    EXPECT_TRUE(block->ValueAt(TEXT, 1).isMissing);
    EXPECT_FALSE(block->ValueAt(TEXT, 2).isMissing);
    EXPECT_EQ(block->ValueAt(TEXT, 2).text, "");
}

TEST_F(Blocks, ShowEntriesOfDictionariesAsTexts) {
    EXPECT_EQ(block->ValueAt(ENTRY, 0).text, "y");
    EXPECT_TRUE(block->ValueAt(ENTRY, 1).isMissing);
    const std::string_view* const expanded = block->Texts(ENTRY);
    EXPECT_EQ(expanded[0], "y");
    EXPECT_EQ(expanded[1].data(), nullptr);
    EXPECT_EQ(expanded[2], "x");
    EXPECT_EQ(block->Field(ENTRY).texts, expanded);
    EXPECT_EQ(block->Texts(TEXT), texts.data());
    EXPECT_EQ(block->Texts(ABSENT), nullptr);
}

TEST_F(Blocks, LoadARowAsACase) {
    block->Case().Field(ABSENT).number = 9.0;
    const Frame& first = block->Row(0);
    EXPECT_EQ(first.Field(NUMBER).number, 1.5);
    EXPECT_EQ(first.Field(ENTRY).text, "y");
    EXPECT_EQ(first.Field(MIXED).text, "a");
    EXPECT_EQ(first.Field(ABSENT).number, 9.0) << "fields without a column are left alone";
    const Frame& second = block->Row(1, {MIXED});
    EXPECT_EQ(second.Field(MIXED).number, 2.0);
    EXPECT_EQ(second.Field(NUMBER).number, 1.5) << "only what is asked for";
}

TEST_F(Blocks, ForgetTheLastBlock) {
    block->Start(0);
    EXPECT_FALSE(block->Field(NUMBER).IsThere());
    EXPECT_EQ(block->Rows(), 0U);
    EXPECT_EQ(block->Count(), 0U);
}

TEST_F(Blocks, ChooseRowsForAWhile) {
    const std::array<std::uint32_t, 2> chosen{0, 2};
    {
        const Block::Choice choice(*block, chosen.data(), chosen.size());
        EXPECT_EQ(block->Count(), 2U);
        EXPECT_EQ(block->Chosen()[1], 2U);
    }
    EXPECT_EQ(block->Count(), 3U);
    EXPECT_EQ(block->Chosen(), nullptr);
}

TEST_F(Blocks, GiveTheSameRoomAgain) {
    double* first = nullptr;
    {
        const Block::Scratch scratch(*block);
        first = block->Numbers().Take();
        EXPECT_NE(block->Numbers().Take(), first);
    }
    EXPECT_EQ(block->Numbers().Take(), first);
}

TEST(TextArenas, KeepTextsUntilTheyAreForgotten) {
    TextArena arena;
    const std::string longText(100000, 'x');
    const std::string_view one = arena.Keep("one");
    const std::string_view many = arena.Keep(longText);
    const std::string_view empty = arena.Keep("");
    EXPECT_EQ(one, "one");
    EXPECT_EQ(many, longText);
    EXPECT_NE(empty.data(), nullptr) << "a null pointer would be a missing text";
    arena.Forget();
    EXPECT_EQ(arena.Keep("two").data(), one.data()) << "the room is used again";
    EXPECT_EQ(arena.Keep(longText).data(), many.data());
}

TEST(TextArenas, EndWithTheirBudget) {
    TextBudget budget(100000);
    TextArena one(&budget);
    TextArena other(&budget);
    EXPECT_EQ(one.Keep(std::string(60000, 'x')).size(), 60000U);
    EXPECT_EQ(other.Keep(std::string(60000, 'y')).data(), nullptr);
    EXPECT_EQ(other.Keep("short").size(), 5U) << "a smaller text has room";
    one.Forget();
    EXPECT_EQ(one.Keep(std::string(60000, 'z')).size(), 60000U) << "what was taken is used again";
}

} // namespace
