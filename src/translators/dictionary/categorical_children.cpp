#include "diagnostics/raise.h"
#include "translators/dictionary/field_values.h"
#include "translators/dictionary/label_checks.h"
#include "translators/frame/element_walk.h"

#include <MCVeltrane_900/PMMLModelTags.h>

#include <xercesc/dom/DOMElement.hpp>

namespace veltrane::translators {

using diagnostics::Message;
using diagnostics::Raise;
using MCVeltrane_900::BaseTranslator;
using MCVeltrane_900::PMMLModelTags;
using MCVeltrane_900::ScoreDictVar;

namespace {

void CheckFormat(FieldValues&, const XMLCh* value) {
    BaseTranslator::VerifyInt(value);
}

void SetWidth(FieldValues& values, const XMLCh* value) {
    const int width = BaseTranslator::VerifyInt(value);
    if (width > 0) {
        values.Var().SetWidth(width);
    }
}

void SetDecimal(FieldValues& values, const XMLCh* value) {
    const int decimal = BaseTranslator::VerifyInt(value);
    if (decimal >= 0) {
        values.Var().SetDecimal(decimal);
    }
}

void SetTrueValue(FieldValues& values, const XMLCh* value) {
    values.Var().SetFalgTypeTrueValue(values.Text(value));
}

const ExtensionRule kRules[] = {
    {PMMLModelTags::XML_VAL_NAME_FORMAT, CheckFormat},
    {PMMLModelTags::XML_VAL_NAME_WIDTH, SetWidth},
    {PMMLModelTags::XML_ATT_TRAN_EXT_NAME_STRINGLENGTH, SetWidth},
    {PMMLModelTags::XML_VAL_NAME_DECIMAL, SetDecimal},
    {PMMLModelTags::XML_VAL_NAME_MSLO, [](FieldValues& values, const XMLCh* value) { values.SetLowerBound(value); }},
    {PMMLModelTags::XML_VAL_NAME_MSUP, [](FieldValues& values, const XMLCh* value) { values.SetUpperBound(value); }},
    {"flagTypeTrueValue", SetTrueValue},
};

bool IsEmptyRefused(const FieldValues& values) {
    const bool isString = values.Var().GetVarType() == ScoreDictVar::STRING_VAR;
    return values.IsKnownNumeric() || (isString && !values.Var().GetEmptyStringOK());
}

void ReadValue(const xercesc::DOMElement* element, FieldValues& values) {
    const XMLCh* property = BaseTranslator::GetAttribute(element, PMMLModelTags::XML_ATT_VALUE_PROPERTY);
    const XMLCh* value = BaseTranslator::GetAttributeForced(element, PMMLModelTags::XML_ATT_VALUE_VALUE);
    const bool isEmpty = Equals(value, "");
    if (Equals(property, PMMLModelTags::XML_VAL_PROP_INVALID) ||
        Equals(property, PMMLModelTags::XML_VAL_PROP_MISSING)) {
        if (isEmpty && values.IsNumeric()) {
            Raise<Message::INVALID_ATTRIBUTE_VALUE_IN>("", "value", "MapValues");
        }
        values.AddMissing(value);
    } else if (Equals(property, "") || Equals(property, PMMLModelTags::XML_VAL_PROP_VALID)) {
        if (isEmpty && IsEmptyRefused(values)) {
            Raise<Message::INVALID_ATTRIBUTE_VALUE_IN>("", "value", "MapValues");
        }
        values.AddValid(element, value);
    } else {
        Raise<Message::INVALID_ATTRIBUTE_VALUE_IN>(values.Text(property), "property", "Value");
    }
}

void ReadChild(const xercesc::DOMElement* child, FieldValues& values) {
    if (HasTag(child, PMMLModelTags::XML_ELE_VALUE)) {
        ReadValue(child, values);
    } else if (HasTag(child, PMMLModelTags::XML_ELE_EXTENSION)) {
        ApplyRule(kRules, values, child);
    } else {
        Raise<Message::UNEXPECTED_VALUE>(values.Text(child->getTagName()), "Extension, Value");
    }
}

} // namespace

void ReadCategoricalChildren(const xercesc::DOMElement* field, FieldValues& values) {
    for (const xercesc::DOMElement* child : ChildElements(field)) {
        ReadChild(child, values);
    }

    values.AddBounds();
    if (const XMLCh* conflict = values.FindConflict()) {
        Raise<Message::VALID_AND_INVALID>(values.Text(conflict));
    }
    if (values.HandOverLabels()) {
        CheckCategoryCount(values.Var());
        values.CheckLabels();
    }
    values.HandOverMissing();
}

} // namespace veltrane::translators
