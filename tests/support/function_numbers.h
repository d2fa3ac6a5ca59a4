#ifndef VELTRANE_TESTS_SUPPORT_FUNCTION_NUMBERS_H
#define VELTRANE_TESTS_SUPPORT_FUNCTION_NUMBERS_H

#include <MCVeltrane_900/TransformationDictionary.h>

#include <cstddef>
#include <vector>

/// The built-in functions of Apply, as far as tests run over all of them.
namespace veltrane::tests {

/// Documents and plug-ins know so many functions by their numbers, 0 and up. What is added has a number from
/// kFirstOwnNumber on.
constexpr std::size_t kPinnedCount = 79;
constexpr int kFirstOwnNumber = 1000;

/// The numbers of all functions, in the order of their table.
inline std::vector<int> FunctionNumbers() {
    return {
#define VELTRANE_TRANSFORM_FUNCTION(enumerator, number, ...) MCVeltrane_900::TransformationDictionary::enumerator,
#include <MCVeltrane_900/TransformFunctions.def>
    };
}

} // namespace veltrane::tests

#endif
