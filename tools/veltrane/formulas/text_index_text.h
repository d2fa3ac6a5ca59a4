#ifndef VELTRANE_HOST_TEXT_INDEX_TEXT_H
#define VELTRANE_HOST_TEXT_INDEX_TEXT_H

#include "documents/xml_tree.h"

#include <string>

namespace veltrane::host {

/// How a TextIndex compares and counts, as far as it says so, with its normalisations: `; binary; distance 1;
/// replaces("cars" -> "car")`.
std::string TextIndexSettings(const XmlNode& textIndex);

} // namespace veltrane::host

#endif
