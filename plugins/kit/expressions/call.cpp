#include "kit/expressions/call.h"

#include "kit/expressions/leaves.h"
#include "kit/expressions/numbers.h"

#include <algorithm>
#include <array>
#include <functional>

namespace veltrane_kit {

namespace {

using veltrane::Function;

constexpr std::size_t kFew = 8;

/// The arguments of a call of a defined function for a block.
struct Columns : Block::Memory {
    explicit Columns(std::size_t count) : columns(count) {}

    std::vector<Column> columns;
};

/// The form of a call for blocks, where its results are of the type of the call.
std::unique_ptr<const standard::ViewFunction> MakeViews(const Function& function, const Expressions& arguments,
                                                        std::optional<DataType> type, const std::string& encoding) {
    if (function.ofValues == nullptr || encoding != "UTF-8") {
        return nullptr;
    }
    std::vector<const Value*> constants;
    for (const ExpressionPtr& argument : arguments) {
        constants.push_back(argument->Constant());
    }
    auto views = standard::MakeViewFunction(function.ofValues, constants);
    return views != nullptr && views->Result() == type ? std::move(views) : nullptr;
}

std::optional<DataType> TypeOfCall(const Function& function, const Expressions& arguments, const Value* mapMissingTo) {
    const std::optional<DataType> type = ResultType(function, arguments);
    return mapMissingTo == nullptr ? type : CommonType(type, mapMissingTo->type);
}

} // namespace

CallExpression::CallExpression(const Function& function, Expressions arguments, const Value* mapMissingTo,
                               FrameLayout& layout)
    : Expression(TypeOfCall(function, arguments, mapMissingTo)), fFunction(function), fArguments(std::move(arguments)),
      fMapsMissing(mapMissingTo != nullptr), fOfViews(MakeViews(function, fArguments, Type(), layout.encoding)),
      fText(layout.AddText()), fMemory(layout.AddMemory()) {
    if (mapMissingTo != nullptr) {
        fMapMissingTo.Keep(*mapMissingTo);
    }
    DependOn(fArguments);
    AddCost(kCostOfText);
}

Value CallExpression::Evaluate(Frame& frame) const {
    const auto argumentAt = [this, &frame](std::size_t i) { return fArguments[i]->Evaluate(frame); };
    if (fArguments.size() <= kFew) {
        std::array<Value, kFew> arguments;
        return Call(frame, arguments.data(), argumentAt);
    }
    std::vector<Value> arguments(fArguments.size());
    return Call(frame, arguments.data(), argumentAt);
}

bool CallExpression::PassesFieldOn() const {
    return fFunction.result == Function::Result::ARGUMENT &&
           std::any_of(fArguments.begin(), fArguments.end(),
                       [](const ExpressionPtr& argument) { return argument->PassesFieldOn(); });
}

/// @param arguments  room for as many
/// @param argumentAt gives one after the other
template <typename ArgumentAt>
Value CallExpression::Call(Frame& frame, Value* arguments, ArgumentAt argumentAt) const {
    std::size_t count = 0;
    bool isAnyMissing = false;
    const bool skips = fFunction.missing == Function::Missing::IS_SKIPPED && !fMapsMissing;
    for (std::size_t i = 0; i < fArguments.size(); ++i) {
        arguments[count] = argumentAt(i);
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

/// The arguments of a call for a block.
class CallExpression::Room : public Block::Memory {
public:
    explicit Room(std::size_t count) : columns(count), values(count) {}

    /// Whether a text is a part of an argument, and stays as it does.
    bool IsPartOfArgument(std::string_view text) const {
        return std::any_of(values.begin(), values.end(), [text](const Value& value) {
            const std::less_equal<> isUpTo;
            return !value.isMissing && IsText(value.type) && isUpTo(value.text.data(), text.data()) &&
                   isUpTo(text.data() + text.size(), value.text.data() + value.text.size());
        });
    }

    std::vector<Column> columns;
    std::vector<Value> values;
};

Column CallExpression::ComputeColumn(Block& block) const {
    ColumnBuilder builder(block, Type());
    const Block::Scratch scratch(block);
    std::unique_ptr<Block::Memory>& memory = block.MemoryOf(&fArguments);
    if (memory == nullptr) {
        memory = std::make_unique<Room>(fArguments.size());
    }
    auto& room = static_cast<Room&>(*memory);
    for (std::size_t i = 0; i < fArguments.size(); ++i) {
        room.columns[i] = fArguments[i]->Evaluate(block);
    }
    const bool hasViews = fOfViews != nullptr && fOfViews->Takes(room.columns);
    const standard::ViewFunction::Results results{builder.Texts(), builder.Numbers()};
    std::size_t row = 0;
    while (row < block.Count()) {
        row = hasViews ? fOfViews->Compute(room.columns, row, block.Count(), block.Arena(), results) : row;
        if (row < block.Count()) {
            ComputeRow(block, room, row, builder);
            ++row;
        }
    }
    return builder.Get();
}

void CallExpression::ComputeRow(Block& block, Room& room, std::size_t row, ColumnBuilder& builder) const {
    const Value value =
        Call(block.Case(), room.values.data(), [&room, row](std::size_t i) { return room.columns[i].At(row); });
    if (value.isMissing || !IsText(value.type) || room.IsPartOfArgument(value.text)) {
        builder.Set(row, value);
    } else {
        builder.SetCopy(row, value);
    }
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
    DependOn(fArguments);
    AddCost(function.cost);
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

/// @return for each chosen row whether an argument is missing; null when nobody asks
const std::uint8_t* DefinedCallExpression::SetParameters(Block& block) const {
    std::uint8_t* const anyMissing = fMapsMissing ? block.Flags().Take() : nullptr;
    if (fMapsMissing) {
        std::fill(anyMissing, anyMissing + block.Count(), std::uint8_t{0});
    }
    std::unique_ptr<Block::Memory>& memory = block.MemoryOf(&fArguments);
    if (memory == nullptr) {
        memory = std::make_unique<Columns>(fArguments.size());
    }
    std::vector<Column>& columns = static_cast<Columns&>(*memory).columns;
    for (std::size_t i = 0; i < fArguments.size(); ++i) {
        columns[i] = fArguments[i]->Evaluate(block);
        for (std::size_t row = 0; fMapsMissing && row < block.Count(); ++row) {
            anyMissing[row] |= columns[i].IsMissing(row) ? 1 : 0;
        }
    }
    for (std::size_t i = 0; i < fArguments.size(); ++i) {
        SetField(block, fFunction.parameters[i].slot, fFunction.parameters[i].type, columns[i]);
    }
    return anyMissing;
}

Column DefinedCallExpression::ComputeColumn(Block& block) const {
    ColumnBuilder builder(block, Type());
    const Block::Scratch scratch(block);
    const std::uint8_t* const anyMissing = SetParameters(block);
    const Column body = fFunction.body->Evaluate(block);
    for (std::size_t row = 0; row < block.Count(); ++row) {
        const bool isReplaced = anyMissing != nullptr && anyMissing[row] != 0;
        builder.Set(row, AsCommon(isReplaced ? fMapMissingTo.value : body.At(row), Type()));
    }
    return builder.Get();
}

NumberColumn DefinedCallExpression::ComputeNumbers(Block& block) const {
    double* const results = block.Numbers().Take();
    const Block::Scratch scratch(block);
    const std::uint8_t* const anyMissing = SetParameters(block);
    const NumberColumn body = fFunction.body->Numbers(block);
    for (std::size_t row = 0; row < block.Count(); ++row) {
        const bool isReplaced = anyMissing != nullptr && anyMissing[row] != 0;
        results[row] = isReplaced ? fMapMissingTo.value.number : body.At(row);
    }
    return NumberColumn::Own(results);
}

double DefinedCallExpression::Number(Frame& frame) const {
    return SetParameters(frame) ? fFunction.body->Number(frame) : fMapMissingTo.value.number;
}

} // namespace veltrane_kit
