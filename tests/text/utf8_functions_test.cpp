#include "support/byte_text.h"

#include <MCXML_900/KORDMBString.h>

#include <climits>
#include <gtest/gtest.h>

#include <clocale>
#include <string>
#include <vector>

namespace {

using namespace MCXML_900;
using veltrane::tests::Bytes;
using veltrane::tests::Hexadecimal;

/// What KORDMBstrncpy_8 leaves of a text in a target of `n` bytes, hexadecimal.
std::string Copied(const char* hexadecimal, int n) {
    std::string target(static_cast<std::size_t>(n), 'x');
    KORDMBstrncpy_8(target.data(), Bytes(hexadecimal).c_str(), n);
    return Hexadecimal(target);
}

std::ptrdiff_t First(const std::string& text, unsigned int ch) {
    const char* found = KORDMBstrchr_8(text.c_str(), ch);
    return found == nullptr ? -1 : found - text.c_str();
}

std::ptrdiff_t Last(const std::string& text, unsigned int ch) {
    const char* found = KORDMBstrrchr_8(text.c_str(), ch);
    return found == nullptr ? -1 : found - text.c_str();
}

TEST(Utf8Mode, IsOnAtTheStart) {
    EXPECT_EQ(qUTF8mode(), 1);
}

TEST(Utf8Mode, AnyValueButZeroIsOn) {
    SetUTF8mode(5);
    EXPECT_EQ(qUTF8mode(), 1);
    SetUTF8mode(-1);
    EXPECT_EQ(qUTF8mode(), 1);
    SetUTF8mode(0);
    EXPECT_EQ(qUTF8mode(), 0);
    SetUTF8mode(1);
}

TEST(Utf8Length, LooksAtNoMoreThanNBytes) {
    const std::string euro = Bytes("E2 82 AC");
    EXPECT_EQ(KORDMBmblen_8(euro.c_str(), 2), -1);
    EXPECT_EQ(KORDMBmblen_8(euro.c_str(), 3), 3);
    EXPECT_EQ(KORDMBmblen_8(euro.c_str(), INT_MAX), 3);
    EXPECT_EQ(KORDMBmblen_8(euro.c_str(), INT_MIN), 3);
}

TEST(Utf8Length, IsZeroForNothing) {
    EXPECT_EQ(KORDMBmblen_8(nullptr, 4), 0);
    EXPECT_EQ(KORDMBmblen_8("", 4), 0);
    EXPECT_EQ(KORDMBmblen_8("abc", 0), 0);
}

TEST(Utf8Length, ByLeadStopsAtTheNul) {
    EXPECT_EQ(KORDMBmbclen_8("\xE2"), 1);
    EXPECT_EQ(KORDMBmbclen_8("\xE2\x82"), 2);
    EXPECT_EQ(KORDMBmbclen_8("\xF0\x9F"), 2);
}

TEST(Utf8Length, ByLeadIsOneForTheTerminatorAndZeroForNull) {
    EXPECT_EQ(KORDMBmbclen_8(""), 1);
    EXPECT_EQ(KORDMBmbclen_8(nullptr), 0);
}

TEST(Utf8Step, NullStaysNull) {
    EXPECT_EQ(KORDMBstrinc_8(nullptr), nullptr);
    EXPECT_EQ(KORDMBAnsiPrev_8(nullptr, nullptr), nullptr);
    EXPECT_EQ(KORDMBAnsiPrev_8("a", nullptr), nullptr);
    EXPECT_EQ(KORDMBPreviousIndex_8(nullptr, 3), 3);
}

TEST(Utf8Step, BeforeALoneTrailByteIsTheByteBefore) {
    EXPECT_EQ(KORDMBPreviousIndex_8("ab\x80", 3), 2);
    EXPECT_EQ(KORDMBPreviousIndex_8("\x80", 1), 0);
}

TEST(Utf8Step, BeforeTheStartIsTheIndexItself) {
    EXPECT_EQ(KORDMBPreviousIndex_8("abc", 0), 0);
    EXPECT_EQ(KORDMBPreviousIndex_8("abc", -4), -4);
    const char* text = "abc";
    EXPECT_EQ(KORDMBAnsiPrev_8(text, text), text);
    EXPECT_EQ(KORDMBAnsiPrev_8(text + 2, text), text);
}

TEST(Utf8Step, GoesBackOverEachCharacterOfAText) {
    const std::string text = Bytes("41 C3 84 E2 82 AC F0 9F 98 80 42");
    std::vector<std::ptrdiff_t> places;
    for (const char* at = text.c_str() + text.size(); at != text.c_str();) {
        at = KORDMBAnsiPrev_8(text.c_str(), at);
        places.push_back(at - text.c_str());
    }
    EXPECT_EQ(places, (std::vector<std::ptrdiff_t>{10, 6, 3, 1, 0}));
}

TEST(Utf8Copy, CharacterCutByNIsLeftOutAndTheRestIsNul) {
    EXPECT_EQ(Copied("61 E2 82 AC", 2), "61 00");
    EXPECT_EQ(Copied("61 E2 82 AC", 3), "61 00 00");
    EXPECT_EQ(Copied("61 E2 82 AC", 4), "61 E2 82 AC");
    EXPECT_EQ(Copied("61 E2 82 AC", 6), "61 E2 82 AC 00 00");
}

TEST(Utf8Copy, ImproperBytesAtTheEndAreLeftOutEvenWithRoom) {
    EXPECT_EQ(Copied("61 FF FF", 5), "61 00 00 00 00");
    EXPECT_EQ(Copied("61 FF 62 EF BF BE", 7), "61 FF 62 00 00 00 00");
}

TEST(Utf8Copy, NullSourceGivesNuls) {
    char target[4] = {'x', 'x', 'x', 'y'};
    EXPECT_EQ(KORDMBstrncpy_8(target, nullptr, 3), target);
    EXPECT_EQ(Hexadecimal({target, 4}), "00 00 00 79");
    target[0] = 'x';
    KORDMBstrncpy_8(target, nullptr, -1);
    EXPECT_EQ(Hexadecimal({target, 4}), "00 00 00 79");
}

TEST(Utf8Copy, NullTargetOrNoRoomChangesNothing) {
    EXPECT_EQ(KORDMBstrncpy_8(nullptr, "abc", 3), nullptr);
    char target[] = "x";
    EXPECT_EQ(KORDMBstrncpy_8(target, "abc", 0), target);
    EXPECT_STREQ(target, "x");
}

TEST(Utf8Copy, NegativeNTakesTheTextAndItsTerminator) {
    char target[] = "xxxxxxxx";
    KORDMBstrncpy_8(target, "ab\xC3\x84", -1);
    EXPECT_EQ(Hexadecimal({target, 8}), "61 62 C3 84 00 78 78 78");
}

TEST(Utf8Copy, SourceAndTargetMayOverlap) {
    char text[] = "abcdef";
    KORDMBstrncpy_8(text + 1, text, 5);
    EXPECT_STREQ(text, "aabcde");
}

TEST(Utf8Search, NulFindsTheTerminator) {
    EXPECT_EQ(First("abc", 0), 3);
    EXPECT_EQ(Last("abc", 0), 3);
    EXPECT_EQ(First("", 0), 0);
}

TEST(Utf8Search, NothingInAnEmptyTextOrInNull) {
    EXPECT_EQ(KORDMBstrchr_8("", 0x20AC), nullptr);
    EXPECT_EQ(KORDMBstrrchr_8("", 0x20AC), nullptr);
    EXPECT_EQ(KORDMBstrchr_8(nullptr, 0), nullptr);
    EXPECT_EQ(KORDMBstrrchr_8(nullptr, 0x20AC), nullptr);
}

TEST(Utf8Search, FindsTheFirstAndTheLastOccurrence) {
    const std::string text = Bytes("61 C3 84 62 E2 82 AC C3 84 61 F0 9F 98 80 E2 82 AC");
    EXPECT_EQ(First(text, 'a'), 0);
    EXPECT_EQ(Last(text, 'a'), 9);
    EXPECT_EQ(First(text, 0xC4), 1);
    EXPECT_EQ(Last(text, 0xC4), 7);
    EXPECT_EQ(First(text, 0x20AC), 4);
    EXPECT_EQ(Last(text, 0x20AC), 14);
    EXPECT_EQ(First(text, 0x1F600), 10);
    EXPECT_EQ(Last(text, 0x1F601), -1);
}

TEST(Utf8Search, ByteWithItsSignIsNoCharacter) {
    EXPECT_EQ(First("\xC3\x84", static_cast<unsigned int>(static_cast<signed char>(0x84))), -1);
}

TEST(Utf8Search, CharacterThatTheNulCutsOffEndsTheSearch) {
    EXPECT_EQ(First("\xE2\x82", 0x20AC), -1);
    EXPECT_EQ(First("\xE2\x82", 0x82), -1);
    EXPECT_EQ(Last("\xF0\x9F\x98", 0x98), -1);
}

// The shape isn't looked at: the lead alone tells how many bytes a character has.
TEST(KeptUtf8Search, TakesTheBytesThatTheLeadAnnounces) {
    EXPECT_EQ(First(Bytes("E2 41 42 C3 84"), 0xC4), 3);
    EXPECT_EQ(First(Bytes("80 C3 84"), 0xC4), -1); // the trail byte swallows the lead
    EXPECT_EQ(First(Bytes("C1 81"), 0x41), -1);    // below 0x80 it is a search for a byte
    EXPECT_EQ(First(Bytes("E0 83 84"), 0xC4), 0);  // overlong
}

TEST(Utf8Span, EndsAtTheFirstCharacterOfTheList) {
    EXPECT_EQ(KORDMBstrcspn_8("abcdef", "fd"), 3U);
    EXPECT_EQ(KORDMBstrcspn_8("ab\xC3\x84", "\xC3\x84"), 2U);
    EXPECT_EQ(KORDMBstrcspn_8("ab\xE2\x82\xAC", "x\xE2\x82\xAC"), 2U);
    EXPECT_EQ(KORDMBstrcspn_8("\xF0\x9F\x98\x81z", "\xF0\x9F\x98\x80z"), 4U);
}

TEST(Utf8Span, IsTheWholeTextWithoutOne) {
    EXPECT_EQ(KORDMBstrcspn_8("abc", ""), 3U);
    EXPECT_EQ(KORDMBstrcspn_8("abc", nullptr), 3U);
    EXPECT_EQ(KORDMBstrcspn_8("ab\xC3\x84", "\xC3\x85"), 4U);
    EXPECT_EQ(KORDMBstrcspn_8("", "a"), 0U);
    EXPECT_EQ(KORDMBstrcspn_8(nullptr, "a"), 0U);
    EXPECT_EQ(KORDMBstrcspn_8(nullptr, "\xC3\x84"), 0U);
}

TEST(Utf8Span, SharesNoByteOfALongerCharacter) {
    EXPECT_EQ(KORDMBstrcspn_8("\xC3\x84\xC3\xA4", "\xE4"), 2U); // U+00E4 has the number of the lone byte
    EXPECT_EQ(KORDMBstrcspn_8("\xC3\x85", "\xC3\x84"), 2U);
    EXPECT_EQ(KORDMBstrcspn_8("\xC3\x84", "\x84"), 2U);
}

TEST(Utf8Span, ByteThatIsNoCharacterStandsForItself) {
    EXPECT_EQ(KORDMBstrcspn_8("ab\xFFz", "\xFF"), 2U);
    EXPECT_EQ(KORDMBstrcspn_8("a\xE2\x82z", "\x82"), 2U);
}

TEST(Utf8Span, ListMayBeLongerThanItsTable) {
    std::string reject;
    for (int i = 0; i < 100; ++i) {
        reject += "\xC3\x84";
    }
    EXPECT_EQ(KORDMBstrcspn_8("ab\xE2\x82\xACz", (reject + "\xE2\x82\xAC").c_str()), 2U);
    EXPECT_EQ(KORDMBstrcspn_8("ab\xE2\x82\xACz", reject.c_str()), 6U);
}

TEST(Utf8Caseless, EqualsFoldedCharacters) {
    EXPECT_EQ(KORDMBqstricmp_8("\xC3\x84\x42", -1, "\xC3\xA4\x62", -1, nullptr), 1);
    EXPECT_EQ(KORDMBqstricmp_8("ab", -1, "abc", -1, nullptr), 0);
    EXPECT_EQ(KORDMBqstricmp_8("\xF0\x90\x90\x80", -1, "\xF0\x90\x90\xA8", -1, nullptr), 1); // Deseret
    EXPECT_EQ(KORDMBqstricmp_8("K", -1, "\xE2\x84\xAA", -1, nullptr), 1);                    // the Kelvin sign
}

TEST(Utf8Caseless, FirstDifferenceDecides) {
    EXPECT_EQ(KORDMBstrnicmp_8("abC", "ABD", -1), -1);
    EXPECT_EQ(KORDMBstrnicmp_8("abD", "ABC", -1), 1);
    EXPECT_EQ(KORDMBstrnicmp_8("ab", "ABC", -1), -1);
    EXPECT_EQ(KORDMBstrnicmp_8("abc", "AB", -1), 1);
    EXPECT_EQ(KORDMBstrnicmp_8("abc", "ABC", -1), 0);
    EXPECT_EQ(KORDMBstrnicmp_8("Z", "_", -1), 1); // folded before it is compared
}

TEST(Utf8Caseless, LengthsCountBytesAndANulEndsThem) {
    EXPECT_EQ(KORDMBstrnicmp_8("abX", "aby", 2), 0);
    EXPECT_EQ(KORDMBstrnicmp_8("abc", "abd", INT_MAX), -1);
    EXPECT_EQ(KORDMBstrnicmp_8("abc", "abd", 0), 0);
    EXPECT_EQ(KORDMBqstricmp_8("ab\0c", 4, "AB\0d", 4, nullptr), 1);
    EXPECT_EQ(KORDMBqstricmp_8("abc", 2, "abd", 2, nullptr), 1);
    EXPECT_EQ(KORDMBqstricmp_8("abc", INT_MAX, "abc", INT_MIN, nullptr), 1);
}

TEST(Utf8Caseless, CharacterCutByTheLengthIsTakenByteByByte) {
    int status = -1;
    EXPECT_EQ(KORDMBqstricmp_8("\xC3\x84", 1, "\xC3\xA4", 1, &status), 1);
    EXPECT_EQ(status, 3);
}

TEST(Utf8Caseless, NullCountsAsEmpty) {
    int status = -1;
    EXPECT_EQ(KORDMBqstricmp_8(nullptr, -1, "", 5, &status), 1);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(KORDMBstrnicmp_8(nullptr, "a", 3), -1);
    EXPECT_EQ(KORDMBstrnicmp_8("a", nullptr, 3), 1);
}

TEST(Utf8Caseless, StatusTellsOfUndecodableBytesAsFarAsItLooked) {
    int status = -1;
    EXPECT_EQ(KORDMBqstricmp_8("a\xFF", -1, "A\xFF", -1, &status), 1);
    EXPECT_EQ(status, 3);
    EXPECT_EQ(KORDMBqstricmp_8("a\xFF", -1, "b\xFF", -1, &status), 0);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(KORDMBqstricmp_8("a\xFF", -1, "a", -1, &status), 0);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(KORDMBqstricmp_8("\xC3", -1, "\xE3", -1, &status), 0); // bytes aren't folded
    EXPECT_EQ(status, 3);
}

TEST(Utf8Caseless, LongTextsDifferAtAnyPlace) {
    const std::string upper(100, 'Q');
    for (std::size_t i = 0; i < upper.size(); ++i) {
        std::string lower(100, 'q');
        EXPECT_EQ(KORDMBstrnicmp_8(upper.c_str(), lower.c_str(), -1), 0);
        lower[i] = 'r';
        EXPECT_EQ(KORDMBstrnicmp_8(upper.c_str(), lower.c_str(), -1), -1) << i;
        lower.replace(i, 1, "\xC3\xA4");
        EXPECT_EQ(KORDMBstrnicmp_8(lower.c_str(), upper.c_str(), -1), 1) << i;
    }
}

TEST(AutomaticFamily, IsUtf8InUtf8Mode) {
    const char* text = "\xC3\x84z";
    char target[3];
    int status = -1;
    SetUTF8mode(1);
    EXPECT_EQ(KORDMBstrinc_A(text), text + 2);
    EXPECT_EQ(KORDMBAnsiPrev_A(text, text + 2), text);
    EXPECT_EQ(Hexadecimal({KORDMBstrncpy_A(target, text, 1), 1}), "00");
    EXPECT_EQ(KORDMBstrchr_A(text, 0xC4), text);
    EXPECT_EQ(KORDMBstrrchr_A(text, 0xC4), text);
    EXPECT_EQ(KORDMBstrcspn_A(text, "z\xC3\x84"), 0U);
    EXPECT_EQ(KORDMBstrnicmp_A(text, "\xC3\xA4Z", -1), 0);
    EXPECT_EQ(KORDMBqstricmp_A(text, -1, "\xC3\xA4Z", -1, &status), 1);
    EXPECT_EQ(status, 0);
}

// The C locale has single bytes only.
TEST(AutomaticFamily, IsTheCodePageOutOfUtf8Mode) {
    std::setlocale(LC_ALL, "C");
    const char* text = "\xC3\x84z";
    char target[3];
    SetUTF8mode(0);
    EXPECT_EQ(KORDMBstrinc_A(text), text + 1);
    EXPECT_EQ(KORDMBAnsiPrev_A(text, text + 2), text + 1);
    EXPECT_EQ(Hexadecimal({KORDMBstrncpy_A(target, "ab", 1), 1}), "61");
    EXPECT_EQ(KORDMBstrchr_A(text, 0x84), text + 1);
    EXPECT_EQ(KORDMBstrrchr_A(text, 0x84), text + 1);
    EXPECT_EQ(KORDMBstrcspn_A(text, "z"), 2U);
    EXPECT_EQ(KORDMBstrnicmp_A("ab", "AC", -1), -1);
    EXPECT_EQ(KORDMBqstricmp_A("ab", -1, "AB", -1, nullptr), 1);
    SetUTF8mode(1);
}

} // namespace
