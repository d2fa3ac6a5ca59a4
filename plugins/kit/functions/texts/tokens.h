#ifndef VELTRANE_PLUGINS_KIT_FUNCTIONS_TOKENS_H
#define VELTRANE_PLUGINS_KIT_FUNCTIONS_TOKENS_H

#include "kit/functions/texts/regex.h"

#include <string_view>
#include <vector>

namespace veltrane_kit::standard {

/// A token of a text, in units.
struct Token {
    std::int32_t begin;
    std::int32_t end;
};

inline std::u16string_view TextOf(const icu::UnicodeString& text, const Token& token) {
    return {text.getBuffer() + token.begin, static_cast<std::size_t>(token.end - token.begin)};
}

/// Cuts texts into tokens. Any thread may use it.
class Cutter {
public:
    /// @param isCutting false for texts that are one token each
    Cutter(const icu::UnicodeString& separator, bool isCutting);

    /// False for a separator that is no regular expression.
    bool IsUsable() const;

    /// The tokens between separators, without ASCII punctuation at their ends; none of them is empty.
    /// @return false when the effort is used up or a search has run out of its bounds
    bool Cut(const icu::UnicodeString& text, Effort& effort, std::vector<Token>& tokens) const;

private:
    bool CutAtMatches(const icu::UnicodeString& text, Effort& effort, std::vector<Token>& tokens) const;

    bool fIsCutting;
    bool fIsWhiteSpace; ///< the usual separator
    Pattern fSeparator;
};

/// Compares runs of tokens with one of a term.
class Distances {
public:
    /// @param most no run that is farther away is looked for
    /// @param effort borrowed
    Distances(int most, Effort& effort);

    /// Levenshtein's distances of the tokens from one place on, summed.
    /// @return one more than the most for a run that is farther away or too short
    int Of(const std::vector<std::u16string_view>& tokens, std::size_t first,
           const std::vector<std::u16string_view>& term);

    int Most() const { return fMost; }

private:
    int Between(std::u16string_view left, std::u16string_view right, int most);

    int fMost;
    Effort& fEffort;
    std::vector<char32_t> fLeft;
    std::vector<char32_t> fRight;
    std::vector<int> fRow;
};

} // namespace veltrane_kit::standard

#endif
