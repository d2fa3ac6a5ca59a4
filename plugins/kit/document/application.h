#ifndef VELTRANE_PLUGINS_KIT_APPLICATION_H
#define VELTRANE_PLUGINS_KIT_APPLICATION_H

#include "kit/document/element.h"

#include <string>

namespace veltrane_kit {

/// The application that wrote the document of an element, as its Header has it; empty where it says nothing. Models ask
/// for it where a producer is known to mean something else than the standard.
std::string ApplicationOf(const Element& element);

} // namespace veltrane_kit

#endif
