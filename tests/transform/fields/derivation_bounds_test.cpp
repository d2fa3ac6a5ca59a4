#include "transform/apply/apply_fields.h"

#include <MCVeltrane_900/InlineTable.h>
#include <MCVeltrane_900/MapValues.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

// How far the evaluation of fields below fields goes, and how often it happens. Evaluations are counted, not timed: a
// field whose source the record doesn't hold asks the record for its position once for each evaluation.

namespace veltrane::tests {
namespace {

class CountingRecord : public CaseRecord {
public:
    int GetIndex(const std::string& name) const override {
        ++questions;
        return CaseRecord::GetIndex(name);
    }
    mutable int questions = 0;
};

class DerivationBounds : public ApplyFields {
protected:
    DerivationBounds() { counting.Add("x", Num(5)); }

    /// d1 refers to the first field, d2 to d1, and so on; gives the last.
    TransformVar& Chain(int length, const std::string& first = "x") {
        std::string source = first;
        TransformVar* last = nullptr;
        for (int i = 1; i <= length; ++i) {
            const std::string name = "d" + std::to_string(i);
            last = &Derived(name, kNumeric, source, TD::TE_FIELD_REF);
            source = name;
        }
        return *last;
    }

    /// A value map whose table has these input fields and the row 5 to 5.
    TransformVar& MapOf(const std::string& name, const std::vector<const ScoreDictVar*>& inputs) {
        TransformVar& field = Derived(name, kNumeric, inputs.back()->GetName(), TD::TE_MAP_VALUES);
        auto* map = new MapValues(&field);
        auto* table = new InlineTable;
        std::vector<ScoreValue*> row;
        for (const ScoreDictVar* input : inputs) {
            map->AddInputField(input);
            table->AppendInputField(input);
            row.push_back(Num(5));
        }
        table->AddInputOutput(row, Num(5));
        map->SetMapMissingValue(Num(-1));
        map->SetDefaultValue(Num(-2));
        map->SetTable(table);
        field.SetMapValues(map);
        return field;
    }

    /// Maps of maps, each with the one before it for all its inputs; gives the last.
    TransformVar& Maps(int depth, std::size_t inputs, const ScoreDictVar& first) {
        const ScoreDictVar* before = &first;
        TransformVar* last = nullptr;
        for (int i = 1; i <= depth; ++i) {
            last = &MapOf("d" + std::to_string(i), std::vector<const ScoreDictVar*>(inputs, before));
            before = last;
        }
        return *last;
    }

    /// What a field gives, asked for alone or as the last one of its dictionary.
    std::string Alone(TransformVar& field) {
        return Written(field.GetTransformedValue(&counting, &dictionary, &derived));
    }
    std::string InItsTurn(const TransformVar& field) {
        derived.SetUpDerivedCaseRecord();
        derived.GetValuesForDerivedVars(&counting, &dictionary);
        return Written(derived.GetVarValue(field.GetName()));
    }

    CountingRecord counting;
};

TEST_F(DerivationBounds, AChainOfAnyLengthIsEvaluated) {
    Input("x", 5.0);
    EXPECT_EQ(Alone(Chain(TransformVar::MAX_DERIVATION_DEPTH + 2)), "number 5");
}

TEST_F(DerivationBounds, AChainOfTenThousandIsEvaluatedOnceForACase) {
    Input("x", 5.0);
    TransformVar& last = Chain(10000);
    EXPECT_EQ(InItsTurn(last), "number 5");
    counting.questions = 0;
    for (int i = 1; i <= 3; ++i) {
        counting.SetValue("x", 5.0 + i);
        const int before = counting.questions;
        EXPECT_EQ(InItsTurn(last), "number " + std::to_string(5 + i));
        EXPECT_EQ(counting.questions - before, 9999); // d1 has found its source for good
    }
}

TEST_F(DerivationBounds, ALongChainDoesNotUseUpTheStack) {
    Input("x", 5.0);
    TransformVar& last = Chain(200000);
    EXPECT_EQ(Alone(last), "number 5");
    counting.SetValue("x", 6.0);
    EXPECT_EQ(Alone(last), "number 6");
}

TEST_F(DerivationBounds, ALongChainOfFunctionsDoesNotUseUpTheStack) {
    Input("x", 5.0);
    std::string source = "x";
    TransformVar* last = nullptr;
    for (int i = 1; i <= 20000; ++i) {
        const std::string name = "d" + std::to_string(i);
        last = &Apply(kNumeric, Call(TD::TF_PLUS, {Field(source), Const(1.0)}), name);
        source = name;
    }
    EXPECT_EQ(Alone(*last), "number 20005");
    EXPECT_EQ(Alone(*last), "number 20005");
    EXPECT_EQ(InItsTurn(*last), "number 20005");
}

struct Depth {
    std::size_t inputs;
    int depth;

    friend void PrintTo(const Depth& depth, std::ostream* out) {
        *out << depth.inputs << " inputs, depth " << depth.depth;
    }
};

class ValueMapBounds : public DerivationBounds, public ::testing::WithParamInterface<Depth> {};

TEST_P(ValueMapBounds, EachMapIsEvaluatedOnceForACase) {
    // Each level asks twice or three times for the one before it: without keeping, 2 to the 300th evaluations.
    const auto [inputs, depth] = GetParam();
    TransformVar& last = Maps(depth, inputs, Input("x", 5.0));
    EXPECT_EQ(InItsTurn(last), "number 5");
    counting.questions = 0;
    EXPECT_EQ(InItsTurn(last), "number 5");
    // The first map has found its source for good, but reads its inputs by name.
    EXPECT_EQ(counting.questions, depth - 1 + static_cast<int>(inputs));
    counting.questions = 0;
    EXPECT_EQ(Alone(last), "number 5");
    // A field that lies deep is begun anew for each answer.
    EXPECT_LE(counting.questions, 3 * depth + static_cast<int>(inputs));
    counting.SetValue("x", 6.0);
    EXPECT_EQ(Alone(last), "number -2");
}

INSTANTIATE_TEST_SUITE_P(Depths, ValueMapBounds,
                         ::testing::Values(Depth{1, 17}, Depth{1, 300}, Depth{1, 2000}, Depth{2, 300}, Depth{5, 2000}),
                         [](const auto& param) {
                             return std::to_string(param.param.inputs) + "InputsDepth" +
                                    std::to_string(param.param.depth);
                         });

TEST_F(DerivationBounds, FunctionsOfFunctionsAreEvaluatedOnceForACase) {
    Input("x", 5.0);
    std::string source = "x";
    TransformVar* last = nullptr;
    for (int i = 1; i <= 300; ++i) {
        const std::string name = "d" + std::to_string(i);
        last = &Apply(kNumeric, Call(TD::TF_MAX, {Field(source), Field(source), Field(source)}), name);
        source = name;
    }
    EXPECT_EQ(Alone(*last), "number 5");
    EXPECT_EQ(Alone(*last), "number 5");
}

TEST_F(DerivationBounds, WhatIsKeptEndsWithTheCase) {
    Input("x", 5.0);
    TransformVar& last = Chain(3);
    for (const double x : {5.0, 6.0, 7.0}) {
        counting.SetValue("x", x);
        EXPECT_EQ(Alone(last), "number " + std::to_string(static_cast<int>(x)));
        EXPECT_EQ(Alone(static_cast<TransformVar&>(*derived.GetVar("d1"))), Alone(last));
    }
}

TEST_F(DerivationBounds, AConstantAtTheEndIsFound) {
    TransformVar& constant = Derived("c", kNumeric, "", TD::TE_CONSTANT);
    constant.SetConstString("7");
    EXPECT_EQ(Alone(Chain(5000, "c")), "number 7");
    EXPECT_EQ(Alone(constant), "number 7");
}

TEST_F(DerivationBounds, AFieldThatRefersToItselfIsMissing) {
    EXPECT_EQ(Result(Derived("d", kNumeric, "d", TD::TE_FIELD_REF)), "number SYSMIS");
    EXPECT_EQ(Result(Derived("s", kText, "s", TD::TE_FIELD_REF)), "text ''");
}

TEST_F(DerivationBounds, FieldsThatReferToEachOtherAreMissing) {
    TransformVar& one = Derived("one", kNumeric, "two", TD::TE_FIELD_REF);
    TransformVar& two = Derived("two", kNumeric, "one", TD::TE_FIELD_REF);
    two.SetRecodeMissValueTo(Num(3));
    EXPECT_EQ(Result(one), "number 3");
    EXPECT_EQ(Result(two), "number 3");
}

TEST_F(DerivationBounds, WhatWasFoundWithinACircleIsNotKept) {
    // Asked for by "one", "two" finds its source in the middle of an evaluation and stands for a missing value; asked
    // for afterwards it finds one.
    TransformVar& one = MapOf("one", {&Input("x", 5.0)});
    TransformVar& two = Derived("two", kNumeric, "one", TD::TE_FIELD_REF);
    two.SetRecodeMissValueTo(Num(3));
    one.AddFieldNameAndTransExpression("two", TD::TE_MAP_VALUES);
    derived.SetUpDerivedCaseRecord();
    for (int i = 0; i < 2; ++i) {
        derived.GetValuesForDerivedVars(&counting, &dictionary);
        EXPECT_EQ(Written(derived.GetVarValue("one")), "number 5");
        EXPECT_EQ(Written(derived.GetVarValue("two")), "number 5");
    }
}

TEST_F(DerivationBounds, ALongCircleEnds) {
    Chain(3000, "d3000");
    EXPECT_EQ(Alone(static_cast<TransformVar&>(*derived.GetVar("d3000"))), "number SYSMIS");
    EXPECT_EQ(Alone(static_cast<TransformVar&>(*derived.GetVar("d1500"))), "number SYSMIS");
}

TEST_F(DerivationBounds, EveryKindEndsACircle) {
    for (const auto kind : {TD::TE_NORM_CONTINUOUS, TD::TE_NORM_DISCRETE, TD::TE_DISCRETIZE, TD::TE_LAG}) {
        TransformVar& field = Derived("d" + std::to_string(kind), kNumeric, "d" + std::to_string(kind), kind);
        EXPECT_EQ(Result(field), "number SYSMIS") << kind;
        EXPECT_EQ(Result(field), "number SYSMIS") << kind;
    }
}

TEST_F(DerivationBounds, ALagBlockedByItselfEnds) {
    Input("x", 5.0);
    TransformVar& field = Derived("d", kNumeric, "x", TD::TE_LAG);
    field.SetLags(1, {&field});
    EXPECT_EQ(Result(field), "number SYSMIS");
    EXPECT_EQ(Result(field), "number 5");
}

TEST_F(DerivationBounds, AValueMapOverItselfEnds) {
    Input("x", 5.0);
    TransformVar& field = Derived("d", kNumeric, "", TD::TE_MAP_VALUES);
    auto* map = new MapValues(&field);
    auto* table = new InlineTable;
    table->AppendInputField(&field);
    map->SetMapMissingValue(Num(-1));
    map->SetTable(table);
    field.SetMapValues(map);
    EXPECT_EQ(Result(field), "number -1");
}

TEST_F(DerivationBounds, AFailureBelowManyFieldsLeavesThemUsable) {
    // The table has a row with two inputs, and a lookup with one of them is an error of whoever has built it.
    const DictVar& x = Input("x", 5.0);
    TransformVar& field = Derived("map", kNumeric, "x", TD::TE_MAP_VALUES);
    auto* map = new MapValues(&field);
    auto* table = new InlineTable;
    table->AppendInputField(&x);
    table->AddInputOutput({Num(5), Num(1)}, Num(2));
    map->SetDefaultValue(Num(-2));
    map->SetTable(table);
    field.SetMapValues(map);
    TransformVar& last = Chain(3000, "map");
    EXPECT_THROW(Alone(last), std::out_of_range);
    counting.SetValue("x", 6.0);
    EXPECT_EQ(Alone(last), "number -2");
}

} // namespace
} // namespace veltrane::tests
