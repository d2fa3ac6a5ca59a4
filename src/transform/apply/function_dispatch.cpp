#include "transform/apply/function_dispatch.h"

#include "transform/function_table.h"
#include "transform/functions/missing.h"

#include <array>
#include <cmath>
#include <type_traits>

namespace veltrane::transform {

namespace {

/// The power of an Apply takes two doubles; TransformationDictionary::Pow takes an integer exponent.
double PowOfDoubles(double a, double b) {
    return functions::IsMissing(a) || functions::IsMissing(b) ? functions::kMissing : std::pow(a, b);
}

/// A function of one or two numbers as one of two.
template <auto Function>
double Fold(double a, [[maybe_unused]] double b) {
    if constexpr (std::is_invocable_v<decltype(Function), double, double>) {
        return Function(a, b);
    } else {
        return Function(a);
    }
}

#define VELTRANE_DISPATCH_FOLD(function)                                                                               \
    { Gathering::FOLD, Fold<function>, nullptr }
#define VELTRANE_DISPATCH_ACCUMULATE(function)                                                                         \
    { Gathering::ACCUMULATE, nullptr, TransformationDictionary::function }
#define VELTRANE_DISPATCH_DATE_TIME(function)                                                                          \
    { Gathering::DATE_TIME, nullptr, nullptr }
#define VELTRANE_DISPATCH_TEXT_RESULT(function)                                                                        \
    { Gathering::TEXT_RESULT, nullptr, nullptr }
#define VELTRANE_DISPATCH_COMPARE(function)                                                                            \
    { Gathering::COMPARE, nullptr, nullptr }
#define VELTRANE_DISPATCH_MEMBER(function)                                                                             \
    { Gathering::MEMBER, nullptr, nullptr }
#define VELTRANE_DISPATCH_OWN(function)                                                                                \
    { Gathering::OWN, nullptr, nullptr }

constexpr std::array<FunctionDispatch, kFunctionCount> kDispatch{{
#define VELTRANE_TRANSFORM_FUNCTION(enumerator, number, literals, gathering, implementation, ...)                      \
    VELTRANE_DISPATCH_##gathering(implementation),
#include <MCVeltrane_900/TransformFunctions.def>
}};

constexpr FunctionDispatch kNoFunction{Gathering::OWN, nullptr, nullptr};

} // namespace

const FunctionDispatch& DispatchOf(TransformationDictionary::TransformFunction function) {
    return function >= 0 && function < kFunctionCount ? kDispatch[static_cast<std::size_t>(function)] : kNoFunction;
}

} // namespace veltrane::transform
