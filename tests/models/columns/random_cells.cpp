#include "models/columns/random_cells.h"

#include "support/numbers.h"

#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/StringValue.h>

#include <algorithm>
#include <string>

namespace veltrane::tests {

using MCVeltrane_900::NumericValue;
using MCVeltrane_900::StringValue;

namespace {

constexpr std::array kOdd{-0.0, 1e308, -1e308, 4503599627370497.0, kInfinity, -kInfinity, kNaN, 0.5, kMissing};

template <typename T, std::size_t N>
T Pick(Random& random, const std::array<T, N>& from) {
    return from[static_cast<std::size_t>(Below(random, static_cast<int>(N)))];
}

} // namespace

RandomCells::RandomCells(Random& random, DataType type, std::size_t rows) : fType(type) {
    const int oddity = Below(random, 3);
    for (std::size_t row = 0; row < rows; ++row) {
        AddCell(random, oddity);
    }
}

void RandomCells::AddCell(Random& random, int oddity) {
    const bool isOdd = oddity > 0 && Below(random, 4) == 0;
    fTexts.push_back(isOdd && Below(random, 2) == 0 ? std::string_view() : Pick(random, kCellTexts));
    const auto entry = std::find(kCellTexts.begin(), kCellTexts.end(), fTexts.back());
    fCodes.push_back(fTexts.back().data() == nullptr ? -1 : static_cast<std::int32_t>(entry - kCellTexts.begin()));
    const double plain = fType == DataType::BOOLEAN ? Below(random, 2) : (Below(random, 18) - 9) / 2.0;
    fNumbers.push_back(isOdd ? Pick(random, kOdd) : fType == DataType::INTEGER ? plain * 2.0 : plain);
    if (oddity == 2 && !veltrane_kit::IsText(fType) && Below(random, 5) == 0) {
        fUnreadable.push_back({fNumbers.size() - 1, Below(random, 2) == 0 ? "n/a" : "abc"});
        fNumbers.back() = kNaN;
    }
}

const UnreadableCell* RandomCells::UnreadableAt(std::size_t row) const {
    const auto found = std::find_if(fUnreadable.begin(), fUnreadable.end(),
                                    [row](const UnreadableCell& cell) { return cell.row == row; });
    return found == fUnreadable.end() ? nullptr : &*found;
}

std::unique_ptr<MCVeltrane_900::ScoreValue> RandomCells::Raw(std::size_t row) const {
    if (const UnreadableCell* cell = UnreadableAt(row)) {
        return std::make_unique<StringValue>(std::string(cell->text));
    }
    if (!veltrane_kit::IsText(fType)) {
        return std::make_unique<NumericValue>(fNumbers[row]);
    }
    return fTexts[row].data() == nullptr ? nullptr : std::make_unique<StringValue>(std::string(fTexts[row]));
}

InputColumn RandomCells::Column(bool hasDictionary, std::size_t first) {
    InputColumn column;
    if (!veltrane_kit::IsText(fType)) {
        fShifted.clear();
        for (const UnreadableCell& cell : fUnreadable) {
            if (cell.row >= first) {
                fShifted.push_back({cell.row - first, cell.text});
            }
        }
        column.numbers = fNumbers.data() + first;
        column.unreadable = fShifted.data();
        column.unreadableCount = fShifted.size();
    } else if (hasDictionary) {
        column.codes = fCodes.data() + first;
        column.dictionary = kCellTexts.data();
        column.dictionarySize = kCellTexts.size();
        column.dictionaryMark = 5;
    } else {
        column.texts = fTexts.data() + first;
    }
    return column;
}

} // namespace veltrane::tests
