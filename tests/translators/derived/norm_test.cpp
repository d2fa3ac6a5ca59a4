#include "support/faults/failure.h"
#include "support/rows.h"
#include "translators/derived/derived_fields.h"

#include <gtest/gtest.h>

namespace veltrane::tests {
namespace {

std::string Point(const std::string& orig, const std::string& norm) {
    return "<LinearNorm orig='" + orig + "' norm='" + norm + "'/>";
}

std::string Norm(const std::string& content, const std::string& attributes = "field='x'") {
    return NumericField("<NormContinuous " + attributes + ">" + content + "</NormContinuous>");
}

TEST(NormContinuousReading, OnePointIsRefused) {
    ExpectReadFailure(Norm(Point("0", "0"), ""), {REQUIRES_MORE_THAN_ONE, "LinearNorm", "DerivedField"});
    ExpectReadFailure(Norm(""), {REQUIRES_MORE_THAN_ONE, "LinearNorm", "DerivedField"});
}

TEST(NormContinuousReading, TwoPointsPass) {
    DerivedFields fields(Norm(Point("0", "0") + Point("2", "1")));
    EXPECT_EQ(fields.Score("z", {{"x", "1"}}), "0.5");
}

TEST(NormContinuousReading, SegmentsJoinNeighbours) {
    DerivedFields fields(Norm(Point("-1", "10") + Point("0", "20") + Point("4", "0")));
    EXPECT_EQ(fields.Score("z", {{"x", "-0.5"}}), "15");
    EXPECT_EQ(fields.Score("z", {{"x", "1"}}), "15");
    EXPECT_EQ(fields.Score("z", {{"x", "6"}}), "-10");
    EXPECT_EQ(fields.Score("z", {{"x", "-3"}}), "-10");
}

TEST(NormContinuousReading, EqualPointsGiveTheIdentity) {
    DerivedFields fields(Norm(Point("3", "7") + Point("3", "9")));
    EXPECT_EQ(fields.Score("z", {{"x", "3"}}), "3");
    EXPECT_EQ(fields.Score("z", {{"x", "100"}}), "100");
}

TEST(NormContinuousReading, PointsNeedNotAscend) {
    DerivedFields fields(Norm(Point("4", "0") + Point("0", "2")));
    EXPECT_EQ(fields.Score("z", {{"x", "2"}}), "1");
}

TEST(NormContinuousReading, OutliersAreTreatedAsTheAttributeSays) {
    const std::string points = Point("0", "0") + Point("2", "1");
    DerivedFields extreme(Norm(points, "field='x' outliers='asExtremeValues'"));
    EXPECT_EQ(extreme.Score("z", {{"x", "8"}}), "1");
    DerivedFields unknown(Norm(points, "field='x' outliers='other'"));
    EXPECT_EQ(unknown.Score("z", {{"x", "8"}}), "4");
}

TEST(NormContinuousReading, MapMissingToReplacesAMissingValue) {
    DerivedFields fields(Norm(Point("0", "0") + Point("2", "1"), "field='x' mapMissingTo='0.25'"));
    EXPECT_EQ(fields.Score("z", {{"x", ""}}), "0.25");
}

TEST(NormContinuousReading, TheFieldMustBeNamedKnownAndContinuous) {
    const std::string points = Point("0", "0") + Point("2", "1");
    ExpectReadFailure(Norm(points, ""), {MISSING_ATTRIBUTE_OF, "field", "NormContinuous"});
    ExpectReadFailure(Norm(points, "field='w'"),
                      {MISSING_VARIABLE_IN_BOTH, "w", "DataDictionary", "TransformationDictionary"});
    ExpectReadFailure(Norm(points, "field='o'"), {REQUIRES_VALUE_IN, "continuous", "optype", "o"});
    ExpectReadFailure(Norm(points, "field='s'"), {REQUIRES_VALUE_IN, "continuous", "optype", "s"});
}

TEST(NormContinuousReading, BothCoordinatesMustBeNumbers) {
    ExpectReadFailure(Norm(Point("0", "0") + "<LinearNorm norm='1'/>"), {MISSING_ATTRIBUTE_OF, "orig", "LinearNorm"});
    ExpectReadFailure(Norm(Point("0", "0") + "<LinearNorm orig='1'/>"), {MISSING_ATTRIBUTE_OF, "norm", "LinearNorm"});
    ExpectReadFailure(Norm(Point("0", "zero") + Point("one", "1")), {INVALID_VALUE_OF_TYPE, "zero", "double"});
}

TEST(NormContinuousReading, PointsAreReadBehindTheFieldAndAheadOfMapMissingTo) {
    const std::string points = Point("0", "0") + Point("one", "1");
    ExpectReadFailure(Norm(points, "field='o' mapMissingTo='none'"), {REQUIRES_VALUE_IN, "continuous", "optype", "o"});
    ExpectReadFailure(Norm(points, "field='x' mapMissingTo='none'"), {INVALID_VALUE_OF_TYPE, "one", "double"});
    ExpectReadFailure(Norm(Point("0", "0") + Point("1", "1"), "field='x' mapMissingTo='none'"),
                      {INVALID_VALUE_OF_TYPE, "none", "double"});
}

TEST(KeptNormContinuous, EveryChildIsAPoint) {
    ExpectReadFailure(Norm(Point("0", "0") + Point("1", "1") + "<Extension name='e'/>"),
                      {MISSING_ATTRIBUTE_OF, "orig", "Extension"});
    DerivedFields fields(Norm(Point("0", "0") + "<Extension orig='1' norm='1'/>" + Point("2", "4")));
    EXPECT_EQ(fields.Score("z", {{"x", "1.5"}}), "2.5");
}

TEST(KeptNormContinuous, PointsAreCountedAtAnyDepth) {
    DerivedFields fields(Norm("<Group orig='0' norm='5'>" + Point("1", "1") + Point("2", "2") + "</Group>"));
    EXPECT_EQ(fields.Score("z", {{"x", "7"}}), "7");
}

std::string Indicator(const std::string& attributes) {
    return NumericField("<NormDiscrete " + attributes + "/>");
}

TEST(NormDiscreteReading, AContinuousFieldIsRefused) {
    ExpectReadFailure(Indicator("field='x' value='1'"),
                      {CONFLICTING_VALUES_IN, "continuous", "optype", "x", "NormDiscrete", "name", "x"});
}

TEST(NormDiscreteReading, TheFieldMustBeNamedAndKnown) {
    ExpectReadFailure(Indicator("value='1'"), {MISSING_ATTRIBUTE_OF, "field", "NormDiscrete"});
    ExpectReadFailure(Indicator("field='w'"),
                      {MISSING_VARIABLE_IN_BOTH, "w", "DataDictionary", "TransformationDictionary"});
}

TEST(NormDiscreteReading, AValueMustBeThere) {
    ExpectReadFailure(Indicator("field='s'"), {MISSING_ATTRIBUTE_OF, "value", "NormDiscrete"});
}

TEST(NormDiscreteReading, AnEmptyValueStoresNoDefault) {
    const DerivedFields fields(Indicator("field='s' value='' mapMissingTo='0.5'"));
    EXPECT_EQ(fields.Var("z").GetRecodeDefaultValue(), nullptr);
    EXPECT_EQ(ToText(fields.Var("z").GetRecodeMissValueRep()), "0.5");
}

TEST(KeptNormDiscrete, TheIndicatorIsTheSameForAllCases) {
    DerivedFields fields(Indicator("field='s' value='a' mapMissingTo='0.5'"));
    EXPECT_EQ(fields.Score("z", {{"s", "a"}}), "1");
    EXPECT_EQ(fields.Score("z", {{"s", "b"}}), "1");
    EXPECT_EQ(fields.Score("z", {{"s", "?"}}), "0.5");
    EXPECT_TRUE(fields.Var("z").GetAllEncodedValues().empty());
}

struct CategoryRow {
    const char* name;
    const char* attributes;
    const char* defaultValue;
};
class NormDiscreteCategory : public testing::TestWithParam<CategoryRow> {};

TEST_P(NormDiscreteCategory, DecidesTheDefaultValue) {
    const DerivedFields fields(Indicator(GetParam().attributes));
    EXPECT_EQ(ToText(fields.Var("z").GetRecodeDefaultValue()), GetParam().defaultValue);
    EXPECT_FALSE(fields.Var("z").IsRecodeElseCopy());
}

INSTANTIATE_TEST_SUITE_P(Fields, NormDiscreteCategory,
                         testing::Values(CategoryRow{"Listed", "field='s' value='b'", "1"},
                                         CategoryRow{"Unlisted", "field='s' value='d'", "0"},
                                         CategoryRow{"Missing", "field='s' value='?'", "0"},
                                         CategoryRow{"ListedNumber", "field='o' value='2.0'", "1"},
                                         CategoryRow{"UnlistedNumber", "field='o' value='4'", "0"},
                                         CategoryRow{"TextForANumber", "field='o' value='two'", "0"},
                                         CategoryRow{"NoListTakesTheValue", "field='t' value='new'", "1"},
                                         CategoryRow{"NoListTakesTheNumber", "field='n' value='5'", "1"},
                                         CategoryRow{"TheMethodHasNoEffect", "field='s' value='b' method='thresholds'",
                                                     "1"}),
                         NameOfRow());

TEST(KeptNormDiscrete, TheCategoryIsAddedToAFieldWithoutAny) {
    const DerivedFields fields(
        Indicator("field='t' value='new'") +
        DerivedField("w", "optype='continuous' dataType='double'", "<NormDiscrete field='t' value='other'/>") +
        DerivedField("v", "optype='continuous' dataType='double'", "<NormDiscrete field='t' value='new'/>"));
    EXPECT_EQ(LabelsOf(fields.Input("t")), (std::vector<std::string>{"new=new", "other=other"}));
    EXPECT_EQ(ToText(fields.Var("v").GetRecodeDefaultValue()), "1");
}

TEST(NormDiscreteReading, ANumberMustBeOneWhereNoneIsListed) {
    ExpectReadFailure(Indicator("field='n' value='five'"), {INVALID_VALUE_OF_TYPE, "five", "double"});
}

TEST(NormDiscreteReading, ADateFieldWithAListHasNoSuchCategory) {
    const DerivedFields fields(DerivedField("w", "optype='ordinal' dataType='date'", "") +
                               Indicator("field='w' value='5'"));
    EXPECT_EQ(ToText(fields.Var("z").GetRecodeDefaultValue()), "0");
}

TEST(NormDiscreteReading, ADerivedTextFieldWithoutLabelsTakesEveryValue) {
    const DerivedFields fields(DerivedField("w", "optype='categorical' dataType='string'", "<FieldRef field='s'/>") +
                               Indicator("field='w' value='anything'"));
    EXPECT_EQ(ToText(fields.Var("z").GetRecodeDefaultValue()), "1");
    EXPECT_EQ(fields.Var("w").GetValueLabels(), nullptr);
}

} // namespace
} // namespace veltrane::tests
