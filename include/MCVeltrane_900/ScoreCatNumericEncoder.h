#ifndef MCVELTRANE_900_SCORECATNUMERICENCODER_H
#define MCVELTRANE_900_SCORECATNUMERICENCODER_H

#include <MCVeltrane_900/ScoreEncoder.h>

#include <map>

namespace MCVeltrane_900 {

/// Codes numbers in the order of their first appearance. Numbers match exactly, without tolerance; SYSMIS is a number
/// like any other.
class VELTRANE_API ScoreCatNumericEncoder : public ScoreEncoder {
public:
    /// @param capacity number of categories to reserve room for
    explicit ScoreCatNumericEncoder(int capacity);
    /// Encodes each number in order; duplicates collapse.
    explicit ScoreCatNumericEncoder(const std::vector<double>& numbers);
    /// Copies the codes, and no labels.
    ScoreCatNumericEncoder(const ScoreCatNumericEncoder& other);
    /// Copies the codes; the labels stay as they were.
    ScoreCatNumericEncoder& operator=(const ScoreCatNumericEncoder& other);
    ~ScoreCatNumericEncoder() override;

    EncoderType GetEncoderType() const override;
    int GetNumberOfCategories() const override;
    /// By the value's GetDouble(), whatever its type.
    int Encode(const ScoreValue* value) override;
    /// By the number that the text reads as; SYSMIS for a text that isn't one.
    int Encode(const std::string& text) override;
    int EncodeConst(const std::string& text) const override;
    int EncodeConst(const ScoreValue* value) const override;
    std::string Decode(int code) const override;
    double DecodeNum(int code) const override;
    ScoreEncoder* Clone() const override;
    void SetValueLabels(const std::vector<std::string>& labels) override;
    void SetValueLabel(int code, const std::string& label) override;
    const std::vector<std::string>* GetValueLabels() const override;
    void Display(std::ostream& out) const override;

    /// The code of a number, learned if need be.
    int Encode(double number);
    /// The code of a number, or -1 for an unknown one.
    int EncodeConst(double number) const;

private:
    /// Plain comparison, with every NaN behind all numbers so that the order stays one.
    struct Less {
        bool operator()(double a, double b) const { return a < b || (a == a && b != b); }
    };

    std::map<double, int, Less> fCodes;
    std::vector<double> fValues;
    std::vector<std::string> fLabels;
    int fLastCode = -1;
};

} // namespace MCVeltrane_900

#endif
