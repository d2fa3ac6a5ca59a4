// The operations of DictVar that read or store one field, and the dump of all of them.

#include <MCVeltrane_900/DictVar.h>
#include <MCVeltrane_900/ScoreEncoder.h>
#include <MCVeltrane_900/ScoreMissingValueSet.h>
#include <MCVeltrane_900/ScoreValue.h>
#include <MCVeltrane_900/ScoreValueLabelSet.h>
#include <MCVeltrane_900/ScoreValueProbabilitySet.h>
#include <MCVeltrane_900/ScoreVarStats.h>

namespace MCVeltrane_900 {

bool DictVar::SetName(const std::string& name) {
    if (name.empty()) {
        return false;
    }
    fName = name;
    return true;
}

bool DictVar::SetFlagVariable(bool flag) {
    if (fMLevel != LEVEL_ORDINAL && fMLevel != LEVEL_NOMINAL) {
        return false;
    }
    fFlagVariable = flag;
    return true;
}

void DictVar::SetFormat(int decimal, int width) {
    fDecimal = decimal;
    fWidth = width;
}

void DictVar::SetLabel(const std::string& label) {
    fLabel = label;
}
void DictVar::SetVarType(VariableType type) {
    fVarType = type;
}
void DictVar::SetMLevel(MeasureLevel level) {
    fMLevel = level;
}
void DictVar::SetDecimal(int decimal) {
    fDecimal = decimal;
}
void DictVar::SetWidth(int width) {
    fWidth = width;
}

const std::string& DictVar::GetName() const {
    return fName;
}
const std::string& DictVar::GetLabel() const {
    return fLabel;
}
ScoreDictVar::VariableType DictVar::GetVarType() const {
    return fVarType;
}
ScoreDictVar::MeasureLevel DictVar::GetMLevel() const {
    return fMLevel;
}
int DictVar::GetDecimal() const {
    return fDecimal;
}
int DictVar::GetWidth() const {
    return fWidth;
}

ScoreVarStats* DictVar::GetVarStats() const {
    return fVarStats.Get();
}
void DictVar::SetVarStats(ScoreVarStats* stats) {
    fVarStats.Overwrite(stats);
}
ScoreValueLabelSet* DictVar::GetValueLabels() const {
    return fValueLabels.Get();
}
void DictVar::SetValueLabels(ScoreValueLabelSet* valueLabels) {
    fValueLabels.Overwrite(valueLabels);
}
ScoreMissingValueSet* DictVar::GetMissingValues() const {
    return fMissingValues.Get();
}
void DictVar::SetMissingValues(ScoreMissingValueSet* missingValues) {
    fMissingValues.Overwrite(missingValues);
}
const ScoreValue* DictVar::GetDefValue() const {
    return fDefValue.Get();
}
void DictVar::SetDefValue(ScoreValue* value) {
    fDefValue.Overwrite(value);
}
ScoreValueProbabilitySet* DictVar::GetValueProbabilities() const {
    return fValueProbabilities.Get();
}

void DictVar::SetValueProbabilities(ScoreValueProbabilitySet* probabilities) {
    fValueProbabilities.Overwrite(probabilities);
}

ScoreEncoder* DictVar::GetEncoder() {
    return fEncoder.Get();
}
const ScoreEncoder* DictVar::GetEncoder() const {
    return fEncoder.Get();
}
void DictVar::SetEncoder(ScoreEncoder* encoder) {
    fEncoder.Overwrite(encoder);
}

void DictVar::SetValueIndex(int index) {
    fValueIndex = index;
}
void DictVar::SetEncodedValueIndex(int index) {
    fEncodedValueIndex = index;
}
int DictVar::GetValueIndex() const {
    return fValueIndex;
}
int DictVar::GetEncodedValueIndex() const {
    return fEncodedValueIndex;
}

void DictVar::SetNoSpaceTrim(bool noSpaceTrim) {
    fNoSpaceTrim = noSpaceTrim;
}
bool DictVar::GetNoSpaceTrim() const {
    return fNoSpaceTrim;
}
void DictVar::SetEmptyStringOK(bool emptyStringOK) {
    fEmptyStringOK = emptyStringOK;
}
bool DictVar::GetEmptyStringOK() const {
    return fEmptyStringOK;
}
const std::string& DictVar::GetXMeasure() const {
    return fXMeasure;
}
void DictVar::SetXMeasure(const std::string& measure) {
    fXMeasure = measure;
}
bool DictVar::IsFlagVariable() const {
    return fFlagVariable;
}
void DictVar::SetOutlierHandleMethod(OutlierHandleMethod method) {
    fOutlierHandleMethod = method;
}
int DictVar::GetOutlierHandleMethod() const {
    return fOutlierHandleMethod;
}
bool DictVar::IsDerivedVariable() const {
    return false;
}
void DictVar::SetDateTimeType(DateTimeType type) {
    fDateTimeType = type;
}
ScoreDictVar::DateTimeType DictVar::GetDateTimeType() const {
    return fDateTimeType;
}
void DictVar::SetEmptyCateValues(bool empty) {
    fEmptyCateValues = empty;
}
bool DictVar::IsEmptyCateValues() const {
    return fEmptyCateValues;
}
void DictVar::SetNumericDataType(NumericDataType type) {
    fNumericDataType = type;
}
ScoreDictVar::NumericDataType DictVar::GetNumericDataType() const {
    return fNumericDataType;
}
bool DictVar::IsUsageTypeEnable() const {
    return fUsageTypeEnable;
}
void DictVar::SetUsageType(bool enable) {
    fUsageTypeEnable = enable;
}
void DictVar::SetFalgTypeTrueValue(const std::string& value) {
    fFlagTypeTrueValue = value;
}
std::string DictVar::GetFalgTypeTrueValue() const {
    return fFlagTypeTrueValue;
}

namespace {

const char* TypeText(ScoreDictVar::VariableType type) {
    switch (type) {
    case ScoreDictVar::STRING_VAR:
        return "Var Type = STRING_VAR; ";
    case ScoreDictVar::kNUMERIC_VAR:
        return "Var Type = kNUMERIC_VAR; ";
    default:
        return "";
    }
}

const char* LevelText(ScoreDictVar::MeasureLevel level) {
    switch (level) {
    case ScoreDictVar::LEVEL_CONTINUOUS:
        return "Var level =  Continuous; ";
    case ScoreDictVar::LEVEL_ORDINAL:
        return "Var level =  Ordinal; ";
    case ScoreDictVar::LEVEL_NOMINAL:
        return "Var level =  Nominal; ";
    }
    return "Var level = unknown;";
}

} // namespace

void DictVar::Display(std::ostream& out) const {
    out << "Start ScoreDictVar Display:\n"
        << "Var Name = " << fName << "; "
        << "Var Lable = " << fLabel << "; " << TypeText(fVarType) << LevelText(fMLevel) << "\n";
    if (fValueLabels) {
        fValueLabels->Display(out);
    }
    if (fMissingValues) {
        fMissingValues->Display(out);
    }
    if (!fXMeasure.empty()) {
        out << "x-Measure: " << fXMeasure << "\n";
    }
    out << "End of ScoreDictVar Display.\n\n";
}

} // namespace MCVeltrane_900
