#ifndef MCVELTRANE_900_DISCRETESPLIT_H
#define MCVELTRANE_900_DISCRETESPLIT_H

#include <MCVeltrane_900/ScoreSplitVar.h>
#include <MCVeltrane_900/ScoreValue.h>
#include <MCVeltrane_900/SplitRecords.h>

#include <map>
#include <memory>
#include <vector>

namespace veltrane::data {
class SplitIndex;
struct SplitPlaces;
} // namespace veltrane::data

namespace MCVeltrane_900 {

/// A split by categories, with two stores side by side: values answer the questions by value, codes the questions by
/// number. Which of them a reader of documents fills depends on whether the variable has an encoder, and a split
/// answers only through the store that was filled.
class VELTRANE_API DiscreteSplit : public ScoreSplitVar {
public:
    /// @param var stays the dictionary's, and has to outlive the split
    explicit DiscreteSplit(const ScoreDictVar* var);
    /// Clones the values. The codes don't travel with a copy: it knows no number until its codes are put again.
    DiscreteSplit(const DiscreteSplit& other);
    /// Appends clones of the other's values to those that are here, and copies the plain fields. The codes stay.
    DiscreteSplit& operator=(const DiscreteSplit& other);
    ~DiscreteSplit() override;

    ScoreSplitVar* Clone() const override;
    SplitVarType GetSplitVarType() const override;

    /// By the codes, exactly. A negative code of a categorical variable is no category and gets the missing-value map.
    int GetSplitChildIndex(double code) const override;
    /// By the values, each compared as the receiver: texts of a string variable by Equal() under the variable's blank
    /// rules, all others by the operator. Null gets the missing-value map; the variable's missing values aren't asked.
    int GetSplitChildIndex(const ScoreValue* value) const override;
    void Display(std::ostream& out) const override;

    /// Appends a value; duplicates stay, and the first one decides. A value that is changed afterwards, by somebody who
    /// kept a pointer to it, counts as it is when the split is asked.
    /// @param value becomes the split's
    void PutSplit(ScoreValue* value, int index);
    /// Adds a code; a code that is known keeps its earlier child index.
    void PutSplit(double code, int index);

    /// All values in order; they stay the split's.
    std::vector<const ScoreValue*> GetSplitValues() const;
    /// The values with this child index, in order; they stay the split's.
    std::vector<const ScoreValue*> GetSplitValuesForIndex(int index) const;
    /// The first value alone, or nothing; it stays the split's.
    std::vector<const ScoreValue*> GetSplitValuesFirst() const;

    /// The indexes of the first and of the last split value, each -1 until set. They are kept for models.
    void GetStartAndEndIndex(int& start, int& end) const;
    void SetStartAndEndIndex(int start, int end);

private:
    SplitRecords<ScoreValue> fValues;
    int fStartIndex = -1;
    int fEndIndex = -1;
    std::map<double, int> fNumericMap;
    std::unique_ptr<veltrane::data::SplitIndex> fIndex;
};

} // namespace MCVeltrane_900

#endif
