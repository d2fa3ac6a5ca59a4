#include "support/dom.h"
#include "support/stopped_xml.h"

#include <MCVeltrane_900/SmartTranscoder.h>

#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <type_traits>

namespace {

using MCVeltrane_900::SmartTranscoder;

static_assert(std::has_virtual_destructor_v<SmartTranscoder>);

/// The text that comes back, "(null)" for a null array.
std::u16string FromBytes(const SmartTranscoder& transcoder, const char* text) {
    const std::unique_ptr<XMLCh[]> made(transcoder.ChangeChar2XML(text));
    return made != nullptr ? std::u16string(made.get()) : std::u16string(u"(null)");
}

constexpr XMLCh kCutPair[] = {'a', 0xD83D, 0};

class SmartTranscoderTest : public testing::Test {
protected:
    void SetUp() override { veltrane::tests::StartXml(); }
};

using KeptSmartTranscoder = SmartTranscoderTest;

TEST_F(SmartTranscoderTest, WritesTheBytesOfTheEncoding) {
    EXPECT_EQ(SmartTranscoder("UTF-8").transcodeTo(u"a\u00e9\u20ac\U0001F600"),
              "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_EQ(SmartTranscoder("CP1252").transcodeTo(u"a\u00e9\u20ac"), "a\xE9\x80");
    EXPECT_EQ(SmartTranscoder("windows-1252").transcodeTo(u"a\u00e9\u20ac"), "a\xE9\x80");
    EXPECT_EQ(SmartTranscoder("ISO-8859-1").transcodeTo(u"a\u00e9"), "a\xE9");
    EXPECT_EQ(SmartTranscoder("Big5").transcodeTo(u"\u4e00"), "\xA4\x40");
    EXPECT_EQ(SmartTranscoder("UTF-16LE").transcodeTo(u"ab"), std::string("a\0b\0", 4));
    EXPECT_EQ(SmartTranscoder("IBM037").transcodeTo(u"abc"), "\x81\x82\x83");
}

TEST_F(SmartTranscoderTest, ReadsTheBytesOfTheEncoding) {
    EXPECT_EQ(FromBytes(SmartTranscoder("UTF-8"), "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"), u"a\u00e9\u20ac\U0001F600");
    EXPECT_EQ(FromBytes(SmartTranscoder("CP1252"), "a\xE9\x80"), u"a\u00e9\u20ac");
    EXPECT_EQ(FromBytes(SmartTranscoder("ISO-8859-1"), "a\xE9"), u"a\u00e9");
    EXPECT_EQ(FromBytes(SmartTranscoder("Big5"), "\xA4\x40"), u"\u4e00");
    EXPECT_EQ(FromBytes(SmartTranscoder("IBM037"), "\x81\x82\x83"), u"abc");
}

TEST_F(SmartTranscoderTest, AsciiIsTheSameInMostEncodings) {
    for (const char* encoding : {"UTF-8", "CP1252", "US-ASCII", "ISO-8859-1", "KOI8-R", "GB18030", "Big5", "EUC-JP"}) {
        const SmartTranscoder transcoder(encoding);
        EXPECT_EQ(transcoder.transcodeTo(u"optype <&~\\\t"), "optype <&~\\\t") << encoding;
        EXPECT_EQ(FromBytes(transcoder, "optype <&~\\\t"), u"optype <&~\\\t") << encoding;
    }
}

TEST_F(SmartTranscoderTest, AsciiIsConvertedWhereTheEncodingHasOtherCodes) {
    EXPECT_EQ(SmartTranscoder("UTF-7").transcodeTo(u"a+b"), "a+-b");
    EXPECT_EQ(FromBytes(SmartTranscoder("UTF-7"), "a+-b"), u"a+b");
}

TEST_F(SmartTranscoderTest, NullAndEmptyTexts) {
    const SmartTranscoder transcoder("CP1252");
    EXPECT_EQ(transcoder.transcodeTo(nullptr), "");
    EXPECT_EQ(transcoder.transcodeTo(u""), "");
    EXPECT_EQ(FromBytes(transcoder, ""), u"");
    EXPECT_EQ(transcoder.ChangeChar2XML(nullptr), nullptr);
}

TEST_F(SmartTranscoderTest, UnknownEncodingConvertsNothing) {
    for (const std::string& encoding : {std::string("no such encoding"), std::string(), std::string("\xFF\xFE"),
                                        std::string(100000, 'x'), std::string("%s%n")}) {
        const SmartTranscoder transcoder(encoding);
        EXPECT_EQ(transcoder.transcodeTo(u"abc"), "");
        EXPECT_EQ(transcoder.ChangeChar2XML("abc"), nullptr);
    }
}

TEST_F(SmartTranscoderTest, LongTextIsConvertedInChunks) {
    for (const char* encoding : {"UTF-8", "CP1252", "UTF-16LE", "GB18030", "IBM037"}) {
        const SmartTranscoder transcoder(encoding);
        for (std::size_t length : {499U, 500U, 999U, 1000U, 1001U, 4096U, 10000U}) {
            const std::u16string text(length, u'\u00e9');
            const std::string once = transcoder.transcodeTo(u"\u00e9");
            const std::string made = transcoder.transcodeTo(text.c_str());
            ASSERT_EQ(made.size(), once.size() * length) << encoding << " " << length;
            EXPECT_EQ(made.substr(made.size() - once.size()), once) << encoding << " " << length;
        }
    }
}

TEST_F(SmartTranscoderTest, CharacterAcrossTheEndOfAChunkIsWhole) {
    const SmartTranscoder transcoder("GB18030");
    for (std::size_t before = 995; before < 1002; ++before) {
        const std::u16string text = std::u16string(before, u'x') + u"\U0001F600";
        EXPECT_EQ(transcoder.transcodeTo(text.c_str()), std::string(before, 'x') + "\x94\x39\xFC\x36") << before;
        EXPECT_EQ(transcoder.transcodeTo(u"\u00e9"), "\xA8\xA6") << before;
    }
}

TEST_F(SmartTranscoderTest, CharacterThatTheEncodingDoesNotHaveLeavesTheChunksBefore) {
    const SmartTranscoder transcoder("CP1252");
    EXPECT_EQ(transcoder.transcodeTo(u"ab\u4e00"), "");
    const std::u16string text = std::u16string(1500, u'\u00e9') + u"\u4e00";
    EXPECT_EQ(transcoder.transcodeTo(text.c_str()), std::string(1000, '\xE9'));
    EXPECT_EQ(transcoder.transcodeTo(u"\u00e9"), "\xE9");
}

TEST_F(SmartTranscoderTest, BadBytesGiveTheEmptyText) {
    const SmartTranscoder transcoder("UTF-8");
    EXPECT_EQ(FromBytes(transcoder, "a\xC3x"), u"");
    EXPECT_EQ(FromBytes(transcoder, "a\xC0\xAF"), u"");
    EXPECT_EQ(FromBytes(transcoder, "a\xC3\xA9"), u"a\u00e9");
}

TEST_F(SmartTranscoderTest, CutSequenceAtTheEndIsDropped) {
    EXPECT_EQ(FromBytes(SmartTranscoder("UTF-8"), "a\xE4\xB8"), u"a");
    EXPECT_EQ(FromBytes(SmartTranscoder("GB18030"), "a\x81"), u"a");
}

TEST_F(SmartTranscoderTest, CutTextDoesNotSpoilTheNext) {
    for (const char* encoding : {"UTF-8", "CP1252", "GB18030", "Big5", "EUC-JP", "KOI8-R"}) {
        const SmartTranscoder transcoder(encoding);
        const std::string clean = transcoder.transcodeTo(u"\u0410\u0411");
        transcoder.transcodeTo(kCutPair);
        EXPECT_EQ(transcoder.transcodeTo(u"\u0410\u0411"), clean) << encoding;

        const std::u16string cleanUnits = FromBytes(transcoder, "\xA4\x40\xB0\xA1");
        FromBytes(transcoder, "a\x81");
        EXPECT_EQ(FromBytes(transcoder, "\xA4\x40\xB0\xA1"), cleanUnits) << encoding;
    }
}

TEST_F(SmartTranscoderTest, EveryUnitAndByteIsSafe) {
    for (const char* encoding : {"UTF-8", "CP1252", "US-ASCII", "UTF-16", "UTF-16LE", "UCS-4", "UTF-32BE", "GB18030",
                                 "Shift_JIS", "ISO-2022-JP", "UTF-7", "IBM037", "SCSU"}) {
        const SmartTranscoder transcoder(encoding);
        for (unsigned unit = 1; unit < 0x10000; unit += 0xFB) {
            const XMLCh text[] = {static_cast<XMLCh>(unit), 'x', static_cast<XMLCh>(unit), 0};
            EXPECT_LE(transcoder.transcodeTo(text).size(), 64U);
        }
        for (unsigned byte = 1; byte < 0x100; ++byte) {
            const char text[] = {static_cast<char>(byte), 'x', static_cast<char>(byte), 0};
            EXPECT_LE(FromBytes(transcoder, text).size(), 3U);
        }
    }
}

TEST_F(KeptSmartTranscoder, CopySharesTheParsersTranscoder) {
    const SmartTranscoder source("CP1252");
    // The copy is never destroyed: both destructors would delete the same transcoder.
    alignas(SmartTranscoder) std::byte place[sizeof(SmartTranscoder)];
    const auto* copy = new (place) SmartTranscoder(source);
    EXPECT_EQ(copy->transcodeTo(u"a\u00e9"), "a\xE9");
    EXPECT_EQ(FromBytes(*copy, "a\xE9"), u"a\u00e9");
}

TEST(SmartTranscoderWithoutXml, ConvertsNothing) {
    const veltrane::tests::StoppedXml stopped;
    const SmartTranscoder transcoder("UTF-8");
    EXPECT_EQ(transcoder.ChangeChar2XML("abc"), nullptr);
    EXPECT_EQ(transcoder.transcodeTo(u"abc"), "");
}

} // namespace
