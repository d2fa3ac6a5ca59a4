#include "models/columns/model_rows.h"

#include "kit/results/typed_value.h"
#include "kit/values/values.h"
#include "models/kit/scoring.h"
#include "support/numbers.h"

#include <MCVeltrane_900/CaseRecord.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreDictionary.h>
#include <MCVeltrane_900/ScoreResult.h>
#include <MCVeltrane_900/ScoreResultField.h>
#include <MCVeltrane_900/StringValue.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <dlfcn.h>
#include <limits>
#include <map>
#include <regex>

namespace veltrane::tests {

namespace {

using namespace MCVeltrane_900;

/// What the plug-in that made a model exports.
GiveColumnScorer ExportOf(const ScoreModel& model) {
    Dl_info place{};
    const void* const* const vtable = *reinterpret_cast<const void* const* const*>(&model);
    if (dladdr(vtable, &place) == 0) {
        return nullptr;
    }
    void* const library = dlopen(place.dli_fname, RTLD_LAZY | RTLD_NOLOAD);
    return reinterpret_cast<GiveColumnScorer>(dlsym(library, "GiveMyColumnScorer"));
}

std::string Told(double number) {
    return std::isnan(number) ? "missing" : std::to_string(Bits(number));
}

/// A moment is told as one of the column's type.
std::string Told(const ScoreValue* value, DataType type) {
    std::string buffer;
    std::string unused;
    Value typed = value == nullptr ? Value() : veltrane_kit::TypedValue(*value, buffer);
    if (!typed.isMissing && veltrane_kit::IsMoment(typed.type)) {
        typed = veltrane_kit::CastValue(typed, type, unused);
    }
    if (typed.isMissing) {
        return "missing";
    }
    if (type == DataType::STRING) {
        return "'" + std::string(typed.text) + "'";
    }
    return std::isnan(typed.number) ? "not a number" : Told(typed.number);
}

std::string Told(std::string_view text) {
    return text.data() == nullptr ? "missing" : "'" + std::string(text) + "'";
}

/// Whether a cell's text is none of its field's type.
bool IsUnreadable(const std::string& text, DataType type) {
    return type != DataType::STRING && !text.empty() && veltrane_kit::ReadValue(text, type).isMissing;
}

} // namespace

std::vector<std::string> WordsOf(const std::string& document) {
    static const std::regex quoted("(?:value|binValue|score|targetCategory)=['\"]([^'\"<&]*)['\"]");
    std::vector<std::string> words;
    for (std::sregex_iterator at(document.begin(), document.end(), quoted), end; at != end && words.size() < 400;
         ++at) {
        words.push_back((*at)[1]);
    }
    return words;
}

ModelRows::ModelRows(const std::string& document) : ModelRows(document, ReadModel(document)) {}

ModelRows::ModelRows(const std::string& document, std::unique_ptr<ScoreModel> model)
    : fDocument(document), fModel(std::move(model)), fWords(WordsOf(document)) {
    const GiveColumnScorer give = ExportOf(*fModel);
    if (give == nullptr) {
        ADD_FAILURE() << "the plug-in exports no scorer of columns";
        return;
    }
    EXPECT_EQ(give(fModel.get(), ColumnScorer::kVersion + 1), nullptr) << "of a version that isn't known";
    fScorer.reset(give(fModel.get(), ColumnScorer::kVersion));
}

ModelRows::~ModelRows() = default;

void ModelRows::Fill(std::mt19937_64& random, std::size_t rows) {
    const auto below = [&random](std::size_t bound) { return static_cast<std::size_t>(random() % bound); };
    fRows = rows;
    fCells.assign(fScorer->Inputs().size(), {});
    for (std::size_t input = 0; input < fCells.size(); ++input) {
        const DataType type = fScorer->Inputs()[input].type;
        ModelCells& cells = fCells[input];
        for (std::size_t row = 0; row < rows; ++row) {
            std::string text;
            const std::size_t kind = below(12);
            if (kind < 6 && !fWords.empty()) {
                text = fWords[below(fWords.size())];
            } else if (kind < 10) {
                text = std::to_string(static_cast<int>(below(200)) - 40) + (below(2) == 0 ? "" : ".25");
            } else if (kind == 10) {
                text = type == DataType::BOOLEAN ? "true" : "2020-02-29";
            }
            cells.kept.push_back(text);
            if (IsUnreadable(text, type)) {
                cells.unreadable.push_back(row);
            }
            cells.numbers.push_back(
                text.empty() || type == DataType::STRING ? kNaN : veltrane_kit::ReadValue(text, type).number);
        }
        for (const std::string& text : cells.kept) {
            cells.texts.push_back(text.empty() ? std::string_view() : std::string_view(text));
            const auto known = std::find(cells.dictionary.begin(), cells.dictionary.end(), text);
            if (!text.empty() && known == cells.dictionary.end()) {
                cells.dictionary.emplace_back(text);
            }
        }
        for (const std::string& text : cells.kept) {
            const auto known = std::find(cells.dictionary.begin(), cells.dictionary.end(), text);
            cells.codes.push_back(text.empty() ? -1 : static_cast<std::int32_t>(known - cells.dictionary.begin()));
        }
    }
}

void ModelRows::FillHostile(std::mt19937_64& random, std::size_t rows) {
    constexpr double kInfinite = std::numeric_limits<double>::infinity();
    constexpr double kSizes[] = {0.0,  5e-324, 1e-310, 1e-160, 1e-20,   0.25,  0.5,     1.0,
                                 7.25, 1e17,   1e100,  1e154,  1.3e154, 1e200, 1.7e308, kInfinite};
    Fill(random, rows);
    for (std::size_t input = 0; input < fCells.size(); ++input) {
        if (!veltrane_kit::IsNumber(fScorer->Inputs()[input].type)) {
            continue;
        }
        ModelCells& cells = fCells[input];
        cells.unreadable.clear();
        for (std::size_t row = 0; row < rows; ++row) {
            const bool isMissing = random() % 12 == 0;
            const double number = kSizes[random() % std::size(kSizes)] * (random() % 2 == 0 ? 1.0 : -1.0);
            cells.kept[row] = isMissing ? "" : "0";
            cells.numbers[row] = isMissing ? kNaN : number;
        }
    }
}

std::unique_ptr<ScoreCaseRecord> ModelRows::RecordOf(std::size_t row) const {
    auto record = std::make_unique<CaseRecord>(static_cast<int>(fCells.size()));
    for (std::size_t input = 0; input < fCells.size(); ++input) {
        const ColumnField& field = fScorer->Inputs()[input];
        const std::string& text = fCells[input].kept[row];
        ScoreValue* value = nullptr;
        if (!text.empty()) {
            const bool isNumber = veltrane_kit::IsNumber(field.type) && !IsUnreadable(text, field.type);
            value = isNumber ? static_cast<ScoreValue*>(new NumericValue(fCells[input].numbers[row]))
                             : new StringValue(text);
        }
        record->Add(field.name, value);
    }
    return record;
}

ModelAnswers ModelRows::CaseByCase() const {
    const std::unique_ptr<ScoreModel> model = ReadModel(fDocument);
    const std::unique_ptr<ScoreResult> result(model->CreateResult());
    const std::vector<ColumnField>& outputs = fScorer->Outputs();
    ModelAnswers answers;
    for (std::size_t row = 0; row < fRows; ++row) {
        std::string answer;
        if (model->Score(RecordOf(row).get(), result.get()).IsError()) {
            answer = "unscored";
        } else {
            answer = Told(result->GetResultValue(), outputs.front().type);
        }
        for (std::size_t output = 1; output < outputs.size() && answer != "unscored"; ++output) {
            answer += " " + Told(result->GetResultFields()->GetResultValue(outputs[output].name), outputs[output].type);
        }
        answers.push_back(answer);
    }
    return answers;
}

ModelAnswers ModelRows::InBlocks(ColumnScorer::State& state, std::size_t length, std::size_t offset,
                                 bool hasDictionary) const {
    ModelAnswers answers;
    std::size_t first = 0;
    std::size_t rows = std::min(offset == 0 ? length : offset, fRows);
    while (first < fRows) {
        ScoreBlock(state, first, rows, hasDictionary, answers);
        first += rows;
        rows = std::min(length, fRows - first);
    }
    return answers;
}

void ModelRows::ScoreBlock(ColumnScorer::State& state, std::size_t first, std::size_t rows, bool hasDictionary,
                           ModelAnswers& answers) const {
    const std::vector<ColumnField>& outputs = fScorer->Outputs();
    std::vector<InputColumn> in(fCells.size());
    std::vector<std::vector<UnreadableCell>> unreadable(fCells.size());
    for (std::size_t input = 0; input < in.size(); ++input) {
        const ModelCells& cells = fCells[input];
        if (fScorer->Inputs()[input].type != DataType::STRING) {
            in[input].numbers = cells.numbers.data() + first;
            for (const std::size_t row : cells.unreadable) {
                if (row >= first && row < first + rows) {
                    unreadable[input].push_back({row - first, cells.kept[row]});
                }
            }
            in[input].unreadable = unreadable[input].data();
            in[input].unreadableCount = unreadable[input].size();
        } else if (hasDictionary) {
            in[input].codes = cells.codes.data() + first;
            in[input].dictionary = cells.dictionary.data();
            in[input].dictionarySize = cells.dictionary.size();
            in[input].dictionaryMark = input + 1;
        } else {
            in[input].texts = cells.texts.data() + first;
        }
    }
    std::vector<std::vector<double>> numbers(outputs.size(), std::vector<double>(rows));
    std::vector<std::vector<std::int32_t>> codes(outputs.size(), std::vector<std::int32_t>(rows));
    std::vector<std::vector<std::string_view>> texts(outputs.size(), std::vector<std::string_view>(rows));
    std::vector<OutputColumn> columns(outputs.size());
    for (std::size_t output = 0; output < outputs.size(); ++output) {
        if (!outputs[output].categories.empty()) {
            columns[output].codes = codes[output].data();
        } else if (outputs[output].type == DataType::STRING) {
            columns[output].texts = texts[output].data();
        } else {
            columns[output].numbers = numbers[output].data();
        }
    }
    std::vector<std::uint8_t> unscored(rows);
    fScorer->Score({rows, in.data()}, state, {columns.data(), unscored.data()});
    for (std::size_t row = 0; row < rows; ++row) {
        std::string answer;
        for (std::size_t output = 0; output < outputs.size(); ++output) {
            const std::int32_t code = codes[output][row];
            answer += output == 0 ? "" : " ";
            answer +=
                columns[output].codes != nullptr
                    ? Told(code < 0 ? std::string_view()
                                    : std::string_view(outputs[output].categories[static_cast<std::size_t>(code)]))
                : columns[output].texts != nullptr ? Told(texts[output][row])
                                                   : Told(numbers[output][row]);
        }
        answers.push_back(unscored[row] != 0 ? "unscored" : answer);
    }
}

} // namespace veltrane::tests
