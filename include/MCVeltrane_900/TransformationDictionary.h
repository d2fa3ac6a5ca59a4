#ifndef MCVELTRANE_900_TRANSFORMATIONDICTIONARY_H
#define MCVELTRANE_900_TRANSFORMATIONDICTIONARY_H

#include <MCVeltrane_900/BaseDictionary.h>
#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/ScoreCaseRecord.h>
#include <veltrane_export.h>

#include <memory>
#include <string>
#include <vector>

namespace veltrane::transform {
class DictionaryEvaluation;
struct DerivedField;
} // namespace veltrane::transform

namespace MCVeltrane_900 {

class ScoreValue;
class ScoreValueLabel;
class StringValue;
class TransformVar;

/// The derived fields of a model, which it computes for one case after another into a record of its own.
///
/// Fill it (AddVar() and AddDerievedVarName() for each field), call SetUpDerivedCaseRecord() once, and then
/// GetValuesForDerivedVars() exactly once for each case, in stream order: lag fields count the calls. One thread at a
/// time may use a dictionary with its fields and records.
class VELTRANE_API TransformationDictionary : public BaseDictionary {
public:
    /// The number of a built-in function, the value that ties the reader of an Apply to its evaluation.
    enum TransformFunction : int {
#define VELTRANE_TRANSFORM_FUNCTION(enumerator, number, ...) enumerator = number,
#include <MCVeltrane_900/TransformFunctions.def>
        TF_NONE = 79, ///< no function; stands on leaves
    };

    /// The kind of a derived field's expression.
    enum TransExpression : int {
        TE_CONSTANT = 0,
        TE_FIELD_REF = 1,
        TE_NORM_CONTINUOUS = 2,
        TE_NORM_DISCRETE = 3,
        TE_DISCRETIZE = 4,
        TE_MAP_VALUES = 5,
        TE_APPLY = 6,
        TE_LAG = 7,
        TE_NONE = 8, ///< not set
    };

    TransformationDictionary();

    /// Clones the variables and copies the records.
    TransformationDictionary(const TransformationDictionary& other);

    /// Takes clones of the other's variables, and the other's records as they are: both dictionaries then write into
    /// the same ones, which live as long as one of the two. A record that this dictionary had before stays alive, for
    /// hosts that hold it, until this dictionary goes.
    TransformationDictionary& operator=(const TransformationDictionary& other);

    ~TransformationDictionary() override;

    /// Appends a name to the list of fields that GetValuesForDerivedVars() computes, in list order. A name without a
    /// variable is skipped there.
    void AddDerievedVarName(const std::string& name);

    /// The names in the order of computation.
    std::vector<std::string> GetDerivedVarNames() const;

    /// Makes the derived record, with a missing value for each field, and gives each field its position in it as value
    /// index. To be called after all fields are added; a second call does nothing.
    void SetUpDerivedCaseRecord();

    /// Computes all derived fields for one case. Nothing is allocated for a case after the first but by text and lag
    /// fields.
    /// @param record     the case; with null the derived record is returned as the last case left it
    /// @param dictionary the model's data dictionary, in which source fields are looked up first
    /// @return the derived record, which stays this object's; the same one for all cases, its content valid until the
    ///         next call. Null before SetUpDerivedCaseRecord(), which is an error of the host.
    /// @throws std::out_of_range from a field that looks up a malformed table, see InlineTable
    const ScoreCaseRecord* GetValuesForDerivedVars(const ScoreCaseRecord* record, const ScoreDictionary* dictionary);

    /// Whether the variable's value of the current case stands in the derived record.
    bool IsVarValueComputed(const ScoreDictVar* var) const;

    /// The value of a field in the derived record, which keeps it; null for an unknown name or without a record.
    const ScoreValue* GetVarValue(const std::string& name) const;

    // The built-in functions, for the evaluation of an Apply and for plug-ins. Missing means exactly SYSMIS; so does a
    // result that there is none for. They hold no state.

    /// Missing when an argument is missing.
    static double Plus(double a, double b);
    static double Abs(double x);
    /// Missing above 709; 0 from -708 downwards.
    static double Exp(double x);
    /// Missing unless `x` is above 0.
    static double Log10(double x);
    static double Ln(double x);
    /// Missing unless `x` is at least 0.
    static double Sqrt(double x);
    /// Toward 0. Missing outside of 32 bits.
    static double Trunc(double x);
    static double Floor(double x);
    static double Ceil(double x);
    /// The nearest integer, halves away from 0. Missing outside of 32 bits.
    static double Rnd(double x);
    /// The standard normal distribution.
    static double CdfNorm(double x);
    /// The remainder, with the sign of `a`. Missing when `b` is 0 or the quotient leaves 32 bits.
    static double Mod(double a, double b);
    /// 1.0 for `x` above `threshold`, else 0.0; there is no missing test.
    static double Threshold(double x, double threshold);
    /// An integer power. A base below 1e-14 to the power 0 is 1.0 even when it is missing.
    static double Pow(double x, int n);
    /// Bounds `x` by `centre` plus and minus p * q / sqrt(r).
    /// @param method 2 cuts an outlier to its bound, any other makes it missing
    static double OutlierHandle(double x, int method, double centre, double p, double q, double r);

    /// Exactly two arguments, else missing; a missing one makes the result missing, and so does a divisor of 0.
    static double Minus(const std::vector<double>& values);
    static double Multiply(const std::vector<double>& values);
    static double Divided(const std::vector<double>& values);

    /// Over the arguments that aren't missing; missing when none is left, for Sd and Variance when only one is.
    static double ProductOperator(const std::vector<double>& values);
    static double Min(const std::vector<double>& values);
    static double Max(const std::vector<double>& values);
    static double Mean(const std::vector<double>& values);
    static double MedianOperator(const std::vector<double>& values);
    static double Sum(const std::vector<double>& values);
    static double Sd(const std::vector<double>& values);
    static double Variance(const std::vector<double>& values);

    /// Of x, mean and standard deviation; missing unless the deviation is above 0.
    static double CdfNormal(const std::vector<double>& values);
    static double PdfNormal(const std::vector<double>& values);
    /// Of p, mean and standard deviation.
    static double IdfNormal(const std::vector<double>& values);
    static double stdNormalCDF(const std::vector<double>& values);
    static double stdNormalPDF(const std::vector<double>& values);
    /// Missing unless 0 < p < 1.
    static double stdNormalIDF(const std::vector<double>& values);
    static double Erf(const std::vector<double>& values);

    /// 1.0 or 0.0, and 0.0 unless there are exactly two arguments. A missing one compares as the smallest number.
    static double lessThan(const std::vector<double>& values);
    static double lessOrEqual(const std::vector<double>& values);
    static double greaterThan(const std::vector<double>& values);
    static double greaterOrEqual(const std::vector<double>& values);

    /// 1.0 or 0.0. Every argument but 0 counts as true, a missing one too. 0.0 without arguments.
    static double AndOperator(const std::vector<double>& values);
    static double OrOperator(const std::vector<double>& values);
    /// Of exactly one argument, else 0.0.
    static double NotOperator(const std::vector<double>& values);

    /// 1.0 when there are exactly two values of one type that are equal, else 0.0; notEqual is the reverse.
    /// @param values their entries are deleted and the vector emptied; only two of different types stay with the caller
    static double equal(std::vector<ScoreValue*>& values);
    static double notEqual(std::vector<ScoreValue*>& values);
    /// 1.0 when `test` equals any of the values, else 0.0; isNotIn is the reverse.
    /// @param values their entries are deleted and the vector emptied
    /// @param test   deleted; null is in nothing
    static double isIn(std::vector<ScoreValue*>& values, ScoreValue* test);
    static double isNotIn(std::vector<ScoreValue*>& values, ScoreValue* test);

    /// 1.0 when the regular expression texts[1] has a match anywhere in texts[0], else 0.0, also for an expression that
    /// doesn't compile or that takes too long. Texts are UTF-8.
    static double Matches(const std::vector<std::string>& texts);
    /// The subject texts[0], and behind it the subject with each match of texts[1] replaced by texts[2]; the subject
    /// alone when the expression fails.
    /// @param length the size of the result
    static std::string Replace(const std::vector<std::string>& texts, int& length);
    /// The texts as far as there are widths, each cut or filled with blanks to its width.
    /// @param length the sum of the widths
    static std::string Concat(const std::vector<std::string>& texts, const std::vector<int>& widths, int& length);

    /// Without leading blanks and tabs.
    /// @param length the value's length, less what was removed
    static std::string Ltrim(const StringValue* value, int& length);
    /// Without trailing blanks; tabs stay.
    /// @param length the size of the result
    static std::string Rtrim(const StringValue* value, int& length);
    /// From a position, counted in bytes from 1, to the end; empty unless `start` is below the size.
    /// @param length `start` when there is a result, else the value's length
    static std::string Substring(const StringValue* value, int start, int& length);
    /// At most `count` bytes from a position on.
    static std::string Substring(const StringValue* value, int start, int count, int& length);
    /// At most `count` UTF-16 units from a position on.
    /// @param length the size of the result in bytes
    static std::string Substring_unicode(const StringValue* value, int start, int count, int& length);
    /// Each byte through the C library, under the process's locale.
    /// @param length the value's length
    std::string ToUpperCase(const StringValue* value, int& length);
    std::string ToLowerCase(const StringValue* value, int& length);

    /// The value of the label whose mean is nearest to `target` in standard deviations, the first one on a tie.
    /// @return borrowed from the label
    /// @throws std::out_of_range "invalid vector<T> subscript" when there is no such label
    static const ScoreValue* ImputeCatFieldMissingAgainstConTargetHandle(double target,
                                                                         const std::vector<ScoreValueLabel*>& labels,
                                                                         const std::vector<double>& means,
                                                                         const std::vector<double>& variances);

private:
    friend class veltrane::transform::DictionaryEvaluation;

    void Reset();
    void AddVarCaseValue(const veltrane::transform::DerivedField& field, const std::string& value);
    void AddVarCaseValue(const veltrane::transform::DerivedField& field, double value);
    void AddVarCaseValue(const veltrane::transform::DerivedField& field, double value,
                         DateTimeValue::DateTimeValType type);
    void AddVarCaseValue(const veltrane::transform::DerivedField& field, const ScoreValue* value);

    ScoreCaseRecord* fDerivedRecord = nullptr;
    ScoreCaseRecord* fInitialRecord = nullptr;
    std::vector<bool> fComputedFlags;
    std::vector<std::string> fDerivedVarNames;
    bool fSetUp = false;

    /// How a case goes through the fields; the records are in its keeping.
    std::unique_ptr<veltrane::transform::DictionaryEvaluation> fEvaluation;
};

} // namespace MCVeltrane_900

#endif
