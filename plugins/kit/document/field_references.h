#ifndef VELTRANE_PLUGINS_KIT_FIELD_REFERENCES_H
#define VELTRANE_PLUGINS_KIT_FIELD_REFERENCES_H

#include <MCVeltrane_900/TransformVar.h>
#include <MCVeltrane_900/TransformationDictionary.h>

#include <string>
#include <vector>

namespace veltrane_kit {

/// The names of the fields that the expression of a derived field reads, derived ones too, each once.
std::vector<std::string> ReferencedFields(const MCVeltrane_900::TransformVar& derived);

/// The names of the fields that have to come from a case for some derived fields, which read them themselves or through
/// other derived fields. Each is there once, in the order in which it is met.
/// @param names of derived fields; others stand for themselves
/// @param derived the dictionary of all derived fields
std::vector<std::string> CaseFieldsOf(const std::vector<std::string>& names,
                                      const MCVeltrane_900::TransformationDictionary& derived);

} // namespace veltrane_kit

#endif
