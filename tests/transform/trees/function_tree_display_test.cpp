#include "support/function_numbers.h"
#include "trees.h"

#include <gtest/gtest.h>

#include <map>
#include <sstream>

using namespace veltrane::tests;
using TD = TransformationDictionary;

namespace {

std::string Shown(const FunctionTree& tree) {
    std::ostringstream out;
    tree.Display(out);
    return out.str();
}

ApplyNodeStats Function(const std::string& id, TD::TransformFunction function) {
    ApplyNodeStats stats = StatsWithId(id);
    stats.SetTransformFunction(function);
    return stats;
}

ApplyNodeStats Field(const std::string& id, const std::string& name) {
    ApplyNodeStats stats = StatsWithId(id);
    stats.SetParameterName(name);
    return stats;
}

std::string NodeOf(const std::string& function) {
    return "Start FunctionTree Display:\nNode ID = 1\n" + function + "\n  Level = 0\n\nEnd FunctionTree Display. \n\n";
}

} // namespace

TEST(FunctionTreeDisplay, ATree) {
    const auto root = Root("0");
    root->SetNodeStats(Function("0", TD::TF_PLUS));
    AddNode(root.get(), "1")->SetNodeStats(Field("1", "age"));
    auto* inner = AddNode(root.get(), "2");
    inner->SetNodeStats(Function("2", TD::TF_POW));
    AddNode(inner, "3");
    EXPECT_EQ(Shown(*root), "Start FunctionTree Display:\n"
                            "Node ID = 0\n"
                            "Transformation function: +\n"
                            "  Level = 0\n\n"
                            "Number of children = 2\n"
                            "Start FunctionTree Display:\n"
                            "Node ID = 1\n"
                            "code =79\n"
                            "  Parameter Name: age\n"
                            "  Level = 1\n\n"
                            "End FunctionTree Display. \n\n"
                            "Start FunctionTree Display:\n"
                            "Node ID = 2\n"
                            "Transformation function: code =4\n"
                            "  Level = 1\n\n"
                            "Number of children = 1\n"
                            "Start FunctionTree Display:\n"
                            "Node ID = 3\n"
                            "code =79\n"
                            "  Level = 2\n\n"
                            "End FunctionTree Display. \n\n"
                            "End FunctionTree Display. \n\n"
                            "End FunctionTree Display. \n\n");
}

TEST(FunctionTreeDisplay, ABranchShowsItsLevelInTheTree) {
    const auto root = Root("0");
    EXPECT_EQ(Shown(*AddNode(root.get(), "1")), "Start FunctionTree Display:\nNode ID = 1\ncode =79\n  Level = 1\n\n"
                                                "End FunctionTree Display. \n\n");
}

TEST(FunctionTreeDisplay, ALeafHasNoFunctionHeading) {
    EXPECT_EQ(Shown(*Root("1")), NodeOf("code =79"));
}

TEST(FunctionTreeDisplay, NullSlotsAreCountedAndNotShown) {
    const auto root = Root("1");
    AddNode(root.get(), "2");
    root->Remove(0);
    EXPECT_EQ(Shown(*root), "Start FunctionTree Display:\nNode ID = 1\ncode =79\n  Level = 0\n\n"
                            "Number of children = 1\nEnd FunctionTree Display. \n\n");
}

TEST(FunctionTreeDisplay, ANodeOfAnotherClassShowsItself) {
    class Foreign : public FunctionTreeImp {
        void Display(std::ostream& out) const override { out << "foreign\n"; }
    };
    const auto root = Root("1");
    root->Add(new Foreign);
    EXPECT_EQ(Shown(*root), "Start FunctionTree Display:\nNode ID = 1\ncode =79\n  Level = 0\n\n"
                            "Number of children = 1\nforeign\nEnd FunctionTree Display. \n\n");
}

TEST(KeptFunctionTreeDisplay, OnlySixFunctionsAreShownByWord) {
    const std::map<int, std::string> words{{0, "+"}, {1, "-"}, {2, "*"}, {5, "abs"}, {8, "ln"}, {11, "sqrt"}};
    for (const int code : FunctionNumbers()) {
        FunctionTreeImp node;
        node.SetNodeStats(Function("1", static_cast<TD::TransformFunction>(code)));
        const std::string word = words.contains(code) ? words.at(code) : "code =" + std::to_string(code);
        EXPECT_EQ(Shown(node), NodeOf("Transformation function: " + word)) << code;
    }
}
