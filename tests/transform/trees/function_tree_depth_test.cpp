#include "trees.h"

#include <gtest/gtest.h>

#include <sstream>

using namespace veltrane::tests;

namespace {

constexpr int kLevels = 100000;

/// A chain of nodes, built from its leaf.
std::unique_ptr<FunctionTreeImp> Chain() {
    auto top = Root(std::to_string(kLevels));
    for (int level = kLevels - 1; level > 0; --level) {
        auto parent = Root(std::to_string(level));
        parent->Add(top.release());
        top = std::move(parent);
    }
    return top;
}

} // namespace

TEST(DeepFunctionTree, IsDestroyed) {
    auto chain = Chain();
    chain.reset();
    EXPECT_EQ(chain, nullptr);
}

TEST(DeepFunctionTree, IsCloned) {
    const auto chain = Chain();
    const std::unique_ptr<FunctionTree> copy(chain->Clone());
    const auto* leaf = dynamic_cast<FunctionTreeImp*>(static_cast<FunctionTreeImp&>(*copy).GetFirstLeaf());
    ASSERT_NE(leaf, nullptr);
    EXPECT_EQ(IdOf(leaf), std::to_string(kLevels));
    EXPECT_EQ(leaf->GetLevel(), kLevels - 1);
}

TEST(DeepFunctionTree, IsShown) {
    const auto chain = Chain();
    std::ostringstream out;
    chain->Display(out);
    const std::string text = out.str();
    EXPECT_NE(text.find("  Level = " + std::to_string(kLevels - 1) + "\n"), std::string::npos);
    EXPECT_TRUE(text.ends_with("End FunctionTree Display. \n\nEnd FunctionTree Display. \n\n"));
}

TEST(DeepFunctionTree, IsWalked) {
    const auto chain = Chain();
    auto* leaf = static_cast<FunctionTreeImp*>(chain->GetLastLeaf());
    EXPECT_EQ(leaf->GetRoot(), chain.get());
    EXPECT_TRUE(leaf->IsNodeAncestor(chain.get()));
    EXPECT_EQ(leaf->GetNextNode(), nullptr);
    EXPECT_EQ(leaf->GetPreviousLeaf(), nullptr);
}

TEST(WideFunctionTree, IsEmptiedInOneGo) {
    const auto root = Root("0");
    for (int i = 0; i < kLevels; ++i) {
        root->Add(NewNode("child"));
    }
    root->RemoveAllChildren();
    EXPECT_EQ(root->GetChildCount(), kLevels);
    EXPECT_EQ(root->GetFirstChild(), nullptr);
}
