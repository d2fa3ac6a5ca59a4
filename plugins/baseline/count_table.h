#ifndef VELTRANE_PLUGINS_BASELINE_COUNT_TABLE_H
#define VELTRANE_PLUGINS_BASELINE_COUNT_TABLE_H

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <vector>

namespace veltrane_baseline {

/// How often the values of some fields come together in the baseline.
struct CountTable {
    std::vector<int> slots; ///< of the fields
    std::map<std::vector<std::int32_t>, double> counts;

    double Sum() const;
};

/// The last cases by their values.
class Observed {
public:
    /// @param window how many cases; 0 for all
    explicit Observed(std::size_t window) : fWindow(window) {}

    struct Cell {
        double weight = 0.0;
        std::size_t events = 0;
    };

    void Add(const std::vector<std::int32_t>& values, double weight);

    /// Those that came at some time.
    const std::map<std::vector<std::int32_t>, Cell>& Cells() const { return fCells; }
    double WeightOf(const std::vector<std::int32_t>& values) const;
    double Sum() const;

private:
    struct Entry {
        std::map<std::vector<std::int32_t>, Cell>::iterator cell;
        double weight;
    };

    std::size_t fWindow;
    std::map<std::vector<std::int32_t>, Cell> fCells;
    std::deque<Entry> fEntries; ///< none without a window
};

} // namespace veltrane_baseline

#endif
