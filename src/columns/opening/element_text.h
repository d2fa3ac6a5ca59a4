#ifndef VELTRANE_COLUMNS_ELEMENT_TEXT_H
#define VELTRANE_COLUMNS_ELEMENT_TEXT_H

#include <xercesc/util/XercesDefs.hpp>

#include <string>

XERCES_CPP_NAMESPACE_BEGIN
class DOMElement;
XERCES_CPP_NAMESPACE_END

namespace veltrane::columns {

/// Writes an element with all that is in it, but for comments and instructions, as a document of its own for those who
/// parse by themselves.
/// @return in UTF-8
/// @throws VTException 260105 for what can't be written
std::string TextOf(xercesc::DOMElement& element);

} // namespace veltrane::columns

#endif
