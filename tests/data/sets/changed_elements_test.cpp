#include "support/changing_values.h"
#include "support/rows.h"

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/MissingValueSet.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/Range.h>
#include <MCVeltrane_900/StringValue.h>
#include <MCVeltrane_900/ValueLabelSet.h>
#include <MCVeltrane_900/ValueLbl.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <memory>
#include <thread>

// A host may keep pointers to what it put into a set and change it there. Whether the set is so long that it has an
// index or not, it gives what a walk over its elements gives as they are.
namespace MCVeltrane_900 {
namespace {

using namespace veltrane::tests;
using Random = std::mt19937;

/// What a host replaces and nobody deletes.
using Leftovers = std::vector<std::unique_ptr<const ScoreValue>>;

/// A set of labels, and what a walk over them gives.
struct Labels {
    explicit Labels(Random& random) : random(random) {}

    void Grow() { set.Add(new ValueLbl(AnyValue(random), "label " + std::to_string(++count))); }

    void ChangeOne() {
        const auto& all = set.GetAllValueLabels();
        ScoreValueLabel& label = *all[random() % all.size()];
        if (random() % 4 != 0) {
            ChangeAnyhow(const_cast<ScoreValue&>(*label.GetValue()), random);
        } else if (random() % 2 == 0) {
            leftovers.emplace_back(label.GetValue());
            label.SetValueLabel(AnyValue(random), "label " + std::to_string(++count));
        } else {
            dynamic_cast<ValueLbl&>(label) = ValueLbl(AnyValue(random), "label " + std::to_string(++count));
        }
    }

    void RemoveOne() {
        const ValueLbl keyLabel(AnyValue(random), "key");
        const ScoreValueLabel& key = keyLabel;
        const auto& all = set.GetAllValueLabels();
        const auto doomed =
            std::find_if(all.begin(), all.end(), [&key](const ScoreValueLabel* label) { return *label == key; });
        std::vector<ScoreValueLabel*> kept(all.begin(), all.end());
        const bool isThere = doomed != all.end();
        if (isThere) {
            kept.erase(kept.begin() + (doomed - all.begin()));
        }
        EXPECT_EQ(set.Remove(&key), isThere);
        EXPECT_EQ(set.GetAllValueLabels(), kept);
    }

    void ExpectAsWalked() const {
        const std::unique_ptr<const ScoreValue> value(AnyValue(random));
        const auto& all = set.GetAllValueLabels();
        const auto stored = std::find_if(all.begin(), all.end(),
                                         [&](const ScoreValueLabel* label) { return *label->GetValue() == *value; });
        ASSERT_EQ(set.GetLabelOfValue(value.get()), stored == all.end() ? "" : (*stored)->GetLabel());
        ASSERT_EQ(set.HasValueEqualTo(*value), std::any_of(all.begin(), all.end(), [&](const ScoreValueLabel* label) {
                      return *value == *label->GetValue();
                  }));
        const bool noSpaceTrim = random() % 2 == 0;
        const bool emptyStringOK = random() % 2 == 0;
        ASSERT_EQ(set.HasTextEqualTo(*value, noSpaceTrim, emptyStringOK),
                  std::any_of(all.begin(), all.end(), [&](const ScoreValueLabel* label) {
                      return label->GetValue()->Equal(value.get(), noSpaceTrim, emptyStringOK);
                  }));
    }

    Random& random;
    ValueLabelSet set;
    Leftovers leftovers;
    int count = 0;
};

/// A set of ranges, and what a walk over them gives.
struct Ranges {
    explicit Ranges(Random& random) : random(random) {}

    std::unique_ptr<ScoreValueRange> AnyRange() const {
        if (random() % 3 == 0) {
            return std::make_unique<Range>(AnyValue(random), AnyValue(random), random() % 2 == 0, random() % 2 == 0);
        }
        return std::make_unique<Range>(AnyValue(random));
    }

    void Grow() {
        // An equal one is refused; the sets of this test have to become large enough all the same.
        for (int i = 0; i < 20; ++i) {
            auto range = AnyRange();
            if (set.Add(range.get())) {
                range.release();
                return;
            }
        }
        set.Add(new Range(new NumericValue(++count + 1000.0)));
    }

    void ChangeOne() {
        const auto all = set.GetMissingValues();
        auto& range = const_cast<ScoreValueRange&>(*all[random() % all.size()]);
        switch (random() % 6) {
        case 0:
            leftovers.emplace_back(range.GetMin());
            range.SetMin(AnyValue(random));
            break;
        case 1:
            leftovers.emplace_back(range.GetMax());
            range.SetMax(AnyValue(random));
            break;
        case 2:
            dynamic_cast<Range&>(range) = dynamic_cast<const Range&>(*AnyRange());
            break;
        default:
            ChangeAnyhow(const_cast<ScoreValue&>(random() % 2 == 0 ? *range.GetMin() : *range.GetMax()), random);
        }
    }

    void RemoveOne() {
        const auto key = AnyRange();
        auto kept = set.GetMissingValues();
        const std::size_t size = kept.size();
        std::erase_if(kept, [&key](const ScoreValueRange* range) { return *range == *key; });
        EXPECT_EQ(set.Remove(key.get()), kept.size() != size);
        EXPECT_EQ(set.GetMissingValues(), kept);
    }

    void ExpectAsWalked() const {
        const std::unique_ptr<const ScoreValue> value(AnyValue(random));
        const auto key = AnyRange();
        const auto all = set.GetMissingValues();
        ASSERT_EQ(set.IsInAnyRange(value.get()),
                  std::any_of(all.begin(), all.end(),
                              [&](const ScoreValueRange* range) { return range->IsInRange(value.get()); }))
            << value->GetString();
        ASSERT_EQ(set.Contains(key.get()),
                  std::any_of(all.begin(), all.end(), [&](const ScoreValueRange* range) { return *range == *key; }));
    }

    Random& random;
    MissingValueSet set;
    Leftovers leftovers;
    int count = 0;
};

/// Sizes around those at which the sets begin to use an index.
constexpr int kSizes[] = {1, 2, 15, 16, 17, 31, 32, 33, 90};

template <typename Elements>
void ChangeAndAsk(int size, unsigned seed) {
    Random random(seed);
    Elements elements(random);
    while (elements.set.Size() < size) {
        elements.Grow();
    }
    for (int round = 0; round < 150; ++round) {
        for (unsigned changes = random() % 4; changes != 0; --changes) {
            elements.ChangeOne();
        }
        if (random() % 8 == 0) {
            elements.RemoveOne();
        }
        while (elements.set.Size() < size) {
            elements.Grow();
        }
        // Sometimes so many that the index is made anew.
        for (int questions = random() % 8 == 0 ? 60 : 3; questions != 0; --questions) {
            elements.ExpectAsWalked();
            if (testing::Test::HasFatalFailure()) {
                return;
            }
        }
    }
}

TEST(ChangedLabels, AreFoundAsTheyAre) {
    unsigned seed = 0;
    for (const int size : kSizes) {
        SCOPED_TRACE(size);
        for (int i = 0; i < 4; ++i) {
            ASSERT_NO_FATAL_FAILURE(ChangeAndAsk<Labels>(size, ++seed));
        }
    }
}

TEST(ChangedRanges, AreFoundAsTheyAre) {
    unsigned seed = 0;
    for (const int size : kSizes) {
        SCOPED_TRACE(size);
        for (int i = 0; i < 4; ++i) {
            ASSERT_NO_FATAL_FAILURE(ChangeAndAsk<Ranges>(size, ++seed));
        }
    }
}

/// One way to change a value, and what the value is then.
struct Change {
    const char* name;
    std::shared_ptr<const ScoreValue> before;
    void (*change)(ScoreValue&);
    std::shared_ptr<const ScoreValue> after;
};

const NumericValue kSeven(7.0);
const StringValue kSevenText("7");
const DateTimeValue kSevenTime(7.0, DateTimeValue::VAL_TIME);
constexpr auto kTime = DateTimeValue::VAL_TIME;

DateTimeValue& Time(ScoreValue& value) {
    return dynamic_cast<DateTimeValue&>(value);
}
std::shared_ptr<const ScoreValue> Number(double number) {
    return std::make_shared<NumericValue>(number);
}
std::shared_ptr<const ScoreValue> Text(const char* text) {
    return std::make_shared<StringValue>(text);
}
std::shared_ptr<const ScoreValue> NewTime(double seconds, DateTimeValue::DateTimeValType kind = kTime) {
    return std::make_shared<DateTimeValue>(seconds, kind);
}

const Change kChanges[] = {
    {"NumberSet", Number(-1.0), [](ScoreValue& v) { dynamic_cast<NumericValue&>(v).SetDoubleValue(7.0); }, Number(7.0)},
    {"NumberAssigned", Number(-1.0), [](ScoreValue& v) { dynamic_cast<NumericValue&>(v) = kSeven; }, Number(7.0)},
    {"NumberTaken", Number(-1.0), [](ScoreValue& v) { v.SetValue(&kSeven); }, Number(7.0)},
    {"TextSet", Text("old"), [](ScoreValue& v) { dynamic_cast<StringValue&>(v).SetString("7"); }, Text("7")},
    {"TextAssigned", Text("old"), [](ScoreValue& v) { dynamic_cast<StringValue&>(v) = kSevenText; }, Text("7")},
    {"TextTaken", Text("old"), [](ScoreValue& v) { v.SetValue(&kSevenText); }, Text("7")},
    {"TextEmptied", Text("old"), [](ScoreValue& v) { v.SetValue(&kSeven); }, Text("")},
    {"TimeSet", NewTime(-1.0), [](ScoreValue& v) { Time(v).SetDateTimeValue(7.0, kTime); }, NewTime(7.0)},
    {"TimeConverted", NewTime(-1.0),
     [](ScoreValue& v) { Time(v).SetDateTimeValue(7.0, ScoreDictVar::DT_TIME_SECONDS); }, NewTime(7.0)},
    {"TimeNumberSet", NewTime(-1.0), [](ScoreValue& v) { Time(v).SetDoubleValue(7.0); }, NewTime(7.0)},
    {"TimeAssigned", NewTime(-1.0), [](ScoreValue& v) { Time(v) = kSevenTime; }, NewTime(7.0)},
    {"TimeTaken", NewTime(-1.0), [](ScoreValue& v) { v.SetValue(&kSevenTime); }, NewTime(7.0)},
    {"TimeTurnedIntoADate", NewTime(-1.0), [](ScoreValue& v) { Time(v).SetDateTimeType(DateTimeValue::VAL_DATE); },
     NewTime(-1.0, DateTimeValue::VAL_DATE)},
};

class ChangedValue : public testing::TestWithParam<Change> {};

TEST_P(ChangedValue, IsFoundAmongManyLabels) {
    ValueLabelSet set;
    ScoreValue* kept = GetParam().before->Clone();
    set.Add(new ValueLbl(kept, "kept"));
    for (int i = 0; i < 100; ++i) {
        set.Add(new ValueLbl(new NumericValue(1000.0 + i), "other"));
    }
    EXPECT_EQ(set.GetLabelOfValue(GetParam().before.get()), "kept");
    EXPECT_EQ(set.GetLabelOfValue(GetParam().after.get()), "");
    GetParam().change(*kept);
    EXPECT_EQ(set.GetLabelOfValue(GetParam().before.get()), "");
    EXPECT_EQ(set.GetLabelOfValue(GetParam().after.get()), "kept");
}

TEST_P(ChangedValue, IsFoundAmongManyRanges) {
    MissingValueSet set;
    ScoreValue* kept = GetParam().before->Clone();
    set.Add(new Range(kept));
    for (int i = 0; i < 100; ++i) {
        set.Add(new Range(new NumericValue(1000.0 + i)));
    }
    EXPECT_TRUE(set.IsInAnyRange(GetParam().before.get()));
    GetParam().change(*kept);
    EXPECT_FALSE(set.IsInAnyRange(GetParam().before.get()));
    EXPECT_TRUE(set.IsInAnyRange(GetParam().after.get()));
}

INSTANTIATE_TEST_SUITE_P(ByEachOperation, ChangedValue, testing::ValuesIn(kChanges), veltrane::tests::NameOfRow());

// What has been changed and is taken out then leaves nothing behind that an index could find.
TEST(ChangedLabels, AreRemovedWithWhatTheyWere) {
    for (const bool isAskedBetween : {false, true}) {
        ValueLabelSet set;
        auto* kept = new NumericValue(0.0);
        set.Add(new ValueLbl(kept, "kept"));
        for (int i = 1; i < 100; ++i) {
            set.Add(new ValueLbl(new NumericValue(i), "other"));
        }
        const NumericValue before(0.0);
        kept->SetDoubleValue(1000.0);
        EXPECT_FALSE(isAskedBetween && set.Contains(&before));
        const ValueLbl key(new NumericValue(1000.0), "key");
        EXPECT_TRUE(set.Remove(&key));
        EXPECT_EQ(set.GetLabelOfValue(&before), "");
        for (int i = 0; i < 100; ++i) {
            EXPECT_FALSE(set.Contains(&before));
        }
    }
}

TEST(ChangedRanges, AreRemovedWithWhatTheyWere) {
    for (const bool isAskedBetween : {false, true}) {
        MissingValueSet set;
        auto* kept = new Range(0.0, 0.5, true, true);
        set.Add(kept);
        for (int i = 1; i < 100; ++i) {
            set.Add(new Range(new NumericValue(i)));
        }
        const NumericValue before(0.25);
        const std::unique_ptr<const ScoreValue> former(kept->GetMin());
        kept->SetMin(new NumericValue(0.375));
        EXPECT_FALSE(isAskedBetween && set.IsInAnyRange(&before));
        const Range key(0.375, 0.5, true, true);
        EXPECT_TRUE(set.Remove(&key));
        for (int i = 0; i < 100; ++i) {
            EXPECT_FALSE(set.IsInAnyRange(&before));
        }
    }
}

TEST(ChangedLabels, LeaveOtherSetsAlone) {
    ValueLabelSet changed;
    ValueLabelSet other;
    auto* kept = new NumericValue(0.0);
    for (int i = 0; i < 100; ++i) {
        changed.Add(new ValueLbl(i == 0 ? kept : new NumericValue(i), "changed"));
        other.Add(new ValueLbl(new NumericValue(i), std::to_string(i)));
    }
    for (int i = 0; i < 100; ++i) {
        const NumericValue asked(i);
        kept->SetDoubleValue(1000.0 + i);
        EXPECT_EQ(other.GetLabelOfValue(&asked), std::to_string(i));
        EXPECT_TRUE(changed.Contains(kept));
    }
}

TEST(ChangedLabelsThreads, AskTogether) {
    ValueLabelSet set;
    auto* kept = new NumericValue(0.0);
    set.Add(new ValueLbl(kept, "kept"));
    for (int i = 1; i < 100; ++i) {
        set.Add(new ValueLbl(new NumericValue(i), std::to_string(i)));
    }
    std::atomic<int> wrong = 0;
    for (int round = 0; round < 20; ++round) {
        kept->SetDoubleValue(1000.0 + round);
        std::vector<std::thread> threads;
        for (int thread = 0; thread < 4; ++thread) {
            threads.emplace_back([&set, &wrong, round] {
                const NumericValue present(1000.0 + round);
                const NumericValue former(999.0 + round);
                for (int i = 1; i < 60; ++i) {
                    const NumericValue asked(i);
                    wrong += set.GetLabelOfValue(&present) != "kept" || set.Contains(&former) ||
                             set.GetLabelOfValue(&asked) != std::to_string(i);
                }
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
    }
    EXPECT_EQ(wrong, 0);
}

} // namespace
} // namespace MCVeltrane_900
