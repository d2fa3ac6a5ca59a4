#ifndef VELTRANE_TRANSLATORS_FIELD_VALUES_H
#define VELTRANE_TRANSLATORS_FIELD_VALUES_H

#include "translators/frame/document_text.h"
#include "translators/frame/invalid_range.h"

#include <MCVeltrane_900/MissingValueSet.h>
#include <MCVeltrane_900/PMMLTranslator.h>
#include <MCVeltrane_900/ValueLabelSet.h>

#include <memory>
#include <span>
#include <string>
#include <vector>

namespace veltrane::translators {

/// What the children of one DataField list: valid values, missing values and bounds of missing values. It collects them
/// for the variable and hands them over in the end. Borrows all that it is made with.
class FieldValues {
public:
    /// @param var            its name, level and type are set
    /// @param isTypeExplicit whether the document says how the field is stored
    FieldValues(MCVeltrane_900::PMMLTranslator& translator, const DocumentText& text, MCVeltrane_900::ScoreDictVar& var,
                bool isTypeExplicit);

    MCVeltrane_900::ScoreDictVar& Var() const { return fVar; }
    std::string Text(const XMLCh* text) const { return fText(text); }

    /// Whether the variable is numeric.
    bool IsNumeric() const;

    /// Whether the variable is numeric and known to be: the document says so, or a value was read as a number.
    bool IsKnownNumeric() const { return IsNumeric() && fIsTypeExplicit; }

    /// A missing value from its text.
    /// @throws VTException 260151 for a text that the variable cannot hold
    void AddMissing(const XMLCh* text);

    /// A valid value from its text, with its label: the element's displayValue, or the text itself without one.
    /// @throws VTException 260151
    void AddValid(const xercesc::DOMElement* element, const XMLCh* text);

    /// A bound of the missing values.
    /// @throws VTException 260151
    void SetLowerBound(const XMLCh* value);
    void SetUpperBound(const XMLCh* value);

    /// The missing set, which then counts as used.
    MCVeltrane_900::ScoreMissingValueSet* UseMissing();

    /// Adds the range between the bounds, when there are any.
    /// @throws VTException 260272 for a bound that came twice
    void AddBounds();

    /// The first missing text that, case aside, is a valid one too; null when there is none.
    const XMLCh* FindConflict() const;

    /// Gives the variable its labels, or marks it as having none.
    /// @return whether there are labels
    bool HandOverLabels();

    /// @throws VTException 260294 for a label whose value is missing, 260203 for one whose value another label has
    void CheckLabels() const;

    /// Gives the variable its missing set, when it is used.
    void HandOverMissing();

private:
    MCVeltrane_900::PMMLTranslator& fTranslator;
    const DocumentText& fText;
    MCVeltrane_900::ScoreDictVar& fVar;
    bool fIsTypeExplicit;

    std::unique_ptr<MCVeltrane_900::ScoreValueLabelSet> fLabels;
    std::unique_ptr<MCVeltrane_900::ScoreMissingValueSet> fMissing;
    bool fIsMissingUsed;

    // Attribute texts as they stand in the document.
    std::vector<const XMLCh*> fMissingTexts;
    std::vector<const XMLCh*> fValidTexts;

    InvalidRange fInvalid;
};

/// What an Extension child of this name does with its value.
struct ExtensionRule {
    const char* name;
    void (*apply)(FieldValues& values, const XMLCh* value);
};

/// Applies the rule of the Extension's name.
/// @return false when there is none
bool ApplyRule(std::span<const ExtensionRule> rules, FieldValues& values, const xercesc::DOMElement* extension);

/// Read the children of a field, in document order, and complete its variable.
/// @throws VTException for the first fault; the variable is then half set
void ReadCategoricalChildren(const xercesc::DOMElement* field, FieldValues& values);
void ReadContinuousChildren(const xercesc::DOMElement* field, FieldValues& values);

} // namespace veltrane::translators

#endif
