#ifndef VELTRANE_TRANSFORM_FUNCTIONS_TEXT_LIMITS_H
#define VELTRANE_TRANSFORM_FUNCTIONS_TEXT_LIMITS_H

#include <cstddef>
#include <cstdint>
#include <limits>

namespace veltrane::functions {

/// The longest text that a function makes out of shorter ones. Widths come from the document, and fields that each put
/// the one before together with itself double with every field: a text is filled up, joined and replaced up to this
/// many bytes and no further.
inline constexpr std::size_t kLongestText = std::size_t{1} << 24U;

/// What a regular expression may cost before it counts as one that does not match, in steps of the matcher (some
/// milliseconds each) and in bytes of its backtracking stack.
inline constexpr std::int32_t kRegexSteps = 100;
inline constexpr std::int32_t kRegexStackBytes = 8 << 20U;

/// A size as the 32-bit `length` of a text.
constexpr int ToLength(std::size_t size) {
    constexpr auto kMost = static_cast<std::size_t>(std::numeric_limits<int>::max());
    return static_cast<int>(size < kMost ? size : kMost);
}

} // namespace veltrane::functions

#endif
