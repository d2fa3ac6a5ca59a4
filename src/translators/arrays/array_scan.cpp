#include "translators/arrays/array_scan.h"

namespace veltrane::translators {

namespace {

constexpr std::size_t kNone = std::string::npos;

/// The quote that closes an item which starts at `from`; npos when there is none.
std::size_t ClosingQuote(const std::string& text, std::size_t from, bool escapes, bool& escaped) {
    for (std::size_t i = text.find('"', from); i != kNone; i = text.find('"', i + 1)) {
        if (!escapes || i == from || text[i - 1] != '\\') {
            return i;
        }
        escaped = true;
    }
    return kNone;
}

} // namespace

std::optional<std::vector<ArrayItem>> ScanArray(const std::string& text, bool escapes) {
    std::vector<ArrayItem> items;
    std::size_t start = kNone;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        const bool last = i + 1 == text.size();
        if (c == '\n') {
            continue;
        }
        if (escapes && c == '\\' && !last && text[i + 1] == '"') {
            ++i;
            continue;
        }
        if (c == '"') {
            bool escaped = false;
            const std::size_t closing = ClosingQuote(text, i + 1, escapes, escaped);
            if (closing == kNone) {
                return std::nullopt;
            }
            items.push_back({text.substr(i + 1, closing - i - 1), escaped});
            i = closing;
            start = kNone;
        } else if (c == ' ') {
            if (start != kNone) {
                items.push_back({text.substr(start, i - start), false});
                start = kNone;
            }
        } else {
            start = start == kNone ? i : start;
            if (last) {
                items.push_back({text.substr(start), false});
            }
        }
    }
    return items;
}

std::string UnescapeQuotes(const std::string& text) {
    std::string plain;
    plain.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && i + 1 < text.size() && text[i + 1] == '"') {
            continue;
        }
        plain += text[i];
    }
    return plain;
}

} // namespace veltrane::translators
