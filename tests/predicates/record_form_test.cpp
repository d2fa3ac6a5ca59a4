// How a predicate finds its value in the records of a case, and when the value counts as missing.
#include "conditions.h"
#include "support/numbers.h"
#include "support/rows.h"

#include <MCVeltrane_900/ScoreBinningEncoder.h>
#include <MCVeltrane_900/SetPredicate.h>
#include <MCVeltrane_900/SimplePredicate.h>

#include <gtest/gtest.h>

#include <memory>

using namespace veltrane::tests;

namespace {

/// A record that writes down the questions: positions as #0, names as they are.
class AskedRecord : public Case {
public:
    explicit AskedRecord(ScoreValue* value, bool hasMap = true) : Case(value), fHasMap(hasMap) {}

    bool HasMap() const override { return fHasMap; }
    const ScoreValue* Get(int index) const override {
        asked += "#" + std::to_string(index) + " ";
        return index == 0 && fPositionIsFilled ? GetAllValues()[0] : nullptr;
    }
    const ScoreValue* Get(const std::string& name) const override {
        asked += name + " ";
        return name == "x" ? GetAllValues()[0] : nullptr;
    }
    void EmptyPosition() { fPositionIsFilled = false; }

    mutable std::string asked;

private:
    bool fHasMap;
    bool fPositionIsFilled = true;
};

AskedRecord Two() {
    return AskedRecord(new NumericValue(2.0));
}

/// Both kinds of predicates read a case in the same way.
template <typename Predicate>
class RecordForm : public testing::Test {};
using Kinds = testing::Types<SimplePredicate, SetPredicate>;
TYPED_TEST_SUITE(RecordForm, Kinds);

} // namespace

TYPED_TEST(RecordForm, ReadsByPosition) {
    const Continuous x;
    const TypeParam predicate(InRange(x, 1.0, 3.0));
    const AskedRecord record = Two();
    EXPECT_EQ(predicate.Evaluate(&record, nullptr), kTrue);
    EXPECT_EQ(record.asked, "#0 ");
}

TYPED_TEST(RecordForm, ReadsByNameWithoutAPosition) {
    Continuous x;
    x.SetValueIndex(-1);
    const TypeParam predicate(InRange(x, 1.0, 3.0));
    const AskedRecord record = Two();
    EXPECT_EQ(predicate.Evaluate(&record, nullptr), kTrue);
    EXPECT_EQ(record.asked, "#-1 x ");
}

TYPED_TEST(RecordForm, ReadsByNameWhenThePositionIsEmpty) {
    const Continuous x;
    const TypeParam predicate(InRange(x, 1.0, 3.0));
    AskedRecord record = Two();
    record.EmptyPosition();
    EXPECT_EQ(predicate.Evaluate(&record, nullptr), kTrue);
    EXPECT_EQ(record.asked, "#0 x ");
}

TYPED_TEST(RecordForm, ReadsByNameAloneWithoutAMap) {
    const Continuous x;
    const TypeParam predicate(InRange(x, 1.0, 3.0));
    const AskedRecord record(new NumericValue(2.0), false);
    EXPECT_EQ(predicate.Evaluate(&record, nullptr), kTrue);
    EXPECT_EQ(record.asked, "x ");
}

// Nothing compares the position with the name, so a wrong one reads another variable.
TYPED_TEST(RecordForm, ThePositionComesBeforeTheName) {
    const Continuous y("y");
    const TypeParam predicate(InRange(y, 1.0, 3.0));
    CaseRecord record;
    record.Add("x", new NumericValue(2.0));
    record.Add("y", new NumericValue(9.0));
    EXPECT_EQ(predicate.Evaluate(&record, nullptr), kTrue);
}

TYPED_TEST(RecordForm, ReadsAPlainVariableFromTheFirstRecordAlone) {
    const Continuous x;
    const TypeParam predicate(InRange(x, 1.0, 3.0));
    const AskedRecord record(nullptr);
    const AskedRecord derived = Two();
    EXPECT_EQ(predicate.Evaluate(&record, &derived), kUnknown);
    EXPECT_EQ(record.asked, "#0 x ");
    EXPECT_EQ(derived.asked, "");
}

TYPED_TEST(RecordForm, ReadsADerivedVariableFromTheSecondRecordAlone) {
    Continuous x;
    x.Derived();
    const TypeParam predicate(InRange(x, 1.0, 3.0));
    const AskedRecord record = Two();
    const AskedRecord derived(new NumericValue(9.0));
    EXPECT_EQ(predicate.Evaluate(&record, &derived), kFalse);
    EXPECT_EQ(predicate.Evaluate(nullptr, &derived), kFalse);
    EXPECT_EQ(record.asked, "");
    EXPECT_EQ(derived.asked, "#0 #0 ");
}

TYPED_TEST(RecordForm, ADerivedVariableThatTheSecondRecordLacksIsMissing) {
    Continuous x;
    x.Derived();
    const TypeParam predicate(InRange(x, 1.0, 3.0));
    const AskedRecord record = Two();
    const AskedRecord derived(nullptr);
    EXPECT_EQ(predicate.Evaluate(&record, &derived), kUnknown);
    EXPECT_EQ(record.asked, "");
    EXPECT_EQ(derived.asked, "#0 x ");
}

TYPED_TEST(RecordForm, ReadsADerivedVariableFromTheFirstRecordWithoutASecond) {
    Continuous x;
    x.Derived();
    const TypeParam predicate(InRange(x, 1.0, 3.0));
    const AskedRecord record = Two();
    EXPECT_EQ(predicate.Evaluate(&record, nullptr), kTrue);
    EXPECT_EQ(record.asked, "#0 ");
}

namespace {

struct MissingRow {
    const char* name;
    std::shared_ptr<Variable> var;
    std::shared_ptr<Case> record;
    bool isMissing;
};

template <typename T>
std::shared_ptr<Variable> Made(const T& var) {
    return std::make_shared<T>(var);
}

std::vector<MissingRow> MissingRows() {
    const auto numeric = [](double x) { return std::make_shared<Case>(x); };
    const auto text = [](const char* t) { return std::make_shared<Case>(t); };
    const auto colors = [] { return Categorical(kText); };
    const std::vector<std::string> known = {"red", "green"};
    return {
        {"Null", Made(Continuous()), std::make_shared<Case>(nullptr), true},
        {"ContinuousNumber", Made(Continuous()), numeric(5), false},
        {"ContinuousSystemMissing", Made(Continuous()), numeric(kMissing), true},
        {"ContinuousUserMissing", Made(Continuous().Missing("9")), numeric(9), true},
        {"OrdinalUserMissing", Made(Ordinal(kText).Missing("n/a")), text("n/a"), true},
        {"OrdinalOutsideTheCategories", Made(Ordinal(kText).Categories(known)), text("mauve"), false},
        {"OrdinalUnknownToTheEncoder", Made(Ordinal(kText).Encoded(known)), text("mauve"), false},
        {"CategoricalInTheCategories", Made(colors().Categories(known)), text("red "), false},
        {"CategoricalOutsideTheCategories", Made(colors().Categories(known)), text("mauve"), true},
        {"CategoricalWithoutCategories", Made(colors()), text("mauve"), false},
        {"CategoricalUserMissing", Made(colors().Categories({"red", "n/a"}).Missing("n/a")), text("n/a"), true},
        {"CategoricalNumberOutsideTheCategories", Made(Categorical(kNumeric).Categories({"1"})), numeric(2), true},
        {"EncodedKnown", Made(colors().Encoded(known)), text("green"), false},
        {"EncodedUnknown", Made(colors().Encoded(known)), text("mauve"), true},
        {"EncodedUserMissing", Made(colors().Encoded(known).Missing("green")), text("green"), true},
        {"EncodedOutsideTheCategories", Made(colors().Encoded(known).Categories({"red"})), text("green"), false},
        {"EncodedNumberUnknown", Made(Categorical(kNumeric).Encoded({"1"})), numeric(2), true},
        {"EncodedNumberSystemMissing", Made(Categorical(kNumeric).Encoded({"1"})), numeric(kMissing), true},
    };
}

class MissingInRecord : public testing::TestWithParam<MissingRow> {};

/// A split in which no value has a child.
DiscreteSplit* Empty(const ScoreDictVar& var, int missvalMap) {
    return WithMissing(new DiscreteSplit(&var), missvalMap);
}

} // namespace

TEST_P(MissingInRecord, SimplePredicateWithoutAChildForMissingValues) {
    const MissingRow& row = GetParam();
    EXPECT_EQ(SimplePredicate(Empty(*row.var, -1)).Evaluate(row.record.get(), nullptr),
              row.isMissing ? kUnknown : kFalse);
}

TEST_P(MissingInRecord, SimplePredicateWithAChildForMissingValues) {
    const MissingRow& row = GetParam();
    for (const int child : {0, 5, -2}) {
        EXPECT_EQ(SimplePredicate(Empty(*row.var, child)).Evaluate(row.record.get(), nullptr) == kTrue, row.isMissing);
    }
}

TEST_P(MissingInRecord, SetPredicate) {
    const MissingRow& row = GetParam();
    EXPECT_EQ(SetPredicate(Empty(*row.var, 0)).Evaluate(row.record.get(), nullptr), row.isMissing ? kUnknown : kFalse);
}

INSTANTIATE_TEST_SUITE_P(RecordForm, MissingInRecord, testing::ValuesIn(MissingRows()), NameOfRow());

TYPED_TEST(RecordForm, AnEncodedVariableAsksADiscreteSplitByCode) {
    Categorical x(kText);
    x.Encoded({"red", "green"});
    const TypeParam byCode(OfCodes(x, {1.0}));
    const TypeParam byValue(OfValues(x, {"green"}));
    const Case green("green");
    EXPECT_EQ(byCode.Evaluate(&green, nullptr), kTrue);
    EXPECT_EQ(byValue.Evaluate(&green, nullptr), kFalse);
}

TYPED_TEST(RecordForm, AVariableWithoutEncoderAsksADiscreteSplitByValue) {
    const Categorical x(kText);
    const TypeParam byCode(OfCodes(x, {0.0, 1.0, kMissing}));
    const TypeParam byValue(OfValues(x, {"green"}));
    const Case green("green");
    EXPECT_EQ(byCode.Evaluate(&green, nullptr), kFalse);
    EXPECT_EQ(byValue.Evaluate(&green, nullptr), kTrue);
}

TYPED_TEST(RecordForm, AnUnseenCategoryOfAnEncodedOrdinalVariableIsFalse) {
    Ordinal x(kText);
    x.Encoded({"low", "high"});
    const TypeParam predicate(WithMissing(OfCodes(x, {0.0, 1.0}), 0));
    const Case unseen("middle");
    EXPECT_EQ(predicate.Evaluate(&unseen, nullptr), kFalse);
}

TYPED_TEST(RecordForm, AnyChildIsTrue) {
    const Continuous x;
    auto* split = new ScaleSplit(&x);
    split->PutSplit(new Range(0.0, 1.0, true, true), 5);
    split->PutSplit(new Range(2.0, 3.0, true, true), -1);
    split->PutSplit(new Range(4.0, 5.0, true, true), -2);
    const TypeParam predicate(split);
    EXPECT_EQ(predicate.Evaluate(std::make_unique<Case>(0.5).get(), nullptr), kTrue);
    EXPECT_EQ(predicate.Evaluate(std::make_unique<Case>(2.5).get(), nullptr), kFalse);
    EXPECT_EQ(predicate.Evaluate(std::make_unique<Case>(4.5).get(), nullptr), kTrue);
}

// The two kinds differ where an encoded variable has ranges: a set is a set of codes whatever its split is.
TEST(KeptEncodedScaleSplit, ASimplePredicateGoesByValueASetPredicateByCode) {
    Continuous x;
    x.SetEncoder(new ScoreBinningEncoder(std::vector<double>{100.0}));
    const SimplePredicate simple(InRange(x, 0.0, 1.0));
    const SetPredicate set(InRange(x, 0.0, 1.0));
    const Case high(200.0);
    EXPECT_EQ(simple.Evaluate(&high, nullptr), kFalse);
    EXPECT_EQ(set.Evaluate(&high, nullptr), kTrue);
}
