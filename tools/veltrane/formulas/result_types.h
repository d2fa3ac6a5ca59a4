#ifndef VELTRANE_HOST_RESULT_TYPES_H
#define VELTRANE_HOST_RESULT_TYPES_H

#include "formulas/expression_text.h"

namespace veltrane::host {

/// The type of what an Apply calls, as far as the document tells it; "double" for any numbers, empty for none.
std::string TypeOfCall(const XmlNode& apply, const StatedTypes& types);

/// The same of any expression, with what stands in for missing values.
std::string TypeOfExpression(const XmlNode& expression, const StatedTypes& types);

/// The type of what stands in for a value of a type: its own where it writes one of it; else that is left to the text.
std::string TypeOfReplacement(const std::string& text, const std::string& type);

} // namespace veltrane::host

#endif
