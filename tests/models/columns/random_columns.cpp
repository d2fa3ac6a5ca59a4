#include "models/columns/random_columns.h"

#include "support/numbers.h"

#include <algorithm>
#include <cmath>

namespace veltrane::tests {

using namespace veltrane_kit;

bool AreSameNumbers(double left, double right) {
    return std::isnan(left) || std::isnan(right) ? std::isnan(left) == std::isnan(right) : Bits(left) == Bits(right);
}

bool AreTheSame(const Value& left, const Value& right) {
    if (left.isMissing || right.isMissing) {
        return left.isMissing == right.isMissing;
    }
    return left.type == right.type && left.isInvalid == right.isInvalid && AreSameNumbers(left.number, right.number) &&
           (!IsText(left.type) || left.text == right.text);
}

RandomColumns::RandomColumns(Random& random, std::size_t rows)
    : fValues(kFieldNames.size()), fNumbers(kFieldNames.size()), fInvalid(kFieldNames.size()) {
    static std::uint64_t mark = 0;
    for (std::size_t field = 0; field < kFieldNames.size(); ++field) {
        const bool hasInvalid = Below(random, 3) == 0;
        for (std::size_t row = 0; row < rows; ++row) {
            Value value = RandomValue(random, kFieldTypes[field]);
            value.isInvalid = hasInvalid && !value.isMissing && Below(random, 3) == 0;
            fValues[field].push_back(value);
            fNumbers[field].push_back(value.number);
            fInvalid[field].push_back(value.isInvalid ? 1 : 0);
        }
    }
    for (const Value& value : fValues.back()) {
        fTexts.push_back(value.isMissing ? std::string_view() : value.text);
        std::size_t entry = 0;
        while (entry < fEntryTexts.size() &&
               (fEntryTexts[entry] != fTexts.back() || fEntryInvalid[entry] != (value.isInvalid ? 1 : 0) ||
                (fEntryTexts[entry].data() == nullptr) != value.isMissing)) {
            ++entry;
        }
        if (entry == fEntryTexts.size()) {
            fEntryTexts.push_back(fTexts.back());
            fEntryInvalid.push_back(value.isInvalid ? 1 : 0);
        }
        fEntries.push_back(static_cast<std::int32_t>(entry));
    }
    fTable = {fEntryTexts.data(), fEntryInvalid.data(), fEntryTexts.size(), ++mark};
}

void RandomColumns::Show(Block& block, bool areTyped, bool hasDictionary) const {
    for (std::size_t i = 0; i < kFieldNames.size(); ++i) {
        FieldColumn& field = block.Field(static_cast<int>(i));
        field.type = areTyped ? kFieldTypes[i] : DataType::DOUBLE;
        if (!areTyped) {
            field.values = fValues[i].data();
            continue;
        }
        field.invalid = fInvalid[i].data();
        if (kFieldTypes[i] == DataType::STRING) {
            ShowTexts(field, hasDictionary);
        } else {
            field.numbers = fNumbers[i].data();
        }
    }
}

void RandomColumns::ShowTexts(FieldColumn& field, bool hasDictionary) const {
    if (hasDictionary) {
        field.entries = fEntries.data();
        field.table = &fTable;
    } else {
        field.texts = fTexts.data();
    }
}

void RandomColumns::Load(std::size_t row, Frame& frame) const {
    for (std::size_t i = 0; i < kFieldNames.size(); ++i) {
        static_cast<Value&>(frame.Field(static_cast<int>(i))) = fValues[i][row];
    }
}

} // namespace veltrane::tests
