#ifndef VELTRANE_PLUGINS_KIT_TEXT_INDEX_H
#define VELTRANE_PLUGINS_KIT_TEXT_INDEX_H

#include "kit/values/values.h"

#include <memory>
#include <string>
#include <vector>

namespace veltrane_kit {

/// How often a term stands in a text, after both were normalised.
///
/// Text and term are cut into tokens at matches of the separator, and ASCII punctuation at the ends of tokens is taken
/// off. A hit is a run of tokens whose distance to the term, by Levenshtein and summed over its tokens, is within the
/// bound. What costs more than texts and tables of their sizes warrant has no result.
class TextIndex {
public:
    enum class Weight {
        TERM_FREQUENCY, ///< the number of hits
        BINARY,         ///< 1 for a hit, else 0
        LOGARITHMIC,    ///< log10(1 + hits)
        AUGMENTED,      ///< (1 + hits / the count of the commonest token) / 2, and 0 without a hit
    };

    /// How tokens are found and compared.
    struct Comparison {
        bool isCaseSensitive = false;
        int mostDistance = 0;
        std::string separator = "\\s+"; ///< a regular expression
        bool isCutIntoTokens = true;
    };

    /// A row of a table: what is replaced, a regular expression or a run of tokens, and by what. "$1" in the
    /// replacement of a regular expression is its first group.
    struct Replacement {
        std::string what;
        std::string by;
        bool isRegex = false;
    };

    /// One table of replacements.
    struct Normalization {
        std::vector<Replacement> rows;
        Comparison comparison;
        bool isRecursive = false; ///< over and over until nothing changes
    };

    struct Settings {
        Weight weight = Weight::TERM_FREQUENCY;
        Comparison comparison;
        bool countsBestHits = false;               ///< only the hits of the least distance
        std::vector<Normalization> normalizations; ///< in the order in which they act
    };

    /// @param encoding of the settings and of all texts, as FunctionCall tells it
    TextIndex(const Settings& settings, const std::string& encoding);
    ~TextIndex();
    TextIndex(const TextIndex&) = delete;
    TextIndex& operator=(const TextIndex&) = delete;

    /// May be called from any thread.
    /// @return an INTEGER for hits and BINARY, else a DOUBLE; missing for a missing text or term, for settings with a
    ///         regular expression that doesn't compile, and for what costs too much
    Value Evaluate(const Value& text, const Value& term) const;

private:
    struct Parts;
    std::unique_ptr<const Parts> fParts;
};

} // namespace veltrane_kit

#endif
