#ifndef VELTRANE_TESTS_MODELS_SMALL_CARD_H
#define VELTRANE_TESTS_MODELS_SMALL_CARD_H

#include <string>

/// A scorecard that tests change at one place with Replaced.
namespace veltrane::tests {

/// One of everything that the plug-in reads: 2 points, and 10 or x squared for x above 1, and 3 for c being "u" or 4.
inline const std::string kSmallCard = R"(<PMML version='4.4'><Header/>
<DataDictionary numberOfFields='3'>
 <DataField name='y' optype='continuous' dataType='double'/>
 <DataField name='x' optype='continuous' dataType='double'/>
 <DataField name='c' optype='categorical' dataType='string'/>
</DataDictionary>
<Scorecard functionName='regression' initialScore='2' useReasonCodes='true' reasonCodeAlgorithm='pointsBelow' baselineScore='5' baselineMethod='mean' isScorable='true'>
 <MiningSchema><MiningField name='y' usageType='target'/><MiningField name='x'/><MiningField name='c'/></MiningSchema>
 <Output><OutputField name='first' feature='reasonCode'/><OutputField name='second' feature='reasonCode' rank='2'/><OutputField name='third' feature='reasonCode' rank='3'/></Output>
 <Characteristics>
  <Characteristic name='size' reasonCode='X' baselineScore='12'>
   <Attribute partialScore='10'>
    <SimplePredicate field='x' operator='lessOrEqual' value='1'/>
   </Attribute>
   <Attribute reasonCode='XX'>
    <SimplePredicate field='x' operator='greaterThan' value='1'/>
    <ComplexPartialScore><Apply function='*'><FieldRef field='x'/><FieldRef field='x'/></Apply></ComplexPartialScore>
   </Attribute>
  </Characteristic>
  <Characteristic name='colour' reasonCode='C'>
   <Attribute partialScore='3'><SimplePredicate field='c' operator='equal' value='u'/></Attribute>
   <Attribute partialScore='4'><True/></Attribute>
  </Characteristic>
 </Characteristics>
</Scorecard></PMML>)";

} // namespace veltrane::tests

#endif
