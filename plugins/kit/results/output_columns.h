#ifndef VELTRANE_PLUGINS_KIT_OUTPUT_COLUMNS_H
#define VELTRANE_PLUGINS_KIT_OUTPUT_COLUMNS_H

#include "kit/columns/block.h"
#include "kit/results/outputs.h"
#include "kit/results/prediction_block.h"
#include "kit/results/results.h"
#include "kit/results/target.h"

#include <veltrane/column_scorer.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace veltrane_kit {

/// What a model gives for blocks of cases: the predicted value and the final output fields, each in a column.
///
/// Where each output field has a column form the columns are filled one after the other; a model with a field that has
/// none fills its fields row by row as for single cases, which gives the same.
class OutputColumns {
public:
    /// What one thread needs.
    struct State {
        State(const ResultLayout& layout, std::size_t rows) : values(layout), numbers(rows) {}

        OutputValues values; ///< of one row
        Prediction prediction;
        std::string entity;
        std::vector<double> numbers;
    };

    /// @param outputs of the model; borrowed
    /// @param target  borrowed
    /// @param layout  of the model's results
    OutputColumns(const Outputs& outputs, const Target& target, std::shared_ptr<const ResultLayout> layout,
                  bool isClassification);

    /// The predicted value first.
    const std::vector<veltrane::ColumnField>& Fields() const { return fFields; }

    std::unique_ptr<State> NewState(std::size_t rows) const { return std::make_unique<State>(*fLayout, rows); }

    /// Fills the columns that are asked for; a row without a prediction has no values.
    /// @param columns one for each of Fields()
    /// @param first   the place of the block's first row in them
    void Fill(Block& block, const PredictionBlock& predictions, State& state, const veltrane::OutputColumn* columns,
              std::size_t first) const;

    /// The same of one row of the block.
    /// @param fields the row as a case
    /// @param place  of the row in the columns
    void FillRow(Frame& fields, TextArena& texts, const PredictionBlock& predictions, std::size_t row, State& state,
                 const veltrane::OutputColumn* columns, std::size_t place) const;

private:
    /// What the value of a field is in its column, for each category that may be predicted.
    struct OfCategories {
        std::vector<double> numbers;
        std::vector<std::int32_t> codes;
    };
    /// A final output field.
    struct Output {
        const Outputs::Field* field;
        int position; ///< among all output fields
        OfCategories values;
    };

    bool HaveColumnForms() const;
    bool HasColumnForm(const Outputs::Field& field, int position) const;
    void AddPredicted();
    void AddOutputs();
    OfCategories FindValues(int position, veltrane::ColumnField& column) const;
    void FillPredicted(const PredictionBlock& predictions, std::size_t rows, const veltrane::OutputColumn& column,
                       std::size_t first) const;
    void FillOutput(const Output& output, Block& block, const PredictionBlock& predictions, State& state,
                    const veltrane::OutputColumn& column, std::size_t first) const;
    static void FillGrounds(const Outputs::Field& field, const PredictionBlock& predictions, std::size_t rows,
                            const veltrane::OutputColumn& column, std::size_t first);
    void FillExpressions(Block& block, const veltrane::OutputColumn* columns, std::size_t first) const;

    const Outputs& fOutputs;
    const Target& fTarget;
    std::shared_ptr<const ResultLayout> fLayout;
    bool fIsClassification;
    bool fGoesByRows;
    std::vector<veltrane::ColumnField> fFields;
    OfCategories fPredicted; ///< of a classification
    std::vector<Output> fFinal;
};

} // namespace veltrane_kit

#endif
