#ifndef VELTRANE_HOST_FORMULA_H
#define VELTRANE_HOST_FORMULA_H

#include <MCVeltrane_900/FunctionTree.h>

#include <string>

namespace veltrane::host {

/// The expression of a tree as people write it: `(x - 2) / 3`, `if(isMissing(x), 0, x)`. Texts stand in double quotes,
/// fields by their names.
/// @return in the encoding that the document was read into
std::string Formula(const MCVeltrane_900::FunctionTree& root);

} // namespace veltrane::host

#endif
