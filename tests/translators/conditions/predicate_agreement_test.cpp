#include "translators/conditions/read_conditions.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

// What the library makes of a document's conditions, against the conditions worked out by hand.

namespace veltrane::tests {
namespace {

using Kind = PlainCondition::Kind;

constexpr int kDocuments = 200;
constexpr int kConditionsEach = 500; // 100,000 in all

/// Random fields, conditions over them and cases, for the operators that mean the same to both sides.
class RandomConditions {
public:
    explicit RandomConditions(unsigned seed) : fRandom(seed) {
        for (const FieldKind kind : {FieldKind::SCALE, FieldKind::ORDINAL_TEXT, FieldKind::ORDINAL_NUMBER,
                                     FieldKind::CATEGORICAL_TEXT, FieldKind::CATEGORICAL_NUMBER}) {
            for (int copy = 0; copy < 2; ++copy) {
                AddField(kind);
            }
        }
    }

    const std::vector<PlainField>& Fields() const { return fFields; }

    PlainCondition Condition(int depth) {
        const int choice = Below(depth > 0 ? 10 : 7);
        if (choice < 4) {
            return Comparison();
        }
        if (choice < 6) {
            return Set();
        }
        if (choice == 6) {
            return Comparison();
        }
        return Compound(depth, Pick<std::string>({"and", "or", "xor"}));
    }

    /// A condition as a node of a tree has it. Only here the answer may come from a surrogate.
    PlainCondition Root() {
        const int choice = Below(6);
        if (choice == 0) {
            return Compound(2, "surrogate");
        }
        return choice < 3 ? Compound(2, Pick<std::string>({"and", "or", "xor"})) : Condition(0);
    }

    PlainCase Case() {
        PlainCase values;
        for (const PlainField& field : fFields) {
            values.push_back(Below(3) == 0 ? std::nullopt : std::optional(Value(field)));
        }
        return values;
    }

private:
    int Below(int bound) { return std::uniform_int_distribution<int>(0, bound - 1)(fRandom); }

    template <typename T>
    T Pick(const std::vector<T>& values) {
        return values[static_cast<std::size_t>(Below(static_cast<int>(values.size())))];
    }

    void AddField(FieldKind kind) {
        PlainField field{"f" + std::to_string(fFields.size()), kind, {}};
        // Numbers are listed in no order, so that a place in the list is not a rank.
        const int count = kind == FieldKind::SCALE ? 0 : 1 + Below(8);
        const int step = 3 + 2 * Below(4);
        for (int i = 0; i < count; ++i) {
            field.categories.push_back(field.IsText() ? "c" + std::to_string(i * step % 11)
                                                      : std::to_string(i * step % 11) + ".5");
        }
        fFields.push_back(field);
    }

    std::string Value(const PlainField& field) {
        if (field.kind != FieldKind::SCALE) {
            return Pick(field.categories);
        }
        return Below(2) == 0 ? std::to_string(Below(7) - 3)
                             : std::to_string(std::uniform_real_distribution<double>(-3, 3)(fRandom));
    }

    PlainCondition Comparison() {
        const auto field = static_cast<std::size_t>(Below(static_cast<int>(fFields.size())));
        if (Below(8) == 0) {
            return {Kind::COMPARISON, field, "isMissing", {}, {}};
        }
        const bool isCategorical =
            fFields[field].kind == FieldKind::CATEGORICAL_TEXT || fFields[field].kind == FieldKind::CATEGORICAL_NUMBER;
        static const std::vector<std::string> operators{"equal",       "notEqual",    "lessThan",
                                                        "lessOrEqual", "greaterThan", "greaterOrEqual"};
        return {Kind::COMPARISON, field, isCategorical ? "equal" : Pick(operators), {Value(fFields[field])}, {}};
    }

    PlainCondition Set() {
        const auto field = static_cast<std::size_t>(2 + Below(static_cast<int>(fFields.size()) - 2));
        PlainCondition set{Kind::SET, field, "isIn", {}, {}};
        for (int count = 1 + Below(4); count > 0; --count) {
            set.values.push_back(Pick(fFields[field].categories));
        }
        return set;
    }

    PlainCondition Compound(int depth, const std::string& op) {
        PlainCondition compound{Kind::COMPOUND, 0, op, {}, {}};
        for (int count = 1 + Below(4); count > 0; --count) {
            const int choice = Below(10);
            if (choice < 2) {
                compound.children.push_back({choice == 0 ? Kind::IS_TRUE : Kind::IS_FALSE, 0, "", {}, {}});
            } else {
                compound.children.push_back(Condition(depth - 1));
            }
        }
        return compound;
    }

    std::mt19937 fRandom;
    std::vector<PlainField> fFields;
};

class PredicateAgreement : public testing::TestWithParam<Encoders> {};

TEST_P(PredicateAgreement, AHundredThousandConditionsGiveWhatTheyWouldByHand) {
    std::map<Truth, int> seen;
    for (int document = 0; document < kDocuments; ++document) {
        RandomConditions random(static_cast<unsigned>(document));
        std::vector<PlainCondition> conditions;
        for (int i = 0; i < kConditionsEach; ++i) {
            conditions.push_back(random.Root());
        }
        const bool ordinalAsScale = document % 2 == 1;
        const ReadConditions read(random.Fields(), conditions, GetParam(), ordinalAsScale);
        for (std::size_t i = 0; i < conditions.size(); ++i) {
            const PlainCase values = random.Case();
            const Truth expected = Evaluate(conditions[i], random.Fields(), values, ordinalAsScale);
            ++seen[expected];
            ASSERT_EQ(read.Evaluate(i, values), expected)
                << "document " << document << ", condition " << i << ": " << ToXml(conditions[i], random.Fields());
        }
    }
    // Every answer has to come up often, or the agreement says little.
    for (const Truth truth : {Truth::IS_TRUE, Truth::IS_FALSE, Truth::UNKNOWN, Truth::TRUE_BY_SURROGATE}) {
        EXPECT_GT(seen[truth], 1000);
    }
}

std::string FormName(const testing::TestParamInfo<Encoders>& form) {
    static const char* const kNames[] = {"Record", "RecordWithEncoders", "Encoded"};
    return kNames[static_cast<std::size_t>(form.param)];
}

INSTANTIATE_TEST_SUITE_P(Forms, PredicateAgreement, testing::Values(Encoders::NONE, Encoders::TEXTS, Encoders::ALL),
                         FormName);

// Where the library answers otherwise than by hand, and is meant to.

/// What each side makes of one condition over one case.
struct Answers {
    Truth byHand;
    Truth record;
    Truth recordWithEncoders;
    Truth encoded;
};

class KeptPredicateDifference : public testing::Test {
protected:
    const std::vector<PlainField> fields{{"x", FieldKind::SCALE, {}},
                                         {"o", FieldKind::ORDINAL_TEXT, {"a", "b", "c"}},
                                         {"s", FieldKind::CATEGORICAL_TEXT, {"a", "b", "c"}},
                                         {"n", FieldKind::CATEGORICAL_NUMBER, {"1", "2", "3"}}};

    /// The condition over a case that has this value in the condition's field and nothing else.
    Answers Ask(const PlainCondition& condition, std::optional<std::string> value) const {
        PlainCase values(fields.size());
        values[condition.field] = std::move(value);
        const auto read = [&](Encoders encoders) {
            return ReadConditions(fields, {condition}, encoders, false).Evaluate(0, values);
        };
        return {Evaluate(condition, fields, values, false), read(Encoders::NONE), read(Encoders::TEXTS),
                read(Encoders::ALL)};
    }

    static void Expect(const Answers& answers, Truth byHand, Truth record, Truth recordWithEncoders, Truth encoded) {
        EXPECT_EQ(answers.byHand, byHand);
        EXPECT_EQ(answers.record, record);
        EXPECT_EQ(answers.recordWithEncoders, recordWithEncoders);
        EXPECT_EQ(answers.encoded, encoded);
    }

    static PlainCondition Comparison(std::size_t field, const std::string& op, std::vector<std::string> values = {}) {
        return {Kind::COMPARISON, field, op, std::move(values), {}};
    }
    static PlainCondition Set(std::size_t field, const std::string& op, std::vector<std::string> values) {
        return {Kind::SET, field, op, std::move(values), {}};
    }
};

constexpr Truth T = Truth::IS_TRUE;
constexpr Truth F = Truth::IS_FALSE;
constexpr Truth U = Truth::UNKNOWN;

TEST_F(KeptPredicateDifference, NotEqualOnACategoricalFieldReadsLikeEqual) {
    Expect(Ask(Comparison(2, "notEqual", {"a"}), "a"), F, T, T, T);
    Expect(Ask(Comparison(2, "notEqual", {"a"}), "b"), T, F, F, F);
    Expect(Ask(Comparison(3, "notEqual", {"1"}), "2"), T, F, F, F);
}

TEST_F(KeptPredicateDifference, TheOrderOfACategoricalFieldIsNotApplied) {
    Expect(Ask(Comparison(2, "lessThan", {"b"}), "a"), T, F, F, F);
    Expect(Ask(Comparison(2, "lessThan", {"b"}), "b"), F, T, T, T);
}

TEST_F(KeptPredicateDifference, AnUnseenCategoryIsMissingInARecord) {
    Expect(Ask(Comparison(2, "equal", {"a"}), "z"), F, U, U, F);
    Expect(Ask(Set(2, "isIn", {"a"}), "z"), F, U, U, F);
    Expect(Ask(Comparison(2, "isMissing"), "z"), F, T, T, T);
}

TEST_F(KeptPredicateDifference, AnUnseenOrdinalCategoryIsPresentAndInNoSplit) {
    // By hand its place would be behind all others.
    Expect(Ask(Comparison(1, "greaterThan", {"a"}), "z"), T, F, F, F);
    Expect(Ask(Comparison(1, "isNotMissing"), "z"), T, F, F, F);
    Expect(Ask(Set(1, "isNotIn", {"a"}), "z"), T, F, F, F);
}

TEST_F(KeptPredicateDifference, IsNotInHoldsTheListedCategoriesThatAreLeft) {
    Expect(Ask(Set(2, "isNotIn", {"a"}), "b"), T, T, T, T);
    Expect(Ask(Set(2, "isNotIn", {"a"}), "z"), T, U, U, F);
    Expect(Ask(Set(3, "isNotIn", {"1"}), "9"), T, U, U, F);
}

TEST_F(KeptPredicateDifference, IsNotMissingIsUnknownOfAMissingValue) {
    Expect(Ask(Comparison(0, "isNotMissing"), std::nullopt), F, U, U, U);
    Expect(Ask(Comparison(1, "isNotMissing"), std::nullopt), F, U, U, U);
    Expect(Ask(Comparison(2, "isNotMissing"), std::nullopt), F, U, U, U);
}

TEST_F(KeptPredicateDifference, ASurrogateWithinAnOrIsNotTrue) {
    const PlainCondition surrogate{
        Kind::COMPOUND, 0, "surrogate", {}, {Comparison(2, "equal", {"a"}), Comparison(0, "isMissing")}};
    const PlainCondition within{Kind::COMPOUND, 0, "or", {}, {surrogate, Comparison(0, "equal", {"1"})}};
    Expect(Ask(within, std::nullopt), U, U, U, U);
    const PlainCondition onlySurrogates{Kind::COMPOUND, 0, "or", {}, {surrogate, surrogate}};
    Expect(Ask(onlySurrogates, std::nullopt), F, F, F, F);
}

} // namespace
} // namespace veltrane::tests
