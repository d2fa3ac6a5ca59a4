#ifndef VELTRANE_TESTS_MODELS_SMALL_NETWORK_H
#define VELTRANE_TESTS_MODELS_SMALL_NETWORK_H

#include <string>

/// Networks that tests change in one place.
namespace veltrane::tests {

/// A classification of t: no, maybe and yes have the numbers x, 2x and -x.
inline const std::string kSmallNetwork = R"(<PMML version='4.4'><DataDictionary>
<DataField name='t' optype='categorical' dataType='string'><Value value='no'/><Value value='maybe'/><Value value='yes'/></DataField>
<DataField name='y' optype='continuous' dataType='double'/>
<DataField name='x' optype='continuous' dataType='double'/>
<DataField name='c' optype='categorical' dataType='string'/></DataDictionary>
<NeuralNetwork functionName='classification' activationFunction='identity' normalizationMethod='none' threshold='0' width='1' altitude='1' numberOfLayers='2' isScorable='true'>
<MiningSchema><MiningField name='t' usageType='target'/><MiningField name='x'/><MiningField name='c'/></MiningSchema>
<Output><OutputField name='neuron' feature='entityId'/></Output>
<NeuralInputs numberOfInputs='1'><NeuralInput id='in'><DerivedField name='given' optype='continuous' dataType='double'><FieldRef field='x'/></DerivedField></NeuralInput></NeuralInputs>
<NeuralLayer numberOfNeurons='1'><Neuron id='half'><Con from='in' weight='0.5'/></Neuron></NeuralLayer>
<NeuralLayer activationFunction='identity' normalizationMethod='none' threshold='1' width='2' altitude='3'>
<Neuron id='1' bias='0' width='4' altitude='5'><Con from='half' weight='2'/></Neuron><Neuron id='2'><Con from='half' weight='2'/><Con from='in' weight='1'/></Neuron><Neuron id='3'><Con from='in' weight='-1'/></Neuron></NeuralLayer>
<NeuralOutputs numberOfOutputs='3'><NeuralOutput outputNeuron='1'><DerivedField optype='continuous' dataType='double'><NormDiscrete field='t' value='no'/></DerivedField></NeuralOutput>
<NeuralOutput outputNeuron='2'><DerivedField optype='continuous' dataType='double'><NormDiscrete field='t' value='maybe'/></DerivedField></NeuralOutput>
<NeuralOutput outputNeuron='3'><DerivedField optype='continuous' dataType='double'><NormDiscrete field='t' value='yes'/></DerivedField></NeuralOutput></NeuralOutputs>
</NeuralNetwork></PMML>)";

/// A regression of y: 3x, and 300x behind the inversion.
inline const std::string kSmallNumberNetwork = R"(<PMML version='4.4'><DataDictionary>
<DataField name='y' optype='continuous' dataType='double'/><DataField name='z' optype='continuous' dataType='double'/>
<DataField name='x' optype='continuous' dataType='double'/></DataDictionary>
<NeuralNetwork functionName='regression' activationFunction='identity'>
<MiningSchema><MiningField name='y' usageType='target'/><MiningField name='x'/></MiningSchema>
<LocalTransformations><DerivedField name='twice' optype='continuous' dataType='double'><Apply function='*'><FieldRef field='x'/><Constant>2</Constant></Apply></DerivedField></LocalTransformations>
<NeuralInputs><NeuralInput id='0'><DerivedField optype='continuous' dataType='double'><FieldRef field='x'/></DerivedField></NeuralInput></NeuralInputs>
<NeuralLayer><Neuron id='1'><Con from='0' weight='3'/></Neuron></NeuralLayer>
<NeuralOutputs><NeuralOutput outputNeuron='1'><DerivedField optype='continuous' dataType='double'><NormContinuous field='y' outliers='asIs'><LinearNorm orig='0' norm='0'/><LinearNorm orig='100' norm='1'/></NormContinuous></DerivedField></NeuralOutput></NeuralOutputs>
</NeuralNetwork></PMML>)";

} // namespace veltrane::tests

#endif
