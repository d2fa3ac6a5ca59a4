#include "continuous_tests.h"

#include <algorithm>
#include <cmath>
#include <deque>

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

/// A case that can't be under the baseline has no finite part in the sum, and leaves it as it is.
double CumulativeSum::Test(const Event& event, Memory& memory) const {
    const double ofBaseline = fBaseline.LogDensity(event.number);
    if (!std::isfinite(ofBaseline)) {
        return kNone;
    }
    auto& sum = static_cast<Sum&>(memory);
    const double gain = fAlternate.LogDensity(event.number) - ofBaseline;
    const double part = event.weight == 0.0 ? 0.0 : event.weight * gain;
    if (fWindow == 0) {
        sum.sum = std::max(fReset, sum.sum + part);
        return sum.sum;
    }
    sum.Add({part, 1.0}, fWindow);
    double result = fReset;
    for (const Weighed& each : sum.events) {
        result = std::max(fReset, result + each.number);
    }
    return result;
}

} // namespace veltrane_baseline
