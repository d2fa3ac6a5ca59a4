// The small parts of the kit: texts and numbers of documents, categories, records.
#include "kit/document/array_words.h"
#include "kit/document/document_text.h"
#include "kit/document/element.h"
#include "kit/inputs/mining_schema.h"
#include "kit/results/results.h"
#include "support/dom.h"
#include "support/faults/fault.h"
#include "support/foreign_value.h"

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/DictVar.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/StringValue.h>

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <vector>

using namespace veltrane::tests;
using namespace veltrane_kit;
using namespace MCVeltrane_900;

namespace {

double NumberOf(const char16_t* text) {
    double number = -1;
    return ReadNumber(text, number) ? number : -1;
}

TEST(KitNumber, IsReadWhatADocumentMayHold) {
    EXPECT_EQ(NumberOf(u"0"), 0);
    EXPECT_EQ(NumberOf(u"-2.5e-3"), -0.0025);
    EXPECT_EQ(NumberOf(u"+7"), 7);
    EXPECT_EQ(NumberOf(u" \t7.\n"), 7);
    EXPECT_EQ(NumberOf(u".5"), 0.5);
    EXPECT_EQ(NumberOf(u"1E5"), 1e5);
}

TEST(KitNumber, IsRefusedWhatIsNone) {
    for (const char16_t* text : {u"", u" ", u"x", u"1x", u"1 2", u"--1", u"+-1", u"1,5", u"inf", u"Infinity", u"NaN",
                                 u"1e999", u"0x10", u"\u0661"}) {
        EXPECT_EQ(NumberOf(text), -1) << Narrow(text);
    }
    EXPECT_EQ(NumberOf(nullptr), -1);
    EXPECT_EQ(NumberOf(std::u16string(5000, u'1').c_str()), -1);
}

TEST(KitNumber, IntegersFitThirtyTwoBits) {
    int number = 0;
    EXPECT_TRUE(ReadInteger(u" 2147483647", number));
    EXPECT_EQ(number, 2147483647);
    EXPECT_FALSE(ReadInteger(u"2147483648", number));
    EXPECT_FALSE(ReadInteger(u"1.0", number));
}

TEST(KitText, IsOfTheEncoding) {
    StartXml();
    EXPECT_EQ(DocumentText("UTF-8")(u"a\u00e9\u20ac"), "a\xc3\xa9\xe2\x82\xac");
    EXPECT_EQ(DocumentText("")(u"a\u00e9\u20ac"), "a\xe9\x80");
    EXPECT_EQ(DocumentText("UTF-16LE")(u"ab"), std::string("a\0b\0", 4));
    EXPECT_EQ(DocumentText("UTF-8")(nullptr), "");
    EXPECT_EQ(DocumentText("no-such-encoding")(u"ab"), "");
}

TEST(KitText, NamesAreNarrowedForMessages) {
    EXPECT_EQ(Narrow(u"x\u00e9"), "x?");
    EXPECT_EQ(Narrow(nullptr), "");
    EXPECT_EQ(Widen("xy"), u"xy");
}

TEST(KitElement, FindsChildrenAndSiblings) {
    const ParsedXml xml = ParseXml("<r><a/>text<b/><!-- c --><a/></r>");
    const DocumentText text("UTF-8");
    const Element root(xml.Root(), text);
    std::string tags;
    for (const Element child : root.Children()) {
        tags += child.Tag();
    }
    EXPECT_EQ(tags, "aba");
    EXPECT_TRUE(root.Child(u"b"));
    EXPECT_FALSE(root.Child(u"c"));
    EXPECT_FALSE(root.Child(u"b").FirstChild());
}

TEST(KitElement, TellsAbsentFromEmpty) {
    const ParsedXml xml = ParseXml("<r empty='' full='x'>content</r>");
    const DocumentText text("UTF-8");
    const Element root(xml.Root(), text);
    EXPECT_TRUE(root.Has(u"empty"));
    EXPECT_FALSE(root.Has(u"absent"));
    EXPECT_EQ(root.TextOr(u"absent", "other"), "other");
    EXPECT_EQ(root.TextOr(u"empty", "other"), "");
    EXPECT_EQ(root.AnyText(u"empty"), "");
    EXPECT_EQ(root.Text(u"full"), "x");
    EXPECT_EQ(root.Content(), "content");
    EXPECT_EQ(root.NumberOr(u"absent", 2.5), 2.5);
    EXPECT_EQ(root.IntegerOr(u"absent", 3), 3);
    EXPECT_TRUE(root.FlagOr(u"absent", true));
}

std::vector<std::string> WordsOf(const std::string& content) {
    const ParsedXml document = ParseXml("<Array n='7'>" + content + "</Array>");
    const DocumentText text("UTF-8");
    return ArrayWords(Element(document.Root(), text));
}

TEST(KitArray, IsPartedByWhiteSpaceOutsideOfQuotes) {
    using Words = std::vector<std::string>;
    EXPECT_EQ(WordsOf(""), Words());
    EXPECT_EQ(WordsOf(" \t\n"), Words());
    EXPECT_EQ(WordsOf("1\n 2.\t-3 "), (Words{"1", "2.", "-3"}));
    EXPECT_EQ(WordsOf(R"("a b" "" c "d")"), (Words{"a b", "", "c", "d"}));
    EXPECT_EQ(WordsOf(R"("say \"x\" \ y")"), (Words{R"(say "x" \ y)"}));
    EXPECT_EQ(WordsOf(R"("a""b"c")"), (Words{"a", "b", "c\""}));
}

TEST(KitArray, IsRefusedWithAQuoteThatNothingCloses) {
    ExpectFailure([] { WordsOf(R"("a" "b c)"); }, {INVALID_CONTENT, R"("a" "b c)", "Array"});
    ExpectFailure([] { WordsOf(R"(a ")"); }, {INVALID_CONTENT, R"(a ")", "Array"});
    ExpectFailure([] { WordsOf(R"("a\")"); }, {INVALID_CONTENT, R"("a\")", "Array"});
}

TEST(KitResults, KeepAForeignDateTime) {
    const ForeignValue first(ScoreValue::DATETIME_VALUE, 5.0);
    const ForeignValue second(ScoreValue::DATETIME_VALUE, 7.0);
    KeptValue kept;
    kept.Set(&first);
    kept.Set(&second);
    ASSERT_NE(kept.Get(), nullptr);
    EXPECT_TRUE(static_cast<const ForeignValue*>(kept.Get())->IsWhole());
    EXPECT_EQ(kept.Get()->GetDouble(), 7.0);
}

TEST(KitResults, StoreAForeignDateTimeInAnOutput) {
    ResultLayout layout;
    layout.outputs = {{"when", ScoreValue::DATETIME_VALUE}};
    OutputValues outputs(layout);
    const ForeignValue foreign(ScoreValue::DATETIME_VALUE, 7.0);
    outputs.Set(0, &foreign);
    EXPECT_EQ(outputs.At(0)->GetDouble(), 7.0);
    EXPECT_EQ(outputs.At(0)->GetType(), ScoreValue::DATETIME_VALUE);
}

} // namespace
