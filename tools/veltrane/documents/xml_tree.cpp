#include "documents/xml_tree.h"

namespace veltrane::host {
namespace {

const std::string* Find(const XmlNode& node, const char* attribute) {
    for (const auto& [name, value] : node.attributes) {
        if (name == attribute) {
            return &value;
        }
    }
    return nullptr;
}

} // namespace

const std::string& XmlNode::operator[](const char* attribute) const {
    static const std::string kNone;
    const std::string* value = Find(*this, attribute);
    return value ? *value : kNone;
}

bool XmlNode::Has(const char* attribute) const {
    return Find(*this, attribute) != nullptr;
}

const XmlNode& XmlNode::Child(const char* child) const {
    static const XmlNode kNone;
    const std::vector<const XmlNode*> found = Children(child);
    return found.empty() ? kNone : *found.front();
}

std::vector<const XmlNode*> XmlNode::Children(const char* child) const {
    std::vector<const XmlNode*> found;
    for (const XmlNode& node : children) {
        if (node.name == child) {
            found.push_back(&node);
        }
    }
    return found;
}

} // namespace veltrane::host
