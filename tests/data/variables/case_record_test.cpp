#include "data/sets/counted_values.h"
#include "support/numbers.h"

#include <MCVeltrane_900/CaseRecord.h>

#include <gtest/gtest.h>

#include <memory>

namespace MCVeltrane_900 {
namespace {

using namespace veltrane::tests;
using Names = std::vector<std::string>;

/// The number 1 under "a", the text "two" under "b", the time 3 under "c".
class CaseRecordTest : public testing::Test {
protected:
    void SetUp() override {
        record.Add("a", new NumericValue(1.0));
        record.Add("b", new StringValue("two"));
        record.Add("c", new DateTimeValue(3.0, DateTimeValue::VAL_TIME));
    }

    CaseRecord record;
};

TEST(CaseRecord, PositionsAreGivenInOrderOfAddition) {
    CaseRecord record;
    EXPECT_EQ(record.Size(), 0);
    auto* first = new NumericValue(1.0);
    auto* second = new NumericValue(2.0);
    record.Add("a", first);
    record.Add("b", second);
    EXPECT_EQ(record.GetIndex("a"), 0);
    EXPECT_EQ(record.GetIndex("b"), 1);
    EXPECT_EQ(record.Size(), 2);
    EXPECT_EQ(record.Get(0), first);
    EXPECT_EQ(record.Get(1), second);
    EXPECT_EQ(record.Get("b"), second);
    EXPECT_EQ(record.GetAllValues(), (std::vector<ScoreValue*>{first, second}));
    EXPECT_TRUE(record.HasMap());
}

TEST(CaseRecord, OwnsItsValues) {
    int deleted = 0;
    {
        CaseRecord record;
        record.Add("a", new CountedNumber(1.0, deleted));
        record.Add("b", new CountedText("x", deleted));
        record.Add("c", nullptr);
    }
    EXPECT_EQ(deleted, 2);
}

TEST(KeptCaseRecord, AddOfAKnownNameReplacesTheValueAndDeletesNothing) {
    int deleted = 0;
    std::unique_ptr<ScoreValue> first(new CountedNumber(1.0, deleted));
    CaseRecord record;
    record.Add("a", first.get());
    record.Add("b", new NumericValue(2.0));
    auto* third = new NumericValue(3.0);
    record.Add("a", third);
    EXPECT_EQ(record.Size(), 2);
    EXPECT_EQ(record.Get("a"), third);
    EXPECT_EQ(record.GetIndex("a"), 0);
    EXPECT_EQ(deleted, 0);
}

TEST_F(CaseRecordTest, GetOutsideIsNull) {
    EXPECT_EQ(record.Get(-1), nullptr);
    EXPECT_EQ(record.Get(3), nullptr);
    EXPECT_EQ(record.Get("x"), nullptr);
    EXPECT_EQ(record.GetIndex("x"), -1);
    EXPECT_NE(record.Get(2), nullptr);
}

TEST(CaseRecord, CapacityIsReservedOnly) {
    EXPECT_GE(CaseRecord(100).GetAllValues().capacity(), 100u);
    EXPECT_GE(CaseRecord().GetAllValues().capacity(), 10u);
    EXPECT_EQ(CaseRecord(100).Size(), 0);
    EXPECT_EQ(CaseRecord(-1).Size(), 0);
}

TEST_F(CaseRecordTest, SetNumber) {
    const ScoreValue* number = record.Get(0);
    EXPECT_TRUE(record.SetValue(0, 5.0));
    EXPECT_EQ(record.Get(0), number);
    EXPECT_EQ(number->GetDouble(), 5.0);
    EXPECT_TRUE(record.SetValue("a", 6.0));
    EXPECT_EQ(number->GetDouble(), 6.0);
}

TEST_F(CaseRecordTest, SetNumberOnAnotherKindIsRefused) {
    EXPECT_FALSE(record.SetValue(1, 5.0));
    EXPECT_EQ(record.Get(1)->GetString(), "two");
    EXPECT_FALSE(record.SetValue(2, 5.0));
    EXPECT_EQ(record.Get(2)->GetDouble(), 3.0);
    EXPECT_FALSE(record.SetValue("b", 5.0));
}

TEST(CaseRecord, SetNumberOnADateTimeSlotIsRefused) {
    CaseRecord record;
    record.Add("d", new DateTimeValue(3.0, DateTimeValue::VAL_TIME));
    EXPECT_FALSE(record.SetValue(0, 1.0));
    EXPECT_EQ(record.Get(0)->GetDouble(), 3.0);
}

TEST_F(CaseRecordTest, SetText) {
    const ScoreValue* text = record.Get(1);
    EXPECT_TRUE(record.SetValue(1, std::string("drei")));
    EXPECT_EQ(record.Get(1), text);
    EXPECT_EQ(text->GetString(), "drei");
    EXPECT_EQ(static_cast<const StringValue*>(text)->GetText().size(), 4u);
    EXPECT_EQ(const_cast<StringValue*>(static_cast<const StringValue*>(text))->GetLength(), 3);
    EXPECT_TRUE(record.SetValue("b", std::string("vier")));
    EXPECT_EQ(text->GetString(), "vier");
}

TEST_F(CaseRecordTest, SetTextOnANumericSlotIsRefusedAndTheNumberStays) {
    EXPECT_FALSE(record.SetValue(0, std::string("text")));
    EXPECT_EQ(record.Get(0)->GetDouble(), 1.0);
    EXPECT_FALSE(record.SetValue("a", std::string("text")));
}

TEST_F(CaseRecordTest, SetTextOnADateTimeSlotIsRefused) {
    EXPECT_FALSE(record.SetValue(2, std::string("text")));
    EXPECT_EQ(record.Get(2)->GetDouble(), 3.0);
}

TEST_F(CaseRecordTest, SetDateTime) {
    EXPECT_TRUE(record.SetValue(2, 2.0, ScoreDictVar::DT_DAYS_SINCE_1970));
    const auto* value = static_cast<const DateTimeValue*>(record.Get(2));
    EXPECT_EQ(value->GetDateTimeType(), DateTimeValue::VAL_DATE);
    EXPECT_EQ(value->GetDouble(), 2.0);
    EXPECT_EQ(value->GetDoubleValue(ScoreDictVar::DT_DATETIME), 2.0 * 86400.0);
    EXPECT_TRUE(record.SetValue("c", 7.0, ScoreDictVar::DT_TIME));
    EXPECT_EQ(value->GetDateTimeType(), DateTimeValue::VAL_TIME);
    EXPECT_EQ(value->GetDouble(), 7.0);
}

TEST_F(CaseRecordTest, SetDateTimeOnAnotherKindIsRefused) {
    EXPECT_FALSE(record.SetValue(0, 2.0, ScoreDictVar::DT_TIME));
    EXPECT_EQ(record.Get(0)->GetDouble(), 1.0);
    EXPECT_FALSE(record.SetValue("b", 2.0, ScoreDictVar::DT_TIME));
    EXPECT_EQ(record.Get(1)->GetString(), "two");
}

TEST_F(CaseRecordTest, BadPositionsAndUnknownNamesAreRefused) {
    for (const int index : {-1, 3}) {
        EXPECT_FALSE(record.SetValue(index, 1.0));
        EXPECT_FALSE(record.SetValue(index, std::string("x")));
        EXPECT_FALSE(record.SetValue(index, 1.0, ScoreDictVar::DT_TIME));
        EXPECT_FALSE(record.SetMissingValue(index));
    }
    EXPECT_FALSE(record.SetValue("x", 1.0));
    EXPECT_FALSE(record.SetValue("x", std::string("x")));
    EXPECT_FALSE(record.SetValue("x", 1.0, ScoreDictVar::DT_TIME));
    EXPECT_FALSE(record.SetMissingValue("x"));
    EXPECT_EQ(record.Size(), 3);
}

TEST_F(CaseRecordTest, EmptySlotTakesAnyKind) {
    record.Remove("a");
    EXPECT_TRUE(record.SetValue(0, std::string("text")));
    EXPECT_EQ(record.Get(0)->GetType(), ScoreValue::STRING_VALUE);
    EXPECT_EQ(record.Get(0)->GetString(), "text");
    record.Remove("b");
    EXPECT_TRUE(record.SetValue("b", 1.0, ScoreDictVar::DT_DAYS_SINCE_1960));
    EXPECT_EQ(record.Get("b")->GetType(), ScoreValue::DATETIME_VALUE);
    EXPECT_EQ(static_cast<const DateTimeValue*>(record.Get("b"))->GetDoubleValue(ScoreDictVar::DT_DAYS_SINCE_1960),
              1.0);
    record.Remove("c");
    EXPECT_TRUE(record.SetValue("c", 9.0));
    EXPECT_EQ(record.Get("c")->GetType(), ScoreValue::NUMERIC_VALUE);
}

TEST_F(CaseRecordTest, SetMissingValueByKind) {
    EXPECT_TRUE(record.SetMissingValue(0));
    EXPECT_TRUE(record.Get(0)->IsSystemMissingValue());
    EXPECT_TRUE(record.SetMissingValue("b"));
    EXPECT_EQ(record.Get(1)->GetString(), "");
    EXPECT_FALSE(record.Get(1)->IsSystemMissingValue());
    EXPECT_TRUE(record.SetMissingValue("c"));
    EXPECT_TRUE(record.Get(2)->IsSystemMissingValue());
    EXPECT_EQ(static_cast<const DateTimeValue*>(record.Get(2))->GetDateTimeType(), DateTimeValue::VAL_TIME);
}

TEST(CaseRecord, SetMissingValueOfADateStoresTheMissingNumberItself) {
    CaseRecord record;
    record.Add("d", new DateTimeValue(86400.0, DateTimeValue::VAL_DATE));
    EXPECT_TRUE(record.SetMissingValue("d"));
    const auto* value = static_cast<const DateTimeValue*>(record.Get("d"));
    EXPECT_TRUE(value->IsSystemMissingValue());
    EXPECT_EQ(value->GetDouble(), kMissing / 86400.0);
    EXPECT_EQ(value->GetDateTimeType(), DateTimeValue::VAL_DATE);
}

TEST_F(CaseRecordTest, SetMissingValueOnAnEmptySlotIsRefused) {
    record.Remove("a");
    EXPECT_FALSE(record.SetMissingValue("a"));
    EXPECT_FALSE(record.SetMissingValue(0));
    EXPECT_EQ(record.Get(0), nullptr);
}

TEST(CaseRecord, RemoveEmptiesTheSlotAndKeepsNameAndPosition) {
    int deleted = 0;
    CaseRecord record;
    record.Add("a", new CountedNumber(1.0, deleted));
    record.Add("b", new CountedNumber(2.0, deleted));
    record.Remove("a");
    EXPECT_EQ(deleted, 1);
    EXPECT_EQ(record.Get("a"), nullptr);
    EXPECT_EQ(record.Get(0), nullptr);
    EXPECT_EQ(record.Size(), 2);
    EXPECT_EQ(record.GetIndex("a"), 0);
    EXPECT_EQ(record.GetVarNames(true), (Names{"a", "b"}));
    record.Remove("a");
    record.Remove("x");
    EXPECT_EQ(deleted, 1);
    EXPECT_TRUE(record.SetValue("a", 1.0));
    EXPECT_EQ(record.Get(0)->GetType(), ScoreValue::NUMERIC_VALUE);
    EXPECT_EQ(record.Get(0)->GetDouble(), 1.0);
}

TEST(CaseRecord, AddFillsARemovedSlot) {
    CaseRecord record;
    record.Add("a", new NumericValue(1.0));
    record.Add("b", new NumericValue(2.0));
    record.Remove("a");
    auto* value = new NumericValue(3.0);
    record.Add("a", value);
    EXPECT_EQ(record.Get(0), value);
    EXPECT_EQ(record.Size(), 2);
}

TEST(CaseRecord, NamesSortedOrByPosition) {
    CaseRecord record;
    record.Add("b", new NumericValue(1.0));
    record.Add("a", new NumericValue(2.0));
    EXPECT_EQ(record.GetVarNames(false), (Names{"a", "b"}));
    EXPECT_EQ(record.GetVarNames(true), (Names{"b", "a"}));
}

TEST(KeptCaseRecord, SetUpNameIndexMapGivesNoPositions) {
    CaseRecord record(0);
    record.SetUpNameIndexMap(Names{"a", "b", "c"});
    EXPECT_EQ(record.Size(), 0);
    for (const char* name : {"a", "b", "c"}) {
        EXPECT_EQ(record.GetIndex(name), -1);
    }
    EXPECT_GE(record.GetAllValues().capacity(), 3u);
    record.SetUpNameIndexMap(std::vector<ScoreDictVar*>(20, nullptr));
    EXPECT_EQ(record.Size(), 0);
    EXPECT_GE(record.GetAllValues().capacity(), 20u);
}

TEST_F(CaseRecordTest, CopiesCloneTheValuesAndKeepEmptySlots) {
    record.Remove("b");
    CaseRecord copy(record);
    EXPECT_EQ(copy.Size(), 3);
    EXPECT_EQ(copy.GetVarNames(true), (Names{"a", "b", "c"}));
    EXPECT_NE(copy.Get(0), record.Get(0));
    EXPECT_EQ(copy.Get(0)->GetDouble(), 1.0);
    EXPECT_EQ(copy.Get(1), nullptr);
    EXPECT_TRUE(*copy.Get(2) == *record.Get(2));
}

TEST_F(CaseRecordTest, AssignmentDeletesTheOwnValues) {
    int deleted = 0;
    CaseRecord target;
    target.Add("z", new CountedNumber(1.0, deleted));
    target = record;
    EXPECT_EQ(deleted, 1);
    EXPECT_EQ(target.GetIndex("z"), -1);
    EXPECT_EQ(target.GetIndex("c"), 2);
    EXPECT_EQ(target.Get("b")->GetString(), "two");
    const ScoreValue* value = target.Get("b");
    const CaseRecord& alias = target;
    target = alias;
    EXPECT_EQ(target.Get("b"), value);
}

TEST_F(CaseRecordTest, Displays) {
    record.Remove("b");
    record.Add("A", new StringValue("x"));
    EXPECT_EQ(Dump(record), "Start ScoreCaseRecord Display:\nVar Name: A; Var Value: x\nVar Name: a; Var Value: "
                            "1\nVar Name: b\nVar Name: c; Var Value: Undefined\nEnd of ScoreCaseRecord Display.\n\n");
}

/// A record in which every unknown name stands for the first position.
class HostRecord : public CaseRecord {
public:
    int GetIndex(const std::string& name) const override {
        const int index = CaseRecord::GetIndex(name);
        return index < 0 ? 0 : index;
    }
};

TEST(CaseRecord, LooksUpNamesThroughTheVirtualOperations) {
    HostRecord record;
    record.Add("a", new NumericValue(1.0));
    EXPECT_EQ(record.Get("other"), record.Get(0));
    EXPECT_TRUE(record.SetMissingValue("other"));
    EXPECT_TRUE(record.Get(0)->IsSystemMissingValue());
}

/// What a reader of variables does: by the value index first, then by the name.
const ScoreValue* Read(const ScoreCaseRecord& record, int valueIndex, const std::string& name) {
    if (record.HasMap()) {
        if (const ScoreValue* value = record.Get(valueIndex)) {
            return value;
        }
    }
    return record.Get(name);
}

TEST_F(CaseRecordTest, ValueIndexThatIsNotSetFallsThroughToTheName) {
    EXPECT_EQ(Read(record, -1, "b"), record.Get(1));
    EXPECT_EQ(Read(record, 2, "b"), record.Get(2));
}

} // namespace
} // namespace MCVeltrane_900
