#include "kit/functions/text_normalization.h"

#include "kit/functions/texts/bounds.h"

#include <unicode/locid.h>

#include <algorithm>
#include <string_view>

namespace veltrane_kit {

using icu::UnicodeString;
using standard::Distances;
using standard::Effort;
using standard::Token;
using standard::Transcoder;

namespace {

constexpr int kMostRounds = 1000;

/// An expression for a text as it stands, between blanks or ends of the text; some punctuation may follow it.
UnicodeString LiteralPattern(const UnicodeString& text) {
    UnicodeString pattern(u"(?:(?<=^)|(?<=\\s))");
    for (std::int32_t at = 0; at < text.length(); ++at) {
        const char16_t unit = text[at];
        const bool isPlain = unit > u'~' || (unit >= u'0' && unit <= u'9') || (unit >= u'A' && unit <= u'Z') ||
                             (unit >= u'a' && unit <= u'z');
        if (!isPlain) {
            pattern.append(u'\\');
        }
        pattern.append(unit);
    }
    return pattern.append(UnicodeString(u"(?=\\s|$|[.,;:!?])"));
}

/// The tokens of a text, as they are compared.
struct Tokens {
    std::vector<Token> places;
    std::vector<UnicodeString> texts;
    std::vector<std::u16string_view> views;

    bool Cut(const standard::Cutter& cutter, const UnicodeString& text, bool isCaseSensitive, Effort& effort) {
        if (!cutter.Cut(text, effort, places)) {
            return false;
        }
        texts.clear();
        for (const Token& place : places) {
            texts.push_back(text.tempSubStringBetween(place.begin, place.end));
            if (!isCaseSensitive) {
                texts.back().toLower(icu::Locale::getRoot());
            }
        }
        views.clear();
        for (const UnicodeString& each : texts) {
            views.emplace_back(each.getBuffer(), static_cast<std::size_t>(each.length()));
        }
        return true;
    }
};

} // namespace

TextNormalization::TextNormalization(const TextIndex::Normalization& table, const Transcoder& transcoder)
    : fCutter(transcoder.Read(table.comparison.separator), table.comparison.isCutIntoTokens),
      fMostDistance(table.comparison.mostDistance), fIsCaseSensitive(table.comparison.isCaseSensitive),
      fIsRecursive(table.isRecursive) {
    for (const TextIndex::Replacement& each : table.rows) {
        Row row{{}, transcoder.Read(each.what), transcoder.Read(each.by), each.isRegex};
        if (!IsByDistance(row)) {
            row.pattern = standard::Pattern(row.isRegex ? row.what : LiteralPattern(row.what), fIsCaseSensitive);
            fIsUsable = fIsUsable && row.pattern.IsUsable();
        }
        fRows.push_back(std::move(row));
    }
    const bool isCut = std::any_of(fRows.begin(), fRows.end(), [this](const Row& row) { return IsByDistance(row); });
    fIsUsable = fIsUsable && (!isCut || fCutter.IsUsable());
}

bool TextNormalization::Run(UnicodeString& text, Effort& effort) const {
    if (!fIsRecursive) {
        return RunOnce(text, effort);
    }
    for (int round = 0; round < kMostRounds; ++round) {
        const UnicodeString before = text;
        if (!RunOnce(text, effort)) {
            return false;
        }
        if (text == before) {
            return true;
        }
    }
    return false;
}

bool TextNormalization::RunOnce(UnicodeString& text, Effort& effort) const {
    UnicodeString outcome;
    for (const Row& row : fRows) {
        if (IsByDistance(row)) {
            if (!ReplaceNear(row, text, effort)) {
                return false;
            }
            continue;
        }
        standard::Regex regex(row.pattern);
        regex.Start(text, &effort);
        if (!effort.Spend(text.length() + 1) || !regex.ReplaceAll(row.by, !row.isRegex, outcome)) {
            return false;
        }
        text = outcome;
    }
    return true;
}

/// Replaces the runs of tokens that are near enough, from the left, none of which overlap.
bool TextNormalization::ReplaceNear(const Row& row, UnicodeString& text, Effort& effort) const {
    Tokens tokens;
    Tokens wanted;
    if (!tokens.Cut(fCutter, text, fIsCaseSensitive, effort) ||
        !wanted.Cut(fCutter, row.what, fIsCaseSensitive, effort)) {
        return false;
    }
    const std::size_t length = wanted.views.size();
    if (length == 0) {
        return true;
    }
    Distances distances(fMostDistance, effort);
    UnicodeString outcome;
    std::int32_t behind = 0;
    for (std::size_t at = 0; at + length <= tokens.views.size();) {
        if (distances.Of(tokens.views, at, wanted.views) > fMostDistance) {
            ++at;
            continue;
        }
        const std::int32_t begin = tokens.places[at].begin;
        outcome.append(text, behind, begin - behind).append(row.by);
        behind = tokens.places[at + length - 1].end;
        at += length;
        if (outcome.length() > static_cast<std::int32_t>(standard::kLongestText)) {
            return false;
        }
    }
    text = outcome.append(text, behind, text.length() - behind);
    return effort.Spend(0) && text.length() <= static_cast<std::int32_t>(standard::kLongestText);
}

} // namespace veltrane_kit
