#ifndef VELTRANE_TRANSFORM_FUNCTIONS_TEXT_LIMITS_H
#define VELTRANE_TRANSFORM_FUNCTIONS_TEXT_LIMITS_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace veltrane::functions {

/// The longest text that a function makes out of shorter ones. Widths come from the document, and fields that each put
/// the one before together with itself double with every field: a text is filled up, joined and replaced up to this
/// many bytes and no further.
inline constexpr std::size_t kLongestText = std::size_t{1} << 24U;

/// What a regular expression may cost before it counts as one that does not match: so much for any text, and so much
/// more for each unit of a long one. An expression without nested repetition saves its state a few times a unit, and
/// once more for each alternative that it tries there.
inline constexpr std::int64_t kRegexSteps = 1'000'000;
inline constexpr std::int64_t kRegexStepsPerUnit = 32;
inline constexpr std::int64_t kMostRegexStepsPerUnit = 128;
/// The matcher counts time in this many steps.
inline constexpr std::int64_t kRegexStepsPerTick = 10'000;

/// The stack that an expression backtracks over, as the matcher counts its bytes. A saved state is a frame of four
/// numbers and three for each group; an expression that repeats a group keeps up to three of them for each unit. No
/// text that a function makes needs the most with one group.
inline constexpr std::int64_t kRegexStackBytes = 8 << 20U;
inline constexpr std::int64_t kMostRegexStackBytes = 768 << 20U;
inline constexpr std::int64_t kRegexFramesPerUnit = 3;

/// The time limit of a matcher over a text of this many units, with an expression of this many alternatives.
constexpr std::int32_t RegexTicks(std::int64_t units, std::int64_t alternatives) {
    const std::int64_t perUnit = std::min(kRegexStepsPerUnit + alternatives, kMostRegexStepsPerUnit);
    const std::int64_t ticks = (kRegexSteps + units * perUnit) / kRegexStepsPerTick;
    return static_cast<std::int32_t>(std::min<std::int64_t>(ticks, std::numeric_limits<std::int32_t>::max()));
}

/// The stack limit of a matcher with this many groups.
constexpr std::int32_t RegexStack(std::int64_t units, std::int64_t groups) {
    constexpr std::int64_t kBytesPerNumber = 4;
    const std::int64_t frame = (4 + 3 * groups) * kBytesPerNumber;
    return static_cast<std::int32_t>(
        std::min(kRegexStackBytes + units * kRegexFramesPerUnit * frame, kMostRegexStackBytes));
}

} // namespace veltrane::functions

#endif
