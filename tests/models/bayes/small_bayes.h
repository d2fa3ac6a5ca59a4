#ifndef VELTRANE_TESTS_MODELS_SMALL_BAYES_H
#define VELTRANE_TESTS_MODELS_SMALL_BAYES_H

#include <string>

/// A small naive Bayes model.
namespace veltrane::tests {

/// The target t of no and yes over c, counted, and x, a number.
inline const std::string kSmallBayes =
    "<PMML version='4.4'><Header/><DataDictionary><DataField name='t' optype='categorical' dataType='string'>"
    "<Value value='no'/><Value value='yes'/></DataField>"
    "<DataField name='x' optype='continuous' dataType='double'/>"
    "<DataField name='c' optype='categorical' dataType='string'/></DataDictionary>"
    "<NaiveBayesModel functionName='classification' threshold='0.25'>"
    "<MiningSchema><MiningField name='t' usageType='target'/><MiningField name='x'/><MiningField name='c'/>"
    "</MiningSchema><BayesInputs>"
    "<BayesInput fieldName='c'><PairCounts value='a'><TargetValueCounts><TargetValueCount value='no' count='3'/>"
    "<TargetValueCount value='yes' count='1'/></TargetValueCounts></PairCounts><PairCounts value='b'>"
    "<TargetValueCounts><TargetValueCount value='yes' count='1.5'/></TargetValueCounts></PairCounts></BayesInput>"
    "<BayesInput fieldName='x'><TargetValueStats><TargetValueStat value='no'><UniformDistribution lower='0' upper='2'/>"
    "</TargetValueStat><TargetValueStat value='yes'><GaussianDistribution mean='1' variance='4'/></TargetValueStat>"
    "</TargetValueStats></BayesInput></BayesInputs>"
    "<BayesOutput fieldName='t'><TargetValueCounts><TargetValueCount value='no' count='6'/>"
    "<TargetValueCount value='yes' count='2'/></TargetValueCounts></BayesOutput></NaiveBayesModel></PMML>";

/// The same target over what is derived from x, counted, and x, a number of other distributions.
inline const std::string kSmallDerivedBayes =
    "<PMML version='4.4'><Header/><DataDictionary><DataField name='t' optype='categorical' dataType='string'>"
    "<Value value='no'/><Value value='yes'/></DataField><DataField name='x' optype='continuous' dataType='double'/>"
    "</DataDictionary><NaiveBayesModel modelName='derived' functionName='classification' algorithmName='any' "
    "threshold='0' isScorable='true'><MiningSchema><MiningField name='t' usageType='target'/><MiningField name='x'/>"
    "</MiningSchema><BayesInputs><BayesInput fieldName='bin'><DerivedField name='bin' optype='categorical' "
    "dataType='string'><Discretize field='x' defaultValue='far' mapMissingTo='far'><DiscretizeBin binValue='near'>"
    "<Interval closure='openOpen' leftMargin='0' rightMargin='2'/></DiscretizeBin></Discretize></DerivedField>"
    "<PairCounts value='near'><TargetValueCounts><TargetValueCount value='no' count='3'/><TargetValueCount value='yes' "
    "count='1'/></TargetValueCounts></PairCounts></BayesInput><BayesInput fieldName='x'><TargetValueStats>"
    "<TargetValueStat value='no'><PoissonDistribution mean='2'/></TargetValueStat><TargetValueStat value='yes'>"
    "<AnyDistribution mean='1' variance='4'/></TargetValueStat></TargetValueStats></BayesInput></BayesInputs>"
    "<BayesOutput fieldName='t'><TargetValueCounts><TargetValueCount value='no' count='6'/><TargetValueCount "
    "value='yes' count='2'/></TargetValueCounts></BayesOutput></NaiveBayesModel></PMML>";

} // namespace veltrane::tests

#endif
