// Functions of the standard with arguments of any types and numbers.
#include "calls.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>

using namespace veltrane::tests;
using veltrane::DataType;
using veltrane::Function;
using veltrane::Value;

namespace {

constexpr int kTypes = static_cast<int>(DataType::DATE_TIME_SECONDS_SINCE_1980) + 1;

/// Texts that mean something to one function or another.
const std::string kTexts[] = {"",
                              " ",
                              "a",
                              "Straße",
                              "a😀b",
                              "12",
                              "-0.5",
                              "1e400",
                              "true",
                              "false",
                              "2004-02-29",
                              "13:05:09",
                              "(a+)+b",
                              "a|b",
                              "[",
                              "\\",
                              "$1",
                              "$0$9",
                              "%d",
                              "%5.2f|%s",
                              "%-+ 0#9.9g",
                              "%",
                              "%Y-%m-%d %c",
                              "%Q",
                              "\\p{L}",
                              "^.*$",
                              "\n\t\r",
                              "x*",
                              "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaac"};

const double kNumbers[] = {0.0,
                           1.0,
                           -1.0,
                           2.0,
                           0.5,
                           -2.5,
                           3.0,
                           100.0,
                           1960.0,
                           86399.0,
                           1e9,
                           -1e9,
                           1e15,
                           -1e15,
                           1e18,
                           -1e18,
                           1e300,
                           -1e300,
                           5e-324,
                           std::numeric_limits<double>::infinity(),
                           -std::numeric_limits<double>::infinity()};

class Draw {
public:
    explicit Draw(unsigned seed) : fGenerator(seed) {}

    std::size_t Below(std::size_t bound) { return fGenerator() % bound; }

    Value Any() {
        const auto type = static_cast<DataType>(Below(kTypes));
        if (Below(8) == 0) {
            return veltrane_kit::MakeMissing(type);
        }
        Value value = type == DataType::STRING ? Text(kTexts[Below(std::size(kTexts))])
                                               : veltrane_kit::MakeNumber(kNumbers[Below(std::size(kNumbers))], type);
        value.number = type == DataType::BOOLEAN ? static_cast<double>(Below(2)) : value.number;
        value.isInvalid = Below(10) == 0;
        return value;
    }

private:
    std::mt19937 fGenerator;
};

/// Whether a text is UTF-8, by its bytes.
bool IsUtf8(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const auto lead = static_cast<unsigned char>(text[at]);
        const std::size_t length = lead < 0x80 ? 1 : lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC2 ? 2 : 0;
        if (length == 0 || at + length > text.size()) {
            return false;
        }
        for (std::size_t i = 1; i < length; ++i) {
            if ((static_cast<unsigned char>(text[at + i]) & 0xC0U) != 0x80U) {
                return false;
            }
        }
        at += length;
    }
    return true;
}

bool HasTypeOf(const Function& function, const Value& value) {
    switch (function.result) {
    case Function::Result::REAL:
        return value.type == DataType::DOUBLE;
    case Function::Result::INTEGER:
        return value.type == DataType::INTEGER && (value.isMissing || value.number == std::trunc(value.number));
    case Function::Result::SAME_KIND:
        return value.type == DataType::INTEGER || value.type == DataType::DOUBLE;
    case Function::Result::TRUTH:
        return value.type == DataType::BOOLEAN && (value.isMissing || value.number == 0.0 || value.number == 1.0);
    case Function::Result::TEXT:
        return value.type == DataType::STRING;
    default:
        return true;
    }
}

TEST(StandardFunctions, TakeArgumentsOfAllTypes) {
    Draw draw(1);
    for (const Function& function : veltrane_kit::StandardFunctions().All()) {
        Place place; // kept, as that of a document is
        for (int i = 0; i < 1000; ++i) {
            const std::size_t most = std::min(function.most, function.fewest + 3);
            std::vector<Value> arguments;
            std::string what = function.name;
            for (std::size_t left = function.fewest + draw.Below(most - function.fewest + 1); left > 0; --left) {
                arguments.push_back(draw.Any());
                what += " " + WriteCell(arguments.back());
            }
            const Value result = Call(function, arguments, place);
            EXPECT_TRUE(HasTypeOf(function, result)) << what << ": " << WriteCell(result);
            const bool isText = result.type == DataType::STRING;
            EXPECT_EQ(std::isnan(result.number), result.isMissing || isText) << what;
            EXPECT_TRUE(!isText || result.isMissing || IsUtf8(result.text)) << what << ": " << result.text;
        }
    }
}

} // namespace
