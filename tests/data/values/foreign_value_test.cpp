#include "support/foreign_value.h"
#include "support/numbers.h"

#include <MCVeltrane_900/CaseRecord.h>
#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/DictVar.h>
#include <MCVeltrane_900/DiscreteSplit.h>
#include <MCVeltrane_900/MissingValueSet.h>
#include <MCVeltrane_900/Range.h>
#include <MCVeltrane_900/ResultField.h>
#include <MCVeltrane_900/StringValue.h>
#include <MCVeltrane_900/ValueLabelSet.h>
#include <MCVeltrane_900/ValueLbl.h>

#include <gtest/gtest.h>

#include <array>

// Values of a host's own classes that report a kind and are of no class of the library's: each is written through its
// own SetValue, by whatever class writes values of its kind.
namespace MCVeltrane_900 {
namespace {

using namespace veltrane::tests;

constexpr auto kUnknownKind = static_cast<ScoreValue::ValueType>(7);
constexpr std::array kKinds = {ScoreValue::NUMERIC_VALUE, ScoreValue::STRING_VALUE, ScoreValue::DATETIME_VALUE,
                               kUnknownKind};

/// A record with a foreign value of one kind under "x".
struct ForeignRecord {
    explicit ForeignRecord(ScoreValue::ValueType kind) : value(new ForeignValue(kind, 5.0)) { record.Add("x", value); }

    ForeignValue* value;
    CaseRecord record;
};

class ForeignInCaseRecord : public testing::TestWithParam<ScoreValue::ValueType> {
protected:
    ForeignRecord foreign{GetParam()};
};

TEST_P(ForeignInCaseRecord, TakesATextOfItsKind) {
    EXPECT_EQ(foreign.record.SetValue(0, "new"), GetParam() == ScoreValue::STRING_VALUE);
    EXPECT_TRUE(foreign.value->IsWhole());
    EXPECT_EQ(foreign.value->Text(), GetParam() == ScoreValue::STRING_VALUE ? 'n' : 'f');
}

TEST_P(ForeignInCaseRecord, TakesANumberOfItsKind) {
    EXPECT_EQ(foreign.record.SetValue(0, 8.0), GetParam() == ScoreValue::NUMERIC_VALUE);
    EXPECT_TRUE(foreign.value->IsWhole());
    EXPECT_EQ(foreign.value->GetDouble(), GetParam() == ScoreValue::NUMERIC_VALUE ? 8.0 : 5.0);
}

TEST_P(ForeignInCaseRecord, TakesADateTimeOfItsKind) {
    const bool isDate = GetParam() == ScoreValue::DATETIME_VALUE;
    EXPECT_EQ(foreign.record.SetValue(0, 60.0, ScoreDictVar::DT_SECONDS_SINCE_1970), isDate);
    EXPECT_TRUE(foreign.value->IsWhole());
    EXPECT_EQ(foreign.value->GetDouble(), isDate ? 60.0 : 5.0);
    EXPECT_EQ(foreign.value->Taken(), isDate ? ScoreValue::DATETIME_VALUE : -1);
}

TEST_P(ForeignInCaseRecord, BecomesMissingByItsKind) {
    EXPECT_TRUE(foreign.record.SetMissingValue(0));
    EXPECT_TRUE(foreign.value->IsWhole());
    if (GetParam() == ScoreValue::NUMERIC_VALUE || GetParam() == ScoreValue::DATETIME_VALUE) {
        EXPECT_EQ(foreign.value->GetDouble(), kMissing);
        EXPECT_EQ(foreign.value->Taken(), GetParam());
    } else {
        EXPECT_EQ(foreign.value->Text(), '\0');
        EXPECT_EQ(foreign.value->Taken(), ScoreValue::STRING_VALUE);
    }
}

INSTANTIATE_TEST_SUITE_P(EachKind, ForeignInCaseRecord, testing::ValuesIn(kKinds));

/// A value of the library's class for a kind.
ScoreValue* OwnValue(ScoreValue::ValueType kind) {
    switch (kind) {
    case ScoreValue::STRING_VALUE:
        return new StringValue("new");
    case ScoreValue::DATETIME_VALUE:
        return new DateTimeValue(8.0, DateTimeValue::VAL_TIME);
    default:
        return new NumericValue(8.0);
    }
}

class ForeignInResultField : public testing::TestWithParam<ScoreValue::ValueType> {
protected:
    void SetUp() override { field.AddResultField("x", value); }

    ResultField field;
    ForeignValue* value = new ForeignValue(GetParam(), 5.0);
};

TEST_P(ForeignInResultField, TakesAValueOfItsKind) {
    for (const ScoreValue::ValueType kind : {ScoreValue::NUMERIC_VALUE, ScoreValue::STRING_VALUE}) {
        const std::unique_ptr<ScoreValue> source(OwnValue(kind));
        EXPECT_EQ(field.SetResultValue("x", source.get()), kind == GetParam());
        EXPECT_TRUE(value->IsWhole());
    }
    EXPECT_EQ(value->GetDouble(), GetParam() == ScoreValue::NUMERIC_VALUE  ? 8.0
                                  : GetParam() == ScoreValue::STRING_VALUE ? 0.0
                                                                           : 5.0);
}

TEST_P(ForeignInResultField, TakesAForeignValueOfItsKind) {
    const ForeignValue source(GetParam(), 9.0, 's');
    const bool isTaken = GetParam() == ScoreValue::NUMERIC_VALUE || GetParam() == ScoreValue::STRING_VALUE;
    EXPECT_EQ(field.SetResultValue("x", &source), isTaken);
    EXPECT_TRUE(value->IsWhole());
}

TEST_P(ForeignInResultField, TakesATextOfItsKind) {
    EXPECT_EQ(field.SetResultValue("x", std::string("new")), GetParam() == ScoreValue::STRING_VALUE);
    EXPECT_TRUE(value->IsWhole());
    EXPECT_EQ(value->Text(), GetParam() == ScoreValue::STRING_VALUE ? 'n' : 'f');
}

TEST_P(ForeignInResultField, TakesANumberOfItsKind) {
    EXPECT_EQ(field.SetResultValue("x", 8.0), GetParam() == ScoreValue::NUMERIC_VALUE);
    EXPECT_TRUE(value->IsWhole());
    EXPECT_EQ(value->GetDouble(), GetParam() == ScoreValue::NUMERIC_VALUE ? 8.0 : 5.0);
}

INSTANTIATE_TEST_SUITE_P(EachKind, ForeignInResultField, testing::ValuesIn(kKinds));

class ForeignInRange : public testing::TestWithParam<ScoreValue::ValueType> {
protected:
    /// What a missing lower bound is after the range has taken it.
    void ExpectOpened(const ForeignValue& bound) {
        EXPECT_TRUE(bound.IsWhole());
        EXPECT_EQ(bound.GetDouble(), GetParam() == ScoreValue::NUMERIC_VALUE ? -kInfinity : kMissing);
    }

    ForeignValue* missing = new ForeignValue(GetParam(), kMissing);
};

TEST_P(ForeignInRange, OpensASingleValue) {
    const Range range(missing);
    ExpectOpened(*missing);
    const NumericValue number(5.0);
    EXPECT_FALSE(range.IsInRange(&number));
}

TEST_P(ForeignInRange, OpensALowerBound) {
    const Range range(missing, new NumericValue(9.0), true, true);
    ExpectOpened(*missing);
    EXPECT_TRUE(range.IsInRange(5.0));
}

TEST_P(ForeignInRange, OpensALowerBoundThatIsSet) {
    Range range(0.0, 9.0, true, true);
    const std::unique_ptr<const ScoreValue> former(range.GetMin()); // a setter leaves it to the caller
    range.SetMin(missing);
    ExpectOpened(*missing);
    EXPECT_TRUE(range.IsInRange(-5.0));
}

TEST_P(ForeignInRange, IsAnUpperBound) {
    auto* bound = new ForeignValue(GetParam(), 9.0);
    const Range range(new NumericValue(0.0), bound, true, true);
    EXPECT_TRUE(bound->IsWhole());
    EXPECT_EQ(range.IsInRange(10.0), GetParam() != ScoreValue::NUMERIC_VALUE);
    delete missing;
}

TEST_P(ForeignInRange, IsAskedFor) {
    const Range range(0.0, 9.0, true, true);
    const ForeignValue asked(GetParam(), 5.0);
    EXPECT_EQ(range.IsInRange(&asked),
              GetParam() == ScoreValue::NUMERIC_VALUE || GetParam() == ScoreValue::DATETIME_VALUE);
    delete missing;
}

INSTANTIATE_TEST_SUITE_P(EachKind, ForeignInRange, testing::ValuesIn(kKinds));

TEST(ForeignDateTime, EqualsNoDateTimeOfTheLibrary) {
    const ForeignValue foreign(ScoreValue::DATETIME_VALUE, 5.0);
    const DateTimeValue own(5.0, DateTimeValue::VAL_TIME);
    EXPECT_FALSE(own == foreign);
    EXPECT_TRUE(foreign == static_cast<const ScoreValue&>(own));
}

TEST(ForeignDateTime, GivesItsNumberAndNoKind) {
    const ForeignValue foreign(ScoreValue::DATETIME_VALUE, 5.0);
    DateTimeValue own(1.0, DateTimeValue::VAL_TIME);
    own.SetValue(&foreign);
    EXPECT_EQ(own.GetDouble(), 5.0);
    EXPECT_EQ(own.GetDateTimeType(), DateTimeValue::VAL_TIME);
}

/// A date-time of a host's own that is derived from the library's.
class HostDateTime : public DateTimeValue {
public:
    using DateTimeValue::DateTimeValue;
};

TEST(ForeignDateTime, OfADerivedClassIsADateTimeOfTheLibrary) {
    const HostDateTime derived(5.0, DateTimeValue::VAL_TIME);
    DateTimeValue own(5.0, DateTimeValue::VAL_TIME);
    EXPECT_TRUE(own == static_cast<const ScoreValue&>(derived));
    own.SetDateTimeType(DateTimeValue::VAL_DATE);
    own.SetValue(&derived);
    EXPECT_EQ(own.GetDateTimeType(), DateTimeValue::VAL_TIME);
}

/// A number that reports another kind than the class that it is derived from.
class TextualNumber : public NumericValue {
public:
    using NumericValue::NumericValue;
    ValueType GetType() const override { return STRING_VALUE; }
};

TEST(ForeignKind, OfANumberIsWrittenAsTheClassAllows) {
    CaseRecord record;
    record.Add("x", new TextualNumber(1.0));
    EXPECT_TRUE(record.SetValue("x", std::string("text")));
    EXPECT_FALSE(record.SetValue("x", 2.0));
    EXPECT_TRUE(record.SetMissingValue("x"));
    EXPECT_EQ(record.Get(0)->GetDouble(), 1.0);
}

/// Sets so small that they are walked, and so large that they have an index.
class ForeignAsked : public testing::TestWithParam<int> {
protected:
    /// @return whether a value of one kind was found
    template <typename Find>
    void ExpectNotFound(Find find) {
        for (const ScoreValue::ValueType kind : kKinds) {
            // A foreign number is found by its number, as any number is.
            EXPECT_EQ(find(ForeignValue(kind, 3.0)), kind == ScoreValue::NUMERIC_VALUE) << kind;
        }
    }

    static ScoreValue* Stored(int i) {
        return i % 2 == 0 ? static_cast<ScoreValue*>(new DateTimeValue(i + 1, DateTimeValue::VAL_TIME))
                          : new NumericValue(i);
    }
};

TEST_P(ForeignAsked, ForALabel) {
    ValueLabelSet set;
    for (int i = 0; i < GetParam(); ++i) {
        set.Add(new ValueLbl(Stored(i), "label"));
    }
    ExpectNotFound([&set](const ForeignValue& value) { return set.Contains(&value); });
}

TEST_P(ForeignAsked, ForAChild) {
    DictVar var("x", ScoreDictVar::DATETIME_VAR);
    DiscreteSplit split(&var);
    for (int i = 0; i < GetParam(); ++i) {
        split.PutSplit(Stored(i), 0);
    }
    ExpectNotFound([&split](const ForeignValue& value) { return split.GetSplitChildIndex(&value) == 0; });
}

TEST_P(ForeignAsked, ForARange) {
    MissingValueSet set;
    for (int i = 0; i < GetParam(); ++i) {
        set.Add(new Range(Stored(i)));
    }
    for (const ScoreValue::ValueType kind : kKinds) {
        const Range asked(new ForeignValue(kind, 3.0));
        EXPECT_EQ(set.Contains(&asked), kind == ScoreValue::NUMERIC_VALUE) << kind;
        const ForeignValue value(kind, 3.0);
        EXPECT_TRUE(set.IsInAnyRange(&value)) << kind; // by its own operator
    }
}

INSTANTIATE_TEST_SUITE_P(EachSize, ForeignAsked, testing::Values(6, 100));

} // namespace
} // namespace MCVeltrane_900
