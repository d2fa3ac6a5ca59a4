#include "kit/functions/text_index.h"

#include "kit/functions/text_normalization.h"
#include "kit/functions/texts/tokens.h"
#include "kit/functions/texts/transcoder.h"

#include <unicode/locid.h>

#include <algorithm>
#include <cmath>
#include <string_view>
#include <unordered_map>

namespace veltrane_kit {

using icu::UnicodeString;
using standard::Cutter;
using standard::Distances;
using standard::Effort;
using standard::Transcoder;

namespace {

/// What one evaluation may cost, in steps: so many, and so many more for each unit of the text and the term, by the
/// number of replacements that each of them goes through.
constexpr std::int64_t kSteps = 2'000'000;
constexpr std::int64_t kStepsOfUnit = 100;
constexpr std::int64_t kStepsOfReplacement = 8;

using Views = std::vector<std::u16string_view>;

bool CutIntoViews(const Cutter& cutter, const UnicodeString& text, Effort& effort, Views& views) {
    std::vector<standard::Token> tokens;
    if (!cutter.Cut(text, effort, tokens)) {
        return false;
    }
    views.reserve(tokens.size());
    for (const standard::Token& token : tokens) {
        views.push_back(standard::TextOf(text, token));
    }
    return true;
}

double CountOfCommonest(const Views& tokens) {
    std::unordered_map<std::u16string_view, std::size_t> counts;
    std::size_t most = 0;
    for (const std::u16string_view& token : tokens) {
        most = std::max(most, ++counts[token]);
    }
    return static_cast<double>(most);
}

/// @param countsBest only the hits of the least distance
double CountHits(const Views& tokens, const Views& term, int mostDistance, bool countsBest, Effort& effort) {
    if (term.empty()) {
        return 0.0;
    }
    Distances distances(mostDistance, effort);
    int least = distances.Most();
    std::size_t hits = 0;
    for (std::size_t first = 0; first + term.size() <= tokens.size(); ++first) {
        const int distance = distances.Of(tokens, first, term);
        if (distance > distances.Most() || (countsBest && distance > least)) {
            continue;
        }
        hits = countsBest && distance < least ? 1 : hits + 1;
        least = std::min(least, distance);
    }
    return static_cast<double>(hits);
}

} // namespace

struct TextIndex::Parts {
    Parts(const Settings& settings, const std::string& nameOfEncoding, const Transcoder& transcoder)
        : weight(settings.weight), isCaseSensitive(settings.comparison.isCaseSensitive),
          mostDistance(settings.comparison.mostDistance), countsBestHits(settings.countsBestHits),
          cutter(transcoder.Read(settings.comparison.separator), settings.comparison.isCutIntoTokens),
          encoding(nameOfEncoding) {
        isUsable = cutter.IsUsable();
        for (const Normalization& each : settings.normalizations) {
            normalizations.emplace_back(each, transcoder);
            stepsOfUnit += kStepsOfReplacement * static_cast<std::int64_t>(each.rows.size());
            isUsable = isUsable && normalizations.back().IsUsable();
        }
    }

    bool Prepare(UnicodeString& text, Effort& effort) const {
        for (const TextNormalization& each : normalizations) {
            if (!each.Run(text, effort)) {
                return false;
            }
        }
        if (!isCaseSensitive) {
            text.toLower(icu::Locale::getRoot());
        }
        return true;
    }

    Value WeightOf(double hits, const Views& tokens) const {
        switch (weight) {
        case Weight::BINARY:
            return MakeNumber(hits > 0.0 ? 1.0 : 0.0, DataType::INTEGER);
        case Weight::LOGARITHMIC:
            return MakeNumber(std::log10(1.0 + hits), DataType::DOUBLE);
        case Weight::AUGMENTED:
            return MakeNumber(hits > 0.0 ? (1.0 + hits / CountOfCommonest(tokens)) / 2.0 : 0.0, DataType::DOUBLE);
        default:
            return MakeNumber(hits, DataType::INTEGER);
        }
    }

    Weight weight;
    bool isCaseSensitive;
    int mostDistance;
    bool countsBestHits;
    Cutter cutter;
    std::vector<TextNormalization> normalizations;
    std::string encoding;
    std::int64_t stepsOfUnit = kStepsOfUnit;
    bool isUsable;
};

TextIndex::TextIndex(const Settings& settings, const std::string& encoding)
    : fParts(std::make_unique<const Parts>(settings, encoding, Transcoder(encoding))) {}

TextIndex::~TextIndex() = default;

Value TextIndex::Evaluate(const Value& text, const Value& term) const {
    const Parts& parts = *fParts;
    const bool isCount = parts.weight == Weight::TERM_FREQUENCY || parts.weight == Weight::BINARY;
    const Value missing = MakeMissing(isCount ? DataType::INTEGER : DataType::DOUBLE);
    if (!parts.isUsable || text.isMissing || term.isMissing) {
        return missing;
    }
    const Transcoder transcoder(parts.encoding);
    std::string buffer;
    UnicodeString where = transcoder.Read(TextOf(text, buffer));
    UnicodeString what = transcoder.Read(TextOf(term, buffer));
    Effort effort(kSteps + parts.stepsOfUnit * (static_cast<std::int64_t>(where.length()) + what.length()));
    Views tokens;
    Views wanted;
    if (!parts.Prepare(where, effort) || !parts.Prepare(what, effort) ||
        !CutIntoViews(parts.cutter, where, effort, tokens) || !CutIntoViews(parts.cutter, what, effort, wanted)) {
        return missing;
    }
    const double hits = CountHits(tokens, wanted, parts.mostDistance, parts.countsBestHits, effort);
    return effort.Spend(0) ? parts.WeightOf(hits, tokens) : missing;
}

} // namespace veltrane_kit
