#include "diagnostics/raise.h"
#include "diagnostics/trace.h"
#include "factory/documents/document_limits.h"
#include "factory/documents/subtree_nodes.h"
#include "factory/documents/xml_platform_guard.h"
#include "factory/documents/xml_text.h"
#include "factory/entries/kept_on_failure.h"
#include "factory/entries/model_scan.h"
#include "factory/entries/plugin_route.h"
#include "translators/frame/element_walk.h"

#include <MCVeltrane_900/BaseTranslator.h>
#include <MCVeltrane_900/ModelFactory.h>
#include <MCVeltrane_900/PMMLModelTags.h>
#include <MCVeltrane_900/ScoreModel.h>

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMNodeList.hpp>

#include <istream>

namespace MCVeltrane_900 {

namespace diagnostics = veltrane::diagnostics;
using namespace veltrane::factory;
using diagnostics::Trace;
using diagnostics::TRACE_DETAILS;
using diagnostics::TRACE_PROGRESS;
using veltrane::translators::HasTag;

constinit bool ModelFactory::fInitialized = false;
constinit std::vector<std::string> ModelFactory::fModelNames;

namespace {

constexpr const char* kTraceName = "MCVeltrane_900::ModelFactory::MakeModelFromXML";
constexpr const char* kNearestNeighbor = "NearestNeighborModel";

/// Brings a stream back to its beginning, wherever it stood and whether it had come to its end. A bad stream is left as
/// it is. One that can't be rewound fails from here on, so the parser finds an empty document in it.
void Rewind(std::istream& in) {
    if (in.bad()) {
        return;
    }
    try {
        in.clear();
        in.seekg(0);
    } catch (const std::ios_base::failure&) {
        // a stream that is set to throw counts as one that is not
    }
}

/// The nearest-neighbour plug-in reads the stream by itself.
ScoreModel* MakeNearestNeighborModel(std::istream& in, const std::vector<std::string>& names,
                                     const std::string& auxPath) {
    KeptOnFailure<BaseTranslator> translator(MakeTranslator(names, kNearestNeighbor));
    ScoreModel* model = nullptr;
    if (translator.Get() != nullptr) {
        model = translator->ParseFromTree(in, std::string(), auxPath);
    }
    translator.Delete();
    Trace(TRACE_PROGRESS, "%s", "Make Model End");
    return model;
}

std::string ElementModelName(const xercesc::DOMElement* element) {
    if (element == nullptr) {
        return std::string();
    }
    if (HasTag(element, "DecisionTree")) {
        return "TreeModel";
    }
    return HasTag(element, "Regression") ? "RegressionModel" : ToUtf8(element->getNodeName());
}

/// Whatever plug-in an element comes to, it finds all that is in it.
void Restore(xercesc::DOMElement* element) {
    if (element == nullptr) {
        return;
    }
    try {
        RestoreSubtrees(*element);
    } catch (const DocumentRefused&) {
        diagnostics::Raise<diagnostics::Message::CANNOT_OPEN_DOCUMENT>();
    }
}

/// Builds a model from an element by `parse`.
template <typename Parse>
ScoreModel* MakeModelFromElement(xercesc::DOMElement* element, const std::vector<std::string>& names, Parse parse) {
    const XMLPlatformGuard guard;
    Trace(TRACE_PROGRESS, "Enter:%s", kTraceName);
    const std::string modelName = ElementModelName(element);
    Trace(TRACE_DETAILS, "Model name is :%s", modelName.c_str());
    const std::vector<std::string> searched = names.empty() ? ModelFactory::fModelNames : names;
    KeptOnFailure<BaseTranslator> translator(MakeTranslator(searched, modelName));
    ScoreModel* model = nullptr;
    if (translator.Get() != nullptr) {
        Restore(element);
        model = parse(*translator.Get());
        translator.Delete();
    }
    Trace(TRACE_PROGRESS, "Exit:%s", kTraceName);
    return model;
}

/// The first steps of every stream overload.
/// @return whether a NearestNeighborModel is there; the stream is rewound
bool ScanForNearestNeighbor(std::istream& in, const std::vector<std::string>& names) {
    RememberModelNames(names);
    const bool found = IsModelDocument(kNearestNeighbor, in);
    Rewind(in);
    return found;
}

} // namespace

ScoreModel* ModelFactory::MakeModelFromXML(std::istream& in, const std::vector<std::string>& names,
                                           const std::string& encoding, const std::string& auxPath) {
    Trace(TRACE_PROGRESS, "Enter:%s", kTraceName);
    const XMLPlatformGuard guard;
    if (ScanForNearestNeighbor(in, names)) {
        return MakeNearestNeighborModel(in, names, auxPath);
    }
    auto parser = std::make_unique<DocumentParser>();
    parser->setLoadExternalDTD(false);
    parser->setValidationScheme(xercesc::XercesDOMParser::Val_Never);
    DocumentRoute route = OpenRoute(std::move(parser), in, names, encoding);
    const RootKind* kind = FindRootKind(*route.root);
    if (kind == nullptr) {
        const std::string tag = ToUtf8(route.root->getTagName());
        route.parser.reset();
        diagnostics::Raise<diagnostics::Message::UNSUPPORTED_MODEL>(tag);
    }
    return GetLibraryPath(route, kind->modelName);
}

ScoreModel* ModelFactory::MakeModelFromXML(std::istream& in, const std::vector<std::string>& names,
                                           const std::string& encoding) {
    return MakeModelFromXML(in, names, encoding, std::string());
}

ScoreModel* ModelFactory::MakeModelFromXML(std::istream& in, ScoreDictionary* dict,
                                           const std::vector<std::string>& names, const std::string& encoding) {
    Trace(TRACE_PROGRESS, "Enter:%s", kTraceName);
    const XMLPlatformGuard guard;
    if (ScanForNearestNeighbor(in, names)) {
        return MakeNearestNeighborModel(in, names, std::string());
    }
    auto parser = std::make_unique<DocumentParser>();
    parser->setValidationScheme(xercesc::XercesDOMParser::Val_Never);
    parser->setDoSchema(false);
    parser->setLoadExternalDTD(false);
    DocumentRoute route = OpenRoute(std::move(parser), in, names, encoding);
    const RootKind* kind = FindRootKind(*route.root);
    if (kind != nullptr && !HasTag(route.root, PMMLModelTags::XML_ELE_PMML)) {
        return GetLibraryPath(route, kind->modelName);
    }
    ScoreModel* model = GetLibraryPath(route, dict);
    if (kind == nullptr) {
        // A model of an unknown kind of document may refer to it.
        KeepForever(route.parser.release());
    }
    return model;
}

ScoreModel* ModelFactory::MakeModelFromXML(void* element, const std::vector<std::string>& names, ScoreModel* base,
                                           const std::string& text) {
    auto* const node = static_cast<xercesc::DOMElement*>(element);
    return MakeModelFromElement(node, names,
                                [&](BaseTranslator& translator) { return translator.ParseFromTree(node, base, text); });
}

ScoreModel* ModelFactory::MakeModelFromXML(void* element, const std::vector<std::string>& names, ScoreDictionary* first,
                                           ScoreDictionary* second, const std::string& text) {
    auto* const node = static_cast<xercesc::DOMElement*>(element);
    return MakeModelFromElement(
        node, names, [&](BaseTranslator& translator) { return translator.ParseFromTree(node, first, second, text); });
}

} // namespace MCVeltrane_900
