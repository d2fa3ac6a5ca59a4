// What is computed at once gives the same bits as the plain road: expressions over fields of known types beside the
// call of each function with values of any type, and values of a field's own kind beside those that are read from
// texts.
#include "kit/document/document_text.h"
#include "kit/expressions/expression_reader.h"
#include "kit/inputs/input_field.h"
#include "support/dom.h"
#include "support/numbers.h"

#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/StringValue.h>

#include <gtest/gtest.h>

#include <array>
#include <charconv>
#include <random>
#include <string>
#include <utility>

namespace {

using namespace veltrane_kit;
using MCVeltrane_900::NumericValue;
using MCVeltrane_900::ScoreDictVar;
using MCVeltrane_900::StringValue;
using veltrane::tests::Bits;
using veltrane::tests::kInfinity;
using veltrane::tests::kNaN;

using Random = std::mt19937_64;

int Below(Random& random, int bound) {
    return static_cast<int>(random() % static_cast<unsigned>(bound));
}

constexpr std::array kNames{"x", "y", "n", "b", "s"};
constexpr std::array kTypes{DataType::DOUBLE, DataType::DOUBLE, DataType::INTEGER, DataType::BOOLEAN, DataType::STRING};

/// The fields of kNames, whose types are told or not.
class Fields : public FieldScope {
public:
    explicit Fields(bool areTyped) : fAreTyped(areTyped) {}

    Found Require(const Element& element, const XMLCh* attribute) override {
        const std::string name = element.Text(attribute);
        for (std::size_t i = 0; i < kNames.size(); ++i) {
            if (name == kNames[i]) {
                return {static_cast<int>(i), fAreTyped ? std::optional<DataType>(kTypes[i]) : std::nullopt};
            }
        }
        throw std::logic_error(name);
    }

private:
    bool fAreTyped;
};

std::string Field(Random& random, int first, int count) {
    return std::string("<FieldRef field='") + kNames[static_cast<std::size_t>(first + Below(random, count))] + "'/>";
}

std::string Apply(const std::string& function, const std::string& arguments) {
    return "<Apply function='" + function + "'>" + arguments + "</Apply>";
}

std::string Truth(Random& random, int depth);

std::string Number(Random& random, int depth) {
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
        return Apply(pick(kOfOne), Number(random, depth - 1));
    case 3:
        return Apply("if", Truth(random, depth - 1) + Number(random, depth - 1) +
                               (Below(random, 3) == 0 ? "" : Number(random, depth - 1)));
    case 4:
        return Apply("median", Number(random, depth - 1) + Number(random, depth - 1) + Number(random, depth - 1));
    default:
        return Apply(pick(kOfTwo), Number(random, depth - 1) + Number(random, depth - 1));
    }
}

std::string Truth(Random& random, int depth) {
    static constexpr std::array kComparisons{"equal",       "notEqual",    "lessThan",
                                             "lessOrEqual", "greaterThan", "greaterOrEqual"};
    const std::string comparison = kComparisons[static_cast<std::size_t>(Below(random, 6))];
    switch (depth == 0 ? 0 : Below(random, 7)) {
    case 0:
        return Field(random, 3, 1);
    case 1:
        return Apply("not", Truth(random, depth - 1));
    case 2:
        return Apply(Below(random, 2) == 0 ? "and" : "or",
                     Truth(random, depth - 1) + Truth(random, depth - 1) + Truth(random, depth - 1));
    case 3:
        return Apply(Below(random, 2) == 0 ? "isMissing" : "isNotMissing", Number(random, depth - 1));
    case 4:
        return Apply(comparison, Field(random, 4, 1) + "<Constant>2</Constant>");
    case 5:
        return Apply(comparison, Field(random, 0, 4) + "<Constant dataType='string'>1</Constant>");
    default:
        return Apply(comparison, Number(random, depth - 1) + Number(random, depth - 1));
    }
}

Value RandomValue(Random& random, DataType type) {
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

/// An expression that was read, and what it needs for a case.
struct Read {
    Read(const std::string& text, bool areTyped) : document(veltrane::tests::ParseXml("<D>" + text + "</D>")) {
        Fields fields(areTyped);
        DefinedFunctions functions;
        layout.fields = kNames.size();
        const DocumentText texts("UTF-8");
        expression = ExpressionReader(layout, fields, functions).ReadOnly(Element(document.Root(), texts), {});
        frame = std::make_unique<Frame>(layout);
    }

    veltrane::tests::ParsedXml document;
    FrameLayout layout;
    ExpressionPtr expression;
    std::unique_ptr<Frame> frame;
};

TEST(FastExpressions, GiveTheBitsOfPlainCalls) {
    Random random(20261);
    int fast = 0;
    for (int round = 0; round < 1500; ++round) {
        const std::string text = round % 3 == 0 ? Truth(random, 4) : Number(random, 4);
        const Read typed(text, true);
        const Read plain(text, false);
        fast += typed.expression->KeepsNumbers() ? 1 : 0;
        for (int row = 0; row < 20; ++row) {
            for (std::size_t i = 0; i < kNames.size(); ++i) {
                const Value value = RandomValue(random, kTypes[i]);
                static_cast<Value&>(typed.frame->Field(static_cast<int>(i))) = value;
                static_cast<Value&>(plain.frame->Field(static_cast<int>(i))) = value;
            }
            const Value one = typed.expression->Evaluate(*typed.frame);
            const Value other = plain.expression->Evaluate(*plain.frame);
            ASSERT_EQ(one.isMissing, other.isMissing) << text;
            ASSERT_TRUE(one.isMissing || Bits(one.number) == Bits(other.number))
                << text << ": " << one.number << " and " << other.number;
            if (typed.expression->KeepsNumbers()) {
                const double number = typed.expression->Number(*typed.frame);
                ASSERT_EQ(std::isnan(number), one.isMissing) << text;
                ASSERT_TRUE(one.isMissing || Bits(number) == Bits(one.number)) << text;
            }
        }
    }
    EXPECT_GT(fast, 1000) << "most of them are computed at once";
}

DataField RandomField(Random& random, DataType type) {
    DataField field;
    field.name = "x";
    field.type = type;
    field.level = Below(random, 2) == 0 ? ScoreDictVar::LEVEL_CONTINUOUS : ScoreDictVar::LEVEL_NOMINAL;
    for (auto* list : {&field.valid, &field.invalid, &field.missing}) {
        for (int i = Below(random, 2) * Below(random, 12); i > 0; --i) {
            list->emplace_back().Keep(MakeNumber(Below(random, 9) - 4, type));
        }
    }
    for (int i = Below(random, 3); i > 0; --i) {
        const double left = Below(random, 5) - 4.0;
        field.intervals.push_back({left, left + Below(random, 5), Below(random, 2) == 0, Below(random, 2) == 0});
    }
    return field;
}

MiningField RandomTreatment(Random& random) {
    MiningField schema;
    schema.name = "x";
    schema.outliers = static_cast<OutlierTreatment>(Below(random, 3));
    schema.low = -2.0;
    schema.high = 2.5;
    schema.invalid = static_cast<InvalidTreatment>(Below(random, 4));
    schema.invalidReplacement = schema.invalid == InvalidTreatment::REPLACE ? std::optional("3") : std::nullopt;
    schema.missingReplacement = Below(random, 2) == 0 ? std::optional("-1") : std::nullopt;
    schema.missingRefused = Below(random, 4) == 0;
    return schema;
}

std::string TextOf(double number) {
    std::array<char, 32> digits{};
    return {digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr};
}

TEST(FastInputs, AreTreatedAsThoseThatAreReadFromTexts) {
    Random random(20262);
    for (int round = 0; round < 3000; ++round) {
        const DataType type = Below(random, 2) == 0 ? DataType::DOUBLE : DataType::INTEGER;
        const DataField definition = RandomField(random, type);
        const MiningField schema = RandomTreatment(random);
        const InputField field(definition, &schema);
        for (int row = 0; row < 12; ++row) {
            const double number = (Below(random, 21) - 10) / 2.0;
            const NumericValue value(number);
            const StringValue text(TextOf(number));
            FieldValue one;
            FieldValue other;
            ASSERT_EQ(field.Read(&value, one), field.Read(&text, other)) << number;
            ASSERT_EQ(one.isMissing, other.isMissing) << number;
            ASSERT_EQ(one.isInvalid, other.isInvalid) << number;
            ASSERT_EQ(one.category, other.category) << number;
            ASSERT_TRUE(one.isMissing || Bits(one.number) == Bits(other.number)) << number;
        }
    }
}

} // namespace
