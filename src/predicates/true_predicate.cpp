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

} // namespace MCVeltrane_900
