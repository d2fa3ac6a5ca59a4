#ifndef VELTRANE_TEXT_CASELESS_COMPARE_H
#define VELTRANE_TEXT_CASELESS_COMPARE_H

#include <cstdint>

namespace veltrane::text {

/// The status of a comparison that met a byte that can't be decoded.
constexpr int kUndecodable = 3;

/// Compares two texts unit by unit; the first difference decides, else the longer one is larger.
/// @tparam Text has `bool More()`, whether there is another unit; `std::int32_t Next(int& status)`, which takes it:
///              folded, or with kUndecodable as status the byte itself; and the static `SkipEqual(Text&, Text&)`, which
///              may pass over equal characters in a quicker way
/// @return -1, 0 or 1
template <class Text>
int CompareUnits(Text& a, Text& b, int& status) {
    for (Text::SkipEqual(a, b); a.More() && b.More(); Text::SkipEqual(a, b)) {
        const std::int32_t unitOfA = a.Next(status);
        const std::int32_t unitOfB = b.Next(status);
        if (unitOfA != unitOfB) {
            return unitOfA < unitOfB ? -1 : 1;
        }
    }
    return a.More() ? 1 : b.More() ? -1 : 0;
}

} // namespace veltrane::text

#endif
