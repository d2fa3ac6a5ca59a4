#ifndef MCVELTRANE_900_TRANSFORMVAR_H
#define MCVELTRANE_900_TRANSFORMVAR_H

#include <MCVeltrane_900/DictVar.h>
#include <MCVeltrane_900/TransformationDictionary.h>
#include <veltrane_export.h>

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace veltrane::transform {
class FieldEvaluation;
class ValueQueue;
} // namespace veltrane::transform

namespace MCVeltrane_900 {

class ApplyNodeStats;
class FunctionTree;
class MapValues;
class NumericValue;
class ScoreCaseRecord;
class ScoreDictionary;
class ScoreValue;
class ScoreValueRange;
class StringValue;

/// A derived field: a variable that has no input column and computes its value for each case.
///
/// One class carries every kind of expression; GetTransExpression() tells which is in force, and what belongs to the
/// other kinds stays empty. A value that an evaluation returns is borrowed from the field and stays valid until the
/// field's next evaluation: a caller that needs it for longer copies it. A field belongs to one thread at a time.
class VELTRANE_API TransformVar : public DictVar {
public:
    /// How many levels of functions within functions the tree of a field may have. A function below them gives a
    /// missing value.
    static constexpr int MAX_DERIVATION_DEPTH = 1000;

    /// How many evaluations each of the fields that a field refers to may take altogether, where they can't be kept: a
    /// field that no lag stands below is evaluated once for a case, however many others refer to it. Beyond the bound a
    /// field gives its cleared result, SYSMIS or the empty text, as it does from within its own evaluation. Documents
    /// that would need more are refused when they are read.
    static constexpr int MAX_NESTED_EVALUATIONS = 100000;

    TransformVar(const std::string& name, VariableType type);

    /// Copies the variable and its expression. What ties a field to its surroundings or to earlier cases starts afresh:
    /// the positions and variables of its source and of the leaves of its tree, the value map, the outlier treatment,
    /// the lag and its histories.
    TransformVar(const TransformVar& other);

    /// As the copy constructor, but the target keeps its own value map, outlier treatment, lag, source position, source
    /// variable and both recode flags.
    TransformVar& operator=(const TransformVar& other);
    ~TransformVar() override;

    ScoreDictVar* Clone() const override;
    void Display(std::ostream& out) const override;
    bool IsDerivedVariable() const override;

    /// @param fieldName the source field; empty for a constant and most function applications
    void AddFieldNameAndTransExpression(const std::string& fieldName,
                                        TransformationDictionary::TransExpression expression);
    const std::string& GetFieldName() const { return fFieldName; }
    TransformationDictionary::TransExpression GetTransExpression() const { return fTransExpression; }

    /// The text of a constant. A numeric field reads it as a number; a date-time field reads it as the internal seconds
    /// of DateTimeValue, as DateTimeValue::GetNumericString() writes them, and has the kind of its date-time type.
    void SetConstString(const std::string& text) { fConstString = text; }
    const std::string& GetConstString() const { return fConstString; }

    /// @param root the function application, which becomes the field's; an earlier one is not deleted
    void SetRoot(FunctionTree* root);
    /// @return the tree, which stays the field's; null when there is none
    const FunctionTree* GetRoot() const { return fRoot.get(); }

    /// @param mapValues becomes the field's; an earlier one is deleted
    void SetMapValues(MapValues* mapValues);
    /// @return the map, which stays the field's; null when there is none
    const MapValues* GetMapValues() const { return fMapValues.get(); }

    /// @param n      how many cases to look back, at least 1; below 1 every case is missing
    /// @param blocks the fields that must have kept their values over these cases; borrowed
    void SetLags(int n, std::vector<const ScoreDictVar*> blocks);
    /// @return the fields that must have kept their values; some may be null
    const std::vector<const ScoreDictVar*>& GetLagBlocks() const { return fBlockVariables; }

    /// Appends a segment of a continuous normalisation: x becomes x * slope + intercept.
    void AddNormInfo(double slope, double intercept);

    /// Appends a point of a continuous normalisation; points go in ascending order of orig.
    void AddLinearNorm(double orig, double norm);

    /// @param treatment "asIs", "asMissingValues" or "asExtremeValues"; any other text changes nothing
    void SetOutlierTreatMent(const std::string& treatment);

    /// Appends a value to match and its replacement; both become the field's.
    void AddEncodingMap(ScoreValue* key, ScoreValue* encoded);
    std::vector<std::pair<ScoreValue*, ScoreValue*>>& GetAllEncodedValues() { return fEncodedValues; }
    const std::vector<std::pair<ScoreValue*, ScoreValue*>>& GetAllEncodedValues() const { return fEncodedValues; }

    /// Appends a bin. Range and value become the field's.
    /// @param value     null for a bin that copies the input through
    /// @param fieldName the name to write into the text of the interval
    void AddBinningValue(ScoreValueRange* range, ScoreValue* value, const std::string& fieldName);

    /// The recode settings: what replaces a missing value, an unmatched value, a system-missing value. The values
    /// become the field's; an earlier value is not deleted. A replacement switches the copying of such values off.
    void SetRecodeMissValueTo(ScoreValue* value);
    void SetRecodeDefaultValue(ScoreValue* value);
    void SetRecodeSysmisValue(ScoreValue* value);
    void SetRecodeIntervalCopy(ScoreValueRange* range);

    /// Whether missing values, or unmatched ones, are copied through. Either deletes the replacement, whatever it sets.
    void SetRecodeMissingCopy(bool copy);
    void SetRecodeElseCopy(bool copy);

    ScoreValue* GetRecodeMissValueRep() const { return fRecodeMissValue.get(); }
    ScoreValue* GetRecodeDefaultValue() const { return fRecodeDefaultValue.get(); }
    ScoreValue* GetRecodeSysmisValueRep() const { return fRecodeSysmisValue.get(); }
    bool IsRecodeMissingCopy() const { return fRecodeMissingCopy; }
    bool IsRecodeElseCopy() const { return fRecodeElseCopy; }

    /// The field's value for one case. A lag moves on by one case with every call.
    ///
    /// Fields that the field refers to are evaluated as they are needed, once each where no lag stands below them. How
    /// deep they lie costs no stack.
    ///
    /// The position of the source field is looked up once: all records must have the same layout.
    /// @param record          the case
    /// @param dictionary      the model's data dictionary, in which source fields are looked up first
    /// @param transformations the derived fields, a TransformationDictionary, in which they are looked up next
    /// @return never null; borrowed, see above. SYSMIS or the empty text when no value can be found.
    /// @throws std::out_of_range from a malformed table, see InlineTable
    const ScoreValue* GetTransformedValue(const ScoreCaseRecord* record, const ScoreDictionary* dictionary,
                                          const ScoreDictionary* transformations);

    /// The replacement of a value by the pairs of AddEncodingMap(), else by the recode settings.
    /// @param source the variable of the value; value may be null
    const ScoreValue* GetEncodedValue(const ScoreDictVar* source, const ScoreValue* value);

    /// The bin value of a number or date-time, or the value itself where the bin copies it, else what the recode
    /// settings say.
    /// @param source the variable of the value; value may be null
    const ScoreValue* GetBinningValue(const ScoreDictVar* source, const ScoreValue* value);

    /// The normalisation of a number: by its segment, and outside the range of the points by the outlier treatment.
    double GetNormValue(double value);

    /// The value that the source had the lag's number of cases ago, and missing when there were fewer cases or a block
    /// field had another value then. Takes `value` into the history, so it must be called once for each case.
    const ScoreValue* GetLagValue(const ScoreCaseRecord* record, const ScoreDictionary* dictionary,
                                  const ScoreDictionary* transformations, const ScoreValue* value);

    /// The interval of a bin value's text, as "1<=age<5" with fieldForm, else as "[1,5)"; an unknown text itself.
    std::string GetOrigIntervalForBinningValue(const std::string& bin, bool fieldForm) const;

protected:
    const ScoreValue* GetMappedValue(const ScoreCaseRecord* record, const ScoreDictionary* dictionary,
                                     const ScoreDictionary* transformations, const ScoreValue* value);

private:
    friend class veltrane::transform::FieldEvaluation;

    const ScoreValue* HandleMissingAndInvalidValue(const ScoreDictVar* source, VariableType ownType,
                                                   const ScoreValue* value);
    double CalculateNormValue(double value) const;
    double CalculateNormAsIs(double value) const;
    double CalculateNormAsExtremeValues(double value) const;
    double CalculateNormAsMissingValues(double value) const;
    bool IsOutOfContRange(double value) const;

    const ScoreValue* Traverse(FunctionTree* node, const ScoreCaseRecord* record, const ScoreDictionary* dictionary,
                               const ScoreDictionary* transformations, int& status);
    static double ApplyTransFunction(double a, double b, TransformationDictionary::TransformFunction function);
    static double ApplyAccumulateFunction(const std::vector<double>& arguments,
                                          TransformationDictionary::TransformFunction function);
    static double ApplyDateTimeFunction(const ScoreValue* date, double b,
                                        TransformationDictionary::TransformFunction function);
    static bool HandleMissingAndInvalidOfApply(const std::vector<double>& arguments,
                                               TransformationDictionary::TransformFunction function, ScoreValue* result,
                                               const ApplyNodeStats& stats, bool resultIsSysmis, bool resultIsInvalid);

    std::string fFieldName;
    TransformationDictionary::TransExpression fTransExpression = TransformationDictionary::TE_NONE;
    std::vector<std::pair<ScoreValueRange*, ScoreValue*>> fBins;
    std::map<std::string, std::string> fIntervalsFieldForm;
    std::map<std::string, std::string> fIntervalsBracketForm;
    std::vector<double> fNormSlopes;
    std::vector<double> fNormIntercepts;
    int fOutlierTreatment = OUTLIER_AS_IS;
    std::vector<double> fLinearNormPoints;
    std::vector<double> fLinearNormTargets;
    std::vector<std::pair<ScoreValue*, ScoreValue*>> fEncodedValues;
    std::string fConstString;
    std::unique_ptr<FunctionTree> fRoot;
    std::unique_ptr<ScoreValue> fResult;
    /// The scratch values are made on first use.
    std::unique_ptr<NumericValue> fNumericScratch;
    std::unique_ptr<StringValue> fTextScratch;
    std::unique_ptr<DateTimeValue> fDateTimeScratch;
    std::unique_ptr<StringValue> fSecondTextScratch;
    std::unique_ptr<DateTimeValue> fSecondDateTimeScratch;
    std::unique_ptr<ScoreValue> fRecodeMissValue;
    std::unique_ptr<ScoreValue> fRecodeDefaultValue;
    std::unique_ptr<ScoreValue> fRecodeSysmisValue;
    bool fRecodeElseCopy = false;
    bool fRecodeMissingCopy = false;
    std::unique_ptr<ScoreValueRange> fRecodeIntervalCopy;
    int fSourceIndex = -1;
    const ScoreDictVar* fSourceVar = nullptr;
    std::unique_ptr<MapValues> fMapValues;
    int fLagCount = 1;
    std::unique_ptr<veltrane::transform::ValueQueue> fLagHistory;
    std::vector<const ScoreDictVar*> fBlockVariables;
    std::vector<veltrane::transform::ValueQueue> fBlockHistories;

    /// How the field is evaluated, and what it needs for that beside the above.
    std::unique_ptr<veltrane::transform::FieldEvaluation> fEvaluation;
};

} // namespace MCVeltrane_900

#endif
