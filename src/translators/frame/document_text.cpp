#include "translators/frame/document_text.h"

#include <xercesc/dom/DOMElement.hpp>

namespace veltrane::translators {

using MCVeltrane_900::BaseTranslator;

std::string DocumentText::Attribute(const xercesc::DOMElement* element, const char* name) const {
    return (*this)(BaseTranslator::GetAttribute(element, name));
}

std::string DocumentText::Forced(const xercesc::DOMElement* element, const char* name) const {
    return (*this)(BaseTranslator::GetAttributeForced(element, name));
}

std::string DocumentText::Tag(const xercesc::DOMElement* element) const {
    return (*this)(element->getTagName());
}

std::string DocumentText::FirstChildValue(const xercesc::DOMNode* node) const {
    const xercesc::DOMNode* child = node->getFirstChild();
    return child == nullptr ? std::string() : (*this)(child->getNodeValue());
}

} // namespace veltrane::translators
