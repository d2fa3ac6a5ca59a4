#ifndef VELTRANE_PLUGINS_KIT_ELEMENT_RULES_H
#define VELTRANE_PLUGINS_KIT_ELEMENT_RULES_H

#include "kit/document/element.h"

/// What several attributes or children of an element have to fulfil together. Each is called when the attributes of the
/// element and of all below it are known to be as Elements.def has them, and throws a VTException for what isn't
/// lawful.
namespace veltrane_kit {

/// The valid values that a field of numbers lists are numbers.
void CheckListedNumbers(const Element& dataField);

/// An Interval has a margin, and the left one isn't above the right one.
void CheckMargins(const Element& interval);

/// One expression, no less and no more; any number up to one; one that gives the term of a TextIndex.
void CheckOneExpression(const Element& field);
void CheckAnyExpression(const Element& field);
void CheckOneTerm(const Element& textIndex);

/// A function has one expression, and no two parameters of the same name.
void CheckFunction(const Element& defineFunction);

/// The text of a Constant is of its type. An empty one is, and so is any where the Constant stands for what is missing.
void CheckContent(const Element& constant);

/// A NormContinuous has two points or more, which go up.
void CheckPoints(const Element& normContinuous);

/// A DiscretizeBin has one Interval.
void CheckBin(const Element& bin);

/// Where an expression gives numbers, what it gives in a bin, in a row of its table or instead of a value is one.
void CheckBinValues(const Element& discretize);
void CheckResult(const Element& apply);

/// The same of a table; and it has no two rows with the same keys and different values, and all columns that it is
/// asked for.
void CheckTable(const Element& mapValues);

/// The lower bound isn't above the upper one.
void CheckOutlierBounds(const Element& miningField);

/// The same of its bounds, and its prior probabilities aren't more than the whole.
void CheckTarget(const Element& target);

/// There is one Target for a field, and its values are among those that the dictionary lists for it.
void CheckTargets(const Element& targets);

} // namespace veltrane_kit

#endif
