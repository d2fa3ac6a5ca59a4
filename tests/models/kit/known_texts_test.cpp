// Texts that are known by their place.
#include "kit/document/known_texts.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using veltrane_kit::KnownTexts;

TEST(KnownTexts, KnowNothingAtFirst) {
    const KnownTexts<int, 8> texts;
    EXPECT_EQ(texts.Find(u"a"), nullptr);
}

/// However many push each other out, one that is found has its own meaning.
TEST(KnownTexts, NeverGiveTheMeaningOfAnother) {
    const std::vector<XMLCh> place(1000);
    KnownTexts<std::size_t, 8> texts;
    std::size_t found = 0;
    for (std::size_t round = 0; round < 3; ++round) {
        for (std::size_t i = 0; i < place.size(); ++i) {
            EXPECT_EQ(texts.Keep(&place[i], i), i);
            for (std::size_t other = i < 20 ? 0 : i - 20; other <= i; ++other) {
                const std::size_t* const meaning = texts.Find(&place[other]);
                found += meaning != nullptr ? 1 : 0;
                ASSERT_TRUE(meaning == nullptr || *meaning == other);
            }
            ASSERT_NE(texts.Find(&place[i]), nullptr);
        }
    }
    EXPECT_GE(found, 3 * place.size());
}

TEST(KnownTexts, TakeANewMeaning) {
    const std::vector<XMLCh> place(1);
    KnownTexts<int, 8> texts;
    texts.Keep(place.data(), 1);
    texts.Keep(place.data(), 2);
    ASSERT_NE(texts.Find(place.data()), nullptr);
    EXPECT_EQ(*texts.Find(place.data()), 2);
}

} // namespace
