#ifndef MCVELTRANE_900_SCORE_CLS_RESULT_H
#define MCVELTRANE_900_SCORE_CLS_RESULT_H

#include <MCVeltrane_900/ScoreResult.h>

#include <vector>

namespace MCVeltrane_900 {

/// The result of a model with a categorical target: a prediction and the probabilities of the categories.
class VELTRANE_API ScoreClsResult : public ScoreResult {
public:
    ScoreClsResult();
    ~ScoreClsResult() override;

    /// Sets the probability of one category.
    /// @param category borrowed, the result keeps a clone
    virtual void SetCategoryProbability(ScoreValue* category, double probability) = 0;

    /// @return the probability of a category, or the missing number for one that was never set
    virtual double GetCategoryProbability(const ScoreValue* category) const = 0;

    /// @return the categories that have a probability, in the order in which they were set; owned by the result
    virtual std::vector<const ScoreValue*> GetCategories() const = 0;
};

} // namespace MCVeltrane_900

#endif
