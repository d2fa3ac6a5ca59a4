#include "transform/numbers/kernels.h"

#include <MCVeltrane_900/TransformationDictionary.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace veltrane::functions {

double Median(double* values, std::size_t size) {
    double* const first = values;
    double* const last = std::partition(first, first + size, [](double x) { return !IsMissing(x); });
    if (first == last) {
        return kMissing;
    }
    // A NaN is kept; it sorts behind all numbers, so that the order stays total.
    std::sort(first, last, [](double a, double b) { return std::isnan(b) ? !std::isnan(a) : a < b; });
    const auto count = last - first;
    const auto half = count / 2;
    return count % 2 == 1 ? first[half] : (first[half - 1] + first[half]) * 0.5;
}

} // namespace veltrane::functions

namespace MCVeltrane_900 {

using veltrane::functions::IsMissing;
using veltrane::functions::kMissing;

double TransformationDictionary::Minus(const std::vector<double>& values) {
    return values.size() == 2 ? veltrane::functions::Difference(values[0], values[1]) : kMissing;
}

double TransformationDictionary::Multiply(const std::vector<double>& values) {
    return values.size() == 2 ? veltrane::functions::Product(values[0], values[1]) : kMissing;
}

double TransformationDictionary::Divided(const std::vector<double>& values) {
    return values.size() == 2 ? veltrane::functions::Quotient(values[0], values[1]) : kMissing;
}

double TransformationDictionary::ProductOperator(const std::vector<double>& values) {
    double product = 1.0;
    bool found = false;
    for (const double value : values) {
        if (!IsMissing(value)) {
            product *= value;
            found = true;
        }
    }
    return found ? product : kMissing;
}

double TransformationDictionary::Min(const std::vector<double>& values) {
    double least = std::numeric_limits<double>::max();
    bool found = false;
    for (const double value : values) {
        if (!IsMissing(value) && value < least) {
            least = value;
            found = true;
        }
    }
    return found ? least : kMissing;
}

double TransformationDictionary::Max(const std::vector<double>& values) {
    // Starts at the missing number itself, so only what is present can be above it.
    double greatest = kMissing;
    for (const double value : values) {
        if (value > greatest) {
            greatest = value;
        }
    }
    return greatest;
}

double TransformationDictionary::Sum(const std::vector<double>& values) {
    return veltrane::functions::Total(values.data(), values.size());
}

double TransformationDictionary::Mean(const std::vector<double>& values) {
    double sum = 0.0;
    std::size_t count = 0;
    for (const double value : values) {
        if (!IsMissing(value)) {
            sum += value;
            ++count;
        }
    }
    return count != 0 ? sum / static_cast<double>(count) : kMissing;
}

double TransformationDictionary::MedianOperator(const std::vector<double>& values) {
    std::vector<double> copy(values);
    return veltrane::functions::Median(copy.data(), copy.size());
}

/// The sum of squares is scaled by the largest deviation so far, so that no square leaves the range of a double.
double TransformationDictionary::Sd(const std::vector<double>& values) {
    const double mean = Mean(values);
    if (IsMissing(mean)) {
        return kMissing;
    }
    double scale = 0.0;
    double squares = 1.0;
    std::size_t count = 0;
    for (const double value : values) {
        if (IsMissing(value)) {
            continue;
        }
        ++count;
        const double deviation = std::fabs(value - mean);
        if (deviation == 0.0) {
            continue;
        }
        if (deviation > scale) {
            const double ratio = scale / deviation;
            squares = 1.0 + squares * (ratio * ratio);
            scale = deviation;
        } else {
            const double ratio = deviation / scale;
            squares += ratio * ratio;
        }
    }
    return count > 1 ? std::sqrt(squares / static_cast<double>(count - 1)) * scale : kMissing;
}

double TransformationDictionary::Variance(const std::vector<double>& values) {
    const double deviation = Sd(values);
    return IsMissing(deviation) ? kMissing : std::pow(deviation, 2.0);
}

} // namespace MCVeltrane_900
