#include "kit/functions/texts/tokens.h"

#include "kit/functions/texts/bounds.h"

#include <unicode/uchar.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <cstdlib>
#include <string>

namespace veltrane_kit::standard {

namespace {

using icu::UnicodeString;

bool IsPunctuation(char16_t unit) {
    return (unit >= u'!' && unit <= u'/') || (unit >= u':' && unit <= u'@') || (unit >= u'[' && unit <= u'`') ||
           (unit >= u'{' && unit <= u'~');
}

void AddToken(const UnicodeString& text, Token token, std::vector<Token>& tokens) {
    while (token.begin < token.end && IsPunctuation(text[token.begin])) {
        ++token.begin;
    }
    while (token.begin < token.end && IsPunctuation(text[token.end - 1])) {
        --token.end;
    }
    if (token.begin < token.end) {
        tokens.push_back(token);
    }
}

/// All of white space stands in the first plane.
void CutAtWhiteSpace(const UnicodeString& text, std::vector<Token>& tokens) {
    std::int32_t begin = 0;
    for (std::int32_t at = 0; at <= text.length(); ++at) {
        if (at == text.length() || u_isUWhiteSpace(text[at])) {
            AddToken(text, {begin, at}, tokens);
            begin = at + 1;
        }
    }
}

void Decode(std::u16string_view text, std::vector<char32_t>& characters) {
    characters.clear();
    for (std::size_t at = 0; at < text.size();) {
        char32_t character = 0;
        U16_NEXT(text.data(), at, text.size(), character);
        characters.push_back(character);
    }
}

} // namespace

Cutter::Cutter(const UnicodeString& separator, bool isCutting)
    : fIsCutting(isCutting), fIsWhiteSpace(separator == UnicodeString(u"\\s+")), fSeparator(separator) {}

bool Cutter::IsUsable() const {
    return !fIsCutting || fSeparator.IsUsable();
}

bool Cutter::Cut(const UnicodeString& text, Effort& effort, std::vector<Token>& tokens) const {
    tokens.clear();
    if (!effort.Spend(text.length() + 1)) {
        return false;
    }
    if (!fIsCutting) {
        tokens.push_back({0, text.length()});
        return true;
    }
    if (fIsWhiteSpace) {
        CutAtWhiteSpace(text, tokens);
        return true;
    }
    return CutAtMatches(text, effort, tokens);
}

bool Cutter::CutAtMatches(const UnicodeString& text, Effort& effort, std::vector<Token>& tokens) const {
    Regex regex(fSeparator);
    regex.Start(text, &effort);
    std::int32_t begin = 0;
    std::optional<bool> found;
    while ((found = regex.Find()).value_or(false)) {
        AddToken(text, {begin, regex.Begin()}, tokens);
        begin = regex.End();
    }
    AddToken(text, {begin, text.length()}, tokens);
    return found.has_value();
}

/// No text is so long that a greater distance would tell more.
Distances::Distances(int most, Effort& effort)
    : fMost(std::clamp(most, -1, static_cast<int>(kLongestText))), fEffort(effort) {}

int Distances::Of(const std::vector<std::u16string_view>& tokens, std::size_t first,
                  const std::vector<std::u16string_view>& term) {
    if (first + term.size() > tokens.size()) {
        return fMost + 1;
    }
    int sum = 0;
    for (std::size_t i = 0; i < term.size() && sum <= fMost; ++i) {
        sum += Between(tokens[first + i], term[i], fMost - sum);
    }
    return sum;
}

/// The rows of the usual table, as far as they lie near enough to its diagonal.
int Distances::Between(std::u16string_view left, std::u16string_view right, int most) {
    if (left == right || most <= 0) {
        return !fEffort.Spend(1) || left != right ? most + 1 : 0;
    }
    Decode(left, fLeft);
    Decode(right, fRight);
    const int height = static_cast<int>(fLeft.size());
    const int width = static_cast<int>(fRight.size());
    const std::int64_t band = std::min<std::int64_t>(2 * static_cast<std::int64_t>(most) + 1, width);
    if (std::abs(height - width) > most || !fEffort.Spend(height * band + height + width)) {
        return most + 1;
    }
    fRow.resize(static_cast<std::size_t>(width) + 1);
    for (int column = 0; column <= width; ++column) {
        fRow[static_cast<std::size_t>(column)] = std::min(column, most + 1);
    }
    for (int row = 1; row <= height; ++row) {
        const int from = std::max(1, row - most);
        const int to = std::min(width, row + most);
        int diagonal = fRow[static_cast<std::size_t>(from - 1)];
        fRow[static_cast<std::size_t>(from - 1)] = from == 1 ? std::min(row, most + 1) : most + 1;
        for (int column = from; column <= to; ++column) {
            const auto at = static_cast<std::size_t>(column);
            const int exchanged = diagonal + (fLeft[static_cast<std::size_t>(row - 1)] == fRight[at - 1] ? 0 : 1);
            diagonal = fRow[at];
            fRow[at] = std::min({exchanged, fRow[at] + 1, fRow[at - 1] + 1, most + 1});
        }
    }
    return fRow.back();
}

} // namespace veltrane_kit::standard
