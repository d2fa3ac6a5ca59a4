#ifndef VELTRANE_TESTS_MODELS_SMALL_DOCUMENTS_H
#define VELTRANE_TESTS_MODELS_SMALL_DOCUMENTS_H

#include "models/kit/scoring.h"

#include <string>

/// Documents that tests change at one place with Replaced.
namespace veltrane::tests {

/// A regression with one of everything that the kit and the plug-in read: y = 1 + 3 x^2 + 4 [c = a] + 5 x z.
inline const std::string kSmallRegression = R"(<PMML version='4.3'><Header/>
<DataDictionary numberOfFields='4'>
 <DataField name='y' optype='continuous' dataType='double'/>
 <DataField name='x' optype='continuous' dataType='double'><Interval closure='closedOpen' leftMargin='0' rightMargin='100'/></DataField>
 <DataField name='z' optype='continuous' dataType='integer'/>
 <DataField name='c' optype='categorical' dataType='string'><Value value='a'/><Value value='b'/></DataField>
</DataDictionary>
<RegressionModel modelName='small' functionName='regression' algorithmName='any' normalizationMethod='none' targetFieldName='y' isScorable='true'>
 <MiningSchema>
  <MiningField name='y' usageType='target'/>
  <MiningField name='x' usageType='active' optype='continuous' outliers='asIs' lowValue='1' highValue='50' missingValueTreatment='asIs' invalidValueTreatment='returnInvalid'/>
  <MiningField name='z'/>
  <MiningField name='c'/>
 </MiningSchema>
 <Output>
  <OutputField name='p' displayName='prediction' optype='continuous' dataType='double' feature='predictedValue'/>
 </Output>
 <Targets><Target field='y' optype='continuous' castInteger='round' min='-1000' max='100000' rescaleFactor='1' rescaleConstant='0'><TargetValue defaultValue='-7'/></Target></Targets>
 <RegressionTable intercept='1'>
  <NumericPredictor name='x' exponent='2' coefficient='3'/>
  <CategoricalPredictor name='c' value='a' coefficient='4'/>
  <PredictorTerm name='xz' coefficient='5'><FieldRef field='x'/><FieldRef field='z'/></PredictorTerm>
 </RegressionTable>
</RegressionModel></PMML>)";

/// It with other attributes of the schema's field x.
inline std::string WithTreatment(const std::string& attributes) {
    return Replaced(kSmallRegression,
                    "outliers='asIs' lowValue='1' highValue='50' missingValueTreatment='asIs' "
                    "invalidValueTreatment='returnInvalid'",
                    attributes);
}

/// A classification of two categories by one number: P(yes) is the logistic function of x.
inline const std::string kSmallClassification = R"(<PMML version='4.3'><Header/>
<DataDictionary numberOfFields='2'>
 <DataField name='t' optype='categorical' dataType='string'><Value value='no'/><Value value='yes'/></DataField>
 <DataField name='x' optype='continuous' dataType='double'/>
</DataDictionary>
<RegressionModel functionName='classification' normalizationMethod='logit'>
 <MiningSchema><MiningField name='t' usageType='target'/><MiningField name='x'/></MiningSchema>
 <Output><OutputField name='P' feature='probability' value='yes'/></Output>
 <RegressionTable targetCategory='yes' intercept='0'><NumericPredictor name='x' coefficient='1'/></RegressionTable>
 <RegressionTable targetCategory='no' intercept='0'/>
</RegressionModel></PMML>)";

} // namespace veltrane::tests

#endif
