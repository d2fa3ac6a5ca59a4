#include "count_table.h"

namespace veltrane_baseline {

double CountTable::Sum() const {
    double sum = 0.0;
    for (const auto& [values, count] : counts) {
        sum += count;
    }
    return sum;
}

void SlidingSum::PopOldest() {
    if (fFront.empty()) {
        double sum = 0.0;
        for (; !fBack.empty(); fBack.pop_back()) {
            sum += fBack.back();
            fFront.push_back(sum);
        }
        fBackSum = 0.0;
    }
    fFront.pop_back();
}

void Observed::Add(const std::vector<std::int32_t>& values, double weight) {
    Cell& cell = fCells[values];
    if (fWindow == 0) {
        cell.weight += weight;
        return;
    }
    cell.weights.Push(weight);
    fEntries.push_back(&cell);
    if (fEntries.size() > fWindow) {
        Cell& oldest = *fEntries.front();
        oldest.weights.PopOldest();
        oldest.weight = oldest.weights.Sum();
        fEntries.pop_front();
    }
    cell.weight = cell.weights.Sum();
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
