#ifndef VELTRANE_TRANSLATORS_MEASURE_LEVELS_H
#define VELTRANE_TRANSLATORS_MEASURE_LEVELS_H

#include <MCVeltrane_900/ScoreDictVar.h>

#include <xercesc/util/XercesDefs.hpp>

#include <optional>

namespace veltrane::translators {

/// The level that an "optype" text names; nothing for any other text, the empty one included.
std::optional<MCVeltrane_900::ScoreDictVar::MeasureLevel> ReadMeasureLevel(const XMLCh* text);

/// The "optype" text of a level; empty for a number that is no level.
const char* MeasureLevelText(MCVeltrane_900::ScoreDictVar::MeasureLevel level);

} // namespace veltrane::translators

#endif
