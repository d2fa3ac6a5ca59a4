#include "blocks/model_columns.h"
#include "commands/case_run.h"
#include "commands/commands.h"
#include "documents/document.h"
#include "documents/score_model.h"
#include "files/encoding.h"
#include "files/failure.h"
#include "files/file_identity.h"
#include "plain/plain_document.h"
#include "plain/plain_fields.h"
#include "results/prediction_columns.h"

#include <MCScore/MCStatus.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/ScoreModel.h>
#include <MCVeltrane_900/ScoreResult.h>
#include <MCVeltrane_900/TransformationDictionary.h>

#include <fmt/format.h>

#include <optional>

namespace veltrane::host {
namespace {

using MCVeltrane_900::ScoreModel;
using MCVeltrane_900::ScoreResult;

/// The predictions of a model, one case after the other into the same result.
class Predictions : public CaseResults {
public:
    /// @param plain computes fields for each case ahead of the model; null for none
    Predictions(ScoreModel& model, const std::string& document, PlainFields* plain)
        : fModel(model), fPlain(plain), fResult(MakeResult(model, document)), fColumns(model, *fResult),
          fScorer(plain == nullptr ? MakeColumnScorer(model) : nullptr) {}

    bool Has(const std::string& name) const override { return fColumns.Has(name); }
    const char* ColumnKind() const override { return "a result"; }
    void GiveWayTo(const std::unordered_set<std::string>& kept) override { fColumns.GiveWayTo(kept); }
    std::vector<std::string> NeededFields() const override {
        return fPlain == nullptr ? fModel.GetInputNames() : fPlain->CaseFieldsOf(fModel.GetInputNames());
    }
    void WriteHeader(CsvWriter& writer) const override { fColumns.WriteHeader(writer); }

    const RowFault* WriteCase(const CaseRow& row, CsvWriter& writer) override {
        if (fPlain != nullptr) {
            fPlain->Compute();
        }
        const MCScore::MCStatus status = fModel.Score(&row, fResult.get());
        if (!status.IsError() && fResult->GetResultValue() != nullptr) {
            fColumns.WriteCase(*fResult, writer);
            return nullptr;
        }
        fColumns.WriteEmpty(writer);
        fFault = ExplainUnscored(status, fModel, row);
        return &fFault;
    }

    /// Why a case is not scored is asked of the case alone, which tells nothing where cases depend on those before.
    const ColumnScorer* Columns() const override {
        const bool isOfOutput = fScorer && fScorer->Outputs().size() == fColumns.Names().size();
        return isOfOutput && !fScorer->NeedsOrder() ? fScorer.get() : nullptr;
    }

    std::vector<DateForm> DateForms() const override { return fColumns.DateForms(); }

private:
    ScoreModel& fModel;
    PlainFields* fPlain;
    std::unique_ptr<ScoreResult> fResult;
    PredictionColumns fColumns;
    std::unique_ptr<ColumnScorer> fScorer; ///< null for none
    RowFault fFault;
};

void SetOptions(ScoreModel& model, const ScoreOptions& options) {
    for (const auto& [name, value] : options.modelOptions) {
        if (!model.SetOption(name, value)) {
            throw Failure(fmt::format("{}: the model has no option \"{}\", or \"{}\" is no value of it",
                                      options.document, name, value));
        }
    }
}

/// What the library alone makes of a document ahead of its model.
struct PlainParts {
    /// Takes the derived fields that a model mentions out of a document. One without has none to take.
    void TakeFrom(DocumentFile& file, std::size_t place, const std::string& encoding) {
        const std::optional<PlainDocument> made = MakePlain(file.Stream(), place);
        if (!made) {
            return;
        }
        document.emplace(ReadAnyDocument(file, encoding));
        RequireDerivedFields(document->derivedFields != nullptr, file.Name());
        const Encoding texts(encoding);
        for (const std::string& name : made->fields) {
            names.push_back(texts.FromUtf8(name));
        }
        file.Replace(made->text);
    }

    std::optional<Document> document;
    std::vector<std::string> names; ///< of the derived fields, in the encoding
};

} // namespace

int RunScore(const ScoreOptions& options) {
    const std::vector<std::string> inputs{options.document, options.cases,
                                          options.models.value_or(InstalledModelList())};
    RefuseOutputOnInput(options.output, inputs);
    if (options.rejects) {
        RefuseRejectsOn(*options.rejects, options.output, inputs);
    }
    PlainParts parts;
    DocumentChange change;
    if (options.plain) {
        change = [&](DocumentFile& file, std::size_t place) { parts.TakeFrom(file, place, options.encoding); };
    }
    const LoadedModel loaded = LoadModel(options.document, options.models, options.model, options.encoding, change);
    ScoreModel& model = *loaded.model;
    SetOptions(model, options);
    CaseRow row(*model.GetDictionary(), parts.names);
    std::optional<PlainFields> plain;
    if (parts.document) {
        plain.emplace(*parts.document->fields, *parts.document->derivedFields, parts.names, row);
    }
    if (model.SetOption("unreadableValues", "invalid")) {
        row.KeepUnreadable();
        row.SetMissingTexts(loaded.missingTexts);
    }
    Predictions predictions(model, options.document, plain ? &*plain : nullptr);
    CaseRun run(options, row, predictions);
    if (!loaded.choiceText.empty()) {
        run.GetReport().Warning(loaded.choiceText);
    }
    return run.Run();
}

} // namespace veltrane::host
