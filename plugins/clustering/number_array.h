#ifndef VELTRANE_PLUGINS_CLUSTERING_NUMBER_ARRAY_H
#define VELTRANE_PLUGINS_CLUSTERING_NUMBER_ARRAY_H

#include "kit/document/element.h"

#include <string>
#include <vector>

namespace veltrane_clustering {

/// The values of an Array, as many as its attribute `n` says where it is there.
/// @throws VTException 260241 for another number of values, 260156 for a quote that nothing closes
std::vector<std::string> CountedWords(const veltrane_kit::Element& array);

/// The same as numbers.
/// @throws VTException also 260156 for what is no finite number
std::vector<double> Numbers(const veltrane_kit::Element& array);

} // namespace veltrane_clustering

#endif
