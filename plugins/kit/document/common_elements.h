#ifndef VELTRANE_PLUGINS_KIT_COMMON_ELEMENTS_H
#define VELTRANE_PLUGINS_KIT_COMMON_ELEMENTS_H

#include "kit/document/element.h"

namespace veltrane_kit {

/// Accepts a child of a model's element that every kind of model has: the kit reads it, or nobody has to.
/// @throws VTException 260159 for any other
void RequireCommonElement(const Element& child);

} // namespace veltrane_kit

#endif
