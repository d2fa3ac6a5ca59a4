#ifndef VELTRANE_TESTS_MODELS_CHECKED_DOCUMENTS_H
#define VELTRANE_TESTS_MODELS_CHECKED_DOCUMENTS_H

#include "kit/document/checks/document_check.h"
#include "support/dom.h"

#include <string>
#include <vector>

/// Documents for the check of what documents may say.
namespace veltrane::tests {

/// Checks a document with its first model.
inline void Check(xercesc::DOMDocument* document) {
    const veltrane_kit::DocumentText text("");
    const veltrane_kit::Element root(document->getDocumentElement(), text);
    std::u16string model;
    for (const veltrane_kit::Element child : root.Children()) {
        const std::string tag = child.Tag();
        if (model.empty() && (tag.ends_with("Model") || tag == "Scorecard" || tag == "NeuralNetwork")) {
            model = veltrane_kit::Widen(tag);
        }
    }
    veltrane_kit::CheckDocument(root, model.c_str());
}

inline void Check(const std::string& document) {
    Check(ParseXml(document).Document());
}

/// Elements and attributes that are checked, each of them once at least: a document for each kind of model.
inline const std::string kCheckedRegression = R"(<PMML version='4.4'><Header copyright='none'/>
<DataDictionary numberOfFields='4'>
 <DataField name='y' optype='continuous' dataType='double'/>
 <DataField name='x' optype='continuous' dataType='double'><Interval closure='closedOpen' leftMargin='0' rightMargin='100'/></DataField>
 <DataField name='t' optype='categorical' dataType='string'><Value value='a' displayValue='A' property='valid'/><Value value='b'/></DataField>
 <DataField name='n' optype='ordinal' dataType='integer'><Value value='1'/><Value value='none' property='missing'/></DataField>
 <Taxonomy name='tax'><ChildParent/></Taxonomy>
</DataDictionary>
<TransformationDictionary>
 <DefineFunction name='f' optype='continuous' dataType='double'><ParameterField name='p' optype='continuous' dataType='double'/>
  <Apply function='+' mapMissingTo='0' defaultValue='1' invalidValueTreatment='returnInvalid'><FieldRef field='p' mapMissingTo='0'/><Constant dataType='double' missing='false'>1</Constant></Apply>
 </DefineFunction>
 <DerivedField name='norm' displayName='N' optype='continuous' dataType='double'><NormContinuous field='x' mapMissingTo='0' outliers='asIs'><LinearNorm orig='0' norm='0'/><LinearNorm orig='1' norm='1'/></NormContinuous></DerivedField>
 <DerivedField name='is' optype='continuous' dataType='double'><NormDiscrete field='t' value='a' mapMissingTo='0'/></DerivedField>
 <DerivedField name='bin' optype='categorical' dataType='string'><Discretize field='x' dataType='string' mapMissingTo='m' defaultValue='d'><DiscretizeBin binValue='low'><Interval closure='openOpen' rightMargin='5'/></DiscretizeBin></Discretize><Value value='low'/></DerivedField>
 <DerivedField name='map' optype='categorical' dataType='string'><MapValues outputColumn='o' dataType='string' mapMissingTo='m' defaultValue='d'><FieldColumnPair field='t' column='k'/><InlineTable><row><k>a</k><o>A</o></row><row><k>b</k><o>B</o></row></InlineTable></MapValues></DerivedField>
 <DerivedField name='words' optype='continuous' dataType='double'><TextIndex textField='t' localTermWeights='termFrequency' isCaseSensitive='false' maxLevenshteinDistance='0' countHits='allHits' wordSeparatorCharacterRE='\s+' tokenize='true'><TextIndexNormalization inField='i' recursive='true' isCaseSensitive='false' maxLevenshteinDistance='0' tokenize='true'><InlineTable><row><i>a</i></row></InlineTable></TextIndexNormalization><Constant>a</Constant></TextIndex></DerivedField>
</TransformationDictionary>
<RegressionModel modelName='m' functionName='regression' algorithmName='any' normalizationMethod='none' isScorable='true'>
 <MiningSchema>
  <MiningField name='y' usageType='target'/>
  <MiningField name='x' usageType='active' optype='continuous' outliers='asIs' lowValue='1' highValue='50' importance='lots' missingValueReplacement='1' missingValueTreatment='asMean' invalidValueTreatment='asIs'/>
 </MiningSchema>
 <Output>
  <OutputField name='p' optype='continuous' dataType='double' feature='predictedValue' isFinalResult='true'/>
  <OutputField name='q' dataType='string' feature='decision'><Decisions businessProblem='b'><Decision value='go' displayValue='g'/></Decisions><FieldRef field='p'/><Value value='go'/></OutputField>
 </Output>
 <ModelStats><Anything wrong='yes'/></ModelStats>
 <Targets><Target field='y' optype='continuous' castInteger='round' min='0' max='9' rescaleConstant='0' rescaleFactor='1'><TargetValue priorProbability='0.5' defaultValue='7'/></Target></Targets>
 <LocalTransformations>
  <DerivedField name='past' optype='continuous' dataType='double'><Lag field='x' n='2' aggregate='avg'><BlockIndicator field='t'/></Lag></DerivedField>
  <DerivedField name='all' optype='continuous' dataType='double'><Aggregate field='x' function='sum' groupField='t'/></DerivedField>
 </LocalTransformations>
 <RegressionTable intercept='1' targetCategory='any'>
  <NumericPredictor name='x' exponent='2' coefficient='3'/>
  <CategoricalPredictor name='t' value='a' coefficient='4'/>
  <PredictorTerm name='term' coefficient='5'><FieldRef field='x'/></PredictorTerm>
 </RegressionTable>
 <ModelVerification recordCount='many'/>
</RegressionModel></PMML>)";

inline const std::string kCheckedTree = R"(<PMML version='4.4'><Header/>
<DataDictionary><DataField name='x' optype='continuous' dataType='double'/></DataDictionary>
<TreeModel functionName='classification' missingValueStrategy='none' missingValuePenalty='0.5' noTrueChildStrategy='returnLastPrediction' splitCharacteristic='any' isScorable='true'>
 <MiningSchema><MiningField name='x'/></MiningSchema>
 <Node id='1' score='a' recordCount='10'><True/>
  <Partition name='p' size='1'/>
  <ScoreDistribution value='a' recordCount='7' confidence='0.6' probability='0.7'/>
  <Node score='b'><CompoundPredicate booleanOperator='and'><SimplePredicate field='x' operator='lessThan' value='5'/><False/></CompoundPredicate></Node>
  <Node score='b'><SimpleSetPredicate field='x' booleanOperator='isIn'><Array n='2' type='int'>1 2</Array></SimpleSetPredicate></Node>
 </Node>
</TreeModel></PMML>)";

inline const std::string kCheckedScorecard = R"(<PMML version='4.4'><Header/>
<DataDictionary><DataField name='x' optype='continuous' dataType='double'/></DataDictionary>
<Scorecard functionName='regression' initialScore='1' useReasonCodes='true' reasonCodeAlgorithm='pointsBelow' baselineScore='5' baselineMethod='mean' isScorable='true'>
 <MiningSchema><MiningField name='x'/></MiningSchema>
 <Characteristics>
  <Characteristic name='size' reasonCode='X' baselineScore='12'>
   <Attribute reasonCode='XX' partialScore='1'><True/><ComplexPartialScore><FieldRef field='x'/></ComplexPartialScore></Attribute>
  </Characteristic>
 </Characteristics>
</Scorecard></PMML>)";

inline const std::string kCheckedRules = R"(<PMML version='4.4'><Header/>
<DataDictionary><DataField name='x' optype='continuous' dataType='double'/></DataDictionary>
<RuleSetModel functionName='classification' isScorable='true'>
 <MiningSchema><MiningField name='x'/></MiningSchema>
 <RuleSet recordCount='10' nbCorrect='5' defaultScore='a' defaultConfidence='0.5'><RuleSelectionMethod criterion='firstHit'/>
  <CompoundRule><True/><SimpleRule id='1' score='a' recordCount='5' nbCorrect='4' confidence='0.8' weight='2'><True/></SimpleRule></CompoundRule>
 </RuleSet>
</RuleSetModel></PMML>)";

inline const std::string kCheckedEnsemble = R"(<PMML version='4.4'><Header/>
<DataDictionary><DataField name='x' optype='continuous' dataType='double'/></DataDictionary>
<MiningModel functionName='regression' isScorable='true'>
 <MiningSchema><MiningField name='x'/></MiningSchema>
 <Regression functionName='regression' normalizationMethod='none'><ResultField name='r' optype='continuous' dataType='double'/><RegressionTable intercept='1'/></Regression>
 <DecisionTree functionName='regression' missingValueStrategy='none' missingValuePenalty='0.5' noTrueChildStrategy='returnNullPrediction'><Node score='1'><True/></Node></DecisionTree>
 <Segmentation multipleModelMethod='weightedAverage' missingPredictionTreatment='skipSegment' missingThreshold='0.5'>
  <Segment id='one' weight='2'><True/><TreeModel functionName='regression'><MiningSchema/><Node score='1'><True/></Node></TreeModel><VariableWeight field='x'/></Segment>
 </Segmentation>
</MiningModel></PMML>)";

inline const std::string kCheckedBaseline = R"(<PMML version='4.4'><Header/>
<DataDictionary><DataField name='x' optype='continuous' dataType='double'/></DataDictionary>
<BaselineModel functionName='regression' isScorable='true'>
 <MiningSchema><MiningField name='x'/></MiningSchema>
 <TestDistributions field='x' testStatistic='CUSUM' resetValue='0' windowSize='5' weightField='x' normalizationScheme='any'>
  <Baseline><GaussianDistribution mean='1' variance='2'/><AnyDistribution mean='1' variance='2'/><PoissonDistribution mean='1'/>
   <CountTable sample='9'><FieldValue field='x' value='1'><FieldValueCount field='x' value='1' count='2'/></FieldValue></CountTable>
   <NormalizedCountTable sample='9'/>
  </Baseline>
  <Alternate><UniformDistribution lower='1' upper='2'/></Alternate>
 </TestDistributions>
</BaselineModel></PMML>)";

inline const std::string kCheckedNetwork = R"(<PMML version='4.4'><Header/>
<DataDictionary><DataField name='x' optype='continuous' dataType='double'/></DataDictionary>
<NeuralNetwork functionName='regression' activationFunction='tanh' normalizationMethod='none' threshold='0' width='1' altitude='1' numberOfLayers='1' isScorable='true'>
 <MiningSchema><MiningField name='x'/></MiningSchema>
 <NeuralInputs numberOfInputs='1'><NeuralInput id='1'><DerivedField optype='continuous' dataType='double'><FieldRef field='x'/></DerivedField></NeuralInput></NeuralInputs>
 <NeuralLayer numberOfNeurons='1' activationFunction='radialBasis' normalizationMethod='none' threshold='0' width='1' altitude='1'>
  <Neuron id='2' bias='1' width='2' altitude='3'><Con from='1' weight='-1'/></Neuron>
 </NeuralLayer>
 <NeuralOutputs numberOfOutputs='1'><NeuralOutput outputNeuron='2'><DerivedField optype='continuous' dataType='double'><FieldRef field='x'/></DerivedField></NeuralOutput></NeuralOutputs>
</NeuralNetwork></PMML>)";

inline const std::string kCheckedVectors = R"(<PMML version='4.4'><Header/>
<DataDictionary><DataField name='x' optype='continuous' dataType='double'/></DataDictionary>
<SupportVectorMachineModel functionName='regression' threshold='0' svmRepresentation='SupportVectors' classificationMethod='OneAgainstOne' maxWins='true' isScorable='true'>
 <MiningSchema><MiningField name='x'/></MiningSchema>
 <LinearKernelType/><PolynomialKernelType gamma='1' coef0='1' degree='2'/><RadialBasisKernelType gamma='1'/><SigmoidKernelType gamma='1' coef0='1'/>
 <VectorDictionary numberOfVectors='1'><VectorFields numberOfFields='1'><FieldRef field='x'/></VectorFields>
  <VectorInstance id='a'><REAL-SparseArray n='1' defaultValue='0'><Indices>1</Indices><REAL-Entries>1</REAL-Entries></REAL-SparseArray></VectorInstance>
 </VectorDictionary>
 <SupportVectorMachine targetCategory='a' alternateTargetCategory='b' threshold='1'>
  <SupportVectors numberOfSupportVectors='1' numberOfAttributes='1'><SupportVector vectorId='a'/></SupportVectors>
  <Coefficients numberOfCoefficients='1' absoluteValue='0'><Coefficient value='1'/></Coefficients>
 </SupportVectorMachine>
</SupportVectorMachineModel></PMML>)";

inline const std::string kCheckedGeneral = R"(<PMML version='4.4'><Header/>
<DataDictionary><DataField name='x' optype='continuous' dataType='double'/></DataDictionary>
<GeneralRegressionModel functionName='regression' modelType='generalizedLinear' targetVariableName='y' targetReferenceCategory='a' cumulativeLink='logit' linkFunction='log' linkParameter='1' trialsVariable='x' trialsValue='3' distribution='normal' distParameter='1' offsetVariable='x' offsetValue='1' modelDF='1' endTimeVariable='x' startTimeVariable='x' subjectIDVariable='x' statusVariable='x' baselineStrataVariable='x' isScorable='true'>
 <MiningSchema><MiningField name='x'/></MiningSchema>
 <ParameterList><Parameter name='p' label='P' referencePoint='1'/></ParameterList>
 <FactorList><Predictor name='x' contrastMatrixType='any'><Categories><Category value='1'/></Categories><Matrix kind='any' nbRows='1' nbCols='1' diagDefault='0' offDiagDefault='0'><MatCell row='1' col='1'>1</MatCell></Matrix></Predictor></FactorList>
 <CovariateList><Predictor name='x'/></CovariateList>
 <PPMatrix><PPCell value='1' predictorName='x' parameterName='p' targetCategory='a'/></PPMatrix>
 <PCovMatrix type='model'><PCovCell pRow='p' pCol='p' tRow='a' tCol='a' value='1' targetCategory='a'/></PCovMatrix>
 <ParamMatrix><PCell targetCategory='a' parameterName='p' beta='1' df='1'/></ParamMatrix>
 <EventValues><Value value='1'/></EventValues>
 <BaseCumHazardTables maxTime='9'><BaselineStratum value='a' label='A' maxTime='9'><BaselineCell time='1' cumHazard='1'/></BaselineStratum></BaseCumHazardTables>
</GeneralRegressionModel></PMML>)";

inline const std::string kCheckedBayes = R"(<PMML version='4.4'><Header/>
<DataDictionary><DataField name='x' optype='continuous' dataType='double'/></DataDictionary>
<NaiveBayesModel functionName='classification' threshold='0.001' isScorable='true'>
 <MiningSchema><MiningField name='x'/></MiningSchema>
 <BayesInputs>
  <BayesInput fieldName='x'><TargetValueStats><TargetValueStat value='a'><GaussianDistribution mean='1' variance='2'/></TargetValueStat></TargetValueStats></BayesInput>
  <BayesInput fieldName='x'><DerivedField optype='categorical' dataType='string'><FieldRef field='x'/></DerivedField><PairCounts value='1'><TargetValueCounts><TargetValueCount value='a' count='1'/></TargetValueCounts></PairCounts></BayesInput>
 </BayesInputs>
 <BayesOutput fieldName='y'><TargetValueCounts><TargetValueCount value='a' count='1'/></TargetValueCounts></BayesOutput>
</NaiveBayesModel></PMML>)";

inline const std::string kCheckedClusters = R"(<PMML version='4.4'><Header/>
<DataDictionary><DataField name='x' optype='continuous' dataType='double'/></DataDictionary>
<ClusteringModel functionName='clustering' modelClass='centerBased' numberOfClusters='1' isScorable='true'>
 <MiningSchema><MiningField name='x'/></MiningSchema>
 <ComparisonMeasure kind='distance' compareFunction='absDiff' minimum='0' maximum='1'><euclidean/><squaredEuclidean/><chebychev/><cityBlock/>
  <minkowski p-parameter='3'/><simpleMatching/><jaccard/><tanimoto/>
  <binarySimilarity c00-parameter='1' c01-parameter='1' c10-parameter='1' c11-parameter='1' d00-parameter='1' d01-parameter='1' d10-parameter='1' d11-parameter='1'/></ComparisonMeasure>
 <ClusteringField field='x' isCenterField='true' fieldWeight='1' similarityScale='1' compareFunction='gaussSim'><Comparisons><Matrix nbRows='1' nbCols='1'/></Comparisons></ClusteringField>
 <CenterFields><DerivedField name='d' optype='continuous' dataType='double'><FieldRef field='x'/></DerivedField></CenterFields>
 <MissingValueWeights><Array n='1' type='real'>1</Array></MissingValueWeights>
 <Cluster id='a' name='first' size='3'><KohonenMap coord1='0' coord2='1' coord3='2'/><Array n='1' type='real'>1</Array>
  <Partition name='p' size='3'><PartitionFieldStats field='x' weighted='1'><Counts totalFreq='3' missingFreq='1' invalidFreq='0' cardinality='2'/>
   <NumericInfo minimum='0' maximum='2' mean='1' standardDeviation='1' median='1' interQuartileRange='1'><Quantile quantileLimit='50' quantileValue='1'/></NumericInfo></PartitionFieldStats></Partition>
  <Covariances><Matrix nbRows='1' nbCols='1'/></Covariances></Cluster>
</ClusteringModel></PMML>)";

inline const std::string kCheckedNeighbours = R"(<PMML version='4.4'><Header/>
<DataDictionary><DataField name='x' optype='continuous' dataType='double'/></DataDictionary>
<NearestNeighborModel functionName='regression' numberOfNeighbors='1' continuousScoringMethod='average' categoricalScoringMethod='majorityVote' instanceIdVariable='id' threshold='0.001' isScorable='true'>
 <MiningSchema><MiningField name='x'/></MiningSchema>
 <TrainingInstances isTransformed='false' recordCount='1' fieldCount='1'><InstanceFields><InstanceField field='x' column='x'/></InstanceFields>
  <InlineTable><row><x>1</x></row></InlineTable></TrainingInstances>
 <ComparisonMeasure kind='distance'><euclidean/></ComparisonMeasure>
 <KNNInputs><KNNInput field='x' fieldWeight='1' similarityScale='1' compareFunction='absDiff'/></KNNInputs>
</NearestNeighborModel></PMML>)";

inline const std::vector<std::string> kCheckedDocuments = {
    kCheckedRegression, kCheckedTree,    kCheckedScorecard, kCheckedRules, kCheckedEnsemble, kCheckedBaseline,
    kCheckedNetwork,    kCheckedVectors, kCheckedGeneral,   kCheckedBayes, kCheckedClusters, kCheckedNeighbours};

} // namespace veltrane::tests

#endif
