// Texts that come again have the places that they had, and where nearly none does nobody looks.
#include "kit/columns/repeated_texts.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using veltrane_kit::RepeatedTexts;

TEST(RepeatedTexts, KeepTheirPlaces) {
    RepeatedTexts texts;
    ASSERT_TRUE(texts.Begin(10));
    const std::int32_t red = texts.Find("red");
    const std::int32_t green = texts.Find("green");
    EXPECT_NE(red, green);
    EXPECT_EQ(texts.Find(std::string("re") + "d"), red);
    EXPECT_EQ(texts.Find(""), texts.Find(""));
    const std::uint64_t round = texts.Round();
    ASSERT_TRUE(texts.Begin(10));
    EXPECT_EQ(texts.Round(), round);
    EXPECT_EQ(texts.Find("green"), green);
}

TEST(RepeatedTexts, AreForgottenWhenThereIsNoRoomForABlock) {
    RepeatedTexts texts;
    ASSERT_TRUE(texts.Begin(1000));
    const std::uint64_t round = texts.Round();
    for (int block = 0; block < 20; ++block) {
        for (int row = 0; row < 1000; ++row) {
            const std::int32_t place = texts.Find(std::to_string(block * 200 + row % 200));
            ASSERT_LT(place, static_cast<std::int32_t>(RepeatedTexts::kMost));
        }
        ASSERT_TRUE(texts.Begin(1000));
        EXPECT_EQ(texts.Round() > round, block >= 5) << block;
    }
}

/// @return how many of some blocks were looked at
int BlocksLookedAt(RepeatedTexts& texts, int blocks, int distinct) {
    int looked = 0;
    int next = 0;
    for (int block = 0; block < blocks; ++block) {
        if (texts.Begin(256)) {
            ++looked;
            for (int row = 0; row < 256; ++row) {
                texts.Find(std::to_string(next++ % distinct));
            }
        }
    }
    return looked;
}

TEST(RepeatedTexts, AreNotLookedForWhereNearlyAllAreNew) {
    RepeatedTexts few;
    EXPECT_EQ(BlocksLookedAt(few, 1000, 500), 1000);
    RepeatedTexts many;
    const int looked = BlocksLookedAt(many, 1000, 1 << 30);
    EXPECT_LT(looked, 60) << "it tries again from time to time";
    EXPECT_GT(looked, 16);
}

} // namespace
