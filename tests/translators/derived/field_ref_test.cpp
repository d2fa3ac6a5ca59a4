#include "support/failure.h"
#include "translators/derived/derived_fields.h"

#include <gtest/gtest.h>

namespace veltrane::tests {
namespace {

using namespace MCVeltrane_900;

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
    ExpectReadFailure(NumericField("<FieldRef field='x' mapMissingTo='none'/>"), 260151,
                      "The value: 'none' is invalid of type: 'double'.");
}

TEST(FieldRefReading, TheFieldMustBeNamedAndKnown) {
    ExpectReadFailure(NumericField("<FieldRef/>"), 260120, "Missing the attribute 'field' of 'FieldRef'.");
    ExpectReadFailure(NumericField("<FieldRef field=''/>"), 260125,
                      "Missing variable:'' definition in the 'DataDictionary' and 'TransformationDictionary'.");
}

TEST(FieldRefReading, TheTypesMustBeEqual) {
    ExpectReadFailure(NumericField("<FieldRef field='s' mapMissingTo='none'/>"), 260215,
                      "Conflict definition between the reference variable 's' and the variable 'z'.");
    ExpectReadFailure(TextField("<FieldRef field='x'/>"), 260215,
                      "Conflict definition between the reference variable 'x' and the variable 'z'.");
}

TEST(FieldRefReading, NumericAndDateTimeDoNotMix) {
    ExpectReadFailure(NumericField("<FieldRef field='d'/>"), 260215,
                      "Conflict definition between the reference variable 'd' and the variable 'z'.");
    const DerivedFields fields(DerivedField("z", "optype='continuous' dataType='dateTime'", "<FieldRef field='d'/>"));
    EXPECT_EQ(fields.Var("z").GetFieldName(), "d");
}

TEST(FieldRefReading, WithoutATargetOnlyTheFieldIsLookedUp) {
    const DerivedFields fields("");
    const ParsedXml document = ParseXml("<FieldRef field='s' mapMissingTo='1'/>");
    EXPECT_EQ(fields.translator->HandleFieldRef(document.Root(), fields.dictionary.get(), nullptr, nullptr), "s");
    ExpectFailure([&] { fields.translator->HandleFieldRef(document.Root(), nullptr, nullptr, nullptr); }, 260125,
                  "Missing variable:'s' definition in the 'DataDictionary' and 'TransformationDictionary'.");
}

} // namespace
} // namespace veltrane::tests
