#ifndef AVERAGE_MODEL_H
#define AVERAGE_MODEL_H

#include <veltrane.h>

#include <memory>
#include <string>
#include <vector>

/// What the model fills for a case: a number.
class AverageResult : public MCVeltrane_900::ScoreRegResult {
public:
    void SetResultValue(MCVeltrane_900::ScoreValue* value) override;
    const MCVeltrane_900::ScoreValue* GetResultValue() const override;
    MCVeltrane_900::ScoreResultField* GetResultFields() override { return &fFields; }
    void SetResultConfidence(double confidence) override { fConfidence = confidence; }
    double GetResultConfidence() const override { return fConfidence; }
    int GetResultKind() override { return 1; } // a regression
    void SetStandardError(double error) override { fStandardError = error; }
    double GetStandardError() const override { return fStandardError; }

    /// Sets the predicted number without allocating.
    void SetNumber(double number);

private:
    MCVeltrane_900::NumericValue fNumber;
    std::unique_ptr<MCVeltrane_900::ScoreValue> fOther; ///< a prediction that came from elsewhere
    const MCVeltrane_900::ScoreValue* fResult = nullptr;
    MCVeltrane_900::ResultField fFields;
    double fConfidence = 1.0;
    double fStandardError = 0.0;
};

/// The weighted average of some fields. A field that is missing in a case doesn't count in it; a case in which all are
/// missing gets what the document says of the target alone.
class AverageModel : public MCVeltrane_900::BaseModel {
public:
    /// @param field  of the model's dictionary, or one of its derived fields
    /// @param weight above 0
    void AddTerm(const MCVeltrane_900::ScoreDictVar& field, double weight);

    bool SetOption(const std::string& name, const std::string& value) override;
    std::vector<std::string> GetInputNames() const override;
    MCVeltrane_900::ScoreResult* CreateResult() const override { return new AverageResult; }
    MCScore::MCStatus Score(const MCVeltrane_900::ScoreCaseRecord* record,
                            MCVeltrane_900::ScoreResult* result) override;
    bool SkipsCategoryProbabilities() override { return false; }
    void Display(std::ostream& out) const override;

private:
    struct Term {
        const MCVeltrane_900::ScoreDictVar* field; ///< borrowed from the model's dictionaries
        double weight;
    };

    std::vector<Term> fTerms;
    bool fRounded = false;
};

#endif
