#ifndef VELTRANE_PLUGINS_KIT_ANY_ROW_H
#define VELTRANE_PLUGINS_KIT_ANY_ROW_H

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace veltrane_kit {

/// Whether some number has a property, for properties that few have.
/// @param test gives 0.0 or 1.0 without a jump. Both loops are of the kind that compilers make wide.
template <typename Test>
bool AnyRow(const double* numbers, std::size_t rows, const Test& test) {
    constexpr std::size_t kFew = 64;
    const Test same = test;
    std::array<double, kFew> answers; // NOLINT(cppcoreguidelines-pro-type-member-init): as many as are read
    std::uint64_t any = 0;
    for (std::size_t from = 0; from < rows; from += kFew) {
        const std::size_t count = std::min(kFew, rows - from);
        const double* const some = numbers + from;
        for (std::size_t i = 0; i < count; ++i) {
            answers[i] = same(some[i]);
        }
        for (std::size_t i = 0; i < count; ++i) {
            any |= std::bit_cast<std::uint64_t>(answers[i]);
        }
    }
    return any != 0;
}

} // namespace veltrane_kit

#endif
