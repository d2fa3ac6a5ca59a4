// Every element and attribute that the plug-in of networks reads missing, empty, wrong or doubled.
#include "models/kit/scoring.h"
#include "models/network/small_network.h"
#include "support/faults/fault.h"

#include <gtest/gtest.h>

using namespace veltrane::tests;

namespace {

class NetworkFault : public testing::TestWithParam<FaultyChange> {};

TEST_P(NetworkFault, NamesElementAndAttribute) {
    ExpectRefused(kSmallNetwork, GetParam());
}

constexpr FaultyChange kModelFaults[] = {
    {"FunctionMissing", " functionName='classification'", "",
     Failure(MISSING_ATTRIBUTE_OF, "functionName", "NeuralNetwork")},
    {"FunctionOfOtherModels", "functionName='classification'", "functionName='timeSeries'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "timeSeries", "functionName", "NeuralNetwork")},
    {"NotScorable", "isScorable='true'", "isScorable='false'",
     Failure(UNSUPPORTED_VALUE_IN, "false", "isScorable", "NeuralNetwork", "true")},
    {"ActivationMissing", "activationFunction='identity' normalizationMethod='none' threshold='0'", "threshold='0'",
     Failure(MISSING_ATTRIBUTE_OF, "activationFunction", "NeuralNetwork")},
    {"ActivationEmpty", "activationFunction='identity' normalizationMethod='none' threshold='0'",
     "activationFunction='' threshold='0'", Failure(NULL_ATTRIBUTE, "activationFunction", "NeuralNetwork")},
    {"ActivationWrong", "activationFunction='identity' normalizationMethod='none' threshold='0'",
     "activationFunction='gauss' threshold='0'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "gauss", "activationFunction", "NeuralNetwork")},
    {"NormalizationWrong", "normalizationMethod='none' threshold='0'", "normalizationMethod='max' threshold='0'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "max", "normalizationMethod", "NeuralNetwork")},
    {"ThresholdWrong", "threshold='0'", "threshold='low'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "low", "threshold", "NeuralNetwork")},
    {"WidthEmpty", "width='1'", "width=''", Failure(NULL_ATTRIBUTE, "width", "NeuralNetwork")},
    {"WidthZero", "width='1'", "width='0'", Failure(REQUIRES_ABOVE_ZERO, "0", "width")},
    {"AltitudeNegative", "altitude='1'", "altitude='-1'", Failure(REQUIRES_ABOVE_ZERO, "-1", "altitude")},
    {"LayersOfOtherNumber", "numberOfLayers='2'", "numberOfLayers='3'",
     Failure(ELEMENT_NUMBER_MISMATCH, "3", "numberOfLayers", "2", "NeuralLayer", "NeuralNetwork")},
    {"LayersWrong", "numberOfLayers='2'", "numberOfLayers='1.5'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "1.5", "numberOfLayers", "NeuralNetwork")},
    {"ChildWrong", "<MiningSchema>", "<Neuron/><MiningSchema>", Failure(INVALID_NODE, "Neuron", "NeuralNetwork")},
    {"ChildMisspelt", "<MiningSchema>", "<NeuralLayers/><MiningSchema>",
     Failure(INVALID_NODE, "NeuralLayers", "NeuralNetwork")},
};

constexpr const char* kInput = "<NeuralInput id='in'><DerivedField name='given' optype='continuous' dataType='double'>"
                               "<FieldRef field='x'/></DerivedField></NeuralInput>";

constexpr FaultyChange kInputFaults[] = {
    {"InputMissing", kInput, "", Failure(MISSING_NODE_IN, "NeuralInput", "NeuralInputs")},
    {"InputDoubled", "</NeuralInputs>",
     "<NeuralInput id='in'><DerivedField optype='continuous' dataType='double'><FieldRef field='x'/></DerivedField>"
     "</NeuralInput></NeuralInputs>",
     Failure(DUPLICATE_DEFINITION, "NeuralInput", "in", "NeuralNetwork")},
    {"InputsDoubled", "<NeuralLayer numberOfNeurons", "<NeuralInputs/><NeuralLayer numberOfNeurons",
     Failure(MORE_THAN_ONE, "NeuralInputs", "NeuralNetwork")},
    {"InputsOfOtherNumber", "numberOfInputs='1'", "numberOfInputs='2'",
     Failure(ELEMENT_NUMBER_MISMATCH, "2", "numberOfInputs", "1", "NeuralInput", "NeuralInputs")},
    {"InputsNegative", "numberOfInputs='1'", "numberOfInputs='-1'",
     Failure(ELEMENT_NUMBER_MISMATCH, "-1", "numberOfInputs", "1", "NeuralInput", "NeuralInputs")},
    {"InputWithoutId", "<NeuralInput id='in'>", "<NeuralInput>", Failure(MISSING_ATTRIBUTE_OF, "id", "NeuralInput")},
    {"InputWithEmptyId", "<NeuralInput id='in'>", "<NeuralInput id=''>", Failure(NULL_ATTRIBUTE, "id", "NeuralInput")},
    {"InputWithoutField", kInput, "<NeuralInput id='in'/>", Failure(MISSING_NODE_IN, "DerivedField", "NeuralInput")},
    {"InputOfTwoFields", "<NeuralInput id='in'>",
     "<NeuralInput id='in'><DerivedField optype='continuous' dataType='double'><FieldRef field='x'/></DerivedField>",
     Failure(MORE_THAN_ONE, "DerivedField", "NeuralInput")},
    {"InputOfTexts", "name='given' optype='continuous' dataType='double'",
     "name='given' optype='categorical' dataType='string'", Failure(REQUIRES_NUMERIC, "given")},
    {"InputOfNoField", "<FieldRef field='x'/>", "<FieldRef field='w'/>",
     Failure(MISSING_VARIABLE_IN_BOTH, "w", "DataDictionary", "TransformationDictionary")},
    {"InputOfTheTarget", "<FieldRef field='x'/>", "<FieldRef field='t'/>", Failure(NO_PREDICTOR, "t")},
    {"InputWithoutExpression", "<FieldRef field='x'/>", "",
     Failure(MISSING_DEFINITION_OF, "EXPRESSION", "given", "DerivedField")},
};

constexpr FaultyChange kLayerFaults[] = {
    {"NeuronsOfOtherNumber", "numberOfNeurons='1'", "numberOfNeurons='4'",
     Failure(ELEMENT_NUMBER_MISMATCH, "4", "numberOfNeurons", "1", "Neuron", "NeuralLayer")},
    {"LayerEmpty", "<NeuralLayer numberOfNeurons='1'>", "<NeuralLayer/><NeuralLayer numberOfNeurons='1'>",
     Failure(MISSING_NODE_IN, "Neuron", "NeuralLayer")},
    {"ActivationOfLayerWrong", "activationFunction='identity' normalizationMethod='none' threshold='1'",
     "activationFunction='sigmoid' threshold='1'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "sigmoid", "activationFunction", "NeuralLayer")},
    {"NormalizationOfLayerEmpty", "normalizationMethod='none' threshold='1'", "normalizationMethod='' threshold='1'",
     Failure(NULL_ATTRIBUTE, "normalizationMethod", "NeuralLayer")},
    {"ThresholdOfLayerEmpty", "threshold='1'", "threshold=''", Failure(NULL_ATTRIBUTE, "threshold", "NeuralLayer")},
    {"WidthOfLayerNegative", "width='2'", "width='-2'", Failure(REQUIRES_ABOVE_ZERO, "-2", "width")},
    {"AltitudeOfLayerZero", "altitude='3'", "altitude='0'", Failure(REQUIRES_ABOVE_ZERO, "0", "altitude")},
    {"WidthOfNeuronZero", "width='4'", "width='0'", Failure(REQUIRES_ABOVE_ZERO, "0", "width")},
    {"WidthOfNeuronWithoutSquare", "width='4'", "width='1e-170'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "1e-170", "width", "Neuron")},
    {"WidthOfLayerWithoutSquare", "width='2'", "width='1e200'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "1e200", "width", "NeuralLayer")},
    {"WidthOfNeuronWrong", "width='4'", "width='wide'", Failure(INVALID_ATTRIBUTE_VALUE_IN, "wide", "width", "Neuron")},
    {"AltitudeOfNeuronEmpty", "altitude='5'", "altitude=''", Failure(NULL_ATTRIBUTE, "altitude", "Neuron")},
    {"BiasWrong", "bias='0'", "bias='none'", Failure(INVALID_ATTRIBUTE_VALUE_IN, "none", "bias", "Neuron")},
    {"NeuronWithoutId", "<Neuron id='half'>", "<Neuron>", Failure(MISSING_ATTRIBUTE_OF, "id", "Neuron")},
    {"NeuronWithEmptyId", "<Neuron id='half'>", "<Neuron id=''>", Failure(NULL_ATTRIBUTE, "id", "Neuron")},
    {"NeuronDoubled", "<Neuron id='3'>", "<Neuron id='2'>",
     Failure(DUPLICATE_DEFINITION, "Neuron", "2", "NeuralNetwork")},
    {"NeuronNamedAsAnInput", "<Neuron id='3'>", "<Neuron id='in'>",
     Failure(DUPLICATE_DEFINITION, "Neuron", "in", "NeuralNetwork")},
    {"NeuronWithoutConnections", "<Con from='in' weight='-1'/>", "", Failure(MISSING_NODE_IN, "Con", "Neuron")},
    {"NeuronWithOtherChild", "<Con from='in' weight='-1'/>", "<Connection from='in' weight='-1'/>",
     Failure(INVALID_NODE, "Connection", "Neuron")},
    {"FromMissing", "<Con from='in' weight='-1'/>", "<Con weight='-1'/>", Failure(MISSING_ATTRIBUTE_OF, "from", "Con")},
    {"FromEmpty", "<Con from='in' weight='-1'/>", "<Con from='' weight='-1'/>", Failure(NULL_ATTRIBUTE, "from", "Con")},
    {"FromNobody", "<Con from='in' weight='-1'/>", "<Con from='9' weight='-1'/>",
     Failure(MISSING_ELEMENT_WITH_VALUE, "9", "from", "Con")},
    {"FromItself", "<Con from='in' weight='-1'/>", "<Con from='3' weight='-1'/>",
     Failure(SOURCE_IS_DESTINATION, "3", "Neuron")},
    {"FromItsLayer", "<Con from='in' weight='-1'/>", "<Con from='2' weight='-1'/>",
     Failure(SOURCE_IS_DESTINATION, "2", "Neuron")},
    {"FromTwice", "<Con from='in' weight='-1'/>", "<Con from='in' weight='-1'/><Con from='in' weight='2'/>",
     Failure(DUPLICATE_DEFINITION, "Con", "in", "Neuron")},
    {"WeightMissing", "<Con from='in' weight='-1'/>", "<Con from='in'/>",
     Failure(MISSING_ATTRIBUTE_OF, "weight", "Con")},
    {"WeightEmpty", "<Con from='in' weight='-1'/>", "<Con from='in' weight=''/>",
     Failure(NULL_ATTRIBUTE, "weight", "Con")},
    {"WeightInfinite", "<Con from='in' weight='-1'/>", "<Con from='in' weight='1e999'/>",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "1e999", "weight", "Con")},
};

constexpr FaultyChange kOutputFaults[] = {
    {"OutputsOfOtherNumber", "numberOfOutputs='3'", "numberOfOutputs='2'",
     Failure(ELEMENT_NUMBER_MISMATCH, "2", "numberOfOutputs", "3", "NeuralOutput", "NeuralOutputs")},
    {"OutputsDoubled", "</NeuralNetwork>", "<NeuralOutputs/></NeuralNetwork>",
     Failure(MORE_THAN_ONE, "NeuralOutputs", "NeuralNetwork")},
    {"NeuronMissing", " outputNeuron='3'", "", Failure(MISSING_ATTRIBUTE_OF, "outputNeuron", "NeuralOutput")},
    {"NeuronEmpty", "outputNeuron='3'", "outputNeuron=''", Failure(NULL_ATTRIBUTE, "outputNeuron", "NeuralOutput")},
    {"NeuronUnknown", "outputNeuron='3'", "outputNeuron='4'",
     Failure(MISSING_ELEMENT_WITH_VALUE, "4", "outputNeuron", "NeuralOutput")},
    {"CategoryMissing", "field='t' value='yes'", "field='t'", Failure(MISSING_ATTRIBUTE_OF, "value", "NormDiscrete")},
    {"CategoryUnknown", "field='t' value='yes'", "field='t' value='perhaps'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "perhaps", "value", "NormDiscrete")},
    {"CategoryTwice", "field='t' value='yes'", "field='t' value='no'",
     Failure(DUPLICATE_DEFINITION, "NeuralOutput", "no", "NeuralOutputs")},
    {"NumberOfAClassification", "<NormDiscrete field='t' value='yes'/>", "<FieldRef field='t'/>",
     Failure(UNEXPECTED_NODE_IN, "FieldRef", "NormDiscrete", "NeuralOutput")},
    {"ExpressionWithoutInverse", "<NormDiscrete field='t' value='yes'/>", "<Constant>1</Constant>",
     Failure(UNEXPECTED_NODE_IN, "Constant", "FieldRef, NormContinuous or NormDiscrete", "DerivedField")},
    {"OfAnInput", "field='t' value='yes'", "field='c' value='yes'",
     Failure(VALUE_TARGET_MISMATCH, "c", "field", "NormDiscrete", "t", "MiningSchema")},
    {"OfNoField", "field='t' value='yes'", "field='w' value='yes'",
     Failure(MISSING_VARIABLE_IN_BOTH, "w", "DataDictionary", "TransformationDictionary")},
};

INSTANTIATE_TEST_SUITE_P(Models, NetworkFault, testing::ValuesIn(kModelFaults), NameOfRow());
INSTANTIATE_TEST_SUITE_P(Inputs, NetworkFault, testing::ValuesIn(kInputFaults), NameOfRow());
INSTANTIATE_TEST_SUITE_P(Layers, NetworkFault, testing::ValuesIn(kLayerFaults), NameOfRow());
INSTANTIATE_TEST_SUITE_P(Outputs, NetworkFault, testing::ValuesIn(kOutputFaults), NameOfRow());

class NumberNetworkFault : public testing::TestWithParam<FaultyChange> {};

TEST_P(NumberNetworkFault, NamesElementAndAttribute) {
    ExpectRefused(kSmallNumberNetwork, GetParam());
}

constexpr const char* kOutput = "<NormContinuous field='y' outliers='asIs'><LinearNorm orig='0' norm='0'/><LinearNorm "
                                "orig='100' norm='1'/></NormContinuous>";

constexpr FaultyChange kNumberFaults[] = {
    {"WithoutInputs",
     "<NeuralInputs><NeuralInput id='0'><DerivedField optype='continuous' dataType='double'><FieldRef field='x'/>"
     "</DerivedField></NeuralInput></NeuralInputs>",
     "", Failure(MISSING_NODE_IN, "NeuralInputs", "NeuralNetwork")},
    {"WithoutLayers", "<NeuralLayer><Neuron id='1'><Con from='0' weight='3'/></Neuron></NeuralLayer>", "",
     Failure(MISSING_NODE_IN, "NeuralLayer", "NeuralNetwork")},
    {"FromALayerBehind", "<NeuralLayer><Neuron id='1'>",
     "<NeuralLayer><Neuron id='a'><Con from='1' weight='3'/></Neuron></NeuralLayer><NeuralLayer><Neuron id='1'>",
     Failure(SOURCE_IS_DESTINATION, "1", "Neuron")},
    {"InACircle", "<NeuralLayer><Neuron id='1'><Con from='0' weight='3'/>",
     "<NeuralLayer><Neuron id='a'><Con from='1' weight='3'/></Neuron></NeuralLayer><NeuralLayer><Neuron id='1'>"
     "<Con from='a' weight='3'/>",
     Failure(SOURCE_IS_DESTINATION, "1", "Neuron")},
    {"RadialBasisWithoutWidth", "activationFunction='identity'", "activationFunction='radialBasis'",
     Failure(MISSING_ATTRIBUTE_OF, "width", "Neuron")},
    {"CategoryOfARegression", kOutput, "<NormDiscrete field='y' value='1'/>",
     Failure(UNEXPECTED_NODE_IN, "NormDiscrete", "FieldRef or NormContinuous", "NeuralOutput")},
    {"OutputOfANumberThatIsComputed", kOutput, "<FieldRef field='twice'/>",
     Failure(UNEXPECTED_NODE_IN, "Apply", "FieldRef, NormContinuous or NormDiscrete", "DerivedField")},
    {"NumberTwice", "<NeuralOutputs>",
     "<NeuralOutputs><NeuralOutput outputNeuron='0'><DerivedField optype='continuous' dataType='double'><FieldRef "
     "field='y'/></DerivedField></NeuralOutput>",
     Failure(DUPLICATE_DEFINITION, "NeuralOutput", "y", "NeuralOutputs")},
    {"OutliersWrong", "outliers='asIs'", "outliers='as'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "as", "outliers", "NormContinuous")},
    {"NormFlat", "norm='1'", "norm='0'", Failure(INVALID_ATTRIBUTE_VALUE_IN, "0", "norm", "LinearNorm")},
    {"NormUpAndDown", "</NormContinuous>", "<LinearNorm orig='200' norm='0.5'/></NormContinuous>",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "0.5", "norm", "LinearNorm")},
    {"NormMissing", " norm='1'", "", Failure(MISSING_ATTRIBUTE_OF, "norm", "LinearNorm")},
    {"OrigDown", "orig='100'", "orig='-1'", Failure(VALUE_NOT_ASCENDING, "-1", "orig", "LinearNorm", "0")},
    {"OnePoint", "<LinearNorm orig='100' norm='1'/>", "",
     Failure(REQUIRES_MORE_THAN_ONE, "LinearNorm", "NormContinuous")},
};

INSTANTIATE_TEST_SUITE_P(Numbers, NumberNetworkFault, testing::ValuesIn(kNumberFaults), NameOfRow());

} // namespace
