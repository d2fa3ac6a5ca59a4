#ifndef VELTRANE_PLUGINS_FOREST_FOREST_H
#define VELTRANE_PLUGINS_FOREST_FOREST_H

#include "kit/columns/block.h"
#include "kit/inputs/case_view.h"
#include "row_sets.h"
#include "tree/tree_scorer.h"
#include "ways.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace veltrane_forest {

/// Many trees over the same fields, laid out flat. Each field of a case is looked at once, whatever number of nodes ask
/// for it, and no step of the way through a tree depends on a jump that would have to be guessed.
///
/// It tells to which leaf of each tree a case comes; a leaf is a node of the tree whose prediction the case gets. Some
/// cases it leaves to the trees themselves: those that a tree has no prediction for, and those with a missing or
/// unheard of value for which some tree makes neither of two ways, see Feature.
class Forest {
public:
    /// What one thread needs. It may be used with one forest alone.
    struct Room {
        std::vector<std::uint16_t> smallMarks;
        std::vector<std::uint32_t> wideMarks;
        unsigned shift = 0; ///< the marks of a feature in a block stand `1 << shift` behind those of the one before
        std::vector<std::uint32_t> leaves;     ///< by tree of the last case, or by row of the last tree
        std::vector<std::uint8_t> shortLeaves; ///< the same by row, where FindLeaves() says so
        std::vector<std::uint8_t> unplain;     ///< 1 for a row that goes tree by tree
        std::vector<std::uint32_t> starts;     ///< by row, the node where its walk begins
        std::vector<RowSet> sets;
        Ways ways;
        Ways::Ends ends;
    };

    /// How a forest goes through its trees. All ways come to the same leaves.
    enum class Walk : std::uint8_t {
        FASTEST,    ///< of those that the processor has
        ONE_BY_ONE, ///< each step of each tree by itself
        ABREAST,    ///< some trees or rows at once, on any processor
        AVX2,       ///< the same by vectors, and the rows of a tree as sets
        AVX512
    };

    /// Whether the processor has what a walk takes.
    static bool Has(Walk walk);

    /// @param trees borrowed while the forest is made
    /// @return null where some condition asks for more than one field, or for more than a range or a set of its values
    static std::unique_ptr<Forest> Plant(const std::vector<const veltrane_tree::TreeScorer*>& trees,
                                         Walk walk = Walk::FASTEST);

    virtual ~Forest() = default;

    std::size_t Trees() const { return fLeaves.size(); }
    /// The nodes that the leaves of a tree are; NodeScore::kNone for one of cases that go tree by tree. A node may be
    /// more than one leaf.
    const std::vector<std::int32_t>& LeavesOf(std::size_t tree) const { return fLeaves[tree]; }
    /// To be called when the leaves are known to whoever asks the forest.
    void ForgetLeaves() { fLeaves = std::vector<std::vector<std::int32_t>>(fLeaves.size()); }

    /// Finds the leaf of each tree for a case.
    /// @return false for a case that goes tree by tree
    virtual bool FindLeaves(const veltrane_kit::CaseView& fields, Room& room) const = 0;

    /// Looks at the fields of a block.
    /// @param room its `unplain` has a flag for each row; it is set for those that go tree by tree, else left alone
    virtual void Look(const veltrane_kit::Block& block, Room& room) const = 0;
    /// Finds the leaf of each row in one tree, after Look(): of all trees, from the first one on.
    /// @return whether the leaves are the short ones of the room
    virtual bool FindLeaves(std::size_t tree, std::size_t rows, Room& room) const = 0;

    /// How many bytes a node takes that isn't a leaf.
    virtual std::size_t NodeBytes() const = 0;
    /// The memory that is taken, in bytes.
    virtual std::size_t Bytes() const = 0;

protected:
    std::vector<std::vector<std::int32_t>> fLeaves; ///< by tree
};

} // namespace veltrane_forest

#endif
