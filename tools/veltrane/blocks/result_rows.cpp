#include "blocks/result_rows.h"

#include <charconv>
#include <cmath>
#include <cstring>
#include <kit/inputs/host_values.h>

namespace veltrane::host {
namespace {

constexpr unsigned kKeptBits = 6;
constexpr std::size_t kKeptNumbers = std::size_t{1} << kKeptBits;

std::uint64_t BitsOf(double number) {
    std::uint64_t bits;
    std::memcpy(&bits, &number, sizeof bits);
    return bits;
}

std::size_t PlaceOf(std::uint64_t bits) {
    constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15U;
    return static_cast<std::size_t>(bits * kSpread >> (64 - kKeptBits));
}

} // namespace

/// The first entries are of a number that is not a number, of which none is written.
NumberTexts::NumberTexts() : fKept(kKeptNumbers, Kept{~std::uint64_t{0}, 0, {}}) {}

void NumberTexts::Put(double number, TextBuffer& text) {
    const std::uint64_t bits = BitsOf(number);
    Kept& kept = fKept[PlaceOf(bits)];
    if (kept.bits != bits) {
        char* const digits = kept.text.data();
        kept.size = static_cast<std::size_t>(std::to_chars(digits, digits + kLongest, number).ptr - digits);
        kept.bits = bits;
    }
    std::memcpy(text.End(), kept.text.data(), kLongest);
    text.Add(kept.size);
}

ResultRows::ResultRows(const ColumnScorer& scorer, const std::vector<DateForm>& forms, char delimiter)
    : fDelimiter(delimiter), fQuoting(delimiter), fUnscored(ColumnScorer::kMostRows) {
    for (const ColumnField& field : scorer.Outputs()) {
        Column column;
        column.type = field.type;
        if (!forms.empty()) {
            column.form = forms[fColumns.size()];
        }
        for (const std::string& category : field.categories) {
            TextBuffer cell;
            PutText(category, cell);
            column.categories.emplace_back(cell.Text());
        }
        if (field.type != DataType::STRING) {
            column.numbers.resize(ColumnScorer::kMostRows);
        } else if (!field.categories.empty()) {
            column.codes.resize(ColumnScorer::kMostRows);
        } else {
            column.texts.resize(ColumnScorer::kMostRows);
        }
        fColumns.push_back(std::move(column));
    }
    for (Column& column : fColumns) {
        fOutputs.push_back({column.numbers.empty() ? nullptr : column.numbers.data(),
                            column.codes.empty() ? nullptr : column.codes.data(),
                            column.texts.empty() ? nullptr : column.texts.data()});
    }
    fBlock = {fOutputs.data(), fUnscored.data()};
}

void ResultRows::Put(std::size_t row, TextBuffer& text) {
    const bool isUnscored = IsUnscored(row);
    for (std::size_t at = 0; at < fColumns.size(); ++at) {
        text.Need(NumberTexts::kLongest + 1);
        if (at > 0) {
            text.Put(fDelimiter);
        }
        if (!isUnscored) {
            PutCell(fColumns[at], row, text);
        }
    }
}

/// There is room for a number.
inline void ResultRows::PutCell(Column& column, std::size_t row, TextBuffer& text) {
    if (!column.numbers.empty()) {
        const double number = column.numbers[row];
        if (!std::isnan(number)) {
            PutNumber(column, number, text);
        }
    } else if (!column.codes.empty()) {
        const std::int32_t code = column.codes[row];
        if (code >= 0) {
            const std::string& cell = column.categories[static_cast<std::size_t>(code)];
            text.Need(cell.size());
            text.Put(cell);
        }
    } else {
        PutText(column.texts[row], text);
    }
}

inline void ResultRows::PutNumber(Column& column, double number, TextBuffer& text) {
    if (column.type == DataType::BOOLEAN) {
        text.Put(std::string_view(number != 0.0 ? "true" : "false"));
    } else if (!veltrane_kit::IsMoment(column.type)) {
        column.numberTexts.Put(number, text);
    } else if (const Value value = veltrane_kit::MakeNumber(number, column.type); !column.form) {
        PutText(veltrane_kit::TextOf(value, fText), text);
    } else {
        fText.clear();
        const auto seconds = veltrane_kit::MakeMoment(value).GetDoubleValue(MCVeltrane_900::ScoreDictVar::DT_DATETIME);
        AppendDate(fText, seconds, *column.form);
        PutText(fText, text);
    }
}

void ResultRows::PutText(std::string_view cell, TextBuffer& text) const {
    if (!fQuoting.Needs(cell)) {
        text.Need(cell.size());
        text.Put(cell);
        return;
    }
    text.Need(2 * cell.size() + 2);
    CsvQuoting::Quote(cell, [&](char byte) { text.Put(byte); });
}

} // namespace veltrane::host
