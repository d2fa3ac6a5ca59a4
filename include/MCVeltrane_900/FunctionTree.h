#ifndef MCVELTRANE_900_FUNCTIONTREE_H
#define MCVELTRANE_900_FUNCTIONTREE_H

#include <MCVeltrane_900/ApplyNodeStats.h>
#include <veltrane_export.h>

#include <ostream>

namespace MCVeltrane_900 {

/// A node of an Apply expression. A node owns its children; a child slot can be null after a removal and then stays.
///
/// Evaluation writes into leaves on their first use, so one tree serves one thread at a time.
class VELTRANE_API FunctionTree {
public:
    virtual ~FunctionTree();

    /// Equality of the node ids.
    virtual bool operator==(const FunctionTree& other) const = 0;

    /// A copy of the tree below this node, owned by the caller, without the null slots. The values that the nodes
    /// refer to stay shared.
    virtual FunctionTree* Clone() const = 0;

    /// Appends a child. Nothing happens when this node allows no children, or when the child is this node or one of
    /// its ancestors.
    ///
    /// A child that has a parent already is taken from it through Remove(), which destroys it, and nothing is
    /// appended: insert a node once, right after its construction.
    /// @param child becomes this node's; null is ignored
    /// @param index ignored: children keep the order of insertion, which is the order of the function's arguments
    virtual void Insert(FunctionTree* child, int index) = 0;

    /// As Insert() behind the last child.
    virtual void Add(FunctionTree* child) = 0;

    /// Deletes a child of this node, and with it every other child of the same node id. Their slots become null.
    virtual void Remove(FunctionTree* child) = 0;

    /// The same by position; a position that is out of range or a null slot is ignored.
    virtual void Remove(int index) = 0;

    /// Removes, and so deletes, this node, if it has a parent.
    virtual void RemoveFromParent() = 0;

    /// Deletes all children. Their slots stay.
    virtual void RemoveAllChildren() = 0;

    /// Whether there is no child slot. A node whose children were removed is no leaf.
    virtual bool IsLeaf() const = 0;

    virtual void SetNodeStats(const ApplyNodeStats& stats) = 0;

    /// Sets the parent pointer alone; borrowed.
    virtual void SetParent(FunctionTree* parent) = 0;
    virtual const ApplyNodeStats& GetNodeStats() const = 0;

    /// The child of a slot, which stays this node's; null for a null slot and out of range.
    virtual FunctionTree* GetChildAt(int index) = 0;
    virtual const FunctionTree* GetChildAt(int index) const = 0;

    /// The number of slots, null ones included.
    virtual int GetChildCount() const = 0;

    /// The parent, null at a root.
    virtual FunctionTree* GetParent() const = 0;

    /// The first slot whose child has the node's id, or -1; -1 for null.
    virtual int GetIndex(const FunctionTree* node) const = 0;
    virtual bool GetAllowsChildren() const = 0;

    /// Writes a debug dump of the tree below this node.
    virtual void Display(std::ostream& out) const = 0;
};

} // namespace MCVeltrane_900

#endif
