#ifndef VELTRANE_TRANSFORM_DERIVATION_H
#define VELTRANE_TRANSFORM_DERIVATION_H

#include <MCVeltrane_900/TransformVar.h>

#include <cstdint>

namespace veltrane::transform {

class DeferredFields;

/// One case, as the evaluation of fields and trees hands it down.
struct ApplyCase {
    const MCVeltrane_900::ScoreCaseRecord* record;
    const MCVeltrane_900::ScoreDictionary* dictionary;
    const MCVeltrane_900::ScoreDictionary* transformations;

    bool operator==(const ApplyCase&) const = default;
};

/// The evaluation of the fields of a dictionary: what has been computed for the case, and how far the evaluation has
/// got into fields below fields. Fields that are evaluated without a TransformationDictionary have one for each thread.
///
/// A field that several others refer to is evaluated once for a case, unless its evaluation reached what a second one
/// would not repeat: a lag, whose history moves on with every evaluation, or the middle of a circle. Such a field is
/// evaluated each time that it is asked for, and so is every field above it.
struct Derivation {
    static Derivation& Of(const ApplyCase& oneCase);

    bool Runs(const ApplyCase& aCase) const { return caseNumber != 0 && aCase == oneCase; }

    /// Whether a result that was computed under this number is that of the case.
    bool Holds(std::uint64_t number) const { return number == caseNumber || number == turnNumber; }

    /// The next field of a list is computed: what held for the turn of the last one ends.
    void NextTurn() { turnNumber = caseNumber; }

    /// A number for what holds for this turn alone.
    std::uint64_t NumberOfTurn() { return turnNumber != caseNumber ? turnNumber : turnNumber = NewNumber(); }

    /// Something was reached that another evaluation would not repeat, or that holds for the turn alone.
    void ReachUnrepeatable() { reached += kUnrepeatable; }
    void ReachForTurn() { ++reached; }

    /// A number that this process never had. Not 0.
    std::uint64_t NewNumber() { return nextNumber != endOfNumbers ? nextNumber++ : ReserveNumbers(); }

    /// Whether a deferred field that is being evaluated has asked for another one and so is given up.
    bool IsGivenUp() const { return deferred != nullptr && HasGivenUp(); }

    ApplyCase oneCase{};
    std::uint64_t caseNumber = 0;       ///< 0 while no case is evaluated
    std::uint64_t turnNumber = 0;       ///< of the field in the list whose turn it is, once there is need for one
    DeferredFields* deferred = nullptr; ///< where fields wait that lie too deep for the stack
    std::uint64_t reached = 0;          ///< how often what; each has a half
    int levels = 0;                     ///< of fields and of functions within them, on the stack
    int evaluations = 0;                ///< complete ones that could not be kept, since `levels` was 0
    std::uint64_t nextNumber = 0;
    std::uint64_t endOfNumbers = 0;

    static constexpr std::uint64_t kUnrepeatable = std::uint64_t{1} << 32;

private:
    bool HasGivenUp() const;
    std::uint64_t ReserveNumbers();
};

/// The evaluation of a case, for as long as it lives. It can lie within that of another case, which it leaves as it
/// was.
class CaseEvaluation {
public:
    CaseEvaluation(Derivation& derivation, const ApplyCase& oneCase)
        : fDerivation(derivation), fOuterCase(derivation.caseNumber) {
        if (fOuterCase != 0) {
            fOuter = {derivation.oneCase, derivation.turnNumber, derivation.deferred};
        }
        derivation.oneCase = oneCase;
        derivation.caseNumber = derivation.turnNumber = derivation.NewNumber();
        derivation.deferred = nullptr;
    }
    ~CaseEvaluation() {
        fDerivation.caseNumber = fOuterCase;
        if (fOuterCase != 0) {
            fDerivation.oneCase = fOuter.oneCase;
            fDerivation.turnNumber = fOuter.turnNumber;
            fDerivation.deferred = fOuter.deferred;
        }
    }
    CaseEvaluation(const CaseEvaluation&) = delete;
    CaseEvaluation& operator=(const CaseEvaluation&) = delete;

private:
    struct Outer {
        ApplyCase oneCase;
        std::uint64_t turnNumber;
        DeferredFields* deferred;
    };

    Derivation& fDerivation;
    const std::uint64_t fOuterCase;
    Outer fOuter{}; ///< only set within another case
};

/// Ends the evaluation of a tree whose field is given up. It never leaves DeferredFields.
struct GivenUp {};

/// The value of a derived field that another field's evaluation needs.
/// @param var    answers true to IsDerivedVariable()
/// @param levels of the stack between the two
/// @return borrowed from the field; null when it is of a class without an evaluation, or when the field that needs it
///         is given up
const MCVeltrane_900::ScoreValue* EvaluateDerived(const MCVeltrane_900::ScoreDictVar& var, const ApplyCase& oneCase,
                                                  int levels = 1);

/// The value of a field for one case: evaluated when it is derived, else the record's by its name.
const MCVeltrane_900::ScoreValue* ReadField(const MCVeltrane_900::ScoreDictVar& var, const ApplyCase& oneCase);

/// The variable as the derived field that it is, or null.
MCVeltrane_900::TransformVar* AsTransformVar(const MCVeltrane_900::ScoreDictVar& var);

} // namespace veltrane::transform

#endif
