#ifndef VELTRANE_PLUGINS_FOREST_VECTORS_H
#define VELTRANE_PLUGINS_FOREST_VECTORS_H

#include "node.h"

#include <cstddef>
#include <cstdint>

namespace veltrane_forest {

/// Whether the processor has the vectors that WalkVectors() takes.
bool HasVectors();

/// Walks rows through a tree, sixteen at once.
/// @param sets   NONE or OF_BITS
/// @param starts by row, the node that it is at
/// @param marks  of feature 0; those of the next one stand `1 << shift` behind, and one mark behind the last one is
///               read too
/// @return how many rows were walked; the rest is less than sixteen
std::size_t WalkVectors(const SmallNode* nodes, std::uint32_t depth, Sets sets, const std::uint32_t* starts,
                        const SmallNode::Mark* marks, unsigned shift, std::size_t rows, std::uint32_t* leaves);

} // namespace veltrane_forest

#endif
