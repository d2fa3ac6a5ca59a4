// Functions of texts give for the rows of a block what they give case by case, bytes, lengths and missing ones alike,
// over texts that are meant well and others.
#include "models/columns/random_columns.h"
#include "models/expressions/random_expressions.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace veltrane_kit;
using namespace veltrane::tests;

constexpr int kX = 0; // slots of the fields
constexpr int kS = 4;

const std::string kText = "<FieldRef field='s'/>";

std::string Constant(const std::string& text) {
    return "<Constant dataType='string'>" + text + "</Constant>";
}

std::string Matching(const std::string& pattern) {
    return Apply("matches", kText + Constant(pattern));
}

std::string Replacing(const std::string& pattern, const std::string& by) {
    return Apply("replace", kText + Constant(pattern) + Constant(by));
}

const std::string kCalls[] = {
    Apply("uppercase", kText),
    Apply("lowercase", kText),
    Apply("trimBlanks", kText),
    Apply("stringLength", kText),
    Apply("substring", kText + "<Constant>2</Constant><Constant>4</Constant>"),
    Apply("substring", kText + "<FieldRef field='x'/><Constant>3</Constant>"),
    Apply("substring", kText + "<Constant>1</Constant><FieldRef field='x'/>"),
    Apply("concat", kText + Constant("-") + kText),
    Apply("concat", kText + "<FieldRef field='x'/>"),
    Apply("concat", kText + kText + kText + kText + kText + kText + kText + kText + kText),
    "<Apply function='concat' mapMissingTo='gone'>" + kText + Constant("!") + "</Apply>",
    "<Apply function='uppercase' mapMissingTo='gone'>" + kText + "</Apply>",
    "<Apply function='stringLength' mapMissingTo='-1'>" + kText + "</Apply>",
    "<Apply function='matches' mapMissingTo='true'>" + kText + Constant("[0-9]+") + "</Apply>",
    Matching("e+n"),
    Matching("^[a-z ]*$"),
    Matching("a*a*a*a*a*a*b"),
    Matching("(a|b)c"),
    Matching("["),
    Replacing("[0-9]+", "#"),
    Replacing("[0-9]*", "&lt;&gt;"),
    Replacing("^a", ""),
    Replacing("a$", "zz"),
    Replacing("a*a*a*a*a*a*b", "c"),
    Replacing("(.)b", "$1"),
    Replacing("b", "$0"),
    Replacing("b", "\\\\"),
    Replacing("e", "\xC3\xA9"),
    Replacing(".", std::string(80, 'x')),
    Apply("equal", kText + Constant("green 17")),
    Apply("lessThan", kText + Constant("green 17")),
    Apply("greaterOrEqual", kText + Constant("green 17")),
    Apply("isIn", kText + Constant("green 17") + Constant("") + Constant("a text of more than 16 bytes")),
};

std::string HostileText(Random& random) {
    static const std::string kPieces[] = {"a",        "b",
                                          "e",        "green 17",
                                          " ",        "\t",
                                          "\n",       "Z",
                                          "0",        std::string(1, '\0'),
                                          "\xC3\xA9", "\xF0\x9F\x98\x80",
                                          "\xC3",     "\x80",
                                          "\xC3\x9F", "a text of more than 16 bytes"};
    std::string text;
    const int pieces = Below(random, 2) == 0 ? 10 : 16; // half of them are ASCII
    for (int i = Below(random, 8); i > 0; --i) {
        text += kPieces[Below(random, pieces)];
    }
    return Below(random, 40) == 0 ? text + std::string(250, 'a') : text;
}

/// Values of the fields that the calls read, some missing.
struct Rows {
    Rows(Random& random, std::size_t count) {
        owned.reserve(count);
        for (std::size_t row = 0; row < count; ++row) {
            owned.push_back(HostileText(random));
            texts.push_back(Below(random, 8) == 0 ? std::string_view() : std::string_view(owned.back()));
            static constexpr double kNumbers[] = {kMissing, -1, 0, 0.5, 1, 2.75, 3, 1e9, 1e300, kInfinity};
            numbers.push_back(kNumbers[Below(random, 10)]);
        }
    }

    void Show(Block& block) const {
        FieldColumn& text = block.Field(kS);
        text.type = DataType::STRING;
        text.texts = texts.data();
        FieldColumn& number = block.Field(kX);
        number.type = DataType::DOUBLE;
        number.numbers = numbers.data();
    }

    void Load(std::size_t row, Frame& frame) const {
        static_cast<Value&>(frame.Field(kS)) =
            texts[row].data() == nullptr ? MakeMissing(DataType::STRING) : MakeText(texts[row]);
        static_cast<Value&>(frame.Field(kX)) = MakeNumber(numbers[row], DataType::DOUBLE);
    }

    std::vector<std::string> owned;
    std::vector<std::string_view> texts;
    std::vector<double> numbers;
};

class TextColumns : public testing::TestWithParam<std::string> {};

INSTANTIATE_TEST_SUITE_P(OfCalls, TextColumns, testing::ValuesIn(kCalls),
                         [](const auto& info) { return "Call" + std::to_string(info.index); });

TEST_P(TextColumns, HoldTheBytesOfEachCase) {
    Random random(20273);
    const ReadExpression read(GetParam(), true);
    Block block(read.layout);
    for (int round = 0; round < 60; ++round) {
        const Rows rows(random, static_cast<std::size_t>(Below(random, 60)));
        block.Start(rows.texts.size());
        rows.Show(block);
        const Column column = read.expression->Evaluate(block);
        for (std::size_t row = 0; row < rows.texts.size(); ++row) {
            rows.Load(row, *read.frame);
            ASSERT_TRUE(AreTheSame(column.At(row), read.expression->Evaluate(*read.frame)))
                << GetParam() << " of \"" << rows.texts[row] << '"';
        }
    }
}

} // namespace
