// Words of eight bytes do what bytes do, at every length and wherever in memory a text begins.
#include "kit/functions/texts/bytes.h"
#include "kit/functions/texts/utf8.h"
#include "models/expressions/random_expressions.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace veltrane_kit::standard;
using veltrane::tests::Below;
using veltrane::tests::Random;

std::string RandomBytes(Random& random, std::size_t size, bool isAscii) {
    std::string bytes(size, '\0');
    for (char& byte : bytes) {
        byte = static_cast<char>(Below(random, isAscii ? 0x80 : 0x100));
    }
    return bytes;
}

/// Of exactly its bytes, so that the address sanitizer sees one beside them.
std::vector<char> Exactly(const std::string& text) {
    return {text.begin(), text.end()};
}

std::string_view ViewOf(const std::vector<char>& bytes) {
    return bytes.empty() ? std::string_view("") : std::string_view(bytes.data(), bytes.size());
}

TEST(TextBytes, AreTurnedAndCopiedAsOneByOne) {
    Random random(20271);
    for (std::size_t size = 0; size <= 130; ++size) {
        for (int round = 0; round < 40; ++round) {
            const std::string text = RandomBytes(random, size, round % 4 != 0);
            const std::vector<char> bytes = Exactly(text);
            std::string expected = text;
            TurnLetters(expected.data(), size, 'a', 'A');
            std::vector<char> room(size);
            char none = 0;
            char* const to = size == 0 ? &none : room.data();
            EXPECT_EQ(TurnText<'a'>(ViewOf(bytes), to), IsAscii(text));
            EXPECT_EQ(IsAsciiText(ViewOf(bytes)), IsAscii(text));
            if (IsAscii(text)) {
                ASSERT_EQ(ViewOf(room), expected) << size;
                TurnText<'A'>(ViewOf(bytes), to);
                expected = text;
                TurnLetters(expected.data(), size, 'A', 'a');
                ASSERT_EQ(ViewOf(room), expected) << size;
            }
            EXPECT_EQ(CopyText(ViewOf(bytes), to), to + size);
            ASSERT_EQ(ViewOf(room), text) << size;
        }
    }
}

TEST(TextBytes, AreInTheOrderOfBytes) {
    Random random(20272);
    const auto signOf = [](int order) { return order < 0 ? -1 : order > 0 ? 1 : 0; };
    for (int round = 0; round < 20000; ++round) {
        std::string left = RandomBytes(random, static_cast<std::size_t>(Below(random, 20)), false);
        std::string right = left.substr(0, static_cast<std::size_t>(Below(random, 20)));
        right += RandomBytes(random, static_cast<std::size_t>(Below(random, 3)), false);
        const std::vector<char> first = Exactly(left);
        const std::vector<char> second = Exactly(right);
        ASSERT_EQ(signOf(CompareTexts(ViewOf(first), ViewOf(second))), signOf(left.compare(right)));
        ASSERT_EQ(signOf(CompareTexts(ViewOf(second), ViewOf(first))), signOf(right.compare(left)));
    }
}

} // namespace
