#include "table_tests.h"

#include <MCMath_900/MCDistFun.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <memory>
#include <vector>

namespace veltrane_baseline {

namespace {

using Values = std::vector<std::int32_t>;

/// The upper tail of the chi-square distribution.
double Tail(double chiSquare, double degrees) {
    return degrees > 0.0 ? MCMath_900::MCDistFun::SigChi(chiSquare, degrees) : Statistic::kNone;
}

/// The square itself may be beyond all doubles.
double SquareOver(double difference, double expected) {
    return difference / expected * difference;
}

/// A power of two that takes a number above 0 near 1: the digits of what is multiplied by it stay.
double ScaleOf(double largest) {
    return std::ldexp(1.0, std::min(-std::ilogb(largest), std::numeric_limits<double>::max_exponent - 1));
}

/// A table of counts with its margins. It keeps its cells from one test to the next, those that count nothing too.
class Contingency {
public:
    void Clear() {
        for (auto& [values, count] : fCounts) {
            count = 0.0;
        }
        for (Margin& margin : fMargins) {
            for (auto& [value, count] : margin) {
                count = 0.0;
            }
        }
    }

    void Add(const Values& values, double count) {
        fCounts[values] += count;
        fMargins.resize(values.size());
        for (std::size_t field = 0; field < values.size(); ++field) {
            fMargins[field][values[field]] += count;
        }
    }

    double TestIndependence() const;

private:
    /// The counts of each value of one field.
    using Margin = std::map<std::int32_t, double>;

    static double SizeOf(const Margin& margin) {
        const auto counts = [](const auto& value) { return value.second > 0.0; };
        return static_cast<double>(std::count_if(margin.begin(), margin.end(), counts));
    }
    double Expected(const Values& values, double sum) const {
        double expected = sum;
        for (std::size_t field = 0; field < values.size(); ++field) {
            expected *= fMargins[field].at(values[field]) / sum;
        }
        return expected;
    }

    std::map<Values, double> fCounts;
    std::vector<Margin> fMargins;
};

/// Of any number of fields. What is expected in cells without a case is what is left of all.
double Contingency::TestIndependence() const {
    double sum = 0.0;
    for (const auto& [value, count] : fMargins.front()) {
        sum += count;
    }
    double cells = 1.0;
    double bound = 1.0; // degrees that the margins take
    for (const Margin& margin : fMargins) {
        cells *= SizeOf(margin);
        bound += SizeOf(margin) - 1.0;
    }
    double chiSquare = 0.0;
    double left = sum;
    double met = 0.0;
    for (const auto& [values, count] : fCounts) {
        if (count > 0.0) {
            const double expected = Expected(values, sum);
            chiSquare += SquareOver(count - expected, expected);
            left -= expected;
            met += 1.0;
        }
    }
    return Tail(chiSquare + (met < cells ? std::max(left, 0.0) : 0.0), cells - bound);
}

} // namespace

struct TableTest::Cases : Statistic::Memory {
    explicit Cases(std::size_t window) : observed(window) {}

    Observed observed;
    Contingency table; ///< of a test of independence
    Values key;
};

std::unique_ptr<Statistic::Memory> TableTest::NewMemory() const {
    return std::make_unique<Cases>(fWindow);
}

double TableTest::Test(const Event& event, Memory& memory) const {
    auto& cases = static_cast<Cases&>(memory);
    cases.observed.Add(event.values, event.weight);
    const double sum = cases.observed.Sum();
    return sum > 0.0 && std::isfinite(sum) ? Compare(cases) : kNone;
}

/// A value that the baseline doesn't have is one that can't be.
double ChiSquareDistribution::Compare(Cases& seen) const {
    const Observed& observed = seen.observed;
    const double cases = observed.Sum();
    const double all = Baseline().Sum();
    double chiSquare = 0.0;
    double degrees = -1.0;
    double met = 0.0;
    for (const auto& [values, count] : Baseline().counts) {
        if (count > 0.0) {
            const double expected = count / all * cases;
            const double weight = observed.WeightOf(values);
            chiSquare += SquareOver(weight - expected, expected);
            degrees += 1.0;
            met += weight > 0.0 ? 1.0 : 0.0;
        }
    }
    const auto isThere = [](const auto& cell) { return cell.second.weight > 0.0; };
    const auto there = std::count_if(observed.Cells().begin(), observed.Cells().end(), isThere);
    return static_cast<double>(there) > met ? 0.0 : Tail(chiSquare, degrees);
}

double ChiSquareIndependence::Compare(Cases& seen) const {
    const bool isOneField = Baseline().slots.size() == 1;
    const auto add = [&](std::int32_t source, const Values& values, double count) {
        if (isOneField) {
            seen.key.assign({source, values.front()});
        }
        seen.table.Add(isOneField ? seen.key : values, count);
    };
    seen.table.Clear();
    for (const auto& [values, count] : Baseline().counts) {
        add(0, values, count);
    }
    for (const auto& [values, cell] : seen.observed.Cells()) {
        add(1, values, cell.weight);
    }
    return seen.table.TestIndependence();
}

/// Both are scaled, so that no square is beyond all doubles, nor all of them 0.
double ScalarProduct::Compare(Cases& seen) const {
    const Observed& observed = seen.observed;
    double mostCounted = 0.0;
    for (const auto& [values, count] : Baseline().counts) {
        mostCounted = std::max(mostCounted, count);
    }
    double mostObserved = 0.0;
    for (const auto& [values, cell] : observed.Cells()) {
        mostObserved = std::max(mostObserved, cell.weight);
    }
    const double countScale = ScaleOf(mostCounted);
    const double weightScale = ScaleOf(mostObserved);
    double product = 0.0;
    double squares = 0.0;
    double baseline = 0.0;
    for (const auto& [values, count] : Baseline().counts) {
        const double scaled = count * countScale;
        product += scaled * (observed.WeightOf(values) * weightScale);
        baseline += scaled * scaled;
    }
    for (const auto& [values, cell] : observed.Cells()) {
        const double scaled = cell.weight * weightScale;
        squares += scaled * scaled;
    }
    return product / (std::sqrt(squares) * std::sqrt(baseline));
}

} // namespace veltrane_baseline
