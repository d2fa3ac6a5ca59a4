#ifndef VELTRANE_TRANSFORM_FUNCTION_TABLE_H
#define VELTRANE_TRANSFORM_FUNCTION_TABLE_H

#include <MCVeltrane_900/TransformationDictionary.h>

#include <string_view>

/// What the library reads from the table of built-in functions.
namespace veltrane::transform {

using MCVeltrane_900::TransformationDictionary;

/// The number of functions; their numbers run from 0 to this one less one.
inline constexpr int kFunctionCount = TransformationDictionary::TF_NONE;

/// The usual literal of a function; empty for a number that is none.
std::string_view FunctionWord(TransformationDictionary::TransformFunction function);

} // namespace veltrane::transform

#endif
