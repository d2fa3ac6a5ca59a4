#include "diagnostics/raise.h"
#include "translators/dictionary/measure_levels.h"
#include "translators/frame/document_text.h"
#include "translators/frame/element_walk.h"
#include "translators/results/target_categories.h"

#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/PMMLModelTags.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/ScoreDictionary.h>

#include <xercesc/dom/DOMElement.hpp>

#include <memory>

namespace MCVeltrane_900 {

using veltrane::diagnostics::Message;
using veltrane::diagnostics::Raise;
using namespace veltrane::translators;
using Tags = PMMLModelTags;
using xercesc::DOMElement;

namespace {

ScoreDictVar& FindVar(const DOMElement* target, ScoreDictionary* dictionary, const DocumentText& text) {
    const XMLCh* nameText = BaseTranslator::GetAttributeForced(target, Tags::XML_ATT_FIELD);
    if (Equals(nameText, "")) {
        Raise<Message::NULL_ATTRIBUTE>(Tags::XML_ATT_FIELD, Tags::XML_ELE_TARGET);
    }
    const std::string name = text(nameText);
    ScoreDictVar* var = dictionary != nullptr ? dictionary->GetVar(name) : nullptr;
    if (var == nullptr) {
        Raise<Message::MISSING_VARIABLE>(name, Tags::XML_ELE_DATADICTIONARY);
    }
    return *var;
}

/// A Target without a level takes the variable's. The message of a clash names the two places the wrong way round;
/// callers compare it as it is.
void CheckLevel(const DOMElement* target, const ScoreDictVar& var, const DocumentText& text) {
    const XMLCh* word = BaseTranslator::GetAttributeForced(target, Tags::XML_ATT_DATAFIELD_OPTYPE);
    if (Equals(word, "")) {
        return;
    }
    const auto level = ReadMeasureLevel(word);
    if (!level) {
        Raise<Message::INVALID_ATTRIBUTE_VALUE>(text(word), Tags::XML_ATT_DATAFIELD_OPTYPE);
    }
    if (*level != var.GetMLevel()) {
        Raise<Message::CONFLICTING_VALUES_IN>(text(word), Tags::XML_ATT_DATAFIELD_OPTYPE, Tags::XML_ELE_DATADICTIONARY,
                                              MeasureLevelText(var.GetMLevel()), Tags::XML_ATT_DATAFIELD_OPTYPE,
                                              Tags::XML_ELE_TARGET);
    }
}

/// Only the first TargetValue counts.
void ReadDefault(DOMElement* target, ScoreDictVar& var) {
    auto* targetValue = static_cast<DOMElement*>(BaseTranslator::GetChildByTag(target, Tags::XML_ELE_TARGETVALUE));
    if (targetValue == nullptr) {
        return;
    }
    const XMLCh* text = BaseTranslator::GetAttribute(targetValue, Tags::XML_ATT_DEFAULTVALUE);
    if (Equals(text, "")) {
        return;
    }
    auto value = std::make_unique<NumericValue>(BaseTranslator::VerifyDouble(text));
    const std::unique_ptr<const ScoreValue> replaced(var.GetDefValue());
    var.SetDefValue(value.release());
}

void ReadCategories(PMMLTranslator& translator, const DOMElement* target, const DocumentText& text, ScoreDictVar& var) {
    TargetCategories categories(translator, text, var);
    for (const DOMElement* child : ChildElements(target)) {
        if (HasTag(child, Tags::XML_ELE_TARGETVALUE)) {
            categories.Read(child);
        }
    }
    categories.HandOver();
}

void ReadTarget(PMMLTranslator& translator, DOMElement* target, ScoreDictionary* dictionary, const DocumentText& text) {
    ScoreDictVar& var = FindVar(target, dictionary, text);
    CheckLevel(target, var, text);
    switch (var.GetMLevel()) {
    case ScoreDictVar::LEVEL_CONTINUOUS:
        ReadDefault(target, var);
        break;
    case ScoreDictVar::LEVEL_ORDINAL:
    case ScoreDictVar::LEVEL_NOMINAL:
        ReadCategories(translator, target, text, var);
        break;
    default:
        Raise<Message::INVALID_ATTRIBUTE_VALUE>("", Tags::XML_ATT_DATAFIELD_OPTYPE);
    }
}

} // namespace

bool PMMLTranslator::HandleTargets(DOMElement* targets, ScoreDictionary* dictionary) {
    if (targets == nullptr) {
        return true;
    }
    const DocumentText text(*this, &PMMLTranslator::ToString);
    for (DOMElement* child : ChildElements(targets)) {
        if (HasTag(child, Tags::XML_ELE_TARGET)) {
            ReadTarget(*this, child, dictionary, text);
        }
    }
    return true;
}

} // namespace MCVeltrane_900
