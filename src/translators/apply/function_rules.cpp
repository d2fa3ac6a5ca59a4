#include "translators/apply/function_rules.h"

#include <array>

namespace veltrane::translators {

using MCVeltrane_900::TransformationDictionary;

namespace {

constexpr int ANY = kAnyNumber;
constexpr int UNCHECKED = kUncheckedNumber;

constexpr std::array<FunctionRules, TransformationDictionary::TF_NONE> kRules{{
#define VELTRANE_TRANSFORM_FUNCTION(enumerator, number, literals, gathering, implementation, parameters, arguments,    \
                                    families, word, ...)                                                               \
    {parameters, Arguments::arguments, families, word},
#include <MCVeltrane_900/TransformFunctions.def>
}};

constexpr FunctionRules kNoFunction{UNCHECKED, Arguments::NOT_CHECKED, NO_FAMILY, "<not defined>"};

} // namespace

const FunctionRules& RulesOf(TransformationDictionary::TransformFunction function) {
    return function >= 0 && function < TransformationDictionary::TF_NONE ? kRules[static_cast<std::size_t>(function)]
                                                                         : kNoFunction;
}

} // namespace veltrane::translators
