#include "transform/apply/apply_frame.h"
#include "transform/apply/apply_plan.h"
#include "transform/apply/leaf_tie.h"
#include "transform/derivation/derivation.h"
#include "transform/derivation/value_queue.h"

#include <MCVeltrane_900/FunctionTree.h>
#include <MCVeltrane_900/MapValues.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreValueRange.h>
#include <MCVeltrane_900/StringValue.h>
#include <MCVeltrane_900/TransformVar.h>

namespace MCVeltrane_900 {

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
            veltrane::transform::LeafTie::Set(*node, nullptr, -1);
        }
        for (int i = 0; i < node->GetChildCount(); ++i) {
            if (FunctionTree* child = node->GetChildAt(i)) {
                pending.push_back(child);
            }
        }
    }
    return copy;
}

/// Takes over a new object without deleting the earlier one, which stays with whoever has fetched it.
template <typename T>
void Overwrite(std::unique_ptr<T>& field, T* object) {
    static_cast<void>(field.release());
    field.reset(object);
}

} // namespace

TransformVar::TransformVar(const std::string& name, VariableType type) : DictVar(name, type) {}

TransformVar::TransformVar(const TransformVar& other)
    : DictVar(other), fResult(CloneOf(other.fResult.get())), fRecodeElseCopy(other.fRecodeElseCopy),
      fRecodeMissingCopy(other.fRecodeMissingCopy), fResultHoldsText(other.fResultHoldsText) {
    CopyExpression(other);
}

TransformVar& TransformVar::operator=(const TransformVar& other) {
    if (this == &other) {
        return *this;
    }
    DictVar::operator=(other);
    CopyExpression(other);
    fResultHoldsText = other.GetVarType() != kNUMERIC_VAR;
    if (other.fResult == nullptr) {
        fResult.reset();
    } else if (fResultHoldsText) {
        fResult = std::make_unique<StringValue>(other.fResult->GetString());
    } else {
        fResult = std::make_unique<NumericValue>(other.fResult->GetDouble());
    }
    return *this;
}

TransformVar::~TransformVar() {
    DeleteBins();
    DeleteEncodedValues();
}

ScoreDictVar* TransformVar::Clone() const {
    return new TransformVar(*this);
}

bool TransformVar::IsDerivedVariable() const {
    return true;
}

void TransformVar::CopyExpression(const TransformVar& other) {
    fFieldName = other.fFieldName;
    fTransExpression = other.fTransExpression;
    fConstString = other.fConstString;
    fNormSlopes = other.fNormSlopes;
    fNormIntercepts = other.fNormIntercepts;
    fLinearNormPoints = other.fLinearNormPoints;
    fLinearNormTargets = other.fLinearNormTargets;
    fMinPoint = other.fMinPoint;
    fMaxPoint = other.fMaxPoint;
    fPointsAscend = other.fPointsAscend;
    fRoot = UnresolvedCloneOf(other.fRoot.get());
    fPlan.reset();
    fIsPlanned = false;
    fComputedFor = 0;
    CopyBins(other);
    CopyEncodedValues(other);
    fNumericScratch = CopyOf(other.fNumericScratch);
    fTextScratch = CopyOf(other.fTextScratch);
    fDateTimeScratch = CopyOf(other.fDateTimeScratch);
    fSecondTextScratch = CopyOf(other.fSecondTextScratch);
    fSecondDateTimeScratch = CopyOf(other.fSecondDateTimeScratch);
    fRecodeMissValue = CloneOf(other.fRecodeMissValue.get());
    fRecodeDefaultValue = CloneOf(other.fRecodeDefaultValue.get());
    fRecodeSysmisValue = CloneOf(other.fRecodeSysmisValue.get());
    fRecodeIntervalCopy = CloneOf(other.fRecodeIntervalCopy.get());
}

void TransformVar::CopyBins(const TransformVar& other) {
    DeleteBins();
    fBins.reserve(other.fBins.size());
    for (const auto& [range, value] : other.fBins) {
        auto rangeCopy = CloneOf(range);
        fBins.emplace_back(rangeCopy.get(), CloneOf(value).release());
        static_cast<void>(rangeCopy.release());
    }
    fIntervalsFieldForm = other.fIntervalsFieldForm;
    fIntervalsBracketForm = other.fIntervalsBracketForm;
}

void TransformVar::CopyEncodedValues(const TransformVar& other) {
    DeleteEncodedValues();
    fEncodedValues.reserve(other.fEncodedValues.size());
    for (const auto& [key, encoded] : other.fEncodedValues) {
        auto keyCopy = CloneOf(key);
        fEncodedValues.emplace_back(keyCopy.get(), CloneOf(encoded).release());
        static_cast<void>(keyCopy.release());
    }
}

void TransformVar::DeleteBins() {
    for (const auto& [range, value] : fBins) {
        delete range;
        delete value;
    }
    fBins.clear();
}

void TransformVar::DeleteEncodedValues() {
    for (const auto& [key, encoded] : fEncodedValues) {
        delete key;
        delete encoded;
    }
    fEncodedValues.clear();
}

void TransformVar::AddFieldNameAndTransExpression(const std::string& fieldName,
                                                  TransformationDictionary::TransExpression expression) {
    fFieldName = fieldName;
    fTransExpression = expression;
}

void TransformVar::SetRoot(FunctionTree* root) {
    Overwrite(fRoot, root);
    fPlan.reset();
    fIsPlanned = false;
}

void TransformVar::SetMapValues(MapValues* mapValues) {
    fMapValues.reset(mapValues);
}

void TransformVar::SetLags(int n, std::vector<const ScoreDictVar*> blocks) {
    fLagCount = n;
    fBlockVariables = std::move(blocks);
}

void TransformVar::AddEncodingMap(ScoreValue* key, ScoreValue* encoded) {
    fEncodedValues.emplace_back(key, encoded);
}

void TransformVar::SetRecodeMissValueTo(ScoreValue* value) {
    Overwrite(fRecodeMissValue, value);
    fRecodeMissingCopy = false;
}

void TransformVar::SetRecodeDefaultValue(ScoreValue* value) {
    Overwrite(fRecodeDefaultValue, value);
    fRecodeElseCopy = false;
}

void TransformVar::SetRecodeSysmisValue(ScoreValue* value) {
    Overwrite(fRecodeSysmisValue, value);
}

void TransformVar::SetRecodeIntervalCopy(ScoreValueRange* range) {
    Overwrite(fRecodeIntervalCopy, range);
}

void TransformVar::SetRecodeMissingCopy(bool copy) {
    fRecodeMissingCopy = copy;
    fRecodeMissValue.reset();
}

void TransformVar::SetRecodeElseCopy(bool copy) {
    fRecodeElseCopy = copy;
    fRecodeDefaultValue.reset();
}

} // namespace MCVeltrane_900
