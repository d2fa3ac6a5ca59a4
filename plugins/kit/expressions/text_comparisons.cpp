// Comparisons of texts, by their bytes or by the order of an ordinal field, and membership among constants.
#include "kit/expressions/leaves.h"
#include "kit/expressions/number_forms.h"
#include "kit/expressions/numbers.h"
#include "kit/functions/texts/bytes.h"
#include "kit/values/text_codes.h"

#include <algorithm>
#include <functional>
#include <set>
#include <type_traits>

namespace veltrane_kit {

namespace {

/// By their bytes.
template <typename Relation>
class TextComparison final : public NumberExpression {
public:
    explicit TextComparison(Expressions& arguments)
        : NumberExpression(DataType::BOOLEAN), fLeft(std::move(arguments[0])), fRight(std::move(arguments[1])) {
        DependOn(*fLeft);
        DependOn(*fRight);
        AddCost(kCostOfText);
    }

    double Number(Frame& frame) const override {
        return Of(ViewOf(fLeft->Evaluate(frame)), ViewOf(fRight->Evaluate(frame)));
    }

protected:
    NumberColumn ComputeNumbers(Block& block) const override {
        double* const results = block.Numbers().Take();
        const Block::Scratch scratch(block);
        const Column left = fLeft->Evaluate(block);
        const Column right = fRight->Evaluate(block);
        for (std::size_t i = 0; i < block.Count(); ++i) {
            results[i] = Of(left.TextAt(i), right.TextAt(i));
        }
        return NumberColumn::Own(results);
    }

private:
    static double Of(std::string_view left, std::string_view right) {
        const bool isMissing = left.data() == nullptr || right.data() == nullptr;
        return isMissing ? kMissing : Holds(left, right) ? 1.0 : 0.0;
    }

    static bool Holds(std::string_view left, std::string_view right) {
        constexpr bool kIsOfOrder =
            !std::is_same_v<Relation, std::equal_to<>> && !std::is_same_v<Relation, std::not_equal_to<>>;
        if constexpr (kIsOfOrder) {
            return Relation()(standard::CompareTexts(left, right), 0);
        }
        return Relation()(left, right);
    }

    ExpressionPtr fLeft;
    ExpressionPtr fRight;
};

/// The place of a text; missing where the text is.
class PlaceExpression final : public NumberExpression {
public:
    PlaceExpression(ExpressionPtr text, OrderPtr order, double unlisted)
        : NumberExpression(DataType::DOUBLE), fText(std::move(text)), fOrder(std::move(order)), fUnlisted(unlisted) {
        DependOn(*fText);
        AddCost(kCostOfText);
    }

    double Number(Frame& frame) const override { return Of(ViewOf(fText->Evaluate(frame))); }

protected:
    NumberColumn ComputeNumbers(Block& block) const override {
        double* const results = block.Numbers().Take();
        const Block::Scratch scratch(block);
        const Column texts = fText->Evaluate(block);
        for (std::size_t i = 0; i < block.Count(); ++i) {
            results[i] = Of(texts.TextAt(i));
        }
        return NumberColumn::Own(results);
    }

private:
    double Of(std::string_view text) const {
        return text.data() == nullptr ? kMissing : fOrder->PlaceOf(text, fUnlisted);
    }

    ExpressionPtr fText;
    OrderPtr fOrder;
    double fUnlisted;
};

/// The order that two arguments are compared by; null for none.
OrderPtr CommonOrder(const Expression& left, const Expression& right) {
    const OrderPtr ofLeft = left.Order();
    const OrderPtr ofRight = right.Order();
    if (ofLeft == nullptr || ofRight == nullptr) {
        return ofLeft != nullptr ? ofLeft : ofRight;
    }
    return ofLeft == ofRight || *ofLeft == *ofRight ? ofLeft : nullptr;
}

class NumberMembership final : public NumberExpression {
public:
    NumberMembership(ExpressionPtr argument, std::vector<double> members, bool answer)
        : NumberExpression(DataType::BOOLEAN), fArgument(std::move(argument)), fMembers(std::move(members)),
          fAnswer(answer) {
        std::sort(fMembers.begin(), fMembers.end());
        DependOn(*fArgument);
        AddCost(fMembers.size());
    }

    double Number(Frame& frame) const override { return Of(fArgument.Number(frame)); }

protected:
    NumberColumn ComputeNumbers(Block& block) const override {
        double* const results = block.Numbers().Take();
        const Block::Scratch scratch(block);
        const NumberColumn argument = fArgument.Numbers(block);
        for (std::size_t i = 0; i < block.Count(); ++i) {
            results[i] = Of(argument.At(i));
        }
        return NumberColumn::Own(results);
    }

private:
    static constexpr std::size_t kFew = 8;

    double Of(double x) const {
        if (std::isnan(x)) {
            return kMissing;
        }
        const bool isMember = fMembers.size() <= kFew ? std::find(fMembers.begin(), fMembers.end(), x) != fMembers.end()
                                                      : std::binary_search(fMembers.begin(), fMembers.end(), x);
        return isMember == fAnswer ? 1.0 : 0.0;
    }

    Operand fArgument;
    std::vector<double> fMembers;
    bool fAnswer;
};

class TextMembership final : public NumberExpression {
public:
    using Members = std::set<std::string, std::less<>>;

    TextMembership(ExpressionPtr argument, Members members, bool answer)
        : NumberExpression(DataType::BOOLEAN), fArgument(std::move(argument)), fMembers(std::move(members)),
          fAnswer(answer) {
        if (fMembers.size() <= TextCodes::kMost) {
            std::for_each(fMembers.begin(), fMembers.end(), [this](const std::string& each) { fFew.Add(each); });
            fMembers.clear();
        }
        DependOn(*fArgument);
        AddCost(kCostOfText);
    }

    double Number(Frame& frame) const override { return Of(ViewOf(fArgument->Evaluate(frame))); }

protected:
    NumberColumn ComputeNumbers(Block& block) const override {
        double* const results = block.Numbers().Take();
        const Block::Scratch scratch(block);
        const Column argument = fArgument->Evaluate(block);
        for (std::size_t i = 0; i < block.Count(); ++i) {
            results[i] = Of(argument.TextAt(i));
        }
        return NumberColumn::Own(results);
    }

private:
    double Of(std::string_view text) const {
        if (text.data() == nullptr) {
            return kMissing;
        }
        const bool isMember =
            fMembers.empty() ? fFew.Find(text) != TextCodes::kUnknown : fMembers.find(text) != fMembers.end();
        return isMember == fAnswer ? 1.0 : 0.0;
    }

    ExpressionPtr fArgument;
    TextCodes fFew;
    Members fMembers; ///< where they aren't few
    bool fAnswer;
};

template <typename Relation>
ExpressionPtr Make(Expressions& arguments) {
    return std::make_unique<TextComparison<Relation>>(arguments);
}

/// Whether all arguments behind the first are constants of a type that `isAlike` accepts; missing ones count for
/// nothing.
template <typename Predicate>
bool AreConstants(const Expressions& arguments, Predicate isAlike) {
    return std::all_of(arguments.begin() + 1, arguments.end(), [&isAlike](const ExpressionPtr& argument) {
        const Value* constant = argument->Constant();
        return constant != nullptr && (constant->isMissing || isAlike(constant->type));
    });
}

/// Types of which two values are equal when their numbers are.
bool IsPlainNumber(DataType type) {
    return IsNumber(type) || type == DataType::BOOLEAN;
}

} // namespace

ExpressionPtr MakeTextComparison(std::string_view function, Expressions& arguments) {
    if (!arguments[0]->IsOf(DataType::STRING) || !arguments[1]->IsOf(DataType::STRING)) {
        return nullptr;
    }
    if (function == "equal") {
        return Make<std::equal_to<>>(arguments);
    }
    if (function == "notEqual") {
        return Make<std::not_equal_to<>>(arguments);
    }
    if (function == "lessThan") {
        return Make<std::less<>>(arguments);
    }
    if (function == "lessOrEqual") {
        return Make<std::less_equal<>>(arguments);
    }
    if (function == "greaterThan") {
        return Make<std::greater<>>(arguments);
    }
    return function == "greaterOrEqual" ? Make<std::greater_equal<>>(arguments) : nullptr;
}

void ComparePlaces(std::string_view function, Expressions& arguments, FrameLayout& layout) {
    const bool isLess = function == "lessThan" || function == "lessOrEqual";
    const bool isGreater = function == "greaterThan" || function == "greaterOrEqual";
    if (arguments.size() != 2 || (!isLess && !isGreater)) {
        return;
    }
    const OrderPtr order = CommonOrder(*arguments[0], *arguments[1]);
    if (order == nullptr) {
        return;
    }
    for (std::size_t i = 0; i < 2; ++i) {
        const double unlisted = isLess == (i == 0) ? order->Above() : order->Below();
        ExpressionPtr text = AsType(std::move(arguments[i]), DataType::STRING, layout);
        arguments[i] = std::make_unique<PlaceExpression>(std::move(text), order, unlisted);
    }
}

ExpressionPtr MakeMembership(std::string_view function, Expressions& arguments) {
    if ((function != "isIn" && function != "isNotIn") || !arguments[0]->Type()) {
        return nullptr;
    }
    const bool answer = function == "isIn";
    if (arguments[0]->IsOf(DataType::STRING) && AreConstants(arguments, IsText)) {
        TextMembership::Members members;
        for (std::size_t i = 1; i < arguments.size(); ++i) {
            const Value& member = *arguments[i]->Constant();
            if (!member.isMissing) {
                members.emplace(member.text);
            }
        }
        return std::make_unique<TextMembership>(std::move(arguments[0]), std::move(members), answer);
    }
    if (IsPlainNumber(*arguments[0]->Type()) && AreConstants(arguments, IsPlainNumber)) {
        std::vector<double> members;
        for (std::size_t i = 1; i < arguments.size(); ++i) {
            const Value& member = *arguments[i]->Constant();
            if (!member.isMissing) {
                members.push_back(member.number);
            }
        }
        return std::make_unique<NumberMembership>(std::move(arguments[0]), std::move(members), answer);
    }
    return nullptr;
}

} // namespace veltrane_kit
