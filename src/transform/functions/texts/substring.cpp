#include "platform/checked_cast.h"
#include "transform/apply/child_values.h"
#include "transform/functions/rules.h"
#include "transform/functions/texts/utf8.h"

#include <MCVeltrane_900/TransformationDictionary.h>

#include <unicode/unistr.h>

#include <algorithm>
#include <cstddef>

namespace veltrane::functions {

namespace {

using TD = MCVeltrane_900::TransformationDictionary;

/// Keeps the subject, which only a text is.
void KeepText(ApplyNode& node, const ScoreValue* value) {
    if (value != nullptr && value->GetType() == ScoreValue::STRING_VALUE) {
        node.Kept().Take(*value);
    }
}

int IntOf(const ScoreValue* value) {
    return platform::TruncateToInt32(transform::DoubleOf(value));
}

} // namespace

/// From a position on, in bytes. Each later argument starts from the subject anew, so the last one decides.
const ScoreValue* Substr(ApplyNode& node) {
    std::string text;
    int length = 0;
    for (const Argument& argument : node.GetArguments()) {
        if (argument.position == 0) {
            KeepText(node, argument.value);
        } else if (const ScoreValue* subject = node.Kept().Get()) {
            StringValue buffer("");
            text = TD::Substring(&transform::StringOf(subject, buffer), IntOf(argument.value), length);
        }
    }
    return node.Text(text, length);
}

/// So many characters from a position on. Of more arguments than three the last one is their number.
const ScoreValue* Substring(ApplyNode& node) {
    int start = 0;
    int count = 0;
    for (const Argument& argument : node.GetArguments()) {
        if (argument.position == 0) {
            KeepText(node, argument.value);
        } else {
            (argument.position == 1 ? start : count) = IntOf(argument.value);
        }
    }
    std::string text;
    int length = 0;
    if (const ScoreValue* subject = node.Kept().Get()) {
        StringValue buffer("");
        text = TD::Substring_unicode(&transform::StringOf(subject, buffer), start, count, length);
    }
    return node.Text(text, length);
}

} // namespace veltrane::functions

namespace MCVeltrane_900 {

using veltrane::functions::ToUtf8;
using veltrane::transform::ToLength;

std::string TransformationDictionary::Substring(const StringValue* value, int start, int& length) {
    const std::string text = value->GetString();
    length = std::max(value->GetLength(), 0);
    if (text.empty()) {
        length = 0;
        return text;
    }
    if (start < 1 || static_cast<std::size_t>(start) >= text.size()) {
        return {};
    }
    length = start;
    return text.substr(static_cast<std::size_t>(start) - 1);
}

std::string TransformationDictionary::Substring(const StringValue* value, int start, int count, int& length) {
    const std::string text = value->GetString();
    const auto size = static_cast<long long>(text.size());
    if (text.empty() || start < 1 || start > size || count < 0) {
        length = 0;
        return {};
    }
    const long long left = size - start + 1;
    const long long taken = std::min<long long>(count, left);
    length = static_cast<int>(taken);
    return text.substr(static_cast<std::size_t>(start) - 1, static_cast<std::size_t>(taken));
}

std::string TransformationDictionary::Substring_unicode(const StringValue* value, int start, int count, int& length) {
    length = 0;
    const icu::UnicodeString text = icu::UnicodeString::fromUTF8(value->GetString());
    const int size = text.length();
    if (size == 0 || start < 1 || start > size || count < 0) {
        return {};
    }
    const int taken = std::min(count, size - start + 1);
    std::string bytes = ToUtf8(text.tempSubString(start - 1, taken));
    length = ToLength(bytes.size());
    return bytes;
}

} // namespace MCVeltrane_900
