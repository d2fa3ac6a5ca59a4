#include "blocks/plain_number.h"
#include "cases/cell_parser.h"

#include <gtest/gtest.h>

#include <bit>
#include <random>

namespace veltrane::host {
namespace {

std::uint64_t Bits(double number) {
    return std::bit_cast<std::uint64_t>(number);
}

/// @return whether it was plain
bool ExpectTheSame(const std::string& text) {
    double plain = -1;
    double full = -1;
    const char* const problem = ReadNumber(text, full);
    if (!ReadPlainNumber(text, plain)) {
        EXPECT_EQ(plain, -1) << text;
        return false;
    }
    EXPECT_EQ(problem, nullptr) << text;
    EXPECT_EQ(Bits(plain), Bits(full)) << text;
    return true;
}

TEST(PlainNumber, ReadsWhatNearlyAllCellsHold) {
    for (const char* text : {"0", "-0", "+0", "5.1", "-3.25", "+.5", ".5", "5.", "007", "1234567890123456", "0.0000001",
                             "9007199254740992", "3.141592653589793"}) {
        EXPECT_TRUE(ExpectTheSame(text)) << text;
    }
}

TEST(PlainNumber, LeavesOthersAlone) {
    for (const char* text : {"", "+", "-", ".", "+-1", "--1", "1e5", "1 ", " 1", "0x1", "inf", "nan", "1,5", "1.2.3",
                             "abc", "9007199254740993", "12345678901234567890", "0.00000000000000000001"}) {
        EXPECT_FALSE(ExpectTheSame(text)) << text;
    }
}

TEST(PlainNumber, IsTheNumberOfTheFullReader) {
    const std::string_view kSigns = "0123456789012345678901234567890123456789..+-e ,";
    std::mt19937_64 random(3);
    int plain = 0;
    for (int round = 0; round < 50'000; ++round) {
        std::string text;
        const std::size_t whole = random() % 12;
        const std::size_t decimals = random() % 10;
        for (std::size_t digit = 0; digit < whole; ++digit) {
            text += static_cast<char>('0' + random() % 10);
        }
        if (round % 4 != 0) {
            text += '.';
            for (std::size_t digit = 0; digit < decimals; ++digit) {
                text += static_cast<char>('0' + random() % 10);
            }
        }
        if (round % 16 == 0) {
            text.insert(random() % (text.size() + 1), 1, kSigns[random() % kSigns.size()]);
        }
        plain += ExpectTheSame(text) ? 1 : 0;
    }
    EXPECT_GT(plain, 25'000);
}

} // namespace
} // namespace veltrane::host
