#include "columns/arrow/result_column.h"

#include "columns/arrow/cells.h"
#include "columns/arrow/format.h"
#include "diagnostics/raise.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>

namespace veltrane::columns {

namespace {

using diagnostics::Message;
using diagnostics::Raise;

constexpr std::size_t kMostBytes = std::numeric_limits<std::int32_t>::max();
constexpr std::size_t kFirstBytes = 4096;
constexpr std::size_t kBitsOfByte = 8;
constexpr double kMicrosecondsOfSecond = 1e6;

void RequireBytes(const std::string& name, std::size_t bytes) {
    if (bytes > kMostBytes) {
        Raise<Message::RESULTS_TOO_LONG>(name, std::to_string(kMostBytes));
    }
}

std::shared_ptr<Memory> MakeMemory(std::size_t size) {
    return std::make_shared<Memory>(size);
}

std::shared_ptr<const ArrayParts> MakeDictionary(const ColumnField& field) {
    const std::vector<std::string>& categories = field.categories;
    std::size_t bytes = 0;
    for (const std::string& category : categories) {
        bytes += category.size();
    }
    RequireBytes(field.name, bytes);
    const auto offsets = MakeMemory((categories.size() + 1) * sizeof(std::int32_t));
    const auto texts = MakeMemory(std::max<std::size_t>(bytes, 1));
    std::int32_t end = 0;
    offsets->As<std::int32_t>()[0] = 0;
    for (std::size_t at = 0; at < categories.size(); ++at) {
        std::copy(categories[at].begin(), categories[at].end(), texts->As<char>() + end);
        end += static_cast<std::int32_t>(categories[at].size());
        offsets->As<std::int32_t>()[at + 1] = end;
    }
    auto parts = std::make_shared<ArrayParts>();
    parts->length = static_cast<std::int64_t>(categories.size());
    parts->buffers = {nullptr, offsets, texts};
    return parts;
}

/// Bytes of the values of so many rows.
std::size_t ValueBytes(const ResultFormat& format, std::size_t rows) {
    switch (format.format[0]) {
    case 'b':
        return (rows + kBitsOfByte - 1) / kBitsOfByte;
    case 'i':
        return rows * sizeof(std::int32_t);
    case 'u':
    case 'z':
        return (rows + 1) * sizeof(std::int32_t);
    default:
        return rows * (format.format == "tdD" ? sizeof(std::int32_t) : sizeof(std::int64_t));
    }
}

std::string TextOf(double number) {
    constexpr std::size_t kLongest = 32;
    char digits[kLongest];
    return std::string(digits, std::to_chars(digits, digits + kLongest, number).ptr);
}

} // namespace

ResultFormat ResultFormatOf(const ColumnField& field, bool isUtf8, bool wholeNumbersAsDoubles) {
    const bool hasCategories = field.type == DataType::STRING && !field.categories.empty();
    const bool isDouble = field.type == DataType::INTEGER && wholeNumbersAsDoubles;
    const char* format = hasCategories ? "i" : FormatOf(isDouble ? DataType::DOUBLE : field.type, isUtf8);
    return {field, format, isUtf8, hasCategories ? MakeDictionary(field) : nullptr};
}

ResultColumn::ResultColumn(const ResultFormat& format, std::size_t rows)
    : fFormat(format), fRows(rows), fHasDoubles(format.format == "g"),
      fUnits(format.format.starts_with("t") && format.format != "tdD" ? kMicrosecondsOfSecond : 1),
      fValues(MakeMemory(ValueBytes(format, rows))), fValidity(MakeMemory((rows + kBitsOfByte - 1) / kBitsOfByte)) {
    if (format.field.type == DataType::STRING && !format.HasCategories()) {
        fBytes = MakeMemory(kFirstBytes);
        fValues->As<std::int32_t>()[0] = 0;
    }
}

OutputColumn ResultColumn::PlaceFor(ResultRoom& room, std::size_t row, std::size_t count) {
    OutputColumn column;
    if (fFormat.HasCategories()) {
        column.codes = fValues->As<std::int32_t>() + row;
    } else if (fHasDoubles) {
        column.numbers = fValues->As<double>() + row;
    } else if (fBytes != nullptr) {
        room.texts.resize(count);
        column.texts = room.texts.data();
    } else {
        room.numbers.resize(count);
        column.numbers = room.numbers.data();
    }
    return column;
}

void ResultColumn::Take(const ResultRoom& room, std::size_t row, std::size_t count) {
    if (fFormat.HasCategories()) {
        std::int32_t* const codes = fValues->As<std::int32_t>() + row;
        Mark(row, count, [codes](std::size_t at) { return codes[at] >= 0; });
    } else if (fHasDoubles) {
        const double* const numbers = fValues->As<double>() + row;
        Mark(row, count, [numbers](std::size_t at) { return !std::isnan(numbers[at]); });
    } else if (fBytes != nullptr) {
        TakeTexts(room, row, count);
    } else if (fFormat.format == "b") {
        TakeTruths(room, row, count);
    } else if (fFormat.format == "tdD") {
        TakeWhole<std::int32_t>(room, row, count);
    } else {
        TakeWhole<std::int64_t>(room, row, count);
    }
}

/// Notes which rows have a value.
template <typename IsThere>
void ResultColumn::Mark(std::size_t row, std::size_t count, IsThere isThere) {
    std::uint8_t* byte = fValidity->As<std::uint8_t>() + row / kBitsOfByte;
    std::size_t there = 0;
    for (std::size_t at = 0; at < count; at += kBitsOfByte, ++byte) {
        const std::size_t bits = std::min(kBitsOfByte, count - at);
        unsigned mask = 0;
        for (std::size_t bit = 0; bit < bits; ++bit) {
            const unsigned one = isThere(at + bit) ? 1 : 0;
            mask |= one << bit;
            there += one;
        }
        *byte = static_cast<std::uint8_t>(mask);
    }
    fNulls += count - there;
}

void ResultColumn::TakeTexts(const ResultRoom& room, std::size_t row, std::size_t count) {
    Mark(row, count, [&room](std::size_t at) { return room.texts[at].data() != nullptr; });
    std::int32_t* const ends = fValues->As<std::int32_t>() + row + 1;
    for (std::size_t at = 0; at < count; ++at) {
        if (fFormat.isUtf8 && !IsUtf8Text(room.texts[at])) {
            Raise<Message::BAD_COLUMN_TEXT>(fFormat.field.name, std::to_string(row + at));
        }
        Append(room.texts[at]);
        ends[at] = static_cast<std::int32_t>(fUsedBytes);
    }
}

void ResultColumn::Append(std::string_view text) {
    const std::size_t size = fUsedBytes + text.size();
    RequireBytes(fFormat.field.name, size);
    if (size > fBytes->Size()) {
        fBytes->Grow(fUsedBytes, std::max(size, 2 * fBytes->Size()));
    }
    std::copy(text.begin(), text.end(), fBytes->As<char>() + fUsedBytes);
    fUsedBytes = size;
}

void ResultColumn::TakeTruths(const ResultRoom& room, std::size_t row, std::size_t count) {
    Mark(row, count, [&room](std::size_t at) { return !std::isnan(room.numbers[at]); });
    std::uint8_t* const bytes = fValues->As<std::uint8_t>() + row / kBitsOfByte;
    std::memset(bytes, 0, (count + kBitsOfByte - 1) / kBitsOfByte);
    for (std::size_t at = 0; at < count; ++at) {
        bytes[at / kBitsOfByte] |= static_cast<std::uint8_t>((room.numbers[at] == 1 ? 1U : 0U) << at % kBitsOfByte);
    }
}

/// Days, microseconds and whole numbers. A moment goes to the nearest microsecond and a date to its day; anything else
/// that isn't whole, or too large, is refused: it would be another value.
template <typename Whole>
void ResultColumn::TakeWhole(const ResultRoom& room, std::size_t row, std::size_t count) {
    Mark(row, count, [&room](std::size_t at) { return !std::isnan(room.numbers[at]); });
    Whole* const values = fValues->As<Whole>() + row;
    // The least whole number and the one above the greatest are powers of two, which are doubles.
    constexpr auto kLeast = static_cast<double>(std::numeric_limits<Whole>::min());
    const bool isDate = fFormat.format == "tdD";
    const bool isWhole = fFormat.format == "l";
    for (std::size_t at = 0; at < count; ++at) {
        const double number = room.numbers[at];
        if (std::isnan(number)) {
            values[at] = 0;
            continue;
        }
        const double whole = isDate ? std::floor(number) : std::nearbyint(number * fUnits);
        if (!(whole >= kLeast && whole < -kLeast) || (isWhole && whole != number)) {
            Raise<Message::UNFIT_RESULT>(fFormat.field.name, std::to_string(row + at), TextOf(number), fFormat.format);
        }
        values[at] = static_cast<Whole>(whole);
    }
}

Held<ArrowArray> ResultColumn::Finish() {
    ArrayParts parts;
    parts.length = static_cast<std::int64_t>(fRows);
    parts.nulls = static_cast<std::int64_t>(fNulls);
    parts.buffers = {fNulls == 0 ? nullptr : fValidity, fValues};
    if (fBytes != nullptr) {
        parts.buffers.push_back(fBytes);
    }
    parts.dictionary = fFormat.dictionary;
    return MakeArray(std::move(parts));
}

} // namespace veltrane::columns
