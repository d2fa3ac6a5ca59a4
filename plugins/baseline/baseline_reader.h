#ifndef VELTRANE_PLUGINS_BASELINE_BASELINE_READER_H
#define VELTRANE_PLUGINS_BASELINE_BASELINE_READER_H

#include "count_table.h"
#include "distribution.h"
#include "kit/document/element.h"
#include "kit/model/model_plan.h"
#include "statistic.h"

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace veltrane_baseline {

/// A test as the document states it.
struct BaselineTest {
    static constexpr int kNoSlot = -1;

    std::string name;
    std::vector<int> slots; ///< of the fields whose values a test of a table takes; none for a test of numbers
    std::vector<std::set<std::int32_t>> mentioned; ///< of each of them, the values that are told from all others
    int slot = kNoSlot;                            ///< of the tested field
    int weightSlot = kNoSlot;                      ///< of what a case weighs; none for 1
    bool looksBack = true;                         ///< whether the cases before count
    std::unique_ptr<const Statistic> statistic;
};

/// Reads the TestDistributions of a BaselineModel.
class BaselineReader {
public:
    /// How many cases a test may look back on, where it doesn't look back on all.
    static constexpr int kLongestWindow = 1000000;

    /// @param parts borrowed
    explicit BaselineReader(veltrane_kit::ModelParts& parts) : fParts(parts) {}

    /// @param element the only TestDistributions of a model
    /// @throws VTException 260120, 260285, 260153 for attributes; 260161, 260125, 260187 for fields; 260126 for one
    /// that
    ///         lists no values; 260179 for a test that the baseline doesn't suit; 260321 for a uniform distribution;
    ///         260203 for a cell of a table that comes twice; 260115, 260272, 260283 for elements that are absent or
    ///         there twice, 260159 for those that have no place
    BaselineTest Read(const veltrane_kit::Element& element);

private:
    enum class Kind { Z_VALUE, CUMULATIVE_SUM, INDEPENDENCE, DISTRIBUTION, SCALAR_PRODUCT };
    struct Path;
    struct Baseline {
        std::optional<Distribution> distribution;
        CountTable table;
    };

    int RequireNumber(const veltrane_kit::Element& element, const XMLCh* attribute);
    Baseline ReadBaseline(const veltrane_kit::Element& test, Kind kind);
    std::optional<Distribution> ReadAlternate(const veltrane_kit::Element& test, Kind kind);
    Distribution ReadDistribution(const veltrane_kit::Element& element);
    CountTable ReadFields(const veltrane_kit::Element& baseline);
    CountTable ReadTable(const veltrane_kit::Element& element, Kind kind);
    void ReadCells(const veltrane_kit::Element& parent, Path& path, CountTable& table);
    void EnterCell(const veltrane_kit::Element& element, Path& path);
    void AddCell(const veltrane_kit::Element& element, Path& path, CountTable& table);
    static void RequireTable(const veltrane_kit::Element& test, const veltrane_kit::Element& baseline, Kind kind,
                             bool isTable);
    static std::unique_ptr<const Statistic> MakeTest(const veltrane_kit::Element& test, Kind kind, Baseline baseline,
                                                     const std::optional<Distribution>& alternate, std::size_t window);

    veltrane_kit::ModelParts& fParts;
};

} // namespace veltrane_baseline

#endif
