#ifndef VELTRANE_TRANSLATORS_ELEMENT_WALK_H
#define VELTRANE_TRANSLATORS_ELEMENT_WALK_H

#include <xercesc/util/XercesDefs.hpp>

#include <vector>

XERCES_CPP_NAMESPACE_BEGIN
class DOMElement;
class DOMNode;
XERCES_CPP_NAMESPACE_END

/// Walks over the elements of a document that cost the same for every element, however many there are and however
/// deeply they are nested.
namespace veltrane::translators {

/// Whether a text of the document is this ASCII literal. Null is the empty text.
bool Equals(const XMLCh* text, const char* literal);

/// Whether the element has this tag.
bool HasTag(const xercesc::DOMElement* element, const char* tag);

/// The first child, or the next sibling, that is an element; null for none.
xercesc::DOMElement* FirstChildElement(const xercesc::DOMNode* node);
xercesc::DOMElement* NextElement(const xercesc::DOMNode* node);

/// The child elements of a node in document order, for a range-based loop.
class ChildElements {
public:
    class Iterator {
    public:
        explicit Iterator(xercesc::DOMElement* element) : fElement(element) {}
        xercesc::DOMElement* operator*() const { return fElement; }
        Iterator& operator++();
        bool operator!=(const Iterator& other) const { return fElement != other.fElement; }

    private:
        xercesc::DOMElement* fElement;
    };

    explicit ChildElements(const xercesc::DOMNode* node) : fFirst(FirstChildElement(node)) {}
    Iterator begin() const { return Iterator(fFirst); }
    Iterator end() const { return Iterator(nullptr); }

private:
    xercesc::DOMElement* fFirst;
};

/// The descendants of an element that have a tag, in document order at any depth: what a list of elements by tag name
/// holds, found one at a time by a single walk.
class DescendantsByTag {
public:
    DescendantsByTag(const xercesc::DOMElement* root, const char* tag);

    /// The next one; null when there is none left.
    xercesc::DOMElement* Next();

private:
    void Step();

    /// The elements that the walk is inside of; a parent is slow to ask a node for.
    std::vector<const xercesc::DOMNode*> fAncestors;
    const xercesc::DOMNode* fCurrent;
    const char* fTag;
};

/// Whether an element has at least `count` descendants with the tag.
bool HasDescendants(const xercesc::DOMElement* root, const char* tag, int count);

} // namespace veltrane::translators

#endif
