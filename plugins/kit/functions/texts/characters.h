#ifndef VELTRANE_PLUGINS_KIT_FUNCTIONS_CHARACTERS_H
#define VELTRANE_PLUGINS_KIT_FUNCTIONS_CHARACTERS_H

#include <veltrane/functions.h>

/// Functions of texts and their characters, which are code points. Anything else than a text counts as the text that it
/// is written as.
namespace veltrane_kit::standard {

// By the mappings of Unicode for no language in particular. A letter whose counterpart the encoding lacks stays.
veltrane::Value Uppercase(veltrane::FunctionCall& call);
veltrane::Value Lowercase(veltrane::FunctionCall& call);

veltrane::Value StringLength(veltrane::FunctionCall& call);

/// From a position, counted from 1, so many characters or those that are left. A position below 1, a length below 0 and
/// what is infinite gives a missing result.
veltrane::Value Substring(veltrane::FunctionCall& call);

/// Without blanks, tabs and ends of lines at both ends.
veltrane::Value TrimBlanks(veltrane::FunctionCall& call);

veltrane::Value Concat(veltrane::FunctionCall& call);

} // namespace veltrane_kit::standard

#endif
