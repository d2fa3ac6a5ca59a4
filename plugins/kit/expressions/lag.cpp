#include "kit/expressions/lag.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace veltrane_kit {

namespace {

std::optional<DataType> TypeOf(LagExpression::Aggregate aggregate, std::optional<DataType> field) {
    using Aggregate = LagExpression::Aggregate;
    switch (aggregate) {
    case Aggregate::NONE:
        return field;
    case Aggregate::AVG:
    case Aggregate::MEDIAN:
    case Aggregate::STDDEV:
        return DataType::DOUBLE;
    default:
        return field == DataType::INTEGER ? DataType::INTEGER : DataType::DOUBLE;
    }
}

double Sum(const std::vector<double>& numbers) {
    return std::accumulate(numbers.begin(), numbers.end(), 0.0);
}

double Median(std::vector<double>& numbers) {
    std::sort(numbers.begin(), numbers.end());
    const std::size_t middle = numbers.size() / 2;
    return numbers.size() % 2 != 0 ? numbers[middle] : (numbers[middle - 1] + numbers[middle]) / 2;
}

/// Of a sample; a single value has none.
double Deviation(const std::vector<double>& numbers) {
    if (numbers.size() < 2) {
        return kMissing;
    }
    const auto count = static_cast<double>(numbers.size());
    const double mean = Sum(numbers) / count;
    double squares = 0.0;
    for (const double number : numbers) {
        squares += (number - mean) * (number - mean);
    }
    return std::sqrt(squares / (count - 1));
}

} // namespace

LagExpression::LagExpression(std::size_t history, std::size_t cases, Aggregate aggregate, std::optional<DataType> type,
                             FrameLayout& layout)
    : Expression(TypeOf(aggregate, type)), fHistory(history), fCases(cases), fAggregate(aggregate),
      fText(layout.AddText()) {
    DependOnOtherCases();
}

Value LagExpression::Evaluate(Frame& frame) const {
    const std::deque<OwnedValue>& past = frame.Past(fHistory);
    if (fAggregate == Aggregate::NONE) {
        if (past.size() < fCases) {
            return MakeNumber(kMissing, Type().value_or(DataType::DOUBLE));
        }
        // What is kept goes when the case ends, before hosts read the results.
        Value value = past[fCases - 1].value;
        value.text = frame.Text(fText).assign(value.text);
        return value;
    }
    std::vector<double> numbers;
    for (const OwnedValue& kept : past) {
        const double number = NumberOf(kept.value);
        if (!std::isnan(number)) {
            numbers.push_back(number);
        }
    }
    return MakeNumber(numbers.empty() ? kMissing : Of(numbers), *Type());
}

/// The numbers of a row.
struct LagExpression::Room : Block::Memory {
    std::vector<double> numbers;
};

/// The cases before each row of a block, of which the first lie in the blocks before.
class LagExpression::Past {
public:
    Past(Block& block, std::size_t history)
        : fBlock(block), fLayout(block.Case().Layout().histories[history]), fBefore(block.Case().Kept(history)) {}

    /// Goes on to the next row.
    void Next() {
        const std::size_t row = fRow++;
        if (row == 0) {
            fCount = IsSameBlock(0) ? fBefore.values.size() : 0;
        } else {
            fCount = IsSameBlock(row) ? std::min(fCount + 1, fLayout.length) : 0;
        }
    }

    /// How many cases count for the row.
    std::size_t Count() const { return fCount; }

    /// Whether a case, 1 for the nearest, lies in this block.
    bool IsInBlock(std::size_t cases) const { return cases < fRow; }

    Value At(std::size_t cases) const {
        const std::size_t row = fRow - 1;
        return cases <= row ? fBlock.ValueAt(fLayout.field, row - cases) : fBefore.values[cases - row - 1].value;
    }

private:
    bool IsSameBlock(std::size_t row) const {
        for (std::size_t i = 0; i < fLayout.blocks.size(); ++i) {
            const int slot = fLayout.blocks[i];
            if (row == 0 && fBefore.values.empty()) {
                return false;
            }
            const Value before = row == 0 ? fBefore.blocks[i].value : fBlock.ValueAt(slot, row - 1);
            if (!AreSameOrMissing(fBlock.ValueAt(slot, row), before)) {
                return false;
            }
        }
        return true;
    }

    const Block& fBlock;
    const FrameLayout::History& fLayout;
    const Frame::History& fBefore;
    std::size_t fRow = 0; ///< behind the current one
    std::size_t fCount = 0;
};

Column LagExpression::ComputeColumn(Block& block) const {
    ColumnBuilder builder(block, Type());
    Past past(block, fHistory);
    std::unique_ptr<Block::Memory>& memory = block.MemoryOf(this);
    if (memory == nullptr) {
        memory = std::make_unique<Room>();
    }
    std::vector<double>& numbers = static_cast<Room&>(*memory).numbers;
    for (std::size_t row = 0, i = 0; i < block.Count(); ++row) {
        past.Next();
        if (row != block.RowAt(i)) {
            continue;
        }
        if (fAggregate == Aggregate::NONE) {
            const Value value =
                past.Count() < fCases ? MakeNumber(kMissing, Type().value_or(DataType::DOUBLE)) : past.At(fCases);
            if (past.IsInBlock(fCases)) {
                builder.Set(i, value);
            } else {
                builder.SetCopy(i, value);
            }
        } else {
            numbers.clear();
            for (std::size_t cases = 1; cases <= past.Count(); ++cases) {
                const double number = NumberOf(past.At(cases));
                if (!std::isnan(number)) {
                    numbers.push_back(number);
                }
            }
            builder.Set(i, MakeNumber(numbers.empty() ? kMissing : Of(numbers), *Type()));
        }
        ++i;
    }
    return builder.Get();
}

double LagExpression::Of(std::vector<double>& numbers) const {
    switch (fAggregate) {
    case Aggregate::AVG:
        return Sum(numbers) / static_cast<double>(numbers.size());
    case Aggregate::MAX:
        return *std::max_element(numbers.begin(), numbers.end());
    case Aggregate::MEDIAN:
        return Median(numbers);
    case Aggregate::MIN:
        return *std::min_element(numbers.begin(), numbers.end());
    case Aggregate::PRODUCT:
        return std::accumulate(numbers.begin(), numbers.end(), 1.0, std::multiplies<>());
    case Aggregate::SUM:
        return Sum(numbers);
    default:
        return Deviation(numbers);
    }
}

} // namespace veltrane_kit
