#ifndef VELTRANE_TESTS_TOOLS_ECHO_RESULTS_H
#define VELTRANE_TESTS_TOOLS_ECHO_RESULTS_H

#include "commands/case_run.h"

#include <MCVeltrane_900/BaseDictionary.h>
#include <veltrane/column_scorer.h>

#include <memory>

namespace veltrane::host {

/// A dictionary with the fields that EchoResults reads: number, text, day, days and truth.
std::unique_ptr<MCVeltrane_900::BaseDictionary> EchoDictionary();

/// Results that show what came in of each field, case by case and in columns. A case without a number has none.
class EchoResults : public CaseResults {
public:
    EchoResults();

    bool Has(const std::string& name) const override;
    const char* ColumnKind() const override { return "an echo"; }
    void GiveWayTo(const std::unordered_set<std::string>&) override {}
    std::vector<std::string> NeededFields() const override { return {"number"}; }
    void WriteHeader(CsvWriter& writer) const override;
    const RowFault* WriteCase(const CaseRow& row, CsvWriter& writer) override;
    const ColumnScorer* Columns() const override { return fScorer.get(); }
    std::vector<DateForm> DateForms() const override;

private:
    std::unique_ptr<ColumnScorer> fScorer;
    RowFault fFault;
};

} // namespace veltrane::host

#endif
