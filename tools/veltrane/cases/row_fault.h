#ifndef VELTRANE_HOST_ROW_FAULT_H
#define VELTRANE_HOST_ROW_FAULT_H

#include "cases/case_row.h"

#include <string>

namespace MCScore {
class MCStatus;
}

namespace MCVeltrane_900 {
class ScoreModel;
}

namespace veltrane::host {

/// Why a row has no results.
struct RowFault {
    const CaseRow::Field* field = nullptr; ///< whose value is to blame; null for none
    std::string name;                      ///< of the field, derived ones too; empty for none
    std::string reason;                    ///< as the end of a sentence that begins with the field, or alone
};

/// Finds out from a status why a model gave no prediction for a case: which field, and whether its value is missing or
/// invalid, where the model tells that as those of `plugins/kit` do; else what little the status says.
/// @param row the case, with the fields of the model's dictionary
RowFault ExplainUnscored(const MCScore::MCStatus& status, const MCVeltrane_900::ScoreModel& model, const CaseRow& row);

} // namespace veltrane::host

#endif
