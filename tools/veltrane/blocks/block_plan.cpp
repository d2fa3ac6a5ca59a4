#include "blocks/block_plan.h"

#include "blocks/column_reader.h"

#include <algorithm>
#include <utility>

namespace veltrane::host {
namespace {

constexpr int kNone = -1;

/// The input of a scorer that has a field's name.
int InputOf(const std::string& name, const ColumnScorer& scorer) {
    const auto& inputs = scorer.Inputs();
    const auto found =
        std::find_if(inputs.begin(), inputs.end(), [&](const ColumnField& input) { return input.name == name; });
    return found == inputs.end() ? kNone : static_cast<int>(found - inputs.begin());
}

} // namespace

bool BlockPlan::CanRead(const ColumnScorer& scorer, const CaseRow& row) {
    return std::all_of(scorer.Inputs().begin(), scorer.Inputs().end(), [&](const ColumnField& input) {
        const auto& fields = row.Fields();
        const auto found = std::find_if(fields.begin(), fields.end(),
                                        [&](const CaseRow::Field& field) { return field.name == input.name; });
        return found != fields.end() && ColumnReader::CanRead(*found, input.type);
    });
}

BlockPlan::BlockPlan(const CaseOptions& options, const CaseColumns& columns, const KeptColumns& kept,
                     const CaseRow& row, const ColumnScorer& scorer, std::vector<DateForm> forms)
    : fOptions(options), fColumns(columns), fKept(kept), fRow(row), fScorer(scorer), fForms(std::move(forms)),
      fPlaces(columns.All().size(), kNone), fInputs(columns.All().size(), kNone) {
    for (std::size_t at = 0; at < columns.All().size(); ++at) {
        const auto& [name, field] = columns.All()[at];
        const bool isKept = std::find(kept.Places().begin(), kept.Places().end(), at) != kept.Places().end();
        if (field != nullptr || isKept) {
            fPlaces[at] = static_cast<int>(fWidth++);
        }
        if (field != nullptr) {
            fInputs[at] = InputOf(name, scorer);
        }
    }
}

} // namespace veltrane::host
