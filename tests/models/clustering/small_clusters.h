#ifndef VELTRANE_TESTS_MODELS_SMALL_CLUSTERS_H
#define VELTRANE_TESTS_MODELS_SMALL_CLUSTERS_H

#include <string>

/// Models of clusters that tests change in one place.
namespace veltrane::tests {

/// low is at x = 0 in u, high at x = 10 in v; a field that differs in c counts as 4.
inline const std::string kSmallClusters = R"(<PMML version='4.4'><DataDictionary>
<DataField name='x' optype='continuous' dataType='double'/>
<DataField name='c' optype='categorical' dataType='string'><Value value='u'/><Value value='v'/></DataField></DataDictionary>
<ClusteringModel functionName='clustering' modelClass='centerBased' numberOfClusters='2' isScorable='true'>
<MiningSchema><MiningField name='x'/><MiningField name='c'/></MiningSchema>
<Output><OutputField name='id' feature='clusterId'/><OutputField name='entity' feature='entityId'/><OutputField name='name' feature='predictedDisplayValue'/><OutputField name='near' feature='affinity'/><OutputField name='high' feature='clusterAffinity' value='high'/><OutputField name='low' feature='entityAffinity' value='low'/></Output>
<ComparisonMeasure kind='distance' compareFunction='absDiff' minimum='0' maximum='100'><cityBlock/></ComparisonMeasure>
<ClusteringField field='x' isCenterField='true' fieldWeight='1' similarityScale='2' compareFunction='absDiff'/>
<ClusteringField field='c' fieldWeight='4' compareFunction='table'><Comparisons><Matrix kind='any' nbRows='2' nbCols='2'><Array n='2' type='real'>0 1</Array><Array n='2' type='real'>1 0</Array></Matrix></Comparisons></ClusteringField>
<MissingValueWeights><Array n='2' type='real'>1 1</Array></MissingValueWeights>
<Cluster id='low' name='the low ones' size='3'><KohonenMap coord1='0' coord2='1' coord3='2'/><Array n='2' type='string'>0 u</Array></Cluster>
<Cluster id='high' size='1'><Array n='2' type='string'>10 v</Array><Covariances><Matrix kind='diagonal'><Array n='2' type='real'>1 1</Array></Matrix></Covariances></Cluster>
</ClusteringModel></PMML>)";

/// some is 1 1 and none 0 0, by bits.
inline const std::string kSmallBits = R"(<PMML version='4.4'><DataDictionary>
<DataField name='x' optype='continuous' dataType='double'/><DataField name='y' optype='continuous' dataType='integer'/></DataDictionary>
<ClusteringModel functionName='clustering' modelClass='centerBased' numberOfClusters='2'>
<MiningSchema><MiningField name='x'/><MiningField name='y'/></MiningSchema>
<Output><OutputField name='near' feature='affinity'/><OutputField name='second' feature='clusterId' rank='2'/></Output>
<ComparisonMeasure kind='similarity'><binarySimilarity c00-parameter='1' c01-parameter='0' c10-parameter='0' c11-parameter='2' d00-parameter='1' d01-parameter='1' d10-parameter='1' d11-parameter='2'/></ComparisonMeasure>
<ClusteringField field='x'/><ClusteringField field='y'/>
<Cluster id='some'><Array n='2' type='int'>1 1</Array></Cluster><Cluster id='none'><Array n='2' type='int'>0 0</Array></Cluster>
</ClusteringModel></PMML>)";

/// Distributions without centers, over a field that is derived in the older way: a is about x = 2 in u, b about 6 in v.
inline const std::string kSmallDistributions = R"(<PMML version='4.4'><DataDictionary>
<DataField name='x' optype='continuous' dataType='double'/>
<DataField name='c' optype='categorical' dataType='string'><Value value='u'/><Value value='v'/></DataField></DataDictionary>
<ClusteringModel functionName='clustering' modelClass='distributionBased' numberOfClusters='2'>
<MiningSchema><MiningField name='x'/><MiningField name='c'/></MiningSchema>
<Output><OutputField name='near' feature='affinity'/></Output>
<ComparisonMeasure kind='distance'><minkowski p-parameter='1'/></ComparisonMeasure>
<ClusteringField field='half' compareFunction='absDiff'/><ClusteringField field='same' compareFunction='delta'/>
<CenterFields><DerivedField name='half' optype='continuous' dataType='double'><NormContinuous field='x'><LinearNorm orig='0' norm='0'/><LinearNorm orig='2' norm='1'/></NormContinuous></DerivedField><DerivedField name='same' optype='categorical' dataType='string'><FieldRef field='c'/></DerivedField></CenterFields>
<Cluster id='a'><Array n='2' type='string'>1 u</Array></Cluster><Cluster id='b'><Array n='2' type='string'>3 v</Array></Cluster>
</ClusteringModel></PMML>)";

/// Distributions by what a Partition tells of them: a is about x = 2 in u, b about 6 in v.
inline const std::string kSmallPartitions = R"(<PMML version='4.4'><DataDictionary>
<DataField name='x' optype='continuous' dataType='double'/>
<DataField name='c' optype='categorical' dataType='string'><Value value='u'/><Value value='v'/></DataField></DataDictionary>
<ClusteringModel functionName='clustering' modelClass='distributionBased' numberOfClusters='2'>
<MiningSchema><MiningField name='x'/><MiningField name='c'/></MiningSchema>
<Output><OutputField name='near' feature='affinity'/></Output>
<ComparisonMeasure kind='distance'><cityBlock/></ComparisonMeasure>
<ClusteringField field='x'/><ClusteringField field='c' compareFunction='table'><Comparisons><Matrix kind='symmetric' nbRows='2' nbCols='2' diagDefault='0' offDiagDefault='3'><MatCell row='1' col='2'>1</MatCell></Matrix></Comparisons></ClusteringField>
<Cluster id='a'><Partition name='p' size='10'><PartitionFieldStats field='x' weighted='0'><Counts totalFreq='10' missingFreq='0' invalidFreq='0' cardinality='4'/><NumericInfo minimum='0' maximum='4' mean='2' standardDeviation='1' median='2' interQuartileRange='1'><Quantile quantileLimit='50' quantileValue='2'/></NumericInfo></PartitionFieldStats><PartitionFieldStats field='c'><Array n='2' type='int'>7 3</Array></PartitionFieldStats></Partition></Cluster>
<Cluster id='b'><Partition name='q'><PartitionFieldStats field='x'><NumericInfo mean='6'/></PartitionFieldStats><PartitionFieldStats field='c'><Array n='2' type='int'>1 2</Array></PartitionFieldStats></Partition></Cluster>
</ClusteringModel></PMML>)";

} // namespace veltrane::tests

#endif
