// The values of an input field for blocks of cases. Most rows need no treatment, and most fields have a column that can
// be used as it is; a row that does need one is treated by itself as a case is.
#include "kit/columns/any_row.h"
#include "kit/columns/column.h"
#include "kit/columns/repeated_texts.h"
#include "kit/inputs/input_field.h"

#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/StringValue.h>

#include <algorithm>
#include <cmath>

namespace veltrane_kit {

using namespace MCVeltrane_900;
using veltrane::InputColumn;

namespace {

/// What is kept for each entry, by each expression over it, is bounded: texts of a greater dictionary are plain ones.
constexpr std::size_t kMostEntries = 65536;

} // namespace

/// What is known of the entries of the dictionary that came last.
struct InputField::Entries {
    std::vector<FieldValue> values; ///< their texts stand in `texts`; the last one is that of a missing cell
    std::vector<std::uint8_t> refused;
    std::vector<std::uint32_t> rounds; ///< in which an entry was treated
    std::vector<std::string_view> views;
    std::vector<std::uint8_t> invalid;
    std::uint32_t round = 0;
    TextArena texts;
    EntryTable table;

    bool isOfHost = false;    ///< whether the dictionary is one that came in
    std::uint64_t number = 0; ///< of the dictionary: its mark, or how many were found before

    /// @param size with the missing cell
    void Begin(bool ofHost, std::uint64_t dictionary, std::size_t size) {
        if (table.size == size && isOfHost == ofHost && number == dictionary) {
            return;
        }
        isOfHost = ofHost;
        number = dictionary;
        ++round;
        texts.Forget();
        if (rounds.size() < size) {
            rounds.resize(size);
            values.resize(size);
            refused.resize(size);
            views.resize(size);
            invalid.resize(size);
        }
        table = {views.data(), invalid.data(), size, round};
    }
};

/// What a field keeps from block to block.
class InputField::Room : public Block::Memory {
public:
    explicit Room(std::size_t rows) : fRows(rows) {}

    double* Numbers() { return Of(fNumbers); }
    std::string_view* Texts() { return Of(fTexts); }
    std::string_view* Expanded() { return Of(fExpanded); }
    std::int32_t* Categories() { return Of(fCategories); }
    std::int32_t* Places() { return Of(fPlaces); }
    std::uint8_t* Invalid() { return Of(fInvalid); }

    Entries entries;
    RepeatedTexts repeats;

private:
    template <typename T>
    T* Of(std::vector<T>& room) {
        room.resize(fRows);
        return room.data();
    }

    std::size_t fRows;
    std::vector<double> fNumbers;
    std::vector<std::string_view> fTexts;
    std::vector<std::string_view> fExpanded;
    std::vector<std::int32_t> fCategories;
    std::vector<std::int32_t> fPlaces;
    std::vector<std::uint8_t> fInvalid;
};

/// The rows of a field while they are filled.
class InputField::Rows {
public:
    Rows(Block& block, int slot, DataType type, std::uint8_t* refused)
        : fField(block.Field(slot)), fRefused(refused), count(block.Rows()), room(RoomOf(block, slot)) {
        fField = FieldColumn();
        fField.type = type;
    }

    FieldColumn& Field() { return fField; }

    /// Codes for all rows, unknown ones at first.
    void NeedCodes() {
        fCategories = room.Categories();
        std::fill(fCategories, fCategories + count, ValueCodes::kUnknown);
        fField.categories = fCategories;
    }

    /// The texts of the rows, by themselves.
    const std::string_view* Expand(const InputColumn& column) {
        std::string_view* const texts = room.Expanded();
        for (std::size_t row = 0; row < count; ++row) {
            texts[row] = column.codes[row] < 0 ? std::string_view() : column.dictionary[column.codes[row]];
        }
        return texts;
    }

    /// The place of a row in the table of entries.
    void SetEntry(std::size_t row, std::int32_t place) {
        if (fPlaces == nullptr) {
            fPlaces = room.Places();
            fField.entries = fPlaces;
            fField.table = &room.entries.table;
        }
        fPlaces[row] = place;
    }

    /// What goes beside a value, wherever that stands.
    void SetBeside(std::size_t row, int category, bool isInvalid, bool isScorable) {
        if (fCategories != nullptr) {
            fCategories[row] = category;
        }
        if (isInvalid) {
            MarkInvalid(row);
        }
        if (!isScorable && fRefused != nullptr) {
            fRefused[row] = 1;
        }
    }

private:
    static Room& RoomOf(Block& block, int slot) {
        std::unique_ptr<Block::Memory>& memory = block.MemoryOf(slot);
        if (memory == nullptr) {
            memory = std::make_unique<Room>(block.MostRows());
        }
        return static_cast<Room&>(*memory);
    }

    void MarkInvalid(std::size_t row) {
        if (fInvalid == nullptr) {
            fInvalid = room.Invalid();
            std::fill(fInvalid, fInvalid + count, std::uint8_t{0});
            fField.invalid = fInvalid;
        }
        fInvalid[row] = 1;
    }

    FieldColumn& fField;
    std::uint8_t* fRefused;
    std::int32_t* fCategories = nullptr;
    std::int32_t* fPlaces = nullptr;
    std::uint8_t* fInvalid = nullptr;

public:
    const std::size_t count;
    Room& room;
};

InputField::PlainNumbers InputField::FindPlainNumbers() const {
    PlainNumbers plain;
    const bool isListed = fListed > 0 || !fMissingNumbers.empty() || !fInvalidNumbers.empty();
    plain.areKnown = fHoldsNumbers && !fNeedsCode && !isListed && fField->intervals.size() <= 1;
    if (!plain.areKnown) {
        return plain;
    }
    const bool boundsCount = fOutliers != OutlierTreatment::AS_IS;
    plain.least = boundsCount ? fLow : -kInfinity;
    plain.greatest = boundsCount ? fHigh : kInfinity;
    for (const Interval& interval : fField->intervals) {
        const double left = interval.leftClosed ? interval.left : std::nextafter(interval.left, kInfinity);
        const double right = interval.rightClosed ? interval.right : std::nextafter(interval.right, -kInfinity);
        plain.least = std::max(plain.least, left);
        plain.greatest = std::min(plain.greatest, right);
    }
    if (fHoldsWholeNumbers) {
        constexpr double kMostRounded = 2251799813685248.0;
        plain.rounding = PlainNumbers::kRoundingToWhole;
        plain.least = std::max(plain.least, -kMostRounded);
        plain.greatest = std::min(plain.greatest, kMostRounded);
    }
    plain.missing = fMissingReplacement.value.isMissing && !fMissingRefused ? 0.0 : 1.0;
    return plain;
}

bool InputField::ReadRow(double number, FieldValue& value) const {
    bool isScorable = false;
    if (fHoldsNumbers) {
        isScorable = ReadNumber(number, value);
    } else {
        const NumericValue raw(number);
        isScorable = Treat(&raw, value);
    }
    if (!isScorable) {
        value = FieldValue();
    }
    return isScorable;
}

bool InputField::ReadRow(std::string_view text, FieldValue& value) const {
    const bool isScorable = text.data() == nullptr ? GiveMissing(value) : ReadText(text, value);
    if (!isScorable) {
        value = FieldValue();
    }
    return isScorable;
}

void InputField::ReadBlock(const InputColumn& column, Block& block, int slot, std::uint8_t* refused,
                           Repeats repeats) const {
    Rows rows(block, slot, fField->type, refused);
    if (fNeedsCode) {
        rows.NeedCodes();
    }
    const bool holdsTexts = IsText(fField->type);
    if (holdsTexts && column.codes != nullptr && column.dictionarySize <= kMostEntries) {
        ReadEntries(column, rows);
    } else if (holdsTexts && (column.codes != nullptr || column.texts != nullptr)) {
        const std::string_view* const texts = column.codes != nullptr ? rows.Expand(column) : column.texts;
        if (repeats == Repeats::ARE_LEFT || !ReadRepeats(texts, rows)) {
            ReadTexts(texts, rows);
        }
    } else if (!holdsTexts && column.numbers != nullptr) {
        ReadNumbers(column, rows);
    } else {
        ReadNothing(rows);
    }
}

void InputField::ReadNumbers(const InputColumn& column, Rows& rows) const {
    const PlainNumbers& plain = fPlain;
    if (plain.areKnown && column.unreadableCount == 0 && !AnyRow(column.numbers, rows.count, plain)) {
        rows.Field().numbers = column.numbers;
        return;
    }
    double* const numbers = rows.room.Numbers();
    rows.Field().numbers = numbers;
    const veltrane::UnreadableCell* unreadable = column.unreadable;
    const veltrane::UnreadableCell* const end = unreadable + column.unreadableCount;
    for (std::size_t row = 0; row < rows.count; ++row) {
        numbers[row] = column.numbers[row];
        const bool isUnreadable = unreadable != end && unreadable->row == row;
        if (!isUnreadable && plain.areKnown && plain(numbers[row]) == 0.0) {
            continue;
        }
        FieldValue value;
        const bool isScorable = isUnreadable ? ReadUnreadable(unreadable->text, value) : ReadRow(numbers[row], value);
        unreadable += isUnreadable ? 1 : 0;
        numbers[row] = value.number;
        rows.SetBeside(row, value.category, value.isInvalid, isScorable);
    }
}

/// A cell of which the caller could make nothing, as the text that it is.
bool InputField::ReadUnreadable(std::string_view text, FieldValue& value) const {
    const StringValue raw{std::string(text)};
    return Read(&raw, value);
}

void InputField::ReadTexts(const std::string_view* texts, Rows& rows) const {
    const bool isPlain =
        !fNeedsCode && !fHasMissing && !fChecksValues && fMissingReplacement.value.isMissing && !fMissingRefused;
    const bool isUsedAsItIs =
        isPlain && (!fEmptyIsMissing || std::none_of(texts, texts + rows.count, [](std::string_view text) {
            return text.empty() && text.data() != nullptr;
        }));
    if (isUsedAsItIs) {
        rows.Field().texts = texts;
        return;
    }
    std::string_view* const treated = rows.room.Texts();
    rows.Field().texts = treated;
    for (std::size_t row = 0; row < rows.count; ++row) {
        FieldValue value;
        const bool isScorable = ReadRow(texts[row], value);
        treated[row] = ViewOf(value);
        rows.SetBeside(row, value.category, value.isInvalid, isScorable);
    }
}

void InputField::ReadEntries(const InputColumn& column, Rows& rows) const {
    rows.room.entries.Begin(true, column.dictionaryMark, column.dictionarySize + 1);
    const auto missing = static_cast<std::int32_t>(column.dictionarySize);
    for (std::size_t row = 0; row < rows.count; ++row) {
        const std::int32_t code = column.codes[row];
        const bool isMissing = code < 0;
        TakeEntry(row, isMissing ? missing : code, isMissing ? std::string_view() : column.dictionary[code], rows);
    }
}

/// As if the texts came from a dictionary.
/// @return false where they aren't worth it
bool InputField::ReadRepeats(const std::string_view* texts, Rows& rows) const {
    RepeatedTexts& repeats = rows.room.repeats;
    if (!repeats.Begin(rows.count)) {
        return false;
    }
    rows.room.entries.Begin(false, repeats.Round(), RepeatedTexts::kMost + 1);
    for (std::size_t row = 0; row < rows.count; ++row) {
        const bool isMissing = texts[row].data() == nullptr;
        TakeEntry(row, isMissing ? static_cast<std::int32_t>(RepeatedTexts::kMost) : repeats.Find(texts[row]),
                  texts[row], rows);
    }
    return true;
}

/// Each entry is treated when the first row has it.
void InputField::TakeEntry(std::size_t row, std::int32_t place, std::string_view text, Rows& rows) const {
    Entries& entries = rows.room.entries;
    const auto entry = static_cast<std::size_t>(place);
    if (entries.rounds[entry] != entries.round) {
        FieldValue& value = entries.values[entry];
        value = FieldValue();
        entries.refused[entry] = ReadRow(text, value) ? 0 : 1;
        value.text = value.isMissing ? std::string_view() : entries.texts.Keep(value.text);
        entries.views[entry] = value.text;
        entries.invalid[entry] = value.isInvalid ? 1 : 0;
        entries.rounds[entry] = entries.round;
    }
    rows.SetEntry(row, place);
    rows.SetBeside(row, entries.values[entry].category, entries.invalid[entry] != 0, entries.refused[entry] == 0);
}

/// A field without a column is missing in each row.
void InputField::ReadNothing(Rows& rows) const {
    FieldValue value;
    const bool isScorable = Read(nullptr, value);
    const bool holdsTexts = IsText(fField->type);
    double* const numbers = holdsTexts ? nullptr : rows.room.Numbers();
    std::string_view* const texts = holdsTexts ? rows.room.Texts() : nullptr;
    rows.Field().numbers = numbers;
    rows.Field().texts = texts;
    for (std::size_t row = 0; row < rows.count; ++row) {
        if (holdsTexts) {
            texts[row] = ViewOf(value);
        } else {
            numbers[row] = value.number;
        }
        rows.SetBeside(row, value.category, value.isInvalid, isScorable);
    }
}

} // namespace veltrane_kit
