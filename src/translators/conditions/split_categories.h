#ifndef VELTRANE_TRANSLATORS_SPLIT_CATEGORIES_H
#define VELTRANE_TRANSLATORS_SPLIT_CATEGORIES_H

#include <memory>
#include <string>

namespace MCVeltrane_900 {
class DiscreteSplit;
class ScoreDictVar;
class ScoreEncoder;
class ScoreValue;
class ScoreValueLabelSet;
} // namespace MCVeltrane_900

/// A variable's categories, and how one comes into a split.
namespace veltrane::translators {

/// The variable's listed values.
/// @throws VTException 260126 when the variable lists none
const MCVeltrane_900::ScoreValueLabelSet& RequireLabels(const MCVeltrane_900::ScoreDictVar& var);

/// Positions in the variable's listed values, both ends included; empty when `last` is below `first`.
struct CategorySpan {
    int first;
    int last;
    int excluded; ///< -1 for none
};

/// Puts the listed values of a span: into the store of values without an encoder, else into that of numbers, where the
/// key is the number itself or the code of a text. A variable without listed values puts nothing.
void PutCategories(MCVeltrane_900::DiscreteSplit& split, const MCVeltrane_900::ScoreDictVar& var,
                   const CategorySpan& span);

/// Whether a listed value has the empty text.
/// @throws VTException 260126 when the variable lists none
bool HasEmptyCategory(const MCVeltrane_900::ScoreDictVar& var);

/// The variable's encoder, which learns; null for none. A dictionary is lent as constant, and reading predicates
/// teaches its variables all the same.
MCVeltrane_900::ScoreEncoder* LearningEncoder(const MCVeltrane_900::ScoreDictVar& var);

/// Adds a category to a variable, unless the label is empty or the category is known.
void LearnCategory(const MCVeltrane_900::ScoreDictVar& var, std::unique_ptr<MCVeltrane_900::ScoreValue> category,
                   const std::string& label);

} // namespace veltrane::translators

#endif
