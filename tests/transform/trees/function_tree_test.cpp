#include "trees.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

using namespace veltrane::tests;
using Ids = std::vector<std::string>;

TEST(FunctionTreeNode, DefaultConstructionAllowsChildren) {
    const FunctionTreeImp node;
    EXPECT_TRUE(node.GetAllowsChildren());
    EXPECT_TRUE(node.IsLeaf());
    EXPECT_EQ(node.GetParent(), nullptr);
    EXPECT_EQ(node.GetNodeStats().GetTransformFunction(), TransformationDictionary::TF_NONE);
    EXPECT_FALSE(FunctionTreeImp(false).GetAllowsChildren());
}

TEST(FunctionTreeNode, EqualityIsThatOfTheIds) {
    const auto a = Root("7");
    const auto b = Root("7");
    const auto c = Root("8");
    EXPECT_TRUE(*a == *b);
    EXPECT_FALSE(*a == *c);
}

TEST(FunctionTreeNode, GetIndexComparesIdsAndNotAddresses) {
    const auto root = Root("0");
    AddNode(root.get(), "1");
    AddNode(root.get(), "2");
    AddNode(root.get(), "2");
    const auto stranger = Root("2");
    EXPECT_EQ(root->GetIndex(stranger.get()), 1);
    EXPECT_EQ(root->GetIndex(root->GetChildAt(2)), 1);
    EXPECT_EQ(root->GetIndex(nullptr), -1);
    EXPECT_EQ(root->GetIndex(root.get()), -1);
}

TEST(FunctionTreeNode, GetChildAtOutOfRangeIsNull) {
    const auto root = Root("0");
    AddNode(root.get(), "1");
    EXPECT_EQ(root->GetChildAt(-1), nullptr);
    EXPECT_EQ(root->GetChildAt(1), nullptr);
    EXPECT_EQ(std::as_const(*root).GetChildAt(1), nullptr);
    EXPECT_EQ(IdOf(std::as_const(*root).GetChildAt(0)), "1");
}

TEST(FunctionTreeNode, ChildrenGivesACopyOfTheSlots) {
    const auto root = Root("0");
    FunctionTreeImp* child = AddNode(root.get(), "1");
    std::vector<FunctionTree*> children = root->Children();
    EXPECT_EQ(children, (std::vector<FunctionTree*>{child}));
    children.clear();
    EXPECT_EQ(root->GetChildCount(), 1);
}

TEST(FunctionTreeInsert, IndexBeyondTheCountAppends) {
    const auto root = Root("0");
    AddNode(root.get(), "1");
    root->Insert(NewNode("2"), 17);
    EXPECT_EQ(Slots(*root), (Ids{"1", "2"}));
}

TEST(FunctionTreeInsert, IndexZeroOnANodeWithChildrenAppends) {
    const auto root = Root("0");
    AddNode(root.get(), "1");
    root->Insert(NewNode("2"), 0);
    root->Insert(NewNode("3"), -5);
    EXPECT_EQ(Slots(*root), (Ids{"1", "2", "3"}));
}

TEST(FunctionTreeInsert, SetsTheParent) {
    const auto root = Root("0");
    const FunctionTreeImp* child = AddNode(root.get(), "1");
    EXPECT_EQ(child->GetParent(), root.get());
}

TEST(FunctionTreeInsert, NullIsIgnored) {
    const auto root = Root("0");
    root->Insert(nullptr, 0);
    root->Add(nullptr);
    EXPECT_EQ(root->GetChildCount(), 0);
}

TEST(FunctionTreeInsert, ANodeIntoItsDescendantOrItselfChangesNothing) {
    const auto root = Root("0");
    FunctionTreeImp* middle = AddNode(root.get(), "1");
    FunctionTreeImp* leaf = AddNode(middle, "2");
    leaf->Insert(root.get(), 0);
    leaf->Insert(middle, 0);
    leaf->Insert(leaf, 0);
    EXPECT_TRUE(leaf->IsLeaf());
    EXPECT_EQ(Slots(*root), (Ids{"1"}));
    EXPECT_EQ(Slots(*middle), (Ids{"2"}));
    EXPECT_EQ(root->GetParent(), nullptr);
}

TEST(FunctionTreeInsert, UnderANodeThatAllowsNoneChangesNothing) {
    FunctionTreeImp leaf(false);
    const auto node = Root("1");
    leaf.Insert(node.get(), 0);
    leaf.Add(node.get());
    EXPECT_EQ(leaf.GetChildCount(), 0);
    EXPECT_EQ(node->GetParent(), nullptr);
}

TEST(KeptFunctionTreeInsert, ANodeThatHasAParentIsDestroyedAndNotAppended) {
    Ids deaths;
    const auto first = Root("0");
    const auto second = Root("9");
    auto* child = new MortalNode("1", deaths);
    first->Add(child);
    second->Add(child);
    EXPECT_EQ(deaths, (Ids{"1"}));
    EXPECT_EQ(Slots(*first), (Ids{"null"}));
    EXPECT_EQ(second->GetChildCount(), 0);
}

TEST(KeptFunctionTreeInsert, AddingAChildOnceMoreDestroysIt) {
    Ids deaths;
    const auto root = Root("0");
    auto* child = new MortalNode("1", deaths);
    root->Add(child);
    root->Add(child);
    EXPECT_EQ(deaths, (Ids{"1"}));
    EXPECT_EQ(Slots(*root), (Ids{"null"}));
}

TEST(KeptFunctionTreeInsert, AChildWhoseParentDoesNotHoldItSurvives) {
    const auto claimed = Root("5");
    const auto root = Root("0");
    FunctionTreeImp* child = NewNode("1");
    child->SetParent(claimed.get());
    root->Add(child);
    EXPECT_EQ(Slots(*root), (Ids{"1"}));
    EXPECT_EQ(child->GetParent(), root.get());
}

TEST(KeptFunctionTreeRemove, TheSlotStaysAndIsNull) {
    const auto root = Root("0");
    AddNode(root.get(), "1");
    AddNode(root.get(), "2");
    root->Remove(0);
    EXPECT_EQ(root->GetChildCount(), 2);
    EXPECT_EQ(root->GetChildAt(0), nullptr);
    EXPECT_EQ(IdOf(root->GetChildAt(1)), "2");
    EXPECT_FALSE(root->IsLeaf());
}

TEST(KeptFunctionTreeRemove, ANodeWhoseChildrenWereAllRemovedIsNoLeaf) {
    const auto root = Root("0");
    AddNode(root.get(), "1");
    root->RemoveAllChildren();
    EXPECT_FALSE(root->IsLeaf());
}

TEST(KeptFunctionTreeRemove, AllChildrenOfOneIdGoTogether) {
    for (const int which : {0, 2}) {
        Ids deaths;
        const auto root = Root("0");
        root->Add(new MortalNode("same", deaths));
        root->Add(new MortalNode("other", deaths));
        root->Add(new MortalNode("same", deaths));
        root->Remove(root->GetChildAt(which));
        EXPECT_EQ(deaths, (Ids{"same", "same"})) << "removed child " << which;
        EXPECT_EQ(Slots(*root), (Ids{"null", "other", "null"})) << "removed child " << which;
    }
}

TEST(FunctionTreeRemove, ByIndexOutOfRangeOrOfANullSlotIsIgnored) {
    const auto root = Root("0");
    AddNode(root.get(), "1");
    root->Remove(-1);
    root->Remove(1);
    EXPECT_EQ(Slots(*root), (Ids{"1"}));
    root->Remove(0);
    root->Remove(0);
    EXPECT_EQ(Slots(*root), (Ids{"null"}));
}

TEST(FunctionTreeRemove, ByPointerOnlyActsOnAnOwnChild) {
    const auto root = Root("0");
    FunctionTreeImp* middle = AddNode(root.get(), "1");
    FunctionTreeImp* leaf = AddNode(middle, "2");
    root->Remove(static_cast<FunctionTree*>(nullptr));
    root->Remove(leaf);
    leaf->Remove(root.get());
    EXPECT_EQ(Slots(*root), (Ids{"1"}));
    EXPECT_EQ(Slots(*middle), (Ids{"2"}));
    middle->Remove(leaf);
    EXPECT_EQ(Slots(*middle), (Ids{"null"}));
}

TEST(FunctionTreeRemove, ByPointerOfANodeThatOnlyClaimsTheParentIsIgnored) {
    const auto root = Root("0");
    AddNode(root.get(), "1");
    FunctionTreeImp stranger;
    stranger.SetNodeStats(StatsWithId("2"));
    stranger.SetParent(root.get());
    root->Remove(&stranger);
    EXPECT_EQ(Slots(*root), (Ids{"1"}));
}

TEST(FunctionTreeRemove, RemoveFromParentDeletesTheNode) {
    Ids deaths;
    const auto root = Root("0");
    auto* child = new MortalNode("1", deaths);
    root->Add(child);
    child->RemoveFromParent();
    EXPECT_EQ(deaths, (Ids{"1"}));
    root->RemoveFromParent(); // a root stays
    EXPECT_EQ(Slots(*root), (Ids{"null"}));
}

TEST(FunctionTreeRemove, RemoveAllChildrenGoesFromTheLastToTheFirst) {
    Ids deaths;
    const auto root = Root("0");
    for (const char* id : {"1", "2", "3"}) {
        root->Add(new MortalNode(id, deaths));
    }
    root->RemoveAllChildren();
    EXPECT_EQ(deaths, (Ids{"3", "2", "1"}));
    EXPECT_EQ(Slots(*root), (Ids{"null", "null", "null"}));
}

TEST(FunctionTreeRemove, RemoveAllChildrenTakesThoseOfOneIdTogether) {
    Ids deaths;
    const auto root = Root("0");
    auto* named = new MortalNode("same", deaths);
    root->Add(new MortalNode("first", deaths));
    root->Add(named);
    root->Add(new MortalNode("other", deaths));
    root->Add(new MortalNode("same", deaths));
    named->Add(new MortalNode("below the first of them", deaths));
    root->RemoveAllChildren();
    EXPECT_EQ(deaths, (Ids{"same", "below the first of them", "same", "other", "first"}));
    EXPECT_EQ(Slots(*root), (Ids{"null", "null", "null", "null"}));
}

/// A node that writes down which positions it is asked to remove.
class CountedRemovals : public FunctionTreeImp {
public:
    using FunctionTreeImp::Remove;
    void Remove(int index) override {
        positions.push_back(index);
        FunctionTreeImp::Remove(index);
    }

    std::vector<int> positions;
};

TEST(FunctionTreeRemove, RemoveAllChildrenRemovesOneByOne) {
    CountedRemovals root;
    for (const char* id : {"1", "2", "2"}) {
        root.Add(NewNode(id));
    }
    root.RemoveAllChildren();
    EXPECT_EQ(root.positions, (std::vector<int>{2, 1, 0}));
    EXPECT_EQ(Slots(root), (Ids{"null", "null", "null"}));
}

TEST(FunctionTreeRemove, ForbiddingChildrenRemovesThem) {
    Ids deaths;
    const auto root = Root("0");
    root->Add(new MortalNode("1", deaths));
    root->SetAllowsChildren(true);
    EXPECT_TRUE(deaths.empty());
    root->SetAllowsChildren(false);
    EXPECT_EQ(deaths, (Ids{"1"}));
    EXPECT_FALSE(root->GetAllowsChildren());
    EXPECT_EQ(root->GetChildCount(), 1);
    root->SetAllowsChildren(true);
    EXPECT_TRUE(root->GetAllowsChildren());
}

TEST(FunctionTreeDestructor, DeletesTheWholeTree) {
    Ids deaths;
    {
        MortalNode root("0", deaths);
        auto* middle = new MortalNode("1", deaths);
        root.Add(middle);
        middle->Add(new MortalNode("2", deaths));
        root.Add(new MortalNode("3", deaths));
        root.Remove(1);
        deaths.clear();
    }
    std::sort(deaths.begin(), deaths.end());
    EXPECT_EQ(deaths, (Ids{"0", "1", "2"}));
}

TEST(FunctionTreeDestructor, DoesNotDetachTheNodeFromItsParent) {
    class Watched : public FunctionTreeImp {
    public:
        using FunctionTreeImp::Remove;
        void Remove(FunctionTree*) override { ++removals; }
        int removals = 0;
    };
    Watched parent;
    {
        FunctionTreeImp child;
        child.SetParent(&parent);
    }
    EXPECT_EQ(parent.removals, 0);
}
