#ifndef MCVELTRANE_900_SCOREBINNINGENCODER_H
#define MCVELTRANE_900_SCOREBINNINGENCODER_H

#include <MCVeltrane_900/ScoreEncoder.h>

namespace MCVeltrane_900 {

/// Codes a number by the interval that it falls in: the number of cutpoints that lie strictly below it. It never learns
/// and keeps no labels.
class VELTRANE_API ScoreBinningEncoder : public ScoreEncoder {
public:
    /// No bins.
    ScoreBinningEncoder();
    /// @param cutpoints ascending; there is one bin more than cutpoints
    explicit ScoreBinningEncoder(const std::vector<double>& cutpoints);
    ScoreBinningEncoder(const ScoreBinningEncoder& other);
    ScoreBinningEncoder& operator=(const ScoreBinningEncoder& other);
    ~ScoreBinningEncoder() override;

    EncoderType GetEncoderType() const override;
    /// The number of bins.
    int GetNumberOfCategories() const override;
    int Encode(const ScoreValue* value) override;
    int Encode(const std::string& text) override;
    int EncodeConst(const std::string& text) const override;
    /// -1 when the value isn't a NUMERIC_VALUE.
    int EncodeConst(const ScoreValue* value) const override;
    std::string Decode(int code) const override;
    double DecodeNum(int code) const override;
    ScoreEncoder* Clone() const override;
    void SetValueLabels(const std::vector<std::string>& labels) override;
    void SetValueLabel(int code, const std::string& label) override;
    const std::vector<std::string>* GetValueLabels() const override;
    void Display(std::ostream& out) const override;

    /// The bin of a number; a cutpoint belongs to the bin below it. Without cutpoints, 0 below 0.0 and 1 otherwise.
    double Encode(double number) const;

    /// @param cutpoints ascending; there is one bin more than cutpoints
    void SetBinningCutpoints(const std::vector<double>& cutpoints);
    const std::vector<double>& GetBinningCutpoints() const { return fCutpoints; }

private:
    int fNumberOfBins = 0;
    std::vector<double> fCutpoints;
};

} // namespace MCVeltrane_900

#endif
