// The conversions on buffers: what a field holds after texts that fit, fit exactly, are cut, and can't be converted.
#include "support/rows.h"
#include "text/conversion_calls.h"

#include <gtest/gtest.h>

namespace {

using namespace MCXML_900;
using namespace veltrane::tests;
using namespace std::string_literals;

constexpr bool kTerminated = true;
constexpr bool kByLength = false;

template <class Target, class Source>
struct Row {
    const char* name;
    const char* codePage; // null for the default, UTF-8
    std::basic_string<Source> text;
    bool terminated;
    int size;
    std::basic_string<Target> field;
    int written;
    int status;
};

template <class Target, class Source>
void PrintTo(const Row<Target, Source>& row, std::ostream* out) {
    *out << row.name;
}

using Bytes = Row<char, char>;
using ToUnits = Row<char16_t, char>;
using FromUnits = Row<char, char16_t>;

template <class Target, class Source, class Convert>
void Expect(const Row<Target, Source>& row, Convert convert) {
    const Converter converter = MakeConverter(row.codePage);
    ASSERT_EQ(converter == nullptr, row.codePage == nullptr);
    const auto filled = FillField<Target, Source>(convert, converter.get(), row.text, row.terminated, row.size);
    EXPECT_EQ(filled.field, row.field);
    EXPECT_EQ(filled.written, row.written);
    EXPECT_EQ(filled.status, row.status);
}

template <class Target, class Source, class Convert>
void ExpectUnicode(const Row<Target, Source>& row, Convert convert) {
    const auto filled = FillField<Target, Source>(convert, row.text, row.terminated, row.size);
    EXPECT_EQ(filled.field, row.field);
    EXPECT_EQ(filled.written, row.written);
    EXPECT_EQ(filled.status, row.status);
}

// UTF-8 to a code page. U+65E5 has the bytes E6 97 A5 in UTF-8 and 93 FA in code page 932.
class Utf8ToCodePageField : public testing::TestWithParam<Bytes> {};

TEST_P(Utf8ToCodePageField, Row) {
    Expect(GetParam(), KORDMB8toCodePage);
}

const Bytes kUtf8ToCodePage[] = {
    {"OneBlankBehindAShorterText", "932", "a\xE6\x97\xA5", kByLength, 6, "a\x93\xFA ##", 3, 0},
    {"OneBlankFillsTheLastPlace", "932", "a\xE6\x97\xA5", kByLength, 4, "a\x93\xFA ", 3, 0},
    {"ExactByLength", "932", "a\xE6\x97\xA5", kByLength, 3, "a\x93\xFA", 3, 0},
    {"TerminatorBehindAShorterText", "932", "a\xE6\x97\xA5", kTerminated, 6, "a\x93\xFA\0##"s, 3, 0},
    {"ExactTerminated", "932", "a\xE6\x97\xA5", kTerminated, 4, "a\x93\xFA\0"s, 3, 0},
    {"CutWithinACharacterByLength", "932", "a\xE6\x97\xA5", kByLength, 2, "a ", 1, 1},
    {"CutWithinACharacterTerminated", "932", "a\xE6\x97\xA5", kTerminated, 3, "a \0"s, 1, 1},
    {"CutBetweenCharactersByLength", "932", "a\xE6\x97\xA5z", kByLength, 3, "a\x93\xFA", 3, 1},
    {"CutBetweenCharactersTerminated", "932", "a\xE6\x97\xA5z", kTerminated, 4, "a\x93\xFA\0"s, 3, 1},
    {"NoWholeCharacterFits", "932", "\xE6\x97\xA5", kByLength, 1, " ", 0, 1},
    {"NoRoomByLength", "932", "a", kByLength, 0, "", 0, 1},
    {"NoRoomTerminated", "932", "a", kTerminated, 0, "", 0, 1},
    {"NoRoomForNothingByLength", "932", "", kByLength, 0, "", 0, 0},
    {"NoRoomForNothingTerminated", "932", "", kTerminated, 0, "", 0, 0},
    {"NegativeRoom", "932", "a", kByLength, -5, "", 0, 1},
    {"RoomForTheTerminatorOnly", "932", "a", kTerminated, 1, "\0"s, 0, 1},
    {"EmptyByLength", "932", "", kByLength, 3, " ##", 0, 0},
    {"EmptyTerminated", "932", "", kTerminated, 3, "\0##"s, 0, 0},
    {"NulWithinALength", "1252", "a\0b"s, kByLength, 4, "a\0b "s, 3, 0},
    {"Unassignable", "1252", "a\xE6\x97\xA5z", kByLength, 4, "a?z ", 3, 3},
    {"UnassignableTerminated", "1252", "a\xE6\x97\xA5z", kTerminated, 4, "a?z\0"s, 3, 3},
    {"UnassignableFitsExactly", "1252", "a\xE6\x97\xA5z", kByLength, 3, "a?z", 3, 3},
    {"UnassignableAndCut", "1252", "a\xE6\x97\xA5z", kByLength, 2, "a?", 2, 1},
    {"UnassignableBehindTheCut", "1252", "abc\xE6\x97\xA5", kByLength, 2, "ab", 2, 1},
    {"ManyCharactersAndCut", "936", "\xE4\xB8\x80\xE4\xB8\x81\xE4\xB8\x83", kByLength, 5, "\xD2\xBB\xB6\xA1 ", 4, 1},
    {"FourBytesAndCut", "GB18030", "a\xF0\x9F\x98\x80", kByLength, 4, "a   ", 1, 1},
    {"Default", nullptr, "a\xE6\x97\xA5z", kByLength, 6, "a\xE6\x97\xA5z ", 5, 0},
    {"DefaultAndCut", nullptr, "a\xE6\x97\xA5z", kByLength, 3, "a  ", 1, 1},
    {"DefaultAndInvalid", nullptr, "a\xFFz", kByLength, 4, "a?z ", 3, 3},
    {"EscapesAndCut", "ISO-2022-JP", "\xE6\x97\xA5", kByLength, 4, "    ", 0, 1},
};
INSTANTIATE_TEST_SUITE_P(All, Utf8ToCodePageField, testing::ValuesIn(kUtf8ToCodePage), NameOfRow());

// A code page to UTF-8.
class CodePageToUtf8Field : public testing::TestWithParam<Bytes> {};

TEST_P(CodePageToUtf8Field, Row) {
    Expect(GetParam(), KORDMBCodePageto8);
}

const Bytes kCodePageToUtf8[] = {
    {"OneBlankBehindAShorterText", "932", "a\x93\xFA", kByLength, 6, "a\xE6\x97\xA5 #", 4, 0},
    {"ExactByLength", "932", "a\x93\xFA", kByLength, 4, "a\xE6\x97\xA5", 4, 0},
    {"TerminatorBehindAShorterText", "932", "a\x93\xFA", kTerminated, 6, "a\xE6\x97\xA5\0#"s, 4, 0},
    {"ExactTerminated", "932", "a\x93\xFA", kTerminated, 5, "a\xE6\x97\xA5\0"s, 4, 0},
    {"CutBehindTheSecondByte", "932", "a\x93\xFA", kByLength, 3, "a  ", 1, 1},
    {"CutBehindTheFirstByte", "932", "a\x93\xFA", kByLength, 2, "a ", 1, 1},
    {"CutOfTwoBytes", "1252", "a\xE9", kByLength, 2, "a ", 1, 1},
    {"CutOfFourBytes", "GB18030", "a\x94\x39\xFC\x36", kByLength, 4, "a   ", 1, 1},
    {"CutTerminated", "932", "a\x93\xFA", kTerminated, 4, "a  \0"s, 1, 1},
    {"CutBetweenCharacters", "932", "\x93\xFA\x93\xFA", kByLength, 3, "\xE6\x97\xA5", 3, 1},
    {"NoRoom", "932", "a", kByLength, 0, "", 0, 1},
    {"RoomForTheTerminatorOnly", "932", "a", kTerminated, 1, "\0"s, 0, 1},
    {"EmptyByLength", "932", "", kByLength, 2, " #", 0, 0},
    {"EmptyTerminated", "932", "", kTerminated, 2, "\0#"s, 0, 0},
    {"CutLeadOf932", "932", "a\x93", kByLength, 4, "a? #", 2, 3},
    {"CutLeadOf936", "936", "a\x81", kByLength, 4, "a? #", 2, 3},
    {"CutLeadOf949", "949", "a\xB0", kByLength, 4, "a? #", 2, 3},
    {"CutLeadOf950", "950", "a\xA4", kByLength, 4, "a? #", 2, 3},
    {"LeadWithoutATrail", "932", "\x93 z", kByLength, 4, "? z ", 3, 3},
    {"UnassignedPair", "932", "\x85\x40z", kByLength, 3, "?z ", 2, 3},
    {"FailedFitsExactly", "932", "\x93", kByLength, 1, "?", 1, 3},
    {"FailedAndCut", "932", "\x93", kByLength, 0, "", 0, 1},
    {"Default", nullptr, "\xE6\x97\xA5", kByLength, 4, "\xE6\x97\xA5 ", 3, 0},
    {"DefaultAndInvalid", nullptr, "\xE6\x97", kByLength, 4, "? ##", 1, 3},
};
INSTANTIATE_TEST_SUITE_P(All, CodePageToUtf8Field, testing::ValuesIn(kCodePageToUtf8), NameOfRow());

// UTF-8 to UTF-16.
class Utf8ToUtf16Field : public testing::TestWithParam<ToUnits> {};

TEST_P(Utf8ToUtf16Field, Row) {
    ExpectUnicode(GetParam(), KORDMB8to16);
}

const ToUnits kUtf8ToUtf16[] = {
    {"OneBlankBehindAShorterText", nullptr, "a\xE6\x97\xA5", kByLength, 4, u"a\u65e5 #", 2, 0},
    {"ExactByLength", nullptr, "a\xE6\x97\xA5", kByLength, 2, u"a\u65e5", 2, 0},
    {"TerminatorBehindAShorterText", nullptr, "a\xE6\x97\xA5", kTerminated, 4, u"a\u65e5\0#"s, 2, 0},
    {"ExactTerminated", nullptr, "a\xE6\x97\xA5", kTerminated, 3, u"a\u65e5\0"s, 2, 0},
    {"CutByLength", nullptr, "a\xE6\x97\xA5", kByLength, 1, u"a", 1, 1},
    {"CutTerminated", nullptr, "a\xE6\x97\xA5", kTerminated, 2, u"a\0"s, 1, 1},
    {"PairByLength", nullptr, "a\xF0\x9F\x98\x80", kByLength, 3, u"a\U0001F600", 3, 0},
    {"PairCutByLength", nullptr, "a\xF0\x9F\x98\x80", kByLength, 2, u"a ", 1, 1},
    {"PairCutTerminated", nullptr, "a\xF0\x9F\x98\x80", kTerminated, 3, u"a \0"s, 1, 1},
    {"PairCutAtTheStart", nullptr, "\xF0\x9F\x98\x80", kByLength, 1, u" ", 0, 1},
    {"PairCutOff", nullptr, "a\xF0\x9F\x98\x80", kByLength, 1, u"a", 1, 1},
    {"NoRoomByLength", nullptr, "a", kByLength, 0, u"", 0, 1},
    {"NoRoomTerminated", nullptr, "a", kTerminated, 0, u"", 0, 1},
    {"NoRoomForNothing", nullptr, "", kByLength, 0, u"", 0, 0},
    {"NegativeRoom", nullptr, "a", kTerminated, -1, u"", 0, 1},
    {"RoomForTheTerminatorOnly", nullptr, "a", kTerminated, 1, u"\0"s, 0, 1},
    {"EmptyByLength", nullptr, "", kByLength, 2, u" #", 0, 0},
    {"EmptyTerminated", nullptr, "", kTerminated, 2, u"\0#"s, 0, 0},
    {"Invalid", nullptr, "a\xFFz", kByLength, 4, u"a?z ", 3, 3},
    {"InvalidFitsExactly", nullptr, "a\xFFz", kByLength, 3, u"a?z", 3, 3},
    {"InvalidTerminated", nullptr, "a\xFFz", kTerminated, 5, u"a?z\0#"s, 3, 3},
    {"InvalidAndCut", nullptr, "a\xFFz", kByLength, 2, u"a?", 2, 1},
    {"InvalidBehindTheCut", nullptr, "abc\xFF", kByLength, 2, u"ab", 2, 1},
    {"InvalidAndAPairCut", nullptr, "\xFF\xF0\x9F\x98\x80", kByLength, 2, u"? ", 1, 1},
};
INSTANTIATE_TEST_SUITE_P(All, Utf8ToUtf16Field, testing::ValuesIn(kUtf8ToUtf16), NameOfRow());

// UTF-16 to UTF-8.
class Utf16ToUtf8Field : public testing::TestWithParam<FromUnits> {};

TEST_P(Utf16ToUtf8Field, Row) {
    ExpectUnicode(GetParam(), KORDMB16to8);
}

const std::u16string kLoneLead(1, u'\xD83D');
const std::u16string kLoneTrail(1, u'\xDE00');

const FromUnits kUtf16ToUtf8[] = {
    {"OneBlankBehindAShorterText", nullptr, u"a\u65e5", kByLength, 6, "a\xE6\x97\xA5 #", 4, 0},
    {"ExactByLength", nullptr, u"a\u65e5", kByLength, 4, "a\xE6\x97\xA5", 4, 0},
    {"TerminatorBehindAShorterText", nullptr, u"a\u65e5", kTerminated, 6, "a\xE6\x97\xA5\0#"s, 4, 0},
    {"ExactTerminated", nullptr, u"a\u65e5", kTerminated, 5, "a\xE6\x97\xA5\0"s, 4, 0},
    {"CutBehindTheSecondByte", nullptr, u"a\u65e5", kByLength, 3, "a  ", 1, 1},
    {"CutBehindTheFirstByte", nullptr, u"a\u65e5", kByLength, 2, "a ", 1, 1},
    {"CutOfTwoBytes", nullptr, u"a\u00e9", kByLength, 2, "a ", 1, 1},
    {"CutOfFourBytes", nullptr, u"a\U0001F600", kByLength, 4, "a   ", 1, 1},
    {"CutTerminated", nullptr, u"a\u65e5z", kTerminated, 4, "a  \0"s, 1, 1},
    {"CutBetweenCharacters", nullptr, u"\u65e5z", kByLength, 3, "\xE6\x97\xA5", 3, 1},
    {"NoRoom", nullptr, u"a", kByLength, 0, "", 0, 1},
    {"NoRoomForNothing", nullptr, u"", kTerminated, 0, "", 0, 0},
    {"RoomForTheTerminatorOnly", nullptr, u"a", kTerminated, 1, "\0"s, 0, 1},
    {"EmptyByLength", nullptr, u"", kByLength, 2, " #", 0, 0},
    {"EmptyTerminated", nullptr, u"", kTerminated, 2, "\0#"s, 0, 0},
    {"LoneLead", nullptr, u"a" + kLoneLead + u"z", kByLength, 4, "a?z ", 3, 3},
    {"LoneLeadAtTheEnd", nullptr, u"a" + kLoneLead, kTerminated, 4, "a?\0#"s, 2, 3},
    {"LoneTrail", nullptr, u"a" + kLoneTrail + u"z", kByLength, 3, "a?z", 3, 3},
    {"LoneTrailAndCut", nullptr, u"a" + kLoneTrail + u"z", kByLength, 2, "a?", 2, 1},
};
INSTANTIATE_TEST_SUITE_P(All, Utf16ToUtf8Field, testing::ValuesIn(kUtf16ToUtf8), NameOfRow());

// A code page to UTF-16.
class CodePageToUtf16Field : public testing::TestWithParam<ToUnits> {};

TEST_P(CodePageToUtf16Field, Row) {
    Expect(GetParam(), KORDMBCodePageto16);
}

const ToUnits kCodePageToUtf16[] = {
    {"OneBlankBehindAShorterText", "932", "a\x93\xFA", kByLength, 4, u"a\u65e5 #", 2, 0},
    {"ExactByLength", "932", "a\x93\xFA", kByLength, 2, u"a\u65e5", 2, 0},
    {"TerminatorBehindAShorterText", "932", "a\x93\xFA", kTerminated, 4, u"a\u65e5\0#"s, 2, 0},
    {"ExactTerminated", "932", "a\x93\xFA", kTerminated, 3, u"a\u65e5\0"s, 2, 0},
    {"CutByLength", "932", "a\x93\xFA", kByLength, 1, u"a", 1, 1},
    {"CutTerminated", "932", "a\x93\xFA", kTerminated, 2, u"a\0"s, 1, 1},
    {"PairCutByLength", "GB18030", "a\x94\x39\xFC\x36", kByLength, 2, u"a ", 1, 1},
    {"PairCutTerminated", "GB18030", "a\x94\x39\xFC\x36", kTerminated, 3, u"a \0"s, 1, 1},
    {"PairByLength", "GB18030", "a\x94\x39\xFC\x36", kByLength, 4, u"a\U0001F600 ", 3, 0},
    {"NoRoom", "932", "a", kByLength, 0, u"", 0, 1},
    {"RoomForTheTerminatorOnly", "932", "a", kTerminated, 1, u"\0"s, 0, 1},
    {"EmptyByLength", "932", "", kByLength, 2, u" #", 0, 0},
    {"EmptyTerminated", "932", "", kTerminated, 2, u"\0#"s, 0, 0},
    {"CutLead", "932", "a\x93", kByLength, 4, u"a? #", 2, 3},
    {"FailedFitsExactly", "932", "a\x93", kByLength, 2, u"a?", 2, 3},
    {"FailedAndCut", "932", "a\x93z", kByLength, 1, u"a", 1, 1},
    {"Default", nullptr, "\xE6\x97\xA5", kByLength, 2, u"\u65e5 ", 1, 0},
};
INSTANTIATE_TEST_SUITE_P(All, CodePageToUtf16Field, testing::ValuesIn(kCodePageToUtf16), NameOfRow());

// UTF-16 to a code page.
class Utf16ToCodePageField : public testing::TestWithParam<FromUnits> {};

TEST_P(Utf16ToCodePageField, Row) {
    Expect(GetParam(), KORDMB16toCodePage);
}

const FromUnits kUtf16ToCodePage[] = {
    {"OneBlankBehindAShorterText", "932", u"a\u65e5", kByLength, 5, "a\x93\xFA #", 3, 0},
    {"ExactByLength", "932", u"a\u65e5", kByLength, 3, "a\x93\xFA", 3, 0},
    {"TerminatorBehindAShorterText", "932", u"a\u65e5", kTerminated, 5, "a\x93\xFA\0#"s, 3, 0},
    {"ExactTerminated", "932", u"a\u65e5", kTerminated, 4, "a\x93\xFA\0"s, 3, 0},
    {"CutWithinACharacterByLength", "932", u"a\u65e5", kByLength, 2, "a ", 1, 1},
    {"CutWithinACharacterTerminated", "932", u"a\u65e5", kTerminated, 3, "a \0"s, 1, 1},
    {"NoRoom", "932", u"a", kByLength, 0, "", 0, 1},
    {"RoomForTheTerminatorOnly", "932", u"a", kTerminated, 1, "\0"s, 0, 1},
    {"EmptyByLength", "932", u"", kByLength, 2, " #", 0, 0},
    {"EmptyTerminated", "932", u"", kTerminated, 2, "\0#"s, 0, 0},
    {"Unassignable", "1252", u"a\u65e5z", kByLength, 4, "a?z ", 3, 3},
    {"UnassignableFitsExactly", "1252", u"a\u65e5z", kByLength, 3, "a?z", 3, 3},
    {"UnassignableAndCut", "1252", u"a\u65e5z", kByLength, 2, "a?", 2, 1},
    {"LoneLead", "1252", u"a" + kLoneLead + u"z", kByLength, 4, "a?z ", 3, 3},
    {"LoneTrail", "1252", u"a" + kLoneTrail + u"z", kTerminated, 4, "a?z\0"s, 3, 3},
    {"Default", nullptr, u"\u65e5", kByLength, 4, "\xE6\x97\xA5 ", 3, 0},
    {"DefaultAndLoneLead", nullptr, kLoneLead, kByLength, 4, "? ##", 1, 3},
};
INSTANTIATE_TEST_SUITE_P(All, Utf16ToCodePageField, testing::ValuesIn(kUtf16ToCodePage), NameOfRow());

TEST(TranscodeBuffers, SmallerTargetIsCutAtAWholeCharacterAndFilledWithBlanks) {
    const Converter gbk = MakeConverter("936");
    const auto filled = FillField<char, char>(KORDMB8toCodePage, gbk.get(), "ab\xE4\xB8\x80\xE4\xB8\x81", kByLength, 5);
    EXPECT_EQ(filled, (Filled<char>{"ab\xD2\xBB ", 4, 1}));
}

TEST(TranscodeBuffers, UnassignableCharacterIsAQuestionMark) {
    const Converter latin = MakeConverter("1252");
    const auto filled = FillField<char, char>(KORDMB8toCodePage, latin.get(), "\xE4\xB8\x80", kTerminated, 2);
    EXPECT_EQ(filled, (Filled<char>{"?\0"s, 1, 3}));
}

TEST(TranscodeBuffers, MissingPointersFail) {
    char bytes[4] = "###";
    char16_t units[4] = u"###";
    int status = -77;
    EXPECT_EQ(KORDMB8toCodePage(nullptr, bytes, 4, nullptr, -1, &status), 0);
    EXPECT_EQ(status, 3);
    EXPECT_EQ(bytes[0], 0) << "a NUL-terminated text leaves one";
    EXPECT_EQ(KORDMB8to16(units, 4, nullptr, 5, &status), 0);
    EXPECT_EQ(status, 3);
    EXPECT_EQ(units[0], u'#');
    EXPECT_EQ(KORDMBCodePageto16(nullptr, nullptr, 4, "a", 1, &status), 0);
    EXPECT_EQ(status, 3);
    EXPECT_EQ(KORDMB16to8(nullptr, 0, nullptr, 0, &status), 0) << "nothing into nothing";
    EXPECT_EQ(status, 0);
    EXPECT_EQ(KORDMB16toCodePage(nullptr, nullptr, 0, nullptr, 0, &status), 0);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(KORDMB8toCodePage(nullptr, nullptr, 0, nullptr, 0, &status), 0);
    EXPECT_EQ(status, 0);
}

TEST(TranscodeBuffers, StatusMayBeNull) {
    char bytes[4];
    EXPECT_EQ(KORDMB8toCodePage(nullptr, bytes, 4, "a", -1, nullptr), 1);
    EXPECT_EQ(KORDMB16to8(bytes, 4, nullptr, -1, nullptr), 0);
    EXPECT_EQ(KORDMB8toGeneric(nullptr, bytes, 4, "a", -1, nullptr), 1);
}

TEST(TranscodeBuffers, FailureIsReportedWhereverItStands) {
    const Converter latin = MakeConverter("1252");
    const Converter japanese = MakeConverter("932");
    constexpr std::size_t kLong = 5000; // longer than any buffer of ICU's
    for (const std::size_t before : {0U, 1U, 1000U, 1022U, 1023U, 1024U, 1025U, 2047U, 2048U, 4000U}) {
        const std::string ascii(before, 'a');
        const std::string rest(kLong - before, 'z');
        std::string out;
        EXPECT_EQ(KORDMBU8ToCodePage(latin.get(), out, ascii + "\xE4\xB8\x80" + rest), 3) << before;
        EXPECT_EQ(out, ascii + "?" + rest) << before;
        EXPECT_EQ(KORDMBU8ToCodePage(nullptr, out, ascii + "\xE4\xB8" + rest), 3) << before;
        EXPECT_EQ(out, ascii + "?" + rest) << before;
        EXPECT_EQ(KORDMBCodePageToU8(japanese.get(), out, ascii + "\xFF" + rest), 3) << before;
        EXPECT_EQ(out, ascii + "?" + rest) << before;
        std::u16string units;
        EXPECT_EQ(KORDMBCodePageToU16(japanese.get(), units, ascii + "\xFF" + rest), 3) << before;
        EXPECT_EQ(units, std::u16string(before, u'a') + u"?" + std::u16string(kLong - before, u'z')) << before;
        EXPECT_EQ(KORDMBU16ToCodePage(latin.get(), out, std::u16string(before, u'a') + u'\u4e00'), 3) << before;
        EXPECT_EQ(out, ascii + "?") << before;
        EXPECT_EQ(KORDMBU8ToCodePage(latin.get(), out, ascii + rest), 0) << "and isn't kept";
    }
}

// ICU leaves out what stands for nothing visible, and the status says that the text isn't the same.
TEST(KeptInvisibleCharacter, IsLeftOutOfACodePageWithoutIt) {
    const Converter latin = MakeConverter("1252");
    const auto filled = FillField<char, char>(KORDMB8toCodePage, latin.get(), "a\xE2\x80\x8Bz", kByLength, 4);
    EXPECT_EQ(filled, (Filled<char>{"az #", 2, 3}));
}

} // namespace
