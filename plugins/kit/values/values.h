#ifndef VELTRANE_PLUGINS_KIT_VALUES_H
#define VELTRANE_PLUGINS_KIT_VALUES_H

#include "kit/values/data_types.h"

#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

/// Typed values: how they are made, read from text, cast and compared.
namespace veltrane_kit {

/// The number of a missing value. Arithmetic spreads it.
inline constexpr double kMissing = std::numeric_limits<double>::quiet_NaN();

/// A value of a type that keeps numbers; one that is not a number is missing.
inline Value MakeNumber(double number, DataType type) {
    Value value;
    value.number = number;
    value.type = type;
    value.isMissing = std::isnan(number);
    return value;
}

inline Value MakeMissing(DataType type) {
    Value value;
    value.type = type;
    return value;
}

inline Value MakeTruth(bool truth) {
    return MakeNumber(truth ? 1.0 : 0.0, DataType::BOOLEAN);
}

inline Value MakeText(std::string_view text) {
    Value value;
    value.text = text;
    value.type = DataType::STRING;
    value.isMissing = false;
    return value;
}

/// Reads a decimal number with white space around it, the point as decimal sign under every locale: "5.", ".5", "+5"
/// and "1e3" too, and infinity for what is beyond all doubles.
/// @return none for anything else, the words for infinity and for no number too
std::optional<double> NumberIn(std::string_view text);

/// The value of a type that a text of a document or of a case writes.
/// @return a missing value for a text that is no value of the type; a text is borrowed
Value ReadValue(std::string_view text, DataType type);

/// The value of a text whose type is left open: a number where it writes one, else a text.
Value ReadUntyped(std::string_view text);

/// A value as a text: numbers by the fewest digits that read back, without a point where they are whole.
/// @param buffer where the text is made, unless the value is a text itself
std::string_view TextOf(const Value& value, std::string& buffer);

/// The number of a value: of a boolean 1 or 0, of a text the one that it writes; not a number where there is none.
double NumberOf(const Value& value);

/// A value as one of another type.
/// @param buffer where a text is made
/// @return a missing value where the type has no such value
Value CastValue(const Value& value, DataType type, std::string& buffer);

/// Below 0, 0 or above 0, as the left value is less than, equal to or greater than the right one; none is missing.
/// False is below true, and texts go by their bytes.
int Order(const Value& left, const Value& right);
bool AreEqual(const Value& left, const Value& right);

/// Whether a value, which isn't missing, is the one that a text of the document writes in the value's type.
bool IsWrittenAs(const Value& value, std::string_view text);

/// What a value stands for in three-valued logic: none where it is missing or neither true nor false.
/// @param isTruth false for a value that is neither
std::optional<bool> TruthOfValue(const Value& value, bool& isTruth);

} // namespace veltrane_kit

#endif
