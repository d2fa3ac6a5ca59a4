#include "../../../src/transform/functions/texts/text_limits.h"
#include "support/rows.h"

#include <MCVeltrane_900/StringValue.h>
#include <MCVeltrane_900/TransformationDictionary.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

using MCVeltrane_900::StringValue;
using Functions = MCVeltrane_900::TransformationDictionary;

namespace {

StringValue Text(const std::string& text, int length) {
    StringValue value(text);
    value.SetLength(length);
    return value;
}

struct TextRow {
    const char* name;
    std::string (*function)(const StringValue*, int&);
    std::string text;
    int length;
    std::string expected;
    int expectedLength;
};

class TextFunction : public testing::TestWithParam<TextRow> {};

TEST_P(TextFunction, GivesTextAndLength) {
    const TextRow& row = GetParam();
    const StringValue value = Text(row.text, row.length);
    int length = -77;
    EXPECT_EQ(row.function(&value, length), row.expected);
    EXPECT_EQ(length, row.expectedLength);
}

std::string Upper(const StringValue* value, int& length) {
    return Functions().ToUpperCase(value, length);
}
std::string Lower(const StringValue* value, int& length) {
    return Functions().ToLowerCase(value, length);
}

const TextRow kTextRows[] = {
    {"LtrimBlanks", Functions::Ltrim, "  ab ", 10, "ab ", 8},
    {"LtrimRemovesLeadingTab", Functions::Ltrim, "\tab", 3, "ab", 2},
    {"LtrimNothingToTrim", Functions::Ltrim, "ab", 2, "ab", 2},
    {"LtrimAllBlank", Functions::Ltrim, "   ", 3, "", 0},
    {"LtrimEmptyKeepsLength", Functions::Ltrim, "", 5, "", 5},
    {"LtrimNegativeLengthBecomesZero", Functions::Ltrim, "ab", -3, "ab", 0},
    {"RtrimBlanks", Functions::Rtrim, " ab  ", 10, " ab", 3},
    {"RtrimLeavesTrailingTab", Functions::Rtrim, "ab\t", 3, "ab\t", 3},
    {"RtrimBlankBehindTab", Functions::Rtrim, "ab\t ", 4, "ab\t", 3},
    {"RtrimEmpty", Functions::Rtrim, "", 5, "", 0},
    {"RtrimAllBlank", Functions::Rtrim, "   ", 5, "", 0},
    {"UpperKeepsLength", Upper, "aBc1", 7, "ABC1", 7},
    {"LowerKeepsLength", Lower, "aBc1", -1, "abc1", -1},
    {"UpperLeavesOtherLetters", Upper, "a\xC3\xA4\xC3\x9F\xD0\xB6z", 9, "A\xC3\xA4\xC3\x9F\xD0\xB6Z", 9},
    {"LowerLeavesOtherLetters", Lower, "A\xC3\x84\xD0\x96Z", 9, "a\xC3\x84\xD0\x96z", 9},
};

INSTANTIATE_TEST_SUITE_P(Rows, TextFunction, testing::ValuesIn(kTextRows), veltrane::tests::NameOfRow());

struct SubstringRow {
    const char* name;
    std::string text;
    int length;
    int start;
    std::string expected;
    int expectedLength;
};

class SubstringToTheEnd : public testing::TestWithParam<SubstringRow> {};

TEST_P(SubstringToTheEnd, GivesTextAndLength) {
    const SubstringRow& row = GetParam();
    const StringValue value = Text(row.text, row.length);
    int length = -77;
    EXPECT_EQ(Functions::Substring(&value, row.start, length), row.expected);
    EXPECT_EQ(length, row.expectedLength);
}

const SubstringRow kSubstringRows[] = {
    {"FromTwoLengthIsTheStart", "abcd", 9, 2, "bcd", 2},
    {"FromOne", "abcd", 9, 1, "abcd", 1},
    {"StartZero", "abcd", 9, 0, "", 9},
    {"StartAtSize", "abcd", 9, 4, "", 9},
    {"OnePastTheEnd", "abcd", 9, 5, "", 9},
    {"NegativeStart", "abcd", -2, -1, "", 0},
    {"Empty", "", 9, 1, "", 0},
};

INSTANTIATE_TEST_SUITE_P(Rows, SubstringToTheEnd, testing::ValuesIn(kSubstringRows), veltrane::tests::NameOfRow());

struct CountedRow {
    const char* name;
    std::string text;
    int start;
    int count;
    std::string expected;
    int expectedLength;
};

class CountedSubstring : public testing::TestWithParam<CountedRow> {};

TEST_P(CountedSubstring, CountsBytes) {
    const CountedRow& row = GetParam();
    const StringValue value(row.text);
    int length = -77;
    EXPECT_EQ(Functions::Substring(&value, row.start, row.count, length), row.expected);
    EXPECT_EQ(length, row.expectedLength);
}

const CountedRow kByteRows[] = {
    {"Middle", "abcd", 2, 2, "bc", 2},
    {"CountBeyondTheEnd", "abcd", 3, 9, "cd", 2},
    {"StartAtSize", "abcd", 4, 1, "d", 1},
    {"StartPastTheEnd", "abcd", 5, 1, "", 0},
    {"StartZero", "abcd", 0, 1, "", 0},
    {"CountZero", "abcd", 1, 0, "", 0},
    {"NegativeCount", "abcd", 1, -1, "", 0},
    {"LargestCountDoesNotOverflow", "abcd", 2, 2147483647, "bcd", 3},
    {"Empty", "", 1, 1, "", 0},
};

INSTANTIATE_TEST_SUITE_P(Rows, CountedSubstring, testing::ValuesIn(kByteRows), veltrane::tests::NameOfRow());

class UnicodeSubstring : public testing::TestWithParam<CountedRow> {};

TEST_P(UnicodeSubstring, CountsUtf16Units) {
    const CountedRow& row = GetParam();
    const StringValue value(row.text);
    int length = -77;
    EXPECT_EQ(Functions::Substring_unicode(&value, row.start, row.count, length), row.expected);
    EXPECT_EQ(length, row.expectedLength);
}

const CountedRow kUnicodeRows[] = {
    {"NonAsciiIsOnePosition", "\xC3\xA4\xC3\xB6\xC3\xBC", 2, 1, "\xC3\xB6", 2},
    {"LengthIsInBytes", "a\xE2\x82\xAC z", 2, 2, "\xE2\x82\xAC ", 4},
    {"BeyondTheEnd", "abc", 2, 9, "bc", 2},
    {"StartPastTheEnd", "abc", 4, 1, "", 0},
    {"StartZero", "abc", 0, 2, "", 0},
    {"InvalidBytesBecomeReplacements", "a\377b", 2, 1, "\xEF\xBF\xBD", 3},
    {"Empty", "", 1, 1, "", 0},
};

INSTANTIATE_TEST_SUITE_P(Rows, UnicodeSubstring, testing::ValuesIn(kUnicodeRows), veltrane::tests::NameOfRow());

TEST(Concat, FillsEachArgumentToItsWidth) {
    int length = -1;
    EXPECT_EQ(Functions::Concat({"ab", "cdef"}, {4, 2}, length), "ab  cd");
    EXPECT_EQ(length, 6);
}

TEST(Concat, ReachesAsFarAsTheWidths) {
    int length = -1;
    EXPECT_EQ(Functions::Concat({"ab", "cd"}, {2}, length), "ab");
    EXPECT_EQ(length, 2);
}

TEST(KeptConcat, NegativeWidthGivesTheWholeTextAndCounts) {
    int length = -1;
    EXPECT_EQ(Functions::Concat({"ab", "cd"}, {-1, 2}, length), "abcd");
    EXPECT_EQ(length, 1);
    EXPECT_EQ(Functions::Concat({"ab", "cd", ""}, {-2147483647 - 1, 0, -1}, length), "ab");
    EXPECT_EQ(length, -2147483647 - 1);
}

TEST(Concat, HugeWidthIsFilledUpToABound) {
    int length = -1;
    const std::string text = Functions::Concat({"ab", "cd"}, {2147483647, 2147483647}, length);
    EXPECT_EQ(text.size(), std::size_t{1} << 24U);
    EXPECT_EQ(length, 2147483647);
}

TEST(Concat, WholeTextsEndAtTheSameBound) {
    int length = -1;
    const std::string most(std::size_t{1} << 24U, 'a');
    EXPECT_EQ(Functions::Concat({"b", most, "c"}, {-1, -1, -1}, length), "b" + most.substr(1));
    EXPECT_EQ(length, -3);
}

// Fields that each join the one before with itself would double with every field.
TEST(Concat, JoinedTextsEndAtTheSameBound) {
    std::string text = "abc";
    for (int field = 0; field < 24; ++field) {
        int length = 0;
        const int width = static_cast<int>(text.size());
        text = Functions::Concat({text, text}, {width, width}, length);
        EXPECT_EQ(length, 2 * width);
    }
    EXPECT_EQ(text.size(), std::size_t{1} << 24U);
    EXPECT_EQ(text.substr(0, 6), "abcabc");
}

TEST(Matches, FindsThePatternInsideTheText) {
    EXPECT_EQ(Functions::Matches({"abc", "b"}), 1.0);
}
TEST(Matches, FindsNothing) {
    EXPECT_EQ(Functions::Matches({"abc", "^b"}), 0.0);
}
TEST(Matches, PatternThatDoesNotCompile) {
    EXPECT_EQ(Functions::Matches({"abc", "("}), 0.0);
}
TEST(Matches, TooFewTexts) {
    EXPECT_EQ(Functions::Matches({"abc"}), 0.0);
}
TEST(Matches, NonAsciiIsOneCharacter) {
    EXPECT_EQ(Functions::Matches({"\xC3\xA4", "^.$"}), 1.0);
}

// Exponential backtracking ends at the bound and counts as no match.
TEST(Matches, SlowPatternEnds) {
    EXPECT_EQ(Functions::Matches({std::string(60, 'a') + "!", "^(a+)+$"}), 0.0);
}

TEST(Matches, LongTextsOfOrdinaryExpressionsStayInTheBounds) {
    const std::string longText(1'000'000, 'a');
    EXPECT_EQ(Functions::Matches({longText + "b", "(a|c)*b"}), 1.0);
    EXPECT_EQ(Functions::Matches({longText + "b", "^((a)|(c))*b$"}), 1.0);
    EXPECT_EQ(Functions::Matches({longText + "x", "^(?:a|b|c|d|e|f|g|h)*x$"}), 1.0);
    EXPECT_EQ(Functions::Matches({longText, "^((((((((a))))))))*$"}), 1.0);
    EXPECT_EQ(Functions::Matches({longText, "^(a?)*$"}), 1.0);
}

TEST(Matches, AListOfWordsOverALongTextStaysInTheBounds) {
    const std::string longText(200'000, 'a');
    std::string words = "a0";
    for (int i = 1; i < 80; ++i) {
        words += "|a" + std::to_string(i);
    }
    EXPECT_EQ(Functions::Matches({longText + "79", words}), 1.0);
    EXPECT_EQ(Functions::Matches({longText, words}), 0.0);
}

TEST(Matches, RunawayExpressionsEndOnLongTextsToo) {
    const std::string longText(200'000, 'a');
    EXPECT_EQ(Functions::Matches({longText, "(a+)+b"}), 0.0);
    EXPECT_EQ(Functions::Matches({longText + "c", "^(a|aa)+$"}), 0.0);
    EXPECT_EQ(Functions::Matches({"b" + longText, "(a+)+b|ba+$"}), 1.0);
}

TEST(RegexBounds, GrowWithTheText) {
    using veltrane::functions::RegexStack;
    using veltrane::functions::RegexTicks;
    EXPECT_EQ(RegexTicks(0, 0), 100);
    EXPECT_EQ(RegexTicks(10, 90), 100);
    EXPECT_EQ(RegexTicks(1'000'000, 0), 100 + 3200);
    EXPECT_EQ(RegexTicks(1'000'000, 8), 100 + 4000);
    EXPECT_EQ(RegexTicks(1'000'000, 96), 100 + 12800);
    EXPECT_EQ(RegexTicks(1'000'000, 9600), 100 + 12800);
    EXPECT_EQ(RegexTicks(std::int64_t{1} << 24U, 0), 100 + 53687);
    EXPECT_EQ(RegexTicks(std::numeric_limits<std::int64_t>::max() / 256, 96), 2147483647);
    EXPECT_EQ(RegexStack(0, 0), 8 << 20U);
    EXPECT_EQ(RegexStack(1'000'000, 0), (8 << 20U) + 48'000'000);
    EXPECT_EQ(RegexStack(1'000'000, 1), (8 << 20U) + 84'000'000);
    EXPECT_EQ(RegexStack(1 << 24U, 9), 768 << 20U);
    // What "(a|c)*b" keeps for each unit: two frames of five numbers.
    EXPECT_GE(RegexStack(1 << 24U, 1), (1 << 24U) * 40);
}

TEST(Matches, BytesThatAreNoUtf8AreReplacementCharacters) {
    EXPECT_EQ(Functions::Matches({"a\xFF", "^a\\x{FFFD}$"}), 1.0);
    EXPECT_EQ(Functions::Matches({"a\xEF\xBF\xBD", "a\xFF"}), 1.0);
}

TEST(KeptReplace, AppendsTheOutcomeToTheSubject) {
    int length = -1;
    EXPECT_EQ(Functions::Replace({"abc", "b", "x"}, length), "abcaxc");
    EXPECT_EQ(length, 6);
}

TEST(Replace, OfEveryLetterOfALongText) {
    const std::string longText(1'000'000, 'a');
    int length = -1;
    EXPECT_TRUE(Functions::Replace({longText, "a", "b"}, length) == longText + std::string(1'000'000, 'b'));
    EXPECT_EQ(length, 2'000'000);
    EXPECT_TRUE(Functions::Replace({longText, "a+", "b"}, length) == longText + "b");
    EXPECT_EQ(length, 1'000'001);
}

TEST(Replace, PatternThatDoesNotCompileGivesTheSubject) {
    int length = -1;
    EXPECT_EQ(Functions::Replace({"abc", "(", "x"}, length), "abc");
    EXPECT_EQ(length, 3);
}

TEST(Replace, KnowsGroups) {
    int length = -1;
    EXPECT_EQ(Functions::Replace({"ab", "(a)(b)", "$2$1"}, length), "abba");
}

TEST(Replace, BadGroupGivesTheSubject) {
    int length = -1;
    EXPECT_EQ(Functions::Replace({"ab", "a", "$7"}, length), "ab");
    EXPECT_EQ(length, 2);
}

TEST(Replace, NoMatchAppendsTheSubjectAgain) {
    int length = -1;
    EXPECT_EQ(Functions::Replace({"abc", "z", "x"}, length), "abcabc");
    EXPECT_EQ(length, 6);
}

TEST(Replace, EveryMatchAndEveryEmptyOne) {
    int length = -1;
    EXPECT_EQ(Functions::Replace({"aXbX", "X", "--"}, length), "aXbXa--b--");
    EXPECT_EQ(Functions::Replace({"ab", "", "-"}, length), "ab-a-b-");
    EXPECT_EQ(Functions::Replace({"", "^", "x"}, length), "x");
    EXPECT_EQ(length, 1);
}

TEST(Replace, TooFewTextsGiveTheSubject) {
    int length = -1;
    EXPECT_EQ(Functions::Replace({"abc", "b"}, length), "abc");
    EXPECT_EQ(length, 3);
    EXPECT_EQ(Functions::Replace({}, length), "");
    EXPECT_EQ(length, 0);
}

TEST(Replace, InvalidBytesStayAheadAndBecomeReplacementsBehind) {
    int length = -1;
    EXPECT_EQ(Functions::Replace({"a\xFF", "a", "b"}, length), "a\377b\xEF\xBF\xBD");
    EXPECT_EQ(length, 6);
}

// Exponential backtracking ends at the bound, and what was replaced before it does not count.
TEST(Replace, SlowPatternGivesTheSubject) {
    const std::string subject = "b" + std::string(60, 'a') + "!";
    int length = -1;
    EXPECT_EQ(Functions::Replace({subject, "b|(a+)+$", "x"}, length), subject);
    EXPECT_EQ(length, 62);
}

TEST(Replace, AnOutcomeThatRepeatsTheMatchWithoutEndGivesTheSubject) {
    const std::string subject(100000, 'a');
    std::string replacement;
    for (int i = 0; i < 100000; ++i) {
        replacement += "$0";
    }
    int length = -1;
    EXPECT_EQ(Functions::Replace({subject, "a+", replacement}, length), subject);
    EXPECT_EQ(length, 100000);
    EXPECT_EQ(Functions::Replace({subject, "a", std::string(1000000, 'x')}, length), subject);
    EXPECT_EQ(length, 100000);
}

// Fields that each replace in the one before would double with every field.
TEST(Replace, ATextStopsGrowingAtTheBound) {
    std::string text = "abc";
    for (int field = 0; field < 24; ++field) {
        int length = 0;
        text = Functions::Replace({text, "z", ""}, length);
    }
    EXPECT_EQ(text.size(), std::size_t{3} << 22U);
}

TEST(Replace, LengthIsInBytes) {
    int length = -1;
    EXPECT_EQ(Functions::Replace({"a", "a", "\xE2\x82\xAC"}, length), "a\xE2\x82\xAC");
    EXPECT_EQ(length, 4);
}

} // namespace
