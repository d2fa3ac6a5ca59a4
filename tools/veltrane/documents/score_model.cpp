#include "documents/score_model.h"

#include "documents/document_outline.h"
#include "documents/explanation.h"
#include "documents/model_choice.h"
#include "files/failure.h"

#include <MCVeltrane_900/Messages.h>
#include <MCVeltrane_900/ModelFactory.h>
#include <MCVeltrane_900/ScoreClsResult.h>
#include <MCVeltrane_900/ScoreModel.h>
#include <MCVeltrane_900/ScoreRegResult.h>
#include <MCVeltrane_900/VTException.h>

#include <fmt/format.h>

#include <algorithm>
#include <array>

namespace veltrane::host {
namespace {

using MCVeltrane_900::ModelFactory;
using MCVeltrane_900::ScoreClsResult;
using MCVeltrane_900::ScoreModel;
using MCVeltrane_900::ScoreRegResult;
using MCVeltrane_900::ScoreResult;

/// See ScoreResult::GetResultKind.
constexpr int kRegressionKind = 1;

/// Codes of the library's messages.
constexpr int kCannotOpen = static_cast<int>(MCVeltrane_900::Message::CANNOT_OPEN_DOCUMENT_FILE);
constexpr int kUnsupported = static_cast<int>(MCVeltrane_900::Message::UNSUPPORTED_MODEL);

/// Whether a result is what its kind says. A host that believed a wrong kind would call operations that aren't there.
bool IsOfItsKind(ScoreResult& result) {
    const int kind = result.GetResultKind();
    if (kind < 0 || kind > ScoreResult::LAST_KIND) {
        return false;
    }
    if (ScoreResult::HasCategories(kind)) {
        return dynamic_cast<ScoreClsResult*>(&result) != nullptr;
    }
    return kind != kRegressionKind || dynamic_cast<ScoreRegResult*>(&result) != nullptr;
}

/// The library goes by the order of the list. A list that begins with the model's own kind and a document that holds no
/// other model leave it just one choice.
void TakeModel(LoadedModel& loaded, const DocumentOutline& outline, std::size_t place) {
    DocumentFile& document = loaded.document;
    const std::string& kind = outline.models[place].element;
    if (!loaded.list.Has(kind)) {
        throw ExplainedFailure(ToldText(kUnsupported, kind), document.Name() + ": " + PluginsText(loaded.list));
    }
    auto& names = loaded.list.names;
    std::rotate(names.begin(), std::find(names.begin(), names.end(), kind), names.end());
    if (outline.models.size() > 1) {
        document.Replace(DocumentOfOneModel(document.Stream(), place));
    }
}

/// Most documents have one model, of a kind in the list: then a look at their bytes tells what a parser would, and what
/// is wrong in them the library tells as well.
DocumentOutline OutlineOf(DocumentFile& document, const ModelList& list, const std::optional<std::string>& wanted) {
    if (!wanted) {
        const std::optional<DocumentOutline> glance = GlanceAtOutline(document.Bytes());
        if (glance && glance->models.size() == 1 && list.Has(glance->models.front().element)) {
            return *glance;
        }
    }
    return ReadPmmlOutline(document);
}

std::unique_ptr<ScoreModel> BuildModel(LoadedModel& loaded, const std::string& encoding) {
    try {
        return std::unique_ptr<ScoreModel>(
            ModelFactory::MakeModelFromXML(loaded.document.Stream(), loaded.list.names, encoding, std::string()));
    } catch (const MCVeltrane_900::VTException& failure) {
        throw ExplainedFailure(ToldText(failure), Explain(failure, loaded.document, loaded.list));
    }
}

} // namespace

LoadedModel LoadModel(const std::string& document, const std::optional<std::string>& models,
                      const std::optional<std::string>& wanted, const std::string& encoding,
                      const DocumentChange& change) {
    const ModelList list = StartLibrary(models);
    DocumentFile file(document, kCannotOpen);
    // What a caller changes for the library alone has names as they are written.
    const DocumentOutline outline = change ? ReadOutline(file.Stream()) : OutlineOf(file, list, wanted);
    std::optional<std::size_t> place;
    if (!outline.fault) { // else the library tells it
        place = ChooseModel(outline, list, wanted, document);
    }
    if (place && change) {
        change(file, *place);
    }
    LoadedModel loaded = LoadModel(std::move(file), list, outline, place, encoding);
    if (place && !wanted && outline.models.size() > 1) {
        loaded.choiceText = ChoiceText(outline, *place, document);
    }
    return loaded;
}

LoadedModel LoadModel(DocumentFile document, ModelList list, const DocumentOutline& outline,
                      std::optional<std::size_t> place, const std::string& encoding) {
    LoadedModel loaded{nullptr, std::move(document), std::move(list), MissingTextsIn(encoding, outline), {}};
    if (place) {
        TakeModel(loaded, outline, *place);
    }
    loaded.model = BuildModel(loaded, encoding);
    if (!loaded.model) {
        throw Failure(loaded.document.Name() + ": the plug-in made no model of the document");
    }
    if (!loaded.model->GetDictionary()) {
        throw Failure(loaded.document.Name() + ": the plug-in made a model without a data dictionary");
    }
    return loaded;
}

std::unique_ptr<ScoreResult> MakeResult(const ScoreModel& model, const std::string& document) {
    std::unique_ptr<ScoreResult> result(model.CreateResult());
    if (!result) {
        throw Failure(document + ": the model makes no results");
    }
    if (!IsOfItsKind(*result)) {
        throw Failure(fmt::format("{}: the model's results say that they are of kind {}, and are not", document,
                                  result->GetResultKind()));
    }
    return result;
}

} // namespace veltrane::host
