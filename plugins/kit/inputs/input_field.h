#ifndef VELTRANE_PLUGINS_KIT_INPUT_FIELD_H
#define VELTRANE_PLUGINS_KIT_INPUT_FIELD_H

#include "kit/document/categories.h"
#include "kit/document/mining_schema.h"
#include "kit/inputs/validity.h"

#include <MCVeltrane_900/NumericValue.h>

#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace veltrane_kit {

/// What a model reads of one field for the case at hand. Borrowed until the next case.
struct FieldValue {
    static constexpr double kMissingNumber = -std::numeric_limits<double>::max();

    const MCVeltrane_900::ScoreValue* value = nullptr; ///< null for a missing value
    double number = kMissingNumber;      ///< of numbers and date-times; SYSMIS for a missing value and texts
    int category = Categories::kUnknown; ///< code, in fields that the model asks codes of

    bool IsMissing() const { return value == nullptr; }
};

/// One input field of a model and the treatment of its values: missing, invalid, outlying ones and their replacements.
class InputField {
public:
    /// @param var      the field in the data dictionary, borrowed for the life of this object
    /// @param schema   how the model uses it; null for a field that the schema doesn't treat
    /// @param validity what the document declares; null for nothing
    InputField(const MCVeltrane_900::ScoreDictVar& var, const MiningField* schema, const DeclaredValidity* validity);

    const MCVeltrane_900::ScoreDictVar& Var() const { return *fVar; }

    /// The code of a category that the model mentions, learned if need be. Cases have a code from the first call on.
    int CategoryOf(const MCVeltrane_900::ScoreValue& category);

    /// Reads a case's value and treats it.
    /// @param raw the value in the case; null for none
    /// @return false for a value with which the case can't be scored; `field` is then of no use
    bool Read(const MCVeltrane_900::ScoreValue* raw, FieldValue& field) const;

    /// Whether a case lacks a value: none, a missing one, or what the field takes for that. Anything else is a value,
    /// allowed or not.
    /// @param raw the value in the case; null for none
    bool IsMissing(const MCVeltrane_900::ScoreValue* raw) const;

    /// Whether a case without the field is the same as any with it: its only value stands in for a missing one.
    bool SaysNothing() const;

    /// What derived fields find in the place of a missing value: never a value that they would take for a present one.
    const MCVeltrane_900::ScoreValue* MissingPlaceholder() const { return fPlaceholder.get(); }

private:
    /// A value that stands in for others, with what is known of it.
    struct StandIn {
        std::unique_ptr<MCVeltrane_900::ScoreValue> value;
        FieldValue field;
    };

    void DeclareValid(const DeclaredValidity& validity);
    void SetStandIn(StandIn& standIn, const MCVeltrane_900::ScoreValue* value);
    bool ReadNumber(const MCVeltrane_900::ScoreValue& raw, FieldValue& field) const;
    bool ReadText(const MCVeltrane_900::ScoreValue& raw, FieldValue& field) const;
    bool IsMissingNumber(const MCVeltrane_900::ScoreValue& raw, double number) const;
    bool IsMissingText(const MCVeltrane_900::ScoreValue& raw, const std::string& text) const;
    bool IsBlank(const std::string& text) const;
    bool GiveMissing(FieldValue& field) const;
    bool GiveInvalid(FieldValue& field, bool& goesOn) const;
    bool IsAllowedNumber(double number, int category) const;
    bool IsAllowedCategory(int category) const;

    const MCVeltrane_900::ScoreDictVar* fVar;
    MCVeltrane_900::ScoreValue::ValueType fKind;
    Categories fCategories;
    Categories fInvalid;
    int fDeclaredCategories = 0; ///< codes below this are those that the document lists as valid
    std::vector<ValidInterval> fIntervals;
    bool fNeedsCategory = false;
    bool fChecksNumbers = false; ///< whether the document says which numbers are allowed
    bool fHasMissingSet = false;
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
    std::unique_ptr<MCVeltrane_900::ScoreValue> fPlaceholder;
};

} // namespace veltrane_kit

#endif
