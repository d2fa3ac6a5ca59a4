#ifndef VELTRANE_PLUGINS_FOREST_FLAT_FOREST_H
#define VELTRANE_PLUGINS_FOREST_FLAT_FOREST_H

#include "feature.h"
#include "forest.h"
#include "groves.h"
#include "node.h"
#include "sketch.h"
#include "ways.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace veltrane_forest {

/// A forest whose nodes are of one form, with the sets that they ask for.
template <typename Node>
class FlatForest : public Forest {
public:
    using Mark = typename Node::Mark;

    explicit FlatForest(Walk walk);

    /// Lays a tree out behind those before.
    /// @param sets where questions of the tree have their sets
    /// @param pool of sets, those of this tree too
    /// @return false for a tree that is too large
    bool Add(Sketch sketch, Sets sets, const std::vector<std::uint32_t>& pool);
    /// To be called when all are there.
    /// @param features settled, with what the trees refuse
    /// @param pool     of sets
    void Settle(std::vector<Feature> features, std::vector<std::uint32_t> pool, Sets sets);

    bool FindLeaves(const veltrane_kit::CaseView& fields, Room& room) const override;
    void Look(const veltrane_kit::Block& block, Room& room) const override;
    bool FindLeaves(std::size_t tree, std::size_t rows, Room& room) const override;
    std::size_t NodeBytes() const override { return sizeof(Node); }
    std::size_t Bytes() const override;

private:
    struct Tree {
        std::size_t first;   ///< of its nodes
        std::uint32_t depth; ///< the most steps to a leaf
        std::uint32_t exit;  ///< of its crown, the first one, where that isn't whole
        bool isUneven;       ///< whether most cases need far less
    };

    /// Where a tree that is laid out goes on.
    struct Place {
        Sketch::Way way;
        std::uint32_t at;  ///< the node
        std::uint32_t set; ///< of the crown's rows, kNoSet outside of it
    };
    static constexpr std::uint32_t kNoSet = ~std::uint32_t{0};

    void Lay(const Sketch& sketch, const Crown& crown);
    void GoByCrown(std::size_t tree, std::size_t rows, Room& room) const;
    bool MarkCase(const veltrane_kit::CaseView& fields, Mark* marks) const;
    template <Sets kSets>
    void WalkCase(const Mark* marks, std::uint32_t* leaves) const;
    template <Sets kSets>
    void WalkCaseAbreast(const std::uint32_t* trees, const Mark* marks, std::uint32_t* leaves) const;
    template <Sets kSets>
    void WalkRows(const Tree& tree, const Mark* marks, std::size_t rows, Room& room) const;
    template <Sets kSets>
    void WalkAbreast(const Node* nodes, std::uint32_t deepest, const Mark* marks, unsigned shift,
                     const std::uint32_t* starts, std::uint32_t* leaves) const;
    template <Sets kSets>
    void WalkUneven(const Node* nodes, const Mark* marks, unsigned shift, std::size_t rows, const std::uint32_t* starts,
                    std::uint32_t* leaves) const;

    std::vector<Feature> fFeatures;
    std::vector<std::uint32_t>
        fRanked; ///< features whose numbers a case looks up some at once, those of most cuts last
    std::vector<std::uint32_t> fUnranked; ///< all others
    std::vector<std::uint32_t> fPool;
    Sets fSets = Sets::NONE;
    bool fIsOneByOne;
    bool fHasVectors = false;
    const RowVectors* fRowVectors = nullptr; ///< null where crowns aren't used
    Groves fGroves;                          ///< of the crowns of all trees, else empty
    std::vector<std::uint16_t> fExits;       ///< of crowns that aren't whole, the nodes that they lead to
    bool fHasWays = false;
    Ways fWays; ///< of a case through the deeper trees, where it goes by them
    std::vector<Node> fNodes;
    std::vector<Tree> fTrees;
    std::vector<std::uint32_t> fOrder; ///< of the trees, by their depth
    std::size_t fAbreast = 0;          ///< so many of them aren't in fWays
};

extern template class FlatForest<SmallNode>;
extern template class FlatForest<WideNode>;

} // namespace veltrane_forest

#endif
