#ifndef VELTRANE_HOST_CASE_RUN_H
#define VELTRANE_HOST_CASE_RUN_H

#include "blocks/chunk_reader.h"
#include "cases/case_columns.h"
#include "cases/case_row.h"
#include "cases/cell_parser.h"
#include "cases/csv_reader.h"
#include "cases/date_text.h"
#include "cases/row_fault.h"
#include "files/byte_stream.h"
#include "files/csv_writer.h"
#include "files/unpacking.h"
#include "results/kept_columns.h"
#include "run/case_output.h"
#include "run/options.h"
#include "run/progress_bar.h"
#include "run/rejects.h"
#include "run/report.h"

#include <veltrane/column_scorer.h>

#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

namespace veltrane::host {

/// What a command computes for a case: columns behind those of the input.
class CaseResults {
public:
    virtual ~CaseResults() = default;

    /// Whether a column has this name.
    virtual bool Has(const std::string& name) const = 0;

    /// What a column is, for messages: "a derived field".
    virtual const char* ColumnKind() const = 0;

    /// Gives way to input columns that are kept: a column with the name of one of them takes another, where there is
    /// one.
    virtual void GiveWayTo(const std::unordered_set<std::string>& kept) = 0;

    /// The names of the fields that a case has to have.
    virtual std::vector<std::string> NeededFields() const = 0;

    virtual void WriteHeader(CsvWriter& writer) const = 0;

    /// Computes the results of a case and writes one cell for each column.
    /// @return why there are none and the cells are empty, until the next call; null where there are
    virtual const RowFault* WriteCase(const CaseRow& row, CsvWriter& writer) = 0;

    /// What computes the same results in columns, in the order of the output's columns; null where nothing does.
    virtual const ColumnScorer* Columns() const { return nullptr; }

    /// The forms of the date-times that the columns give; none where their texts are those of the standard.
    virtual std::vector<DateForm> DateForms() const { return {}; }

    /// Why a case has no results in columns.
    virtual const RowFault& Explain(const CaseRow& row);
};

/// One pass over a file of cases: reads them, has the results computed, writes them. Memory does not grow with the
/// number of cases. Where the results can be computed in columns, the rows go through blocks, else one by one; what
/// comes out is the same.
class CaseRun {
public:
    /// @param options borrowed, like the others
    /// @param row     is filled with each case
    CaseRun(const CaseOptions& options, CaseRow& row, CaseResults& results);

    /// Where the person at the terminal is told about the cases.
    Report& GetReport() { return fReport; }

    /// Goes through all cases; the output is complete when it returns. Failures are thrown.
    /// @return the exit code
    int Run();

private:
    void ReadHeader();
    void CheckNeededColumns();
    void ChooseKeptColumns();
    void ShowBar();
    void WriteHeader(CsvWriter& writer);
    void WriteBlocks(CsvWriter& writer);
    void WriteCases(CsvWriter& writer);
    std::string_view FirstLine() const;
    void ReadCase();
    void ReportUnscored(const RowFault& fault);
    void CheckText(const std::string& name, std::string_view text);
    void KeepCells(CsvWriter& writer);
    void EndIfStrict() const;
    void Commit(CaseOutput& output);

    const CaseOptions& fOptions;
    CaseRow& fCase;
    CaseResults& fResults;
    Report fReport;
    InputFile fInput;
    UnpackedSource fUnpacked;
    const ColumnScorer* fScorer; ///< null where the rows go one by one
    std::optional<CsvReader> fReader;
    std::optional<ChunkReader> fChunks; ///< instead of the other where the rows go through blocks
    EncodingCheck fEncoding;
    CellParser fCells;
    CsvRow fRow;
    std::optional<CaseColumns> fColumns;
    std::optional<KeptColumns> fKept;
    std::optional<Rejects> fRejects;
    std::optional<ProgressBar> fBar;
};

} // namespace veltrane::host

#endif
