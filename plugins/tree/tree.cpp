#include "tree.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace veltrane_tree {

namespace {

/// Puts an item at its place in a list that ends with the last one.
template <typename Item>
void Put(std::vector<Item>& items, std::size_t place, const Item& item, const Item& none) {
    if (place >= items.size()) {
        items.resize(place + 1, none);
    }
    items[place] = item;
}

} // namespace

NodeScore Tree::Score(int node) const {
    const auto at = static_cast<std::size_t>(node);
    const std::int32_t name = fNames[at];
    NodeScore score;
    if (at < fNumbers.size()) {
        score.number = fNumbers[at];
    }
    if (at < fCategories.size()) {
        score.category = fCategories[at];
    }
    score.id = name > 0 ? name : NodeScore::kNone;
    score.place = name > 0 ? 0 : -name;
    if (at < fRecordCounts.size()) {
        score.recordCount = fRecordCounts[at];
    }
    if (at < fShareSpans.size()) {
        score.firstShare = fShareSpans[at].first;
        score.shareCount = fShareSpans[at].count;
    }
    score.defaultChild = DefaultChildOf(node);
    return score;
}

std::int32_t Tree::DefaultChildOf(int node) const {
    const auto at = static_cast<std::size_t>(node);
    return at < fDefaultChildren.size() ? fDefaultChildren[at] : NodeScore::kNone;
}

std::string_view Tree::IdOf(const NodeScore& score) const {
    const char* const at = fIds.data() + score.id;
    std::uint32_t length = 0;
    std::memcpy(&length, at, sizeof(length));
    return {at + sizeof(length), length};
}

/// Children stand behind their parent, so one pass from the root does.
void Tree::SetLastPredicting() {
    lastPredicting.assign(nodes.size(), NodeScore::kNone);
    bool predictsEach = true;
    lastPredicting.front() = Predicts(0) ? 0 : NodeScore::kNone;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        for (int child = nodes[i].firstChild; child < nodes[i].firstChild + nodes[i].childCount; ++child) {
            lastPredicting[static_cast<std::size_t>(child)] = Predicts(child) ? child : lastPredicting[i];
        }
        predictsEach = predictsEach && lastPredicting[i] == static_cast<std::int32_t>(i);
    }
    if (predictsEach) {
        lastPredicting = {};
    }
}

std::size_t Tree::Bytes() const {
    return lastPredicting.capacity() * sizeof(std::int32_t) + nodes.capacity() * sizeof(Node) +
           (fNumbers.capacity() + fRecordCounts.capacity()) * sizeof(double) +
           (fCategories.capacity() + fNames.capacity()) * sizeof(std::int32_t) +
           fShareSpans.capacity() * sizeof(ShareSpan) + fDefaultChildren.capacity() * sizeof(std::int32_t) +
           shares.capacity() * sizeof(Share) + fIds.capacity() + conditions.Bytes();
}

void Tree::Reserve(std::size_t count) {
    nodes.reserve(count);
    fNames.reserve(count);
    fRecordCounts.reserve(keepsRecordCounts ? count : 0);
}

std::size_t Tree::AddNodes(std::size_t count) {
    const std::size_t first = nodes.size();
    nodes.resize(first + count);
    fNames.resize(nodes.size());
    fRecordCounts.resize(keepsRecordCounts ? nodes.size() : 0, veltrane_kit::Prediction::kNone);
    return first;
}

void Tree::SetScore(std::size_t node, const NodeScore& score) {
    fNames[node] = score.id != NodeScore::kNone ? score.id : -score.place;
    if (score.number != veltrane_kit::Prediction::kNone) {
        Put(fNumbers, node, score.number, veltrane_kit::Prediction::kNone);
    }
    if (score.category != NodeScore::kNone) {
        Put(fCategories, node, score.category, NodeScore::kNone);
    }
    if (keepsRecordCounts) {
        fRecordCounts[node] = score.recordCount;
    }
    if (score.shareCount > 0) {
        Put(fShareSpans, node, ShareSpan{score.firstShare, score.shareCount}, ShareSpan());
    }
}

void Tree::SetDefaultChild(std::size_t node, std::size_t child) {
    Put(fDefaultChildren, node, static_cast<std::int32_t>(child), NodeScore::kNone);
}

std::int32_t Tree::KeepId(const std::string& id) {
    const auto length = static_cast<std::uint32_t>(id.size());
    fIds.resize(std::max(fIds.size(), std::size_t{1})); // nothing stands at 0
    const std::size_t at = fIds.size();
    if (id.size() > std::numeric_limits<std::uint32_t>::max() || at > std::numeric_limits<std::int32_t>::max()) {
        return NodeScore::kNone;
    }
    fIds.resize(at + sizeof(length) + id.size());
    std::memcpy(fIds.data() + at, &length, sizeof(length));
    id.copy(fIds.data() + at + sizeof(length), id.size());
    return static_cast<std::int32_t>(at);
}

void Tree::Settle() {
    nodes.shrink_to_fit();
    shares.shrink_to_fit();
    fNumbers.shrink_to_fit();
    fCategories.shrink_to_fit();
    fNames.shrink_to_fit();
    fRecordCounts.shrink_to_fit();
    fShareSpans.shrink_to_fit();
    fDefaultChildren.shrink_to_fit();
    fIds.shrink_to_fit();
    conditions.Settle();
}

} // namespace veltrane_tree
