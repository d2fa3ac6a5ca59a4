#include "support/faults/failure.h"
#include "translators/derived/derived_fields.h"

#include <gtest/gtest.h>

// The rows of an InlineTable, and the extensions ahead of them.

namespace veltrane::tests {
namespace {

/// A text field over s, in column "in", and x, in column "num".
std::string Table(const std::string& content, const std::string& attributes = "defaultValue='other'") {
    return TextField("<MapValues outputColumn='out' " + attributes +
                     "><FieldColumnPair field='s' column='in'/><FieldColumnPair field='x' column='num'/><InlineTable>" +
                     content + "</InlineTable></MapValues>");
}

std::string Row(const std::string& in, const std::string& out) {
    return "<row><in>" + in + "</in><out>" + out + "</out></row>";
}

TEST(InlineTableRows, AreFoundAtAnyDepth) {
    DerivedFields fields(Table("<Group>" + Row("a", "1") + "<Group>" + Row("b", "2") + "</Group></Group>"));
    EXPECT_EQ(fields.Score("z", {{"s", "a"}}), "'1'");
    EXPECT_EQ(fields.Score("z", {{"s", "b"}}), "'2'");
}

TEST(InlineTableRows, ARowInsideACellIsARowOfItsOwn) {
    DerivedFields fields(Table("<row><in>" + Row("b", "2") + "</in><out>1</out></row>"));
    EXPECT_EQ(fields.Score("z", {{"s", "b"}}), "'2'");
    EXPECT_EQ(fields.Score("z", {{"s", ""}}), "'1'");
}

TEST(InlineTableRows, TheFirstOfEqualRowsWins) {
    DerivedFields fields(Table(Row("a", "1") + Row("a ", "2")));
    EXPECT_EQ(fields.Score("z", {{"s", "a"}}), "'1'");
}

TEST(InlineTableRows, ACellHasTheTypeOfItsColumn) {
    DerivedFields fields(Table("<row><num>1.50</num><out>half</out></row>"));
    EXPECT_EQ(fields.Score("z", {{"x", "1.5"}}), "'half'");
    ExpectReadFailure(Table("<row><num>one</num><out>half</out></row>"), {INVALID_VALUE_OF_TYPE, "one", "double"});
    ExpectReadFailure(Table("<row><num/><out>half</out></row>"), {INVALID_VALUE_OF_TYPE, "", "double"});
}

TEST(InlineTableRows, TheOutputHasTheTypeOfTheField) {
    ExpectReadFailure(NumericField("<MapValues outputColumn='out'><FieldColumnPair field='s' column='in'/>"
                                   "<InlineTable>" +
                                   Row("a", "one") + "</InlineTable></MapValues>"),
                      {INVALID_VALUE_OF_TYPE, "one", "double"});
}

TEST(InlineTableRows, ACellsTextIsItsFirstChildNode) {
    DerivedFields fields(Table(Row("<![CDATA[a]]>b", "cdata") + Row("<!--b-->c", "comment") + Row("<x/>c", "element") +
                               Row("c", "text")));
    EXPECT_EQ(fields.Score("z", {{"s", "a"}}), "'cdata'");
    EXPECT_EQ(fields.Score("z", {{"s", "b"}}), "'comment'");
    EXPECT_EQ(fields.Score("z", {{"s", ""}}), "'element'");
    EXPECT_EQ(fields.Score("z", {{"s", "c"}}), "'text'");
}

TEST(InlineTableRows, ACellWithoutChildIsAnEmptyText) {
    DerivedFields fields(Table("<row><in/><out/></row>" + Row("a", "1")));
    EXPECT_EQ(fields.Score("z", {{"s", ""}}), "''");
    EXPECT_EQ(fields.Score("z", {{"s", "a"}}), "'1'");
}

TEST(InlineTableRows, InputCellsStandInRowOrder) {
    DerivedFields fields(Table("<row><num>1</num><out>one a</out><in>a</in></row>"
                               "<row><num>2</num><in>a</in><out>two a</out></row>"));
    EXPECT_EQ(fields.Score("z", {{"s", "a"}, {"x", "1"}}), "'one a'");
    EXPECT_EQ(fields.Score("z", {{"s", "a"}, {"x", "2"}}), "'two a'");
    EXPECT_EQ(fields.Score("z", {{"s", "b"}, {"x", "1"}}), "'other'");
}

TEST(InlineTableRows, ALaterOutputCellReplacesAnEarlierOne) {
    DerivedFields fields(Table("<row><out>1</out><in>a</in><out>2</out></row>"));
    EXPECT_EQ(fields.Score("z", {{"s", "a"}}), "'2'");
}

TEST(InlineTableRows, ARowWithoutOutputLeavesTheResultCleared) {
    DerivedFields fields(Table("<row><in>a</in></row>"));
    EXPECT_EQ(fields.Score("z", {{"s", "a"}}), "''");
    EXPECT_EQ(fields.Score("z", {{"s", "b"}}), "'other'");
}

TEST(InlineTableRows, ARowWithoutInputsMatchesEveryCase) {
    DerivedFields fields(Table("<row><out>always</out></row>"));
    EXPECT_EQ(fields.Score("z", {{"s", "a"}}), "'always'");
}

TEST(InlineTableRows, ATableWithoutRowsMatchesNothing) {
    DerivedFields fields(Table(""));
    EXPECT_EQ(fields.Score("z", {{"s", "a"}}), "'other'");
}

TEST(InlineTableRows, TheOutputColumnWinsOverAPair) {
    DerivedFields fields(TextField("<MapValues outputColumn='in'><FieldColumnPair field='s' column='in'/>"
                                   "<InlineTable><row><in>a</in></row></InlineTable></MapValues>"));
    EXPECT_EQ(fields.Score("z", {{"s", "b"}}), "'a'");
}

TEST(InlineTableRows, ACellUnderAColumnWithoutAPairIsRefused) {
    ExpectReadFailure(Table("<row><in>a</in><other>b</other></row>"),
                      {MISSING_VARIABLE_IN_BOTH, "other", "DataDictionary", "TransformationDictionary"});
}

TEST(InlineTableRows, AColumnIsLookedUpInEveryRow) {
    ExpectReadFailure(Table(Row("a", "1") + "<row><other>b</other></row>"),
                      {MISSING_VARIABLE_IN_BOTH, "other", "DataDictionary", "TransformationDictionary"});
}

TEST(InlineTableRows, APairBehindTheTableComesTooLate) {
    ExpectReadFailure(TextField("<MapValues outputColumn='out'><FieldColumnPair field='s' column='in'/><InlineTable>"
                                "<row><late>a</late></row></InlineTable><FieldColumnPair field='t' column='late'/>"
                                "</MapValues>"),
                      {MISSING_VARIABLE_IN_BOTH, "late", "DataDictionary", "TransformationDictionary"});
}

TEST(InlineTableRows, AShorterRowIsRefused) {
    ExpectReadFailure(Table("<row><in>a</in><num>1</num><out>1</out></row>" + Row("a", "2")),
                      {NUMBERS_MISMATCH, "1", "column", "row", "2", "column", "InlineTable"});
    ExpectReadFailure(Table(Row("a", "1") + "<row/>"),
                      {NUMBERS_MISMATCH, "0", "column", "row", "1", "column", "InlineTable"});
}

TEST(InlineTableRows, ALongerRowIsRefused) {
    ExpectReadFailure(Table(Row("a", "1") + "<row><in>a</in><num>1</num><out>1</out></row>"),
                      {NUMBERS_MISMATCH, "2", "column", "row", "1", "column", "InlineTable"});
}

TEST(InlineTableRows, RowsOfOneWidthMayChangeTheirColumns) {
    DerivedFields fields(Table(Row("a", "1") + "<row><num>5</num><out>2</out></row>" + Row("b", "3")));
    EXPECT_EQ(fields.Score("z", {{"s", "a"}}), "'1'");
    EXPECT_EQ(fields.Score("z", {{"s", "b"}}), "'3'");
}

std::string Recode(const std::string& name, const std::string& value = "5") {
    return "<Extension name='" + name + "' value='" + value + "'/>";
}

/// A numeric field over s with this content of its table.
std::string NumericTable(const std::string& content) {
    return NumericField("<MapValues outputColumn='out'><FieldColumnPair field='s' column='in'/><InlineTable>" +
                        content + "</InlineTable></MapValues>");
}

TEST(InlineTableExtensions, ARunAtTheHeadIsRead) {
    const DerivedFields fields(
        NumericTable(Recode("mapSysmisTo") + "<!-- -->" + Recode("recodeElseCopy") + Row("a", "1")));
    EXPECT_EQ(ToText(fields.Var("z").GetRecodeSysmisValueRep()), "5");
    EXPECT_TRUE(fields.Var("z").IsRecodeElseCopy());
}

TEST(InlineTableExtensions, ARecodeTargetSysmisInsideTheRunDoesNothing) {
    const DerivedFields fields(NumericTable(Recode("mapSysmisTo") + Recode("recodeTargetSysmis", "a")));
    EXPECT_TRUE(fields.Var("z").GetAllEncodedValues().empty());
}

TEST(InlineTableExtensions, ARecodeTargetSysmisAtTheHeadStandsAlone) {
    DerivedFields fields(
        NumericTable(Recode("recodeTargetSysmis", "a") + Recode("mapSysmisTo") + Row("a", "1") + Row("b", "2")));
    EXPECT_EQ(fields.Var("z").GetRecodeSysmisValueRep(), nullptr);
    EXPECT_EQ(fields.Var("z").GetAllEncodedValues().size(), 1U);
    EXPECT_EQ(fields.Score("z", {{"s", "a"}}), "missing");
    EXPECT_EQ(fields.Score("z", {{"s", "b"}}), "2");
}

TEST(InlineTableExtensions, BehindARowTheyAreIgnored) {
    const DerivedFields fields(NumericTable(Row("a", "1") + Recode("mapSysmisTo")));
    EXPECT_EQ(fields.Var("z").GetRecodeSysmisValueRep(), nullptr);
}

TEST(InlineTableExtensions, InsideARowTheyAreCells) {
    ExpectReadFailure(NumericTable("<row><Extension/><in>a</in><out>1</out></row>"),
                      {MISSING_VARIABLE_IN_BOTH, "Extension", "DataDictionary", "TransformationDictionary"});
}

TEST(InlineTableExtensions, AConflictIsReported) {
    ExpectReadFailure(NumericTable(Recode("mapSysmisTo") + Recode("mapSysmisTo")),
                      {CONFLICTING_ELEMENTS, "mapSysmisTo", "mapSysmisTo"});
}

} // namespace
} // namespace veltrane::tests
