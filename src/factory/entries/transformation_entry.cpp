#include "diagnostics/raise.h"
#include "diagnostics/trace.h"
#include "factory/documents/document_parser.h"
#include "factory/documents/xml_platform_guard.h"
#include "factory/entries/kept_on_failure.h"
#include "factory/entries/model_names.h"
#include "translators/frame/element_walk.h"

#include <MCVeltrane_900/ModelFactory.h>
#include <MCVeltrane_900/PMMLModelTags.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/TransformationDictionary.h>

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>

#include <fstream>

namespace MCVeltrane_900 {

namespace diagnostics = veltrane::diagnostics;
using namespace veltrane::factory;
using diagnostics::Trace;
using diagnostics::TRACE_PROGRESS;

namespace {

constexpr const char* kTraceName = "MCVeltrane_900::ModelFactory::GetTransformationDictionaryFromXML";

/// Reads both dictionaries of a PMML root.
/// @param parser deleted when an element is missing, kept for good when a reader fails
TransformationDictionary* ReadDictionaries(std::unique_ptr<DocumentParser>& parser, xercesc::DOMElement* root,
                                           ScoreDictionary*& dict, const std::string& encoding) {
    xercesc::DOMNode* data = BaseTranslator::GetChildByTagForced(root, "DataDictionary");
    xercesc::DOMNode* transformations = BaseTranslator::GetChildByTagForced(root, "TransformationDictionary");
    KeptOnFailure<DocumentParser> used(parser.release());
    auto* const translator = new PMMLTranslator(encoding);
    // What the dictionaries hold may refer to what the translator made, so it outlives them.
    KeepForever(translator);
    dict = translator->ParseDictionary(data, false);
    TransformationDictionary* result =
        translator->HandleTransformationDictionary(static_cast<xercesc::DOMElement*>(transformations), dict);
    if (result != nullptr) {
        result->SetUpDerivedCaseRecord();
    }
    parser.reset(used.Release());
    return result;
}

} // namespace

TransformationDictionary* ModelFactory::GetTransformationDictionaryFromXML(std::istream& in, ScoreDictionary*& dict,
                                                                           const std::string& encoding) {
    const XMLPlatformGuard guard;
    // None of the setters is called: on this road alone the external DTD of a document is read.
    auto parser = std::make_unique<DocumentParser>();
    const xercesc::DOMDocument* document = ParseDocument(parser, in);
    xercesc::DOMElement* root = document->getDocumentElement();
    if (root == nullptr) {
        parser.reset();
        diagnostics::Raise<diagnostics::Message::NO_ROOT>();
    }
    TransformationDictionary* result = nullptr;
    if (veltrane::translators::HasTag(root, PMMLModelTags::XML_ELE_PMML)) {
        result = ReadDictionaries(parser, root, dict, encoding);
    }
    parser.reset();
    Trace(TRACE_PROGRESS, "Exit:%s", kTraceName);
    return result;
}

TransformationDictionary* ModelFactory::GetTransformationDictionaryFromXML(const std::string& path,
                                                                           ScoreDictionary*& dict,
                                                                           const std::string& encoding) {
    const XMLPlatformGuard guard;
    Trace(TRACE_PROGRESS, "Enter:%s", kTraceName);
    std::ifstream file;
    if (!OpenForReading(file, path)) {
        diagnostics::Raise<diagnostics::Message::CANNOT_OPEN_FILE>(path);
    }
    return GetTransformationDictionaryFromXML(file, dict, encoding);
}

} // namespace MCVeltrane_900
