#ifndef VELTRANE_FACTORY_EXTERNAL_DTD_H
#define VELTRANE_FACTORY_EXTERNAL_DTD_H

#include <xercesc/util/XercesDefs.hpp>

#include <string>

XERCES_CPP_NAMESPACE_BEGIN
class InputSource;
XERCES_CPP_NAMESPACE_END

namespace veltrane::factory {

/// Opens the external DTD of a document. A path or a `file:` address of this machine names a file, relative ones in
/// the working directory; an address anywhere else counts as an empty DTD, and nothing is opened for it.
/// @param systemId as it stands in the document, in UTF-8
/// @return a new source, owned by the caller
/// @throws DocumentRefused when there is no such file, or it is no ordinary file, or it is larger than any real DTD
xercesc::InputSource* OpenExternalDtd(const std::string& systemId);

/// The path that a system identifier names; empty for an address on another machine.
std::string LocalPathOf(const std::string& systemId);

} // namespace veltrane::factory

#endif
