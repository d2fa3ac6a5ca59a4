#ifndef VELTRANE_FACTORY_HOST_PATH_H
#define VELTRANE_FACTORY_HOST_PATH_H

#include <string>

namespace veltrane::factory {

/// The form in which the system's file operations take a path that a host gives in UTF-8: that of the code page, where
/// a character that it hasn't is a '?'. A path without such a form stays as it is.
std::string HostPath(const std::string& path);

} // namespace veltrane::factory

#endif
