#ifndef VELTRANE_PLUGINS_KIT_CASE_VIEW_H
#define VELTRANE_PLUGINS_KIT_CASE_VIEW_H

#include "kit/columns/block.h"
#include "kit/values/frame.h"

#include <cmath>
#include <cstddef>

namespace veltrane_kit {

/// The values of one case by the slots of a model's Inputs, as models, conditions and outputs read them. Whatever reads
/// through its operations alone may be handed another view that has the same ones: a row of columns.
class CaseView {
public:
    /// @param slots borrowed
    explicit CaseView(const FieldValue* slots) : fSlots(slots) {}
    explicit CaseView(const Frame& frame) : fSlots(frame.Fields()) {}
    /// The same, for models that consist of others: they put the fields of these into the frame.
    explicit CaseView(Frame& frame) : fSlots(frame.Fields()), fFrame(&frame) {}

    const FieldValue& operator[](int slot) const { return fSlots[static_cast<std::size_t>(slot)]; }

    bool IsMissing(int slot) const { return (*this)[slot].isMissing; }
    double Number(int slot) const { return (*this)[slot].number; }
    int Category(int slot) const { return (*this)[slot].category; }

    /// Where the case stands; null for a view that leaves it as it is.
    Frame* Room() const { return fFrame; }

private:
    const FieldValue* fSlots;
    Frame* fFrame = nullptr;
};

/// The same of a row of a block.
class RowView {
public:
    /// @param block borrowed
    RowView(const Block& block, std::size_t row) : fBlock(block), fRow(row) {}

    bool IsMissing(int slot) const {
        const FieldColumn& field = fBlock.Field(slot);
        if (field.numbers != nullptr) {
            return std::isnan(field.numbers[fRow]);
        }
        if (field.entries != nullptr) {
            return field.table->texts[field.entries[fRow]].data() == nullptr;
        }
        return field.texts != nullptr ? field.texts[fRow].data() == nullptr
                                      : field.values == nullptr || field.values[fRow].isMissing;
    }
    double Number(int slot) const {
        const FieldColumn& field = fBlock.Field(slot);
        return field.numbers != nullptr  ? field.numbers[fRow]
               : field.values != nullptr ? field.values[fRow].number
                                         : kMissing;
    }
    int Category(int slot) const {
        const FieldColumn& field = fBlock.Field(slot);
        return field.categories == nullptr ? FieldValue::kUnknownCategory : field.categories[fRow];
    }

private:
    const Block& fBlock;
    std::size_t fRow;
};

} // namespace veltrane_kit

#endif
