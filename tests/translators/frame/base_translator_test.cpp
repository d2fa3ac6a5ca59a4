#include "support/dom.h"
#include "support/faults/failure.h"
#include "translators/frame/test_translator.h"

#include <MCVeltrane_900/DictVar.h>
#include <MCVeltrane_900/ScoreModel.h>
#include <MCVeltrane_900/SmartTranscoder.h>

#include <gtest/gtest.h>

#include <memory>
#include <sstream>

namespace {

using namespace veltrane::tests;

/// "naïve" with its letter outside ASCII.
constexpr const XMLCh* kNaive = u"na\u00EFve";

class TranslatorText : public testing::Test {
protected:
    TranslatorText() { StartXml(); }
};

TEST_F(TranslatorText, StartsWithoutATranscoder) {
    EXPECT_EQ(TestTranslator().GetTranscoder(), nullptr);
}

TEST_F(TranslatorText, DefaultEncodingIsCp1252) {
    TestTranslator translator;
    translator.CreateTranscoder("");
    EXPECT_EQ(translator.ToString(kNaive), "na\xEFve");
    EXPECT_EQ(translator.ToString(u"\u20AC"), "\x80");
}

TEST_F(TranslatorText, ComesOutInTheEncodingGiven) {
    TestTranslator translator;
    translator.CreateTranscoder("UTF-8");
    EXPECT_EQ(translator.ToString(kNaive), "na\xC3\xAFve");
    translator.CreateTranscoder("ISO-8859-1");
    EXPECT_EQ(translator.ToString(kNaive), "na\xEFve");
}

TEST_F(TranslatorText, NullIsEmptyWithAndWithoutATranscoder) {
    TestTranslator translator;
    EXPECT_EQ(translator.ToString(nullptr), "");
    translator.CreateTranscoder("");
    EXPECT_EQ(translator.ToString(nullptr), "");
}

TEST_F(TranslatorText, WithoutATranscoderComesOutInTheCodePageOfTheProcess) {
    EXPECT_EQ(TestTranslator().ToString(u"plain"), "plain");
}

TEST_F(TranslatorText, OfAnUnknownEncodingIsEmpty) {
    TestTranslator translator;
    translator.CreateTranscoder("no-such-encoding");
    ASSERT_NE(translator.GetTranscoder(), nullptr);
    EXPECT_EQ(translator.ToString(kNaive), "");
    EXPECT_FALSE(translator.XStrEqualsUTF8Str(u"a", "a"));
}

TEST_F(TranslatorText, IsEqualWithoutATranscoderComparesUtf16) {
    EXPECT_TRUE(BaseTranslator::IsEqual(u"name", "name"));
    EXPECT_FALSE(BaseTranslator::IsEqual(u"name", "Name"));
    EXPECT_FALSE(BaseTranslator::IsEqual(u"name", "names"));
    EXPECT_TRUE(BaseTranslator::IsEqual(nullptr, u"name", "name"));
    const XMLCh* none = nullptr;
    EXPECT_TRUE(BaseTranslator::IsEqual(none, ""));
    EXPECT_FALSE(BaseTranslator::IsEqual(none, "name"));
}

TEST_F(TranslatorText, IsEqualWithATranscoderComparesBytes) {
    SmartTranscoder latin("ISO-8859-1");
    EXPECT_TRUE(BaseTranslator::IsEqual(&latin, u"name", "name"));
    EXPECT_TRUE(BaseTranslator::IsEqual(&latin, kNaive, "na\xEFve"));
    EXPECT_FALSE(BaseTranslator::IsEqual(&latin, kNaive, "na\xC3\xAFve"));
    EXPECT_TRUE(BaseTranslator::IsEqual(&latin, nullptr, ""));
}

TEST_F(TranslatorText, IsEqualUnderAnEncodingThatChangesAsciiComparesItsBytes) {
    SmartTranscoder ebcdic("IBM037");
    EXPECT_TRUE(BaseTranslator::IsEqual(&ebcdic, u"A", "\xC1"));
    EXPECT_FALSE(BaseTranslator::IsEqual(&ebcdic, u"A", "A"));
}

TEST_F(TranslatorText, XStrEqualsConvertsTheLiteral) {
    TestTranslator translator;
    EXPECT_FALSE(translator.XStrEqualsUTF8Str(u"name", "name"));
    translator.CreateTranscoder("UTF-8");
    EXPECT_TRUE(translator.XStrEqualsUTF8Str(u"name", "name"));
    EXPECT_TRUE(translator.XStrEqualsUTF8Str(kNaive, "na\xC3\xAFve"));
    EXPECT_FALSE(translator.XStrEqualsUTF8Str(u"name", "other"));
    EXPECT_FALSE(translator.XStrEqualsUTF8Str(u"name", nullptr));
}

TEST_F(TranslatorText, ACopySharesTheTranscoder) {
    TestTranslator source;
    source.CreateTranscoder("UTF-8");
    TestTranslator copy(source);
    EXPECT_EQ(copy.GetTranscoder(), source.GetTranscoder());
    TestTranslator assigned;
    assigned = source;
    EXPECT_EQ(assigned.GetTranscoder(), source.GetTranscoder());
}

TEST_F(TranslatorText, TheDestructorOfACopyLeavesTheTranscoderToItsSource) {
    TestTranslator source;
    source.CreateTranscoder("UTF-8");
    std::make_unique<TestTranslator>(source).reset();
    EXPECT_EQ(source.ToString(kNaive), "na\xC3\xAFve");
}

TEST_F(TranslatorText, RoutesThatNobodyServesGiveNull) {
    TestTranslator translator;
    std::istringstream stream;
    xercesc::DOMElement* element = nullptr;
    xercesc::DOMDocument* document = nullptr;
    MCVeltrane_900::ScoreModel* base = nullptr;
    MCVeltrane_900::ScoreDictionary* dictionary = nullptr;
    const std::string text;
    EXPECT_EQ(translator.ParseFromTree(element, base, text), nullptr);
    EXPECT_EQ(translator.ParseFromTree(element, dictionary, dictionary, text), nullptr);
    EXPECT_EQ(translator.ParseFromTree(text, text), nullptr);
    EXPECT_EQ(translator.ParseFromTree(stream, text), nullptr);
    EXPECT_EQ(translator.ParseFromTree(document, text), nullptr);
    EXPECT_EQ(translator.ParseFromTree(document, dictionary, text), nullptr);
    EXPECT_EQ(translator.ParseFromTree(stream, text, text), nullptr);
}

TEST_F(TranslatorText, KeepsItsEncodingAndFieldsForPlugIns) {
    TestTranslator translator("UTF-8");
    EXPECT_EQ(translator.fEncoding, "UTF-8");
    EXPECT_EQ(translator.fConstant, 4.0);
    EXPECT_EQ(translator.fNodeCounter, 0);
    EXPECT_TRUE(translator.fFunctionMap.empty());
    EXPECT_EQ(TestTranslator().fEncoding, "");
}

TEST_F(TranslatorText, CopiesAllFields) {
    TestTranslator source("UTF-8");
    source.fWord = 7;
    source.fConstant = 5.5;
    source.fNodeCounter = 3;
    source.fFunctionMap["f"] = {};
    const TestTranslator copy(source);
    TestTranslator assigned;
    assigned = source;
    for (const TestTranslator* other : {&copy, static_cast<const TestTranslator*>(&assigned)}) {
        EXPECT_EQ(other->fWord, 7);
        EXPECT_EQ(other->fConstant, 5.5);
        EXPECT_EQ(other->fNodeCounter, 3);
        EXPECT_EQ(other->fEncoding, "UTF-8");
        EXPECT_EQ(other->fFunctionMap.size(), 1u);
    }
    source.fFunctionMap.clear();
    EXPECT_EQ(copy.fFunctionMap.size(), 1u);
}

} // namespace
