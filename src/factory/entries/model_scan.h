#ifndef VELTRANE_FACTORY_MODEL_SCAN_H
#define VELTRANE_FACTORY_MODEL_SCAN_H

#include <iosfwd>
#include <string>

namespace veltrane::factory {

/// Whether the document on a stream, read from where it stands, has an element of this qualified name before "PMML"
/// closes. A document of which only the head is well-formed still counts; a bad one gives false and is not reported.
bool IsModelDocument(const std::string& modelName, std::istream& in);

} // namespace veltrane::factory

#endif
