#ifndef VELTRANE_TESTS_MODELS_RANDOM_CELLS_H
#define VELTRANE_TESTS_MODELS_RANDOM_CELLS_H

#include "models/expressions/random_expressions.h"

#include <MCVeltrane_900/ScoreValue.h>
#include <veltrane/column_scorer.h>

#include <array>
#include <memory>
#include <string_view>
#include <vector>

namespace veltrane::tests {

/// The texts of random cells; for numbers "2" is one, and "n/a" and the others can't be read.
inline constexpr std::array<std::string_view, 7> kCellTexts{"red", "green", "", "2", "n/a", "Blue ", "odd"};

/// The cells of one field of any type: as a column, and each as a host gives it in a case.
class RandomCells {
public:
    RandomCells(Random& random, DataType type, std::size_t rows);

    /// Null for a missing cell.
    std::unique_ptr<MCVeltrane_900::ScoreValue> Raw(std::size_t row) const;

    /// The cells from a row on; borrowed.
    /// @param hasDictionary whether texts come from a dictionary
    InputColumn Column(bool hasDictionary, std::size_t first = 0);

private:
    void AddCell(Random& random, int oddity);
    const UnreadableCell* UnreadableAt(std::size_t row) const;

    DataType fType;
    std::vector<double> fNumbers;
    std::vector<std::string_view> fTexts;
    std::vector<std::int32_t> fCodes;
    std::vector<UnreadableCell> fUnreadable;
    std::vector<UnreadableCell> fShifted;
};

} // namespace veltrane::tests

#endif
