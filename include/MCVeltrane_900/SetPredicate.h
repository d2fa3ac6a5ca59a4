#ifndef MCVELTRANE_900_SETPREDICATE_H
#define MCVELTRANE_900_SETPREDICATE_H

#include <MCVeltrane_900/Owned.h>
#include <MCVeltrane_900/ScorePredicate.h>
#include <MCVeltrane_900/ScoreSplitVar.h>

#include <string>

namespace MCVeltrane_900 {

class ScoreDictVar;
class ScoreValue;

/// One field looked up in a set of categories. What decides is the split: for "isNotIn" it holds the complement of the
/// listed categories. Operator and encoded set are kept beside it for models to read.
///
/// A missing value is always unknown, whatever the split's missing-value map says.
class VELTRANE_API SetPredicate : public ScorePredicate {
public:
    enum SimpleSetPredOperator : int {
        OP_IS_IN = 0,
        OP_IS_NOT_IN = 1,
    };

    /// Unknown for every case until it gets a split.
    SetPredicate();
    /// @param split becomes the predicate's
    explicit SetPredicate(const ScoreSplitVar* split);
    /// Clones the split and copies the operator, which stays OP_IS_IN where the other has no split. The encoded set
    /// isn't copied.
    SetPredicate(const SetPredicate& other);
    /// Deletes the former split, clones the other's and copies the operator. The encoded set stays as it was.
    SetPredicate& operator=(const SetPredicate& other);
    ~SetPredicate() override;

    ScorePredicate* Clone() const override;
    PredicateResult Evaluate(const std::vector<double>& encodedValues) const override;
    PredicateResult Evaluate(const ScoreCaseRecord* record, const ScoreCaseRecord* derivedRecord) const override;
    PredicateType GetPredType() const override;
    bool IsDerivedPredictor() const override;
    void SetSplit(const ScoreSplitVar* split) override;
    const ScoreSplitVar* GetSplit() const override;
    void Display(std::ostream& out) const override;

    /// The encoded set.
    const std::vector<double>& GetArrayData() const { return fArrayData; }
    /// Replaces the encoded set, unless values is empty: then the earlier set stays.
    void SetArrayData(const std::vector<double>& values);

    SimpleSetPredOperator GetPredicateOperator() const { return fOperator; }
    /// Sets the operator by its text: "isIn", or "isNotIn" for which any other text is taken.
    void SetPredicateOperator(const std::string& text);

private:
    const ScoreValue* GetScoreValue(const ScoreDictVar* var, const ScoreCaseRecord* record,
                                    const ScoreCaseRecord* derivedRecord) const;
    double GetScoreEncodeValue(const ScoreDictVar* var, const ScoreValue* value) const;

    Owned<const ScoreSplitVar> fSplit;
    SimpleSetPredOperator fOperator = OP_IS_IN;
    std::vector<double> fArrayData;
};

} // namespace MCVeltrane_900

#endif
