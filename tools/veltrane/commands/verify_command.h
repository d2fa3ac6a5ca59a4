#ifndef VELTRANE_HOST_VERIFY_COMMAND_H
#define VELTRANE_HOST_VERIFY_COMMAND_H

#include "run/options.h"

namespace veltrane::host {

/// Scores the verification records of a document and reports field by field how the results agree with them.
/// @return the exit code; failures are thrown
int RunVerify(const VerifyOptions& options);

} // namespace veltrane::host

#endif
