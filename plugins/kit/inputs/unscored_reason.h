#ifndef VELTRANE_PLUGINS_KIT_UNSCORED_REASON_H
#define VELTRANE_PLUGINS_KIT_UNSCORED_REASON_H

#include <MCScore/MCStatus.h>

namespace veltrane_kit {

/// Why a case has no prediction. A model tells its host in the discrete data of the status that it returns: the first
/// is the kind, the second the place of the field. The kinds have numbers that no other datum has by chance.
struct UnscoredReason {
    enum Kind : long {
        NOT_TOLD = 0,
        NO_PREDICTION = 900900, ///< the model has none for such a case; no field is to blame
        MISSING = 900901,       ///< the value of a field is missing
        INVALID = 900902,       ///< the value of a field is there and not allowed, or beyond its bounds
        DERIVED = 900903,       ///< a derived field is missing, and no field that it reads is
        OTHER_LAYOUT = 900904   ///< the record has the field at another place than those before it
    };

    static constexpr long kNoPlace = -1;

    Kind kind = NOT_TOLD;
    /// Of the field: among the names of the data dictionary, or for DERIVED among those of the derived fields.
    long place = kNoPlace;

    void WriteTo(MCScore::MCStatus& status) const;

    /// @return NOT_TOLD for a status without a reason
    static UnscoredReason ReadFrom(const MCScore::MCStatus& status);
};

} // namespace veltrane_kit

#endif
