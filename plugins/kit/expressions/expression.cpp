#include "kit/expressions/expression.h"

#include <cstdint>

namespace veltrane_kit {

namespace {

Column ColumnOfNumbers(const NumberColumn& numbers, DataType type) {
    Column column;
    column.type = type;
    column.numbers = numbers.numbers;
    column.same = MakeNumber(numbers.same, type);
    return column;
}

/// The outcomes of one expression for the entries of the last dictionary.
class Outcomes : public Block::Memory {
public:
    explicit Outcomes(Block& block) : fTexts(&block.Budget()) {}

    /// Forgets them when they are those of another dictionary.
    void Begin(const EntryTable& source) {
        if (fSource == &source && fEdition == source.edition && fTable.size == source.size) {
            return;
        }
        fSource = &source;
        fEdition = source.edition;
        ++fRound;
        fTexts.Forget();
        if (fRounds.size() < source.size) {
            fRounds.resize(source.size);
            fValues.resize(source.size);
            fViews.resize(source.size);
            fInvalid.resize(source.size);
        }
        fTable = {fViews.data(), fInvalid.data(), source.size, fRound};
    }

    bool Knows(std::size_t entry) const { return fRounds[entry] == fRound; }

    void Set(std::size_t entry, Value value) {
        if (!value.isMissing && IsText(value.type)) {
            value.text = fTexts.Keep(value.text);
            value = value.text.data() == nullptr ? MakeMissing(value.type) : value;
        }
        fViews[entry] = value.isMissing || !IsText(value.type) ? std::string_view() : value.text;
        fValues[entry] = value;
        fInvalid[entry] = value.isInvalid ? 1 : 0;
        fRounds[entry] = fRound;
    }

    const Value& operator[](std::size_t entry) const { return fValues[entry]; }
    const EntryTable& Table() const { return fTable; }

private:
    const EntryTable* fSource = nullptr;
    std::uint64_t fEdition = 0;
    std::uint32_t fRound = 0;
    std::vector<std::uint32_t> fRounds; ///< in which an entry was set
    std::vector<Value> fValues;
    std::vector<std::string_view> fViews;
    std::vector<std::uint8_t> fInvalid;
    TextArena fTexts;
    EntryTable fTable;
};

void LoadEntry(const EntryTable& table, std::size_t entry, FieldValue& value) {
    value = FieldValue();
    const std::string_view text = table.texts[entry];
    static_cast<Value&>(value) = text.data() == nullptr ? MakeMissing(DataType::STRING) : MakeText(text);
    value.isInvalid = table.invalid != nullptr && table.invalid[entry] != 0;
}

} // namespace

void Expression::DependOn(const Expression& inner) {
    fIsWorthKeeping = true;
    fCost += inner.fCost;
    if (inner.fSource == kNoSource || inner.fSource == fSource) {
        return;
    }
    fSource = fSource == kNoSource ? inner.fSource : kManySources;
}

void Expression::DependOn(const Expressions& inner) {
    for (const ExpressionPtr& each : inner) {
        DependOn(*each);
    }
}

void Expression::DependOnField(int slot) {
    fSource = slot;
}

Column Expression::ComputeColumn(Block& block) const {
    ColumnBuilder builder(block, fType);
    for (std::size_t i = 0; i < block.Count(); ++i) {
        builder.SetCopy(i, Evaluate(block.Row(block.Chosen() == nullptr ? i : block.Chosen()[i])));
    }
    return builder.Get();
}

NumberColumn Expression::NumbersOnly(Block& block, bool isOfEntries) const {
    const std::size_t before = block.Numbers().Taken();
    const Block::ScratchBesideNumbers scratch(block);
    const Column column = isOfEntries ? EvaluateEntries(block) : ComputeColumn(block);
    if (column.IsSame()) {
        block.Numbers().Keep(before);
        return NumberColumn::Of(column.same.number);
    }
    return block.Numbers().Taken() == before ? NumberColumn::Shown(column.numbers)
                                             : NumberColumn::Own(block.Numbers().Last());
}

/// Each entry is evaluated when the first row has it.
Column Expression::EvaluateEntries(Block& block) const {
    const FieldColumn& field = block.Field(fSource);
    std::unique_ptr<Block::Memory>& memory = block.MemoryOf(this);
    if (memory == nullptr) {
        memory = std::make_unique<Outcomes>(block);
    }
    auto& outcomes = static_cast<Outcomes&>(*memory);
    outcomes.Begin(*field.table);
    ColumnBuilder builder(block, fType);
    for (std::size_t i = 0; i < block.Count(); ++i) {
        const auto entry = static_cast<std::size_t>(field.entries[block.Chosen() == nullptr ? i : block.Chosen()[i]]);
        if (!outcomes.Knows(entry)) {
            Frame& frame = block.Case();
            LoadEntry(*field.table, entry, frame.Field(fSource));
            outcomes.Set(entry, Evaluate(frame));
        }
        builder.Set(i, outcomes[entry]);
    }
    Column column = builder.Get();
    if (column.texts != nullptr && block.Chosen() == nullptr) {
        column.entries = field.entries;
        column.table = &outcomes.Table();
    }
    return column;
}

Column NumberExpression::ComputeColumn(Block& block) const {
    return ColumnOfNumbers(ComputeNumbers(block), *Type());
}

} // namespace veltrane_kit
