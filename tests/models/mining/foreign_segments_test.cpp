// Segments of a kind that another plug-in knows, by the model list.
#include "models/mining/small_ensemble.h"
#include "support/faults/failure.h"

#include <MCVeltrane_900/CaseRecord.h>
#include <MCVeltrane_900/ModelFactory.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreClsResult.h>
#include <MCVeltrane_900/ScoreResultField.h>
#include <MCVeltrane_900/StringValue.h>

#include <gtest/gtest.h>

#include <sstream>

using namespace veltrane::tests;
using namespace MCVeltrane_900;

namespace {

/// A model read with the list of the tests, which has the plug-in.
class Foreign {
public:
    explicit Foreign(const std::string& document,
                     const std::vector<std::string>& names = {"MiningModel", "TreeModel", "TermModel"}) {
        std::istringstream in(document);
        fModel.reset(ModelFactory::MakeModelFromXML(in, names, "UTF-8"));
        fResult.reset(fModel->CreateResult());
    }

    bool Score(double x, const std::string& c = "a") {
        CaseRecord record;
        record.Add("x", std::make_unique<NumericValue>(x).release());
        record.Add("c", std::make_unique<StringValue>(c).release());
        return fModel->Score(&record, fResult.get()).IsOK();
    }
    double Number() const { return fResult->GetResultValue()->GetDouble(); }
    std::string Text() const { return fResult->GetResultValue()->GetString(); }
    double Probability(const std::string& category) const {
        const StringValue value(category);
        return dynamic_cast<const ScoreClsResult&>(*fResult).GetCategoryProbability(&value);
    }
    double Output(const std::string& name) const {
        return fResult->GetResultFields()->GetResultValue(name)->GetDouble();
    }
    ScoreModel& Model() { return *fModel; }

private:
    std::unique_ptr<ScoreModel> fModel;
    std::unique_ptr<ScoreResult> fResult;
};

std::string Term(const std::string& field, const std::string& factor, const std::string& others = "") {
    return "<TermModel field='" + field + "' factor='" + factor + "' " + others + "/>";
}

const std::string kTwice = "<LocalTransformations><DerivedField name='twice' optype='continuous' dataType='double'>"
                           "<Apply function='*'><FieldRef field='x'/><Constant>2</Constant></Apply></DerivedField>"
                           "</LocalTransformations>";

TEST(ForeignSegments, AreCombinedWithOthers) {
    Foreign model(EnsembleDocument(
        Mining("sum",
               SegmentOf(Term("x", "10")) + SegmentOf(Term("twice", "100")) + SegmentOf(Term("c", "1000")) +
                   SegmentOf("<TreeModel functionName='regression'>" + Schema("y", Fields("x")) +
                             "<Node score='0.5'><True/></Node></TreeModel>"),
               kTwice)));
    ASSERT_TRUE(model.Score(3.0, "b"));
    EXPECT_EQ(model.Number(), 30.0 + 600.0 + 1000.0 + 0.5);
    EXPECT_FALSE(model.Score(3.0, ""));
}

TEST(ForeignSegments, TellTheStandardErrorOfTheirPrediction) {
    Foreign model(EnsembleDocument(Mining("selectFirst", SegmentOf(Term("x", "-16")),
                                          "<Output><OutputField name='error' feature='standardError'/></Output>")));
    ASSERT_TRUE(model.Score(3.0));
    EXPECT_EQ(model.Number(), -48.0);
    EXPECT_EQ(model.Output("error"), 6.0);
}

TEST(ForeignSegments, VoteAndTellProbabilities) {
    Foreign model(
        EnsembleDocument("<MiningModel functionName='classification'>" + Schema("t", Fields("x")) +
                         "<Output><OutputField name='p' feature='probability' value='yes' segmentId='2'/></Output>"
                         "<Segmentation multipleModelMethod='average'>" +
                         SegmentOf(Term("x", "1", "function='classification'")) +
                         SegmentOf(Term("x", "-1", "function='classification'"), "",
                                   "<SimplePredicate field='x' operator='greaterThan' value='5'/>") +
                         "</Segmentation></MiningModel>"));
    ASSERT_TRUE(model.Score(3.0));
    EXPECT_EQ(model.Text(), "yes");
    EXPECT_EQ(model.Probability("yes"), 0.75);
    EXPECT_EQ(model.Output("p"), kMissing);
    ASSERT_TRUE(model.Score(7.0));
    EXPECT_EQ(model.Text(), "no");
    EXPECT_EQ(model.Probability("yes"), 0.5);
    EXPECT_EQ(model.Output("p"), 0.25);
}

TEST(ForeignSegments, SeeWhatSegmentsBeforeThemTell) {
    Foreign model(EnsembleDocument(
        Mining("modelChain", SegmentOf("<TreeModel functionName='regression'>" + Schema("y", Fields("x")) +
                                       "<Output><OutputField name='told' feature='predictedValue'/></Output>"
                                       "<Node score='0.5'><True/></Node></TreeModel>") +
                                 SegmentOf(Term("told", "4")))));
    ASSERT_TRUE(model.Score(3.0));
    EXPECT_EQ(model.Number(), 2.0);
}

TEST(ForeignSegments, SeeEachCaseInItsOrder) {
    Foreign model(EnsembleDocument(
        Mining("selectFirst", SegmentOf("<TreeModel functionName='regression'>" + Schema("y", Fields("x")) +
                                            "<Node score='0.5'><True/></Node></TreeModel>",
                                        "", "<SimplePredicate field='x' operator='greaterThan' value='5'/>") +
                                  SegmentOf(Term("x", "1", "sums='yes'")))));
    ASSERT_TRUE(model.Score(1.0));
    ASSERT_TRUE(model.Score(7.0));
    EXPECT_EQ(model.Number(), 0.5);
    ASSERT_TRUE(model.Score(2.0));
    EXPECT_EQ(model.Number(), 10.0);
}

TEST(ForeignSegments, OfAKindThatTheListDoesNotHaveAreRefused) {
    const std::string document = EnsembleDocument(Mining("sum", SegmentOf(Term("x", "1"))));
    ExpectFailure([&] { Foreign(document, {"MiningModel"}); }, {INVALID_NODE, "TermModel", "Segment"});
    ExpectFailure([&] { Foreign(EnsembleDocument(Mining("sum", SegmentOf("<TextModel/>")))); },
                  {UNSUPPORTED_MODEL, "TextModel"});
}

TEST(ForeignSegments, FailAsTheirPlugInDoes) {
    ExpectFailure([] { Foreign(EnsembleDocument(Mining("sum", SegmentOf(Term("w", "1"))))); },
                  {MISSING_VARIABLE, "w", "DataDictionary"});
    ExpectFailure([] { Foreign(EnsembleDocument(Mining("sum", SegmentOf(Term("x", "1", "none='yes'"))))); },
                  {CANNOT_BUILD_MODEL});
    ExpectFailure([] { Foreign(EnsembleDocument(Mining("sum", SegmentOf(Term("t", "1"))))); },
                  {MISSING_VARIABLE, "t", "MiningSchema"});
    ExpectFailure(
        [] {
            Foreign(EnsembleDocument(Mining("sum", SegmentOf("<GhostModel/>"))), {"MiningModel", "GhostModel"});
        },
        {NO_MODEL_LIBRARY, "GhostModel"});
    ExpectFailure(
        [] { Foreign(EnsembleDocument(Mining("sum", SegmentOf(Term("x", "1", "function='classification'"))))); },
        {CONFLICTING_VALUES_IN, "classification", "functionName", "TermModel", "regression", "functionName",
         "MiningModel"});
}

} // namespace
