#include "support/faults/failure.h"
#include "support/rows.h"
#include "translators/derived/derived_fields.h"

#include <MCVeltrane_900/NumericValue.h>

#include <gtest/gtest.h>

namespace veltrane::tests {
namespace {

std::string Recode(const std::string& name, const std::string& value = "") {
    return "<Extension name='" + name + "'" + (value.empty() ? "" : " value='" + value + "'") + "/>";
}

std::string Map(const std::string& attributes, const std::string& extensions) {
    return "<MapValues outputColumn='out' " + attributes + "><FieldColumnPair field='x' column='in'/>" + extensions +
           "</MapValues>";
}

std::string Bins(const std::string& attributes, const std::string& extensions) {
    return "<Discretize field='x' " + attributes + ">" + extensions +
           "<DiscretizeBin binValue='1'><Interval closure='openOpen'/></DiscretizeBin></Discretize>";
}

/// An expression that takes extensions, with attributes and extensions in it.
using Expression = std::string (*)(const std::string&, const std::string&);
struct PlaceRow {
    const char* name;
    Expression expression;
};

class RecodeExtensions : public testing::TestWithParam<PlaceRow> {
protected:
    static std::string Field(const std::string& attributes, const std::string& extensions) {
        return NumericField(GetParam().expression(attributes, extensions));
    }
    static std::string OfText(const std::string& attributes, const std::string& extensions) {
        return TextField(GetParam().expression(attributes, extensions));
    }
};

TEST_P(RecodeExtensions, ElseCopy) {
    const DerivedFields fields(Field("", Recode("recodeElseCopy")));
    EXPECT_TRUE(fields.Var("z").IsRecodeElseCopy());
    EXPECT_FALSE(fields.Var("z").IsRecodeMissingCopy());
}

TEST_P(RecodeExtensions, ElseCopyConflictsWithADefaultValue) {
    ExpectReadFailure(Field("defaultValue='1'", Recode("recodeElseCopy")),
                      {CONFLICTING_ELEMENTS, "defaultValue", "recodeElseCopy"});
}

TEST_P(RecodeExtensions, MissingCopy) {
    const DerivedFields fields(Field("defaultValue='1'", Recode("recodeMissingCopy")));
    EXPECT_TRUE(fields.Var("z").IsRecodeMissingCopy());
    EXPECT_FALSE(fields.Var("z").IsRecodeElseCopy());
}

TEST_P(RecodeExtensions, MissingCopyConflictsWithAMapMissingTo) {
    ExpectReadFailure(Field("mapMissingTo='1'", Recode("recodeMissingCopy")),
                      {CONFLICTING_ELEMENTS, "mapSysmisTo", "recodeMissingCopy"});
}

TEST_P(RecodeExtensions, MapSysmisTo) {
    const DerivedFields fields(Field("mapMissingTo='1' defaultValue='2'", Recode("mapSysmisTo", "3.5")));
    EXPECT_EQ(ToText(fields.Var("z").GetRecodeSysmisValueRep()), "3.5");
    EXPECT_EQ(ToText(fields.Var("z").GetRecodeMissValueRep()), "1");
    EXPECT_EQ(ToText(fields.Var("z").GetRecodeDefaultValue()), "2");
}

TEST_P(RecodeExtensions, MapSysmisToHasTheTypeOfTheField) {
    EXPECT_EQ(ToText(DerivedFields(OfText("", Recode("mapSysmisTo", "none"))).Var("z").GetRecodeSysmisValueRep()),
              "'none'");
    ExpectReadFailure(Field("", Recode("mapSysmisTo", "none")), {INVALID_VALUE_OF_TYPE, "none", "double"});
}

TEST_P(RecodeExtensions, MapSysmisToNeedsAValue) {
    ExpectReadFailure(Field("", Recode("mapSysmisTo")), {MISSING_ATTRIBUTE_OF, "value", "Extension"});
}

TEST_P(RecodeExtensions, MapSysmisToConflictsWithItself) {
    ExpectReadFailure(Field("", Recode("mapSysmisTo", "1") + Recode("mapSysmisTo")),
                      {CONFLICTING_ELEMENTS, "mapSysmisTo", "mapSysmisTo"});
}

TEST_P(RecodeExtensions, MissingSysmis) {
    const DerivedFields fields(Field("", Recode("recodeMissingSysmis")));
    EXPECT_EQ(ToText(fields.Var("z").GetRecodeMissValueRep()), "missing");
    EXPECT_FALSE(fields.Var("z").IsRecodeMissingCopy());
}

TEST_P(RecodeExtensions, MissingSysmisNeedsANumericField) {
    ExpectReadFailure(OfText("mapMissingTo='1'", Recode("recodeMissingSysmis")),
                      {PARAMETER_TYPE_MISMATCH, "recodeMissingSysmis", "z"});
}

TEST_P(RecodeExtensions, MissingSysmisConflictsWithEveryOtherMissingRecode) {
    constexpr Failure kFailure{CONFLICTING_ELEMENTS, "mapSysmisTo, recodeMissingCopy, mapMissingTo",
                               "recodeMissingSysmis"};
    ExpectReadFailure(Field("mapMissingTo='1'", Recode("recodeMissingSysmis")), kFailure);
    ExpectReadFailure(Field("", Recode("recodeMissingCopy") + Recode("recodeMissingSysmis")), kFailure);
    ExpectReadFailure(Field("", Recode("mapSysmisTo", "1") + Recode("recodeMissingSysmis")), kFailure);
    ExpectReadFailure(Field("", Recode("recodeMissingSysmis") + Recode("recodeMissingSysmis")), kFailure);
}

TEST_P(RecodeExtensions, MissingSysmisPassesBesideElseCopy) {
    const DerivedFields fields(Field("", Recode("recodeElseCopy") + Recode("recodeMissingSysmis")));
    EXPECT_TRUE(fields.Var("z").IsRecodeElseCopy());
}

TEST_P(RecodeExtensions, MissingCopyBehindMissingSysmisConflicts) {
    ExpectReadFailure(Field("", Recode("recodeMissingSysmis") + Recode("recodeMissingCopy")),
                      {CONFLICTING_ELEMENTS, "mapSysmisTo", "recodeMissingCopy"});
}

TEST_P(RecodeExtensions, OtherNamesDoNothing) {
    const DerivedFields fields(Field("", Recode("recodeElsecopy") + Recode("width", "w") + "<Extension/>"));
    const TransformVar& var = fields.Var("z");
    EXPECT_FALSE(var.IsRecodeElseCopy());
    EXPECT_FALSE(var.IsRecodeMissingCopy());
    EXPECT_EQ(var.GetRecodeMissValueRep(), nullptr);
    EXPECT_EQ(var.GetRecodeDefaultValue(), nullptr);
    EXPECT_EQ(var.GetRecodeSysmisValueRep(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(Places, RecodeExtensions,
                         testing::Values(PlaceRow{"MapValues", Map}, PlaceRow{"Discretize", Bins}), NameOfRow());

class RecodeAttributes : public testing::TestWithParam<PlaceRow> {};

TEST_P(RecodeAttributes, HaveTheTypeOfTheField) {
    const DerivedFields numbers(NumericField(GetParam().expression("mapMissingTo='1' defaultValue='2'", "")));
    EXPECT_EQ(ToText(numbers.Var("z").GetRecodeMissValueRep()), "1");
    EXPECT_EQ(ToText(numbers.Var("z").GetRecodeDefaultValue()), "2");
    const DerivedFields texts(TextField(GetParam().expression("mapMissingTo='1' defaultValue='2'", "")));
    EXPECT_EQ(ToText(texts.Var("z").GetRecodeMissValueRep()), "'1'");
    EXPECT_EQ(ToText(texts.Var("z").GetRecodeDefaultValue()), "'2'");
}

TEST_P(RecodeAttributes, EmptyOnesCountAsAbsent) {
    const DerivedFields fields(NumericField(GetParam().expression("mapMissingTo='' defaultValue=''", "")));
    EXPECT_EQ(fields.Var("z").GetRecodeMissValueRep(), nullptr);
    EXPECT_EQ(fields.Var("z").GetRecodeDefaultValue(), nullptr);
}

TEST_P(RecodeAttributes, AreCheckedMapMissingToFirst) {
    ExpectReadFailure(NumericField(GetParam().expression("defaultValue='b' mapMissingTo='a'", "")),
                      {INVALID_VALUE_OF_TYPE, "a", "double"});
    ExpectReadFailure(NumericField(GetParam().expression("defaultValue='b'", "")),
                      {INVALID_VALUE_OF_TYPE, "b", "double"});
}

INSTANTIATE_TEST_SUITE_P(Places, RecodeAttributes,
                         testing::Values(PlaceRow{"MapValues", Map}, PlaceRow{"Discretize", Bins}), NameOfRow());

} // namespace
} // namespace veltrane::tests
