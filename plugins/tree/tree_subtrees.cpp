#include "tree/tree_subtrees.h"

namespace veltrane_tree {

namespace {

/// What isn't among these says nothing about scores, or is misplaced, and seldom there.
constexpr const char16_t* kWithin[] = {
    u"Node",  u"SimplePredicate", u"SimpleSetPredicate", u"CompoundPredicate", u"True",
    u"False", u"Array",           u"ScoreDistribution",  u"Extension",         nullptr,
};

constexpr veltrane::SubtreeKind kKinds[] = {
    {u"TreeModel", u"Node", kWithin},
    {nullptr, nullptr, nullptr},
};

} // namespace

const veltrane::SubtreeKind* TreeSubtrees(int version) {
    return version == veltrane::SubtreeKind::kVersion ? kKinds : nullptr;
}

} // namespace veltrane_tree
