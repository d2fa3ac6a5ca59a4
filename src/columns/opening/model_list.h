#ifndef VELTRANE_COLUMNS_MODEL_LIST_H
#define VELTRANE_COLUMNS_MODEL_LIST_H

#include <string>
#include <vector>

namespace veltrane::columns {

/// Reads the names of the models that have a plug-in. Line ends of any system and a byte order mark are no part of
/// them.
/// @param path empty stands for veltrane/modeldll.txt beside the library
/// @throws VTException 260103 with the path when the file can't be opened
std::vector<std::string> ReadModelList(const std::string& path);

} // namespace veltrane::columns

#endif
