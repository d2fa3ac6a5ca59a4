#include "transform/apply/apply_plan.h"

#include "transform/apply/child_values.h"
#include "transform/functions/kernels.h"

#include <MCVeltrane_900/ScoreCaseRecord.h>
#include <MCVeltrane_900/ScoreDictVar.h>

using namespace MCVeltrane_900;

namespace veltrane::transform {

using TD = TransformationDictionary;
using functions::IsMissing;
using functions::kMissing;

namespace {

/// Trees of documents are a few levels deep; deeper ones are walked.
constexpr int kDeepestPlan = 100;

bool IsFunctionOfNumbers(const FunctionTree& node) {
    const Gathering gathering = DispatchOf(node.GetNodeStats().GetTransformFunction()).gathering;
    return !node.IsLeaf() && (gathering == Gathering::FOLD || gathering == Gathering::ACCUMULATE);
}

} // namespace

std::unique_ptr<ApplyPlan> ApplyPlan::Make(FunctionTree& root) {
    if (!IsFunctionOfNumbers(root)) {
        return nullptr;
    }
    auto plan = std::make_unique<ApplyPlan>();
    if (!plan->Add(root, 0)) {
        return nullptr;
    }
    plan->fStack.resize(plan->fSteps.size());
    return plan;
}

bool ApplyPlan::Add(FunctionTree& node, int depth) {
    if (depth > kDeepestPlan) {
        return false;
    }
    if (node.IsLeaf()) {
        AddLeaf(node);
        return true;
    }
    if (!IsFunctionOfNumbers(node)) {
        fSteps.push_back({.kind = Kind::WALK, .node = &node});
        return true;
    }
    const int count = node.GetChildCount();
    for (int i = 0; i < count; ++i) {
        FunctionTree* child = node.GetChildAt(i);
        if (child == nullptr || !Add(*child, depth + 1)) {
            return false;
        }
    }
    const ApplyNodeStats& stats = node.GetNodeStats();
    fSteps.push_back({.kind = Kind::FUNCTION,
                      .node = &node,
                      .arguments = static_cast<std::size_t>(count),
                      .dispatch = DispatchOf(stats.GetTransformFunction()),
                      .function = stats.GetTransformFunction(),
                      .treatsInvalid = stats.GetInvalidValueTreatmentMethod() == ApplyNodeStats::IV_AS_MISSING});
    return true;
}

/// Numbers and numeric fields; every other leaf is left to the walk, which also writes the lengths of texts.
void ApplyPlan::AddLeaf(FunctionTree& leaf) {
    const ApplyNodeStats& stats = leaf.GetNodeStats();
    const ScoreDictVar* variable = stats.GetVariable();
    if (stats.IsConstNode() && stats.GetValue() != nullptr) {
        fSteps.push_back({.kind = Kind::CONSTANT, .constant = stats.GetValue()->GetDouble()});
    } else if (!stats.IsConstNode() && variable != nullptr && variable->GetVarType() == ScoreDictVar::kNUMERIC_VAR) {
        fSteps.push_back({.kind = Kind::FIELD,
                          .node = &leaf,
                          .variable = variable,
                          .position = stats.GetVarIndex(),
                          .isDerived = variable->IsDerivedVariable()});
    } else {
        fSteps.push_back({.kind = Kind::WALK, .node = &leaf});
    }
}

const ScoreValue* ApplyPlan::Evaluate(TransformVar& var, const ApplyCase& oneCase) {
    double* top = fStack.data();
    for (const Step& step : fSteps) {
        switch (step.kind) {
        case Kind::CONSTANT:
            *top++ = step.constant;
            break;
        case Kind::FIELD:
            *top++ = ReadField(step, var, oneCase);
            break;
        case Kind::WALK:
            *top++ = Walk(step, var, oneCase);
            break;
        case Kind::FUNCTION: {
            top -= step.arguments;
            const double result = Call(step, top);
            *top = IsMissing(result) || step.treatsInvalid ? Treat(step, var, top, result) : result;
            ++top;
            break;
        }
        }
    }
    NumericValue& result = var.NumericScratch();
    result.SetDoubleValue(fStack[0]);
    return &result;
}

double ApplyPlan::ReadField(const Step& step, TransformVar& var, const ApplyCase& oneCase) const {
    const ScoreValue* value =
        step.position >= 0 && oneCase.record != nullptr ? oneCase.record->Get(step.position) : nullptr;
    if (value != nullptr) {
        if (!step.variable->IsMissingValue(value)) {
            return value->GetDouble();
        }
        const ScoreValue* replacement = step.node->GetNodeStats().GetFieldrefRecodeMissValueRep();
        return replacement != nullptr ? replacement->GetDouble() : kMissing;
    }
    if (!step.isDerived) {
        return kMissing;
    }
    const ScoreValue* computed = TransformVar::ReadComputedField(*step.variable, oneCase);
    return DoubleOf(computed != nullptr ? computed : var.ReadAbsentField(*step.variable, oneCase));
}

double ApplyPlan::Walk(const Step& step, TransformVar& var, const ApplyCase& oneCase) const {
    int status = 0;
    return DoubleOf(var.Traverse(step.node, oneCase.record, oneCase.dictionary, oneCase.transformations, status));
}

double ApplyPlan::Call(const Step& step, const double* arguments) {
    if (step.arguments == 2) {
        switch (step.function) {
        case TD::TF_MINUS:
            return functions::Difference(arguments[0], arguments[1]);
        case TD::TF_MULTIPLY:
            return functions::Product(arguments[0], arguments[1]);
        case TD::TF_DIVIDE:
            return functions::Quotient(arguments[0], arguments[1]);
        default:
            break;
        }
    }
    if (step.function == TD::TF_SUM) {
        return functions::Total(arguments, step.arguments);
    }
    if (step.dispatch.fold != nullptr) {
        double result = step.arguments == 1 ? step.dispatch.fold(arguments[0], 0.0) : arguments[0];
        for (std::size_t i = 1; i < step.arguments; ++i) {
            result = step.dispatch.fold(result, arguments[i]);
        }
        return result;
    }
    fArguments.assign(arguments, arguments + step.arguments);
    return step.dispatch.accumulate(fArguments);
}

/// Only accumulated arguments can make a missing result replaceable.
double ApplyPlan::Treat(const Step& step, TransformVar& var, const double* arguments, double result) {
    NumericValue& scratch = var.NumericScratch();
    scratch.SetDoubleValue(result);
    const bool isInvalid = step.treatsInvalid && !var.IsValidValue(&scratch);
    fArguments.clear();
    if (step.dispatch.accumulate != nullptr) {
        fArguments.assign(arguments, arguments + step.arguments);
    }
    TransformVar::HandleMissingAndInvalidOfApply(fArguments, step.function, &scratch, step.node->GetNodeStats(),
                                                 IsMissing(result), isInvalid);
    return scratch.GetDouble();
}

} // namespace veltrane::transform
