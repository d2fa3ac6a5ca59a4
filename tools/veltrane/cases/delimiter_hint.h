#ifndef VELTRANE_HOST_DELIMITER_HINT_H
#define VELTRANE_HOST_DELIMITER_HINT_H

#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>

namespace veltrane::host {

/// The character that seems to stand between the names of a header that was read with another one: that which gives the
/// most of the fields' names or, where none gives any and the header is a single cell, that which parts it most often.
/// @param line   the first line as it stands in the file
/// @param used   the delimiter that it was read with
/// @param fields the names of the document's fields
/// @return nothing when no character does better than the one used
std::optional<char> LikelyDelimiter(std::string_view line, char used,
                                    const std::unordered_set<std::string_view>& fields);

/// The option that a person types for a delimiter, quoted for a shell: `--delimiter ';'`.
std::string DelimiterOption(char delimiter);

} // namespace veltrane::host

#endif
