#ifndef VELTRANE_TRANSFORM_TREE_NODE_H
#define VELTRANE_TRANSFORM_TREE_NODE_H

#include <MCVeltrane_900/FunctionTreeImp.h>

#include <memory>

namespace veltrane::transform {

/// The inside of a node of the library's own class.
struct TreeNode {
    using Node = MCVeltrane_900::FunctionTreeImp;

    /// How often the node or one below it was changed.
    static unsigned long long Changes(const Node& node) { return node.fChanges; }

    /// Counts a change at a node and at all above it, since what was made of any of their trees is out of date now.
    static void NoteChange(Node& node);

    /// What the node carries, to be changed without that this counts as a change.
    static MCVeltrane_900::ApplyNodeStats& Stats(Node& node) { return node.fNodeStats; }

    /// A node alone, without parent and children.
    static std::unique_ptr<Node> Copy(const Node& node);

    static void Append(Node& node, MCVeltrane_900::FunctionTree* child);
};

} // namespace veltrane::transform

#endif
