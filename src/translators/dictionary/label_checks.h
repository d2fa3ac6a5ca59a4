#ifndef VELTRANE_TRANSLATORS_LABEL_CHECKS_H
#define VELTRANE_TRANSLATORS_LABEL_CHECKS_H

namespace MCVeltrane_900 {
class ScoreDictVar;
} // namespace MCVeltrane_900

/// What the labels of a variable have to be, whichever element they came from.
namespace veltrane::translators {

/// @throws VTException 260271 for a flag variable with more than two categories
void CheckCategoryCount(const MCVeltrane_900::ScoreDictVar& var);

/// Checks label by label, in their order.
/// @param var has labels
/// @throws VTException 260294 for a label whose value is missing, 260203 for one whose value another label has
void CheckLabels(const MCVeltrane_900::ScoreDictVar& var);

} // namespace veltrane::translators

#endif
