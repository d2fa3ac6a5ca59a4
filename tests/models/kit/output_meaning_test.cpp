// What the attributes of output fields and the display values of targets make of a prediction. The answers were worked
// out by hand.
#include "models/kit/scoring.h"
#include "models/kit/small_documents.h"
#include "support/faults/failure.h"
#include "support/rows.h"

#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/ScoreResultField.h>

#include <gtest/gtest.h>

using namespace veltrane::tests;
using namespace MCVeltrane_900;
using enum MCVeltrane_900::Message;

namespace {

/// y = x, with these output fields and Targets.
std::string Number(const std::string& outputs, const std::string& targets = "",
                   const std::string& target = "<DataField name='y' optype='continuous' dataType='double'/>") {
    return "<PMML version='4.4'><DataDictionary>" + target +
           "<DataField name='x' optype='continuous' dataType='double'/></DataDictionary>"
           "<RegressionModel functionName='regression'><MiningSchema><MiningField name='y' usageType='target'/>"
           "<MiningField name='x'/></MiningSchema><Output>" +
           outputs + "</Output>" + targets +
           "<RegressionTable intercept='0'><NumericPredictor name='x' coefficient='1'/></RegressionTable>"
           "</RegressionModel></PMML>";
}

/// The shares 5, 2, 2 and 1 of ten for four categories.
std::string Shares(const std::string& outputs, const std::string& targets = "", const std::string& target = "") {
    const std::string field = target.empty() ? "<DataField name='t' optype='categorical' dataType='string'>"
                                               "<Value value='a' displayValue='A'/><Value value='b'/><Value value='c'/>"
                                               "<Value value='d'/></DataField>"
                                             : target;
    const bool isText = target.empty();
    std::string shares;
    for (const auto& [text, number, count] :
         {std::tuple("a", "1", "5"), {"b", "0.123456789", "2"}, {"c", "3", "2"}, {"d", "4", "1"}}) {
        shares +=
            std::string("<ScoreDistribution value='") + (isText ? text : number) + "' recordCount='" + count + "'/>";
    }
    return "<PMML version='4.4'><DataDictionary>" + field +
           "<DataField name='x' optype='continuous' dataType='double'/></DataDictionary>"
           "<TreeModel functionName='classification'><MiningSchema><MiningField name='t' usageType='target'/>"
           "<MiningField name='x'/></MiningSchema><Output>" +
           outputs + "</Output>" + targets +
           "<Node id='7'><SimplePredicate field='x' operator='greaterThan' value='0'/>" + shares +
           "</Node></TreeModel></PMML>";
}

std::string Field(const std::string& attributes) {
    return "<OutputField name='v' " + attributes + "/>";
}

struct Shown {
    const char* name;
    const char* number;
    const char* text;
};

class DisplayedNumber : public testing::TestWithParam<Shown> {};

TEST_P(DisplayedNumber, HasAllItsDigits) {
    for (const char* attributes : {"feature='predictedDisplayValue'", "dataType='string'"}) {
        Scored scored(Number(Field(attributes)));
        ASSERT_TRUE(scored.Score({{"x", GetParam().number}}).IsOK());
        EXPECT_EQ(scored.Text("v"), GetParam().text) << attributes;
    }
}

constexpr Shown kShown[] = {
    {"third", "0.30000000000000004", "0.30000000000000004"},
    {"whole", "-2", "-2"},
    {"millions", "12345678.5", "12345678.5"},
    {"minusZero", "-0.0", "0"},
    {"roundAndLarge", "100000000000000", "100000000000000"},
    {"larger", "1e16", "1e+16"},
    {"huge", "1.5e300", "1.5e+300"},
    {"small", "0.0001", "0.0001"},
    {"smaller", "0.00001", "1e-05"},
};
INSTANTIATE_TEST_SUITE_P(Numbers, DisplayedNumber, testing::ValuesIn(kShown), NameOfRow());

struct Typed {
    const char* name;
    std::string document;
    const char* x;
    ScoreValue::ValueType kind;
    const char* text; ///< "" for a missing value
};

class TypedOutput : public testing::TestWithParam<Typed> {};

TEST_P(TypedOutput, HasTheTypeThatTheFieldStates) {
    const Typed& row = GetParam();
    Scored scored(row.document);
    ASSERT_TRUE(scored.Score({{"x", row.x}}).IsOK());
    const ScoreValue* value = scored.Result().GetResultFields()->GetResultValue("v");
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->GetType(), row.kind);
    if (*row.text == 0) {
        EXPECT_TRUE(value->IsSystemMissingValue() || value->GetString().empty());
    } else if (row.kind == ScoreValue::NUMERIC_VALUE) {
        EXPECT_EQ(value->GetDouble(), ToNumber(row.text));
    } else {
        EXPECT_EQ(value->GetString(), row.text);
    }
    const bool isText = row.kind == ScoreValue::STRING_VALUE;
    EXPECT_EQ(scored.Model().GetResultDictionary()->GetVar("v")->GetVarType(),
              isText ? ScoreDictVar::STRING_VAR : ScoreDictVar::kNUMERIC_VAR);
}

constexpr auto kText = ScoreValue::STRING_VALUE;
constexpr auto kNumber = ScoreValue::NUMERIC_VALUE;
const std::string kTruths = "<DataField name='t' optype='categorical' dataType='boolean'/>";

std::string Truth(const std::string& attributes) {
    return "<PMML version='4.4'><DataDictionary>" + kTruths +
           "<DataField name='x' optype='continuous' dataType='double'/></DataDictionary>"
           "<TreeModel functionName='classification'><MiningSchema><MiningField name='t' usageType='target'/>"
           "<MiningField name='x'/></MiningSchema><Output>" +
           Field(attributes) + "</Output><Node score='true'><True/></Node></TreeModel></PMML>";
}

const Typed kTyped[] = {
    {"numberAsDouble", Number(Field("dataType='double'")), "2.5", kNumber, "2.5"},
    {"numberAsFloat", Number(Field("dataType='float'")), "2.5", kNumber, "2.5"},
    {"numberAsInteger", Number(Field("dataType='integer'")), "2", kNumber, "2"},
    {"brokenNumberAsInteger", Number(Field("dataType='integer'")), "2.5", kNumber, ""},
    {"numberAsBoolean", Number(Field("dataType='boolean'")), "1", kNumber, "1"},
    {"otherNumberAsBoolean", Number(Field("dataType='boolean'")), "2", kNumber, ""},
    {"numberAsCount", Number(Field("dataType='dateDaysSince[1960]'")), "7.5", kNumber, "7.5"},
    {"displayedAsDouble", Number(Field("feature='predictedDisplayValue' dataType='double'")), "2.5", kNumber, "2.5"},
    {"displayedAsInteger", Number(Field("feature='predictedDisplayValue' dataType='integer'")), "2.5", kNumber, ""},
    {"categoryAsText", Shares(Field("dataType='string'")), "1", kText, "a"},
    {"categoryAsNumber", Shares(Field("dataType='double'")), "1", kNumber, ""},
    {"probabilityAsText", Shares(Field("feature='probability' dataType='string'")), "1", kText, "0.5"},
    {"probabilityAsInteger", Shares(Field("feature='probability' dataType='integer'")), "1", kNumber, ""},
    {"entityAsInteger", Shares(Field("feature='entityId' dataType='integer'")), "1", kNumber, "7"},
    {"truthAsBoolean", Truth("dataType='boolean'"), "1", kText, "true"},
    {"truthAsText", Truth("dataType='string'"), "1", kText, "true"},
    {"otherFeature", Shares(Field("feature='ruleValue' dataType='string'")), "1", kText, ""},
};
INSTANTIATE_TEST_SUITE_P(Types, TypedOutput, testing::ValuesIn(kTyped), NameOfRow());

/// A classification of dates.
std::string Dates(const std::string& attributes) {
    return "<PMML version='4.4'><DataDictionary><DataField name='t' optype='categorical' dataType='date'/>"
           "</DataDictionary><TreeModel functionName='classification'><MiningSchema><MiningField name='t' "
           "usageType='target'/></MiningSchema><Output>" +
           Field(attributes) + "</Output><Node score='2020-02-29'><True/></Node></TreeModel></PMML>";
}

TEST(OutputOfADate, IsADateOrItsText) {
    for (const char* attributes : {"", "dataType='date'"}) {
        Scored scored(Dates(attributes));
        ASSERT_TRUE(scored.Score({}).IsOK());
        EXPECT_EQ(scored.Number("v"), 18321) << attributes;
        const ScoreDictVar* var = scored.Model().GetResultDictionary()->GetVar("v");
        EXPECT_EQ(var->GetVarType(), ScoreDictVar::DATETIME_VAR);
        EXPECT_EQ(var->GetDateTimeType(), ScoreDictVar::DT_DATE);
    }
    for (const char* attributes : {"dataType='string'", "feature='predictedDisplayValue'"}) {
        Scored scored(Dates(attributes));
        scored.Score({});
        EXPECT_EQ(scored.Text("v"), "2020-02-29") << attributes;
    }
    Scored number(Dates("dataType='double'"));
    number.Score({});
    EXPECT_EQ(number.Number("v"), kMissing);
    Scored read(
        Number(Field("feature='predictedDisplayValue' dataType='date'"),
               "<Targets><Target field='y'><TargetValue value='1' displayValue='2020-02-29'/></Target></Targets>"));
    read.Score({{"x", "1"}});
    EXPECT_EQ(read.Number("v"), 18321);
}

TEST(OutputThatIsNotFinal, IsForOtherOutputsAlone) {
    const std::string document =
        Number("<OutputField name='hidden' isFinalResult='false'/><OutputField name='v' feature='transformedValue'>"
               "<Apply function='+'><FieldRef field='hidden'/><Constant>1</Constant></Apply></OutputField>");
    Scored scored(document);
    scored.Score({{"x", "2"}});
    EXPECT_EQ(scored.Number("v"), 3);
    ScoreResultField& fields = *scored.Result().GetResultFields();
    EXPECT_EQ(fields.GetResultFields(), std::vector<std::string>{"v"});
    EXPECT_EQ(fields.GetMapResultValue().count("hidden"), 0U);
    EXPECT_EQ(scored.Model().GetResultDictionary()->GetVarNames(), std::vector<std::string>{"v"});

    const std::unique_ptr<ScoreValue> old(const_cast<ScoreValue*>(fields.GetResultValue("v")));
    fields.SetMapResultValue({{"v", new NumericValue(0)}});
    scored.Score({{"x", "5"}});
    EXPECT_EQ(scored.Number("v"), 6);
    EXPECT_EQ(fields.GetResultSize(), 1);
}

TEST(OutputThatIsNotFinal, HasItsValueForWhoAsksForIt) {
    Scored scored(Number("<OutputField name='hidden' isFinalResult='false'/><OutputField name='shown'/>"));
    const ScoreResultField& fields = *scored.Result().GetResultFields();
    ASSERT_NE(fields.GetResultValue("hidden"), nullptr);
    EXPECT_TRUE(fields.GetResultValue("hidden")->IsSystemMissingValue());
    scored.Score({{"x", "2"}});
    EXPECT_EQ(scored.Number("hidden"), 2);
    EXPECT_EQ(scored.Number("shown"), 2);
    EXPECT_EQ(fields.GetResultSize(), 1);
    EXPECT_EQ(fields.GetResultValue("none"), nullptr);
}

TEST(OutputThatIsNotFinal, LeavesNoDictionaryWhereThereIsNoOther) {
    Scored scored(Number(Field("isFinalResult='0'")));
    EXPECT_TRUE(scored.Score({{"x", "2"}}).IsOK());
    EXPECT_EQ(scored.Model().GetResultDictionary(), nullptr);
    EXPECT_EQ(scored.Result().GetResultFields()->GetResultSize(), 0);
}

struct Ranked {
    const char* name;
    const char* attributes;
    const char* text; ///< "" for a missing value
};

class RankedOutput : public testing::TestWithParam<Ranked> {};

TEST_P(RankedOutput, GoesByTheProbabilities) {
    Scored scored(Shares(Field(GetParam().attributes)));
    scored.Score({{"x", "1"}});
    const ScoreValue& value = *scored.Result().GetResultFields()->GetResultValue("v");
    EXPECT_EQ(value.IsSystemMissingValue() ? "" : value.GetString(), GetParam().text);
}

constexpr Ranked kRanked[] = {
    {"first", "rank='1'", "a"},
    {"second", "rank='2'", "b"},
    {"thirdOfEqualProbability", "rank='3'", "c"},
    {"last", "rank='4'", "d"},
    {"none", "rank='5'", ""},
    {"probability", "feature='probability' rank='2'", "0.2"},
    {"confidence", "feature='confidence' rank='4'", "0.1"},
    {"probabilityOfACategory", "feature='probability' rank='4' value='a'", "0.5"},
    {"noProbability", "feature='probability' rank='5'", ""},
    {"firstLabel", "feature='predictedDisplayValue' rank='1'", "A"},
    {"secondLabel", "feature='predictedDisplayValue' rank='2'", "b"},
    {"entity", "feature='entityId' rank='1'", "7"},
    {"secondEntity", "feature='entityId' rank='2'", ""},
};
INSTANTIATE_TEST_SUITE_P(Places, RankedOutput, testing::ValuesIn(kRanked), NameOfRow());

TEST(RankedOutput, OfANumberIsTheFirstAlone) {
    Scored scored(Number("<OutputField name='v' rank='1'/><OutputField name='w' rank='2'/>"));
    scored.Score({{"x", "3"}});
    EXPECT_EQ(scored.Number("v"), 3);
    EXPECT_EQ(scored.Number("w"), kMissing);
}

// The score of a node goes before the probabilities, and the most probable category comes next then.
TEST(RankedOutput, BeginsWithThePredictedOne) {
    Scored scored(Replaced(Shares("<OutputField name='v'/><OutputField name='w' rank='2'/>"), "<Node id='7'>",
                           "<Node id='7' score='d'>"));
    scored.Score({{"x", "1"}});
    EXPECT_EQ(scored.Text("v"), "d");
    EXPECT_EQ(scored.Text("w"), "a");
}

TEST(OutputOfATarget, IsThatOfTheModelsOwnAlone) {
    const char* const fields = "<OutputField name='v' targetField='y'/><OutputField name='w' targetField='x'/>";
    Scored scored(Number(fields));
    scored.Score({{"x", "3"}});
    EXPECT_EQ(scored.Number("v"), 3);
    EXPECT_EQ(scored.Number("w"), kMissing);
    Scored own(Replaced(Number(fields), "<MiningField name='y' usageType='target'/>", ""));
    own.Score({{"x", "3"}});
    EXPECT_EQ(own.Number("v"), 3);
    EXPECT_EQ(own.Number("w"), 3);
}

TEST(OutputOfASegment, IsMissingInAModelWithoutSegments) {
    Scored scored(Number(Field("segmentId='1'")));
    scored.Score({{"x", "3"}});
    EXPECT_EQ(scored.Number("v"), kMissing);
}

TEST(DisplayValue, OfATargetGoesBeforeThatOfTheDictionary) {
    Scored scored(Shares(Field("feature='predictedDisplayValue'"),
                         "<Targets><Target field='t'><TargetValue value='b'/>"
                         "<TargetValue value='a' displayValue='the first'/></Target></Targets>"));
    scored.Score({{"x", "1"}});
    EXPECT_EQ(scored.Text("v"), "the first");
}

TEST(DisplayValue, OfANumberIsThatOfItsTargetValue) {
    Scored scored(Number(Field("feature='predictedDisplayValue'"),
                         "<Targets><Target field='y'><TargetValue value='1' displayValue='one'/></Target></Targets>"));
    scored.Score({{"x", "1"}});
    EXPECT_EQ(scored.Text("v"), "one");
    scored.Score({{"x", "2.0000001"}});
    EXPECT_EQ(scored.Text("v"), "2.0000001");
    scored.Score({});
    EXPECT_EQ(scored.Text("v"), "");
}

TEST(DisplayValue, OfACategoryThatIsANumberHasAllItsDigits) {
    Scored scored(Shares("<OutputField name='v' feature='predictedDisplayValue' rank='2'/>", "",
                         "<DataField name='t' optype='categorical' dataType='double'/>"));
    scored.Score({{"x", "1"}});
    EXPECT_EQ(scored.Text("v"), "0.123456789");
}

TEST(Priors, ACategoryWithoutOneHasNoShare) {
    Scored scored(Shares("<OutputField name='a' feature='probability' value='a'/>"
                         "<OutputField name='b' feature='probability' value='b'/><OutputField name='v'/>",
                         "<Targets><Target field='t'><TargetValue value='b' priorProbability='0.75'/></Target>"
                         "</Targets>"));
    scored.Score({{"x", "-1"}});
    EXPECT_EQ(scored.Text("v"), "b");
    EXPECT_EQ(scored.Number("b"), 0.75);
    EXPECT_EQ(scored.Number("a"), 0);
}

TEST(DefaultValue, IsTheFirstThatThereIs) {
    Scored scored(Number(Field(""),
                         "<Targets><Target field='y'><TargetValue value='1' displayValue='one'/>"
                         "<TargetValue defaultValue='7'/><TargetValue defaultValue='8'/></Target></Targets>"));
    scored.Score({});
    EXPECT_EQ(scored.Number(), 7);
}

// Only the dictionary lists all categories of a field.
TEST(TargetValues, NeedNotBeAllCategories) {
    const std::string document = Shares(Field("feature='predictedDisplayValue'"),
                                        "<Targets><Target field='t'><TargetValue value='d' displayValue='the last' "
                                        "priorProbability='0.5'/></Target></Targets>");
    const std::string listed =
        "<Value value='a' displayValue='A'/><Value value='b'/><Value value='c'/><Value value='d'/>";
    Scored scored(Replaced(document, listed, ""));
    scored.Score({{"x", "1"}});
    EXPECT_EQ(scored.Text("v"), "a");
    scored.Score({{"x", "-1"}});
    EXPECT_EQ(scored.Text(), "d");
    EXPECT_EQ(scored.Text("v"), "the last");
}

TEST(TargetLevel, OverridesThatOfTheField) {
    const std::string document =
        Number(Field(""), "<Targets><Target field='y' optype='continuous' rescaleFactor='2'/></Targets>",
               "<DataField name='y' optype='categorical' dataType='integer'/>");
    Scored scored(document);
    scored.Score({{"x", "3"}});
    EXPECT_EQ(scored.Number(), 6);
}

// The links of an ordinal target are cumulative: 1/4, 1/2.
TEST(TargetLevel, MakesLinksCumulative) {
    const std::string tables = "<RegressionTable targetCategory='a' intercept='-1'/><RegressionTable "
                               "targetCategory='b' intercept='0'/><RegressionTable targetCategory='c' intercept='0'/>";
    Scored scored("<PMML version='4.4'><DataDictionary><DataField name='t' optype='categorical' dataType='string'>"
                  "<Value value='a'/><Value value='b'/><Value value='c'/></DataField></DataDictionary>"
                  "<RegressionModel functionName='classification' normalizationMethod='cauchit'><MiningSchema>"
                  "<MiningField name='t' usageType='target'/></MiningSchema>"
                  "<Targets><Target field='t' optype='ordinal'/></Targets>" +
                  tables + "</RegressionModel></PMML>");
    scored.Score({});
    EXPECT_EQ(scored.Probability("a"), 0.25);
    EXPECT_EQ(scored.Probability("b"), 0.25);
    EXPECT_EQ(scored.Probability("c"), 0.5);
}

std::string OfColors(const std::string& content) {
    return Shares("", "<Targets><Target field='t'" + content + "</Target></Targets>");
}

class MeaninglessDocument : public testing::TestWithParam<Fault> {};

TEST_P(MeaninglessDocument, IsRefused) {
    ExpectFailure([] { ReadModel(GetParam().document); }, GetParam().failure);
}

const Fault kFaults[] = {
    {"priorAboveOne", OfColors("><TargetValue value='a' priorProbability='1.5'/>"),
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "1.5", "priorProbability", "TargetValue")},
    {"negativePrior", OfColors("><TargetValue value='a' priorProbability='-0.5'/>"),
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "-0.5", "priorProbability", "TargetValue")},
    {"unlistedCategory", OfColors("><TargetValue value='pink' priorProbability='0.5'/>"),
     Failure(VALUE_TARGET_MISMATCH, "pink", "value", "TargetValue", "t", "DataDictionary")},
    {"levelOfAText", OfColors(" optype='continuous'>"),
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "continuous", "optype", "Target")},
    {"minAboveMax", Number("", "<Targets><Target field='y' min='5' max='1'/></Targets>"),
     Failure(VALUE_ABOVE_OTHER, "5", "min", "1", "max", "Target")},
    {"minAboveMaxOfAnOwnTarget",
     Replaced(Number("", "<Targets><Target min='5' max='1'/></Targets>"), "<MiningField name='y' usageType='target'/>",
              ""),
     Failure(VALUE_ABOVE_OTHER, "5", "min", "1", "max", "Target")},
    {"rankOfZero", Number(Field("rank='0'")), Failure(INVALID_ATTRIBUTE_VALUE_IN, "0", "rank", "OutputField")},
    {"rankThatIsNoNumber", Number(Field("rank='first'")),
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "first", "rank", "OutputField")},
    {"unknownTarget", Number(Field("targetField='w'")),
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "w", "targetField", "OutputField")},
    {"emptyTarget", Number(Field("targetField=''")), Failure(NULL_ATTRIBUTE, "targetField", "OutputField")},
    {"unknownType", Number(Field("dataType='real'")),
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "real", "dataType", "OutputField")},
    {"finalOrNot", Number(Field("isFinalResult='maybe'")),
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "maybe", "isFinalResult", "OutputField")},
};
INSTANTIATE_TEST_SUITE_P(TargetsAndOutputs, MeaninglessDocument, testing::ValuesIn(kFaults), NameOfRow());

} // namespace
