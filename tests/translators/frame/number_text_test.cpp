#include "support/dom.h"
#include "support/faults/failure.h"

#include <MCVeltrane_900/BaseTranslator.h>
#include <MCVeltrane_900/NumericValue.h>

#include <gtest/gtest.h>

#include <clocale>
#include <limits>
#include <locale>
#include <string>
#include <vector>

namespace {

using namespace veltrane::tests;

TEST(TrimBlanks, KeepsATextWithoutBlanks) {
    EXPECT_EQ(BaseTranslator::TrimBlanks("ab"), "ab");
}

TEST(TrimBlanks, KeepsATextOfBlanksOnlyAndTheEmptyOne) {
    EXPECT_EQ(BaseTranslator::TrimBlanks("   "), "   ");
    EXPECT_EQ(BaseTranslator::TrimBlanks(""), "");
}

TEST(TrimBlanks, RemovesBlanksOfOneSide) {
    EXPECT_EQ(BaseTranslator::TrimBlanks("ab  "), "ab");
    EXPECT_EQ(BaseTranslator::TrimBlanks("  ab"), "ab");
}

TEST(TrimBlanks, KeepsTabsAndNewlines) {
    EXPECT_EQ(BaseTranslator::TrimBlanks("\tab\n "), "\tab\n");
}

TEST(KeptTrimBlanks, KeepsTrailingBlanksBehindLeadingOnes) {
    EXPECT_EQ(BaseTranslator::TrimBlanks("  ab  "), "ab  ");
    EXPECT_EQ(BaseTranslator::TrimBlanks(" ab "), "ab ");
    EXPECT_EQ(BaseTranslator::TrimBlanks(" ab   "), "ab ");
}

struct AcceptedInt {
    const char* text;
    int number;
};

class VerifyIntAccepts : public testing::TestWithParam<AcceptedInt> {};

TEST_P(VerifyIntAccepts, Text) {
    EXPECT_EQ(BaseTranslator::VerifyInt(std::string(GetParam().text)), GetParam().number);
}

INSTANTIATE_TEST_SUITE_P(Texts, VerifyIntAccepts,
                         testing::Values(AcceptedInt{"0", 0}, AcceptedInt{"5", 5}, AcceptedInt{"-5", -5},
                                         AcceptedInt{"+5", 5}, AcceptedInt{"007", 7},
                                         AcceptedInt{"2147483647", 2147483647},
                                         AcceptedInt{"-2147483648", std::numeric_limits<int>::min()}));

class VerifyIntRefuses : public testing::TestWithParam<const char*> {};

TEST_P(VerifyIntRefuses, Text) {
    ExpectFailure([] { BaseTranslator::VerifyInt(std::string(GetParam())); },
                  {INVALID_VALUE_OF_TYPE, GetParam(), "integer"});
}

INSTANTIATE_TEST_SUITE_P(Texts, VerifyIntRefuses,
                         testing::Values("-", "+", "-+5", "+-5", "--5", "++5", "5-", "5+", "5-5", " 1", "1 ", "1.0",
                                         "1e3", "abc", "0x10", "\t1"));

TEST(VerifyInt, RefusesTheEmptyText) {
    ExpectFailure([] { BaseTranslator::VerifyInt(std::string()); }, {INVALID_VALUE_OF_TYPE, "", "integer"});
}

TEST(KeptVerifyInt, DoesNotCatchANumberThatDoesNotFit) {
    EXPECT_EQ(BaseTranslator::VerifyInt(std::string("2147483648")), std::numeric_limits<int>::max());
    EXPECT_EQ(BaseTranslator::VerifyInt(std::string("-99999999999999999999")), std::numeric_limits<int>::min());
}

struct AcceptedDouble {
    const char* text;
    double number;
};

class VerifyDoubleAccepts : public testing::TestWithParam<AcceptedDouble> {};

TEST_P(VerifyDoubleAccepts, Text) {
    EXPECT_EQ(BaseTranslator::VerifyDouble(std::string(GetParam().text)), GetParam().number);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, VerifyDoubleAccepts,
    testing::Values(AcceptedDouble{"0", 0.0}, AcceptedDouble{"1e5", 1e5}, AcceptedDouble{"1E5", 1e5},
                    AcceptedDouble{"-1.5E+3", -1500.0}, AcceptedDouble{"+.5", 0.5}, AcceptedDouble{".5", 0.5},
                    AcceptedDouble{"-.5", -0.5}, AcceptedDouble{"+1", 1.0}, AcceptedDouble{"007", 7.0},
                    AcceptedDouble{" 1", 1.0}, AcceptedDouble{"   1", 1.0}, AcceptedDouble{"1 ", 1.0},
                    AcceptedDouble{"1   ", 1.0}, AcceptedDouble{"1.5e-3", 0.0015}, AcceptedDouble{"0.1", 0.1},
                    AcceptedDouble{"123456789012345678901234567890", 123456789012345678901234567890.0},
                    AcceptedDouble{"4.9e-324", 4.9e-324}, AcceptedDouble{"1e-400", 0.0},
                    AcceptedDouble{"1.7976931348623157e308", 1.7976931348623157e308},
                    AcceptedDouble{"-1.7976931348623157e308", -1.7976931348623157e308}));

class VerifyDoubleRefuses : public testing::TestWithParam<const char*> {};

TEST_P(VerifyDoubleRefuses, Text) {
    ExpectFailure([] { BaseTranslator::VerifyDouble(std::string(GetParam())); },
                  {INVALID_VALUE_OF_TYPE, GetParam(), "double"});
}

INSTANTIATE_TEST_SUITE_P(Texts, VerifyDoubleRefuses,
                         testing::Values("5.", "1e", "1E", "e1", "E1", "e", "--1", "-", "+", "++1", "-+1", "+-1", "1-",
                                         "1+", "1-2", "1+2", "1e5-", "1e+", "1E-", "1e5-3", "1e--5", "1e++5", "1e+-5",
                                         "1-e5", "1e5e5", "1E5E5", "1e5E5", "1.e5", "1.E5", "1e5.5", "1.5.5", ".", "-.",
                                         "1 2", "abc", "1x", "0x10", "inf", "nan", "1,5", "\t1", "1\n", "1f"));

TEST(VerifyDouble, RefusesTheEmptyText) {
    ExpectFailure([] { BaseTranslator::VerifyDouble(std::string()); }, {INVALID_VALUE_OF_TYPE, "", "double"});
}

TEST(VerifyDouble, RefusesATextOfBlanksBecauseTheyStay) {
    ExpectFailure([] { BaseTranslator::VerifyDouble(std::string("   ")); }, {INVALID_VALUE_OF_TYPE, "   ", "double"});
}

TEST(VerifyDouble, ReportsTheTrimmedText) {
    ExpectFailure([] { BaseTranslator::VerifyDouble(std::string("x  ")); }, {INVALID_VALUE_OF_TYPE, "x", "double"});
}

TEST(VerifyDouble, OverflowIsInfinity) {
    EXPECT_EQ(BaseTranslator::VerifyDouble(std::string("1e400")), NumericValue::GetInfinity());
    EXPECT_EQ(BaseTranslator::VerifyDouble(std::string(400, '9')), NumericValue::GetInfinity());
}

TEST(KeptVerifyDouble, RefusesBlanksOnBothSides) {
    ExpectFailure([] { BaseTranslator::VerifyDouble(std::string(" 1 ")); }, {INVALID_VALUE_OF_TYPE, "1 ", "double"});
}

TEST(KeptVerifyDouble, NegativeOverflowIsTheMissingNumber) {
    EXPECT_EQ(BaseTranslator::VerifyDouble(std::string("-1e400")), NumericValue::GetSysmisValue());
}

TEST(KeptVerifyDouble, OnlyTheLastSignOfANumberWithExponentCounts) {
    EXPECT_EQ(BaseTranslator::VerifyDouble(std::string("1-2e-5")), 1.0);
    EXPECT_EQ(BaseTranslator::VerifyDouble(std::string("1+2e+5")), 1.0);
    EXPECT_EQ(BaseTranslator::VerifyDouble(std::string("-e5")), NumericValue::GetSysmisValue());
    EXPECT_EQ(BaseTranslator::VerifyDouble(std::string("--1e-5")), NumericValue::GetSysmisValue());
}

TEST(VerifyNumbers, ReadDocumentTextAsStrings) {
    EXPECT_EQ(BaseTranslator::VerifyInt(u"-12"), -12);
    EXPECT_EQ(BaseTranslator::VerifyDouble(u" 1.5e3"), 1500.0);
    const XMLCh* none = nullptr;
    ExpectFailure([=] { BaseTranslator::VerifyInt(none); }, {INVALID_VALUE_OF_TYPE, "", "integer"});
    ExpectFailure([=] { BaseTranslator::VerifyDouble(none); }, {INVALID_VALUE_OF_TYPE, "", "double"});
}

TEST(VerifyNumbers, ReadLongDocumentText) {
    veltrane::tests::StartXml();
    const std::u16string zeros(200, u'0');
    EXPECT_EQ(BaseTranslator::VerifyDouble((u"0." + zeros + u"1e201").c_str()), 1.0);
    EXPECT_EQ(BaseTranslator::VerifyInt((zeros + u"7").c_str()), 7);
}

struct CommaAndGroups : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(VerifyNumbers, DoNotDependOnTheLocaleOfStreams) {
    const std::locale before = std::locale::global(std::locale(std::locale::classic(), new CommaAndGroups));
    EXPECT_EQ(BaseTranslator::VerifyDouble(std::string("1.5")), 1.5);
    EXPECT_EQ(BaseTranslator::VerifyDouble(std::string("1.500")), 1.5);
    EXPECT_EQ(BaseTranslator::VerifyDouble(std::string("1.5e400")), NumericValue::GetInfinity());
    std::locale::global(before);
}

TEST(VerifyNumbers, DoNotDependOnTheLocaleOfTheProcess) {
    if (!std::setlocale(LC_ALL, "de_DE.UTF-8") && !std::setlocale(LC_ALL, "fr_FR.UTF-8")) {
        GTEST_SKIP() << "no locale with a decimal comma is installed";
    }
    EXPECT_EQ(BaseTranslator::VerifyDouble(std::string("1.5")), 1.5);
    EXPECT_EQ(BaseTranslator::VerifyDouble(std::string("1.5e400")), NumericValue::GetInfinity());
    ExpectFailure([] { BaseTranslator::VerifyDouble(std::string("1,5")); }, {INVALID_VALUE_OF_TYPE, "1,5", "double"});
    std::setlocale(LC_ALL, "C");
}

} // namespace
