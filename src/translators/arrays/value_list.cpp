#include "diagnostics/raise.h"
#include "translators/frame/document_text.h"
#include "translators/frame/element_walk.h"

#include <MCVeltrane_900/PMMLModelTags.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/TransformVar.h>
#include <MCVeltrane_900/ValueLabelSet.h>
#include <MCVeltrane_900/ValueLbl.h>

#include <xercesc/dom/DOMElement.hpp>

#include <memory>

namespace MCVeltrane_900 {

using veltrane::diagnostics::Message;
using veltrane::diagnostics::Raise;
using namespace veltrane::translators;
using xercesc::DOMElement;

namespace {

// A derived field lists valid values only; "invalid" and "missing" are refused like any other text.
void CheckProperty(const DocumentText& text, const DOMElement* value) {
    const XMLCh* property = BaseTranslator::GetAttribute(value, PMMLModelTags::XML_ATT_VALUE_PROPERTY);
    if (!Equals(property, "") && !Equals(property, PMMLModelTags::XML_VAL_PROP_VALID)) {
        Raise<Message::INVALID_ATTRIBUTE_VALUE_IN>(text(property), PMMLModelTags::XML_ATT_VALUE_PROPERTY,
                                                   PMMLModelTags::XML_ELE_VALUE);
    }
}

} // namespace

void PMMLTranslator::HandleValueList(DOMElement* derivedField, TransformVar* var) {
    const DocumentText text(*this, &PMMLTranslator::ToString);
    auto labels = std::make_unique<ValueLabelSet>();
    for (DOMElement* child : ChildElements(derivedField)) {
        if (!HasTag(child, PMMLModelTags::XML_ELE_VALUE)) {
            continue;
        }
        CheckProperty(text, child);
        const std::string value = text.Forced(child, PMMLModelTags::XML_ATT_VALUE);
        std::unique_ptr<ScoreValue> held(CarefullyMakeVarValue(var, value));
        const std::string label = text.Attribute(child, PMMLModelTags::XML_ATT_VALUE_DISPLAYVALUE);
        labels->Add(new ValueLbl(held.release(), label.empty() ? value : label));
    }
    // Bins may have made labels already; the variable gives that set up without deleting it.
    const std::unique_ptr<ScoreValueLabelSet> replaced(var->GetValueLabels());
    var->SetValueLabels(labels.release());
}

} // namespace MCVeltrane_900
