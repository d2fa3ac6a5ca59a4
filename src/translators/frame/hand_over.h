#ifndef VELTRANE_TRANSLATORS_HAND_OVER_H
#define VELTRANE_TRANSLATORS_HAND_OVER_H

#include <memory>

namespace MCVeltrane_900 {
class BaseDictionary;
class ScoreDictVar;
class ScoreMissingValueSet;
class ScoreValueRange;
} // namespace MCVeltrane_900

/// Handing objects to owners that may refuse them. What is refused is deleted.
namespace veltrane::translators {

/// Adds a variable under its name. A name that no variable can be stored under leaves the dictionary as it is.
void AddVar(MCVeltrane_900::BaseDictionary& dictionary, std::unique_ptr<MCVeltrane_900::ScoreDictVar> var);

/// Adds a range to a set, which refuses one that it has already.
void AddRange(MCVeltrane_900::ScoreMissingValueSet& missing, std::unique_ptr<MCVeltrane_900::ScoreValueRange> range);

} // namespace veltrane::translators

#endif
