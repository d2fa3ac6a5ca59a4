#include "kit/inputs/unscored_reason.h"

namespace veltrane_kit {

void UnscoredReason::WriteTo(MCScore::MCStatus& status) const {
    status.SetDiscreteDatum(0, kind);
    status.SetDiscreteDatum(1, place);
}

UnscoredReason UnscoredReason::ReadFrom(const MCScore::MCStatus& status) {
    const long kind = status.GetDiscreteDatum(0);
    if (!status.IsError() || kind < NO_PREDICTION || kind > OTHER_LAYOUT) {
        return {};
    }
    return {static_cast<Kind>(kind), status.GetDiscreteDatum(1)};
}

} // namespace veltrane_kit
