#ifndef VELTRANE_PLUGINS_KIT_DICTIONARY_COMPLETION_H
#define VELTRANE_PLUGINS_KIT_DICTIONARY_COMPLETION_H

#include "kit/document/element.h"
#include "kit/inputs/validity.h"

#include <optional>
#include <string>

namespace veltrane_kit {

/// The part of Complete() that concerns the data dictionary.
/// @return what the fields declare of their values, by name
DeclaredValidities CompleteDictionary(const Element& dictionary);

/// Whether a field or a constant is boolean by its type.
bool IsBoolean(const Element& element);

/// Whether a DataField or a DerivedField was boolean before it was completed to a text, and what marks it as one.
bool IsCompletedBoolean(const Element& field);
void MarkBoolean(const Element& field);

/// The truth value that a text stands for, in any case of its letters: 1 for "true" and "1", 0 for "false" and "0".
std::optional<double> TruthOf(const std::string& text);

/// Whether the values of a DataField or DerivedField are texts.
bool HoldsText(const Element& field);

} // namespace veltrane_kit

#endif
