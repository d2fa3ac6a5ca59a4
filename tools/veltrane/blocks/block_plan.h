#ifndef VELTRANE_HOST_BLOCK_PLAN_H
#define VELTRANE_HOST_BLOCK_PLAN_H

#include "cases/case_columns.h"
#include "cases/case_row.h"
#include "cases/date_text.h"
#include "results/kept_columns.h"
#include "run/options.h"

#include <veltrane/column_scorer.h>

#include <cstddef>
#include <vector>

namespace veltrane::host {

/// What the threads of a run share. It doesn't change.
class BlockPlan {
public:
    /// Whether all inputs of a scorer can be read from cells of a case's fields.
    static bool CanRead(const ColumnScorer& scorer, const CaseRow& row);

    /// @param options borrowed, like the others
    /// @param forms   of the date-times, see ResultRows
    BlockPlan(const CaseOptions& options, const CaseColumns& columns, const KeptColumns& kept, const CaseRow& row,
              const ColumnScorer& scorer, std::vector<DateForm> forms);

    const CaseOptions& Options() const { return fOptions; }
    const CaseColumns& Columns() const { return fColumns; }
    const KeptColumns& Kept() const { return fKept; }
    const CaseRow& Row() const { return fRow; }
    const ColumnScorer& Scorer() const { return fScorer; }
    const std::vector<DateForm>& Forms() const { return fForms; }

    /// By the columns of the file, where their cells are in a table; negative for those that nobody reads.
    const std::vector<int>& Places() const { return fPlaces; }
    std::size_t Width() const { return fWidth; }

    /// By the columns of the file, which input of the scorer they fill; negative for none.
    const std::vector<int>& Inputs() const { return fInputs; }

private:
    const CaseOptions& fOptions;
    const CaseColumns& fColumns;
    const KeptColumns& fKept;
    const CaseRow& fRow;
    const ColumnScorer& fScorer;
    std::vector<DateForm> fForms;
    std::vector<int> fPlaces;
    std::vector<int> fInputs;
    std::size_t fWidth = 0;
};

} // namespace veltrane::host

#endif
