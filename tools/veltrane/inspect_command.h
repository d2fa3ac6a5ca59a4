#ifndef VELTRANE_HOST_INSPECT_COMMAND_H
#define VELTRANE_HOST_INSPECT_COMMAND_H

#include "options.h"

namespace veltrane::host {

/// Shows the fields and the derived fields of a document on standard output. A document without derived fields is
/// shown too, and then fails as every document without any.
/// @return the exit code; failures are thrown
int RunInspect(const InspectOptions& options);

} // namespace veltrane::host

#endif
