#ifndef MCVELTRANE_900_COMPOUNDPREDICATE_H
#define MCVELTRANE_900_COMPOUNDPREDICATE_H

#include <MCVeltrane_900/ScorePredicate.h>

namespace MCVeltrane_900 {

/// Predicates joined by an operator. The children are evaluated in order, and those behind the one that settles the
/// result aren't evaluated at all.
///
/// | Operator | Settled by | Result when nothing settled it | Without children |
/// |---|---|---|---|
/// | or | a true child: true | unknown after an unknown child, else false | false |
/// | and | a false child: false | unknown after an unknown child, else true | true |
/// | xor | an unknown child: unknown | true for an odd number of true children, else false | false |
/// | surrogate | the first child that isn't unknown: its result | unknown | unknown |
///
/// Of a surrogate compound, a true child behind the first gives PRED_SURROGATE_TRUE. To the other operators that result
/// of a child is neither true nor unknown nor false. An operator of any other number is unknown without a look at the
/// children, and a null child is an unknown one.
class VELTRANE_API CompoundPredicate : public ScorePredicate {
public:
    /// A surrogate compound without children.
    CompoundPredicate();
    explicit CompoundPredicate(CompoundBoolOperator boolOperator);
    /// Clones the children.
    CompoundPredicate(const CompoundPredicate& other);
    /// Appends clones of the other's children to those that are here, and copies the operator.
    CompoundPredicate& operator=(const CompoundPredicate& other);
    /// Deletes the children, one that was added twice once.
    ~CompoundPredicate() override;

    ScorePredicate* Clone() const override;
    PredicateResult Evaluate(const std::vector<double>& encodedValues) const override;
    PredicateResult Evaluate(const ScoreCaseRecord* record, const ScoreCaseRecord* derivedRecord) const override;
    PredicateType GetPredType() const override;
    /// Whether one child says so.
    bool IsDerivedPredictor() const override;
    /// Does nothing.
    void SetSplit(const ScoreSplitVar* split) override;
    /// Null.
    const ScoreSplitVar* GetSplit() const override;
    void Display(std::ostream& out) const override;

    CompoundBoolOperator GetBoolOperator() const { return fBoolOperator; }
    void SetBoolOperator(CompoundBoolOperator boolOperator) { fBoolOperator = boolOperator; }

    /// The children in order; they stay the compound's.
    const std::vector<ScorePredicate*>& GetPredicates() const { return fPredicates; }
    std::vector<ScorePredicate*>& GetPredicates() { return fPredicates; }
    int GetCount() const { return static_cast<int>(fPredicates.size()); }

    /// Appends a child.
    /// @param predicate becomes the compound's
    void AddPredicate(ScorePredicate* predicate);
    /// Takes out the first child with this address; it isn't deleted, but goes back to the caller.
    /// @return whether there was one
    bool RemovePredicate(ScorePredicate* predicate);

    /// The surrogate walk over an encoded case from a later child on, whose own truth is PRED_TRUE.
    /// @param start position of that child, from 0
    /// @return PRED_FALSE also for a compound of another operator and for a position that isn't there
    PredicateResult EvaluateSurrogate(const std::vector<double>& encodedValues, int start) const;

private:
    std::vector<ScorePredicate*> fPredicates;
    CompoundBoolOperator fBoolOperator = BOOL_SURROGATE;
};

} // namespace MCVeltrane_900

#endif
