#include "support/function_numbers.h"
#include "support/rows.h"
#include "transform/fields/fields.h"
#include "transform/trees/trees.h"

#include <MCVeltrane_900/ApplyNodeStats.h>
#include <MCVeltrane_900/FunctionTreeImp.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

// Every function with one to eight arguments of every kind, most of which no document may have: each ends in a value,
// and the first case, the later ones and a copy agree on it.

namespace veltrane::tests {
namespace {

using Function = TD::TransformFunction;

constexpr int kMostArguments = 8;

class ApplyOfAnyArguments : public DerivedFields, public testing::WithParamInterface<int> {
protected:
    ApplyOfAnyArguments() {
        Input("x", 1.5);
        Input("t", "a text");
        record.Add("d", new DateTimeValue(86400.0 * 400, DateTimeValue::VAL_DATE));
        dictionary.AddVar("d", new DictVar("d", kDateTime));
        MakeMissing(Input("m", -9.0), -9.0);
        Input("odd", kNumeric, Txt("7"));
        Input("absent", kNumeric, nullptr);
        Input("absent text", kText, nullptr);
        Input("absent date", kDateTime, nullptr);
        Derived("derived", kNumeric, "x", TD::TE_FIELD_REF);
    }

    FunctionTreeImp* Node(ApplyNodeStats stats) {
        stats.SetNodeID(std::to_string(++fNodes));
        auto* node = new FunctionTreeImp;
        node->SetNodeStats(stats);
        return node;
    }

    FunctionTreeImp* Field(const std::string& name) {
        ApplyNodeStats stats;
        stats.SetParameterName(name);
        return Node(stats);
    }

    FunctionTreeImp* Constant(const ScoreValue& value) {
        fValues.emplace_back(value.Clone());
        ApplyNodeStats stats;
        stats.SetConstNode(true);
        stats.SetValue(fValues.back().get());
        return Node(stats);
    }

    FunctionTreeImp* ConstantWithoutValue() {
        ApplyNodeStats stats;
        stats.SetConstNode(true);
        return Node(stats);
    }

    FunctionTreeImp* Call(Function function, const std::vector<FunctionTreeImp*>& children) {
        ApplyNodeStats stats;
        stats.SetTransformFunction(function);
        FunctionTreeImp* node = Node(stats);
        for (FunctionTreeImp* child : children) {
            node->Add(child);
        }
        return node;
    }

    /// The arguments: fields in the record, absent and unknown ones, constants, results of functions, and nothing.
    using Maker = std::function<FunctionTreeImp*()>;
    std::vector<Maker> Makers() {
        std::vector<Maker> makers;
        for (const std::string name :
             {"x", "t", "d", "m", "odd", "absent", "absent text", "absent date", "derived", "unknown"}) {
            makers.emplace_back([this, name] { return Field(name); });
        }
        makers.emplace_back([this] { return Constant(NumericValue(1.0)); });
        makers.emplace_back([this] { return Constant(NumericValue(kMissing)); });
        makers.emplace_back([this] { return Constant(StringValue("b")); });
        makers.emplace_back([this] { return Constant(DateTimeValue(5.0, DateTimeValue::VAL_TIME)); });
        makers.emplace_back([this] { return ConstantWithoutValue(); });
        makers.emplace_back([this] { return Call(TD::TF_ABS, {Field("x")}); });
        makers.emplace_back([this] { return Call(TD::TF_LOWER, {Field("t")}); });
        makers.emplace_back([this] { return Call(TD::TF_YEAR_FROM_DATE, {Field("d")}); });
        makers.emplace_back([this] { return Call(TD::TF_IF, {Field("x"), Field("t"), Field("m")}); });
        makers.emplace_back([this] { return Call(TD::TF_EQUAL, {Field("x"), Field("absent")}); });
        makers.emplace_back([this] { return Call(TD::TF_IS_MISSING, {Field("m")}); });
        makers.emplace_back([this] { return Call(TD::TF_VALUE, {Field("d")}); });
        makers.emplace_back([] { return nullptr; });
        return makers;
    }

    void ExpectOneValue(const std::vector<Maker>& arguments, ScoreDictVar::VariableType type) {
        FunctionTreeImp* root = Call(static_cast<Function>(GetParam()), {});
        bool hasHole = false;
        for (const Maker& make : arguments) {
            FunctionTreeImp* child = make();
            hasHole = hasHole || child == nullptr;
            root->Add(child == nullptr ? Constant(NumericValue(0.0)) : child);
            if (child == nullptr) {
                root->Remove(root->GetChildCount() - 1);
            }
        }
        TransformVar field("z", type);
        field.AddFieldNameAndTransExpression("", TD::TE_APPLY);
        field.SetRoot(root);
        const std::string first = Result(field);
        EXPECT_NE(first, "null");
        for (int i = 0; i < 2; ++i) {
            EXPECT_EQ(Result(field), first);
        }
        // A copy closes the gaps between arguments.
        const std::unique_ptr<ScoreDictVar> copy(field.Clone());
        const std::string copied = Result(dynamic_cast<TransformVar&>(*copy));
        EXPECT_TRUE(hasHole || copied == first) << copied << " instead of " << first;
        fValues.clear();
    }

    void ExpectOneValueOfEachType(const std::vector<Maker>& arguments) {
        for (const auto type : {kNumeric, kText, kDateTime}) {
            ExpectOneValue(arguments, type);
        }
    }

private:
    std::vector<std::unique_ptr<ScoreValue>> fValues;
    int fNodes = 0;
};

TEST_P(ApplyOfAnyArguments, OfOneKind) {
    for (const Maker& make : Makers()) {
        for (std::size_t count = 1; count <= kMostArguments; ++count) {
            ExpectOneValueOfEachType(std::vector<Maker>(count, make));
        }
    }
}

TEST_P(ApplyOfAnyArguments, OfMixedKinds) {
    const std::vector<Maker> makers = Makers();
    for (std::size_t start = 0; start < makers.size(); ++start) {
        for (std::size_t stride = 1; stride < makers.size(); stride += 3) {
            std::vector<Maker> arguments;
            for (std::size_t i = 0; i < kMostArguments; ++i) {
                arguments.push_back(makers[(start + i * stride) % makers.size()]);
                ExpectOneValueOfEachType(arguments);
            }
        }
    }
}

/// Every function, and numbers that are none but that a plug-in may set.
std::vector<int> FunctionsAndOthers() {
    std::vector<int> numbers = FunctionNumbers();
    for (const int other : {-1, static_cast<int>(TD::TF_NONE), 80, 999, 1000, numbers.back() + 1, 1 << 30}) {
        if (std::find(numbers.begin(), numbers.end(), other) == numbers.end()) {
            numbers.push_back(other);
        }
    }
    return numbers;
}

INSTANTIATE_TEST_SUITE_P(Functions, ApplyOfAnyArguments, testing::ValuesIn(FunctionsAndOthers()),
                         [](const auto& info) { return info.param < 0 ? "Negative" : std::to_string(info.param); });

/// A function of a fixed number of numbers, and what it gives for any other number of them.
struct FixedCount {
    const char* name;
    Function function;
    std::size_t count;
    const char* otherwise;
};

class ApplyOfTheWrongNumber : public DerivedFields, public testing::WithParamInterface<FixedCount> {};

TEST_P(ApplyOfTheWrongNumber, GivesItsNeutralValue) {
    for (std::size_t count = 1; count <= kMostArguments; ++count) {
        if (count == GetParam().count) {
            continue;
        }
        NumericValue half(0.5);
        ApplyNodeStats constant;
        constant.SetConstNode(true);
        constant.SetValue(&half);
        ApplyNodeStats stats;
        stats.SetTransformFunction(GetParam().function);
        auto* root = new FunctionTreeImp;
        root->SetNodeStats(stats);
        for (std::size_t i = 0; i < count; ++i) {
            constant.SetNodeID(std::to_string(i + 1));
            auto* child = new FunctionTreeImp;
            child->SetNodeStats(constant);
            root->Add(child);
        }
        TransformVar field("z", kNumeric);
        field.AddFieldNameAndTransExpression("", TD::TE_APPLY);
        field.SetRoot(root);
        EXPECT_EQ(Result(field), GetParam().otherwise) << count;
        EXPECT_EQ(Result(field), GetParam().otherwise) << count;
    }
}

const char* const kMissingNumber = "number SYSMIS";

const FixedCount kFixedCounts[] = {
    {"Minus", TD::TF_MINUS, 2, kMissingNumber},
    {"Multiply", TD::TF_MULTIPLY, 2, kMissingNumber},
    {"Divide", TD::TF_DIVIDE, 2, kMissingNumber},
    {"CdfNormal", TD::TF_CDF_NORMAL, 3, kMissingNumber},
    {"IdfNormal", TD::TF_IDF_NORMAL, 3, kMissingNumber},
    {"PdfNormal", TD::TF_PDF_NORMAL, 3, kMissingNumber},
    {"NormalCdf", TD::TF_NORMAL_CDF, 3, kMissingNumber},
    {"NormalPdf", TD::TF_NORMAL_PDF, 3, kMissingNumber},
    {"NormalIdf", TD::TF_NORMAL_IDF, 3, kMissingNumber},
    {"StdNormalCdf", TD::TF_STD_NORMAL_CDF, 1, kMissingNumber},
    {"StdNormalPdf", TD::TF_STD_NORMAL_PDF, 1, kMissingNumber},
    {"StdNormalIdf", TD::TF_STD_NORMAL_IDF, 1, kMissingNumber},
    {"Erf", TD::TF_ERF, 1, kMissingNumber},
    {"OutlierHandle", TD::TF_OUTLIER_HANDLE, 6, kMissingNumber},
    {"Equal", TD::TF_EQUAL, 2, "number 0"},
    {"NotEqual", TD::TF_NOT_EQUAL, 2, "number 1"},
    {"LessThan", TD::TF_LESS_THAN, 2, "number 0"},
    {"LessOrEqual", TD::TF_LESS_OR_EQUAL, 2, "number 0"},
    {"GreaterThan", TD::TF_GREATER_THAN, 2, "number 0"},
    {"GreaterOrEqual", TD::TF_GREATER_OR_EQUAL, 2, "number 0"},
    {"Not", TD::TF_NOT, 1, "number 0"},
    {"YearOfNumbers", TD::TF_YEAR_FROM_DATE, 0, kMissingNumber},
    {"DifferenceOfNumbers", TD::TF_DATE_DAYS_DIFFERENCE, 0, kMissingNumber},
};

INSTANTIATE_TEST_SUITE_P(Functions, ApplyOfTheWrongNumber, testing::ValuesIn(kFixedCounts), NameOfRow());

} // namespace
} // namespace veltrane::tests
