#include "trees.h"

#include <MCVeltrane_900/NumericValue.h>

#include <gtest/gtest.h>

#include <memory>
#include <utility>

using namespace veltrane::tests;
using MCVeltrane_900::NumericValue;
using Ids = std::vector<std::string>;

namespace {

std::unique_ptr<FunctionTree> CloneOf(const FunctionTree& tree) {
    return std::unique_ptr<FunctionTree>(tree.Clone());
}

/// A node of a class that the library doesn't know, which copies itself.
class ForeignNode : public FunctionTreeImp {
public:
    using FunctionTreeImp::FunctionTreeImp;
    FunctionTree* Clone() const override {
        auto* copy = new ForeignNode(GetAllowsChildren());
        copy->SetNodeStats(GetNodeStats());
        return copy;
    }
};

} // namespace

TEST(FunctionTreeClone, CopiesTheTreeInOrder) {
    const auto root = Root("0");
    FunctionTreeImp* left = AddNode(root.get(), "1");
    AddNode(left, "2");
    AddNode(left, "3");
    AddNode(root.get(), "4");
    const auto copy = CloneOf(*root);
    EXPECT_EQ(IdOf(copy.get()), "0");
    EXPECT_EQ(copy->GetParent(), nullptr);
    EXPECT_EQ(Slots(*copy), (Ids{"1", "4"}));
    EXPECT_EQ(Slots(*copy->GetChildAt(0)), (Ids{"2", "3"}));
    EXPECT_EQ(copy->GetChildAt(0)->GetParent(), copy.get());
    EXPECT_NE(copy->GetChildAt(0), root->GetChildAt(0));
}

TEST(FunctionTreeClone, KeepsWhetherChildrenAreAllowed) {
    const auto root = Root("0");
    root->Add(NewNode("1", false));
    const auto copy = CloneOf(*root);
    EXPECT_TRUE(copy->GetAllowsChildren());
    EXPECT_FALSE(copy->GetChildAt(0)->GetAllowsChildren());
}

TEST(FunctionTreeClone, ANullSlotIsLeftOut) {
    const auto root = Root("0");
    AddNode(root.get(), "1");
    AddNode(root.get(), "2");
    root->Remove(0);
    const auto copy = CloneOf(*root);
    EXPECT_EQ(Slots(*copy), (Ids{"2"}));
}

TEST(FunctionTreeClone, SharesTheValuesOfTheNodes) {
    NumericValue constant(4.0);
    const auto root = Root("0");
    ApplyNodeStats stats = StatsWithId("1");
    stats.SetValue(&constant);
    stats.SetConstNode(true);
    AddNode(root.get(), "1")->SetNodeStats(stats);
    const auto copy = CloneOf(*root);
    EXPECT_EQ(copy->GetChildAt(0)->GetNodeStats().GetValue(), &constant);
    EXPECT_TRUE(copy->GetChildAt(0)->GetNodeStats().IsConstNode());
}

TEST(FunctionTreeClone, ACopyOfABranchIsARoot) {
    const auto root = Root("0");
    FunctionTreeImp* branch = AddNode(root.get(), "1");
    AddNode(branch, "2");
    const auto copy = CloneOf(*branch);
    EXPECT_EQ(copy->GetParent(), nullptr);
    EXPECT_EQ(Slots(*copy), (Ids{"2"}));
}

TEST(FunctionTreeClone, ANodeOfAnotherClassCopiesItself) {
    const auto root = Root("0");
    auto* foreign = new ForeignNode(true);
    foreign->SetNodeStats(StatsWithId("1"));
    root->Add(foreign);
    const auto copy = CloneOf(*root);
    ASSERT_EQ(Slots(*copy), (Ids{"1"}));
    EXPECT_NE(dynamic_cast<ForeignNode*>(copy->GetChildAt(0)), nullptr);
    EXPECT_EQ(copy->GetChildAt(0)->GetParent(), copy.get());
}

TEST(FunctionTreeClone, AKeptValueLivesAsLongAsTheNodeOrAClone) {
    std::weak_ptr<const NumericValue> watched;
    std::unique_ptr<FunctionTree> copy;
    {
        const auto root = Root("0");
        FunctionTreeImp* leaf = AddNode(root.get(), "1");
        for (FunctionTreeImp* node : {root.get(), leaf}) {
            auto value = std::make_shared<NumericValue>(4.0);
            ApplyNodeStats stats = node->GetNodeStats();
            stats.SetValue(value.get());
            node->SetNodeStats(stats);
            watched = value;
            node->Keep(std::move(value));
        }
        copy = CloneOf(*root);
    }
    EXPECT_FALSE(watched.expired());
    EXPECT_EQ(copy->GetNodeStats().GetValue()->GetDouble(), 4.0);
    EXPECT_EQ(copy->GetChildAt(0)->GetNodeStats().GetValue()->GetDouble(), 4.0);
    copy.reset();
    EXPECT_TRUE(watched.expired());
}
