// Values of one type and their codes: a text is found by its bytes, whatever its length, and however many there are.
#include "kit/inputs/value_codes.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>

namespace {

using veltrane_kit::DataType;
using veltrane_kit::MakeText;
using veltrane_kit::TextCodes;
using veltrane_kit::ValueCodes;

/// Of few different bytes, so that texts differ in one place or in length alone.
std::string RandomText(std::mt19937& random) {
    static const std::string kBytes{'a', 'b', '\0', '\xC3'};
    std::string text(random() % 20, 'a');
    for (char& byte : text) {
        byte = random() % 4 == 0 ? kBytes[random() % kBytes.size()] : byte;
    }
    return text;
}

TEST(ValueCodes, OfTextsAreThoseOfTheirBytes) {
    std::mt19937 random(20267);
    for (int round = 0; round < 300; ++round) {
        ValueCodes codes(DataType::STRING);
        std::map<std::string, int> known;
        for (int i = round % 60; i > 0; --i) {
            const std::string text = RandomText(random);
            const int code = known.emplace(text, static_cast<int>(known.size())).first->second;
            ASSERT_EQ(codes.Add(MakeText(text)), code);
        }
        ASSERT_EQ(codes.Size(), static_cast<int>(known.size()));
        for (int i = 0; i < 100; ++i) {
            const std::string text = RandomText(random);
            const auto found = known.find(text);
            ASSERT_EQ(codes.FindText(text), found == known.end() ? ValueCodes::kUnknown : found->second);
        }
    }
}

TEST(ValueCodes, OfVeryManyTextsAreFoundToo) {
    ValueCodes codes(DataType::STRING);
    const int count = static_cast<int>(TextCodes::kMost) + 500;
    for (int i = 0; i < count; ++i) {
        ASSERT_EQ(codes.Add(MakeText("text " + std::to_string(i))), i);
    }
    EXPECT_EQ(codes.Size(), count);
    for (int i = 0; i < count; ++i) {
        ASSERT_EQ(codes.FindText("text " + std::to_string(i)), i);
        ASSERT_EQ(codes.Add(MakeText("text " + std::to_string(i))), i);
    }
    EXPECT_EQ(codes.FindText("text " + std::to_string(count)), ValueCodes::kUnknown);
    EXPECT_EQ(codes.FindText(""), ValueCodes::kUnknown);
}

} // namespace
