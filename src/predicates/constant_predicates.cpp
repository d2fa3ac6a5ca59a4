#include <MCVeltrane_900/FalsePredicate.h>
#include <MCVeltrane_900/TruePredicate.h>

namespace MCVeltrane_900 {

TruePredicate::~TruePredicate() = default;

ScorePredicate* TruePredicate::Clone() const {
    return new TruePredicate(*this);
}
ScorePredicate::PredicateResult TruePredicate::Evaluate(const std::vector<double>&) const {
    return PRED_TRUE;
}
ScorePredicate::PredicateResult TruePredicate::Evaluate(const ScoreCaseRecord*, const ScoreCaseRecord*) const {
    return PRED_TRUE;
}
ScorePredicate::PredicateType TruePredicate::GetPredType() const {
    return TRUE_PREDICATE;
}
bool TruePredicate::IsDerivedPredictor() const {
    return false;
}
void TruePredicate::SetSplit(const ScoreSplitVar*) {}
const ScoreSplitVar* TruePredicate::GetSplit() const {
    return nullptr;
}
void TruePredicate::Display(std::ostream& out) const {
    out << "Constant TRUE\n";
}

FalsePredicate::~FalsePredicate() = default;

ScorePredicate* FalsePredicate::Clone() const {
    return new FalsePredicate(*this);
}
ScorePredicate::PredicateResult FalsePredicate::Evaluate(const std::vector<double>&) const {
    return PRED_FALSE;
}
ScorePredicate::PredicateResult FalsePredicate::Evaluate(const ScoreCaseRecord*, const ScoreCaseRecord*) const {
    return PRED_FALSE;
}
ScorePredicate::PredicateType FalsePredicate::GetPredType() const {
    return FALSE_PREDICATE;
}
bool FalsePredicate::IsDerivedPredictor() const {
    return false;
}
void FalsePredicate::SetSplit(const ScoreSplitVar*) {}
const ScoreSplitVar* FalsePredicate::GetSplit() const {
    return nullptr;
}
void FalsePredicate::Display(std::ostream& out) const {
    out << "Constant FALSE\n";
}

} // namespace MCVeltrane_900
