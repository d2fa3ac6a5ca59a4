#ifndef MCVELTRANE_900_VARSTATS_H
#define MCVELTRANE_900_VARSTATS_H

#include <MCVeltrane_900/Owned.h>
#include <MCVeltrane_900/ScoreVarStats.h>

namespace MCVeltrane_900 {

/// The library's summary statistics.
class VELTRANE_API VarStats : public ScoreVarStats {
public:
    /// Minimum SYSMIS, maximum the largest double, mean 0, standard deviation 1, no replacement.
    VarStats();
    VarStats(double min, double max, double mean, double stddev);
    VarStats(const VarStats& other);
    VarStats& operator=(const VarStats& other);
    ~VarStats() override;

    ScoreVarStats* Clone() const override;
    void SetMin(double min) override;
    void SetMax(double max) override;
    void SetStddev(double stddev) override;
    void SetMean(double mean) override;
    void SetMissingReplacement(const ScoreValue* value) override;
    double GetMin() const override;
    double GetMax() const override;
    double GetStddev() const override;
    double GetMean() const override;
    const ScoreValue* GetMissingReplacement() const override;

private:
    double fMin;
    double fMax;
    double fMean;
    double fStddev;
    Owned<ScoreValue> fMissingReplacement;
};

} // namespace MCVeltrane_900

#endif
