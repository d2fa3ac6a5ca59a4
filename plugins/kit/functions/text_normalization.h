#ifndef VELTRANE_PLUGINS_KIT_TEXT_NORMALIZATION_H
#define VELTRANE_PLUGINS_KIT_TEXT_NORMALIZATION_H

#include "kit/functions/text_index.h"
#include "kit/functions/texts/tokens.h"
#include "kit/functions/texts/transcoder.h"

namespace veltrane_kit {

/// A table of replacements that texts go through before terms are looked for. Any thread may use it.
class TextNormalization {
public:
    TextNormalization(const TextIndex::Normalization& table, const standard::Transcoder& transcoder);

    /// False for a table with a regular expression that is none.
    bool IsUsable() const { return fIsUsable; }

    /// @return false when the effort is used up, a search has run out of its bounds, the text has become too long, or a
    ///         recursive table doesn't come to an end
    bool Run(icu::UnicodeString& text, standard::Effort& effort) const;

private:
    struct Row {
        standard::Pattern pattern; ///< not for one by distance
        icu::UnicodeString what;
        icu::UnicodeString by;
        bool isRegex;
    };

    bool IsByDistance(const Row& row) const { return !row.isRegex && fMostDistance > 0; }
    bool RunOnce(icu::UnicodeString& text, standard::Effort& effort) const;
    bool ReplaceNear(const Row& row, icu::UnicodeString& text, standard::Effort& effort) const;

    std::vector<Row> fRows;
    standard::Cutter fCutter;
    int fMostDistance;
    bool fIsCaseSensitive;
    bool fIsRecursive;
    bool fIsUsable = true;
};

} // namespace veltrane_kit

#endif
