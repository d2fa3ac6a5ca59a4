#ifndef VELTRANE_HOST_LIBRARY_FUNCTIONS_H
#define VELTRANE_HOST_LIBRARY_FUNCTIONS_H

#include <string>
#include <string_view>

namespace veltrane::host {

/// The function of the library alone that a failure names as the one of an Apply; empty where it names none.
/// @param message of the failure, with names between single quotes
std::string_view LibraryFunctionIn(const std::string& message);

} // namespace veltrane::host

#endif
