#ifndef VELTRANE_TRANSFORM_APPLY_FUNCTION_DISPATCH_H
#define VELTRANE_TRANSFORM_APPLY_FUNCTION_DISPATCH_H

#include <MCVeltrane_900/TransformationDictionary.h>

#include <cstddef>
#include <string>
#include <vector>

namespace veltrane::transform {

class ApplyNode;

/// What a plan makes of a function.
enum class PlanSteps {
    CALL,         ///< the steps of its arguments, and a call with their numbers
    COMPARISON,   ///< the same, where all of them are numbers in every case
    MISSING_TEST, ///< one step
    BRANCH,       ///< a jump over the steps of its last argument
    NUMBER,       ///< a walk that gives a number in every case
    ANY_VALUE,    ///< a walk
};

/// What the evaluation knows of a function. The members that its kind has no use for are null.
struct FunctionDispatch {
    /// Evaluates a node of the function, its arguments included.
    const MCVeltrane_900::ScoreValue* (*evaluate)(ApplyNode& node);
    PlanSteps steps;

    double (*fold)(double a, double b) = nullptr;
    double (*accumulate)(const std::vector<double>& numbers) = nullptr;
    /// Accumulates exactly two numbers.
    double (*pair)(double a, double b) = nullptr;
    /// Accumulates any number without a vector. It may put the numbers in another order.
    double (*array)(double* numbers, std::size_t count) = nullptr;
    double (*date)(const MCVeltrane_900::DateTimeValue& date, double difference) = nullptr;
    std::string (*text)(const MCVeltrane_900::StringValue* text, int& length) = nullptr;
    /// Compares numbers as values are compared.
    bool (*compare)(const double* numbers, std::size_t count) = nullptr;
    /// What a test has to find for 1.
    bool answer = true;
};

/// @param function any number; one that is no function evaluates its arguments and gives 0
const FunctionDispatch& DispatchOf(MCVeltrane_900::TransformationDictionary::TransformFunction function);

} // namespace veltrane::transform

#endif
