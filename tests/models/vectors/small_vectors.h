#ifndef VELTRANE_TESTS_MODELS_SMALL_VECTORS_H
#define VELTRANE_TESTS_MODELS_SMALL_VECTORS_H

#include <string>

/// Support vector machines that tests change in one place.
namespace veltrane::tests {

/// Three machines of t, whose sums are x, 1 and -x.
inline const std::string kSmallVectors = R"(<PMML version='4.4'><DataDictionary>
<DataField name='t' optype='categorical' dataType='string'><Value value='a'/><Value value='b'/><Value value='c'/></DataField>
<DataField name='x' optype='continuous' dataType='double'/><DataField name='k' optype='categorical' dataType='string'/></DataDictionary>
<SupportVectorMachineModel functionName='classification' threshold='0' svmRepresentation='SupportVectors' classificationMethod='OneAgainstAll' maxWins='true' isScorable='true'>
<MiningSchema><MiningField name='t' usageType='target'/><MiningField name='x'/><MiningField name='k'/></MiningSchema>
<Output><OutputField name='p' feature='probability'/><OutputField name='second' feature='predictedValue' rank='2'/></Output>
<LinearKernelType/>
<VectorDictionary numberOfVectors='2'><VectorFields numberOfFields='2'><FieldRef field='x'/><CategoricalPredictor name='k' value='u' coefficient='1'/></VectorFields>
<VectorInstance id='v'><Array n='2' type='real'>1 0</Array></VectorInstance>
<VectorInstance id='w'><REAL-SparseArray n='2' defaultValue='0'><Indices>1</Indices><REAL-Entries>-1</REAL-Entries></REAL-SparseArray></VectorInstance></VectorDictionary>
<SupportVectorMachine targetCategory='a' threshold='1'><SupportVectors numberOfSupportVectors='1' numberOfAttributes='2'><SupportVector vectorId='v'/></SupportVectors><Coefficients numberOfCoefficients='1' absoluteValue='0'><Coefficient value='1'/></Coefficients></SupportVectorMachine>
<SupportVectorMachine targetCategory='b'><SupportVectors><SupportVector vectorId='v'/><SupportVector vectorId='w'/></SupportVectors><Coefficients absoluteValue='1'><Coefficient value='0.5'/><Coefficient value='0.5'/></Coefficients></SupportVectorMachine>
<SupportVectorMachine targetCategory='c'><SupportVectors><SupportVector vectorId='w'/></SupportVectors><Coefficients><Coefficient value='1'/></Coefficients></SupportVectorMachine>
</SupportVectorMachineModel></PMML>)";

/// A regression of y: 2x + 1.
inline const std::string kSmallNumberVectors = R"(<PMML version='4.4'><DataDictionary>
<DataField name='y' optype='continuous' dataType='double'/><DataField name='x' optype='continuous' dataType='double'/></DataDictionary>
<SupportVectorMachineModel functionName='regression'>
<MiningSchema><MiningField name='y' usageType='target'/><MiningField name='x'/></MiningSchema>
<LinearKernelType/>
<VectorDictionary><VectorFields><FieldRef field='x'/></VectorFields><VectorInstance id='v'><Array type='real'>1</Array></VectorInstance></VectorDictionary>
<SupportVectorMachine><SupportVectors><SupportVector vectorId='v'/></SupportVectors><Coefficients absoluteValue='1'><Coefficient value='2'/></Coefficients></SupportVectorMachine>
</SupportVectorMachineModel></PMML>)";

/// One machine, for a where x is below 1, else for b.
inline const std::string kSmallPair = R"(<PMML version='4.4'><DataDictionary>
<DataField name='t' optype='categorical' dataType='string'><Value value='a'/><Value value='b'/></DataField>
<DataField name='x' optype='continuous' dataType='double'/></DataDictionary>
<SupportVectorMachineModel functionName='classification' threshold='4' classificationMethod='OneAgainstOne' maxWins='false'>
<MiningSchema><MiningField name='t' usageType='target'/><MiningField name='x'/></MiningSchema>
<PolynomialKernelType description='any' gamma='2' coef0='1' degree='1'/>
<VectorDictionary numberOfVectors='1'><VectorFields numberOfFields='1'><FieldRef field='x' mapMissingTo='0'/></VectorFields>
<VectorInstance id='v'><REAL-SparseArray n='1' defaultValue='1'/></VectorInstance></VectorDictionary>
<SupportVectorMachine targetCategory='a' alternateTargetCategory='b' threshold='3'><SupportVectors numberOfSupportVectors='1' numberOfAttributes='1'><SupportVector vectorId='v'/></SupportVectors><Coefficients numberOfCoefficients='1' absoluteValue='0'><Coefficient value='1'/></Coefficients></SupportVectorMachine>
</SupportVectorMachineModel></PMML>)";

/// The regression of y by the coefficients of its fields: 2x + 1.
inline const std::string kSmallCoefficients = R"(<PMML version='4.4'><DataDictionary>
<DataField name='y' optype='continuous' dataType='double'/><DataField name='x' optype='continuous' dataType='double'/></DataDictionary>
<SupportVectorMachineModel functionName='regression' svmRepresentation='Coefficients'>
<MiningSchema><MiningField name='y' usageType='target'/><MiningField name='x'/></MiningSchema>
<LinearKernelType description='plain'/>
<VectorDictionary numberOfVectors='0'><VectorFields numberOfFields='1'><FieldRef field='x'/></VectorFields></VectorDictionary>
<SupportVectorMachine><Coefficients numberOfCoefficients='1' absoluteValue='1'><Coefficient value='2'/></Coefficients></SupportVectorMachine>
</SupportVectorMachineModel></PMML>)";

} // namespace veltrane::tests

#endif
