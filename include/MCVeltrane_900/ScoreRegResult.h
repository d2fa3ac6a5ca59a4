#ifndef MCVELTRANE_900_SCORE_REG_RESULT_H
#define MCVELTRANE_900_SCORE_REG_RESULT_H

#include <MCVeltrane_900/ScoreResult.h>

namespace MCVeltrane_900 {

/// The result of a model with a continuous target.
class VELTRANE_API ScoreRegResult : public ScoreResult {
public:
    ScoreRegResult();
    ~ScoreRegResult() override;

    /// Sets the standard error of the predicted value, in the units of the target.
    virtual void SetStandardError(double error) = 0;
    virtual double GetStandardError() const = 0;
};

} // namespace MCVeltrane_900

#endif
