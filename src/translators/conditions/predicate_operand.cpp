#include "translators/conditions/predicate_operand.h"

#include "diagnostics/raise.h"
#include "translators/frame/element_walk.h"
#include "translators/frame/local_text.h"

#include <MCVeltrane_900/PMMLModelTags.h>

#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMElement.hpp>

namespace veltrane::translators {

using diagnostics::Message;
using diagnostics::Raise;
using MCVeltrane_900::BaseTranslator;
using Tags = MCVeltrane_900::PMMLModelTags;

namespace {

/// The value's text, empty or not; null when the attribute is absent.
const XMLCh* OptionalValue(const xercesc::DOMElement* predicate) {
    const xercesc::DOMAttr* attribute = predicate->getAttributeNode(WideName(Tags::XML_ATT_VALUE).Get());
    return attribute != nullptr ? attribute->getValue() : nullptr;
}

OperandForm FormOf(const XMLCh* op, const XMLCh* value, const std::string& opText) {
    const bool isMissing = Equals(op, Tags::XML_VAL_OPERATOR_ISMISSING);
    const bool isNotMissing = Equals(op, Tags::XML_VAL_OPERATOR_ISNOTMISSING);
    if (value == nullptr) {
        return isMissing ? OperandForm::IS_MISSING
                         : (isNotMissing ? OperandForm::IS_NOT_MISSING : OperandForm::COMPARISON);
    }
    if (isMissing || isNotMissing) {
        Raise<Message::CONFLICTING_ATTRIBUTES>(Tags::XML_ATT_VALUE, opText);
    }
    if (*value != 0) {
        return OperandForm::COMPARISON;
    }
    if (!Equals(op, Tags::XML_VAL_OPERATOR_EQUAL)) {
        Raise<Message::ATTRIBUTE_NEEDS_NULL_TEXT>(Tags::XML_ATT_OPERATOR, Tags::XML_VAL_OPERATOR_EQUAL);
    }
    return OperandForm::EMPTY;
}

} // namespace

PredicateOperand ReadOperand(const DocumentText& text, const xercesc::DOMElement* predicate, std::string& op,
                             std::string& value) {
    const XMLCh* operatorText = BaseTranslator::GetAttributeForced(predicate, Tags::XML_ATT_OPERATOR);
    op = text(operatorText);
    const XMLCh* valueText = OptionalValue(predicate);
    if (valueText != nullptr) {
        value = text(valueText);
    }
    return {FormOf(operatorText, valueText, op), operatorText, valueText};
}

xercesc::DOMElement* AsElement(xercesc::DOMNode* node, const char* tag) {
    if (node == nullptr || node->getNodeType() != xercesc::DOMNode::ELEMENT_NODE) {
        return nullptr;
    }
    auto* element = static_cast<xercesc::DOMElement*>(node);
    return HasTag(element, tag) ? element : nullptr;
}

xercesc::DOMElement* RequireElement(xercesc::DOMNode* node, const char* tag) {
    if (node == nullptr || node->getNodeType() != xercesc::DOMNode::ELEMENT_NODE) {
        Raise<Message::MISSING_NODE>(tag);
    }
    return static_cast<xercesc::DOMElement*>(node);
}

} // namespace veltrane::translators
