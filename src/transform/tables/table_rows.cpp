#include "transform/tables/table_rows.h"

#include "data/values/number_tests.h"
#include "data/values/value_cast.h"

#include <cmath>
#include <iterator>
#include <stdexcept>
#include <string_view>
#include <typeinfo>
#include <utility>

using MCVeltrane_900::NumericValue;
using MCVeltrane_900::ScoreValue;
using MCVeltrane_900::StringValue;

namespace veltrane::transform {

namespace {

/// A row takes 32 bytes, so a full block is moved within the time of a few comparisons.
constexpr std::size_t kFullBlock = 256;

/// How many rows a search takes in their order.
constexpr std::size_t kFewRows = 8;

enum class Order { LESS, GREATER, EQUAL };

std::string_view Trimmed(std::string_view text) {
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

/// Both strict operators of two texts in one comparison.
Order OrderOfTexts(std::string_view left, std::string_view right) {
    left = Trimmed(left);
    right = Trimmed(right);
    if (left.empty()) {
        return Order::EQUAL;
    }
    if (right.empty()) {
        return Order::LESS;
    }
    const int order = left.compare(right);
    return order < 0 ? Order::LESS : order > 0 ? Order::GREATER : Order::EQUAL;
}

/// Both strict operators of two numbers in one comparison. Not-a-number comes behind everything.
Order OrderOfNumbers(double left, double right) {
    const double difference = left - right;
    if (left == data::kMissingNumber || right == data::kMissingNumber ||
        data::kOrderTolerance > std::fabs(difference)) {
        return Order::EQUAL;
    }
    return difference < 0 ? Order::LESS : Order::GREATER;
}

Order OrderByOperators(const ScoreValue& left, const ScoreValue& right) {
    if (!data::IsNumber(left) && !data::IsText(left)) {
        return Order::EQUAL;
    }
    if (left < right) {
        return Order::LESS;
    }
    return left > right ? Order::GREATER : Order::EQUAL;
}

/// How two elements of a key compare, by the kind of the left one.
Order OrderOf(const ScoreValue* left, const ScoreValue* right) {
    if (left == nullptr || right == nullptr) {
        return Order::EQUAL;
    }
    const std::type_info& type = typeid(*left);
    if (type == typeid(*right)) {
        if (type == typeid(StringValue)) {
            return OrderOfTexts(static_cast<const StringValue*>(left)->GetText(),
                                static_cast<const StringValue*>(right)->GetText());
        }
        if (type == typeid(NumericValue)) {
            return OrderOfNumbers(data::StoredNumber::Of(static_cast<const NumericValue&>(*left)),
                                  data::StoredNumber::Of(static_cast<const NumericValue&>(*right)));
        }
    }
    return OrderByOperators(*left, *right);
}

/// The first of the positions [0, count) that `isBefore` doesn't hold of; count when there is none.
template <class IsBefore>
std::size_t FirstNot(std::size_t count, IsBefore isBefore) {
    std::size_t first = 0;
    std::size_t last = count;
    while (last - first > kFewRows) {
        const std::size_t middle = first + (last - first) / 2;
        if (isBefore(middle)) {
            first = middle + 1;
        } else {
            last = middle;
        }
    }
    while (first < last && isBefore(first)) {
        ++first;
    }
    return first;
}

} // namespace

bool ComesBefore(const TableKey& left, const TableKey& right) {
    for (std::size_t i = 0; i < left.size(); ++i) {
        if (i >= right.size()) {
            throw std::out_of_range("invalid vector<T> subscript");
        }
        const Order order = OrderOf(left[i], right[i]);
        if (order != Order::EQUAL) {
            return order == Order::LESS;
        }
    }
    return false;
}

bool TableRows::Add(TableKey inputs, ScoreValue* output) {
    const Place place = FirstNotBefore(inputs);
    if (IsRow(place) && !ComesBefore(inputs, fBlocks[place.block][place.row].inputs)) {
        return false;
    }
    Insert(place, {std::move(inputs), output});
    return true;
}

const TableRows::Row* TableRows::Find(const TableKey& inputs) const {
    const Place place = FirstNotBefore(inputs);
    if (!IsRow(place)) {
        return nullptr;
    }
    const Row& row = fBlocks[place.block][place.row];
    return ComesBefore(inputs, row.inputs) ? nullptr : &row;
}

/// The place of the first row that doesn't come before the inputs; behind the last row when all of them do.
TableRows::Place TableRows::FirstNotBefore(const TableKey& inputs) const {
    if (fBlocks.empty()) {
        return {0, 0};
    }
    // The last block is searched in any case: behind its last row is a place too.
    const std::size_t block =
        FirstNot(fBlocks.size() - 1, [&](std::size_t i) { return ComesBefore(fBlocks[i].back().inputs, inputs); });
    const Block& rows = fBlocks[block];
    return {block, FirstNot(rows.size(), [&](std::size_t i) { return ComesBefore(rows[i].inputs, inputs); })};
}

bool TableRows::IsRow(Place place) const {
    return place.block < fBlocks.size() && place.row < fBlocks[place.block].size();
}

void TableRows::Insert(Place place, Row row) {
    if (fBlocks.empty()) {
        fBlocks.emplace_back();
    }
    Block& block = fBlocks[place.block];
    block.insert(block.begin() + static_cast<std::ptrdiff_t>(place.row), std::move(row));
    if (block.size() < kFullBlock) {
        return;
    }
    const auto middle = block.begin() + static_cast<std::ptrdiff_t>(kFullBlock / 2);
    Block upper(std::make_move_iterator(middle), std::make_move_iterator(block.end()));
    block.erase(middle, block.end());
    fBlocks.insert(fBlocks.begin() + static_cast<std::ptrdiff_t>(place.block) + 1, std::move(upper));
}

} // namespace veltrane::transform
