#include "tree_reader.h"

#include "kit/document/raise.h"

#include <algorithm>
#include <string>

namespace veltrane_tree {

using veltrane_kit::Element;
using veltrane_kit::Message;
using veltrane_kit::Prediction;
using veltrane_kit::Raise;

namespace {

constexpr const XMLCh* kRecordCount = u"recordCount";
constexpr const XMLCh* kScore = u"score";
constexpr const XMLCh* kDefaultChild = u"defaultChild";

/// A number that must not be negative, as the counts of records; none when it is absent.
double ReadCount(const Element& element, const XMLCh* name) {
    if (!element.Has(name)) {
        return Prediction::kNone;
    }
    const double number = element.Number(name);
    if (number < 0.0) {
        element.RaiseInvalid(name);
    }
    return number;
}

/// A number from 0 to 1; none when it is absent.
double ReadFraction(const Element& element, const XMLCh* name) {
    const double number = ReadCount(element, name);
    if (number > 1.0) {
        element.RaiseInvalid(name);
    }
    return number;
}

} // namespace

void TreeReader::Read(const Element& root) {
    fTree.nodes.resize(1);
    fTree.scores.resize(1);
    ReadNode(root, 0);
}

TreeReader::Parts TreeReader::Survey(const Element& element) const {
    Parts parts;
    for (const Element child : element.Children()) {
        if (child.Is(u"Node")) {
            ++parts.nodes;
        } else if (child.Is(u"ScoreDistribution")) {
            ++parts.shares;
        } else if (ConditionReader::IsPredicate(child)) {
            if (parts.predicate) {
                Raise<Message::MORE_THAN_ONE>("predicate", element.Tag());
            }
            parts.predicate = child;
        } else if (!child.Is(u"Extension") && !child.Is(u"Partition")) {
            child.RaiseMisplaced();
        }
    }
    if (!parts.predicate) {
        Raise<Message::MISSING_NODE_IN>("predicate", element.Tag());
    }
    return parts;
}

void TreeReader::ReadNode(const Element& element, std::size_t index) {
    const Parts parts = Survey(element);
    fTree.nodes[index].condition = fConditions.Read(parts.predicate);
    ReadScore(element, index);
    ReadShares(element, parts.shares, fTree.scores[index]);
    if (index > 0) {
        RequireRecordCount(element, fTree.scores[index]);
    }
    if (parts.nodes > 0) {
        ReadChildren(element, index, parts.nodes);
    } else if (element.Has(kDefaultChild)) {
        element.RaiseInvalid(kDefaultChild);
    }
}

void TreeReader::ReadScore(const Element& element, std::size_t index) {
    NodeScore& score = fTree.scores[index];
    score.place = ++fPlace;
    score.recordCount = ReadCount(element, kRecordCount);
    if (element.Has(kScore)) {
        if (fParts.IsClassification()) {
            score.category = fParts.target->CategoryOf(element, kScore);
        } else {
            score.number = element.Number(kScore);
        }
    }
    if (element.Has(u"id")) {
        score.id = static_cast<std::int32_t>(fTree.ids.size());
        fTree.ids.push_back(element.AnyText(u"id"));
    }
}

void TreeReader::ReadShares(const Element& element, int count, NodeScore& score) {
    score.firstShare = static_cast<std::int32_t>(fTree.shares.size());
    for (const Element child : element.Children()) {
        if (count > 0 && child.Is(u"ScoreDistribution")) {
            if (!fParts.IsClassification()) {
                child.RaiseMisplaced();
            }
            ReadShare(child, score);
            ++score.shareCount;
        }
    }
    CompleteProbabilities(score);
    if (score.category == NodeScore::kNone) {
        score.category = WinnerOf(score);
    }
}

void TreeReader::ReadShare(const Element& element, const NodeScore& score) {
    Share share;
    share.category = fParts.target->CategoryOf(element, u"value");
    const auto category = static_cast<std::size_t>(share.category);
    if (category >= fSharedAt.size()) {
        fSharedAt.resize(std::max(category + 1, 2 * fSharedAt.size()));
    }
    if (fSharedAt[category] == score.place) {
        Raise<Message::DUPLICATE_DEFINITION>(element.Tag(), element.AnyText(u"value"), "Node");
    }
    fSharedAt[category] = score.place;
    if (!element.Has(kRecordCount)) {
        Raise<Message::MISSING_ATTRIBUTE_OF>(veltrane_kit::Narrow(kRecordCount), element.Tag());
    }
    share.recordCount = ReadCount(element, kRecordCount);
    share.probability = ReadFraction(element, u"probability");
    share.confidence = ReadFraction(element, u"confidence");
    fTree.hasConfidences = fTree.hasConfidences || share.confidence != Prediction::kNone;
    fTree.shares.push_back(share);
}

/// A probability that isn't told is the share of the records.
void TreeReader::CompleteProbabilities(const NodeScore& score) {
    Share* const first = fTree.shares.data() + score.firstShare;
    double records = 0.0;
    for (const Share* share = first; share != first + score.shareCount; ++share) {
        records += share->recordCount;
    }
    for (Share* share = first; share != first + score.shareCount; ++share) {
        if (share->probability == Prediction::kNone && records > 0.0) {
            share->probability = share->recordCount / records;
        }
    }
}

/// The category that a node predicts which tells no score: the most probable one, among equally probable ones that with
/// the most records, and the first among those. None where no share has a probability.
std::int32_t TreeReader::WinnerOf(const NodeScore& score) const {
    const Share* best = nullptr;
    const Share* share = fTree.shares.data() + score.firstShare;
    for (const Share* const end = share + score.shareCount; share != end; ++share) {
        const bool isHigher = best == nullptr || share->probability > best->probability ||
                              (share->probability == best->probability && share->recordCount > best->recordCount);
        if (share->probability != Prediction::kNone && isHigher) {
            best = share;
        }
    }
    return best == nullptr ? NodeScore::kNone : best->category;
}

/// Where missing values are weighed by records, a node that doesn't tell its own has those of its categories.
void TreeReader::RequireRecordCount(const Element& element, NodeScore& score) const {
    if (!fNeeds.recordCounts || score.recordCount != Prediction::kNone) {
        return;
    }
    if (score.shareCount == 0) {
        Raise<Message::MISSING_ATTRIBUTE_OF>(veltrane_kit::Narrow(kRecordCount), element.Tag());
    }
    score.recordCount = 0.0;
    const Share* share = fTree.shares.data() + score.firstShare;
    for (const Share* const end = share + score.shareCount; share != end; ++share) {
        score.recordCount += share->recordCount;
    }
}

void TreeReader::ReadChildren(const Element& element, std::size_t index, int count) {
    const std::size_t first = fTree.nodes.size();
    fTree.nodes.resize(first + static_cast<std::size_t>(count));
    fTree.scores.resize(fTree.nodes.size());
    fTree.nodes[index].firstChild = static_cast<std::int32_t>(first);
    fTree.nodes[index].childCount = count;
    const bool hasDefault = element.Has(kDefaultChild);
    const std::string defaultChild = hasDefault ? element.Text(kDefaultChild) : std::string();
    std::size_t child = first;
    for (const Element node : element.Children()) {
        if (!node.Is(u"Node")) {
            continue;
        }
        if (hasDefault && node.Has(u"id") && node.AnyText(u"id") == defaultChild) {
            fTree.scores[index].defaultChild = static_cast<std::int32_t>(child);
        }
        ReadNode(node, child++);
    }
    if (hasDefault && fTree.scores[index].defaultChild == NodeScore::kNone) {
        element.RaiseInvalid(kDefaultChild);
    }
}

} // namespace veltrane_tree
