#ifndef VELTRANE_PLUGINS_KIT_TABLE_PARSER_H
#define VELTRANE_PLUGINS_KIT_TABLE_PARSER_H

#include <veltrane/subtrees.h>

#include <xercesc/parsers/XercesDOMParser.hpp>

#include <cstdint>
#include <deque>
#include <string>
#include <unordered_map>
#include <vector>

namespace veltrane_kit {

/// A parser that writes what stands in the tables of a document down as records, where Element finds it: nodes of the
/// DOM take ten times the memory. Attributes, comments and instructions in a table are left out, and so is text outside
/// of the cells of its rows.
class TableParser : public xercesc::XercesDOMParser {
public:
    /// Thrown out of a parse for a table with more names, nodes or text than records have room for.
    struct TableTooLarge {};

    /// @param parent in whose elements tables stand
    /// @param tag    of the tables
    TableParser(const XMLCh* parent, const XMLCh* tag) : fParent(parent), fTag(tag) {}

    void startElement(const xercesc::XMLElementDecl& element, unsigned int uriId, const XMLCh* prefix,
                      const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes, XMLSize_t attributeCount, bool isEmpty,
                      bool isRoot) override;
    void endElement(const xercesc::XMLElementDecl& element, unsigned int uriId, bool isRoot,
                    const XMLCh* prefix) override;
    void docCharacters(const XMLCh* text, XMLSize_t length, bool isCdata) override;
    void ignorableWhitespace(const XMLCh* text, XMLSize_t length, bool isCdata) override;
    void docComment(const XMLCh* comment) override;
    void docPI(const XMLCh* target, const XMLCh* data) override;
    void startEntityReference(const xercesc::XMLEntityDecl& entity) override;
    void endEntityReference(const xercesc::XMLEntityDecl& entity) override;
    void endDocument() override;

private:
    /// One table; the parser keeps them for as long as the tree.
    struct Table {
        std::vector<veltrane::SubtreeNode> nodes;
        std::u16string texts;
        veltrane::SubtreeRecords records{};
        veltrane::Subtree subtree{};
    };

    bool IsTable(const xercesc::XMLElementDecl& element) const;
    std::uint16_t TagOf(const xercesc::XMLElementDecl& element);
    void Begin(const xercesc::XMLElementDecl& element);
    void Open(const xercesc::XMLElementDecl& element);
    void Close();
    void AddText(const XMLCh* text, XMLSize_t length);
    void FinishText();
    void End();

    const XMLCh* fParent;
    const XMLCh* fTag;
    std::deque<Table> fTables;
    std::vector<std::uint32_t> fOpen; ///< the nodes of the table at hand that are open; empty outside of one
    std::u16string fText;             ///< since the last tag
    std::deque<std::u16string> fNames;
    std::vector<const char16_t*> fNameTexts;
    std::unordered_map<const xercesc::XMLElementDecl*, std::uint16_t> fTags; ///< places among the names
};

} // namespace veltrane_kit

#endif
