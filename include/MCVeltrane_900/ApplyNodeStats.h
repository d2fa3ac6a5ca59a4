#ifndef MCVELTRANE_900_APPLYNODESTATS_H
#define MCVELTRANE_900_APPLYNODESTATS_H

#include <MCVeltrane_900/TransformationDictionary.h>
#include <veltrane_export.h>

#include <string>
#include <vector>

namespace MCVeltrane_900 {

class ScoreDictVar;
class ScoreValue;

/// What one node of an Apply expression says: a function, a constant or a reference to a field.
///
/// The values and the variable are borrowed: a copy shares them, and nothing here deletes them.
class VELTRANE_API ApplyNodeStats {
public:
    /// What becomes of a result that the derived field doesn't accept.
    enum InvalidValueTreatmentMethod : int {
        IV_RETURN_INVALID = 0,
        IV_AS_IS = 1,
        IV_AS_MISSING = 2,
        IV_NOT_STATED = 3,
    };

    ApplyNodeStats();
    ApplyNodeStats(const ApplyNodeStats& other);
    ApplyNodeStats& operator=(const ApplyNodeStats& other);
    ~ApplyNodeStats();

    /// Whether the node is a leaf that holds a constant.
    bool IsConstNode() const { return fIsConstNode; }
    void SetConstNode(bool isConst) { fIsConstNode = isConst; }

    /// The function of an interior node; TF_NONE on leaves.
    TransformationDictionary::TransformFunction GetTransformFunction() const { return fTransformFunction; }
    void SetTransformFunction(TransformationDictionary::TransformFunction function) { fTransformFunction = function; }

    /// The name of the field that a leaf refers to.
    const std::string& GetParameterName() const { return fParameterName; }
    void SetParameterName(const std::string& name) { fParameterName = name; }

    /// The constant of a constant leaf, or null.
    ScoreValue* GetValue() const { return fValue; }
    void SetValue(ScoreValue* value) { fValue = value; }

    /// The field's position in the case record, -1 as long as it isn't known.
    int GetVarIndex() const { return fVarIndex; }
    void SetVarIndex(int index) { fVarIndex = index; }

    /// The field itself, null as long as it isn't known.
    const ScoreDictVar* GetVariable() const { return fVariable; }
    void SetVariable(const ScoreDictVar* variable) { fVariable = variable; }

    /// The identity of the node: nodes are equal when these texts are.
    const std::string& GetNodeID() const { return fNodeID; }
    void SetNodeID(const std::string& id) { fNodeID = id; }

    /// The mapMissingTo of an Apply, or null.
    ScoreValue* GetRecodeMissValueRep() const { return fRecodeMissValueRep; }
    void SetRecodeMissValueTo(ScoreValue* value) { fRecodeMissValueRep = value; }

    /// The mapMissingTo of a field leaf, or null.
    ScoreValue* GetFieldrefRecodeMissValueRep() const { return fFieldrefRecodeMissValueRep; }
    void SetFieldrefRecodeMissValueTo(ScoreValue* value) { fFieldrefRecodeMissValueRep = value; }

    /// The defaultValue of an Apply, or null.
    ScoreValue* GetDefaultValue() const { return fDefaultValue; }
    void SetDefaultValue(ScoreValue* value) { fDefaultValue = value; }

    /// A number of InvalidValueTreatmentMethod.
    int GetInvalidValueTreatmentMethod() const { return fInvalidValueTreatmentMethod; }
    void SetInvalidValueTreatmentMethod(int method) { fInvalidValueTreatmentMethod = method; }

    /// Appends a copy of a table of numbers to the node.
    void AddArray(const std::vector<double>& array);
    void ClearArray();
    int GetNumberOfArray() const;

    /// @param index 0 to GetNumberOfArray() - 1; not checked
    const std::vector<double>& GetArray(int index) const;

private:
    std::string fNodeID;
    ScoreValue* fValue = nullptr;
    TransformationDictionary::TransformFunction fTransformFunction = TransformationDictionary::TF_NONE;
    std::string fParameterName;
    const ScoreDictVar* fVariable = nullptr;
    int fVarIndex = -1;
    bool fIsConstNode = false;
    std::vector<std::vector<double>> fArrays;
    ScoreValue* fRecodeMissValueRep = nullptr;
    ScoreValue* fDefaultValue = nullptr;
    int fInvalidValueTreatmentMethod = IV_NOT_STATED;
    ScoreValue* fFieldrefRecodeMissValueRep = nullptr;
};

} // namespace MCVeltrane_900

#endif
