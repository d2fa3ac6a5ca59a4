#include "forest.h"

#include "flat_forest.h"
#include "vectors.h"

#include <utility>

namespace veltrane_forest {

using veltrane_tree::Tree;
using veltrane_tree::TreeScorer;

namespace {

using TreeList = std::vector<const TreeScorer*>;

bool LookAtAll(const TreeList& trees, Decisions& decisions) {
    for (const TreeScorer* scorer : trees) {
        const Tree& tree = scorer->GetTree();
        for (const veltrane_tree::Node& node : tree.nodes) {
            if (!decisions.Look(tree.conditions, node.condition)) {
                return false;
            }
        }
    }
    return true;
}

/// @return null where something doesn't fit into nodes of this form
template <typename Node>
std::unique_ptr<Forest> PlantAs(const TreeList& trees, Decisions decisions, Forest::Walk walk) {
    if (!decisions.Settle(Node::kMostMark) || decisions.Features().size() + 1 > Node::kMostFeatures) {
        return nullptr;
    }
    auto forest = std::make_unique<FlatForest<Node>>(walk);
    std::vector<std::uint32_t> pool;
    Sketcher sketcher(decisions, pool);
    for (const TreeScorer* tree : trees) {
        Sketch sketch;
        if (!sketcher.Draw(*tree, sketch) || !forest->Add(std::move(sketch), sketcher.Kept(), pool)) {
            return nullptr;
        }
    }
    const Sets sets = sketcher.Met();
    forest->Settle(std::move(decisions.Features()), std::move(pool), sets);
    return forest;
}

} // namespace

bool Forest::Has(Walk walk) {
    switch (walk) {
    case Walk::AVX2:
        return HasVectors() && RowVectorsOfAvx2() != nullptr;
    case Walk::AVX512:
        return HasVectors() && RowVectorsOfAvx512() != nullptr;
    default:
        return true;
    }
}

std::unique_ptr<Forest> Forest::Plant(const TreeList& trees, Walk walk) {
    Decisions decisions;
    if (!LookAtAll(trees, decisions)) {
        return nullptr;
    }
    std::unique_ptr<Forest> forest = PlantAs<SmallNode>(trees, decisions, walk);
    return forest != nullptr ? std::move(forest) : PlantAs<WideNode>(trees, std::move(decisions), walk);
}

} // namespace veltrane_forest
