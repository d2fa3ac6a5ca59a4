#ifndef VELTRANE_PLUGINS_KIT_DICTIONARY_COMPLETION_H
#define VELTRANE_PLUGINS_KIT_DICTIONARY_COMPLETION_H

#include "kit/document/element.h"

#include <MCVeltrane_900/ScoreDictionary.h>

namespace veltrane_kit {

/// Completes a DataDictionary in place, so that the library's reader takes what producers of models write. What the
/// fields say of their values has been read before (ReadDataFields); the library's dictionary tells hosts the names,
/// the kinds and the categories:
///
/// - the number of fields, where there is none, and a Taxonomy is dropped;
/// - boolean fields become texts with the categories "true" and "false";
/// - the empty text becomes a missing value of text fields that don't list it;
/// - intervals and invalid values are dropped, as the dictionary would take them for missing, and so are missing values
///   of fields that hold no texts, values that aren't of the field's type, and those that come twice.
void CompleteDictionary(const Element& dictionary);

/// Gives each Target what documents leave to the mining schema and the dictionary: the name of the target field, and
/// the level that its field has.
/// @param name of the target field; empty for none
void CompleteTargets(const Element& model, const std::string& name, const MCVeltrane_900::ScoreDictionary& dictionary);

/// The Targets of fields as the library's reader takes them, to be read into the dictionary: of a continuous field the
/// first default value alone, of others the values that the reader has a way to keep. The model goes by its own Target.
/// @return an element of the same document; null for none
xercesc::DOMElement* CopyOfTargets(const Element& model, const MCVeltrane_900::ScoreDictionary& dictionary);

} // namespace veltrane_kit

#endif
