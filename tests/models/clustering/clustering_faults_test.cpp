// What contradicts itself in a model of clusters. Every element and attribute missing, empty, wrong or doubled stands
// in ../documents/every_fault.tsv.
#include "models/clustering/small_clusters.h"
#include "models/kit/scoring.h"
#include "support/faults/fault.h"

#include <gtest/gtest.h>

using namespace veltrane::tests;

namespace {

class ClusteringFault : public testing::TestWithParam<FaultyChange> {};

TEST_P(ClusteringFault, NamesElementAndAttribute) {
    ExpectRefused(kSmallClusters, GetParam());
}

constexpr const char* kWeights = "<Array n='2' type='real'>1 1</Array></MissingValueWeights>";
constexpr const char* kMatrix = "<Matrix kind='any' nbRows='2' nbCols='2'><Array n='2' type='real'>0 1</Array>"
                                "<Array n='2' type='real'>1 0</Array></Matrix>";

constexpr FaultyChange kModelFaults[] = {
    {"FunctionOfOtherModels", "functionName='clustering'", "functionName='regression'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "regression", "functionName", "ClusteringModel")},
    {"ClassWrong", "modelClass='centerBased'", "modelClass='treeBased'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "treeBased", "modelClass", "ClusteringModel")},
    {"ClustersOfOtherNumber", "numberOfClusters='2'", "numberOfClusters='3'",
     Failure(ELEMENT_NUMBER_MISMATCH, "3", "numberOfClusters", "2", "Cluster", "ClusteringModel")},
    {"ClustersOfNegativeNumber", "numberOfClusters='2'", "numberOfClusters='-2'",
     Failure(ELEMENT_NUMBER_MISMATCH, "-2", "numberOfClusters", "2", "Cluster", "ClusteringModel")},
    {"NotScorable", "isScorable='true'", "isScorable='false'",
     Failure(UNSUPPORTED_VALUE_IN, "false", "isScorable", "ClusteringModel", "true")},
    {"RankOfNone", "name='id' feature='clusterId'", "name='id' rank='0' feature='clusterId'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "0", "rank", "OutputField")},
    {"AffinityOfNobody", "value='high'", "value='highest'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "highest", "value", "OutputField")},
};

constexpr FaultyChange kMeasureFaults[] = {
    {"TwoMeasures", "<cityBlock/>", "<cityBlock/><euclidean/>", Failure(MORE_THAN_ONE, "measure", "ComparisonMeasure")},
    {"NoMeasure", "<cityBlock/>", "", Failure(MISSING_NODE_IN, "measure", "ComparisonMeasure")},
    {"KindWrong", "kind='distance'", "kind='nearness'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "nearness", "kind", "ComparisonMeasure")},
    {"BitsAsADistance", "<cityBlock/>", "<jaccard/>",
     Failure(UNSUPPORTED_VALUE_IN, "distance", "kind", "ComparisonMeasure", "similarity (jaccard)")},
    {"BitsOfTexts", "kind='distance' compareFunction='absDiff' minimum='0' maximum='100'><cityBlock/>",
     "kind='similarity'><tanimoto/>", Failure(REQUIRES_NUMERIC, "c")},
    {"PowerMissing", "<cityBlock/>", "<minkowski/>", Failure(MISSING_ATTRIBUTE_OF, "p-parameter", "minkowski")},
    {"PowerOfZero", "<cityBlock/>", "<minkowski p-parameter='0'/>",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "0", "p-parameter", "minkowski")},
    {"PowerInfinite", "<cityBlock/>", "<minkowski p-parameter='1e999'/>",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "1e999", "p-parameter", "minkowski")},
};

constexpr FaultyChange kFieldFaults[] = {
    {"FieldOfNobody", "ClusteringField field='x'", "ClusteringField field='w'",
     Failure(MISSING_VARIABLE_IN_BOTH, "w", "DataDictionary", "TransformationDictionary")},
    {"FieldTwice", "ClusteringField field='c'", "ClusteringField field='x'",
     Failure(DUPLICATE_DEFINITION, "ClusteringField", "x", "ClusteringModel")},
    {"WeightNegative", "fieldWeight='4'", "fieldWeight='-4'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "-4", "fieldWeight", "ClusteringField")},
    {"ScaleOfZero", "similarityScale='2'", "similarityScale='0'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "0", "similarityScale", "ClusteringField")},
    {"ScaleMissing", "similarityScale='2' compareFunction='absDiff'", "compareFunction='gaussSim'",
     Failure(MISSING_ATTRIBUTE_OF, "similarityScale", "ClusteringField")},
    {"DifferenceOfTexts", "compareFunction='table'", "compareFunction='absDiff'", Failure(REQUIRES_NUMERIC, "c")},
    {"TableWithoutMatrix", kMatrix, "", Failure(MISSING_NODE_IN, "Matrix", "Comparisons")},
    {"TableWithoutValues", "similarityScale='2' compareFunction='absDiff'/>",
     "compareFunction='table'><Comparisons><Matrix nbRows='1' nbCols='1'/></Comparisons></ClusteringField>",
     Failure(MISSING_VALUE_LIST, "x")},
    {"WeightsOfOtherNumber", kWeights, "<Array n='3' type='real'>1 1 1</Array></MissingValueWeights>",
     Failure(NUMBERS_MISMATCH, "3", "value", "Array", "2", "ClusteringField", "ClusteringModel")},
    {"WeightsNegative", kWeights, "<Array n='2' type='real'>1 -1</Array></MissingValueWeights>",
     Failure(INVALID_CONTENT, "1 -1", "Array")},
    {"WeightsOfTexts", kWeights, "<Array n='2' type='real'>1 one</Array></MissingValueWeights>",
     Failure(INVALID_CONTENT, "one", "Array")},
    {"WeightsOfOtherNumberThanStated", kWeights, "<Array n='3' type='real'>1 1</Array></MissingValueWeights>",
     Failure(ARRAY_SIZE_MISMATCH, "3", "n", "2")},
};

constexpr FaultyChange kMatrixFaults[] = {
    {"OtherNumberOfRows", kMatrix, "<Matrix nbRows='3' nbCols='2'/>",
     Failure(NUMBERS_MISMATCH, "3", "nbRows", "Matrix", "2", "Value", "c")},
    {"OtherNumberOfColumns", kMatrix, "<Matrix nbRows='2' nbCols='1'/>",
     Failure(NUMBERS_MISMATCH, "1", "nbCols", "Matrix", "2", "Value", "c")},
    {"RowsOfZero", kMatrix, "<Matrix nbRows='0' nbCols='2'/>",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "0", "nbRows", "Matrix")},
    {"SizeMissing", kMatrix, "<Matrix nbRows='2'/>", Failure(MISSING_ATTRIBUTE_OF, "nbCols", "Matrix")},
    {"OneArray", kMatrix, "<Matrix nbRows='2' nbCols='2'><Array type='real'>0 1</Array></Matrix>",
     Failure(NUMBERS_MISMATCH, "1", "Array", "Matrix", "2", "nbRows", "Matrix")},
    {"ShortArray", kMatrix,
     "<Matrix nbRows='2' nbCols='2'><Array type='real'>0 1</Array><Array type='real'>1</Array></Matrix>",
     Failure(NUMBERS_MISMATCH, "1", "value", "Array", "2", "column", "Matrix")},
    {"SymmetricOfOtherShape", kMatrix,
     "<Matrix kind='symmetric'><Array type='real'>0 1</Array><Array type='real'>1 0</Array></Matrix>",
     Failure(NUMBERS_MISMATCH, "2", "value", "Array", "1", "column", "Matrix")},
    {"SymmetricNotSquare", kMatrix, "<Matrix kind='symmetric' nbRows='2' nbCols='3'/>",
     Failure(NUMBERS_MISMATCH, "2", "nbRows", "Matrix", "3", "nbCols", "Matrix")},
    {"CellOutside", kMatrix, "<Matrix nbRows='2' nbCols='2'><MatCell row='3' col='1'>1</MatCell></Matrix>",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "3", "row", "MatCell")},
    {"CellBeforeTheFirst", kMatrix, "<Matrix nbRows='2' nbCols='2'><MatCell row='1' col='0'>1</MatCell></Matrix>",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "0", "col", "MatCell")},
    {"CellBesideTheDiagonal", kMatrix,
     "<Matrix kind='diagonal' nbRows='2' nbCols='2'><MatCell row='1' col='2'>1</MatCell></Matrix>",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "2", "col", "MatCell")},
    {"CellTwice", kMatrix,
     "<Matrix kind='symmetric' nbRows='2' nbCols='2'><MatCell row='1' col='2'>1</MatCell><MatCell row='2' "
     "col='1'>1</MatCell></Matrix>",
     Failure(DUPLICATE_DEFINITION, "MatCell", "2, 1", "Matrix")},
    {"CellOfTexts", kMatrix, "<Matrix nbRows='2' nbCols='2'><MatCell row='1' col='2'>far</MatCell></Matrix>",
     Failure(INVALID_CONTENT, "far", "MatCell")},
    {"CellAmongArrays", kMatrix, "<Matrix><Array type='real'>0 1</Array><MatCell row='1' col='2'>1</MatCell></Matrix>",
     Failure(INVALID_NODE, "MatCell", "Matrix")},
};

constexpr FaultyChange kClusterFaults[] = {
    {"IdTwice", "<Cluster id='high'", "<Cluster id='low'",
     Failure(DUPLICATE_DEFINITION, "Cluster", "low", "ClusteringModel")},
    {"CenterTooShort", "<Array n='2' type='string'>0 u</Array>", "<Array n='1' type='string'>0</Array>",
     Failure(NUMBERS_MISMATCH, "1", "value", "Array", "2", "ClusteringField", "ClusteringModel")},
    {"CenterOfOtherNumberThanStated", "<Array n='2' type='string'>0 u</Array>",
     "<Array n='1' type='string'>0 u</Array>", Failure(ARRAY_SIZE_MISMATCH, "1", "n", "2")},
    {"CenterOfTexts", "<Array n='2' type='string'>0 u</Array>", "<Array n='2' type='string'>near u</Array>",
     Failure(INVALID_CONTENT, "near", "Array")},
    {"CenterWithoutBound", "<Array n='2' type='string'>0 u</Array>", "<Array n='2' type='string'>1e999 u</Array>",
     Failure(INVALID_CONTENT, "1e999", "Array")},
    {"CenterMissing", "<Array n='2' type='string'>0 u</Array>", "", Failure(MISSING_NODE_IN, "Array", "Cluster")},
    {"CenterAsADistribution", "<Array n='2' type='string'>0 u</Array>", "<Partition name='p'/>",
     Failure(MISSING_NODE_IN, "Array", "Cluster")},
    {"CovariancesOfOtherSize", "<Array n='2' type='real'>1 1</Array></Matrix></Covariances>",
     "<Array n='1' type='real'>1</Array></Matrix></Covariances>",
     Failure(NUMBERS_MISMATCH, "1", "nbRows", "Matrix", "2", "ClusteringField", "ClusteringModel")},
    {"ChildOfOtherModels", "<KohonenMap coord1='0' coord2='1' coord3='2'/>", "<Node/>",
     Failure(INVALID_NODE, "Node", "Cluster")},
};

INSTANTIATE_TEST_SUITE_P(Models, ClusteringFault, testing::ValuesIn(kModelFaults), NameOfRow());
INSTANTIATE_TEST_SUITE_P(Measures, ClusteringFault, testing::ValuesIn(kMeasureFaults), NameOfRow());
INSTANTIATE_TEST_SUITE_P(Fields, ClusteringFault, testing::ValuesIn(kFieldFaults), NameOfRow());
INSTANTIATE_TEST_SUITE_P(Matrices, ClusteringFault, testing::ValuesIn(kMatrixFaults), NameOfRow());
INSTANTIATE_TEST_SUITE_P(Clusters, ClusteringFault, testing::ValuesIn(kClusterFaults), NameOfRow());

TEST(ClusteringFaults, ACenterOfBitsHasNothingElse) {
    ExpectFailure([] { ReadModel(Replaced(kSmallBits, "1 1</Array>", "1 2</Array>")); },
                  {INVALID_CONTENT, "2", "Array"});
}

TEST(ClusteringFaults, AnIdIsOneThatTheTargetLists) {
    const std::string target =
        "<DataField name='t' optype='categorical' dataType='string'><Value value='low'/></DataField>";
    const std::string document = Replaced(kSmallClusters, "</DataDictionary>", target + "</DataDictionary>");
    ExpectFailure(
        [&] {
            ReadModel(Replaced(document, "<MiningField name='x'/>",
                               "<MiningField name='x'/><MiningField name='t' usageType='target'/>"));
        },
        {INVALID_ATTRIBUTE_VALUE_IN, "high", "id", "Cluster"});
}

TEST(ClusteringFaults, CenterFieldsHaveFields) {
    const std::size_t begin = kSmallDistributions.find("<CenterFields>");
    const std::size_t end = kSmallDistributions.find("</CenterFields>");
    std::string document = kSmallDistributions;
    document.erase(begin + 14, end - begin - 14);
    ExpectFailure([&] { ReadModel(document); }, {MISSING_NODE_IN, "DerivedField", "CenterFields"});
}

} // namespace
