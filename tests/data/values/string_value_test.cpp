#include "support/rows.h"

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/StringValue.h>

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <string>

namespace {

using namespace MCVeltrane_900;

TEST(StringValueConstruction, DefaultHolds255NulsWithLengthZero) {
    const StringValue value;
    EXPECT_EQ(StringValue::MAX_STRING, 255);
    EXPECT_EQ(value.GetString(), std::string(255, '\0'));
    EXPECT_EQ(value.GetLength(), 0);
}

TEST(StringValueConstruction, DefaultIsNotAllBlank) {
    EXPECT_FALSE(StringValue() == StringValue(""));
    EXPECT_TRUE(StringValue() > StringValue("  "));
}

TEST(StringValueConstruction, FromTextSetsTheLength) {
    EXPECT_EQ(StringValue("abc ").GetLength(), 4);
    EXPECT_EQ(StringValue("abc ").GetString(), "abc ");
    const std::string withNul("a\0b", 3);
    EXPECT_EQ(StringValue(withNul).GetLength(), 3);
    EXPECT_EQ(StringValue(withNul).GetString(), withNul);
}

TEST(StringValueConstruction, NullTextIsEmpty) {
    const char* none = nullptr;
    EXPECT_EQ(StringValue(none).GetString(), "");
    EXPECT_EQ(StringValue(none).GetLength(), 0);
}

TEST(KeptStringLength, CopyTakesTheSizeOfTheText) {
    StringValue value("abc");
    value.SetLength(99);
    EXPECT_EQ(StringValue(value).GetLength(), 3);
    const StringValue unset;
    EXPECT_EQ(StringValue(unset).GetLength(), 255);
}

TEST(KeptStringLength, AssignmentCopiesTheStoredLength) {
    StringValue value("abc"), other;
    value.SetLength(99);
    other = value;
    EXPECT_EQ(other.GetLength(), 99);
    EXPECT_EQ(other.GetString(), "abc");
}

TEST(KeptStringLength, CloneAndGetValueTakeTheSizeOfTheText) {
    StringValue value("abc");
    value.SetLength(99);
    for (ScoreValue* copy : {value.Clone(), value.GetValue()}) {
        const std::unique_ptr<ScoreValue> owner(copy);
        EXPECT_EQ(copy->GetType(), ScoreValue::STRING_VALUE);
        EXPECT_EQ(copy->GetString(), "abc");
        EXPECT_EQ(dynamic_cast<StringValue&>(*copy).GetLength(), 3);
    }
}

TEST(KeptStringLength, SetStringAndSetValueLeaveIt) {
    StringValue value("abc");
    value.SetString("longer text");
    EXPECT_EQ(value.GetLength(), 3);
    EXPECT_EQ(value.GetString(), "longer text");
    const StringValue other("xy");
    value.SetValue(&other);
    EXPECT_EQ(value.GetLength(), 3);
    EXPECT_EQ(value.GetString(), "xy");
}

TEST(KeptStringLength, ComparisonsIgnoreIt) {
    StringValue a("abc"), b("abc");
    b.SetLength(1);
    EXPECT_TRUE(a == b);
    EXPECT_TRUE(a.Equal(&b, true, true));
    EXPECT_TRUE(a <= b);
}

TEST(StringValueAssignment, TakesItself) {
    StringValue value("abc");
    value.SetLength(7);
    StringValue& same = value;
    value = same;
    EXPECT_EQ(value.GetString(), "abc");
    EXPECT_EQ(value.GetLength(), 7);
}

TEST(KeptStringSetValue, OtherKindsEmptyTheText) {
    const DateTimeValue time;
    for (const ScoreValue* other :
         {static_cast<const ScoreValue*>(&NumericValue::SYSMIS), static_cast<const ScoreValue*>(&time)}) {
        StringValue value("abc");
        value.SetValue(other);
        EXPECT_EQ(value.GetString(), "");
        EXPECT_EQ(value.GetLength(), 3);
    }
}

TEST(StringValueMissing, NeverIs) {
    EXPECT_FALSE(StringValue().IsSystemMissingValue());
    EXPECT_FALSE(StringValue("").IsSystemMissingValue());
    EXPECT_FALSE(StringValue("-1.7976931348623157e+308").IsSystemMissingValue());
}

TEST(StringValueText, GetTextIsTheTextWithoutACopy) {
    StringValue value("abc");
    EXPECT_EQ(&value.GetText(), &value.GetText());
    EXPECT_EQ(value.GetText(), value.GetString());
}

struct IntegerCase {
    const char* name;
    const char* text;
    int integer;
};

class StringGetInt : public testing::TestWithParam<IntegerCase> {};

TEST_P(StringGetInt, ReadsTheLeadingInteger) {
    EXPECT_EQ(StringValue(GetParam().text).GetInt(), GetParam().integer);
}

constexpr IntegerCase kIntegerCases[] = {
    {"Empty", "", 0},
    {"Word", "abc", 0},
    {"Digits", "42", 42},
    {"Trailing", "42abc", 42},
    {"Point", "42.9", 42},
    {"Exponent", "1e3", 1},
    {"LeadingSpace", " \t\n\v\f\r42", 42},
    {"Plus", "+42", 42},
    {"Minus", "-42", -42},
    {"TwoSigns", "--42", 0},
    {"SignAlone", "-", 0},
    {"SignBlank", "- 42", 0},
    {"LeadingZeros", "0000000000000000000042", 42},
    {"Largest", "2147483647", 2147483647},
    {"AboveIsTheLargest", "2147483648", 2147483647},
    {"Smallest", "-2147483648", std::numeric_limits<int>::min()},
    {"BelowIsTheSmallest", "-2147483649", std::numeric_limits<int>::min()},
    {"ManyDigits", "99999999999999999999999999999999999999", 2147483647},
    {"ManyNegativeDigits", "-99999999999999999999999999999999999999", std::numeric_limits<int>::min()},
};

INSTANTIATE_TEST_SUITE_P(Rows, StringGetInt, testing::ValuesIn(kIntegerCases), veltrane::tests::NameOfRow());

struct DoubleCase {
    const char* name;
    const char* text;
    double value;
};

class StringGetDouble : public testing::TestWithParam<DoubleCase> {};

TEST_P(StringGetDouble, ReadsTheLeadingNumber) {
    EXPECT_EQ(StringValue(GetParam().text).GetDouble(), GetParam().value);
}

constexpr DoubleCase kDoubleCases[] = {
    {"Empty", "", 0.0},
    {"Word", "x", 0.0},
    {"Number", "1.5", 1.5},
    {"Trailing", "1.5abc", 1.5},
    {"SecondPointEnds", "1.5.7", 1.5},
    {"Exponent", "-2.5e2", -250},
    {"BrokenExponent", "1e", 0.0},
    {"OverflowIsUnreadable", "1e999", 0.0},
    {"NegativeOverflowIsUnreadable", "-1e999", 0.0},
    {"InfinityByName", "inf", 0.0},
};

INSTANTIATE_TEST_SUITE_P(Rows, StringGetDouble, testing::ValuesIn(kDoubleCases), veltrane::tests::NameOfRow());

} // namespace
