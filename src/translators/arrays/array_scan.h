#ifndef VELTRANE_TRANSLATORS_ARRAY_SCAN_H
#define VELTRANE_TRANSLATORS_ARRAY_SCAN_H

#include <optional>
#include <string>
#include <vector>

namespace veltrane::translators {

/// One item of an array's text.
struct ArrayItem {
    std::string text;
    bool escapedQuotes; ///< a backslash and a quote stand for a quote in it
};

/// Splits the text of an array into its items. An item ends at a blank, at a closing quote, or at the very last
/// position; a newline ends nothing and is skipped, so a text that ends in one loses its last unquoted item. A tab is
/// an ordinary character.
/// @param escapes whether a backslash before a quote escapes it
/// @return nothing when a quote is opened and not closed
std::optional<std::vector<ArrayItem>> ScanArray(const std::string& text, bool escapes);

/// The text with each pair of backslash and quote replaced by a quote.
std::string UnescapeQuotes(const std::string& text);

} // namespace veltrane::translators

#endif
