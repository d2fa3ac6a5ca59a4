#ifndef VELTRANE_PLUGINS_BASELINE_CONTINUOUS_TESTS_H
#define VELTRANE_PLUGINS_BASELINE_CONTINUOUS_TESTS_H

#include "distribution.h"
#include "statistic.h"

#include <cstddef>

namespace veltrane_baseline {

/// How far a case is from the mean of the baseline in standard deviations, or the mean of the last cases from what it
/// would be.
class ZValue : public Statistic {
public:
    /// @param window how many cases; 0 for one alone, whatever it weighs
    ZValue(const Distribution& baseline, std::size_t window) : fBaseline(baseline), fWindow(window) {}

    std::unique_ptr<Memory> NewMemory() const override;
    double Test(const Event& event, Memory& memory) const override;

private:
    Distribution fBaseline;
    std::size_t fWindow;
};

/// The cumulative sum of the logarithms of how much likelier the cases are under the alternate than under the baseline,
/// which never falls below a bound (Page 1954).
class CumulativeSum : public Statistic {
public:
    /// @param reset  where the sum starts, and its bound
    /// @param window how many cases it looks back on; 0 for all
    CumulativeSum(const Distribution& baseline, const Distribution& alternate, double reset, std::size_t window)
        : fBaseline(baseline), fAlternate(alternate), fReset(reset), fWindow(window) {}

    std::unique_ptr<Memory> NewMemory() const override;
    double Test(const Event& event, Memory& memory) const override;

private:
    double PartOf(const Event& event) const;

    Distribution fBaseline;
    Distribution fAlternate;
    double fReset;
    std::size_t fWindow;
};

} // namespace veltrane_baseline

#endif
