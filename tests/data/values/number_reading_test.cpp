#include "support/numbers.h"
#include "support/rows.h"

#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/StringValue.h>

#include <gtest/gtest.h>

#include <bit>
#include <clocale>
#include <cstdlib>
#include <iostream>
#include <locale>
#include <random>
#include <sstream>

namespace {

using namespace MCVeltrane_900;
using namespace veltrane::tests;

/// What a stream in the classic locale extracts; false when it fails.
bool StreamReads(const std::string& text, double& out) {
    std::istringstream in(text);
    in.imbue(std::locale::classic());
    double value = 0;
    if (!(in >> value)) {
        return false;
    }
    out = value;
    return true;
}

/// The rule for a number in a text, by the C library and a stream.
double ReferenceNumber(const std::string& text) {
    double value = kMissing;
    if (text.empty()) {
        return value;
    }
    if (std::atof(text.c_str()) == kInfinity) {
        return kInfinity;
    }
    StreamReads(text, value);
    return value;
}

struct NumberCase {
    const char* name;
    const char* text;
    double value;
};

class NumberFromText : public testing::TestWithParam<NumberCase> {};

TEST_P(NumberFromText, Reads) {
    EXPECT_EQ(Bits(NumericValue(std::string(GetParam().text)).GetDouble()), Bits(GetParam().value));
}

TEST_P(NumberFromText, AgreesWithAStream) {
    EXPECT_EQ(Bits(NumericValue(std::string(GetParam().text)).GetDouble()), Bits(ReferenceNumber(GetParam().text)));
}

constexpr NumberCase kNumberCases[] = {
    {"Empty", "", kMissing},
    {"Blank", "   ", kMissing},
    {"Word", "abc", kMissing},
    {"Integer", "12", 12},
    {"TrailingLetters", "12abc", 12},
    {"TrailingBlanks", "12  ", 12},
    {"LeadingSpace", " \t\n\v\f\r12", 12},
    {"Plus", "+1.5", 1.5},
    {"Minus", "-1.5", -1.5},
    {"MinusZero", "-0", -0.0},
    {"TwoSigns", "+-1", kMissing},
    {"SignAlone", "-", kMissing},
    {"SignBlank", "- 1", kMissing},
    {"NoIntegerPart", ".5", 0.5},
    {"NoFraction", "5.", 5},
    {"PointAlone", ".", kMissing},
    {"PointExponent", ".e5", kMissing},
    {"TwoPoints", "1.2.3", 1.2},
    {"Comma", "1,5", 1},
    {"Exponent", "1.5e3", 1500},
    {"UpperExponent", "1.5E-3", 0.0015},
    {"PlusExponent", "1e+3", 1000},
    {"ExponentAlone", "1e", kMissing},
    {"ExponentSignAlone", "1e+", kMissing},
    {"ExponentWord", "1ex", kMissing},
    {"ExponentBlank", "1e 5", kMissing},
    {"TwoExponents", "1e2e3", 100},
    {"PointInExponent", "1e2.5", 100},
    {"SignInside", "1-2e-5", 1},
    {"LeadingZeros", "000012.5", 12.5},
    {"Hexadecimal", "0x10", 0},
    {"HexadecimalOverflow", "0x1p2000", kInfinity},
    {"InfinityByName", "inf", kInfinity},
    {"InfinityByLongName", " +Infinity", kInfinity},
    {"MinusInfinityByName", "-inf", kMissing},
    {"NotANumberByName", "nan", kMissing},
    {"OverflowUpward", "1e999", kInfinity},
    {"OverflowUpwardWithTrailing", "1e999x", kInfinity},
    {"OverflowDownward", "-1e999", kMissing},
    {"LargestDouble", "1.7976931348623157e308", 1.7976931348623157e308},
    {"MinusLargestDouble", "-1.7976931348623157e308", kMissing},
    {"Denormal", "4.9e-324", 5e-324},
    {"MinusDenormal", "-4.9e-324", -5e-324},
    {"Underflow", "1e-999", 0.0},
    {"MinusUnderflow", "-1e-999", -0.0},
    {"ManyDigits", "0.1000000000000000055511151231257827021181583404541015625", 0.1},
};

INSTANTIATE_TEST_SUITE_P(Rows, NumberFromText, testing::ValuesIn(kNumberCases), veltrane::tests::NameOfRow());

TEST(NumberFromTextUnreadable, AMantissaOfManyDigitsWithABrokenExponentOverflows) {
    EXPECT_EQ(NumericValue(std::string(400, '9') + "e").GetDouble(), kInfinity);
    EXPECT_EQ(NumericValue("-" + std::string(400, '9') + "e").GetDouble(), kMissing);
}

TEST(NumberFromTextEmbeddedNul, EndsTheNumber) {
    EXPECT_EQ(NumericValue(std::string("12\0"
                                       "34",
                                       5))
                  .GetDouble(),
              12);
    EXPECT_EQ(NumericValue(std::string("\0"
                                       "34",
                                       3))
                  .GetDouble(),
              kMissing);
}

TEST(NumberFromTextAgainstAStream, EveryShortTextOfTheAlphabet) {
    const std::string alphabet = "09+-.eEx ";
    std::vector<std::string> texts{""};
    for (std::size_t begin = 0, length = 0; length < 5; ++length) {
        const std::size_t end = texts.size();
        for (; begin < end; ++begin) {
            for (const char c : alphabet) {
                texts.push_back(texts[begin] + c);
            }
        }
    }
    for (const std::string& text : texts) {
        ASSERT_EQ(Bits(NumericValue(text).GetDouble()), Bits(ReferenceNumber(text))) << text;
        double value = 0;
        StreamReads(text, value);
        ASSERT_EQ(Bits(StringValue(text).GetDouble()), Bits(value)) << text;
    }
}

std::string RandomNumberText(std::mt19937& random) {
    static const std::string alphabet = "00112233445566778899999..+-eEinfxab ";
    const auto pick = [&random](std::size_t n) { return random() % n; };
    std::string text;
    const std::size_t length = 1 + pick(24);
    for (std::size_t i = 0; i < length; ++i) {
        text += alphabet[pick(alphabet.size())];
    }
    return text;
}

TEST(NumberFromTextAgainstAStream, RandomTexts) {
    std::mt19937 random(20240917);
    for (int i = 0; i < 100000; ++i) {
        const std::string text = RandomNumberText(random);
        ASSERT_EQ(Bits(NumericValue(text).GetDouble()), Bits(ReferenceNumber(text))) << text;
    }
}

TEST(NumberFromTextAgainstAStream, RandomDoublesInSeventeenDigits) {
    std::mt19937_64 random(7);
    for (int i = 0; i < 50000; ++i) {
        const double value = std::bit_cast<double>(random());
        if (value != value) {
            continue;
        }
        char text[40];
        std::snprintf(text, sizeof text, "%.17g", value);
        ASSERT_EQ(Bits(NumericValue(std::string(text)).GetDouble()), Bits(ReferenceNumber(text))) << text;
    }
}

/// A decimal comma, and a grouping that would swallow the point.
struct CommaPoint : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

/// A decimal sign that no number has, and no grouping.
struct HashPoint : std::numpunct<char> {
    char do_decimal_point() const override { return '#'; }
};

std::locale LocaleOf(std::numpunct<char>* punctuation) {
    return std::locale(std::locale::classic(), punctuation);
}

/// Puts the host's C++ locale and that of its standard output back at the end.
class UnderACommaLocale : public testing::Test {
protected:
    UnderACommaLocale() : before(std::locale::global(LocaleOf(new CommaPoint))), outputBefore(std::cout.getloc()) {}
    ~UnderACommaLocale() override {
        std::locale::global(before);
        std::cout.imbue(outputBefore);
    }

    const std::locale before;
    const std::locale outputBefore;
};

/// A text's number, step by step: the first point becomes the decimal sign of standard output, and a stream reads it.
double TextNumber(std::string text) {
    const char point = std::use_facet<std::numpunct<char>>(std::cout.getloc()).decimal_point();
    for (char& c : text) {
        if (c == '.') {
            c = point;
            break;
        }
    }
    std::istringstream in(text);
    double value = 0.0;
    return in >> value ? value : 0.0;
}

TEST_F(UnderACommaLocale, NumbersReadTheSame) {
    EXPECT_EQ(NumericValue(std::string("1.5")).GetDouble(), 1.5);
    EXPECT_EQ(NumericValue(std::string("1,5")).GetDouble(), 1);
    EXPECT_EQ(NumericValue(std::string("1e999")).GetDouble(), kInfinity);
    EXPECT_EQ(NumericValue(std::string("1.5e999")).GetDouble(), kInfinity);
}

TEST_F(UnderACommaLocale, TextsReadTheSameOnceStandardOutputHasItToo) {
    std::cout.imbue(std::locale());
    EXPECT_EQ(StringValue("1.5").GetDouble(), 1.5);
    EXPECT_EQ(StringValue("1234.5").GetDouble(), 1234.5);
    EXPECT_EQ(StringValue("1,5").GetDouble(), 1.5);
    EXPECT_EQ(StringValue("x").GetDouble(), 0.0);
    EXPECT_EQ(StringValue("1e999").GetDouble(), 0.0);
}

using KeptTextLocale = UnderACommaLocale;

TEST_F(KeptTextLocale, APointIsReadAsTheLocaleReadsTheSignOfStandardOutput) {
    // A point is a thousands separator of this locale, and it stands in the wrong place.
    EXPECT_EQ(StringValue("1.5").GetDouble(), 0.0);
    EXPECT_EQ(StringValue("1.500").GetDouble(), 1500.0);
    EXPECT_EQ(StringValue("1,5").GetDouble(), 1.5);
    std::locale::global(LocaleOf(new HashPoint));
    EXPECT_EQ(StringValue("1.5").GetDouble(), 1.0);
    EXPECT_EQ(StringValue("1#5").GetDouble(), 1.5);
}

TEST_F(KeptTextLocale, StandardOutputAloneChangesThePoint) {
    std::locale::global(std::locale::classic());
    std::cout.imbue(LocaleOf(new HashPoint));
    EXPECT_EQ(StringValue("1.5").GetDouble(), 1.0);
    EXPECT_EQ(StringValue("15").GetDouble(), 15.0);
}

TEST_F(UnderACommaLocale, TextsReadStepByStepInAnyTwoLocales) {
    const std::locale locales[] = {std::locale::classic(), LocaleOf(new CommaPoint), LocaleOf(new HashPoint)};
    std::mt19937 random(11);
    for (const std::locale& host : locales) {
        for (const std::locale& output : locales) {
            std::locale::global(host);
            std::cout.imbue(output);
            for (int i = 0; i < 3000; ++i) {
                const std::string text = RandomNumberText(random);
                ASSERT_EQ(Bits(StringValue(text).GetDouble()), Bits(TextNumber(text))) << text;
            }
        }
    }
}

class UnderACommaLocaleOfTheC : public testing::Test {
protected:
    ~UnderACommaLocaleOfTheC() override { std::setlocale(LC_ALL, before.c_str()); }

    const std::string before = std::setlocale(LC_ALL, nullptr);
};

TEST_F(UnderACommaLocaleOfTheC, NumbersAndTextsReadTheSame) {
    const char* installed = nullptr;
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "da_DK.UTF-8"}) {
        if (installed == nullptr) {
            installed = std::setlocale(LC_ALL, name);
        }
    }
    if (installed == nullptr) {
        GTEST_SKIP() << "no locale with a decimal comma is installed";
    }
    EXPECT_EQ(NumericValue(std::string("1.5")).GetDouble(), 1.5);
    EXPECT_EQ(NumericValue(std::string("1.5e999")).GetDouble(), kInfinity);
    EXPECT_EQ(StringValue("1.5").GetDouble(), 1.5);
}

} // namespace
