#ifndef VELTRANE_PLUGINS_TREE_TREE_SCORER_H
#define VELTRANE_PLUGINS_TREE_TREE_SCORER_H

#include "kit/document/element.h"
#include "kit/model/model_plan.h"
#include "leaf_models.h"
#include "tree.h"

#include <iosfwd>
#include <memory>
#include <vector>

namespace veltrane_tree {

/// What becomes of a case when a node's condition can't be decided for a missing value.
enum class MissingStrategy {
    NONE,                ///< the condition doesn't hold
    LAST_PREDICTION,     ///< the node that the case has come to decides
    NULL_PREDICTION,     ///< no prediction
    DEFAULT_CHILD,       ///< the case goes on to the default child
    WEIGHTED_CONFIDENCE, ///< all children that may hold are asked, and weighed by their records
    AGGREGATE_NODES      ///< the records of all leaves that the case may come to are added up
};

/// A TreeModel: a case goes from the root to the first child whose condition holds, and so on.
class TreeScorer : public veltrane_kit::Scorer {
public:
    /// @throws VTException what reading nodes throws; 260115 for a model without a Node, 260272 for two of them;
    ///         260285, 260153 for the model's attributes; 260179 for a strategy that has no meaning with models in
    ///         leaves
    TreeScorer(const veltrane_kit::Element& element, veltrane_kit::ModelParts& parts);

    std::unique_ptr<State> NewState() const override;
    bool Predict(const veltrane_kit::CaseView& fields, veltrane_kit::Prediction& prediction,
                 State& state) const override;
    std::unique_ptr<const veltrane_kit::BlockScorer> MakeBlockScorer() const override;
    bool MayHaveConfidences() const override;
    void Display(std::ostream& out, const veltrane_kit::Target& target) const override;

    // For whoever compiles trees further.

    const Tree& GetTree() const { return fTree; }
    MissingStrategy Strategy() const { return fStrategy; }
    /// Whether no other model stands in a leaf.
    bool PredictsAlone() const { return fModels.IsEmpty(); }
    /// Whether a case that no child of a node takes gets the last prediction on its way.
    bool AnswersFromLast() const { return fAnswersFromLast; }
    /// What a case gets that ends at a node, but for its name.
    /// @param prediction cleared; to be filled. Its confidences are those of a case that needed no surrogate.
    /// @return false for a node that predicts nothing
    bool PredictAt(int node, veltrane_kit::Prediction& prediction) const;

private:
    struct Own;
    class Blocks;

    static constexpr int kNoNode = -1;
    static constexpr int kUndecided = -2;

    /// The sums over several nodes of a case that may be in any of them.
    struct Sums {
        double weight = 0.0;
        double number = 0.0;
    };

    /// What a case brings to a node that it may be in.
    struct Part {
        double weight;
        double penalty; ///< the factor of confidences for the steps on this way that needed a surrogate
    };

    int FindChild(const Node& node, const veltrane_kit::CaseView& fields, bool& usedSurrogate) const;
    bool Descend(const veltrane_kit::CaseView& fields, veltrane_kit::Prediction& prediction, State& state) const;
    bool GoOn(int node, const veltrane_kit::CaseView& fields, veltrane_kit::Prediction& prediction, State& state) const;
    bool AnswerFromLast(int node, int penalties, veltrane_kit::Prediction& prediction, State& state) const;
    bool EndAt(int node, const veltrane_kit::CaseView& fields, veltrane_kit::Prediction& prediction) const;
    bool Answer(int node, int penalties, veltrane_kit::Prediction& prediction, State& state) const;
    bool AnswerByModel(int model, int penalties, const NodeScore& score, const veltrane_kit::CaseView& fields,
                       veltrane_kit::Prediction& prediction, State& state) const;
    bool AnswerCategory(const NodeScore& score, int penalties, veltrane_kit::Prediction& prediction) const;
    void NameNode(const NodeScore& score, veltrane_kit::Prediction& prediction, State& state) const;

    bool AnswerFromSeveral(int node, int penalties, const veltrane_kit::CaseView& fields,
                           veltrane_kit::Prediction& prediction) const;
    double PenaltyOf(int penalties) const;
    void Add(int node, Part part, const veltrane_kit::CaseView& fields, veltrane_kit::Prediction& prediction,
             Sums& sums) const;
    void AddChildren(const Node& node, Part part, const veltrane_kit::CaseView& fields,
                     veltrane_kit::Prediction& prediction, Sums& sums) const;
    void AddShare(const Share& share, Part part, veltrane_kit::Prediction& prediction, Sums& sums) const;
    void AddNode(const NodeScore& score, Part part, veltrane_kit::Prediction& prediction, Sums& sums) const;

    Tree fTree;
    LeafModels fModels;
    MissingStrategy fStrategy;
    double fPenalty;       ///< a factor of the confidence for each step that needed a surrogate or a default child
    bool fAnswersFromLast; ///< a case that no child takes gets the answer of the node that it has come to
    bool fIsClassification;
};

/// See veltrane_kit::MakeScorer.
std::unique_ptr<const veltrane_kit::Scorer> MakeTreeScorer(const veltrane_kit::Element& element,
                                                           veltrane_kit::ModelParts& parts);

} // namespace veltrane_tree

#endif
