#include "kit/functions/texts/regex.h"

#include "kit/functions/texts/bounds.h"

#include <algorithm>

namespace veltrane_kit::standard {

namespace {

using icu::UnicodeString;

/// Whether a text may become so long, in units.
bool IsShortEnough(std::int64_t length) {
    return length <= static_cast<std::int64_t>(kLongestText);
}

/// Called by a matcher after each tick.
UBool U_CALLCONV SpendATick(const void* effort, std::int32_t /*ticks*/) {
    return static_cast<UBool>(static_cast<Effort*>(const_cast<void*>(effort))->Spend(kStepsOfTick));
}

bool IsDigit(char16_t unit) {
    return unit >= u'0' && unit <= u'9';
}

} // namespace

Pattern::Pattern(const UnicodeString& text, bool isCaseSensitive) {
    UErrorCode status = U_ZERO_ERROR;
    UParseError place{};
    const std::uint32_t letters = isCaseSensitive ? 0 : static_cast<std::uint32_t>(UREGEX_CASE_INSENSITIVE);
    fPattern.reset(icu::RegexPattern::compile(text, UREGEX_UNIX_LINES | letters, place, status));
    if (U_FAILURE(status)) {
        fPattern.reset();
    }
    const char16_t* const units = text.getBuffer();
    fAlternatives = std::count(units, units + text.length(), u'|');
}

Regex::Regex(const Pattern& pattern) : fAlternatives(pattern.fAlternatives) {
    UErrorCode status = U_ZERO_ERROR;
    fMatcher.reset(pattern.fPattern->matcher(status));
}

void Regex::Start(const UnicodeString& subject, Effort* effort) {
    fSubject = &subject;
    UErrorCode status = U_ZERO_ERROR;
    fMatcher->setTimeLimit(RegexTicks(subject.length(), fAlternatives), status);
    fMatcher->setStackLimit(RegexStack(subject.length(), fMatcher->groupCount()), status);
    fMatcher->setMatchCallback(effort == nullptr ? nullptr : SpendATick, effort, status);
    fMatcher->reset(subject);
}

std::optional<bool> Regex::Find() {
    UErrorCode status = U_ZERO_ERROR;
    const bool found = fMatcher->find(status) != 0;
    return U_SUCCESS(status) ? std::optional<bool>(found) : std::nullopt;
}

std::int32_t Regex::Begin() const {
    UErrorCode status = U_ZERO_ERROR;
    return fMatcher->start(status);
}

std::int32_t Regex::End() const {
    UErrorCode status = U_ZERO_ERROR;
    return fMatcher->end(status);
}

bool Regex::ReplaceAll(const UnicodeString& replacement, bool isLiteral, UnicodeString& outcome) {
    outcome.remove();
    std::int32_t behind = 0; // the last match
    std::optional<bool> found;
    while ((found = Find()).value_or(false)) {
        const std::int32_t begin = Begin();
        if (!IsShortEnough(static_cast<std::int64_t>(outcome.length()) + (begin - behind) + replacement.length())) {
            return false;
        }
        outcome.append(*fSubject, behind, begin - behind);
        behind = End();
        if (isLiteral) {
            outcome.append(replacement);
        } else if (!AppendReplacement(replacement, outcome)) {
            return false;
        }
    }
    const std::int32_t rest = fSubject->length() - behind;
    if (!found || !IsShortEnough(static_cast<std::int64_t>(outcome.length()) + rest)) {
        return false;
    }
    outcome.append(*fSubject, behind, rest);
    return true;
}

bool Regex::AppendReplacement(const UnicodeString& replacement, UnicodeString& outcome) const {
    for (std::int32_t at = 0; at < replacement.length(); ++at) {
        const char16_t unit = replacement[at];
        const char16_t next = at + 1 < replacement.length() ? replacement[at + 1] : u'\0';
        if (unit == u'\\' && (next == u'$' || next == u'\\')) {
            outcome.append(next);
            ++at;
        } else if (unit == u'$' && IsDigit(next)) {
            if (!AppendGroup(next - u'0', outcome)) {
                return false;
            }
            ++at;
        } else {
            outcome.append(unit);
        }
    }
    return IsShortEnough(outcome.length());
}

/// A group without a match is empty.
bool Regex::AppendGroup(std::int32_t group, UnicodeString& outcome) const {
    UErrorCode status = U_ZERO_ERROR;
    const std::int32_t begin = fMatcher->start(group, status);
    const std::int32_t end = fMatcher->end(group, status);
    if (U_FAILURE(status) || !IsShortEnough(static_cast<std::int64_t>(outcome.length()) + (end - begin))) {
        return false;
    }
    if (begin >= 0) {
        outcome.append(*fSubject, begin, end - begin);
    }
    return true;
}

} // namespace veltrane_kit::standard
