#ifndef VELTRANE_PLUGINS_KIT_MODEL_H
#define VELTRANE_PLUGINS_KIT_MODEL_H

#include "kit/inputs/inputs.h"
#include "kit/results/outputs.h"
#include "kit/results/prediction.h"
#include "kit/results/results.h"
#include "kit/results/target.h"

#include <MCScore/MCStatus.h>
#include <MCVeltrane_900/BaseModel.h>

#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

namespace veltrane_kit {

/// What every model kind has and the kit reads: a plug-in's model takes it over whole.
struct ModelParts {
    std::string tag;       ///< of the model's element
    std::string name;      ///< modelName; may be empty
    std::string algorithm; ///< algorithmName; may be empty
    MCVeltrane_900::BaseModel::FUNCNAME_TYPE function = MCVeltrane_900::BaseModel::FUNC_NONE;
    std::string version; ///< of PMML, as the document has it
    std::unique_ptr<MCVeltrane_900::ScoreDictionary> dictionary;
    std::unique_ptr<MCVeltrane_900::TransformationDictionary> derived; ///< null for none
    std::unique_ptr<DataFields> fields; ///< as the document has them; the inputs borrow them
    MiningSchema schema;
    std::unique_ptr<Inputs> inputs;
    std::unique_ptr<Target> target;
    std::unique_ptr<Outputs> outputs;

    bool IsClassification() const { return function == MCVeltrane_900::BaseModel::FUNC_CLASSIFICATION; }
};

/// The base of a plug-in's model. It takes a case the whole road from the host's record to the result; a plug-in adds
/// the prediction itself. One thread at a time.
class Model : public MCVeltrane_900::BaseModel {
public:
    ~Model() override;

    /// The option "missingValuePolicy" is "noPrediction" or "defaultPrediction", which is the start: what becomes of a
    /// case that can't be scored. By "unreadableValues" with the value "invalid" a host asks whether a text in the
    /// place of a number or of a date is an invalid value, as it always is here. Others are the plug-in's.
    bool SetOption(const std::string& name, const std::string& value) override;
    std::vector<std::string> GetInputNames() const override;
    MCVeltrane_900::ScoreResult* CreateResult() const override;

    /// An error NO_PREDICTION tells why in its discrete data, see UnscoredReason.
    /// @return OK; an error NO_PREDICTION for a case that can't be scored and for which the target has no default
    ///         either, for null arguments, and always for such a case under the policy MV_NO_PREDICTION
    MCScore::MCStatus Score(const MCVeltrane_900::ScoreCaseRecord* record,
                            MCVeltrane_900::ScoreResult* result) override;
    bool SkipsCategoryProbabilities() override { return false; }
    void Display(std::ostream& out) const override;

    /// Takes over the parts when all of them are read. Called once, by the translator.
    void Adopt(ModelParts parts);

protected:
    /// Predicts one case. It must not throw and should allocate nothing.
    /// @param inputs     the case, by the slots that the model asked for when it was built
    /// @param prediction cleared; to be filled
    /// @return false when the case can't be scored; `prediction.lacking` tells what value it would take, if one would
    ///         do
    virtual bool Predict(const Inputs& inputs, Prediction& prediction) = 0;

    /// An option of this kind of model.
    /// @return false when there is none of that name, or the value doesn't suit it
    virtual bool SetModelOption(const std::string& name, const std::string& value);

    /// Writes what Display shows of the model itself, below the common part.
    virtual void DisplayModel(std::ostream& out) const;

    const Target& GetTarget() const { return *fTarget; }
    bool IsClassification() const { return fIsClassification; }

private:
    bool PredictCase(const MCVeltrane_900::ScoreCaseRecord& record);
    void Report(MCVeltrane_900::ScoreResult& result);
    void ReportToForeign(MCVeltrane_900::ScoreResult& result);
    MCScore::MCStatus Unscored(int lacking) const;
    MCScore::MCStatus PredictDefault(MCVeltrane_900::ScoreResult& result);
    MCScore::MCStatus TakeOwnDefault(MCVeltrane_900::ScoreResult& result) const;
    MCScore::MCStatus TakeOwnPriors(MCVeltrane_900::ScoreResult& result) const;
    void TakeDefault(MCVeltrane_900::ScoreResult& result);
    void FillOutputs(const MCVeltrane_900::ScoreValue* value, MCVeltrane_900::ScoreResult& result);
    OutputValues* OwnOutputs(MCVeltrane_900::ScoreResult& result) const;
    static void Clear(MCVeltrane_900::ScoreResult& result);

    std::string fTag;
    std::string fName;
    bool fIsClassification = false;
    std::unique_ptr<DataFields> fFields;
    std::unique_ptr<Inputs> fInputs;
    std::unique_ptr<Target> fTarget;
    std::unique_ptr<Outputs> fOutputs;
    std::shared_ptr<const ResultLayout> fLayout;
    Prediction fPrediction;
    std::unique_ptr<OutputValues> fForeignOutputs; ///< of a result that is not the kit's, made when one comes
};

} // namespace veltrane_kit

#endif
