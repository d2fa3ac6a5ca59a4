#ifndef VELTRANE_PLUGINS_BASELINE_STATISTIC_H
#define VELTRANE_PLUGINS_BASELINE_STATISTIC_H

#include "kit/results/prediction.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace veltrane_baseline {

/// A case as a test sees it.
struct Event {
    double number = 0.0;              ///< of the tested field, where the test is of numbers
    std::vector<std::int32_t> values; ///< of each field of a table; kOther for one that the test doesn't mention
    double weight = 1.0;              ///< an event of weight 2 counts as two

    static constexpr std::int32_t kOther = -1;
};

/// A test of the cases so far against a baseline. It doesn't change; what it knows of the cases stands in a memory of
/// each thread.
class Statistic {
public:
    static constexpr double kNone = veltrane_kit::Prediction::kNone;

    class Memory {
    public:
        virtual ~Memory() = default;
    };

    virtual ~Statistic() = default;

    virtual std::unique_ptr<Memory> NewMemory() const { return std::make_unique<Memory>(); }

    /// Takes the next case into account.
    /// @return what the test gives then; kNone, or what isn't finite, for nothing
    virtual double Test(const Event& event, Memory& memory) const = 0;
};

} // namespace veltrane_baseline

#endif
