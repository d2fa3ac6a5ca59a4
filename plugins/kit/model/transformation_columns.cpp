#include "kit/model/transformation_columns.h"

#include "kit/columns/column.h"
#include "kit/columns/some_rows.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

namespace veltrane_kit {

using veltrane::ColumnField;
using veltrane::InputBlock;
using veltrane::OutputBlock;
using veltrane::OutputColumn;
using veltrane::UnreadableCell;

struct alignas(kBytesApart) TransformationColumns::OwnState : State {
    explicit OwnState(const FrameLayout& layout) : block(layout, kRows) {}

    Block block;
    std::vector<UnreadableCell> unreadable; ///< of one column in some rows
    std::string text;
};

namespace {

std::string_view TextOfAny(Block& block, const Value& value, std::string& buffer) {
    return value.isMissing ? std::string_view() : block.Arena().Keep(TextOf(value, buffer));
}

} // namespace

TransformationColumns::TransformationColumns(std::shared_ptr<const Transformations> transformations)
    : fTransformations(std::move(transformations)), fSlots(fTransformations->Derived().Slots()) {
    for (const Transformations::Source& source : fTransformations->Sources()) {
        ColumnField field;
        field.name = source.name;
        field.type = source.field->Definition().type;
        fInputs.push_back(std::move(field));
        fRepeats.push_back(fTransformations->Derived().ComputeFrom(source.slot) ? InputField::Repeats::ARE_FOUND
                                                                                : InputField::Repeats::ARE_LEFT);
    }
    const DerivedFields& derived = fTransformations->Derived();
    for (const int slot : fSlots) {
        ColumnField field;
        field.name = derived.NameOf(slot);
        field.type = derived.TypeOf(slot).value_or(DataType::STRING);
        fOutputs.push_back(std::move(field));
    }
}

std::unique_ptr<veltrane::ColumnScorer::State> TransformationColumns::NewState() const {
    return std::make_unique<OwnState>(fTransformations->Layout());
}

void TransformationColumns::Score(const InputBlock& in, State& state, const OutputBlock& out) const {
    auto& own = static_cast<OwnState&>(state);
    own.block.Start(0);
    for (std::size_t first = 0; first < in.rows; first += kRows) {
        ScoreRows(in, first, std::min(kRows, in.rows - first), own);
        for (std::size_t output = 0; output < fOutputs.size(); ++output) {
            Write(own, output, first, out.columns[output]);
        }
    }
    if (out.unscored != nullptr) {
        std::fill(out.unscored, out.unscored + in.rows, std::uint8_t{0});
    }
}

void TransformationColumns::ScoreRows(const InputBlock& in, std::size_t first, std::size_t rows, OwnState& own) const {
    own.block.GoOn(rows);
    for (std::size_t i = 0; i < fInputs.size(); ++i) {
        const Transformations::Source& source = fTransformations->Sources()[i];
        source.field->ReadBlock(RowsOf(in.columns[i], first, rows, own.unreadable), own.block, source.slot, nullptr,
                                fRepeats[i]);
    }
    fTransformations->Derived().Compute(own.block);
}

void TransformationColumns::Write(OwnState& own, std::size_t output, std::size_t first,
                                  const OutputColumn& column) const {
    Block& block = own.block;
    const FieldColumn& field = block.Field(fSlots[output]);
    if (column.numbers != nullptr) {
        std::copy(field.numbers, field.numbers + block.Rows(), column.numbers + first);
    } else if (column.texts != nullptr && field.values == nullptr) {
        const std::string_view* const texts = block.Texts(fSlots[output]);
        std::copy(texts, texts + block.Rows(), column.texts + first);
    } else if (column.texts != nullptr) {
        for (std::size_t row = 0; row < block.Rows(); ++row) {
            column.texts[first + row] = TextOfAny(block, field.values[row], own.text);
        }
    }
}

} // namespace veltrane_kit
