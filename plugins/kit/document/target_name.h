#ifndef VELTRANE_PLUGINS_KIT_TARGET_NAME_H
#define VELTRANE_PLUGINS_KIT_TARGET_NAME_H

#include "kit/document/element.h"

#include <string>

namespace veltrane_kit {

/// The name of the target field that a schema marks first; empty for none. It reads nothing else, for those who need
/// the name before there is a dictionary.
std::string FirstTargetName(const Element& model);

} // namespace veltrane_kit

#endif
