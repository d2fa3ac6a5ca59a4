#ifndef VELTRANE_PLUGINS_KIT_CONDITION_TEXT_H
#define VELTRANE_PLUGINS_KIT_CONDITION_TEXT_H

#include "kit/document/element.h"

#include <string>

namespace veltrane_kit {

/// A predicate as people write it: `x > 1`, `c in {"u", "v"}`, `(x is missing or x < 0)`. Its values are those of the
/// document, texts and numbers alike without quotes, but for those of a set that hold a blank.
/// @param predicate that ConditionReader has read
std::string ConditionText(const Element& predicate);

} // namespace veltrane_kit

#endif
