#ifndef VELTRANE_TRANSFORM_APPLY_FUNCTION_DISPATCH_H
#define VELTRANE_TRANSFORM_APPLY_FUNCTION_DISPATCH_H

#include <MCVeltrane_900/TransformationDictionary.h>

#include <vector>

namespace veltrane::transform {

/// How the arguments of a function reach it.
enum class Gathering {
    FOLD,        ///< the first starts an accumulator, each further one combines with it
    ACCUMULATE,  ///< all numbers are handed over at the end
    DATE_TIME,   ///< a date, and a number
    TEXT_RESULT, ///< texts in, a text out
    COMPARE,     ///< all values are handed over at the end
    MEMBER,      ///< the first against all others
    OWN,         ///< a rule of its own
};

using FoldFunction = double (*)(double, double);
using AccumulateFunction = double (*)(const std::vector<double>&);

/// What the evaluation knows of a function. The members that its gathering has no use for are null.
struct FunctionDispatch {
    Gathering gathering;
    FoldFunction fold;
    AccumulateFunction accumulate;
};

/// @param function any number; one that is no function has a rule of its own that gives nothing
const FunctionDispatch& DispatchOf(MCVeltrane_900::TransformationDictionary::TransformFunction function);

} // namespace veltrane::transform

#endif
