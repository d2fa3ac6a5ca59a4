#include "kit/expressions/call.h"

#include "kit/expressions/leaves.h"
#include "kit/expressions/numbers.h"

#include <algorithm>
#include <array>

namespace veltrane_kit {

namespace {

using veltrane::Function;

constexpr std::size_t kFew = 8;

std::optional<DataType> TypeOfCall(const Function& function, const Expressions& arguments, const Value* mapMissingTo) {
    const std::optional<DataType> type = ResultType(function, arguments);
    return mapMissingTo == nullptr ? type : CommonType(type, mapMissingTo->type);
}

} // namespace

CallExpression::CallExpression(const Function& function, Expressions arguments, const Value* mapMissingTo,
                               FrameLayout& layout)
    : Expression(TypeOfCall(function, arguments, mapMissingTo)), fFunction(function), fArguments(std::move(arguments)),
      fMapsMissing(mapMissingTo != nullptr), fText(layout.AddText()), fMemory(layout.AddMemory()) {
    if (mapMissingTo != nullptr) {
        fMapMissingTo.Keep(*mapMissingTo);
    }
}

Value CallExpression::Evaluate(Frame& frame) const {
    if (fArguments.size() <= kFew) {
        std::array<Value, kFew> arguments;
        return Call(frame, arguments.data());
    }
    std::vector<Value> arguments(fArguments.size());
    return Call(frame, arguments.data());
}

bool CallExpression::PassesFieldOn() const {
    return fFunction.result == Function::Result::ARGUMENT &&
           std::any_of(fArguments.begin(), fArguments.end(),
                       [](const ExpressionPtr& argument) { return argument->PassesFieldOn(); });
}

Value CallExpression::Call(Frame& frame, Value* arguments) const {
    std::size_t count = 0;
    bool isAnyMissing = false;
    const bool skips = fFunction.missing == Function::Missing::IS_SKIPPED && !fMapsMissing;
    for (const ExpressionPtr& argument : fArguments) {
        arguments[count] = argument->Evaluate(frame);
        isAnyMissing = isAnyMissing || arguments[count].isMissing;
        count += skips && arguments[count].isMissing ? 0 : 1;
    }
    const bool isCalled = skips                                                               ? count > 0
                          : fMapsMissing || fFunction.missing != Function::Missing::IS_PASSED ? !isAnyMissing
                                                                                              : true;
    if (isCalled) {
        return AsCommon(Run(frame, arguments, count), Type());
    }
    return AsCommon(fMapsMissing ? fMapMissingTo.value : MakeNumber(kMissing, Type().value_or(DataType::DOUBLE)),
                    Type());
}

Value CallExpression::Run(Frame& frame, const Value* arguments, std::size_t count) const {
    if (fFunction.ofValues != nullptr) {
        veltrane::FunctionCall call{arguments, count, frame.Text(fText), frame.Memory(fMemory), frame.Encoding()};
        return fFunction.ofValues(call);
    }
    std::vector<double> many;
    std::array<double, kFew> few; // NOLINT(cppcoreguidelines-pro-type-member-init): as many as are read
    double* numbers = few.data();
    if (count > kFew) {
        many.resize(count);
        numbers = many.data();
    }
    for (std::size_t i = 0; i < count; ++i) {
        numbers[i] = NumberOf(arguments[i]);
        if (std::isnan(numbers[i])) {
            return MakeNumber(kMissing, TypeOf(arguments, count));
        }
    }
    const double result = fFunction.ofOne != nullptr   ? fFunction.ofOne(numbers[0])
                          : fFunction.ofTwo != nullptr ? fFunction.ofTwo(numbers[0], numbers[1])
                                                       : fFunction.ofMany(numbers, count);
    return MakeNumber(result, TypeOf(arguments, count));
}

DataType CallExpression::TypeOf(const Value* arguments, std::size_t count) const {
    if (Type()) {
        return *Type();
    }
    switch (fFunction.result) {
    case Function::Result::INTEGER:
        return DataType::INTEGER;
    case Function::Result::TRUTH:
        return DataType::BOOLEAN;
    case Function::Result::SAME_KIND:
        return std::all_of(arguments, arguments + count,
                           [](const Value& value) { return value.type == DataType::INTEGER; })
                   ? DataType::INTEGER
                   : DataType::DOUBLE;
    default:
        return DataType::DOUBLE;
    }
}

DefinedCallExpression::DefinedCallExpression(const DefinedFunction& function, Expressions arguments,
                                             const Value* mapMissingTo, FrameLayout& layout)
    : Expression(mapMissingTo == nullptr ? function.body->Type()
                                         : CommonType(function.body->Type(), mapMissingTo->type)),
      fFunction(function), fArguments(std::move(arguments)), fMapsMissing(mapMissingTo != nullptr),
      fText(layout.AddText()) {
    if (mapMissingTo != nullptr) {
        fMapMissingTo.Keep(*mapMissingTo);
    }
}

/// All arguments first: they may call the same function.
/// @return false when the function isn't to be called
bool DefinedCallExpression::SetParameters(Frame& frame) const {
    std::array<Value, kFew> few;
    std::vector<Value> many(fArguments.size() > kFew ? fArguments.size() : 0);
    Value* const values = many.empty() ? few.data() : many.data();
    bool isAnyMissing = false;
    for (std::size_t i = 0; i < fArguments.size(); ++i) {
        values[i] = fArguments[i]->Evaluate(frame);
        isAnyMissing = isAnyMissing || values[i].isMissing;
    }
    for (std::size_t i = 0; i < fArguments.size(); ++i) {
        static_cast<Value&>(frame.Field(fFunction.parameters[i].slot)) = values[i];
    }
    return !fMapsMissing || !isAnyMissing;
}

/// The body makes its texts in one place for all calls, so each call keeps its own.
Value DefinedCallExpression::Evaluate(Frame& frame) const {
    if (!SetParameters(frame)) {
        return AsCommon(fMapMissingTo.value, Type());
    }
    Value value = fFunction.body->Evaluate(frame);
    if (IsText(value.type) && !value.isMissing) {
        std::string& text = frame.Text(fText);
        text.assign(value.text);
        value.text = text;
    }
    return AsCommon(value, Type());
}

double DefinedCallExpression::Number(Frame& frame) const {
    return SetParameters(frame) ? fFunction.body->Number(frame) : fMapMissingTo.value.number;
}

} // namespace veltrane_kit
