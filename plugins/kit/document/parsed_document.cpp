#include "kit/document/parsed_document.h"

#include "kit/document/raise.h"
#include "kit/document/table_parser.h"

#include <MCVeltrane_900/ModelFactory.h>
#include <MCXML_900/MCXInputSource.h>

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMException.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/SAXException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/SecurityManager.hpp>

#include <istream>

namespace veltrane_kit {

namespace {

/// Keeps the XML platform running while it lives.
struct XmlPlatform {
    XmlPlatform() { xercesc::XMLPlatformUtils::Initialize(); }
    ~XmlPlatform() { xercesc::XMLPlatformUtils::Terminate(); }
    XmlPlatform(const XmlPlatform&) = delete;
    XmlPlatform& operator=(const XmlPlatform&) = delete;
};

void Parse(xercesc::XercesDOMParser& parser, std::istream& in) {
    xercesc::SecurityManager limits;
    limits.setEntityExpansionLimit(MCVeltrane_900::ModelFactory::MAX_ENTITY_EXPANSIONS);
    parser.setSecurityManager(&limits);
    parser.setValidationScheme(xercesc::XercesDOMParser::Val_Never);
    parser.setLoadExternalDTD(false);
    parser.setDisableDefaultEntityResolution(true);
    parser.setCreateEntityReferenceNodes(false);
    const MCXML_900::MCXInputSource source(in);
    try {
        parser.parse(source);
    } catch (const xercesc::XMLException&) {
        Raise<Message::CANNOT_OPEN_DOCUMENT>();
    } catch (const xercesc::SAXException&) {
        Raise<Message::CANNOT_OPEN_DOCUMENT>();
    } catch (const xercesc::DOMException&) {
        Raise<Message::CANNOT_OPEN_DOCUMENT>();
    }
    parser.setSecurityManager(nullptr);
    if (parser.getErrorCount() > 0) {
        Raise<Message::CANNOT_OPEN_DOCUMENT>();
    }
}

} // namespace

struct ParsedDocument::Parser {
    XmlPlatform platform;
    std::unique_ptr<xercesc::XercesDOMParser> dom;
};

/// What has no room in records is read once more, into the tree.
ParsedDocument::ParsedDocument(std::istream& in, const std::string& encoding, const XMLCh* parent, const XMLCh* table)
    : fParser(std::make_unique<Parser>()), fText(encoding) {
    if (parent != nullptr) {
        try {
            fParser->dom = std::make_unique<TableParser>(parent, table);
            Parse(*fParser->dom, in);
            return;
        } catch (const TableParser::TableTooLarge&) {
            in.clear();
            in.seekg(0);
        }
    }
    fParser->dom = std::make_unique<xercesc::XercesDOMParser>();
    Parse(*fParser->dom, in);
}

ParsedDocument::~ParsedDocument() = default;

Element ParsedDocument::Root() const {
    const xercesc::DOMDocument* document = fParser->dom->getDocument();
    xercesc::DOMElement* root = document == nullptr ? nullptr : document->getDocumentElement();
    return root == nullptr ? Element() : Element(root, fText);
}

} // namespace veltrane_kit
