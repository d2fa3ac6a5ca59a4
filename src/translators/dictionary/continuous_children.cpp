#include "diagnostics/raise.h"
#include "translators/dictionary/field_values.h"
#include "translators/frame/element_walk.h"

#include <MCVeltrane_900/PMMLModelTags.h>

#include <xercesc/dom/DOMElement.hpp>

namespace veltrane::translators {

using diagnostics::Message;
using diagnostics::Raise;
using MCVeltrane_900::BaseTranslator;
using MCVeltrane_900::PMMLModelTags;
using MCVeltrane_900::PMMLTranslator;

namespace {

const ExtensionRule kRules[] = {
    {PMMLModelTags::XML_VAL_NAME_FORMAT, [](FieldValues&, const XMLCh*) {}},
    {PMMLModelTags::XML_VAL_NAME_WIDTH,
     [](FieldValues& values, const XMLCh* value) { values.Var().SetWidth(BaseTranslator::VerifyInt(value)); }},
    {PMMLModelTags::XML_ATT_TRAN_EXT_NAME_STRINGLENGTH,
     [](FieldValues& values, const XMLCh* value) { values.Var().SetWidth(BaseTranslator::VerifyInt(value)); }},
    {PMMLModelTags::XML_VAL_NAME_DECIMAL,
     [](FieldValues& values, const XMLCh* value) { values.Var().SetDecimal(BaseTranslator::VerifyInt(value)); }},
    {PMMLModelTags::XML_VAL_NAME_MSLO, [](FieldValues& values, const XMLCh* value) { values.SetLowerBound(value); }},
    {PMMLModelTags::XML_VAL_NAME_MSUP, [](FieldValues& values, const XMLCh* value) { values.SetUpperBound(value); }},
};

/// Unlike on the other levels a value without a property is none of the valid ones.
void ReadValue(const xercesc::DOMElement* element, FieldValues& values) {
    const XMLCh* property = BaseTranslator::GetAttribute(element, PMMLModelTags::XML_ATT_VALUE_PROPERTY);
    const bool isMissing =
        Equals(property, PMMLModelTags::XML_VAL_PROP_INVALID) || Equals(property, PMMLModelTags::XML_VAL_PROP_MISSING);
    if (!isMissing && !Equals(property, PMMLModelTags::XML_VAL_PROP_VALID)) {
        return;
    }
    const XMLCh* value = BaseTranslator::GetAttributeForced(element, PMMLModelTags::XML_ATT_VALUE_VALUE);
    if (isMissing) {
        values.AddMissing(value);
        return;
    }
    if (Equals(value, "") && values.IsKnownNumeric()) {
        Raise<Message::NULL_ATTRIBUTE>("value", "Value");
    }
    values.AddValid(element, value);
}

/// An Extension with a field of its own has that field's interval as missing values.
void ReadExtension(const xercesc::DOMElement* extension, FieldValues& values) {
    if (ApplyRule(kRules, values, extension)) {
        return;
    }
    const xercesc::DOMElement* inner = FirstChildElement(extension);
    if (!inner || !HasTag(inner, PMMLModelTags::XML_ELE_XDATAFIELD)) {
        return;
    }
    if (xercesc::DOMElement* interval = FirstChildElement(inner)) {
        PMMLTranslator::handleTreeInterval(interval, values.UseMissing());
    }
}

} // namespace

void ReadContinuousChildren(const xercesc::DOMElement* field, FieldValues& values) {
    int intervals = 0;
    for (xercesc::DOMElement* child : ChildElements(field)) {
        if (HasTag(child, PMMLModelTags::XML_ELE_VALUE)) {
            ReadValue(child, values);
        } else if (HasTag(child, PMMLModelTags::XML_ELE_INTERVAL)) {
            if (++intervals > 1) {
                Raise<Message::MORE_THAN_ONE>("Interval", "DataField");
            }
            PMMLTranslator::handleInterval(&values.Var(), child, values.UseMissing(), intervals);
        } else if (HasTag(child, PMMLModelTags::XML_ELE_EXTENSION)) {
            ReadExtension(child, values);
        }
    }

    if (const XMLCh* conflict = values.FindConflict()) {
        Raise<Message::VALUE_MISSING_OR_VALID_AND_INVALID>(values.Text(conflict), values.Var().GetName());
    }
    if (values.HandOverLabels()) {
        values.CheckLabels();
    }
    values.AddBounds();
    values.HandOverMissing();
}

} // namespace veltrane::translators
