#include "factory/documents/document_parser.h"

#include "diagnostics/raise.h"
#include "factory/documents/external_dtd.h"
#include "factory/documents/xml_text.h"

#include <MCVeltrane_900/ModelFactory.h>

#include <xercesc/dom/DOMException.hpp>
#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/framework/XMLErrorCodes.hpp>
#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLResourceIdentifier.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLUni.hpp>
#include <xercesc/validators/DTD/DTDEntityDecl.hpp>

#include <functional>
#include <string_view>

namespace veltrane::factory {

DocumentParser::DocumentParser() : RecordingParser(fMemory) {
    fSecurity.setEntityExpansionLimit(MCVeltrane_900::ModelFactory::MAX_ENTITY_EXPANSIONS);
    setSecurityManager(&fSecurity);
    setXMLEntityResolver(this);
    // With a reporter and without an error handler a fatal error is thrown; without a reporter the parser would end
    // with the part of the document that it has.
    getScanner()->setErrorReporter(this);
}

DocumentParser::~DocumentParser() = default;

void DocumentParser::startElement(const xercesc::XMLElementDecl& element, const unsigned int uriId,
                                  const XMLCh* const prefix, const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes,
                                  const XMLSize_t attributeCount, const bool isEmpty, const bool isRoot) {
    if (++fElementDepth > kMaxElementDepth) {
        throw DocumentRefused();
    }
    const bool wasRecording = IsRecording();
    if (!wasRecording) {
        CountNames(element, attributes, attributeCount);
    }
    // An empty element is ended from within.
    RecordingParser::startElement(element, uriId, prefix, attributes, attributeCount, isEmpty, isRoot);
    if (wasRecording && IsRecording()) {
        CountRecordedNames();
    } else if (wasRecording) {
        CountNames(element, attributes, attributeCount);
    }
}

void DocumentParser::CountNames(const xercesc::XMLElementDecl& element,
                                const xercesc::RefVectorOf<xercesc::XMLAttr>& attributes, XMLSize_t attributeCount) {
    CountName(element.getFullName());
    for (XMLSize_t i = 0; i < attributeCount; ++i) {
        CountName(attributes.elementAt(i)->getQName());
    }
}

/// Records have each name once, which spares counting it with each element.
void DocumentParser::CountRecordedNames() {
    for (; fCountedNames < Store().NameCount(); ++fCountedNames) {
        CountName(Store().Name(fCountedNames));
    }
}

void DocumentParser::CountName(const XMLCh* name) {
    fNames.insert(std::hash<std::u16string_view>()(name));
    if (fNames.size() > kMaxDistinctNames) {
        throw DocumentRefused();
    }
}

bool DocumentParser::MayHaveName(std::u16string_view name) const {
    return fNames.contains(std::hash<std::u16string_view>()(name));
}

void DocumentParser::endElement(const xercesc::XMLElementDecl& element, const unsigned int uriId, const bool isRoot,
                                const XMLCh* const prefix) {
    --fElementDepth;
    RecordingParser::endElement(element, uriId, isRoot, prefix);
}

void DocumentParser::startEntityReference(const xercesc::XMLEntityDecl& entity) {
    if (++fEntityDepth > kMaxEntityDepth) {
        throw DocumentRefused();
    }
    RecordingParser::startEntityReference(entity);
}

void DocumentParser::endEntityReference(const xercesc::XMLEntityDecl& entity) {
    --fEntityDepth;
    RecordingParser::endEntityReference(entity);
}

void DocumentParser::doctypeDecl(const xercesc::DTDElementDecl& root, const XMLCh* const publicId,
                                 const XMLCh* const systemId, const bool hasIntSubset, const bool hasExtSubset) {
    fDtdExpected = hasExtSubset;
    XercesDOMParser::doctypeDecl(root, publicId, systemId, hasIntSubset, hasExtSubset);
}

void DocumentParser::startIntSubset() {
    fInInternalSubset = true;
    XercesDOMParser::startIntSubset();
}

void DocumentParser::endIntSubset() {
    fInInternalSubset = false;
    XercesDOMParser::endIntSubset();
}

void DocumentParser::entityDecl(const xercesc::DTDEntityDecl& entity, const bool isParameter, const bool isIgnored) {
    if (!entity.isExternal() && entity.getValueLen() > kMaxEntityLength) {
        throw DocumentRefused();
    }
    XercesDOMParser::entityDecl(entity, isParameter, isIgnored);
}

xercesc::InputSource* DocumentParser::resolveEntity(xercesc::XMLResourceIdentifier* identifier) {
    // The parser asks for the DTD of the DOCTYPE once, between the internal subset and the root element.
    if (!fDtdExpected || fInInternalSubset || fElementDepth > 0) {
        throw DocumentRefused();
    }
    fDtdExpected = false;
    return OpenExternalDtd(ToUtf8(identifier->getSystemId()));
}

void DocumentParser::error(const unsigned int code, const XMLCh* const domain,
                           const xercesc::XMLErrorReporter::ErrTypes type, const XMLCh* const text,
                           const XMLCh* const systemId, const XMLCh* const publicId, const XMLFileLoc line,
                           const XMLFileLoc column) {
    if (code == xercesc::XMLErrs::EntityExpansionLimitExceeded &&
        xercesc::XMLString::equals(domain, xercesc::XMLUni::fgXMLErrDomain)) {
        throw DocumentRefused();
    }
    XercesDOMParser::error(code, domain, type, text, systemId, publicId, line, column);
}

namespace {

/// What came out of a parse, kept so that the parser can be deleted after the exception that it made: some exceptions
/// have their text in the parser's memory.
enum class ParseOutcome { DONE, REPORTED, UNEXPECTED };

ParseOutcome Parse(DocumentParser& parser, std::istream& in, std::string& message) {
    try {
        MeteredInputSource source(in, parser.Memory());
        parser.parse(source);
        return ParseOutcome::DONE;
    } catch (const xercesc::XMLException& failure) {
        message = ToUtf8(failure.getMessage());
        return ParseOutcome::REPORTED;
    } catch (const xercesc::DOMException& failure) {
        message = ToUtf8(failure.getMessage());
        return ParseOutcome::REPORTED;
    } catch (...) {
        return ParseOutcome::UNEXPECTED;
    }
}

} // namespace

xercesc::DOMDocument* ParseDocument(std::unique_ptr<DocumentParser>& parser, std::istream& in) {
    std::string message;
    const ParseOutcome outcome = Parse(*parser, in, message);
    xercesc::DOMDocument* document = outcome == ParseOutcome::DONE ? parser->getDocument() : nullptr;
    if (document != nullptr) {
        return document;
    }
    parser.reset();
    switch (outcome) {
    case ParseOutcome::REPORTED:
        diagnostics::RaiseWithDetail<diagnostics::Message::CANNOT_PARSE>(message);
    case ParseOutcome::UNEXPECTED:
        diagnostics::Raise<diagnostics::Message::CANNOT_OPEN_DOCUMENT>();
    default:
        diagnostics::Raise<diagnostics::Message::CANNOT_PARSE_TO_TREE>();
    }
}

} // namespace veltrane::factory
