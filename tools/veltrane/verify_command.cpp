#include "verify_command.h"

#include "failure.h"

namespace veltrane::host {

int RunVerify(const VerifyOptions& options) {
    throw Failure(options.document);
}

} // namespace veltrane::host
