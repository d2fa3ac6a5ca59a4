// Expressions give for a block of cases what they give for each case by itself, bit for bit: whatever the block's size,
// whichever of its rows are chosen, and whether texts come by themselves or from a dictionary.
#include "models/columns/random_columns.h"
#include "models/expressions/random_expressions.h"
#include "support/numbers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <numeric>
#include <string>
#include <vector>

namespace {

using namespace veltrane_kit;
using namespace veltrane::tests;

/// Functions of a document, with parameters of known types and of any.
const std::string kDefined =
    "<DefineFunction name='twice' dataType='double'><ParameterField name='p' dataType='double'/>"
    "<Apply function='+'><FieldRef field='p'/><FieldRef field='p'/></Apply></DefineFunction>"
    "<DefineFunction name='either'><ParameterField name='p'/><ParameterField name='q'/>"
    "<Apply function='if'><Apply function='isMissing'><FieldRef field='p'/></Apply>"
    "<FieldRef field='q'/><FieldRef field='p'/></Apply></DefineFunction>"
    "<DefineFunction name='scaled' dataType='double'><ParameterField name='p'/>"
    "<NormContinuous field='p' outliers='asExtremeValues'><LinearNorm orig='0' norm='0'/>"
    "<LinearNorm orig='1' norm='1'/><LinearNorm orig='2' norm='-1'/></NormContinuous></DefineFunction>"
    "<DefineFunction name='shout' dataType='string'><ParameterField name='t' dataType='string'/>"
    "<Apply function='concat'><Apply function='uppercase'><FieldRef field='t'/></Apply><Constant>!</Constant></Apply>"
    "</DefineFunction>";

std::string RandomText(Random& random, int depth);

const std::string kS = "<FieldRef field='s'/>";

std::string TextOfOther(Random& random, int depth) {
    switch (Below(random, 7)) {
    case 0:
        return "<MapValues outputColumn='o' defaultValue='none' mapMissingTo='gone' dataType='string'>"
               "<FieldColumnPair field='s' column='i'/><InlineTable><row><i>red</i><o>R</o></row>"
               "<row><i>2</i><o>two</o></row></InlineTable></MapValues>";
    case 1:
        return "<Discretize field='x' dataType='string' defaultValue='else'>"
               "<DiscretizeBin binValue='low'><Interval closure='closedOpen' rightMargin='1'/></DiscretizeBin>"
               "<DiscretizeBin binValue='mid'><Interval closure='closedClosed' leftMargin='0' rightMargin='2.5'/>"
               "</DiscretizeBin></Discretize>";
    case 2:
        return Apply("formatNumber", RandomNumber(random, depth - 1) + "<Constant>%8.3f</Constant>");
    case 3:
        return "<Apply function='shout' mapMissingTo='silence'>" + RandomText(random, depth - 1) + "</Apply>";
    case 4:
        return "<Apply function='concat' mapMissingTo='nothing'>" + RandomText(random, depth - 1) +
               RandomNumber(random, depth - 1) + "</Apply>";
    case 5:
        return "<Aggregate field='s' function='min'/>";
    default:
        return "<Apply function='substring' defaultValue='dflt'>" + RandomText(random, depth - 1) +
               RandomNumber(random, depth - 1) + "<Constant>2</Constant></Apply>";
    }
}

std::string RandomText(Random& random, int depth) {
    if (depth <= 0) {
        return Below(random, 3) == 0   ? "<Constant dataType='string'>t2</Constant>"
               : Below(random, 3) == 0 ? "<FieldRef field='s' mapMissingTo='was missing'/>"
                                       : kS;
    }
    switch (Below(random, 7)) {
    case 0:
        return Apply("concat", RandomText(random, depth - 1) + RandomText(random, depth - 1));
    case 1:
        return Apply("uppercase", RandomText(random, depth - 1));
    case 2:
        return Apply("trimBlanks", RandomText(random, depth - 1));
    case 3:
        return Apply("if", RandomTruth(random, depth - 1) + RandomText(random, depth - 1) +
                               (Below(random, 3) == 0 ? "" : RandomText(random, depth - 1)));
    case 4:
        return Apply("either", RandomText(random, depth - 1) + RandomText(random, depth - 1));
    default:
        return TextOfOther(random, depth);
    }
}

std::string NumberOfText(Random& random, int depth) {
    switch (Below(random, 10)) {
    case 0:
        return Apply("stringLength", RandomText(random, depth - 1));
    case 1:
        return "<NormDiscrete field='s' value='red' mapMissingTo='0.25'/>";
    case 2:
        return "<NormDiscrete field='n' value='2'/>";
    case 3:
        return "<NormContinuous field='x' mapMissingTo='7'><LinearNorm orig='0' norm='0'/>"
               "<LinearNorm orig='3' norm='1'/></NormContinuous>";
    case 4:
        return "<Apply function='scaled'>" + kS + "</Apply>";
    case 5:
        return Apply("isIn", kS + "<Constant>red</Constant><Constant>2</Constant>");
    case 6:
        return Apply("isNotIn", RandomNumber(random, depth - 1) + "<Constant>1</Constant><Constant>-0.0</Constant>");
    case 7:
        return "<Apply function='twice' mapMissingTo='-1'>" + RandomNumber(random, depth - 1) + "</Apply>";
    case 8:
        return Apply("isValid", RandomText(random, depth - 1));
    default:
        return Apply("lessThan", RandomText(random, depth - 1) + RandomText(random, depth - 1));
    }
}

std::string RandomExpression(Random& random, int depth) {
    switch (Below(random, 4)) {
    case 0:
        return RandomText(random, depth);
    case 1:
        return NumberOfText(random, depth);
    case 2:
        return RandomTruth(random, depth);
    default:
        return RandomNumber(random, depth);
    }
}

/// The rows of a block, all or every other one.
std::vector<std::uint32_t> RandomChoice(Random& random, std::size_t rows) {
    std::vector<std::uint32_t> chosen;
    for (std::uint32_t row = 0; row < rows; ++row) {
        if (Below(random, 2) == 0) {
            chosen.push_back(row);
        }
    }
    return chosen;
}

void ExpectSameRows(const ReadExpression& read, const RandomColumns& columns, Block& block,
                    const std::vector<std::uint32_t>& rows, const std::string& text) {
    const Block::Scratch scratch(block);
    const Column column = read.expression->Evaluate(block);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        columns.Load(rows[i], *read.frame);
        ASSERT_TRUE(AreTheSame(column.At(i), read.expression->Evaluate(*read.frame)))
            << "row " << rows[i] << " of " << text;
    }
    if (read.expression->KeepsNumbers()) {
        const Block::Scratch inner(block);
        const std::size_t before = block.Numbers().Taken();
        const NumberColumn numbers = read.expression->Numbers(block);
        ASSERT_EQ(block.Numbers().Taken(), before + (numbers.own != nullptr ? 1 : 0)) << text;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            columns.Load(rows[i], *read.frame);
            ASSERT_TRUE(AreSameNumbers(numbers.At(i), read.expression->Number(*read.frame)))
                << "row " << rows[i] << " of " << text;
        }
    }
}

class ExpressionColumns : public testing::TestWithParam<bool> {};

INSTANTIATE_TEST_SUITE_P(OfKnownAndUnknownTypes, ExpressionColumns, testing::Bool(),
                         [](const auto& info) { return info.param ? "Typed" : "Untyped"; });

TEST_P(ExpressionColumns, HoldTheBitsOfEachCase) {
    Random random(20263);
    for (int round = 0; round < 1500; ++round) {
        const std::string text = RandomExpression(random, 4);
        const ReadExpression read(text, GetParam(), kDefined, round % 2 == 1);
        Block block(read.layout);
        for (int again = 0; again < 2; ++again) {
            const std::size_t rows = static_cast<std::size_t>(Below(random, 40));
            const RandomColumns columns(random, rows);
            block.Start(rows);
            columns.Show(block, GetParam(), again == 1);
            std::vector<std::uint32_t> all(rows);
            std::iota(all.begin(), all.end(), 0U);
            ExpectSameRows(read, columns, block, all, text);
            const std::vector<std::uint32_t> some = RandomChoice(random, rows);
            const Block::Choice choice(block, some.data(), some.size());
            ExpectSameRows(read, columns, block, some, text);
            ASSERT_FALSE(HasFatalFailure());
        }
    }
}

TEST_P(ExpressionColumns, HoldTheBitsOfPlacesInAnOrder) {
    Random random(20268);
    for (const char* function : {"lessThan", "lessOrEqual", "greaterThan", "greaterOrEqual"}) {
        for (const std::string& other :
             {kS, std::string("<Constant>2</Constant>"), std::string("<Constant>no</Constant>"),
              std::string("<FieldRef field='n'/>"), Apply("trimBlanks", kS)}) {
            for (const std::string& text : {Apply(function, kS + other), Apply(function, other + kS)}) {
                const ReadExpression read(text, GetParam(), {}, true);
                Block block(read.layout);
                for (const bool hasDictionary : {false, true}) {
                    const RandomColumns columns(random, 40);
                    block.Start(40);
                    columns.Show(block, GetParam(), hasDictionary);
                    std::vector<std::uint32_t> all(40);
                    std::iota(all.begin(), all.end(), 0U);
                    ExpectSameRows(read, columns, block, all, text);
                    ASSERT_FALSE(HasFatalFailure());
                }
            }
        }
    }
}

TEST(ExpressionColumnTexts, AreMissingWhenThereIsNoRoomLeft) {
    for (const std::string function : {"concat", "replace"}) {
        const std::string more = function == "concat" ? kS : "<Constant>a</Constant><Constant>b</Constant>";
        const ReadExpression read(Apply(function, kS + more), true);
        Block block(read.layout, 64, std::size_t{1} << 18U);
        block.Start(64);
        std::vector<std::string> texts;
        texts.reserve(64);
        for (int row = 0; row < 64; ++row) {
            texts.emplace_back(10000, static_cast<char>('A' + row % 26));
        }
        const std::vector<std::string_view> views(texts.begin(), texts.end());
        FieldColumn& field = block.Field(4);
        field.type = DataType::STRING;
        field.texts = views.data();
        const Column column = read.expression->Evaluate(block);
        EXPECT_EQ(column.TextAt(0).substr(0, 10000), texts[0]);
        EXPECT_TRUE(column.IsMissing(63)) << function;
    }
}

TEST(ExpressionColumnSizes, AreAllTheSame) {
    Random random(20264);
    const std::string text =
        Apply("+", "<Apply function='if'>" + RandomTruth(random, 3) + RandomNumber(random, 3) +
                       RandomNumber(random, 3) + "</Apply><Apply function='stringLength'><Apply function='concat'>" +
                       kS + "<FieldRef field='x'/></Apply></Apply>");
    const ReadExpression read(text, true);
    Block block(read.layout);
    for (std::size_t rows = 0; rows <= Block::kMostRows; ++rows) {
        const RandomColumns columns(random, rows);
        block.Start(rows);
        columns.Show(block, true, rows % 2 == 0);
        std::vector<std::uint32_t> all(rows);
        std::iota(all.begin(), all.end(), 0U);
        ExpectSameRows(read, columns, block, all, text);
        ASSERT_FALSE(HasFatalFailure()) << rows;
    }
}

} // namespace
