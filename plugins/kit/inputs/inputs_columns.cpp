// The fields of a model for blocks of cases.
#include "kit/inputs/inputs.h"

#include <algorithm>

namespace veltrane_kit {

using veltrane::ColumnField;
using veltrane::InputColumn;

namespace {

/// The codes of a derived field, from block to block.
struct CodesRoom : Block::Memory {
    std::vector<std::int32_t> codes;
    std::vector<std::int32_t> codesOfEntries;
};

CodesRoom& RoomOf(Block& block, int slot) {
    std::unique_ptr<Block::Memory>& memory = block.MemoryOf(slot);
    if (memory == nullptr) {
        memory = std::make_unique<CodesRoom>();
        static_cast<CodesRoom&>(*memory).codes.resize(block.MostRows());
    }
    return static_cast<CodesRoom&>(*memory);
}

} // namespace

std::vector<ColumnField> Inputs::ColumnFields() const {
    std::vector<ColumnField> fields;
    const auto add = [&fields](const Source& source, bool isNeeded) {
        ColumnField field;
        field.name = source.name;
        field.type = source.field->Definition().type;
        field.isNeeded = isNeeded;
        fields.push_back(std::move(field));
    };
    for (const Source& source : fInputs) {
        add(source, !source.field->SaysNothing());
    }
    for (std::size_t i = 0; fTargetsWatched && i < fTargets.size(); ++i) {
        add(fTargets[i], false);
    }
    return fields;
}

void Inputs::ReadBlock(const InputColumn* columns, Block& block, std::uint8_t* refused) const {
    std::fill(refused, refused + block.Rows(), std::uint8_t{0});
    const InputColumn* column = columns;
    for (const Source& source : fInputs) {
        source.field->ReadBlock(*column++, block, source.slot, refused);
    }
    for (std::size_t i = 0; fTargetsWatched && i < fTargets.size(); ++i) {
        fTargets[i].field->ReadBlock(*column++, block, fTargets[i].slot, nullptr);
    }
    if (LooksBack()) {
        return;
    }
    fDerived.Compute(block);
    for (const auto& [slot, codes] : fDerivedCodes) {
        SetColumnCodes(codes, slot, block);
    }
}

void Inputs::SetColumnCodes(const ValueCodes& codes, int slot, Block& block) {
    FieldColumn& field = block.Field(slot);
    if (!field.IsThere()) {
        return;
    }
    CodesRoom& room = RoomOf(block, slot);
    std::int32_t* const found = room.codes.data();
    field.categories = found;
    if (field.entries == nullptr || field.table->size > block.Rows()) {
        for (std::size_t row = 0; row < block.Rows(); ++row) {
            found[row] = codes.Find(block.ValueAt(slot, row));
        }
        return;
    }
    constexpr std::int32_t kNotYet = ValueCodes::kUnknown - 1;
    room.codesOfEntries.assign(field.table->size, kNotYet);
    for (std::size_t row = 0; row < block.Rows(); ++row) {
        std::int32_t& code = room.codesOfEntries[static_cast<std::size_t>(field.entries[row])];
        if (code == kNotYet) {
            code = codes.Find(block.ValueAt(slot, row));
        }
        found[row] = code;
    }
}

} // namespace veltrane_kit
