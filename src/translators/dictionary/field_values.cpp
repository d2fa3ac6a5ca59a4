#include "translators/dictionary/field_values.h"

#include "diagnostics/raise.h"
#include "translators/dictionary/label_checks.h"
#include "translators/frame/element_walk.h"
#include "translators/frame/hand_over.h"

#include <MCVeltrane_900/PMMLModelTags.h>
#include <MCVeltrane_900/Range.h>
#include <MCVeltrane_900/ScoreValue.h>
#include <MCVeltrane_900/ValueLbl.h>

#include <xercesc/util/XMLString.hpp>

#include <algorithm>
#include <set>

namespace veltrane::translators {

using MCVeltrane_900::BaseTranslator;
using MCVeltrane_900::PMMLModelTags;
using MCVeltrane_900::PMMLTranslator;
using MCVeltrane_900::ScoreDictVar;
using MCVeltrane_900::ScoreValue;

namespace {

struct BeforeIgnoringCase {
    bool operator()(const XMLCh* a, const XMLCh* b) const { return xercesc::XMLString::compareIString(a, b) < 0; }
};

} // namespace

FieldValues::FieldValues(PMMLTranslator& translator, const DocumentText& text, ScoreDictVar& var, bool isTypeExplicit)
    : fTranslator(translator), fText(text), fVar(var), fIsTypeExplicit(isTypeExplicit),
      fLabels(std::make_unique<MCVeltrane_900::ValueLabelSet>()),
      fMissing(std::make_unique<MCVeltrane_900::MissingValueSet>()), fIsMissingUsed(false) {}

bool FieldValues::IsNumeric() const {
    return fVar.GetVarType() == ScoreDictVar::kNUMERIC_VAR;
}

void FieldValues::AddMissing(const XMLCh* text) {
    std::unique_ptr<ScoreValue> value(fTranslator.CarefullyMakeVarValue(&fVar, text));
    fIsTypeExplicit |= IsNumeric();
    fMissingTexts.push_back(text);
    AddRange(*UseMissing(), std::make_unique<MCVeltrane_900::Range>(value.release()));
}

void FieldValues::AddValid(const xercesc::DOMElement* element, const XMLCh* text) {
    std::unique_ptr<ScoreValue> value(fTranslator.CarefullyMakeVarValue(&fVar, text));
    fIsTypeExplicit |= IsNumeric();
    fValidTexts.push_back(text);
    const XMLCh* display = BaseTranslator::GetAttribute(element, PMMLModelTags::XML_ATT_VALUE_DISPLAYVALUE);
    const std::string label = fText(Equals(display, "") ? text : display);
    auto valueLabel = std::make_unique<MCVeltrane_900::ValueLbl>(value.release(), label);
    fLabels->Add(valueLabel.release());
}

void FieldValues::SetLowerBound(const XMLCh* value) {
    fInvalid.SetLower(BaseTranslator::VerifyDouble(value));
}

void FieldValues::SetUpperBound(const XMLCh* value) {
    fInvalid.SetUpper(BaseTranslator::VerifyDouble(value));
}

MCVeltrane_900::ScoreMissingValueSet* FieldValues::UseMissing() {
    fIsMissingUsed = true;
    return fMissing.get();
}

void FieldValues::AddBounds() {
    if (fTranslator.HandleKORDMissingInterval(fMissing.get(), fInvalid.count, fInvalid.lower, fInvalid.upper)) {
        fIsMissingUsed = true;
    }
}

const XMLCh* FieldValues::FindConflict() const {
    if (fMissingTexts.empty() || fValidTexts.empty()) {
        return nullptr;
    }
    const std::set<const XMLCh*, BeforeIgnoringCase> valid(fValidTexts.begin(), fValidTexts.end());
    const auto found = std::find_if(fMissingTexts.begin(), fMissingTexts.end(),
                                    [&](const XMLCh* text) { return valid.contains(text); });
    return found == fMissingTexts.end() ? nullptr : *found;
}

bool FieldValues::HandOverLabels() {
    if (fLabels->Size() == 0) {
        fVar.SetEmptyCateValues(true);
        return false;
    }
    fVar.SetValueLabels(fLabels.release());
    return true;
}

void FieldValues::CheckLabels() const {
    translators::CheckLabels(fVar);
}

void FieldValues::HandOverMissing() {
    if (fIsMissingUsed) {
        fVar.SetMissingValues(fMissing.release());
    }
}

bool ApplyRule(std::span<const ExtensionRule> rules, FieldValues& values, const xercesc::DOMElement* extension) {
    const XMLCh* name = BaseTranslator::GetAttribute(extension, PMMLModelTags::XML_ATT_EXT_NAME);
    for (const ExtensionRule& rule : rules) {
        if (Equals(name, rule.name)) {
            rule.apply(values, BaseTranslator::GetAttribute(extension, PMMLModelTags::XML_ATT_EXT_VALUE));
            return true;
        }
    }
    return false;
}

} // namespace veltrane::translators
