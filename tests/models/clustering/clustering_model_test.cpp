// What models of clusters predict where the standard leaves it open, and what they can't predict.
#include "models/clustering/small_clusters.h"
#include "models/columns/model_rows.h"
#include "models/kit/answers.h"
#include "models/kit/scoring.h"
#include "support/faults/failure.h"
#include "support/folders.h"

#include <MCVeltrane_900/ScoreClsResult.h>

#include <gtest/gtest.h>

#include <random>
#include <sstream>

using namespace veltrane::tests;

namespace {

TEST(Clustering, TellsTheNearestClusterAndItsDistance) {
    Scored scored(kSmallClusters);
    ASSERT_TRUE(scored.Score({{"x", "6"}, {"c", "u"}}).IsOK());
    EXPECT_EQ(scored.Text(), "low");
    EXPECT_EQ(scored.Text("id"), "low");
    EXPECT_EQ(scored.Text("entity"), "low");
    EXPECT_EQ(scored.Text("name"), "the low ones");
    EXPECT_EQ(scored.Number("near"), 6.0);
    EXPECT_EQ(scored.Number("low"), 6.0);
    EXPECT_EQ(scored.Number("high"), 8.0);
    ASSERT_TRUE(scored.Score({{"x", "7.5"}, {"c", "u"}}).IsOK());
    EXPECT_EQ(scored.Text("name"), "high") << "a cluster without a name is shown by its id";
}

TEST(Clustering, OfEquallyNearClustersTheFirstIsPredicted) {
    Scored scored(kSmallClusters);
    ASSERT_TRUE(scored.Score({{"x", "7"}, {"c", "u"}}).IsOK());
    EXPECT_EQ(scored.Number("high"), 7.0);
    EXPECT_EQ(scored.Text(), "low");
}

TEST(Clustering, HasAResultOfItsOwnKindWithoutProbabilities) {
    Scored scored(kSmallClusters);
    ASSERT_TRUE(scored.Score({{"x", "1"}, {"c", "u"}}).IsOK());
    EXPECT_EQ(scored.Result().GetResultKind(), 5);
    EXPECT_EQ(scored.Probability("low"), kMissing);
    EXPECT_TRUE(dynamic_cast<MCVeltrane_900::ScoreClsResult&>(scored.Result()).GetCategories().empty());
}

TEST(Clustering, ScalesDistancesForWhatIsMissing) {
    Scored scored(kSmallClusters);
    ASSERT_TRUE(scored.Score({{"x", "2"}}).IsOK());
    EXPECT_EQ(scored.Number("low"), 4.0) << "the weights of all fields over that of x";
    EXPECT_EQ(scored.Number("high"), 16.0);
    Scored heavier(Replaced(kSmallClusters, "<Array n='2' type='real'>1 1</Array></MissingValueWeights>",
                            "<Array n='2' type='real'>0.5 2</Array></MissingValueWeights>"));
    ASSERT_TRUE(heavier.Score({{"x", "2"}}).IsOK());
    EXPECT_EQ(heavier.Number("low"), 10.0);
    ASSERT_TRUE(heavier.Score({{"c", "u"}}).IsOK());
    EXPECT_EQ(heavier.Number("high"), 5.0);
}

TEST(Clustering, HasNoPredictionWithoutAnyField) {
    Scored scored(kSmallClusters);
    EXPECT_EQ(scored.Score({}).GetErrorCode(), kNoPrediction);
    EXPECT_EQ(scored.Text(), "");
    EXPECT_EQ(scored.Text("id"), "");
    EXPECT_EQ(scored.Number("near"), kMissing);
    EXPECT_EQ(scored.Number("high"), kMissing);
}

TEST(Clustering, HasNoPredictionWithoutAFieldThatHasAllTheWeight) {
    Scored scored(Replaced(kSmallClusters, "<Array n='2' type='real'>1 1</Array></MissingValueWeights>",
                           "<Array n='2' type='real'>1 0</Array></MissingValueWeights>"));
    EXPECT_EQ(scored.Score({{"c", "u"}}).GetErrorCode(), kNoPrediction);
    EXPECT_TRUE(scored.Score({{"x", "1"}}).IsOK());
}

TEST(Clustering, AWeightMayStandForEachClusteringField) {
    const std::string derived = "<LocalTransformations><DerivedField name='d' optype='continuous' dataType='double'>"
                                "<FieldRef field='x'/></DerivedField></LocalTransformations>";
    const std::string document = Replaced(Replaced(kSmallClusters, "<ClusteringField field='c'",
                                                   "<ClusteringField field='d' isCenterField='false'/>"
                                                   "<ClusteringField field='c'"),
                                          "<ComparisonMeasure", derived + "<ComparisonMeasure");
    Scored scored(Replaced(document, "<Array n='2' type='real'>1 1</Array></MissingValueWeights>",
                           "<Array n='3' type='real'>1 9 3</Array></MissingValueWeights>"));
    ASSERT_TRUE(scored.Score({{"x", "2"}}).IsOK());
    EXPECT_EQ(scored.Number("low"), 8.0);
}

/// A distance that grows beyond all doubles is none; where another cluster is near enough, that is predicted.
TEST(Clustering, HasNoPredictionWhereAllDistancesOverflow) {
    Scored scored(Replaced(kSmallClusters, "<cityBlock/>", "<squaredEuclidean/>"));
    EXPECT_EQ(scored.Score({{"x", "1e200"}, {"c", "u"}}).GetErrorCode(), kNoPrediction);
    EXPECT_EQ(scored.Number("near"), kMissing);
    EXPECT_EQ(scored.Number("high"), kMissing);
    Scored far(
        Replaced(Replaced(kSmallClusters, "<cityBlock/>", "<squaredEuclidean/>"), "0 u</Array>", "1e200 u</Array>"));
    ASSERT_TRUE(far.Score({{"x", "10"}, {"c", "v"}}).IsOK());
    EXPECT_EQ(far.Text(), "high");
    EXPECT_EQ(far.Number("near"), 0.0);
    EXPECT_EQ(far.Number("low"), kMissing);
}

TEST(Clustering, AValueThatIsNoBitHasNoBinarySimilarity) {
    Scored scored(kSmallBits);
    ASSERT_TRUE(scored.Score({{"x", "1"}, {"y", "1"}}).IsOK());
    EXPECT_EQ(scored.Text(), "some");
    EXPECT_EQ(scored.Number("near"), 1.0);
    EXPECT_EQ(scored.Text("second"), "none");
    EXPECT_EQ(scored.Score({{"x", "0.5"}, {"y", "1"}}).GetErrorCode(), kNoPrediction);
    EXPECT_EQ(scored.Score({{"x", "2"}, {"y", "1"}}).GetErrorCode(), kNoPrediction);
}

TEST(Clustering, AClusterWithoutAnIdIsCalledByItsPlace) {
    Scored scored(
        Replaced(Replaced(Replaced(kSmallClusters, "<Cluster id='high'", "<Cluster"), "value='high'", "value='2'"),
                 "name='high'", "name='second'"));
    ASSERT_TRUE(scored.Score({{"x", "9"}, {"c", "v"}}).IsOK());
    EXPECT_EQ(scored.Text(), "2");
    EXPECT_EQ(scored.Number("second"), 1.0);
}

TEST(Clustering, CompareFieldsMayBeDerivedInTheOlderWay) {
    Scored scored(kSmallDistributions);
    ASSERT_TRUE(scored.Score({{"x", "4"}, {"c", "u"}}).IsOK());
    EXPECT_EQ(scored.Text(), "a");
    EXPECT_EQ(scored.Number("near"), 1.0);
    ASSERT_TRUE(scored.Score({{"x", "5"}, {"c", "v"}}).IsOK());
    EXPECT_EQ(scored.Text(), "b");
    EXPECT_EQ(scored.Number("near"), 0.5);
}

/// Of x about 2 and 6, mostly u and v.
std::string Distributions() {
    const auto cluster = [](const char* id, const char* mean, const char* counts) {
        return std::string("<Cluster id='") + id +
               "'><Partition name='p'><PartitionFieldStats field='x'><NumericInfo mean='" + mean +
               "'/></PartitionFieldStats><PartitionFieldStats field='c'><Array n='2' type='int'>" + counts +
               "</Array></PartitionFieldStats></Partition></Cluster>";
    };
    return "<PMML version='4.4'><DataDictionary><DataField name='x' optype='continuous' dataType='double'/>"
           "<DataField name='c' optype='categorical' dataType='string'><Value value='u'/><Value value='v'/>"
           "</DataField></DataDictionary><ClusteringModel functionName='clustering' modelClass='distributionBased' "
           "numberOfClusters='2'><MiningSchema><MiningField name='x'/><MiningField name='c'/></MiningSchema>"
           "<Output><OutputField name='near' feature='affinity'/></Output><ComparisonMeasure kind='distance'>"
           "<cityBlock/></ComparisonMeasure><ClusteringField field='x'/><ClusteringField field='c' "
           "compareFunction='delta'/>" +
           cluster("a", "2", "7 3") + cluster("b", "6", "1 2") + "</ClusteringModel></PMML>";
}

TEST(Clustering, ADistributionIsTakenForItsMeanAndItsMostFrequentValue) {
    Scored scored(Distributions());
    ASSERT_TRUE(scored.Score({{"x", "2.5"}, {"c", "v"}}).IsOK());
    EXPECT_EQ(scored.Text(), "a");
    EXPECT_EQ(scored.Number("near"), 1.5);
    ASSERT_TRUE(scored.Score({{"x", "5"}, {"c", "v"}}).IsOK());
    EXPECT_EQ(scored.Text(), "b");
    EXPECT_EQ(scored.Number("near"), 1.0);
    Scored unknown(Replaced(Distributions(), "<NumericInfo mean='6'/>", "<Counts totalFreq='3'/>"));
    ASSERT_TRUE(unknown.Score({{"x", "5"}, {"c", "v"}}).IsOK());
    EXPECT_EQ(unknown.Text(), "b") << "compared by c alone";
    EXPECT_EQ(unknown.Number("near"), 0.0);
}

TEST(Clustering, DescribesWhatItCompares) {
    std::ostringstream out;
    ReadModel(kSmallClusters)->Display(out);
    EXPECT_NE(out.str().find("function: clustering\n"), std::string::npos) << out.str();
    EXPECT_NE(out.str().find("clusters: 2, compared fields: 2\n"), std::string::npos) << out.str();
}

/// Every variant of the samples, and the small documents with numbers that overflow.
TEST(ClusteringColumns, HoldTheBitsOfCases) {
    std::vector<std::string> documents{kSmallClusters, kSmallBits, kSmallDistributions, Distributions(),
                                       Replaced(kSmallClusters, "<cityBlock/>", "<squaredEuclidean/>")};
    for (const SampleVariant& variant : ReadVariants(TestsFolder() + "/models/clustering/variants.tsv")) {
        documents.push_back(DocumentOf(variant));
    }
    std::mt19937_64 random(11);
    for (const std::string& document : documents) {
        ModelRows rows(document);
        rows.Fill(random, 300);
        const auto state = rows.Scorer().NewState();
        EXPECT_EQ(rows.InBlocks(*state, 256, 0, false), rows.CaseByCase()) << document;
        EXPECT_EQ(rows.InBlocks(*state, 19, 5, true), rows.CaseByCase()) << document;
    }
}

TEST(HostileClustering, HasManyClusters) {
    constexpr int kMany = 20000;
    std::string clusters;
    for (int i = 0; i < kMany; ++i) {
        clusters += "<Cluster id='n" + std::to_string(i) + "'><Array n='2' type='string'>" + std::to_string(100 + i) +
                    " u</Array></Cluster>";
    }
    Scored scored(Replaced(Replaced(kSmallClusters, "</ClusteringModel>", clusters + "</ClusteringModel>"),
                           "numberOfClusters='2'", "numberOfClusters='" + std::to_string(kMany + 2) + "'"));
    ASSERT_TRUE(scored.Score({{"x", "15000"}, {"c", "u"}}).IsOK());
    EXPECT_EQ(scored.Text(), "n14900");
    EXPECT_EQ(scored.Number("near"), 0.0);
}

/// A matrix that states a size takes no room for it.
TEST(HostileClustering, AMatrixMayStateASizeThatItDoesNotHave) {
    ExpectFailure(
        [] {
            ReadModel(Replaced(kSmallClusters,
                               "<Matrix kind='any' nbRows='2' nbCols='2'><Array n='2' type='real'>0 1</Array><Array "
                               "n='2' type='real'>1 0</Array></Matrix>",
                               "<Matrix nbRows='2000000000' nbCols='2000000000'/>"));
        },
        {NUMBERS_MISMATCH, "2000000000", "nbRows", "Matrix", "2", "Value", "c"});
}

} // namespace
