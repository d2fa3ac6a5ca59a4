#ifndef VELTRANE_PLUGINS_KIT_NUMBER_LOOPS_H
#define VELTRANE_PLUGINS_KIT_NUMBER_LOOPS_H

#include "kit/columns/column.h"

// A row is read before its result is written, and no row looks at another one, so results may stand in a column.
// clang++ finds out by itself, and would warn where it doesn't make a loop wide.
#if defined(__GNUC__) && !defined(__clang__)
#define VELTRANE_ROW_BY_ROW _Pragma("GCC ivdep")
#else
#define VELTRANE_ROW_BY_ROW
#endif

/// Loops over columns of numbers. Results go to a buffer that an argument owns, else to a new one.
namespace veltrane_kit {

/// Gives back what was taken for the arguments of a column and keeps the room of its results.
class ResultRoom {
public:
    /// Before the arguments are computed.
    explicit ResultRoom(Block& block) : fBlock(block), fTaken(block.Numbers().Taken()) {}

    /// For the results of arguments that were computed one after the other.
    double* Of(const NumberColumn& left, const NumberColumn& right) {
        double* const room = left.own != nullptr    ? left.own
                             : right.own != nullptr ? right.own
                                                    : fBlock.Numbers().Take();
        fBlock.Numbers().Keep(fTaken + 1);
        return room;
    }

    double* Of(const NumberColumn& argument) { return Of(argument, NumberColumn()); }

private:
    Block& fBlock;
    std::size_t fTaken;
};

template <typename Operation>
void FillOfTwo(const NumberColumn& left, const NumberColumn& right, std::size_t rows, double* results) {
    const Operation operation;
    if (left.numbers == nullptr) {
        const double x = left.same;
        const double* const y = right.numbers;
        VELTRANE_ROW_BY_ROW
        for (std::size_t i = 0; i < rows; ++i) {
            results[i] = operation(x, y[i]);
        }
    } else if (right.numbers == nullptr) {
        const double* const x = left.numbers;
        const double y = right.same;
        VELTRANE_ROW_BY_ROW
        for (std::size_t i = 0; i < rows; ++i) {
            results[i] = operation(x[i], y);
        }
    } else {
        const double* const x = left.numbers;
        const double* const y = right.numbers;
        VELTRANE_ROW_BY_ROW
        for (std::size_t i = 0; i < rows; ++i) {
            results[i] = operation(x[i], y[i]);
        }
    }
}

/// @param room made before the arguments
template <typename Operation>
NumberColumn OfTwo(const NumberColumn& left, const NumberColumn& right, std::size_t rows, ResultRoom& room) {
    if (left.numbers == nullptr && right.numbers == nullptr) {
        return NumberColumn::Of(Operation()(left.same, right.same));
    }
    double* const results = room.Of(left, right);
    FillOfTwo<Operation>(left, right, rows, results);
    return NumberColumn::Own(results);
}

/// @param operation of one number
template <typename Operation>
NumberColumn OfOne(const NumberColumn& argument, std::size_t rows, ResultRoom& room, const Operation& operation) {
    if (argument.numbers == nullptr) {
        return NumberColumn::Of(operation(argument.same));
    }
    double* const results = room.Of(argument);
    const double* const x = argument.numbers;
    VELTRANE_ROW_BY_ROW
    for (std::size_t i = 0; i < rows; ++i) {
        results[i] = operation(x[i]);
    }
    return NumberColumn::Own(results);
}

} // namespace veltrane_kit

#endif
