// What a converter tells a host that uses it by ICU's own functions, and what a conversion leaves of its state.
#include "text/conversion_calls.h"

#include <gtest/gtest.h>

namespace {

using namespace MCXML_900;
using namespace veltrane::tests;

constexpr int kUnassigned = -100;
constexpr int kIllegal = -101;

UConverter* Icu(const Converter& converter) {
    return static_cast<UConverter*>(converter.get());
}

/// What ICU makes of a text, with room to spare, and its code.
struct Outcome {
    std::u16string text;
    int code;
    bool operator==(const Outcome&) const = default;
};

Outcome ToUnicode(const char* codePage, std::string_view bytes) {
    const Converter converter = MakeConverter(codePage);
    char16_t units[16];
    UErrorCode code = U_ZERO_ERROR;
    const int length =
        ucnv_toUChars(Icu(converter), units, 16, bytes.data(), static_cast<std::int32_t>(bytes.size()), &code);
    return {std::u16string(units, static_cast<std::size_t>(length)), code};
}

/// The bytes are ASCII here.
Outcome FromUnicode(const char* codePage, std::u16string_view units) {
    const Converter converter = MakeConverter(codePage);
    char bytes[16];
    UErrorCode code = U_ZERO_ERROR;
    const int length =
        ucnv_fromUChars(Icu(converter), bytes, 16, units.data(), static_cast<std::int32_t>(units.size()), &code);
    return {std::u16string(bytes, bytes + length), code};
}

TEST(ConverterCallbacks, UnassignedBytesAreAQuestionMarkAndItsCode) {
    EXPECT_EQ(ToUnicode("932", "a\x85\x40z"), (Outcome{u"a?z", kUnassigned}));
    EXPECT_EQ(ToUnicode("1253", "\xD2"), (Outcome{u"?", kUnassigned}));
}

TEST(ConverterCallbacks, IllegalBytesAreAQuestionMarkAndTheirCode) {
    EXPECT_EQ(ToUnicode("932", "a\x82 z"), (Outcome{u"a? z", kIllegal}));
    EXPECT_EQ(ToUnicode("932", "a\x82"), (Outcome{u"a?", kIllegal})) << "a character cut off by the end";
    EXPECT_EQ(ToUnicode("65001", "a\xFFz"), (Outcome{u"a?z", kIllegal}));
}

TEST(ConverterCallbacks, UnassignedCharacterIsAQuestionMarkAndItsCode) {
    EXPECT_EQ(FromUnicode("1252", u"a\u65e5z"), (Outcome{u"a?z", kUnassigned}));
}

TEST(ConverterCallbacks, LoneSurrogateIsAQuestionMarkAndItsCode) {
    EXPECT_EQ(FromUnicode("1252", std::u16string{u'a', 0xD83D, u'z'}), (Outcome{u"a?z", kIllegal}));
    EXPECT_EQ(FromUnicode("65001", std::u16string{0xDE00, u'z'}), (Outcome{u"?z", kIllegal}));
}

TEST(ConverterCallbacks, CleanTextHasNoCode) {
    EXPECT_EQ(ToUnicode("932", "a\x83\x41"), (Outcome{u"a\u30a2", U_ZERO_ERROR}));
    EXPECT_EQ(FromUnicode("1252", u"az"), (Outcome{u"az", U_ZERO_ERROR}));
}

constexpr char kLead[] = "\x83";

/// Leaves a converter in the middle of a character.
void FeedLead(UConverter* converter) {
    char16_t unit;
    char16_t* target = &unit;
    const char* source = kLead;
    UErrorCode code = U_ZERO_ERROR;
    ucnv_toUnicode(converter, &target, target + 1, &source, source + 1, nullptr, false, &code);
    ASSERT_EQ(code, U_ZERO_ERROR);
    ASSERT_EQ(target, &unit);
}

/// What the rest of the character gives.
char16_t FeedTrail(UConverter* converter) {
    char16_t unit = u'#';
    char16_t* target = &unit;
    const char* source = "\x41";
    UErrorCode code = U_ZERO_ERROR;
    ucnv_toUnicode(converter, &target, target + 1, &source, source + 1, nullptr, false, &code);
    return unit;
}

TEST(ConverterState, WhatItBeganToReadIsForgotten) {
    const Converter japanese = MakeConverter("932");
    FeedLead(Icu(japanese));
    std::string bytes;
    EXPECT_EQ(KORDMBCodePageToU8(japanese.get(), bytes, "A"), 0);
    EXPECT_EQ(bytes, "A");
    FeedLead(Icu(japanese));
    std::u16string units;
    EXPECT_EQ(KORDMBCodePageToU16(japanese.get(), units, "A"), 0);
    EXPECT_EQ(units, u"A");
}

TEST(ConverterState, OtherDirectionGoesOnWhereItWas) {
    const Converter japanese = MakeConverter("932");
    FeedLead(Icu(japanese));
    std::string bytes;
    EXPECT_EQ(KORDMBU8ToCodePage(japanese.get(), bytes, "\xE6\x97\xA5"), 0);
    EXPECT_EQ(FeedTrail(Icu(japanese)), u'\u30a2');
    FeedLead(Icu(japanese));
    EXPECT_EQ(KORDMBU16ToCodePage(japanese.get(), bytes, u"\u65e5"), 0);
    EXPECT_EQ(FeedTrail(Icu(japanese)), u'\u30a2');
}

TEST(ConverterState, DefaultConverterIsOnlyCloned) {
    UConverter* const shared = KORDMBGetDefaultConverter();
    char16_t units[4];
    char16_t* target = units;
    const char* source = "\xE6\x97\xA5";
    UErrorCode code = U_ZERO_ERROR;
    ucnv_toUnicode(shared, &target, units + 4, &source, source + 1, nullptr, false, &code);
    std::string bytes;
    EXPECT_EQ(KORDMBCodePageToU8(nullptr, bytes, "A"), 0);
    EXPECT_EQ(bytes, "A");
    EXPECT_EQ(KORDMBU8ToCodePage(nullptr, bytes, "A"), 0);
    ucnv_toUnicode(shared, &target, units + 4, &source, source + 2, nullptr, false, &code);
    EXPECT_EQ(std::u16string(units, target), u"\u65e5");
    ucnv_reset(shared);
}

} // namespace
