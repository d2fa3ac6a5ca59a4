#ifndef MCVELTRANE_900_SIMPLEPREDICATE_H
#define MCVELTRANE_900_SIMPLEPREDICATE_H

#include <MCVeltrane_900/Owned.h>
#include <MCVeltrane_900/ScorePredicate.h>
#include <MCVeltrane_900/ScoreSplitVar.h>

#include <limits>
#include <string>

namespace MCVeltrane_900 {

class ScoreDictVar;
class ScoreValue;

/// One field compared with one value. What decides is the split, into which operator and value were translated; both
/// are kept beside it for models to read.
///
/// A value in any branch of the split is true, one in none is false. A missing value is true when the split's
/// missing-value map has a child for it, and unknown otherwise.
class VELTRANE_API SimplePredicate : public ScorePredicate {
public:
    enum SimplePredOperator : int {
        OP_EQUAL = 0,
        OP_NOT_EQUAL = 1,
        OP_LESS_THAN = 2,
        OP_LESS_OR_EQUAL = 3,
        OP_GREATER_THAN = 4,
        OP_GREATER_OR_EQUAL = 5,
        OP_IS_MISSING = 6,
        OP_IS_NOT_MISSING = 7,
    };

    /// Unknown for every case until it gets a split.
    SimplePredicate();
    /// @param split becomes the predicate's
    explicit SimplePredicate(const ScoreSplitVar* split);
    /// Clones the split; what a split leaves out of its copy is missing in this one too.
    SimplePredicate(const SimplePredicate& other);
    /// Deletes the former split, clones the other's and copies the rest.
    SimplePredicate& operator=(const SimplePredicate& other);
    ~SimplePredicate() override;

    ScorePredicate* Clone() const override;
    PredicateResult Evaluate(const std::vector<double>& encodedValues) const override;
    PredicateResult Evaluate(const ScoreCaseRecord* record, const ScoreCaseRecord* derivedRecord) const override;
    PredicateType GetPredType() const override;
    bool IsDerivedPredictor() const override;
    void SetSplit(const ScoreSplitVar* split) override;
    const ScoreSplitVar* GetSplit() const override;
    void Display(std::ostream& out) const override;

    /// The operand as written in the document.
    const std::string& GetPredValueByString() const { return fValueString; }
    /// The operand as a number: its code when the variable has an encoder, else what the variable makes of it.
    double GetPredValueByDouble() const { return fValue; }

    /// Sets the operand by its text. The number stays when the variable's type has no form in text. The split must be
    /// set; the encoder of its variable learns the text.
    void SetPredicateValue(const std::string& text);

    /// Whether the operand stands for a missing value.
    const bool& IsMissingValue() const { return fValueMissing; }
    void SetValueToMissing(bool missing) { fValueMissing = missing; }

    const SimplePredOperator& GetPredicateOperator() const { return fOperator; }
    /// Sets the operator by its text, such as "lessThan". An empty text changes nothing, and any other text that is no
    /// operator is taken for "isNotMissing".
    void SetPredicateOperator(const std::string& text);

private:
    const ScoreValue* GetScoreValue(const ScoreDictVar* var, const ScoreCaseRecord* record,
                                    const ScoreCaseRecord* derivedRecord) const;
    double GetScoreEncodeValue(const ScoreDictVar* var, const ScoreValue* value) const;

    Owned<const ScoreSplitVar> fSplit;
    bool fValueMissing = false;
    double fValue = -std::numeric_limits<double>::max();
    std::string fValueString;
    SimplePredOperator fOperator = OP_EQUAL;
};

} // namespace MCVeltrane_900

#endif
