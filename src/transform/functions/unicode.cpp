#include "transform/functions/text_limits.h"

#include <MCVeltrane_900/StringValue.h>
#include <MCVeltrane_900/TransformationDictionary.h>

#include <unicode/bytestream.h>
#include <unicode/regex.h>
#include <unicode/unistr.h>

#include <algorithm>

namespace MCVeltrane_900 {

using veltrane::functions::ToLength;

namespace {

std::string ToBytes(const icu::UnicodeString& text) {
    std::string bytes;
    icu::StringByteSink<std::string> sink(&bytes);
    text.toUTF8(sink);
    return bytes;
}

/// Bounds what an expression of a document can cost. A matcher that runs out reports it by its status.
void Bound(icu::RegexMatcher& matcher, UErrorCode& status) {
    matcher.setTimeLimit(veltrane::functions::kRegexSteps, status);
    matcher.setStackLimit(veltrane::functions::kRegexStackBytes, status);
}

} // namespace

double TransformationDictionary::Matches(const std::vector<std::string>& texts) {
    if (texts.size() < 2) {
        return 0.0;
    }
    const icu::UnicodeString subject = icu::UnicodeString::fromUTF8(texts[0]);
    UErrorCode status = U_ZERO_ERROR;
    icu::RegexMatcher matcher(icu::UnicodeString::fromUTF8(texts[1]), 0, status);
    if (U_FAILURE(status)) {
        return 0.0;
    }
    Bound(matcher, status);
    matcher.reset(subject);
    const bool found = matcher.find(status) != 0;
    return found && U_SUCCESS(status) ? 1.0 : 0.0;
}

/// The outcome stands behind the subject, not in its place.
std::string TransformationDictionary::Replace(const std::vector<std::string>& texts, int& length) {
    std::string whole = texts.empty() ? std::string() : texts[0];
    length = ToLength(whole.size());
    if (texts.size() < 3) {
        return whole;
    }
    const icu::UnicodeString subject = icu::UnicodeString::fromUTF8(texts[0]);
    UErrorCode status = U_ZERO_ERROR;
    icu::RegexMatcher matcher(icu::UnicodeString::fromUTF8(texts[1]), 0, status);
    if (U_FAILURE(status)) {
        return whole;
    }
    Bound(matcher, status);
    matcher.reset(subject);
    const icu::UnicodeString outcome = matcher.replaceAll(icu::UnicodeString::fromUTF8(texts[2]), status);
    if (U_SUCCESS(status)) {
        whole += ToBytes(outcome);
        length = ToLength(whole.size());
    }
    return whole;
}

std::string TransformationDictionary::Substring_unicode(const StringValue* value, int start, int count, int& length) {
    length = 0;
    const icu::UnicodeString text = icu::UnicodeString::fromUTF8(value->GetString());
    const int size = text.length();
    if (size == 0 || start < 1 || start > size || count < 0) {
        return {};
    }
    const int taken = std::min(count, size - start + 1);
    std::string bytes = ToBytes(text.tempSubString(start - 1, taken));
    length = ToLength(bytes.size());
    return bytes;
}

} // namespace MCVeltrane_900
