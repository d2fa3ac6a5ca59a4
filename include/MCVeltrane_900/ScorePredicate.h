#ifndef MCVELTRANE_900_SCOREPREDICATE_H
#define MCVELTRANE_900_SCOREPREDICATE_H

#include <veltrane_export.h>

#include <ostream>
#include <vector>

namespace MCVeltrane_900 {

class ScoreCaseRecord;
class ScoreSplitVar;

/// A condition on a case. It can be asked over the case's records, or over a vector of numbers that a model has encoded
/// the case into, each variable at its encoded value index.
///
/// Evaluation never fails and keeps no state, so a predicate that isn't changed any more may be evaluated in several
/// threads, as far as the records and encoders that it reads allow. What can't be decided is PRED_UNKNOWN.
class VELTRANE_API ScorePredicate {
public:
    enum PredicateResult : int {
        PRED_TRUE = 0,           ///< the condition holds
        PRED_FALSE = 1,          ///< it does not hold
        PRED_UNKNOWN = 2,        ///< it can't be decided, mostly because a value is missing
        PRED_SURROGATE_TRUE = 3, ///< a later child of a surrogate compound was true, the earlier ones unknown
    };

    enum PredicateType : int {
        COMPOUND_PREDICATE = 0,
        SIMPLE_PREDICATE = 1,
        SET_PREDICATE = 2,
        TRUE_PREDICATE = 3,
        FALSE_PREDICATE = 4,
    };

    /// How a compound joins its children.
    enum CompoundBoolOperator : int {
        BOOL_OR = 0,
        BOOL_AND = 1,
        BOOL_XOR = 2,
        BOOL_SURROGATE = 3,
    };

    virtual ~ScorePredicate();

    /// A new deep copy, owned by the caller. See the classes for what it leaves out.
    virtual ScorePredicate* Clone() const = 0;

    /// The result for an encoded case, where -2.0 marks a missing category and the missing number any other missing
    /// value. A variable whose place lies outside the vector counts as an unseen category or a missing number.
    virtual PredicateResult Evaluate(const std::vector<double>& encodedValues) const = 0;

    /// The result for a case.
    /// @param record the case; may be null only when every variable read is derived and derivedRecord is given
    /// @param derivedRecord the values of derived variables, or null: then all variables are read from record
    virtual PredicateResult Evaluate(const ScoreCaseRecord* record, const ScoreCaseRecord* derivedRecord) const = 0;

    virtual PredicateType GetPredType() const = 0;

    /// Whether a variable that is asked is computed from others.
    virtual bool IsDerivedPredictor() const = 0;

    /// Sets the split that decides, where the class has one. The former split is not deleted.
    /// @param split becomes the predicate's; where the class has none it stays the caller's
    virtual void SetSplit(const ScoreSplitVar* split) = 0;
    /// The split that decides, or null; it stays the predicate's.
    virtual const ScoreSplitVar* GetSplit() const = 0;

    /// Writes a debug dump.
    virtual void Display(std::ostream& out) const = 0;
};

} // namespace MCVeltrane_900

#endif
