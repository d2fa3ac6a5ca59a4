#include "translators/conditions/predicate_operand.h"
#include "translators/frame/document_text.h"
#include "translators/frame/field_lookup.h"

#include <MCVeltrane_900/DiscreteSplit.h>
#include <MCVeltrane_900/PMMLModelTags.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/ScaleSplit.h>
#include <MCVeltrane_900/SetPredicate.h>
#include <MCVeltrane_900/SimplePredicate.h>

#include <xercesc/dom/DOMElement.hpp>

#include <memory>

// The two predicates that ask for the value of one field.

namespace MCVeltrane_900 {

using namespace veltrane::translators;

namespace {

bool IsDiscrete(const ScoreDictVar& var) {
    return var.GetMLevel() == ScoreDictVar::LEVEL_NOMINAL || var.GetMLevel() == ScoreDictVar::LEVEL_ORDINAL;
}

/// Whether a SimplePredicate on the variable asks for categories rather than for a range of numbers.
bool TakesDiscreteSplit(const ScoreDictVar& var, bool ordinalAsScale) {
    switch (var.GetMLevel()) {
    case ScoreDictVar::LEVEL_NOMINAL:
        return true;
    case ScoreDictVar::LEVEL_ORDINAL:
        return var.GetVarType() == ScoreDictVar::STRING_VAR ||
               (var.GetVarType() == ScoreDictVar::kNUMERIC_VAR && !ordinalAsScale);
    default:
        return false;
    }
}

} // namespace

SimplePredicate* PMMLTranslator::ParsePredicate(xercesc::DOMNode* node, const ScoreDictionary* dictionary,
                                                const ScoreDictionary* derived, bool ordinalAsScale) {
    const xercesc::DOMElement* element = RequireElement(node, PMMLModelTags::XML_ELE_PREDICATE);
    const DocumentText text(*this, &PMMLTranslator::ToString);
    const std::string field = text.Forced(element, PMMLModelTags::XML_ATT_FIELD);
    const ScoreDictVar& var = FieldLookup(dictionary, derived).Require(field);

    std::string op;
    std::string value;
    bool isMissing = false;
    auto predicate = std::make_unique<SimplePredicate>();
    if (TakesDiscreteSplit(var, ordinalAsScale)) {
        predicate->SetSplit(HandleNodeDiscreteSplit(node, &var, op, isMissing, value));
    } else {
        predicate->SetSplit(HandleNodeScaleSplit(node, &var, op, isMissing, value));
    }
    predicate->SetPredicateValue(value);
    predicate->SetValueToMissing(isMissing);
    predicate->SetPredicateOperator(op);
    return predicate.release();
}

SetPredicate* PMMLTranslator::ParseSetPredicate(xercesc::DOMNode* node, const ScoreDictionary* dictionary,
                                                const ScoreDictionary* derived) {
    const xercesc::DOMElement* element = RequireElement(node, PMMLModelTags::XML_ELE_SETPREDICATE);
    const DocumentText text(*this, &PMMLTranslator::ToString);
    const std::string field = text.Forced(element, PMMLModelTags::XML_ATT_FIELD);
    const ScoreDictVar& var = FieldLookup(dictionary, derived).Require(field);
    // A continuous field has no categories to be in: its set predicate disappears from the compound around it.
    if (!IsDiscrete(var)) {
        return nullptr;
    }
    std::string op;
    std::vector<double> array;
    auto predicate = std::make_unique<SetPredicate>();
    predicate->SetSplit(HandleArrayDiscreteSplit(node, &var, op, array));
    predicate->SetArrayData(array);
    predicate->SetPredicateOperator(op);
    return predicate.release();
}

} // namespace MCVeltrane_900
