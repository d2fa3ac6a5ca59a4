#ifndef VELTRANE_TRANSFORM_VALUES_H
#define VELTRANE_TRANSFORM_VALUES_H

#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/ScoreValue.h>

#include <memory>
#include <string>

/// What the derived fields do with values as such.
namespace veltrane::transform {

/// Whether the values of a variable type are texts: of any type but numeric and date-time.
bool HoldsText(MCVeltrane_900::ScoreDictVar::VariableType type);

/// A new missing value of a variable type: SYSMIS, or the empty text.
std::unique_ptr<MCVeltrane_900::ScoreValue> MissingValueOf(MCVeltrane_900::ScoreDictVar::VariableType type);

/// The text of a value: its own one where it has that in memory, else written to the buffer.
const std::string& TextOf(const MCVeltrane_900::ScoreValue& value, std::string& buffer);

} // namespace veltrane::transform

#endif
