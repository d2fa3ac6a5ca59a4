#include <MCVeltrane_900/FunctionTree.h>
#include <MCVeltrane_900/ScoreValue.h>
#include <MCVeltrane_900/ScoreValueRange.h>
#include <MCVeltrane_900/TransformVar.h>

#include <array>

namespace MCVeltrane_900 {

namespace {

/// What a dump calls the kinds of expression, by their numbers. Lag and no expression have no text.
constexpr std::array kExpressionTexts{"Constant\n",   "FieldRef\n",  "NormContinuous\n", "NormDiscrete\n",
                                      "Discretize\n", "MapValues\n", "Apply\n"};

std::string TextOrNothing(const ScoreValue* value) {
    return value == nullptr ? std::string() : value->GetString();
}

/// Shows every node of a tree with all that is below it, so that nodes appear once for each node above them.
void DisplayAllNodes(std::ostream& out, const FunctionTree& root) {
    std::vector<const FunctionTree*> pending{&root};
    while (!pending.empty()) {
        const FunctionTree* node = pending.back();
        pending.pop_back();
        node->Display(out);
        for (int i = node->GetChildCount() - 1; i >= 0; --i) {
            if (const FunctionTree* child = node->GetChildAt(i)) {
                pending.push_back(child);
            }
        }
    }
}

} // namespace

void TransformVar::Display(std::ostream& out) const {
    DictVar::Display(out);
    out << "Start Display Parameters: \n\n"
        << "EXPRESSION: ";
    const auto kind = static_cast<std::size_t>(fTransExpression);
    if (kind < kExpressionTexts.size()) {
        out << kExpressionTexts[kind];
    }
    if (fRoot != nullptr) {
        DisplayAllNodes(out, *fRoot);
    }
    if (!fBins.empty()) {
        out << "Bin values\n";
    }
    for (const auto& [range, value] : fBins) {
        if (range != nullptr) {
            range->Display(out);
        }
        out << (value == nullptr ? "recodeIntervalCopy" : value->GetString()) << "\n";
    }
    if (!fEncodedValues.empty()) {
        out << "Original values and its encoded values\n";
    }
    for (const auto& [key, encoded] : fEncodedValues) {
        out << TextOrNothing(key) << "; " << TextOrNothing(encoded) << "\n";
    }
    out << "End one TransformVar display\n\n";
}

} // namespace MCVeltrane_900
