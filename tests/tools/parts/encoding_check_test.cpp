#include "files/encoding_check.h"
#include "run/report.h"
#include "support/rows.h"

#include <gtest/gtest.h>

namespace veltrane::host {
namespace {

struct TextCase {
    const char* name;
    const char* encoding;
    std::string bytes;
    bool holds;
};

const TextCase kTexts[] = {
    {"NoText", "UTF-8", "", true},
    {"Ascii", "UTF-8", "a longer text of ASCII, 35 and more", true},
    {"Letters", "UTF-8", "Gr\u00F6\u00DFe \xE6\xA8\xA1 \xF0\x9F\x98\x80", true},
    {"OtherLetters", "UTF-8", "Gr\366\337e", false},
    {"LetterOfAnotherEncodingAtTheEnd", "UTF-8", "12345678901234567\xE9", false},
    {"CutLetter", "UTF-8", "caf\xC3", false},
    {"LoneContinuation", "UTF-8", "\x80", false},
    {"OverlongSlash", "UTF-8", "\xC0\xAF", false},
    {"Surrogate", "UTF-8", "\xED\xA0\x80", false},
    {"BeyondUnicode", "UTF-8", "\xF4\x90\x80\x80", false},
    {"LastCharacter", "UTF-8", "\xF4\x8F\xBF\xBF", true},
    {"OneByteLetters", "CP1252", "Gr\366\337e \x80", true},
    {"NoCharacterOfACodePage", "CP1252", "caf\x81", false},
    {"NoCharacterOfACodePageByItsOtherName", "windows-1252", "\x9D", false},
    {"NoCharacterOfAnotherCodePage", "windows-1250", "\x83", false},
    {"NoAscii", "US-ASCII", "caf\xE9", false},
    {"EveryByteIsLatin", "ISO-8859-1", "\x80\xFF", true},
    {"DoubleByteLetters", "Shift_JIS", "\x83\x5C\x83\x8C", true},
    {"CutDoubleByteLetter", "Shift_JIS", "\x83\x5C\x83", false},
    {"NoDoubleByteLetter", "Shift_JIS", "\x83\x20", false},
    {"FourByteLetters", "GB18030", "\x81\x30\x81\x30", true},
    {"NoFourByteLetter", "GB18030", "\x81\x30\x81", false},
    {"LettersBehindAnEscape", "ISO-2022-JP", "\x1B$B$\"\x1B(B", true},
    {"NoEscape", "ISO-2022-JP", "\x1B$X", false},
    {"LongText", "Shift_JIS", std::string(1000, 'a') + "\x83\x5C" + std::string(1000, 'b'), true},
    {"LongTextThatEndsBadly", "Shift_JIS", std::string(1000, '\xB1') + "\x83", false},
};

class EncodingCheckTest : public testing::TestWithParam<TextCase> {};

TEST_P(EncodingCheckTest, Holds) {
    const EncodingCheck check(GetParam().encoding);
    EXPECT_EQ(check.Holds(GetParam().bytes), GetParam().holds);
    EXPECT_TRUE(check.Holds("the next text is looked at afresh"));
    EXPECT_EQ(check.Problem(), std::string("is not text in ") + GetParam().encoding);
}

INSTANTIATE_TEST_SUITE_P(Texts, EncodingCheckTest, testing::ValuesIn(kTexts), veltrane::tests::NameOfRow());

TEST(EscapedTest, ShowsBytesThatAreNoUtf8) {
    EXPECT_EQ(Escaped("Gr\366\337e"), "Gr\\xF6\\xDFe");
    EXPECT_EQ(Escaped("caf\xC3"), "caf\\xC3");
    EXPECT_EQ(Escaped("Gr\u00F6\u00DFe \xF0\x9F\x98\x80"), "Gr\u00F6\u00DFe \xF0\x9F\x98\x80");
    EXPECT_EQ(Escaped("a\n\r\t\x1B\x7F\u009Bb"), "a\\n\\r\\t\\x1B\\x7F\\xC2\\x9Bb");
}

} // namespace
} // namespace veltrane::host
