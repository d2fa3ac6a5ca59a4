// Lists of characters that are longer than the table of the first ones: what they give, and how often they are read.
#include "text/characters/reject_table.h"

#include <MCXML_900/KORDMBString.h>

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <string>

namespace {

using MCXML_900::KORDMBstrcspn_8;
using veltrane::text::LengthWithout;
using veltrane::text::TextUnit;

/// One byte a unit, and a count of the units that were read.
struct CountedBytes {
    std::size_t* reads;
    TextUnit operator()(std::string_view text) const {
        ++*reads;
        return {static_cast<unsigned char>(text.front()), 1, true};
    }
};

std::size_t Reads(const std::string& text, const std::string& reject, std::size_t expected) {
    std::size_t reads = 0;
    EXPECT_EQ(LengthWithout(text, reject, CountedBytes{&reads}), expected);
    return reads;
}

TEST(RejectTable, ReadsEachUnitOnce) {
    const std::string text(5000, 'a');
    EXPECT_EQ(Reads(text, "", 5000), 5000U);
    EXPECT_EQ(Reads(text, std::string(64, 'b'), 5000), 5064U);
    EXPECT_EQ(Reads(text, std::string(65, 'b'), 5000), 5065U);
    EXPECT_EQ(Reads(text, std::string(9000, 'b'), 5000), 14000U);
    EXPECT_EQ(Reads(text + "c", std::string(9000, 'b') + "c", 5000), 14002U);
}

TEST(RejectTable, ReadsTheFirstUnitsAloneWhenTheyDecide) {
    EXPECT_EQ(Reads("b", std::string(9000, 'b'), 0), 65U);
    EXPECT_EQ(Reads("", std::string(9000, 'b'), 0), 64U);
}

/// A character of two, three or four bytes.
std::string Character(unsigned int number) {
    const unsigned int code = number < 1000 ? 0x80 + number : number < 20000 ? 0x1000 + number : 0x10000 + number;
    const auto trail = [code](int shift) { return static_cast<char>(0x80 | (code >> shift & 0x3F)); };
    if (code < 0x800) {
        return {static_cast<char>(0xC0 | code >> 6), trail(0)};
    }
    if (code < 0x10000) {
        return {static_cast<char>(0xE0 | code >> 12), trail(6), trail(0)};
    }
    return {static_cast<char>(0xF0 | code >> 18), trail(12), trail(6), trail(0)};
}

TEST(RejectTable, LongListsGiveWhatAPlainSetGives) {
    std::mt19937 random(23);
    for (int round = 0; round < 300; ++round) {
        std::set<unsigned int> rejected;
        std::string reject;
        for (unsigned int i = 60 + random() % 300; i > 0; --i) {
            const unsigned int number = random() % 30000;
            rejected.insert(number);
            reject += Character(number);
        }
        std::string text;
        std::size_t expected = 0;
        bool isOver = false;
        for (int i = 0; i < 100; ++i) {
            const unsigned int number = random() % 30000;
            text += Character(number);
            isOver = isOver || rejected.contains(number);
            expected = isOver ? expected : text.size();
        }
        EXPECT_EQ(KORDMBstrcspn_8(text.c_str(), reject.c_str()), expected);
    }
}

TEST(RejectTable, VeryLongListOverAVeryLongText) {
    std::string reject;
    std::string text;
    for (unsigned int i = 0; i < 100000; ++i) {
        reject += Character(2 * (i % 10000));
        text += Character(2 * (i % 10000) + 1);
    }
    EXPECT_EQ(KORDMBstrcspn_8(text.c_str(), reject.c_str()), text.size());
    EXPECT_EQ(KORDMBstrcspn_8((text + Character(4)).c_str(), reject.c_str()), text.size());
}

} // namespace
