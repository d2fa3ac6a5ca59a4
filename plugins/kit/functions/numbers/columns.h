#ifndef VELTRANE_PLUGINS_KIT_FUNCTIONS_COLUMNS_H
#define VELTRANE_PLUGINS_KIT_FUNCTIONS_COLUMNS_H

#include "kit/columns/any_row.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>

/// Kernels for columns, made of those for one case. A row is read before its result is written, so results may stand in
/// one of the columns.
namespace veltrane_kit::standard {

/// @tparam kKernel gives not a number for not a number, as that for two does
template <double (*kKernel)(double)>
void ColumnsOfOne(const double* const* columns, std::size_t /*count*/, std::size_t rows, double* results) {
    const double* const numbers = columns[0];
    for (std::size_t row = 0; row < rows; ++row) {
        results[row] = kKernel(numbers[row]);
    }
}

template <double (*kKernel)(double, double)>
void ColumnsOfTwo(const double* const* columns, std::size_t /*count*/, std::size_t rows, double* results) {
    const double* const left = columns[0];
    const double* const right = columns[1];
    for (std::size_t row = 0; row < rows; ++row) {
        results[row] = kKernel(left[row], right[row]);
    }
}

/// An aggregate: the first number, with which each further one is combined.
template <double (*kStep)(double, double)>
double Fold(const double* numbers, std::size_t count) {
    double result = numbers[0];
    for (std::size_t i = 1; i < count; ++i) {
        result = kStep(result, numbers[i]);
    }
    return result;
}

struct IsNoNumber {
    double operator()(double x) const { return x != x ? 1.0 : 0.0; }
};

/// The same of the numbers that are there, row by row.
template <double (*kStep)(double, double)>
void FoldOfRows(const double* const* columns, std::size_t count, std::size_t from, std::size_t to, double* results) {
    for (std::size_t row = from; row < to; ++row) {
        double result = std::numeric_limits<double>::quiet_NaN();
        bool isFirst = true;
        for (std::size_t column = 0; column < count; ++column) {
            const double number = columns[column][row];
            if (!std::isnan(number)) {
                result = isFirst ? number : kStep(result, number);
                isFirst = false;
            }
        }
        results[row] = result;
    }
}

/// A few rows at once and column by column, where all of them have a first number.
template <double (*kStep)(double, double)>
void ColumnsOfFold(const double* const* columns, std::size_t count, std::size_t rows, double* results) {
    constexpr std::size_t kFew = 64;
    std::size_t from = 0;
    for (; from + kFew <= rows; from += kFew) {
        if (AnyRow(columns[0] + from, kFew, IsNoNumber())) {
            FoldOfRows<kStep>(columns, count, from, from + kFew, results);
            continue;
        }
        std::array<double, kFew> folded; // NOLINT(cppcoreguidelines-pro-type-member-init): copied at once
        std::copy_n(columns[0] + from, kFew, folded.begin());
        for (std::size_t column = 1; column < count; ++column) {
            const double* const numbers = columns[column] + from;
            for (std::size_t i = 0; i < kFew; ++i) {
                const double stepped = kStep(folded[i], numbers[i]);
                folded[i] = numbers[i] == numbers[i] ? stepped : folded[i];
            }
        }
        std::copy_n(folded.begin(), kFew, results + from);
    }
    FoldOfRows<kStep>(columns, count, from, rows, results);
}

} // namespace veltrane_kit::standard

#endif
