#ifndef VELTRANE_PLUGINS_KIT_MODEL_PLAN_H
#define VELTRANE_PLUGINS_KIT_MODEL_PLAN_H

#include "kit/inputs/inputs.h"
#include "kit/model/scorer.h"
#include "kit/results/outputs.h"
#include "kit/results/prediction.h"
#include "kit/results/results.h"
#include "kit/results/target.h"

#include <MCVeltrane_900/BaseModel.h>
#include <MCVeltrane_900/PMMLTranslator.h>

#include <memory>
#include <string>
#include <vector>

namespace veltrane_kit {

struct DocumentParts;

/// What every model kind has and the kit reads, as it grows while a model is built.
struct ModelParts {
    std::string tag;       ///< of the model's element
    std::string name;      ///< modelName; may be empty
    std::string algorithm; ///< algorithmName; may be empty
    MCVeltrane_900::BaseModel::FUNCNAME_TYPE function = MCVeltrane_900::BaseModel::FUNC_NONE;
    std::string version;                                         ///< of PMML, as the document has it
    std::shared_ptr<MCVeltrane_900::ScoreDictionary> dictionary; ///< with what the model's own elements add to it
    std::shared_ptr<const DataFields> fields;                    ///< as the document has them; the inputs borrow them
    MiningSchema schema;
    std::unique_ptr<Inputs> inputs;
    std::unique_ptr<Target> target;
    Outputs::More more; ///< what output fields ask of clusters or instances, and the targets beside the first
    std::unique_ptr<Outputs> outputs;
    std::unique_ptr<const Scorer> scorer;

    // While the model is built, for one that consists of others.
    const DocumentParts* document = nullptr;
    MCVeltrane_900::PMMLTranslator* translator = nullptr;
    int depth = 0;                   ///< how many models this one is a part of
    std::vector<Outputs::Told> told; ///< the final output fields of its parts, where they are its own too

    bool IsClustering() const { return function == MCVeltrane_900::BaseModel::FUNC_CLUSTERING; }
    /// Whether the predicted value is a category: that of a clustering is a cluster.
    bool IsClassification() const {
        return function == MCVeltrane_900::BaseModel::FUNC_CLASSIFICATION || IsClustering();
    }
};

class ModelState;

/// A model whole: what all kinds have in common, and the scorer of its kind. It doesn't change once it is there, so
/// threads share it, and a model that consists of others may hold several.
class ModelPlan {
public:
    /// @param parts all of them; nothing is asked of the inputs any more
    explicit ModelPlan(ModelParts parts);

    const ModelParts& Parts() const { return fParts; }
    const Inputs& GetInputs() const { return *fParts.inputs; }
    const Target& GetTarget() const { return *fParts.target; }
    const Outputs& GetOutputs() const { return *fParts.outputs; }
    const Scorer& GetScorer() const { return *fParts.scorer; }
    const std::shared_ptr<const ResultLayout>& Layout() const { return fLayout; }
    bool IsClassification() const { return fIsClassification; }
    /// How many probabilities a prediction has room for: one for each category of the target, 0 without any.
    std::size_t Probabilities() const { return fCategories; }

    /// Reads a case, derived fields included, and predicts.
    /// @return false for a case that can't be scored; its prediction tells why
    bool Predict(const MCVeltrane_900::ScoreCaseRecord& record, ModelState& state) const;

    /// Predicts for a case whose fields are all there.
    /// @param prediction is cleared first
    bool Predict(const CaseView& fields, Prediction& prediction, Scorer::State& state) const;

    /// What is predicted for a case that can't be scored: the default of each target. A further target keeps what it
    /// has.
    /// @param prediction of the case; cleared where the first target has no default
    /// @return false for that
    bool PredictDefault(Prediction& prediction) const;

    /// Gives the further targets that have no prediction their own defaults.
    /// @param others of a prediction
    void CompleteOthers(std::vector<Prediction>& others) const;

    /// Predicts for a case of the outer model that this one is a part of: its own fields are put into the frame first.
    /// A case that can't be scored has the default of the part's own Targets.
    /// @param fields     with room
    /// @param prediction is cleared first; `lacking` is a slot of the outer model
    bool PredictPart(const CaseView& fields, Prediction& prediction, Scorer::State& state) const;

private:
    ModelParts fParts;
    bool fIsClassification;
    std::size_t fCategories; ///< that have probabilities
    std::shared_ptr<const ResultLayout> fLayout;
};

/// What one thread needs to score with a plan.
class ModelState {
public:
    /// @param plan borrowed
    explicit ModelState(const ModelPlan& plan) : inputs(plan.GetInputs()), scorer(plan.GetScorer().NewState()) {}

    InputState inputs;
    std::unique_ptr<Scorer::State> scorer;
    Prediction prediction; ///< of the last case
};

} // namespace veltrane_kit

#endif
