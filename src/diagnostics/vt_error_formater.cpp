#include "diagnostics/message_bytes.h"

#include <ScoreContext/VTErrorFormater.h>

#include <unicode/fmtable.h>
#include <unicode/messagepattern.h>
#include <unicode/msgfmt.h>

namespace ScoreContext {

namespace {

/// Patterns are parsed and filled by recursion, so one that is nested more deeply than any message counts as one that
/// can't be parsed. Braces between apostrophes are text.
bool IsNestedTooDeeply(const icu::UnicodeString& pattern) {
    constexpr int kDeepest = 100;
    int depth = 0;
    bool isQuoted = false;
    for (int32_t i = 0; i < pattern.length(); ++i) {
        const char16_t c = pattern[i];
        const char16_t next = i + 1 < pattern.length() ? pattern[i + 1] : u'\0';
        if (c == u'\'' && next == u'\'') {
            ++i;
        } else if (c == u'\'') {
            isQuoted = !isQuoted && (next == u'{' || next == u'}');
        } else if (!isQuoted && c == u'{' && ++depth > kDeepest) {
            return true;
        } else if (!isQuoted && c == u'}' && depth > 0) {
            --depth;
        }
    }
    return false;
}

/// The index of the next outermost placeholder behind a part, or that of the pattern's end.
int32_t NextPlaceholder(const icu::MessagePattern& parsed, int32_t part) {
    do {
        ++part;
    } while (part < parsed.countParts() && parsed.getPartType(part) != UMSGPAT_PART_TYPE_ARG_START);
    return part;
}

/// Counted over the parsed pattern: a MessageFormat whose pattern was refused has no parts left, and its getFormats()
/// reads past them. A placeholder of an unknown type counts; a pattern that can't be parsed has none.
int CountPlaceholders(const icu::UnicodeString& pattern) {
    if (IsNestedTooDeeply(pattern)) {
        return 0;
    }
    UErrorCode status = U_ZERO_ERROR;
    const icu::MessagePattern parsed(pattern, nullptr, status);
    int count = 0;
    if (U_SUCCESS(status)) {
        int32_t part = NextPlaceholder(parsed, 0);
        while (part < parsed.countParts()) {
            ++count;
            part = NextPlaceholder(parsed, parsed.getLimitPartIndex(part));
        }
    }
    return count;
}

} // namespace

using veltrane::diagnostics::FromMessageBytes;
using veltrane::diagnostics::ToMessageBytes;

VTErrorFormater::VTErrorFormater(int count, MessageItem* items) {
    LoadMessages(count, items);
}

VTErrorFormater::VTErrorFormater(const VTErrorFormater& other) : IErrorFormater(other), fMessages(other.fMessages) {}

VTErrorFormater& VTErrorFormater::operator=(const VTErrorFormater& other) {
    fMessages = other.fMessages;
    return *this;
}

std::string VTErrorFormater::FormatV(int id, ...) {
    va_list arguments;
    va_start(arguments, id);
    std::string text = VFormatN(id, GetParameterNumber(id), arguments);
    va_end(arguments);
    return text;
}

std::string VTErrorFormater::VFormatN(int id, int count, va_list arguments) {
    std::vector<std::string> parameters;
    for (int read = 0; read < count; ++read) {
        const char* value = va_arg(arguments, const char*);
        if (value == nullptr) {
            break;
        }
        parameters.emplace_back(value);
    }
    return Format(id, parameters);
}

std::string VTErrorFormater::FormatN(int id, int count, ...) {
    va_list arguments;
    va_start(arguments, count);
    std::string text = VFormatN(id, count, arguments);
    va_end(arguments);
    return text;
}

std::string VTErrorFormater::Format(int id, const std::vector<std::string>& parameters) {
    const char* content = FindMessageContent(id);
    std::string stored = content != nullptr ? content : "";
    const icu::UnicodeString pattern = FromMessageBytes(stored);
    if (parameters.empty() || IsNestedTooDeeply(pattern)) {
        return stored;
    }
    std::vector<icu::Formattable> arguments;
    arguments.reserve(parameters.size());
    for (const std::string& parameter : parameters) {
        arguments.emplace_back(FromMessageBytes(parameter));
    }
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeString result;
    icu::MessageFormat::format(pattern, arguments.data(), static_cast<int32_t>(arguments.size()), result, status);
    return U_SUCCESS(status) && !result.isEmpty() ? ToMessageBytes(result) : stored;
}

int VTErrorFormater::GetParameterNumber(int id) {
    const char* content = FindMessageContent(id);
    if (content == nullptr) {
        return 0;
    }
    return CountPlaceholders(FromMessageBytes(content));
}

bool VTErrorFormater::LoadMessages(int count, MessageItem* items) {
    if (items == nullptr || FindMessageContent(items[0].id) != nullptr) {
        return false;
    }
    for (int line = 0; line < count; ++line) {
        fMessages[items[line].id] = items[line].text;
    }
    return true;
}

char* VTErrorFormater::FindMessageContent(int id) {
    const auto found = fMessages.find(id);
    return found == fMessages.end() ? nullptr : found->second;
}

} // namespace ScoreContext
