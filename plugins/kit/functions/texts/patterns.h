#ifndef VELTRANE_PLUGINS_KIT_FUNCTIONS_PATTERNS_H
#define VELTRANE_PLUGINS_KIT_FUNCTIONS_PATTERNS_H

#include <veltrane/functions.h>

/// Functions that go by a pattern. A regular expression that doesn't compile, and one that tries too long, gives a
/// missing result.
namespace veltrane_kit::standard {

/// Whether a match stands anywhere in the text.
veltrane::Value Matches(veltrane::FunctionCall& call);

/// The text with each match replaced.
veltrane::Value Replace(veltrane::FunctionCall& call);

/// A number by a pattern of printf, under the C locale. Whole numbers are what is left of it without its fraction.
veltrane::Value FormatNumber(veltrane::FunctionCall& call);

} // namespace veltrane_kit::standard

#endif
