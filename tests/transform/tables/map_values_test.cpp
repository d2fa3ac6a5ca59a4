#include "transform/fields/fields.h"

#include <MCVeltrane_900/InlineTable.h>
#include <MCVeltrane_900/MapValues.h>

#include <type_traits>

using namespace veltrane::tests;

static_assert(!std::is_copy_constructible_v<MapValues>);

namespace {

class ValueMap : public DerivedFields {
protected:
    void SetUp() override {
        field = &Derived("d", kNumeric, "x", TD::TE_MAP_VALUES);
        map = new MapValues(field);
        field->SetMapValues(map);
    }

    /// A table over x, with a row for 1.
    void UseTable() {
        auto* table = new InlineTable;
        table->AppendInputField(dictionary.GetVar("x"));
        table->AddInputOutput({Num(1)}, Num(10));
        map->SetTable(table);
        map->AddInputField(dictionary.GetVar("x"));
        map->AddFieldColumnPair("x", "c");
    }

    std::string Evaluated() { return Written(map->Evaluate(&record, &dictionary, &derived)); }

    TransformVar* field = nullptr;
    MapValues* map = nullptr;
};

} // namespace

TEST_F(ValueMap, Fields) {
    EXPECT_EQ(map->GetTable(), nullptr);
    EXPECT_EQ(map->GetMapMissingValue(), nullptr);
    EXPECT_EQ(map->GetDefaultValue(), nullptr);
    EXPECT_EQ(map->GetOutputColumn(), "");
    map->SetOutputColumn("out");
    EXPECT_EQ(map->GetOutputColumn(), "out");
    map->AddFieldColumnPair("x", "c");
    map->AddFieldColumnPair("y", "c");
    map->AddFieldColumnPair("y", "b");
    EXPECT_EQ(map->GetColumnFields(), (std::map<std::string, std::string>{{"b", "y"}, {"c", "x"}}));
}

TEST_F(ValueMap, ValueSettersDeleteTheEarlierValue) {
    map->SetMapMissingValue(Num(1));
    map->SetMapMissingValue(Num(2));
    map->SetDefaultValue(Num(3));
    map->SetDefaultValue(Num(4));
    EXPECT_EQ(Written(map->GetMapMissingValue()), "number 2");
    EXPECT_EQ(Written(map->GetDefaultValue()), "number 4");
}

TEST_F(ValueMap, AnEarlierTableIsLeftToTheCaller) {
    auto* first = new InlineTable;
    map->SetTable(first);
    map->SetTable(new InlineTable);
    EXPECT_NE(map->GetTable(), first);
    delete first;
}

TEST_F(ValueMap, AMatchingRowGivesItsOutput) {
    Input("x", 1.0);
    UseTable();
    map->SetDefaultValue(Num(-2));
    EXPECT_EQ(Evaluated(), "number 10");
    EXPECT_EQ(Result(*field), "number 10");
}

TEST_F(ValueMap, AMissingInputGivesTheMissingValueAndNotTheDefault) {
    Input("x", kMissing);
    UseTable();
    map->SetMapMissingValue(Num(-1));
    map->SetDefaultValue(Num(-2));
    EXPECT_EQ(Evaluated(), "number -1");
    field->SetRecodeElseCopy(true);
    EXPECT_EQ(Evaluated(), "number -1");
}

TEST_F(ValueMap, AMissingInputWithoutMissingValueLeavesTheResultCleared) {
    Input("x", kMissing);
    UseTable();
    map->SetDefaultValue(Num(-2));
    EXPECT_EQ(Evaluated(), "null");
    EXPECT_EQ(Result(*field), "number SYSMIS");
}

TEST_F(ValueMap, NoMatchingRowGivesTheDefault) {
    Input("x", 5.0);
    UseTable();
    map->SetMapMissingValue(Num(-1));
    EXPECT_EQ(Evaluated(), "null");
    map->SetDefaultValue(Num(-2));
    EXPECT_EQ(Evaluated(), "number -2");
}

TEST_F(ValueMap, NoMatchingRowWithElseCopyGivesTheFieldOfTheFirstColumn) {
    Input("x", 5.0);
    Input("a", 77.0);
    UseTable();
    map->SetDefaultValue(Num(-2));
    field->SetRecodeElseCopy(true);
    EXPECT_EQ(Evaluated(), "number 5");
    map->AddFieldColumnPair("a", "b"); // the smallest column now
    EXPECT_EQ(Evaluated(), "number 77");
    record.Remove("a");
    EXPECT_EQ(Evaluated(), "null");
}

TEST_F(ValueMap, ElseCopyWithoutColumnsGivesNothing) {
    Input("x", 5.0);
    map->SetTable(new InlineTable);
    field->SetRecodeElseCopy(true);
    EXPECT_EQ(Evaluated(), "null");
}

TEST_F(ValueMap, ASingleFieldWithoutTableIsCopied) {
    map->AddInputField(&Input("x", 5.0));
    EXPECT_EQ(Evaluated(), "number 5");
    EXPECT_EQ(Result(*field), "number 5");
}

TEST_F(ValueMap, ASingleFieldWithoutTableThatIsMissingIsReplaced) {
    MakeMissing(Input("x", 9.0), 9.0);
    map->AddInputField(dictionary.GetVar("x"));
    map->SetDefaultValue(Num(-2));
    EXPECT_EQ(Evaluated(), "null");
    map->SetMapMissingValue(Num(-1));
    EXPECT_EQ(Evaluated(), "number -1");
    record.Remove("x");
    EXPECT_EQ(Evaluated(), "number -1");
    EXPECT_EQ(Written(map->Evaluate(nullptr, nullptr, nullptr)), "number -1");
}

TEST_F(ValueMap, ASingleFieldIsReadByItsValueIndexFirst) {
    Input("y", 3.0);
    DictVar& x = Input("x", 5.0);
    map->AddInputField(&x);
    x.SetValueIndex(0);
    EXPECT_EQ(Evaluated(), "number 3");
    x.SetValueIndex(-1);
    EXPECT_EQ(Evaluated(), "number 5");
}

TEST_F(ValueMap, ASingleDerivedFieldIsEvaluated) {
    Input("x", 5.0);
    TransformVar& source = Derived("source", kNumeric, "x", TD::TE_FIELD_REF);
    source.SetValueIndex(0);
    record.SetValue("x", 6.0);
    map->AddInputField(&source);
    EXPECT_EQ(Evaluated(), "number 6");
}

TEST_F(ValueMap, WithoutTableAndFieldsTheMissingValueElseTheDefault) {
    EXPECT_EQ(Evaluated(), "null");
    map->SetDefaultValue(Num(-2));
    EXPECT_EQ(Evaluated(), "number -2");
    map->SetMapMissingValue(Num(-1));
    EXPECT_EQ(Evaluated(), "number -1");
}

TEST_F(ValueMap, SeveralFieldsWithoutTableGiveNothing) {
    map->AddInputField(&Input("x", 5.0));
    map->AddInputField(&Input("y", 6.0));
    map->SetMapMissingValue(Num(-1));
    map->SetDefaultValue(Num(-2));
    EXPECT_EQ(Evaluated(), "null");
}

TEST_F(ValueMap, PairsComeAheadOfTheTable) {
    Input("x", 1.0);
    UseTable();
    field->AddEncodingMap(Num(2), Num(200));
    EXPECT_EQ(Result(*field), "number 10");
    field->AddEncodingMap(Num(1), Num(100));
    field->AddEncodingMap(Num(1), Num(101));
    EXPECT_EQ(Result(*field), "number 100");
}

TEST_F(ValueMap, APairWithoutReplacementEndsTheScanAndTheTableAnswers) {
    Input("x", 1.0);
    UseTable();
    field->AddEncodingMap(Num(1), nullptr);
    field->AddEncodingMap(Num(1), Num(100));
    EXPECT_EQ(Result(*field), "number 10");
}

TEST_F(ValueMap, PairsAreNotAskedForACaseWithoutTheSource) {
    Input("x", kNumeric, nullptr);
    UseTable();
    map->SetMapMissingValue(Num(-1));
    field->AddEncodingMap(Num(1), Num(100));
    EXPECT_EQ(Result(*field), "number -1");
}

TEST_F(ValueMap, AFieldWithoutValueMapStaysCleared) {
    Input("x", 1.0);
    field->SetMapValues(nullptr);
    EXPECT_EQ(Result(*field), "number SYSMIS");
    field->AddEncodingMap(Num(1), Num(100));
    EXPECT_EQ(Result(*field), "number 100");
}

TEST_F(ValueMap, ALaterValueMapReplacesTheEarlierOne) {
    Input("x", 1.0);
    auto* second = new MapValues(field);
    second->SetDefaultValue(Num(8));
    field->SetMapValues(second);
    EXPECT_EQ(Result(*field), "number 8");
}

TEST_F(ValueMap, WithoutOwnerThereIsNoElseCopy) {
    Input("x", 5.0);
    MapValues alone(nullptr);
    auto* table = new InlineTable;
    table->AppendInputField(dictionary.GetVar("x"));
    alone.SetTable(table);
    alone.SetDefaultValue(Num(-2));
    EXPECT_EQ(Written(alone.Evaluate(&record, &dictionary, &derived)), "number -2");
}
