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

LagExpression::LagExpression(std::size_t history, std::size_t cases, Aggregate aggregate, std::optional<DataType> type)
    : Expression(TypeOf(aggregate, type)), fHistory(history), fCases(cases), fAggregate(aggregate) {}

Value LagExpression::Evaluate(Frame& frame) const {
    const std::deque<OwnedValue>& past = frame.Past(fHistory);
    if (fAggregate == Aggregate::NONE) {
        return past.size() < fCases ? MakeNumber(kMissing, Type().value_or(DataType::DOUBLE)) : past[fCases - 1].value;
    }
    std::vector<double> numbers;
    for (const OwnedValue& kept : past) {
        const double number = NumberOf(kept.value);
        if (!std::isnan(number)) {
            numbers.push_back(number);
        }
    }
    return MakeNumber(numbers.empty() ? kMissing : Of(std::move(numbers)), *Type());
}

double LagExpression::Of(std::vector<double> numbers) const {
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
