// A block of values of an input field is treated as each of them is by itself.
#include "kit/inputs/input_field.h"
#include "models/columns/random_cells.h"
#include "models/columns/random_columns.h"
#include "models/expressions/random_expressions.h"
#include "support/numbers.h"

#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/StringValue.h>

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace veltrane_kit;
using namespace veltrane::tests;
using MCVeltrane_900::NumericValue;
using MCVeltrane_900::ScoreDictVar;
using MCVeltrane_900::ScoreValue;
using MCVeltrane_900::StringValue;
using veltrane::InputColumn;
using veltrane_kit::kInfinity;

Value RandomListed(Random& random, DataType type) {
    return IsText(type) ? MakeText(kCellTexts[static_cast<std::size_t>(Below(random, 7))])
                        : MakeNumber(type == DataType::BOOLEAN ? Below(random, 2) : Below(random, 9) - 4, type);
}

DataField RandomField(Random& random, DataType type) {
    DataField field;
    field.name = "x";
    field.type = type;
    field.level = Below(random, 2) == 0 ? ScoreDictVar::LEVEL_CONTINUOUS : ScoreDictVar::LEVEL_NOMINAL;
    if (Below(random, 3) != 0) {
        for (auto* list : {&field.valid, &field.invalid, &field.missing}) {
            for (int i = (Below(random, 3) == 0 ? 1 : 0) * Below(random, 12); i > 0; --i) {
                list->emplace_back().Keep(RandomListed(random, type));
            }
        }
    }
    if (Below(random, 4) == 0) {
        field.missingTexts.emplace_back("n/a");
    }
    for (int i = IsText(type) ? 0 : Below(random, 3); i > 0; --i) {
        const double left = Below(random, 5) - 4.0;
        field.intervals.push_back({Below(random, 4) == 0 ? -kInfinity : left, left + Below(random, 5),
                                   Below(random, 2) == 0, Below(random, 2) == 0});
    }
    return field;
}

MiningField RandomTreatment(Random& random, DataType type) {
    MiningField schema;
    schema.name = "x";
    schema.outliers = static_cast<OutlierTreatment>(Below(random, 3));
    schema.low = Below(random, 2) == 0 ? std::optional(-2.0) : std::nullopt;
    schema.high = 2.5;
    schema.invalid = static_cast<InvalidTreatment>(Below(random, 4));
    const std::string replacement = IsText(type) ? "green" : type == DataType::BOOLEAN ? "true" : "3";
    schema.invalidReplacement = schema.invalid == InvalidTreatment::REPLACE ? std::optional(replacement) : std::nullopt;
    schema.missingReplacement = Below(random, 2) == 0 ? std::optional(replacement) : std::nullopt;
    schema.missingRefused = Below(random, 4) == 0;
    return schema;
}

class InputColumns : public testing::TestWithParam<DataType> {};

INSTANTIATE_TEST_SUITE_P(OfType, InputColumns,
                         testing::Values(DataType::DOUBLE, DataType::INTEGER, DataType::FLOAT, DataType::BOOLEAN,
                                         DataType::STRING, DataType::DATE, DataType::DATE_DAYS_SINCE_1970),
                         [](const auto& info) { return "Type" + std::to_string(static_cast<int>(info.param)); });

TEST_P(InputColumns, AreTreatedAsSingleValues) {
    Random random(20265);
    const DataType type = GetParam();
    FrameLayout layout;
    layout.fields = 1;
    for (int round = 0; round < 1500; ++round) {
        const DataField definition = RandomField(random, type);
        const MiningField schema = RandomTreatment(random, type);
        InputField field(definition, Below(random, 4) == 0 ? nullptr : &schema);
        const bool hasCodes = Below(random, 4) == 0;
        if (hasCodes) {
            field.CodeOf(RandomListed(random, type));
        }
        Block block(layout);
        for (int again = 0; again < 3; ++again) {
            const auto rows = static_cast<std::size_t>(Below(random, 30));
            RandomCells cells(random, type, rows);
            block.Start(rows);
            std::vector<std::uint8_t> refused(rows);
            field.ReadBlock(cells.Column(again > 0), block, 0, refused.data());
            for (std::size_t row = 0; row < rows; ++row) {
                FieldValue expected;
                const auto raw = cells.Raw(row);
                ASSERT_EQ(field.Read(raw.get(), expected), refused[row] == 0) << "row " << row;
                const FieldValue value = block.ValueAt(0, row);
                ASSERT_TRUE(AreTheSame(value, expected)) << "row " << row << ": " << value.number;
                ASSERT_EQ(value.category, expected.category) << "row " << row;
            }
        }
    }
}

/// Values of classes that the library doesn't know are treated step by step.
struct HostNumber : NumericValue {
    using NumericValue::NumericValue;
};
struct HostText : StringValue {
    using StringValue::StringValue;
};

std::unique_ptr<ScoreValue> OfHost(const ScoreValue* value) {
    if (const auto* number = dynamic_cast<const NumericValue*>(value)) {
        return std::make_unique<HostNumber>(number->GetDouble());
    }
    const auto* text = dynamic_cast<const StringValue*>(value);
    return text == nullptr ? nullptr : std::make_unique<HostText>(text->GetText());
}

TEST_P(InputColumns, AreTreatedAlikeWhateverTheClassOfTheValue) {
    Random random(20268);
    const DataType type = GetParam();
    for (int round = 0; round < 3000; ++round) {
        const DataField definition = RandomField(random, type);
        const MiningField schema = RandomTreatment(random, type);
        InputField field(definition, Below(random, 4) == 0 ? nullptr : &schema);
        if (Below(random, 4) == 0) {
            field.CodeOf(RandomListed(random, type));
        }
        const RandomCells cells(random, type, 20);
        for (std::size_t row = 0; row < 20; ++row) {
            const auto raw = cells.Raw(row);
            const auto host = OfHost(raw.get());
            FieldValue value;
            FieldValue expected;
            ASSERT_EQ(field.Read(raw.get(), value), field.Read(host.get(), expected)) << "row " << row;
            ASSERT_TRUE(AreTheSame(value, expected)) << "row " << row << ": " << value.number;
            ASSERT_EQ(value.category, expected.category) << "row " << row;
            ASSERT_EQ(value.isInvalid, expected.isInvalid) << "row " << row;
        }
    }
}

TEST_P(InputColumns, AreMissingWhereThereIsNone) {
    Random random(20266);
    FrameLayout layout;
    layout.fields = 1;
    Block block(layout);
    for (int round = 0; round < 100; ++round) {
        const DataField definition = RandomField(random, GetParam());
        const MiningField schema = RandomTreatment(random, GetParam());
        const InputField field(definition, &schema);
        block.Start(3);
        std::vector<std::uint8_t> refused(3);
        field.ReadBlock({}, block, 0, refused.data());
        FieldValue expected;
        EXPECT_EQ(field.Read(nullptr, expected), refused[2] == 0);
        EXPECT_TRUE(AreTheSame(block.ValueAt(0, 2), expected));
        field.ReadBlock({}, block, 0, nullptr);
        EXPECT_TRUE(AreTheSame(block.ValueAt(0, 0), expected)) << "nobody asks what is refused";
    }
}

TEST(InputColumnsWithoutTreatment, AreUsedAsTheyAre) {
    DataField definition;
    definition.type = DataType::DOUBLE;
    definition.intervals.push_back({0.0, 10.0, true, false});
    const InputField field(definition, nullptr);
    FrameLayout layout;
    layout.fields = 1;
    Block block(layout);
    block.Start(3);
    const std::array inside{0.0, kNaN, 9.5};
    InputColumn column;
    column.numbers = inside.data();
    field.ReadBlock(column, block, 0, nullptr);
    EXPECT_EQ(block.Field(0).numbers, inside.data());
    const std::array outside{0.0, kNaN, 10.0};
    column.numbers = outside.data();
    field.ReadBlock(column, block, 0, nullptr);
    EXPECT_NE(block.Field(0).numbers, outside.data());
    EXPECT_TRUE(block.ValueAt(0, 2).isInvalid);
}

TEST(InputDictionaries, AreTreatedAnewUnderAnotherMark) {
    DataField definition;
    definition.type = DataType::STRING;
    const InputField field(definition, nullptr);
    FrameLayout layout;
    layout.fields = 1;
    Block block(layout);
    const std::array<std::int32_t, 2> codes{1, 0};
    std::array<std::string_view, 2> dictionary{"a", "b"};
    InputColumn column;
    column.codes = codes.data();
    column.dictionary = dictionary.data();
    column.dictionarySize = dictionary.size();
    for (std::uint64_t mark = 1; mark < 4; ++mark) {
        column.dictionaryMark = mark;
        dictionary[1] = mark == 2 ? "c" : "b";
        block.Start(2);
        field.ReadBlock(column, block, 0, nullptr);
        EXPECT_EQ(block.ValueAt(0, 0).text, dictionary[1]) << mark;
        EXPECT_EQ(block.ValueAt(0, 1).text, "a") << mark;
    }
}

TEST(InputDictionaries, AreLeftWhenTheyAreHuge) {
    DataField definition;
    definition.type = DataType::STRING;
    const InputField field(definition, nullptr);
    FrameLayout layout;
    layout.fields = 1;
    Block block(layout);
    std::vector<std::string> texts;
    for (int i = 0; i < 70000; ++i) {
        texts.push_back(std::to_string(i));
    }
    const std::vector<std::string_view> dictionary(texts.begin(), texts.end());
    const std::array<std::int32_t, 3> codes{69999, -1, 0};
    InputColumn column;
    column.codes = codes.data();
    column.dictionary = dictionary.data();
    column.dictionarySize = dictionary.size();
    column.dictionaryMark = 1;
    block.Start(3);
    field.ReadBlock(column, block, 0, nullptr);
    EXPECT_EQ(block.Field(0).entries, nullptr);
    EXPECT_EQ(block.ValueAt(0, 0).text, "69999");
    EXPECT_TRUE(block.ValueAt(0, 1).isMissing);
    EXPECT_EQ(block.ValueAt(0, 2).text, "0");
}

} // namespace
