#ifndef VELTRANE_PLUGINS_KIT_PARSED_DOCUMENT_H
#define VELTRANE_PLUGINS_KIT_PARSED_DOCUMENT_H

#include "kit/document/element.h"

#include <iosfwd>
#include <memory>
#include <string>

namespace veltrane_kit {

/// A document that a host has the kit read by itself, beside the factory. Nothing outside it is read. It is for hosts
/// that have held the document against the library's bounds before: those refuse hostile ones.
class ParsedDocument {
public:
    /// @param in       at its start
    /// @param encoding of the texts; empty means BaseTranslator::DEFAULT_ENCODING
    /// @param parent   in whose elements tables stand that may be kept as records, see TableParser; null for none
    /// @param table    the name of those
    /// @throws VTException 260105 for a document that can't be read
    ParsedDocument(std::istream& in, const std::string& encoding, const XMLCh* parent = nullptr,
                   const XMLCh* table = nullptr);
    ~ParsedDocument();
    ParsedDocument(const ParsedDocument&) = delete;
    ParsedDocument& operator=(const ParsedDocument&) = delete;

    /// No element for an empty document.
    Element Root() const;

private:
    struct Parser;
    std::unique_ptr<Parser> fParser;
    DocumentText fText;
};

} // namespace veltrane_kit

#endif
