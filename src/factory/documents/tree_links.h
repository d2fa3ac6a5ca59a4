#ifndef VELTRANE_FACTORY_TREE_LINKS_H
#define VELTRANE_FACTORY_TREE_LINKS_H

#include <xercesc/dom/DOM.hpp>

/// Links between nodes of a tree under construction.
///
/// The parser's own way to append a node asks each node for its parts by a dynamic cast, eight for each child, which
/// takes a third of a parse. Here the types of the nodes are known; the links that are set are the same.
namespace veltrane::factory {

/// Appends a new node as the last child.
/// @param parent an element
void AppendElement(xercesc::DOMNode* parent, xercesc::DOMElement* child);
void AppendText(xercesc::DOMNode* parent, xercesc::DOMText* child);

/// Gives a new attribute its value.
/// @param isSpecified whether it stands in the document
void SetValue(xercesc::DOMAttr* attribute, xercesc::DOMText* value, bool isSpecified);

/// Gives a new element one more attribute. Their number has to be known ahead, and no two have one name.
void ReserveAttributes(xercesc::DOMElement* element, XMLSize_t count);
void AddAttribute(xercesc::DOMElement* element, xercesc::DOMAttr* attribute);

} // namespace veltrane::factory

#endif
