#ifndef VELTRANE_DATA_NUMBER_TEXT_H
#define VELTRANE_DATA_NUMBER_TEXT_H

#include <string>
#include <string_view>

/// Numbers read from text, the same under every locale and without an allocation for ordinary text.
namespace veltrane::data {

/// Reads a number from the start of a text exactly as an input stream imbued with the classic locale extracts a double.
/// The stream gathers every character that could belong to a number before it judges them: "12abc" reads as 12, but
/// "1e" and "1e+" don't read at all, and neither do "inf" and "0x".
/// @param out the number; untouched when the text can't be read or overflows
/// @return whether the extraction succeeds
bool ReadStreamDouble(std::string_view text, double& out);

/// Reads an integer from the start of a text as atoi does: white space, a sign, digits. A number beyond 32 bits gives
/// the nearest integer; text without a number gives 0.
int ReadInteger(std::string_view text);

} // namespace veltrane::data

#endif
