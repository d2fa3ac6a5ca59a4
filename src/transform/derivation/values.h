#ifndef VELTRANE_TRANSFORM_VALUES_H
#define VELTRANE_TRANSFORM_VALUES_H

#include <MCVeltrane_900/ScoreDictVar.h>
#include <MCVeltrane_900/ScoreValue.h>
#include <MCVeltrane_900/StringValue.h>

#include <memory>
#include <string>
#include <type_traits>

/// What the derived fields do with values as such.
namespace veltrane::transform {

/// Whether the values of a variable type are texts: of any type but numeric and date-time.
bool HoldsText(MCVeltrane_900::ScoreDictVar::VariableType type);

/// A new missing value of a variable type: SYSMIS, or the empty text.
std::unique_ptr<MCVeltrane_900::ScoreValue> MissingValueOf(MCVeltrane_900::ScoreDictVar::VariableType type);

/// The same of a class.
template <typename T>
std::unique_ptr<T> MissingValue() {
    if constexpr (std::is_same_v<T, MCVeltrane_900::StringValue>) {
        return std::make_unique<T>("");
    } else {
        return std::make_unique<T>();
    }
}

/// A value that is made missing when it is first asked for.
template <typename T>
T& MadeValue(std::unique_ptr<T>& value) {
    if (value == nullptr) {
        value = MissingValue<T>();
    }
    return *value;
}

/// The text of a value: its own one where it has that in memory, else written to the buffer.
const std::string& TextOf(const MCVeltrane_900::ScoreValue& value, std::string& buffer);

} // namespace veltrane::transform

#endif
