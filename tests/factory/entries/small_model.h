#ifndef VELTRANE_TESTS_FACTORY_SMALL_MODEL_H
#define VELTRANE_TESTS_FACTORY_SMALL_MODEL_H

#include <MCScore/MCStatus.h>
#include <MCVeltrane_900/BaseModel.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ResultField.h>
#include <MCVeltrane_900/ScoreClsResult.h>
#include <MCVeltrane_900/ScoreRegResult.h>
#include <MCVeltrane_900/ScoreValue.h>

#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

/// The smallest model and results that a plug-in could have.
namespace veltrane::tests {

using MCVeltrane_900::ScoreValue;

/// The single value of both kinds of result. Result is ScoreClsResult or ScoreRegResult.
template <typename Result>
class SmallResult : public Result {
public:
    explicit SmallResult(int kind) : fKind(kind) {}

    void SetResultValue(ScoreValue* value) override {
        fValueSet = true;
        fValue.reset(value != nullptr ? value->Clone() : nullptr);
    }
    const ScoreValue* GetResultValue() const override { return fValue.get(); }
    MCVeltrane_900::ScoreResultField* GetResultFields() override { return &fFields; }
    void SetResultConfidence(double confidence) override { fConfidence = confidence; }
    double GetResultConfidence() const override { return fConfidence; }
    int GetResultKind() override { return fKind; }

    /// Whether there was any SetResultValue, also with null.
    bool WasValueSet() const { return fValueSet; }

private:
    int fKind;
    bool fValueSet = false;
    std::unique_ptr<ScoreValue> fValue;
    MCVeltrane_900::ResultField fFields;
    double fConfidence = -1.0;
};

class SmallClsResult : public SmallResult<MCVeltrane_900::ScoreClsResult> {
public:
    using SmallResult::SmallResult;

    void SetCategoryProbability(ScoreValue* category, double probability) override {
        fProbabilities.emplace_back(std::unique_ptr<ScoreValue>(category->Clone()), probability);
    }
    double GetCategoryProbability(const ScoreValue* category) const override {
        for (const auto& [value, probability] : fProbabilities) {
            if (*value == *category) {
                return probability;
            }
        }
        return MCVeltrane_900::NumericValue::GetSysmisValue();
    }
    std::vector<const ScoreValue*> GetCategories() const override {
        std::vector<const ScoreValue*> values;
        for (const auto& entry : fProbabilities) {
            values.push_back(entry.first.get());
        }
        return values;
    }

private:
    std::vector<std::pair<std::unique_ptr<ScoreValue>, double>> fProbabilities;
};

class SmallRegResult : public SmallResult<MCVeltrane_900::ScoreRegResult> {
public:
    using SmallResult::SmallResult;
    void SetStandardError(double error) override { fError = error; }
    double GetStandardError() const override { return fError; }

private:
    double fError = 0.0;
};

class SmallModel : public MCVeltrane_900::BaseModel {
public:
    using BaseModel::HandleMissingValue;

    bool SetOption(const std::string& name, const std::string& value) override {
        fOption = name == "option" ? value : fOption;
        return name == "option";
    }
    std::vector<std::string> GetInputNames() const override { return {"x", "z"}; }
    MCVeltrane_900::ScoreResult* CreateResult() const override { return new SmallRegResult(1); }
    MCScore::MCStatus Score(const MCVeltrane_900::ScoreCaseRecord* record,
                            MCVeltrane_900::ScoreResult* result) override {
        return record != nullptr ? MCScore::MCStatus(7, true) : HandleMissingValue(result);
    }
    bool SkipsCategoryProbabilities() override { return skips; }
    void Display(std::ostream& out) const override { out << "small model " << fOption; }

    bool skips = false;

private:
    std::string fOption;
};

} // namespace veltrane::tests

#endif
