#ifndef VELTRANE_FACTORY_MODEL_NAMES_H
#define VELTRANE_FACTORY_MODEL_NAMES_H

#include <fstream>
#include <string>
#include <vector>

namespace veltrane::factory {

/// Opens a file for reading. A folder doesn't open.
bool OpenForReading(std::ifstream& stream, const std::string& path);

/// Reads a model-list file: names separated by blanks, commas, tabs and line ends, in the order of the search, doubled
/// names kept. A line of 32767 or more characters gives its first 32766 and ends the reading.
/// @param file  path; empty stands for "modeldll.txt" in the working directory
/// @param names replaced
/// @throws VTException 260103 with the path when the file can't be opened; `names` is then empty
void ReadModelNames(const std::string& file, std::vector<std::string>& names);

} // namespace veltrane::factory

#endif
