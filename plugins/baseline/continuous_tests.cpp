#include "continuous_tests.h"

#include <algorithm>
#include <cmath>
#include <deque>
#include <limits>

namespace veltrane_baseline {

namespace {

struct Weighed {
    double number;
    double weight;
};

/// The last cases, the oldest first.
struct LastCases : Statistic::Memory {
    void Add(Weighed event, std::size_t window) {
        events.push_back(event);
        if (events.size() > window) {
            events.pop_front();
        }
    }

    std::deque<Weighed> events;
};

struct Sum : LastCases {
    double sum = 0.0;
};

} // namespace

std::unique_ptr<Statistic::Memory> ZValue::NewMemory() const {
    return std::make_unique<LastCases>();
}

/// The standard deviation of a mean is that of the baseline over the root of the number of cases.
double ZValue::Test(const Event& event, Memory& memory) const {
    if (fWindow == 0) {
        return fBaseline.Standardized(event.number);
    }
    auto& last = static_cast<LastCases&>(memory);
    last.Add({event.number, event.weight}, fWindow);
    double weight = 0.0;
    double sum = 0.0;
    for (const Weighed& each : last.events) {
        weight += each.weight;
        sum += each.weight * each.number;
    }
    return weight > 0.0 ? fBaseline.Standardized(sum / weight) * std::sqrt(weight) : kNone;
}

std::unique_ptr<Statistic::Memory> CumulativeSum::NewMemory() const {
    auto memory = std::make_unique<Sum>();
    memory->sum = fReset;
    return memory;
}

/// What a case adds to the sum: minus infinity where it can't be under the alternate.
/// @return kNone where no double holds it
double CumulativeSum::PartOf(const Event& event) const {
    if (event.weight == 0.0) {
        return 0.0;
    }
    if (!fAlternate.HasDensityAt(event.number)) {
        return -std::numeric_limits<double>::infinity();
    }
    const double part = event.weight * fAlternate.LogRatio(fBaseline, event.number);
    return std::isfinite(part) ? part : kNone;
}

/// A case that can't be under the baseline has no finite part in the sum, and leaves it as it is; so does one whose
/// part, or the sum with it, is beyond all doubles.
double CumulativeSum::Test(const Event& event, Memory& memory) const {
    if (!fBaseline.HasDensityAt(event.number)) {
        return kNone;
    }
    auto& sum = static_cast<Sum&>(memory);
    const double part = PartOf(event);
    if (part == kNone) {
        return kNone;
    }
    if (fWindow == 0) {
        const double next = std::max(fReset, sum.sum + part);
        if (!std::isfinite(next)) {
            return kNone;
        }
        sum.sum = next;
        return next;
    }
    sum.Add({part, 1.0}, fWindow);
    double result = fReset;
    for (const Weighed& each : sum.events) {
        result = std::max(fReset, result + each.number);
    }
    return result;
}

} // namespace veltrane_baseline
