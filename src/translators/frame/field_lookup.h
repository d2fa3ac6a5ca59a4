#ifndef VELTRANE_TRANSLATORS_FIELD_LOOKUP_H
#define VELTRANE_TRANSLATORS_FIELD_LOOKUP_H

#include <string>

namespace MCVeltrane_900 {
class ScoreDictVar;
class ScoreDictionary;
class TransformVar;
} // namespace MCVeltrane_900

namespace veltrane::translators {

/// The fields that an expression may refer to: those of the data dictionary first, then the derived fields that stand
/// ahead of it. Both dictionaries are borrowed and either may be null.
class FieldLookup {
public:
    FieldLookup(const MCVeltrane_900::ScoreDictionary* dictionary, const MCVeltrane_900::ScoreDictionary* derived)
        : fDictionary(dictionary), fDerived(derived) {}

    /// The field, or null.
    const MCVeltrane_900::ScoreDictVar* Find(const std::string& name) const;

    /// @throws VTException 260125 when there is no such field
    const MCVeltrane_900::ScoreDictVar& Require(const std::string& name) const;

private:
    const MCVeltrane_900::ScoreDictionary* fDictionary;
    const MCVeltrane_900::ScoreDictionary* fDerived;
};

/// The derived field that an expression's reader was given as a plain variable.
MCVeltrane_900::TransformVar& AsTransformVar(MCVeltrane_900::ScoreDictVar* var);

} // namespace veltrane::translators

#endif
