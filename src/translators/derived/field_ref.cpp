#include "diagnostics/raise.h"
#include "translators/frame/document_text.h"
#include "translators/frame/field_lookup.h"

#include <MCVeltrane_900/PMMLModelTags.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/TransformVar.h>

#include <xercesc/dom/DOMElement.hpp>

namespace MCVeltrane_900 {

using veltrane::diagnostics::Message;
using veltrane::diagnostics::Raise;
using namespace veltrane::translators;

// The target is constant in the signature, which readers of arguments share; it is nevertheless the derived field that
// takes the replacement of a missing value.
std::string PMMLTranslator::HandleFieldRef(xercesc::DOMElement* fieldRef, const ScoreDictionary* dictionary,
                                           const ScoreDictionary* derived, const ScoreDictVar* target) {
    const DocumentText text(*this, &PMMLTranslator::ToString);
    std::string name = text.Forced(fieldRef, PMMLModelTags::XML_ATT_FIELD);
    const ScoreDictVar& field = FieldLookup(dictionary, derived).Require(name);
    if (target == nullptr) {
        return name;
    }
    if (target->GetVarType() != field.GetVarType()) {
        Raise<Message::CONFLICTING_REFERENCE>(name, target->GetName());
    }
    const std::string missing = text.Attribute(fieldRef, PMMLModelTags::XML_ATT_MISSREPVALUE);
    if (!missing.empty()) {
        AsTransformVar(const_cast<ScoreDictVar*>(target)).SetRecodeMissValueTo(CarefullyMakeVarValue(target, missing));
    }
    return name;
}

} // namespace MCVeltrane_900
