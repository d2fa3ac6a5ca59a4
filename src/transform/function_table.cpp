#include "transform/function_table.h"

#include <array>

namespace veltrane::transform {

namespace {

constexpr std::string_view First(std::string_view word) {
    return word;
}
template <typename... More>
constexpr std::string_view First(std::string_view word, More...) {
    return word;
}

constexpr std::array kNumbers{
#define VELTRANE_TRANSFORM_FUNCTION(enumerator, number, ...) number,
#include <MCVeltrane_900/TransformFunctions.def>
};

constexpr std::array kWords{
#define VELTRANE_TRANSFORM_FUNCTION(enumerator, number, literals, ...) First literals,
#include <MCVeltrane_900/TransformFunctions.def>
};

/// Whether the lines of the table stand in the order of their numbers, without a gap, so that the number of a function
/// is the place of its line.
constexpr bool IsDense() {
    for (int i = 0; i < static_cast<int>(kNumbers.size()); ++i) {
        if (kNumbers[static_cast<std::size_t>(i)] != i) {
            return false;
        }
    }
    return kNumbers.size() == kFunctionCount;
}
static_assert(IsDense(), "the table of functions must run from 0 to TF_NONE - 1 in order");

} // namespace

std::string_view FunctionWord(TransformationDictionary::TransformFunction function) {
    return function >= 0 && function < kFunctionCount ? kWords[static_cast<std::size_t>(function)] : std::string_view();
}

} // namespace veltrane::transform
