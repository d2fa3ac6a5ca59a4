#ifndef VELTRANE_PLUGINS_KIT_NUMBER_ARRAY_H
#define VELTRANE_PLUGINS_KIT_NUMBER_ARRAY_H

#include "kit/document/element.h"

#include <string>
#include <vector>

namespace veltrane_kit {

/// What an Array says of its values decides nothing: they are read as who asks for them has them.
/// @throws VTException 260153 and 260285 for a type that there isn't
void CheckArrayType(const Element& array);

/// The values of an Array, as many as its attribute `n` says where it is there.
/// @throws VTException 260241 for another number of values, 260153 and 260285 for a type that there isn't, 260156 for a
///         quote that nothing closes
std::vector<std::string> CountedWords(const Element& array);

/// The same as numbers.
/// @throws VTException also 260156 for what is no finite number
std::vector<double> ArrayNumbers(const Element& array);

} // namespace veltrane_kit

#endif
