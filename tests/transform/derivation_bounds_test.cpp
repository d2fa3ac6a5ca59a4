#include "fields.h"

#include <MCVeltrane_900/InlineTable.h>
#include <MCVeltrane_900/MapValues.h>

using namespace veltrane::tests;

namespace {

class DerivationBounds : public DerivedFields {
protected:
    /// d1 refers to x, d2 to d1, and so on; gives the last.
    TransformVar& Chain(int length) {
        std::string source = "x";
        TransformVar* last = nullptr;
        for (int i = 1; i <= length; ++i) {
            const std::string name = "d" + std::to_string(i);
            last = &Derived(name, kNumeric, source, TD::TE_FIELD_REF);
            source = name;
        }
        return *last;
    }

    /// A value map whose table has these input fields.
    static void MapOf(TransformVar& field, const std::vector<const ScoreDictVar*>& inputs) {
        auto* map = new MapValues(&field);
        auto* table = new InlineTable;
        for (const ScoreDictVar* input : inputs) {
            table->AppendInputField(input);
        }
        map->SetMapMissingValue(Num(-1));
        map->SetDefaultValue(Num(-2));
        map->SetTable(table);
        field.SetMapValues(map);
    }
};

} // namespace

TEST_F(DerivationBounds, AChainUpToTheBoundIsEvaluated) {
    Input("x", 5.0);
    EXPECT_EQ(Result(Chain(TransformVar::MAX_DERIVATION_DEPTH + 1)), "number 5");
}

TEST_F(DerivationBounds, BeyondTheBoundAFieldGivesItsClearedResult) {
    Input("x", 5.0);
    TransformVar& field = Chain(TransformVar::MAX_DERIVATION_DEPTH + 2);
    EXPECT_EQ(Result(field), "number SYSMIS");
    EXPECT_EQ(Result(static_cast<TransformVar&>(*derived.GetVar("d1"))), "number 5");
    EXPECT_EQ(Result(field), "number SYSMIS");
}

TEST_F(DerivationBounds, AConstantAtTheEndIsNeverDenied) {
    TransformVar& constant = Derived("x", kNumeric, "", TD::TE_CONSTANT);
    constant.SetConstString("7");
    TransformVar& field = Chain(TransformVar::MAX_DERIVATION_DEPTH + 1);
    EXPECT_EQ(Result(field), "number 7");
    EXPECT_EQ(Result(constant), "number 7");
}

TEST_F(DerivationBounds, ALongChainDoesNotUseUpTheStack) {
    Input("x", 5.0);
    EXPECT_EQ(Result(Chain(100000)), "number SYSMIS");
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
    TransformVar& field = Derived("d", kNumeric, "", TD::TE_MAP_VALUES);
    MapOf(field, {&field, &field});
    EXPECT_EQ(Result(field), "number -1");
}

TEST_F(DerivationBounds, AWebOfFieldsEndsInTime) {
    // Every field looks at the one before it twice: evaluated as told, the last would take 2^60 evaluations.
    Input("x", 5.0);
    const ScoreDictVar* before = &Derived("d0", kNumeric, "x", TD::TE_FIELD_REF);
    TransformVar* last = nullptr;
    for (int i = 1; i <= 60; ++i) {
        last = &Derived("d" + std::to_string(i), kNumeric, "", TD::TE_MAP_VALUES);
        MapOf(*last, {before, before});
        before = last;
    }
    EXPECT_EQ(Result(*last), "number -2");
    EXPECT_EQ(Result(static_cast<TransformVar&>(*derived.GetVar("d1"))), "number -2");
}
