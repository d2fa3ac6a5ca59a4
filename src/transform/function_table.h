#ifndef VELTRANE_TRANSFORM_FUNCTION_TABLE_H
#define VELTRANE_TRANSFORM_FUNCTION_TABLE_H

#include <MCVeltrane_900/TransformationDictionary.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

/// What the library reads from the table of built-in functions.
namespace veltrane::transform {

using MCVeltrane_900::TransformationDictionary;

/// The numbers of the functions, row by row. Those up to TF_NONE - 1 are the places of their rows; the library's own,
/// from kFirstOwnFunction on, stand behind them.
inline constexpr std::array kFunctionNumbers{
#define VELTRANE_TRANSFORM_FUNCTION(enumerator, number, ...) number,
#include <MCVeltrane_900/TransformFunctions.def>
};

inline constexpr std::size_t kFunctionCount = kFunctionNumbers.size();
inline constexpr std::size_t kPinnedFunctions = TransformationDictionary::TF_NONE;
inline constexpr int kFirstOwnFunction = 1000;

/// The row of a function in whatever is made of the table; kFunctionCount for a number that is none.
constexpr std::size_t RowOf(int function) {
    if (function < TransformationDictionary::TF_NONE) {
        return function >= 0 ? static_cast<std::size_t>(function) : kFunctionCount;
    }
    const auto* const found = std::lower_bound(kFunctionNumbers.data() + kPinnedFunctions,
                                               kFunctionNumbers.data() + kFunctionCount, function);
    const auto row = static_cast<std::size_t>(found - kFunctionNumbers.data());
    return row < kFunctionCount && *found == function ? row : kFunctionCount;
}

constexpr bool IsFunction(int number) {
    return RowOf(number) < kFunctionCount;
}

/// The usual name of a function; empty for a number that is none.
std::string_view FunctionWord(TransformationDictionary::TransformFunction function);

} // namespace veltrane::transform

#endif
