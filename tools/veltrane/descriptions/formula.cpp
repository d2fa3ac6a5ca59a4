#include "descriptions/formula.h"

#include "descriptions/functions_command.h"

#include <MCVeltrane_900/ApplyNodeStats.h>
#include <MCVeltrane_900/ScoreValue.h>
#include <MCVeltrane_900/TransformationDictionary.h>

#include <fmt/format.h>

namespace veltrane::host {
namespace {

using MCVeltrane_900::ApplyNodeStats;
using MCVeltrane_900::FunctionTree;
using MCVeltrane_900::ScoreValue;
using MCVeltrane_900::TransformationDictionary;

std::string ConstantText(const ScoreValue* value) {
    if (value == nullptr) {
        return "missing";
    }
    if (value->GetType() == ScoreValue::STRING_VALUE) {
        return '"' + value->GetString() + '"';
    }
    return value->IsSystemMissingValue() ? "missing" : fmt::format("{}", value->GetDouble());
}

bool IsOperator(const FunctionTree& node) {
    return node.GetNodeStats().GetTransformFunction() <= TransformationDictionary::TF_DIVIDE &&
           node.GetChildCount() == 2;
}

/// The reader of documents bounds how deep a tree is.
void Append(std::string& text, const FunctionTree& node, bool isOperand) {
    const ApplyNodeStats& stats = node.GetNodeStats();
    if (node.IsLeaf() && stats.GetTransformFunction() == TransformationDictionary::TF_NONE) {
        text += stats.IsConstNode() ? ConstantText(stats.GetValue()) : stats.GetParameterName();
        return;
    }
    const bool isOperator = IsOperator(node);
    const std::string name = FunctionName(stats.GetTransformFunction());
    if (!isOperator) {
        text += name;
    }
    const bool isBracketed = !isOperator || isOperand;
    text += isBracketed ? "(" : "";
    for (int i = 0; i < node.GetChildCount(); ++i) {
        if (i > 0) {
            text += isOperator ? " " + name + " " : ", ";
        }
        Append(text, *node.GetChildAt(i), isOperator);
    }
    text += isBracketed ? ")" : "";
}

} // namespace

std::string Formula(const FunctionTree& root) {
    std::string text;
    Append(text, root, false);
    return text;
}

} // namespace veltrane::host
