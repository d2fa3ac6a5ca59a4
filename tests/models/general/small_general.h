#ifndef VELTRANE_TESTS_MODELS_SMALL_GENERAL_H
#define VELTRANE_TESTS_MODELS_SMALL_GENERAL_H

#include <string>

/// Small general regressions.
namespace veltrane::tests {

/// A model over x, a number, and c of a and b: p1 is x, p2 whether c is a, p0 and p3 have no cells.
/// @param target y, a number; t of no and yes; or g of low, mid and high
/// @param rest   ahead of the ParamMatrix
/// @param cells  of the ParamMatrix
inline std::string General(const std::string& attributes, const std::string& target, const std::string& rest,
                           const std::string& cells) {
    return "<PMML version='4.4'><DataDictionary><DataField name='y' optype='continuous' dataType='double'/>"
           "<DataField name='x' optype='continuous' dataType='double'/>"
           "<DataField name='c' optype='categorical' dataType='string'><Value value='a'/><Value value='b'/></DataField>"
           "<DataField name='t' optype='categorical' dataType='string'><Value value='no'/><Value value='yes'/>"
           "</DataField><DataField name='g' optype='ordinal' dataType='string'><Value value='low'/><Value value='mid'/>"
           "<Value value='high'/></DataField></DataDictionary><GeneralRegressionModel " +
           attributes + "><MiningSchema><MiningField name='" + target +
           "' usageType='target'/><MiningField name='x'/><MiningField name='c'/></MiningSchema><ParameterList>"
           "<Parameter name='p0'/><Parameter name='p1'/><Parameter name='p2'/><Parameter name='p3'/></ParameterList>"
           "<FactorList><Predictor name='c'/></FactorList><CovariateList><Predictor name='x'/></CovariateList>"
           "<PPMatrix><PPCell value='1' predictorName='x' parameterName='p1'/><PPCell value='a' predictorName='c' "
           "parameterName='p2'/></PPMatrix>" +
           rest + "<ParamMatrix>" + cells + "</ParamMatrix></GeneralRegressionModel></PMML>";
}

/// One of numbers.
inline std::string Linear(const std::string& cells, const std::string& rest = "") {
    return General("functionName='regression' modelType='generalLinear'", "y", rest, cells);
}

/// One of two categories, no and yes, by the logit.
inline std::string Binary(const std::string& cells) {
    return General("functionName='classification' modelType='generalizedLinear' linkFunction='logit'", "t", "", cells);
}

/// What the small models below have of fields.
inline const std::string kSmallGeneralFields =
    "<PMML version='4.4'><DataDictionary><DataField name='y' optype='continuous' dataType='double'/>"
    "<DataField name='x' optype='continuous' dataType='double'/><DataField name='o' optype='continuous' "
    "dataType='double'/><DataField name='c' optype='categorical' dataType='string'><Value value='a'/><Value value='b'/>"
    "</DataField><DataField name='g' optype='ordinal' dataType='string'><Value value='low'/><Value value='mid'/>"
    "<Value value='high'/></DataField></DataDictionary>";

/// A generalized linear model of y with contrasts in cells, covariances and an offset.
inline const std::string kSmallGeneral =
    kSmallGeneralFields +
    "<GeneralRegressionModel modelName='small' functionName='regression' algorithmName='any' "
    "modelType='generalizedLinear' targetVariableName='y' distribution='binomial' distParameter='1.5' "
    "linkFunction='power' linkParameter='0.5' trialsValue='3' offsetVariable='o' modelDF='4' isScorable='true'>"
    "<MiningSchema><MiningField name='y' usageType='target'/><MiningField name='x'/><MiningField name='o'/>"
    "<MiningField name='c'/></MiningSchema><Output><OutputField name='error' feature='standardError'/></Output>"
    "<ParameterList><Parameter name='p0' label='constant' referencePoint='0'/><Parameter name='p1'/>"
    "<Parameter name='p2'/></ParameterList><FactorList><Predictor name='c' contrastMatrixType='any'><Categories>"
    "<Category value='a'/><Category value='b'/></Categories><Matrix kind='symmetric' nbRows='2' nbCols='2' "
    "diagDefault='1' offDiagDefault='0'><MatCell row='2' col='1'>0.5</MatCell></Matrix></Predictor></FactorList>"
    "<CovariateList><Predictor name='x'/></CovariateList><PPMatrix><PPCell value='1' predictorName='x' "
    "parameterName='p1'/><PPCell value='a' predictorName='c' parameterName='p2'/></PPMatrix><PCovMatrix type='model'>"
    "<PCovCell pRow='p0' pCol='p0' value='0.5'/><PCovCell pRow='p1' pCol='p0' value='0.125'/></PCovMatrix><ParamMatrix>"
    "<PCell parameterName='p0' beta='1' df='1'/><PCell parameterName='p1' beta='0.5'/><PCell parameterName='p2' "
    "beta='2'/></ParamMatrix></GeneralRegressionModel></PMML>";

/// An ordinal model of g with contrasts in arrays.
inline const std::string kSmallOrdinal =
    kSmallGeneralFields +
    "<GeneralRegressionModel functionName='classification' modelType='ordinalMultinomial' "
    "targetReferenceCategory='high' cumulativeLink='cauchit' offsetValue='0.5'><MiningSchema><MiningField name='g' "
    "usageType='target'/><MiningField name='x'/><MiningField name='c'/></MiningSchema><ParameterList>"
    "<Parameter name='p0'/><Parameter name='p1'/><Parameter name='p2'/></ParameterList><FactorList><Predictor name='c'>"
    "<Matrix kind='any' nbRows='2' nbCols='1'><Array n='1' type='real'>1</Array><Array n='1' type='real'>-1</Array>"
    "</Matrix></Predictor></FactorList><CovariateList><Predictor name='x'/></CovariateList><PPMatrix><PPCell value='1' "
    "predictorName='x' parameterName='p1' targetCategory='low'/><PPCell value='a' predictorName='c' "
    "parameterName='p2'/></PPMatrix><PCovMatrix type='robust'><PCovCell pRow='p0' pCol='p0' tRow='low' tCol='low' "
    "value='0.5' targetCategory='low'/></PCovMatrix><ParamMatrix><PCell targetCategory='low' parameterName='p0' "
    "beta='-1'/><PCell targetCategory='mid' parameterName='p0' beta='1'/><PCell parameterName='p1' beta='0.5'/>"
    "<PCell parameterName='p2' beta='0.25'/></ParamMatrix></GeneralRegressionModel></PMML>";

/// A Cox regression of y over x, with the strata of c; o is the time.
inline const std::string kSmallHazards =
    kSmallGeneralFields +
    "<GeneralRegressionModel functionName='regression' modelType='CoxRegression' endTimeVariable='o' "
    "startTimeVariable='x' subjectIDVariable='g' statusVariable='y' baselineStrataVariable='c' offsetValue='0'>"
    "<MiningSchema><MiningField name='y' usageType='target'/><MiningField name='x'/><MiningField name='o'/>"
    "<MiningField name='c'/><MiningField name='g' usageType='supplementary'/></MiningSchema><ParameterList>"
    "<Parameter name='p1' referencePoint='2'/></ParameterList><CovariateList><Predictor name='x'/></CovariateList>"
    "<PPMatrix><PPCell value='1' predictorName='x' parameterName='p1'/></PPMatrix><ParamMatrix><PCell "
    "parameterName='p1' beta='0.5'/></ParamMatrix><EventValues><Value value='1'/><Interval closure='openOpen' "
    "leftMargin='1' rightMargin='2'/></EventValues><BaseCumHazardTables maxTime='9'><BaselineStratum value='a' "
    "label='A' maxTime='5'><BaselineCell time='1' cumHazard='0.25'/><BaselineCell time='2' cumHazard='0.5'/>"
    "</BaselineStratum><BaselineStratum value='b' maxTime='5'><BaselineCell time='1' cumHazard='0.125'/>"
    "</BaselineStratum></BaseCumHazardTables></GeneralRegressionModel></PMML>";

} // namespace veltrane::tests

#endif
