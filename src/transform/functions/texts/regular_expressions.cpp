#include "transform/apply/child_values.h"
#include "transform/functions/rules.h"
#include "transform/functions/texts/text_limits.h"
#include "transform/functions/texts/utf8.h"

#include <MCVeltrane_900/TransformationDictionary.h>

#include <unicode/regex.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace veltrane::functions {

namespace {

void TakeTexts(ApplyNode& node) {
    for (const Argument& argument : node.GetArguments()) {
        node.Texts().push_back(transform::TextOfChild(argument.value));
    }
}

} // namespace

const ScoreValue* Matches(ApplyNode& node) {
    TakeTexts(node);
    return node.Result(MCVeltrane_900::TransformationDictionary::Matches(node.Texts()));
}

const ScoreValue* Replace(ApplyNode& node) {
    TakeTexts(node);
    int length = 0;
    const std::string text = MCVeltrane_900::TransformationDictionary::Replace(node.Texts(), length);
    return node.Text(text, length);
}

} // namespace veltrane::functions

namespace MCVeltrane_900 {

using veltrane::functions::kLongestText;
using veltrane::transform::ToLength;

namespace {

std::ptrdiff_t CountUnits(const icu::UnicodeString& text, char16_t unit) {
    const char16_t* const units = text.getBuffer();
    return std::count(units, units + text.length(), unit);
}

/// Puts a matcher to a text, and bounds what the expression of a document can cost there. The bounds grow with the
/// text, so that only an expression which tries the same units over and over runs out of them; its status reports that.
void Start(icu::RegexMatcher& matcher, const icu::UnicodeString& expression, const icu::UnicodeString& subject,
           UErrorCode& status) {
    const std::int64_t alternatives = CountUnits(expression, u'|');
    matcher.setTimeLimit(veltrane::functions::RegexTicks(subject.length(), alternatives), status);
    matcher.setStackLimit(veltrane::functions::RegexStack(subject.length(), matcher.groupCount()), status);
    matcher.reset(subject);
}

/// The most units that one match adds: its replacement with each group in it as long as the longest.
std::int64_t LongestAddition(const icu::RegexMatcher& matcher, const icu::UnicodeString& replacement,
                             UErrorCode& status) {
    std::int64_t longest = 0;
    for (int group = 0; group <= matcher.groupCount(); ++group) {
        longest = std::max<std::int64_t>(longest, matcher.end(group, status) - matcher.start(group, status));
    }
    return replacement.length() + longest * CountUnits(replacement, u'$');
}

/// Replaces every match. Unlike the matcher's own operation it tells a search that ran out of its bounds from one that
/// found nothing more, and it ends before the outcome outgrows the longest text: a replacement can repeat the match.
/// @return false when there is no outcome
bool ReplaceAll(icu::RegexMatcher& matcher, const icu::UnicodeString& replacement, icu::UnicodeString& outcome,
                UErrorCode& status) {
    while (matcher.find(status) && U_SUCCESS(status)) {
        const auto ahead = static_cast<std::int64_t>(matcher.start(status));
        const std::int64_t most = ahead + outcome.length() + LongestAddition(matcher, replacement, status);
        if (most > static_cast<std::int64_t>(kLongestText)) {
            return false;
        }
        matcher.appendReplacement(outcome, replacement, status);
    }
    if (U_FAILURE(status)) {
        return false;
    }
    matcher.appendTail(outcome);
    return true;
}

} // namespace

double TransformationDictionary::Matches(const std::vector<std::string>& texts) {
    if (texts.size() < 2) {
        return 0.0;
    }
    const icu::UnicodeString subject = icu::UnicodeString::fromUTF8(texts[0]);
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeString expression = icu::UnicodeString::fromUTF8(texts[1]);
    icu::RegexMatcher matcher(expression, 0, status);
    if (U_FAILURE(status)) {
        return 0.0;
    }
    Start(matcher, expression, subject, status);
    const bool found = matcher.find(status) != 0;
    return found && U_SUCCESS(status) ? 1.0 : 0.0;
}

/// The outcome stands behind the subject, not in its place. An expression or a replacement that fails, and a whole that
/// would be longer than any text may become, give the subject alone.
std::string TransformationDictionary::Replace(const std::vector<std::string>& texts, int& length) {
    std::string whole = texts.empty() ? std::string() : texts[0];
    length = ToLength(whole.size());
    if (texts.size() < 3) {
        return whole;
    }
    const icu::UnicodeString subject = icu::UnicodeString::fromUTF8(texts[0]);
    UErrorCode status = U_ZERO_ERROR;
    const icu::UnicodeString expression = icu::UnicodeString::fromUTF8(texts[1]);
    icu::RegexMatcher matcher(expression, 0, status);
    if (U_FAILURE(status)) {
        return whole;
    }
    Start(matcher, expression, subject, status);
    icu::UnicodeString replaced;
    if (ReplaceAll(matcher, icu::UnicodeString::fromUTF8(texts[2]), replaced, status)) {
        const std::string outcome = veltrane::functions::ToUtf8(replaced);
        if (whole.size() + outcome.size() <= kLongestText) {
            whole += outcome;
            length = ToLength(whole.size());
        }
    }
    return whole;
}

} // namespace MCVeltrane_900
