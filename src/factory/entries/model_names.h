#ifndef VELTRANE_FACTORY_MODEL_NAMES_H
#define VELTRANE_FACTORY_MODEL_NAMES_H

#include <fstream>
#include <string>
#include <vector>

namespace veltrane::factory {

/// Opens a file for reading, byte by byte unless told otherwise. A folder doesn't open.
bool OpenForReading(std::ifstream& stream, const std::string& path,
                    std::ios::openmode mode = std::ios::in | std::ios::binary);

/// Reads a model-list file: names separated by blanks, commas, tabs and line ends, in the order of the search, doubled
/// names kept. A line of 32767 or more characters gives its first 32766 and ends the reading.
///
/// The file is read as the system's text files are. On Windows a line ends in CR LF or LF; elsewhere only in LF, and a
/// CR before it belongs to the last name of its line, which no document then asks for.
/// @param file  path; empty stands for "modeldll.txt" in the working directory
/// @param names replaced
/// @throws VTException 260103 with the path when the file can't be opened; `names` is then empty
void ReadModelNames(const std::string& file, std::vector<std::string>& names);

} // namespace veltrane::factory

#endif
