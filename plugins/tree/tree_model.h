#ifndef VELTRANE_PLUGINS_TREE_TREE_MODEL_H
#define VELTRANE_PLUGINS_TREE_TREE_MODEL_H

#include "kit/model/model.h"
#include "tree.h"

#include <string>
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
class TreeModel : public veltrane_kit::Model {
public:
    /// @throws VTException what reading nodes throws; 260115 for a model without a Node, 260272 for two of them;
    ///         260285, 260153 for the model's attributes
    TreeModel(const veltrane_kit::Element& element, veltrane_kit::ModelParts& parts);

protected:
    bool Predict(const veltrane_kit::Inputs& inputs, veltrane_kit::Prediction& prediction) override;
    void DisplayModel(std::ostream& out) const override;

private:
    static constexpr int kNoNode = -1;
    static constexpr int kUndecided = -2;

    /// The sums over several nodes of a case that may be in any of them.
    struct Sums {
        double weight = 0.0;
        double number = 0.0;
    };

    int FindChild(const Node& node, const veltrane_kit::Inputs& inputs, bool& usedSurrogate) const;
    bool GoOn(int node, const veltrane_kit::Inputs& inputs, veltrane_kit::Prediction& prediction);
    bool AnswerFromLast(int node, int penalties, veltrane_kit::Prediction& prediction);
    bool EndAt(int node, const veltrane_kit::Inputs& inputs, veltrane_kit::Prediction& prediction) const;
    bool Answer(int node, int penalties, veltrane_kit::Prediction& prediction);
    bool AnswerCategory(const NodeScore& score, int penalties, veltrane_kit::Prediction& prediction) const;
    void NameNode(const NodeScore& score, veltrane_kit::Prediction& prediction);

    bool AnswerFromSeveral(int node, int penalties, const veltrane_kit::Inputs& inputs,
                           veltrane_kit::Prediction& prediction);
    double PenaltyOf(int penalties) const;
    void Add(int node, double weight, const veltrane_kit::Inputs& inputs, veltrane_kit::Prediction& prediction,
             Sums& sums) const;
    void AddChildren(const Node& node, double weight, const veltrane_kit::Inputs& inputs,
                     veltrane_kit::Prediction& prediction, Sums& sums) const;
    void AddShare(const Share& share, double weight, veltrane_kit::Prediction& prediction, Sums& sums) const;
    void AddNode(const NodeScore& score, double weight, veltrane_kit::Prediction& prediction, Sums& sums) const;

    Tree fTree;
    MissingStrategy fStrategy;
    double fPenalty;       ///< a factor of the confidence for each step that needed a surrogate or a default child
    bool fAnswersFromLast; ///< a case that no child takes gets the answer of the node that it has come to
    std::string fPlaceName;
};

} // namespace veltrane_tree

#endif
