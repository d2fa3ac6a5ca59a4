#ifndef VELTRANE_PREDICATES_TRUTH_WALK_H
#define VELTRANE_PREDICATES_TRUTH_WALK_H

#include <MCVeltrane_900/ScorePredicate.h>

#include <vector>

/// The walks over the children of a compound, each with its own short circuit. A child that was true through a
/// surrogate is neither true nor false nor unknown to the walks of or, and, xor; the suite KeptSurrogateTrue pins it.
namespace veltrane::predicates {

using MCVeltrane_900::ScorePredicate;
using Children = std::vector<ScorePredicate*>;

/// The walk of or and and: a child with the settling result ends it, an unknown one is remembered.
template <typename Evaluate>
ScorePredicate::PredicateResult JoinUntil(ScorePredicate::PredicateResult settling,
                                          ScorePredicate::PredicateResult otherwise, const Children& children,
                                          Evaluate evaluate) {
    ScorePredicate::PredicateResult result = otherwise;
    for (const ScorePredicate* child : children) {
        const ScorePredicate::PredicateResult childResult = evaluate(child);
        if (childResult == settling) {
            return settling;
        }
        if (childResult == ScorePredicate::PRED_UNKNOWN) {
            result = ScorePredicate::PRED_UNKNOWN;
        }
    }
    return result;
}

template <typename Evaluate>
ScorePredicate::PredicateResult JoinExclusively(const Children& children, Evaluate evaluate) {
    bool isOdd = false;
    for (const ScorePredicate* child : children) {
        const ScorePredicate::PredicateResult childResult = evaluate(child);
        if (childResult == ScorePredicate::PRED_UNKNOWN) {
            return ScorePredicate::PRED_UNKNOWN;
        }
        isOdd ^= childResult == ScorePredicate::PRED_TRUE;
    }
    return isOdd ? ScorePredicate::PRED_TRUE : ScorePredicate::PRED_FALSE;
}

/// The result of the first child that isn't unknown; its truth is marked unless it is the first of all.
template <typename Iterator, typename Evaluate>
ScorePredicate::PredicateResult JoinSurrogates(Iterator begin, Iterator end, Evaluate evaluate) {
    for (Iterator child = begin; child != end; ++child) {
        const ScorePredicate::PredicateResult childResult = evaluate(*child);
        if (childResult == ScorePredicate::PRED_TRUE && child != begin) {
            return ScorePredicate::PRED_SURROGATE_TRUE;
        }
        if (childResult != ScorePredicate::PRED_UNKNOWN) {
            return childResult;
        }
    }
    return ScorePredicate::PRED_UNKNOWN;
}

/// The result of a compound.
/// @param evaluate gives the result of one child
template <typename Evaluate>
ScorePredicate::PredicateResult Join(ScorePredicate::CompoundBoolOperator boolOperator, const Children& children,
                                     Evaluate evaluate) {
    switch (boolOperator) {
    case ScorePredicate::BOOL_OR:
        return JoinUntil(ScorePredicate::PRED_TRUE, ScorePredicate::PRED_FALSE, children, evaluate);
    case ScorePredicate::BOOL_AND:
        return JoinUntil(ScorePredicate::PRED_FALSE, ScorePredicate::PRED_TRUE, children, evaluate);
    case ScorePredicate::BOOL_XOR:
        return JoinExclusively(children, evaluate);
    case ScorePredicate::BOOL_SURROGATE:
        return JoinSurrogates(children.begin(), children.end(), evaluate);
    }
    return ScorePredicate::PRED_UNKNOWN;
}

} // namespace veltrane::predicates

#endif
