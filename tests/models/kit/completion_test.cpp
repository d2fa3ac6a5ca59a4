// What producers write and the library's readers refuse or read otherwise.
#include "models/kit/scoring.h"
#include "models/kit/small_documents.h"
#include "support/faults/failure.h"

#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/ScoreMissingValueSet.h>
#include <MCVeltrane_900/TransformationDictionary.h>

#include <gtest/gtest.h>

using namespace veltrane::tests;

namespace {

/// A regression that gives one derived field as it is.
std::string DerivedDocument(const std::string& dataFields, const std::string& schema, const std::string& derived,
                            const std::string& predictor = "<NumericPredictor name='d' coefficient='1'/>") {
    return "<PMML version='4.3'><DataDictionary><DataField name='y' optype='continuous' dataType='double'/>" +
           dataFields + "</DataDictionary><RegressionModel functionName='regression'><MiningSchema>" +
           "<MiningField name='y' usageType='target'/>" + schema + "</MiningSchema><LocalTransformations>" + derived +
           "</LocalTransformations><RegressionTable intercept='0'>" + predictor +
           "</RegressionTable></RegressionModel></PMML>";
}

const char* const kColour = "<DataField name='c' optype='categorical' dataType='string'><Value value='red'/>"
                            "<Value value='blue'/></DataField>";
const char* const kGrade = "<DataField name='g' optype='categorical' dataType='integer'><Value value='1'/>"
                           "<Value value='2'/></DataField>";
const char* const kFlag = "<DataField name='f' optype='categorical' dataType='boolean'/>";

std::string DerivedField(const std::string& expression,
                         const std::string& type = "dataType='double' optype='continuous'",
                         const std::string& name = "d") {
    return "<DerivedField name='" + name + "' " + type + ">" + expression + "</DerivedField>";
}

double Answer(Scored& scored, const Case& row) {
    scored.Score(row);
    return scored.Number();
}

TEST(FieldCount, IsFilledInWhereThereIsNone) {
    Scored scored(Replaced(kSmallRegression, "<DataDictionary numberOfFields='4'>", "<DataDictionary>"));
    EXPECT_EQ(scored.Model().GetDictionary()->Size(), 4);
}

TEST(FieldCount, StaysWhereThereIsOne) {
    ExpectFailure([] { ReadModel(Replaced(kSmallRegression, "numberOfFields='4'", "numberOfFields='5'")); },
                  {NUMBER_MISMATCH, "5", "numberOfFields", "4", "DataField", "DataDictionary"});
    ExpectFailure([] { ReadModel(Replaced(kSmallRegression, "numberOfFields='4'", "numberOfFields=''")); },
                  {NULL_ATTRIBUTE, "numberOfFields", "DataDictionary"});
}

TEST(Taxonomy, IsDropped) {
    Scored scored(Replaced(kSmallRegression, "<DataDictionary numberOfFields='4'>",
                           "<DataDictionary numberOfFields='4'><Taxonomy name='t'/>"));
    EXPECT_EQ(scored.Model().GetDictionary()->Size(), 4);
}

TEST(Interval, IsNoMatterOfTheDictionary) {
    Scored scored(kSmallRegression);
    EXPECT_EQ(scored.Model().GetDictionary()->GetVar("x")->GetMissingValues(), nullptr);
}

TEST(Interval, InACategoricalFieldStaysAFault) {
    ExpectFailure(
        [] {
            ReadModel(Replaced(kSmallRegression, "<Value value='a'/>",
                               "<Interval closure='openOpen' leftMargin='1'/><Value value='a'/>"));
        },
        {UNEXPECTED_VALUE, "Interval", "Extension, Value"});
}

TEST(NormDiscrete, IsTheIndicatorOfTheCase) {
    Scored scored(
        DerivedDocument(kColour, "<MiningField name='c'/>", DerivedField("<NormDiscrete field='c' value='red'/>")));
    EXPECT_EQ(Answer(scored, {{"c", "red"}}), 1);
    EXPECT_EQ(Answer(scored, {{"c", "blue"}}), 0);
    EXPECT_FALSE(scored.Score({{"c", "red  "}}).IsOK()) << "blanks make another text, which is not listed";
}

TEST(NormDiscrete, OfAMissingValueIsMissing) {
    Scored scored(
        DerivedDocument(kColour, "<MiningField name='c'/>", DerivedField("<NormDiscrete field='c' value='red'/>")));
    EXPECT_FALSE(scored.Score({}).IsOK());
    EXPECT_EQ(scored.Number(), kMissing);
    EXPECT_EQ(Answer(scored, {{"c", "red"}}), 1);
}

TEST(NormDiscrete, OfAMissingValueCanBeANumber) {
    Scored scored(DerivedDocument(kColour, "<MiningField name='c'/>",
                                  DerivedField("<NormDiscrete field='c' value='red' mapMissingTo='0.5'/>")));
    EXPECT_EQ(Answer(scored, {}), 0.5);
    EXPECT_EQ(Answer(scored, {{"c", "red"}}), 1);
    EXPECT_EQ(Answer(scored, {{"c", "blue"}}), 0);
}

TEST(NormDiscrete, IndicatesNumbersToo) {
    Scored scored(DerivedDocument(kGrade, "<MiningField name='g'/>",
                                  DerivedField("<NormDiscrete field='g' value='2' mapMissingTo='-1'/>")));
    EXPECT_EQ(Answer(scored, {{"g", "2"}}), 1);
    EXPECT_EQ(Answer(scored, {{"g", "1"}}), 0);
    EXPECT_EQ(Answer(scored, {}), -1);
}

TEST(NormDiscrete, IndicatesDerivedTexts) {
    Scored scored(
        DerivedDocument(kColour, "<MiningField name='c'/>",
                        DerivedField("<FieldRef field='c'/>", "dataType='string' optype='categorical'", "copy") +
                            DerivedField("<NormDiscrete field='copy' value='red'/>")));
    EXPECT_EQ(Answer(scored, {{"c", "red"}}), 1);
    EXPECT_EQ(Answer(scored, {{"c", "blue"}}), 0);
}

TEST(NormDiscrete, WithoutAValueStaysAFault) {
    ExpectFailure(
        [] {
            ReadModel(DerivedDocument(kColour, "<MiningField name='c'/>", DerivedField("<NormDiscrete field='c'/>")));
        },
        {MISSING_ATTRIBUTE_OF, "value", "NormDiscrete"});
}

TEST(BooleanField, IsATextOfTwoCategories) {
    Scored scored(DerivedDocument(kFlag, "<MiningField name='f'/>", "",
                                  "<CategoricalPredictor name='f' value='true' coefficient='5'/>"));
    EXPECT_EQ(scored.Model().GetDictionary()->GetVar("f")->GetVarType(), ScoreDictVar::STRING_VAR);
    EXPECT_EQ(scored.Model().GetDictionary()->GetVar("f")->GetNumberOfCats(), 2);
    EXPECT_EQ(Answer(scored, {{"f", "true"}}), 5);
    EXPECT_EQ(Answer(scored, {{"f", "false"}}), 0);
    EXPECT_FALSE(scored.Score({{"f", "maybe"}}).IsOK());
}

TEST(BooleanField, ThatIsContinuousIsCategorical) {
    Scored scored(DerivedDocument("<DataField name='f' optype='continuous' dataType='boolean'/>",
                                  "<MiningField name='f'/>", "",
                                  "<CategoricalPredictor name='f' value='true' coefficient='5'/>"));
    EXPECT_EQ(Answer(scored, {{"f", "true"}}), 5);
}

TEST(BooleanField, IsACondition) {
    const char* const kChoice = "<Constant dataType='double'>3</Constant><Constant dataType='double'>4</Constant>";
    Scored scored(DerivedDocument(
        kFlag, "<MiningField name='f'/>",
        DerivedField("<Apply function='if'><FieldRef field='f'/>" + std::string(kChoice) + "</Apply>")));
    EXPECT_EQ(Answer(scored, {{"f", "true"}}), 3);
    EXPECT_EQ(Answer(scored, {{"f", "false"}}), 4);
}

TEST(BooleanField, IsComparedWithABooleanConstant) {
    Scored scored(DerivedDocument(kFlag, "<MiningField name='f'/>",
                                  DerivedField("<Apply function='equal'><FieldRef field='f'/>"
                                               "<Constant dataType='boolean'>true</Constant></Apply>")));
    EXPECT_EQ(Answer(scored, {{"f", "true"}}), 1);
    EXPECT_EQ(Answer(scored, {{"f", "false"}}), 0);
}

TEST(BooleanField, HasAnOrderAsANumber) {
    const auto compared = [](const char* function, const char* constant, const std::string& field = kFlag) {
        return DerivedDocument(field, "<MiningField name='f'/>",
                               DerivedField(std::string("<Apply function='") + function + "'><FieldRef field='f'/>" +
                                            constant + "</Apply>"));
    };
    Scored less(compared("lessThan", "<Constant>0.5</Constant>"));
    EXPECT_EQ(Answer(less, {{"f", "false"}}), 1);
    EXPECT_EQ(Answer(less, {{"f", "true"}}), 0);
    Scored atLeast(compared("greaterOrEqual", "<Constant dataType='boolean'>true</Constant>"));
    EXPECT_EQ(Answer(atLeast, {{"f", "false"}}), 0);
    EXPECT_EQ(Answer(atLeast, {{"f", "true"}}), 1);
    Scored listed(compared("greaterThan", "<Constant>0.5</Constant>",
                           "<DataField name='f' optype='categorical' dataType='boolean'><Value value='FALSE'/>"
                           "<Value value='TRUE'/></DataField>"));
    EXPECT_EQ(Answer(listed, {{"f", "FALSE"}}), 0);
    EXPECT_EQ(Answer(listed, {{"f", "TRUE"}}), 1);
}

TEST(BooleanField, ThatIsMissingIsReplacedInAnOrder) {
    for (const auto& [replacement, answer] : {std::pair("true", 0.0), std::pair("false", 1.0)}) {
        Scored scored(DerivedDocument(kFlag, "<MiningField name='f'/>",
                                      DerivedField("<Apply function='lessThan'><FieldRef field='f' mapMissingTo='" +
                                                   std::string(replacement) + "'/><Constant>0.5</Constant></Apply>")));
        EXPECT_EQ(Answer(scored, {}), answer) << replacement;
    }
}

TEST(BooleanField, IsAConditionInItsOwnSpelling) {
    const char* const kChoice = "<Constant dataType='double'>3</Constant><Constant dataType='double'>4</Constant>";
    Scored scored(DerivedDocument(
        "<DataField name='f' optype='categorical' dataType='boolean'><Value value='FALSE'/><Value "
        "value='TRUE'/></DataField>",
        "<MiningField name='f'/>",
        DerivedField("<FieldRef field='f'/>", "dataType='boolean' optype='categorical'", "same") +
            DerivedField("<Apply function='if'><FieldRef field='same'/>" + std::string(kChoice) + "</Apply>")));
    EXPECT_EQ(Answer(scored, {{"f", "TRUE"}}), 3);
    EXPECT_EQ(Answer(scored, {{"f", "FALSE"}}), 4);
}

TEST(BooleanDerivedField, OfAFunctionHasBothCategories) {
    Scored scored(
        DerivedDocument(kColour, "<MiningField name='c'/>",
                        DerivedField("<Apply function='equal'><FieldRef field='c'/><Constant>red</Constant></Apply>",
                                     "dataType='boolean' optype='categorical'"),
                        "<CategoricalPredictor name='d' value='true' coefficient='5'/>"
                        "<CategoricalPredictor name='d' value='false' coefficient='6'/>"));
    EXPECT_EQ(Answer(scored, {{"c", "red"}}), 5);
    EXPECT_EQ(Answer(scored, {{"c", "blue"}}), 6);
}

TEST(BooleanDerivedField, OfABooleanFieldIsItsText) {
    Scored scored(DerivedDocument(kFlag, "<MiningField name='f'/>",
                                  DerivedField("<FieldRef field='f'/>", "dataType='boolean' optype='categorical'"),
                                  "<CategoricalPredictor name='d' value='true' coefficient='5'/>"));
    EXPECT_EQ(Answer(scored, {{"f", "true"}}), 5);
    EXPECT_EQ(Answer(scored, {{"f", "false"}}), 0);
    EXPECT_EQ(Answer(scored, {}), 0);
}

TEST(BooleanConstant, IsANumberElsewhere) {
    Scored scored(DerivedDocument(kGrade, "<MiningField name='g'/>",
                                  DerivedField("<Apply function='+'><FieldRef field='g'/>"
                                               "<Constant dataType='boolean'>true</Constant></Apply>")));
    EXPECT_EQ(Answer(scored, {{"g", "2"}}), 3);
}

TEST(Constant, WithoutATypeIsATextUnlessItIsANumber) {
    Scored scored(DerivedDocument(
        std::string(kColour) + kGrade, "<MiningField name='c'/><MiningField name='g'/>",
        DerivedField("<Apply function='if'><Apply function='equal'><FieldRef field='c'/><Constant>blue</Constant>"
                     "</Apply><Constant>7</Constant><FieldRef field='g'/></Apply>")));
    EXPECT_EQ(Answer(scored, {{"c", "blue"}, {"g", "2"}}), 7);
    EXPECT_EQ(Answer(scored, {{"c", "red"}, {"g", "2"}}), 2);
}

TEST(EmptyText, IsMissingInExpressions) {
    Scored scored(DerivedDocument(kColour, "<MiningField name='c'/>",
                                  DerivedField("<Apply function='isMissing'><FieldRef field='c'/></Apply>")));
    EXPECT_EQ(Answer(scored, {{"c", "red"}}), 0);
    EXPECT_EQ(Answer(scored, {}), 1);
}

TEST(DerivedFields, OfBothPlacesComeTogether) {
    std::string document =
        DerivedDocument(kGrade, "<MiningField name='g'/>",
                        DerivedField("<Apply function='*'><FieldRef field='common'/><Constant>2</Constant></Apply>"));
    document = Replaced(document, "</DataDictionary>",
                        "</DataDictionary><TransformationDictionary><DefineFunction name='unused'>"
                        "<ParameterField name='p'/><FieldRef field='p'/></DefineFunction>" +
                            DerivedField("<Apply function='+'><FieldRef field='g'/><Constant>10</Constant></Apply>",
                                         "dataType='double' optype='continuous'", "common") +
                            "</TransformationDictionary>");
    Scored scored(document);
    EXPECT_EQ(Answer(scored, {{"g", "2"}}), 24);
    EXPECT_EQ(scored.Model().GetTransformationDictionary()->GetDerivedVarNames(),
              (std::vector<std::string>{"common", "d"}));
}

TEST(DerivedFields, SeeTheTreatedValues) {
    Scored scored(DerivedDocument("<DataField name='x' optype='continuous' dataType='double'/>",
                                  "<MiningField name='x' missingValueReplacement='3' outliers='asExtremeValues' "
                                  "highValue='10'/>",
                                  DerivedField("<FieldRef field='x'/>")));
    EXPECT_EQ(Answer(scored, {}), 3);
    EXPECT_EQ(Answer(scored, {{"x", "11"}}), 10);
    EXPECT_EQ(Answer(scored, {{"x", "9"}}), 9);
}

TEST(DerivedFields, SeeNoFieldThatTheSchemaDoesNotMakeActive) {
    ExpectFailure([] { ReadModel(DerivedDocument(kGrade, "", DerivedField("<FieldRef field='g'/>"))); },
                  {NO_PREDICTOR, "g"});
}

TEST(DerivedFields, CountACaseThatIsRefused) {
    Scored scored(DerivedDocument("<DataField name='x' optype='continuous' dataType='double'>"
                                  "<Interval closure='closedClosed' leftMargin='0' rightMargin='9'/></DataField>",
                                  "<MiningField name='x'/>", DerivedField("<Lag field='x' n='2'/>")));
    EXPECT_FALSE(scored.Score({{"x", "1"}}).IsOK());
    EXPECT_FALSE(scored.Score({{"x", "10"}}).IsOK());
    EXPECT_EQ(Answer(scored, {{"x", "3"}}), 1);
    EXPECT_FALSE(scored.Score({{"x", "4"}}).IsOK()) << "the value before is the refused one";
    EXPECT_EQ(Answer(scored, {{"x", "5"}}), 3);
}

TEST(Target, WithoutAFieldOrALevelIsTheModelsTarget) {
    Scored scored(Replaced(kSmallRegression, "<Target field='y' optype='continuous'", "<Target"));
    ASSERT_TRUE(scored.Score({}).IsOK());
    EXPECT_EQ(scored.Number(), -7);
}

TEST(Root, HasToBeOfThisFormat) {
    ExpectFailure([] { ReadModel("<kord-ml><RegressionModel/></kord-ml>"); }, {INVALID_TOP_ELEMENT, "kord-ml", "PMML"});
}

} // namespace
