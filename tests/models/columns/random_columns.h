#ifndef VELTRANE_TESTS_MODELS_RANDOM_COLUMNS_H
#define VELTRANE_TESTS_MODELS_RANDOM_COLUMNS_H

#include "kit/columns/block.h"
#include "models/expressions/random_expressions.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace veltrane::tests {

/// Whether two numbers have the same bits, or both are missing.
bool AreSameNumbers(double left, double right);

/// Whether two values tell the same in every respect that anything looks at.
bool AreTheSame(const veltrane_kit::Value& left, const veltrane_kit::Value& right);

/// Random values of the fields of random expressions, as cases and as columns.
class RandomColumns {
public:
    RandomColumns(Random& random, std::size_t rows);

    /// @param areTyped      whether the fields' types are known
    /// @param hasDictionary whether the texts are shown by a dictionary
    void Show(veltrane_kit::Block& block, bool areTyped, bool hasDictionary) const;

    void Load(std::size_t row, veltrane_kit::Frame& frame) const;

private:
    void ShowTexts(veltrane_kit::FieldColumn& field, bool hasDictionary) const;

    std::vector<std::vector<veltrane_kit::Value>> fValues; ///< by field
    std::vector<std::vector<double>> fNumbers;
    std::vector<std::vector<std::uint8_t>> fInvalid;
    std::vector<std::string_view> fTexts;
    std::vector<std::string_view> fEntryTexts; ///< the last one is that of a missing cell
    std::vector<std::uint8_t> fEntryInvalid;
    std::vector<std::int32_t> fEntries;
    veltrane_kit::EntryTable fTable;
};

} // namespace veltrane::tests

#endif
