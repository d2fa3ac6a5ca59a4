#ifndef VELTRANE_PLUGINS_GENERAL_AMOUNT_H
#define VELTRANE_PLUGINS_GENERAL_AMOUNT_H

#include "factor.h"
#include "kit/document/element.h"
#include "kit/inputs/inputs.h"

namespace veltrane_general {

/// A number that a model states for all cases, or that each case has in a field.
struct Amount {
    double value;
    int slot = veltrane_kit::Inputs::kNoSlot; ///< none: `value`

    /// @param fields a case, as CaseView or RowView
    /// @return kLacks for a missing value
    template <typename View>
    double At(const View& fields) const {
        if (slot == veltrane_kit::Inputs::kNoSlot) {
            return value;
        }
        return fields.IsMissing(slot) ? kLacks : fields.Number(slot);
    }
};

/// The slot of a field of numbers that an attribute names.
/// @throws VTException 260120, 260285 for the attribute; 260125, 260161 for its field, 260187 for one of texts
int RequireNumber(const veltrane_kit::Element& element, const XMLCh* attribute, veltrane_kit::Inputs& inputs);

/// The same for a slot that is known.
/// @return that
int RequireNumber(const veltrane_kit::Element& element, const XMLCh* attribute, int slot,
                  const veltrane_kit::Inputs& inputs);

/// @param usual for a model with neither attribute
/// @throws VTException what RequireNumber throws; 260153 for a value that is no number; 260212 for both attributes
Amount ReadAmount(const veltrane_kit::Element& element, const XMLCh* value, const XMLCh* variable, double usual,
                  veltrane_kit::Inputs& inputs);

} // namespace veltrane_general

#endif
