#include "transform/functions/text_limits.h"

#include <MCVeltrane_900/StringValue.h>
#include <MCVeltrane_900/TransformationDictionary.h>

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <limits>

namespace MCVeltrane_900 {

using veltrane::functions::kLongestText;
using veltrane::functions::ToLength;

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

std::string TransformationDictionary::ToUpperCase(const StringValue* value, int& length) {
    return ChangeBytes(value, length, [](int byte) { return std::toupper(byte); });
}

std::string TransformationDictionary::ToLowerCase(const StringValue* value, int& length) {
    return ChangeBytes(value, length, [](int byte) { return std::tolower(byte); });
}

std::string TransformationDictionary::Ltrim(const StringValue* value, int& length) {
    const std::string text = value->GetString();
    length = std::max(value->GetLength(), 0);
    const std::size_t first = std::min(text.find_first_not_of(" \t"), text.size());
    length -= ToLength(first);
    return text.substr(first);
}

/// Only blanks, unlike Ltrim, and the length is the new size: fields of fixed width rely on both.
std::string TransformationDictionary::Rtrim(const StringValue* value, int& length) {
    std::string text = value->GetString();
    text.resize(text.find_last_not_of(' ') + 1);
    length = ToLength(text.size());
    return text;
}

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

/// Each argument fills exactly its field's width: longer ones are cut, shorter ones filled up with blanks. A negative
/// width is that of a field without one, which is never cut; it counts into the length as it is.
std::string TransformationDictionary::Concat(const std::vector<std::string>& texts, const std::vector<int>& widths,
                                             int& length) {
    std::string whole;
    long long total = 0;
    for (std::size_t i = 0; i < std::min(texts.size(), widths.size()); ++i) {
        total += widths[i];
        const std::size_t width = widths[i] < 0 ? texts[i].size() : static_cast<std::size_t>(widths[i]);
        whole.append(texts[i], 0, std::min(width, kLongestText - whole.size()));
        if (width > texts[i].size()) {
            whole.append(std::min(width - texts[i].size(), kLongestText - whole.size()), ' ');
        }
    }
    constexpr long long kLeast = std::numeric_limits<int>::min();
    constexpr long long kMost = std::numeric_limits<int>::max();
    length = static_cast<int>(std::clamp(total, kLeast, kMost));
    return whole;
}

} // namespace MCVeltrane_900
