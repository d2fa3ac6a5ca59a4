#ifndef VELTRANE_HOST_FUNCTIONS_COMMAND_H
#define VELTRANE_HOST_FUNCTIONS_COMMAND_H

#include <string>

namespace veltrane::host {

/// The usual name of a built-in function by its number; empty for a number that is none.
std::string FunctionName(int function);

/// The built-in functions as a table for a terminal: names, arguments, result, rule for missing arguments.
std::string FunctionsTable();

/// `veltrane functions`: writes the table to standard output.
/// @return the exit code
int RunFunctions();

} // namespace veltrane::host

#endif
