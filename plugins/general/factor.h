#ifndef VELTRANE_PLUGINS_GENERAL_FACTOR_H
#define VELTRANE_PLUGINS_GENERAL_FACTOR_H

#include "kit/values/matrix.h"

#include <cmath>
#include <cstddef>
#include <limits>
#include <memory>
#include <unordered_map>

namespace veltrane_general {

/// What stands for a missing value in sums: it makes all that it is added to or multiplied with no number.
constexpr double kLacks = std::numeric_limits<double>::quiet_NaN();

/// The contrasts between the categories of a factor: a row for each category of a case, a column for each that cells of
/// the PPMatrix name.
struct Contrasts {
    veltrane_kit::Matrix matrix;
    std::unordered_map<int, std::size_t> rows; ///< by the code of the category

    /// A category without a row has no contrast.
    double At(int category, std::size_t column) const {
        const auto row = rows.find(category);
        return row == rows.end() ? kLacks : matrix.At(row->second, column);
    }
};

/// What a cell of the PPMatrix makes of the value of a predictor; the parameter's value is the product of all its
/// cells.
struct Factor {
    enum class Kind { POWER, CATEGORY, CONTRAST };

    Kind kind;
    int slot;
    double exponent = 1.0;  ///< of a power
    int category = 0;       ///< that makes it 1, else 0
    std::size_t column = 0; ///< of the contrasts
    std::shared_ptr<const Contrasts> contrasts = nullptr;

    /// @param fields a case, as CaseView or RowView
    /// @return kLacks for a missing value
    template <typename View>
    double Value(const View& fields) const {
        if (fields.IsMissing(slot)) {
            return kLacks;
        }
        switch (kind) {
        case Kind::POWER:
            return exponent == 1.0 ? fields.Number(slot) : std::pow(fields.Number(slot), exponent);
        case Kind::CATEGORY:
            return fields.Category(slot) == category ? 1.0 : 0.0;
        default:
            return contrasts->At(fields.Category(slot), column);
        }
    }
};

} // namespace veltrane_general

#endif
