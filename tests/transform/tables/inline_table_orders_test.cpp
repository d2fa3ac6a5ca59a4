#include "support/rows.h"
#include "transform/fields/fields.h"

#include <MCVeltrane_900/InlineTable.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>
#include <random>

// Tables whose keys contradict each other: blank texts, missing numbers, numbers within the tolerance, numbers beside
// texts, dates, elements without a value. Every order in which a small table can be filled is compared with a list.

namespace veltrane::tests {
namespace {

using Key = std::vector<const ScoreValue*>;

/// Whether the elements of a key compare, by the kind of the left one.
bool IsCompared(const ScoreValue* left, const ScoreValue* right) {
    return left != nullptr && right != nullptr && left->GetType() != ScoreValue::DATETIME_VALUE;
}

bool IsBefore(const Key& left, const Key& right) {
    for (std::size_t i = 0; i < left.size(); ++i) {
        if (!IsCompared(left[i], right[i])) {
            continue;
        }
        if (*left[i] < *right[i]) {
            return true;
        }
        if (*left[i] > *right[i]) {
            return false;
        }
    }
    return false;
}

/// The rows of a table, in a list that is gone through from its start.
class List {
public:
    void Add(const Key& key, int output) {
        const auto place = FirstNotBefore(key);
        if (place == fRows.end() || IsBefore(key, place->first)) {
            fRows.insert(place, {key, output});
        }
    }

    /// The output of the matching row; -1 for none.
    int Find(const Key& key) {
        const auto place = FirstNotBefore(key);
        return place == fRows.end() || IsBefore(key, place->first) ? -1 : place->second;
    }

    std::size_t Size() const { return fRows.size(); }

private:
    using Rows = std::vector<std::pair<Key, int>>;

    Rows::iterator FirstNotBefore(const Key& key) {
        return std::find_if(fRows.begin(), fRows.end(), [&key](const auto& row) { return !IsBefore(row.first, key); });
    }

    Rows fRows;
};

/// A table with one or two columns and a record to look it up with.
class Tabled {
public:
    explicit Tabled(std::size_t columns) : fColumns(columns) {
        for (std::size_t i = 0; i < columns; ++i) {
            fTable.AppendInputField(&fFields[i]);
        }
    }

    void Add(const Key& key, int output) {
        std::vector<ScoreValue*> inputs;
        for (const ScoreValue* element : key) {
            inputs.push_back(element == nullptr ? nullptr : element->Clone());
        }
        fTable.AddInputOutput(inputs, Num(output));
    }

    /// The output of the row that is found; -1 for none, -2 when an input is missing.
    int Find(const Key& key) {
        CaseRecord record;
        for (std::size_t i = 0; i < fColumns; ++i) {
            record.Add(fFields[i].GetName(), key[i] == nullptr ? nullptr : key[i]->Clone());
        }
        const ScoreValue* output = fTable.getValue(&record, nullptr, nullptr, {});
        if (fTable.GetInfoCode() == InlineTable::InputMissing) {
            return -2;
        }
        EXPECT_EQ(output == nullptr, fTable.GetInfoCode() == InlineTable::NoMatches);
        return output == nullptr ? -1 : output->GetInt();
    }

private:
    std::size_t fColumns;
    DictVar fFields[2] = {DictVar("a", kNumeric), DictVar("b", kNumeric)};
    InlineTable fTable;
};

bool IsMissingInput(const ScoreValue* element) {
    return element == nullptr || element->IsSystemMissingValue();
}

std::string Written(const Key& key) {
    std::string text;
    for (const ScoreValue* element : key) {
        text += "(" + tests::Written(element) + ")";
    }
    return text;
}

struct Keys {
    const char* name;
    std::vector<std::vector<std::shared_ptr<ScoreValue>>> columns; ///< what stands in each; the keys are all pairs
};

std::vector<Key> AllKeys(const Keys& keys) {
    std::vector<Key> all;
    for (const auto& first : keys.columns[0]) {
        if (keys.columns.size() == 1) {
            all.push_back({first.get()});
            continue;
        }
        for (const auto& second : keys.columns[1]) {
            all.push_back({first.get(), second.get()});
        }
    }
    return all;
}

/// Fills a table and a list with these rows and looks every key up in both.
void ExpectTheListsAnswers(const std::vector<Key>& keys, const std::vector<std::size_t>& rows) {
    Tabled table(keys[0].size());
    List list;
    std::string filled;
    for (const std::size_t row : rows) {
        table.Add(keys[row], static_cast<int>(row));
        list.Add(keys[row], static_cast<int>(row));
        filled += Written(keys[row]) + " ";
    }
    for (const Key& key : keys) {
        const bool isMissing = std::any_of(key.begin(), key.end(), IsMissingInput);
        ASSERT_EQ(table.Find(key), isMissing ? -2 : list.Find(key)) << filled << "looked up " << Written(key);
    }
}

/// Every choice of up to `most` rows in every order.
void ExpectAllOrders(const std::vector<Key>& keys, std::size_t most, std::vector<std::size_t>& rows) {
    ExpectTheListsAnswers(keys, rows);
    if (rows.size() == most) {
        return;
    }
    for (std::size_t next = 0; next < keys.size() && !::testing::Test::HasFatalFailure(); ++next) {
        if (std::find(rows.begin(), rows.end(), next) == rows.end()) {
            rows.push_back(next);
            ExpectAllOrders(keys, most, rows);
            rows.pop_back();
        }
    }
}

class InlineTableOrders : public ::testing::TestWithParam<Keys> {};

std::shared_ptr<ScoreValue> N(double number) {
    return std::make_shared<NumericValue>(number);
}
std::shared_ptr<ScoreValue> T(const char* text) {
    return std::make_shared<StringValue>(text);
}
std::shared_ptr<ScoreValue> D(double seconds) {
    return std::make_shared<DateTimeValue>(seconds, DateTimeValue::VAL_TIME);
}

const Keys kKeys[] = {
    {"Texts", {{T("a"), T("a  "), T("b"), T(""), T("  "), T("B")}}},
    {"Numbers", {{N(1), N(2), N(1 + 0.8e-14), N(1 + 1.6e-14), N(0), N(-0.0)}}},
    {"OddNumbers", {{N(1), N(2), N(kMissing), N(kNaN), N(kInfinity), N(-kInfinity)}}},
    {"NumbersBesideTexts", {{N(5), T("5"), T("10"), T(""), N(10), N(kMissing)}}},
    {"DatesBesideOthers", {{D(1), D(2), N(1), N(2), T("a"), nullptr}}},
    {"TextsAndNumbers", {{T("a"), T("b"), T("")}, {N(1), N(2)}}},
    {"NumbersAndTexts", {{N(1), N(2), N(kMissing)}, {T("a"), T("")}}},
    {"DatesAndNumbers", {{D(1), D(2)}, {N(1), N(2), N(kMissing)}}},
    {"TextsAndTexts", {{T("a"), T(" "), T("b")}, {T("a"), T("")}}},
    {"NearNumbersAndTexts", {{N(1), N(1 + 0.8e-14), N(1 + 1.6e-14)}, {T("a"), T("b")}}},
    {"NothingAndNumbers", {{nullptr, T("a")}, {N(1), N(2), nullptr}}},
};

TEST_P(InlineTableOrders, EveryOrderOfEverySmallTableIsALists) {
    const std::vector<Key> keys = AllKeys(GetParam());
    std::vector<std::size_t> rows;
    ExpectAllOrders(keys, 6, rows);
}

INSTANTIATE_TEST_SUITE_P(Keys, InlineTableOrders, ::testing::ValuesIn(kKeys), NameOfRow());

/// Texts and numbers in which most keys contradict some other.
std::vector<std::shared_ptr<ScoreValue>> ContradictingValues(std::mt19937& random, int count) {
    std::vector<std::shared_ptr<ScoreValue>> values;
    for (int i = 0; i < count; ++i) {
        const int drawn = static_cast<int>(random() % 100);
        switch (random() % 6) {
        case 0:
            values.push_back(T(std::string(static_cast<std::size_t>(drawn % 3), ' ').c_str()));
            break;
        case 1:
            values.push_back(N(drawn % 7 == 0 ? kMissing : drawn % 7 == 1 ? kNaN : 1 + drawn * 0.3e-14));
            break;
        case 2:
            values.push_back(T(std::to_string(drawn).c_str()));
            break;
        case 3:
            values.push_back(D(drawn));
            break;
        default:
            values.push_back(N(drawn));
        }
    }
    return values;
}

TEST(InlineTableOfManyRows, WhatIsFoundEqualsTheInputsWhateverContradictsWhatElse) {
    std::mt19937 random(17);
    const auto values = ContradictingValues(random, 400);
    for (int round = 0; round < 5; ++round) {
        std::vector<Key> keys;
        Tabled table(2);
        for (int i = 0; i < 3000; ++i) {
            keys.push_back({values[random() % values.size()].get(), values[random() % values.size()].get()});
            table.Add(keys.back(), i);
        }
        for (const Key& key : keys) {
            const int found = table.Find(key);
            if (found >= 0) {
                const Key& row = keys[static_cast<std::size_t>(found)];
                EXPECT_FALSE(IsBefore(row, key) || IsBefore(key, row)) << Written(row) << " for " << Written(key);
            }
        }
    }
}

TEST(InlineTableOfManyRows, KeysThatAgreeAreFoundAsInASortedMap) {
    std::mt19937 random(4);
    std::map<std::pair<std::string, int>, int> expected;
    Tabled table(2);
    std::vector<std::shared_ptr<ScoreValue>> kept;
    const auto key = [&kept](const std::string& text, int number) {
        kept.push_back(T(text.c_str()));
        kept.push_back(N(number));
        return Key{kept[kept.size() - 2].get(), kept.back().get()};
    };
    for (int i = 0; i < 20000; ++i) {
        const std::string text = "text " + std::to_string(random() % 300);
        const int number = static_cast<int>(random() % 100) - 50;
        expected.emplace(std::pair(text, number), i);
        table.Add(key(text, number), i);
    }
    for (int text = 0; text < 310; ++text) {
        for (int number = -51; number <= 50; ++number) {
            const auto row = expected.find({"text " + std::to_string(text), number});
            const int output = row == expected.end() ? -1 : row->second;
            ASSERT_EQ(table.Find(key("text " + std::to_string(text), number)), output) << text << " " << number;
        }
    }
}

/// A text that counts how often it is compared.
class ComparedText : public StringValue {
public:
    ComparedText(const std::string& text, std::size_t& comparisons) : StringValue(text), fComparisons(comparisons) {}
    bool operator<(const ScoreValue& other) const override {
        ++fComparisons;
        return StringValue::operator<(other);
    }

private:
    std::size_t& fComparisons;
};

TEST(InlineTableOfManyRows, FillingItComparesEachRowWithAFewOthers) {
    constexpr int kRows = 100000;
    for (const bool ascending : {true, false}) {
        std::size_t comparisons = 0;
        InlineTable table;
        for (int i = 0; i < kRows; ++i) {
            const int number = ascending ? i : (i * 7919) % kRows;
            table.AddInputOutput({new ComparedText(std::to_string(kRows + number), comparisons)}, Num(i));
        }
        EXPECT_LT(comparisons, 30U * kRows) << ascending;
    }
}

TEST(InlineTableOfManyRows, BlankAndMissingKeysCostNoMore) {
    constexpr int kRows = 100000;
    std::size_t comparisons = 0;
    InlineTable table;
    for (int i = 0; i < kRows; ++i) {
        const std::string text = i % 3 == 0 ? "" : std::to_string(kRows + (i * 7919) % kRows);
        table.AddInputOutput({new ComparedText(text, comparisons), Num(i % 5 == 0 ? kMissing : i)}, Num(i));
    }
    EXPECT_LT(comparisons, 30U * kRows);
}

} // namespace
} // namespace veltrane::tests
