// What neighbours predict where the standard leaves it open, and how their documents are read.
#include "models/columns/hostile_rows.h"
#include "models/columns/model_rows.h"
#include "models/kit/answers.h"
#include "models/mining/small_ensemble.h"
#include "models/neighbours/small_neighbours.h"
#include "support/faults/failure.h"
#include "support/folders.h"

#include <gtest/gtest.h>

#include <random>
#include <sstream>

using namespace veltrane::tests;

namespace {

/// The small document without what is said of a target.
std::string WithoutTarget(std::string document, const std::string& name) {
    return Replaced(std::move(document), "<MiningField name='" + name + "' usageType='target'/>", "");
}

TEST(Neighbours, OfEquallyNearOnesTakeTheFirstInTheDocument) {
    Scored scored(kSmallNeighbours);
    ASSERT_TRUE(scored.Score({{"x", "2"}, {"k", "u"}}).IsOK());
    EXPECT_EQ(scored.Text("near"), "two");
    EXPECT_EQ(scored.Text("next"), "one") << "three is as near";
    EXPECT_EQ(scored.Number("number"), 1.5);
    EXPECT_EQ(scored.Number("far"), 6.25);
}

TEST(Neighbours, EqualVotesGoToTheMoreFrequentCategoryThenToTheLower) {
    Scored equal(kSmallNeighbours);
    ASSERT_TRUE(equal.Score({{"x", "1"}, {"k", "u"}}).IsOK());
    EXPECT_EQ(equal.Text(), "a") << "both categories have two instances";
    Scored frequent(Replaced(kSmallNeighbours, "<c2>a</c2><c3>8</c3>", "<c2>b</c2><c3>8</c3>"));
    ASSERT_TRUE(frequent.Score({{"x", "1"}, {"k", "u"}}).IsOK());
    EXPECT_EQ(frequent.Text(), "b");
}

TEST(Neighbours, WithoutATargetHaveNoSayInIt) {
    Scored scored(Replaced(kSmallNeighbours, "<c3>2</c3>", ""));
    ASSERT_TRUE(scored.Score({{"x", "1"}, {"k", "u"}}).IsOK());
    EXPECT_EQ(scored.Number("number"), 1.0);
    Scored none(Replaced(kSmallNeighbours, "<c2>b</c2><c3>2</c3>", "<c3>2</c3>"));
    ASSERT_TRUE(none.Score({{"x", "1"}, {"k", "u"}}).IsOK());
    EXPECT_EQ(none.Text(), "a");
}

TEST(Neighbours, WhoseWeightIsBelowZeroHaveNoSay) {
    std::string document = Replaced(kSmallNeighbours, "'majorityVote'", "'weightedMajorityVote'");
    document = Replaced(Replaced(document, "'average'", "'weightedAverage'"), "numberOfNeighbors='2'",
                        "numberOfNeighbors='4'");
    document = Replaced(Replaced(document, "kind='distance'", "kind='similarity'"), "<Array type='real'>0 1</Array>",
                        "<Array type='real'>-20 1</Array>");
    document = Replaced(document, "<OutputField name='next'",
                        "<OutputField name='p' feature='probability' value='a'/>"
                        "<OutputField name='next'");
    Scored scored(document);
    ASSERT_TRUE(scored.Score({{"x", "0"}, {"k", "u"}}).IsOK());
    EXPECT_EQ(scored.Number("far"), 8.25) << "the others are at -1, -3 and -5";
    EXPECT_EQ(scored.Text(), "a");
    EXPECT_EQ(scored.Number("p"), 1.0);
    EXPECT_EQ(scored.Number("number"), 8.0);
}

TEST(Neighbours, WithoutAnythingInCommonHaveNoPrediction) {
    Scored scored(kSmallNeighbours);
    EXPECT_EQ(scored.Score({}).GetErrorCode(), kNoPrediction);
    EXPECT_EQ(scored.Text("near"), "");
    EXPECT_EQ(scored.Number("far"), kMissing);
    ASSERT_TRUE(scored.Score({{"k", "v"}}).IsOK()) << "the others count for what is missing";
    EXPECT_EQ(scored.Text("near"), "four");
}

TEST(Neighbours, AreNotFoundWhereDistancesOverflow) {
    const std::string document = Replaced(kSmallNeighbours, "<minkowski p-parameter='1'/>", "<squaredEuclidean/>");
    Scored scored(document);
    EXPECT_EQ(scored.Score({{"x", "1e200"}, {"k", "u"}}).GetErrorCode(), kNoPrediction);
    ASSERT_TRUE(scored.Score({{"x", "9"}, {"k", "v"}}).IsOK());
    EXPECT_EQ(scored.Text("near"), "four");
}

TEST(Neighbours, OfMeansThatOverflowHaveNoPrediction) {
    const std::string document = Replaced(WithoutTarget(Replaced(kSmallNeighbours, "'mixed'", "'regression'"), "t"),
                                          "<c3>1</c3>", "<c3>1.7e308</c3>");
    Scored scored(Replaced(document, "<c3>2</c3>", "<c3>1.7e308</c3>"));
    EXPECT_EQ(scored.Score({{"x", "1"}, {"k", "u"}}).GetErrorCode(), kNoPrediction);
    EXPECT_EQ(scored.Number(), kMissing);
    ASSERT_TRUE(scored.Score({{"x", "8"}, {"k", "u"}}).IsOK());
    EXPECT_EQ(scored.Number(), 6.0);
}

TEST(Neighbours, AreCalledByTheirPlaceWhereNoFieldNamesThem) {
    Scored scored(Replaced(Replaced(kSmallNeighbours, " instanceIdVariable='id'", ""), "value='four'", "value='4'"));
    ASSERT_TRUE(scored.Score({{"x", "2"}, {"k", "u"}}).IsOK());
    EXPECT_EQ(scored.Text("near"), "2");
    EXPECT_EQ(scored.Number("far"), 6.25);
}

/// The number of a target comes from the instances, whichever target is the first one.
TEST(Neighbours, HaveTheLevelOfTheirFirstTarget) {
    const std::string number = WithoutTarget(kSmallNeighbours, "t");
    Scored scored(Replaced(number, " targetField='y'", ""));
    ASSERT_TRUE(scored.Score({{"x", "4"}, {"k", "u"}}).IsOK());
    EXPECT_EQ(scored.Number(), 3.0);
    EXPECT_EQ(scored.Number("number"), 3.0);
}

/// Of the two that are nearest to 4 one has 4 and one 2 for y; without k a case still is compared by x, without both by
/// nothing.
TEST(Neighbours, TellResidualsAndDefaultsOfEachTarget) {
    const std::string further = "<OutputField name='less' feature='residual' targetField='y'/></Output><Targets>"
                                "<Target field='t'><TargetValue value='b' priorProbability='0.5'/></Target>"
                                "<Target field='y'><TargetValue defaultValue='-1'/></Target></Targets>";
    Scored scored(Replaced(kSmallNeighbours, "</Output>", further));
    ASSERT_TRUE(scored.Score({{"x", "4"}, {"k", "u"}, {"y", "3.5"}}).IsOK());
    EXPECT_EQ(scored.Number("less"), 0.5);
    EXPECT_EQ(scored.Number("number"), 3.0);
    ASSERT_TRUE(scored.Score({{"y", "3.5"}}).IsOK());
    EXPECT_EQ(scored.Text(), "b");
    EXPECT_EQ(scored.Number("number"), -1);
    EXPECT_EQ(scored.Number("less"), 4.5);
}

TEST(Neighbours, ThatClusterPredictWhoIsNear) {
    const std::string document = WithoutTarget(
        WithoutTarget(Replaced(Replaced(kSmallNeighbours, "'mixed'", "'clustering'"), " targetField='y'", ""), "t"),
        "y");
    Scored scored(document);
    ASSERT_TRUE(scored.Score({{"x", "5"}, {"k", "v"}}).IsOK());
    EXPECT_EQ(scored.Text(), "three");
    EXPECT_EQ(scored.Text("number"), "three");
    EXPECT_EQ(scored.Text("next"), "four");
}

TEST(Neighbours, AdjustEachTargetByItsOwn) {
    Scored scored(Replaced(kSmallNeighbours, "<TrainingInstances",
                           "<Targets><Target field='y' rescaleFactor='10' rescaleConstant='1'/></Targets>"
                           "<TrainingInstances"));
    ASSERT_TRUE(scored.Score({{"x", "2"}, {"k", "u"}}).IsOK());
    EXPECT_EQ(scored.Number("number"), 16.0);
}

TEST(Neighbours, ShowHowManyThereAre) {
    std::ostringstream out;
    ReadModel(kSmallNeighbours)->Display(out);
    EXPECT_NE(out.str().find("neighbours: 2 of 4, inputs: 2\n"), std::string::npos) << out.str();
}

/// Every variant of the samples, and the small document: rows that lack fields are scanned, others searched for.
TEST(NeighboursColumns, HoldTheBitsOfCases) {
    std::vector<std::string> documents{kSmallNeighbours, kSmallNearNumbers};
    for (const SampleVariant& variant : ReadVariants(TestsFolder() + "/models/neighbours/variants.tsv")) {
        documents.push_back(DocumentOf(variant));
    }
    std::mt19937_64 random(9);
    for (const std::string& document : documents) {
        ModelRows rows(document);
        rows.Fill(random, 200);
        const auto state = rows.Scorer().NewState();
        EXPECT_EQ(rows.InBlocks(*state, 256, 0, false), rows.CaseByCase()) << document;
        EXPECT_EQ(rows.InBlocks(*state, 19, 5, true), rows.CaseByCase()) << document;
        ExpectFinite(rows, random);
    }
}

/// The model of neighbours of the small document, over the fields of ensembles.
const std::string kNear =
    "<NearestNeighborModel functionName='regression' numberOfNeighbors='1'>" + Schema("y", Fields("x")) +
    "<Output><OutputField name='who' feature='entityId'/></Output><TrainingInstances><InstanceFields><InstanceField "
    "field='x'/><InstanceField field='y'/></InstanceFields><InlineTable><row><x>0</x><y>7</y></row><row><x>4</x><y>9"
    "</y></row></InlineTable></TrainingInstances><ComparisonMeasure kind='distance'><euclidean/></ComparisonMeasure>"
    "<KNNInputs><KNNInput field='x'/></KNNInputs></NearestNeighborModel>";

TEST(NeighboursSegments, ArePartsOfModelsOfModels) {
    Scored scored(EnsembleDocument(Mining("sum", SegmentOf(kNear) + SegmentOf(Line("x", 1.0, 2.0)))));
    ASSERT_TRUE(scored.Score({{"x", "3"}}).IsOK());
    EXPECT_EQ(scored.Number(), 16.0);
    ASSERT_TRUE(scored.Score({{"x", "1"}}).IsOK());
    EXPECT_EQ(scored.Number(), 10.0);
}

/// The factory hands them the stream whatever stands beside them; a document of several models is theirs.
TEST(NeighboursRoad, IsTheirsBesideOtherModels) {
    Scored scored(EnsembleDocument(Line("x", 1.0, 2.0) + kNear));
    ASSERT_TRUE(scored.Score({{"x", "3"}}).IsOK());
    EXPECT_EQ(scored.Number(), 9.0);
    EXPECT_EQ(scored.Text("who"), "2");
    const std::string hidden = "<Extension>" + kNear + "</Extension>";
    ExpectFailure([&] { ReadModel(EnsembleDocument(Line("x", 1.0, 2.0) + hidden)); },
                  {UNSUPPORTED_MODEL, "NearestNeighborModel"});
}

TEST(NeighboursRoad, TakesTheEncodingOfTheDocument) {
    Scored scored("<?xml version='1.0' encoding='ISO-8859-1'?>" +
                  Replaced(Replaced(kSmallNeighbours, "<c1>two</c1>", "<c1>d\xE9j\xE0</c1>"), "rank='1'", ""));
    ASSERT_TRUE(scored.Score({{"x", "2"}, {"k", "u"}}).IsOK());
    EXPECT_EQ(scored.Text("near"), "d\xC3\xA9j\xC3\xA0");
}

} // namespace
