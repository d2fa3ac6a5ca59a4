#ifndef VELTRANE_PLUGINS_KIT_FUNCTIONS_BOUNDS_H
#define VELTRANE_PLUGINS_KIT_FUNCTIONS_BOUNDS_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>

/// What functions of texts may cost: the same as in the library, whose numbers a test compares with these.
namespace veltrane_kit::standard {

/// The longest text that a function makes, in bytes; one that would be longer is missing. Fields that each put the one
/// before together with itself double with every field.
inline constexpr std::size_t kLongestText = std::size_t{1} << 24U;

/// The time limit of a regular expression over a text of this many units, in ticks of kStepsOfTick steps. It grows with
/// the text, so that only an expression which tries the same units over and over runs out of it.
inline constexpr std::int64_t kStepsOfTick = 10'000;

constexpr std::int32_t RegexTicks(std::int64_t units, std::int64_t alternatives) {
    constexpr std::int64_t kSteps = 1'000'000;
    constexpr std::int64_t kStepsPerUnit = 32;
    constexpr std::int64_t kMostStepsPerUnit = 128;
    const std::int64_t perUnit = std::min(kStepsPerUnit + alternatives, kMostStepsPerUnit);
    const std::int64_t ticks = (kSteps + units * perUnit) / kStepsOfTick;
    return static_cast<std::int32_t>(std::min<std::int64_t>(ticks, std::numeric_limits<std::int32_t>::max()));
}

/// The bytes that a regular expression with this many groups may backtrack over: frames of four numbers and three for
/// each group, three of them for each unit.
constexpr std::int32_t RegexStack(std::int64_t units, std::int64_t groups) {
    constexpr std::int64_t kFewest = 8 << 20U;
    constexpr std::int64_t kMost = 768 << 20U;
    constexpr std::int64_t kFramesPerUnit = 3;
    const std::int64_t frame = (4 + 3 * groups) * 4;
    return static_cast<std::int32_t>(std::min(kFewest + units * kFramesPerUnit * frame, kMost));
}

} // namespace veltrane_kit::standard

#endif
