#include "data/values/value_cast.h"
#include "transform/apply/apply_plan.h"
#include "transform/apply/child_values.h"
#include "transform/numbers/kernels.h"

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

/// DoubleOf(), at once for the library's own class, which describes itself at one place.
double NumberIn(const ScoreValue* value) {
    return value != nullptr && &typeid(*value) == &typeid(NumericValue)
               ? data::StoredNumber::Of(static_cast<const NumericValue&>(*value))
               : DoubleOf(value);
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
        fDerived = DictionaryEvaluation::DictionaryOf(oneCase);
        fStored = {};
    }
    if (!fOperands.empty() && !HoldsNumbers(oneCase)) {
        return nullptr;
    }
    const double result = Run(var, oneCase);
    NumericValue& scratch = FieldEvaluation::Of(var).NumericScratch();
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

// The kernels that the table names, for two numbers and for an array; a step calls one of them.
#define VELTRANE_KERNEL_FOLD(function) break
#define VELTRANE_KERNEL_ACCUMULATE(function) break
#define VELTRANE_KERNEL_PAIR(function, kernel) return kernel(arguments[0], arguments[1])
#define VELTRANE_KERNEL_ARRAY(function, kernel) return kernel(arguments, step.count)
#define VELTRANE_KERNEL_DATE_TIME(function) break
#define VELTRANE_KERNEL_ONE_TEXT(function) break
#define VELTRANE_KERNEL_COMPARE(answer) break
#define VELTRANE_KERNEL_MEMBER(answer) break
#define VELTRANE_KERNEL_MISSING(answer) break
#define VELTRANE_KERNEL_RULE(function, steps) break

/// All of it belongs into the loop of the steps.
inline double ApplyPlan::CallKernel(const Step& step, double* arguments) {
    using namespace functions; // NOLINT(google-build-using-namespace): the table names its kernels
    switch (step.function) {
#define VELTRANE_TRANSFORM_FUNCTION(enumerator, number, names, evaluation, ...)                                        \
    case TD::enumerator:                                                                                               \
        VELTRANE_KERNEL_##evaluation;
#include <MCVeltrane_900/TransformFunctions.def>
    default:
        break;
    }
    return kMissing; // no step of a function without a kernel comes here
}

inline double ApplyPlan::Call(const Step& step, const double* arguments) {
    if (step.dispatch->fold == nullptr) {
        return Accumulate(step, arguments);
    }
    double result = step.count == 1 ? step.dispatch->fold(arguments[0], 0.0) : arguments[0];
    for (std::size_t i = 1; i < step.count; ++i) {
        result = step.dispatch->fold(result, arguments[i]);
    }
    return result;
}

double ApplyPlan::Run(TransformVar& var, const ApplyCase& oneCase) {
    double* top = fStack.data();
    Step* const end = fSteps.data() + fSteps.size();
    for (Step* step = fSteps.data(); step != end; ++step) {
        if (step->kind == Kind::CONSTANT) {
            *top++ = data::StoredNumber::Of(*step->constant);
        } else if (step->kind == Kind::FIELD) {
            *top++ = ReadField(*step, var, oneCase);
        } else if (step->kind == Kind::KERNEL) {
            if (step->constant != nullptr) {
                *top++ = data::StoredNumber::Of(*step->constant);
            }
            top -= step->count;
            const double result = CallKernel(*step, top);
            *top = IsMissing(result) || step->treatsInvalid ? Treat(*step, var, top, result) : result;
            ++top;
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
    return fDerived != nullptr && DictionaryEvaluation::IsComputed(*fDerived, step.variable->GetValueIndex());
}

/// That value, by the field's name, which is looked up once.
inline const ScoreValue* ApplyPlan::ReadComputed(Step& step) {
    if (step.storedIn != fDerived->GetRevision()) {
        step.stored =
            DictionaryEvaluation::StoredPosition(*fDerived, FieldEvaluation::NameOfField(step.node->GetNodeStats()));
        step.storedIn = step.stored < 0 ? 0 : fDerived->GetRevision();
    }
    return DictionaryEvaluation::StoredValue(*fDerived, step.stored, fStored);
}

double ApplyPlan::ReadField(Step& step, TransformVar& var, const ApplyCase& oneCase) {
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
    return NumberIn(IsComputed(step) ? ReadComputed(step)
                                     : FieldEvaluation::Of(var).EvaluateField(*step.variable, oneCase));
}

double ApplyPlan::Walk(const Step& step, TransformVar& var, const ApplyCase& oneCase) const {
    int status = 0;
    return DoubleOf(FieldEvaluation::Of(var).Traverse(*step.node, oneCase, status));
}

double ApplyPlan::Accumulate(const Step& step, const double* arguments) {
    fArguments.assign(arguments, arguments + step.count);
    return step.dispatch->accumulate(fArguments);
}

double ApplyPlan::Compare(const Step& step, TransformVar& var, const double* arguments) {
    const double result = Truth(step.dispatch->compare(arguments, step.count) == step.dispatch->answer);
    return step.treatsInvalid ? Treat(step, var, arguments, result) : result;
}

/// Only accumulated arguments can make a missing result replaceable.
double ApplyPlan::Treat(const Step& step, TransformVar& var, const double* arguments, double result) {
    NumericValue& scratch = FieldEvaluation::Of(var).NumericScratch();
    scratch.SetDoubleValue(result);
    const bool isInvalid = step.treatsInvalid && !var.IsValidValue(&scratch);
    fArguments.clear();
    if (step.dispatch->accumulate != nullptr) {
        fArguments.assign(arguments, arguments + step.count);
    }
    FieldEvaluation::ReplaceResult(fArguments, step.function, scratch, step.node->GetNodeStats(), IsMissing(result),
                                   isInvalid);
    return scratch.GetDouble();
}

} // namespace veltrane::transform
