#include "factory/entries/model_scan.h"

#include "factory/documents/document_glance.h"
#include "factory/documents/document_limits.h"
#include "factory/documents/xml_text.h"

#include <MCVeltrane_900/ModelFactory.h>

#include <xercesc/framework/XMLFormatter.hpp>
#include <xercesc/sax2/Attributes.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/sax2/SAX2XMLReader.hpp>
#include <xercesc/sax2/XMLReaderFactory.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/SecurityManager.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLUni.hpp>

#include <memory>

namespace veltrane::factory {

namespace {

/// Looks for one element. It is thrown out of the parse as soon as the answer stands.
class ScoreSAX2Handlers : public xercesc::DefaultHandler, public xercesc::XMLFormatTarget {
public:
    enum HandlerState { FOUND = 0, FATAL_ERROR = 1, ERROR = 2, NOT_FOUND = 4 };

    explicit ScoreSAX2Handlers(const char* target) : fTarget(target), fTargetText(ToUtf16(fTarget)) {}

    void startElement(const XMLCh* const, const XMLCh* const, const XMLCh* const qname,
                      const xercesc::Attributes&) override {
        if (fTargetText == qname) {
            throw fState = FOUND;
        }
    }

    void endElement(const XMLCh* const, const XMLCh* const, const XMLCh* const qname) override {
        static const std::u16string kRoot = u"PMML";
        if (kRoot == qname) {
            throw fState = NOT_FOUND;
        }
    }

    void warning(const xercesc::SAXParseException&) override {}
    void error(const xercesc::SAXParseException&) override { throw fState = ERROR; }
    void fatalError(const xercesc::SAXParseException&) override { throw fState = FATAL_ERROR; }
    void writeChars(const XMLByte* const, const XMLSize_t, xercesc::XMLFormatter* const) override {}

private:
    HandlerState fState = NOT_FOUND;
    std::string fTarget;
    std::u16string fTargetText;
};

/// The handlers with the bounds of a document.
class BoundedHandlers : public ScoreSAX2Handlers {
public:
    BoundedHandlers(const char* target, const MeteredMemory& memory) : ScoreSAX2Handlers(target), fMemory(memory) {}

    void startElement(const XMLCh* const uri, const XMLCh* const localName, const XMLCh* const qname,
                      const xercesc::Attributes& attributes) override {
        if (++fDepth > kMaxElementDepth) {
            throw DocumentRefused();
        }
        CountItems(attributes);
        ScoreSAX2Handlers::startElement(uri, localName, qname, attributes);
    }

    void endElement(const XMLCh* const uri, const XMLCh* const localName, const XMLCh* const qname) override {
        --fDepth;
        ScoreSAX2Handlers::endElement(uri, localName, qname);
    }

    void internalEntityDecl(const XMLCh* const, const XMLCh* const value) override {
        if (xercesc::XMLString::stringLen(value) > kMaxEntityLength) {
            throw DocumentRefused();
        }
    }

    xercesc::InputSource* resolveEntity(const XMLCh* const, const XMLCh* const) override { throw DocumentRefused(); }

private:
    /// Neither declared defaults nor elements within entities cost the document anything, however many there are.
    void CountItems(const xercesc::Attributes& attributes) {
        ++fItems;
        for (XMLSize_t i = 0; i < attributes.getLength(); ++i) {
            fItems += 1 + xercesc::XMLString::stringLen(attributes.getValue(i));
        }
        if (fItems > kScannedItems + kScannedItemsPerByte * fMemory.InputBytes()) {
            throw DocumentRefused();
        }
    }

    const MeteredMemory& fMemory;
    std::size_t fDepth = 0;
    std::uint64_t fItems = 0;
};

struct Feature {
    const XMLCh* name;
    bool value;
};

std::unique_ptr<xercesc::SAX2XMLReader> MakeReader(MeteredMemory& memory) {
    using xercesc::XMLUni;
    const Feature features[] = {{XMLUni::fgSAX2CoreValidation, false},
                                {XMLUni::fgXercesLoadExternalDTD, false},
                                {XMLUni::fgXercesDynamic, true},
                                {XMLUni::fgSAX2CoreNameSpaces, true},
                                {XMLUni::fgXercesSchema, false},
                                {XMLUni::fgXercesSchemaFullChecking, false},
                                {XMLUni::fgSAX2CoreNameSpacePrefixes, false}};
    std::unique_ptr<xercesc::SAX2XMLReader> reader(xercesc::XMLReaderFactory::createXMLReader(&memory));
    for (const Feature& feature : features) {
        reader->setFeature(feature.name, feature.value);
    }
    return reader;
}

void Scan(BoundedHandlers& handlers, MeteredMemory& memory, const MeteredInputSource& source) {
    xercesc::SecurityManager security;
    security.setEntityExpansionLimit(MCVeltrane_900::ModelFactory::MAX_ENTITY_EXPANSIONS);
    const std::unique_ptr<xercesc::SAX2XMLReader> reader = MakeReader(memory);
    reader->setProperty(xercesc::XMLUni::fgXercesSecurityManager, &security);
    reader->setContentHandler(&handlers);
    reader->setErrorHandler(&handlers);
    reader->setDeclarationHandler(&handlers);
    reader->setEntityResolver(&handlers);
    reader->parse(source);
}

} // namespace

bool IsModelDocument(const std::string& modelName, std::istream& in) {
    const DocumentGlance glance(in, modelName);
    if (!glance.MayHoldElement()) {
        return false;
    }
    MeteredMemory memory;
    BoundedHandlers handlers(modelName.c_str(), memory);
    try {
        Scan(handlers, memory, MeteredInputSource(in, memory, glance.Head()));
    } catch (const ScoreSAX2Handlers::HandlerState state) {
        return state == ScoreSAX2Handlers::FOUND;
    } catch (const DocumentRefused&) {
        // the parse that builds the tree refuses it too, and reports it
    } catch (const xercesc::XMLException&) {
    } catch (const xercesc::OutOfMemoryException&) {
    }
    return false;
}

} // namespace veltrane::factory
