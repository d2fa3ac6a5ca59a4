#ifndef VELTRANE_PLUGINS_FOREST_FLAT_FOREST_H
#define VELTRANE_PLUGINS_FOREST_FLAT_FOREST_H

#include "feature.h"
#include "forest.h"
#include "node.h"
#include "sketch.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace veltrane_forest {

/// A forest whose nodes are of one form, with the sets that they ask for.
template <typename Node>
class FlatForest : public Forest {
public:
    using Mark = typename Node::Mark;

    explicit FlatForest(Walk walk) : fWalk(walk) {}

    /// Lays a tree out behind those before.
    /// @return false for a tree that is too large
    bool Add(Sketch sketch);
    /// To be called when all are there.
    /// @param features settled, with what the trees refuse
    /// @param pool     of sets
    void Settle(std::vector<Feature> features, std::vector<std::uint32_t> pool, Sets sets);

    bool FindLeaves(const veltrane_kit::CaseView& fields, Room& room) const override;
    void Look(const veltrane_kit::Block& block, Room& room) const override;
    void FindLeaves(std::size_t tree, std::size_t rows, Room& room) const override;
    std::size_t NodeBytes() const override { return sizeof(Node); }
    std::size_t Bytes() const override;

private:
    struct Tree {
        std::size_t first;   ///< of its nodes
        std::uint32_t depth; ///< the most steps to a leaf
        bool isUneven;       ///< whether most cases need far less
    };

    /// The marks of a row, and 0 ahead of them.
    std::size_t Stride() const { return fFeatures.size() + 1; }
    template <Sets kSets>
    void WalkCase(const Mark* marks, std::uint32_t* leaves) const;
    template <Sets kSets>
    void WalkRows(const Tree& tree, const Mark* marks, std::size_t rows, std::uint32_t* leaves) const;

    template <Sets kSets>
    void WalkAbreast(const Node* nodes, std::uint32_t deepest, const Mark* marks, std::uint32_t* leaves) const;
    template <Sets kSets>
    void WalkUneven(const Node* nodes, const Mark* marks, std::size_t rows, std::uint32_t* leaves) const;

    std::vector<Feature> fFeatures;
    std::vector<std::uint32_t> fPool;
    Sets fSets = Sets::NONE;
    Walk fWalk;
    std::vector<Node> fNodes;
    std::vector<Tree> fTrees;
    std::vector<std::uint32_t> fOrder; ///< of the trees, by their depth
};

extern template class FlatForest<SmallNode>;
extern template class FlatForest<WideNode>;

} // namespace veltrane_forest

#endif
