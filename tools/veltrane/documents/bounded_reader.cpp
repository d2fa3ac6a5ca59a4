#include "documents/bounded_reader.h"

#include <MCVeltrane_900/ModelFactory.h>

#include <unicode/unistr.h>
#include <xercesc/sax/Locator.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/sax2/Attributes.hpp>
#include <xercesc/sax2/SAX2XMLReader.hpp>
#include <xercesc/sax2/XMLReaderFactory.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/SecurityManager.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLUni.hpp>

#include <functional>
#include <memory>

namespace veltrane::host {

using factory::DocumentRefused;

namespace {

constexpr std::u16string_view kPrefixDeclaration = u"xmlns:";
/// What the name spaces of all versions of PMML begin with.
constexpr std::u16string_view kPmmlNameSpace = u"http://www.dmg.org/PMML-";

constexpr const char* kTooMuchMemory = "the document takes more memory than one of its size may";

} // namespace

std::string Utf8(std::u16string_view text) {
    std::string utf8;
    icu::UnicodeString(false, text.data(), static_cast<std::int32_t>(text.size())).toUTF8String(utf8);
    return utf8;
}

std::string Utf8(const XMLCh* text) {
    return text == nullptr ? std::string() : Utf8(std::u16string_view(text));
}

void BoundedHandlers::Read(std::istream& in) {
    try {
        Parse(in);
    } catch (const DocumentRefused&) {
        if (!fFault) {
            fFault = DocumentFault{0, 0, kTooMuchMemory};
        }
    } catch (const xercesc::SAXException&) { // the handlers below have noted it
    } catch (const xercesc::XMLException& fault) {
        fFault = DocumentFault{0, 0, Utf8(fault.getMessage())};
    } catch (const xercesc::OutOfMemoryException&) {
        fFault = DocumentFault{0, 0, kTooMuchMemory};
    }
    OnEnd(fFault);
}

/// Without name spaces, as the library reads models: names are taken with their prefixes.
void BoundedHandlers::Parse(std::istream& in) {
    using xercesc::XMLUni;
    xercesc::SecurityManager security;
    security.setEntityExpansionLimit(MCVeltrane_900::ModelFactory::MAX_ENTITY_EXPANSIONS);
    const std::unique_ptr<xercesc::SAX2XMLReader> reader(xercesc::XMLReaderFactory::createXMLReader(&fMemory));
    for (const XMLCh* feature : {XMLUni::fgSAX2CoreValidation, XMLUni::fgXercesDynamic, XMLUni::fgXercesLoadExternalDTD,
                                 XMLUni::fgSAX2CoreNameSpaces, XMLUni::fgXercesSchema}) {
        reader->setFeature(feature, false);
    }
    reader->setProperty(XMLUni::fgXercesSecurityManager, &security);
    reader->setContentHandler(this);
    reader->setErrorHandler(this);
    reader->setDeclarationHandler(this);
    reader->setEntityResolver(this);
    reader->setLexicalHandler(this);
    reader->parse(factory::MeteredInputSource(in, fMemory));
    fLocator = nullptr;
}

void BoundedHandlers::Refuse(const std::string& reason) {
    DocumentFault fault{0, 0, reason};
    if (fLocator) {
        fault.line = fLocator->getLineNumber();
        fault.column = fLocator->getColumnNumber();
    }
    fFault = fault;
    throw DocumentRefused();
}

void BoundedHandlers::startElement(const XMLCh*, const XMLCh*, const XMLCh* name,
                                   const xercesc::Attributes& attributes) {
    if (++fDepth > factory::kMaxElementDepth) {
        Refuse("elements are nested too deeply");
    }
    CountName(name);
    CountItems(attributes);
    DeclarePrefixes(attributes);
    OnElement(name, attributes);
}

void BoundedHandlers::DeclarePrefixes(const xercesc::Attributes& attributes) {
    for (XMLSize_t at = 0; at < attributes.getLength(); ++at) {
        const std::u16string_view name = attributes.getQName(at);
        if (name.starts_with(kPrefixDeclaration)) {
            const std::u16string prefix(name.substr(kPrefixDeclaration.size()));
            fArePmmls[prefix].push_back(std::u16string_view(attributes.getValue(at)).starts_with(kPmmlNameSpace));
            fPrefixes.push_back({prefix, fDepth});
        }
    }
}

void BoundedHandlers::ForgetPrefixes() {
    while (!fPrefixes.empty() && fPrefixes.back().depth == fDepth) {
        fArePmmls[fPrefixes.back().text].pop_back();
        fPrefixes.pop_back();
    }
}

const XMLCh* BoundedHandlers::WithoutPrefix(const XMLCh* name) const {
    const std::u16string_view whole(name);
    const std::size_t colon = fPrefixes.empty() ? whole.npos : whole.find(u':');
    if (colon == whole.npos) {
        return name;
    }
    const auto declared = fArePmmls.find(std::u16string(whole.substr(0, colon)));
    const bool isPmml = declared != fArePmmls.end() && !declared->second.empty() && declared->second.back();
    return isPmml ? name + colon + 1 : name;
}

/// Declared defaults and elements within entities cost the document nothing, however many there are.
void BoundedHandlers::CountItems(const xercesc::Attributes& attributes) {
    ++fItems;
    for (XMLSize_t at = 0; at < attributes.getLength(); ++at) {
        CountName(attributes.getQName(at));
        fItems += 1 + xercesc::XMLString::stringLen(attributes.getValue(at));
    }
    if (fItems > factory::kScannedItems + factory::kScannedItemsPerByte * fMemory.InputBytes()) {
        Refuse("entities or declared attributes multiply the document too far");
    }
}

void BoundedHandlers::CountName(const XMLCh* name) {
    fNames.insert(std::hash<std::u16string_view>()(name));
    if (fNames.size() > factory::kMaxDistinctNames) {
        Refuse("the document has too many different names of elements and attributes");
    }
}

void BoundedHandlers::endElement(const XMLCh*, const XMLCh*, const XMLCh* name) {
    OnElementEnd(name);
    ForgetPrefixes();
    --fDepth;
}

void BoundedHandlers::characters(const XMLCh* text, XMLSize_t length) {
    OnText({text, length});
}

void BoundedHandlers::startEntity(const XMLCh*) {
    if (++fEntityDepth > factory::kMaxEntityDepth) {
        Refuse("entities are nested too deeply");
    }
}

void BoundedHandlers::endEntity(const XMLCh*) {
    --fEntityDepth;
}

void BoundedHandlers::internalEntityDecl(const XMLCh*, const XMLCh* value) {
    if (xercesc::XMLString::stringLen(value) > factory::kMaxEntityLength) {
        Refuse("an entity is declared with too long a text");
    }
}

xercesc::InputSource* BoundedHandlers::resolveEntity(const XMLCh*, const XMLCh* systemId) {
    Refuse("the document reaches for \"" + Utf8(systemId) + "\", which is another file");
}

void BoundedHandlers::error(const xercesc::SAXParseException& fault) {
    fatalError(fault);
}

void BoundedHandlers::fatalError(const xercesc::SAXParseException& fault) {
    fFault = DocumentFault{fault.getLineNumber(), fault.getColumnNumber(), Utf8(fault.getMessage())};
    throw xercesc::SAXException();
}

} // namespace veltrane::host
