#include "transform_command.h"

#include "atomic_file.h"
#include "case_columns.h"
#include "case_row.h"
#include "cell_parser.h"
#include "csv_reader.h"
#include "csv_writer.h"
#include "document.h"
#include "failure.h"
#include "progress_bar.h"
#include "report.h"
#include "result_columns.h"

#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/TransformationDictionary.h>

#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <unistd.h>

namespace veltrane::host {
namespace {

/// Standard output. The bar is taken away first where both are on a terminal.
class StandardOutput : public ByteSink {
public:
    explicit StandardOutput(ProgressBar* bar) : fBar(::isatty(STDOUT_FILENO) ? bar : nullptr) {}

    void Write(std::string_view bytes) override {
        if (fBar)
            fBar->Hide();
        DescriptorSink(STDOUT_FILENO, "standard output").Write(bytes);
    }

private:
    ProgressBar* fBar;
};

Document ReadTransformations(const TransformOptions& options) {
    Document document = ReadDocument(options.document, options.encoding);
    RequireDerivedFields(document, options.document);
    return document;
}

class TransformRun {
public:
    explicit TransformRun(const TransformOptions& options)
        : fOptions(options), fDocument(ReadTransformations(options)), fReport(options.cases, options.quiet),
          fInput(options.cases), fReader(fInput, options.cases, options.delimiter), fCells(options.missingTokens) {}

    int Run();

private:
    CaseColumns ReadHeader();
    void ShowBar();
    void WriteCases(CsvWriter& writer, const CaseColumns& columns, ResultColumns& results);
    void WriteHeader(CsvWriter& writer, const CaseColumns& columns, const ResultColumns& results) const;
    void ReadCase(const CaseColumns& columns);
    void KeepCells(CsvWriter& writer, std::size_t columns) const;
    void EndIfStrict() const;

    const TransformOptions& fOptions;
    Document fDocument;
    Report fReport;
    InputFile fInput;
    CsvReader fReader;
    CellParser fCells;
    CaseRow fCase{*fDocument.fields};
    CsvRow fRow;
    std::optional<ProgressBar> fBar;
};

int TransformRun::Run() {
    const CaseColumns columns = ReadHeader();
    ResultColumns results(*fDocument.derivedFields);
    if (fOptions.keep) {
        for (const auto& column : columns.All()) {
            if (results.Has(column.name))
                throw Failure(fmt::format("{}: the column \"{}\" cannot be kept: a derived field has its name",
                                          fOptions.cases, Escaped(column.name)));
        }
    }
    std::optional<AtomicFile> file;
    if (fOptions.output)
        file.emplace(*fOptions.output);
    ShowBar();
    StandardOutput standardOutput(fBar ? &*fBar : nullptr);
    CsvWriter writer(file ? static_cast<ByteSink&>(*file) : standardOutput, fOptions.delimiter);
    WriteHeader(writer, columns, results);
    WriteCases(writer, columns, results);
    writer.Flush();
    if (file)
        file->Commit();
    if (fBar)
        fBar->Finish();
    fReport.Total();
    return fReport.UnreadableCells() > 0 ? kExitUnreadableCells : kExitDone;
}

CaseColumns TransformRun::ReadHeader() {
    if (!fReader.Next(fRow))
        throw Failure(fOptions.cases + ": the file is empty; a header of field names is needed");
    CaseColumns columns(fRow.cells, fCase, fmt::format("{}:{}", fOptions.cases, fRow.line));
    const std::string ignored = columns.IgnoredNames();
    if (!ignored.empty())
        fReport.Warning(fmt::format("{}: columns that are no field are ignored: {}", fOptions.cases, ignored));
    return columns;
}

void TransformRun::ShowBar() {
    if (fOptions.quiet || !fInput.Size() || !::isatty(STDERR_FILENO))
        return;
    fBar.emplace(STDERR_FILENO, *fInput.Size());
    fReport.SetBar(&*fBar);
}

void TransformRun::WriteHeader(CsvWriter& writer, const CaseColumns& columns, const ResultColumns& results) const {
    if (fOptions.keep) {
        for (const auto& column : columns.All())
            writer.Text(column.name);
    }
    results.WriteHeader(writer);
    writer.EndRow();
}

void TransformRun::WriteCases(CsvWriter& writer, const CaseColumns& columns, ResultColumns& results) {
    const bool mayBlock = !fInput.Size();
    for (std::uint64_t rows = 1;; ++rows) {
        if (mayBlock && !fReader.HasRecord())
            writer.Flush();
        if (!fReader.Next(fRow))
            return;
        ReadCase(columns);
        if (fOptions.keep)
            KeepCells(writer, columns.All().size());
        results.WriteCase(*fDocument.derivedFields->GetValuesForDerivedVars(&fCase, fDocument.fields.get()), writer);
        writer.EndRow();
        if (fBar)
            fBar->Update(rows, fInput.BytesRead());
    }
}

void TransformRun::ReadCase(const CaseColumns& columns) {
    const auto& all = columns.All();
    const std::size_t cells = std::min(fRow.cells.size(), all.size());
    if (fRow.cells.size() != all.size()) {
        fReport.Ragged(fRow.line, fRow.cells.size(), all.size());
        EndIfStrict();
    }
    for (std::size_t at = 0; at < all.size(); ++at) {
        if (!all[at].field)
            continue;
        if (at >= cells) {
            fCase.SetMissing(*all[at].field);
        } else if (const char* problem = fCells.Read(fRow.cells[at], *all[at].field, fCase)) {
            fReport.Cell(fRow.line, all[at].name, fRow.cells[at], problem);
            EndIfStrict();
        }
    }
}

void TransformRun::KeepCells(CsvWriter& writer, std::size_t columns) const {
    for (std::size_t at = 0; at < columns; ++at)
        writer.Text(at < fRow.cells.size() ? fRow.cells[at] : std::string_view{});
}

void TransformRun::EndIfStrict() const {
    if (fOptions.strict)
        throw ToldFailure();
}

} // namespace

int RunTransform(const TransformOptions& options) {
    return TransformRun(options).Run();
}

} // namespace veltrane::host
