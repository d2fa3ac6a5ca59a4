#ifndef VELTRANE_TRANSLATORS_LABEL_CHECKS_H
#define VELTRANE_TRANSLATORS_LABEL_CHECKS_H

#include <vector>

namespace MCVeltrane_900 {
class ScoreDictVar;
class ScoreValueLabel;
} // namespace MCVeltrane_900

/// What the labels of a variable have to be, whichever element they came from.
namespace veltrane::translators {

/// @throws VTException 260271 for a flag variable with more than two categories
void CheckCategoryCount(const MCVeltrane_900::ScoreDictVar& var);

/// Which of a variable's labels share their value with another one, found without comparing each with each. Strings are
/// compared under the variable's blank rules, other values by their operator; all labels have values of one
/// kind, or null, which equals nothing.
/// @return for each label whether another one has an equal value
std::vector<bool> FindDuplicateLabels(const MCVeltrane_900::ScoreDictVar& var,
                                      const std::vector<MCVeltrane_900::ScoreValueLabel*>& labels);

/// Checks label by label, in their order.
/// @param var has labels
/// @throws VTException 260294 for a label whose value is missing, 260203 for one whose value another label has
void CheckLabels(const MCVeltrane_900::ScoreDictVar& var);

} // namespace veltrane::translators

#endif
