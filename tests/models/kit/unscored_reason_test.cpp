// What a status tells of a case without a prediction: which field, and whether its value is missing or not allowed.
#include "kit/inputs/unscored_reason.h"
#include "models/kit/scoring.h"
#include "models/kit/small_documents.h"
#include "models/tree/small_tree.h"

#include <MCVeltrane_900/CaseRecord.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/StringValue.h>
#include <MCVeltrane_900/TransformationDictionary.h>

#include <gtest/gtest.h>

using namespace veltrane::tests;
using veltrane_kit::UnscoredReason;

namespace {

/// The reason as a text: "x is missing".
std::string TextOf(const MCScore::MCStatus& status, const ScoreModel& model) {
    const UnscoredReason reason = UnscoredReason::ReadFrom(status);
    if (reason.kind == UnscoredReason::NOT_TOLD || reason.kind == UnscoredReason::NO_PREDICTION) {
        EXPECT_EQ(reason.place, UnscoredReason::kNoPlace);
        return reason.kind == UnscoredReason::NOT_TOLD ? "not told" : "no prediction";
    }
    const std::vector<std::string> names = reason.kind == UnscoredReason::DERIVED
                                               ? model.GetTransformationDictionary()->GetDerivedVarNames()
                                               : model.GetDictionary()->GetVarNames();
    const std::string& name = names.at(static_cast<std::size_t>(reason.place));
    switch (reason.kind) {
    case UnscoredReason::MISSING:
        return name + " is missing";
    case UnscoredReason::INVALID:
        return name + " is invalid";
    default:
        return name + " is derived and missing";
    }
}

/// Why a document's model doesn't score a case, whatever default its target has.
std::string ReasonOf(const std::string& document, const Case& values) {
    Scored scored(document);
    EXPECT_TRUE(scored.Model().SetOption("missingValuePolicy", "noPrediction"));
    const MCScore::MCStatus status = scored.Score(values);
    EXPECT_EQ(status.GetErrorCode(), status.IsError() ? kNoPrediction : 0);
    return TextOf(status, scored.Model());
}

TEST(UnscoredReason, IsNotTold) {
    EXPECT_EQ(ReasonOf(kSmallRegression, {{"x", "2"}, {"z", "3"}, {"c", "a"}}), "not told");
    EXPECT_EQ(UnscoredReason::ReadFrom(MCScore::MCStatus(kNoPrediction, false)).kind, UnscoredReason::NOT_TOLD);
    MCScore::MCStatus other(7, false);
    for (const long datum : {1L, -1L, UnscoredReason::NO_PREDICTION - 1L, UnscoredReason::OTHER_LAYOUT + 1L}) {
        other.SetDiscreteDatum(0, datum);
        EXPECT_EQ(UnscoredReason::ReadFrom(other).kind, UnscoredReason::NOT_TOLD);
    }
}

TEST(UnscoredReason, TravelsInTheStatus) {
    MCScore::MCStatus status(7, false);
    UnscoredReason{UnscoredReason::DERIVED, 5}.WriteTo(status);
    EXPECT_EQ(UnscoredReason::ReadFrom(status).kind, UnscoredReason::DERIVED);
    EXPECT_EQ(UnscoredReason::ReadFrom(status).place, 5);
    EXPECT_EQ(status.GetErrorCode(), 7);
    MCScore::MCStatus warning(7, true);
    UnscoredReason{UnscoredReason::DERIVED, 5}.WriteTo(warning);
    EXPECT_EQ(UnscoredReason::ReadFrom(warning).kind, UnscoredReason::NOT_TOLD);
}

TEST(UnscoredReason, IsAMissingNumberThatARegressionNeeds) {
    EXPECT_EQ(ReasonOf(kSmallRegression, {}), "x is missing");
    EXPECT_EQ(ReasonOf(kSmallRegression, {{"x", "2"}, {"c", "a"}}), "z is missing");
    EXPECT_EQ(ReasonOf(kSmallRegression, {{"x", "2"}, {"z", "3"}}), "not told");
    EXPECT_EQ(ReasonOf(kSmallClassification, {}), "x is missing");
}

TEST(UnscoredReason, IsTheFirstValueThatTheSchemaRefuses) {
    EXPECT_EQ(ReasonOf(kSmallRegression, {{"x", "100"}, {"c", "moon"}}), "x is invalid");
    EXPECT_EQ(ReasonOf(kSmallRegression, {{"x", "2"}, {"z", "3"}, {"c", "moon"}}), "c is invalid");
    EXPECT_EQ(ReasonOf(kSmallRegression, {{"c", "moon"}}), "c is invalid");
}

TEST(UnscoredReason, IsAMissingValueThatTheSchemaRefuses) {
    const std::string document = Replaced(kSmallRegression, "<MiningField name='c'/>",
                                          "<MiningField name='c' missingValueTreatment='returnInvalid'/>");
    EXPECT_EQ(ReasonOf(document, {{"x", "2"}, {"z", "3"}}), "c is missing");
    EXPECT_EQ(ReasonOf(document, {{"x", "2"}, {"z", "3"}, {"c", "  "}}), "c is invalid");
}

TEST(UnscoredReason, IsAValueThatCountsAsMissing) {
    EXPECT_EQ(ReasonOf(WithTreatment("invalidValueTreatment='asMissing'"), {{"x", "100"}, {"z", "3"}}), "x is invalid");
    EXPECT_EQ(ReasonOf(WithTreatment("outliers='asMissingValues' highValue='50'"), {{"x", "51"}, {"z", "3"}}),
              "x is invalid");
    EXPECT_EQ(ReasonOf(WithTreatment("outliers='asMissingValues' highValue='50'"), {{"z", "3"}}), "x is missing");
}

TEST(UnscoredReason, IsAValueOfAnotherKind) {
    Scored scored(WithTreatment(""));
    scored.Model().SetOption("missingValuePolicy", "noPrediction");
    CaseRecord record;
    record.Add("x", new StringValue("two"));
    EXPECT_EQ(TextOf(scored.Model().Score(&record, &scored.Result()), scored.Model()), "x is invalid");
}

TEST(UnscoredReason, IsNoFieldForAResultThatIsNoNumber) {
    const std::string document = Replaced(kSmallRegression, "exponent='2'", "exponent='400'");
    EXPECT_EQ(ReasonOf(Replaced(document, "rightMargin='100'", "rightMargin='1e9'"), {{"x", "1e8"}, {"z", "1"}}),
              "no prediction");
}

TEST(UnscoredReason, IsTheMissingFieldBehindADerivedOne) {
    const std::string document =
        Replaced(Replaced(kSmallClassification, "<NumericPredictor name='x'", "<NumericPredictor name='r'"),
                 "<RegressionModel functionName",
                 "<TransformationDictionary>"
                 "<DerivedField name='l' optype='continuous' dataType='double'><Apply function='ln'><FieldRef "
                 "field='x'/>"
                 "</Apply></DerivedField>"
                 "<DerivedField name='r' optype='continuous' dataType='double'><FieldRef field='l'/></DerivedField>"
                 "</TransformationDictionary><RegressionModel functionName");
    EXPECT_EQ(ReasonOf(document, {{"x", "2"}}), "not told");
    EXPECT_EQ(ReasonOf(document, {}), "x is missing");
    EXPECT_EQ(ReasonOf(document, {{"x", "-1"}}), "r is derived and missing");
}

TEST(UnscoredReason, IsNotTheOneOfTheCaseBefore) {
    Scored scored(kSmallRegression);
    scored.Model().SetOption("missingValuePolicy", "noPrediction");
    EXPECT_EQ(TextOf(scored.Score({{"c", "moon"}}), scored.Model()), "c is invalid");
    EXPECT_EQ(TextOf(scored.Score({{"x", "2"}}), scored.Model()), "z is missing");
    EXPECT_EQ(TextOf(scored.Score({{"x", "2"}, {"z", "3"}}), scored.Model()), "not told");
    EXPECT_EQ(TextOf(scored.Score({}), scored.Model()), "x is missing");
}

/// A tree of x, then c, without any prediction above the leaves.
std::string Tree(const std::string& attributes) {
    return R"(<PMML version='4.3'><DataDictionary>
 <DataField name='y' optype='continuous' dataType='double'/>
 <DataField name='x' optype='continuous' dataType='double'/>
 <DataField name='c' optype='categorical' dataType='string'/>
 <DataField name='d' optype='categorical' dataType='string'/></DataDictionary>
<TreeModel functionName='regression' )" +
           attributes + R"(><MiningSchema><MiningField name='y' usageType='target'/><MiningField name='x'/>
 <MiningField name='c'/><MiningField name='d'/></MiningSchema>
 <Node recordCount='9'><SimplePredicate field='x' operator='lessThan' value='100'/>
  <Node score='1' recordCount='5'><CompoundPredicate booleanOperator='and'>
   <SimplePredicate field='x' operator='greaterThan' value='0'/>
   <SimplePredicate field='c' operator='equal' value='u'/></CompoundPredicate></Node>
  <Node score='2' recordCount='4'><SimplePredicate field='d' operator='equal' value='v'/></Node>
 </Node></TreeModel></PMML>)";
}

TEST(UnscoredReasonOfATree, IsTheFieldThatTheRootAsksFor) {
    EXPECT_EQ(ReasonOf(Tree(""), {{"c", "u"}}), "x is missing");
    EXPECT_EQ(ReasonOf(Tree(""), {{"x", "100"}}), "no prediction");
}

TEST(UnscoredReasonOfATree, IsTheFirstFieldThatWouldHaveDecided) {
    for (const char* strategy : {"none", "nullPrediction", "defaultChild"}) {
        const std::string document = Tree(std::string("missingValueStrategy='") + strategy + "'");
        EXPECT_EQ(ReasonOf(document, {{"x", "1"}, {"d", "w"}}), "c is missing") << strategy;
        EXPECT_EQ(ReasonOf(document, {{"x", "1"}, {"c", "t"}}), "d is missing") << strategy;
        EXPECT_EQ(ReasonOf(document, {{"x", "-1"}}), "d is missing") << strategy;
        EXPECT_EQ(ReasonOf(document, {{"x", "1"}, {"c", "t"}, {"d", "w"}}), "no prediction") << strategy;
        EXPECT_EQ(ReasonOf(document, {{"x", "1"}, {"c", "u"}}), "not told") << strategy;
    }
}

TEST(UnscoredReasonOfATree, IsNoFieldForANodeThatSaysNothing) {
    EXPECT_EQ(ReasonOf(Tree("noTrueChildStrategy='returnLastPrediction'"), {{"x", "1"}, {"c", "t"}, {"d", "w"}}),
              "no prediction");
}

TEST(UnscoredReasonOfATree, IsTheFieldOfSeveralNodesWithoutWeight) {
    std::string document = Tree("missingValueStrategy='weightedConfidence'");
    for (const char* count : {"recordCount='5'", "recordCount='4'"}) {
        document = Replaced(document, count, "recordCount='0'");
    }
    EXPECT_EQ(ReasonOf(document, {{"x", "1"}}), "c is missing");
}

TEST(RecordLayout, OfAnotherOneIsRefusedWhereTheKitLooks) {
#ifdef NDEBUG
    GTEST_SKIP() << "only a debug build looks at the layout of every record";
#else
    Scored scored(kSmallRegression);
    CaseRecord first;
    first.Add("x", new NumericValue(2));
    first.Add("z", new NumericValue(3));
    CaseRecord swapped;
    swapped.Add("z", new NumericValue(3));
    swapped.Add("x", new NumericValue(2));
    ASSERT_TRUE(scored.Model().Score(&first, &scored.Result()).IsOK());
    const MCScore::MCStatus status = scored.Model().Score(&swapped, &scored.Result());
    EXPECT_EQ(status.GetErrorCode(), kNoPrediction);
    EXPECT_EQ(UnscoredReason::ReadFrom(status).kind, UnscoredReason::OTHER_LAYOUT);
    EXPECT_EQ(UnscoredReason::ReadFrom(status).place, 1);
    EXPECT_EQ(scored.Result().GetResultValue(), nullptr);
    EXPECT_TRUE(scored.Model().Score(&first, &scored.Result()).IsOK());
#endif
}

TEST(RecordLayout, OfAnotherOneLeavesNoOutputOfTheCaseBefore) {
#ifdef NDEBUG
    GTEST_SKIP() << "only a debug build looks at the layout of every record";
#else
    Scored scored(Replaced(kSmallRegression, "</Output>",
                           "<OutputField name='r' feature='residual'/><OutputField name='twice' "
                           "feature='transformedValue' dataType='double'><Apply function='+'><FieldRef field='x'/>"
                           "<FieldRef field='x'/></Apply></OutputField></Output>"));
    CaseRecord first;
    first.Add("y", new NumericValue(1));
    first.Add("x", new NumericValue(2));
    first.Add("z", new NumericValue(3));
    CaseRecord swapped;
    swapped.Add("y", new NumericValue(1));
    swapped.Add("z", new NumericValue(3));
    swapped.Add("x", new NumericValue(2));
    ASSERT_TRUE(scored.Model().Score(&first, &scored.Result()).IsOK());
    EXPECT_EQ(scored.Number("twice"), 4);
    EXPECT_NE(scored.Number("r"), kMissing);
    EXPECT_TRUE(scored.Model().Score(&swapped, &scored.Result()).IsError());
    for (const char* output : {"p", "r", "twice"}) {
        EXPECT_EQ(scored.Number(output), kMissing) << output;
    }
#endif
}

} // namespace
