#ifndef VELTRANE_PLUGINS_KIT_FUNCTIONS_REGEX_H
#define VELTRANE_PLUGINS_KIT_FUNCTIONS_REGEX_H

#include <unicode/regex.h>
#include <unicode/unistr.h>

#include <cstdint>
#include <memory>
#include <optional>

namespace veltrane_kit::standard {

/// What may still be spent on one evaluation, in steps of about a unit of text each.
class Effort {
public:
    explicit Effort(std::int64_t steps) : fLeft(steps) {}

    /// @return false when it is used up
    bool Spend(std::int64_t steps) {
        fLeft -= steps;
        return fLeft >= 0;
    }

private:
    std::int64_t fLeft;
};

/// A regular expression. Lines end at a line feed alone. Any thread may look for its matches.
class Pattern {
public:
    Pattern() = default;
    explicit Pattern(const icu::UnicodeString& text, bool isCaseSensitive = true);

    /// False for a text that is no expression.
    bool IsUsable() const { return fPattern != nullptr; }

private:
    friend class Regex;
    std::unique_ptr<const icu::RegexPattern> fPattern;
    std::int64_t fAlternatives = 0;
};

/// The matches of a regular expression, which are bounded in steps and in memory by the length of their text. It
/// belongs to one thread.
class Regex {
public:
    /// @param pattern one that is usable; borrowed
    explicit Regex(const Pattern& pattern);

    /// Looks for matches in a text from now on.
    /// @param subject borrowed until the next call
    /// @param effort  null for none beside the bounds of the text; borrowed too
    void Start(const icu::UnicodeString& subject, Effort* effort = nullptr);

    /// Whether there is one more match; none where the search ran out of its bounds.
    std::optional<bool> Find();

    // Of the match that was found, in units.
    std::int32_t Begin() const;
    std::int32_t End() const;

    /// The text with each match replaced. "$1" in the replacement is the first group, "\$" a dollar, "\\" a backslash.
    /// @param isLiteral the replacement stands for itself
    /// @return false for a search that ran out of its bounds, for a group that the pattern doesn't have, and for an
    ///         outcome that is longer than any text may be
    bool ReplaceAll(const icu::UnicodeString& replacement, bool isLiteral, icu::UnicodeString& outcome);

private:
    bool AppendReplacement(const icu::UnicodeString& replacement, icu::UnicodeString& outcome) const;
    bool AppendGroup(std::int32_t group, icu::UnicodeString& outcome) const;

    std::unique_ptr<icu::RegexMatcher> fMatcher;
    std::int64_t fAlternatives;
    const icu::UnicodeString* fSubject = nullptr;
};

} // namespace veltrane_kit::standard

#endif
