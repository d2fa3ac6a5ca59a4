#include "transform/derivation/derivation_costs.h"

#include <MCVeltrane_900/InlineTable.h>
#include <MCVeltrane_900/MapValues.h>

using namespace MCVeltrane_900;

namespace veltrane::transform {

using TD = TransformationDictionary;

/// The fields that an evaluation asks for, one as often as it does so.
DerivationCosts::Fields DerivationCosts::AskedFor(const TransformVar& var, const ScoreDictVar* source) {
    const TD::TransExpression kind = var.GetTransExpression();
    if (kind == TD::TE_APPLY) {
        return {};
    }
    Fields fields{source};
    if (kind == TD::TE_LAG) {
        fields.insert(fields.end(), var.GetLagBlocks().begin(), var.GetLagBlocks().end());
    }
    const MapValues* map = kind == TD::TE_MAP_VALUES ? var.GetMapValues() : nullptr;
    if (map != nullptr) {
        const InlineTable* table = map->GetTable();
        const Fields& inputs = table != nullptr ? table->GetInputFields() : map->GetInputFields();
        if (table != nullptr || inputs.size() == 1) {
            fields.insert(fields.end(), inputs.begin(), inputs.end());
        }
    }
    return fields;
}

std::uint64_t DerivationCosts::CostOf(const ScoreDictVar* field) const {
    const auto found = fCosts.find(field);
    return found == fCosts.end() ? 0 : found->second;
}

bool DerivationCosts::Add(const TransformVar& var, const ScoreDictVar* source) {
    std::uint64_t below = 0;
    for (const ScoreDictVar* field : AskedFor(var, source)) {
        const std::uint64_t cost = CostOf(field);
        if (cost > static_cast<std::uint64_t>(TransformVar::MAX_NESTED_EVALUATIONS)) {
            return false;
        }
        below += cost;
    }
    if (below > 0 || var.GetTransExpression() == TD::TE_LAG) {
        fCosts.emplace(&var, below + 1);
        fTotal += below + 1;
    }
    return fTotal <= kMostOfACase;
}

} // namespace veltrane::transform
