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

} // namespace veltrane::tests

#endif
