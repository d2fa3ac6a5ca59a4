#ifndef VELTRANE_PLUGINS_KIT_CENTER_FIELDS_H
#define VELTRANE_PLUGINS_KIT_CENTER_FIELDS_H

#include "kit/document/element.h"

namespace veltrane_kit {

/// Older cluster models keep the derived fields that centers are compared with in a CenterFields: makes them derived
/// fields of the model, and leaves a FieldRef in the place of each.
void ShareCenterFields(const Element& model);

} // namespace veltrane_kit

#endif
