#include "models/expressions/random_expressions.h"

#include "support/numbers.h"

namespace veltrane::tests {

int Below(Random& random, int bound) {
    return static_cast<int>(random() % static_cast<unsigned>(bound));
}

namespace {

using namespace veltrane_kit;

/// The fields of kFieldNames, whose types are told or not.
class Fields : public FieldScope {
public:
    Fields(bool areTyped, bool areOrdinal) : fAreTyped(areTyped) {
        if (areOrdinal) {
            fOrder = MakeOrder(DataType::STRING, {MakeText("red"), MakeText("2"), MakeText(""), MakeText("1")});
        }
    }

    Found Require(const Element& element, const XMLCh* attribute) override {
        const std::string name = element.Text(attribute);
        for (std::size_t i = 0; i < kFieldNames.size(); ++i) {
            if (name == kFieldNames[i]) {
                return {static_cast<int>(i), fAreTyped ? std::optional<DataType>(kFieldTypes[i]) : std::nullopt,
                        kFieldTypes[i] == DataType::STRING ? fOrder : nullptr};
            }
        }
        throw std::logic_error(name);
    }

private:
    bool fAreTyped;
    OrderPtr fOrder;
};

std::string Field(Random& random, int first, int count) {
    return std::string("<FieldRef field='") + kFieldNames[static_cast<std::size_t>(first + Below(random, count))] +
           "'/>";
}

} // namespace

std::string Apply(const std::string& function, const std::string& arguments) {
    return "<Apply function='" + function + "'>" + arguments + "</Apply>";
}

std::string RandomNumber(Random& random, int depth) {
    static constexpr std::array kOfTwo{"+", "-", "*", "/", "pow", "modulo", "threshold", "min", "max", "sum", "avg"};
    static constexpr std::array kOfOne{"abs", "exp", "ln", "sqrt", "floor", "ceil", "round", "rint", "log10", "tanh"};
    static constexpr std::array kConstants{"0", "1", "-2.5", "3", "1e308", "-0.0"};
    const auto pick = [&random](const auto& words) {
        return std::string(words[static_cast<std::size_t>(Below(random, static_cast<int>(words.size())))]);
    };
    switch (depth == 0 ? Below(random, 2) : Below(random, 7)) {
    case 0:
        return Field(random, 0, 3);
    case 1:
        return "<Constant>" + pick(kConstants) + "</Constant>";
    case 2:
        return Apply(pick(kOfOne), RandomNumber(random, depth - 1));
    case 3:
        return Apply("if", RandomTruth(random, depth - 1) + RandomNumber(random, depth - 1) +
                               (Below(random, 3) == 0 ? "" : RandomNumber(random, depth - 1)));
    case 4:
        return Apply("median", RandomNumber(random, depth - 1) + RandomNumber(random, depth - 1) +
                                   RandomNumber(random, depth - 1));
    default:
        return Apply(pick(kOfTwo), RandomNumber(random, depth - 1) + RandomNumber(random, depth - 1));
    }
}

std::string RandomTruth(Random& random, int depth) {
    static constexpr std::array kComparisons{"equal",       "notEqual",    "lessThan",
                                             "lessOrEqual", "greaterThan", "greaterOrEqual"};
    const std::string comparison = kComparisons[static_cast<std::size_t>(Below(random, 6))];
    switch (depth == 0 ? 0 : Below(random, 7)) {
    case 0:
        return Field(random, 3, 1);
    case 1:
        return Apply("not", RandomTruth(random, depth - 1));
    case 2:
        return Apply(Below(random, 2) == 0 ? "and" : "or",
                     RandomTruth(random, depth - 1) + RandomTruth(random, depth - 1) + RandomTruth(random, depth - 1));
    case 3:
        return Apply(Below(random, 2) == 0 ? "isMissing" : "isNotMissing", RandomNumber(random, depth - 1));
    case 4:
        return Apply(comparison, Field(random, 4, 1) + "<Constant>2</Constant>");
    case 5:
        return Apply(comparison, Field(random, 0, 4) + "<Constant dataType='string'>1</Constant>");
    default:
        return Apply(comparison, RandomNumber(random, depth - 1) + RandomNumber(random, depth - 1));
    }
}

veltrane_kit::Value RandomValue(Random& random, veltrane_kit::DataType type) {
    static constexpr std::array kNumbers{0.0, -0.0, 1.0, -1.0, 2.5, 1e308, -1e308, 5e-324, kInfinity, -kInfinity, kNaN};
    static constexpr std::array kTexts{"2", "1", "", "red", "2.0", "true"};
    if (type == DataType::BOOLEAN) {
        return MakeNumber(Below(random, 3) == 0 ? kNaN : Below(random, 2), type);
    }
    if (type == DataType::INTEGER) {
        return MakeNumber(Below(random, 4) == 0 ? kNaN : Below(random, 7) - 3, type);
    }
    if (type == DataType::STRING) {
        return Below(random, 4) == 0 ? veltrane_kit::MakeMissing(type)
                                     : MakeText(kTexts[static_cast<std::size_t>(Below(random, 6))]);
    }
    return MakeNumber(kNumbers[static_cast<std::size_t>(Below(random, 11))], type);
}

ReadExpression::ReadExpression(const std::string& text, bool areTyped, const std::string& defined, bool areOrdinal)
    : document(ParseXml("<D>" + defined + text + "</D>")) {
    Fields fields(areTyped, areOrdinal);
    layout.fields = kFieldNames.size();
    const DocumentText texts("UTF-8");
    const Element root(document.Root(), texts);
    functions.Add(root);
    expression = ExpressionReader(layout, fields, functions).ReadOnly(root, {});
    frame = std::make_unique<Frame>(layout);
}

} // namespace veltrane::tests
