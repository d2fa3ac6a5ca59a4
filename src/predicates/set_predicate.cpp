#include "predicates/split_input.h"

#include <MCVeltrane_900/SetPredicate.h>

namespace MCVeltrane_900 {

SetPredicate::SetPredicate() = default;
SetPredicate::SetPredicate(const ScoreSplitVar* split) : fSplit(split) {}

// The encoded set doesn't travel with a copy.
SetPredicate::SetPredicate(const SetPredicate& other)
    : ScorePredicate(other), fSplit(other.fSplit), fOperator(other.fSplit ? other.fOperator : OP_IS_IN) {}

SetPredicate& SetPredicate::operator=(const SetPredicate& other) {
    if (this != &other) {
        fSplit = other.fSplit;
        fOperator = other.fOperator;
    }
    return *this;
}

SetPredicate::~SetPredicate() = default;

ScorePredicate* SetPredicate::Clone() const {
    return new SetPredicate(*this);
}

ScorePredicate::PredicateResult SetPredicate::Evaluate(const std::vector<double>& encodedValues) const {
    if (!fSplit) {
        return PRED_UNKNOWN;
    }
    const auto [number, isMissing] = veltrane::predicates::ReadEncoded(*fSplit->GetSplitVar(), encodedValues);
    return isMissing ? PRED_UNKNOWN : veltrane::predicates::ResultOfChild(fSplit->GetSplitChildIndex(number));
}

ScorePredicate::PredicateResult SetPredicate::Evaluate(const ScoreCaseRecord* record,
                                                       const ScoreCaseRecord* derivedRecord) const {
    if (!fSplit) {
        return PRED_UNKNOWN;
    }
    const ScoreDictVar* var = fSplit->GetSplitVar();
    const ScoreValue* value = GetScoreValue(var, record, derivedRecord);
    const double code = GetScoreEncodeValue(var, value);
    const bool hasEncoder = var->GetEncoder() != nullptr;
    if (veltrane::predicates::IsMissing(*var, value, hasEncoder, code)) {
        return PRED_UNKNOWN;
    }
    // Unlike a simple predicate, whatever the kind of the split.
    return veltrane::predicates::ResultOfChild(hasEncoder ? fSplit->GetSplitChildIndex(code)
                                                          : fSplit->GetSplitChildIndex(value));
}

ScorePredicate::PredicateType SetPredicate::GetPredType() const {
    return SET_PREDICATE;
}
bool SetPredicate::IsDerivedPredictor() const {
    return fSplit && fSplit->GetSplitVar()->IsDerivedVariable();
}
void SetPredicate::SetSplit(const ScoreSplitVar* split) {
    fSplit.Overwrite(split);
}
const ScoreSplitVar* SetPredicate::GetSplit() const {
    return fSplit.Get();
}
void SetPredicate::Display(std::ostream& out) const {
    out << "Set Predicate: \n";
}

void SetPredicate::SetArrayData(const std::vector<double>& values) {
    if (!values.empty()) {
        fArrayData = values;
    }
}

void SetPredicate::SetPredicateOperator(const std::string& text) {
    fOperator = text == "isIn" ? OP_IS_IN : OP_IS_NOT_IN;
}

const ScoreValue* SetPredicate::GetScoreValue(const ScoreDictVar* var, const ScoreCaseRecord* record,
                                              const ScoreCaseRecord* derivedRecord) const {
    return veltrane::predicates::ReadVariable(*var, record, derivedRecord);
}

double SetPredicate::GetScoreEncodeValue(const ScoreDictVar* var, const ScoreValue* value) const {
    return veltrane::predicates::CodeOf(*var, value);
}

} // namespace MCVeltrane_900
