#include "diagnostics/raise.h"
#include "translators/frame/document_text.h"
#include "translators/frame/element_walk.h"
#include "translators/frame/hand_over.h"
#include "translators/frame/invalid_range.h"

#include <MCVeltrane_900/MissingValueSet.h>
#include <MCVeltrane_900/PMMLModelTags.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/Range.h>
#include <MCVeltrane_900/TransformVar.h>

#include <xercesc/dom/DOMElement.hpp>

#include <memory>

namespace MCVeltrane_900 {

using veltrane::diagnostics::Message;
using veltrane::diagnostics::Raise;
using namespace veltrane::translators;
using xercesc::DOMElement;

namespace {

void ReadBound(InvalidRange& range, const DocumentText& text, const DOMElement* extension) {
    const XMLCh* name = BaseTranslator::GetAttribute(extension, PMMLModelTags::XML_ATT_EXT_NAME);
    const bool isLower = Equals(name, PMMLModelTags::XML_VAL_NAME_MSLO);
    if (!isLower && !Equals(name, PMMLModelTags::XML_VAL_NAME_MSUP)) {
        return;
    }
    const double bound = BaseTranslator::VerifyDouble(text.Attribute(extension, PMMLModelTags::XML_ATT_EXT_VALUE));
    if (isLower) {
        range.SetLower(bound);
    } else {
        range.SetUpper(bound);
    }
}

void AddSingleValue(ScoreMissingValueSet& missing, ScoreValue* value) {
    AddRange(missing, std::make_unique<Range>(value));
}

void CheckIntervalAllowed(const TransformVar& var) {
    if (var.GetVarType() != ScoreDictVar::kNUMERIC_VAR) {
        Raise<Message::CONFLICTING_ELEMENTS>(PMMLModelTags::XML_ELE_INTERVAL, "categorical,ordinal");
    }
}

} // namespace

void PMMLTranslator::handleDerivedVarMissingValue(DOMElement* extension, TransformVar* var) {
    const DocumentText text(*this, &PMMLTranslator::ToString);
    auto missing = std::make_unique<MissingValueSet>();
    InvalidRange invalid;
    for (DOMElement* child : ChildElements(extension)) {
        if (HasTag(child, PMMLModelTags::XML_ELE_VALUE)) {
            AddSingleValue(*missing, CarefullyMakeVarValue(var, text.Forced(child, PMMLModelTags::XML_ATT_VALUE)));
        } else if (HasTag(child, PMMLModelTags::XML_ELE_INTERVAL)) {
            CheckIntervalAllowed(*var);
            handleInterval(var, child, missing.get(), 1);
        } else if (HasTag(child, PMMLModelTags::XML_ELE_EXTENSION)) {
            ReadBound(invalid, text, child);
        }
    }
    if (invalid.count != 0) {
        HandleKORDMissingInterval(missing.get(), invalid.count, invalid.lower, invalid.upper);
    }
    // The variable gives an earlier set up without deleting it.
    const std::unique_ptr<ScoreMissingValueSet> replaced(var->GetMissingValues());
    var->SetMissingValues(missing.release());
}

} // namespace MCVeltrane_900
