#ifndef VELTRANE_TRANSLATORS_CATEGORY_ENCODER_H
#define VELTRANE_TRANSLATORS_CATEGORY_ENCODER_H

namespace MCVeltrane_900 {
class ScoreDictVar;
} // namespace MCVeltrane_900

namespace veltrane::translators {

/// Gives an ordinal or nominal variable an encoder of its kind of values, if it has none, and teaches it the variable's
/// categories in their order.
/// @param var may be null
/// @return false for a null or a continuous variable
bool SetupCategoryEncoder(MCVeltrane_900::ScoreDictVar* var);

} // namespace veltrane::translators

#endif
