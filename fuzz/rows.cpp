#include "kit/values/values.h"
#include "roads.h"

#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/StringValue.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

namespace veltrane::fuzz {

using namespace MCVeltrane_900;

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNumbers[] = {0.0,       1.0,  -0.0,  -1.0,  0.5,    2.0,        -2.5,   1e308,    -1e308,
                               kInfinity, 1e15, 100.0, 86399, 5e-324, -kInfinity, 1e-300, 20000.25, 4503599627370497.0};
constexpr std::string_view kTexts[] = {"",      " ",          "abc",        "1",     "-2.50", "true",
                                       "1e400", "2020-02-29", "\xC3\x84 b", "a\xff", "n/a"};

/// The texts in quotes of a document, from anywhere in it.
std::vector<std::string_view> WordsOf(std::string_view document, Chance& chance) {
    constexpr std::size_t kMost = 24;
    constexpr std::size_t kLongest = 60;
    std::vector<std::string_view> words;
    for (std::size_t i = 0; i < kMost && !document.empty(); ++i) {
        const std::size_t opening = document.find_first_of("\"'", chance.Below(document.size()));
        const std::size_t closing =
            opening == std::string_view::npos ? opening : document.find(document[opening], opening + 1);
        if (closing != std::string_view::npos && closing - opening < kLongest) {
            words.push_back(document.substr(opening + 1, closing - opening - 1));
        }
    }
    return words;
}

/// Mostly few rows; at times more than a scorer computes at once, and more than a block.
std::size_t RowCount(Chance& chance) {
    constexpr std::size_t kFew = 12;
    switch (chance.Below(128)) {
    case 0:
        return ColumnScorer::kMostRows - 1 + chance.Below(4);
    case 1:
    case 2:
        return 250 + chance.Below(20);
    default:
        return chance.Below(kFew);
    }
}

double NumberIn(std::string_view text, DataType type) {
    const double number = veltrane_kit::ReadValue(text, type).number;
    return std::isinf(number) ? veltrane_kit::kMissing : number;
}

} // namespace

Chance::Chance(std::string_view bytes) : fState(14695981039346656037ULL) {
    for (const char byte : bytes) {
        fState = (fState ^ static_cast<unsigned char>(byte)) * 1099511628211ULL;
    }
}

std::size_t Chance::Below(std::size_t bound) {
    fState += 0x9E3779B97F4A7C15ULL;
    std::uint64_t mixed = fState;
    mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9ULL;
    mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EBULL;
    return static_cast<std::size_t>((mixed ^ (mixed >> 31U)) % bound);
}

Cell Cell::OfNumber(double number) {
    return std::isnan(number) ? Cell() : Cell{Kind::NUMBER, std::bit_cast<std::uint64_t>(number), {}};
}

Cell Cell::OfText(std::string_view text) {
    return Cell{Kind::TEXT, 0, std::string(text)};
}

Rows::Rows(const ColumnScorer& scorer, std::string_view document, Chance& chance)
    : fScorer(scorer), fCount(RowCount(chance)) {
    const std::vector<std::string_view> words = WordsOf(document, chance);
    fFields.reserve(scorer.Inputs().size());
    for (const ColumnField& input : scorer.Inputs()) {
        Field& field = fFields.emplace_back();
        field.type = input.type;
        Fill(field, words, chance);
    }
}

void Rows::Fill(Field& field, const std::vector<std::string_view>& words, Chance& chance) const {
    const bool isText = field.type == DataType::STRING;
    field.kept.reserve(fCount); // views stay
    for (std::size_t row = 0; row < fCount; ++row) {
        const std::size_t kind = chance.Below(8);
        std::string& text = field.kept.emplace_back();
        double number = veltrane_kit::kMissing;
        if (kind < 3 && !words.empty()) {
            text = words[chance.Below(words.size())];
        } else if (kind < 5) {
            text = kTexts[chance.Below(std::size(kTexts))];
        } else if (kind < 7) {
            number = kNumbers[chance.Below(std::size(kNumbers))];
        }
        if (isText) {
            const auto known = std::find(field.dictionary.begin(), field.dictionary.end(), text);
            field.codes.push_back(kind == 7 ? -1 : static_cast<std::int32_t>(known - field.dictionary.begin()));
            if (kind != 7 && known == field.dictionary.end()) {
                field.dictionary.emplace_back(text);
            }
            field.texts.push_back(kind == 7 ? std::string_view() : std::string_view(text));
        } else {
            number = text.empty() ? number : NumberIn(text, field.type);
            field.numbers.push_back(number);
            if (!text.empty() && std::isnan(number)) {
                field.unreadable.push_back(row);
            }
        }
    }
}

std::unique_ptr<CaseRecord> Rows::Record(std::size_t row) const {
    auto record = std::make_unique<CaseRecord>(static_cast<int>(fFields.size()));
    for (std::size_t i = 0; i < fFields.size(); ++i) {
        const Field& field = fFields[i];
        const bool isText = field.type == DataType::STRING;
        std::unique_ptr<ScoreValue> value;
        if (isText ? field.codes[row] >= 0
                   : std::binary_search(field.unreadable.begin(), field.unreadable.end(), row)) {
            value = std::make_unique<StringValue>(field.kept[row]);
        } else if (!isText) {
            value = std::make_unique<NumericValue>(field.numbers[row]);
        }
        record->Add(fScorer.Inputs()[i].name, value.release());
    }
    return record;
}

/// Room for the results of a block, and the answers of the blocks before.
struct Rows::Results {
    Results(const ColumnScorer& scorer, bool isSparse)
        : fields(scorer.Outputs()), numbers(fields.size()), codes(fields.size()), texts(fields.size()),
          columns(fields.size()) {
        for (std::size_t i = 0; i < fields.size(); ++i) {
            numbers[i].resize(ColumnScorer::kMostRows);
            codes[i].resize(ColumnScorer::kMostRows);
            texts[i].resize(ColumnScorer::kMostRows);
            if (isSparse && i % 2 == 1) {
                continue;
            }
            if (!fields[i].categories.empty()) {
                columns[i].codes = codes[i].data();
            } else if (fields[i].type == DataType::STRING) {
                columns[i].texts = texts[i].data();
            } else {
                columns[i].numbers = numbers[i].data();
            }
        }
    }

    Cell CellOf(std::size_t output, std::size_t row) const {
        const OutputColumn& column = columns[output];
        if (column.numbers != nullptr) {
            return Cell::OfNumber(column.numbers[row]);
        }
        if (column.codes != nullptr) {
            const std::int32_t code = column.codes[row];
            return code < 0 ? Cell() : Cell::OfText(fields[output].categories.at(static_cast<std::size_t>(code)));
        }
        const bool isMissing = column.texts == nullptr || column.texts[row].data() == nullptr;
        return isMissing ? Cell() : Cell::OfText(column.texts[row]);
    }

    const std::vector<ColumnField>& fields;
    std::vector<std::vector<double>> numbers;
    std::vector<std::vector<std::int32_t>> codes;
    std::vector<std::vector<std::string_view>> texts;
    std::vector<OutputColumn> columns;
    std::vector<std::uint8_t> unscored = std::vector<std::uint8_t>(ColumnScorer::kMostRows);
    std::vector<Answer> answers;
};

std::vector<Answer> Rows::InBlocks(ColumnScorer::State& state, std::size_t length, bool hasDictionaries,
                                   bool isSparse) {
    Results results(fScorer, isSparse);
    for (std::size_t first = 0; first < fCount || fCount == 0; first += length) {
        ScoreBlock(state, first, std::min(length, fCount - first), hasDictionaries, results);
        if (fCount == 0) {
            break;
        }
    }
    return std::move(results.answers);
}

void Rows::ScoreBlock(ColumnScorer::State& state, std::size_t first, std::size_t rows, bool hasDictionaries,
                      Results& results) const {
    std::vector<InputColumn> in(fFields.size());
    std::vector<std::vector<UnreadableCell>> unreadable(fFields.size());
    for (std::size_t i = 0; i < in.size(); ++i) {
        const Field& field = fFields[i];
        if (field.type != DataType::STRING) {
            in[i].numbers = field.numbers.data() + first;
            for (const std::size_t row : field.unreadable) {
                if (row >= first && row < first + rows) {
                    unreadable[i].push_back({row - first, field.kept[row]});
                }
            }
            in[i].unreadable = unreadable[i].data();
            in[i].unreadableCount = unreadable[i].size();
        } else if (hasDictionaries) {
            in[i].codes = field.codes.data() + first;
            in[i].dictionary = field.dictionary.data();
            in[i].dictionarySize = field.dictionary.size();
            in[i].dictionaryMark = i + 1;
        } else {
            in[i].texts = field.texts.data() + first;
        }
    }
    fScorer.Score({rows, in.data()}, state, {results.columns.data(), results.unscored.data()});
    for (std::size_t row = 0; row < rows; ++row) {
        Answer& answer = results.answers.emplace_back();
        answer.isScored = results.unscored[row] == 0;
        for (std::size_t output = 0; output < results.fields.size(); ++output) {
            answer.cells.push_back(results.CellOf(output, row));
        }
    }
}

} // namespace veltrane::fuzz
