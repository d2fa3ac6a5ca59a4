#ifndef VELTRANE_PLUGINS_KIT_FUNCTIONS_LOGIC_H
#define VELTRANE_PLUGINS_KIT_FUNCTIONS_LOGIC_H

#include <veltrane/functions.h>

/// Functions with and of truth values, by three-valued logic: a missing argument is unknown. One that is neither true
/// nor false has no place there, and the result is missing.
namespace veltrane_kit::standard {

using veltrane::FunctionCall;
using veltrane::Value;

Value IsMissing(FunctionCall& call);
Value IsNotMissing(FunctionCall& call);

/// Neither missing nor a value that its field excludes.
Value IsValid(FunctionCall& call);
Value IsNotValid(FunctionCall& call);

// Comparisons of two values that are there, by their types.
Value Equal(FunctionCall& call);
Value NotEqual(FunctionCall& call);
Value LessThan(FunctionCall& call);
Value LessOrEqual(FunctionCall& call);
Value GreaterThan(FunctionCall& call);
Value GreaterOrEqual(FunctionCall& call);

/// Whether the first argument equals one of the others, of which missing ones are passed over.
Value IsIn(FunctionCall& call);
Value IsNotIn(FunctionCall& call);

/// False where an argument is, else unknown where an argument is.
Value And(FunctionCall& call);
/// True where an argument is, else unknown where an argument is.
Value Or(FunctionCall& call);
Value Not(FunctionCall& call);

/// The second argument where the first is true, the third or a missing value where it is false.
Value If(FunctionCall& call);

} // namespace veltrane_kit::standard

#endif
