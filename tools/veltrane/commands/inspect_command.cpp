#include "commands/commands.h"
#include "descriptions/describe.h"
#include "descriptions/document_description.h"
#include "descriptions/document_facts.h"
#include "descriptions/model_description.h"
#include "documents/document.h"
#include "documents/document_file.h"
#include "documents/document_outline.h"
#include "documents/model_choice.h"
#include "documents/score_model.h"
#include "files/byte_stream.h"
#include "files/encoding.h"
#include "files/failure.h"
#include "results/prediction_columns.h"

#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/ScoreModel.h>
#include <MCVeltrane_900/ScoreResult.h>
#include <MCVeltrane_900/TransformationDictionary.h>

#include <algorithm>
#include <array>
#include <exception>
#include <kit/model/transformations.h>
#include <unistd.h>

namespace veltrane::host {
namespace {

using Json = nlohmann::ordered_json;

/// Roots other than PMML under which the library looks for a model.
constexpr std::array kModelRoots{"Tree", "AssocLattice", "SequentialAssociationLattice"};

/// Shows one document.
class Inspection {
public:
    explicit Inspection(const InspectOptions& options)
        : fOptions(options), fEncoding(options.encoding), fFile(options.document, kCannotOpenDocument),
          fOutline(options.plain ? ReadOutline(fFile.Stream()) : ReadPmmlOutline(fFile)) {}

    void Run() {
        if (fOptions.plain) {
            ShowPlainFields();
        } else if (fOutline.fault || (fOutline.models.empty() && !MayHoldModel())) {
            ShowFields();
        } else if (fOutline.models.empty()) {
            ShowBuiltModel();
        } else {
            ShowModel();
        }
    }

private:
    /// Whether the library may find a model where a document seldom has one.
    bool MayHoldModel() const {
        const bool hasRoot = std::find(kModelRoots.begin(), kModelRoots.end(), fOutline.root) != kModelRoots.end();
        return hasRoot ||
               (fOutline.IsPmml() && !fOutline.elements.contains("TransformationDictionary") && HoldsListedElement());
    }

    bool HoldsListedElement() const {
        const ModelList list = StartLibrary(fOptions.models);
        return std::any_of(list.names.begin(), list.names.end(),
                           [&](const std::string& name) { return fOutline.elements.contains(name); });
    }

    /// Of what isn't PMML only the library can tell.
    void ShowFields() {
        if (fOptions.model && !fOutline.fault) {
            ChooseModel(fOutline, {}, fOptions.model, fFile.Name());
        }
        if (!fOutline.IsPmml()) {
            ShowPlainFields();
            return;
        }
        const auto transformations = ReadTransformations(fFile, fOutline, fOptions.encoding);
        Write(DescribeFields(ReadFacts(fFile.Stream(), 0)), DocumentTables);
        RequireDerivedFields(!transformations->Derived().IsEmpty(), fFile.Name());
    }

    void ShowPlainFields() {
        const Document document = ReadAnyDocument(fFile, fOptions.encoding);
        Write(Describe(*document.fields, document.derivedFields.get(), fEncoding), DescriptionTables);
        RequireDerivedFields(document.derivedFields != nullptr || !document.isPmml, fFile.Name());
    }

    void ShowBuiltModel() {
        const LoadedModel loaded =
            LoadModel(std::move(fFile), StartLibrary(fOptions.models), fOutline, std::nullopt, fOptions.encoding);
        const Json description =
            Describe(*loaded.model->GetDictionary(), loaded.model->GetTransformationDictionary(), fEncoding);
        Write(description, DescriptionTables);
    }

    void ShowModel() {
        const ModelList list = StartLibrary(fOptions.models);
        const std::optional<std::size_t> chosen = ChooseModel(fOutline, list, fOptions.model, fFile.Name());
        const std::size_t place = chosen.value_or(0);
        const DocumentFacts facts = ReadFacts(fFile.Stream(), place);
        ModelFace face;
        std::exception_ptr failure;
        try {
            face = FaceOf(LoadModel(std::move(fFile), list, fOutline, chosen, fOptions.encoding));
        } catch (...) {
            failure = std::current_exception();
        }
        Write(DescribeModel(facts, fOutline, place, face), ModelTables);
        if (failure) {
            std::rethrow_exception(failure);
        }
    }

    ModelFace FaceOf(const LoadedModel& loaded) const {
        const std::unique_ptr<MCVeltrane_900::ScoreResult> result = MakeResult(*loaded.model, fOptions.document);
        const PredictionColumns columns(*loaded.model, *result);
        const MCVeltrane_900::ScoreDictVar* target = loaded.model->GetTargetVar();
        return {Utf8(columns.Names()), Utf8(loaded.model->GetInputNames()),
                target ? fEncoding.ToUtf8(target->GetName()) : ""};
    }

    std::vector<std::string> Utf8(std::vector<std::string> texts) const {
        for (std::string& text : texts) {
            text = fEncoding.ToUtf8(text);
        }
        return texts;
    }

    void Write(const Json& description, std::string (*tables)(const Json&)) const {
        const std::string text = fOptions.json ? description.dump(2) + "\n" : fEncoding.FromUtf8(tables(description));
        DescriptorSink(STDOUT_FILENO, "standard output").Write(text);
    }

    const InspectOptions& fOptions;
    Encoding fEncoding;
    DocumentFile fFile;
    DocumentOutline fOutline;
};

} // namespace

int RunInspect(const InspectOptions& options) {
    StartLibrary();
    Inspection(options).Run();
    return EXIT_DONE;
}

} // namespace veltrane::host
