#ifndef VELTRANE_PLUGINS_KIT_DICTIONARY_COMPLETION_H
#define VELTRANE_PLUGINS_KIT_DICTIONARY_COMPLETION_H

#include "kit/element.h"
#include "kit/validity.h"

namespace veltrane_kit {

/// The part of Complete() that concerns the data dictionary.
/// @return what the fields declare of their values, by name
DeclaredValidities CompleteDictionary(const Element& dictionary);

/// Whether a field or a constant is boolean by its type.
bool IsBoolean(const Element& element);

/// Whether a DataField was boolean before it was completed.
bool IsCompletedBoolean(const Element& dataField);

/// Whether the values of a DataField or DerivedField are texts.
bool HoldsText(const Element& field);

} // namespace veltrane_kit

#endif
