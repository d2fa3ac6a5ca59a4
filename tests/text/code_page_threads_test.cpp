#include <MCXML_900/KORDMBConverter.h>
#include <MCXML_900/KORDMBString.h>
#include <MCXML_900/SystemEncoding.h>

#include <gtest/gtest.h>

#include <atomic>
#include <clocale>
#include <cstdlib>
#include <thread>
#include <vector>

namespace {

using namespace MCXML_900;

// The first use makes the default converter and what is read off it, in whichever thread it falls.
TEST(CodePageThreads, MayComeFirstAllAtOnce) {
    std::atomic<int> equal = 0;
    std::atomic<int> decoded = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < 100; ++round) {
                unsigned int value = 0;
                equal += KORDMBqstricmp_C("a\xC3\x84z", -1, "A\xC3\xA4Z", -1, nullptr);
                decoded += KORDMBU32Get_C(&value, "\xC3\x84", 0, -1);
                KORDMBstrcspn_C("ab\xC3\x84", "\xC3\x84");
                KORDMBIsLeadByte_C(0xC3);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    // The C locale's default converter reads UTF-8.
    EXPECT_EQ(equal, 800);
    EXPECT_EQ(decoded, 1600);
    EXPECT_EQ(KORDMBDefaultConverterID(), 1);
}

TEST(CodePageInTheCLocale, HasNoLeadBytesAndDecodesUtf8) {
    std::setlocale(LC_ALL, "C");
    EXPECT_FALSE(KORDMBIsLeadByte_C(0xC3));
    EXPECT_EQ(KORDMBmbclen_C("\xC3\x84"), 1);
    unsigned int value = 0;
    EXPECT_EQ(KORDMBU32Get_C(&value, "\xC3\x84", 0, -1), 2);
    EXPECT_EQ(value, 0xC4U);
}

// The locale is moved once in a process.
TEST(CodePageInTheCLocaleOwnProcess, HasTheLeadBytesOfTheLocaleThatItIsMovedTo) {
    std::setlocale(LC_ALL, "C");
    EXPECT_FALSE(KORDMBIsLeadByte_C(0xC3));
    EnableLocale();
    EXPECT_STRNE(std::setlocale(LC_ALL, nullptr), "C");
    const bool utf8 = MB_CUR_MAX > 1; // en_US by its bare name has single bytes
    EXPECT_EQ(KORDMBIsLeadByte_C(0xC3), utf8);
    EXPECT_EQ(KORDMBmbclen_C("\xC3\x84"), utf8 ? 2 : 1);
    EXPECT_FALSE(KORDMBIsLeadByte_C('a'));
}

} // namespace
