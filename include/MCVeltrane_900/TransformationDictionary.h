#ifndef MCVELTRANE_900_TRANSFORMATIONDICTIONARY_H
#define MCVELTRANE_900_TRANSFORMATIONDICTIONARY_H

#include <MCVeltrane_900/BaseDictionary.h>
#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/ScoreCaseRecord.h>
#include <veltrane_export.h>

#include <memory>
#include <string>
#include <vector>

namespace MCVeltrane_900 {

class ScoreValue;
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

private:
    /// A field in the order of computation, with what looking it up by name gave.
    struct DerivedField {
        TransformVar* var;
        const std::string* name;
        int position; ///< in the derived record, -1 when it isn't there
    };

    void Reset();
    void FindDerivedFields();
    void AddVarCaseValue(const ScoreDictVar* var, const DerivedField& field, const std::string& value);
    void AddVarCaseValue(const ScoreDictVar* var, const DerivedField& field, double value);
    void AddVarCaseValue(const ScoreDictVar* var, const DerivedField& field, double value,
                         DateTimeValue::DateTimeValType type);
    void AddVarCaseValue(const ScoreDictVar* var, const DerivedField& field, const ScoreValue* value);
    void SetComputed(const ScoreDictVar* var, bool stored);
    ScoreCaseRecord* CopyRecord(const ScoreCaseRecord* record);
    ScoreCaseRecord* KeepRecord(std::shared_ptr<ScoreCaseRecord> record);
    void ShareRecords(const TransformationDictionary& other);

    /// Keeps the records alive, since assignment shares them. It stands ahead of the two pointers, which the copy
    /// constructor fills through it.
    std::vector<std::shared_ptr<ScoreCaseRecord>> fRecords;

    ScoreCaseRecord* fDerivedRecord = nullptr;
    ScoreCaseRecord* fInitialRecord = nullptr;
    std::vector<bool> fComputedFlags;
    std::vector<std::string> fDerivedVarNames;
    bool fSetUp = false;

    /// The fields to compute, good for one revision of the variables and one state of the record and the names.
    std::vector<DerivedField> fDerivedFields;
    unsigned long fFieldsRevision = 0;
    bool fFieldsFound = false;
    std::string fText; ///< scratch of the text form
};

} // namespace MCVeltrane_900

#endif
