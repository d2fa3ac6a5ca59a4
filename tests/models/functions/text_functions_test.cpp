// Functions of texts in other encodings, and what hostile documents ask of them.
#include "calls.h"
#include "kit/functions/texts/bounds.h"
#include "transform/functions/texts/text_limits.h"

#include <gtest/gtest.h>

using namespace veltrane::tests;
using veltrane::Value;

namespace {

std::string CallIn(const std::string& encoding, std::string_view name, const std::vector<Value>& arguments) {
    Place place;
    place.encoding = encoding;
    return WriteCell(Call(StandardFunction(name), arguments, place));
}

TEST(TextFunctions, KnowTheLettersOfOtherEncodings) {
    EXPECT_EQ(CallIn("ISO-8859-1", "uppercase", {Text("gr\xfcn")}), "string:GR\xdcN");
    EXPECT_EQ(CallIn("ISO-8859-1", "uppercase",
                     {Text("stra\xdf"
                           "e")}),
              "string:STRASSE");
    EXPECT_EQ(CallIn("ISO-8859-1", "lowercase", {Text("\xc4PFEL")}), "string:\xe4pfel");
    EXPECT_EQ(CallIn("WINDOWS-1251", "lowercase", {Text("\xc6")}), "string:\xe6");
}

TEST(TextFunctions, LeaveALetterWhoseCounterpartCantBeWritten) {
    EXPECT_EQ(CallIn("ISO-8859-1", "uppercase", {Text("a\xff\xb5\xe9")}), "string:A\xff\xb5\xc9");
    EXPECT_EQ(CallIn("WINDOWS-1252", "uppercase", {Text("\xff")}), "string:\x9f");
}

TEST(TextFunctions, CountTheCharactersOfOtherEncodings) {
    EXPECT_EQ(CallIn("ISO-8859-1", "stringLength", {Text("gr\xfcn")}), "integer:4");
    EXPECT_EQ(CallIn("ISO-8859-1", "substring", {Text("gr\xfcn"), Integer(3), Integer(1)}), "string:\xfc");
    EXPECT_EQ(CallIn("SHIFT_JIS", "stringLength", {Text("\x93\xfa\x96{a")}), "integer:3");
    EXPECT_EQ(CallIn("SHIFT_JIS", "substring", {Text("\x93\xfa\x96{a"), Integer(2), Integer(1)}), "string:\x96{");
    EXPECT_EQ(CallIn("SHIFT_JIS", "substring", {Text("\x93\xfa\x96{a"), Integer(3), Integer(9)}), "string:a");
    EXPECT_EQ(CallIn("SHIFT_JIS", "substring", {Text("\x93\xfa"), Integer(9), Integer(1)}), "string:");
}

TEST(TextFunctions, FindPatternsInOtherEncodings) {
    EXPECT_EQ(CallIn("ISO-8859-1", "matches", {Text("gr\xfcn"), Text("^gr.n$")}), "boolean:true");
    EXPECT_EQ(CallIn("ISO-8859-1", "replace", {Text("gr\xfcn"), Text("\xfc"), Text("\xfc\xfc")}), "string:gr\xfc\xfcn");
    EXPECT_EQ(CallIn("SHIFT_JIS", "replace", {Text("\x93\xfa\x96{"), Text("^."), Text("a")}), "string:a\x96{");
}

TEST(TextFunctions, HaveNoResultInAnEncodingThatIsntKnown) {
    EXPECT_EQ(CallIn("NONE-SUCH", "uppercase", {Text("a")}), "missing");
    EXPECT_EQ(CallIn("NONE-SUCH", "concat", {Text("a"), Text("b")}), "string:ab");
}

TEST(TextFunctions, KeepTheirExpressionUntilItChanges) {
    Place place;
    const auto matches = [&place](const char* text, const char* pattern) {
        return WriteCell(Call(StandardFunction("matches"), {Text(text), Text(pattern)}, place));
    };
    EXPECT_EQ(matches("abc", "b"), "boolean:true");
    EXPECT_EQ(matches("axc", "b"), "boolean:false");
    EXPECT_EQ(matches("axc", "x"), "boolean:true");
    EXPECT_EQ(matches("axc", "("), "missing");
    EXPECT_EQ(matches("axc", "("), "missing");
    EXPECT_EQ(matches("axc", ""), "boolean:true");
}

TEST(TextFunctions, BoundWhatAnExpressionTries) {
    const std::string text(40, 'a');
    EXPECT_EQ(CallIn("UTF-8", "matches", {Text(text), Text("(a+)+b")}), "missing");
    EXPECT_EQ(CallIn("UTF-8", "replace", {Text(text), Text("(a+)+b"), Text("")}), "missing");
    const std::string longText(1 << 20, 'a');
    EXPECT_EQ(CallIn("UTF-8", "matches", {Text(longText), Text("(a|b)*$")}), "boolean:true");
}

TEST(TextFunctions, BoundTheTextsThatTheyMake) {
    std::string text = "ab";
    std::string last;
    for (int i = 0; i < 40; ++i) {
        const Value doubled = Call("concat", {Text(text), Text(text)});
        if (doubled.isMissing) {
            last = "missing";
            break;
        }
        text = doubled.text;
    }
    EXPECT_EQ(last, "missing");
    EXPECT_EQ(text.size(), veltrane_kit::standard::kLongestText);
    EXPECT_TRUE(Call("replace", {Text(text), Text("a"), Text("aa")}).isMissing);
    EXPECT_TRUE(Call("replace", {Text(text), Text("(.*)"), Text("$1$1$1$1$1$1$1$1")}).isMissing);
    EXPECT_EQ(Call("replace", {Text(text), Text("a"), Text("")}).text.size(), text.size() / 2);
    EXPECT_TRUE(Call("formatNumber", {Integer(1), Text(text + "%d")}).isMissing);
    std::string pattern;
    for (int i = 0; i < 1 << 20; ++i) {
        pattern += "%c%c%c";
    }
    EXPECT_TRUE(Call("formatDatetime", {ReadCell("date:2000-01-01"), Text(pattern)}).isMissing);
    EXPECT_TRUE(Call("uppercase", {Text("ß" + text.substr(2))}).isMissing == false);
    EXPECT_TRUE(Call("uppercase", {Text("ŉ" + text.substr(2))}).isMissing);
}

TEST(TextFunctions, TakeTextsThatAreNoUtf8) {
    EXPECT_EQ(WriteCell(Call("stringLength", {Text("a\xff\x80z")})), "integer:3");
    EXPECT_EQ(Call("uppercase", {Text("a\xff")}).text, "A\xef\xbf\xbd");
    EXPECT_EQ(WriteCell(Call("matches", {Text("\xff"), Text("\xfe")})), "boolean:true");
    EXPECT_EQ(Call("substring", {Text("\x80\x80"), Integer(1), Integer(1)}).text, "");
}

TEST(TextFunctions, HaveTheBoundsOfTheLibrary) {
    EXPECT_EQ(veltrane_kit::standard::kLongestText, veltrane::functions::kLongestText);
    for (const std::int64_t units : {0, 1, 1000, 1 << 24}) {
        for (const std::int64_t more : {0, 1, 100, 1000}) {
            EXPECT_EQ(veltrane_kit::standard::RegexTicks(units, more), veltrane::functions::RegexTicks(units, more));
            EXPECT_EQ(veltrane_kit::standard::RegexStack(units, more), veltrane::functions::RegexStack(units, more));
        }
    }
}

} // namespace
