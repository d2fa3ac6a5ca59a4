#include "kit/document/table_parser.h"

#include <xercesc/framework/XMLElementDecl.hpp>

#include <limits>
#include <string_view>

namespace veltrane_kit {

using veltrane::SubtreeNode;

namespace {

/// A table, its rows and their cells.
constexpr std::size_t kCellDepth = 3;

constexpr std::size_t kMost = std::numeric_limits<std::uint32_t>::max() - 1;

} // namespace

bool TableParser::IsTable(const xercesc::XMLElementDecl& element) const {
    return std::u16string_view(element.getFullName()) == fTag && fCurrentParent != nullptr &&
           std::u16string_view(fCurrentParent->getNodeName()) == fParent;
}

/// The parser has one declaration for all elements of a name.
std::uint16_t TableParser::TagOf(const xercesc::XMLElementDecl& element) {
    const auto known = fTags.find(&element);
    if (known != fTags.end()) {
        return known->second;
    }
    if (fNames.size() == SubtreeNode::kText) {
        throw TableTooLarge();
    }
    const auto tag = static_cast<std::uint16_t>(fNames.size());
    fNames.emplace_back(element.getFullName());
    fNameTexts.push_back(fNames.back().c_str());
    return fTags.emplace(&element, tag).first->second;
}

void TableParser::startElement(const xercesc::XMLElementDecl& element, const unsigned int uriId,
                               const XMLCh* const prefix, const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                               const XMLSize_t attributeCount, const bool isEmpty, const bool isRoot) {
    if (!fOpen.empty()) {
        Open(element);
        if (isEmpty) {
            Close();
        }
        return;
    }
    const bool begins = !isEmpty && IsTable(element);
    XercesDOMParser::startElement(element, uriId, prefix, attributes, attributeCount, isEmpty, isRoot);
    if (begins) {
        Begin(element);
    }
}

void TableParser::endElement(const xercesc::XMLElementDecl& element, const unsigned int uriId, const bool isRoot,
                             const XMLCh* const prefix) {
    if (fOpen.size() > 1) {
        Close();
        return;
    }
    if (!fOpen.empty()) {
        End();
    }
    XercesDOMParser::endElement(element, uriId, isRoot, prefix);
}

void TableParser::Begin(const xercesc::XMLElementDecl& element) {
    fTables.emplace_back().nodes.push_back({TagOf(element), 0, 0, 0, 0});
    fOpen.push_back(0);
}

void TableParser::Open(const xercesc::XMLElementDecl& element) {
    FinishText();
    std::vector<SubtreeNode>& nodes = fTables.back().nodes;
    if (nodes.size() == kMost) {
        throw TableTooLarge();
    }
    nodes.push_back({TagOf(element), 0, fOpen.back(), 0, 0});
    fOpen.push_back(static_cast<std::uint32_t>(nodes.size()) - 1);
}

void TableParser::Close() {
    FinishText();
    std::vector<SubtreeNode>& nodes = fTables.back().nodes;
    nodes[fOpen.back()].end = static_cast<std::uint32_t>(nodes.size());
    fOpen.pop_back();
}

void TableParser::End() {
    Close();
    Table& table = fTables.back();
    table.nodes.shrink_to_fit();
    table.texts.shrink_to_fit();
    table.records = {table.nodes.data(), nullptr, table.texts.c_str(), nullptr};
    table.subtree = {&table.records, 0};
    fCurrentParent->setUserData(veltrane::kSubtreeKey, &table.subtree, nullptr);
}

/// All tables share the names.
void TableParser::endDocument() {
    for (Table& table : fTables) {
        table.records.names = fNameTexts.data();
    }
    XercesDOMParser::endDocument();
}

void TableParser::AddText(const XMLCh* text, XMLSize_t length) {
    if (fOpen.size() >= kCellDepth) {
        fText.append(text, length);
    }
}

void TableParser::FinishText() {
    if (fText.empty()) {
        return;
    }
    Table& table = fTables.back();
    if (table.nodes.size() == kMost || kMost - table.texts.size() <= fText.size()) {
        throw TableTooLarge();
    }
    const auto end = static_cast<std::uint32_t>(table.nodes.size()) + 1;
    table.nodes.push_back({SubtreeNode::kText, 0, fOpen.back(), end, static_cast<std::uint32_t>(table.texts.size())});
    table.texts.append(fText).push_back(u'\0');
    fText.clear();
}

void TableParser::docCharacters(const XMLCh* const text, const XMLSize_t length, const bool isCdata) {
    fOpen.empty() ? XercesDOMParser::docCharacters(text, length, isCdata) : AddText(text, length);
}

void TableParser::ignorableWhitespace(const XMLCh* const text, const XMLSize_t length, const bool isCdata) {
    fOpen.empty() ? XercesDOMParser::ignorableWhitespace(text, length, isCdata) : AddText(text, length);
}

void TableParser::docComment(const XMLCh* const comment) {
    if (fOpen.empty()) {
        XercesDOMParser::docComment(comment);
    }
}

void TableParser::docPI(const XMLCh* const target, const XMLCh* const data) {
    if (fOpen.empty()) {
        XercesDOMParser::docPI(target, data);
    }
}

void TableParser::startEntityReference(const xercesc::XMLEntityDecl& entity) {
    if (fOpen.empty()) {
        XercesDOMParser::startEntityReference(entity);
    }
}

void TableParser::endEntityReference(const xercesc::XMLEntityDecl& entity) {
    if (fOpen.empty()) {
        XercesDOMParser::endEntityReference(entity);
    }
}

} // namespace veltrane_kit
