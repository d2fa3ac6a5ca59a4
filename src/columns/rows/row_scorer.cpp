#include "columns/rows/row_scorer.h"

#include "columns/fields/field_types.h"
#include "columns/rows/case_row.h"
#include "columns/rows/row_results.h"

#include <MCScore/MCStatus.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/ScoreResult.h>
#include <MCVeltrane_900/ScoreResultField.h>
#include <MCVeltrane_900/StringValue.h>

#include <algorithm>
#include <utility>

namespace veltrane::columns {

using MCVeltrane_900::ScoreDictionary;
using MCVeltrane_900::ScoreDictVar;
using MCVeltrane_900::ScoreModel;
using MCVeltrane_900::ScoreResult;
using MCVeltrane_900::ScoreResultField;
using MCVeltrane_900::ScoreValue;
using MCVeltrane_900::StringValue;

namespace {

std::vector<ColumnField> InputsOf(const ScoreModel& model) {
    const ScoreDictionary& dictionary = *model.GetDictionary();
    const std::vector<std::string> needed = model.GetInputNames();
    std::vector<ColumnField> fields;
    for (const std::string& name : dictionary.GetVarNames()) {
        const ScoreDictVar* variable = dictionary.GetVar(name);
        if (variable != nullptr) {
            const bool isNeeded = std::find(needed.begin(), needed.end(), name) != needed.end();
            fields.push_back({name, TypeOf(*variable), isNeeded, {}});
        }
    }
    return fields;
}

/// The results of a case keep no text apart from a missing one.
bool IsEmptyText(const ScoreValue* value) {
    const auto* text = dynamic_cast<const StringValue*>(value);
    return text != nullptr && text->GetText().empty();
}

} // namespace

/// A thread's own model with the case that it scores.
struct RowScorer::Case : ColumnScorer::State {
    Case(BuiltModel built, const std::vector<ColumnField>& inputs)
        : model(std::move(built.model)), result(MakeResult(*model)), row(inputs, built.readsUnreadable) {}

    /// @return whether there is a prediction. What a plug-in throws against its promise leaves none.
    bool Score() {
        try {
            return !model->Score(&row, result.get()).IsError() && result->GetResultValue() != nullptr;
        } catch (...) {
            return false;
        }
    }

    std::unique_ptr<ScoreModel> model;
    std::unique_ptr<ScoreResult> result;
    CaseRow row;
    TextStore texts;
};

RowScorer::RowScorer(std::unique_ptr<const ModelSource> source, BuiltModel built)
    : fSource(std::move(source)), fInputs(InputsOf(*built.model)),
      fOutputs(ResultColumnsOf(*built.model, *MakeResult(*built.model))), fNeedsOrder(built.looksBack),
      fFirst(std::move(built)) {}

std::unique_ptr<ColumnScorer::State> RowScorer::NewState() const {
    BuiltModel built;
    {
        const std::scoped_lock lock(fMutex);
        built = std::exchange(fFirst, BuiltModel());
    }
    if (built.model == nullptr) {
        built = fSource->Build();
    }
    return std::make_unique<Case>(std::move(built), fInputs);
}

void RowScorer::Score(const InputBlock& in, State& state, const OutputBlock& out) const {
    Case& scored = static_cast<Case&>(state);
    scored.texts.Clear();
    scored.row.Begin(in.columns);
    for (std::size_t row = 0; row < in.rows; ++row) {
        scored.row.Take(row);
        const bool isScored = scored.Score();
        if (out.unscored != nullptr) {
            out.unscored[row] = isScored ? 0 : 1;
        }
        WriteValue(isScored ? scored.result->GetResultValue() : nullptr, fOutputs[0].type, out.columns[0], row,
                   scored.texts);
        const ScoreResultField* fields = isScored ? scored.result->GetResultFields() : nullptr;
        for (std::size_t at = 1; at < fOutputs.size(); ++at) {
            const auto* value = fields == nullptr ? nullptr : fields->GetResultValue(fOutputs[at].name);
            WriteValue(IsEmptyText(value) ? nullptr : value, fOutputs[at].type, out.columns[at], row, scored.texts);
        }
    }
}

} // namespace veltrane::columns
