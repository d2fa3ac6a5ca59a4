#include "kit/columns/block.h"

namespace veltrane_kit {

Block::Block(const FrameLayout& layout, std::size_t mostRows, std::size_t mostText)
    : fMostRows(mostRows), fFrame(layout), fFields(layout.fields), fMemories(layout.fields), fExpanded(layout.fields),
      fNumbers(mostRows), fViews(mostRows), fValues(mostRows), fFlags(mostRows), fPlaces(mostRows), fBudget(mostText),
      fArena(&fBudget) {}

void Block::GoOn(std::size_t rows) {
    fRows = rows;
    fRefused = nullptr;
    fChosen = nullptr;
    fCount = rows;
    fNumbers.Keep(0);
    fViews.Keep(0);
    fValues.Keep(0);
    fFlags.Keep(0);
    fPlaces.Keep(0);
    for (FieldColumn& field : fFields) {
        field = FieldColumn();
    }
}

const std::string_view* Block::Texts(int slot) {
    FieldColumn& field = Field(slot);
    if (field.texts == nullptr && field.entries != nullptr) {
        std::unique_ptr<std::string_view[]>& expanded = fExpanded[static_cast<std::size_t>(slot)];
        if (expanded == nullptr) {
            expanded = std::make_unique<std::string_view[]>(fMostRows);
        }
        for (std::size_t row = 0; row < fRows; ++row) {
            expanded[row] = field.table->texts[field.entries[row]];
        }
        field.texts = expanded.get();
    }
    return field.texts;
}

FieldValue Block::ValueAt(int slot, std::size_t row) const {
    const FieldColumn& field = Field(slot);
    FieldValue value;
    if (field.values != nullptr) {
        static_cast<Value&>(value) = field.values[row];
    } else if (field.numbers != nullptr) {
        static_cast<Value&>(value) = MakeNumber(field.numbers[row], field.type);
    } else {
        const std::string_view text =
            field.texts != nullptr ? field.texts[row] : field.table->texts[field.entries[row]];
        static_cast<Value&>(value) = text.data() == nullptr ? MakeMissing(field.type) : MakeText(text);
    }
    if (field.invalid != nullptr) {
        value.isInvalid = field.invalid[row] != 0;
    }
    value.category = field.categories == nullptr ? FieldValue::kUnknownCategory : field.categories[row];
    return value;
}

void Block::Load(int slot, std::size_t row) {
    if (Field(slot).IsThere()) {
        fFrame.Field(slot) = ValueAt(slot, row);
    }
}

Frame& Block::Row(std::size_t row) {
    for (std::size_t slot = 0; slot < fFields.size(); ++slot) {
        Load(static_cast<int>(slot), row);
    }
    return fFrame;
}

Frame& Block::Row(std::size_t row, const std::vector<int>& slots) {
    for (const int slot : slots) {
        Load(slot, row);
    }
    return fFrame;
}

} // namespace veltrane_kit
