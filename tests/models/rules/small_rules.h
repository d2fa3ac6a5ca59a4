#ifndef VELTRANE_TESTS_MODELS_SMALL_RULES_H
#define VELTRANE_TESTS_MODELS_SMALL_RULES_H

#include <string>

/// Sets of rules that tests change at one place with Replaced.
namespace veltrane::tests {

/// A classification with one of everything that the plug-in reads.
inline const std::string kSmallRules = R"(<PMML version='4.4'><Header/>
<DataDictionary numberOfFields='3'>
 <DataField name='t' optype='categorical' dataType='string'><Value value='a'/><Value value='b'/><Value value='c'/></DataField>
 <DataField name='x' optype='continuous' dataType='double'/>
 <DataField name='k' optype='categorical' dataType='string'/>
</DataDictionary>
<RuleSetModel functionName='classification' isScorable='true'>
 <MiningSchema><MiningField name='t' usageType='target'/><MiningField name='x'/><MiningField name='k'/></MiningSchema>
 <Output><OutputField name='id' feature='ruleValue' ruleFeature='ruleId'/><OutputField name='conf' feature='confidence'/><OutputField name='second' feature='predictedValue' rank='2'/><OutputField name='rule' feature='ruleValue' ruleFeature='rule'/></Output>
 <RuleSet recordCount='20' nbCorrect='12' defaultScore='c' defaultConfidence='0.5'>
  <RuleSelectionMethod criterion='firstHit'/>
  <ScoreDistribution value='a' recordCount='12' confidence='0.6'/>
  <ScoreDistribution value='c' recordCount='8'/>
  <SimpleRule id='low' score='a' recordCount='8' nbCorrect='6' confidence='0.75' weight='2'>
   <SimplePredicate field='x' operator='lessThan' value='1'/>
   <ScoreDistribution value='a' recordCount='6' probability='0.7' confidence='0.75'/>
   <ScoreDistribution value='b' recordCount='2' probability='0.3' confidence='0.25'/>
  </SimpleRule>
  <CompoundRule>
   <SimplePredicate field='k' operator='equal' value='u'/>
   <SimpleRule id='mid' score='b'><SimplePredicate field='x' operator='lessThan' value='5'/></SimpleRule>
  </CompoundRule>
 </RuleSet>
</RuleSetModel></PMML>)";

/// Rules that predict numbers.
inline const std::string kNumberRules = R"(<PMML version='4.4'><DataDictionary>
 <DataField name='y' optype='continuous' dataType='double'/><DataField name='x' optype='continuous' dataType='double'/></DataDictionary>
<RuleSetModel functionName='regression'><MiningSchema><MiningField name='y' usageType='target'/><MiningField name='x'/></MiningSchema>
 <Output><OutputField name='id' feature='entityId'/><OutputField name='cost' feature='consequent' dataType='double'/><OutputField name='next' feature='ruleValue' rank='2'/></Output>
 <RuleSet defaultScore='-1'><RuleSelectionMethod criterion='firstHit'/>
  <SimpleRule score='10' weight='1'><SimplePredicate field='x' operator='greaterThan' value='0'/></SimpleRule>
  <SimpleRule score='20' weight='3'><SimplePredicate field='x' operator='greaterThan' value='1'/></SimpleRule>
  <SimpleRule score='10.0' weight='2.5'><SimplePredicate field='x' operator='greaterThan' value='2'/></SimpleRule>
 </RuleSet></RuleSetModel></PMML>)";

} // namespace veltrane::tests

#endif
