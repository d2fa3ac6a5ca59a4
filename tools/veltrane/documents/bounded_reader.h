#ifndef VELTRANE_HOST_BOUNDED_READER_H
#define VELTRANE_HOST_BOUNDED_READER_H

#include "documents/document_outline.h"
#include "factory/documents/document_limits.h"

#include <xercesc/sax2/DefaultHandler.hpp>

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace veltrane::host {

/// UTF-16 text, null for none, as UTF-8.
std::string Utf8(const XMLCh* text);
std::string Utf8(std::u16string_view text);

/// Goes through a document event by event, within the bounds that the library sets to documents, and ends at the first
/// fault. Nothing outside the document is read.
class BoundedHandlers : public xercesc::DefaultHandler {
public:
    /// @param in at its start
    void Read(std::istream& in);

protected:
    /// The level of the element at hand; 1 is the root.
    std::size_t Depth() const { return fDepth; }

    /// The name of the element at hand without its prefix where that stands for PMML, else the name as it is.
    const XMLCh* WithoutPrefix(const XMLCh* name) const;

    virtual void OnElement(const XMLCh* name, const xercesc::Attributes& attributes) = 0;
    virtual void OnElementEnd(const XMLCh*) {}
    virtual void OnText(std::u16string_view) {}

    /// The end of the document, or of what can be read of it.
    virtual void OnEnd(const std::optional<DocumentFault>& fault) = 0;

private:
    void Parse(std::istream& in);
    void CountItems(const xercesc::Attributes& attributes);
    void CountName(const XMLCh* name);
    void DeclarePrefixes(const xercesc::Attributes& attributes);
    void ForgetPrefixes();
    [[noreturn]] void Refuse(const std::string& reason);

    void startElement(const XMLCh*, const XMLCh*, const XMLCh* name, const xercesc::Attributes& attributes) final;
    void endElement(const XMLCh*, const XMLCh*, const XMLCh* name) final;
    void characters(const XMLCh* text, XMLSize_t length) final;
    void startEntity(const XMLCh* name) final;
    void endEntity(const XMLCh* name) final;
    void internalEntityDecl(const XMLCh* name, const XMLCh* value) final;
    xercesc::InputSource* resolveEntity(const XMLCh* publicId, const XMLCh* systemId) final;
    void setDocumentLocator(const xercesc::Locator* locator) final { fLocator = locator; }
    void error(const xercesc::SAXParseException& fault) final;
    void fatalError(const xercesc::SAXParseException& fault) final;

    factory::MeteredMemory fMemory;
    std::unordered_set<std::size_t> fNames; ///< hashes of the names of elements and attributes
    std::size_t fDepth = 0;
    /// A prefix and the level of the element that declares it.
    struct Prefix {
        std::u16string text;
        std::size_t depth;
    };
    std::vector<Prefix> fPrefixes;                                   ///< on the way down to the element at hand
    std::unordered_map<std::u16string, std::vector<bool>> fArePmmls; ///< by prefix; the last declaration counts
    std::size_t fEntityDepth = 0;
    std::uint64_t fItems = 0;
    const xercesc::Locator* fLocator = nullptr;
    std::optional<DocumentFault> fFault;
};

} // namespace veltrane::host

#endif
