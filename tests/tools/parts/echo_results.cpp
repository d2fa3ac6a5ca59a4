#include "echo_results.h"

#include "results/result_columns.h"

#include <MCVeltrane_900/DictVar.h>
#include <MCVeltrane_900/StringValue.h>

#include <algorithm>
#include <cmath>
#include <deque>
#include <kit/inputs/host_values.h>
#include <string>
#include <vector>

namespace veltrane::host {
namespace {

using namespace MCVeltrane_900;

const std::vector<std::string> kKnown{"a", "b,c", "say \"x\""};
constexpr std::int32_t kUnknown = -1;

std::int32_t CodeOf(std::string_view text) {
    const auto found = std::find(kKnown.begin(), kKnown.end(), text);
    return found == kKnown.end() ? kUnknown : static_cast<std::int32_t>(found - kKnown.begin());
}

/// What a text that is there, or a cell that is no number, is shown as.
std::string Shown(std::string_view text, std::string_view unreadable) {
    return std::string(text) + (unreadable.data() != nullptr ? "<" + std::string(unreadable) + ">" : "");
}

const std::vector<ColumnField>& InputFields() {
    static const std::vector<ColumnField> kFields{{"number", DataType::DOUBLE, true, {}},
                                                  {"text", DataType::STRING, false, {}},
                                                  {"day", DataType::DATE, false, {}},
                                                  {"days", DataType::DATE_DAYS_SINCE_1960, false, {}},
                                                  {"truth", DataType::BOOLEAN, false, {}}};
    return kFields;
}

const std::vector<ColumnField>& OutputFields() {
    static const std::vector<ColumnField> kFields{{"twice", DataType::DOUBLE, true, {}},
                                                  {"shown", DataType::STRING, true, {}},
                                                  {"known", DataType::STRING, true, kKnown},
                                                  {"same day", DataType::DATE, true, {}},
                                                  {"count", DataType::DATE_DAYS_SINCE_1960, true, {}},
                                                  {"isTrue", DataType::BOOLEAN, true, {}}};
    return kFields;
}

class EchoState : public ColumnScorer::State {
public:
    std::deque<std::string> texts;
};

class EchoScorer : public ColumnScorer {
public:
    const std::vector<ColumnField>& Inputs() const override { return InputFields(); }
    const std::vector<ColumnField>& Outputs() const override { return OutputFields(); }
    bool NeedsOrder() const override { return false; }
    std::unique_ptr<State> NewState() const override { return std::make_unique<EchoState>(); }

    void Score(const InputBlock& in, State& state, const OutputBlock& out) const override {
        auto& texts = static_cast<EchoState&>(state).texts;
        texts.clear();
        const InputColumn* const columns = in.columns;
        const UnreadableCell* unreadable = columns[0].unreadable;
        const UnreadableCell* const end = unreadable + columns[0].unreadableCount;
        for (std::size_t row = 0; row < in.rows; ++row) {
            const double number = columns[0].numbers[row];
            const std::string_view text = columns[1].texts == nullptr ? std::string_view() : columns[1].texts[row];
            std::string_view bad;
            if (unreadable != end && unreadable->row == row) {
                bad = (unreadable++)->text;
            }
            texts.push_back(Shown(text, bad));
            out.unscored[row] = std::isnan(number) && bad.data() == nullptr ? 1 : 0;
            out.columns[0].numbers[row] = 2 * number;
            out.columns[1].texts[row] = texts.back();
            out.columns[2].codes[row] = CodeOf(text);
            for (const std::size_t place : {std::size_t{2}, std::size_t{3}, std::size_t{4}}) {
                const double* const numbers = columns[place].numbers;
                out.columns[place + 1].numbers[row] = numbers == nullptr ? std::nan("") : numbers[row];
            }
        }
    }
};

std::string_view TextOf(const ScoreValue* raw) {
    const auto* text = dynamic_cast<const StringValue*>(raw);
    return text == nullptr ? std::string_view() : std::string_view(text->GetText());
}

} // namespace

std::unique_ptr<BaseDictionary> EchoDictionary() {
    auto dictionary = std::make_unique<BaseDictionary>();
    const auto add = [&](const char* name, ScoreDictVar::VariableType type, ScoreDictVar::DateTimeType dateTimeType) {
        auto variable = std::make_unique<DictVar>(name, type);
        variable->SetDateTimeType(dateTimeType);
        dictionary->AddVar(name, variable.release());
    };
    add("number", ScoreDictVar::kNUMERIC_VAR, ScoreDictVar::DT_NONE);
    add("text", ScoreDictVar::STRING_VAR, ScoreDictVar::DT_NONE);
    add("day", ScoreDictVar::DATETIME_VAR, ScoreDictVar::DT_DATE);
    add("days", ScoreDictVar::DATETIME_VAR, ScoreDictVar::DT_DAYS_SINCE_1960);
    add("truth", ScoreDictVar::STRING_VAR, ScoreDictVar::DT_NONE);
    add("unused", ScoreDictVar::kNUMERIC_VAR, ScoreDictVar::DT_NONE);
    return dictionary;
}

EchoResults::EchoResults() : fScorer(std::make_unique<EchoScorer>()) {}

bool EchoResults::Has(const std::string& name) const {
    return std::any_of(OutputFields().begin(), OutputFields().end(),
                       [&](const ColumnField& field) { return field.name == name; });
}

void EchoResults::WriteHeader(CsvWriter& writer) const {
    for (const ColumnField& field : OutputFields()) {
        writer.Text(field.name);
    }
}

std::vector<DateForm> EchoResults::DateForms() const {
    return std::vector<DateForm>(OutputFields().size(), DateForm::DATE);
}

const RowFault* EchoResults::WriteCase(const CaseRow& row, CsvWriter& writer) {
    const Value number = veltrane_kit::FromHost(row.Get("number"), DataType::DOUBLE);
    const std::string_view bad = number.isInvalid ? TextOf(row.Get("number")) : std::string_view();
    if (number.isMissing && !number.isInvalid) {
        for (std::size_t cells = OutputFields().size(); cells > 0; --cells) {
            writer.Empty();
        }
        fFault = {&row.Fields()[0], "number", "is missing"};
        return &fFault;
    }
    const std::string_view text = TextOf(row.Get("text"));
    std::string scratch;
    if (number.isMissing) {
        writer.Empty();
    } else {
        writer.Number(2 * number.number);
    }
    writer.Text(Shown(text, bad));
    writer.Text(CodeOf(text) == kUnknown ? std::string_view() : text);
    const bool hasDay = !veltrane_kit::FromHost(row.Get("day"), DataType::DATE).isMissing;
    WriteValue(hasDay ? row.Get("day") : nullptr, DateForm::DATE, writer, scratch);
    const Value days = veltrane_kit::FromHost(row.Get("days"), DataType::DATE_DAYS_SINCE_1960);
    days.isMissing ? writer.Empty() : writer.Number(days.number);
    const Value truth = veltrane_kit::FromHost(row.Get("truth"), DataType::BOOLEAN);
    truth.isMissing ? writer.Empty() : writer.Text(truth.number != 0.0 ? "true" : "false");
    return nullptr;
}

} // namespace veltrane::host
