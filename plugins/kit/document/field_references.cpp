#include "kit/document/field_references.h"

#include <MCVeltrane_900/FunctionTree.h>
#include <MCVeltrane_900/MapValues.h>

#include <algorithm>
#include <unordered_set>

namespace veltrane_kit {

using namespace MCVeltrane_900;

namespace {

/// Names without repetition, in the order in which they came.
class NameList {
public:
    void Add(const std::string& name) {
        if (!name.empty() && fKnown.insert(name).second) {
            fNames.push_back(name);
        }
    }

    std::vector<std::string> fNames;

private:
    std::unordered_set<std::string> fKnown;
};

/// The reader of documents bounds how deep a tree is.
void AddLeaves(const FunctionTree& node, NameList& names) {
    const ApplyNodeStats& stats = node.GetNodeStats();
    if (node.IsLeaf() && !stats.IsConstNode()) {
        names.Add(stats.GetParameterName());
    }
    for (int i = 0; i < node.GetChildCount(); ++i) {
        if (const FunctionTree* child = node.GetChildAt(i); child != nullptr) {
            AddLeaves(*child, names);
        }
    }
}

void AddVariables(const std::vector<const ScoreDictVar*>& variables, NameList& names) {
    for (const ScoreDictVar* variable : variables) {
        if (variable != nullptr) {
            names.Add(variable->GetName());
        }
    }
}

} // namespace

std::vector<std::string> ReferencedFields(const TransformVar& derived) {
    NameList names;
    if (derived.GetRoot() != nullptr) {
        AddLeaves(*derived.GetRoot(), names);
    }
    if (const MapValues* map = derived.GetMapValues(); map != nullptr) {
        for (const auto& [column, field] : map->GetColumnFields()) {
            names.Add(field);
        }
        AddVariables(map->GetInputFields(), names);
    }
    names.Add(derived.GetFieldName());
    AddVariables(derived.GetLagBlocks(), names);
    return std::move(names.fNames);
}

std::vector<std::string> CaseFieldsOf(const std::vector<std::string>& names, const TransformationDictionary& derived) {
    NameList fields;
    std::unordered_set<std::string> known(names.begin(), names.end());
    std::vector<std::string> pending(names.rbegin(), names.rend());
    while (!pending.empty()) {
        const std::string name = std::move(pending.back());
        pending.pop_back();
        const auto* var = dynamic_cast<const TransformVar*>(derived.GetVar(name));
        if (var == nullptr) {
            fields.Add(name);
            continue;
        }
        std::vector<std::string> references = ReferencedFields(*var);
        std::reverse(references.begin(), references.end());
        for (std::string& reference : references) {
            if (known.insert(reference).second) {
                pending.push_back(std::move(reference));
            }
        }
    }
    return std::move(fields.fNames);
}

} // namespace veltrane_kit
