#ifndef VELTRANE_PLUGINS_TREE_TREE_SUBTREES_H
#define VELTRANE_PLUGINS_TREE_TREE_SUBTREES_H

#include <veltrane/subtrees.h>

namespace veltrane_tree {

/// The subtrees that the readers of trees take as records: the nodes of a TreeModel, for any plug-in that has such
/// models in it.
/// @return ended by one without names; null for another version of the records
const veltrane::SubtreeKind* TreeSubtrees(int version);

} // namespace veltrane_tree

#endif
