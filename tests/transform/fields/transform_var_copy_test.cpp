#include "fields.h"
#include "transform/trees/trees.h"

#include <MCVeltrane_900/MapValues.h>

using namespace veltrane::tests;

namespace {

/// Both ways to a copy: the copy constructor, which Clone() uses, and assignment to a field that was new.
class TransformVarCopy : public DerivedFields, public ::testing::WithParamInterface<bool> {
protected:
    std::unique_ptr<TransformVar> CopyOf(const TransformVar& field) {
        if (GetParam()) {
            return std::unique_ptr<TransformVar>(static_cast<TransformVar*>(field.Clone()));
        }
        auto copy = std::make_unique<TransformVar>("old", kText);
        *copy = field;
        return copy;
    }
};

} // namespace

INSTANTIATE_TEST_SUITE_P(, TransformVarCopy, ::testing::Bool(),
                         [](const auto& info) { return info.param ? "Constructed" : "Assigned"; });

TEST_P(TransformVarCopy, HasTheVariableTheKindTheSourceAndTheConstant) {
    TransformVar field("d", kNumeric);
    field.SetLabel("label");
    field.SetValueIndex(6);
    field.AddFieldNameAndTransExpression("x", TD::TE_NORM_DISCRETE);
    field.SetConstString("const");
    const auto copy = CopyOf(field);
    EXPECT_EQ(copy->GetName(), "d");
    EXPECT_EQ(copy->GetLabel(), "label");
    EXPECT_EQ(copy->GetValueIndex(), 6);
    EXPECT_EQ(copy->GetVarType(), kNumeric);
    EXPECT_EQ(copy->GetFieldName(), "x");
    EXPECT_EQ(copy->GetTransExpression(), TD::TE_NORM_DISCRETE);
    EXPECT_EQ(copy->GetConstString(), "const");
}

TEST_P(TransformVarCopy, HasTheNormalisationWithoutTheOutlierTreatment) {
    TransformVar field("d", kNumeric);
    field.AddLinearNorm(0, 0);
    field.AddLinearNorm(10, 5);
    field.AddNormInfo(0.5, 0);
    field.SetOutlierTreatMent("asExtremeValues");
    const auto copy = CopyOf(field);
    EXPECT_EQ(copy->GetNormValue(4), 2);
    EXPECT_EQ(field.GetNormValue(20), 5);
    EXPECT_EQ(copy->GetNormValue(20), 10);
    copy->SetOutlierTreatMent("asExtremeValues");
    EXPECT_EQ(copy->GetNormValue(20), 5);
    copy->AddLinearNorm(30, 7);
    EXPECT_EQ(field.GetNormValue(20), 5);
}

TEST_P(TransformVarCopy, HasACloneOfTheTree) {
    TransformVar field("d", kNumeric);
    auto root = Root("0");
    AddNode(root.get(), "1");
    FunctionTreeImp* tree = root.release();
    field.SetRoot(tree);
    const auto copy = CopyOf(field);
    tree->SetNodeStats(StatsWithId("changed"));
    EXPECT_NE(Shown(*copy).find("Node ID = 0\n"), std::string::npos);
    EXPECT_NE(Shown(*copy).find("Node ID = 1\n"), std::string::npos);
}

TEST_P(TransformVarCopy, HasClonesOfTheBinsWithTheirIntervals) {
    const DictVar source("x", kNumeric);
    TransformVar field("d", kNumeric);
    field.AddBinningValue(new Range(0.0, 1.0, true, true), Num(8), "x");
    field.AddBinningValue(new Range(1.0, 2.0, true, true), nullptr, "x");
    const auto copy = CopyOf(field);
    const NumericValue low(0.5);
    const NumericValue high(1.5);
    EXPECT_EQ(Written(copy->GetBinningValue(&source, &low)), "number 8");
    EXPECT_NE(copy->GetBinningValue(&source, &low), field.GetBinningValue(&source, &low));
    EXPECT_EQ(copy->GetBinningValue(&source, &high), &high);
    EXPECT_EQ(copy->GetOrigIntervalForBinningValue("8", true), "0<=x<=1");
    EXPECT_EQ(copy->GetOrigIntervalForBinningValue("8", false), "[0,1]");
}

TEST_P(TransformVarCopy, HasClonesOfTheEncodedPairs) {
    TransformVar field("d", kNumeric);
    field.AddEncodingMap(Txt("a"), Num(1));
    field.AddEncodingMap(Txt("b"), nullptr);
    const auto copy = CopyOf(field);
    ASSERT_EQ(copy->GetAllEncodedValues().size(), 2U);
    EXPECT_EQ(Written(copy->GetAllEncodedValues()[0].first), "text 'a'");
    EXPECT_EQ(Written(copy->GetAllEncodedValues()[0].second), "number 1");
    EXPECT_EQ(copy->GetAllEncodedValues()[1].second, nullptr);
    EXPECT_NE(copy->GetAllEncodedValues()[0].first, field.GetAllEncodedValues()[0].first);
}

TEST_P(TransformVarCopy, HasClonesOfTheRecodeValues) {
    TransformVar field("d", kNumeric);
    field.SetRecodeMissValueTo(Num(1));
    field.SetRecodeDefaultValue(Num(2));
    field.SetRecodeSysmisValue(Num(3));
    field.SetRecodeIntervalCopy(new Range(0.0, 1.0, true, true));
    const auto copy = CopyOf(field);
    EXPECT_EQ(Written(copy->GetRecodeMissValueRep()), "number 1");
    EXPECT_EQ(Written(copy->GetRecodeDefaultValue()), "number 2");
    EXPECT_EQ(Written(copy->GetRecodeSysmisValueRep()), "number 3");
    EXPECT_NE(copy->GetRecodeMissValueRep(), field.GetRecodeMissValueRep());
}

TEST_P(TransformVarCopy, HasTheResultOfAConstant) {
    TransformVar field("d", kNumeric);
    field.AddFieldNameAndTransExpression("", TD::TE_CONSTANT);
    field.SetConstString("5");
    EXPECT_EQ(Result(field), "number 5");
    field.SetConstString("6");
    const auto copy = CopyOf(field);
    EXPECT_EQ(Result(*copy), "number 5");
    EXPECT_NE(Value(*copy), Value(field));
}

TEST_P(TransformVarCopy, HasNoValueMap) {
    TransformVar field("d", kNumeric);
    field.AddFieldNameAndTransExpression("", TD::TE_MAP_VALUES);
    auto* map = new MapValues(&field);
    map->SetMapMissingValue(Num(4));
    field.SetMapValues(map);
    EXPECT_EQ(Result(field), "number 4");
    const auto copy = CopyOf(field);
    EXPECT_EQ(Result(*copy), "number SYSMIS");
}

TEST_P(TransformVarCopy, LooksItsSourceUpAfresh) {
    Input("x", 1.0);
    TransformVar field("d", kNumeric);
    field.AddFieldNameAndTransExpression("x", TD::TE_FIELD_REF);
    field.SetRecodeMissValueTo(Num(-1));
    EXPECT_EQ(Result(field), "number 1");
    const auto copy = CopyOf(field);
    CaseRecord other;
    other.Add("y", Num(7));
    other.Add("x", Num(8));
    BaseDictionary otherDictionary;
    auto* var = new DictVar("x", kNumeric);
    MakeMissing(*var, 8.0);
    otherDictionary.AddVar("x", var);
    EXPECT_EQ(Written(field.GetTransformedValue(&other, &otherDictionary, nullptr)), "number 7");
    EXPECT_EQ(Written(copy->GetTransformedValue(&other, &otherDictionary, nullptr)), "number -1");
}

TEST_P(TransformVarCopy, StartsWithALagOfOneAndNoHistory) {
    Input("x", 1.0);
    const DictVar& block = Input("who", "a");
    TransformVar field("d", kNumeric);
    field.AddFieldNameAndTransExpression("x", TD::TE_LAG);
    field.SetLags(2, {&block});
    Value(field);
    Value(field);
    EXPECT_EQ(Result(field), "number 1");
    const auto copy = CopyOf(field);
    EXPECT_EQ(Result(*copy), "number SYSMIS");
    EXPECT_EQ(Result(*copy), "number 1");
    record.SetValue("who", "b"); // no block field is left to notice
    EXPECT_EQ(Result(*copy), "number 1");
}

TEST(TransformVarCopyConstructor, TakesTheRecodeFlags) {
    TransformVar field("d", kNumeric);
    field.SetRecodeMissingCopy(true);
    field.SetRecodeElseCopy(true);
    const TransformVar copy(field);
    EXPECT_TRUE(copy.IsRecodeMissingCopy());
    EXPECT_TRUE(copy.IsRecodeElseCopy());
}

TEST(TransformVarCopyConstructor, TakesAResultOfItsKind) {
    TransformVar field("d", kDateTime);
    field.AddFieldNameAndTransExpression("", TD::TE_CONSTANT);
    field.SetDateTimeType(ScoreDictVar::DT_TIME);
    field.SetConstString("60.000000");
    field.GetTransformedValue(nullptr, nullptr, nullptr);
    TransformVar copy(field);
    EXPECT_EQ(Written(copy.GetTransformedValue(nullptr, nullptr, nullptr)), "kind 1 60.000000");
}

namespace {
using TransformVarAssignment = DerivedFields;
} // namespace

TEST_F(TransformVarAssignment, ToItselfChangesNothing) {
    TransformVar field("d", kNumeric);
    field.AddEncodingMap(Txt("a"), Num(1));
    field.SetRecodeMissValueTo(Num(2));
    const ScoreValue* key = field.GetAllEncodedValues()[0].first;
    const TransformVar& same = field;
    field = same;
    EXPECT_EQ(field.GetAllEncodedValues()[0].first, key);
    EXPECT_EQ(Written(field.GetRecodeMissValueRep()), "number 2");
}

TEST_F(TransformVarAssignment, TheTargetLosesWhatItHeld) {
    TransformVar target("d", kNumeric);
    target.SetRoot(NewNode("0"));
    target.AddBinningValue(new Range(0.0, 1.0, true, true), Num(8), "x");
    target.AddEncodingMap(Txt("a"), Num(1));
    target.SetRecodeMissValueTo(Num(1));
    target.SetRecodeDefaultValue(Num(2));
    target.SetRecodeSysmisValue(Num(3));
    target.SetRecodeIntervalCopy(new Range(0.0, 1.0, true, true));
    target.AddLinearNorm(0, 0);
    target.AddNormInfo(2, 0);
    target = TransformVar("e", kNumeric);
    EXPECT_EQ(Shown(target), Shown(TransformVar("e", kNumeric)));
    EXPECT_EQ(target.GetOrigIntervalForBinningValue("8", true), "8");
    EXPECT_EQ(target.GetRecodeMissValueRep(), nullptr);
    EXPECT_EQ(target.GetRecodeDefaultValue(), nullptr);
    EXPECT_EQ(target.GetRecodeSysmisValueRep(), nullptr);
    EXPECT_EQ(target.GetNormValue(3), 3);
}

TEST_F(TransformVarAssignment, TheTargetKeepsBothRecodeFlags) {
    TransformVar source("s", kNumeric);
    source.SetRecodeMissingCopy(true);
    TransformVar target("t", kNumeric);
    target.SetRecodeElseCopy(true);
    target = source;
    EXPECT_FALSE(target.IsRecodeMissingCopy());
    EXPECT_TRUE(target.IsRecodeElseCopy());
}

TEST_F(TransformVarAssignment, TheTargetKeepsItsValueMap) {
    TransformVar target("t", kNumeric);
    auto* map = new MapValues(&target);
    map->SetMapMissingValue(Num(4));
    target.SetMapValues(map);
    TransformVar source("s", kNumeric);
    source.AddFieldNameAndTransExpression("", TD::TE_MAP_VALUES);
    auto* other = new MapValues(&source);
    other->SetMapMissingValue(Num(5));
    source.SetMapValues(other);
    target = source;
    EXPECT_EQ(Result(target), "number 4");
    EXPECT_EQ(Result(source), "number 5");
}

TEST_F(TransformVarAssignment, TheTargetKeepsItsOutlierTreatment) {
    TransformVar target("t", kNumeric);
    target.SetOutlierTreatMent("asExtremeValues");
    TransformVar source("s", kNumeric);
    source.AddLinearNorm(0, 1);
    source.AddLinearNorm(10, 2);
    source.AddNormInfo(0, 9);
    target = source;
    EXPECT_EQ(target.GetNormValue(20), 2);
}

TEST_F(TransformVarAssignment, TheTargetKeepsItsLag) {
    Input("x", 1.0);
    TransformVar target("t", kNumeric);
    target.AddFieldNameAndTransExpression("x", TD::TE_LAG);
    target.SetLags(2, {});
    Value(target);
    record.SetValue("x", 2.0);
    Value(target);
    TransformVar source("s", kNumeric);
    source.AddFieldNameAndTransExpression("x", TD::TE_LAG);
    target = source;
    EXPECT_EQ(Result(target), "number 1");
    EXPECT_EQ(Result(target), "number 2");
}

TEST_F(TransformVarAssignment, TheTargetKeepsItsSourcePositionAndVariable) {
    MakeMissing(Input("x", 1.0), 1.0);
    Input("y", 5.0);
    TransformVar target("t", kNumeric);
    target.AddFieldNameAndTransExpression("x", TD::TE_FIELD_REF);
    Value(target);
    TransformVar source("s", kNumeric);
    source.AddFieldNameAndTransExpression("y", TD::TE_FIELD_REF);
    source.SetRecodeMissValueTo(Num(-1));
    target = source;
    EXPECT_EQ(target.GetFieldName(), "y");
    EXPECT_EQ(Result(target), "number -1"); // position and variable of x
    record.SetValue("x", 3.0);
    EXPECT_EQ(Result(target), "number 3");
}

TEST(KeptTransformVarAssignment, ADateTimeResultBecomesAText) {
    TransformVar source("s", kDateTime);
    source.AddFieldNameAndTransExpression("", TD::TE_CONSTANT);
    source.SetConstString("60.000000");
    source.GetTransformedValue(nullptr, nullptr, nullptr);
    TransformVar target("t", kNumeric);
    target = source;
    EXPECT_EQ(Written(target.GetTransformedValue(nullptr, nullptr, nullptr)), "text 'Undefined'");
}

TEST_F(TransformVarAssignment, AResultThatCannotHoldTheTypeIsMadeAnew) {
    Input("when", kDateTime, new DateTimeValue(60.0, DateTimeValue::VAL_TIME));
    TransformVar source("s", kDateTime);
    source.AddFieldNameAndTransExpression("when", TD::TE_FIELD_REF);
    Value(source);
    TransformVar target("t", kNumeric);
    target = source;
    EXPECT_EQ(Result(target), "kind 1 60.000000");
}

TEST_F(TransformVarAssignment, AFieldWithoutResultGivesNone) {
    Input("x", 2.0);
    TransformVar target("t", kText);
    target.AddFieldNameAndTransExpression("", TD::TE_CONSTANT);
    target.SetConstString("old");
    Value(target);
    TransformVar source("s", kNumeric);
    source.AddFieldNameAndTransExpression("", TD::TE_CONSTANT);
    source.SetConstString("4");
    target = source;
    EXPECT_EQ(Result(target), "number 4");
}
