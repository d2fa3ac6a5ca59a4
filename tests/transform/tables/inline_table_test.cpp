#include "transform/fields/fields.h"

#include <MCVeltrane_900/InlineTable.h>

#include <stdexcept>

using namespace veltrane::tests;

namespace {

class Table : public DerivedFields {
protected:
    std::string Found(InlineTable& table) {
        return Written(table.getValue(&record, &dictionary, &derived, {{"column", "nonsense"}}));
    }

    /// Columns for one number x and one text t.
    void NumberAndText(InlineTable& table) {
        table.AppendInputField(&Input("x", 1.0));
        table.AppendInputField(&Input("t", "a"));
    }

    std::string At(InlineTable& table, double x, const std::string& t) {
        record.SetValue("x", x);
        record.SetValue("t", t);
        return Found(table);
    }
};

/// A text that counts the living.
class Counted : public StringValue {
public:
    Counted(const std::string& text, std::vector<std::string>& deaths) : StringValue(text), fDeaths(deaths) {}
    ~Counted() override { fDeaths.push_back(GetText()); }

private:
    std::vector<std::string>& fDeaths;
};

using Deaths = std::vector<std::string>;

} // namespace

TEST_F(Table, InfoCodes) {
    EXPECT_EQ(InlineTable::OK, 0);
    EXPECT_EQ(InlineTable::InputMissing, 1);
    EXPECT_EQ(InlineTable::NoMatches, 2);
    EXPECT_EQ(InlineTable().GetInfoCode(), 0);
}

TEST_F(Table, ARowIsFoundByAllItsInputs) {
    InlineTable table;
    NumberAndText(table);
    table.AddInputOutput({Num(1), Txt("a")}, Num(10));
    table.AddInputOutput({Num(1), Txt("b")}, Num(20));
    table.AddInputOutput({Num(2), Txt("a")}, Num(30));
    EXPECT_EQ(At(table, 1, "a"), "number 10");
    EXPECT_EQ(table.GetInfoCode(), InlineTable::OK);
    EXPECT_EQ(At(table, 1, "b"), "number 20");
    EXPECT_EQ(At(table, 2, "a"), "number 30");
    EXPECT_EQ(At(table, 2, "b"), "null");
    EXPECT_EQ(table.GetInfoCode(), InlineTable::NoMatches);
}

TEST_F(Table, InputsCompareByTheOperatorsOfTheirKind) {
    InlineTable table;
    NumberAndText(table);
    table.AddInputOutput({Num(1), Txt("a")}, Num(10));
    EXPECT_EQ(At(table, 1.0 + 1e-15, "a   "), "number 10");
    EXPECT_EQ(At(table, 1.0 + 1e-10, "a"), "null");
    EXPECT_EQ(At(table, 1.0, " a"), "null");
}

TEST_F(Table, TheOutputIsTheTablesOwnObject) {
    InlineTable table;
    table.AppendInputField(&Input("x", 1.0));
    ScoreValue* output = Txt("found");
    table.AddInputOutput({Num(1)}, output);
    EXPECT_EQ(table.getValue(&record, &dictionary, &derived, {}), output);
}

TEST_F(Table, OfTwoRowsWithEqualKeysTheFirstWins) {
    InlineTable table;
    NumberAndText(table);
    Deaths deaths;
    table.AddInputOutput({Num(1), Txt("a")}, Num(10));
    table.AddInputOutput({Num(1), new Counted("a", deaths)}, new Counted("output", deaths));
    EXPECT_EQ(deaths.size(), 2U);
    EXPECT_EQ(At(table, 1, "a"), "number 10");
}

TEST_F(Table, AMissingInputIsNotSearchedFor) {
    InlineTable table;
    MakeMissing(Input("x", 9.0), 9.0);
    table.AppendInputField(dictionary.GetVar("x"));
    table.AddInputOutput({Num(9)}, Num(10));
    EXPECT_EQ(Found(table), "null");
    EXPECT_EQ(table.GetInfoCode(), InlineTable::InputMissing);
    record.SetValue("x", kMissing);
    EXPECT_EQ(Found(table), "null");
    EXPECT_EQ(table.GetInfoCode(), InlineTable::InputMissing);
    record.Remove("x");
    EXPECT_EQ(Found(table), "null");
    EXPECT_EQ(table.GetInfoCode(), InlineTable::InputMissing);
    EXPECT_EQ(Written(table.getValue(nullptr, nullptr, nullptr, {})), "null");
    EXPECT_EQ(table.GetInfoCode(), InlineTable::InputMissing);
}

TEST_F(Table, InputsAreReadByNameFromEveryRecord) {
    InlineTable table;
    table.AppendInputField(&Input("x", 1.0));
    table.AddInputOutput({Num(1)}, Num(10));
    EXPECT_EQ(Found(table), "number 10");
    CaseRecord other;
    other.Add("y", Num(5));
    other.Add("x", Num(1));
    EXPECT_EQ(Written(table.getValue(&other, &dictionary, &derived, {})), "number 10");
}

TEST_F(Table, ADerivedInputIsEvaluated) {
    Input("x", 1.0);
    InlineTable table;
    table.AppendInputField(&Derived("d", kNumeric, "x", TD::TE_FIELD_REF));
    record.Add("d", Num(5)); // not looked at
    table.AddInputOutput({Num(1)}, Num(10));
    EXPECT_EQ(Found(table), "number 10");
}

TEST_F(Table, GatheredInputsAreAppendedUpToTheFirstMissingOne) {
    InlineTable table;
    NumberAndText(table);
    Input("z", kNumeric, nullptr);
    table.AppendInputField(dictionary.GetVar("z"));
    table.AppendInputField(dictionary.GetVar("x"));
    std::vector<ScoreValue*> values{nullptr};
    table.GetInputValuesFromRecord(&record, values, &dictionary, &derived);
    EXPECT_EQ(table.GetInfoCode(), InlineTable::InputMissing);
    EXPECT_EQ(values, (std::vector<ScoreValue*>{nullptr, record.GetAllValues()[0], record.GetAllValues()[1]}));
    record.Add("z", Num(3));
    values.clear();
    table.GetInputValuesFromRecord(&record, values, &dictionary, &derived);
    EXPECT_EQ(table.GetInfoCode(), InlineTable::OK);
    EXPECT_EQ(values.size(), 4U);
}

TEST_F(Table, WithoutInputFieldsARowWithoutInputsMatches) {
    InlineTable table;
    EXPECT_EQ(Found(table), "null");
    EXPECT_EQ(table.GetInfoCode(), InlineTable::NoMatches);
    table.AddInputOutput({}, Num(1));
    EXPECT_EQ(Found(table), "number 1");
}

TEST_F(Table, ARowWithFewerInputsThanTheLeftOneThrows) {
    InlineTable table;
    NumberAndText(table);
    Deaths deaths;
    table.AddInputOutput({Num(1), Txt("a")}, Num(10));
    try {
        table.AddInputOutput({Num(1)}, new Counted("output", deaths));
        FAIL() << "a shorter row that hasn't differed so far must throw";
    } catch (const std::out_of_range& error) {
        EXPECT_STREQ(error.what(), "invalid vector<T> subscript");
    }
    EXPECT_EQ(deaths, (Deaths{"output"}));
    table.AddInputOutput({Num(0)}, Num(20)); // differs in the first input, so its length is never looked at
    EXPECT_EQ(At(table, 1, "a"), "number 10");
}

TEST_F(Table, ALookupWithFewerInputsThanARowThrows) {
    InlineTable table;
    table.AppendInputField(&Input("x", 1.0));
    table.AddInputOutput({Num(1), Txt("a")}, Num(10));
    EXPECT_THROW(Found(table), std::out_of_range);
    record.SetValue("x", 2.0);
    EXPECT_EQ(Found(table), "null");
}

TEST_F(Table, AKeyWithoutAValueEqualsEveryOther) {
    InlineTable table;
    table.AppendInputField(&Input("x", 1.0));
    table.AddInputOutput({nullptr}, Num(10));
    EXPECT_EQ(Found(table), "number 10");
}

TEST(KeptTable, ADateTimeElementEqualsEveryOther) {
    const DictVar when("when", kDateTime);
    const DictVar x("x", kNumeric);
    InlineTable table;
    table.AppendInputField(&when);
    table.AppendInputField(&x);
    const auto time = [](double seconds) { return new DateTimeValue(seconds, DateTimeValue::VAL_TIME); };
    table.AddInputOutput({time(1), Num(1)}, Num(10));
    table.AddInputOutput({time(2), Num(1)}, Num(20)); // collapses into the first
    table.AddInputOutput({time(1), Num(2)}, Num(30));
    CaseRecord record;
    record.Add("when", time(99));
    record.Add("x", Num(1));
    EXPECT_EQ(Written(table.getValue(&record, nullptr, nullptr, {})), "number 10");
    record.SetValue("x", 2.0);
    EXPECT_EQ(Written(table.getValue(&record, nullptr, nullptr, {})), "number 30");
}

TEST(KeptTable, TheKindOfTheRowsElementDecidesHowItCompares) {
    // A number orders against whatever number a text has; a text orders against texts alone.
    const DictVar t("t", kText);
    InlineTable table;
    table.AppendInputField(&t);
    table.AddInputOutput({Num(5)}, Num(10));
    CaseRecord record;
    record.Add("t", Txt("5"));
    EXPECT_EQ(Written(table.getValue(&record, nullptr, nullptr, {})), "number 10");
    record.SetValue("t", "6");
    EXPECT_EQ(Written(table.getValue(&record, nullptr, nullptr, {})), "null");
}

TEST(KeptTable, ASysmisInAKeyEqualsEveryNumber) {
    const DictVar x("x", kNumeric);
    InlineTable table;
    table.AppendInputField(&x);
    table.AddInputOutput({Num(kMissing)}, Num(10));
    CaseRecord record;
    record.Add("x", Num(3));
    EXPECT_EQ(Written(table.getValue(&record, nullptr, nullptr, {})), "number 10");
}

TEST(KeptTable, ANumberWithinTheToleranceOfTwoRowsFindsTheSmaller) {
    const DictVar x("x", kNumeric);
    const double between = 1.0 + 0.8e-14;
    const double above = 1.0 + 1.6e-14;
    for (const bool ascending : {true, false}) {
        InlineTable table;
        table.AppendInputField(&x);
        table.AddInputOutput({Num(ascending ? 1.0 : above)}, Num(ascending ? 10 : 30));
        table.AddInputOutput({Num(ascending ? above : 1.0)}, Num(ascending ? 30 : 10));
        table.AddInputOutput({Num(between)}, Num(20)); // equals the first row on its way, and is dropped
        CaseRecord record;
        record.Add("x", Num(between));
        EXPECT_EQ(Written(table.getValue(&record, nullptr, nullptr, {})), "number 10") << ascending;
        record.SetValue("x", 1.0 + 2.4e-14);
        EXPECT_EQ(Written(table.getValue(&record, nullptr, nullptr, {})), "number 30") << ascending;
    }
}

TEST(KeptTable, BlankTextsComeBehindEveryOther) {
    const DictVar t("t", kText);
    for (const bool blankFirst : {true, false}) {
        InlineTable table;
        table.AppendInputField(&t);
        table.AddInputOutput({Txt(blankFirst ? "   " : "abc")}, Num(blankFirst ? 1 : 2));
        table.AddInputOutput({Txt(blankFirst ? "abc" : "   ")}, Num(blankFirst ? 2 : 1));
        CaseRecord record;
        record.Add("t", Txt(""));
        EXPECT_EQ(Written(table.getValue(&record, nullptr, nullptr, {})), "number 1") << blankFirst;
        record.SetValue("t", "abc ");
        EXPECT_EQ(Written(table.getValue(&record, nullptr, nullptr, {})), "number 2") << blankFirst;
    }
}

TEST_F(Table, FindsEachOfAHundredThousandRows) {
    InlineTable table;
    NumberAndText(table);
    for (int i = 0; i < 100000; ++i) {
        const int n = (i * 7919) % 100000; // in no order
        table.AddInputOutput({Num(n), Txt(n % 2 == 0 ? "even" : "odd")}, Num(n + 0.5));
    }
    for (int n = 0; n < 100000; n += 97) {
        EXPECT_EQ(At(table, n, n % 2 == 0 ? "even" : "odd"), Written(std::make_unique<NumericValue>(n + 0.5).get()));
    }
    EXPECT_EQ(At(table, 4, "odd"), "null");
}

TEST_F(Table, ACopySharesItsRowsAndEitherMayGoFirst) {
    Deaths deaths;
    const DictVar& x = Input("x", 1.0);
    for (const bool originalFirst : {true, false}) {
        deaths.clear();
        auto original = std::make_unique<InlineTable>();
        original->AppendInputField(&x);
        ScoreValue* output = new Counted("output", deaths);
        original->AddInputOutput({Num(1)}, output);
        EXPECT_EQ(original->getValue(&record, &dictionary, &derived, {}), output);
        auto copy = std::make_unique<InlineTable>(*original);
        auto& first = originalFirst ? original : copy;
        auto& second = originalFirst ? copy : original;
        first.reset();
        EXPECT_TRUE(deaths.empty());
        EXPECT_EQ(second->getValue(&record, &dictionary, &derived, {}), output);
        second.reset();
        EXPECT_EQ(deaths, (Deaths{"output"}));
    }
}

TEST_F(Table, AssignmentReplacesFieldsRowsAndCode) {
    Deaths deaths;
    InlineTable source;
    source.AppendInputField(&Input("x", 1.0));
    source.AddInputOutput({Num(1)}, Num(10));
    record.SetValue("x", 5.0);
    EXPECT_EQ(Found(source), "null");
    InlineTable target;
    target.AddInputOutput({new Counted("old", deaths)}, nullptr);
    target = source;
    EXPECT_EQ(deaths, (Deaths{"old"}));
    EXPECT_EQ(target.GetInfoCode(), InlineTable::NoMatches);
    record.SetValue("x", 1.0);
    EXPECT_EQ(Found(target), "number 10");
    const InlineTable& same = target;
    target = same;
    EXPECT_EQ(Found(target), "number 10");
}

TEST_F(Table, ARowThatIsAddedLaterIsInOneTableAlone) {
    InlineTable original;
    original.AppendInputField(&Input("x", 1.0));
    InlineTable copy(original);
    copy.AddInputOutput({Num(1)}, Num(10));
    EXPECT_EQ(Found(original), "null");
    EXPECT_EQ(Found(copy), "number 10");
}

TEST_F(Table, KeysGoFromTheirEndThenTheOutput) {
    Deaths deaths;
    {
        InlineTable table;
        table.AddInputOutput({new Counted("a", deaths), new Counted("b", deaths), new Counted("c", deaths)},
                             new Counted("output", deaths));
    }
    EXPECT_EQ(deaths, (Deaths{"c", "b", "a", "output"}));
}

TEST(KeptTable, WhereKeysContradictEachOtherTheOrderOfTheRowsDecides) {
    // "a" comes before the blank text, and the blank text with the smaller number before "a" with the greater one.
    const DictVar t("t", kText);
    const DictVar x("x", kNumeric);
    for (const bool blankFirst : {true, false}) {
        InlineTable table;
        table.AppendInputField(&t);
        table.AppendInputField(&x);
        table.AddInputOutput({Txt(blankFirst ? "" : "b"), Num(1)}, Num(1));
        table.AddInputOutput({Txt(blankFirst ? "a" : ""), Num(blankFirst ? 2 : 1)}, Num(2));
        table.AddInputOutput({Txt(blankFirst ? "b" : "a"), Num(blankFirst ? 1 : 2)}, Num(3));
        CaseRecord record;
        record.Add("t", Txt("a"));
        record.Add("x", Num(2));
        EXPECT_EQ(Written(table.getValue(&record, nullptr, nullptr, {})), blankFirst ? "null" : "number 3");
    }
}
