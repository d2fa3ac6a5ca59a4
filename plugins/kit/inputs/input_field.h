#ifndef VELTRANE_PLUGINS_KIT_INPUT_FIELD_H
#define VELTRANE_PLUGINS_KIT_INPUT_FIELD_H

#include "kit/columns/block.h"
#include "kit/inputs/data_field.h"
#include "kit/inputs/mining_schema.h"
#include "kit/inputs/value_codes.h"

#include <MCVeltrane_900/ScoreValue.h>

#include <cstdint>
#include <string>
#include <string_view>
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

    /// Treats a value that an outer model has treated before: a missing one is replaced, an invalid one that the outer
    /// model takes as it is is treated as such, a number may lie beyond the bounds.
    /// @return false for a value with which the case can't be scored; `value` is then missing
    bool ReadTreated(const FieldValue& outer, FieldValue& value) const;

    enum class Repeats { ARE_LEFT, ARE_FOUND };

    /// Reads and treats the values of a block of cases, each as Read() does.
    /// @param column  of the block's rows; its texts and numbers have to stay as long as the block
    /// @param slot    of the field in the block
    /// @param refused set to 1 for rows for which Read() gives false; null when nobody asks
    /// @param repeats whether texts that come again are worth finding, so that what is computed of them is computed
    /// once
    void ReadBlock(const veltrane::InputColumn& column, Block& block, int slot, std::uint8_t* refused,
                   Repeats repeats = Repeats::ARE_LEFT) const;

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

    /// Numbers of a field that stay what they are: those between two bounds, and perhaps not a number.
    struct PlainNumbers {
        bool areKnown = false; ///< else every number is treated by itself
        double least = 0.0;
        double greatest = 0.0;
        double missing = 1.0; ///< whether not a number is odd: 1 or 0
        /// Adding and taking away so much leaves the numbers that the field holds as they are, and of others up to 2 to
        /// the power of 51 none.
        double rounding = 0.0;

        static constexpr double kRoundingToWhole = 6755399441055744.0;

        /// 1 for a number that isn't one of them, else 0.
        double operator()(double x) const {
            const double rounded = (x + rounding) - rounding;
            double odd = x >= least ? 0.0 : 1.0;
            odd = x <= greatest ? odd : 1.0;
            odd = x != FieldValue::kMissingNumber ? odd : 1.0;
            odd = rounded == x ? odd : 1.0;
            return x != x ? missing : odd;
        }

        /// The same for a single one that is a number.
        bool Hold(double x) const {
            return areKnown && x >= least && x <= greatest && x != FieldValue::kMissingNumber &&
                   (x + rounding) - rounding == x;
        }
    };

    bool ReadAny(const MCVeltrane_900::ScoreValue* raw, FieldValue& value) const;
    bool ReadNumber(double number, FieldValue& value) const;
    bool ReadPlainText(std::string_view text, FieldValue& value) const;
    bool ReadText(std::string_view text, FieldValue& value) const;
    bool TreatOutlier(FieldValue& value) const;
    bool IsAllowedNumber(double number, int code) const;
    void SetTreatment(const MiningField& schema);
    void SetStandIn(StandIn& standIn, const std::optional<std::string>& text);
    void SetBound(StandIn& standIn, double bound);
    void RenewCodes();
    Value ValueOf(const MCVeltrane_900::ScoreValue* raw) const;
    bool Treat(const MCVeltrane_900::ScoreValue* raw, FieldValue& value) const;
    bool IsMissingValue(const Value& value, const MCVeltrane_900::ScoreValue* raw) const;
    bool IsAllowed(const Value& value, int code) const;
    bool GiveMissing(FieldValue& value) const;
    bool GiveInvalid(FieldValue& value) const;

    // Blocks, in input_column.cpp.
    class Room;
    class Rows;
    struct Entries;
    PlainNumbers FindPlainNumbers() const;
    bool ReadRow(double number, FieldValue& value) const;
    bool ReadRow(std::string_view text, FieldValue& value) const;
    void ReadNumbers(const veltrane::InputColumn& column, Rows& rows) const;
    bool ReadUnreadable(std::string_view text, FieldValue& value) const;
    void ReadTexts(const std::string_view* texts, Rows& rows) const;
    void ReadEntries(const veltrane::InputColumn& column, Rows& rows) const;
    bool ReadRepeats(const std::string_view* texts, Rows& rows) const;
    void TakeEntry(std::size_t row, std::int32_t place, std::string_view text, Rows& rows) const;
    void ReadNothing(Rows& rows) const;

    const DataField* fField;
    DataType fType;
    PlainNumbers fPlain;
    bool fHoldsNumbers;                  ///< of a type of numbers
    bool fHoldsWholeNumbers;             ///< of these, integers
    std::vector<double> fMissingNumbers; ///< of a field of numbers, those that count as missing
    std::vector<double> fInvalidNumbers; ///< and those that it lists as invalid
    ValueCodes fCodes;                   ///< the valid values that the document lists come first
    int fListed = 0;
    bool fNeedsCode = false;
    bool fChecksValues = false;  ///< whether the document says which values are allowed
    bool fHasMissing = false;    ///< whether it says which are missing
    bool fHasPlainTexts = false; ///< whether its texts have only to be among the listed ones
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
