#ifndef VELTRANE_PLUGINS_KIT_EXPRESSION_COMPLETION_H
#define VELTRANE_PLUGINS_KIT_EXPRESSION_COMPLETION_H

#include "kit/document/element.h"

namespace veltrane_kit {

/// The part of Complete() that concerns expressions.
/// @param dictionary    the completed data dictionary
/// @param derivedFields the element that holds all derived fields
/// @param output        the Output of the model; may be no element
void CompleteExpressions(const Element& dictionary, const Element& derivedFields, const Element& output);

} // namespace veltrane_kit

#endif
