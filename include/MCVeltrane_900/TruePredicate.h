#ifndef MCVELTRANE_900_TRUEPREDICATE_H
#define MCVELTRANE_900_TRUEPREDICATE_H

#include <MCVeltrane_900/ScorePredicate.h>

namespace MCVeltrane_900 {

/// The condition that is true for every case.
class VELTRANE_API TruePredicate : public ScorePredicate {
public:
    ~TruePredicate() override;

    ScorePredicate* Clone() const override;
    PredicateResult Evaluate(const std::vector<double>& encodedValues) const override;
    PredicateResult Evaluate(const ScoreCaseRecord* record, const ScoreCaseRecord* derivedRecord) const override;
    PredicateType GetPredType() const override;
    bool IsDerivedPredictor() const override;
    /// Does nothing.
    void SetSplit(const ScoreSplitVar* split) override;
    /// Null.
    const ScoreSplitVar* GetSplit() const override;
    void Display(std::ostream& out) const override;
};

} // namespace MCVeltrane_900

#endif
