#include "support/allocations.h"
#include "support/dom.h"
#include "support/faults/failure.h"
#include "support/rows.h"

#include <MCVeltrane_900/DictVar.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/ScoreBinningEncoder.h>
#include <MCVeltrane_900/ScoreCatNumericEncoder.h>
#include <MCVeltrane_900/ScoreCatStringEncoder.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace veltrane::tests;

namespace {

using Strings = std::vector<std::string>;

std::string Escaped(const std::string& text) {
    std::string escaped;
    for (const char c : text) {
        escaped += c == '<' ? "&lt;" : c == '&' ? "&amp;" : std::string(1, c);
    }
    return escaped;
}

class ArrayReaders : public testing::Test {
protected:
    void SetUp() override {
        veltrane::tests::StartXml();
        translator.CreateTranscoder("UTF-8");
    }

    Strings Read(const std::string& text, const std::string& attributes = "") {
        const ParsedXml xml = ParseXml("<Array " + attributes + ">" + Escaped(text) + "</Array>");
        return translator.ParseStrArray(xml.Root());
    }

    Strings ReadFor(const ScoreDictVar& var, const std::string& text) {
        const ParsedXml xml = ParseXml("<Array>" + Escaped(text) + "</Array>");
        return translator.GetArrayElements(xml.Root(), nullptr, &var);
    }

    void ExpectArrayFailure(const std::string& xmlText, const Failure& failure) {
        const ParsedXml xml = ParseXml(xmlText);
        ExpectFailure([&] { translator.ParseStrArray(xml.Root()); }, failure);
    }

    std::vector<double> Doubles(const std::string& xmlText, int count) {
        const ParsedXml xml = ParseXml(xmlText);
        return translator.VerifyDoubleArray(xml.Root(), count);
    }

    void ExpectDoublesFailure(const std::string& xmlText, int count, const Failure& failure) {
        const ParsedXml xml = ParseXml(xmlText);
        ExpectFailure([&] { translator.VerifyDoubleArray(xml.Root(), count); }, failure);
    }

    PMMLTranslator translator{"UTF-8"};
};

struct ScanRow {
    const char* name;
    std::string text;
    Strings items;
};

class ArrayScan : public ArrayReaders, public testing::WithParamInterface<ScanRow> {};

TEST_P(ArrayScan, GivesTheItems) {
    EXPECT_EQ(Read(GetParam().text), GetParam().items);
}

const ScanRow kScanRows[] = {
    {"QuotedBlankAndPlain", "\"a b\" c", {"a b", "c"}},
    {"EscapedQuoteInside", "\"a\\\"b\"", {"a\"b"}},
    {"TwoEscapedQuotes", "\"\\\"a\\\"\" b", {"\"a\"", "b"}},
    {"OneCharacter", "x", {"x"}},
    {"SeveralBlanks", "  a   b  ", {"a", "b"}},
    {"EmptyQuotedItem", "\"\" a", {"", "a"}},
    {"BackslashElsewhereIsOrdinary", "a\\b \\", {"a\\b", "\\"}},
    {"ItemEndsAtTheClosingQuote", "\"a\"b", {"a", "b"}},
    {"NonAscii", "\xC3\xA4 \"\xE2\x82\xAC \"", {"\xC3\xA4", "\xE2\x82\xAC "}},
};

INSTANTIATE_TEST_SUITE_P(Rows, ArrayScan, testing::ValuesIn(kScanRows), veltrane::tests::NameOfRow());

// Only blanks and closing quotes end an item, or the very last position of the text.
class KeptArrayScan : public ArrayReaders, public testing::WithParamInterface<ScanRow> {};

TEST_P(KeptArrayScan, GivesTheItems) {
    EXPECT_EQ(Read(GetParam().text), GetParam().items);
}

const ScanRow kKeptScanRows[] = {
    {"TabIsAnOrdinaryCharacter", "a\tb c", {"a\tb", "c"}},
    {"NewlineEndsNothing", "a\nb c", {"a\nb", "c"}},
    {"NewlineAtTheEndLosesTheLastItem", "a b\n", {"a"}},
    {"NewlineAtTheEndKeepsAQuotedItem", "a \"b\"\n", {"a", "b"}},
    {"QuoteDropsWhatStandsRightBeforeIt", "ab\"cd\" e", {"cd", "e"}},
    {"EscapedQuoteOutsideIsSkipped", "\\\" a", {"a"}},
    {"EscapedQuoteOutsideEndsNothing", "a\\\"b c", {"a\\\"b", "c"}},
    {"EscapedQuoteAtTheEndLosesTheLastItem", "a b\\\"", {"a"}},
};

INSTANTIATE_TEST_SUITE_P(Rows, KeptArrayScan, testing::ValuesIn(kKeptScanRows), veltrane::tests::NameOfRow());

TEST_F(ArrayReaders, NullElementGivesNothing) {
    EXPECT_EQ(translator.ParseStrArray(nullptr), Strings());
}

TEST_F(ArrayReaders, StatedCountThatFits) {
    EXPECT_EQ(Read("a b", "n='2'"), Strings({"a", "b"}));
}

TEST_F(ArrayReaders, StatedCountOfThreeForTwoItems) {
    ExpectArrayFailure("<Array n='3'>a b</Array>", {ARRAY_SIZE_MISMATCH, "2", "n", "3"});
}

TEST_F(ArrayReaders, StatedCountOfZeroIsNotChecked) {
    EXPECT_EQ(Read("a b", "n='0'"), Strings({"a", "b"}));
}

TEST_F(ArrayReaders, StatedCountThatIsNoNumber) {
    ExpectArrayFailure("<Array n='two'>a b</Array>", {INVALID_VALUE_OF_TYPE, "two", "integer"});
}

TEST_F(ArrayReaders, StatedCountIsReadBeforeTheContent) {
    ExpectArrayFailure("<Array n='two'/>", {INVALID_VALUE_OF_TYPE, "two", "integer"});
}

TEST_F(ArrayReaders, NegativeStatedCountFitsNothing) {
    ExpectArrayFailure("<Array n='-1'>a</Array>", {ARRAY_SIZE_MISMATCH, "1", "n", "-1"});
}

TEST_F(ArrayReaders, EmptyStatedCountIsNone) {
    EXPECT_EQ(Read("a b", "n=''"), Strings({"a", "b"}));
}

TEST_F(ArrayReaders, ItemsAreVerifiedBeforeTheyAreCounted) {
    ExpectArrayFailure("<Array n='3' type='int'>1 x</Array>", {INVALID_VALUE_OF_TYPE, "x", "integer"});
}

TEST_F(ArrayReaders, ElementsOfNoNode) {
    ExpectFailure([&] { translator.GetArrayElements(nullptr, nullptr, nullptr); },
                  {MISSING_NODE_IN, "Array", "SimpleSetPredicate"});
}

TEST_F(ArrayReaders, NoContent) {
    ExpectArrayFailure("<Array/>", {MISSING_NODE_IN, "Array", "SimpleSetPredicate"});
}

TEST_F(ArrayReaders, BlankContent) {
    ExpectArrayFailure("<Array> \t\n </Array>", {EMPTY_IN, "Value", "Array"});
}

TEST_F(ArrayReaders, ContentThatIsNoText) {
    ExpectArrayFailure("<Array><x>1</x></Array>", {EMPTY_IN, "Value", "Array"});
}

TEST_F(ArrayReaders, UnclosedQuoteEndsWithAFailure) {
    ExpectArrayFailure("<Array>a \"b c</Array>", {INVALID_CONTENT, "a \"b c", "Array"});
}

TEST_F(ArrayReaders, UnclosedQuoteBehindAnEscapedOne) {
    ExpectArrayFailure("<Array>\"b\\\"</Array>", {INVALID_CONTENT, "\"b\\\"", "Array"});
}

TEST_F(ArrayReaders, RealItemsAreVerified) {
    EXPECT_EQ(Read("1.5 2", "type='real'"), Strings({"1.5", "2"}));
    ExpectArrayFailure("<Array type='real'>1.5 x</Array>", {INVALID_VALUE_OF_TYPE, "x", "double"});
}

TEST_F(ArrayReaders, IntegerItemsAreVerified) {
    EXPECT_EQ(Read("1 2", "type='int'"), Strings({"1", "2"}));
    ExpectArrayFailure("<Array type='int'>1 1.5</Array>", {INVALID_VALUE_OF_TYPE, "1.5", "integer"});
}

TEST_F(ArrayReaders, QuotedNumbersAreVerifiedAsTheyStand) {
    EXPECT_EQ(Read("\"1.5\" 2", "type='real'"), Strings({"1.5", "2"}));
    ExpectArrayFailure("<Array type='real'>\"1\\\"5\"</Array>", {INVALID_VALUE_OF_TYPE, "1\\\"5", "double"});
}

TEST_F(ArrayReaders, StringItemsAreNotVerified) {
    EXPECT_EQ(Read("1.5 x", "type='string'"), Strings({"1.5", "x"}));
}

TEST_F(ArrayReaders, CategoryThatIsABackslashSwitchesEscapesOff) {
    DictVar var("v", ScoreDictVar::STRING_VAR);
    auto* encoder = new ScoreCatStringEncoder(2);
    var.SetEncoder(encoder);
    encoder->Encode(std::string("a"));
    EXPECT_EQ(ReadFor(var, "\"x\\\" y\" z"), Strings({"x\" y", "z"}));
    encoder->Encode(std::string("\\"));
    EXPECT_EQ(ReadFor(var, "\"x\\\" y z"), Strings({"x\\", "y", "z"}));
}

/// An encoder of a host's own, whose categories can only be asked for one by one.
class HostEncoder : public ScoreCatStringEncoder {
public:
    HostEncoder() : ScoreCatStringEncoder(2) {}
    std::string Decode(int code) const override { return code == 1 ? "\\" : "a"; }
};

TEST_F(ArrayReaders, EveryEncoderIsAskedForABackslash) {
    DictVar var("v", ScoreDictVar::STRING_VAR);
    auto* host = new HostEncoder;
    var.SetEncoder(host);
    host->Encode(std::string("first"));
    EXPECT_EQ(ReadFor(var, "\"x\\\" y\" z"), Strings({"x\" y", "z"}));
    host->Encode(std::string("second"));
    EXPECT_EQ(ReadFor(var, "\"x\\\" y z"), Strings({"x\\", "y", "z"}));
}

TEST_F(ArrayReaders, EncodersWithoutTextsHaveNoBackslash) {
    for (const bool isBinning : {false, true}) {
        DictVar var("v", ScoreDictVar::kNUMERIC_VAR);
        auto* encoder = isBinning ? static_cast<ScoreEncoder*>(new ScoreBinningEncoder({1.0, 2.0}))
                                  : new ScoreCatNumericEncoder({1.0, NumericValue::GetSysmisValue()});
        var.SetEncoder(encoder);
        EXPECT_EQ(ReadFor(var, "\"x\\\" y\" z"), Strings({"x\" y", "z"}));
    }
}

// A document may have many arrays of a variable with many categories.
TEST_F(ArrayReaders, DontGoThroughTheCategoriesForEachArray) {
    DictVar var("v", ScoreDictVar::STRING_VAR);
    auto* encoder = new ScoreCatStringEncoder(0);
    var.SetEncoder(encoder);
    for (int i = 0; i < 10000; ++i) {
        encoder->Encode("a category with a long name, number " + std::to_string(i));
    }
    const ParsedXml xml = ParseXml("<Array>a b</Array>");
    // The texts of the categories are copied when they are asked for.
    EXPECT_LE(veltrane::tests::AllocationsOf([&] { translator.GetArrayElements(xml.Root(), nullptr, &var); }), 50U);
}

TEST_F(ArrayReaders, VariableWithoutEncoderChangesNothing) {
    const DictVar var("v", ScoreDictVar::STRING_VAR);
    EXPECT_EQ(ReadFor(var, "\"x\\\" y\" z"), Strings({"x\" y", "z"}));
}

TEST_F(ArrayReaders, ArrayChildOfANode) {
    const ParsedXml xml = ParseXml("<SimpleSetPredicate><x/><Array>a</Array><Array>b</Array></SimpleSetPredicate>");
    auto* array = static_cast<xercesc::DOMElement*>(translator.GetArrayNode(xml.Root()));
    EXPECT_EQ(translator.ParseStrArray(array), Strings({"a"}));
}

TEST_F(ArrayReaders, NodeWithoutArray) {
    const ParsedXml xml = ParseXml("<SimpleSetPredicate><x><Array>a</Array></x></SimpleSetPredicate>");
    ExpectFailure([&] { translator.GetArrayNode(xml.Root()); }, {MISSING_NODE_IN, "Array", "SimpleSetPredicate"});
}

TEST_F(ArrayReaders, FiveNumbersWithoutStatedSizeWhateverTheCount) {
    EXPECT_EQ(Doubles("<Array>1 2.5\t-3\n4e1 5</Array>", 2), std::vector<double>({1.0, 2.5, -3.0, 40.0, 5.0}));
}

TEST_F(ArrayReaders, BasisRowHasTheGivenSize) {
    EXPECT_EQ(Doubles("<X-BasisRow>1 2</X-BasisRow>", 2), std::vector<double>({1.0, 2.0}));
    ExpectDoublesFailure("<x-BasisRow n='2'>1 2</x-BasisRow>", 3, {ARRAY_SIZE_MISMATCH, "3", "n", "2"});
}

TEST_F(ArrayReaders, StatedSizeOfZeroNumbersIsChecked) {
    ExpectDoublesFailure("<Array n='0'>1 2</Array>", 2, {ARRAY_SIZE_MISMATCH, "0", "n", "2"});
}

TEST_F(ArrayReaders, EmptyStatedSizeOfNumbersIsNone) {
    EXPECT_EQ(Doubles("<Array n=''>1 2</Array>", 7), std::vector<double>({1.0, 2.0}));
}

TEST_F(ArrayReaders, SizeThatIsNoNumberComesBeforeTheContent) {
    ExpectDoublesFailure("<Array n='two'/>", 2, {INVALID_VALUE_OF_TYPE, "two", "integer"});
}

TEST_F(ArrayReaders, SizeComesBeforeTheNumbers) {
    ExpectDoublesFailure("<Array n='3'>1 x</Array>", 0, {ARRAY_SIZE_MISMATCH, "3", "n", "2"});
}

TEST_F(ArrayReaders, CarriageReturnsSplitNumbersToo) {
    EXPECT_EQ(Doubles("<Array>1&#13;2&#13;&#10;3</Array>", 0), std::vector<double>({1.0, 2.0, 3.0}));
}

TEST_F(ArrayReaders, QuotesAreNoQuotesAmongNumbers) {
    ExpectDoublesFailure("<Array>\"1 2\"</Array>", 0, {INVALID_VALUE_OF_TYPE, "\"1", "double"});
}

// Looking over what is left of the text for each number would take minutes here.
TEST_F(ArrayReaders, ManyNumbers) {
    constexpr int kCount = 200'000;
    std::string text;
    for (int i = 0; i < kCount; ++i) {
        text += "1 ";
    }
    const ParsedXml xml = ParseXml("<Array n='200000'>" + text + "</Array>");
    EXPECT_EQ(translator.VerifyIntArray(xml.Root(), 0), std::vector<int>(kCount, 1));
}

TEST_F(ArrayReaders, NumbersOfNoElement) {
    ExpectFailure([&] { translator.VerifyDoubleArray(nullptr, 1); }, {MISSING_NODE, "Array, x-BasisRow,X-BasisRow"});
    ExpectFailure([&] { translator.VerifyIntArray(nullptr, 1); }, {MISSING_NODE, "Array, x-BasisRow,X-BasisRow"});
}

TEST_F(ArrayReaders, NumbersOfAnotherElement) {
    ExpectDoublesFailure("<Matrix>1</Matrix>", 1, {UNEXPECTED_VALUE, "Matrix", "Array"});
    ExpectDoublesFailure("<M\xC3\xA4trix n='x'/>", 1, {UNEXPECTED_VALUE, "M\xC3\xA4trix", "Array"});
}

TEST_F(ArrayReaders, NumbersWithoutContent) {
    ExpectDoublesFailure("<Array/>", 1, {NO_CHILD_ELEMENT, "Array"});
    ExpectDoublesFailure("<x-BasisRow/>", 1, {NO_CHILD_ELEMENT, "Array"});
}

TEST_F(ArrayReaders, NumbersOfBlankContent) {
    ExpectDoublesFailure("<Array>  </Array>", 1, {EMPTY_IN, "Value", "Array"});
    ExpectDoublesFailure("<X-BasisRow><x>1</x></X-BasisRow>", 1, {EMPTY_IN, "Value", "Array"});
}

TEST_F(ArrayReaders, BadNumber) {
    ExpectDoublesFailure("<Array>1 x</Array>", 1, {INVALID_VALUE_OF_TYPE, "x", "double"});
}

TEST_F(ArrayReaders, Integers) {
    const ParsedXml xml = ParseXml("<Array n='3'>1 -2 +3</Array>");
    EXPECT_EQ(translator.VerifyIntArray(xml.Root(), 0), std::vector<int>({1, -2, 3}));
}

TEST_F(ArrayReaders, BadInteger) {
    const ParsedXml xml = ParseXml("<Array>1 2.5</Array>");
    ExpectFailure([&] { translator.VerifyIntArray(xml.Root(), 0); }, {INVALID_VALUE_OF_TYPE, "2.5", "integer"});
}

TEST_F(ArrayReaders, BasisRowOfIntegers) {
    const ParsedXml xml = ParseXml("<x-BasisRow n='9'>1 2</x-BasisRow>");
    EXPECT_EQ(translator.VerifyIntArray(xml.Root(), 2), std::vector<int>({1, 2}));
    ExpectFailure([&] { translator.VerifyIntArray(xml.Root(), 1); }, {ARRAY_SIZE_MISMATCH, "1", "n", "2"});
}

class KeptArrayReaders : public ArrayReaders {};

// The other way round than for items.
TEST_F(KeptArrayReaders, StatedSizeOfNumbersStandsFirstInTheMessage) {
    ExpectDoublesFailure("<Array n='3'>1 2</Array>", 2, {ARRAY_SIZE_MISMATCH, "3", "n", "2"});
}

// Only the first child counts, whatever it is.
TEST_F(KeptArrayReaders, CommentInFrontIsTheText) {
    const ParsedXml xml = ParseXml("<Array><!--a b-->c d e</Array>");
    EXPECT_EQ(translator.ParseStrArray(xml.Root()), Strings({"a", "b"}));
    EXPECT_EQ(Doubles("<Array><!--1 2-->3</Array>", 0), std::vector<double>({1.0, 2.0}));
}

} // namespace
