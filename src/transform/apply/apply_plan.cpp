#include "transform/apply/apply_plan.h"

#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreDictVar.h>

#include <typeinfo>

using namespace MCVeltrane_900;

/// How a plan is made of a tree.
namespace veltrane::transform {

using TD = TransformationDictionary;

namespace {

/// Trees of documents are a few levels deep; deeper ones are walked.
constexpr int kDeepestPlan = 100;

/// The constant of a leaf as a number, null when it is none. A host may give the value another number at any time.
const NumericValue* NumberOf(const ApplyNodeStats& stats) {
    const ScoreValue* value = stats.IsConstNode() ? stats.GetValue() : nullptr;
    return value != nullptr && typeid(*value) == typeid(NumericValue) ? static_cast<const NumericValue*>(value)
                                                                      : nullptr;
}

} // namespace

/// Whether a child tells its changes to the node that holds it.
bool ApplyPlan::TellsChanges(const FunctionTree& node, const FunctionTree& child) {
    return typeid(child) == typeid(FunctionTreeImp) && child.GetParent() == &node;
}

/// A leaf that names a field, as opposed to a function without arguments.
bool ApplyPlan::NamesField(const ApplyNodeStats& stats) {
    return !stats.IsConstNode() && stats.GetTransformFunction() == TD::TF_NONE;
}

std::unique_ptr<ApplyPlan> ApplyPlan::Make(FunctionTree& root) {
    if (typeid(root) != typeid(FunctionTreeImp)) {
        return nullptr;
    }
    std::unique_ptr<ApplyPlan> plan(new ApplyPlan(static_cast<const FunctionTreeImp&>(root)));
    const Added added = plan->Add(root, 0);
    const bool isWalk = plan->fSteps.size() == 1 && plan->fSteps.front().kind == Kind::WALK;
    if (added == Added::NOTHING || isWalk || root.IsLeaf()) {
        plan->fSteps.clear();
        plan->fOperands.clear();
    }
    plan->fStack.resize(plan->fSteps.size());
    return plan;
}

bool ApplyPlan::IsOutdated() {
    if (HasChanged()) {
        return true; // and the leaves may be gone
    }
    if (fUnresolved.empty()) {
        return false;
    }
    while (!fUnresolved.empty() && fUnresolved.back()->GetNodeStats().GetVariable() != nullptr) {
        fUnresolved.pop_back();
    }
    return fUnresolved.empty();
}

ApplyPlan::Added ApplyPlan::Add(FunctionTree& node, int depth) {
    if (depth > kDeepestPlan) {
        return Added::NOTHING;
    }
    if (node.IsLeaf()) {
        return AddLeaf(node);
    }
    switch (DispatchOf(node.GetNodeStats().GetTransformFunction()).steps) {
    case PlanSteps::CALL:
        return AddFunction(node, depth);
    case PlanSteps::COMPARISON:
        return AddComparison(node, depth);
    case PlanSteps::MISSING_TEST:
        return AddMissingTest(node);
    case PlanSteps::BRANCH:
        return AddBranch(node, depth);
    case PlanSteps::NUMBER:
        return AddWalk(node, true);
    default:
        return AddWalk(node, false);
    }
}

ApplyPlan::Added ApplyPlan::AddChild(FunctionTree& node, FunctionTree& child, int depth) {
    return TellsChanges(node, child) ? Add(child, depth + 1) : AddWalk(child, false);
}

/// Numbers and numeric fields; every other leaf is left to the walk, which also writes the lengths of texts.
ApplyPlan::Added ApplyPlan::AddLeaf(FunctionTree& leaf) {
    const ApplyNodeStats& stats = leaf.GetNodeStats();
    const ScoreDictVar* variable = stats.GetVariable();
    if (const NumericValue* constant = NumberOf(stats)) {
        fSteps.push_back({.kind = Kind::CONSTANT, .constant = constant});
        return Added::NUMBER;
    }
    if (!stats.IsConstNode() && variable != nullptr && variable->GetVarType() == ScoreDictVar::kNUMERIC_VAR) {
        fSteps.push_back({.kind = Kind::FIELD,
                          .node = &leaf,
                          .variable = variable,
                          .position = stats.GetVarIndex(),
                          .isDerived = variable->IsDerivedVariable()});
        fReadsDerived = fReadsDerived || variable->IsDerivedVariable();
        return Added::NUMBER;
    }
    if (variable == nullptr && NamesField(stats)) {
        fUnresolved.push_back(&leaf);
    }
    return AddWalk(leaf, false);
}

ApplyPlan::Added ApplyPlan::AddFunction(FunctionTree& node, int depth) {
    const int count = node.GetChildCount();
    std::size_t last = fSteps.size(); // the first step of the last argument
    for (int i = 0; i < count; ++i) {
        last = fSteps.size();
        FunctionTree* child = node.GetChildAt(i);
        if (child == nullptr || AddChild(node, *child, depth) == Added::NOTHING) {
            return Added::NOTHING;
        }
    }
    const FunctionDispatch& dispatch = DispatchOf(node.GetNodeStats().GetTransformFunction());
    const bool hasKernel = dispatch.array != nullptr || (dispatch.pair != nullptr && count == 2);
    // The last argument of a kernel is often a constant, which then needs no step of its own.
    const bool endsInConstant = hasKernel && last + 1 == fSteps.size() && fSteps.back().kind == Kind::CONSTANT;
    const NumericValue* const constant = endsInConstant ? fSteps.back().constant : nullptr;
    if (endsInConstant) {
        fSteps.pop_back();
    }
    AddCall(hasKernel ? Kind::KERNEL : Kind::FUNCTION, node, count);
    fSteps.back().constant = constant;
    return Added::NUMBER;
}

/// Values are compared by their kinds too, so only what is a number in every case is compared here.
ApplyPlan::Added ApplyPlan::AddComparison(FunctionTree& node, int depth) {
    const std::size_t first = fSteps.size();
    const int count = node.GetChildCount();
    for (int i = 0; i < count; ++i) {
        if (AddOperand(node, i, depth) != Added::NUMBER) {
            return WalkInstead(first, node, true);
        }
    }
    AddCall(Kind::COMPARISON, node, count);
    return Added::NUMBER;
}

/// A child whose kind matters. A record may hold a text for a numeric field, which each case is asked for ahead.
ApplyPlan::Added ApplyPlan::AddOperand(FunctionTree& node, int position, int depth) {
    FunctionTree* child = node.GetChildAt(position);
    const Added added = child == nullptr ? Added::NOTHING : AddChild(node, *child, depth);
    if (added == Added::NUMBER && child->IsLeaf() && fSteps.back().kind == Kind::FIELD) {
        fOperands.push_back(fSteps.size() - 1);
    }
    return added;
}

ApplyPlan::Added ApplyPlan::AddWalk(FunctionTree& node, bool givesNumber) {
    fSteps.push_back({.kind = Kind::WALK, .node = &node});
    return givesNumber ? Added::NUMBER : Added::VALUE;
}

/// Takes back the steps from this one on.
ApplyPlan::Added ApplyPlan::WalkInstead(std::size_t first, FunctionTree& node, bool givesNumber) {
    fSteps.resize(first, {.kind = Kind::WALK});
    while (!fOperands.empty() && fOperands.back() >= first) {
        fOperands.pop_back();
    }
    return AddWalk(node, givesNumber);
}

void ApplyPlan::AddCall(Kind kind, FunctionTree& node, int count) {
    const ApplyNodeStats& stats = node.GetNodeStats();
    fSteps.push_back({.kind = kind,
                      .node = &node,
                      .count = static_cast<std::size_t>(count),
                      .dispatch = &DispatchOf(stats.GetTransformFunction()),
                      .function = stats.GetTransformFunction(),
                      .treatsInvalid = stats.GetInvalidValueTreatmentMethod() == ApplyNodeStats::IV_AS_MISSING});
}

} // namespace veltrane::transform
