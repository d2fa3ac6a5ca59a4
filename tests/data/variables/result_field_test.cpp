#include "data/sets/counted_values.h"

#include <MCVeltrane_900/ResultField.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace MCVeltrane_900 {
namespace {

using veltrane::tests::CountedNumber;
using Names = std::vector<std::string>;

TEST(ResultField, AddTakesTheValue) {
    int deleted = 0;
    {
        ResultField field;
        auto* value = new CountedNumber(1.0, deleted);
        field.AddResultField("x", value);
        EXPECT_EQ(field.GetResultValue("x"), value);
        EXPECT_EQ(field.GetResultSize(), 1);
        EXPECT_EQ(field.GetMapResultValue(), (std::map<std::string, ScoreValue*>{{"x", value}}));
    }
    EXPECT_EQ(deleted, 1);
}

TEST(KeptResultField, AddOfAKnownNameKeepsTheOldValueAndDeletesNeither) {
    int deleted = 0;
    ResultField field;
    auto* first = new CountedNumber(1.0, deleted);
    auto second = std::make_unique<CountedNumber>(2.0, deleted);
    field.AddResultField("x", first);
    field.AddResultField("x", second.get());
    EXPECT_EQ(field.GetResultValue("x"), first);
    EXPECT_EQ(field.GetResultSize(), 1);
    EXPECT_EQ(deleted, 0);
}

TEST(ResultField, UnknownNameHasNoValue) {
    const ResultField field;
    EXPECT_EQ(field.GetResultValue("x"), nullptr);
    EXPECT_EQ(field.GetResultSize(), 0);
}

TEST(ResultField, NamesAreSorted) {
    ResultField field;
    field.SetResultValue("b", 1.0);
    field.SetResultValue("a", 2.0);
    EXPECT_EQ(field.GetResultFields(), (Names{"a", "b"}));
}

TEST(KeptResultField, TypeIsAlwaysNone) {
    ResultField field;
    field.SetResultValue("x", 1.0);
    EXPECT_EQ(field.GetResultType("x"), ScoreResultField::RF_NONE);
    EXPECT_EQ(field.GetResultType("y"), ScoreResultField::RF_NONE);
}

TEST(ResultFieldSetNumber, NewNameNullValueAndNumber) {
    ResultField field;
    EXPECT_TRUE(field.SetResultValue("x", 1.5));
    EXPECT_EQ(field.GetResultValue("x")->GetType(), ScoreValue::NUMERIC_VALUE);
    const ScoreValue* stored = field.GetResultValue("x");
    EXPECT_TRUE(field.SetResultValue("x", 2.5));
    EXPECT_EQ(field.GetResultValue("x"), stored);
    EXPECT_EQ(stored->GetDouble(), 2.5);
    field.AddResultField("empty", nullptr);
    EXPECT_TRUE(field.SetResultValue("empty", 3.5));
    EXPECT_EQ(field.GetResultValue("empty")->GetDouble(), 3.5);
}

TEST(ResultFieldSetNumber, OverAStoredStringIsRefusedAndLeavesTheString) {
    ResultField field;
    ASSERT_TRUE(field.SetResultValue("x", std::string("text")));
    EXPECT_FALSE(field.SetResultValue("x", 1.0));
    EXPECT_EQ(field.GetResultValue("x")->GetString(), "text");
}

TEST(ResultFieldSetNumber, OverADateTimeIsRefused) {
    ResultField field;
    field.AddResultField("x", new DateTimeValue(5.0, DateTimeValue::VAL_TIME));
    EXPECT_FALSE(field.SetResultValue("x", 1.0));
    EXPECT_EQ(field.GetResultValue("x")->GetDouble(), 5.0);
}

TEST(ResultFieldSetText, NewNameNullValueAndText) {
    ResultField field;
    EXPECT_TRUE(field.SetResultValue("x", std::string("a")));
    const ScoreValue* stored = field.GetResultValue("x");
    EXPECT_EQ(stored->GetType(), ScoreValue::STRING_VALUE);
    EXPECT_TRUE(field.SetResultValue("x", std::string("b")));
    EXPECT_EQ(field.GetResultValue("x"), stored);
    EXPECT_EQ(stored->GetString(), "b");
    field.AddResultField("empty", nullptr);
    EXPECT_TRUE(field.SetResultValue("empty", std::string("c")));
    EXPECT_EQ(field.GetResultValue("empty")->GetString(), "c");
}

TEST(ResultFieldSetText, OverANumberIsRefused) {
    ResultField field;
    ASSERT_TRUE(field.SetResultValue("x", 1.0));
    EXPECT_FALSE(field.SetResultValue("x", std::string("text")));
    EXPECT_EQ(field.GetResultValue("x")->GetDouble(), 1.0);
}

TEST(ResultFieldSetValue, NullIsRefused) {
    ResultField field;
    const ScoreValue* none = nullptr;
    EXPECT_FALSE(field.SetResultValue("x", none));
    EXPECT_EQ(field.GetResultSize(), 0);
}

TEST(ResultFieldSetValue, NewNameOrNullValueGetsAClone) {
    ResultField field;
    const NumericValue number(1.0);
    const DateTimeValue date(5.0, DateTimeValue::VAL_TIME);
    EXPECT_TRUE(field.SetResultValue("x", &number));
    EXPECT_NE(field.GetResultValue("x"), &number);
    EXPECT_EQ(field.GetResultValue("x")->GetDouble(), 1.0);
    field.AddResultField("empty", nullptr);
    EXPECT_TRUE(field.SetResultValue("empty", &date));
    EXPECT_TRUE(*field.GetResultValue("empty") == date);
}

TEST(ResultFieldSetValue, SameKindTakesTheContent) {
    ResultField field;
    const NumericValue two(2.0);
    const StringValue text("b");
    ASSERT_TRUE(field.SetResultValue("n", 1.0));
    ASSERT_TRUE(field.SetResultValue("t", std::string("a")));
    const ScoreValue* number = field.GetResultValue("n");
    EXPECT_TRUE(field.SetResultValue("n", &two));
    EXPECT_EQ(field.GetResultValue("n"), number);
    EXPECT_EQ(number->GetDouble(), 2.0);
    EXPECT_TRUE(field.SetResultValue("t", &text));
    EXPECT_EQ(field.GetResultValue("t")->GetString(), "b");
}

TEST(ResultFieldSetValue, AnotherKindIsRefused) {
    ResultField field;
    const NumericValue two(2.0);
    const StringValue text("2");
    ASSERT_TRUE(field.SetResultValue("n", 1.0));
    ASSERT_TRUE(field.SetResultValue("t", std::string("a")));
    EXPECT_FALSE(field.SetResultValue("n", &text));
    EXPECT_EQ(field.GetResultValue("n")->GetDouble(), 1.0);
    EXPECT_FALSE(field.SetResultValue("t", &two));
    EXPECT_EQ(field.GetResultValue("t")->GetString(), "a");
}

TEST(KeptResultField, DateTimeOverADateTimeIsRefused) {
    ResultField field;
    const DateTimeValue first(5.0, DateTimeValue::VAL_TIME);
    const DateTimeValue second(6.0, DateTimeValue::VAL_TIME);
    ASSERT_TRUE(field.SetResultValue("x", &first));
    EXPECT_FALSE(field.SetResultValue("x", &second));
    EXPECT_EQ(field.GetResultValue("x")->GetDouble(), 5.0);
}

TEST(KeptResultField, SetMapDropsTheOldValuesWithoutDeletingAndSharesTheNew) {
    int deleted = 0;
    std::unique_ptr<ScoreValue> old(new CountedNumber(1.0, deleted));
    auto* value = new CountedNumber(2.0, deleted);
    ResultField field;
    field.AddResultField("old", old.get());
    const std::map<std::string, ScoreValue*> values{{"new", value}};
    field.SetMapResultValue(values);
    EXPECT_EQ(deleted, 0);
    EXPECT_EQ(field.GetResultFields(), Names{"new"});
    EXPECT_EQ(field.GetResultValue("new"), value);
    field.SetMapResultValue(values);
    EXPECT_EQ(deleted, 0);
}

TEST(KeptResultField, CopiesShareTheValues) {
    int deleted = 0;
    {
        ResultField owner;
        owner.AddResultField("x", new CountedNumber(1.0, deleted));
        {
            ResultField copy(owner);
            EXPECT_EQ(copy.GetResultValue("x"), owner.GetResultValue("x"));
            copy.SetMapResultValue({});
        }
        std::unique_ptr<ScoreValue> old(new CountedNumber(2.0, deleted));
        ResultField assigned;
        assigned.AddResultField("old", old.get());
        assigned = owner;
        EXPECT_EQ(assigned.GetResultValue("x"), owner.GetResultValue("x"));
        EXPECT_EQ(assigned.GetResultFields(), Names{"x"});
        const ResultField& alias = assigned;
        assigned = alias;
        EXPECT_EQ(assigned.GetResultSize(), 1);
        EXPECT_EQ(deleted, 0);
        assigned.SetMapResultValue({});
    }
    EXPECT_EQ(deleted, 2);
}

/// The outputs "number i" and "text i", from 0 to 49, each of which says so.
void FillOutputs(ResultField& field) {
    for (int i = 0; i < 50; ++i) {
        field.SetResultValue("number " + std::to_string(i), static_cast<double>(i));
        field.SetResultValue("text " + std::to_string(i), "value " + std::to_string(i));
    }
}

/// How many outputs aren't what FillOutputs() has put there, by every operation that reads.
int WrongOutputs(const ResultField& field) {
    int wrong = field.GetResultSize() != 100 || field.GetResultFields().size() != 100;
    for (int i = 0; i < 50; ++i) {
        const ScoreValue* number = field.GetResultValue("number " + std::to_string(i));
        const ScoreValue* text = field.GetResultValue("text " + std::to_string(i));
        wrong += number == nullptr || number->GetDouble() != i;
        wrong += text == nullptr || text->GetString() != "value " + std::to_string(i);
        wrong += field.GetMapResultValue().at("text " + std::to_string(i)) != text;
    }
    return wrong + (field.GetResultValue("other") != nullptr);
}

/// Runs work(0) to work(3), each in a thread of its own.
template <typename Work>
void RunInThreads(Work work) {
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back(work, i);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

TEST(ResultFieldThreads, ReadOneTogether) {
    ResultField field;
    FillOutputs(field);
    std::vector<int> wrong(4);
    RunInThreads([&](int thread) {
        for (int round = 0; round < 20; ++round) {
            wrong[thread] += WrongOutputs(field);
        }
    });
    EXPECT_EQ(wrong, std::vector<int>(4));
}

TEST(ResultFieldThreads, FillOneEach) {
    std::vector<ResultField> fields(4);
    RunInThreads([&](int thread) {
        for (int round = 0; round < 20; ++round) {
            fields[thread].SetResultValue("text 7", "another " + std::to_string(thread));
            FillOutputs(fields[thread]);
        }
    });
    for (const ResultField& field : fields) {
        EXPECT_EQ(WrongOutputs(field), 0);
    }
}

} // namespace
} // namespace MCVeltrane_900
