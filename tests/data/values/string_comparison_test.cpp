#include "support/rows.h"

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/StringValue.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace MCVeltrane_900;

struct EqualityCase {
    const char* name;
    const char* left;
    const char* right;
    bool equal;            ///< operator==, and Equal with neither flag
    bool equalUntrimmed;   ///< Equal with noSpaceTrim
    bool equalEmptyString; ///< Equal with emptyStringOK
};

class StringEquality : public testing::TestWithParam<EqualityCase> {};

TEST_P(StringEquality, OperatorAndEqual) {
    const EqualityCase& c = GetParam();
    const StringValue left(c.left), right(c.right);
    EXPECT_EQ(left == right, c.equal);
    EXPECT_EQ(right == left, c.equal);
    EXPECT_EQ(left.Equal(&right, false, false), c.equal);
    EXPECT_EQ(left.Equal(&right, true, false), c.equalUntrimmed);
    EXPECT_EQ(left.Equal(&right, true, true), c.equalUntrimmed);
    EXPECT_EQ(left.Equal(&right, false, true), c.equalEmptyString);
    EXPECT_EQ(right.Equal(&left, false, true), c.equalEmptyString);
}

constexpr EqualityCase kEqualityCases[] = {
    {"Identical", "abc", "abc", true, true, true},
    {"Different", "abc", "abd", false, false, false},
    {"Case", "abc", "ABC", false, false, false},
    {"TrailingBlanksOnOneSide", "abc", "abc   ", true, false, true},
    {"TrailingBlanksOnBothSides", "abc ", "abc   ", true, false, true},
    {"LeadingBlanksCount", "  a", "a", false, false, false},
    {"TabCounts", "a\t", "a", false, false, false},
    {"InnerBlankCounts", "a b", "ab", false, false, false},
    {"PrefixOnly", "abc", "ab", false, false, false},
    {"BothEmpty", "", "", true, true, true},
    {"EmptyAndBlank", "", "  ", true, false, false},
    {"BlanksOfDifferentSize", "  ", "    ", true, false, true},
    {"BlanksOfTheSameSize", "  ", "  ", true, true, true},
    {"EmptyAndText", "", "a", false, false, false},
    {"BlankAndText", "   ", "a", false, false, false},
};

INSTANTIATE_TEST_SUITE_P(Rows, StringEquality, testing::ValuesIn(kEqualityCases), veltrane::tests::NameOfRow());

TEST(StringEqualityAcrossKinds, IsFalse) {
    const StringValue text("1");
    const NumericValue number(1);
    const DateTimeValue time(1, DateTimeValue::VAL_TIME);
    EXPECT_FALSE(text == number);
    EXPECT_FALSE(text == time);
    EXPECT_FALSE(text.Equal(&number, false, false));
    EXPECT_FALSE(text.Equal(nullptr, false, false));
}

struct OrderCase {
    const char* name;
    const char* left;
    const char* right;
    bool less, greater, lessEqual, greaterEqual;
};

class StringOrder : public testing::TestWithParam<OrderCase> {};
class KeptStringOrder : public StringOrder {};

void ExpectOrder(const OrderCase& c) {
    const StringValue left(c.left), right(c.right);
    EXPECT_EQ(left < right, c.less);
    EXPECT_EQ(left > right, c.greater);
    EXPECT_EQ(left <= right, c.lessEqual);
    EXPECT_EQ(left >= right, c.greaterEqual);
}

TEST_P(StringOrder, FourOperators) {
    ExpectOrder(GetParam());
}
TEST_P(KeptStringOrder, FourOperators) {
    ExpectOrder(GetParam());
}

constexpr OrderCase kOrderCases[] = {
    {"Below", "a", "b", true, false, true, false},
    {"Above", "b", "a", false, true, false, true},
    {"Same", "a", "a", false, false, true, true},
    {"PrefixIsBelow", "a", "ab", true, false, true, false},
    {"BytesNotLetters", "B", "a", true, false, true, false},
    {"HighBytesAreLarge", "z", "\xC3\xA4", true, false, true, false},
    {"LeadingBlankIsBelow", " a", "a", true, false, true, false},
    {"RightEndsInBlanksBelow", "a", "b  ", true, false, true, false},
    {"RightEndsInBlanksSame", "a", "a  ", false, false, true, true},
    {"RightEndsInBlanksAbove", "b", "a  ", false, true, false, true},
    {"BothEndInBlanksBelow", "a ", "b  ", true, false, true, false},
    {"BothEndInBlanksSame", "a ", "a  ", false, false, true, true},
    {"BothEndInBlanksAbove", "b ", "a  ", false, true, false, true},
    {"LeftEndsInBlanksSame", "a  ", "a", false, false, true, true},
};

INSTANTIATE_TEST_SUITE_P(Rows, StringOrder, testing::ValuesIn(kOrderCases), veltrane::tests::NameOfRow());

// What the inclusive operators do when only the left side ends in blanks, and what < does with a blank right side.
constexpr OrderCase kKeptOrderCases[] = {
    {"LeftEndsInBlanksBelow", "a  ", "b", true, false, false, false},
    {"LeftEndsInBlanksAbove", "b  ", "a", false, true, false, false},
    {"TextAndBlank", "abc", "   ", true, true, false, true},
    {"TextAndEmpty", "abc", "", true, true, false, true},
    {"TextWithBlanksAndBlank", "abc ", " ", true, true, false, true},
    {"BlankAndText", "   ", "abc", false, false, true, false},
    {"EmptyAndText", "", "abc", false, false, true, false},
    {"BlankAndBlank", " ", "   ", false, false, true, true},
    {"EmptyAndEmpty", "", "", false, false, true, true},
};

INSTANTIATE_TEST_SUITE_P(Rows, KeptStringOrder, testing::ValuesIn(kKeptOrderCases), veltrane::tests::NameOfRow());

TEST(StringOrderAcrossKinds, IsFalse) {
    const StringValue text("1");
    for (const ScoreValue* other : {static_cast<const ScoreValue*>(&NumericValue::SYSMIS)}) {
        EXPECT_FALSE(text < *other);
        EXPECT_FALSE(text > *other);
        EXPECT_FALSE(text <= *other);
        EXPECT_FALSE(text >= *other);
    }
    EXPECT_FALSE(StringValue("") <= NumericValue(0));
    EXPECT_FALSE(StringValue("") >= NumericValue(0));
}

/// A text of another class, as a plug-in may derive one: the comparisons read it through GetString().
class DerivedText : public StringValue {
public:
    using StringValue::StringValue;
    std::string GetString() const override { return "derived"; }
};

TEST(StringComparisonOfDerivedClasses, ReadsThroughTheVirtual) {
    const DerivedText derived("stored");
    EXPECT_TRUE(StringValue("derived ") == derived);
    EXPECT_FALSE(StringValue("stored") == derived);
    EXPECT_TRUE(StringValue("d") < derived);
    EXPECT_TRUE(StringValue("derived").Equal(&derived, true, true));
}

} // namespace
