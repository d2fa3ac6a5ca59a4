#include "support/faults/failure.h"
#include "translators/derived/derived_fields.h"

#include <gtest/gtest.h>

namespace veltrane::tests {
namespace {

TEST(FieldRefReading, CopiesTheField) {
    DerivedFields numbers(NumericField("<FieldRef field='x'/>"));
    EXPECT_EQ(numbers.Score("z", {{"x", "1.25"}}), "1.25");
    EXPECT_EQ(numbers.Score("z", {{"x", ""}}), "missing");
    DerivedFields texts(TextField("<FieldRef field='s'/>"));
    EXPECT_EQ(texts.Score("z", {{"s", "b"}}), "'b'");
}

TEST(FieldRefReading, MapMissingToReplacesAMissingValue) {
    DerivedFields numbers(NumericField("<FieldRef field='x' mapMissingTo='-1'/>"));
    EXPECT_EQ(numbers.Score("z", {{"x", "1.25"}}), "1.25");
    EXPECT_EQ(numbers.Score("z", {{"x", ""}}), "-1");
    DerivedFields texts(TextField("<FieldRef field='s' mapMissingTo='none'/>"));
    EXPECT_EQ(texts.Score("z", {{"s", "?"}}), "'none'");
}

TEST(FieldRefReading, AnEmptyMapMissingToCountsAsAbsent) {
    const DerivedFields fields(NumericField("<FieldRef field='x' mapMissingTo=''/>"));
    EXPECT_EQ(fields.Var("z").GetRecodeMissValueRep(), nullptr);
}

TEST(FieldRefReading, MapMissingToHasTheTypeOfTheField) {
    ExpectReadFailure(NumericField("<FieldRef field='x' mapMissingTo='none'/>"),
                      {INVALID_VALUE_OF_TYPE, "none", "double"});
}

TEST(FieldRefReading, TheFieldMustBeNamedAndKnown) {
    ExpectReadFailure(NumericField("<FieldRef/>"), {MISSING_ATTRIBUTE_OF, "field", "FieldRef"});
    ExpectReadFailure(NumericField("<FieldRef field=''/>"),
                      {MISSING_VARIABLE_IN_BOTH, "", "DataDictionary", "TransformationDictionary"});
}

TEST(FieldRefReading, TheTypesMustBeEqual) {
    ExpectReadFailure(NumericField("<FieldRef field='s' mapMissingTo='none'/>"), {CONFLICTING_REFERENCE, "s", "z"});
    ExpectReadFailure(TextField("<FieldRef field='x'/>"), {CONFLICTING_REFERENCE, "x", "z"});
}

TEST(FieldRefReading, NumericAndDateTimeDoNotMix) {
    ExpectReadFailure(NumericField("<FieldRef field='d'/>"), {CONFLICTING_REFERENCE, "d", "z"});
    const DerivedFields fields(DerivedField("z", "optype='continuous' dataType='dateTime'", "<FieldRef field='d'/>"));
    EXPECT_EQ(fields.Var("z").GetFieldName(), "d");
}

TEST(FieldRefReading, WithoutATargetOnlyTheFieldIsLookedUp) {
    const DerivedFields fields("");
    const ParsedXml document = ParseXml("<FieldRef field='s' mapMissingTo='1'/>");
    EXPECT_EQ(fields.translator->HandleFieldRef(document.Root(), fields.dictionary.get(), nullptr, nullptr), "s");
    ExpectFailure([&] { fields.translator->HandleFieldRef(document.Root(), nullptr, nullptr, nullptr); },
                  {MISSING_VARIABLE_IN_BOTH, "s", "DataDictionary", "TransformationDictionary"});
}

} // namespace
} // namespace veltrane::tests
