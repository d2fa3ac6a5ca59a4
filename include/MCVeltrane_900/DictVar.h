#ifndef MCVELTRANE_900_DICTVAR_H
#define MCVELTRANE_900_DICTVAR_H

#include <MCVeltrane_900/Owned.h>
#include <MCVeltrane_900/ScoreDictVar.h>

#include <concepts>

namespace MCVeltrane_900 {

/// A plain variable of a dictionary. See ScoreDictVar for the operations and for who owns what.
class VELTRANE_API DictVar : public ScoreDictVar {
public:
    /// A continuous variable without value sets, at no place in a case.
    DictVar(const std::string& name, VariableType type);
    /// Copies the plain fields and clones the owned objects.
    DictVar(const DictVar& other);
    /// Deletes the owned objects, then copies the plain fields and clones the other's objects.
    DictVar& operator=(const DictVar& other);
    ~DictVar() override;

    ScoreDictVar* Clone() const override;
    bool operator==(const ScoreDictVar& other) const override;

    /// The same operator with the exact type of its right side, so that a comparison of two concrete classes isn't
    /// ambiguous with its own reversed form.
    template <std::derived_from<ScoreDictVar> T>
    bool operator==(const T& other) const {
        return *this == static_cast<const ScoreDictVar&>(other);
    }

    bool IsMissingValue(const ScoreValue* value) const override;
    bool IsValidValue(const ScoreValue* value) const override;
    bool SetName(const std::string& name) override;
    void SetLabel(const std::string& label) override;
    void SetVarType(VariableType type) override;
    void SetMLevel(MeasureLevel level) override;
    void SetFormat(int decimal, int width) override;
    void SetDecimal(int decimal) override;
    void SetWidth(int width) override;
    const std::string& GetName() const override;
    const std::string& GetLabel() const override;
    VariableType GetVarType() const override;
    MeasureLevel GetMLevel() const override;
    int GetDecimal() const override;
    int GetWidth() const override;
    ScoreVarStats* GetVarStats() const override;
    void SetVarStats(ScoreVarStats* stats) override;
    ScoreValueLabelSet* GetValueLabels() const override;
    std::string GetLabelOfValue(const ScoreValue* value) const override;
    ScoreMissingValueSet* GetMissingValues() const override;
    void SetMissingValues(ScoreMissingValueSet* missingValues) override;
    void SetValueLabels(ScoreValueLabelSet* valueLabels) override;
    ScoreValue* ToMyValue(const std::string& text) const override;
    void Display(std::ostream& out) const override;
    int GetNumberOfCats() const override;
    void SetValueIndex(int index) override;
    void SetEncodedValueIndex(int index) override;
    int GetValueIndex() const override;
    int GetEncodedValueIndex() const override;
    void SetNoSpaceTrim(bool noSpaceTrim) override;
    bool GetNoSpaceTrim() const override;
    void SetEmptyStringOK(bool emptyStringOK) override;
    bool GetEmptyStringOK() const override;
    const std::string& GetXMeasure() const override;
    void SetXMeasure(const std::string& measure) override;
    bool SetFlagVariable(bool flag) override;
    bool IsFlagVariable() const override;
    void SetOutlierHandleMethod(OutlierHandleMethod method) override;
    int GetOutlierHandleMethod() const override;
    bool IsDerivedVariable() const override;
    void SetDateTimeType(DateTimeType type) override;
    DateTimeType GetDateTimeType() const override;
    void SetDefValue(ScoreValue* value) override;
    const ScoreValue* GetDefValue() const override;
    void SetValueProbabilities(ScoreValueProbabilitySet* probabilities) override;
    ScoreValueProbabilitySet* GetValueProbabilities() const override;
    ScoreEncoder* GetEncoder() override;
    const ScoreEncoder* GetEncoder() const override;
    void SetEncoder(ScoreEncoder* encoder) override;
    void SetEmptyCateValues(bool empty) override;
    bool IsEmptyCateValues() const override;
    bool AddScoreValueLabel(ScoreValue* value, const std::string& label) override;
    void SetNumericDataType(NumericDataType type) override;
    NumericDataType GetNumericDataType() const override;
    bool IsUsageTypeEnable() const override;
    void SetUsageType(bool enable) override;
    void SetFalgTypeTrueValue(const std::string& value) override;
    std::string GetFalgTypeTrueValue() const override;

    /// Whether the variable's storage is a string.
    bool IsString() const { return fVarType == STRING_VAR; }

private:
    std::string fName;
    std::string fLabel;
    VariableType fVarType;
    DateTimeType fDateTimeType = DT_NONE;
    NumericDataType fNumericDataType = NUM_UNSPECIFIED;
    MeasureLevel fMLevel = LEVEL_CONTINUOUS;
    int fDecimal = -1;
    int fWidth = -1;
    Owned<ScoreMissingValueSet> fMissingValues;
    Owned<ScoreValueLabelSet> fValueLabels;
    Owned<ScoreVarStats> fVarStats;
    int fValueIndex = -1;
    int fEncodedValueIndex = -1;
    bool fNoSpaceTrim = false;
    bool fEmptyStringOK = false;
    std::string fXMeasure;
    bool fFlagVariable = false;
    bool fUsageTypeEnable = true;
    OutlierHandleMethod fOutlierHandleMethod = OUTLIER_AS_IS;
    Owned<ScoreValue> fDefValue;
    Owned<ScoreValueProbabilitySet> fValueProbabilities;
    Owned<ScoreEncoder> fEncoder;
    bool fEmptyCateValues = false;
    std::string fFlagTypeTrueValue;
};

} // namespace MCVeltrane_900

#endif
