#include "page.h"
#include "support/byte_text.h"

#include <MCXML_900/KORDMBString.h>

#include <climits>
#include <gtest/gtest.h>

#include <clocale>
#include <cstring>
#include <locale.h>
#include <thread>

namespace {

using namespace MCXML_900;
using namespace veltrane::tests;

unsigned int ByteAt(const std::string& text, std::size_t i) {
    return static_cast<unsigned char>(text[i]);
}

/// Tests that need a page whose characters have one or two bytes; the main function leaves them out elsewhere.
class DoubleByte : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(CurrentPage().IsDoubleByte());
        wide = Bytes(CurrentPage().wide);
        text = "a" + wide + wide + "b";
    }
    std::string wide; ///< one character; its trail byte is ASCII
    std::string text; ///< "a", twice the character, "b"
};

using KeptDoubleByteSearch = DoubleByte;

TEST_F(DoubleByte, StartOfATrailByteIsItsLead) {
    std::vector<int> starts;
    for (int pos = 0; pos < 8; ++pos) {
        starts.push_back(KORDMBFindStart_C(text.c_str(), pos));
    }
    EXPECT_EQ(starts, (std::vector<int>{0, 1, 1, 3, 3, 5, 6, 6}));
}

TEST_F(DoubleByte, StepsBackOverWholeCharacters) {
    const char* start = text.c_str();
    std::vector<std::ptrdiff_t> places;
    for (const char* at = start + text.size(); at != start;) {
        at = KORDMBAnsiPrev_C(start, at);
        places.push_back(at - start);
    }
    EXPECT_EQ(places, (std::vector<std::ptrdiff_t>{5, 3, 1, 0}));
}

TEST_F(DoubleByte, StepsBackThroughARunOfLeadBytes) {
    const std::string twin = Bytes(CurrentPage().twin);
    const std::string run = twin + twin + twin;
    EXPECT_EQ(KORDMBAnsiPrev_C(run.c_str(), run.c_str() + 6), run.c_str() + 4);
    EXPECT_EQ(KORDMBFindStart_C(run.c_str(), 3), 2);
    EXPECT_EQ(KORDMBFindStart_C(run.c_str(), 4), 4);
}

TEST_F(DoubleByte, CopyLeavesOutACharacterThatNCuts) {
    const std::string kept[] = {"", "a", "a", "a" + wide, "a" + wide, "a" + wide + wide, text, text};
    for (int n = 1; n < 8; ++n) {
        std::string target(static_cast<std::size_t>(n), 'x');
        std::string expected = kept[n];
        expected.resize(static_cast<std::size_t>(n), '\0');
        KORDMBstrncpy_C(target.data(), text.c_str(), n);
        EXPECT_EQ(Hexadecimal(target), Hexadecimal(expected)) << n;
    }
}

TEST_F(DoubleByte, SearchFindsNoTrailByte) {
    const char* s = text.c_str();
    EXPECT_EQ(KORDMBstrchr_C(s, ByteAt(wide, 1)), nullptr);
    EXPECT_EQ(KORDMBstrrchr_C(s, ByteAt(wide, 1)), nullptr);
    EXPECT_EQ(KORDMBstrchr_C((text + wide[1]).c_str(), ByteAt(wide, 1)) != nullptr, true);
    EXPECT_EQ(KORDMBstrchr_C(s, 'b'), s + 5);
    EXPECT_EQ(KORDMBstrrchr_C(s, 'b'), s + 5);
}

// A search looks at one byte of a character, the first, and goes on right behind it.
TEST_F(KeptDoubleByteSearch, LooksForTheLowByteAndTakesALeadForIt) {
    const char* s = text.c_str();
    EXPECT_EQ(KORDMBstrchr_C(s, ByteAt(wide, 0)), s + 1);
    EXPECT_EQ(KORDMBstrchr_C(s, ByteAt(wide, 0) << 8 | ByteAt(wide, 1)), nullptr);
    EXPECT_EQ(KORDMBstrchr_C(s, 0x6100 | 'b'), s + 5);
}

TEST_F(KeptDoubleByteSearch, GoesOnBehindTheByteItFound) {
    const std::string twin = Bytes(CurrentPage().twin);
    EXPECT_EQ(KORDMBstrrchr_C(twin.c_str(), ByteAt(twin, 0)), twin.c_str() + 1);
}

TEST_F(DoubleByte, SpanEndsAtACharacterAndNotAtItsTrailByte) {
    EXPECT_EQ(KORDMBstrcspn_C(text.c_str(), std::string(1, wide[1]).c_str()), 6U);
    EXPECT_EQ(KORDMBstrcspn_C(text.c_str(), wide.c_str()), 1U);
    EXPECT_EQ(KORDMBstrcspn_C(text.c_str(), ("xy" + wide).c_str()), 1U);
    EXPECT_EQ(KORDMBstrcspn_C(text.c_str(), "b"), 5U);
}

TEST_F(DoubleByte, SpanTakesALongList) {
    const std::string twin = Bytes(CurrentPage().twin);
    std::string reject;
    for (int i = 0; i < 80; ++i) {
        reject += twin;
    }
    EXPECT_EQ(KORDMBstrcspn_C(text.c_str(), reject.c_str()), 6U);
    EXPECT_EQ(KORDMBstrcspn_C(text.c_str(), (reject + wide).c_str()), 1U);
}

TEST_F(DoubleByte, SpanTakesAnUndecodableByteAsItself) {
    const std::string cut = "ab" + wide.substr(0, 1);
    EXPECT_EQ(KORDMBstrcspn_C(cut.c_str(), wide.substr(0, 1).c_str()), 2U);
    EXPECT_EQ(KORDMBstrcspn_C(cut.c_str(), "x"), 3U);
}

TEST_F(DoubleByte, DecodesBetweenPosAndEnd) {
    unsigned int value = 0;
    EXPECT_EQ(KORDMBU32Get_C(&value, text.c_str(), 0, -1), 1);
    EXPECT_EQ(value, static_cast<unsigned int>('a'));
    EXPECT_EQ(KORDMBU32Get_C(&value, text.c_str(), 1, -1), 2);
    EXPECT_GT(value, 0x80U);
    EXPECT_EQ(KORDMBU32Get_C(&value, text.c_str(), 1, 3), 2);
    EXPECT_EQ(KORDMBU32Get_C(&value, text.c_str(), 5, INT_MAX), 1);
    EXPECT_EQ(value, static_cast<unsigned int>('b'));
}

TEST_F(DoubleByte, DoesNotDecodeACharacterThatEndCuts) {
    unsigned int value = 1;
    EXPECT_EQ(KORDMBU32Get_C(&value, text.c_str(), 1, 2), -1);
    EXPECT_EQ(value, 0U);
}

TEST_F(DoubleByte, ComparisonTakesACharacterCutByTheLengthByteByByte) {
    int status = -1;
    EXPECT_EQ(KORDMBqstricmp_C(wide.c_str(), 1, wide.c_str(), 1, &status), 1);
    EXPECT_EQ(status, 3);
    EXPECT_EQ(KORDMBqstricmp_C(wide.c_str(), 2, wide.c_str(), 2, &status), 1);
    EXPECT_EQ(status, 0);
}

TEST_F(DoubleByte, LeadByteOfTheLocaleAsItIsNow) {
    const int number = CurrentPage().number;
    ASSERT_NE(std::setlocale(LC_CTYPE, "en_US.CP1252"), nullptr);
    EXPECT_FALSE(KORDMBIsLeadByte_C(static_cast<unsigned char>(wide[0])));
    EXPECT_EQ(KORDMBmbclen_C(wide.c_str()), 1);
    ASSERT_NE(std::setlocale(LC_CTYPE, "ja_JP.WINDOWS-31J"), nullptr);
    EXPECT_FALSE(KORDMBIsLeadByte_C(0xB1)); // half-width katakana
    ASSERT_NE(std::setlocale(LC_CTYPE, "zh_CN.GBK"), nullptr);
    EXPECT_TRUE(KORDMBIsLeadByte_C(0xB1));
    ASSERT_NE(std::setlocale(LC_CTYPE, CurrentPage().locale), nullptr);
    EXPECT_EQ(KORDMBIsLeadByte_C(0xB1), number != 932);
    EXPECT_EQ(KORDMBmbclen_C(wide.c_str()), 2);
}

TEST(CodePage, LeadBytesAreThoseOfTheCLibrary) {
    for (int value = 0; value < 256; ++value) {
        const char byte = static_cast<char>(value);
        std::mbstate_t state{};
        const bool lead = std::mbrlen(&byte, 1, &state) == static_cast<std::size_t>(-2);
        EXPECT_EQ(KORDMBIsLeadByte_C(static_cast<unsigned char>(value)), lead) << value;
    }
}

TEST(CodePage, LengthIsThatOfTheCLibraryAtItsEdges) {
    EXPECT_EQ(KORDMBmblen_C(nullptr, 5), 0);
    EXPECT_EQ(KORDMBmblen_C("", 5), 0);
    EXPECT_EQ(KORDMBmblen_C("", 0), 0);
    EXPECT_EQ(KORDMBmblen_C("a", 0), -1);
    EXPECT_EQ(KORDMBmblen_C("a", INT_MAX), 1);
    EXPECT_EQ(KORDMBmblen_C("a", INT_MIN), 1);
}

TEST(CodePage, NullAndNothingAreNeutral) {
    EXPECT_EQ(KORDMBmbclen_C(nullptr), 0);
    EXPECT_EQ(KORDMBmbclen_C(""), 1);
    EXPECT_EQ(KORDMBstrinc_C(nullptr), nullptr);
    EXPECT_EQ(KORDMBFindStart_C(nullptr, 3), 0);
    EXPECT_EQ(KORDMBAnsiPrev_C(nullptr, nullptr), nullptr);
    EXPECT_EQ(KORDMBstrchr_C(nullptr, 'a'), nullptr);
    EXPECT_EQ(KORDMBstrrchr_C(nullptr, 'a'), nullptr);
    EXPECT_EQ(KORDMBstrcspn_C(nullptr, "a"), 0U);
    EXPECT_EQ(KORDMBstrcspn_C("abc", nullptr), 3U);
    EXPECT_EQ(KORDMBstrcspn_C("abc", ""), 3U);
    EXPECT_EQ(KORDMBstrnicmp_C(nullptr, nullptr, 3), 0);
    EXPECT_EQ(KORDMBstrnicmp_C(nullptr, "a", 3), -1);
    EXPECT_EQ(KORDMBqstricmp_C(nullptr, 3, "", -1, nullptr), 1);
}

TEST(CodePage, PlacesOutsideTheTextAreNeutral) {
    const char* text = "abc";
    EXPECT_EQ(KORDMBFindStart_C(text, 0), 0);
    EXPECT_EQ(KORDMBFindStart_C(text, -3), -3);
    EXPECT_EQ(KORDMBFindStart_C(text, 3), 3);
    EXPECT_EQ(KORDMBFindStart_C(text, INT_MAX), 3);
    EXPECT_EQ(KORDMBAnsiPrev_C(text, text), text);
    EXPECT_EQ(KORDMBAnsiPrev_C(text + 2, text), text);
}

TEST(CodePage, DecodesNothingAtTheEnd) {
    unsigned int value = 1;
    EXPECT_EQ(KORDMBU32Get_C(&value, "abc", 2, 2), 0);
    EXPECT_EQ(value, 0U);
    value = 1;
    EXPECT_EQ(KORDMBU32Get_C(&value, "abc", 3, 9), 0);
    EXPECT_EQ(value, 0U);
    value = 1;
    EXPECT_EQ(KORDMBU32Get_C(&value, nullptr, 0, -1), 0);
    EXPECT_EQ(value, 0U);
    value = 1;
    EXPECT_EQ(KORDMBU32Get_C(&value, "abc", -1, -1), 0);
    EXPECT_EQ(value, 0U);
    EXPECT_EQ(KORDMBU32Get_C(nullptr, "abc", 1, -1), 1);
}

TEST(CodePage, CopyChangesNothingForNullOrNoRoom) {
    char target[] = "xyz";
    EXPECT_EQ(KORDMBstrncpy_C(nullptr, "abc", 3), nullptr);
    EXPECT_EQ(KORDMBstrncpy_C(target, nullptr, 3), target);
    EXPECT_EQ(KORDMBstrncpy_C(target, "abc", 0), target);
    EXPECT_STREQ(target, "xyz");
}

TEST(CodePage, CopyWithNegativeNTakesTheTextAndItsTerminator) {
    char target[] = "xxxxx";
    KORDMBstrncpy_C(target, "abc", -1);
    EXPECT_EQ(Hexadecimal({target, 5}), "61 62 63 00 78");
}

TEST(CodePage, SearchAtTheTerminator) {
    const char* text = "abc";
    EXPECT_EQ(KORDMBstrchr_C(text, 0), text + 3);
    EXPECT_EQ(KORDMBstrrchr_C(text, 0), text + 3);
    EXPECT_EQ(KORDMBstrchr_C(text, 0x100), nullptr);
    const char* empty = "";
    EXPECT_EQ(KORDMBstrchr_C(empty, 0), empty);
    EXPECT_EQ(KORDMBstrrchr_C(empty, 0), empty);
    EXPECT_EQ(KORDMBstrchr_C(empty, 'a'), nullptr);
    EXPECT_EQ(KORDMBstrrchr_C(empty, 'a'), nullptr);
}

TEST(CodePage, ComparesFoldedCharacters) {
    const std::string upper = "aB" + Bytes(CurrentPage().upper) + "c";
    const std::string lower = "Ab" + Bytes(CurrentPage().lower) + "C";
    int status = -1;
    EXPECT_EQ(KORDMBqstricmp_C(upper.c_str(), -1, lower.c_str(), -1, &status), 1);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(KORDMBstrnicmp_C(upper.c_str(), lower.c_str(), -1), 0);
    EXPECT_EQ(KORDMBstrnicmp_C((upper + "d").c_str(), lower.c_str(), -1), 1);
    EXPECT_EQ(KORDMBstrnicmp_C(upper.c_str(), (lower + "d").c_str(), -1), -1);
    EXPECT_EQ(KORDMBstrnicmp_C((upper + "D").c_str(), (lower + "e").c_str(), -1), -1);
    EXPECT_EQ(KORDMBstrnicmp_C("abc", "abd", 2), 0);
    EXPECT_EQ(KORDMBqstricmp_C("ab\0c", 4, "AB\0d", 4, nullptr), 1);
    EXPECT_EQ(KORDMBqstricmp_C("ab", -1, "abc", -1, nullptr), 0);
}

/// A copy of a locale of the C library, to be freed.
locale_t Locale(const char* name) {
    std::setlocale(LC_CTYPE, name);
    const locale_t copy = duplocale(LC_GLOBAL_LOCALE);
    std::setlocale(LC_CTYPE, CurrentPage().locale);
    return copy;
}

int LeadBytesUnder(locale_t locale) {
    uselocale(locale);
    int leads = 0;
    for (int value = 0; value < 256; ++value) {
        leads += KORDMBIsLeadByte_C(static_cast<unsigned char>(value)) ? 1 : 0;
    }
    uselocale(LC_GLOBAL_LOCALE);
    return leads;
}

TEST(CodePage, LeadBytesAreThoseOfTheThread) {
    const locale_t gbk = Locale("zh_CN.GBK");
    const locale_t cp1252 = Locale("en_US.CP1252");
    int inGbk = -1;
    int inCp1252 = -1;
    std::thread first([&] { inGbk = LeadBytesUnder(gbk); });
    std::thread second([&] { inCp1252 = LeadBytesUnder(cp1252); });
    first.join();
    second.join();
    freelocale(gbk);
    freelocale(cp1252);
    EXPECT_EQ(inGbk, 0xFE - 0x81 + 1);
    EXPECT_EQ(inCp1252, 0);
}

} // namespace
