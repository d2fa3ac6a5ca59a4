// Every element and attribute that the plug-in of support vectors reads missing, empty, wrong or doubled.
#include "models/kit/scoring.h"
#include "models/vectors/small_vectors.h"
#include "support/faults/fault.h"

#include <gtest/gtest.h>

using namespace veltrane::tests;

namespace {

class VectorsFault : public testing::TestWithParam<FaultyChange> {};

TEST_P(VectorsFault, NamesElementAndAttribute) {
    ExpectRefused(kSmallVectors, GetParam());
}

constexpr const char* kModel = "SupportVectorMachineModel";

constexpr FaultyChange kModelFaults[] = {
    {"FunctionMissing", " functionName='classification'", "", Failure(MISSING_ATTRIBUTE_OF, "functionName", kModel)},
    {"NotScorable", "isScorable='true'", "isScorable='false'",
     Failure(UNSUPPORTED_VALUE_IN, "false", "isScorable", kModel, "true")},
    {"ThresholdWrong", "threshold='0'", "threshold='low'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "low", "threshold", kModel)},
    {"RepresentationEmpty", "svmRepresentation='SupportVectors'", "svmRepresentation=''",
     Failure(NULL_ATTRIBUTE, "svmRepresentation", kModel)},
    {"RepresentationWrong", "svmRepresentation='SupportVectors'", "svmRepresentation='Vectors'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "Vectors", "svmRepresentation", kModel)},
    {"MethodWrong", "'OneAgainstAll'", "'AllAgainstAll'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "AllAgainstAll", "classificationMethod", kModel)},
    {"MethodWithoutAlternates", "'OneAgainstAll'", "'OneAgainstOne'",
     Failure(MISSING_ATTRIBUTE_OF, "alternateTargetCategory", "SupportVectorMachine")},
    {"MaxWinsWrong", "maxWins='true'", "maxWins='yes'", Failure(INVALID_ATTRIBUTE_VALUE_IN, "yes", "maxWins", kModel)},
    {"ChildWrong", "<LinearKernelType/>", "<LinearKernelType/><SupportVector/>",
     Failure(INVALID_NODE, "SupportVector", kModel)},
    {"KernelMissing", "<LinearKernelType/>", "", Failure(MISSING_NODE_IN, "LinearKernelType", kModel)},
    {"KernelDoubled", "<LinearKernelType/>", "<LinearKernelType/><RadialBasisKernelType/>",
     Failure(MORE_THAN_ONE, "RadialBasisKernelType", kModel)},
    {"KernelMisspelt", "<LinearKernelType/>", "<LinearKernel/>", Failure(INVALID_NODE, "LinearKernel", kModel)},
    {"KernelOfCoefficients",
     "svmRepresentation='SupportVectors' classificationMethod='OneAgainstAll' maxWins='true' "
     "isScorable='true'>",
     "svmRepresentation='Coefficients'><SigmoidKernelType/>",
     Failure(UNEXPECTED_NODE_IN, "SigmoidKernelType", "LinearKernelType", kModel)},
    {"GammaEmpty", "<LinearKernelType/>", "<RadialBasisKernelType gamma=''/>",
     Failure(NULL_ATTRIBUTE, "gamma", "RadialBasisKernelType")},
    {"GammaWrong", "<LinearKernelType/>", "<PolynomialKernelType gamma='g'/>",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "g", "gamma", "PolynomialKernelType")},
    {"ShiftWrong", "<LinearKernelType/>", "<SigmoidKernelType coef0='c'/>",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "c", "coef0", "SigmoidKernelType")},
    {"DegreeWrong", "<LinearKernelType/>", "<PolynomialKernelType degree='d'/>",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "d", "degree", "PolynomialKernelType")},
    {"SupportVectorsOfCoefficients", "svmRepresentation='SupportVectors'", "svmRepresentation='Coefficients'",
     Failure(INVALID_NODE, "SupportVectors", "SupportVectorMachine")},
};

constexpr const char* kSparse =
    "<REAL-SparseArray n='2' defaultValue='0'><Indices>1</Indices><REAL-Entries>-1</REAL-Entries></REAL-SparseArray>";

constexpr FaultyChange kVectorFaults[] = {
    {"FieldsMissing",
     "<VectorFields numberOfFields='2'><FieldRef field='x'/><CategoricalPredictor name='k' value='u' coefficient='1'/>"
     "</VectorFields>",
     "", Failure(MISSING_NODE_IN, "VectorFields", "VectorDictionary")},
    {"FieldsEmpty", "<FieldRef field='x'/><CategoricalPredictor name='k' value='u' coefficient='1'/>", "",
     Failure(MISSING_NODE_IN, "FieldRef", "VectorFields")},
    {"FieldsDoubled", "<VectorInstance id='v'>", "<VectorFields/><VectorInstance id='v'>",
     Failure(MORE_THAN_ONE, "VectorFields", "VectorDictionary")},
    {"DictionaryDoubled", "</SupportVectorMachineModel>", "<VectorDictionary/></SupportVectorMachineModel>",
     Failure(MORE_THAN_ONE, "VectorDictionary", kModel)},
    {"FieldsOfOtherNumber", "numberOfFields='2'", "numberOfFields='3'",
     Failure(ELEMENT_NUMBER_MISMATCH, "3", "numberOfFields", "2", "FieldRef, CategoricalPredictor", "VectorFields")},
    {"FieldMissing", "<FieldRef field='x'/>", "<FieldRef/>", Failure(MISSING_ATTRIBUTE_OF, "field", "FieldRef")},
    {"FieldUnknown", "<FieldRef field='x'/>", "<FieldRef field='w'/>",
     Failure(MISSING_VARIABLE_IN_BOTH, "w", "DataDictionary", "TransformationDictionary")},
    {"FieldOfTheTarget", "<FieldRef field='x'/>", "<FieldRef field='t'/>", Failure(NO_PREDICTOR, "t")},
    {"FieldOfTexts", "<FieldRef field='x'/>", "<FieldRef field='k'/>", Failure(REQUIRES_NUMERIC, "k")},
    {"ReplacementWrong", "<FieldRef field='x'/>", "<FieldRef field='x' mapMissingTo='none'/>",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "none", "mapMissingTo", "FieldRef")},
    {"CategoryWithoutField", " name='k' value='u'", " value='u'",
     Failure(MISSING_ATTRIBUTE_OF, "name", "CategoricalPredictor")},
    {"CategoryMissing", " value='u' coefficient='1'", " coefficient='1'",
     Failure(MISSING_ATTRIBUTE_OF, "value", "CategoricalPredictor")},
    {"CategoryWithoutCoefficient", "value='u' coefficient='1'", "value='u'",
     Failure(MISSING_ATTRIBUTE_OF, "coefficient", "CategoricalPredictor")},
    {"VectorsOfOtherNumber", "numberOfVectors='2'", "numberOfVectors='1'",
     Failure(ELEMENT_NUMBER_MISMATCH, "1", "numberOfVectors", "2", "VectorInstance", "VectorDictionary")},
    {"IdMissing", "<VectorInstance id='w'>", "<VectorInstance>", Failure(MISSING_ATTRIBUTE_OF, "id", "VectorInstance")},
    {"IdEmpty", "<VectorInstance id='w'>", "<VectorInstance id=''>", Failure(NULL_ATTRIBUTE, "id", "VectorInstance")},
    {"IdTwice", "<VectorInstance id='w'>", "<VectorInstance id='v'>",
     Failure(DUPLICATE_DEFINITION, "VectorInstance", "v", "VectorDictionary")},
    {"ArrayMissing", "<Array n='2' type='real'>1 0</Array>", "",
     Failure(MISSING_NODE_IN, "REAL-SparseArray", "VectorInstance")},
    {"ArrayDoubled", "</Array>", "</Array><REAL-SparseArray/>",
     Failure(MORE_THAN_ONE, "REAL-SparseArray", "VectorInstance")},
    {"ArrayWithoutType", "<Array n='2' type='real'>", "<Array n='2'>", Failure(MISSING_ATTRIBUTE_OF, "type", "Array")},
    {"ArrayOfTexts", "type='real'", "type='string'", Failure(INVALID_ATTRIBUTE_VALUE_IN, "string", "type", "Array")},
    {"ArrayOfOtherSizeThanStated", "<Array n='2'", "<Array n='3'", Failure(ARRAY_SIZE_MISMATCH, "3", "n", "2")},
    {"ArrayOfOtherSize", "<Array n='2' type='real'>1 0</Array>", "<Array type='real'>1</Array>",
     Failure(NUMBERS_MISMATCH, "1", "Array", "Array", "2", "FieldRef, CategoricalPredictor", "VectorFields")},
    {"ArrayWithAWord", "1 0</Array>", "1 one</Array>", Failure(INVALID_CONTENT, "one", "Array")},
    {"ArrayWithAnInfiniteNumber", "1 0</Array>", "1 1e999</Array>", Failure(INVALID_CONTENT, "1e999", "Array")},
    {"SparseOfOtherSize", "<REAL-SparseArray n='2'", "<REAL-SparseArray n='4'",
     Failure(NUMBERS_MISMATCH, "4", "n", "REAL-SparseArray", "2", "FieldRef, CategoricalPredictor", "VectorFields")},
    {"SparseOfHugeSize", "<REAL-SparseArray n='2'", "<REAL-SparseArray n='99999999999'",
     Failure(NUMBERS_MISMATCH, "99999999999", "n", "REAL-SparseArray", "2", "FieldRef, CategoricalPredictor",
             "VectorFields")},
    {"SparseOfNegativeSize", "<REAL-SparseArray n='2'", "<REAL-SparseArray n='-2'",
     Failure(NUMBERS_MISMATCH, "-2", "n", "REAL-SparseArray", "2", "FieldRef, CategoricalPredictor", "VectorFields")},
    {"SparseOfBrokenSize", "<REAL-SparseArray n='2'", "<REAL-SparseArray n='2.5'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "2.5", "n", "REAL-SparseArray")},
    {"SparseWithoutIndices", "<Indices>1</Indices>", "",
     Failure(NUMBERS_MISMATCH, "0", "Indices", "REAL-SparseArray", "1", "REAL-Entries", "REAL-SparseArray")},
    {"SparseWithoutEntries", "<REAL-Entries>-1</REAL-Entries>", "",
     Failure(NUMBERS_MISMATCH, "1", "Indices", "REAL-SparseArray", "0", "REAL-Entries", "REAL-SparseArray")},
    {"IndicesDoubled", "<Indices>1</Indices>", "<Indices>1</Indices><Indices>2</Indices>",
     Failure(MORE_THAN_ONE, "Indices", "REAL-SparseArray")},
    {"EntriesDoubled", "<REAL-Entries>-1</REAL-Entries>",
     "<REAL-Entries>-1</REAL-Entries><REAL-Entries>1</REAL-Entries>",
     Failure(MORE_THAN_ONE, "REAL-Entries", "REAL-SparseArray")},
    {"IndexZero", "<Indices>1</Indices>", "<Indices>0</Indices>", Failure(INVALID_CONTENT, "0", "Indices")},
    {"IndexBeyond", "<Indices>1</Indices>", "<Indices>3</Indices>", Failure(INVALID_CONTENT, "3", "Indices")},
    {"IndexBroken", "<Indices>1</Indices>", "<Indices>1.5</Indices>", Failure(INVALID_CONTENT, "1.5", "Indices")},
    {"IndexTwice", kSparse,
     "<REAL-SparseArray><Indices>1 1</Indices><REAL-Entries>1 2</REAL-Entries></REAL-SparseArray>",
     Failure(DUPLICATE_DEFINITION, "Indices", "1", "REAL-SparseArray")},
    {"EntryWrong", "<REAL-Entries>-1<", "<REAL-Entries>one<", Failure(INVALID_CONTENT, "one", "REAL-Entries")},
    {"DefaultWrong", "defaultValue='0'", "defaultValue='none'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "none", "defaultValue", "REAL-SparseArray")},
};

constexpr FaultyChange kMachineFaults[] = {
    {"CategoryMissing", "<SupportVectorMachine targetCategory='b'>", "<SupportVectorMachine>",
     Failure(MISSING_ATTRIBUTE_OF, "targetCategory", "SupportVectorMachine")},
    {"CategoryUnknown", "targetCategory='b'", "targetCategory='d'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "d", "targetCategory", "SupportVectorMachine")},
    {"CategoryTwice", "targetCategory='b'", "targetCategory='a'",
     Failure(DUPLICATE_DEFINITION, "SupportVectorMachine", "a", kModel)},
    {"AlternateUnknown", "targetCategory='b'", "targetCategory='b' alternateTargetCategory='d'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "d", "alternateTargetCategory", "SupportVectorMachine")},
    {"AlternateTheSame", "targetCategory='b'", "targetCategory='b' alternateTargetCategory='b'",
     Failure(CONFLICTING_VALUES, "b", "targetCategory", "b", "alternateTargetCategory")},
    {"ThresholdOfMachineEmpty", "threshold='1'", "threshold=''",
     Failure(NULL_ATTRIBUTE, "threshold", "SupportVectorMachine")},
    {"SupportVectorsDoubled", "<SupportVectors numberOfSupportVectors",
     "<SupportVectors><SupportVector vectorId='v'/></SupportVectors><SupportVectors numberOfSupportVectors",
     Failure(MORE_THAN_ONE, "SupportVectors", "SupportVectorMachine")},
    {"SupportVectorsMissing",
     "<SupportVectors numberOfSupportVectors='1' numberOfAttributes='2'><SupportVector vectorId='v'/></SupportVectors>",
     "", Failure(MISSING_NODE_IN, "SupportVectors", "SupportVectorMachine")},
    {"SupportVectorsEmpty", "numberOfAttributes='2'><SupportVector vectorId='v'/>", "numberOfAttributes='2'>",
     Failure(MISSING_NODE_IN, "SupportVector", "SupportVectors")},
    {"SupportVectorsOfOtherNumber", "numberOfSupportVectors='1'", "numberOfSupportVectors='2'",
     Failure(ELEMENT_NUMBER_MISMATCH, "2", "numberOfSupportVectors", "1", "SupportVector", "SupportVectors")},
    {"AttributesOfOtherNumber", "numberOfAttributes='2'", "numberOfAttributes='3'",
     Failure(NUMBER_MISMATCH, "3", "numberOfAttributes", "2", "FieldRef, CategoricalPredictor", "VectorFields")},
    {"VectorIdMissing", "numberOfAttributes='2'><SupportVector vectorId='v'/>",
     "numberOfAttributes='2'><SupportVector/>", Failure(MISSING_ATTRIBUTE_OF, "vectorId", "SupportVector")},
    {"VectorIdEmpty", "numberOfAttributes='2'><SupportVector vectorId='v'/>",
     "numberOfAttributes='2'><SupportVector vectorId=''/>", Failure(NULL_ATTRIBUTE, "vectorId", "SupportVector")},
    {"VectorIdUnknown", "numberOfAttributes='2'><SupportVector vectorId='v'/>",
     "numberOfAttributes='2'><SupportVector vectorId='z'/>",
     Failure(MISSING_ELEMENT_WITH_VALUE, "z", "vectorId", "SupportVector")},
    {"VectorIdTwice", "<SupportVector vectorId='v'/><SupportVector vectorId='w'/>",
     "<SupportVector vectorId='v'/><SupportVector vectorId='v'/>",
     Failure(DUPLICATE_DEFINITION, "SupportVector", "v", "SupportVectors")},
    {"CoefficientsMissing",
     "<Coefficients numberOfCoefficients='1' absoluteValue='0'><Coefficient value='1'/></Coefficients>", "",
     Failure(MISSING_NODE_IN, "Coefficients", "SupportVectorMachine")},
    {"CoefficientsDoubled", "<Coefficients absoluteValue='1'>", "<Coefficients/><Coefficients absoluteValue='1'>",
     Failure(MORE_THAN_ONE, "Coefficients", "SupportVectorMachine")},
    {"CoefficientsOfOtherNumberThanStated", "numberOfCoefficients='1'", "numberOfCoefficients='2'",
     Failure(ELEMENT_NUMBER_MISMATCH, "2", "numberOfCoefficients", "1", "Coefficient", "Coefficients")},
    {"CoefficientsOfOtherNumber", "<Coefficient value='0.5'/><Coefficient value='0.5'/>", "<Coefficient value='0.5'/>",
     Failure(NUMBERS_MISMATCH, "1", "Coefficient", "Coefficients", "2", "SupportVector", "SupportVectors")},
    {"BiasWrong", "absoluteValue='0'", "absoluteValue='b'",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "b", "absoluteValue", "Coefficients")},
    {"CoefficientWrong", "absoluteValue='0'><Coefficient value='1'/>", "absoluteValue='0'><Coefficient value='b'/>",
     Failure(INVALID_ATTRIBUTE_VALUE_IN, "b", "value", "Coefficient")},
};

INSTANTIATE_TEST_SUITE_P(Models, VectorsFault, testing::ValuesIn(kModelFaults), NameOfRow());
INSTANTIATE_TEST_SUITE_P(Vectors, VectorsFault, testing::ValuesIn(kVectorFaults), NameOfRow());
INSTANTIATE_TEST_SUITE_P(Machines, VectorsFault, testing::ValuesIn(kMachineFaults), NameOfRow());

class NumberVectorsFault : public testing::TestWithParam<FaultyChange> {};

TEST_P(NumberVectorsFault, NamesElementAndAttribute) {
    ExpectRefused(kSmallNumberVectors, GetParam());
}

constexpr FaultyChange kNumberFaults[] = {
    {"DictionaryMissing",
     "<VectorDictionary><VectorFields><FieldRef field='x'/></VectorFields><VectorInstance id='v'><Array "
     "type='real'>1</Array></VectorInstance></VectorDictionary>",
     "", Failure(MISSING_NODE_IN, "VectorDictionary", kModel)},
    {"MachineMissing",
     "<SupportVectorMachine><SupportVectors><SupportVector vectorId='v'/></SupportVectors><Coefficients "
     "absoluteValue='1'><Coefficient value='2'/></Coefficients></SupportVectorMachine>",
     "", Failure(MISSING_NODE_IN, "SupportVectorMachine", kModel)},
    {"MachineTwice", "</SupportVectorMachineModel>",
     "<SupportVectorMachine><SupportVectors><SupportVector vectorId='v'/></SupportVectors><Coefficients><Coefficient/>"
     "</Coefficients></SupportVectorMachine></SupportVectorMachineModel>",
     Failure(MORE_THAN_ONE, "SupportVectorMachine", kModel)},
    {"CoefficientsOfFieldsOfOtherNumber",
     "functionName='regression'>\n<MiningSchema><MiningField name='y' usageType='target'/><MiningField name='x'/>"
     "</MiningSchema>\n<LinearKernelType/>",
     "functionName='regression' svmRepresentation='Coefficients'><MiningSchema><MiningField name='x'/></MiningSchema>"
     "<LinearKernelType/><SupportVectorMachine><Coefficients/></SupportVectorMachine>",
     Failure(NUMBERS_MISMATCH, "0", "Coefficient", "Coefficients", "1", "FieldRef, CategoricalPredictor",
             "VectorFields")},
};

INSTANTIATE_TEST_SUITE_P(Numbers, NumberVectorsFault, testing::ValuesIn(kNumberFaults), NameOfRow());

} // namespace
