#ifndef VELTRANE_PLUGINS_KIT_BLOCK_H
#define VELTRANE_PLUGINS_KIT_BLOCK_H

#include "kit/columns/buffers.h"
#include "kit/columns/text_arena.h"
#include "kit/values/frame.h"

#include <veltrane/column_scorer.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace veltrane_kit {

/// What is known of each text that a dictionary brings into a field, and, behind them, of a cell without one.
struct EntryTable {
    const std::string_view* texts = nullptr; ///< null data: missing
    const std::uint8_t* invalid = nullptr;   ///< null where none is
    std::size_t size = 0;                    ///< with the cell without a text
    std::uint64_t edition = 0;               ///< another one when the places mean something else
};

/// The values of one field in the rows of a block, after treatment. One of `numbers`, `texts` or `entries`, and
/// `values` is there, by the field's type.
struct FieldColumn {
    DataType type = DataType::DOUBLE;

    const double* numbers = nullptr; ///< of a type that keeps numbers; not a number: missing

    /// Of STRING; null data: missing. Null in a field that has `entries`, until Block::Texts() asks for them.
    const std::string_view* texts = nullptr;
    /// Of STRING, where the texts come from a dictionary: places in `table`. Only those that some row has are filled
    /// there.
    const std::int32_t* entries = nullptr;
    const EntryTable* table = nullptr;

    const Value* values = nullptr; ///< of a field whose type depends on the case

    const std::int32_t* categories = nullptr; ///< codes of the model, where it asked for some; kUnknownCategory without
    const std::uint8_t* invalid = nullptr; ///< 1 for an invalid value that is used as it is; null where no row has one

    /// Whether the field has values in this block; one without any isn't touched by Block::Row().
    bool IsThere() const { return numbers != nullptr || texts != nullptr || entries != nullptr || values != nullptr; }
};

/// The rows of a block in the expressions and models of one document, and what a thread needs beside them. The state of
/// a thread has one, which serves block after block; what it took for one serves the next.
class Block {
public:
    static constexpr std::size_t kMostRows = veltrane::ColumnScorer::kMostRows;

    /// Memory of one field or expression that stays from block to block.
    class Memory {
    public:
        virtual ~Memory() = default;
    };

    /// @param layout   borrowed; complete
    /// @param mostRows in a block, at most kMostRows: the less there are, the more of a block's columns lie in the
    /// nearest
    ///                 cache
    /// @param mostText how many bytes the texts may take that are made for a block; one for which there is no room left
    /// is
    ///                 missing
    explicit Block(const FrameLayout& layout, std::size_t mostRows = kMostRows, std::size_t mostText = kMostText);

    static constexpr std::size_t kMostText = std::size_t{1} << 30U;

    std::size_t MostRows() const { return fMostRows; }

    /// Begins the next block: no field has values, and the texts of the blocks before are gone.
    void Start(std::size_t rows) {
        fArena.Forget();
        GoOn(rows);
    }
    /// The same, but texts stay.
    void GoOn(std::size_t rows);
    std::size_t Rows() const { return fRows; }

    /// Takes note of the rows with values that a mining schema refuses: they are computed, but count for nothing.
    /// @param refused 1 for such a row; borrowed for this block
    void SetRefused(const std::uint8_t* refused) { fRefused = refused; }
    bool IsRefused(std::size_t row) const { return fRefused != nullptr && fRefused[row] != 0; }

    FieldColumn& Field(int slot) { return fFields[static_cast<std::size_t>(slot)]; }
    const FieldColumn& Field(int slot) const { return fFields[static_cast<std::size_t>(slot)]; }

    /// The texts of a field of type STRING in all rows, also where they come from a dictionary.
    const std::string_view* Texts(int slot);

    /// The value of a field in a row; its text stays as long as the block.
    FieldValue ValueAt(int slot, std::size_t row) const;

    /// One row as a case: the values of all fields that are there. They stay until the next call. What a Lag looks back
    /// on is not in it.
    Frame& Row(std::size_t row);
    /// The same for some fields.
    Frame& Row(std::size_t row, const std::vector<int>& slots);

    /// Texts and memories of functions, and room for the values of a case.
    Frame& Case() { return fFrame; }

    /// The rows that expressions are computed for: `Chosen()[i]` for all i below `Count()`, ascending; null for all.
    /// What an expression computes for the i-th of them stands in place i.
    std::size_t Count() const { return fCount; }
    const std::uint32_t* Chosen() const { return fChosen; }
    std::uint32_t RowAt(std::size_t i) const { return fChosen == nullptr ? static_cast<std::uint32_t>(i) : fChosen[i]; }

    /// For as long as it lives, some of the chosen rows.
    class Choice {
    public:
        /// @param chosen borrowed; rows of the block, ascending
        Choice(Block& block, const std::uint32_t* chosen, std::size_t count)
            : fBlock(block), fOldChosen(block.fChosen), fOldCount(block.fCount) {
            block.fChosen = chosen;
            block.fCount = count;
        }
        ~Choice() {
            fBlock.fChosen = fOldChosen;
            fBlock.fCount = fOldCount;
        }
        Choice(const Choice&) = delete;
        Choice& operator=(const Choice&) = delete;

    private:
        Block& fBlock;
        const std::uint32_t* fOldChosen;
        std::size_t fOldCount;
    };

    // Room for MostRows(), given back at the end of the Scratch in which it was taken.
    BufferStack<double>& Numbers() { return fNumbers; }
    BufferStack<std::string_view>& Views() { return fViews; }
    BufferStack<Value>& Values() { return fValues; }
    BufferStack<std::uint8_t>& Flags() { return fFlags; }
    BufferStack<std::uint32_t>& Places() { return fPlaces; }

    /// Lists of columns: whoever adds some takes them off again.
    std::vector<const double*>& Columns() { return fColumns; }

    /// Gives back the buffers that are taken while it lives, but for those of numbers.
    class ScratchBesideNumbers {
    public:
        explicit ScratchBesideNumbers(Block& block)
            : fBlock(block), fViews(block.fViews.Taken()), fValues(block.fValues.Taken()), fFlags(block.fFlags.Taken()),
              fPlaces(block.fPlaces.Taken()) {}
        ~ScratchBesideNumbers() {
            fBlock.fViews.Keep(fViews);
            fBlock.fValues.Keep(fValues);
            fBlock.fFlags.Keep(fFlags);
            fBlock.fPlaces.Keep(fPlaces);
        }
        ScratchBesideNumbers(const ScratchBesideNumbers&) = delete;
        ScratchBesideNumbers& operator=(const ScratchBesideNumbers&) = delete;

    protected:
        Block& fBlock; // NOLINT(misc-non-private-member-variables-in-classes)

    private:
        std::size_t fViews;
        std::size_t fValues;
        std::size_t fFlags;
        std::size_t fPlaces;
    };

    /// Gives back all buffers that are taken while it lives.
    class Scratch : public ScratchBesideNumbers {
    public:
        explicit Scratch(Block& block) : ScratchBesideNumbers(block), fNumbers(block.fNumbers.Taken()) {}
        ~Scratch() { fBlock.fNumbers.Keep(fNumbers); }
        Scratch(const Scratch&) = delete;
        Scratch& operator=(const Scratch&) = delete;

    private:
        std::size_t fNumbers;
    };

    /// Texts that stay as long as the block.
    TextArena& Arena() { return fArena; }
    TextBudget& Budget() { return fBudget; }

    /// What a field keeps from block to block, null before its first one.
    std::unique_ptr<Memory>& MemoryOf(int slot) { return fMemories[static_cast<std::size_t>(slot)]; }
    /// The same of an expression.
    std::unique_ptr<Memory>& MemoryOf(const void* expression) { return fMemoriesOfExpressions[expression]; }

private:
    void Load(int slot, std::size_t row);

    std::size_t fMostRows;
    Frame fFrame;
    std::size_t fRows = 0;
    const std::uint8_t* fRefused = nullptr;
    const std::uint32_t* fChosen = nullptr;
    std::size_t fCount = 0;
    std::vector<FieldColumn> fFields;
    std::vector<std::unique_ptr<Memory>> fMemories;             ///< by slot
    std::vector<std::unique_ptr<std::string_view[]>> fExpanded; ///< by slot, texts of entries
    BufferStack<double> fNumbers;
    BufferStack<std::string_view> fViews;
    BufferStack<Value> fValues;
    BufferStack<std::uint8_t> fFlags;
    BufferStack<std::uint32_t> fPlaces;
    std::vector<const double*> fColumns;
    std::unordered_map<const void*, std::unique_ptr<Memory>> fMemoriesOfExpressions;
    TextBudget fBudget;
    TextArena fArena;
};

} // namespace veltrane_kit

#endif
