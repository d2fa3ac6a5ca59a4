#include "kit/expressions/numbers.h"

#include "kit/expressions/leaves.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>

namespace veltrane_kit {

namespace {

struct Quotient {
    double operator()(double a, double b) const { return b == 0.0 ? kMissing : a / b; }
};

template <typename Operation>
class Arithmetic final : public NumberExpression {
public:
    Arithmetic(DataType type, ExpressionPtr left, ExpressionPtr right)
        : NumberExpression(type), fLeft(std::move(left)), fRight(std::move(right)) {}

    double Number(Frame& frame) const override { return Operation()(fLeft.Number(frame), fRight.Number(frame)); }

private:
    Operand fLeft;
    Operand fRight;
};

template <typename Operation>
class Comparison final : public NumberExpression {
public:
    Comparison(ExpressionPtr left, ExpressionPtr right)
        : NumberExpression(DataType::BOOLEAN), fLeft(std::move(left)), fRight(std::move(right)) {}

    double Number(Frame& frame) const override {
        const double left = fLeft.Number(frame);
        const double right = fRight.Number(frame);
        if (std::isnan(left) || std::isnan(right)) {
            return kMissing;
        }
        return Operation()(left, right) ? 1.0 : 0.0;
    }

private:
    Operand fLeft;
    Operand fRight;
};

/// "and" and "or": one argument that is `Decisive` decides, whatever the others are.
template <int Decisive>
class Connective final : public NumberExpression {
public:
    explicit Connective(Expressions arguments) : NumberExpression(DataType::BOOLEAN) {
        for (ExpressionPtr& argument : arguments) {
            fArguments.emplace_back(std::move(argument));
        }
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

private:
    Operands fArguments;
};

class Negation final : public NumberExpression {
public:
    explicit Negation(ExpressionPtr argument) : NumberExpression(DataType::BOOLEAN), fArgument(std::move(argument)) {}

    double Number(Frame& frame) const override { return 1.0 - fArgument.Number(frame); }

private:
    Operand fArgument;
};

class MissingTest final : public NumberExpression {
public:
    MissingTest(ExpressionPtr argument, bool answer)
        : NumberExpression(DataType::BOOLEAN), fArgument(std::move(argument)), fAnswer(answer) {}

    double Number(Frame& frame) const override {
        const bool isMissing =
            fArgument->KeepsNumbers() ? std::isnan(fArgument->Number(frame)) : fArgument->Evaluate(frame).isMissing;
        return isMissing == fAnswer ? 1.0 : 0.0;
    }

private:
    ExpressionPtr fArgument;
    bool fAnswer;
};

std::optional<DataType> TypeOfBranches(const Expressions& arguments) {
    return arguments.size() < 3 ? arguments[1]->Type() : CommonType(arguments[1]->Type(), arguments[2]->Type());
}

/// "if": only the branch that is taken is evaluated.
class Branch final : public Expression {
public:
    explicit Branch(Expressions arguments)
        : Expression(TypeOfBranches(arguments)), fCondition(std::move(arguments[0])),
          fBranches{std::move(arguments[1]), arguments.size() < 3 ? nullptr : std::move(arguments[2])} {}

    Value Evaluate(Frame& frame) const override {
        const Expression* branch = Choose(frame);
        return branch == nullptr ? MakeNumber(kMissing, Type().value_or(DataType::DOUBLE))
                                 : AsCommon(branch->Evaluate(frame), Type());
    }
    double Number(Frame& frame) const override {
        const Expression* branch = Choose(frame);
        return branch == nullptr ? kMissing : branch->Number(frame);
    }
    bool PassesFieldOn() const override {
        return std::any_of(fBranches.begin(), fBranches.end(),
                           [](const ExpressionPtr& branch) { return branch != nullptr && branch->PassesFieldOn(); });
    }

private:
    const Expression* Choose(Frame& frame) const {
        const double truth = fCondition.Number(frame);
        return std::isnan(truth) ? nullptr : fBranches[truth != 0.0 ? 0 : 1].get();
    }

    Operand fCondition;
    std::array<ExpressionPtr, 2> fBranches;
};

bool KeepNumbers(const Expressions& arguments) {
    return std::all_of(arguments.begin(), arguments.end(),
                       [](const ExpressionPtr& argument) { return argument->KeepsNumbers(); });
}

bool AreTruths(const Expressions& arguments) {
    return std::all_of(arguments.begin(), arguments.end(),
                       [](const ExpressionPtr& argument) { return argument->IsOf(DataType::BOOLEAN); });
}

DataType TypeOfNumbers(const Expressions& arguments) {
    const bool areIntegers = std::all_of(arguments.begin(), arguments.end(), [](const ExpressionPtr& argument) {
        return argument->IsOf(DataType::INTEGER);
    });
    return areIntegers ? DataType::INTEGER : DataType::DOUBLE;
}

template <typename Operation>
ExpressionPtr MakeArithmetic(DataType type, Expressions& arguments) {
    return std::make_unique<Arithmetic<Operation>>(type, std::move(arguments[0]), std::move(arguments[1]));
}

template <typename Operation>
ExpressionPtr MakeComparison(Expressions& arguments) {
    return std::make_unique<Comparison<Operation>>(std::move(arguments[0]), std::move(arguments[1]));
}

ExpressionPtr MakeArithmetic(std::string_view function, Expressions& arguments) {
    const DataType type = TypeOfNumbers(arguments);
    if (function == "+") {
        return MakeArithmetic<std::plus<>>(type, arguments);
    }
    if (function == "-") {
        return MakeArithmetic<std::minus<>>(type, arguments);
    }
    if (function == "*") {
        return MakeArithmetic<std::multiplies<>>(type, arguments);
    }
    return function == "/" ? MakeArithmetic<Quotient>(DataType::DOUBLE, arguments) : nullptr;
}

ExpressionPtr MakeComparison(std::string_view function, Expressions& arguments) {
    if (function == "equal") {
        return MakeComparison<std::equal_to<>>(arguments);
    }
    if (function == "notEqual") {
        return MakeComparison<std::not_equal_to<>>(arguments);
    }
    if (function == "lessThan") {
        return MakeComparison<std::less<>>(arguments);
    }
    if (function == "lessOrEqual") {
        return MakeComparison<std::less_equal<>>(arguments);
    }
    if (function == "greaterThan") {
        return MakeComparison<std::greater<>>(arguments);
    }
    return function == "greaterOrEqual" ? MakeComparison<std::greater_equal<>>(arguments) : nullptr;
}

/// Values of two types that measure time are brought to the same scale first, which is not done here.
bool CompareAsNumbers(const Expressions& arguments) {
    const DataType left = *arguments[0]->Type();
    const DataType right = *arguments[1]->Type();
    const bool areDates = (IsMoment(left) || IsCounting(left)) && (IsMoment(right) || IsCounting(right));
    return left == right || !areDates;
}

/// A text that is compared with what keeps numbers is read as one.
void ReadConstant(Expressions& arguments, std::size_t place) {
    const Value* constant = arguments[place]->Constant();
    const Expression& other = *arguments[1 - place];
    if (constant == nullptr || constant->isMissing || !IsText(constant->type) || !other.KeepsNumbers()) {
        return;
    }
    const Value read = ReadValue(constant->text, *other.Type());
    if (!read.isMissing) {
        arguments[place] = std::make_unique<ConstantExpression>(read);
    }
}

ExpressionPtr MakeOfTwo(std::string_view function, Expressions& arguments) {
    if (KeepNumbers(arguments)) {
        if (ExpressionPtr made = MakeArithmetic(function, arguments)) {
            return made;
        }
    }
    ReadConstant(arguments, 0);
    ReadConstant(arguments, 1);
    return KeepNumbers(arguments) && CompareAsNumbers(arguments) ? MakeComparison(function, arguments) : nullptr;
}

class KernelOfOne final : public NumberExpression {
public:
    KernelOfOne(DataType type, double (*kernel)(double), ExpressionPtr argument)
        : NumberExpression(type), fKernel(kernel), fArgument(std::move(argument)) {}

    double Number(Frame& frame) const override {
        const double x = fArgument.Number(frame);
        return std::isnan(x) ? x : fKernel(x);
    }

private:
    double (*fKernel)(double);
    Operand fArgument;
};

class KernelOfTwo final : public NumberExpression {
public:
    KernelOfTwo(DataType type, double (*kernel)(double, double), ExpressionPtr left, ExpressionPtr right)
        : NumberExpression(type), fKernel(kernel), fLeft(std::move(left)), fRight(std::move(right)) {}

    double Number(Frame& frame) const override {
        const double x = fLeft.Number(frame);
        const double y = fRight.Number(frame);
        return std::isnan(x) || std::isnan(y) ? kMissing : fKernel(x, y);
    }

private:
    double (*fKernel)(double, double);
    Operand fLeft;
    Operand fRight;
};

class KernelOfMany final : public NumberExpression {
public:
    KernelOfMany(DataType type, const veltrane::Function& function, Expressions arguments)
        : NumberExpression(type), fKernel(function.ofMany),
          fSkipsMissing(function.missing == veltrane::Function::Missing::IS_SKIPPED) {
        for (ExpressionPtr& argument : arguments) {
            fArguments.emplace_back(std::move(argument));
        }
    }

    double Number(Frame& frame) const override {
        if (fArguments.size() <= kFew) {
            std::array<double, kFew> numbers; // NOLINT(cppcoreguidelines-pro-type-member-init): as many as are read
            return Of(numbers.data(), frame);
        }
        std::vector<double> numbers(fArguments.size());
        return Of(numbers.data(), frame);
    }

private:
    static constexpr std::size_t kFew = 16;

    double Of(double* numbers, Frame& frame) const {
        std::size_t count = 0;
        bool isAnyMissing = false;
        for (const Operand& argument : fArguments) {
            numbers[count] = argument.Number(frame);
            const bool isMissing = std::isnan(numbers[count]);
            isAnyMissing = isAnyMissing || isMissing;
            count += isMissing ? 0 : 1;
        }
        return count == 0 || (isAnyMissing && !fSkipsMissing) ? kMissing : fKernel(numbers, count);
    }

    double (*fKernel)(const double*, std::size_t);
    bool fSkipsMissing;
    Operands fArguments;
};

} // namespace

ExpressionPtr MakeNumberExpression(std::string_view function, Expressions& arguments) {
    if (function == "if") {
        return arguments[0]->IsOf(DataType::BOOLEAN) ? std::make_unique<Branch>(std::move(arguments)) : nullptr;
    }
    if (function == "isMissing" || function == "isNotMissing") {
        return std::make_unique<MissingTest>(std::move(arguments[0]), function == "isMissing");
    }
    if (function == "and" || function == "or" || function == "not") {
        if (!AreTruths(arguments)) {
            return nullptr;
        }
        if (function == "not") {
            return std::make_unique<Negation>(std::move(arguments[0]));
        }
        return function == "and" ? ExpressionPtr(std::make_unique<Connective<0>>(std::move(arguments)))
                                 : ExpressionPtr(std::make_unique<Connective<1>>(std::move(arguments)));
    }
    return arguments.size() == 2 ? MakeOfTwo(function, arguments) : nullptr;
}

ExpressionPtr MakeKernelExpression(const veltrane::Function& function, Expressions& arguments) {
    const std::optional<DataType> type = ResultType(function, arguments);
    if (!type || !KeepNumbers(arguments)) {
        return nullptr;
    }
    if (function.ofOne != nullptr) {
        return std::make_unique<KernelOfOne>(*type, function.ofOne, std::move(arguments[0]));
    }
    if (function.ofTwo != nullptr) {
        return std::make_unique<KernelOfTwo>(*type, function.ofTwo, std::move(arguments[0]), std::move(arguments[1]));
    }
    return function.ofMany == nullptr ? nullptr : std::make_unique<KernelOfMany>(*type, function, std::move(arguments));
}

std::optional<DataType> ResultType(const veltrane::Function& function, const Expressions& arguments) {
    using Result = veltrane::Function::Result;
    switch (function.result) {
    case Result::REAL:
        return DataType::DOUBLE;
    case Result::INTEGER:
        return DataType::INTEGER;
    case Result::TRUTH:
        return DataType::BOOLEAN;
    case Result::TEXT:
        return DataType::STRING;
    case Result::SAME_KIND:
        return std::all_of(arguments.begin(), arguments.end(),
                           [](const ExpressionPtr& argument) { return argument->Type().has_value(); })
                   ? std::optional<DataType>(TypeOfNumbers(arguments))
                   : std::nullopt;
    default:
        break;
    }
    // The first argument of "if" chooses among the others.
    const std::size_t first = function.name == "if" ? 1 : 0;
    std::optional<DataType> type = arguments[first]->Type();
    for (std::size_t i = first + 1; i < arguments.size(); ++i) {
        type = CommonType(type, arguments[i]->Type());
    }
    return type;
}

} // namespace veltrane_kit
