#ifndef VELTRANE_TESTS_MODELS_SMALL_TREE_H
#define VELTRANE_TESTS_MODELS_SMALL_TREE_H

#include <string>

/// Trees that tests change at one place with Replaced.
namespace veltrane::tests {

/// A classification with one of everything that the plug-in reads: "a" for x above 1 or c among u and v.
inline const std::string kSmallTree = R"(<PMML version='4.3'><Header/>
<DataDictionary numberOfFields='4'>
 <DataField name='t' optype='categorical' dataType='string'><Value value='a'/><Value value='b'/></DataField>
 <DataField name='x' optype='continuous' dataType='double'/>
 <DataField name='c' optype='categorical' dataType='string'/>
 <DataField name='o' optype='ordinal' dataType='string'><Value value='low'/><Value value='high'/></DataField>
</DataDictionary>
<TreeModel functionName='classification' splitCharacteristic='binarySplit' missingValueStrategy='defaultChild' missingValuePenalty='0.5' noTrueChildStrategy='returnLastPrediction'>
 <MiningSchema><MiningField name='t' usageType='target'/><MiningField name='x'/><MiningField name='c'/><MiningField name='o'/></MiningSchema>
 <Output><OutputField name='p' feature='probability' value='a'/><OutputField name='conf' feature='confidence'/><OutputField name='node' feature='entityId' optype='categorical' dataType='string'/></Output>
 <Node id='1' score='b' recordCount='10' defaultChild='2'>
  <True/>
  <ScoreDistribution value='a' recordCount='4' probability='0.4' confidence='0.3'/>
  <ScoreDistribution value='b' recordCount='6' probability='0.6' confidence='0.5'/>
  <Node id='2' score='a' recordCount='3'>
   <CompoundPredicate booleanOperator='or'>
    <SimplePredicate field='x' operator='greaterThan' value='1'/>
    <SimpleSetPredicate field='c' booleanOperator='isIn'><Array n='2' type='string'>u v</Array></SimpleSetPredicate>
   </CompoundPredicate>
  </Node>
 </Node>
</TreeModel></PMML>)";

/// A tree whose prediction tells what a condition on the case says: "yes", "no", or none where it is unknown.
inline std::string ConditionDocument(const std::string& predicate) {
    return R"(<PMML version='4.3'><DataDictionary>
 <DataField name='t' optype='categorical' dataType='string'/>
 <DataField name='x' optype='continuous' dataType='double'/>
 <DataField name='k' optype='categorical' dataType='integer'/>
 <DataField name='c' optype='categorical' dataType='string'><Value value='u'/><Value value='v'/><Value value='w'/></DataField>
 <DataField name='o' optype='ordinal' dataType='string'><Value value='low'/><Value value='mid'/><Value value='high'/></DataField>
 <DataField name='r' optype='ordinal' dataType='integer'><Value value='30'/><Value value='10'/><Value value='20'/></DataField>
 <DataField name='b' optype='categorical' dataType='boolean'/>
 <DataField name='d' optype='continuous' dataType='date'/>
</DataDictionary>
<TransformationDictionary>
 <DerivedField name='half' optype='continuous' dataType='double'><Apply function='/'><FieldRef field='x'/><Constant>2</Constant></Apply></DerivedField>
 <DerivedField name='copy' optype='categorical' dataType='string'><FieldRef field='c'/></DerivedField>
 <DerivedField name='same' optype='categorical' dataType='boolean'><FieldRef field='b'/></DerivedField>
 <DerivedField name='big' optype='categorical' dataType='boolean'><Apply function='greaterThan'><FieldRef field='x'/><Constant>10</Constant></Apply></DerivedField>
</TransformationDictionary>
<TreeModel functionName='classification' missingValueStrategy='nullPrediction'>
 <MiningSchema><MiningField name='t' usageType='target'/><MiningField name='x'/><MiningField name='k'/>
  <MiningField name='c' invalidValueTreatment='asIs'/><MiningField name='o' invalidValueTreatment='asIs'/><MiningField name='r'/><MiningField name='b'/><MiningField name='d'/></MiningSchema>
 <Node><True/>
  <Node score='yes'>)" +
           predicate + R"(</Node>
  <Node score='no'><True/></Node>
 </Node>
</TreeModel></PMML>)";
}

} // namespace veltrane::tests

#endif
