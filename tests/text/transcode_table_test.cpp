// Texts of an encoding, whole, cut and broken, and what each conversion from it makes of them.
#include "support/rows.h"
#include "text/conversion_calls.h"
#include "text/conversion_reference.h"

#include <gtest/gtest.h>

namespace {

using namespace MCXML_900;
using namespace veltrane::tests;

struct Row {
    const char* name;
    const char* encoding;
    std::string bytes;
    std::u16string expected;
    int status;
};

void PrintTo(const Row& row, std::ostream* out) {
    *out << row.name;
}

const Row kRows[] = {
    // Characters of every length, first and last.
    {"FirstOfOneByte", "UTF-8", std::string(1, '\0'), std::u16string(1, u'\0'), 0},
    {"LastOfOneByte", "UTF-8", "\x7F", u"\u007f", 0},
    {"FirstOfTwoBytes", "UTF-8", "\xC2\x80", std::u16string(1, 0x80), 0},
    {"LastOfTwoBytes", "UTF-8", "\xDF\xBF", u"\u07ff", 0},
    {"FirstOfThreeBytes", "UTF-8", "\xE0\xA0\x80", u"\u0800", 0},
    {"LastBeforeTheSurrogates", "UTF-8", "\xED\x9F\xBF", std::u16string(1, 0xD7FF), 0},
    {"FirstBehindTheSurrogates", "UTF-8", "\xEE\x80\x80", u"\ue000", 0},
    {"LastOfThreeBytes", "UTF-8", "\xEF\xBF\xBF", u"\uffff", 0},
    {"FirstOfFourBytes", "UTF-8", "\xF0\x90\x80\x80", u"\U00010000", 0},
    {"LastOfFourBytes", "UTF-8", "\xF4\x8F\xBF\xBF", u"\U0010ffff", 0},
    {"ByteOrderMark", "UTF-8", "\uFEFFa", u"\ufeffa", 0},
    {"ReplacementCharacter", "UTF-8", "\xEF\xBF\xBD", u"\ufffd", 0},
    // Each of them cut.
    {"TwoBytesCut", "UTF-8", "\xC3", u"?", 3},
    {"ThreeBytesCutBehindOne", "UTF-8", "\xE2", u"?", 3},
    {"ThreeBytesCutBehindTwo", "UTF-8", "\xE2\x82", u"?", 3},
    {"FourBytesCutBehindOne", "UTF-8", "\xF0", u"?", 3},
    {"FourBytesCutBehindTwo", "UTF-8", "\xF0\x9F", u"?", 3},
    {"FourBytesCutBehindThree", "UTF-8", "\xF0\x9F\x98", u"?", 3},
    {"TwoBytesBroken", "UTF-8", "\xC3z", u"?z", 3},
    {"ThreeBytesBrokenBehindOne", "UTF-8", "\xE2z", u"?z", 3},
    {"ThreeBytesBrokenBehindTwo", "UTF-8", "\xE2\x82z", u"?z", 3},
    {"FourBytesBrokenBehindThree", "UTF-8", "\xF0\x9F\x98z", u"?z", 3},
    {"BrokenByACharacter", "UTF-8", "\xE2\x82\xC3\xA9", u"?\u00e9", 3},
    // Every kind of invalid sequence.
    {"LoneTrail", "UTF-8", "\x80", u"?", 3},
    {"LoneTrails", "UTF-8", "\x80\xBF", u"??", 3},
    {"TrailTooMany", "UTF-8", "\xC3\xA9\xA9", u"\u00e9?", 3},
    {"OverlongOfTwoBytes", "UTF-8", "\xC0\xAF", u"??", 3},
    {"OverlongOfTwoBytesLast", "UTF-8", "\xC1\xBF", u"??", 3},
    {"OverlongOfThreeBytes", "UTF-8", "\xE0\x80\xAF", u"???", 3},
    {"OverlongOfFourBytes", "UTF-8", "\xF0\x80\x80\xAF", u"????", 3},
    {"SurrogateLead", "UTF-8", "\xED\xA0\x80", u"???", 3},
    {"SurrogatePair", "UTF-8", "\xED\xA0\xBD\xED\xB8\x80", u"??????", 3},
    {"BeyondTheLast", "UTF-8", "\xF4\x90\x80\x80", u"????", 3},
    {"LeadBeyondTheLast", "UTF-8", "\xF5\x80\x80\x80", u"????", 3},
    {"FiveBytes", "UTF-8", "\xF8\x88\x80\x80\x80", u"?????", 3},
    {"SixBytes", "UTF-8", "\xFC\x84\x80\x80\x80\x80", u"??????", 3},
    {"ByteFe", "UTF-8", "\xFE", u"?", 3},
    {"ByteFf", "UTF-8", "\xFF", u"?", 3},
    // The double-byte code pages: whole, cut, with a trail that isn't one, unassigned.
    {"Kana", "932", "\xB1\x83\x41", u"\uff71\u30a2", 0},
    {"BackslashAsATrail", "932", "\x95\x5C", u"\u8868", 0},
    {"JapaneseCut", "932", "a\x95", u"a?", 3},
    {"JapaneseBroken", "932", "\x95 a", u"? a", 3},
    {"JapaneseUnassigned", "932", "\x85\x40z", u"?z", 3},
    {"SimplifiedChinese", "936", "\xD2\xBB", u"\u4e00", 0},
    {"SimplifiedChineseTrailOfAscii", "936", "\x81\x40", u"\u4e02", 0},
    {"SimplifiedChineseCut", "936", "a\xD2", u"a?", 3},
    {"SimplifiedChineseBroken", "936", "\xD2 a", u"? a", 3},
    {"Korean", "949", "\xB0\xA1", u"\uac00", 0},
    {"KoreanCut", "949", "a\xB0", u"a?", 3},
    {"KoreanBroken", "949", "\xB0 a", u"? a", 3},
    {"KoreanOfWindows", "KS_C_5601-1987", "\x81\x41", u"\uac02", 0},
    {"TraditionalChinese", "950", "\xA4\x40", u"\u4e00", 0},
    {"TraditionalChineseCut", "950", "a\xA4", u"a?", 3},
    {"TraditionalChineseBroken", "950", "\xA4 a", u"? a", 3},
    // The single-byte ones.
    {"CentralEuropean", "1250", "\x8A", u"\u0160", 0},
    {"Cyrillic", "1251", "\xC0", u"\u0410", 0},
    {"Western", "1252", "\x80\xE9", u"\u20ac\u00e9", 0},
    {"Greek", "1253", "\xE1", u"\u03b1", 0},
    {"Turkish", "1254", "\xDD", u"\u0130", 0},
    {"Hebrew", "1255", "\xE0", u"\u05d0", 0},
    {"Arabic", "1256", "\xC7", u"\u0627", 0},
    {"Baltic", "1257", "\xE0", u"\u0105", 0},
    {"Vietnamese", "1258", "\xFE", u"\u20ab", 0},
    {"Latin1", "28591", "\x80\xE9", std::u16string{0x80, 0xE9}, 0},
    {"GreekUnassigned", "1253", "\xD2", u"?", 3},
};

class TranscodeTable : public testing::TestWithParam<Row> {
protected:
    std::string ExpectedInUtf8() const {
        std::string expected;
        for (const char32_t character : Characters(GetParam().expected)) {
            expected += InUtf8(character);
        }
        return expected;
    }
    const Converter fConverter = MakeConverter(GetParam().encoding);
};

TEST_P(TranscodeTable, ToUtf16) {
    std::u16string text;
    EXPECT_EQ(KORDMBCodePageToU16(fConverter.get(), text, GetParam().bytes), GetParam().status);
    EXPECT_EQ(text, GetParam().expected);
}

TEST_P(TranscodeTable, ToUtf8) {
    std::string text;
    EXPECT_EQ(KORDMBCodePageToU8(fConverter.get(), text, GetParam().bytes), GetParam().status);
    EXPECT_EQ(text, ExpectedInUtf8());
}

TEST_P(TranscodeTable, AndBack) {
    const Row& row = GetParam();
    std::string fromUtf16, fromUtf8;
    const int status16 = KORDMBU16ToCodePage(fConverter.get(), fromUtf16, row.expected);
    const int status8 = KORDMBU8ToCodePage(fConverter.get(), fromUtf8, ExpectedInUtf8());
    EXPECT_EQ(status16, 0);
    EXPECT_EQ(status8, 0);
    EXPECT_EQ(fromUtf8, fromUtf16);
    EXPECT_EQ(fromUtf16 == row.bytes, row.status == 0) << "what was replaced doesn't come back";
}

INSTANTIATE_TEST_SUITE_P(All, TranscodeTable, testing::ValuesIn(kRows), NameOfRow());

/// The rows of UTF-8 without a converter, and into the default code page.
class TranscodeUtf8Table : public TranscodeTable {};

TEST_P(TranscodeUtf8Table, ToUtf16) {
    std::u16string text;
    EXPECT_EQ(KORDMBU8ToU16(text, GetParam().bytes), GetParam().status);
    EXPECT_EQ(text, GetParam().expected);
}

TEST_P(TranscodeUtf8Table, ToDefaultCodePage) {
    std::string text;
    EXPECT_EQ(KORDMBU8ToCodePage(nullptr, text, GetParam().bytes), GetParam().status);
    EXPECT_EQ(text, ExpectedInUtf8());
}

std::vector<Row> RowsOfUtf8() {
    std::vector<Row> rows(std::begin(kRows), std::end(kRows));
    std::erase_if(rows, [](const Row& row) { return std::string(row.encoding) != "UTF-8"; });
    return rows;
}

INSTANTIATE_TEST_SUITE_P(All, TranscodeUtf8Table, testing::ValuesIn(RowsOfUtf8()), NameOfRow());

} // namespace
