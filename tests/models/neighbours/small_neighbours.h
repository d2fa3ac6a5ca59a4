#ifndef VELTRANE_TESTS_MODELS_SMALL_NEIGHBOURS_H
#define VELTRANE_TESTS_MODELS_SMALL_NEIGHBOURS_H

#include <string>

/// Nearest neighbours that tests change in one place.
namespace veltrane::tests {

/// Two of four instances vote on t and on y; in x they are at 0, 2, 4 and 8.
inline const std::string kSmallNeighbours = R"(<PMML version='4.4'><DataDictionary>
<DataField name='t' optype='categorical' dataType='string'><Value value='a'/><Value value='b'/></DataField>
<DataField name='y' optype='continuous' dataType='double'/>
<DataField name='x' optype='continuous' dataType='double'/><DataField name='k' optype='categorical' dataType='string'><Value value='u'/><Value value='v'/></DataField></DataDictionary>
<NearestNeighborModel functionName='mixed' numberOfNeighbors='2' continuousScoringMethod='average' categoricalScoringMethod='majorityVote' instanceIdVariable='id' threshold='0.5' isScorable='true'>
<MiningSchema><MiningField name='t' usageType='target'/><MiningField name='y' usageType='target'/><MiningField name='x'/><MiningField name='k'/></MiningSchema>
<Output><OutputField name='near' feature='entityId' rank='1'/><OutputField name='next' feature='entityId' rank='2'/><OutputField name='far' feature='affinity' value='four'/><OutputField name='number' feature='predictedValue' targetField='y'/></Output>
<TrainingInstances isTransformed='true' recordCount='4' fieldCount='5'>
<InstanceFields><InstanceField field='id' column='c1'/><InstanceField field='t' column='c2'/><InstanceField field='y' column='c3'/><InstanceField field='x' column='c4'/><InstanceField field='k' column='c5'/></InstanceFields>
<InlineTable><row><c1>one</c1><c2>a</c2><c3>1</c3><c4>0</c4><c5>u</c5></row>
<row><c1>two</c1><c2>b</c2><c3>2</c3><c4>2</c4><c5>u</c5></row>
<row><c1>three</c1><c2>b</c2><c3>4</c3><c4>4</c4><c5>u</c5></row>
<row><c1>four</c1><c2>a</c2><c3>8</c3><c4>8</c4><c5>v</c5></row></InlineTable></TrainingInstances>
<ComparisonMeasure kind='distance' compareFunction='absDiff'><minkowski p-parameter='1'/></ComparisonMeasure>
<KNNInputs><KNNInput field='x' fieldWeight='1' compareFunction='absDiff'/><KNNInput field='k' fieldWeight='0.25' compareFunction='table'><Comparisons><Matrix nbRows='2' nbCols='2'><Array type='real'>0 1</Array><Array type='real'>1 0</Array></Matrix></Comparisons></KNNInput></KNNInputs>
</NearestNeighborModel></PMML>)";

/// The mean of the nearest by what is alike: y is 1 where bits x and z are 1 0, 2 where they are 0 1.
inline const std::string kSmallNearNumbers = R"(<PMML version='4.4'><DataDictionary>
<DataField name='y' optype='continuous' dataType='double'/>
<DataField name='x' optype='continuous' dataType='double'/><DataField name='z' optype='continuous' dataType='double'/></DataDictionary>
<NearestNeighborModel functionName='regression' numberOfNeighbors='1' continuousScoringMethod='weightedAverage'>
<MiningSchema><MiningField name='y' usageType='target'/><MiningField name='x'/><MiningField name='z'/></MiningSchema>
<Output><OutputField name='near' feature='entityId'/><OutputField name='alike' feature='entityAffinity'/></Output>
<LocalTransformations><DerivedField name='d' optype='continuous' dataType='double'><FieldRef field='z'/></DerivedField></LocalTransformations>
<TrainingInstances isTransformed='false'><InstanceFields><InstanceField field='x'/><InstanceField field='z'/><InstanceField field='y'/></InstanceFields><InlineTable><row><x>1</x><z>0</z><y>1</y></row><row><x>0</x><z>1</z><y>2</y></row></InlineTable></TrainingInstances>
<ComparisonMeasure kind='similarity'><binarySimilarity c00-parameter='1' c01-parameter='0' c10-parameter='0' c11-parameter='2' d00-parameter='1' d01-parameter='1' d10-parameter='1' d11-parameter='2'/></ComparisonMeasure>
<KNNInputs><KNNInput field='x'/><KNNInput field='d'/></KNNInputs>
</NearestNeighborModel></PMML>)";

} // namespace veltrane::tests

#endif
