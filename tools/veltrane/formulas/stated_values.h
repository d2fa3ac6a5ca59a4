#ifndef VELTRANE_HOST_STATED_VALUES_H
#define VELTRANE_HOST_STATED_VALUES_H

#include <nlohmann/json.hpp>

#include <string>
#include <string_view>

namespace veltrane::host {

/// Whether the values of a type are told as the texts that write them.
/// @param type the word of the document; may be empty
bool HoldsTexts(std::string_view type);

/// An attribute as a number where the text is one, else as the text.
nlohmann::ordered_json NumberOrText(const std::string& text);

/// A value of a document in a formula: numbers and truths as they stand, all else between double quotes.
/// @param type the word of its type; empty where that is left to the text
std::string StatedText(const std::string& text, std::string_view type);

} // namespace veltrane::host

#endif
