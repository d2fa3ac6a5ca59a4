#ifndef VELTRANE_PLUGINS_KIT_RESULTS_H
#define VELTRANE_PLUGINS_KIT_RESULTS_H

#include "kit/values/values.h"

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ResultField.h>
#include <MCVeltrane_900/ScoreClsResult.h>
#include <MCVeltrane_900/ScoreRegResult.h>
#include <MCVeltrane_900/ScoreValue.h>

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace veltrane_kit {

/// What the results of one model have in common; they share it, and may outlive the model.
struct ResultLayout {
    struct Output {
        std::string name;
        MCVeltrane_900::ScoreValue::ValueType kind; ///< one that the type can have
        std::optional<DataType> type = {};          ///< to which values are cast
        bool takesItsKind = true;                   ///< whether a value of the kind is one of the type, whatever it is
        bool isFinal = true; ///< others are for output fields behind them, and hosts don't see them among the fields
    };

    std::vector<std::unique_ptr<MCVeltrane_900::ScoreValue>> categories; ///< of the target, in their order
    std::vector<Output> outputs;                                         ///< in the order of the document
};

/// The values of a model's output fields, each of one kind for all cases: a missing one is the missing number or the
/// empty text. They are set by position, and take the type that their field states: what can't have it is missing.
class OutputValues : public MCVeltrane_900::ResultField {
public:
    explicit OutputValues(const ResultLayout& layout);

    /// The entries are then the host's, so positions hold no more and the model goes by the names of final outputs.
    void SetMapResultValue(const std::map<std::string, MCVeltrane_900::ScoreValue*>& values) override;

    /// Also of an output that isn't final, for who knows its name; no list of the fields has it.
    const MCVeltrane_900::ScoreValue* GetResultValue(const std::string& name) const override;

    void Clear();
    void SetMissing(int position);
    void SetNumber(int position, double number);
    void SetText(int position, const std::string& text);
    /// @param typed the value with its own type, which is cast where the output wants another
    /// @param host  the same, of the kind that hosts know it by
    void SetTyped(int position, const Value& typed, const MCVeltrane_900::ScoreValue& host);
    /// @param value of any kind; null for a missing one
    void Set(int position, const MCVeltrane_900::ScoreValue* value);

    const MCVeltrane_900::ScoreValue* At(int position) const;

private:
    void PutNumber(std::size_t at, double number);
    void PutText(std::size_t at, const std::string& text);
    void PutCast(std::size_t at, const Value& value);
    void PutMoment(std::size_t at, const MCVeltrane_900::DateTimeValue& moment);

    const ResultLayout& fLayout;
    std::vector<MCVeltrane_900::ScoreValue*> fByPosition; ///< null for one that is the host's and goes by its name
    std::vector<std::unique_ptr<MCVeltrane_900::ScoreValue>> fHidden; ///< those that aren't final
    std::string fBuffer;                                              ///< of texts that are made
    std::string fCast;
    std::string fText;
};

/// Keeps a clone of a value and reuses it for the next one of the same kind.
class KeptValue {
public:
    /// @param value null for none
    void Set(const MCVeltrane_900::ScoreValue* value);
    void SetNumber(double number);
    const MCVeltrane_900::ScoreValue* Get() const { return fIsSet ? fValue.get() : nullptr; }

private:
    std::unique_ptr<MCVeltrane_900::ScoreValue> fValue;
    bool fIsSet = false;
};

/// The common part of both results. Base is ScoreClsResult or ScoreRegResult.
template <typename Base>
class CommonResult : public Base {
public:
    explicit CommonResult(std::shared_ptr<const ResultLayout> layout)
        : fLayout(std::move(layout)), fOutputs(*fLayout) {}

    void SetResultValue(MCVeltrane_900::ScoreValue* value) override { fValue.Set(value); }
    const MCVeltrane_900::ScoreValue* GetResultValue() const override { return fValue.Get(); }
    MCVeltrane_900::ScoreResultField* GetResultFields() override { return &fOutputs; }
    void SetResultConfidence(double confidence) override { fConfidence = confidence; }
    double GetResultConfidence() const override { return fConfidence; }

    OutputValues& Outputs() { return fOutputs; }
    KeptValue& Value() { return fValue; }
    /// Whether the result was made for a model with this layout.
    bool IsOf(const ResultLayout& layout) const { return fLayout.get() == &layout; }

protected:
    void ClearCommon() {
        fValue.Set(nullptr);
        fConfidence = MCVeltrane_900::NumericValue::GetSysmisValue();
    }
    const ResultLayout& Layout() const { return *fLayout; }

private:
    std::shared_ptr<const ResultLayout> fLayout;
    OutputValues fOutputs;
    KeptValue fValue;
    double fConfidence = MCVeltrane_900::NumericValue::GetSysmisValue();
};

/// The result of a classification. A category without a probability has none in it.
class ClassificationResult final : public CommonResult<MCVeltrane_900::ScoreClsResult> {
public:
    static constexpr int kKind = 0;
    static constexpr int kClustering = 5; ///< whose categories are the clusters

    explicit ClassificationResult(std::shared_ptr<const ResultLayout> layout, int kind = kKind);

    void SetCategoryProbability(MCVeltrane_900::ScoreValue* category, double probability) override;
    double GetCategoryProbability(const MCVeltrane_900::ScoreValue* category) const override;
    std::vector<const MCVeltrane_900::ScoreValue*> GetCategories() const override;
    int GetResultKind() override { return fKind; }

    /// Empties the result for the next case.
    void Clear();

    /// Puts the prediction of a case in the place of the one before.
    /// @param category      the place of the predicted one in the layout
    /// @param probabilities of the layout's categories, in their order; the missing number for none
    /// @param confidence    the missing number for none
    void SetPrediction(int category, const std::vector<double>& probabilities, double confidence);

    /// The probabilities of the layout's categories, then of others that a host has set.
    const std::vector<double>& Probabilities() const { return fProbabilities; }

private:
    int Find(const MCVeltrane_900::ScoreValue* category) const;
    int FindExact(const std::string& text) const;
    const MCVeltrane_900::ScoreValue& At(std::size_t index) const;

    int fKind;
    std::vector<double> fProbabilities; ///< of the layout's categories, then of the others
    std::vector<std::unique_ptr<MCVeltrane_900::ScoreValue>> fOthers;
    mutable std::size_t fNext = 0; ///< where the next category is expected: they are asked for in their order
};

/// The result of a regression.
class RegressionResult final : public CommonResult<MCVeltrane_900::ScoreRegResult> {
public:
    static constexpr int kKind = 1;

    using CommonResult::CommonResult;

    void SetStandardError(double error) override { fError = error; }
    double GetStandardError() const override { return fError; }
    int GetResultKind() override { return kKind; }

    void Clear();

private:
    double fError = MCVeltrane_900::NumericValue::GetSysmisValue();
};

} // namespace veltrane_kit

#endif
