#ifndef MCVELTRANE_900_FUNCTIONTREEIMP_H
#define MCVELTRANE_900_FUNCTIONTREEIMP_H

#include <MCVeltrane_900/FunctionTree.h>
#include <veltrane_export.h>

#include <concepts>
#include <memory>
#include <vector>

namespace veltrane::transform {
struct TreeNode;
}

namespace MCVeltrane_900 {

/// The library's node. See FunctionTree for what its operations do. Copying, destroying and walking need no stack for
/// the depth of the tree.
class VELTRANE_API FunctionTreeImp : public FunctionTree {
public:
    /// A node that allows children.
    FunctionTreeImp();
    explicit FunctionTreeImp(bool allowsChildren);
    FunctionTreeImp(const FunctionTreeImp&) = delete;
    FunctionTreeImp& operator=(const FunctionTreeImp&) = delete;
    ~FunctionTreeImp() override;

    bool operator==(const FunctionTree& other) const override;

    /// The same operator with the exact type of its right side, so that a comparison of two concrete classes isn't
    /// ambiguous with its own reversed form.
    template <std::derived_from<FunctionTree> T>
    bool operator==(const T& other) const {
        return *this == static_cast<const FunctionTree&>(other);
    }

    FunctionTree* Clone() const override;
    void Insert(FunctionTree* child, int index) override;
    void Add(FunctionTree* child) override;
    void Remove(FunctionTree* child) override;
    void Remove(int index) override;
    void RemoveFromParent() override;
    void RemoveAllChildren() override;
    bool IsLeaf() const override;
    void SetNodeStats(const ApplyNodeStats& stats) override;
    void SetParent(FunctionTree* parent) override;
    const ApplyNodeStats& GetNodeStats() const override;
    FunctionTree* GetChildAt(int index) override;
    const FunctionTree* GetChildAt(int index) const override;
    int GetChildCount() const override;
    FunctionTree* GetParent() const override;
    int GetIndex(const FunctionTree* node) const override;
    bool GetAllowsChildren() const override;
    void Display(std::ostream& out) const override;

    /// A copy of the slots; the children stay this node's.
    virtual std::vector<FunctionTree*> Children();

    /// The node without a parent above this one, or this one.
    virtual FunctionTree* GetRoot() const;

    /// A change to false removes all children.
    void SetAllowsChildren(bool allows);

    /// The number of ancestors; 0 at a root.
    int GetLevel() const;
    bool IsRoot() const;

    /// Relations of this node to another one, by address. Null gives false.
    bool IsNodeSibling(const FunctionTree* node) const; ///< this node, or another with the same parent
    bool IsNodeChild(const FunctionTree* node) const;
    bool IsNodeAncestor(const FunctionTree* node) const;   ///< node is this one or above it
    bool IsNodeDescendant(const FunctionTree* node) const; ///< node is this one or below it

    /// The parent's number of slots; 1 at a root.
    int GetSiblingCount() const;

    /// The neighbours of a child. A node that is no child here has the first child after it.
    FunctionTree* GetChildBefore(const FunctionTree* node) const;
    FunctionTree* GetChildAfter(const FunctionTree* node) const;

    /// Null without children.
    FunctionTree* GetFirstChild() const;
    FunctionTree* GetLastChild() const;

    /// The leaf at the end of the first or last children; a leaf gives itself.
    FunctionTree* GetFirstLeaf() const;
    FunctionTree* GetLastLeaf() const;

    /// Null at a root and at the end of the row.
    FunctionTree* GetPreviousSibling() const;
    FunctionTree* GetNextSibling() const;

    /// The neighbour in pre-order; null at the ends of the tree.
    FunctionTree* GetPreviousNode() const;
    FunctionTree* GetNextNode() const;

    /// The last leaf before, the first leaf after this node's branch; null at the ends of the tree.
    FunctionTree* GetPreviousLeaf() const;
    FunctionTree* GetNextLeaf() const;

    /// Gives a value that hangs on the node's stats an owner: it lives as long as this node or any clone of it.
    void Keep(std::shared_ptr<const ScoreValue> value);

private:
    friend struct veltrane::transform::TreeNode;

    FunctionTree* fParent = nullptr;
    std::vector<FunctionTree*> fChildren;
    bool fAllowsChildren;
    ApplyNodeStats fNodeStats;
    std::vector<std::shared_ptr<const ScoreValue>> fKept;
    unsigned long long fChanges = 0; ///< how often this node or one below it was changed
};

} // namespace MCVeltrane_900

#endif
