#include "columns/arrow/column_reader.h"

#include "columns/arrow/numbers.h"
#include "columns/fields/field_types.h"
#include "diagnostics/raise.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace veltrane::columns {

namespace {

using diagnostics::Message;
using diagnostics::Raise;

constexpr double kMissing = std::numeric_limits<double>::quiet_NaN();
constexpr std::string_view kTruths[] = {"false", "true"};
constexpr std::uint64_t kMarkOfTruths = 1; ///< dictionaries of batches have marks above it

} // namespace

void CheckType(const ColumnField& field, const ArrowSchema& schema, bool isUtf8) {
    const ArrowSchema* values = &schema;
    bool isTaken = true;
    if (schema.dictionary != nullptr) {
        values = schema.dictionary;
        if (values->release == nullptr) {
            Raise<Message::RELEASED_STRUCT>("dictionary schema", field.name);
        }
        isTaken = ReadFormat(schema.format).IsWhole() && values->dictionary == nullptr;
    }
    if (!isTaken || !Takes(field.type, ReadFormat(values->format), isUtf8)) {
        const char* format = isTaken ? values->format : schema.format;
        Raise<Message::UNFIT_COLUMN_TYPE>(field.name, std::string_view(format == nullptr ? "" : format),
                                          NameOf(field.type));
    }
}

ColumnReader::ColumnReader(const ColumnField& field, const ArrowSchema& schema, const ArrowArray& array,
                           const Rows& rows)
    : fField(field), fFormat(ReadFormat(schema.format)), fHasDictionary(schema.dictionary != nullptr) {
    fCells = CheckCells(field.name, array, fFormat, rows);
    if (fHasDictionary) {
        fEntryFormat = ReadFormat(schema.dictionary->format);
        CheckDictionary(array);
        return;
    }
    if (array.dictionary != nullptr) { // its places aren't the values that the type says
        CheckCount(field.name, "dictionaries", 1, 0);
    }
    if (fFormat.IsText()) {
        CheckTexts(field.name, fCells);
    }
}

void ColumnReader::CheckDictionary(const ArrowArray& array) {
    if (array.dictionary == nullptr) {
        Raise<Message::MISSING_PART>(fField.name, "dictionary");
    }
    const ArrowArray& dictionary = *array.dictionary;
    CheckLength(fField.name, dictionary, kMostRows);
    const auto size = static_cast<std::size_t>(dictionary.length);
    fEntries = CheckCells(fField.name, dictionary, fEntryFormat, Rows{0, size, {}});
    if (fEntryFormat.IsText()) {
        CheckTexts(fField.name, fEntries);
    }
    const std::size_t bad = FindBadIndex(fCells, dictionary.length);
    if (bad < fCells.rows) {
        Raise<Message::BAD_DICTIONARY_INDEX>(fField.name, std::to_string(bad), IndexText(fCells, bad),
                                             std::to_string(dictionary.length));
    }
}

void ColumnReader::Begin(ColumnRoom& room) {
    fRoom = &room;
    fInPlace = nullptr;
    fCodesInPlace = nullptr;
    if (fHasDictionary) {
        BeginDictionary();
    } else if (fField.type != DataType::STRING && fField.type != DataType::BOOLEAN) {
        fInPlace = NumbersInPlace(fCells);
    }
}

void ColumnReader::BeginDictionary() {
    const std::size_t size = fEntries.rows;
    fRoom->entries.reserve(1); // so that one without entries is there too
    fRoom->entryCodes.resize(size);
    for (std::size_t entry = 0; entry < size; ++entry) {
        fRoom->entryCodes[entry] = fEntries.IsNull(entry) ? -1 : static_cast<std::int32_t>(entry);
    }
    if (fField.type != DataType::STRING) {
        fRoom->entryNumbers.resize(size);
        columns::ReadNumbers(fEntries, fField.type, 0, size, fRoom->entryNumbers.data());
        return;
    }
    fRoom->entries.resize(size);
    for (std::size_t entry = 0; entry < size; ++entry) {
        std::string_view& text = fRoom->entries[entry];
        if (fEntries.IsNull(entry)) {
            text = "";
        } else {
            text = fEntryFormat.IsText() ? fEntries.TextAt(entry) : kTruths[fEntries.BitAt(entry) ? 1 : 0];
        }
    }
    fCodesInPlace = fEntries.HasNulls() ? nullptr : CodesInPlace(fCells);
    MarkDictionary();
}

/// A dictionary with the entries of the one before is the same, wherever it stands.
void ColumnReader::MarkDictionary() {
    const std::vector<std::string_view>& entries = fRoom->entries;
    std::size_t start = 0;
    const auto isKept = [&](std::size_t entry) {
        const std::size_t end = fRoom->keptEnds[entry];
        const bool isSame = std::string_view(fRoom->keptBytes).substr(start, end - start) == entries[entry];
        start = end;
        return isSame;
    };
    bool isSame = fRoom->mark != 0 && fRoom->keptEnds.size() == entries.size();
    for (std::size_t entry = 0; isSame && entry < entries.size(); ++entry) {
        isSame = isKept(entry);
    }
    if (isSame) {
        return;
    }
    fRoom->mark = std::max(fRoom->mark, kMarkOfTruths) + 1;
    fRoom->keptBytes.clear();
    fRoom->keptEnds.clear();
    for (const std::string_view entry : entries) {
        fRoom->keptBytes.append(entry);
        fRoom->keptEnds.push_back(fRoom->keptBytes.size());
    }
}

void ColumnReader::Read(std::size_t row, std::size_t count, InputColumn& column) {
    column = InputColumn();
    if (fField.type != DataType::STRING) {
        ReadNumbers(row, count, column);
    } else if (fHasDictionary) {
        ReadCodes(row, count, column);
    } else if (fFormat.IsText() || fFormat.family == Family::NULLS) {
        ReadTexts(row, count, column);
    } else {
        ReadTruths(row, count, column);
    }
}

void ColumnReader::ReadNumbers(std::size_t row, std::size_t count, InputColumn& column) {
    if (fInPlace != nullptr) {
        column.numbers = fInPlace + row;
        return;
    }
    fRoom->numbers.resize(count);
    double* const numbers = fRoom->numbers.data();
    column.numbers = numbers;
    if (!fHasDictionary) {
        columns::ReadNumbers(fCells, fField.type, row, count, numbers);
    } else {
        LookUp<double>(fCells, row, count, fRoom->entryNumbers.data(), kMissing, numbers);
    }
    if (fField.type == DataType::BOOLEAN) {
        SetAsideUntrue(count, column);
    }
}

/// A number that is neither 1 nor 0 is no truth: an invalid value, with its digits for a text.
void ColumnReader::SetAsideUntrue(std::size_t count, InputColumn& column) {
    double* const numbers = fRoom->numbers.data();
    fRoom->unreadable.clear();
    fRoom->unreadableTexts.clear();
    for (std::size_t at = 0; at < count; ++at) {
        if (numbers[at] == 0 || numbers[at] == 1 || std::isnan(numbers[at])) {
            continue;
        }
        constexpr std::size_t kLongest = 32;
        char digits[kLongest];
        fRoom->unreadableTexts.emplace_back(digits, std::to_chars(digits, digits + kLongest, numbers[at]).ptr);
        fRoom->unreadable.push_back({at, {}});
        numbers[at] = kMissing;
    }
    for (std::size_t at = 0; at < fRoom->unreadable.size(); ++at) {
        fRoom->unreadable[at].text = fRoom->unreadableTexts[at];
    }
    column.unreadable = fRoom->unreadable.data();
    column.unreadableCount = fRoom->unreadable.size();
}

void ColumnReader::ReadTexts(std::size_t row, std::size_t count, InputColumn& column) {
    fRoom->texts.resize(count);
    for (std::size_t at = 0; at < count; ++at) {
        fRoom->texts[at] = fCells.IsNull(row + at) ? std::string_view() : fCells.TextAt(row + at);
    }
    column.texts = fRoom->texts.data();
}

void ColumnReader::ReadCodes(std::size_t row, std::size_t count, InputColumn& column) {
    if (fCodesInPlace != nullptr) {
        column.codes = fCodesInPlace + row;
    } else {
        fRoom->codes.resize(count);
        LookUp<std::int32_t>(fCells, row, count, fRoom->entryCodes.data(), -1, fRoom->codes.data());
        column.codes = fRoom->codes.data();
    }
    column.dictionary = fRoom->entries.data();
    column.dictionarySize = fRoom->entries.size();
    column.dictionaryMark = fRoom->mark;
}

/// A boolean as documents write it.
void ColumnReader::ReadTruths(std::size_t row, std::size_t count, InputColumn& column) {
    fRoom->codes.resize(count);
    for (std::size_t at = 0; at < count; ++at) {
        fRoom->codes[at] = fCells.IsNull(row + at) ? -1 : static_cast<std::int32_t>(fCells.BitAt(row + at));
    }
    column.codes = fRoom->codes.data();
    column.dictionary = kTruths;
    column.dictionarySize = std::size(kTruths);
    column.dictionaryMark = kMarkOfTruths;
}

} // namespace veltrane::columns
