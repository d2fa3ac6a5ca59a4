#ifndef VELTRANE_TESTS_MODELS_CHECKED_DOCUMENTS_H
#define VELTRANE_TESTS_MODELS_CHECKED_DOCUMENTS_H

#include "kit/document/checks/document_check.h"
#include "support/dom.h"

#include <string>

/// Documents for the check of what documents may say.
namespace veltrane::tests {

/// Checks a document with its first model.
inline void Check(xercesc::DOMDocument* document) {
    const veltrane_kit::DocumentText text("");
    const veltrane_kit::Element root(document->getDocumentElement(), text);
    std::u16string model;
    for (const veltrane_kit::Element child : root.Children()) {
        if (model.empty() && child.Tag().ends_with("Model")) {
            model = veltrane_kit::Widen(child.Tag());
        }
    }
    veltrane_kit::CheckDocument(root, model.c_str());
}

inline void Check(const std::string& document) {
    Check(ParseXml(document).Document());
}

/// Elements and attributes that are checked, each of them once at least: a regression and a tree.
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
  <Partition name='p'/>
  <ScoreDistribution value='a' recordCount='7' confidence='0.6' probability='0.7'/>
  <Node score='b'><CompoundPredicate booleanOperator='and'><SimplePredicate field='x' operator='lessThan' value='5'/><False/></CompoundPredicate></Node>
  <Node score='b'><SimpleSetPredicate field='x' booleanOperator='isIn'><Array n='2' type='int'>1 2</Array></SimpleSetPredicate></Node>
 </Node>
</TreeModel></PMML>)";

} // namespace veltrane::tests

#endif
