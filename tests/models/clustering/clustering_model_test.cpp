// What models of clusters predict where the standard leaves it open, and what they can't predict.
#include "models/clustering/small_clusters.h"
#include "models/columns/hostile_rows.h"
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

/// What is alike at a distance whose square is beyond the doubles.
TEST(Clustering, ComparesNumbersOfEverySize) {
    const std::string gauss = Replaced(kSmallClusters, "compareFunction='absDiff'/>", "compareFunction='gaussSim'/>");
    Scored close(Replaced(gauss, "similarityScale='2'", "similarityScale='1e-200'"));
    ASSERT_TRUE(close.Score({{"x", "1e-200"}, {"c", "u"}}).IsOK());
    EXPECT_EQ(close.Number("low"), 0.5);
    ASSERT_TRUE(close.Score({{"x", "0"}, {"c", "u"}}).IsOK());
    EXPECT_EQ(close.Number("low"), 1.0);
    Scored far(Replaced(gauss, "similarityScale='2'", "similarityScale='1e300'"));
    ASSERT_TRUE(far.Score({{"x", "-1e300"}, {"c", "u"}}).IsOK());
    EXPECT_EQ(far.Number("low"), 0.5);
}

/// A table of what is alike may have numbers below 0.
TEST(Clustering, TheLargestOfNumbersBelowZeroIsOneOfThem) {
    const std::string below = "<Matrix nbRows='2' nbCols='2'><Array type='real'>-3 -2</Array><Array type='real'>-2 -1"
                              "</Array></Matrix>";
    const std::string matrix = "<Matrix kind='any' nbRows='2' nbCols='2'><Array n='2' type='real'>0 1</Array><Array "
                               "n='2' type='real'>1 0</Array></Matrix>";
    std::string document = Replaced(Replaced(kSmallClusters, "<cityBlock/>", "<chebychev/>"), matrix, below);
    document = Replaced(document, "<ClusteringField field='x' isCenterField='true'",
                        "<ClusteringField field='x' isCenterField='false'");
    document = Replaced(Replaced(document, "<Array n='2' type='string'>0 u", "<Array type='string'>u"),
                        "<Array n='2' type='string'>10 v", "<Array type='string'>v");
    document = Replaced(document,
                        "<Covariances><Matrix kind='diagonal'><Array n='2' type='real'>1 1</Array></Matrix>"
                        "</Covariances>",
                        "");
    Scored scored(document);
    ASSERT_TRUE(scored.Score({{"c", "u"}}).IsOK());
    EXPECT_EQ(scored.Number("low"), -12.0);
    EXPECT_EQ(scored.Number("high"), -8.0);
    EXPECT_EQ(scored.Text(), "low");
    ModelRows rows(document);
    std::mt19937_64 random(2);
    rows.Fill(random, 60);
    EXPECT_EQ(rows.InBlocks(*rows.Scorer().NewState(), 60, 0, true), rows.CaseByCase());
}

/// A table goes by the places of the values that an ordinal derived field lists.
TEST(Clustering, TablesAreOfDerivedFieldsToo) {
    const std::string derived = "<LocalTransformations><DerivedField name='d' optype='ordinal' dataType='string'>"
                                "<FieldRef field='c'/><Value value='v'/><Value value='u'/></DerivedField>"
                                "</LocalTransformations>";
    std::string document = Replaced(kSmallClusters, "<ComparisonMeasure", derived + "<ComparisonMeasure");
    document = Replaced(Replaced(document, "<ClusteringField field='c'", "<ClusteringField field='d'"),
                        "0 1</Array><Array n='2' type='real'>1 0", "0 1</Array><Array n='2' type='real'>3 0");
    Scored scored(document);
    ASSERT_TRUE(scored.Score({{"x", "0"}, {"c", "u"}}).IsOK());
    EXPECT_EQ(scored.Number("high"), 22.0) << "row u, which is the second one, and column v";
    ASSERT_TRUE(scored.Score({{"x", "0"}, {"c", "v"}}).IsOK());
    EXPECT_EQ(scored.Number("low"), 4.0);
    ExpectFailure([&] { ReadModel(Replaced(document, "optype='ordinal'", "optype='categorical'")); },
                  {MISSING_VALUE_LIST, "d"});
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

TEST(Clustering, ADistributionIsTakenForItsMeanAndItsMostFrequentValue) {
    Scored scored(kSmallPartitions);
    ASSERT_TRUE(scored.Score({{"x", "2.5"}, {"c", "v"}}).IsOK());
    EXPECT_EQ(scored.Text(), "a");
    EXPECT_EQ(scored.Number("near"), 1.5);
    ASSERT_TRUE(scored.Score({{"x", "5"}, {"c", "v"}}).IsOK());
    EXPECT_EQ(scored.Text(), "b");
    EXPECT_EQ(scored.Number("near"), 1.0);
    Scored unknown(Replaced(kSmallPartitions, "<NumericInfo mean='6'/>", "<Counts totalFreq='3'/>"));
    ASSERT_TRUE(unknown.Score({{"x", "5"}, {"c", "v"}}).IsOK());
    EXPECT_EQ(unknown.Text(), "b") << "compared by c alone";
    EXPECT_EQ(unknown.Number("near"), 0.0);
}

TEST(Clustering, DistributionsTellOfFieldsThatAreThere) {
    const std::string document =
        Replaced(kSmallPartitions, "</DataDictionary>",
                 "<DataField name='d' optype='continuous' dataType='double'/></DataDictionary>");
    Scored scored(Replaced(document, "<PartitionFieldStats field='x'><NumericInfo mean='6'/>",
                           "<PartitionFieldStats field='d'><Counts totalFreq='1'/></PartitionFieldStats>"
                           "<PartitionFieldStats field='x'><NumericInfo mean='6'/>"));
    ASSERT_TRUE(scored.Score({{"x", "5"}, {"c", "v"}}).IsOK()) << "d isn't compared";
    EXPECT_EQ(scored.Text(), "b");
    ExpectFailure(
        [] {
            ReadModel(Replaced(kSmallPartitions, "<PartitionFieldStats field='x'><NumericInfo mean='6'/>",
                               "<PartitionFieldStats field='z'><NumericInfo mean='6'/>"));
        },
        {MISSING_VARIABLE_IN_BOTH, "z", "DataDictionary", "TransformationDictionary"});
    ExpectFailure([] { ReadModel(Replaced(kSmallPartitions, "mean='6'", "mean='much'")); },
                  {INVALID_ATTRIBUTE_VALUE_IN, "much", "mean", "NumericInfo"});
    ExpectFailure(
        [] { ReadModel(Replaced(kSmallPartitions, "<Array n='2' type='int'>7 3<", "<Array type='int'>7 3 1<")); },
        {NUMBERS_MISMATCH, "3", "value", "Array", "2", "Value", "PartitionFieldStats"});
}

TEST(Clustering, DescribesWhatItCompares) {
    std::ostringstream out;
    ReadModel(kSmallClusters)->Display(out);
    EXPECT_NE(out.str().find("function: clustering\n"), std::string::npos) << out.str();
    EXPECT_NE(out.str().find("clusters: 2, compared fields: 2\n"), std::string::npos) << out.str();
}

/// Every variant of the samples, and the small documents with numbers that overflow.
TEST(ClusteringColumns, HoldTheBitsOfCases) {
    std::vector<std::string> documents{kSmallClusters, kSmallBits, kSmallDistributions, kSmallPartitions,
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
        ExpectFinite(rows, random);
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

/// As many output fields as clusters, each asking for one's distance.
TEST(HostileClustering, TellsTheDistancesToManyClusters) {
    constexpr int kMany = 3000;
    std::string clusters;
    std::string outputs;
    for (int i = 0; i < kMany; ++i) {
        const std::string id = "n" + std::to_string(i);
        clusters +=
            "<Cluster id='" + id + "'><Array n='2' type='string'>" + std::to_string(100 + i) + " u</Array></Cluster>";
        outputs.insert(0, "<OutputField name='" + id + "' feature='affinity' value='" + id + "'/>");
    }
    const std::string document =
        Replaced(Replaced(Replaced(kSmallClusters, "</ClusteringModel>", clusters + "</ClusteringModel>"),
                          "numberOfClusters='2'", "numberOfClusters='" + std::to_string(kMany + 2) + "'"),
                 "</Output>", outputs + "</Output>");
    Scored scored(document);
    ASSERT_TRUE(scored.Score({{"x", "50"}, {"c", "u"}}).IsOK());
    EXPECT_EQ(scored.Number("n0"), 50.0);
    EXPECT_EQ(scored.Number("n2999"), 3049.0);
    ModelRows rows(document);
    std::mt19937_64 random(4);
    rows.Fill(random, 20);
    EXPECT_EQ(rows.InBlocks(*rows.Scorer().NewState(), 20, 0, false), rows.CaseByCase());
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
