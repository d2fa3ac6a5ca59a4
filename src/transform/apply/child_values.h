#ifndef VELTRANE_TRANSFORM_APPLY_CHILD_VALUES_H
#define VELTRANE_TRANSFORM_APPLY_CHILD_VALUES_H

#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/StringValue.h>

#include <cstddef>
#include <limits>
#include <string>

/// The value of a child as its function wants it. A child without a value counts as a missing number and as the empty
/// text.
namespace veltrane::transform {

inline const MCVeltrane_900::ScoreValue& ValueOrMissing(const MCVeltrane_900::ScoreValue* value) {
    return value != nullptr ? *value : MCVeltrane_900::NumericValue::SYSMIS;
}

inline double DoubleOf(const MCVeltrane_900::ScoreValue* value) {
    return ValueOrMissing(value).GetDouble();
}

/// The text of a value of any kind.
std::string TextOfChild(const MCVeltrane_900::ScoreValue* value);

/// The value itself when it is a text, else its text in the buffer.
const MCVeltrane_900::StringValue& StringOf(const MCVeltrane_900::ScoreValue* value,
                                            MCVeltrane_900::StringValue& buffer);

/// The stored length of a text; the size of its text for a value of another kind.
int LengthOf(const MCVeltrane_900::ScoreValue* value);

/// A size as the 32-bit `length` of a text.
constexpr int ToLength(std::size_t size) {
    constexpr auto kMost = static_cast<std::size_t>(std::numeric_limits<int>::max());
    return static_cast<int>(size < kMost ? size : kMost);
}

} // namespace veltrane::transform

#endif
