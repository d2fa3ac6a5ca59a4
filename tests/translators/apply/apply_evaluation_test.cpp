#include "support/rows.h"
#include "translators/derived/derived_fields.h"

#include <MCVeltrane_900/CaseRecord.h>
#include <MCVeltrane_900/StringValue.h>
#include <MCVeltrane_900/TransformVar.h>

#include <gtest/gtest.h>

#include <string>

// Values of expressions, from the document to the number. x and y are numbers, s and t texts, d is a date.

using namespace veltrane::tests;

namespace {

struct Row {
    const char* name;
    const char* apply;
    Case values;
    const char* expected;
};

/// The first case of a field is evaluated another way than the later ones.
void ExpectInEveryCase(DerivedFields& fields, const Row& row) {
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(fields.Score("z", row.values), row.expected) << "case " << i;
    }
}

class NumericApply : public testing::TestWithParam<Row> {};

TEST_P(NumericApply, GivesTheStatedValue) {
    DerivedFields fields(NumericField(GetParam().apply));
    ExpectInEveryCase(fields, GetParam());
}

class TextApply : public testing::TestWithParam<Row> {};

TEST_P(TextApply, GivesTheStatedValue) {
    DerivedFields fields(TextField(GetParam().apply));
    ExpectInEveryCase(fields, GetParam());
}

const Row kBranchRows[] = {
    {"ConditionWithinTolerance",
     "<Apply function='if'><Constant>1.0000000000000002</Constant><Constant>5</Constant><Constant>6</Constant></Apply>",
     {{"x", "1"}},
     "5"},
    {"FalseCondition",
     "<Apply function='if'><FieldRef field='x'/><Constant>5</Constant><Constant>6</Constant></Apply>",
     {{"x", "0"}},
     "6"},
    {"MissingConditionIsFalse",
     "<Apply function='if'><FieldRef field='x'/><Constant>5</Constant><Constant>6</Constant></Apply>",
     {{"x", ""}},
     "6"},
    {"FalseConditionWithTwoChildrenGivesZero",
     "<Apply function='if'><FieldRef field='x'/><Constant>5</Constant></Apply>",
     {{"x", "0"}},
     "0"},
    {"BranchMayBeMissing",
     "<Apply function='if'><FieldRef field='x'/><FieldRef field='y'/></Apply>",
     {{"x", "1"}, {"y", ""}},
     "missing"},
};
INSTANTIATE_TEST_SUITE_P(Branches, NumericApply, testing::ValuesIn(kBranchRows), NameOfRow());

const Row kMissingRows[] = {
    {"PlusOfMissing",
     "<Apply function='+'><FieldRef field='x'/><FieldRef field='y'/></Apply>",
     {{"x", "1"}, {"y", ""}},
     "missing"},
    {"MapMissingToDoesNotRescuePlus",
     "<Apply function='+' mapMissingTo='9'><FieldRef field='x'/><FieldRef field='y'/></Apply>",
     {{"x", "1"}, {"y", ""}},
     "missing"},
    {"SumSkipsMissing",
     "<Apply function='sum'><FieldRef field='x'/><FieldRef field='y'/></Apply>",
     {{"x", "4"}, {"y", ""}},
     "4"},
    {"SumOfMissing",
     "<Apply function='sum'><FieldRef field='x'/><FieldRef field='y'/></Apply>",
     {{"x", ""}, {"y", ""}},
     "missing"},
    {"MapMissingToRescuesSum",
     "<Apply function='sum' mapMissingTo='9'><FieldRef field='x'/><FieldRef field='y'/></Apply>",
     {{"x", ""}, {"y", ""}},
     "9"},
    {"DefaultValueRescuesSum",
     "<Apply function='sum' defaultValue='8'><FieldRef field='x'/><FieldRef field='y'/></Apply>",
     {{"x", ""}, {"y", ""}},
     "8"},
    {"MapMissingToComesBeforeDefaultValue",
     "<Apply function='sum' mapMissingTo='9' defaultValue='8'><FieldRef field='x'/><FieldRef field='y'/></Apply>",
     {{"x", ""}, {"y", ""}},
     "9"},
    {"OneArgumentIsNeverRescued",
     "<Apply function='sum' mapMissingTo='9'><FieldRef field='x'/></Apply>",
     {{"x", ""}},
     "missing"},
    {"MissingWithoutMissingArgumentIsNotRescued",
     "<Apply function='/' mapMissingTo='9'><FieldRef field='x'/><Constant>0</Constant></Apply>",
     {{"x", "1"}},
     "missing"},
    {"MissingUnderMinusIsRescued",
     "<Apply function='-' mapMissingTo='9'><FieldRef field='x'/><Constant>1</Constant></Apply>",
     {{"x", ""}},
     "9"},
    {"FieldRefReplacesItsOwnMissing",
     "<Apply function='+'><FieldRef field='x' mapMissingTo='5'/><Constant>1</Constant></Apply>",
     {{"x", ""}},
     "6"},
    {"IsMissing", "<Apply function='isMissing'><FieldRef field='x'/></Apply>", {{"x", ""}}, "1"},
    {"IsMissingOfPresent", "<Apply function='isMissing'><FieldRef field='x'/></Apply>", {{"x", "3"}}, "0"},
    {"IsMissingOfConstant", "<Apply function='isMissing'><Constant>1</Constant></Apply>", {{"x", "3"}}, "0"},
    {"IsNotMissingOfConstant", "<Apply function='isNotMissing'><Constant>1</Constant></Apply>", {{"x", "3"}}, "0"},
    {"IsMissingOfApply",
     "<Apply function='isMissing'><Apply function='abs'><FieldRef field='x'/></Apply></Apply>",
     {{"x", ""}},
     "0"},
    {"IsMissingOfDeclaredMissing", "<Apply function='isMissing'><FieldRef field='s'/></Apply>", {{"s", "?"}}, "1"},
    {"IsNotMissing", "<Apply function='isNotMissing'><FieldRef field='x'/></Apply>", {{"x", ""}}, "0"},
    {"IsMissingSeesTheReplacement",
     "<Apply function='isMissing'><FieldRef field='x' mapMissingTo='5'/></Apply>",
     {{"x", ""}},
     "0"},
    {"ValueSeesTheMissingValue",
     "<Apply function='value'><FieldRef field='x' mapMissingTo='5'/></Apply>",
     {{"x", ""}},
     "missing"},
    {"ValueOfPresent", "<Apply function='value'><FieldRef field='x'/></Apply>", {{"x", "5"}}, "5"},
    {"SysmisSeesTheMissingValue",
     "<Apply function='sysmis'><FieldRef field='x' mapMissingTo='5'/></Apply>",
     {{"x", ""}},
     "1"},
    {"SysmisOfPresent", "<Apply function='sysmis'><FieldRef field='x'/></Apply>", {{"x", "5"}}, "0"},
    {"RecastToScale", "<Apply function='recast_to_scale'><FieldRef field='o'/></Apply>", {{"o", "2"}}, "2"},
    {"RecastToOrdinal", "<Apply function='recast_to_ordinal'><FieldRef field='o'/></Apply>", {{"o", "2"}}, "2"},
    {"AbsentFieldIsMissing", "<Apply function='isMissing'><FieldRef field='y'/></Apply>", {{"x", "5"}}, "1"},
    {"AndTakesMissingForTrue",
     "<Apply function='and'><FieldRef field='x'/><Constant>1</Constant></Apply>",
     {{"x", ""}},
     "1"},
    {"SumOfNothingIsMissing", "<Apply function='sum'/>", {{"x", "1"}}, "missing"},
};
INSTANTIATE_TEST_SUITE_P(Missing, NumericApply, testing::ValuesIn(kMissingRows), NameOfRow());

const Row kNumberRows[] = {
    {"MinusOfTwo", "<Apply function='-'><Constant>5</Constant><Constant>3</Constant></Apply>", {}, "2"},
    {"PowOfDoubles",
     "<Apply function='pow'><Constant>2</Constant><Constant>0.5</Constant></Apply>",
     {},
     "1.4142135623730951"},
    {"FloorFoldsFromTheLeft",
     "<Apply function='floor'><Constant>1.7</Constant><Constant>2.7</Constant></Apply>",
     {},
     "1"},
    {"ThresholdOfTwo", "<Apply function='threshold'><Constant>3</Constant><Constant>2</Constant></Apply>", {}, "1"},
    {"ThresholdOfOneComparesWithZero", "<Apply function='threshold'><Constant>3</Constant></Apply>", {}, "1"},
    {"EqualNumbers", "<Apply function='equal'><FieldRef field='x'/><Constant>2</Constant></Apply>", {{"x", "2"}}, "1"},
    {"EqualTexts",
     "<Apply function='equal'><FieldRef field='t'/><Constant dataType='string'>ab</Constant></Apply>",
     {{"t", "ab  "}},
     "1"},
    {"TextAndNumberAreNotEqual",
     "<Apply function='equal'><FieldRef field='t'/><Constant>1</Constant></Apply>",
     {{"t", "1"}},
     "0"},
    {"TextAndNumberAreUnequal",
     "<Apply function='notEqual'><FieldRef field='t'/><Constant>1</Constant></Apply>",
     {{"t", "1"}},
     "1"},
    {"EqualOfThree",
     "<Apply function='equal'><Constant>1</Constant><Constant>1</Constant><Constant>1</Constant></Apply>",
     {},
     "0"},
    {"IsIn",
     "<Apply function='isIn'><FieldRef field='x'/><Constant>1</Constant><Constant>2</Constant></Apply>",
     {{"x", "2"}},
     "1"},
    {"IsInNothing", "<Apply function='isIn'><FieldRef field='x'/></Apply>", {{"x", "2"}}, "0"},
    {"IsNotIn",
     "<Apply function='isNotIn'><FieldRef field='x'/><Constant>1</Constant><Constant>2</Constant></Apply>",
     {{"x", "2"}},
     "0"},
    {"Matches",
     "<Apply function='matches'><FieldRef field='t'/><Constant>^a.c$</Constant></Apply>",
     {{"t", "abc"}},
     "1"},
    {"MatchesOfADateIsThatOfItsText",
     "<Apply function='matches'><FieldRef field='d'/><Constant>^Undefined$</Constant></Apply>",
     {{"d", "3"}},
     "1"},
    {"LengthWithoutWidthIsThatOfTheVariable",
     "<Apply function='length'><FieldRef field='t'/></Apply>",
     {{"t", "abc"}},
     "-1"},
    {"LengthOfConstant", "<Apply function='length'><Constant dataType='string'>abcd</Constant></Apply>", {}, "4"},
    {"OutlierAsExtreme",
     "<Apply function='outlierHandle'><FieldRef field='x'/><Constant dataType='string'>asExtremeValues</Constant>"
     "<Constant>10</Constant><Constant>2</Constant><Constant>3</Constant><Constant>4</Constant></Apply>",
     {{"x", "20"}},
     "13"},
    {"OutlierAsMissing",
     "<Apply function='outlierHandle'><FieldRef field='x'/><Constant dataType='string'>asMissingValues</Constant>"
     "<Constant>10</Constant><Constant>2</Constant><Constant>3</Constant><Constant>4</Constant></Apply>",
     {{"x", "20"}},
     "missing"},
    {"NoOutlier",
     "<Apply function='outlierHandle'><FieldRef field='x'/><Constant dataType='string'>asIs</Constant>"
     "<Constant>10</Constant><Constant>2</Constant><Constant>3</Constant><Constant>4</Constant></Apply>",
     {{"x", "12"}},
     "12"},
    {"YearOfDate", "<Apply function='year-from-date'><FieldRef field='d'/></Apply>", {{"d", "366"}}, "1971"},
    {"YearOfNumber", "<Apply function='year-from-date'><FieldRef field='x'/></Apply>", {{"x", "366"}}, "missing"},
    {"DifferenceWithMissing",
     "<Apply function='date_days_difference'><FieldRef field='d'/><FieldRef field='y'/></Apply>",
     {{"d", "3"}, {"y", ""}},
     "missing"},
    {"DifferenceWithNumber",
     "<Apply function='time_seconds_difference'><FieldRef field='d'/><Constant>86400</Constant></Apply>",
     {{"d", "3"}},
     "172800"},
};
INSTANTIATE_TEST_SUITE_P(Numbers, NumericApply, testing::ValuesIn(kNumberRows), NameOfRow());

// Seconds on the left, days on the right: dates are subtracted as they report themselves.
const Row kKeptRows[] = {
    {"DateMinusDateMixesSecondsAndDays",
     "<Apply function='time_seconds_difference'><FieldRef field='d'/><FieldRef field='d'/></Apply>",
     {{"d", "2"}},
     "172798"},
};
INSTANTIATE_TEST_SUITE_P(Kept, NumericApply, testing::ValuesIn(kKeptRows), NameOfRow());

const Row kInvalidRows[] = {
    {"AsMissingTakesTheDefault",
     "<Value value='1'/><Value value='2'/><Apply function='+' invalidValueTreatment='asMissing' defaultValue='2'>"
     "<FieldRef field='x'/><Constant>0</Constant></Apply>",
     {{"x", "7"}},
     "2"},
    {"AsMissingWithoutDefault",
     "<Value value='1'/><Value value='2'/><Apply function='+' invalidValueTreatment='asMissing'>"
     "<FieldRef field='x'/><Constant>0</Constant></Apply>",
     {{"x", "7"}},
     "missing"},
    {"ReturnInvalidGivesTheValue",
     "<Value value='1'/><Value value='2'/><Apply function='+' invalidValueTreatment='returnInvalid' defaultValue='2'>"
     "<FieldRef field='x'/><Constant>0</Constant></Apply>",
     {{"x", "7"}},
     "7"},
    {"AsIsGivesTheValue",
     "<Value value='1'/><Value value='2'/><Apply function='+' invalidValueTreatment='asIs' defaultValue='2'>"
     "<FieldRef field='x'/><Constant>0</Constant></Apply>",
     {{"x", "7"}},
     "7"},
    {"ValidStays",
     "<Value value='1'/><Value value='2'/><Apply function='+' invalidValueTreatment='asMissing' defaultValue='2'>"
     "<FieldRef field='x'/><Constant>0</Constant></Apply>",
     {{"x", "1"}},
     "1"},
};

class InvalidApply : public testing::TestWithParam<Row> {};

TEST_P(InvalidApply, IsTreatedAsStated) {
    DerivedFields fields(DerivedField("z", "optype='categorical' dataType='double'", GetParam().apply));
    ExpectInEveryCase(fields, GetParam());
}

INSTANTIATE_TEST_SUITE_P(Rows, InvalidApply, testing::ValuesIn(kInvalidRows), NameOfRow());

const Row kTextRows[] = {
    {"Lowercase", "<Apply function='lowercase'><FieldRef field='t'/></Apply>", {{"t", "aBC"}}, "'abc'"},
    {"Lower", "<Apply function='lower'><FieldRef field='t'/></Apply>", {{"t", "aBC"}}, "'abc'"},
    {"Uppercase", "<Apply function='uppercase'><FieldRef field='t'/></Apply>", {{"t", "aBC"}}, "'ABC'"},
    {"Ltrim", "<Apply function='ltrim'><FieldRef field='t'/></Apply>", {{"t", "  a "}}, "'a '"},
    {"Rtrim", "<Apply function='rtrim'><FieldRef field='t'/></Apply>", {{"t", "  a "}}, "'  a'"},
    {"Trimend", "<Apply function='trimend'><FieldRef field='t'/></Apply>", {{"t", "  a "}}, "'  a'"},
    {"Substr",
     "<Apply function='substr'><FieldRef field='t'/><Constant>2</Constant></Apply>",
     {{"t", "abcd"}},
     "'bcd'"},
    {"Substring",
     "<Apply function='substring'><FieldRef field='t'/><Constant>2</Constant><Constant>2</Constant></Apply>",
     {{"t", "a\u00E4bc"}},
     "'\u00E4b'"},
    {"ConcatOfConstants",
     "<Apply function='concat'><Constant>ab</Constant><Constant dataType='string'>cd</Constant></Apply>",
     {},
     "'abcd'"},
    {"Replace",
     "<Apply function='replace'><FieldRef field='t'/><Constant>b</Constant><Constant>x</Constant></Apply>",
     {{"t", "abc"}},
     "'abcaxc'"},
    {"ConcatOfADateIsThatOfItsText",
     "<Apply function='concat'><FieldRef field='d'/><Constant>|</Constant></Apply>",
     {{"d", "3"}},
     "'Undefined|'"},
    {"IfOfTexts",
     "<Apply function='if'><FieldRef field='x'/><FieldRef field='t'/><Constant dataType='string'>no</Constant></Apply>",
     {{"x", "0"}, {"t", "yes"}},
     "'no'"},
    {"ValueOfText", "<Apply function='value'><FieldRef field='t'/></Apply>", {{"t", "abc"}}, "'abc'"},
    {"Nested",
     "<Apply function='uppercase'><Apply function='ltrim'><FieldRef field='t'/></Apply></Apply>",
     {{"t", "  ab"}},
     "'AB'"},
    {"MissingTextIsReplaced",
     "<Apply function='uppercase'><FieldRef field='s' mapMissingTo='b'/></Apply>",
     {{"s", "?"}},
     "'B'"},
    {"MissingTextStaysWithoutReplacement",
     "<Apply function='uppercase'><FieldRef field='s'/></Apply>",
     {{"s", "?"}},
     "'?'"},
    {"AbsentTextIsEmpty", "<Apply function='uppercase'><FieldRef field='t'/></Apply>", {{"x", "1"}}, "''"},
    {"Imputation",
     "<Value value='low'/><Value value='high'/><Apply function='imputeCatFieldMissingAgainstConTarget'>"
     "<FieldRef field='s'/><FieldRef field='x'/><Extension><Array n='2'>0 10</Array></Extension>"
     "<Extension><Array n='2'>1 1</Array></Extension></Apply>",
     {{"s", "a"}, {"x", "8"}},
     "'high'"},
};
INSTANTIATE_TEST_SUITE_P(Rows, TextApply, testing::ValuesIn(kTextRows), NameOfRow());

const char* const kWideField = "optype='categorical' dataType='string'";

TEST(ApplyLength, IsTheWidthOfTheField) {
    DerivedFields fields(DerivedField("w", kWideField, "<Extension name='width' value='10'/><FieldRef field='t'/>") +
                         NumericField("<Apply function='length'><FieldRef field='w'/></Apply>"));
    EXPECT_EQ(fields.Score("z", {{"t", "abc"}}), "10");
}

TEST(ApplyConcat, FillsFieldsToTheirWidth) {
    DerivedFields fields(DerivedField("w", kWideField, "<Extension name='width' value='4'/><FieldRef field='t'/>") +
                         TextField("<Apply function='concat'><FieldRef field='w'/><Constant>x</Constant></Apply>"));
    EXPECT_EQ(fields.Score("z", {{"t", "ab"}}), "'ab  x'");
    EXPECT_EQ(fields.Score("z", {{"t", "abcdef"}}), "'abcdx'");
}

TEST(ApplyConcat, FieldsWithoutAWidthAreNeverCut) {
    DerivedFields fields(TextField("<Apply function='concat'><FieldRef field='t'/><Constant>|</Constant></Apply>"));
    EXPECT_EQ(fields.Score("z", {{"t", "ab"}}), "'ab|'");
    EXPECT_EQ(fields.Score("z", {{"t", ""}}), "'|'");
}

TEST(KeptConcat, AFieldWithoutAWidthCountsAsOneLess) {
    DerivedFields lengths(
        NumericField("<Apply function='length'><Apply function='concat'><FieldRef field='t'/><Constant>xyz</Constant>"
                     "</Apply></Apply>"));
    EXPECT_EQ(lengths.Score("z", {{"t", "ab"}}), "2");
    DerivedFields nested(
        TextField("<Apply function='concat'><Apply function='concat'><FieldRef field='t'/><Constant>xyz</Constant>"
                  "</Apply><Constant>|</Constant></Apply>"));
    EXPECT_EQ(nested.Score("z", {{"t", "ab"}}), "'ab|'");
}

TEST(ApplyOnDerived, ReadsTheStoredValueOfAnEarlierField) {
    DerivedFields fields(DerivedField("lagged", "optype='continuous' dataType='double'", "<Lag field='x'/>") +
                         NumericField("<Apply function='+'><FieldRef field='lagged'/><Constant>0</Constant></Apply>"));
    // A lag moves on with each evaluation; the Apply reads what was computed and so doesn't move it again.
    EXPECT_EQ(fields.Score("z", {{"x", "1"}}), "missing");
    EXPECT_EQ(fields.Score("z", {{"x", "2"}}), "1");
    EXPECT_EQ(fields.Score("z", {{"x", "3"}}), "2");
}

TEST(ApplyNodeIds, FollowTheDocument) {
    DerivedFields fields(NumericField("<Apply function='+'><Apply function='abs'><FieldRef field='x'/></Apply>"
                                      "<Constant>1</Constant></Apply>") +
                         DerivedField("w", "optype='continuous' dataType='double'",
                                      "<Apply function='abs'><FieldRef field='x'/></Apply>"));
    std::ostringstream text;
    fields.Var("z").Display(text);
    fields.Var("w").Display(text);
    const std::string display = text.str();
    for (const char* id :
         {"Node ID = 0\n", "Node ID = 1\n", "Node ID = 2\n", "Node ID = 3\n", "Node ID = 4\n", "Node ID = 5\n"}) {
        EXPECT_NE(display.find(id), std::string::npos) << id;
    }
    EXPECT_EQ(display.find("Node ID = 6\n"), std::string::npos);
}

TEST(ApplyCopy, ComputesTheSameWithoutTheOriginal) {
    auto fields = std::make_unique<DerivedFields>(NumericField(
        "<Apply function='sum' mapMissingTo='9'><FieldRef field='x' mapMissingTo='2'/><Constant>1</Constant></Apply>"));
    const std::unique_ptr<MCVeltrane_900::ScoreDictVar> copy(fields->Var("z").Clone());
    const std::unique_ptr<MCVeltrane_900::ScoreDictionary> dictionary(std::move(fields->dictionary));
    fields.reset();
    MCVeltrane_900::CaseRecord record;
    auto& var = static_cast<MCVeltrane_900::TransformVar&>(*copy);
    record.Add("x", new MCVeltrane_900::NumericValue());
    EXPECT_EQ(ToText(var.GetTransformedValue(&record, dictionary.get(), nullptr)), "3");
}

TEST(ApplyArguments, HundredThousandOfThem) {
    std::string apply = "<Apply function='sum'>";
    for (int i = 0; i < 100000; ++i) {
        apply += "<Constant>1</Constant>";
    }
    DerivedFields fields(NumericField(apply + "</Apply>"));
    EXPECT_EQ(fields.Score("z", {{"x", "1"}}), "1e+05");
}

} // namespace
