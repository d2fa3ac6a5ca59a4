#ifndef VELTRANE_HOST_KEEP_ARGUMENT_H
#define VELTRANE_HOST_KEEP_ARGUMENT_H

#include <string>
#include <vector>

namespace veltrane::host {

/// A command line in which `--keep` stands alone, and what was given with it.
struct KeepArgument {
    std::vector<std::string> arguments;
    std::vector<std::string> values; ///< of each `--keep` that had one
};

/// Takes the names of columns away from `--keep`, which has them as `--keep=A,B`, or as the word behind it: that may as
/// well be the next thing on the command line, so only who has read the rest can tell.
/// @param arguments  without the name of the program
/// @param takesWords whether a word behind `--keep` is its value
KeepArgument TakeKeepValues(const std::vector<std::string>& arguments, bool takesWords);

/// The names of a list: parted by commas, and between double quotes where a name has commas or quotes, which are
/// doubled.
std::vector<std::string> ColumnNames(const std::string& list);

} // namespace veltrane::host

#endif
