#ifndef VELTRANE_TESTS_MODELS_SMALL_BASELINE_H
#define VELTRANE_TESTS_MODELS_SMALL_BASELINE_H

#include <string>

/// Baselines that tests change at one place with Replaced.
namespace veltrane::tests {

/// A model with the attributes and the content of its TestDistributions.
inline std::string BaselineDocument(const std::string& test) {
    return R"(<PMML version='4.4'><DataDictionary>
 <DataField name='y' optype='continuous' dataType='double'/>
 <DataField name='x' optype='continuous' dataType='double'/>
 <DataField name='c' optype='categorical' dataType='string'><Value value='u'/><Value value='v'/></DataField>
 <DataField name='d' optype='categorical' dataType='string'/>
 <DataField name='w' optype='continuous' dataType='double'/>
</DataDictionary>
<BaselineModel functionName='regression' isScorable='true'>
 <MiningSchema><MiningField name='y' usageType='target'/><MiningField name='x'/><MiningField name='c'/><MiningField name='d'/><MiningField name='w'/></MiningSchema>
 <Output><OutputField name='p' feature='predictedValue'/></Output>
 <TestDistributions )" +
           test + R"(</TestDistributions>
</BaselineModel></PMML>)";
}

/// Of numbers, with one of everything that such a test has.
inline const std::string kSmallSum =
    BaselineDocument("field='x' testStatistic='CUSUM' resetValue='0.5' windowSize='10' weightField='w'>"
                     "<Baseline><GaussianDistribution mean='1' variance='4'/></Baseline>"
                     "<Alternate><UniformDistribution lower='-2' upper='6'/></Alternate>");

/// Of counts.
inline const std::string kSmallTable =
    BaselineDocument("field='c' testStatistic='scalarProduct' normalizationScheme='Independent'>"
                     "<Baseline><CountTable sample='7'>"
                     "<FieldValue field='c' value='u'><FieldValueCount field='d' value='a' count='4'/></FieldValue>"
                     "<FieldValue field='c' value='v'><FieldValueCount field='d' value='a' count='3'/></FieldValue>"
                     "</CountTable></Baseline>");

} // namespace veltrane::tests

#endif
