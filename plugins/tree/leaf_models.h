#ifndef VELTRANE_PLUGINS_TREE_LEAF_MODELS_H
#define VELTRANE_PLUGINS_TREE_LEAF_MODELS_H

#include "kit/document/element.h"
#include "kit/model/model_plan.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace veltrane_tree {

/// The older models, Regression and DecisionTree, that stand in leaves of a tree and predict for the cases that come
/// to them.
class LeafModels {
public:
    static constexpr int kNone = -1;

    /// What one thread needs for them.
    struct State {
        std::vector<std::unique_ptr<veltrane_kit::Scorer::State>> models;
        veltrane_kit::Prediction prediction; ///< of the model that was asked last
    };

    /// Whether an element is such a model.
    static bool IsModel(const veltrane_kit::Element& element);

    /// Reads the model of a leaf.
    /// @param parts of the tree; its target learns the categories of the model
    /// @throws VTException what reading the model throws; 260214 for one of another function than the tree; 260302 for
    ///         one that lies too deep in others
    void Read(const veltrane_kit::Element& element, int leaf, veltrane_kit::ModelParts& parts);

    /// Makes ready for At() when all are read.
    void Settle();

    bool IsEmpty() const { return fModels.empty(); }

    /// The model of a node; kNone for one that predicts by itself.
    int At(int node) const;

    /// Whether one may have confidences apart from its probabilities.
    bool HaveConfidences() const;

    State NewState() const;

    /// Predicts as the model of a leaf does.
    /// @param prediction gets number, or category and shares; `lacking` for a case that can't be scored
    bool Predict(int model, const veltrane_kit::CaseView& fields, veltrane_kit::Prediction& prediction,
                 State& state) const;

    /// Has the models that look back on the cases before see one that didn't come to them.
    /// @param asked the model that it did come to; kNone for none
    void PassBy(int asked, const veltrane_kit::CaseView& fields, State& state) const;

private:
    struct Model {
        std::int32_t leaf;
        bool looksBack;
        std::unique_ptr<const veltrane_kit::ModelPlan> plan;
        std::vector<std::size_t> categories; ///< the tree's, by those of the model
    };

    std::vector<Model> fModels; ///< by their leaves
};

} // namespace veltrane_tree

#endif
