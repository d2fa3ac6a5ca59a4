#ifndef VELTRANE_PLUGINS_KIT_COMPLETION_H
#define VELTRANE_PLUGINS_KIT_COMPLETION_H

#include "kit/document/element.h"
#include "kit/inputs/validity.h"

#include <set>
#include <string>

namespace veltrane_kit {

/// What a completed document holds beside its elements.
struct Completed {
    DeclaredValidities validities;  ///< of the fields of the data dictionary, taken out of it
    Element derivedFields;          ///< one element with all derived fields that the model can refer to
    std::set<std::string> booleans; ///< the fields, derived ones too, whose texts are truth values
};

/// Completes a document in place, so that the library's readers take what producers of models write:
///
/// - the number of fields, where the dictionary has none;
/// - a Taxonomy in the dictionary is dropped;
/// - boolean fields become texts with the categories "true" and "false";
/// - the empty text becomes a missing value of text fields that don't list it;
/// - intervals and invalid values leave the dictionary: the mining schema decides what becomes of a value outside,
///   while the dictionary would take it for missing;
/// - NormDiscrete becomes a function that is 1 in the cases that have its value, and 0 in the others;
/// - constants without a type that are no numbers become texts, boolean ones the number or the text that they stand
///   for;
/// - the derived fields of the TransformationDictionary and of the model's LocalTransformations come together;
/// - a Target without a field or a level has those of the model's target field, where there is one;
/// - a boolean among the numbers of an order comparison becomes 1 or 0.
///
/// docs/documents.md tells why. Everything else stays as it is, faults too.
Completed Complete(const Element& root, const Element& model);

} // namespace veltrane_kit

#endif
