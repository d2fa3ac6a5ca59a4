#ifndef VELTRANE_PLUGINS_RULES_RULE_SET_READER_H
#define VELTRANE_PLUGINS_RULES_RULE_SET_READER_H

#include "kit/conditions/condition_reader.h"
#include "kit/document/element.h"
#include "kit/model/model_plan.h"
#include "rule_set.h"

#include <cstdint>
#include <map>
#include <set>
#include <string>

namespace veltrane_rules {

/// Reads the RuleSet of a RuleSetModel, each rule once, in the order of the document.
class RuleSetReader {
public:
    /// Both are borrowed.
    RuleSetReader(RuleSet& rules, veltrane_kit::ModelParts& parts)
        : fRules(rules), fParts(parts), fConditions(rules.conditions, *parts.inputs) {}

    /// @param ruleSet the only one of a model
    /// @throws VTException 260120, 260285, 260153 for attributes; 260321 for more right records than there are; 260203
    ///         for an id or a category that comes twice; 260115 and 260272 for elements that are absent or there twice,
    ///         260159 for those that have no place; what reading predicates throws
    void Read(const veltrane_kit::Element& ruleSet);

private:
    void ReadDefault(const veltrane_kit::Element& element);
    void ReadRules(const veltrane_kit::Element& parent, const veltrane_kit::Rule* outer);
    void ReadSimple(const veltrane_kit::Element& element, const veltrane_kit::Rule* outer);
    void ReadCompound(const veltrane_kit::Element& element, const veltrane_kit::Rule* outer);
    std::size_t ReadCondition(const veltrane_kit::Element& element, const veltrane_kit::Rule* outer);
    void ReadId(const veltrane_kit::Element& element, veltrane_kit::Rule& rule);
    std::int32_t ReadScore(const veltrane_kit::Element& element, const XMLCh* attribute);
    Distribution ReadDistribution(const veltrane_kit::Element& parent);
    Share ReadShare(const veltrane_kit::Element& element);
    void CompleteProbabilities(Distribution distribution, const veltrane_kit::Element& last);

    RuleSet& fRules;
    veltrane_kit::ModelParts& fParts;
    veltrane_kit::ConditionReader fConditions;
    double fRecords = veltrane_kit::Prediction::kNone; ///< all
    std::map<double, std::int32_t> fNumbers;           ///< places in RuleSet::numbers
    std::set<std::string> fIds;
};

} // namespace veltrane_rules

#endif
