// Logic of truth values, three-valued: not a number is unknown.
#include "kit/columns/number_loops.h"
#include "kit/expressions/number_forms.h"

#include <algorithm>
#include <cmath>

namespace veltrane_kit {

namespace {

/// "and" and "or": one argument that is `Decisive` decides, whatever the others are.
template <int Decisive>
class Connective final : public NumberExpression {
public:
    explicit Connective(Expressions arguments) : NumberExpression(DataType::BOOLEAN) {
        for (ExpressionPtr& argument : arguments) {
            fArguments.emplace_back(std::move(argument));
        }
        DependOnAll(fArguments);
    }

    double Number(Frame& frame) const override {
        double result = 1 - Decisive;
        for (const Operand& argument : fArguments) {
            const double truth = argument.Number(frame);
            if (truth == Decisive) {
                return Decisive;
            }
            result = std::isnan(truth) ? truth : result;
        }
        return result;
    }

protected:
    NumberColumn ComputeNumbers(Block& block) const override {
        double* const results = block.Numbers().Take();
        std::fill(results, results + block.Count(), 1.0 - Decisive);
        for (std::size_t i = 0; i < fArguments.size(); ++i) {
            const Block::Scratch scratch(block);
            if (i == 0 || fArguments[i]->Cost() <= kCheap) {
                Join(results, fArguments[i].Numbers(block), block.Count());
            } else if (!JoinUndecided(block, results, fArguments[i])) {
                break;
            }
        }
        return NumberColumn::Own(results);
    }

private:
    static double Joined(double result, double truth) {
        const double open = std::isnan(truth) ? kMissing : result;
        return result == Decisive || truth == Decisive ? static_cast<double>(Decisive) : open;
    }

    static void Join(double* results, const NumberColumn& truths, std::size_t count) {
        if (truths.numbers == nullptr) {
            const double truth = truths.same;
            VELTRANE_ROW_BY_ROW
            for (std::size_t i = 0; i < count; ++i) {
                results[i] = Joined(results[i], truth);
            }
            return;
        }
        const double* const numbers = truths.numbers;
        VELTRANE_ROW_BY_ROW
        for (std::size_t i = 0; i < count; ++i) {
            results[i] = Joined(results[i], numbers[i]);
        }
    }

    /// For the rows that no argument has decided yet.
    /// @return false when there is none
    static bool JoinUndecided(Block& block, double* results, const Operand& argument) {
        std::uint32_t* const rows = block.Places().Take();
        std::uint32_t* const places = block.Places().Take();
        std::size_t count = 0;
        for (std::size_t i = 0; i < block.Count(); ++i) {
            rows[count] = block.RowAt(i);
            places[count] = static_cast<std::uint32_t>(i);
            count += results[i] == Decisive ? 0 : 1;
        }
        if (count == 0) {
            return false;
        }
        const Block::Choice choice(block, rows, count);
        const NumberColumn truths = argument.Numbers(block);
        for (std::size_t i = 0; i < count; ++i) {
            results[places[i]] = Joined(results[places[i]], truths.At(i));
        }
        return true;
    }

    Operands fArguments;
};

class Negation final : public NumberExpression {
public:
    explicit Negation(ExpressionPtr argument) : NumberExpression(DataType::BOOLEAN), fArgument(std::move(argument)) {
        DependOn(*fArgument);
    }

    double Number(Frame& frame) const override { return 1.0 - fArgument.Number(frame); }

protected:
    NumberColumn ComputeNumbers(Block& block) const override {
        ResultRoom room(block);
        return OfOne(fArgument.Numbers(block), block.Count(), room, [](double truth) { return 1.0 - truth; });
    }

private:
    Operand fArgument;
};

class MissingTest final : public NumberExpression {
public:
    MissingTest(ExpressionPtr argument, bool answer)
        : NumberExpression(DataType::BOOLEAN), fArgument(std::move(argument)), fAnswer(answer) {
        DependOn(*fArgument);
    }

    double Number(Frame& frame) const override {
        const bool isMissing =
            fArgument->KeepsNumbers() ? std::isnan(fArgument->Number(frame)) : fArgument->Evaluate(frame).isMissing;
        return isMissing == fAnswer ? 1.0 : 0.0;
    }

protected:
    NumberColumn ComputeNumbers(Block& block) const override {
        const double yes = fAnswer ? 1.0 : 0.0;
        const double no = 1.0 - yes;
        if (fArgument->KeepsNumbers()) {
            ResultRoom room(block);
            return OfOne(fArgument->Numbers(block), block.Count(), room,
                         [yes, no](double x) { return std::isnan(x) ? yes : no; });
        }
        double* const results = block.Numbers().Take();
        const Block::Scratch scratch(block);
        const Column argument = fArgument->Evaluate(block);
        for (std::size_t i = 0; i < block.Count(); ++i) {
            results[i] = argument.IsMissing(i) ? yes : no;
        }
        return NumberColumn::Own(results);
    }

private:
    ExpressionPtr fArgument;
    bool fAnswer;
};

bool AreTruths(const Expressions& arguments) {
    return std::all_of(arguments.begin(), arguments.end(),
                       [](const ExpressionPtr& argument) { return argument->IsOf(DataType::BOOLEAN); });
}

} // namespace

ExpressionPtr MakeLogic(std::string_view function, Expressions& arguments) {
    if (function == "isMissing" || function == "isNotMissing") {
        return std::make_unique<MissingTest>(std::move(arguments[0]), function == "isMissing");
    }
    if ((function != "and" && function != "or" && function != "not") || !AreTruths(arguments)) {
        return nullptr;
    }
    if (function == "not") {
        return std::make_unique<Negation>(std::move(arguments[0]));
    }
    return function == "and" ? ExpressionPtr(std::make_unique<Connective<0>>(std::move(arguments)))
                             : ExpressionPtr(std::make_unique<Connective<1>>(std::move(arguments)));
}

} // namespace veltrane_kit
