#include "predicates/truth_walk.h"

#include <MCVeltrane_900/CompoundPredicate.h>

#include <algorithm>

namespace MCVeltrane_900 {

CompoundPredicate::CompoundPredicate() = default;
CompoundPredicate::CompoundPredicate(CompoundBoolOperator boolOperator) : fBoolOperator(boolOperator) {}

CompoundPredicate::CompoundPredicate(const CompoundPredicate& other) : ScorePredicate(other) {
    *this = other;
}

CompoundPredicate& CompoundPredicate::operator=(const CompoundPredicate& other) {
    if (this != &other) {
        fPredicates.reserve(fPredicates.size() + other.fPredicates.size());
        for (const ScorePredicate* child : other.fPredicates) {
            fPredicates.push_back(child ? child->Clone() : nullptr);
        }
        fBoolOperator = other.fBoolOperator;
    }
    return *this;
}

CompoundPredicate::~CompoundPredicate() {
    std::sort(fPredicates.begin(), fPredicates.end());
    const auto end = std::unique(fPredicates.begin(), fPredicates.end());
    std::for_each(fPredicates.begin(), end, [](const ScorePredicate* child) { delete child; });
}

ScorePredicate* CompoundPredicate::Clone() const {
    return new CompoundPredicate(*this);
}

ScorePredicate::PredicateResult CompoundPredicate::Evaluate(const std::vector<double>& encodedValues) const {
    return veltrane::predicates::Join(fBoolOperator, fPredicates, [&encodedValues](const ScorePredicate* child) {
        return child ? child->Evaluate(encodedValues) : PRED_UNKNOWN;
    });
}

ScorePredicate::PredicateResult CompoundPredicate::Evaluate(const ScoreCaseRecord* record,
                                                            const ScoreCaseRecord* derivedRecord) const {
    return veltrane::predicates::Join(fBoolOperator, fPredicates, [=](const ScorePredicate* child) {
        return child ? child->Evaluate(record, derivedRecord) : PRED_UNKNOWN;
    });
}

ScorePredicate::PredicateType CompoundPredicate::GetPredType() const {
    return COMPOUND_PREDICATE;
}
bool CompoundPredicate::IsDerivedPredictor() const {
    return std::any_of(fPredicates.begin(), fPredicates.end(),
                       [](const ScorePredicate* child) { return child && child->IsDerivedPredictor(); });
}
void CompoundPredicate::SetSplit(const ScoreSplitVar*) {}
const ScoreSplitVar* CompoundPredicate::GetSplit() const {
    return nullptr;
}
void CompoundPredicate::Display(std::ostream& out) const {
    out << "Compound Predicate: \n";
}

void CompoundPredicate::AddPredicate(ScorePredicate* predicate) {
    fPredicates.push_back(predicate);
}

bool CompoundPredicate::RemovePredicate(ScorePredicate* predicate) {
    const auto found = std::find(fPredicates.begin(), fPredicates.end(), predicate);
    if (found == fPredicates.end()) {
        return false;
    }
    fPredicates.erase(found);
    return true;
}

ScorePredicate::PredicateResult CompoundPredicate::EvaluateSurrogate(const std::vector<double>& encodedValues,
                                                                     int start) const {
    if (fBoolOperator != BOOL_SURROGATE || start < 0 || start >= GetCount()) {
        return PRED_FALSE;
    }
    return veltrane::predicates::JoinSurrogates(fPredicates.begin() + start, fPredicates.end(),
                                                [&encodedValues](const ScorePredicate* child) {
                                                    return child ? child->Evaluate(encodedValues) : PRED_UNKNOWN;
                                                });
}

} // namespace MCVeltrane_900
