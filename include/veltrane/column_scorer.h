#ifndef VELTRANE_COLUMN_SCORER_H
#define VELTRANE_COLUMN_SCORER_H

#include <veltrane/value.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace MCVeltrane_900 {
class ScoreModel;
}

namespace veltrane {

/// A field that a scorer reads from columns, or one that it gives.
struct ColumnField {
    std::string name;
    DataType type = DataType::DOUBLE;
    /// Of an input: whether the rows are wrong without it. A field that isn't needed may have no column.
    bool isNeeded = true;
    /// Of a result of type STRING whose values are all known: these, each once. Its rows are then codes, the places of
    /// the values here. Empty for any other.
    std::vector<std::string> categories;
};

/// A cell that holds no value of its field's type: "abc" for a number. It is an invalid value, not a missing one.
struct UnreadableCell {
    std::size_t row; ///< of the block
    std::string_view text;
};

/// The rows of one input field in a block. A field of type STRING has `texts`, or `codes` and a dictionary; any other
/// has `numbers`, see Value for what they mean. A field without a column has neither and is missing in every row.
struct InputColumn {
    /// Not a number stands for a missing value.
    const double* numbers = nullptr;

    /// A text with a null pointer for its data is missing; the empty text is not.
    const std::string_view* texts = nullptr;

    /// Places in the dictionary, -1 for a missing value.
    const std::int32_t* codes = nullptr;
    const std::string_view* dictionary = nullptr;
    std::size_t dictionarySize = 0;
    /// Blocks of one dictionary have the same mark here, and blocks of different ones different marks, so that what a
    /// state knows of a dictionary can be used again. Never 0 beside a dictionary.
    std::uint64_t dictionaryMark = 0;

    /// Cells of a field that has `numbers`, by ascending rows; the number of such a row is not a number.
    const UnreadableCell* unreadable = nullptr;
    std::size_t unreadableCount = 0;
};

/// Rows to score, no more than ColumnScorer::kMostRows.
struct InputBlock {
    std::size_t rows = 0;
    const InputColumn* columns = nullptr; ///< one for each of ColumnScorer::Inputs(), in their order
};

/// Where the rows of one result field go. A field with categories has `codes`, another one of type STRING `texts`, any
/// other `numbers`; the others are null. A field that nobody asks for has none of them.
struct OutputColumn {
    double* numbers = nullptr;     ///< not a number for a missing value
    std::int32_t* codes = nullptr; ///< -1 for a missing value
    /// A null pointer for its data is missing. They stay until the state's next run, and as long as the texts of its
    /// input.
    std::string_view* texts = nullptr;
};

/// What a block gives.
struct OutputBlock {
    const OutputColumn* columns = nullptr; ///< one for each of ColumnScorer::Outputs(), in their order
    /// One for each row: 1 for a row that can't be scored and gets no default prediction either, else 0. Null when
    /// nobody asks.
    std::uint8_t* unscored = nullptr;
};

/// A document that is ready to be scored in columns: derived fields or a model. It doesn't change, so any number of
/// threads may share it, each with a state of its own.
///
/// A model plug-in takes part by exporting this beside its two other C symbols; one that doesn't is scored row by row:
///
///     extern "C" veltrane::ColumnScorer* GiveMyColumnScorer(MCVeltrane_900::ScoreModel* model, int version);
///
/// `model` comes from the plug-in's translator, its options set, and outlives the scorer. `version` is kVersion of the
/// host's library: a plug-in answers null for one that it doesn't know, and for a model that it can't score in columns.
/// The caller owns the scorer.
class ColumnScorer {
public:
    /// Of this interface.
    static constexpr int kVersion = 1;
    /// In a block.
    static constexpr std::size_t kMostRows = 1024;

    /// What one thread needs beside the scorer. It must not outlive it.
    class State {
    public:
        virtual ~State() = default;
    };

    virtual ~ColumnScorer() = default;

    virtual const std::vector<ColumnField>& Inputs() const = 0;
    virtual const std::vector<ColumnField>& Outputs() const = 0;

    /// Whether results depend on the rows before, so that all rows have to come through one state, in their order.
    virtual bool NeedsOrder() const = 0;

    virtual std::unique_ptr<State> NewState() const = 0;

    /// Scores a block. Its results are those of the same rows one by one, bit for bit, wherever blocks begin and end.
    /// It doesn't throw and allocates nothing once a state has seen a block, but for texts and new dictionaries.
    /// @param in     `rows` may be 0
    /// @param state  of this scorer; one thread at a time
    /// @param out    room for as many rows
    virtual void Score(const InputBlock& in, State& state, const OutputBlock& out) const = 0;
};

/// The type of GiveMyColumnScorer.
using GiveColumnScorer = ColumnScorer* (*)(MCVeltrane_900::ScoreModel* model, int version);

} // namespace veltrane

#endif
