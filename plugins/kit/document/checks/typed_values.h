#ifndef VELTRANE_PLUGINS_KIT_TYPED_VALUES_H
#define VELTRANE_PLUGINS_KIT_TYPED_VALUES_H

#include "kit/document/element.h"

namespace veltrane_kit {

/// Whether a data type is one of numbers that count nothing.
bool IsNumberType(const XMLCh* type);

/// Whether the values of a Discretize, a MapValues or an Apply have to be numbers: by its own type, or that of the
/// derived field that it stands in.
bool GivesNumbers(const Element& expression);

/// What such an expression gives for missing and for other values is a number, or nothing.
/// @throws VTException 260153
void CheckReplacements(const Element& expression);

} // namespace veltrane_kit

#endif
