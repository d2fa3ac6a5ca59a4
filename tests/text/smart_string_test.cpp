#include "support/dom.h"
#include "support/stopped_xml.h"

#include <MCVeltrane_900/SmartString.h>

#include <gtest/gtest.h>
#include <xercesc/util/XMLString.hpp>

namespace {

using MCVeltrane_900::SmartString;

/// The text of a string that is set; an unset one fails.
std::u16string Text(const SmartString& string) {
    EXPECT_NE(string.xc_str(), nullptr);
    return string.xc_str() != nullptr ? std::u16string(string.xc_str()) : std::u16string();
}

bool IsUnset(const SmartString& string) {
    return string.xc_str() == nullptr;
}

class SmartStringTest : public testing::Test {
protected:
    void SetUp() override { veltrane::tests::StartXml(); }
};

using SmartStringUtf8 = SmartStringTest;
using KeptSmartString = SmartStringTest;

TEST_F(SmartStringTest, HoldsOnePointer) {
    EXPECT_EQ(sizeof(SmartString), sizeof(XMLCh*));
}

TEST_F(SmartStringTest, DefaultIsUnset) {
    const SmartString string;
    EXPECT_TRUE(IsUnset(string));
    EXPECT_EQ(string.length(), 0U);
    EXPECT_TRUE(string.empty());
}

TEST_F(SmartStringTest, ConstructorsTakeTheText) {
    EXPECT_EQ(Text(SmartString("abc")), u"abc");
    EXPECT_EQ(Text(SmartString(u"a\u00e9\u4e00")), u"a\u00e9\u4e00");
    EXPECT_EQ(Text(SmartString("")), u"");
    EXPECT_EQ(Text(SmartString(u"")), u"");
}

TEST_F(SmartStringTest, ConstructorsFromNullGiveTheUnsetString) {
    EXPECT_TRUE(IsUnset(SmartString(static_cast<const char*>(nullptr))));
    EXPECT_TRUE(IsUnset(SmartString(static_cast<const XMLCh*>(nullptr))));
    const SmartString unset;
    EXPECT_TRUE(IsUnset(SmartString(unset)));
}

TEST_F(SmartStringTest, BytesAreReadAsTheParserReadsThem) {
    const char* const bytes = "a\xC3\xA9\xFF";
    XMLCh* expected = xercesc::XMLString::transcode(bytes);
    const SmartString string(bytes);
    EXPECT_TRUE(string.equals(expected));
    xercesc::XMLString::release(&expected);
}

TEST_F(SmartStringTest, CopyHasATextOfItsOwn) {
    SmartString source("abc");
    const SmartString copy(source);
    source.truncateString(2);
    EXPECT_EQ(Text(copy), u"abc");
    EXPECT_NE(copy.xc_str(), source.xc_str());
}

TEST_F(SmartStringTest, AssignReplacesTheText) {
    SmartString string("old");
    string.assign("bytes");
    EXPECT_EQ(Text(string), u"bytes");
    string.assign(u"units");
    EXPECT_EQ(Text(string), u"units");
    string.assign(SmartString("other"));
    EXPECT_EQ(Text(string), u"other");
    string.assign(XMLCh('c'));
    EXPECT_EQ(Text(string), u"c");
}

TEST_F(SmartStringTest, AssigningNullUnsets) {
    SmartString string("old");
    string.assign(static_cast<const char*>(nullptr));
    EXPECT_TRUE(IsUnset(string));
    string.assign("old");
    string.assign(static_cast<const XMLCh*>(nullptr));
    EXPECT_TRUE(IsUnset(string));
    string.assign("old");
    string.assign(SmartString());
    EXPECT_TRUE(IsUnset(string));
}

TEST_F(SmartStringTest, AssignmentOperatorsAssign) {
    SmartString string;
    string = "bytes";
    EXPECT_EQ(Text(string), u"bytes");
    string = u"units";
    EXPECT_EQ(Text(string), u"units");
    const SmartString other("other");
    string = other;
    EXPECT_EQ(Text(string), u"other");
    string = SmartString();
    EXPECT_TRUE(IsUnset(string));
}

TEST_F(SmartStringTest, AssignsFromItself) {
    SmartString string("abcd");
    const SmartString& self = string;
    string = self;
    EXPECT_EQ(Text(string), u"abcd");
    string.assign(string.xc_str() + 2);
    EXPECT_EQ(Text(string), u"cd");
}

TEST_F(SmartStringTest, AppendJoins) {
    SmartString string("a");
    string.append("b");
    string.append(u"\u00e9");
    string.append(SmartString("d"));
    string.append(XMLCh('e'));
    EXPECT_EQ(Text(string), u"ab\u00e9de");
}

TEST_F(SmartStringTest, AppendToAnUnsetStringAssigns) {
    SmartString string;
    string.append("ab");
    EXPECT_EQ(Text(string), u"ab");
    SmartString other;
    other.append(XMLCh('c'));
    EXPECT_EQ(Text(other), u"c");
}

TEST_F(SmartStringTest, AppendOfAnEmptyTextLeavesAnUnsetStringUnset) {
    SmartString string;
    string.append(u"");
    string.append("");
    string.append(SmartString(""));
    string.append(XMLCh(0));
    EXPECT_TRUE(IsUnset(string));
}

TEST_F(SmartStringTest, AppendOfNullChangesNothing) {
    SmartString string("a");
    string.append(static_cast<const char*>(nullptr));
    string.append(static_cast<const XMLCh*>(nullptr));
    string.append(SmartString());
    EXPECT_EQ(Text(string), u"a");
}

TEST_F(SmartStringTest, AppendsItself) {
    SmartString string("ab");
    string.append(string);
    EXPECT_EQ(Text(string), u"abab");
    string.append(string.xc_str() + 3);
    EXPECT_EQ(Text(string), u"ababb");
}

TEST_F(SmartStringTest, ClearUnsets) {
    SmartString string("abc");
    string.clear();
    EXPECT_TRUE(IsUnset(string));
    string.clear();
    EXPECT_TRUE(string.empty());
}

TEST_F(SmartStringTest, LengthCountsUnits) {
    EXPECT_EQ(SmartString(u"a\U0001F600").length(), 3U);
    EXPECT_EQ(SmartString("").length(), 0U);
}

TEST_F(SmartStringTest, EmptyTextIsEmpty) {
    EXPECT_TRUE(SmartString("").empty());
    EXPECT_FALSE(SmartString("a").empty());
}

TEST_F(SmartStringTest, EqualsAPointer) {
    EXPECT_TRUE(SmartString("ab").equals(u"ab"));
    EXPECT_FALSE(SmartString("ab").equals(u"abc"));
    EXPECT_FALSE(SmartString("ab").equals(u"AB"));
    EXPECT_FALSE(SmartString("ab").equals(static_cast<const XMLCh*>(nullptr)));
    EXPECT_FALSE(SmartString().equals(u"ab"));
}

TEST_F(SmartStringTest, EqualsAnotherString) {
    EXPECT_TRUE(SmartString("ab").equals(SmartString(u"ab")));
    EXPECT_TRUE(SmartString("ab") == SmartString(u"ab"));
    EXPECT_FALSE(SmartString("ab") == SmartString("b"));
    EXPECT_FALSE(SmartString("ab") == SmartString());
    EXPECT_FALSE(SmartString() == SmartString("ab"));
    EXPECT_TRUE(SmartString("") == SmartString(""));
}

TEST_F(SmartStringTest, ConvertsToInteger) {
    EXPECT_EQ(SmartString("12").convertToInteger(), 12U);
    EXPECT_EQ(SmartString("007").convertToInteger(), 7U);
    EXPECT_EQ(SmartString("4294967295").convertToInteger(), 4294967295U);
}

TEST_F(SmartStringTest, WhatIsNoNumberConvertsToZero) {
    for (const char* text : {"1a", "-1", "+1", " 1", "1 ", "1.5", "a", ""}) {
        EXPECT_EQ(SmartString(text).convertToInteger(), 0U) << text;
    }
    EXPECT_EQ(SmartString(u"1\u0662").convertToInteger(), 0U);
    EXPECT_EQ(SmartString().convertToInteger(), 0U);
}

TEST_F(SmartStringTest, TruncateRemovesFromTheEnd) {
    SmartString string("abcd");
    string.truncateString(2);
    EXPECT_EQ(Text(string), u"ab");
    string.truncateString(0);
    EXPECT_EQ(Text(string), u"ab");
}

TEST_F(SmartStringTest, TruncateBeyondTheLengthLeavesTheEmptyText) {
    SmartString string("ab");
    string.truncateString(4000000000U);
    EXPECT_EQ(Text(string), u"");
    SmartString unset;
    unset.truncateString(1);
    EXPECT_TRUE(IsUnset(unset));
}

TEST_F(SmartStringTest, TruncateKeepsTheArray) {
    SmartString string("abcd");
    const XMLCh* const before = string.xc_str();
    string.truncateString(3);
    EXPECT_EQ(string.xc_str(), before);
    EXPECT_EQ(before[2], 0);
}

TEST_F(SmartStringTest, ContainsAPiece) {
    const SmartString string("abcd");
    EXPECT_TRUE(string.ContainsString(u"ab"));
    EXPECT_TRUE(string.ContainsString(u"cd"));
    EXPECT_TRUE(string.ContainsString(u"abcd"));
    EXPECT_TRUE(string.ContainsString(u""));
    EXPECT_FALSE(string.ContainsString(u"ac"));
    EXPECT_FALSE(string.ContainsString(u"abcde"));
    EXPECT_FALSE(string.ContainsString(nullptr));
    EXPECT_FALSE(SmartString().ContainsString(u""));
    EXPECT_TRUE(SmartString("").ContainsString(u""));
}

/// What a replacement leaves, and how many it counts.
struct Replaced {
    std::u16string text;
    int count;
    bool operator==(const Replaced&) const = default;
};

Replaced Replace(const char16_t* in, const char16_t* from, const char16_t* to) {
    SmartString string(in);
    const int count = string.replaceSubstring(from, to);
    return {IsUnset(string) ? u"(unset)" : Text(string), count};
}

TEST_F(SmartStringTest, ReplacesExactlyWhenTheLengthsDifferByOne) {
    EXPECT_EQ(Replace(u"xaby", u"ab", u"c"), (Replaced{u"xcy", 1}));
    EXPECT_EQ(Replace(u"ababab", u"ab", u"c"), (Replaced{u"ccc", 3}));
    EXPECT_EQ(Replace(u"aXb", u"X", nullptr), (Replaced{u"ab", 1}));
    EXPECT_EQ(Replace(u"aXb", u"X", u""), (Replaced{u"ab", 1}));
}

TEST_F(SmartStringTest, ReplaceWithoutAHitChangesNothing) {
    EXPECT_EQ(Replace(u"abc", u"X", u"Y"), (Replaced{u"abc", 0}));
    EXPECT_EQ(Replace(u"abc", nullptr, u"Y"), (Replaced{u"abc", 0}));
    EXPECT_EQ(Replace(u"", u"X", u"Y"), (Replaced{u"", 0}));
    EXPECT_EQ(SmartString().replaceSubstring(u"X", u"Y"), 0);
}

TEST_F(SmartStringTest, ReplacingAllByNothingUnsets) {
    EXPECT_EQ(Replace(u"XX", u"X", u""), (Replaced{u"(unset)", 2}));
}

TEST_F(KeptSmartString, ReplaceStepsByTheNewTextAndSkipsUnits) {
    EXPECT_EQ(Replace(u"aXb", u"X", u"Y"), (Replaced{u"aY", 1}));
    EXPECT_EQ(Replace(u"aXbcdX", u"X", u"YY"), (Replaced{u"aYYdYY", 2}));
    EXPECT_EQ(Replace(u"aX", u"X", u"long text"), (Replaced{u"along text", 1}));
}

TEST_F(KeptSmartString, ReplaceStepsByTheNewTextAndSeesUnitsTwice) {
    EXPECT_EQ(Replace(u"xaby", u"ab", nullptr), (Replaced{u"xby", 1}));
    EXPECT_EQ(Replace(u"aaa", u"aa", u""), (Replaced{u"a", 2}));
}

TEST_F(KeptSmartString, ReplacingTheEmptyTextHitsEveryPlaceAndTheEnd) {
    EXPECT_EQ(Replace(u"ab", u"", u""), (Replaced{u"(unset)", 3}));
    EXPECT_EQ(Replace(u"abc", u"", u"Y"), (Replaced{u"YY", 2}));
}

TEST_F(KeptSmartString, TwoUnsetStringsAreNotEqual) {
    EXPECT_FALSE(SmartString() == SmartString());
    EXPECT_FALSE(SmartString().equals(SmartString()));
}

TEST_F(KeptSmartString, UnsetEqualsNullAndEmptyPointers) {
    EXPECT_TRUE(SmartString().equals(static_cast<const XMLCh*>(nullptr)));
    EXPECT_TRUE(SmartString().equals(u""));
}

TEST_F(KeptSmartString, IntegersWrapAround) {
    EXPECT_EQ(SmartString("4294967296").convertToInteger(), 0U);
    EXPECT_EQ(SmartString("4294967303").convertToInteger(), 7U);
}

TEST_F(SmartStringUtf8, RoundTripsText) {
    for (const char* text : {"abc", "stra\u00DFe", "\xE5\xB9\xB4\xE9\xBD\xA2", "a\xF0\x9F\x98\x80z"}) {
        SmartString string("old");
        string.assignUTF8(text);
        EXPECT_EQ(string.toUTF8(), text);
    }
}

TEST_F(SmartStringUtf8, AssignReadsUtf8) {
    SmartString string;
    string.assignUTF8("a\xC3\xA9\xE4\xB8\x80\xF0\x9F\x98\x80");
    EXPECT_EQ(Text(string), u"a\u00e9\u4e00\U0001F600");
}

TEST_F(SmartStringUtf8, EmptyTextUnsets) {
    SmartString string("old");
    string.assignUTF8("");
    EXPECT_TRUE(IsUnset(string));
    EXPECT_EQ(string.toUTF8(), "");
    EXPECT_EQ(SmartString("").toUTF8(), "");
}

TEST_F(SmartStringUtf8, TextOfManyChunksRoundTrips) {
    for (std::size_t length : {999U, 1000U, 1001U, 5000U}) {
        std::string text;
        std::u16string units;
        for (std::size_t at = 0; at < length; ++at) {
            text += at % 3 == 0 ? "x" : at % 3 == 1 ? "\xC3\xA9" : "\xF0\x9F\x98\x80";
            units += at % 3 == 0 ? u"x" : at % 3 == 1 ? u"\u00e9" : u"\U0001F600";
        }
        SmartString string;
        string.assignUTF8(text);
        EXPECT_EQ(Text(string), units) << length;
        EXPECT_EQ(string.toUTF8(), text) << length;
    }
}

TEST_F(SmartStringUtf8, BadByteLeavesTheChunksBefore) {
    SmartString string("old");
    string.assignUTF8("ab\xC3x");
    EXPECT_TRUE(IsUnset(string));
    string.assignUTF8("\xC3\xA9" + std::string(1500, 'x') + "\xC3x");
    EXPECT_EQ(Text(string), u"\u00e9" + std::u16string(999, 'x'));
}

TEST_F(SmartStringUtf8, CutSequenceAtTheEndIsDropped) {
    SmartString string;
    string.assignUTF8("ab\xE5\xB9");
    EXPECT_EQ(Text(string), u"ab");
}

TEST_F(SmartStringUtf8, CutPairAtTheEndIsDropped) {
    const XMLCh text[] = {'a', 0xD83D, 0};
    EXPECT_EQ(SmartString(text).toUTF8(), "a");
}

TEST_F(SmartStringUtf8, LoneSurrogatesEnd) {
    const XMLCh low[] = {'a', 0xDE00, 'b', 0};
    EXPECT_EQ(SmartString(low).toUTF8(), "a\355\270\200b");
    const XMLCh high[] = {'a', 0xD83D, 'b', 0};
    EXPECT_LE(SmartString(high).toUTF8().size(), 8U);
}

TEST(SmartStringWithoutXml, AsciiNeedsNoPlatform) {
    const veltrane::tests::StoppedXml stopped;
    SmartString string("12");
    EXPECT_EQ(string.convertToInteger(), 12U);
    string.assignUTF8("ab");
    EXPECT_EQ(string.toUTF8(), "ab");
}

TEST(SmartStringWithoutXml, OtherTextIsUnset) {
    const veltrane::tests::StoppedXml stopped;
    EXPECT_TRUE(IsUnset(SmartString("\xC3\xA9")));
    SmartString string;
    string.assignUTF8("\xC3\xA9");
    EXPECT_TRUE(IsUnset(string));
    EXPECT_EQ(SmartString(u"\u00e9").toUTF8(), "");
}

} // namespace
