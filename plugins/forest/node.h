#ifndef VELTRANE_PLUGINS_FOREST_NODE_H
#define VELTRANE_PLUGINS_FOREST_NODE_H

#include <cstddef>
#include <cstdint>
#include <limits>

namespace veltrane_forest {

/// What a step of the way through a tree asks: whether the mark of a feature is one of a range that may go on from the
/// highest number to 0, or, where `isSet`, one of a set. A set of few marks has a bit for each in `bits`, one of more
/// stands in a pool from `bits` on: the number of marks, and a bit for each and for a missing value behind them.
struct Question {
    std::uint32_t feature = 0;
    std::uint32_t low = 0;
    std::uint32_t reach = 0; ///< how far the range goes on behind `low`
    std::uint32_t bits = 0;
    bool isSet = false;
};

/// A node of a flat tree in 8 bytes. The child for a no stands at `Child()`, that for a yes right behind it; a leaf is
/// its own child, so that a case which is there stays there, and has its number in place of the reach of a range.
///
/// Feature 0 is 0 in every case: it is that of leaves, which say yes to it.
struct SmallNode {
    using Mark = std::uint16_t;

    static constexpr std::uint32_t kMostFeatures = 1U << 9U;
    static constexpr std::uint32_t kMostNodes = 1U << 22U;
    static constexpr std::uint32_t kMostLeaves = std::numeric_limits<Mark>::max();
    static constexpr std::uint32_t kMostMark = std::numeric_limits<Mark>::max();

    SmallNode() = default;
    SmallNode(const Question& question, std::uint32_t child)
        : fWhere((child << 10U) | (question.isSet ? kSet : 0U) | question.feature),
          fLow(static_cast<Mark>(question.isSet ? question.bits : question.low)),
          fReach(static_cast<Mark>(question.isSet ? question.bits >> 16U : question.reach)) {}

    std::uint32_t Feature() const { return fWhere & (kMostFeatures - 1); }
    bool IsSet() const { return (fWhere & kSet) != 0; }
    std::uint32_t Child() const { return fWhere >> 10U; }
    Mark Low() const { return fLow; }
    Mark Reach() const { return fReach; }
    std::uint32_t Bits() const { return fLow | (static_cast<std::uint32_t>(fReach) << 16U); }

private:
    static constexpr std::uint32_t kSet = kMostFeatures;

    std::uint32_t fWhere = 0;
    Mark fLow = 0;
    Mark fReach = 0;
};

/// The same in 16 bytes, for trees and features that are too many for the smaller one.
struct WideNode {
    using Mark = std::uint32_t;

    static constexpr std::uint32_t kMostFeatures = 1U << 31U;
    static constexpr std::uint32_t kMostNodes = std::numeric_limits<std::uint32_t>::max();
    static constexpr std::uint32_t kMostLeaves = std::numeric_limits<Mark>::max();
    static constexpr std::uint32_t kMostMark = std::numeric_limits<Mark>::max();

    WideNode() = default;
    WideNode(const Question& question, std::uint32_t child)
        : fFeature(question.feature | (question.isSet ? kSet : 0U)), fChild(child),
          fLow(question.isSet ? question.bits : question.low), fReach(question.reach) {}

    std::uint32_t Feature() const { return fFeature & (kSet - 1); }
    bool IsSet() const { return (fFeature & kSet) != 0; }
    std::uint32_t Child() const { return fChild; }
    Mark Low() const { return fLow; }
    Mark Reach() const { return fReach; }
    std::uint32_t Bits() const { return fLow; }

private:
    static constexpr std::uint32_t kSet = kMostFeatures;

    std::uint32_t fFeature = 0;
    std::uint32_t fChild = 0;
    Mark fLow = 0;
    Mark fReach = 0;
};

/// Which sets the questions of a forest ask for.
enum class Sets : std::uint8_t { NONE, OF_BITS, OF_POOL };

inline constexpr std::uint32_t kMarksOfWord = 32;

/// The place of the root; the one before it is left out, so that a root that is a leaf has a child ahead of it.
inline constexpr std::uint32_t kRootOfTree = 1;

/// Whether a mark is in a set of the pool.
inline bool IsInPool(const std::uint32_t* set, std::uint32_t mark) {
    const std::uint32_t at = mark < set[0] ? mark : set[0];
    return (set[1 + at / kMarksOfWord] >> (at % kMarksOfWord) & 1U) != 0;
}

/// One step of a case, without a jump where sets are told by bits.
/// @param nodes of the tree
/// @param marks of the case, that of feature 0
/// @param shift the mark of the next feature stands `1 << shift` behind
template <Sets kSets, typename Node>
inline std::uint32_t Next(const Node* nodes, std::uint32_t at, const typename Node::Mark* marks, unsigned shift,
                          const std::uint32_t* pool) {
    using Mark = typename Node::Mark;
    const Node node = nodes[at];
    const Mark mark = marks[static_cast<std::size_t>(node.Feature()) << shift];
    std::uint32_t answer = static_cast<Mark>(mark - node.Low()) <= node.Reach() ? 1U : 0U;
    if constexpr (kSets == Sets::OF_BITS) {
        const std::uint32_t bit = (node.Bits() >> (mark % kMarksOfWord)) & 1U;
        answer = node.IsSet() ? bit : answer;
    } else if constexpr (kSets == Sets::OF_POOL) {
        if (node.IsSet()) {
            answer = IsInPool(pool + node.Bits(), mark) ? 1U : 0U;
        }
    }
    return node.Child() + answer;
}

} // namespace veltrane_forest

#endif
