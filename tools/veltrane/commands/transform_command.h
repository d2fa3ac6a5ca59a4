#ifndef VELTRANE_HOST_TRANSFORM_COMMAND_H
#define VELTRANE_HOST_TRANSFORM_COMMAND_H

#include "run/options.h"

namespace veltrane::host {

/// Computes the derived fields of each case. Memory does not grow with the number of cases.
/// @return the exit code; failures are thrown
int RunTransform(const TransformOptions& options);

} // namespace veltrane::host

#endif
