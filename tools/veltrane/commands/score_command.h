#ifndef VELTRANE_HOST_SCORE_COMMAND_H
#define VELTRANE_HOST_SCORE_COMMAND_H

#include "run/options.h"

namespace veltrane::host {

/// Scores each case with the document's model. Memory does not grow with the number of cases.
/// @return the exit code; failures are thrown
int RunScore(const ScoreOptions& options);

} // namespace veltrane::host

#endif
