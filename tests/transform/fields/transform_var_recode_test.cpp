#include "fields.h"
#include "support/numbers.h"
#include "support/rows.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <vector>

using namespace veltrane::tests;

namespace {

/// What a field may have to stand for missing and unmatched values, as flags.
enum Setting {
    NOTHING = 0,
    MISS = 1,
    DEFAULT = 2,
    SYSMIS_VALUE = 4,
    MISSING_COPY = 8,
    ELSE_COPY = 16,
    SYSMIS_IS_SYSMIS = 32, ///< the replacement of system-missing values is SYSMIS itself
    MISS_IS_SYSMIS = 64,
    DEFAULT_IS_SYSMIS = 128,
};

/// Values of the own type: 1 for missing, 2 for unmatched, 3 for system-missing values; "m", "d", "s" in text.
void Apply(TransformVar& field, int settings) {
    const bool text = field.GetVarType() != kNumeric;
    const auto make = [&](double number, const char* word, bool sysmis) {
        return text ? Txt(word) : Num(sysmis ? kMissing : number);
    };
    // The copy flags first: setting one drops a replacement, and a replacement clears its own flag.
    field.SetRecodeMissingCopy((settings & MISSING_COPY) != 0);
    field.SetRecodeElseCopy((settings & ELSE_COPY) != 0);
    if (settings & (MISS | MISS_IS_SYSMIS)) {
        field.SetRecodeMissValueTo(make(1, "m", settings & MISS_IS_SYSMIS));
    }
    if (settings & (DEFAULT | DEFAULT_IS_SYSMIS)) {
        field.SetRecodeDefaultValue(make(2, "d", settings & DEFAULT_IS_SYSMIS));
    }
    if (settings & (SYSMIS_VALUE | SYSMIS_IS_SYSMIS)) {
        field.SetRecodeSysmisValue(make(3, "s", settings & SYSMIS_IS_SYSMIS));
    }
}

struct Row {
    const char* name;
    ScoreDictVar::VariableType own;
    ScoreDictVar::VariableType source;
    const char* input; ///< "unmatched" 50, "user" 99 which is user-missing, "sysmis"; for a text source the text itself
    int settings;
    const char* expected;
};

constexpr auto N = kNumeric;
constexpr auto T = kText;

const Row kRows[] = {
    // Unmatched, text: the default, else the copy, else empty.
    {"UnmatchedTextDefault", T, T, "unmatched", DEFAULT | MISS | SYSMIS_VALUE | MISSING_COPY, "text 'd'"},
    {"UnmatchedTextElseCopy", T, T, "unmatched", ELSE_COPY, "text 'unmatched'"},
    {"UnmatchedTextMissingCopyDoesNotCount", T, T, "unmatched", MISSING_COPY, "text ''"},
    {"UnmatchedTextMissDoesNotCount", T, T, "unmatched", MISS | SYSMIS_VALUE, "text ''"},
    {"UnmatchedTextNothing", T, T, "unmatched", NOTHING, "text ''"},
    {"UnmatchedTextElseCopyOfANumber", T, N, "unmatched", ELSE_COPY, "text '50'"},
    // Unmatched, numeric.
    {"UnmatchedNumberDefault", N, N, "unmatched", DEFAULT | MISS | SYSMIS_VALUE, "number 2"},
    {"UnmatchedNumberDefaultSysmis", N, N, "unmatched", DEFAULT_IS_SYSMIS, "number SYSMIS"},
    {"UnmatchedNumberElseCopy", N, N, "unmatched", ELSE_COPY, "number 50"},
    {"UnmatchedNumberMissingCopyDoesNotCount", N, N, "unmatched", MISSING_COPY, "number SYSMIS"},
    {"UnmatchedNumberNothing", N, N, "unmatched", NOTHING, "number SYSMIS"},
    {"UnmatchedNumberElseCopyOfAText", N, T, "12.5", ELSE_COPY, "number 12.5"},
    // Missing, text.
    {"SysmisTextSysmisValueFirst", T, N, "sysmis", SYSMIS_VALUE | MISS | ELSE_COPY, "text 's'"},
    {"SysmisTextMiss", T, N, "sysmis", MISS | DEFAULT, "text 'm'"},
    {"SysmisTextMissingCopy", T, N, "sysmis", MISSING_COPY, "text 'Undefined'"},
    {"SysmisTextElseCopy", T, N, "sysmis", ELSE_COPY, "text 'Undefined'"},
    {"SysmisTextDefaultDoesNotCount", T, N, "sysmis", DEFAULT, "text ''"},
    {"UserMissingTextIgnoresSysmisValue", T, N, "user", SYSMIS_VALUE | MISS, "text 'm'"},
    {"UserMissingTextOnlySysmisValue", T, N, "user", SYSMIS_VALUE, "text ''"},
    {"UserMissingTextMissingCopy", T, N, "user", MISSING_COPY, "text '99'"},
    {"MissingTextOfATextSourceIgnoresSysmisValue", T, T, "user", SYSMIS_VALUE | MISS, "text 'm'"},
    {"MissingTextOfATextSourceCopy", T, T, "user", MISSING_COPY, "text 'user'"},
    {"MissingTextNothing", T, T, "user", NOTHING, "text ''"},
    // Missing, numeric.
    {"SysmisNumberSysmisValueFirst", N, N, "sysmis", SYSMIS_VALUE | MISS | ELSE_COPY, "number 3"},
    {"SysmisNumberSysmisValueThatIsSysmis", N, N, "sysmis", SYSMIS_IS_SYSMIS | MISS, "number 1"},
    {"SysmisNumberMiss", N, N, "sysmis", MISS | DEFAULT, "number 1"},
    {"SysmisNumberMissThatIsSysmis", N, N, "sysmis", MISS_IS_SYSMIS | ELSE_COPY, "number SYSMIS"},
    {"UserMissingNumberMissThatIsSysmisIsNotCopied", N, N, "user", MISS_IS_SYSMIS | ELSE_COPY, "number SYSMIS"},
    {"UserMissingNumberIgnoresSysmisValue", N, N, "user", SYSMIS_VALUE | MISS, "number 1"},
    {"UserMissingNumberMissingCopy", N, N, "user", MISSING_COPY, "number 99"},
    {"UserMissingNumberElseCopy", N, N, "user", ELSE_COPY, "number 99"},
    {"UserMissingNumberDefaultDoesNotCount", N, N, "user", DEFAULT, "number SYSMIS"},
    {"MissingNumberNothing", N, N, "sysmis", NOTHING, "number SYSMIS"},
    {"MissingNumberOfATextSource", N, T, "user", SYSMIS_VALUE | MISS, "number 1"},
};

class MissingAndUnmatched : public DerivedFields, public ::testing::WithParamInterface<Row> {
protected:
    const DictVar& Source() {
        const Row& row = GetParam();
        DictVar& source = Input("x", row.source, nullptr);
        if (row.source == kNumeric) {
            MakeMissing(source, 99.0);
        } else {
            MakeMissing(source, "user");
        }
        return source;
    }

    std::unique_ptr<ScoreValue> Value() {
        const Row& row = GetParam();
        if (row.source != kNumeric) {
            return std::unique_ptr<ScoreValue>(Txt(row.input));
        }
        const std::map<std::string, double> numbers{{"unmatched", 50.0}, {"user", 99.0}, {"sysmis", kMissing}};
        return std::unique_ptr<ScoreValue>(Num(numbers.at(row.input)));
    }
};

} // namespace

TEST_P(MissingAndUnmatched, Encoded) {
    const DictVar& source = Source();
    const auto value = Value();
    TransformVar field("d", GetParam().own);
    Apply(field, GetParam().settings);
    field.AddEncodingMap(Num(7777), Num(8888));
    EXPECT_EQ(Written(field.GetEncodedValue(&source, value.get())), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(, MissingAndUnmatched, ::testing::ValuesIn(kRows), NameOfRow());

namespace {

/// The rows with a numeric source: a text is not binned.
class MissingAndUnmatchedNumber : public MissingAndUnmatched {
public:
    static std::vector<Row> Rows() {
        std::vector<Row> rows;
        std::copy_if(std::begin(kRows), std::end(kRows), std::back_inserter(rows),
                     [](const Row& row) { return row.source == kNumeric; });
        return rows;
    }
};

} // namespace

TEST_P(MissingAndUnmatchedNumber, Binned) {
    const DictVar& source = Source();
    const auto value = Value();
    TransformVar field("d", GetParam().own);
    Apply(field, GetParam().settings);
    field.AddBinningValue(new Range(7000.0, 8000.0, true, true), Num(8888), "x");
    EXPECT_EQ(Written(field.GetBinningValue(&source, value.get())), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(, MissingAndUnmatchedNumber, ::testing::ValuesIn(MissingAndUnmatchedNumber::Rows()),
                         NameOfRow());

namespace {
using Encoding = DerivedFields;
using Binning = DerivedFields;
using NormDiscrete = DerivedFields;
} // namespace

TEST_F(Encoding, TheFirstPairWhoseKeyEqualsTheValueCounts) {
    const DictVar& source = Input("t", "x");
    TransformVar field("d", kNumeric);
    ScoreValue* encoded = Num(2);
    field.AddEncodingMap(Txt("a"), Num(1));
    field.AddEncodingMap(Txt("b"), encoded);
    field.AddEncodingMap(Txt("b"), Num(3));
    const StringValue b("b  ");
    EXPECT_EQ(field.GetEncodedValue(&source, &b), encoded);
}

TEST_F(Encoding, APairWithoutReplacementGivesNone) {
    const DictVar& source = Input("t", "x");
    TransformVar field("d", kNumeric);
    field.AddEncodingMap(Txt("a"), nullptr);
    const StringValue a("a");
    EXPECT_EQ(field.GetEncodedValue(&source, &a), nullptr);
}

TEST_F(Encoding, ANullInputGivesTheReplacementForANumber) {
    const DictVar& source = Input("t", "x");
    TransformVar field("d", kNumeric);
    EXPECT_EQ(Written(field.GetEncodedValue(&source, nullptr)), "number SYSMIS");
    field.SetRecodeMissValueTo(Num(4));
    EXPECT_EQ(Written(field.GetEncodedValue(&source, nullptr)), "number 4");
}

TEST(KeptEncoding, ANullInputGivesTheEmptyTextWhateverReplacesMissingValues) {
    const DictVar source("t", kText);
    TransformVar field("d", kText);
    field.SetRecodeMissValueTo(Txt("m"));
    EXPECT_EQ(Written(field.GetEncodedValue(&source, nullptr)), "text ''");
    EXPECT_EQ(Written(field.GetBinningValue(&source, nullptr)), "text 'm'");
}

TEST_F(Encoding, WithoutASourceVariableAnUnmatchedValueIsMissing) {
    TransformVar field("d", kNumeric);
    field.SetRecodeDefaultValue(Num(5));
    const NumericValue value(1.0);
    EXPECT_EQ(Written(field.GetEncodedValue(nullptr, &value)), "number SYSMIS");
    EXPECT_EQ(Written(field.GetBinningValue(nullptr, &value)), "number SYSMIS");
}

TEST_F(NormDiscrete, AFieldWithoutPairsGivesTheDefaultForEveryValue) {
    MakeMissing(Input("t", "a"), "none");
    TransformVar& field = Derived("d", kNumeric, "t", TD::TE_NORM_DISCRETE);
    field.SetRecodeDefaultValue(Num(1));
    EXPECT_EQ(Result(field), "number 1");
    record.SetValue("t", "anything");
    EXPECT_EQ(Result(field), "number 1");
    record.SetValue("t", "none");
    EXPECT_EQ(Result(field), "number SYSMIS");
    field.SetRecodeMissValueTo(Num(0.5));
    EXPECT_EQ(Result(field), "number 0.5");
    record.Remove("t");
    EXPECT_EQ(Result(field), "number 0.5");
}

TEST_F(Binning, TheFirstRangeThatHoldsTheValueDecides) {
    Input("x", 1.0);
    TransformVar& field = Derived("d", kText, "x", TD::TE_DISCRETIZE);
    field.AddBinningValue(new Range(0.0, 1.0, true, false), Txt("low"), "x");
    field.AddBinningValue(new Range(1.0, 2.0, true, true), Txt("high"), "x");
    field.AddBinningValue(new Range(0.0, 9.0, true, true), Txt("any"), "x");
    EXPECT_EQ(Result(field), "text 'high'");
    record.SetValue("x", 0.5);
    EXPECT_EQ(Result(field), "text 'low'");
    record.SetValue("x", 5.0);
    EXPECT_EQ(Result(field), "text 'any'");
    record.SetValue("x", 10.0);
    EXPECT_EQ(Result(field), "text ''");
}

TEST_F(Binning, ABinWithoutValueGivesTheInputObject) {
    const DictVar& source = Input("x", 1.0);
    TransformVar field("d", kNumeric);
    field.AddBinningValue(new Range(0.0, 2.0, true, true), nullptr, "x");
    const NumericValue value(1.5);
    EXPECT_EQ(field.GetBinningValue(&source, &value), &value);
}

TEST_F(Binning, ABinWithoutRangeIsPassedOver) {
    const DictVar& source = Input("x", 1.0);
    TransformVar field("d", kNumeric);
    field.AddBinningValue(nullptr, Num(5), "x");
    const NumericValue value(1.5);
    EXPECT_EQ(Written(field.GetBinningValue(&source, &value)), "number SYSMIS");
}

TEST_F(Binning, ADateTimeIsBinnedByItsNumber) {
    const DictVar& source = Input("when", kDateTime, nullptr);
    TransformVar field("d", kNumeric);
    field.AddBinningValue(new Range(2.0, 3.0, true, true), Num(1), "when");
    const DateTimeValue twoDays(2 * 86400.0, DateTimeValue::VAL_DATE);
    EXPECT_EQ(Written(field.GetBinningValue(&source, &twoDays)), "number 1");
}

TEST_F(Binning, ANullOrTextInputGivesTheReplacementOrNothing) {
    const DictVar& source = Input("t", "x");
    const StringValue text("5");
    for (const ScoreValue* input : {static_cast<const ScoreValue*>(nullptr), static_cast<const ScoreValue*>(&text)}) {
        TransformVar number("n", kNumeric);
        number.AddBinningValue(new Range(0.0, 9.0, true, true), Num(1), "t");
        number.SetRecodeElseCopy(true);
        EXPECT_EQ(Written(number.GetBinningValue(&source, input)), "number SYSMIS");
        number.SetRecodeMissValueTo(Num(kMissing));
        EXPECT_EQ(Written(number.GetBinningValue(&source, input)), "number SYSMIS");
        delete number.GetRecodeMissValueRep();
        number.SetRecodeMissValueTo(Num(2));
        EXPECT_EQ(Written(number.GetBinningValue(&source, input)), "number 2");
        TransformVar field("s", kText);
        EXPECT_EQ(Written(field.GetBinningValue(&source, input)), "text ''");
        field.SetRecodeMissValueTo(Txt("m"));
        EXPECT_EQ(Written(field.GetBinningValue(&source, input)), "text 'm'");
    }
}

TEST_F(Binning, TheScratchIsClearedForEachValue) {
    const DictVar& source = Input("x", 1.0);
    TransformVar field("d", kNumeric);
    field.SetRecodeElseCopy(true);
    const NumericValue value(4.0);
    EXPECT_EQ(Written(field.GetBinningValue(&source, &value)), "number 4");
    EXPECT_EQ(Written(field.GetBinningValue(&source, nullptr)), "number SYSMIS");
}
