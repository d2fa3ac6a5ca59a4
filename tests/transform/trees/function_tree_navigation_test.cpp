#include "trees.h"

#include <gtest/gtest.h>

using namespace veltrane::tests;

namespace {

/// a (b (d e) c (f))
class FunctionTreeNavigation : public ::testing::Test {
protected:
    const std::unique_ptr<FunctionTreeImp> a = Root("a");
    FunctionTreeImp* const b = AddNode(a.get(), "b");
    FunctionTreeImp* const c = AddNode(a.get(), "c");
    FunctionTreeImp* const d = AddNode(b, "d");
    FunctionTreeImp* const e = AddNode(b, "e");
    FunctionTreeImp* const f = AddNode(c, "f");
    const std::vector<FunctionTreeImp*> inPreOrder{a.get(), b, d, e, c, f};
};

} // namespace

TEST_F(FunctionTreeNavigation, LevelCountsTheAncestors) {
    EXPECT_EQ(a->GetLevel(), 0);
    EXPECT_EQ(b->GetLevel(), 1);
    EXPECT_EQ(f->GetLevel(), 2);
}

TEST_F(FunctionTreeNavigation, RootIsTheNodeWithoutParent) {
    EXPECT_EQ(f->GetRoot(), a.get());
    EXPECT_EQ(a->GetRoot(), a.get());
    EXPECT_TRUE(a->IsRoot());
    EXPECT_FALSE(b->IsRoot());
}

TEST_F(FunctionTreeNavigation, SiblingCountIsTheParentsSlotsAndOneAtARoot) {
    EXPECT_EQ(a->GetSiblingCount(), 1);
    EXPECT_EQ(d->GetSiblingCount(), 2);
    EXPECT_EQ(f->GetSiblingCount(), 1);
}

TEST_F(FunctionTreeNavigation, IsNodeSibling) {
    const auto stranger = Root("z");
    EXPECT_FALSE(d->IsNodeSibling(nullptr));
    EXPECT_TRUE(d->IsNodeSibling(d));
    EXPECT_TRUE(a->IsNodeSibling(a.get()));
    EXPECT_FALSE(a->IsNodeSibling(stranger.get()));
    EXPECT_TRUE(d->IsNodeSibling(e));
    EXPECT_FALSE(d->IsNodeSibling(f));
}

TEST_F(FunctionTreeNavigation, IsNodeChild) {
    EXPECT_FALSE(a->IsNodeChild(nullptr));
    EXPECT_TRUE(a->IsNodeChild(b));
    EXPECT_FALSE(a->IsNodeChild(d));
    FunctionTreeImp claims;
    claims.SetParent(f);
    EXPECT_FALSE(f->IsNodeChild(&claims));
}

TEST_F(FunctionTreeNavigation, IsNodeAncestor) {
    EXPECT_FALSE(d->IsNodeAncestor(nullptr));
    EXPECT_TRUE(d->IsNodeAncestor(d));
    EXPECT_TRUE(d->IsNodeAncestor(a.get()));
    EXPECT_FALSE(d->IsNodeAncestor(c));
    EXPECT_FALSE(a->IsNodeAncestor(d));
}

TEST_F(FunctionTreeNavigation, IsNodeDescendant) {
    EXPECT_FALSE(a->IsNodeDescendant(nullptr));
    EXPECT_TRUE(a->IsNodeDescendant(a.get()));
    EXPECT_TRUE(a->IsNodeDescendant(f));
    EXPECT_FALSE(c->IsNodeDescendant(d));
}

TEST_F(FunctionTreeNavigation, ChildBeforeAndAfter) {
    EXPECT_EQ(a->GetChildBefore(c), b);
    EXPECT_EQ(a->GetChildBefore(b), nullptr);
    EXPECT_EQ(a->GetChildBefore(f), nullptr);
    EXPECT_EQ(a->GetChildAfter(b), c);
    EXPECT_EQ(a->GetChildAfter(c), nullptr);
}

TEST_F(FunctionTreeNavigation, FirstAndLastChild) {
    EXPECT_EQ(a->GetFirstChild(), b);
    EXPECT_EQ(a->GetLastChild(), c);
    EXPECT_EQ(d->GetFirstChild(), nullptr);
    EXPECT_EQ(d->GetLastChild(), nullptr);
}

TEST_F(FunctionTreeNavigation, FirstAndLastLeaf) {
    EXPECT_EQ(a->GetFirstLeaf(), d);
    EXPECT_EQ(a->GetLastLeaf(), f);
    EXPECT_EQ(e->GetFirstLeaf(), e);
    EXPECT_EQ(e->GetLastLeaf(), e);
}

TEST_F(FunctionTreeNavigation, PreviousAndNextSibling) {
    EXPECT_EQ(a->GetPreviousSibling(), nullptr);
    EXPECT_EQ(a->GetNextSibling(), nullptr);
    EXPECT_EQ(b->GetNextSibling(), c);
    EXPECT_EQ(b->GetPreviousSibling(), nullptr);
    EXPECT_EQ(c->GetPreviousSibling(), b);
    EXPECT_EQ(c->GetNextSibling(), nullptr);
}

TEST_F(FunctionTreeNavigation, NextNodeGoesInPreOrder) {
    for (std::size_t i = 0; i < inPreOrder.size(); ++i) {
        const FunctionTree* next = i + 1 < inPreOrder.size() ? inPreOrder[i + 1] : nullptr;
        EXPECT_EQ(inPreOrder[i]->GetNextNode(), next) << IdOf(inPreOrder[i]);
    }
}

TEST_F(FunctionTreeNavigation, PreviousNodeGoesBackInPreOrder) {
    for (std::size_t i = 0; i < inPreOrder.size(); ++i) {
        const FunctionTree* previous = i > 0 ? inPreOrder[i - 1] : nullptr;
        EXPECT_EQ(inPreOrder[i]->GetPreviousNode(), previous) << IdOf(inPreOrder[i]);
    }
}

TEST_F(FunctionTreeNavigation, LeafAfterLeaf) {
    EXPECT_EQ(d->GetNextLeaf(), e);
    EXPECT_EQ(e->GetNextLeaf(), f);
    EXPECT_EQ(f->GetNextLeaf(), nullptr);
    EXPECT_EQ(b->GetNextLeaf(), f);
    EXPECT_EQ(a->GetNextLeaf(), nullptr);
    EXPECT_EQ(f->GetPreviousLeaf(), e);
    EXPECT_EQ(e->GetPreviousLeaf(), d);
    EXPECT_EQ(d->GetPreviousLeaf(), nullptr);
    EXPECT_EQ(c->GetPreviousLeaf(), e);
    EXPECT_EQ(a->GetPreviousLeaf(), nullptr);
}

TEST_F(FunctionTreeNavigation, NullSlotsEndAWalk) {
    b->Remove(0);
    EXPECT_EQ(b->GetFirstLeaf(), b);
    EXPECT_EQ(e->GetPreviousSibling(), nullptr);
    EXPECT_EQ(b->GetIndex(e), 1);
}

using KeptFunctionTreeNavigation = FunctionTreeNavigation;

TEST_F(KeptFunctionTreeNavigation, TheChildAfterANodeThatIsNoneIsTheFirst) {
    const auto stranger = Root("z");
    EXPECT_EQ(a->GetChildAfter(stranger.get()), b);
    EXPECT_EQ(a->GetChildAfter(nullptr), b);
    EXPECT_EQ(d->GetChildAfter(stranger.get()), nullptr);
}
