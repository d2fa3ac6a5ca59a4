// Functions with a kernel over numbers.
#include "kit/columns/number_loops.h"
#include "kit/expressions/number_forms.h"
#include "kit/expressions/numbers.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace veltrane_kit {

namespace {

using veltrane::Function;

/// What a kernel costs beside an addition.
constexpr std::size_t kCostOfKernel = 8;

double* Spread(Block& block, double number) {
    double* const numbers = block.Numbers().Take();
    std::fill(numbers, numbers + block.Count(), number);
    return numbers;
}

class KernelOfOne final : public NumberExpression {
public:
    KernelOfOne(DataType type, const Function& function, ExpressionPtr argument)
        : NumberExpression(type), fKernel(function.ofOne), fOfColumns(function.ofColumns),
          fArgument(std::move(argument)) {
        DependOn(*fArgument);
        AddCost(kCostOfKernel);
    }

    double Number(Frame& frame) const override { return Of(fArgument.Number(frame)); }

protected:
    NumberColumn ComputeNumbers(Block& block) const override {
        ResultRoom room(block);
        const NumberColumn argument = fArgument.Numbers(block);
        if (fOfColumns == nullptr || argument.numbers == nullptr) {
            return OfOne(argument, block.Count(), room, [this](double x) { return Of(x); });
        }
        double* const results = room.Of(argument);
        fOfColumns(&argument.numbers, 1, block.Count(), results);
        return NumberColumn::Own(results);
    }

private:
    double Of(double x) const { return std::isnan(x) ? x : fKernel(x); }

    double (*fKernel)(double);
    void (*fOfColumns)(const double* const*, std::size_t, std::size_t, double*);
    Operand fArgument;
};

class KernelOfTwo final : public NumberExpression {
public:
    KernelOfTwo(DataType type, const Function& function, ExpressionPtr left, ExpressionPtr right)
        : NumberExpression(type), fKernel(function.ofTwo), fOfColumns(function.ofColumns), fLeft(std::move(left)),
          fRight(std::move(right)) {
        DependOn(*fLeft);
        DependOn(*fRight);
        AddCost(kCostOfKernel);
    }

    double Number(Frame& frame) const override { return Of(fLeft.Number(frame), fRight.Number(frame)); }

protected:
    NumberColumn ComputeNumbers(Block& block) const override {
        ResultRoom room(block);
        const NumberColumn left = fLeft.Numbers(block);
        const NumberColumn right = fRight.Numbers(block);
        if (left.numbers == nullptr && right.numbers == nullptr) {
            return NumberColumn::Of(Of(left.same, right.same));
        }
        double* const results = room.Of(left, right);
        if (fOfColumns != nullptr && left.numbers != nullptr && right.numbers != nullptr) {
            const std::array<const double*, 2> columns{left.numbers, right.numbers};
            fOfColumns(columns.data(), columns.size(), block.Count(), results);
        } else {
            for (std::size_t i = 0; i < block.Count(); ++i) {
                results[i] = Of(left.At(i), right.At(i));
            }
        }
        return NumberColumn::Own(results);
    }

private:
    double Of(double x, double y) const { return std::isnan(x) || std::isnan(y) ? kMissing : fKernel(x, y); }

    double (*fKernel)(double, double);
    void (*fOfColumns)(const double* const*, std::size_t, std::size_t, double*);
    Operand fLeft;
    Operand fRight;
};

class KernelOfMany final : public NumberExpression {
public:
    KernelOfMany(DataType type, const Function& function, Expressions arguments)
        : NumberExpression(type), fKernel(function.ofMany), fOfColumns(function.ofColumns),
          fSkipsMissing(function.missing == Function::Missing::IS_SKIPPED) {
        for (ExpressionPtr& argument : arguments) {
            fArguments.emplace_back(std::move(argument));
        }
        DependOnAll(fArguments);
        AddCost(kCostOfKernel);
    }

    double Number(Frame& frame) const override {
        return WithRoom([this, &frame](double* numbers) {
            return Of(numbers, [this, &frame](std::size_t i) { return fArguments[i].Number(frame); });
        });
    }

protected:
    NumberColumn ComputeNumbers(Block& block) const override;

private:
    static constexpr std::size_t kFew = 16;

    /// Calls a function with room for a number of each argument.
    template <typename Use>
    double WithRoom(Use use) const {
        if (fArguments.size() <= kFew) {
            std::array<double, kFew> numbers; // NOLINT(cppcoreguidelines-pro-type-member-init): as many as are read
            return use(numbers.data());
        }
        std::vector<double> numbers(fArguments.size());
        return use(numbers.data());
    }

    template <typename NumberAt>
    double Of(double* numbers, NumberAt numberAt) const {
        std::size_t count = 0;
        bool isAnyMissing = false;
        for (std::size_t i = 0; i < fArguments.size(); ++i) {
            numbers[count] = numberAt(i);
            const bool isMissing = std::isnan(numbers[count]);
            isAnyMissing = isAnyMissing || isMissing;
            count += isMissing ? 0 : 1;
        }
        return count == 0 || (isAnyMissing && !fSkipsMissing) ? kMissing : fKernel(numbers, count);
    }

    double (*fKernel)(const double*, std::size_t);
    void (*fOfColumns)(const double* const*, std::size_t, std::size_t, double*);
    bool fSkipsMissing;
    Operands fArguments;
};

NumberColumn KernelOfMany::ComputeNumbers(Block& block) const {
    double* const results = block.Numbers().Take();
    const Block::Scratch scratch(block);
    std::vector<const double*>& columns = block.Columns();
    const std::size_t first = columns.size();
    for (const Operand& argument : fArguments) {
        const NumberColumn numbers = argument.Numbers(block);
        columns.push_back(numbers.numbers != nullptr ? numbers.numbers : Spread(block, numbers.same));
    }
    const double* const* const arguments = columns.data() + first;
    if (fOfColumns != nullptr) {
        fOfColumns(arguments, fArguments.size(), block.Count(), results);
    } else {
        WithRoom([&](double* numbers) {
            for (std::size_t row = 0; row < block.Count(); ++row) {
                results[row] = Of(numbers, [arguments, row](std::size_t i) { return arguments[i][row]; });
            }
            return kMissing;
        });
    }
    columns.resize(first);
    return NumberColumn::Own(results);
}

} // namespace

ExpressionPtr MakeKernelExpression(const Function& function, Expressions& arguments) {
    const std::optional<DataType> type = ResultType(function, arguments);
    if (!type || !KeepNumbers(arguments)) {
        return nullptr;
    }
    if (function.ofOne != nullptr) {
        return std::make_unique<KernelOfOne>(*type, function, std::move(arguments[0]));
    }
    if (function.ofTwo != nullptr) {
        return std::make_unique<KernelOfTwo>(*type, function, std::move(arguments[0]), std::move(arguments[1]));
    }
    return function.ofMany == nullptr ? nullptr : std::make_unique<KernelOfMany>(*type, function, std::move(arguments));
}

} // namespace veltrane_kit
