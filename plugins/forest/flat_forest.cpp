#include "flat_forest.h"

#include "vectors.h"

#include <algorithm>
#include <cmath>
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

/// Fewer rows than that walk from the root of each tree.
constexpr std::size_t kFewRows = 16;

/// So many rows or trees are on their way at once, at most.
constexpr std::size_t kMostWays = 256;

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

template <typename Node>
FlatForest<Node>::FlatForest(Walk walk) : fIsOneByOne(walk == Walk::ONE_BY_ONE) {
    const bool isAny = walk == Walk::FASTEST;
    fHasVectors = (isAny || walk == Walk::AVX2 || walk == Walk::AVX512) && HasVectors();
    if (!fHasVectors || !std::is_same_v<Node, SmallNode>) {
        return;
    }
    fHasWays = (isAny || walk == Walk::AVX512) && Ways::AreThere();
    fRowVectors = isAny || walk == Walk::AVX512 ? RowVectorsOfAvx512() : nullptr;
    if (fRowVectors == nullptr && walk != Walk::AVX512) {
        fRowVectors = RowVectorsOfAvx2();
    }
}

template <typename Node>
bool FlatForest<Node>::Add(Sketch sketch, Sets sets, const std::vector<std::uint32_t>& pool) {
    if (2 * sketch.steps.size() + 2 > Node::kMostNodes || sketch.leaves.size() > Node::kMostLeaves) {
        return false;
    }
    const Crown crown(sketch);
    if (fRowVectors != nullptr) {
        fGroves.Add(sketch, crown, sets, pool);
    }
    Lay(sketch, crown);
    if (crown.isWhole) {
        // The leaves are the ways out.
        std::vector<std::int32_t> leaves;
        for (const Sketch::Way& exit : crown.exits) {
            leaves.push_back(sketch.leaves[exit.to]);
        }
        sketch.leaves.swap(leaves);
    }
    sketch.leaves.shrink_to_fit();
    fLeaves.push_back(std::move(sketch.leaves));
    return true;
}

/// Level by level, the two ways of a step side by side, so that the first steps of all cases lie together.
template <typename Node>
void FlatForest<Node>::Lay(const Sketch& sketch, const Crown& crown) {
    const std::size_t first = fNodes.size();
    const std::size_t exits = fExits.size();
    fNodes.resize(first + 2 * sketch.steps.size() + 2);
    const bool hasExits = fRowVectors != nullptr && !crown.isWhole;
    fExits.resize(exits + (hasExits ? crown.exits.size() : 0));
    std::vector<Place> level{{sketch.root, kRoot, 0}};
    std::vector<Place> next;
    std::uint32_t free = kRoot + 1;
    std::uint32_t depth = 0;
    std::uint32_t parted = 0; // steps of the crown
    double steps = 0.0;       // of a case on the average, if as many said yes as no to each question
    double part = 1.0;
    for (; !level.empty(); level.swap(next), ++depth, part /= 2.0) {
        next.clear();
        for (const Place& place : level) {
            const bool isInCrown = place.set != kNoSet && !place.way.isLeaf && parted < crown.steps.size();
            if (place.set != kNoSet && !isInCrown && hasExits) {
                fExits[exits + place.set] = static_cast<std::uint16_t>(place.at);
            }
            if (place.way.isLeaf) {
                Question leaf;
                leaf.reach = crown.isWhole ? place.set : place.way.to;
                steps += part * depth;
                fNodes[first + place.at] = Node(leaf, place.at - 1);
                continue;
            }
            const Sketch::Step& step = sketch.steps[place.way.to];
            fNodes[first + place.at] = Node(step.question, free);
            parted += isInCrown ? 1 : 0;
            next.push_back({step.no, free, isInCrown ? place.set : kNoSet});
            next.push_back({step.yes, free + 1, isInCrown ? parted : kNoSet});
            free += 2;
        }
    }
    fNodes.resize(first + free);
    fTrees.push_back(
        {first, depth - 1, static_cast<std::uint32_t>(exits), static_cast<double>(depth - 1) > kUneven * steps});
}

template <typename Node>
void FlatForest<Node>::Settle(std::vector<Feature> features, std::vector<std::uint32_t> pool, Sets sets) {
    fFeatures = std::move(features);
    for (std::size_t i = 0; i < fFeatures.size(); ++i) {
        const Feature& feature = fFeatures[i];
        const bool isRanked = !fIsOneByOne && feature.GetKind() == Feature::Kind::RANK && !feature.Bounds().empty();
        (isRanked ? fRanked : fUnranked).push_back(static_cast<std::uint32_t>(i));
    }
    std::sort(fRanked.begin(), fRanked.end(), [this](std::uint32_t left, std::uint32_t right) {
        return fFeatures[left].Bounds().size() < fFeatures[right].Bounds().size();
    });
    fPool = std::move(pool);
    fPool.shrink_to_fit();
    fSets = sets;
    fNodes.shrink_to_fit();
    fTrees.shrink_to_fit();
    fExits.shrink_to_fit();
    fGroves.Settle();
    fOrder.resize(fTrees.size());
    std::iota(fOrder.begin(), fOrder.end(), 0U);
    std::stable_sort(fOrder.begin(), fOrder.end(), [this](std::uint32_t left, std::uint32_t right) {
        return fTrees[left].depth < fTrees[right].depth;
    });
    fAbreast = fOrder.size();
    if (fHasWays && fSets != Sets::OF_POOL) {
        const auto deep = std::find_if(fOrder.begin(), fOrder.end(),
                                       [this](std::uint32_t tree) { return fTrees[tree].depth > kShallow; });
        fAbreast = static_cast<std::size_t>(deep - fOrder.begin());
        fWays.Clear(fOrder.size() - fAbreast);
        // The longest ways begin first.
        for (std::size_t i = fOrder.size(); i-- > fAbreast;) {
            fWays.Add(fOrder[i], static_cast<std::uint32_t>(fTrees[fOrder[i]].first) + kRoot);
        }
        fWays.Close();
    }
}

template <typename Node>
bool FlatForest<Node>::FindLeaves(const CaseView& fields, Room& room) const {
    std::vector<Mark>& marks = MarksIn<Node>(room);
    marks.resize(std::max(marks.size(), Ways::RoomForMarks(fFeatures.size() + 1)));
    room.leaves.resize(std::max(room.leaves.size(), fTrees.size()));
    if (!MarkCase(fields, marks.data())) {
        return false;
    }
    if constexpr (std::is_same_v<Node, SmallNode>) {
        if (!fWays.IsEmpty()) {
            fWays.GoThroughTrees(fNodes.data(), fSets, marks.data(), fFeatures.size() + 1, room.ends,
                                 room.leaves.data());
        }
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

/// @return false for a case that isn't plain
template <typename Node>
bool FlatForest<Node>::MarkCase(const CaseView& fields, Mark* marks) const {
    for (const std::uint32_t i : fUnranked) {
        const std::optional<std::uint32_t> mark = fFeatures[i].MarkIn(fields);
        if (!mark) {
            return false;
        }
        marks[i + 1] = static_cast<Mark>(*mark);
    }
    constexpr std::size_t kAtOnce = Feature::kRankedAtOnce;
    for (std::size_t done = 0; done < fRanked.size(); done += kAtOnce) {
        const Feature* features[kAtOnce];
        double numbers[kAtOnce];
        std::uint32_t ranks[kAtOnce];
        for (std::size_t i = 0; i < kAtOnce; ++i) {
            features[i] = &fFeatures[fRanked[std::min(done + i, fRanked.size() - 1)]];
            numbers[i] = fields.Number(features[i]->Slot());
        }
        Feature::RankNumbers(features, numbers, ranks);
        const std::size_t count = std::min(kAtOnce, fRanked.size() - done);
        for (std::size_t i = 0; i < count; ++i) {
            const bool isMissing = fields.IsMissing(features[i]->Slot());
            if (isMissing ? features[i]->RefusesMissing() : std::isnan(numbers[i])) {
                return false;
            }
            marks[fRanked[done + i] + 1] = static_cast<Mark>(isMissing ? features[i]->Missing() : ranks[i]);
        }
    }
    return true;
}

/// Some trees at once, of about the same depth.
template <typename Node>
template <Sets kSets>
void FlatForest<Node>::WalkCase(const Mark* marks, std::uint32_t* leaves) const {
    const std::uint32_t* const order = fOrder.data();
    std::size_t done = 0;
    for (; !fIsOneByOne && done + kAbreast <= fAbreast; done += kAbreast) {
        WalkCaseAbreast<kSets>(order + done, marks, leaves);
    }
    for (; done < fAbreast; ++done) {
        const Node* const nodes = fNodes.data() + fTrees[order[done]].first;
        std::uint32_t at = kRoot;
        while (nodes[at].Feature() != 0) {
            at = Next<kSets>(nodes, at, marks, 0, fPool.data());
        }
        leaves[order[done]] = nodes[at].Reach();
    }
}

template <typename Node>
template <Sets kSets>
void FlatForest<Node>::WalkCaseAbreast(const std::uint32_t* trees, const Mark* marks, std::uint32_t* leaves) const {
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
                const std::uint32_t next = Next<kSets>(nodes[i], at[i], marks, 0, fPool.data());
                moved |= next ^ at[i];
                at[i] = next;
            }
        }
    }
    for (std::size_t i = 0; i < kAbreast; ++i) {
        leaves[trees[i]] = nodes[i][at[i]].Reach();
    }
}

/// The marks of feature 0 are all 0.
template <typename Node>
void FlatForest<Node>::Look(const Block& block, Room& room) const {
    const std::size_t most = (block.MostRows() + kRowsOfSet - 1) / kRowsOfSet * kRowsOfSet;
    for (room.shift = 0; std::size_t{1} << room.shift < most;) {
        ++room.shift;
    }
    // A vector reads one mark more than it needs.
    MarksIn<Node>(room).resize(((fFeatures.size() + 1) << room.shift) + 1);
    room.leaves.resize(std::max(most, fTrees.size()));
    room.starts.resize(most);
    room.shortLeaves.resize(most);
    room.sets.resize(fGroves.MostSets() * (most / kRowsOfSet));
    Mark* marks = MarksIn<Node>(room).data();
    std::fill_n(marks, most, Mark{0});
    for (const Feature& feature : fFeatures) {
        marks += std::size_t{1} << room.shift;
        feature.MarkRows(block, marks, room.unplain.data(), fRowVectors);
    }
}

template <typename Node>
bool FlatForest<Node>::FindLeaves(std::size_t tree, std::size_t rows, Room& room) const {
    if constexpr (std::is_same_v<Node, SmallNode>) {
        if (fRowVectors != nullptr && rows >= kFewRows) {
            GoByCrown(tree, rows, room);
            if (fGroves.IsWhole(tree)) {
                return true;
            }
        } else {
            std::fill_n(room.starts.begin(), rows, kRoot);
        }
    } else {
        std::fill_n(room.starts.begin(), rows, kRoot);
    }
    const Mark* const marks = MarksIn<Node>(room).data();
    switch (fSets) {
    case Sets::NONE:
        WalkRows<Sets::NONE>(fTrees[tree], marks, rows, room);
        break;
    case Sets::OF_BITS:
        WalkRows<Sets::OF_BITS>(fTrees[tree], marks, rows, room);
        break;
    case Sets::OF_POOL:
        WalkRows<Sets::OF_POOL>(fTrees[tree], marks, rows, room);
        break;
    }
    return false;
}

/// Finds the leaves of a tree whose crown is whole, else where the walk goes on.
template <typename Node>
void FlatForest<Node>::GoByCrown(std::size_t tree, std::size_t rows, Room& room) const {
    const std::size_t stride = std::size_t{1} << room.shift;
    RowSet* sets = room.sets.data();
    for (std::size_t first = 0; first < rows; first += kRowsOfSet, sets += fGroves.MostSets()) {
        const std::size_t count = std::min(kRowsOfSet, rows - first);
        if (fGroves.IsFirstOfGrove(tree)) {
            fGroves.Ask(tree, *fRowVectors, fPool.data(), room.smallMarks.data() + first, stride, count, sets);
        }
        fGroves.Part(tree, *fRowVectors, count, sets, room.shortLeaves.data() + first);
    }
    if (!fGroves.IsWhole(tree)) {
        const std::uint16_t* const exits = fExits.data() + fTrees[tree].exit;
        for (std::size_t row = 0; row < rows; ++row) {
            room.starts[row] = exits[room.shortLeaves[row]];
        }
    }
}

/// The ways through uneven trees differ in length: rows that have come to a leaf are left out. Through others all rows
/// go on together.
template <typename Node>
template <Sets kSets>
void FlatForest<Node>::WalkRows(const Tree& tree, const Mark* marks, std::size_t rows, Room& room) const {
    const Node* const nodes = fNodes.data() + tree.first;
    const std::uint32_t* const starts = room.starts.data();
    std::uint32_t* const leaves = room.leaves.data();
    std::size_t done = 0;
    if constexpr (std::is_same_v<Node, SmallNode> && kSets != Sets::OF_POOL) {
        if (fHasWays) {
            room.ways.Clear(rows);
            for (std::size_t row = 0; row < rows; ++row) {
                room.ways.Add(static_cast<std::uint32_t>(row), starts[row]);
            }
            room.ways.Close();
            room.ways.GoThroughTree(nodes, kSets, marks, room.shift, room.ends, leaves);
            return;
        }
    }
    if (!fIsOneByOne && tree.isUneven) {
        WalkUneven<kSets>(nodes, marks, room.shift, rows, starts, leaves);
        return;
    }
    if constexpr (std::is_same_v<Node, SmallNode> && kSets != Sets::OF_POOL) {
        if (fHasVectors && tree.depth > kShallow) {
            done = WalkVectors(nodes, tree.depth, kSets, starts, marks, room.shift, rows, leaves);
        }
    }
    for (; !fIsOneByOne && done + kAbreast <= rows; done += kAbreast) {
        WalkAbreast<kSets>(nodes, tree.depth, marks + done, room.shift, starts + done, leaves + done);
    }
    for (; done < rows; ++done) {
        std::uint32_t at = starts[done];
        while (nodes[at].Feature() != 0) {
            at = Next<kSets>(nodes, at, marks + done, room.shift, fPool.data());
        }
        leaves[done] = nodes[at].Reach();
    }
}

template <typename Node>
template <Sets kSets>
void FlatForest<Node>::WalkAbreast(const Node* nodes, std::uint32_t deepest, const Mark* marks, unsigned shift,
                                   const std::uint32_t* starts, std::uint32_t* leaves) const {
    std::uint32_t at[kAbreast];
    std::copy_n(starts, kAbreast, at);
    for (std::uint32_t moved = 1, depth = 0; depth < deepest && moved != 0; depth += kStride) {
        for (std::uint32_t step = 0; step < kStride; ++step) {
            moved = 0;
            for (std::size_t i = 0; i < kAbreast; ++i) {
                const std::uint32_t next = Next<kSets>(nodes, at[i], marks + i, shift, fPool.data());
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
void FlatForest<Node>::WalkUneven(const Node* nodes, const Mark* marks, unsigned shift, std::size_t rows,
                                  const std::uint32_t* starts, std::uint32_t* leaves) const {
    struct Way {
        std::uint32_t at;
        std::uint32_t row;
    };
    const std::uint32_t* const pool = fPool.data();
    Way ways[kMostWays];
    for (std::size_t first = 0; first < rows; first += kMostWays) {
        std::size_t count = std::min(kMostWays, rows - first);
        for (std::size_t i = 0; i < count; ++i) {
            ways[i] = {starts[first + i], static_cast<std::uint32_t>(first + i)};
        }
        while (count > 0) {
            std::size_t kept = 0;
            for (std::size_t i = 0; i < count; ++i) {
                const Way way = ways[i];
                const Mark* const own = marks + way.row;
                const std::uint32_t half = Next<kSets>(nodes, way.at, own, shift, pool);
                const std::uint32_t at = Next<kSets>(nodes, half, own, shift, pool);
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
    std::size_t bytes =
        fNodes.capacity() * sizeof(Node) + fTrees.capacity() * sizeof(Tree) + fGroves.Bytes() + fWays.Bytes() +
        (fPool.capacity() + fOrder.capacity() + fRanked.capacity() + fUnranked.capacity()) * sizeof(std::uint32_t) +
        fExits.capacity() * sizeof(std::uint16_t);
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
