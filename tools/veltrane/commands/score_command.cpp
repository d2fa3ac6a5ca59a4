#include "commands/case_run.h"
#include "commands/commands.h"
#include "documents/score_model.h"
#include "files/failure.h"
#include "files/file_identity.h"
#include "results/prediction_columns.h"

#include <MCScore/MCStatus.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/ScoreModel.h>
#include <MCVeltrane_900/ScoreResult.h>

#include <fmt/format.h>

namespace veltrane::host {
namespace {

using MCVeltrane_900::ScoreModel;
using MCVeltrane_900::ScoreResult;

/// The predictions of a model, one case after the other into the same result.
class Predictions : public CaseResults {
public:
    Predictions(ScoreModel& model, const std::string& document)
        : fModel(model), fResult(MakeResult(model, document)), fColumns(model, *fResult) {}

    bool Has(const std::string& name) const override { return fColumns.Has(name); }
    const char* ColumnKind() const override { return "a result"; }
    void GiveWayTo(const std::unordered_set<std::string>& kept) override { fColumns.GiveWayTo(kept); }
    std::vector<std::string> NeededFields() const override { return fModel.GetInputNames(); }
    void WriteHeader(CsvWriter& writer) const override { fColumns.WriteHeader(writer); }

    const RowFault* WriteCase(const CaseRow& row, CsvWriter& writer) override {
        const MCScore::MCStatus status = fModel.Score(&row, fResult.get());
        if (!status.IsError() && fResult->GetResultValue() != nullptr) {
            fColumns.WriteCase(*fResult, writer);
            return nullptr;
        }
        fColumns.WriteEmpty(writer);
        fFault = ExplainUnscored(status, fModel, row);
        return &fFault;
    }

private:
    ScoreModel& fModel;
    std::unique_ptr<ScoreResult> fResult;
    PredictionColumns fColumns;
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

} // namespace

int RunScore(const ScoreOptions& options) {
    const std::vector<std::string> inputs{options.document, options.cases,
                                          options.models.value_or(InstalledModelList())};
    RefuseOutputOnInput(options.output, inputs);
    if (options.rejects) {
        RefuseRejectsOn(*options.rejects, options.output, inputs);
    }
    const LoadedModel loaded = LoadModel(options.document, options.models, options.model, options.encoding);
    ScoreModel& model = *loaded.model;
    SetOptions(model, options);
    CaseRow row(*model.GetDictionary());
    if (model.SetOption("unreadableValues", "invalid")) {
        row.KeepUnreadable();
    }
    Predictions predictions(model, options.document);
    CaseRun run(options, row, predictions);
    if (!loaded.choiceText.empty()) {
        run.GetReport().Warning(loaded.choiceText);
    }
    return run.Run();
}

} // namespace veltrane::host
