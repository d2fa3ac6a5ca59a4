#ifndef VELTRANE_HOST_XML_TREE_H
#define VELTRANE_HOST_XML_TREE_H

#include <string>
#include <utility>
#include <vector>

namespace veltrane::host {

/// An element of a document with all that stands in it, in UTF-8. Reading from it never fails: what isn't there is
/// empty.
struct XmlNode {
    std::string name;
    std::vector<std::pair<std::string, std::string>> attributes; ///< in document order
    std::vector<XmlNode> children;
    std::string text; ///< directly in the element

    /// The value of an attribute; empty for none.
    const std::string& operator[](const char* attribute) const;
    bool Has(const char* attribute) const;

    /// The first child of a name; an element without a name for none.
    const XmlNode& Child(const char* child) const;
    std::vector<const XmlNode*> Children(const char* child) const;
};

} // namespace veltrane::host

#endif
