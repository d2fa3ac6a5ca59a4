#ifndef MCVELTRANE_900_SCORE_MODEL_H
#define MCVELTRANE_900_SCORE_MODEL_H

#include <veltrane_export.h>

#include <iosfwd>
#include <string>
#include <vector>

namespace MCScore {
class MCStatus;
}

namespace MCVeltrane_900 {

class ScoreCaseRecord;
class ScoreDictionary;
class ScoreDictVar;
class ScoreResult;
class ScoreVersionInfo;
class TransformationDictionary;

/// What the factory hands to a host: a model with its dictionaries, its variable roles and its missing-value policy.
///
/// The host owns a model and deletes it through this class. One model belongs to one thread at a time, because scoring
/// writes into the scratch values of its transformation dictionary. The order of the virtual operations is part of the
/// contract with plug-ins that were built apart from this library.
class VELTRANE_API ScoreModel {
public:
    /// The role of a variable in a model.
    enum VarRole {
        ROLE_INPUT = 0,
        ROLE_TARGET = 1,
        ROLE_SUPPLEMENTARY = 2,
        ROLE_GROUP = 3,
        ROLE_ORDER = 4,
        ROLE_FREQUENCY_WEIGHT = 5,
        ROLE_ANALYSIS_WEIGHT = 6
    };

    /// What a model does with a case that it can't score.
    enum MVPolicy {
        MV_NO_PREDICTION = 0,     ///< the result stays empty
        MV_DEFAULT_PREDICTION = 1 ///< the target's default or its most probable value
    };

    /// The error code of the status of a case for which a model gives no prediction.
    static constexpr long NO_PREDICTION = 90027;

    ScoreModel();
    virtual ~ScoreModel();

    virtual void SetScoreDictionary(ScoreDictionary* dictionary) = 0;
    virtual void SetTransformationScoreDictionary(TransformationDictionary* dictionary) = 0;
    virtual void SetResultScoreDictionary(ScoreDictionary* dictionary) = 0;

    /// Gives a variable its role. False when there is no such variable.
    virtual bool SetVarRole(const std::string& name, VarRole role) = 0;
    virtual bool SetVarRole(const ScoreDictVar* var, VarRole role) = 0;

    virtual void SetMissingValuePolicy(MVPolicy policy) = 0;
    virtual void SetVersionInfo(ScoreVersionInfo* info) = 0;

    /// Sets a scoring option of this kind of model.
    /// @return false when the model has no option of that name, or the value doesn't suit it
    virtual bool SetOption(const std::string& name, const std::string& value) = 0;

    /// @return a VarRole, or -1 for a variable without a role
    virtual int GetVarRole(const std::string& name) const = 0;
    virtual int GetVarRole(const ScoreDictVar* var) const = 0;

    virtual const ScoreVersionInfo* GetVersionInfo() const = 0;

    /// @return the fields that a case has to hold, by name
    virtual std::vector<std::string> GetInputNames() const = 0;

    virtual const ScoreDictVar* GetTargetVar() const = 0;
    virtual const ScoreDictionary* GetDictionary() const = 0;
    virtual TransformationDictionary* GetTransformationDictionary() const = 0;
    virtual ScoreDictionary* GetResultDictionary() const = 0;

    /// @return an empty result of the model's kind, owned by the caller
    virtual ScoreResult* CreateResult() const = 0;

    virtual MVPolicy GetMissingValuePolicy() const = 0;

    /// Scores one case.
    ///
    /// All records of one size that a model is given must have the same layout, every field at the same position: a
    /// model may look positions up once, and its predictions for a record of another layout are wrong without a word.
    /// @param record the case, borrowed for the call
    /// @param result filled with the outcome; made by CreateResult of the same model
    /// @return OK, or what kept the model from scoring the case; it never throws
    virtual MCScore::MCStatus Score(const ScoreCaseRecord* record, ScoreResult* result) = 0;

    /// @return whether a prediction without a case leaves out the probabilities of the single categories
    virtual bool SkipsCategoryProbabilities() = 0;

    /// Writes a readable dump of the model.
    virtual void Display(std::ostream& out) const = 0;
};

} // namespace MCVeltrane_900

#endif
