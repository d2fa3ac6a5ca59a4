#include "columns/opening/model_source.h"

#include "columns/opening/bytes_stream.h"
#include "columns/opening/element_text.h"
#include "columns/opening/model_choice.h"
#include "columns/opening/model_list.h"
#include "diagnostics/raise.h"
#include "factory/documents/xml_platform_guard.h"
#include "factory/documents/xml_text.h"
#include "factory/entries/plugin_route.h"
#include "translators/frame/element_walk.h"

#include <MCVeltrane_900/BaseTranslator.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/VTException.h>

#include <xercesc/dom/DOMElement.hpp>

#include <algorithm>
#include <exception>
#include <optional>
#include <utility>
#include <vector>

namespace veltrane::columns {

namespace {

using diagnostics::Message;
using diagnostics::Raise;
using factory::DocumentRoute;
using MCVeltrane_900::BaseTranslator;
using MCVeltrane_900::ScoreModel;
using Content = DocumentOptions::Content;

constexpr const char* kRoot = "PMML";
constexpr const char* kNearestNeighbor = "NearestNeighborModel";

DocumentRoute OpenRoute(std::istream& in, const std::vector<std::string>& names, const std::string& encoding) {
    auto parser = std::make_unique<factory::DocumentParser>();
    parser->setLoadExternalDTD(false);
    parser->setValidationScheme(xercesc::XercesDOMParser::Val_Never);
    DocumentRoute route = factory::OpenRoute(std::move(parser), in, names, encoding);
    route.onFailure = factory::OnFailure::DELETE;
    return route;
}

/// One of a document's models.
struct TakenModel {
    std::string kind;
    bool wasAlone;
};

/// Takes one of the document's models and lets go of the others, so that to every plug-in it is the only one. Its kind
/// is also brought to the front of the names: plug-ins go by their order.
TakenModel TakeModel(const DocumentRoute& route, std::vector<std::string>& names, const std::string& wanted) {
    const std::vector<xercesc::DOMElement*> models = ModelsOf(*route.root);
    if (models.empty()) {
        Raise<Message::NOTHING_TO_SCORE>("model");
    }
    const xercesc::DOMElement& taken = ChooseModel(models, names, wanted);
    for (xercesc::DOMElement* model : models) {
        if (model != &taken) {
            route.root->removeChild(model)->release();
        }
    }
    std::string kind = factory::ToUtf8(taken.getTagName());
    std::rotate(names.begin(), std::find(names.begin(), names.end(), kind), names.end());
    return {kind, models.size() == 1};
}

/// The nearest-neighbour plug-in reads a stream by itself: that of the document, or, where other models were let go of,
/// what is left.
ScoreModel* BuildNearestNeighbor(const ModelSource& source, DocumentRoute& route, bool isWhole) {
    const std::unique_ptr<BaseTranslator> translator(factory::MakeTranslator(route.names, kNearestNeighbor));
    if (translator == nullptr) {
        Raise<Message::NO_MODEL_LIBRARY>(kNearestNeighbor);
    }
    ScoreModel* model = nullptr;
    const auto parse = [&](std::istream& in) { model = translator->ParseFromTree(in, std::string(), std::string()); };
    // Two trees of one document take too much memory.
    if (isWhole) {
        route.parser.reset();
        source.Read(parse);
    } else {
        const std::string text = TextOf(*route.root);
        route.parser.reset();
        BytesStream in(text);
        parse(in);
    }
    return model;
}

} // namespace

void ModelSource::Keep() {
    fIn->clear();
    fIn->seekg(0);
    fBytes = ReadAll(*fIn);
    fIn = nullptr;
}

void ModelSource::Read(const std::function<void(std::istream&)>& read) const {
    if (fIn != nullptr) {
        fIn->clear();
        fIn->seekg(0);
        read(*fIn);
    } else {
        BytesStream in(fBytes);
        read(in);
    }
}

/// The model where the document has one, or the options ask for it; else the derived fields.
bool ModelSource::ScoresModel(const xercesc::DOMElement& root) const {
    const bool isPmml = translators::HasTag(&root, kRoot);
    if (fOptions.content == Content::DERIVED_FIELDS && !isPmml) {
        Raise<Message::INVALID_TOP_ELEMENT>(factory::ToUtf8(root.getTagName()), kRoot);
    }
    return fOptions.content == Content::MODEL ||
           (fOptions.content == Content::AUTOMATIC && (!isPmml || !ModelsOf(root).empty()));
}

/// Reads the list of models where one is wanted. The parse makes use of it, but the document's faults come first.
/// @return what reading it failed with
std::exception_ptr ModelSource::FindNames(std::vector<std::string>& names) const {
    if (fOptions.content == Content::DERIVED_FIELDS) {
        return nullptr;
    }
    try {
        names = ReadModelList(fOptions.modelList);
        return nullptr;
    } catch (const MCVeltrane_900::VTException&) {
        return std::current_exception();
    }
}

BuiltModel ModelSource::Build() const {
    const factory::XMLPlatformGuard guard;
    std::vector<std::string> names;
    const std::exception_ptr failure = FindNames(names);
    std::optional<DocumentRoute> opened;
    Read([&](std::istream& in) { opened.emplace(OpenRoute(in, names, fOptions.encoding)); });
    DocumentRoute& route = *opened;
    BuiltModel built;
    if (!ScoresModel(*route.root)) {
        return built;
    }
    const factory::RootKind* root = factory::FindRootKind(*route.root);
    if (root == nullptr) {
        Raise<Message::UNSUPPORTED_MODEL>(factory::ToUtf8(route.root->getTagName()));
    }
    if (failure != nullptr) {
        std::rethrow_exception(failure);
    }
    built.looksBack = route.parser->MayHaveName(u"Lag");
    bool isWhole = true;
    if (translators::HasTag(route.root, kRoot)) {
        TakenModel taken = TakeModel(route, names, fOptions.model);
        built.kind = std::move(taken.kind);
        isWhole = taken.wasAlone;
    } else {
        built.kind = root->modelName != nullptr ? root->modelName : factory::FindModelName(route);
    }
    built.model.reset(built.kind == kNearestNeighbor ? BuildNearestNeighbor(*this, route, isWhole)
                                                     : factory::GetLibraryPath(route, built.kind.c_str()));
    SetOptions(built);
    return built;
}

/// An unreadable cell is an invalid value wherever the model can tell it from a missing one.
void ModelSource::SetOptions(BuiltModel& built) const {
    if (built.model == nullptr || built.model->GetDictionary() == nullptr) {
        Raise<Message::CANNOT_BUILD_MODEL>();
    }
    for (const auto& [name, value] : fOptions.modelOptions) {
        if (!built.model->SetOption(name, value)) {
            Raise<Message::NO_SUCH_OPTION>(name, value);
        }
    }
    built.readsUnreadable = built.model->SetOption("unreadableValues", "invalid");
}

} // namespace veltrane::columns
