#include "transform/apply/apply_frame.h"
#include "transform/apply/apply_plan.h"
#include "transform/apply/leaf_tie.h"
#include "transform/derivation/field_evaluation.h"

#include <MCVeltrane_900/FunctionTree.h>
#include <MCVeltrane_900/MapValues.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreValueRange.h>
#include <MCVeltrane_900/StringValue.h>

using namespace MCVeltrane_900;

/// What a derived field owns, and how a copy comes to its own.
namespace veltrane::transform {

namespace {

template <typename T>
std::unique_ptr<T> CloneOf(const T* object) {
    return std::unique_ptr<T>(object == nullptr ? nullptr : object->Clone());
}

/// A copy of a scratch value, whose class is known.
template <typename T>
std::unique_ptr<T> CopyOf(const std::unique_ptr<T>& scratch) {
    return scratch == nullptr ? nullptr : std::make_unique<T>(*scratch);
}

/// A copy of a tree whose leaves look their fields up afresh: those of the original may be gone before the copy is. A
/// leaf that was given a field without a name has nothing to look up and keeps it.
std::unique_ptr<FunctionTree> UnresolvedCloneOf(const FunctionTree* tree) {
    std::unique_ptr<FunctionTree> copy = CloneOf(tree);
    std::vector<FunctionTree*> pending;
    if (copy != nullptr) {
        pending.push_back(copy.get());
    }
    while (!pending.empty()) {
        FunctionTree* node = pending.back();
        pending.pop_back();
        if (node->GetNodeStats().GetVariable() != nullptr && !node->GetNodeStats().GetParameterName().empty()) {
            LeafTie::Set(*node, nullptr, -1);
        }
        for (int i = 0; i < node->GetChildCount(); ++i) {
            if (FunctionTree* child = node->GetChildAt(i)) {
                pending.push_back(child);
            }
        }
    }
    return copy;
}

/// Deletes objects that belong to a field. Either of a pair can be null.
template <typename Pairs>
void DeletePairs(Pairs& pairs) {
    for (const auto& [first, second] : pairs) {
        delete first;
        delete second;
    }
    pairs.clear();
}

template <typename Pairs>
void CopyPairs(Pairs& pairs, const Pairs& others) {
    DeletePairs(pairs);
    pairs.reserve(others.size());
    for (const auto& [first, second] : others) {
        auto copy = CloneOf(first);
        pairs.emplace_back(copy.get(), CloneOf(second).release());
        static_cast<void>(copy.release());
    }
}

} // namespace

FieldEvaluation::FieldEvaluation(TransformVar& var) : fVar(var) {}

FieldEvaluation::~FieldEvaluation() {
    DeletePairs(fVar.fBins);
    DeletePairs(fVar.fEncodedValues);
}

void FieldEvaluation::CopyExpression(const TransformVar& other) {
    fVar.fFieldName = other.fFieldName;
    fVar.fTransExpression = other.fTransExpression;
    fVar.fConstString = other.fConstString;
    fVar.fNormSlopes = other.fNormSlopes;
    fVar.fNormIntercepts = other.fNormIntercepts;
    fVar.fLinearNormPoints = other.fLinearNormPoints;
    fVar.fLinearNormTargets = other.fLinearNormTargets;
    minPoint = other.fEvaluation->minPoint;
    maxPoint = other.fEvaluation->maxPoint;
    pointsAscend = other.fEvaluation->pointsAscend;
    fVar.fRoot = UnresolvedCloneOf(other.fRoot.get());
    ForgetPlan();
    computedFor = 0;
    CopyPairs(fVar.fBins, other.fBins);
    fVar.fIntervalsFieldForm = other.fIntervalsFieldForm;
    fVar.fIntervalsBracketForm = other.fIntervalsBracketForm;
    CopyPairs(fVar.fEncodedValues, other.fEncodedValues);
    fVar.fNumericScratch = CopyOf(other.fNumericScratch);
    fVar.fTextScratch = CopyOf(other.fTextScratch);
    fVar.fDateTimeScratch = CopyOf(other.fDateTimeScratch);
    fVar.fSecondTextScratch = CopyOf(other.fSecondTextScratch);
    fVar.fSecondDateTimeScratch = CopyOf(other.fSecondDateTimeScratch);
    fVar.fRecodeMissValue = CloneOf(other.fRecodeMissValue.get());
    fVar.fRecodeDefaultValue = CloneOf(other.fRecodeDefaultValue.get());
    fVar.fRecodeSysmisValue = CloneOf(other.fRecodeSysmisValue.get());
    fVar.fRecodeIntervalCopy = CloneOf(other.fRecodeIntervalCopy.get());
}

void FieldEvaluation::ForgetPlan() {
    fPlan.reset();
    fIsPlanned = false;
}

} // namespace veltrane::transform
