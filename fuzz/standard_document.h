#ifndef VELTRANE_FUZZ_STANDARD_DOCUMENT_H
#define VELTRANE_FUZZ_STANDARD_DOCUMENT_H

#include "run.h"

#include <string>

namespace veltrane::fuzz {

/// A document with fields of most types and a few derived fields over them, which call the functions of the standard
/// and have every kind of expression. Some are refused: types that don't fit are made too.
std::string MakeStandardDocument(Bytes bytes);

} // namespace veltrane::fuzz

#endif
