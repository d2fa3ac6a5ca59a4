#include "count_table.h"

#include <algorithm>

namespace veltrane_baseline {

double CountTable::Sum() const {
    double sum = 0.0;
    for (const auto& [values, count] : counts) {
        sum += count;
    }
    return sum;
}

/// A cell that holds no case any more weighs nothing, whatever rounding has left there.
void Observed::Add(const std::vector<std::int32_t>& values, double weight) {
    const auto cell = fCells.try_emplace(values).first;
    cell->second.weight += weight;
    ++cell->second.events;
    if (fWindow == 0) {
        return;
    }
    fEntries.push_back({cell, weight});
    if (fEntries.size() > fWindow) {
        Cell& oldest = fEntries.front().cell->second;
        --oldest.events;
        oldest.weight = oldest.events == 0 ? 0.0 : std::max(oldest.weight - fEntries.front().weight, 0.0);
        fEntries.pop_front();
    }
}

double Observed::WeightOf(const std::vector<std::int32_t>& values) const {
    const auto found = fCells.find(values);
    return found == fCells.end() ? 0.0 : found->second.weight;
}

double Observed::Sum() const {
    double sum = 0.0;
    for (const auto& [values, cell] : fCells) {
        sum += cell.weight;
    }
    return sum;
}

} // namespace veltrane_baseline
