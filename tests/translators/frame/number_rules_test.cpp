#include <MCVeltrane_900/BaseTranslator.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/VTException.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <locale>
#include <optional>
#include <sstream>
#include <string>

namespace {

using namespace MCVeltrane_900;

constexpr std::size_t kNone = std::string::npos;

std::size_t Count(const std::string& text, char c) {
    return std::count(text.begin(), text.end(), c);
}

bool IsExponentGood(const std::string& text, char letter) {
    const std::size_t at = text.find(letter);
    return at == kNone || (at != 0 && at != text.size() - 1 && Count(text, letter) == 1);
}

bool IsSignGood(const std::string& text, char sign, std::size_t exponent) {
    if (text.find(sign) == kNone) {
        return true;
    }
    if (exponent == kNone && (Count(text, sign) != 1 || text.front() != sign)) {
        return false;
    }
    const std::size_t last = text.rfind(sign);
    return last != text.size() - 1 && (last == 0 || (exponent != kNone && last == exponent + 1));
}

bool IsPointGood(const std::string& text, std::size_t exponent) {
    const std::size_t at = text.find('.');
    if (at == kNone) {
        return true;
    }
    return Count(text, '.') == 1 && at != text.size() - 1 && (exponent == kNone || at + 1 < exponent);
}

/// The rules one by one, each by a search of its own.
bool FollowsTheRules(const std::string& text) {
    if (text.empty() || text.find_first_not_of("0123456789.eE-+") != kNone) {
        return false;
    }
    if (!IsExponentGood(text, 'e') || !IsExponentGood(text, 'E')) {
        return false;
    }
    if (text.find('e') != kNone && text.find('E') != kNone) {
        return false;
    }
    const std::size_t exponent = text.find_first_of("eE");
    if (exponent == kNone && text.find('-') != kNone && text.find('+') != kNone) {
        return false;
    }
    return IsSignGood(text, '-', exponent) && IsSignGood(text, '+', exponent) && IsPointGood(text, exponent);
}

/// The number by a stream of the classic locale. A text that the stream cannot read leaves the missing number.
double ReadByStream(const std::string& text) {
    if (std::atof(text.c_str()) == NumericValue::GetInfinity()) {
        return NumericValue::GetInfinity();
    }
    std::istringstream in(text);
    in.imbue(std::locale::classic());
    double number = 0;
    return in >> number ? number : NumericValue::GetSysmisValue();
}

std::optional<double> Verify(const std::string& text) {
    try {
        return BaseTranslator::VerifyDouble(text);
    } catch (const VTException&) {
        return std::nullopt;
    }
}

void ExpectAgreement(const std::string& text) {
    const std::string trimmed = BaseTranslator::TrimBlanks(text);
    const std::optional<double> number = Verify(text);
    ASSERT_EQ(number.has_value(), FollowsTheRules(trimmed)) << '"' << text << '"';
    if (number) {
        ASSERT_EQ(*number, ReadByStream(trimmed)) << '"' << text << '"';
    }
}

void ForEachText(const std::string& alphabet, std::size_t length, const std::string& start,
                 const std::function<void(const std::string&)>& visit) {
    visit(start);
    if (length > 0) {
        for (char c : alphabet) {
            ForEachText(alphabet, length - 1, start + c, visit);
        }
    }
}

TEST(NumberRules, HoldForEveryShortText) {
    ForEachText("17.eE-+ ", 5, "", ExpectAgreement);
}

TEST(NumberRules, HoldForEveryExponent) {
    for (int exponent = -400; exponent <= 400; ++exponent) {
        for (const char* mantissa : {"1", "-1", "9.99999999999999999", "-123456789012345678901234567890", "0"}) {
            ExpectAgreement(mantissa + std::string("e") + std::to_string(exponent));
        }
    }
}

TEST(NumberRules, HoldForLongFractions) {
    std::string digits = "0.";
    for (int i = 1; i <= 400; ++i) {
        digits += static_cast<char>('0' + i * 7 % 10);
        ExpectAgreement(digits);
        ExpectAgreement("-" + digits + "E-300");
    }
}

} // namespace
