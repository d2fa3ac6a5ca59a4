// Models of models whose segments are clusters: votes for a cluster, and the cluster of a segment that is selected.
#include "models/columns/model_rows.h"
#include "models/mining/small_ensemble.h"
#include "support/faults/failure.h"

#include <gtest/gtest.h>

#include <random>

using namespace veltrane::tests;

namespace {

/// The clusters low at 0 and high at a number of a field.
std::string Clusters(char field, const std::string& high, const std::string& function = "clustering") {
    return "<ClusteringModel functionName='" + function + "' modelClass='centerBased' numberOfClusters='2'>" +
           Schema("", Fields(std::string(1, field))) +
           "<ComparisonMeasure kind='distance'><cityBlock/></ComparisonMeasure><ClusteringField field='" + field +
           "'/><Cluster id='low' name='the low ones'><Array type='real'>0</Array></Cluster><Cluster id='high'>"
           "<Array type='real'>" +
           high + "</Array></Cluster></ClusteringModel>";
}

std::string Clustering(const std::string& method, const std::string& segments) {
    return EnsembleDocument(
        "<MiningModel functionName='clustering'>" + Schema("", Fields("yxz")) +
        "<Output><OutputField name='id' feature='predictedValue'/><OutputField name='shown' "
        "feature='predictedDisplayValue'/><OutputField name='near' feature='affinity'/>"
        "<OutputField name='entity' feature='entityId'/><OutputField name='cluster' feature='clusterId'/>"
        "<OutputField name='next' feature='clusterId' rank='2'/><OutputField name='far' "
        "feature='clusterAffinity' rank='2'/><OutputField name='toHigh' feature='affinity' value='high'/>"
        "<OutputField name='toOther' feature='affinity' value='other'/></Output><Segmentation "
        "multipleModelMethod='" +
        method + "'>" + segments + "</Segmentation></MiningModel>");
}

const std::string kThree = SegmentOf(Clusters('x', "10"), "id='a' weight='1'") +
                           SegmentOf(Clusters('y', "10"), "id='b' weight='1'") +
                           SegmentOf(Clusters('z', "4"), "id='c' weight='3'");

TEST(SegmentClusters, MostSegmentsDecide) {
    Scored scored(Clustering("majorityVote", kThree));
    ASSERT_TRUE(scored.Score({{"x", "9"}, {"y", "1"}, {"z", "4"}}).IsOK());
    EXPECT_EQ(scored.Text(), "high");
    EXPECT_EQ(scored.Text("id"), "high");
    EXPECT_EQ(scored.Text("cluster"), "high");
    EXPECT_EQ(scored.Number("near"), kMissing) << "a vote has no distance";
    EXPECT_EQ(scored.Number("toHigh"), kMissing);
    ASSERT_TRUE(scored.Score({{"x", "9"}, {"y", "1"}, {"z", "0"}}).IsOK());
    EXPECT_EQ(scored.Text(), "low");
    EXPECT_EQ(scored.Text("shown"), "the low ones");
    EXPECT_EQ(scored.Result().GetResultKind(), 5);
}

TEST(SegmentClusters, WeightsOfSegmentsDecide) {
    Scored scored(Clustering("weightedMajorityVote", kThree));
    ASSERT_TRUE(scored.Score({{"x", "9"}, {"y", "9"}, {"z", "0"}}).IsOK());
    EXPECT_EQ(scored.Text(), "low");
}

TEST(SegmentClusters, ASegmentThatIsSelectedTellsItsDistance) {
    const std::string first =
        SegmentOf(Clusters('x', "10"), "id='a'", "<SimplePredicate field='z' operator='lessThan' value='5'/>");
    Scored scored(Clustering("selectFirst", first + SegmentOf(Clusters('y', "10"), "id='b'")));
    ASSERT_TRUE(scored.Score({{"x", "9"}, {"y", "2"}, {"z", "1"}}).IsOK());
    EXPECT_EQ(scored.Text(), "high");
    EXPECT_EQ(scored.Number("near"), 1.0);
    EXPECT_EQ(scored.Text("entity"), "a");
    ASSERT_TRUE(scored.Score({{"x", "9"}, {"y", "2"}, {"z", "7"}}).IsOK());
    EXPECT_EQ(scored.Text(), "low");
    EXPECT_EQ(scored.Number("near"), 2.0);
    EXPECT_EQ(scored.Text("entity"), "b");
}

TEST(SegmentClusters, ASegmentThatIsSelectedTellsItsClustersByTheirRanks) {
    for (const char* method : {"selectFirst", "selectAll", "modelChain"}) {
        Scored scored(Clustering(method, SegmentOf(Clusters('x', "10"), "id='a'")));
        ASSERT_TRUE(scored.Score({{"x", "9"}, {"y", "2"}, {"z", "1"}}).IsOK());
        EXPECT_EQ(scored.Text("entity"), "a") << method;
        EXPECT_EQ(scored.Text("cluster"), "high") << method;
        EXPECT_EQ(scored.Text("next"), "low") << method;
        EXPECT_EQ(scored.Number("far"), 9.0) << method;
        EXPECT_EQ(scored.Number("toHigh"), 1.0) << method;
        EXPECT_EQ(scored.Number("toOther"), kMissing) << method;
    }
}

TEST(SegmentClusters, OfANestedModelAreTheClustersOfTheWhole) {
    const std::string inner = Clustering("selectFirst", SegmentOf(Clusters('x', "10"), "id='a'"));
    const std::size_t begin = inner.find("<MiningModel");
    const std::string model = inner.substr(begin, inner.find("</PMML>") - begin);
    Scored scored(Clustering("selectFirst", SegmentOf(model, "id='outer'")));
    ASSERT_TRUE(scored.Score({{"x", "1"}, {"y", "2"}, {"z", "1"}}).IsOK());
    EXPECT_EQ(scored.Text("entity"), "outer");
    EXPECT_EQ(scored.Text("cluster"), "low");
    EXPECT_EQ(scored.Text("shown"), "the low ones");
    EXPECT_EQ(scored.Text("next"), "high");
    EXPECT_EQ(scored.Number("far"), 9.0);
    EXPECT_EQ(scored.Number("toHigh"), 9.0);
}

TEST(SegmentClusters, ASegmentTellsTheDistancesOfThoseClustersThatItHas) {
    const std::string others = Replaced(Clusters('y', "10"), "id='high'", "id='other'");
    const std::string document =
        Clustering("selectFirst",
                   SegmentOf(Clusters('x', "10"), "", "<SimplePredicate field='z' operator='lessThan' value='5'/>") +
                       SegmentOf(others));
    Scored scored(document);
    ASSERT_TRUE(scored.Score({{"x", "7"}, {"y", "2"}, {"z", "1"}}).IsOK());
    EXPECT_EQ(scored.Number("toHigh"), 3.0);
    EXPECT_EQ(scored.Number("toOther"), kMissing);
    ASSERT_TRUE(scored.Score({{"x", "7"}, {"y", "2"}, {"z", "9"}}).IsOK());
    EXPECT_EQ(scored.Number("toHigh"), kMissing);
    EXPECT_EQ(scored.Number("toOther"), 8.0);
    ModelRows rows(document);
    std::mt19937_64 random(4);
    rows.Fill(random, 400);
    EXPECT_EQ(rows.InBlocks(*rows.Scorer().NewState(), 1024, 0, false), rows.CaseByCase());
    EXPECT_EQ(rows.InBlocks(*rows.Scorer().NewState(), 30, 7, true), rows.CaseByCase());
    // What a segment's own output fields name it has to have.
    const std::string own = Replaced(others, "</MiningSchema>",
                                     "</MiningSchema><Output><OutputField name='w' feature='affinity' value='high'/>"
                                     "</Output>");
    ExpectFailure([&] { ReadModel(Clustering("selectFirst", SegmentOf(own))); },
                  {INVALID_ATTRIBUTE_VALUE_IN, "high", "value", "OutputField"});
}

TEST(SegmentClusters, AChainEndsInTheClusterOfItsLastSegment) {
    const std::string line = "<Output><OutputField name='sum' feature='predictedValue'/></Output>";
    std::string last = Clusters('x', "10");
    last = Replaced(Replaced(last, "<MiningField name='x'/>", "<MiningField name='sum'/>"), "ClusteringField field='x'",
                    "ClusteringField field='sum'");
    Scored scored(Clustering("modelChain", SegmentOf(Line("x", 1.0, 2.0, line, "")) + SegmentOf(last)));
    ASSERT_TRUE(scored.Score({{"x", "3.5"}, {"y", "0"}, {"z", "0"}}).IsOK());
    EXPECT_EQ(scored.Text(), "high");
    EXPECT_EQ(scored.Number("near"), 2.0);
}

/// The first segment that takes part decides; output fields ask the others.
TEST(SegmentClusters, AllThatAreSelectedTellTheirOwn) {
    const std::string first =
        SegmentOf(Clusters('x', "10"), "id='a'", "<SimplePredicate field='z' operator='lessThan' value='5'/>");
    const std::string document = Replaced(
        Clustering("selectAll", first + SegmentOf(Clusters('y', "10"), "id='b'")), "</Output>",
        "<OutputField name='ofA' feature='predictedValue' segmentId='a'/><OutputField name='ofB' "
        "feature='predictedDisplayValue' segmentId='b'/><OutputField name='nearB' feature='affinity' segmentId='b'/>"
        "<OutputField name='highB' feature='affinity' value='high' segmentId='b'/><OutputField name='secondB' "
        "feature='clusterId' rank='2' segmentId='b'/></Output>");
    Scored scored(document);
    ASSERT_TRUE(scored.Score({{"x", "9"}, {"y", "2"}, {"z", "1"}}).IsOK());
    EXPECT_EQ(scored.Text(), "high");
    EXPECT_EQ(scored.Number("near"), 1.0);
    EXPECT_EQ(scored.Text("entity"), "a");
    EXPECT_EQ(scored.Text("ofA"), "high");
    EXPECT_EQ(scored.Text("ofB"), "the low ones");
    EXPECT_EQ(scored.Number("nearB"), 2.0);
    EXPECT_EQ(scored.Number("highB"), 8.0);
    EXPECT_EQ(scored.Text("secondB"), "high");
    ASSERT_TRUE(scored.Score({{"x", "9"}, {"y", "2"}, {"z", "7"}}).IsOK());
    EXPECT_EQ(scored.Text(), "low");
    EXPECT_EQ(scored.Text("ofA"), "");
    EXPECT_EQ(scored.Number("near"), 2.0);
    ModelRows rows(document);
    std::mt19937_64 random(5);
    rows.Fill(random, 300);
    EXPECT_EQ(rows.InBlocks(*rows.Scorer().NewState(), 256, 0, false), rows.CaseByCase());
}

/// Neighbours vote in their segments, and segments on what these say; those that cluster tell who is near.
TEST(SegmentNeighbours, VoteAsOtherModelsDo) {
    const auto neighbours = [](const std::string& function, const std::string& field, const std::string& cells) {
        return "<NearestNeighborModel functionName='" + function + "' numberOfNeighbors='1'>" +
               Schema(function == "clustering" ? "" : "t", Fields(field)) +
               "<TrainingInstances><InstanceFields><InstanceField field='" + field + "'/>" +
               (function == "clustering" ? "" : "<InstanceField field='t'/>") + "</InstanceFields><InlineTable>" +
               cells +
               "</InlineTable></TrainingInstances><ComparisonMeasure kind='distance'><cityBlock/></ComparisonMeasure>"
               "<KNNInputs><KNNInput field='" +
               field + "'/></KNNInputs></NearestNeighborModel>";
    };
    const auto votes = [&](const std::string& method) {
        const auto segment = [&](const char* field, const char* weight) {
            const std::string tag = field;
            return SegmentOf(neighbours("classification", tag,
                                        "<row><" + tag + ">0</" + tag + "><t>no</t></row><row><" + tag + ">10</" + tag +
                                            "><t>yes</t></row>"),
                             std::string("weight='") + weight + "'");
        };
        return EnsembleDocument("<MiningModel functionName='classification'>" + Schema("t", Fields("yxz")) +
                                "<Segmentation multipleModelMethod='" + method + "'>" + segment("x", "1") +
                                segment("y", "1") + segment("z", "3") + "</Segmentation></MiningModel>");
    };
    for (const auto& [method, answer] : {std::pair("majorityVote", "yes"), std::pair("weightedMajorityVote", "no")}) {
        Scored scored(votes(method));
        ASSERT_TRUE(scored.Score({{"x", "9"}, {"y", "8"}, {"z", "1"}}).IsOK()) << method;
        EXPECT_EQ(scored.Text(), answer) << method;
        EXPECT_EQ(scored.Probability("yes"), std::string(method) == "majorityVote" ? 2.0 / 3.0 : 0.4) << method;
        ModelRows rows(votes(method));
        std::mt19937_64 random(6);
        rows.Fill(random, 300);
        EXPECT_EQ(rows.InBlocks(*rows.Scorer().NewState(), 256, 0, false), rows.CaseByCase()) << method;
    }
    Scored scored(Clustering(
        "selectFirst", SegmentOf(neighbours("clustering", "x", "<row><x>0</x></row><row><x>10</x></row>"), "id='n'")));
    ASSERT_TRUE(scored.Score({{"x", "9"}}).IsOK());
    EXPECT_EQ(scored.Text(), "2");
    EXPECT_EQ(scored.Number("near"), 1.0);
}

TEST(SegmentClusters, AreTheSameInColumns) {
    for (const char* method : {"majorityVote", "weightedMajorityVote", "selectFirst", "selectAll", "modelChain"}) {
        ModelRows rows(Clustering(method, kThree));
        std::mt19937_64 random(3);
        rows.Fill(random, 400);
        EXPECT_EQ(rows.InBlocks(*rows.Scorer().NewState(), 256, 0, false), rows.CaseByCase()) << method;
        EXPECT_EQ(rows.InBlocks(*rows.Scorer().NewState(), 30, 7, true), rows.CaseByCase()) << method;
    }
}

TEST(SegmentClusters, HaveNoMean) {
    for (const char* method : {"average", "weightedAverage", "median", "max", "sum", "weightedSum"}) {
        ExpectFailure([&] { ReadModel(Clustering(method, kThree)); },
                      {UNSUPPORTED_VALUE_IN, method, "multipleModelMethod", "Segmentation",
                       "majorityVote, weightedMajorityVote, selectFirst, selectAll, modelChain"});
    }
}

TEST(SegmentClusters, AreNoClassification) {
    const std::string tree = "<TreeModel functionName='classification'>" + Schema("t", Fields("x")) +
                             "<Node score='yes'><True/></Node></TreeModel>";
    ExpectFailure([&] { ReadModel(Clustering("majorityVote", SegmentOf(tree))); },
                  {CONFLICTING_VALUES_IN, "classification", "functionName", "TreeModel", "clustering", "functionName",
                   "MiningModel"});
}

} // namespace
