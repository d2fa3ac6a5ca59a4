#ifndef VELTRANE_PLUGINS_KIT_ARRAY_WORDS_H
#define VELTRANE_PLUGINS_KIT_ARRAY_WORDS_H

#include "kit/document/element.h"

#include <string>
#include <vector>

namespace veltrane_kit {

/// The values of an Array: parted by white space, those that hold some between double quotes, in which a backslash goes
/// before a quote. How many its attribute `n` counts plays no part.
/// @throws VTException 260156 with the whole content for a quote that nothing closes: a word of blanks and of all the
///         rest is nobody's value
std::vector<std::string> ArrayWords(const Element& array);

} // namespace veltrane_kit

#endif
