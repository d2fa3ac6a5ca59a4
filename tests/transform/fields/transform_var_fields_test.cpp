#include "fields.h"

#include <MCVeltrane_900/MapValues.h>

#include <type_traits>

using namespace veltrane::tests;

static_assert(std::is_base_of_v<DictVar, TransformVar>);

TEST(TransformVarFields, Defaults) {
    const TransformVar field("d", kText);
    EXPECT_EQ(field.GetName(), "d");
    EXPECT_EQ(field.GetVarType(), kText);
    EXPECT_EQ(field.GetFieldName(), "");
    EXPECT_EQ(field.GetTransExpression(), TD::TE_NONE);
    EXPECT_EQ(field.GetConstString(), "");
    EXPECT_TRUE(field.GetAllEncodedValues().empty());
    EXPECT_EQ(field.GetRecodeMissValueRep(), nullptr);
    EXPECT_EQ(field.GetRecodeDefaultValue(), nullptr);
    EXPECT_EQ(field.GetRecodeSysmisValueRep(), nullptr);
    EXPECT_FALSE(field.IsRecodeMissingCopy());
    EXPECT_FALSE(field.IsRecodeElseCopy());
    EXPECT_EQ(field.GetValueIndex(), -1);
}

TEST(TransformVarFields, IsADerivedVariable) {
    const TransformVar field("d", kNumeric);
    EXPECT_TRUE(field.IsDerivedVariable());
    EXPECT_FALSE(DictVar("x", kNumeric).IsDerivedVariable());
}

TEST(TransformVarFields, SourceAndExpression) {
    TransformVar field("d", kNumeric);
    field.AddFieldNameAndTransExpression("age", TD::TE_DISCRETIZE);
    field.SetConstString("12");
    EXPECT_EQ(field.GetFieldName(), "age");
    EXPECT_EQ(field.GetTransExpression(), TD::TE_DISCRETIZE);
    EXPECT_EQ(field.GetConstString(), "12");
}

TEST(TransformVarFields, EncodingPairsKeepTheirOrder) {
    TransformVar field("d", kNumeric);
    ScoreValue* key = Txt("a");
    ScoreValue* encoded = Num(1);
    field.AddEncodingMap(key, encoded);
    field.AddEncodingMap(Txt("b"), nullptr);
    ASSERT_EQ(field.GetAllEncodedValues().size(), 2U);
    EXPECT_EQ(field.GetAllEncodedValues()[0], std::make_pair(key, encoded));
    EXPECT_EQ(field.GetAllEncodedValues()[1].second, nullptr);
}

TEST(TransformVarRecode, AReplacementForMissingValuesSwitchesCopyingOff) {
    TransformVar field("d", kNumeric);
    field.SetRecodeMissingCopy(true);
    field.SetRecodeElseCopy(true);
    ScoreValue* value = Num(7);
    field.SetRecodeMissValueTo(value);
    EXPECT_EQ(field.GetRecodeMissValueRep(), value);
    EXPECT_FALSE(field.IsRecodeMissingCopy());
    EXPECT_TRUE(field.IsRecodeElseCopy());
}

TEST(TransformVarRecode, ADefaultSwitchesElseCopyOff) {
    TransformVar field("d", kNumeric);
    field.SetRecodeMissingCopy(true);
    field.SetRecodeElseCopy(true);
    ScoreValue* value = Num(7);
    field.SetRecodeDefaultValue(value);
    EXPECT_EQ(field.GetRecodeDefaultValue(), value);
    EXPECT_FALSE(field.IsRecodeElseCopy());
    EXPECT_TRUE(field.IsRecodeMissingCopy());
}

TEST(TransformVarRecode, ASettersEarlierValueIsLeftToTheCaller) {
    TransformVar field("d", kNumeric);
    const auto check = [&](void (TransformVar::*set)(ScoreValue*)) {
        const std::unique_ptr<ScoreValue> first(Num(1));
        (field.*set)(first.get());
        (field.*set)(Num(2));
        EXPECT_EQ(first->GetDouble(), 1.0);
    };
    check(&TransformVar::SetRecodeMissValueTo);
    check(&TransformVar::SetRecodeDefaultValue);
    check(&TransformVar::SetRecodeSysmisValue);
    EXPECT_EQ(field.GetRecodeSysmisValueRep()->GetDouble(), 2.0);
}

TEST(TransformVarRecode, CopyFlagsDeleteTheReplacementWhateverTheySet) {
    for (const bool copy : {false, true}) {
        TransformVar field("d", kNumeric);
        field.SetRecodeMissValueTo(Num(1));
        field.SetRecodeDefaultValue(Num(2));
        field.SetRecodeMissingCopy(copy);
        EXPECT_EQ(field.GetRecodeMissValueRep(), nullptr);
        EXPECT_EQ(field.IsRecodeMissingCopy(), copy);
        EXPECT_EQ(field.GetRecodeDefaultValue()->GetDouble(), 2.0);
        field.SetRecodeElseCopy(copy);
        EXPECT_EQ(field.GetRecodeDefaultValue(), nullptr);
        EXPECT_EQ(field.IsRecodeElseCopy(), copy);
    }
}

TEST(TransformVarRecode, TheSysmisValueAndTheIntervalAreOnlyStored) {
    TransformVar field("d", kNumeric);
    field.SetRecodeMissingCopy(true);
    field.SetRecodeElseCopy(true);
    field.SetRecodeSysmisValue(Num(3));
    field.SetRecodeIntervalCopy(new Range(0.0, 1.0, true, true));
    EXPECT_EQ(field.GetRecodeSysmisValueRep()->GetDouble(), 3.0);
    EXPECT_TRUE(field.IsRecodeMissingCopy());
    EXPECT_TRUE(field.IsRecodeElseCopy());
}
