#include "kit/document/document_text.h"

#include <MCVeltrane_900/BaseTranslator.h>

#include <xercesc/util/XMLString.hpp>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>

namespace veltrane_kit {

namespace {

constexpr XMLCh kAsciiEnd = 0x80;
/// No number that a double can tell from its neighbours takes more characters.
constexpr std::size_t kLongestNumber = 800;

bool IsSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

/// The text without white space around it and without a plus sign, as ASCII in a buffer; empty when it is no ASCII or
/// too long for a number.
std::string_view NumberText(const XMLCh* text, char (&buffer)[kLongestNumber]) {
    std::size_t length = 0;
    for (; text != nullptr && text[length] != 0; ++length) {
        if (text[length] >= kAsciiEnd || length == kLongestNumber) {
            return {};
        }
        buffer[length] = static_cast<char>(text[length]);
    }
    std::string_view view(buffer, length);
    while (!view.empty() && IsSpace(view.front())) {
        view.remove_prefix(1);
    }
    while (!view.empty() && IsSpace(view.back())) {
        view.remove_suffix(1);
    }
    if (view.size() > 1 && view[0] == '+' && view[1] != '-') {
        view.remove_prefix(1);
    }
    return view;
}

template <typename Number>
bool ReadWhole(std::string_view text, Number& number) {
    Number read{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), read);
    if (error != std::errc() || end != text.data() + text.size() || text.empty()) {
        return false;
    }
    number = read;
    return true;
}

} // namespace

DocumentText::DocumentText(const std::string& encoding)
    : fTranscoder(encoding.empty() ? MCVeltrane_900::BaseTranslator::DEFAULT_ENCODING : encoding),
      fKeepsAscii(fTranscoder.transcodeTo(u" 0Az~") == " 0Az~") {}

std::string DocumentText::operator()(const XMLCh* text) const {
    if (text == nullptr) {
        return {};
    }
    if (!fKeepsAscii) {
        return fTranscoder.transcodeTo(text);
    }
    std::size_t length = 0;
    XMLCh bits = 0; // of all units
    for (; text[length] != 0; ++length) {
        bits |= text[length];
    }
    if (bits >= kAsciiEnd) {
        return fTranscoder.transcodeTo(text);
    }
    std::string bytes(length, '\0');
    std::transform(text, text + length, bytes.begin(), [](XMLCh unit) { return static_cast<char>(unit); });
    return bytes;
}

std::string Narrow(const XMLCh* text) {
    std::string bytes;
    for (; text != nullptr && *text != 0; ++text) {
        bytes.push_back(*text < kAsciiEnd ? static_cast<char>(*text) : '?');
    }
    return bytes;
}

std::u16string Widen(const std::string& text) {
    std::u16string wide;
    for (const char c : text) {
        wide.push_back(static_cast<char16_t>(static_cast<unsigned char>(c)));
    }
    return wide;
}

std::string LocalName(const std::string& name) {
    return name.substr(name.find(':') + 1);
}

bool ReadNumber(const XMLCh* text, double& number) {
    char buffer[kLongestNumber];
    double read = 0.0;
    if (!ReadWhole(NumberText(text, buffer), read) || !std::isfinite(read)) {
        return false;
    }
    number = read;
    return true;
}

bool ReadInteger(const XMLCh* text, int& number) {
    char buffer[kLongestNumber];
    return ReadWhole(NumberText(text, buffer), number);
}

bool Same(const XMLCh* a, const XMLCh* b) {
    return xercesc::XMLString::equals(a, b);
}

} // namespace veltrane_kit
