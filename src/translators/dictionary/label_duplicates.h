#ifndef VELTRANE_TRANSLATORS_LABEL_DUPLICATES_H
#define VELTRANE_TRANSLATORS_LABEL_DUPLICATES_H

#include <vector>

namespace MCVeltrane_900 {
class ScoreDictVar;
class ScoreValueLabel;
} // namespace MCVeltrane_900

namespace veltrane::translators {

/// Which of a variable's labels share their value with another one, found without comparing each with each. Strings are
/// compared under the variable's blank rules, other values by their operator; all labels have values of one
/// kind, or null, which equals nothing.
/// @return for each label whether another one has an equal value
std::vector<bool> FindDuplicateLabels(const MCVeltrane_900::ScoreDictVar& var,
                                      const std::vector<MCVeltrane_900::ScoreValueLabel*>& labels);

} // namespace veltrane::translators

#endif
