#ifndef VELTRANE_PLUGINS_KIT_MODEL_H
#define VELTRANE_PLUGINS_KIT_MODEL_H

#include "kit/model/model_plan.h"
#include "kit/results/results.h"

#include <MCScore/MCStatus.h>
#include <MCVeltrane_900/BaseModel.h>

#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

namespace veltrane_kit {

/// A model as hosts have it. It takes a case the whole road from the host's record to the result. One thread at a time:
/// several models may share a plan.
class Model : public MCVeltrane_900::BaseModel {
public:
    explicit Model(std::shared_ptr<const ModelPlan> plan);
    ~Model() override;

    /// The option "missingValuePolicy" is "noPrediction" or "defaultPrediction", which is the start: what becomes of a
    /// case that can't be scored. By "unreadableValues" with the value "invalid" a host asks whether a text in the
    /// place of a number or of a date is an invalid value, as it always is here. There are no others.
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

    const std::shared_ptr<const ModelPlan>& Plan() const { return fPlan; }

private:
    void Report(MCVeltrane_900::ScoreResult& result);
    void ReportToForeign(MCVeltrane_900::ScoreResult& result);
    MCScore::MCStatus Unscored(int lacking);
    MCScore::MCStatus PredictDefault(MCVeltrane_900::ScoreResult& result);
    void FillOutputs(const MCVeltrane_900::ScoreValue* value, MCVeltrane_900::ScoreResult& result);
    void FillOutputs(const MCVeltrane_900::ScoreValue* value, OutputValues& outputs);
    OutputValues* OwnOutputs(MCVeltrane_900::ScoreResult& result) const;
    static void Clear(MCVeltrane_900::ScoreResult& result);

    std::shared_ptr<const ModelPlan> fPlan;
    ModelState fState;
    std::unique_ptr<OutputValues> fForeignOutputs; ///< of a result that is not the kit's, made when one comes
};

} // namespace veltrane_kit

#endif
