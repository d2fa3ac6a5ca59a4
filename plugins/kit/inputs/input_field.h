#ifndef VELTRANE_PLUGINS_KIT_INPUT_FIELD_H
#define VELTRANE_PLUGINS_KIT_INPUT_FIELD_H

#include "kit/inputs/data_field.h"
#include "kit/inputs/mining_schema.h"
#include "kit/inputs/value_codes.h"

#include <MCVeltrane_900/ScoreValue.h>

#include <string>
#include <vector>

namespace veltrane_kit {

/// One input field of a model and the treatment of its values: missing, invalid, outlying ones and their replacements.
class InputField {
public:
    /// @param field  as the document has it, borrowed for the life of this object
    /// @param schema how the model uses it; null for a field that the schema doesn't treat
    InputField(const DataField& field, const MiningField* schema);

    const DataField& Definition() const { return *fField; }

    /// The code of a value that the model mentions, learned if need be. Cases have a code from the first call on.
    int CodeOf(const Value& value);

    /// Reads a case's value and treats it.
    /// @param raw the value in the case; null for none
    /// @return false for a value with which the case can't be scored; `value` is then missing
    bool Read(const MCVeltrane_900::ScoreValue* raw, FieldValue& value) const;

    /// Whether a case lacks a value: none, a missing one, or what the field takes for that. Anything else is a value,
    /// allowed or not.
    /// @param raw the value in the case; null for none
    bool IsMissing(const MCVeltrane_900::ScoreValue* raw) const;

    /// Whether a case without the field is the same as any with it: its only value stands in for a missing one.
    bool SaysNothing() const;

private:
    /// A value that stands in for others, with what is known of it.
    struct StandIn {
        OwnedValue kept;
        FieldValue value; ///< missing for none
    };

    bool ReadNumber(double number, FieldValue& value) const;
    bool ReadText(const std::string& text, FieldValue& value) const;
    bool TreatOutlier(FieldValue& value) const;
    bool IsAllowedNumber(double number, int code) const;
    void SetStandIn(StandIn& standIn, const std::optional<std::string>& text);
    void SetBound(StandIn& standIn, double bound);
    void RenewCodes();
    Value ValueOf(const MCVeltrane_900::ScoreValue* raw) const;
    bool Treat(const MCVeltrane_900::ScoreValue* raw, FieldValue& value) const;
    bool IsMissingValue(const Value& value, const MCVeltrane_900::ScoreValue* raw) const;
    bool IsAllowed(const Value& value, int code) const;
    bool GiveMissing(FieldValue& value) const;
    bool GiveInvalid(FieldValue& value) const;

    const DataField* fField;
    bool fHoldsNumbers;                  ///< of a type of numbers
    bool fHoldsWholeNumbers;             ///< of these, integers
    std::vector<double> fMissingNumbers; ///< of a field of numbers, those that count as missing
    std::vector<double> fInvalidNumbers; ///< and those that it lists as invalid
    ValueCodes fCodes;                   ///< the valid values that the document lists come first
    int fListed = 0;
    bool fNeedsCode = false;
    bool fChecksValues = false; ///< whether the document says which values are allowed
    bool fHasMissing = false;   ///< whether it says which are missing
    bool fEmptyIsMissing = true;
    bool fMissingRefused = false;
    InvalidTreatment fInvalidTreatment = InvalidTreatment::AS_IS;
    OutlierTreatment fOutliers = OutlierTreatment::AS_IS;
    double fLow;
    double fHigh;
    StandIn fMissingReplacement;
    StandIn fInvalidReplacement;
    StandIn fLowest;
    StandIn fHighest;
};

} // namespace veltrane_kit

#endif
