#include "cases/case_row.h"
#include "cases/cell_parser.h"
#include "commands/commands.h"
#include "commands/verification_report.h"
#include "documents/score_model.h"
#include "files/byte_stream.h"
#include "files/encoding.h"
#include "files/failure.h"
#include "results/prediction_columns.h"
#include "run/report.h"
#include "run/table.h"

#include <MCScore/MCStatus.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/ScoreModel.h>
#include <MCVeltrane_900/ScoreResult.h>
#include <MCVeltrane_900/ScoreResultField.h>

#include <fmt/format.h>

#include <string_view>
#include <unistd.h>
#include <unordered_map>
#include <unordered_set>

namespace veltrane::host {
namespace {

using MCVeltrane_900::ScoreModel;
using MCVeltrane_900::ScoreResult;
using veltrane_kit::Verification;

/// Runs the verification records of a document through its model.
class VerifyRun {
public:
    explicit VerifyRun(const VerifyOptions& options)
        : fOptions(options), fLoaded(LoadModel(options.document, options.models, options.model, options.encoding)),
          fModel(*fLoaded.model), fResult(MakeResult(fModel, options.document)), fColumns(fModel, *fResult),
          fVerification(ReadRecords()), fRow(*fModel.GetDictionary()) {
        fRow.SetMissingTexts(fLoaded.missingTexts);
    }

    int Run();

private:
    /// A field of the records: an input, or a result that is compared.
    struct Field {
        const CaseRow::Field* input = nullptr;
        std::optional<VerifiedField> result;
    };

    Verification ReadRecords();
    void SortFields();
    void WarnOfMissingInputs() const;
    void ReadCase(std::size_t record);
    void CompareCase(std::size_t record);
    bool IsComputed(const std::string& name) const;
    bool IsFurtherTarget(const std::string& name) const;
    const MCVeltrane_900::ScoreValue* ResultOf(const std::string& name) const;
    int Report() const;

    const VerifyOptions& fOptions;
    LoadedModel fLoaded;
    ScoreModel& fModel;
    std::unique_ptr<ScoreResult> fResult;
    PredictionColumns fColumns;
    Verification fVerification;
    CaseRow fRow;
    CellParser fCells{{}};
    std::vector<Field> fFields; ///< one for each field of the records
};

Verification VerifyRun::ReadRecords() {
    std::optional<Verification> verification =
        veltrane_kit::ReadVerification(fLoaded.document.Stream(), fLoaded.list.names, fOptions.encoding);
    if (!verification) {
        throw Failure(fOptions.document + ": the document has no verification records");
    }
    return std::move(*verification);
}

int VerifyRun::Run() {
    if (!fLoaded.choiceText.empty()) {
        veltrane::host::Report(fOptions.document, false).Warning(fLoaded.choiceText);
    }
    SortFields();
    WarnOfMissingInputs();
    for (std::size_t record = 0; record < fVerification.records.size(); ++record) {
        ReadCase(record);
        const MCScore::MCStatus status = fModel.Score(&fRow, fResult.get());
        if (status.IsError()) {
            fResult->SetResultValue(nullptr);
        }
        CompareCase(record);
    }
    return Report();
}

void VerifyRun::SortFields() {
    std::unordered_map<std::string_view, const CaseRow::Field*> inputs;
    for (const CaseRow::Field& field : fRow.Fields()) {
        inputs.emplace(field.name, &field);
    }
    for (const auto& field : fVerification.fields) {
        Field sorted;
        const auto input = inputs.find(field.field);
        const bool isResult = fColumns.Has(field.field) || IsFurtherTarget(field.field);
        if (input != inputs.end() && !isResult) {
            sorted.input = input->second;
        } else if (isResult || IsComputed(field.field)) {
            sorted.result.emplace(field);
        }
        if (!sorted.result && !sorted.input) {
            throw Failure(fmt::format("{}: the verification field \"{}\" is neither a field nor a result",
                                      fOptions.document, field.field));
        }
        fFields.push_back(std::move(sorted));
    }
}

/// Whether a field of the dictionary is a target beside the first one: the model has no use for it and its result does.
bool VerifyRun::IsFurtherTarget(const std::string& name) const {
    return fModel.GetVarRole(name) != ScoreModel::ROLE_INPUT && IsComputed(name);
}

/// Whether a result has the value of an output field that is no column of scores.
bool VerifyRun::IsComputed(const std::string& name) const {
    const auto* fields = fResult->GetResultFields();
    return fields && fields->GetResultValue(name);
}

/// Records may leave an input out; where results differ then, that is the first thing to look at.
void VerifyRun::WarnOfMissingInputs() const {
    std::unordered_set<std::string_view> known;
    for (const auto& field : fVerification.fields) {
        known.insert(field.field);
    }
    std::string names;
    for (const std::string& input : fModel.GetInputNames()) {
        if (!known.contains(input)) {
            names += (names.empty() ? "\"" : ", \"") + Escaped(input) + "\"";
        }
    }
    if (!names.empty()) {
        host::Report(fOptions.document, false)
            .Warning(fmt::format("{}: inputs that the verification records leave out are missing in each: {}",
                                 fOptions.document, names));
    }
}

void VerifyRun::ReadCase(std::size_t record) {
    for (std::size_t at = 0; at < fFields.size(); ++at) {
        const CaseRow::Field* input = fFields[at].input;
        const std::optional<std::string>& text = fVerification.records[record][at];
        if (!input) {
            continue;
        }
        if (!text) {
            fRow.SetMissing(*input);
        } else if (const char* problem = fCells.Read(*text, *input, fRow)) {
            throw Failure(fmt::format("{}: record {}: {}: \"{}\" {}", fOptions.document, record + 1, input->name, *text,
                                      problem));
        }
    }
}

void VerifyRun::CompareCase(std::size_t record) {
    for (std::size_t at = 0; at < fFields.size(); ++at) {
        if (fFields[at].result) {
            fFields[at].result->Compare(fVerification.records[record][at], ResultOf(fVerification.fields[at].field));
        }
    }
}

const MCVeltrane_900::ScoreValue* VerifyRun::ResultOf(const std::string& name) const {
    if (!fResult->GetResultValue()) {
        return nullptr;
    }
    if (name == fColumns.PredictedName()) {
        return fResult->GetResultValue();
    }
    const auto* fields = fResult->GetResultFields();
    return fields ? fields->GetResultValue(name) : nullptr;
}

int VerifyRun::Report() const {
    const Encoding encoding(fOptions.encoding);
    Table table({"Field", "Records", "Agree", "Largest difference"});
    bool agrees = true;
    for (const Field& field : fFields) {
        if (!field.result) {
            continue;
        }
        std::vector<std::string> cells = field.result->Cells();
        cells.front() = encoding.ToUtf8(cells.front());
        table.AddRow(std::move(cells));
        agrees = agrees && field.result->AgreesThroughout();
    }
    DescriptorSink(STDOUT_FILENO, "standard output").Write(encoding.FromUtf8(table.Text()));
    return agrees ? EXIT_DONE : EXIT_DIFFERENT;
}

} // namespace

int RunVerify(const VerifyOptions& options) {
    return VerifyRun(options).Run();
}

} // namespace veltrane::host
