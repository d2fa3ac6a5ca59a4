#include "factory/documents/tree_building_parser.h"

#include "factory/documents/tree_links.h"

#include <xercesc/framework/XMLAttDefList.hpp>
#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/framework/XMLElementDecl.hpp>

namespace veltrane::factory {

namespace {

constexpr XMLSize_t kUsualText = 1023;

/// Whether a document type declaration gives elements of this kind attributes that don't stand there.
bool HasDefaults(const xercesc::XMLElementDecl& element) {
    if (!element.hasAttDefs()) {
        return false;
    }
    const xercesc::XMLAttDefList& attributes = element.getAttDefList();
    for (XMLSize_t i = 0; i < attributes.getAttDefCount(); ++i) {
        const xercesc::XMLAttDef::DefAttTypes type = attributes.getAttDef(i).getDefaultType();
        if (type == xercesc::XMLAttDef::Default || type == xercesc::XMLAttDef::Fixed) {
            return true;
        }
    }
    return false;
}

} // namespace

TreeBuildingParser::TreeBuildingParser(xercesc::MemoryManager* memory)
    : XercesDOMParser(nullptr, memory, nullptr), fText(kUsualText, memory) {}

bool TreeBuildingParser::IsInElement() const {
    return fWithinElement && fCurrentParent->getNodeType() == xercesc::DOMNode::ELEMENT_NODE;
}

void TreeBuildingParser::FinishText() {
    if (!fHasText) {
        return;
    }
    fHasText = false;
    AddText(fText.getRawBuffer(), fText.getLen());
    fText.reset();
}

void TreeBuildingParser::AddText(const XMLCh* text, XMLSize_t length) {
    if (IsInElement() && fCurrentNode->getNodeType() != xercesc::DOMNode::TEXT_NODE) {
        xercesc::DOMText* node = createText(text, length);
        AppendText(fCurrentParent, node);
        fCurrentNode = node;
    } else {
        XercesDOMParser::docCharacters(text, length, false);
    }
}

/// Whether an element has no more than its name and the attributes that stand in the document.
bool TreeBuildingParser::IsOrdinary(const xercesc::XMLElementDecl& element,
                                    const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                                    XMLSize_t attributeCount) const {
    for (XMLSize_t i = 0; i < attributeCount; ++i) {
        if (attributes.elementAt(i)->getType() == xercesc::XMLAttDef::ID) {
            return false;
        }
    }
    return IsInElement() && !getDoNamespaces() && !getCreateSchemaInfo() && !HasDefaults(element);
}

xercesc::DOMElement* TreeBuildingParser::MakeElement(const XMLCh* name,
                                                     const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                                                     XMLSize_t attributeCount) {
    xercesc::DOMElement* element = createElement(name);
    if (attributeCount > 0) {
        ReserveAttributes(element, attributeCount);
    }
    for (XMLSize_t i = 0; i < attributeCount; ++i) {
        const xercesc::XMLAttr& scanned = *attributes.elementAt(i);
        xercesc::DOMAttr* attribute = createAttr(scanned.getName());
        AddAttribute(element, attribute);
        SetValue(attribute, getDocument()->createTextNode(scanned.getValue()), scanned.getSpecified());
    }
    return element;
}

void TreeBuildingParser::docCharacters(const XMLCh* const text, const XMLSize_t length, const bool isCdata) {
    if (isCdata) {
        // Each section is a node of its own.
        FinishText();
        XercesDOMParser::docCharacters(text, length, isCdata);
    } else {
        if (length > 0) { // the buffer takes a length of 0 for a text that ends in NUL
            fText.append(text, length);
        }
        fHasText = true;
    }
}

void TreeBuildingParser::ignorableWhitespace(const XMLCh* const text, const XMLSize_t length, const bool isCdata) {
    FinishText();
    XercesDOMParser::ignorableWhitespace(text, length, isCdata);
}

void TreeBuildingParser::docComment(const XMLCh* const comment) {
    FinishText();
    XercesDOMParser::docComment(comment);
}

void TreeBuildingParser::docPI(const XMLCh* const target, const XMLCh* const data) {
    FinishText();
    XercesDOMParser::docPI(target, data);
}

void TreeBuildingParser::startElement(const xercesc::XMLElementDecl& element, const unsigned int uriId,
                                      const XMLCh* const prefix,
                                      const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                                      const XMLSize_t attributeCount, const bool isEmpty, const bool isRoot) {
    FinishText();
    if (!IsOrdinary(element, attributes, attributeCount)) {
        XercesDOMParser::startElement(element, uriId, prefix, attributes, attributeCount, isEmpty, isRoot);
        return;
    }
    xercesc::DOMElement* made = MakeElement(element.getFullName(), attributes, attributeCount);
    AppendElement(fCurrentParent, made);
    fCurrentParent = made;
    fCurrentNode = made;
    if (isEmpty) {
        endElement(element, uriId, isRoot, prefix);
    }
}

void TreeBuildingParser::endElement(const xercesc::XMLElementDecl& element, const unsigned int uriId, const bool isRoot,
                                    const XMLCh* const prefix) {
    FinishText();
    XercesDOMParser::endElement(element, uriId, isRoot, prefix);
}

void TreeBuildingParser::startEntityReference(const xercesc::XMLEntityDecl& entity) {
    FinishText();
    XercesDOMParser::startEntityReference(entity);
}

void TreeBuildingParser::endEntityReference(const xercesc::XMLEntityDecl& entity) {
    FinishText();
    XercesDOMParser::endEntityReference(entity);
}

void TreeBuildingParser::endDocument() {
    FinishText();
    XercesDOMParser::endDocument();
}

void TreeBuildingParser::resetDocument() {
    fHasText = false;
    fText.reset();
    XercesDOMParser::resetDocument();
}

} // namespace veltrane::factory
