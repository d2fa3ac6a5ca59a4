#include "kit/expressions/tables.h"

#include "kit/columns/number_loops.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <queue>

namespace veltrane_kit {

namespace {

constexpr std::int32_t kNoBin = -1;

/// The fields of a table for a block.
struct Columns : Block::Memory {
    explicit Columns(std::size_t count) : columns(count) {}

    std::vector<Column> columns;
};

/// The numbers of a field of another kind.
NumberColumn NumbersRead(Block& block, const Expression& field) {
    double* const numbers = block.Numbers().Take();
    const Block::Scratch scratch(block);
    const Column column = field.Evaluate(block);
    for (std::size_t row = 0; row < block.Count(); ++row) {
        numbers[row] = NumberOf(column.At(row));
    }
    return NumberColumn::Own(numbers);
}

/// The type of what a table gives: that of its values, where they share one.
class SharedType {
public:
    void Add(const Value& value) {
        if (value.isMissing) {
            return;
        }
        fType = fIsFirst ? std::optional<DataType>(value.type) : CommonType(fType, value.type);
        fIsFirst = false;
    }
    std::optional<DataType> Get() const { return fIsFirst ? std::optional<DataType>(DataType::DOUBLE) : fType; }

private:
    bool fIsFirst = true;
    std::optional<DataType> fType;
};

std::optional<DataType> TypeOfBins(const std::vector<DiscretizeExpression::Bin>& bins, const Value& mapMissingTo,
                                   const Value& defaultValue) {
    SharedType type;
    type.Add(mapMissingTo);
    type.Add(defaultValue);
    for (const DiscretizeExpression::Bin& bin : bins) {
        type.Add(bin.value.value);
    }
    return type.Get();
}

} // namespace

NormContinuousExpression::NormContinuousExpression(ExpressionPtr field, std::vector<Point> points, Outliers outliers,
                                                   double mapMissingTo)
    : NumberExpression(DataType::DOUBLE), fField(std::move(field)), fPoints(std::move(points)), fOutliers(outliers),
      fMapMissingTo(mapMissingTo) {
    DependOn(*fField);
    AddCost(fPoints.size());
}

double NormContinuousExpression::Of(double x) const {
    if (std::isnan(x)) {
        return fMapMissingTo;
    }
    const Point& first = fPoints.front();
    const Point& last = fPoints.back();
    if (fOutliers != Outliers::AS_IS && (x < first.orig || x > last.orig)) {
        return fOutliers == Outliers::AS_MISSING ? kMissing : x < first.orig ? first.norm : last.norm;
    }
    // The line that begins at the last point that isn't above x.
    const auto end = std::upper_bound(fPoints.begin() + 1, fPoints.end() - 1, x,
                                      [](double at, const Point& point) { return at < point.orig; });
    const Point& right = *end;
    const Point& left = *(end - 1);
    return left.norm + (x - left.orig) / (right.orig - left.orig) * (right.norm - left.norm);
}

NumberColumn NormContinuousExpression::ComputeNumbers(Block& block) const {
    ResultRoom room(block);
    const NumberColumn numbers = fField->KeepsNumbers() ? fField->Numbers(block) : NumbersRead(block, *fField);
    if (fPoints.size() > 2 || fOutliers != Outliers::AS_IS) {
        return OfOne(numbers, block.Count(), room, [this](double x) { return Of(x); });
    }
    const Point left = fPoints[0];
    const double width = fPoints[1].orig - left.orig;
    const double height = fPoints[1].norm - left.norm;
    const double missing = fMapMissingTo;
    return OfOne(numbers, block.Count(), room, [left, width, height, missing](double x) {
        const double y = left.norm + (x - left.orig) / width * height;
        return std::isnan(x) ? missing : y;
    });
}

NormDiscreteExpression::NormDiscreteExpression(ExpressionPtr field, std::string value, double mapMissingTo)
    : NumberExpression(DataType::DOUBLE), fField(std::move(field)), fText(std::move(value)),
      fMapMissingTo(mapMissingTo) {
    if (fField->Type()) {
        fValue = ReadValue(fText, *fField->Type());
    }
    DependOn(*fField);
    AddCost(fField->KeepsNumbers() ? 1 : kCostOfText);
}

double NormDiscreteExpression::Of(const Value& value) const {
    if (value.isMissing) {
        return fMapMissingTo;
    }
    if (!fField->Type()) {
        return IsWrittenAs(value, fText) ? 1.0 : 0.0;
    }
    return !fValue.isMissing && AreEqual(value, fValue) ? 1.0 : 0.0;
}

NumberColumn NormDiscreteExpression::ComputeNumbers(Block& block) const {
    if (fField->KeepsNumbers()) {
        ResultRoom room(block);
        const double wanted = fValue.isMissing ? kMissing : fValue.number;
        const double missing = fMapMissingTo;
        return OfOne(fField->Numbers(block), block.Count(), room, [wanted, missing](double x) {
            const double hit = x == wanted ? 1.0 : 0.0;
            return std::isnan(x) ? missing : hit;
        });
    }
    double* const results = block.Numbers().Take();
    const Block::Scratch scratch(block);
    const Column field = fField->Evaluate(block);
    for (std::size_t row = 0; row < block.Count(); ++row) {
        results[row] = Of(field.At(row));
    }
    return NumberColumn::Own(results);
}

DiscretizeExpression::DiscretizeExpression(ExpressionPtr field, std::vector<Bin> bins, const Value& mapMissingTo,
                                           const Value& defaultValue)
    : Expression(TypeOfBins(bins, mapMissingTo, defaultValue)), fField(std::move(field)), fBins(std::move(bins)) {
    fMapMissingTo.Keep(mapMissingTo);
    fDefault.Keep(defaultValue);
    FindFirstBins();
    DependOn(*fField);
    AddCost(kCostOfText);
}

/// A sweep over the ends: a bin is open from its left one to its right one, and of the open ones the first counts.
void DiscretizeExpression::FindFirstBins() {
    for (const Bin& bin : fBins) {
        fEnds.push_back(bin.interval.left);
        fEnds.push_back(bin.interval.right);
    }
    std::sort(fEnds.begin(), fEnds.end());
    fEnds.erase(std::unique(fEnds.begin(), fEnds.end()), fEnds.end());
    const auto placeOf = [this](double end) {
        return static_cast<std::size_t>(std::lower_bound(fEnds.begin(), fEnds.end(), end) - fEnds.begin());
    };
    std::vector<std::vector<std::int32_t>> begin(fEnds.size());
    std::vector<std::vector<std::int32_t>> touch(fEnds.size());
    for (std::size_t i = 0; i < fBins.size(); ++i) {
        const Interval& interval = fBins[i].interval;
        if (interval.left < interval.right) {
            begin[placeOf(interval.left)].push_back(static_cast<std::int32_t>(i));
        }
        if (interval.leftClosed || interval.rightClosed) {
            for (const double end : {interval.left, interval.right}) {
                if (interval.Holds(end)) {
                    touch[placeOf(end)].push_back(static_cast<std::int32_t>(i));
                }
            }
        }
    }
    std::priority_queue<std::int32_t, std::vector<std::int32_t>, std::greater<>> open;
    fFirstBetween.push_back(kNoBin);
    for (std::size_t i = 0; i < fEnds.size(); ++i) {
        const auto dropEnded = [&](bool endsHere) {
            while (!open.empty()) {
                const double right = fBins[static_cast<std::size_t>(open.top())].interval.right;
                if (right > fEnds[i] || (!endsHere && right == fEnds[i])) {
                    break;
                }
                open.pop();
            }
        };
        // Open bins that go on behind this end hold it; those that end here or begin here do if they are closed there.
        dropEnded(true);
        std::int32_t first = open.empty() ? kNoBin : open.top();
        for (const std::int32_t bin : touch[i]) {
            first = first == kNoBin ? bin : std::min(first, bin);
        }
        fFirstAt.push_back(first);
        for (const std::int32_t bin : begin[i]) {
            open.push(bin);
        }
        fFirstBetween.push_back(open.empty() ? kNoBin : open.top());
    }
}

const Value& DiscretizeExpression::Of(double x) const {
    if (std::isnan(x)) {
        return fMapMissingTo.value;
    }
    const auto at = std::lower_bound(fEnds.begin(), fEnds.end(), x);
    const auto place = static_cast<std::size_t>(at - fEnds.begin());
    const std::int32_t bin = at != fEnds.end() && *at == x ? fFirstAt[place] : fFirstBetween[place];
    return bin == kNoBin ? fDefault.value : fBins[static_cast<std::size_t>(bin)].value.value;
}

Column DiscretizeExpression::ComputeColumn(Block& block) const {
    ColumnBuilder builder(block, Type());
    const Block::Scratch scratch(block);
    const NumberColumn numbers = fField->KeepsNumbers() ? fField->Numbers(block) : NumbersRead(block, *fField);
    for (std::size_t row = 0; row < block.Count(); ++row) {
        builder.Set(row, AsCommon(Of(numbers.At(row)), Type()));
    }
    return builder.Get();
}

void MapRows::AppendKey(const Value& value, std::string& key) {
    if (IsText(value.type)) {
        const auto size = static_cast<std::uint64_t>(value.text.size());
        key.append(reinterpret_cast<const char*>(&size), sizeof size);
        key.append(value.text);
    } else {
        const double number = value.number + 0.0; // there is one zero
        key.append(reinterpret_cast<const char*>(&number), sizeof number);
    }
}

void MapRows::Add(const std::vector<Value>& cells, const Value& result) {
    std::string key;
    for (const Value& cell : cells) {
        if (cell.isMissing) {
            return;
        }
        AppendKey(cell, key);
    }
    OwnedValue kept;
    kept.Keep(result);
    fRows.try_emplace(std::move(key), std::move(kept));
}

const OwnedValue* MapRows::Find(std::string_view key) const {
    const auto found = fRows.find(key);
    return found == fRows.end() ? nullptr : &found->second;
}

std::optional<DataType> MapRows::Type(const Value& mapMissingTo, const Value& defaultValue) const {
    SharedType type;
    type.Add(mapMissingTo);
    type.Add(defaultValue);
    for (const auto& [key, result] : fRows) {
        type.Add(result.value);
    }
    return type.Get();
}

MapValuesExpression::MapValuesExpression(Expressions fields, MapRows rows, const Value& mapMissingTo,
                                         const Value& defaultValue, FrameLayout& layout)
    : Expression(rows.Type(mapMissingTo, defaultValue)), fFields(std::move(fields)), fRows(std::move(rows)),
      fKey(layout.AddText()) {
    fMapMissingTo.Keep(mapMissingTo);
    fDefault.Keep(defaultValue);
    DependOn(fFields);
    AddCost(kCostOfText);
}

Value MapValuesExpression::Evaluate(Frame& frame) const {
    return Find(frame.Text(fKey), [this, &frame](std::size_t i) { return fFields[i]->Evaluate(frame); });
}

/// @param key     room for the key of a row
/// @param valueAt gives the value of each field
template <typename ValueAt>
Value MapValuesExpression::Find(std::string& key, ValueAt valueAt) const {
    key.clear();
    for (std::size_t i = 0; i < fFields.size(); ++i) {
        const Value value = valueAt(i);
        if (value.isMissing) {
            return AsCommon(fMapMissingTo.value, Type());
        }
        MapRows::AppendKey(value, key);
    }
    const OwnedValue* found = fRows.Find(key);
    return AsCommon(found == nullptr ? fDefault.value : found->value, Type());
}

Column MapValuesExpression::ComputeColumn(Block& block) const {
    ColumnBuilder builder(block, Type());
    const Block::Scratch scratch(block);
    std::unique_ptr<Block::Memory>& memory = block.MemoryOf(&fFields);
    if (memory == nullptr) {
        memory = std::make_unique<Columns>(fFields.size());
    }
    std::vector<Column>& columns = static_cast<Columns&>(*memory).columns;
    for (std::size_t i = 0; i < fFields.size(); ++i) {
        columns[i] = fFields[i]->Evaluate(block);
    }
    std::string& key = block.Case().Text(fKey);
    for (std::size_t row = 0; row < block.Count(); ++row) {
        builder.Set(row, Find(key, [&columns, row](std::size_t i) { return columns[i].At(row); }));
    }
    return builder.Get();
}

} // namespace veltrane_kit
