#ifndef VELTRANE_PLUGINS_KIT_STANDARD_FUNCTIONS_H
#define VELTRANE_PLUGINS_KIT_STANDARD_FUNCTIONS_H

#include <veltrane/functions.h>

namespace veltrane_kit {

/// The built-in functions of PMML 4.4 with the meaning that the standard gives them, made from standard_functions.def.
/// Texts are in the encoding of the call; positions and lengths count characters.
const veltrane::FunctionLibrary& StandardFunctions();

} // namespace veltrane_kit

#endif
