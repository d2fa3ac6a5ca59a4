#include <MCVeltrane_900/FunctionTreeImp.h>

namespace MCVeltrane_900 {

namespace {

bool IsAncestorOrSelf(const FunctionTree* ancestor, const FunctionTree* node) {
    while (node != nullptr && node != ancestor) {
        node = node->GetParent();
    }
    return node != nullptr;
}

/// The child in a slot, from a node that is itself held as const.
FunctionTree* ChildAt(const FunctionTree& node, int index) {
    return const_cast<FunctionTree*>(node.GetChildAt(index));
}

/// The sibling `step` slots away, -1 or 1. The node's own slot is found by its id.
FunctionTree* SiblingAt(const FunctionTree& node, int step) {
    const FunctionTree* parent = node.GetParent();
    return parent == nullptr ? nullptr : ChildAt(*parent, parent->GetIndex(&node) + step);
}

enum class End { FIRST, LAST };

/// Descends along the first or last slots to a leaf. Above a null slot the descent ends.
FunctionTree* LeafAt(FunctionTree* node, End end) {
    while (!node->IsLeaf()) {
        FunctionTree* child = node->GetChildAt(end == End::FIRST ? 0 : node->GetChildCount() - 1);
        if (child == nullptr) {
            break;
        }
        node = child;
    }
    return node;
}

/// The first sibling `step` away that is found on the way from a node up to the root.
FunctionTree* SiblingOnTheWayUp(const FunctionTree* node, int step) {
    for (; node != nullptr; node = node->GetParent()) {
        if (FunctionTree* sibling = SiblingAt(*node, step)) {
            return sibling;
        }
    }
    return nullptr;
}

/// The nodes of a tree hand out one another whether or not they are held as const, as GetParent() does.
FunctionTree* Unlocked(const FunctionTree* node) {
    return const_cast<FunctionTree*>(node);
}

} // namespace

FunctionTree* FunctionTreeImp::GetRoot() const {
    FunctionTree* root = Unlocked(this);
    while (FunctionTree* parent = root->GetParent()) {
        root = parent;
    }
    return root;
}

int FunctionTreeImp::GetLevel() const {
    int level = 0;
    for (const FunctionTree* node = fParent; node != nullptr; node = node->GetParent()) {
        ++level;
    }
    return level;
}

bool FunctionTreeImp::IsRoot() const {
    return fParent == nullptr;
}

bool FunctionTreeImp::IsNodeSibling(const FunctionTree* node) const {
    if (node == nullptr) {
        return false;
    }
    return node == this || (fParent != nullptr && node->GetParent() == fParent);
}

bool FunctionTreeImp::IsNodeChild(const FunctionTree* node) const {
    return node != nullptr && !fChildren.empty() && node->GetParent() == this;
}

bool FunctionTreeImp::IsNodeAncestor(const FunctionTree* node) const {
    return node != nullptr && IsAncestorOrSelf(node, this);
}

bool FunctionTreeImp::IsNodeDescendant(const FunctionTree* node) const {
    return node != nullptr && IsAncestorOrSelf(this, node);
}

int FunctionTreeImp::GetSiblingCount() const {
    return fParent == nullptr ? 1 : fParent->GetChildCount();
}

FunctionTree* FunctionTreeImp::GetChildBefore(const FunctionTree* node) const {
    return ChildAt(*this, GetIndex(node) - 1);
}

FunctionTree* FunctionTreeImp::GetChildAfter(const FunctionTree* node) const {
    return ChildAt(*this, GetIndex(node) + 1);
}

FunctionTree* FunctionTreeImp::GetFirstChild() const {
    return ChildAt(*this, 0);
}

FunctionTree* FunctionTreeImp::GetLastChild() const {
    return ChildAt(*this, GetChildCount() - 1);
}

FunctionTree* FunctionTreeImp::GetFirstLeaf() const {
    return LeafAt(Unlocked(this), End::FIRST);
}

FunctionTree* FunctionTreeImp::GetLastLeaf() const {
    return LeafAt(Unlocked(this), End::LAST);
}

FunctionTree* FunctionTreeImp::GetPreviousSibling() const {
    return SiblingAt(*this, -1);
}

FunctionTree* FunctionTreeImp::GetNextSibling() const {
    return SiblingAt(*this, 1);
}

FunctionTree* FunctionTreeImp::GetPreviousNode() const {
    FunctionTree* sibling = GetPreviousSibling();
    return sibling == nullptr ? fParent : LeafAt(sibling, End::LAST);
}

FunctionTree* FunctionTreeImp::GetNextNode() const {
    FunctionTree* child = GetFirstChild();
    return child != nullptr ? child : SiblingOnTheWayUp(this, 1);
}

FunctionTree* FunctionTreeImp::GetPreviousLeaf() const {
    FunctionTree* sibling = SiblingOnTheWayUp(this, -1);
    return sibling == nullptr ? nullptr : LeafAt(sibling, End::LAST);
}

FunctionTree* FunctionTreeImp::GetNextLeaf() const {
    FunctionTree* sibling = SiblingOnTheWayUp(this, 1);
    return sibling == nullptr ? nullptr : LeafAt(sibling, End::FIRST);
}

} // namespace MCVeltrane_900
