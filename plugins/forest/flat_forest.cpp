#include "flat_forest.h"

#include "vectors.h"

#include <algorithm>
#include <numeric>
#include <optional>
#include <type_traits>
#include <utility>

namespace veltrane_forest {

using veltrane_kit::Block;
using veltrane_kit::CaseView;

namespace {

constexpr std::uint32_t kRoot = kRootOfTree;

/// So many ways through trees are gone at once: the steps of one wait for memory, those of others fill the time.
constexpr std::size_t kAbreast = 8;

/// So many rows are on their way at once, at most.
constexpr std::size_t kMostRows = 256;

/// A tree that is so much deeper than the ways of cases through it on the average is uneven.
constexpr double kUneven = 1.5;

/// Trees up to so deep are walked by rows abreast on any processor.
constexpr std::uint32_t kShallow = 4;

/// So many steps are gone before it is asked whether all are at a leaf.
constexpr std::uint32_t kStride = 4;

template <typename Node>
std::vector<typename Node::Mark>& MarksIn(Forest::Room& room) {
    if constexpr (std::is_same_v<Node, SmallNode>) {
        return room.smallMarks;
    } else {
        return room.wideMarks;
    }
}

} // namespace

/// Level by level, the two ways of a step side by side, so that the first steps of all cases lie together.
template <typename Node>
bool FlatForest<Node>::Add(Sketch sketch) {
    const std::size_t count = 2 * sketch.steps.size() + 2;
    if (count > Node::kMostNodes || sketch.leaves.size() > Node::kMostLeaves) {
        return false;
    }
    const std::size_t first = fNodes.size();
    fNodes.resize(first + count);
    std::vector<std::pair<Sketch::Way, std::uint32_t>> level{{sketch.root, kRoot}};
    std::vector<std::pair<Sketch::Way, std::uint32_t>> next;
    std::uint32_t free = kRoot + 1;
    std::uint32_t depth = 0;
    double steps = 0.0; // of a case on the average, if as many said yes as no to each question
    double part = 1.0;
    for (; !level.empty(); level.swap(next), ++depth, part /= 2.0) {
        next.clear();
        for (const auto& [way, at] : level) {
            if (way.isLeaf) {
                Question leaf;
                leaf.reach = way.to;
                steps += part * depth;
                fNodes[first + at] = Node(leaf, at - 1);
                continue;
            }
            const Sketch::Step& step = sketch.steps[way.to];
            fNodes[first + at] = Node(step.question, free);
            next.emplace_back(step.no, free);
            next.emplace_back(step.yes, free + 1);
            free += 2;
        }
    }
    fNodes.resize(first + free);
    fTrees.push_back({first, depth - 1, static_cast<double>(depth - 1) > kUneven * steps});
    sketch.leaves.shrink_to_fit();
    fLeaves.push_back(std::move(sketch.leaves));
    return true;
}

template <typename Node>
void FlatForest<Node>::Settle(std::vector<Feature> features, std::vector<std::uint32_t> pool, Sets sets) {
    fFeatures = std::move(features);
    fPool = std::move(pool);
    fPool.shrink_to_fit();
    fSets = sets;
    fNodes.shrink_to_fit();
    fTrees.shrink_to_fit();
    fOrder.resize(fTrees.size());
    std::iota(fOrder.begin(), fOrder.end(), 0U);
    std::stable_sort(fOrder.begin(), fOrder.end(), [this](std::uint32_t left, std::uint32_t right) {
        return fTrees[left].depth < fTrees[right].depth;
    });
}

template <typename Node>
bool FlatForest<Node>::FindLeaves(const CaseView& fields, Room& room) const {
    std::vector<Mark>& marks = MarksIn<Node>(room);
    marks.resize(Stride());
    room.leaves.resize(fTrees.size());
    for (std::size_t i = 0; i < fFeatures.size(); ++i) {
        const std::optional<std::uint32_t> mark = fFeatures[i].MarkIn(fields);
        if (!mark) {
            return false;
        }
        marks[i + 1] = static_cast<Mark>(*mark);
    }
    switch (fSets) {
    case Sets::NONE:
        WalkCase<Sets::NONE>(marks.data(), room.leaves.data());
        break;
    case Sets::OF_BITS:
        WalkCase<Sets::OF_BITS>(marks.data(), room.leaves.data());
        break;
    case Sets::OF_POOL:
        WalkCase<Sets::OF_POOL>(marks.data(), room.leaves.data());
        break;
    }
    return true;
}

/// Some trees at once, of about the same depth.
template <typename Node>
template <Sets kSets>
void FlatForest<Node>::WalkCase(const Mark* marks, std::uint32_t* leaves) const {
    const std::uint32_t* const pool = fPool.data();
    const auto walkOne = [&](std::uint32_t tree) {
        const Node* const nodes = fNodes.data() + fTrees[tree].first;
        std::uint32_t at = kRoot;
        while (nodes[at].Feature() != 0) {
            at = Next<kSets>(nodes, at, marks, pool);
        }
        leaves[tree] = nodes[at].Reach();
    };
    std::size_t done = 0;
    for (; fWalk == Walk::FASTEST && done + kAbreast <= fOrder.size(); done += kAbreast) {
        const std::uint32_t* const trees = fOrder.data() + done;
        const Node* nodes[kAbreast];
        std::uint32_t at[kAbreast];
        for (std::size_t i = 0; i < kAbreast; ++i) {
            nodes[i] = fNodes.data() + fTrees[trees[i]].first;
            at[i] = kRoot;
        }
        const std::uint32_t deepest = fTrees[trees[kAbreast - 1]].depth;
        for (std::uint32_t moved = 1, depth = 0; depth < deepest && moved != 0; depth += kStride) {
            for (std::uint32_t step = 0; step < kStride; ++step) {
                moved = 0;
                for (std::size_t i = 0; i < kAbreast; ++i) {
                    const std::uint32_t next = Next<kSets>(nodes[i], at[i], marks, pool);
                    moved |= next ^ at[i];
                    at[i] = next;
                }
            }
        }
        for (std::size_t i = 0; i < kAbreast; ++i) {
            leaves[trees[i]] = nodes[i][at[i]].Reach();
        }
    }
    for (; done < fOrder.size(); ++done) {
        walkOne(fOrder[done]);
    }
}

template <typename Node>
void FlatForest<Node>::Look(const Block& block, Room& room) const {
    std::vector<Mark>& marks = MarksIn<Node>(room);
    // A vector reads one mark more than it needs.
    marks.resize(Stride() * block.MostRows() + 1);
    room.leaves.resize(block.MostRows());
    for (std::size_t i = 0; i < fFeatures.size(); ++i) {
        fFeatures[i].MarkRows(block, marks.data() + i + 1, Stride(), room.unplain.data());
    }
}

template <typename Node>
void FlatForest<Node>::FindLeaves(std::size_t tree, std::size_t rows, Room& room) const {
    const Mark* const marks = MarksIn<Node>(room).data();
    switch (fSets) {
    case Sets::NONE:
        WalkRows<Sets::NONE>(fTrees[tree], marks, rows, room.leaves.data());
        break;
    case Sets::OF_BITS:
        WalkRows<Sets::OF_BITS>(fTrees[tree], marks, rows, room.leaves.data());
        break;
    case Sets::OF_POOL:
        WalkRows<Sets::OF_POOL>(fTrees[tree], marks, rows, room.leaves.data());
        break;
    }
}

/// The ways through uneven trees differ in length: rows that have come to a leaf are left out. Through others all rows
/// go on together.
template <typename Node>
template <Sets kSets>
void FlatForest<Node>::WalkRows(const Tree& tree, const Mark* marks, std::size_t rows, std::uint32_t* leaves) const {
    const Node* const nodes = fNodes.data() + tree.first;
    std::size_t done = 0;
    if (fWalk == Walk::FASTEST && tree.isUneven) {
        WalkUneven<kSets>(nodes, marks, rows, leaves);
        return;
    }
    if constexpr (std::is_same_v<Node, SmallNode> && kSets != Sets::OF_POOL) {
        if (fWalk == Walk::FASTEST && tree.depth > kShallow && HasVectors()) {
            done = WalkVectors(nodes, tree.depth, kSets, marks, Stride(), rows, leaves);
        }
    }
    const std::size_t stride = Stride();
    for (; fWalk == Walk::FASTEST && done + kAbreast <= rows; done += kAbreast) {
        WalkAbreast<kSets>(nodes, tree.depth, marks + done * stride, leaves + done);
    }
    for (; done < rows; ++done) {
        std::uint32_t at = kRoot;
        while (nodes[at].Feature() != 0) {
            at = Next<kSets>(nodes, at, marks + done * stride, fPool.data());
        }
        leaves[done] = nodes[at].Reach();
    }
}

template <typename Node>
template <Sets kSets>
void FlatForest<Node>::WalkAbreast(const Node* nodes, std::uint32_t deepest, const Mark* marks,
                                   std::uint32_t* leaves) const {
    const std::size_t stride = Stride();
    std::uint32_t at[kAbreast];
    std::fill_n(at, kAbreast, kRoot);
    for (std::uint32_t moved = 1, depth = 0; depth < deepest && moved != 0; depth += kStride) {
        for (std::uint32_t step = 0; step < kStride; ++step) {
            moved = 0;
            for (std::size_t i = 0; i < kAbreast; ++i) {
                const std::uint32_t next = Next<kSets>(nodes, at[i], marks + i * stride, fPool.data());
                moved |= next ^ at[i];
                at[i] = next;
            }
        }
    }
    for (std::size_t i = 0; i < kAbreast; ++i) {
        leaves[i] = nodes[at[i]].Reach();
    }
}

template <typename Node>
template <Sets kSets>
void FlatForest<Node>::WalkUneven(const Node* nodes, const Mark* marks, std::size_t rows, std::uint32_t* leaves) const {
    struct Way {
        std::uint32_t at;
        std::uint32_t row;
    };
    const std::uint32_t* const pool = fPool.data();
    const std::size_t stride = Stride();
    Way ways[kMostRows];
    for (std::size_t first = 0; first < rows; first += kMostRows) {
        std::size_t count = std::min(kMostRows, rows - first);
        for (std::size_t i = 0; i < count; ++i) {
            ways[i] = {kRoot, static_cast<std::uint32_t>(first + i)};
        }
        while (count > 0) {
            std::size_t kept = 0;
            for (std::size_t i = 0; i < count; ++i) {
                const Way way = ways[i];
                const Mark* const own = marks + way.row * stride;
                const std::uint32_t half = Next<kSets>(nodes, way.at, own, pool);
                const std::uint32_t at = Next<kSets>(nodes, half, own, pool);
                leaves[way.row] = nodes[at].Reach();
                ways[kept] = {at, way.row};
                kept += nodes[at].Feature() != 0 ? 1 : 0;
            }
            count = kept;
        }
    }
}

template <typename Node>
std::size_t FlatForest<Node>::Bytes() const {
    std::size_t bytes = fNodes.capacity() * sizeof(Node) + fTrees.capacity() * sizeof(Tree) +
                        (fPool.capacity() + fOrder.capacity()) * sizeof(std::uint32_t);
    for (const Feature& feature : fFeatures) {
        bytes += sizeof(Feature) + feature.Bytes();
    }
    for (const std::vector<std::int32_t>& leaves : fLeaves) {
        bytes += sizeof(std::vector<std::int32_t>) + leaves.capacity() * sizeof(std::int32_t);
    }
    return bytes;
}

template class FlatForest<SmallNode>;
template class FlatForest<WideNode>;

} // namespace veltrane_forest
