#ifndef VELTRANE_FACTORY_DOCUMENT_PARSER_H
#define VELTRANE_FACTORY_DOCUMENT_PARSER_H

#include "factory/documents/document_limits.h"
#include "factory/documents/recording_parser.h"

#include <xercesc/util/SecurityManager.hpp>
#include <xercesc/util/XMLEntityResolver.hpp>

#include <iosfwd>
#include <memory>
#include <string_view>
#include <unordered_set>

namespace veltrane::factory {

/// Holds the parser's memory in front of the parser itself, so that it outlives it.
struct ParserMemory {
    MeteredMemory fMemory;
};

/// A DOM parser that keeps the bounds of a document and reads nothing but the document and, unless external DTDs are
/// switched off, the document's own external DTD. It owns the DOM document. It serves one parse.
class DocumentParser : private ParserMemory, public RecordingParser, private xercesc::XMLEntityResolver {
public:
    DocumentParser();
    ~DocumentParser() override;

    MeteredMemory& Memory() { return fMemory; }

    /// False when no element or attribute of the document that was parsed has this name.
    bool MayHaveName(std::u16string_view name) const;

    void startElement(const xercesc::XMLElementDecl& element, const unsigned int uriId, const XMLCh* const prefix,
                      const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes, const XMLSize_t attributeCount,
                      const bool isEmpty, const bool isRoot) override;
    void endElement(const xercesc::XMLElementDecl& element, const unsigned int uriId, const bool isRoot,
                    const XMLCh* const prefix) override;
    void startEntityReference(const xercesc::XMLEntityDecl& entity) override;
    void endEntityReference(const xercesc::XMLEntityDecl& entity) override;
    void doctypeDecl(const xercesc::DTDElementDecl& root, const XMLCh* const publicId, const XMLCh* const systemId,
                     const bool hasIntSubset, const bool hasExtSubset) override;
    void startIntSubset() override;
    void endIntSubset() override;
    void entityDecl(const xercesc::DTDEntityDecl& entity, const bool isParameter, const bool isIgnored) override;

    /// Gives the document's own external DTD; refuses every other external entity.
    xercesc::InputSource* resolveEntity(xercesc::XMLResourceIdentifier* identifier) override;

    /// Refuses a document that expands too many entities; the parser itself takes this for no fatal error.
    void error(const unsigned int code, const XMLCh* const domain, const xercesc::XMLErrorReporter::ErrTypes type,
               const XMLCh* const text, const XMLCh* const systemId, const XMLCh* const publicId, const XMLFileLoc line,
               const XMLFileLoc column) override;

private:
    void CountNames(const xercesc::XMLElementDecl& element, const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                    XMLSize_t attributeCount);
    void CountRecordedNames();
    void CountName(const XMLCh* name);

    xercesc::SecurityManager fSecurity;
    std::unordered_set<std::size_t> fNames; ///< hashes of the names of elements and attributes
    std::size_t fCountedNames = 0;          ///< of those that the records have
    std::size_t fElementDepth = 0;
    std::size_t fEntityDepth = 0;
    bool fDtdExpected = false;
    bool fInInternalSubset = false;
};

/// Parses the document on a stream, from where it stands.
/// @param parser deleted before a failure is thrown
/// @return the document, owned by the parser
/// @throws VTException 260105 for a document that isn't well-formed or is refused, 260107 when there is no document,
///         260109 for an XMLException or a DOMException
xercesc::DOMDocument* ParseDocument(std::unique_ptr<DocumentParser>& parser, std::istream& in);

} // namespace veltrane::factory

#endif
