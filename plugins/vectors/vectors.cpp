#include "vectors.h"

#include <algorithm>
#include <array>
#include <bit>

namespace veltrane_vectors {

namespace {

/// Of a tree of sums the number of leaves.
std::size_t LeavesOf(std::size_t fields) {
    return std::bit_ceil(std::max<std::size_t>(fields, 1));
}

} // namespace

void Vectors::Add(const std::vector<Entry>& entries, double rest) {
    fFirst.push_back(fEntries.size());
    fRests.push_back(rest);
    fEntries.insert(fEntries.end(), entries.begin(), entries.end());
}

bool Vectors::Settle() {
    const std::size_t most = std::max(kMostNumbers, 4 * fEntries.size());
    if (fFields != 0 && Count() > most / fFields) {
        return SpreadRests();
    }
    fWhole.resize(Count() * fFields);
    for (std::size_t vector = 0; vector < Count(); ++vector) {
        double* const numbers = fWhole.data() + vector * fFields;
        std::fill_n(numbers, fFields, fRests[vector]);
        const std::size_t end = vector + 1 < Count() ? fFirst[vector + 1] : fEntries.size();
        for (std::size_t at = fFirst[vector]; at < end; ++at) {
            numbers[fEntries[at].field] = fEntries[at].number;
        }
    }
    fEntries.clear();
    fEntries.shrink_to_fit();
    return true;
}

/// Has all fields of a vector stand among its entries whose other numbers aren't 0.
bool Vectors::SpreadRests() {
    const auto spread =
        static_cast<std::size_t>(std::count_if(fRests.begin(), fRests.end(), [](double rest) { return rest != 0.0; }));
    if (spread > kMostNumbers / fFields) {
        return false;
    }
    std::vector<Entry> entries;
    entries.reserve(fEntries.size() + spread * fFields);
    for (std::size_t vector = 0; vector < Count(); ++vector) {
        const std::size_t end = vector + 1 < Count() ? fFirst[vector + 1] : fEntries.size();
        std::size_t at = fFirst[vector];
        fFirst[vector] = entries.size();
        for (std::size_t field = 0; fRests[vector] != 0.0 && field < fFields; ++field) {
            const bool isWritten = at < end && fEntries[at].field == field;
            entries.push_back(isWritten ? fEntries[at++] : Entry{static_cast<std::uint32_t>(field), fRests[vector]});
        }
        entries.insert(entries.end(), fEntries.begin() + static_cast<std::ptrdiff_t>(at),
                       fEntries.begin() + static_cast<std::ptrdiff_t>(end));
    }
    fEntries = std::move(entries);
    return true;
}

/// Distances from vectors with few entries need the squares of the case between them. They come from a tree of sums and
/// not from differences, which would lose digits.
void Vectors::Prepare(const Kernel& kernel, const double* x, Prepared& prepared) const {
    if (AreWhole() || !kernel.IsOfDistance()) {
        return;
    }
    const std::size_t leaves = LeavesOf(fFields);
    prepared.squares.assign(2 * leaves, 0.0);
    for (std::size_t field = 0; field < fFields; ++field) {
        prepared.squares[leaves + field] = x[field] * x[field];
    }
    for (std::size_t node = leaves - 1; node > 0; --node) {
        prepared.squares[node] = prepared.squares[2 * node] + prepared.squares[2 * node + 1];
    }
}

double Vectors::Sum(const Kernel& kernel, std::size_t vector, const double* x, const Prepared& prepared) const {
    if (!AreWhole()) {
        return SumOfEntries(kernel, vector, x, prepared);
    }
    const double* const numbers = fWhole.data() + vector * fFields;
    double sum = 0.0;
    if (kernel.IsOfDistance()) {
        for (std::size_t field = 0; field < fFields; ++field) {
            const double distance = x[field] - numbers[field];
            sum += distance * distance;
        }
    } else {
        for (std::size_t field = 0; field < fFields; ++field) {
            sum += x[field] * numbers[field];
        }
    }
    return sum;
}

double Vectors::SumOfEntries(const Kernel& kernel, std::size_t vector, const double* x,
                             const Prepared& prepared) const {
    const std::size_t end = vector + 1 < Count() ? fFirst[vector + 1] : fEntries.size();
    double sum = 0.0;
    if (!kernel.IsOfDistance()) {
        for (std::size_t at = fFirst[vector]; at < end; ++at) {
            sum += x[fEntries[at].field] * fEntries[at].number;
        }
        return sum;
    }
    std::size_t field = 0;
    for (std::size_t at = fFirst[vector]; at < end; ++at) {
        const Entry& entry = fEntries[at];
        const double distance = x[entry.field] - entry.number;
        sum += SquaresBetween(field, entry.field, prepared);
        sum += distance * distance;
        field = entry.field + 1;
    }
    return sum + SquaresBetween(field, fFields, prepared);
}

double Vectors::SquaresBetween(std::size_t from, std::size_t to, const Prepared& prepared) const {
    const std::size_t leaves = LeavesOf(fFields);
    double sum = 0.0;
    for (from += leaves, to += leaves; from < to; from /= 2, to /= 2) {
        if (from % 2 == 1) {
            sum += prepared.squares[from++];
        }
        if (to % 2 == 1) {
            sum += prepared.squares[--to];
        }
    }
    return sum;
}

void Vectors::SumRows(const Kernel& kernel, std::size_t vector, const double* x, double* sums) const {
    const double* const numbers = fWhole.data() + vector * fFields;
    std::array<double, kRows> own{};
    if (kernel.IsOfDistance()) {
        for (std::size_t field = 0; field < fFields; ++field) {
            const double number = numbers[field];
            for (std::size_t row = 0; row < kRows; ++row) {
                const double distance = x[field * kRows + row] - number;
                own[row] += distance * distance;
            }
        }
    } else {
        for (std::size_t field = 0; field < fFields; ++field) {
            const double number = numbers[field];
            for (std::size_t row = 0; row < kRows; ++row) {
                own[row] += x[field * kRows + row] * number;
            }
        }
    }
    std::copy(own.begin(), own.end(), sums);
}

} // namespace veltrane_vectors
