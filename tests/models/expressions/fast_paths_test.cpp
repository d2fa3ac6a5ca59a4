// What is computed at once gives the same bits as the plain road: expressions over fields of known types beside the
// call of each function with values of any type, and values of a field's own kind beside those that are read from
// texts.
#include "kit/inputs/input_field.h"
#include "models/expressions/random_expressions.h"
#include "support/numbers.h"

#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/StringValue.h>

#include <gtest/gtest.h>

#include <array>
#include <charconv>
#include <string>
#include <utility>

namespace {

using namespace veltrane_kit;
using MCVeltrane_900::NumericValue;
using MCVeltrane_900::ScoreDictVar;
using MCVeltrane_900::StringValue;
using veltrane::tests::Below;
using veltrane::tests::Bits;
using veltrane::tests::kFieldNames;
using veltrane::tests::kFieldTypes;
using veltrane::tests::Random;
using veltrane::tests::RandomNumber;
using veltrane::tests::RandomTruth;
using veltrane::tests::RandomValue;
using veltrane::tests::ReadExpression;

TEST(FastExpressions, GiveTheBitsOfPlainCalls) {
    Random random(20261);
    int fast = 0;
    for (int round = 0; round < 1500; ++round) {
        const std::string text = round % 3 == 0 ? RandomTruth(random, 4) : RandomNumber(random, 4);
        const ReadExpression typed(text, true);
        const ReadExpression plain(text, false);
        fast += typed.expression->KeepsNumbers() ? 1 : 0;
        for (int row = 0; row < 20; ++row) {
            for (std::size_t i = 0; i < kFieldNames.size(); ++i) {
                const Value value = RandomValue(random, kFieldTypes[i]);
                static_cast<Value&>(typed.frame->Field(static_cast<int>(i))) = value;
                static_cast<Value&>(plain.frame->Field(static_cast<int>(i))) = value;
            }
            const Value one = typed.expression->Evaluate(*typed.frame);
            const Value other = plain.expression->Evaluate(*plain.frame);
            ASSERT_EQ(one.isMissing, other.isMissing) << text;
            ASSERT_TRUE(one.isMissing || Bits(one.number) == Bits(other.number))
                << text << ": " << one.number << " and " << other.number;
            if (typed.expression->KeepsNumbers()) {
                const double number = typed.expression->Number(*typed.frame);
                ASSERT_EQ(std::isnan(number), one.isMissing) << text;
                ASSERT_TRUE(one.isMissing || Bits(number) == Bits(one.number)) << text;
            }
        }
    }
    EXPECT_GT(fast, 1000) << "most of them are computed at once";
}

TEST(FastExpressions, ReadTextsAsNumbersForComparisonsAlone) {
    const std::string arguments = "<FieldRef field='x'/><Constant dataType='string'>07</Constant>";
    const ReadExpression joined("<Apply function='concat'>" + arguments + "</Apply>", true);
    const ReadExpression compared("<Apply function='equal'>" + arguments + "</Apply>", true);
    for (const ReadExpression* read : {&joined, &compared}) {
        static_cast<Value&>(read->frame->Field(0)) = MakeNumber(7.0, DataType::DOUBLE);
    }
    EXPECT_EQ(joined.expression->Evaluate(*joined.frame).text, "707");
    EXPECT_EQ(compared.expression->Number(*compared.frame), 1.0);
}

DataField RandomField(Random& random, DataType type) {
    DataField field;
    field.name = "x";
    field.type = type;
    field.level = Below(random, 2) == 0 ? ScoreDictVar::LEVEL_CONTINUOUS : ScoreDictVar::LEVEL_NOMINAL;
    for (auto* list : {&field.valid, &field.invalid, &field.missing}) {
        for (int i = Below(random, 2) * Below(random, 12); i > 0; --i) {
            list->emplace_back().Keep(MakeNumber(Below(random, 9) - 4, type));
        }
    }
    for (int i = Below(random, 3); i > 0; --i) {
        const double left = Below(random, 5) - 4.0;
        field.intervals.push_back({left, left + Below(random, 5), Below(random, 2) == 0, Below(random, 2) == 0});
    }
    return field;
}

MiningField RandomTreatment(Random& random) {
    MiningField schema;
    schema.name = "x";
    schema.outliers = static_cast<OutlierTreatment>(Below(random, 3));
    schema.low = -2.0;
    schema.high = 2.5;
    schema.invalid = static_cast<InvalidTreatment>(Below(random, 4));
    schema.invalidReplacement = schema.invalid == InvalidTreatment::REPLACE ? std::optional("3") : std::nullopt;
    schema.missingReplacement = Below(random, 2) == 0 ? std::optional("-1") : std::nullopt;
    schema.missingRefused = Below(random, 4) == 0;
    return schema;
}

std::string TextOf(double number) {
    std::array<char, 32> digits{};
    return {digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr};
}

TEST(FastInputs, AreTreatedAsThoseThatAreReadFromTexts) {
    Random random(20262);
    for (int round = 0; round < 3000; ++round) {
        const DataType type = Below(random, 2) == 0 ? DataType::DOUBLE : DataType::INTEGER;
        const DataField definition = RandomField(random, type);
        const MiningField schema = RandomTreatment(random);
        const InputField field(definition, &schema);
        for (int row = 0; row < 12; ++row) {
            const double number = (Below(random, 21) - 10) / 2.0;
            const NumericValue value(number);
            const StringValue text(TextOf(number));
            FieldValue one;
            FieldValue other;
            ASSERT_EQ(field.Read(&value, one), field.Read(&text, other)) << number;
            ASSERT_EQ(one.isMissing, other.isMissing) << number;
            ASSERT_EQ(one.isInvalid, other.isInvalid) << number;
            ASSERT_EQ(one.category, other.category) << number;
            ASSERT_TRUE(one.isMissing || Bits(one.number) == Bits(other.number)) << number;
        }
    }
}

} // namespace
