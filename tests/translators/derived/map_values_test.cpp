#include "support/faults/failure.h"
#include "translators/derived/derived_fields.h"

#include <gtest/gtest.h>

namespace veltrane::tests {
namespace {

const std::string kPair = "<FieldColumnPair field='s' column='in'/>";
const std::string kTable = "<InlineTable><row><in>a</in><out>1</out></row><row><in>b</in><out>2</out></row>"
                           "</InlineTable>";

std::string Map(const std::string& content, const std::string& attributes = "") {
    return "<MapValues outputColumn='out' " + attributes + ">" + content + "</MapValues>";
}

std::string TargetSysmis(const std::string& value) {
    return "<Extension name='recodeTargetSysmis' value='" + value + "'/>";
}

TEST(MapValuesReading, LooksValuesUp) {
    DerivedFields fields(NumericField(Map(kPair + kTable, "defaultValue='9' mapMissingTo='-1'")));
    EXPECT_EQ(fields.Score("z", {{"s", "a"}}), "1");
    EXPECT_EQ(fields.Score("z", {{"s", "b"}}), "2");
    EXPECT_EQ(fields.Score("z", {{"s", "c"}}), "9");
    EXPECT_EQ(fields.Score("z", {{"s", "?"}}), "-1");
}

TEST(MapValuesReading, TheFieldKeepsItsOwnReplacements) {
    const DerivedFields fields(NumericField(Map(kPair + kTable, "defaultValue='9' mapMissingTo='-1'")));
    EXPECT_EQ(ToText(fields.Var("z").GetRecodeDefaultValue()), "9");
    EXPECT_EQ(ToText(fields.Var("z").GetRecodeMissValueRep()), "-1");
}

TEST(MapValuesReading, SeveralInputs) {
    DerivedFields fields(TextField(
        Map("<FieldColumnPair field='s' column='left'/><FieldColumnPair field='x' column='right'/><InlineTable>"
            "<row><left>a</left><right>1</right><out>a1</out></row><row><left>a</left><right>2</right><out>a2</out>"
            "</row></InlineTable>")));
    EXPECT_EQ(fields.Score("z", {{"s", "a"}, {"x", "2"}}), "'a2'");
    EXPECT_EQ(fields.Score("z", {{"s", "a"}, {"x", "1"}}), "'a1'");
    EXPECT_EQ(fields.Score("z", {{"s", "b"}, {"x", "1"}}), "''");
}

TEST(MapValuesReading, TheOutputColumnMustBeThere) {
    ExpectReadFailure(NumericField("<MapValues><Foo/></MapValues>"),
                      {MISSING_ATTRIBUTE_OF, "outputColumn", "MapValues"});
}

TEST(MapValuesReading, TheAttributesAreReadBeforeTheOutputColumn) {
    ExpectReadFailure(NumericField("<MapValues mapMissingTo='a'/>"), {INVALID_VALUE_OF_TYPE, "a", "double"});
    ExpectReadFailure(NumericField("<MapValues defaultValue='b'/>"), {INVALID_VALUE_OF_TYPE, "b", "double"});
}

TEST(MapValuesReading, TheSourceIsTheFieldOfTheLastPair) {
    const DerivedFields fields(NumericField(Map("<FieldColumnPair field='s' column='a'/>"
                                                "<FieldColumnPair field='t' column='b'/>")));
    EXPECT_EQ(fields.Var("z").GetFieldName(), "t");
    EXPECT_EQ(DerivedFields(NumericField(Map(""))).Var("z").GetFieldName(), "");
}

TEST(MapValuesReading, APairNeedsFieldAndColumn) {
    ExpectReadFailure(NumericField(Map("<FieldColumnPair/>")), {MISSING_ATTRIBUTE_OF, "field", "FieldColumnPair"});
    ExpectReadFailure(NumericField(Map("<FieldColumnPair field='s'/>")),
                      {MISSING_ATTRIBUTE_OF, "column", "FieldColumnPair"});
}

TEST(KeptMapValues, APairOfAnUnknownFieldFailsOutsideTheCatalogue) {
    ExpectFailureWithDetail([] { DerivedFields fields(NumericField(Map("<FieldColumnPair field='w'/>"))); }, 1, "",
                            "w: not predefined!");
}

TEST(MapValuesReading, AColumnKeepsItsFirstField) {
    DerivedFields fields(NumericField(Map("<FieldColumnPair field='s' column='in'/>"
                                          "<FieldColumnPair field='x' column='in'/>" +
                                          kTable)));
    EXPECT_EQ(fields.Score("z", {{"s", "b"}, {"x", "0"}}), "2");
}

TEST(MapValuesReading, ATableAheadOfThePairsIsRefused) {
    ExpectReadFailure(NumericField(Map(kTable + kPair)), {MISSING_DEFINITION, "FieldColumnPair", "InlineTable"});
}

TEST(MapValuesReading, ATableLocatorIsSkipped) {
    DerivedFields fields(TextField(Map(kPair + "<TableLocator><Foo/></TableLocator>", "mapMissingTo='none'")));
    EXPECT_EQ(fields.Score("z", {{"s", "b"}}), "'b'");
    EXPECT_EQ(fields.Score("z", {{"s", "?"}}), "'none'");
}

TEST(MapValuesReading, AnotherChildIsRefused) {
    ExpectReadFailure(NumericField(Map(kPair + "<Foo/>")), {INVALID_ATTRIBUTE_VALUE_IN, "Foo", "name", "MapValues"});
}

TEST(MapValuesReading, ALaterTableReplacesAnEarlierOne) {
    DerivedFields fields(NumericField(
        Map(kPair + kTable + "<InlineTable><row><in>b</in><out>7</out></row></InlineTable>", "defaultValue='9'")));
    EXPECT_EQ(fields.Score("z", {{"s", "a"}}), "9");
    EXPECT_EQ(fields.Score("z", {{"s", "b"}}), "7");
}

TEST(MapValuesReading, ElseCopyGivesTheFirstColumn) {
    DerivedFields fields(TextField(Map(kPair + "<Extension name='recodeElseCopy'/>" + kTable)));
    EXPECT_EQ(fields.Score("z", {{"s", "a"}}), "'1'");
    EXPECT_EQ(fields.Score("z", {{"s", "c"}}), "'c'");
}

TEST(RecodeTargetSysmis, AddsAPairInTheTypeOfTheLastSource) {
    const DerivedFields texts(NumericField(Map(kPair + TargetSysmis("a"))));
    ASSERT_EQ(texts.Var("z").GetAllEncodedValues().size(), 1U);
    EXPECT_EQ(ToText(texts.Var("z").GetAllEncodedValues()[0].first), "'a'");
    EXPECT_EQ(ToText(texts.Var("z").GetAllEncodedValues()[0].second), "missing");
    const DerivedFields numbers(
        NumericField(Map(kPair + "<FieldColumnPair field='x' column='n'/>" + TargetSysmis("2.5"))));
    EXPECT_EQ(ToText(numbers.Var("z").GetAllEncodedValues()[0].first), "2.5");
}

TEST(RecodeTargetSysmis, MakesTheValueMissingAheadOfTheTable) {
    DerivedFields fields(NumericField(Map(kPair + TargetSysmis("a") + kTable)));
    EXPECT_EQ(fields.Score("z", {{"s", "a"}}), "missing");
    EXPECT_EQ(fields.Score("z", {{"s", "b"}}), "2");
}

TEST(KeptRecodeTargetSysmis, BehindATableItTakesTheTableAway) {
    DerivedFields fields(NumericField(Map(kPair + kTable + TargetSysmis("a"), "defaultValue='9'")));
    EXPECT_EQ(fields.Score("z", {{"s", "a"}}), "missing");
    EXPECT_EQ(fields.Score("z", {{"s", "b"}}), "9");
}

TEST(RecodeTargetSysmis, NeedsANumericField) {
    ExpectReadFailure(TextField(Map(TargetSysmis("a"))), {PARAMETER_TYPE_MISMATCH, "recodeTargetSysmis", "z"});
    ExpectReadFailure(TextField(Map(kPair + "<InlineTable>" + TargetSysmis("a") + "</InlineTable>")),
                      {PARAMETER_TYPE_MISMATCH, "recodeTargetSysmis", "z"});
}

TEST(RecodeTargetSysmis, NeedsASource) {
    ExpectReadFailure(NumericField(Map(TargetSysmis("a") + kPair)),
                      {MISSING_DEFINITION, "FieldColumnPair", "MapValues"});
}

TEST(RecodeTargetSysmis, TheKeyOfANumericSourceMustBeANumber) {
    ExpectReadFailure(NumericField(Map("<FieldColumnPair field='x' column='in'/>" + TargetSysmis("a"))),
                      {INVALID_VALUE_OF_TYPE, "a", "double"});
    ExpectReadFailure(NumericField(Map("<FieldColumnPair field='x' column='in'/>"
                                       "<Extension name='recodeTargetSysmis'/>")),
                      {INVALID_VALUE_OF_TYPE, "", "double"});
}

} // namespace
} // namespace veltrane::tests
