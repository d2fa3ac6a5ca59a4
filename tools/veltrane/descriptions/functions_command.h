#ifndef VELTRANE_HOST_FUNCTIONS_COMMAND_H
#define VELTRANE_HOST_FUNCTIONS_COMMAND_H

#include <string>

namespace veltrane::host {

/// The usual name of a built-in function of the library by its number; empty for a number that is none.
std::string FunctionName(int function);

/// The built-in functions as tables for a terminal, one of those of the standard and one of those of the library alone:
/// names, arguments, result, rule for missing arguments.
std::string FunctionsTables();

/// `veltrane functions`: writes the tables to standard output.
/// @return the exit code
int RunFunctions();

} // namespace veltrane::host

#endif
