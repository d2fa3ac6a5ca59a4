#ifndef VELTRANE_PLUGINS_FOREST_WAYS_H
#define VELTRANE_PLUGINS_FOREST_WAYS_H

#include "node.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace veltrane_forest {

/// Ways through trees that are gone sixteen at a time by AVX-512: of one case through many trees, or of many rows
/// through one. Wherever one has come to a leaf, another begins.
class Ways {
public:
    /// Whether the processor has what it takes.
    static bool AreThere();

    /// A way, and the node where it begins: for a case, among those of all trees.
    void Add(std::uint32_t id, std::uint32_t start) {
        fIds[fCount] = id;
        fStarts[fCount] = start;
        ++fCount;
    }
    /// Makes room for some ways, and forgets those that were there.
    void Clear(std::size_t most) {
        fCount = 0;
        fIds.resize(most + kMore);
        fStarts.resize(most + kMore);
    }
    /// To be called behind the last way.
    void Close();
    bool IsEmpty() const { return fCount == 0; }

    /// Where the ways end, in the order in which they do.
    struct Ends {
        std::vector<std::uint32_t> ids;
        std::vector<std::uint32_t> leaves;
    };

    /// How many marks a case has room for that has some.
    static std::size_t RoomForMarks(std::size_t marks) { return marks < kMarksOfVector ? kMarksOfVector : marks + 1; }

    /// Goes through trees, each way through one.
    /// @param nodes  of all trees
    /// @param sets   NONE or OF_BITS
    /// @param marks  of the case, that of feature 0
    /// @param count  of these marks, which have the room that they need
    /// @param leaves by tree
    void GoThroughTrees(const SmallNode* nodes, Sets sets, const SmallNode::Mark* marks, std::size_t count, Ends& ends,
                        std::uint32_t* leaves) const;
    /// Goes through a tree, each row on a way.
    /// @param nodes of the tree
    /// @param marks of feature 0; those of the next one stand `1 << shift` behind, and one mark behind the last one is
    ///              read too
    /// @param leaves by row
    void GoThroughTree(const SmallNode* nodes, Sets sets, const SmallNode::Mark* marks, unsigned shift, Ends& ends,
                       std::uint32_t* leaves) const;

    std::size_t Bytes() const { return (fIds.capacity() + fStarts.capacity()) * sizeof(std::uint32_t); }

private:
    static constexpr std::size_t kMarksOfVector = 32;
    /// Behind the ways stand some that aren't gone.
    static constexpr std::size_t kMore = 32;

    void Tell(const Ends& ends, std::uint32_t* leaves) const;

    std::size_t fCount = 0;
    std::vector<std::uint32_t> fIds;
    std::vector<std::uint32_t> fStarts;
};

} // namespace veltrane_forest

#endif
