#include "commands/case_run.h"

#include "blocks/block_plan.h"
#include "blocks/block_run.h"
#include "cases/needed_columns.h"
#include "files/failure.h"

#include <fmt/format.h>

#include <algorithm>
#include <unistd.h>

namespace veltrane::host {

namespace {

/// Keeps nothing.
class NoSink : public ByteSink {
public:
    void Write(std::string_view) override {}
};

const ColumnScorer* UsableColumns(const CaseOptions& options, const CaseRow& row, const CaseResults& results) {
    const ColumnScorer* const scorer = options.byCase ? nullptr : results.Columns();
    return scorer != nullptr && BlockPlan::CanRead(*scorer, row) ? scorer : nullptr;
}

} // namespace

const RowFault& CaseResults::Explain(const CaseRow& row) {
    static const RowFault kNone{nullptr, {}, "there are no results"};
    NoSink none;
    CsvWriter writer(none, ',');
    const RowFault* const fault = WriteCase(row, writer);
    return fault == nullptr ? kNone : *fault;
}

CaseRun::CaseRun(const CaseOptions& options, CaseRow& row, CaseResults& results)
    : fOptions(options), fCase(row), fResults(results), fReport(options.cases, options.quiet), fInput(options.cases),
      fUnpacked(fInput, options.cases), fScorer(UsableColumns(options, row, results)), fEncoding(options.encoding),
      fCells(options.missingTokens, &fEncoding) {
    if (fScorer != nullptr) {
        fChunks.emplace(fUnpacked, options.cases, options.delimiter);
    } else {
        fReader.emplace(fUnpacked, options.cases, options.delimiter);
    }
}

int CaseRun::Run() {
    if (fOptions.rejects) {
        fReport.SetRejects(&fRejects.emplace(*fOptions.rejects, fOptions.delimiter));
    }
    ReadHeader();
    CheckNeededColumns();
    ChooseKeptColumns();
    CaseOutput output(fOptions.output);
    ShowBar();
    output.SetBar(fBar ? &*fBar : nullptr);
    if (fRejects) {
        fRejects->SetBar(fBar ? &*fBar : nullptr);
    }
    CsvWriter writer(output.Sink(), fOptions.delimiter);
    WriteHeader(writer);
    if (fScorer != nullptr) {
        WriteBlocks(writer);
    } else {
        WriteCases(writer);
    }
    writer.Flush();
    Commit(output);
    if (fBar) {
        fBar->Finish();
    }
    fReport.Total();
    return fReport.IsWithin(fOptions.maxErrors) ? EXIT_DONE : EXIT_INCOMPLETE;
}

/// Neither file appears before all of both is written.
void CaseRun::Commit(CaseOutput& output) {
    output.Finish();
    if (fRejects) {
        fRejects->Finish();
        fRejects->Commit();
    }
    output.Commit();
}

void CaseRun::ReadHeader() {
    try {
        const bool isThere = fChunks ? fChunks->ReadHeader(fRow.cells, fRow.line) : fReader->Next(fRow);
        if (!isThere) {
            throw Failure(fOptions.cases + ": the file is empty; a header of field names is needed");
        }
    } catch (const Failure& failure) {
        throw Failure(failure.what() + NeededColumns::DelimiterHint(FirstLine(), fOptions.delimiter, fCase));
    }
    fColumns.emplace(fRow.cells, fCase, fmt::format("{}:{}", fOptions.cases, fRow.line));
    fReport.BeginHeader(fRow.line);
    for (std::size_t at = 0; at < fRow.cells.size(); ++at) {
        CheckText(fmt::format("column {}", at + 1), fRow.cells[at]);
    }
}

void CaseRun::CheckNeededColumns() {
    const NeededColumns needed(fResults.NeededFields(), *fColumns, fCase);
    if (!needed.AreThere() && !fOptions.missingColumns) {
        throw Failure(fOptions.cases + ": " + needed.Complaint(FirstLine(), fOptions.delimiter));
    }
    const std::string ignored = fColumns->IgnoredNames();
    if (!ignored.empty()) {
        fReport.Warning(fmt::format("{}: columns that are no field are ignored: {}", fOptions.cases, ignored));
    }
    if (!needed.AreThere()) {
        fReport.Warning(fmt::format("{}: fields without a column are missing in every case: {}", fOptions.cases,
                                    needed.MissingNames()));
    }
}

void CaseRun::ChooseKeptColumns() {
    fKept.emplace(fOptions, *fColumns);
    fResults.GiveWayTo(fKept->Names());
    for (const std::size_t place : fKept->Places()) {
        const std::string& name = fColumns->All()[place].name;
        if (fResults.Has(name)) {
            throw Failure(fmt::format("{}: the column \"{}\" cannot be kept: {} has its name", fOptions.cases,
                                      Escaped(name), fResults.ColumnKind()));
        }
    }
}

void CaseRun::ShowBar() {
    if (fOptions.quiet || !fInput.Size() || !::isatty(STDERR_FILENO)) {
        return;
    }
    fBar.emplace(STDERR_FILENO, *fInput.Size());
    fReport.SetBar(&*fBar);
}

void CaseRun::WriteHeader(CsvWriter& writer) {
    for (const std::size_t place : fKept->Places()) {
        writer.Text(fColumns->All()[place].name);
    }
    fResults.WriteHeader(writer);
    writer.EndRow();
}

std::string_view CaseRun::FirstLine() const {
    return fChunks ? fChunks->FirstLine() : fReader->FirstLine();
}

void CaseRun::WriteBlocks(CsvWriter& writer) {
    const BlockPlan plan(fOptions, *fColumns, *fKept, fCase, *fScorer, fResults.DateForms());
    const BlockRun::Streams streams{fInput, fUnpacked, *fChunks, writer, fReport, fBar ? &*fBar : nullptr};
    BlockRun(plan, streams, fCase, [this]() -> const RowFault& { return fResults.Explain(fCase); }).Run();
}

void CaseRun::WriteCases(CsvWriter& writer) {
    const bool mayBlock = !fInput.Size();
    for (std::uint64_t rows = 1;; ++rows) {
        if (mayBlock && !fReader->HasRecord()) {
            writer.Flush();
        }
        if (!fReader->Next(fRow)) {
            return;
        }
        fReport.BeginRow(fRow.line);
        ReadCase();
        KeepCells(writer);
        if (const RowFault* fault = fResults.WriteCase(fCase, writer)) {
            ReportUnscored(*fault);
        }
        writer.EndRow();
        if (fBar) {
            fBar->Update(rows, fInput.BytesRead());
        }
    }
}

void CaseRun::ReadCase() {
    const auto& all = fColumns->All();
    const std::size_t cells = std::min(fRow.cells.size(), all.size());
    if (fRow.cells.size() != all.size()) {
        fReport.Ragged(fRow.cells.size(), all.size());
        EndIfStrict();
    }
    for (std::size_t at = 0; at < all.size(); ++at) {
        if (!all[at].field) {
            continue;
        }
        if (at >= cells) {
            fCase.SetMissing(*all[at].field);
        } else if (const char* problem = fCells.Read(fRow.cells[at], *all[at].field, fCase)) {
            fReport.Cell(all[at].name, fRow.cells[at], problem);
            EndIfStrict();
        }
    }
}

/// With the cell of the field that is to blame, where the row has one.
void CaseRun::ReportUnscored(const RowFault& fault) {
    std::string_view cell;
    const std::size_t cells = std::min(fRow.cells.size(), fColumns->All().size());
    for (std::size_t at = 0; at < cells && fault.field; ++at) {
        if (fColumns->All()[at].field == fault.field) {
            cell = fRow.cells[at];
        }
    }
    fReport.Unscored(fault.name, cell, fault.reason);
}

/// Tells of text that is written as it is and is none in the encoding.
/// @param name of what it belongs to
void CaseRun::CheckText(const std::string& name, std::string_view text) {
    if (fEncoding.Holds(text)) {
        return;
    }
    fReport.Cell(name, text, fEncoding.Problem());
    EndIfStrict();
}

/// The cells of fields have been looked at.
void CaseRun::KeepCells(CsvWriter& writer) {
    const auto& all = fColumns->All();
    for (const std::size_t at : fKept->Places()) {
        const std::string_view cell = at < fRow.cells.size() ? fRow.cells[at] : std::string_view{};
        if (!all[at].field) {
            CheckText(all[at].name, cell);
        }
        writer.Text(cell);
    }
}

void CaseRun::EndIfStrict() const {
    if (fOptions.strict) {
        throw ToldFailure();
    }
}

} // namespace veltrane::host
