#ifndef VELTRANE_TESTS_STATS_STEPS_ARGUMENT_RELATIONS_H
#define VELTRANE_TESTS_STATS_STEPS_ARGUMENT_RELATIONS_H

#include <string>
#include <vector>

namespace veltrane::tests {

/// What holds of a function's result whatever its arguments, sane or not: where it is missing, and what other calls
/// give beside it.
struct ArgumentRelation {
    using Arguments = std::vector<double>;

    /// Where within its domain a function has a result.
    enum Presence {
        ALWAYS,
        WHEN_SOUND, ///< for parameters from 1e-150 to 1e150
        MAY_FAIL,
    };

    const char* function;

    /// Whether the arguments are within the function's domain. Elsewhere the result is missing.
    bool (*isInDomain)(const Arguments& arguments);

    Presence presence;

    /// Whether a result that isn't missing agrees with what other calls give.
    bool (*holds)(const Arguments& arguments, double result);

    /// Whether the result is missing where it has to be and nowhere else, and agrees with other calls.
    bool Allows(const Arguments& arguments, double result) const;
};

/// The relation of a function.
const ArgumentRelation& RelationOf(const std::string& function);

} // namespace veltrane::tests

#endif
