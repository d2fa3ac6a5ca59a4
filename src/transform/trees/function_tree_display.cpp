#include "transform/function_table.h"

#include <MCVeltrane_900/FunctionTreeImp.h>

#include <algorithm>
#include <array>
#include <typeinfo>

namespace MCVeltrane_900 {

namespace {

using TD = TransformationDictionary;

/// The functions that a dump shows by their word; all others show their number.
constexpr std::array kShownByWord{TD::TF_PLUS, TD::TF_MINUS, TD::TF_MULTIPLY, TD::TF_ABS, TD::TF_LN, TD::TF_SQRT};

void DisplayFunction(std::ostream& out, TD::TransformFunction function) {
    if (function < TD::TF_NONE || veltrane::transform::IsFunction(function)) {
        out << "Transformation function: ";
    }
    if (std::find(kShownByWord.begin(), kShownByWord.end(), function) != kShownByWord.end()) {
        out << veltrane::transform::FunctionWord(function);
    } else {
        out << "code =" << static_cast<int>(function);
    }
    out << "\n";
}

void DisplayHead(std::ostream& out, const ApplyNodeStats& stats, std::size_t children, int level) {
    out << "Start FunctionTree Display:\n";
    out << "Node ID = " << stats.GetNodeID() << std::endl;
    DisplayFunction(out, stats.GetTransformFunction());
    if (!stats.GetParameterName().empty()) {
        out << "  Parameter Name: " << stats.GetParameterName() << "\n";
    }
    out << "  Level = " << level << "\n\n";
    if (children != 0) {
        out << "Number of children = " << children << "\n";
    }
}

} // namespace

void FunctionTreeImp::Display(std::ostream& out) const {
    struct Open {
        const FunctionTreeImp* node;
        std::size_t next; ///< the slot to show next
    };
    int level = GetLevel();
    std::vector<Open> path{{this, 0}};
    DisplayHead(out, fNodeStats, fChildren.size(), level);
    while (!path.empty()) {
        Open& top = path.back();
        if (top.next == top.node->fChildren.size()) {
            out << "End FunctionTree Display. \n\n";
            path.pop_back();
            --level;
            continue;
        }
        const FunctionTree* child = top.node->fChildren[top.next++];
        if (child != nullptr && typeid(*child) == typeid(FunctionTreeImp)) {
            const auto* node = static_cast<const FunctionTreeImp*>(child);
            DisplayHead(out, node->fNodeStats, node->fChildren.size(), ++level);
            path.push_back({node, 0});
        } else if (child != nullptr) {
            child->Display(out);
        }
    }
}

} // namespace MCVeltrane_900
