#ifndef VELTRANE_TRANSFORM_FIELD_EVALUATION_H
#define VELTRANE_TRANSFORM_FIELD_EVALUATION_H

#include "transform/derivation/derivation.h"
#include "transform/derivation/value_queue.h"

#include <MCVeltrane_900/TransformVar.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace veltrane::transform {

class ApplyFrames;
class ApplyPlan;

/// The inside of a derived field: how it is evaluated, and what evaluations leave in it beside the values that the
/// class itself keeps. Each TransformVar has one of its own, for life.
class FieldEvaluation {
public:
    using TransformVar = MCVeltrane_900::TransformVar;
    using Value = MCVeltrane_900::ScoreValue;
    using Variable = MCVeltrane_900::ScoreDictVar;
    using VariableType = MCVeltrane_900::ScoreDictVar::VariableType;
    using Stats = MCVeltrane_900::ApplyNodeStats;
    using Function = MCVeltrane_900::TransformationDictionary::TransformFunction;

    explicit FieldEvaluation(TransformVar& var);
    ~FieldEvaluation();
    FieldEvaluation(const FieldEvaluation&) = delete;
    FieldEvaluation& operator=(const FieldEvaluation&) = delete;

    static FieldEvaluation& Of(TransformVar& var) { return *var.fEvaluation; }
    TransformVar& Var() { return fVar; }
    Value* Result() { return fVar.fResult.get(); }

    // The value for a case. What comes back is the field's result.

    /// The value of a constant, which is computed once in the field's life.
    const Value* GetConstant();

    /// The value for the case that is being evaluated: kept from an earlier evaluation, or computed.
    const Value* Evaluate(Derivation& derivation);

    /// The value as another field needs it. What leads nowhere further is never denied.
    /// @param levels of the stack between the two
    /// @return null when the field that needs it is given up
    const Value* EvaluateNested(Derivation& derivation, int levels);

    /// Computes the result. It holds for the rest of the case, or of the turn, unless something was reached that
    /// another evaluation would not repeat.
    const Value* Attempt(Derivation& derivation);

    // The tree of an Apply.

    /// By the field's plan where it has one, else by a walk over the tree.
    const Value* EvaluateApply(const ApplyCase& oneCase);
    const Value* TraverseLeaf(MCVeltrane_900::FunctionTree& leaf, const ApplyCase& oneCase);
    const Value* MissingScratch(VariableType type, int width);
    ApplyFrames& Frames();

    /// The value of a derived field that has not been computed for this case.
    const Value* EvaluateField(const Variable& variable, const ApplyCase& oneCase);

    /// The name of a leaf's field in the derived record. A leaf can have been given its field without a name.
    static const std::string& NameOfField(const Stats& leaf);

    // What the class keeps to itself, for those that evaluate the nodes of its tree.

    const Value* Traverse(MCVeltrane_900::FunctionTree& node, const ApplyCase& oneCase, int& status) {
        return fVar.Traverse(&node, oneCase.record, oneCase.dictionary, oneCase.transformations, status);
    }
    static double Fold(double a, double b, Function function) {
        return TransformVar::ApplyTransFunction(a, b, function);
    }
    static double Accumulate(const std::vector<double>& arguments, Function function) {
        return TransformVar::ApplyAccumulateFunction(arguments, function);
    }
    static double OfDate(const Value* date, double b, Function function) {
        return TransformVar::ApplyDateTimeFunction(date, b, function);
    }
    static void ReplaceResult(const std::vector<double>& arguments, Function function, Value& result,
                              const Stats& stats, bool isMissing, bool isInvalid) {
        TransformVar::HandleMissingAndInvalidOfApply(arguments, function, &result, stats, isMissing, isInvalid);
    }

    // The scratch values, which are made on first use.

    MCVeltrane_900::NumericValue& NumericScratch();
    MCVeltrane_900::StringValue& TextScratch();
    /// The scratch value of a type, made missing.
    const Value* ClearScratch(VariableType ownType);
    /// Makes a value the content of the scratch value of a type.
    const Value* FillScratch(VariableType ownType, const Value& value);

    // The recode settings.

    /// What stands for a missing value, or null. To a numeric field a replacement of system-missing values that is
    /// missing itself is none.
    const Value* ReplacementOfMissing(const Variable& source, VariableType ownType, const Value& value) const;
    /// What stands for a value that matched nothing, or null.
    const Value* ReplacementOfUnmatched(const Value& value) const;

    // The block fields of a lag.

    /// Whether all block fields have their values. Where fields wait for each other in a list, asking for one can end
    /// this evaluation, and no history may have moved on by then.
    bool AreBlocksKnown(const ApplyCase& oneCase) const;
    /// Moves the histories of the block fields on by one case.
    /// @return whether every block field with a full history has the value again that it had then
    bool AdvanceBlocks(const ApplyCase& oneCase);

    /// The tree is another one.
    void ForgetPlan();

    /// Takes over what a copy of a field takes over, beside its base and its result.
    void CopyExpression(const TransformVar& other);

    bool isEvaluating = false;
    bool resultHoldsText = false;  ///< whether the result, where there is one, is a StringValue
    std::uint64_t computedFor = 0; ///< the number of the case, or of the turn, that the result is good for

    /// Smallest and largest orig of the points of a normalisation, and whether they ascend.
    double minPoint = 0.0;
    double maxPoint = 0.0;
    bool pointsAscend = true;

private:
    void Compute(Derivation& derivation);
    void PrepareResult();
    void FillConstant();
    const Value* ReadSource(const MCVeltrane_900::ScoreCaseRecord* record);
    void FindSourceVar(const ApplyCase& oneCase);
    bool HasSourceVar(const ApplyCase& oneCase);
    const Value* EvaluateExpression(const ApplyCase& oneCase, const Value* source);
    void StoreNormValue(const Value* source);
    void StoreResult(const Value& value);
    void FitResultToWidth();

    const Value* ReplaceMissingLeaf(const Variable& variable, const Value& value, const Stats& stats);
    const Value* ReadAbsentField(const Stats& leaf, const ApplyCase& oneCase);

    TransformVar& fVar;

    /// The dictionary that the source variable was found in, and its revision then, where it has revisions.
    const MCVeltrane_900::BaseDictionary* fSourceDictionary = nullptr;
    unsigned long long fSourceRevision = 0;

    std::unique_ptr<ApplyFrames> fFrames;
    std::unique_ptr<ApplyPlan> fPlan;
    bool fIsPlanned = false;
};

} // namespace veltrane::transform

#endif
