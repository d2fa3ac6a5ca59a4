#ifndef MCVELTRANE_900_BASE_MODEL_H
#define MCVELTRANE_900_BASE_MODEL_H

#include <MCVeltrane_900/ScoreModel.h>

#include <map>

namespace MCVeltrane_900 {

/// Everything that models have in common; plug-ins derive their models from it and add the scoring.
///
/// It owns what its setters are given, and a setter doesn't delete what was there before. The data dictionary alone can
/// be shared: SetScoreDictionary(dictionary, false) leaves it with its owner.
class VELTRANE_API BaseModel : public ScoreModel {
public:
    /// The mining function of a model.
    enum FUNCNAME_TYPE {
        FUNC_NONE = 0,
        FUNC_ASSOCIATION_RULES = 1,
        FUNC_SEQUENCES = 2,
        FUNC_CLASSIFICATION = 3,
        FUNC_REGRESSION = 4,
        FUNC_CLUSTERING = 5,
        FUNC_TIME_SERIES = 6
    };

    BaseModel();
    BaseModel(const BaseModel&) = delete;
    BaseModel& operator=(const BaseModel&) = delete;

    /// Deletes the version info, the dictionary if it is owned, the transformation dictionary and the result
    /// dictionary, in this order.
    ~BaseModel() override;

    /// Takes the dictionary of input variables and leaves it as it is whether the model deletes it.
    void SetScoreDictionary(ScoreDictionary* dictionary) override;
    void SetTransformationScoreDictionary(TransformationDictionary* dictionary) override;
    void SetResultScoreDictionary(ScoreDictionary* dictionary) override;

    /// Gives a variable its role; the role ROLE_TARGET also makes it the target. The dictionary must be set.
    /// A variable that is neither in the dictionary nor in the transformation dictionary is refused, but only when
    /// there is a transformation dictionary: without one every name is taken.
    /// @return false for an empty name and for a refused variable
    bool SetVarRole(const std::string& name, VarRole role) override;

    /// The same by the variable's name; false for null.
    bool SetVarRole(const ScoreDictVar* var, VarRole role) override;

    void SetMissingValuePolicy(MVPolicy policy) override;

    /// Takes the version info. It doesn't delete an earlier one.
    void SetVersionInfo(ScoreVersionInfo* info) override;

    int GetVarRole(const std::string& name) const override;

    /// @param var must not be null
    int GetVarRole(const ScoreDictVar* var) const override;

    const ScoreVersionInfo* GetVersionInfo() const override;

    /// @return the dictionary's variable that was last made the target; null when it has none of that name
    const ScoreDictVar* GetTargetVar() const override;
    const ScoreDictionary* GetDictionary() const override;
    TransformationDictionary* GetTransformationDictionary() const override;
    ScoreDictionary* GetResultDictionary() const override;
    MVPolicy GetMissingValuePolicy() const override;

    /// Sets the dictionary of input variables.
    /// @param owns whether the model deletes it
    virtual void SetScoreDictionary(ScoreDictionary* dictionary, bool owns);

    /// @return the mining function that a document's functionName stands for; FUNC_NONE for any other text. The
    ///         comparison minds case.
    static FUNCNAME_TYPE MiningFunctionFromString(const std::string& name);

    void SetMiningFunction(FUNCNAME_TYPE function);
    FUNCNAME_TYPE GetMiningFunction() const;
    void SetAlgorithmName(const std::string& name);
    std::string GetAlgorithmName() const;

    /// @return whether the algorithm is "KM" or "Parametric Distribution Fitting"
    bool isKMorPDF() const;

    /// @return whether this is a regression without a target variable
    bool NeedToMakeupATarget() const;

protected:
    /// Gives the prediction for a case that the model can't score, from what is known of the target alone: the default
    /// value of a continuous target, else the value with the highest prior probability.
    /// @param result filled; null does nothing. It must be a ScoreClsResult for the kinds that GetResultKind names.
    /// @return OK; an error NO_PREDICTION when the target has no default or no probabilities, or when there is no
    ///         target
    MCScore::MCStatus HandleMissingValue(ScoreResult* result);

private:
    ScoreDictionary* fDictionary = nullptr;
    bool fOwnsDictionary = true;
    TransformationDictionary* fTransformationDictionary = nullptr;
    ScoreDictionary* fResultDictionary = nullptr;
    ScoreVersionInfo* fVersionInfo = nullptr;
    std::map<std::string, VarRole> fRoles;
    MVPolicy fMissingValuePolicy = MV_DEFAULT_PREDICTION;
    std::string fTargetName;
    std::string fAlgorithmName;
    FUNCNAME_TYPE fMiningFunction = FUNC_NONE;
};

} // namespace MCVeltrane_900

#endif
