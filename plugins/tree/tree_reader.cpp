#include "tree_reader.h"

#include "kit/document/raise.h"

#include <algorithm>
#include <string>

namespace veltrane_tree {

using veltrane_kit::ConditionReader;
using veltrane_kit::Element;
using veltrane_kit::Message;
using veltrane_kit::Prediction;
using veltrane_kit::Raise;

namespace {

constexpr const XMLCh* kRecordCount = u"recordCount";
constexpr const XMLCh* kScore = u"score";
constexpr const XMLCh* kDefaultChild = u"defaultChild";

/// Reads an id that is a number as it is written everywhere, of nine digits at most.
/// @return false, and the number untouched, for any other one
bool ReadPlainNumber(const XMLCh* text, std::int32_t& number) {
    constexpr std::size_t kDigits = 9;
    std::int32_t read = 0;
    std::size_t length = 0;
    for (; text[length] != 0; ++length) {
        if (length == kDigits || text[length] < u'0' || text[length] > u'9') {
            return false;
        }
        read = read * 10 + (text[length] - u'0');
    }
    if (length == 0 || (text[0] == u'0' && length > 1)) {
        return false;
    }
    number = read;
    return true;
}

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
    fKeepsDigits = root.Reader()(u"0123456789") == "0123456789";
    fTree.Reserve(1 + root.CountRecordedLike());
    fTree.AddNodes(1);
    ReadNode(root, 0);
    fTree.Settle();
    fModels.Settle();
}

TreeReader::Kind TreeReader::LookUpKind(const Element& child) {
    if (child.Is(u"Node")) {
        return Kind::NODE;
    }
    if (child.Is(u"ScoreDistribution")) {
        return Kind::SHARE;
    }
    if (ConditionReader::IsPredicate(child)) {
        return Kind::PREDICATE;
    }
    if (LeafModels::IsModel(child)) {
        return Kind::MODEL;
    }
    return child.Is(u"Extension") || child.Is(u"Partition") ? Kind::PASSED : Kind::MISPLACED;
}

/// The records of a document have a number for each name.
TreeReader::Kind TreeReader::KindOf(const Element& child) {
    const veltrane::SubtreeNode* const record = child.Record();
    if (record == nullptr) {
        return LookUpKind(child);
    }
    if (record->tag >= fKinds.size()) {
        fKinds.resize(record->tag + std::size_t{1}, Kind::UNKNOWN);
    }
    Kind& kind = fKinds[record->tag];
    if (kind == Kind::UNKNOWN) {
        kind = LookUpKind(child);
    }
    return kind;
}

TreeReader::Parts TreeReader::Survey(const Element& element) {
    Parts parts;
    for (const Element child : element.Children()) {
        switch (KindOf(child)) {
        case Kind::NODE:
            ++parts.nodes;
            break;
        case Kind::SHARE:
            ++parts.shares;
            break;
        case Kind::PREDICATE:
            if (parts.predicate) {
                Raise<Message::MORE_THAN_ONE>("predicate", element.Tag());
            }
            parts.predicate = child;
            break;
        case Kind::MODEL:
            if (parts.model) {
                Raise<Message::MORE_THAN_ONE>(child.Tag(), element.Tag());
            }
            parts.model = child;
            break;
        case Kind::PASSED:
            break;
        default:
            child.RaiseMisplaced();
        }
    }
    if (!parts.predicate) {
        Raise<Message::MISSING_NODE_IN>("predicate", element.Tag());
    }
    if (parts.model && parts.nodes + parts.shares > 0) {
        parts.model.RaiseMisplaced();
    }
    return parts;
}

void TreeReader::ReadNode(const Element& element, std::size_t index) {
    const Parts parts = Survey(element);
    fTree.nodes[index].condition = fConditions.Read(parts.predicate);
    NodeScore score = ReadScore(element);
    ReadShares(element, parts.shares, score);
    if (index > 0) {
        RequireRecordCount(element, score);
    }
    fTree.SetScore(index, score);
    if (parts.model) {
        fModels.Read(parts.model, static_cast<int>(index), fParts);
    }
    if (parts.nodes > 0) {
        ReadChildren(element, index, parts.nodes);
    } else if (element.Has(kDefaultChild)) {
        element.RaiseInvalid(kDefaultChild);
    }
}

NodeScore TreeReader::ReadScore(const Element& element) {
    NodeScore score;
    score.place = ++fPlace;
    score.recordCount = ReadCount(element, kRecordCount);
    if (element.Has(kScore)) {
        if (fParts.IsClassification()) {
            score.category = CategoryOf(element, kScore);
        } else {
            score.number = element.Number(kScore);
        }
    }
    if (element.Has(u"id")) {
        ReadId(element, score);
    }
    return score;
}

/// A category of the target.
int TreeReader::CategoryOf(const Element& element, const XMLCh* attribute) {
    if (element.Record() == nullptr) {
        return fParts.target->CategoryOf(element, attribute);
    }
    const XMLCh* const text = element.Raw(attribute);
    const int* const known = fCategories.Find(text);
    return known != nullptr ? *known : fCategories.Keep(text, fParts.target->CategoryOf(element, attribute));
}

void TreeReader::ReadId(const Element& element, NodeScore& score) {
    if (fKeepsDigits && ReadPlainNumber(element.Raw(u"id"), score.place)) {
        return;
    }
    score.id = fTree.KeepId(element.AnyText(u"id"));
    if (score.id == NodeScore::kNone) {
        element.RaiseInvalid(u"id");
    }
}

void TreeReader::ReadShares(const Element& element, int count, NodeScore& score) {
    score.firstShare = static_cast<std::int32_t>(fTree.shares.size());
    for (const Element child : count > 0 ? element.Children() : Element().Children()) {
        if (KindOf(child) == Kind::SHARE) {
            if (!fParts.IsClassification()) {
                child.RaiseMisplaced();
            }
            ReadShare(child);
            ++score.shareCount;
        }
    }
    CompleteProbabilities(score);
    if (score.category == NodeScore::kNone) {
        score.category = WinnerOf(score);
    }
}

void TreeReader::ReadShare(const Element& element) {
    Share share;
    share.category = CategoryOf(element, u"value");
    const auto category = static_cast<std::size_t>(share.category);
    if (category >= fSharedAt.size()) {
        fSharedAt.resize(std::max(category + 1, 2 * fSharedAt.size()));
    }
    if (fSharedAt[category] == fPlace) {
        Raise<Message::DUPLICATE_DEFINITION>(element.Tag(), element.AnyText(u"value"), "Node");
    }
    fSharedAt[category] = fPlace;
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
    const std::size_t first = fTree.AddNodes(static_cast<std::size_t>(count));
    fTree.nodes[index].firstChild = static_cast<std::int32_t>(first);
    fTree.nodes[index].childCount = count;
    const bool hasDefault = element.Has(kDefaultChild);
    const std::string defaultChild = hasDefault ? element.Text(kDefaultChild) : std::string();
    std::size_t child = first;
    for (const Element node : element.Children()) {
        if (KindOf(node) != Kind::NODE) {
            continue;
        }
        if (hasDefault && node.Has(u"id") && node.AnyText(u"id") == defaultChild) {
            fTree.SetDefaultChild(index, child);
        }
        ReadNode(node, child++);
    }
    if (hasDefault && fTree.DefaultChildOf(static_cast<int>(index)) == NodeScore::kNone) {
        element.RaiseInvalid(kDefaultChild);
    }
}

} // namespace veltrane_tree
