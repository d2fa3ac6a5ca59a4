#include "documents/kord_document.h"

#include "documents/document_file.h"
#include "files/failure.h"

#include <MCVeltrane_900/KORDTranslator.h>
#include <MCVeltrane_900/ModelFactory.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/SmartString.h>
#include <MCXML_900/MCXInputSource.h>

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/HandlerBase.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/NumberFormatException.hpp>
#include <xercesc/util/SecurityManager.hpp>

#include <istream>

namespace veltrane::host {
namespace {

using MCVeltrane_900::BaseTranslator;
using MCVeltrane_900::ScoreDictionary;
using MCVeltrane_900::SmartString;

/// Takes every fault of a document for the end of it.
class StrictHandler : public xercesc::HandlerBase {
public:
    void error(const xercesc::SAXParseException& fault) override { throw fault; }
    void fatalError(const xercesc::SAXParseException& fault) override { throw fault; }
};

class DictionaryTranslator : public MCVeltrane_900::KORDTranslator {
public:
    using KORDTranslator::ParseFromTree;
    MCVeltrane_900::ScoreModel* ParseFromTree(xercesc::DOMDocument*, const std::string&) override { return nullptr; }

    std::unique_ptr<ScoreDictionary> Read(xercesc::DOMElement* root, const std::string& encoding) {
        CreateTranscoder(encoding);
        xercesc::DOMNode* dictionary = GetChildByTagForced(root, "dictionary");
        return std::unique_ptr<ScoreDictionary>(ParseDictionary(static_cast<xercesc::DOMElement*>(dictionary)));
    }
};

/// Nothing but the file itself is read.
std::unique_ptr<ScoreDictionary> ReadDictionary(std::istream& in, const std::string& encoding) {
    xercesc::SecurityManager security;
    security.setEntityExpansionLimit(MCVeltrane_900::ModelFactory::MAX_ENTITY_EXPANSIONS);
    StrictHandler handler;
    xercesc::XercesDOMParser parser;
    parser.setValidationScheme(xercesc::XercesDOMParser::Val_Never);
    parser.setLoadExternalDTD(false);
    parser.setDisableDefaultEntityResolution(true);
    parser.setSecurityManager(&security);
    parser.setErrorHandler(&handler);
    parser.parse(MCXML_900::MCXInputSource(in));
    xercesc::DOMElement* root = parser.getDocument()->getDocumentElement();
    if (!BaseTranslator::IsEqual(root->getTagName(), "kord-ml")) {
        return nullptr;
    }
    return DictionaryTranslator().Read(root, encoding);
}

std::string TextOf(const XMLCh* text) {
    return SmartString(text).toUTF8();
}

} // namespace

std::unique_ptr<ScoreDictionary> ReadKordDictionary(DocumentFile& document, const std::string& encoding) {
    try {
        return ReadDictionary(document.Stream(), encoding);
    } catch (const xercesc::NumberFormatException&) {
        throw Failure(document.Name() + ": a format-spec has decimals or a width that is no integer");
    } catch (const xercesc::XMLException& fault) {
        throw Failure(document.Name() + ": " + TextOf(fault.getMessage()));
    } catch (const xercesc::SAXException& fault) {
        throw Failure(document.Name() + ": " + TextOf(fault.getMessage()));
    }
}

} // namespace veltrane::host
