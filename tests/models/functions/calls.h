#ifndef VELTRANE_TESTS_MODELS_FUNCTIONS_CALLS_H
#define VELTRANE_TESTS_MODELS_FUNCTIONS_CALLS_H

#include "kit/functions/standard_functions.h"
#include "kit/values/values.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace veltrane::tests {

/// What a call keeps in a document.
struct Place {
    std::string text;
    std::unique_ptr<FunctionCall::Memory> memory;
    std::string encoding = "UTF-8";
};

/// Calls a function by what its row says, in the plainest way.
/// @param arguments texts are borrowed, by the result too
Value Call(const Function& function, std::vector<Value> arguments, Place& place);

/// The function of a name; a failure of the test without one.
const Function& StandardFunction(std::string_view name);

/// The same for a function of the standard, at a place of its own that lasts until the next call.
Value Call(std::string_view name, const std::vector<Value>& arguments);

/// A value that a cell of a table writes: "missing", or a type with a text, "invalid:" in front.
/// @param cell borrowed by a text
Value ReadCell(std::string_view cell);

/// The same for a value.
std::string WriteCell(const Value& value);

/// The lines of a table beside these tests, cut at tabs, with the characters that a backslash stands before.
std::vector<std::vector<std::string>> ReadTable(const std::string& name);

inline Value Number(double number) {
    return veltrane_kit::MakeNumber(number, DataType::DOUBLE);
}

inline Value Integer(double number) {
    return veltrane_kit::MakeNumber(number, DataType::INTEGER);
}

inline Value Text(std::string_view text) {
    return veltrane_kit::MakeText(text);
}

} // namespace veltrane::tests

#endif
