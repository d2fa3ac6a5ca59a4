#include "translators/dictionary/measure_levels.h"

#include "translators/frame/element_walk.h"

#include <MCVeltrane_900/PMMLModelTags.h>

namespace veltrane::translators {

using MCVeltrane_900::PMMLModelTags;
using MCVeltrane_900::ScoreDictVar;

namespace {

struct LevelWord {
    const char* text;
    ScoreDictVar::MeasureLevel level;
};

constexpr LevelWord kLevelWords[] = {
    {PMMLModelTags::XML_VAL_OT_CONTINUOUS, ScoreDictVar::LEVEL_CONTINUOUS},
    {PMMLModelTags::XML_VAL_OT_CATEGORICAL, ScoreDictVar::LEVEL_NOMINAL},
    {PMMLModelTags::XML_VAL_OT_ORDINAL, ScoreDictVar::LEVEL_ORDINAL},
};

} // namespace

std::optional<ScoreDictVar::MeasureLevel> ReadMeasureLevel(const XMLCh* text) {
    for (const LevelWord& word : kLevelWords) {
        if (Equals(text, word.text)) {
            return word.level;
        }
    }
    return std::nullopt;
}

const char* MeasureLevelText(ScoreDictVar::MeasureLevel level) {
    for (const LevelWord& word : kLevelWords) {
        if (word.level == level) {
            return word.text;
        }
    }
    return "";
}

} // namespace veltrane::translators
