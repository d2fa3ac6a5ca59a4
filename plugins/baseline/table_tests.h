#ifndef VELTRANE_PLUGINS_BASELINE_TABLE_TESTS_H
#define VELTRANE_PLUGINS_BASELINE_TABLE_TESTS_H

#include "count_table.h"
#include "statistic.h"

#include <cstddef>
#include <utility>

namespace veltrane_baseline {

/// What the tests over tables have in common: a baseline, and the last cases that are compared with it.
class TableTest : public Statistic {
public:
    /// @param window how many cases; 0 for all
    TableTest(CountTable baseline, std::size_t window) : fBaseline(std::move(baseline)), fWindow(window) {}

    std::unique_ptr<Memory> NewMemory() const override;
    double Test(const Event& event, Memory& memory) const override;

protected:
    struct Cases;

    virtual double Compare(Cases& seen) const = 0;

    const CountTable& Baseline() const { return fBaseline; }

private:
    CountTable fBaseline;
    std::size_t fWindow;
};

/// How likely cases are at least as far from the shares of the baseline, by Pearson's chi-square test of goodness of
/// fit.
class ChiSquareDistribution : public TableTest {
public:
    using TableTest::TableTest;

protected:
    double Compare(Cases& seen) const override;
};

/// How likely cases are in which fields depend on each other at least as much, by Pearson's chi-square test of a
/// contingency table: the cases and those of the baseline together. A baseline of a single field is compared with the
/// cases instead: whether the values depend on which of the two they come from.
class ChiSquareIndependence : public TableTest {
public:
    using TableTest::TableTest;

protected:
    double Compare(Cases& seen) const override;
};

/// The cosine between the counts of the cases and those of the baseline.
class ScalarProduct : public TableTest {
public:
    using TableTest::TableTest;

protected:
    double Compare(Cases& seen) const override;
};

} // namespace veltrane_baseline

#endif
