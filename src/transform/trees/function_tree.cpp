#include "transform/trees/tree_node.h"

#include <algorithm>
#include <string>
#include <typeinfo>
#include <unordered_map>
#include <utility>
#include <vector>

namespace veltrane::transform {

using namespace MCVeltrane_900;

std::unique_ptr<FunctionTreeImp> TreeNode::Copy(const FunctionTreeImp& node) {
    auto copy = std::make_unique<FunctionTreeImp>(node.fAllowsChildren);
    copy->fNodeStats = node.fNodeStats;
    copy->fKept = node.fKept;
    return copy;
}

void TreeNode::Append(FunctionTreeImp& node, FunctionTree* child) {
    child->SetParent(&node);
    node.fChildren.push_back(child);
    if (typeid(*child) != typeid(FunctionTreeImp)) {
        NoteChange(node); // a host's class, whose SetParent() may not
    }
}

void TreeNode::NoteChange(FunctionTreeImp& first) {
    // Parents can be set into a circle: it is closed when the climb meets a second one at half its speed.
    const FunctionTree* behind = &first;
    bool follows = false;
    for (FunctionTree* node = &first; node != nullptr;) {
        if (typeid(*node) == typeid(FunctionTreeImp)) {
            ++static_cast<FunctionTreeImp*>(node)->fChanges;
        }
        node = node->GetParent();
        behind = follows ? behind->GetParent() : behind;
        follows = !follows;
        if (node == behind) {
            return;
        }
    }
}

} // namespace veltrane::transform

namespace MCVeltrane_900 {

namespace {

using veltrane::transform::TreeNode;

/// Whether a slot of the node holds this very child.
bool HoldsChild(const FunctionTree& node, const FunctionTree* child) {
    for (int i = 0; i < node.GetChildCount(); ++i) {
        if (node.GetChildAt(i) == child) {
            return true;
        }
    }
    return false;
}

} // namespace

FunctionTree::~FunctionTree() = default;

FunctionTreeImp::FunctionTreeImp() : FunctionTreeImp(true) {}

FunctionTreeImp::FunctionTreeImp(bool allowsChildren) : fAllowsChildren(allowsChildren) {}

FunctionTreeImp::~FunctionTreeImp() {
    // Grandchildren move up into this node's slots, so that a child has none left when it is deleted: the depth of
    // the tree costs no stack.
    while (!fChildren.empty()) {
        FunctionTree* child = fChildren.back();
        fChildren.pop_back();
        if (auto* node = dynamic_cast<FunctionTreeImp*>(child)) {
            fChildren.insert(fChildren.end(), node->fChildren.begin(), node->fChildren.end());
            node->fChildren.clear();
        }
        delete child;
    }
}

bool FunctionTreeImp::operator==(const FunctionTree& other) const {
    return fNodeStats.GetNodeID() == other.GetNodeStats().GetNodeID();
}

FunctionTree* FunctionTreeImp::Clone() const {
    struct Pending {
        const FunctionTreeImp* source;
        FunctionTreeImp* copy; ///< without children yet
    };
    auto root = TreeNode::Copy(*this);
    std::vector<Pending> pending{{this, root.get()}};
    while (!pending.empty()) {
        const auto [source, copy] = pending.back();
        pending.pop_back();
        copy->fChildren.reserve(source->fChildren.size());
        for (const FunctionTree* child : source->fChildren) {
            if (child == nullptr) {
                continue;
            }
            if (typeid(*child) != typeid(FunctionTreeImp)) {
                TreeNode::Append(*copy, child->Clone()); // a host's class, which copies itself
                continue;
            }
            const auto* node = static_cast<const FunctionTreeImp*>(child);
            FunctionTreeImp* nodeCopy = TreeNode::Copy(*node).release();
            nodeCopy->fParent = copy; // nobody has seen the copy yet, so there is no change to note
            copy->fChildren.push_back(nodeCopy);
            pending.push_back({node, nodeCopy});
        }
    }
    return root.release();
}

void FunctionTreeImp::Keep(std::shared_ptr<const ScoreValue> value) {
    fKept.push_back(std::move(value));
}

void FunctionTreeImp::Insert(FunctionTree* child, int /*index*/) {
    if (!fAllowsChildren || child == nullptr || IsNodeAncestor(child)) {
        return;
    }
    if (FunctionTree* parent = child->GetParent()) {
        const bool destroyed = HoldsChild(*parent, child);
        parent->Remove(child);
        if (destroyed) {
            return;
        }
    }
    TreeNode::Append(*this, child);
}

void FunctionTreeImp::Add(FunctionTree* child) {
    if (child != nullptr && child->GetParent() == this) {
        Insert(child, GetChildCount() - 1);
    } else {
        Insert(child, GetChildCount());
    }
}

void FunctionTreeImp::Remove(FunctionTree* child) {
    if (child == nullptr || fChildren.empty() || child->GetParent() != this) {
        return;
    }
    const int index = GetIndex(child);
    if (index >= 0) {
        Remove(index);
    }
}

void FunctionTreeImp::Remove(int index) {
    const FunctionTree* child = GetChildAt(index);
    if (child == nullptr) {
        return;
    }
    TreeNode::NoteChange(*this);
    const std::string id = child->GetNodeStats().GetNodeID();
    for (FunctionTree*& slot : fChildren) {
        if (slot != nullptr && slot->GetNodeStats().GetNodeID() == id) {
            delete slot;
            slot = nullptr;
        }
    }
}

void FunctionTreeImp::RemoveFromParent() {
    if (fParent != nullptr) {
        fParent->Remove(this);
    }
}

/// From the last child on, children of one id together, as one removal after the other does it. A class of a host's own
/// that overrides the removal is told of each; here each is looked up by its id, so that any number of them is removed
/// in one pass.
void FunctionTreeImp::RemoveAllChildren() {
    TreeNode::NoteChange(*this);
    if (typeid(*this) != typeid(FunctionTreeImp)) {
        for (int i = GetChildCount() - 1; i >= 0; --i) {
            Remove(i);
        }
        return;
    }
    std::unordered_map<std::string, std::vector<std::size_t>> slotsOfId;
    for (std::size_t i = 0; i < fChildren.size(); ++i) {
        if (fChildren[i] != nullptr) {
            slotsOfId[fChildren[i]->GetNodeStats().GetNodeID()].push_back(i);
        }
    }
    for (std::size_t i = fChildren.size(); i-- > 0;) {
        if (fChildren[i] == nullptr) {
            continue;
        }
        const auto slots = slotsOfId.find(fChildren[i]->GetNodeStats().GetNodeID());
        if (slots == slotsOfId.end()) { // a host's child whose id has changed meanwhile
            Remove(static_cast<int>(i));
            continue;
        }
        for (const std::size_t slot : slots->second) {
            delete std::exchange(fChildren[slot], nullptr);
        }
    }
}

bool FunctionTreeImp::IsLeaf() const {
    return fChildren.empty();
}

void FunctionTreeImp::SetNodeStats(const ApplyNodeStats& stats) {
    fNodeStats = stats;
    TreeNode::NoteChange(*this);
}

void FunctionTreeImp::SetParent(FunctionTree* parent) {
    TreeNode::NoteChange(*this); // to the parent that it had
    fParent = parent;
    TreeNode::NoteChange(*this);
}

const ApplyNodeStats& FunctionTreeImp::GetNodeStats() const {
    return fNodeStats;
}

FunctionTree* FunctionTreeImp::GetChildAt(int index) {
    return index < 0 || index >= GetChildCount() ? nullptr : fChildren[static_cast<std::size_t>(index)];
}

const FunctionTree* FunctionTreeImp::GetChildAt(int index) const {
    return index < 0 || index >= GetChildCount() ? nullptr : fChildren[static_cast<std::size_t>(index)];
}

int FunctionTreeImp::GetChildCount() const {
    return static_cast<int>(fChildren.size());
}

FunctionTree* FunctionTreeImp::GetParent() const {
    return fParent;
}

int FunctionTreeImp::GetIndex(const FunctionTree* node) const {
    if (node == nullptr) {
        return -1;
    }
    const auto found = std::find_if(fChildren.begin(), fChildren.end(),
                                    [node](const FunctionTree* child) { return child != nullptr && *child == *node; });
    return found == fChildren.end() ? -1 : static_cast<int>(found - fChildren.begin());
}

bool FunctionTreeImp::GetAllowsChildren() const {
    return fAllowsChildren;
}

void FunctionTreeImp::SetAllowsChildren(bool allows) {
    if (allows == fAllowsChildren) {
        return;
    }
    fAllowsChildren = allows;
    if (!allows) {
        RemoveAllChildren();
    }
}

std::vector<FunctionTree*> FunctionTreeImp::Children() {
    return fChildren;
}

} // namespace MCVeltrane_900
