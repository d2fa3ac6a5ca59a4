#ifndef MCVELTRANE_900_SCORE_RESULT_H
#define MCVELTRANE_900_SCORE_RESULT_H

#include <veltrane_export.h>

#include <initializer_list>

namespace MCVeltrane_900 {

class ScoreResultField;
class ScoreValue;

/// What a model fills for one case. A result keeps clones of the values that it is given, so it outlives the case.
class VELTRANE_API ScoreResult {
public:
    ScoreResult();
    virtual ~ScoreResult();

    /// Sets the predicted value.
    /// @param value borrowed, the result keeps a clone; null means that there is no prediction
    virtual void SetResultValue(ScoreValue* value) = 0;

    /// @return the predicted value, owned by the result, or null when there is none
    virtual const ScoreValue* GetResultValue() const = 0;

    /// @return the values of the model's output fields by name, owned by the result
    virtual ScoreResultField* GetResultFields() = 0;

    /// Sets the probability that goes with the predicted value, 0 to 1.
    virtual void SetResultConfidence(double confidence) = 0;
    virtual double GetResultConfidence() const = 0;

    /// @return which kind of result this is, 0 to LAST_KIND. Named are 0 classification, 1 regression, 5 clustering and
    ///         7 association; the other numbers are reserved.
    virtual int GetResultKind() = 0;

    static constexpr int LAST_KIND = 27;

    /// Whether a result of this kind holds a probability for each category: it is a ScoreClsResult.
    static constexpr bool HasCategories(int kind) {
        for (const int one : {0, 2, 3, 4, 6, 10, 15, 18, 20, 21, 24, 26}) {
            if (one == kind) {
                return true;
            }
        }
        return false;
    }
};

} // namespace MCVeltrane_900

#endif
