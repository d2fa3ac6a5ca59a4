#include "data/values/value_cast.h"
#include "transform/apply/apply_plan.h"
#include "transform/apply/child_values.h"
#include "transform/functions/kernels.h"

#include <MCVeltrane_900/ScoreCaseRecord.h>
#include <MCVeltrane_900/ScoreDictVar.h>

#include <algorithm>
#include <typeinfo>

using namespace MCVeltrane_900;

/// How a plan is evaluated for a case.
namespace veltrane::transform {

using TD = TransformationDictionary;
using functions::IsMissing;
using functions::kMissing;

namespace {

const ScoreValue* ValueInRecord(int position, const ApplyCase& oneCase) {
    return position >= 0 && oneCase.record != nullptr ? oneCase.record->Get(position) : nullptr;
}

double Truth(bool condition) {
    return condition ? 1.0 : 0.0;
}

} // namespace

const ScoreValue* ApplyPlan::Evaluate(TransformVar& var, const ApplyCase& oneCase) {
    if (fSteps.empty() || HasChanged()) {
        return nullptr;
    }
    if (fReadsDerived) {
        fDerived = TransformVar::DerivedFields(oneCase);
    }
    if (!fOperands.empty() && !HoldsNumbers(oneCase)) {
        return nullptr;
    }
    const double result = Run(var, oneCase);
    NumericValue& scratch = var.NumericScratch();
    scratch.SetDoubleValue(result);
    return &scratch;
}

/// A field that is in neither record counts as a missing number; one that has still to be computed may give anything.
bool ApplyPlan::HoldsNumbers(const ApplyCase& oneCase) {
    return std::all_of(fOperands.begin(), fOperands.end(), [&](std::size_t i) {
        Step& step = fSteps[i];
        const ScoreValue* value = ValueInRecord(step.position, oneCase);
        if (value == nullptr) {
            if (!step.isDerived) {
                return true;
            }
            value = IsComputed(step) ? ReadComputed(step) : nullptr;
        }
        return value != nullptr && typeid(*value) == typeid(NumericValue);
    });
}

/// The commonest functions come first; all of it belongs into the loop of the steps.
inline double ApplyPlan::Call(const Step& step, const double* arguments) {
    if (step.count == 2) {
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
        return functions::Total(arguments, step.count);
    }
    if (step.dispatch->fold != nullptr) {
        double result = step.count == 1 ? step.dispatch->fold(arguments[0], 0.0) : arguments[0];
        for (std::size_t i = 1; i < step.count; ++i) {
            result = step.dispatch->fold(result, arguments[i]);
        }
        return result;
    }
    return Accumulate(step, arguments);
}

double ApplyPlan::Run(TransformVar& var, const ApplyCase& oneCase) {
    double* top = fStack.data();
    Step* const end = fSteps.data() + fSteps.size();
    for (Step* step = fSteps.data(); step != end; ++step) {
        if (step->kind == Kind::CONSTANT) {
            *top++ = data::StoredNumber::Of(*step->constant);
        } else if (step->kind == Kind::FIELD) {
            *top++ = ReadField(*step, var, oneCase);
        } else if (step->kind == Kind::FUNCTION) {
            top -= step->count;
            const double result = Call(*step, top);
            *top = IsMissing(result) || step->treatsInvalid ? Treat(*step, var, top, result) : result;
            ++top;
        } else if (step->kind == Kind::BRANCH) {
            top -= 2;
            if (NumericValue::IsEqual(top[0], 1.0)) {
                top[0] = top[1];
                ++top;
                step += step->count;
            }
        } else {
            top -= step->count;
            *top = RunRare(*step, var, oneCase, top);
            ++top;
        }
    }
    return fStack[0];
}

double ApplyPlan::RunRare(const Step& step, TransformVar& var, const ApplyCase& oneCase, const double* arguments) {
    switch (step.kind) {
    case Kind::COMPARISON:
        return Compare(step, var, arguments);
    case Kind::MISSING_TEST:
        return TestMissing(step, var, oneCase);
    default:
        return Walk(step, var, oneCase);
    }
}

/// Whether the value of a derived field stands in the derived record.
inline bool ApplyPlan::IsComputed(const Step& step) const {
    return fDerived != nullptr && fDerived->IsComputed(step.variable->GetValueIndex());
}

/// That value, by the field's name, which is looked up once.
inline const ScoreValue* ApplyPlan::ReadComputed(Step& step) const {
    if (step.storedIn != fDerived->GetRevision()) {
        step.stored = fDerived->StoredPosition(TransformVar::NameOfField(step.node->GetNodeStats()));
        step.storedIn = step.stored < 0 ? 0 : fDerived->GetRevision();
    }
    return fDerived->StoredValue(step.stored);
}

double ApplyPlan::ReadField(Step& step, TransformVar& var, const ApplyCase& oneCase) const {
    if (const ScoreValue* value = ValueInRecord(step.position, oneCase)) {
        if (!step.variable->IsMissingValue(value)) {
            return value->GetDouble();
        }
        const ScoreValue* replacement = step.node->GetNodeStats().GetFieldrefRecodeMissValueRep();
        return replacement != nullptr ? replacement->GetDouble() : kMissing;
    }
    if (!step.isDerived) {
        return kMissing;
    }
    return DoubleOf(IsComputed(step) ? ReadComputed(step) : var.EvaluateField(*step.variable, oneCase));
}

double ApplyPlan::Walk(const Step& step, TransformVar& var, const ApplyCase& oneCase) const {
    int status = 0;
    return DoubleOf(var.Traverse(step.node, oneCase.record, oneCase.dictionary, oneCase.transformations, status));
}

/// The field's own test of what its leaf gives, replacement included.
double ApplyPlan::TestMissing(const Step& step, TransformVar& var, const ApplyCase& oneCase) const {
    int status = 0;
    const ScoreValue* value =
        var.Traverse(step.node, oneCase.record, oneCase.dictionary, oneCase.transformations, status);
    return Truth(step.variable->IsMissingValue(value) == (step.function == TD::TF_IS_MISSING));
}

double ApplyPlan::Accumulate(const Step& step, const double* arguments) {
    fArguments.assign(arguments, arguments + step.count);
    return step.function == TD::TF_MEDIAN ? functions::MedianInPlace(fArguments)
                                          : step.dispatch->accumulate(fArguments);
}

double ApplyPlan::Compare(const Step& step, TransformVar& var, const double* arguments) {
    bool isFound = false;
    if (step.dispatch->gathering == Gathering::COMPARE) {
        isFound = step.count == 2 && NumericValue::IsEqual(arguments[0], arguments[1]);
    } else {
        const double tested = arguments[0];
        isFound = std::any_of(arguments + 1, arguments + step.count,
                              [tested](double x) { return NumericValue::IsEqual(tested, x); });
    }
    const double result = Truth(isFound == (step.function == TD::TF_EQUAL || step.function == TD::TF_IS_IN));
    return step.treatsInvalid ? Treat(step, var, arguments, result) : result;
}

/// Only accumulated arguments can make a missing result replaceable.
double ApplyPlan::Treat(const Step& step, TransformVar& var, const double* arguments, double result) {
    NumericValue& scratch = var.NumericScratch();
    scratch.SetDoubleValue(result);
    const bool isInvalid = step.treatsInvalid && !var.IsValidValue(&scratch);
    fArguments.clear();
    if (step.dispatch->accumulate != nullptr) {
        fArguments.assign(arguments, arguments + step.count);
    }
    TransformVar::HandleMissingAndInvalidOfApply(fArguments, step.function, &scratch, step.node->GetNodeStats(),
                                                 IsMissing(result), isInvalid);
    return scratch.GetDouble();
}

} // namespace veltrane::transform
