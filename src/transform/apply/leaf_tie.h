#ifndef VELTRANE_TRANSFORM_APPLY_LEAF_TIE_H
#define VELTRANE_TRANSFORM_APPLY_LEAF_TIE_H

#include "transform/trees/tree_node.h"

#include <typeinfo>

namespace veltrane::transform {

/// What evaluation leaves in a leaf: the field that its name stands for, and the field's position in the record.
struct LeafTie {
    /// Nothing that a tree says is changed by it, so plans of the tree stay good.
    static void Set(MCVeltrane_900::FunctionTree& leaf, const MCVeltrane_900::ScoreDictVar* variable, int position) {
        if (typeid(leaf) == typeid(MCVeltrane_900::FunctionTreeImp)) {
            auto& stats = TreeNode::Stats(static_cast<MCVeltrane_900::FunctionTreeImp&>(leaf));
            stats.SetVariable(variable);
            stats.SetVarIndex(position);
            return;
        }
        MCVeltrane_900::ApplyNodeStats stats(leaf.GetNodeStats());
        stats.SetVariable(variable);
        stats.SetVarIndex(position);
        leaf.SetNodeStats(stats);
    }
};

} // namespace veltrane::transform

#endif
