#include "feature.h"

#include <algorithm>
#include <type_traits>

namespace veltrane_forest {

using veltrane_kit::Block;
using veltrane_kit::FieldColumn;
using veltrane_kit::RowView;

namespace {

/// So many numbers are looked up at once.
constexpr std::size_t kAbreast = 8;

/// How many of some sorted numbers lie below others. Each step takes half of what is left, whatever the numbers are,
/// and no step depends on a jump, so that the searches for several go on at once.
template <std::size_t kCount>
void CountBelow(const double* numbers, std::size_t count, const double* bounds, std::size_t* below) {
    const double* first[kCount];
    std::fill_n(first, kCount, numbers);
    // All bits where a number lies below, else none.
    const auto mask = [](bool isBelow) { return std::size_t{0} - static_cast<std::size_t>(isBelow); };
    std::size_t left = count;
    while (left > 1) {
        const std::size_t half = left / 2;
        for (std::size_t i = 0; i < kCount; ++i) {
            first[i] += half & mask(first[i][half - 1] < bounds[i]);
        }
        left -= half;
    }
    for (std::size_t i = 0; i < kCount; ++i) {
        below[i] = static_cast<std::size_t>(first[i] - numbers) + (left == 1 && *first[i] < bounds[i] ? 1 : 0);
    }
}

} // namespace

void Feature::RankNumbers(const Feature* const* features, const double* numbers, std::uint32_t* ranks) {
    const double* first[kRankedAtOnce];
    std::size_t left[kRankedAtOnce];
    std::size_t most = 0;
    for (std::size_t i = 0; i < kRankedAtOnce; ++i) {
        first[i] = features[i]->fBounds.data();
        left[i] = features[i]->fBounds.size();
        most = std::max(most, left[i]);
    }
    // As in CountBelow(), by bounds of its own for each number: those that are done stay where they are.
    for (; most > 1; most -= most / 2) {
        for (std::size_t i = 0; i < kRankedAtOnce; ++i) {
            const std::size_t half = left[i] / 2;
            const std::size_t at = half - (half > 0 ? 1 : 0);
            first[i] += half & (std::size_t{0} - static_cast<std::size_t>(first[i][at] < numbers[i]));
            left[i] -= half;
        }
    }
    for (std::size_t i = 0; i < kRankedAtOnce; ++i) {
        const auto place = static_cast<std::uint32_t>(first[i] - features[i]->fBounds.data());
        ranks[i] = place + (*first[i] < numbers[i] ? 1 : 0);
    }
}

bool Feature::Settle(std::uint32_t most) {
    std::sort(fBounds.begin(), fBounds.end());
    fBounds.erase(std::unique(fBounds.begin(), fBounds.end()), fBounds.end());
    fBounds.shrink_to_fit();
    if (fBounds.size() >= most - 2) {
        return false;
    }
    if (fKind == Kind::CODE) {
        ++fMarks;
    } else {
        fMarks = fKind == Kind::PRESENCE ? 1 : static_cast<std::uint32_t>(fBounds.size()) + 1;
    }
    // A range of ranks that a missing value belongs to goes on beyond the highest number.
    const bool hasBits = fKind != Kind::RANK && fMarks < kMostBits;
    fMissing = hasBits ? kMostBits - 1 : most;
    return fMarks < most;
}

std::uint32_t Feature::PlaceOf(double bound) const {
    std::size_t place = 0;
    CountBelow<1>(fBounds.data(), fBounds.size(), &bound, &place);
    return static_cast<std::uint32_t>(place);
}

std::uint32_t Feature::MarkOf(double number) const {
    const std::uint32_t place = PlaceOf(number);
    const bool isOther = fKind == Kind::MEMBER && (place == fBounds.size() || fBounds[place] != number);
    return isOther ? Other() : place;
}

template <typename Mark>
void Feature::MarkRows(const Block& block, Mark* marks, std::uint8_t* unplain, const RowVectors* vectors) const {
    const FieldColumn& field = block.Field(fSlot);
    if (fKind == Kind::RANK && field.numbers != nullptr) {
        RankRows(field.numbers, block.Rows(), marks, unplain, vectors);
        return;
    }
    for (std::size_t row = 0; row < block.Rows(); ++row) {
        const std::optional<std::uint32_t> mark = MarkIn(RowView(block, row));
        unplain[row] |= mark ? 0 : 1;
        marks[row] = static_cast<Mark>(mark.value_or(0));
    }
}

/// Not a number is missing.
template <typename Mark>
void Feature::RankRows(const double* numbers, std::size_t rows, Mark* marks, std::uint8_t* unplain,
                       const RowVectors* vectors) const {
    if constexpr (std::is_same_v<Mark, std::uint16_t>) {
        if (vectors != nullptr && vectors->rank != nullptr && !fBounds.empty()) {
            vectors->rank(fBounds.data(), fBounds.size(), numbers, rows, static_cast<Mark>(fMissing), marks);
            for (std::size_t row = 0; fRefusesMissing && row < rows; ++row) {
                unplain[row] |= std::isnan(numbers[row]) ? 1 : 0;
            }
            return;
        }
    }
    for (std::size_t first = 0; first < rows; first += kAbreast) {
        const std::size_t count = std::min(kAbreast, rows - first);
        double some[kAbreast] = {};
        std::size_t ranks[kAbreast];
        std::copy_n(numbers + first, count, some);
        CountBelow<kAbreast>(fBounds.data(), fBounds.size(), some, ranks);
        for (std::size_t i = 0; i < count; ++i) {
            const bool isMissing = std::isnan(some[i]);
            marks[first + i] = static_cast<Mark>(isMissing ? fMissing : ranks[i]);
            unplain[first + i] |= isMissing && fRefusesMissing ? 1 : 0;
        }
    }
}

template void Feature::MarkRows(const Block&, std::uint16_t*, std::uint8_t*, const RowVectors*) const;
template void Feature::MarkRows(const Block&, std::uint32_t*, std::uint8_t*, const RowVectors*) const;

} // namespace veltrane_forest
