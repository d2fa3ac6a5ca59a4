#ifndef VELTRANE_TRANSFORM_FUNCTIONS_RULES_H
#define VELTRANE_TRANSFORM_FUNCTIONS_RULES_H

#include "transform/apply/apply_node.h"

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/StringValue.h>

#include <string>

/// The functions as the evaluation of a tree calls them, each defined in the file that has all of it.
namespace veltrane::functions {

using MCVeltrane_900::DateTimeValue;
using MCVeltrane_900::ScoreValue;
using MCVeltrane_900::StringValue;
using transform::ApplyNode;
using transform::Argument;

// One rule for each way in which arguments reach a function.
const ScoreValue* EvaluateFold(ApplyNode& node);
const ScoreValue* EvaluateAccumulate(ApplyNode& node);
const ScoreValue* EvaluateDateTime(ApplyNode& node);
const ScoreValue* EvaluateOneText(ApplyNode& node);
const ScoreValue* EvaluateCompare(ApplyNode& node);
const ScoreValue* EvaluateMember(ApplyNode& node);
const ScoreValue* EvaluateMissing(ApplyNode& node);

/// All arguments for nothing, as a number gives that is no function.
const ScoreValue* EvaluateNothing(ApplyNode& node);

// The functions that the table names: those of a date, those of a text, those with a rule of their own.
#define VELTRANE_DECLARE_FOLD(...)
#define VELTRANE_DECLARE_ACCUMULATE(...)
#define VELTRANE_DECLARE_PAIR(...)
#define VELTRANE_DECLARE_ARRAY(...)
#define VELTRANE_DECLARE_DATE_TIME(function) double function(const DateTimeValue& date, double difference);
#define VELTRANE_DECLARE_ONE_TEXT(function) std::string function(const StringValue* text, int& length);
#define VELTRANE_DECLARE_COMPARE(...)
#define VELTRANE_DECLARE_MEMBER(...)
#define VELTRANE_DECLARE_MISSING(...)
#define VELTRANE_DECLARE_RULE(function, steps) const ScoreValue* function(ApplyNode& node);
#define VELTRANE_TRANSFORM_FUNCTION(enumerator, number, names, evaluation, ...) VELTRANE_DECLARE_##evaluation
#include <MCVeltrane_900/TransformFunctions.def>
#undef VELTRANE_DECLARE_FOLD
#undef VELTRANE_DECLARE_ACCUMULATE
#undef VELTRANE_DECLARE_PAIR
#undef VELTRANE_DECLARE_ARRAY
#undef VELTRANE_DECLARE_DATE_TIME
#undef VELTRANE_DECLARE_ONE_TEXT
#undef VELTRANE_DECLARE_COMPARE
#undef VELTRANE_DECLARE_MEMBER
#undef VELTRANE_DECLARE_MISSING
#undef VELTRANE_DECLARE_RULE

/// Whether two numbers, and nothing else, are equal as values are.
bool AreTwoEqual(const double* numbers, std::size_t count);
/// Whether the first number equals one of the others.
bool IsAmongOthers(const double* numbers, std::size_t count);

} // namespace veltrane::functions

#endif
