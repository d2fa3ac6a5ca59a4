// The fields of a model that is a part of another one, for blocks of cases.
#include "kit/inputs/inputs.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace veltrane_kit {

namespace {

/// A field that a part treats, from block to block.
struct TreatedRoom : Block::Memory {
    explicit TreatedRoom(std::size_t rows) : numbers(rows), texts(rows), categories(rows), invalid(rows) {}

    std::vector<double> numbers;
    std::vector<std::string_view> texts;
    std::vector<std::int32_t> categories;
    std::vector<std::uint8_t> invalid;
};

TreatedRoom& RoomOf(Block& block, int slot) {
    std::unique_ptr<Block::Memory>& memory = block.MemoryOf(slot);
    if (memory == nullptr) {
        memory = std::make_unique<TreatedRoom>(block.MostRows());
    }
    return static_cast<TreatedRoom&>(*memory);
}

/// Treats one field of the outer model row by row.
void Treat(const InputField& treatment, int from, int slot, Block& block, std::uint8_t* refused) {
    TreatedRoom& room = RoomOf(block, slot);
    FieldValue value;
    for (std::size_t row = 0; row < block.Rows(); ++row) {
        if (!treatment.ReadTreated(block.ValueAt(from, row), value)) {
            refused[row] = 1;
        }
        room.numbers[row] = value.isMissing ? kMissing : value.number;
        room.texts[row] = value.isMissing ? std::string_view() : value.text;
        room.categories[row] = value.category;
        room.invalid[row] = value.isInvalid ? 1 : 0;
    }
    FieldColumn& field = block.Field(slot);
    field.type = treatment.Definition().type;
    if (IsText(field.type)) {
        field.texts = room.texts.data();
    } else {
        field.numbers = room.numbers.data();
    }
    field.categories = room.categories.data();
    field.invalid = room.invalid.data();
}

} // namespace

void Inputs::ReadPart(Block& block, std::uint8_t* refused) const {
    for (const Source& source : fInputs) {
        Treat(*source.field, source.from, source.slot, block, refused);
    }
    if (!fDerived.HasNone()) {
        fDerived.Compute(block);
    }
    for (const auto& [slot, codes] : fDerivedCodes) {
        if (fDerived.Has(slot)) {
            SetColumnCodes(codes, slot, block);
        }
    }
}

void Inputs::SetCodes(int slot, Block& block) const {
    if (const auto codes = fDerivedCodes.find(slot); codes != fDerivedCodes.end()) {
        SetColumnCodes(codes->second, slot, block);
    }
}

} // namespace veltrane_kit
