#include "transform/apply/child_values.h"
#include "transform/functions/rules.h"

#include <MCVeltrane_900/TransformationDictionary.h>

#include <algorithm>
#include <cctype>
#include <cstddef>

namespace veltrane::functions {

namespace {

template <typename Change>
std::string ChangeBytes(const StringValue* value, int& length, Change change) {
    std::string text = value->GetString();
    length = value->GetLength();
    std::transform(text.begin(), text.end(), text.begin(),
                   [change](char byte) { return static_cast<char>(change(static_cast<unsigned char>(byte))); });
    return text;
}

} // namespace

std::string UpperCase(const StringValue* value, int& length) {
    return ChangeBytes(value, length, [](int byte) { return std::toupper(byte); });
}

std::string LowerCase(const StringValue* value, int& length) {
    return ChangeBytes(value, length, [](int byte) { return std::tolower(byte); });
}

std::string Ltrim(const StringValue* value, int& length) {
    const std::string text = value->GetString();
    length = std::max(value->GetLength(), 0);
    const std::size_t first = std::min(text.find_first_not_of(" \t"), text.size());
    length -= transform::ToLength(first);
    return text.substr(first);
}

/// Only blanks, unlike Ltrim, and the length is the new size: fields of fixed width rely on both.
std::string Rtrim(const StringValue* value, int& length) {
    std::string text = value->GetString();
    text.resize(text.find_last_not_of(' ') + 1);
    length = transform::ToLength(text.size());
    return text;
}

/// The first argument as a text; further ones are evaluated for nothing.
const ScoreValue* EvaluateOneText(ApplyNode& node) {
    std::string text;
    int length = 0;
    for (const Argument& argument : node.GetArguments()) {
        if (argument.position == 0) {
            StringValue buffer("");
            text = node.Function().text(&transform::StringOf(argument.value, buffer), length);
        }
    }
    return node.Text(text, length);
}

} // namespace veltrane::functions

namespace MCVeltrane_900 {

std::string TransformationDictionary::ToUpperCase(const StringValue* value, int& length) {
    return veltrane::functions::UpperCase(value, length);
}

std::string TransformationDictionary::ToLowerCase(const StringValue* value, int& length) {
    return veltrane::functions::LowerCase(value, length);
}

std::string TransformationDictionary::Ltrim(const StringValue* value, int& length) {
    return veltrane::functions::Ltrim(value, length);
}

std::string TransformationDictionary::Rtrim(const StringValue* value, int& length) {
    return veltrane::functions::Rtrim(value, length);
}

} // namespace MCVeltrane_900
