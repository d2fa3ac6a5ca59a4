#include "transform/apply/function_dispatch.h"

#include "transform/function_table.h"
#include "transform/functions/rules.h"
#include "transform/numbers/kernels.h"

#include <array>
#include <type_traits>

namespace veltrane::transform {

namespace {

using namespace functions; // NOLINT(google-build-using-namespace): the table names them
using TD = TransformationDictionary;

/// A function of one or two numbers as one of two.
template <auto Function>
double Folded(double a, [[maybe_unused]] double b) {
    if constexpr (std::is_invocable_v<decltype(Function), double, double>) {
        return Function(a, b);
    } else {
        return Function(a);
    }
}

template <auto Kernel>
double OverArray(double* numbers, std::size_t count) {
    return Kernel(numbers, count);
}

// One for each way in which the table has arguments reach a function.
// NOLINTBEGIN(bugprone-macro-parentheses): each argument is an initializer of its own
#define VELTRANE_DISPATCH_FOLD(function)                                                                               \
    { .evaluate = EvaluateFold, .steps = PlanSteps::CALL, .fold = Folded<function> }
#define VELTRANE_DISPATCH_ACCUMULATE(function)                                                                         \
    { .evaluate = EvaluateAccumulate, .steps = PlanSteps::CALL, .accumulate = function }
#define VELTRANE_DISPATCH_PAIR(function, kernel)                                                                       \
    { .evaluate = EvaluateAccumulate, .steps = PlanSteps::CALL, .accumulate = function, .pair = kernel }
#define VELTRANE_DISPATCH_ARRAY(function, kernel)                                                                      \
    { .evaluate = EvaluateAccumulate, .steps = PlanSteps::CALL, .accumulate = function, .array = OverArray<kernel> }
#define VELTRANE_DISPATCH_DATE_TIME(function)                                                                          \
    { .evaluate = EvaluateDateTime, .steps = PlanSteps::NUMBER, .date = function }
#define VELTRANE_DISPATCH_ONE_TEXT(function)                                                                           \
    { .evaluate = EvaluateOneText, .steps = PlanSteps::ANY_VALUE, .text = function }
#define VELTRANE_DISPATCH_COMPARE(wanted)                                                                              \
    { .evaluate = EvaluateCompare, .steps = PlanSteps::COMPARISON, .compare = AreTwoEqual, .answer = wanted }
#define VELTRANE_DISPATCH_MEMBER(wanted)                                                                               \
    { .evaluate = EvaluateMember, .steps = PlanSteps::COMPARISON, .compare = IsAmongOthers, .answer = wanted }
#define VELTRANE_DISPATCH_MISSING(wanted)                                                                              \
    { .evaluate = EvaluateMissing, .steps = PlanSteps::MISSING_TEST, .answer = wanted }
#define VELTRANE_DISPATCH_RULE(function, planned)                                                                      \
    { .evaluate = function, .steps = PlanSteps::planned }
// NOLINTEND(bugprone-macro-parentheses)

/// The functions in the order of the table, and what stands for a number that is none.
constexpr std::array<FunctionDispatch, kFunctionCount + 1> kDispatch{{
#define VELTRANE_TRANSFORM_FUNCTION(enumerator, number, names, evaluation, ...) VELTRANE_DISPATCH_##evaluation,
#include <MCVeltrane_900/TransformFunctions.def>
    {.evaluate = EvaluateNothing, .steps = PlanSteps::ANY_VALUE},
}};

} // namespace

const FunctionDispatch& DispatchOf(TransformationDictionary::TransformFunction function) {
    return kDispatch[RowOf(function)];
}

} // namespace veltrane::transform
