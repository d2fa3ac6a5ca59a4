#ifndef VELTRANE_TESTS_TRANSFORM_APPLY_FIELDS_H
#define VELTRANE_TESTS_TRANSFORM_APPLY_FIELDS_H

#include "transform/fields/fields.h"

#include <MCVeltrane_900/ApplyNodeStats.h>
#include <MCVeltrane_900/FunctionTreeImp.h>

#include <memory>
#include <string>
#include <vector>

namespace veltrane::tests {

/// Builds the tree of a derived field. The values that hang on nodes live as long as the test.
class ApplyFields : public DerivedFields {
protected:
    ScoreValue* Own(ScoreValue* value) {
        owned.emplace_back(value);
        return value;
    }

    static FunctionTreeImp* Node(const ApplyNodeStats& stats) {
        auto* node = new FunctionTreeImp;
        node->SetNodeStats(stats);
        return node;
    }

    FunctionTreeImp* Const(ScoreValue* value) {
        ApplyNodeStats stats;
        stats.SetConstNode(true);
        stats.SetValue(Own(value));
        return Node(stats);
    }
    FunctionTreeImp* Const(double number) { return Const(Num(number)); }

    FunctionTreeImp* Field(const std::string& name, ScoreValue* mapMissingTo = nullptr) {
        ApplyNodeStats stats;
        stats.SetParameterName(name);
        if (mapMissingTo != nullptr) {
            stats.SetFieldrefRecodeMissValueTo(Own(mapMissingTo));
        }
        return Node(stats);
    }

    FunctionTreeImp* Call(ApplyNodeStats stats, TD::TransformFunction function,
                          const std::vector<FunctionTreeImp*>& children) {
        stats.SetTransformFunction(function);
        FunctionTreeImp* node = Node(stats);
        int id = 0;
        for (FunctionTreeImp* child : children) {
            ApplyNodeStats named(child->GetNodeStats());
            named.SetNodeID(std::to_string(++id));
            child->SetNodeStats(named);
            node->Add(child);
        }
        return node;
    }
    FunctionTreeImp* Call(TD::TransformFunction function, const std::vector<FunctionTreeImp*>& children) {
        return Call(ApplyNodeStats(), function, children);
    }

    TransformVar& Apply(ScoreDictVar::VariableType type, FunctionTreeImp* root, const std::string& name = "z") {
        TransformVar& field = Derived(name, type, "", TD::TE_APPLY);
        field.SetRoot(root);
        return field;
    }

    std::vector<std::unique_ptr<ScoreValue>> owned;
};

} // namespace veltrane::tests

#endif
