#include "predicates/split_input.h"

#include <MCVeltrane_900/SimplePredicate.h>

#include <algorithm>
#include <iterator>
#include <memory>

namespace MCVeltrane_900 {

namespace {

/// The texts of the operators by number; the last operator has any other text.
constexpr const char* kOperatorTexts[] = {
    "equal", "notEqual", "lessThan", "lessOrEqual", "greaterThan", "greaterOrEqual", "isMissing",
};
static_assert(std::size(kOperatorTexts) == SimplePredicate::OP_IS_NOT_MISSING);

ScorePredicate::PredicateResult MissingResult(const ScoreSplitVar& split) {
    return split.GetMissvalMap() == -1 ? ScorePredicate::PRED_UNKNOWN : ScorePredicate::PRED_TRUE;
}

} // namespace

SimplePredicate::SimplePredicate() = default;
SimplePredicate::SimplePredicate(const ScoreSplitVar* split) : fSplit(split) {}
SimplePredicate::SimplePredicate(const SimplePredicate& other) = default;
SimplePredicate& SimplePredicate::operator=(const SimplePredicate& other) = default;
SimplePredicate::~SimplePredicate() = default;

ScorePredicate* SimplePredicate::Clone() const {
    return new SimplePredicate(*this);
}

ScorePredicate::PredicateResult SimplePredicate::Evaluate(const std::vector<double>& encodedValues) const {
    if (!fSplit) {
        return PRED_UNKNOWN;
    }
    const auto [number, isMissing] = veltrane::predicates::ReadEncoded(*fSplit->GetSplitVar(), encodedValues);
    return isMissing ? MissingResult(*fSplit) : veltrane::predicates::ResultOfChild(fSplit->GetSplitChildIndex(number));
}

ScorePredicate::PredicateResult SimplePredicate::Evaluate(const ScoreCaseRecord* record,
                                                          const ScoreCaseRecord* derivedRecord) const {
    if (!fSplit) {
        return PRED_UNKNOWN;
    }
    const ScoreDictVar* var = fSplit->GetSplitVar();
    const ScoreValue* value = GetScoreValue(var, record, derivedRecord);
    const double code = GetScoreEncodeValue(var, value);
    const bool hasEncoder = var->GetEncoder() != nullptr;
    if (veltrane::predicates::IsMissing(*var, value, hasEncoder, code)) {
        return MissingResult(*fSplit);
    }
    const bool byCode = hasEncoder && fSplit->GetSplitVarType() == ScoreSplitVar::DISCRETE_SPLIT;
    return veltrane::predicates::ResultOfChild(byCode ? fSplit->GetSplitChildIndex(code)
                                                      : fSplit->GetSplitChildIndex(value));
}

ScorePredicate::PredicateType SimplePredicate::GetPredType() const {
    return SIMPLE_PREDICATE;
}
bool SimplePredicate::IsDerivedPredictor() const {
    return fSplit && fSplit->GetSplitVar()->IsDerivedVariable();
}
void SimplePredicate::SetSplit(const ScoreSplitVar* split) {
    fSplit.Overwrite(split);
}
const ScoreSplitVar* SimplePredicate::GetSplit() const {
    return fSplit.Get();
}
void SimplePredicate::Display(std::ostream& out) const {
    out << "Simple Predicate: \n";
}

void SimplePredicate::SetPredicateValue(const std::string& text) {
    fValueString = text;
    if (!fSplit) {
        return;
    }
    const ScoreDictVar* var = fSplit->GetSplitVar();
    if (const ScoreEncoder* encoder = var->GetEncoder()) {
        // A split holds its variable as constant, but the operand of a condition is one of the variable's categories
        // from here on, and learned if need be.
        fValue = const_cast<ScoreEncoder*>(encoder)->Encode(text);
    } else if (const std::unique_ptr<ScoreValue> value{var->ToMyValue(text)}) {
        fValue = value->GetDouble();
    }
}

void SimplePredicate::SetPredicateOperator(const std::string& text) {
    if (text.empty()) {
        return;
    }
    const auto found = std::find(std::begin(kOperatorTexts), std::end(kOperatorTexts), text);
    fOperator = static_cast<SimplePredOperator>(found - std::begin(kOperatorTexts));
}

const ScoreValue* SimplePredicate::GetScoreValue(const ScoreDictVar* var, const ScoreCaseRecord* record,
                                                 const ScoreCaseRecord* derivedRecord) const {
    return veltrane::predicates::ReadVariable(*var, record, derivedRecord);
}

double SimplePredicate::GetScoreEncodeValue(const ScoreDictVar* var, const ScoreValue* value) const {
    return veltrane::predicates::CodeOf(*var, value);
}

} // namespace MCVeltrane_900
