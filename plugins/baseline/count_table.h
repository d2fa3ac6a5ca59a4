#ifndef VELTRANE_PLUGINS_BASELINE_COUNT_TABLE_H
#define VELTRANE_PLUGINS_BASELINE_COUNT_TABLE_H

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <set>
#include <vector>

namespace veltrane_baseline {

/// How often the values of some fields come together in the baseline.
struct CountTable {
    std::vector<int> slots; ///< of the fields
    std::map<std::vector<std::int32_t>, double> counts;
    std::vector<std::set<std::int32_t>> mentioned; ///< of each field, the values that are told from all others

    double Sum() const;
};

/// A sum of weights that forgets the oldest one, without taking away: each sum is one of the weights that are left, so
/// that a great weight leaves no trace. Two stacks take turns: the one in front has the sums up to its last entry.
class SlidingSum {
public:
    void Push(double weight) {
        fBack.push_back(weight);
        fBackSum += weight;
    }
    void PopOldest();

    double Sum() const { return (fFront.empty() ? 0.0 : fFront.back()) + fBackSum; }

private:
    std::vector<double> fFront; ///< the oldest one is the last
    std::vector<double> fBack;
    double fBackSum = 0.0;
};

/// The last cases by their values.
class Observed {
public:
    /// @param window how many cases; 0 for all
    explicit Observed(std::size_t window) : fWindow(window) {}

    struct Cell {
        double weight = 0.0;
        SlidingSum weights; ///< of the cases within the window
    };

    void Add(const std::vector<std::int32_t>& values, double weight);

    /// Those that came at some time.
    const std::map<std::vector<std::int32_t>, Cell>& Cells() const { return fCells; }
    double WeightOf(const std::vector<std::int32_t>& values) const;
    double Sum() const;

private:
    std::size_t fWindow;
    std::map<std::vector<std::int32_t>, Cell> fCells;
    std::deque<Cell*> fEntries; ///< the cells of the cases within the window, the oldest first; none without a window
};

} // namespace veltrane_baseline

#endif
