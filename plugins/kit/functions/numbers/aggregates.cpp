#include "kit/functions/numbers/aggregates.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <vector>

namespace veltrane_kit::standard {

namespace {

/// @param numbers left in another order
double MedianInPlace(double* numbers, std::size_t count) {
    double* const middle = numbers + count / 2;
    std::nth_element(numbers, middle, numbers + count);
    return count % 2 == 1 ? *middle : (*std::max_element(numbers, middle) + *middle) / 2.0;
}

} // namespace

double Mean(const double* numbers, std::size_t count) {
    return std::accumulate(numbers + 1, numbers + count, numbers[0]) / static_cast<double>(count);
}

double Median(const double* numbers, std::size_t count) {
    std::array<double, 32> few; // NOLINT(cppcoreguidelines-pro-type-member-init): as many as are copied
    if (count <= few.size()) {
        std::copy(numbers, numbers + count, few.begin());
        return MedianInPlace(few.data(), count);
    }
    std::vector<double> many(numbers, numbers + count);
    return MedianInPlace(many.data(), count);
}

} // namespace veltrane_kit::standard
