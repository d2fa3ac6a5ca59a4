#ifndef MCVELTRANE_900_SCOREDICTVAR_H
#define MCVELTRANE_900_SCOREDICTVAR_H

#include <veltrane_export.h>

#include <ostream>
#include <string>

namespace MCVeltrane_900 {

class ScoreEncoder;
class ScoreMissingValueSet;
class ScoreValue;
class ScoreValueLabelSet;
class ScoreValueProbabilitySet;
class ScoreVarStats;

/// One field of a case: its name, storage, measurement level, format, value sets, encoder and places in a case.
///
/// The numbers of the enumerations and the order of the virtual operations are part of the contract with plug-ins.
///
/// The setters of owned objects (SetVarStats, SetMissingValues, SetValueLabels, SetDefValue, SetValueProbabilities,
/// SetEncoder) take ownership of the new object and only overwrite the field: an object that was there already is not
/// deleted. Callers set each at most once, or delete the old one themselves.
class VELTRANE_API ScoreDictVar {
public:
    /// How the values of the variable are stored.
    enum VariableType : int {
        kNUMERIC_VAR = 0,
        STRING_VAR = 1,
        DATETIME_VAR = 4, ///< date, time or date-time; GetDateTimeType() tells which
    };

    /// The measurement level.
    enum MeasureLevel : int {
        LEVEL_CONTINUOUS = 0,
        LEVEL_ORDINAL = 1,
        LEVEL_NOMINAL = 2,
    };

    /// What kind of number a numeric variable holds.
    enum NumericDataType : int {
        NUM_UNSPECIFIED = 0,
        NUM_INTEGER = 1,
        NUM_DOUBLE = 2,
    };

    /// The storage type of a date, time or date-time; conversions test ranges of these numbers.
    enum DateTimeType : int {
        DT_NONE = 0,
        DT_DATE = 1,
        DT_TIME = 2,
        DT_DATETIME = 3,
        DT_DAYS_SINCE_0 = 4,
        DT_DAYS_SINCE_1960 = 5,
        DT_DAYS_SINCE_1970 = 6,
        DT_DAYS_SINCE_1980 = 7,
        DT_TIME_SECONDS = 8,
        DT_SECONDS_SINCE_0 = 9,
        DT_SECONDS_SINCE_1960 = 10,
        DT_SECONDS_SINCE_1970 = 11,
        DT_SECONDS_SINCE_1980 = 12,
    };

    /// What is done with a number outside the known range.
    enum OutlierHandleMethod : int {
        OUTLIER_AS_IS = 0,
        OUTLIER_AS_MISSING_VALUES = 1,
        OUTLIER_AS_EXTREME_VALUES = 2,
    };

    virtual ~ScoreDictVar();

    /// A deep copy, owned by the caller.
    virtual ScoreDictVar* Clone() const = 0;

    /// Two variables are equal when their names are; nothing else counts.
    virtual bool operator==(const ScoreDictVar& other) const = 0;

    /// Whether the value is null, system-missing (unless the variable is a string) or user-missing.
    virtual bool IsMissingValue(const ScoreValue* value) const = 0;

    /// Whether the value is neither missing nor outside the known categories.
    virtual bool IsValidValue(const ScoreValue* value) const = 0;

    /// @return false, and no change, for an empty name
    virtual bool SetName(const std::string& name) = 0;
    virtual void SetLabel(const std::string& label) = 0;
    virtual void SetVarType(VariableType type) = 0;
    virtual void SetMLevel(MeasureLevel level) = 0;

    /// Sets the display format: number of decimals and width, -1 for unknown.
    virtual void SetFormat(int decimal, int width) = 0;
    virtual void SetDecimal(int decimal) = 0;
    virtual void SetWidth(int width) = 0;

    virtual const std::string& GetName() const = 0;
    virtual const std::string& GetLabel() const = 0;
    virtual VariableType GetVarType() const = 0;
    virtual MeasureLevel GetMLevel() const = 0;
    virtual int GetDecimal() const = 0;
    virtual int GetWidth() const = 0;

    /// The summary statistics, or null; they stay the variable's.
    virtual ScoreVarStats* GetVarStats() const = 0;
    /// @param stats becomes the variable's; the old object is not deleted
    virtual void SetVarStats(ScoreVarStats* stats) = 0;

    /// The labelled values, which are also the categories, or null; they stay the variable's.
    virtual ScoreValueLabelSet* GetValueLabels() const = 0;
    /// The label of a value; the empty string without a label set or for an unknown value.
    virtual std::string GetLabelOfValue(const ScoreValue* value) const = 0;

    /// The user-missing ranges, or null; they stay the variable's.
    virtual ScoreMissingValueSet* GetMissingValues() const = 0;
    /// @param missingValues becomes the variable's; the old object is not deleted
    virtual void SetMissingValues(ScoreMissingValueSet* missingValues) = 0;
    /// @param valueLabels becomes the variable's; the old object is not deleted
    virtual void SetValueLabels(ScoreValueLabelSet* valueLabels) = 0;

    /// Makes a value of this variable's kind from a text.
    /// @return a new value, owned by the caller, or null when the variable's type has no form in text
    virtual ScoreValue* ToMyValue(const std::string& text) const = 0;

    /// Writes a debug dump.
    virtual void Display(std::ostream& out) const = 0;

    /// 1 for a continuous variable, otherwise the number of labelled values.
    virtual int GetNumberOfCats() const = 0;

    /// Sets the variable's place in a case's value array, -1 for none.
    virtual void SetValueIndex(int index) = 0;
    /// Sets the variable's place in the encoded form of a case, -1 for none.
    virtual void SetEncodedValueIndex(int index) = 0;
    virtual int GetValueIndex() const = 0;
    virtual int GetEncodedValueIndex() const = 0;

    /// Whether trailing blanks count when texts of this variable are matched.
    virtual void SetNoSpaceTrim(bool noSpaceTrim) = 0;
    virtual bool GetNoSpaceTrim() const = 0;
    /// Whether an empty text and a blank one are different values of this variable.
    virtual void SetEmptyStringOK(bool emptyStringOK) = 0;
    virtual bool GetEmptyStringOK() const = 0;

    /// The text of the variable's "x-measure" attribute.
    virtual const std::string& GetXMeasure() const = 0;
    virtual void SetXMeasure(const std::string& measure) = 0;

    /// @return false, and nothing stored, on a continuous variable
    virtual bool SetFlagVariable(bool flag) = 0;
    virtual bool IsFlagVariable() const = 0;

    virtual void SetOutlierHandleMethod(OutlierHandleMethod method) = 0;
    /// The number of an OutlierHandleMethod.
    virtual int GetOutlierHandleMethod() const = 0;

    /// Whether the variable is computed from others.
    virtual bool IsDerivedVariable() const = 0;

    virtual void SetDateTimeType(DateTimeType type) = 0;
    virtual DateTimeType GetDateTimeType() const = 0;

    /// @param value becomes the variable's; the old object is not deleted
    virtual void SetDefValue(ScoreValue* value) = 0;
    /// The default value, or null; it stays the variable's.
    virtual const ScoreValue* GetDefValue() const = 0;

    /// @param probabilities becomes the variable's; the old object is not deleted
    virtual void SetValueProbabilities(ScoreValueProbabilitySet* probabilities) = 0;
    /// The prior probabilities of the categories, or null; they stay the variable's.
    virtual ScoreValueProbabilitySet* GetValueProbabilities() const = 0;

    /// The encoder, or null; it stays the variable's.
    virtual ScoreEncoder* GetEncoder() = 0;
    virtual const ScoreEncoder* GetEncoder() const = 0;
    /// @param encoder becomes the variable's; the old object is not deleted
    virtual void SetEncoder(ScoreEncoder* encoder) = 0;

    virtual void SetEmptyCateValues(bool empty) = 0;
    virtual bool IsEmptyCateValues() const = 0;

    /// Adds a labelled value, unless there is one with that value already.
    /// @param value consumed (stored, or deleted when the value is known), but not when it is null or label is empty
    /// @return whether the value was added
    virtual bool AddScoreValueLabel(ScoreValue* value, const std::string& label) = 0;

    virtual void SetNumericDataType(NumericDataType type) = 0;
    virtual NumericDataType GetNumericDataType() const = 0;

    virtual bool IsUsageTypeEnable() const = 0;
    virtual void SetUsageType(bool enable) = 0;

    /// Sets the text of a flag variable's true value. The spelling of the name is part of the interface.
    virtual void SetFalgTypeTrueValue(const std::string& value) = 0;
    virtual std::string GetFalgTypeTrueValue() const = 0;
};

} // namespace MCVeltrane_900

#endif
