#ifndef VELTRANE_TESTS_SUPPORT_FUNCTION_NUMBERS_H
#define VELTRANE_TESTS_SUPPORT_FUNCTION_NUMBERS_H

#include <MCVeltrane_900/TransformationDictionary.h>

#include <vector>

/// The built-in functions of Apply, as far as tests run over all of them.
namespace veltrane::tests {

/// The numbers of all functions, in the order of their table.
inline std::vector<int> FunctionNumbers() {
    return {
#define VELTRANE_TRANSFORM_FUNCTION(enumerator, number, ...) MCVeltrane_900::TransformationDictionary::enumerator,
#include <MCVeltrane_900/TransformFunctions.def>
    };
}

} // namespace veltrane::tests

#endif
