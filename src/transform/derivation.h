#ifndef VELTRANE_TRANSFORM_DERIVATION_H
#define VELTRANE_TRANSFORM_DERIVATION_H

#include <MCVeltrane_900/TransformVar.h>

namespace veltrane::transform {

/// One step of the evaluation of a derived field into something below it: another field or a node of its tree. The
/// steps are counted for each thread, so that no document, and no objects linked into a circle, can use up the stack
/// or the day.
class NestedEvaluation {
public:
    /// @param isField whether the step is into another field; those are counted together too, and not only how deep
    ///                they are, since fields can refer to each other in more ways than there are fields
    explicit NestedEvaluation(bool isField);
    ~NestedEvaluation();
    NestedEvaluation(const NestedEvaluation&) = delete;
    NestedEvaluation& operator=(const NestedEvaluation&) = delete;

    /// False beyond TransformVar::MAX_DERIVATION_DEPTH and TransformVar::MAX_NESTED_EVALUATIONS.
    bool IsAllowed() const;
};

/// The value of a derived field that another field's evaluation needs; its cleared result beyond the bounds.
/// @param var answers true to IsDerivedVariable()
/// @return borrowed from the field; null when it is of a class without an evaluation
const MCVeltrane_900::ScoreValue* EvaluateDerived(const MCVeltrane_900::ScoreDictVar& var,
                                                  const MCVeltrane_900::ScoreCaseRecord* record,
                                                  const MCVeltrane_900::ScoreDictionary* dictionary,
                                                  const MCVeltrane_900::ScoreDictionary* transformations);

/// The value of a field for one case: evaluated when it is derived, else the record's by its name.
const MCVeltrane_900::ScoreValue* ReadField(const MCVeltrane_900::ScoreDictVar& var,
                                            const MCVeltrane_900::ScoreCaseRecord* record,
                                            const MCVeltrane_900::ScoreDictionary* dictionary,
                                            const MCVeltrane_900::ScoreDictionary* transformations);

/// The variable as the derived field that it is, or null.
MCVeltrane_900::TransformVar* AsTransformVar(const MCVeltrane_900::ScoreDictVar& var);

} // namespace veltrane::transform

#endif
