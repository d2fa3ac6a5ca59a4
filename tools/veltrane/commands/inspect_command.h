#ifndef VELTRANE_HOST_INSPECT_COMMAND_H
#define VELTRANE_HOST_INSPECT_COMMAND_H

#include "run/options.h"

namespace veltrane::host {

/// Shows what a document says on standard output: of its model, else of its fields and derived fields. What the other
/// commands refuse, a model without a plug-in or a document without either, is shown too as far as it goes, and then
/// fails as it does there.
/// @return the exit code; failures are thrown
int RunInspect(const InspectOptions& options);

} // namespace veltrane::host

#endif
