#include "support/faults/failure.h"
#include "support/rows.h"
#include "translators/derived/derived_fields.h"

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/NumericValue.h>

#include <gtest/gtest.h>

#include <locale>

namespace veltrane::tests {
namespace {

std::string Constant(const std::string& dataType, const std::string& content) {
    return "<Constant" + (dataType.empty() ? "" : " dataType='" + dataType + "'") + ">" + content + "</Constant>";
}

TEST(ConstantField, ATextKeepsTheText) {
    DerivedFields fields(TextField(Constant("string", "abc")));
    EXPECT_EQ(fields.Var("z").GetConstString(), "abc");
    EXPECT_EQ(fields.Score("z", {}), "'abc'");
}

TEST(ConstantField, AnIntegerThatIsNoNumberFails) {
    ExpectReadFailure(NumericField(Constant("integer", "abc")), {INVALID_VALUE_OF_TYPE, "abc", "double"});
}

TEST(ConstantField, ATextWithoutDataTypeFails) {
    ExpectReadFailure(TextField(Constant("", "abc")), {INVALID_VALUE_OF_TYPE, "abc", "double"});
}

TEST(ConstantField, ANumberKeepsItsText) {
    DerivedFields fields(NumericField(Constant("", "1.50")));
    EXPECT_EQ(fields.Var("z").GetConstString(), "1.50");
    EXPECT_EQ(fields.Score("z", {}), "1.5");
}

TEST(ConstantField, ADateTimeBecomesInternalSeconds) {
    DerivedFields fields(
        DerivedField("z", "optype='continuous' dataType='dateDaysSince[1970]'", Constant("dateDaysSince[1970]", "2")));
    EXPECT_EQ(fields.Var("z").GetConstString(), "172800.000000");
}

TEST(ConstantField, AnEmptyOneIsRefused) {
    ExpectReadFailure(TextField("<Constant dataType='string'/>"), {MISSING_NODE, "Constant"});
}

/// Calls the readers of one Constant element directly.
class ConstantReading : public testing::Test {
protected:
    std::string Text(const std::string& dataType, const std::string& content) {
        const ParsedXml document = ParseXml(Constant(dataType, content));
        return translator.HandelConstant(document.Root(), number, type);
    }
    std::unique_ptr<ScoreValue> Value(const std::string& dataType, const std::string& content) {
        const ParsedXml document = ParseXml(Constant(dataType, content));
        return std::unique_ptr<ScoreValue>(translator.HandelConstant(document.Root()));
    }
    std::unique_ptr<ScoreValue> DefaultText(const std::string& dataType, const std::string& content) {
        const ParsedXml document = ParseXml(Constant(dataType, content));
        return std::unique_ptr<ScoreValue>(translator.HandelConstantDefaultStringType(document.Root()));
    }

    PMMLTranslator translator{"UTF-8"};
    double number = 0;
    ScoreValue::ValueType type = ScoreValue::NUMERIC_VALUE;
};

TEST_F(ConstantReading, AText) {
    EXPECT_EQ(Text("string", " 1 "), " 1 ");
    EXPECT_EQ(number, NumericValue::GetSysmisValue());
    EXPECT_EQ(type, ScoreValue::STRING_VALUE);
}

TEST_F(ConstantReading, ANumberWhateverTheDataTypeSays) {
    for (const char* dataType : {"integer", "double", "", "boolean"}) {
        EXPECT_EQ(Text(dataType, " 2.5"), " 2.5");
        EXPECT_EQ(number, 2.5);
        EXPECT_EQ(type, ScoreValue::NUMERIC_VALUE);
    }
}

TEST_F(ConstantReading, ADateTime) {
    EXPECT_EQ(Text("dateTimeSecondsSince[1960]", "315619201"), "1.000000");
    EXPECT_EQ(number, 315619201.0);
    EXPECT_EQ(type, ScoreValue::DATETIME_VALUE);
}

/// Decimal comma, and points between thousands.
struct GermanNumbers : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST_F(ConstantReading, ADateTimeDoesNotDependOnTheLocale) {
    const std::locale before = std::locale::global(std::locale(std::locale::classic(), new GermanNumbers));
    const std::string text = Text("dateDaysSince[1970]", "1.5");
    const auto value = Value("dateDaysSince[1970]", "1.5");
    std::locale::global(before);
    EXPECT_EQ(text, "129600.000000");
    EXPECT_EQ(value->GetDouble(), 1.5);
}

TEST_F(ConstantReading, ADateTimeMustBeANumber) {
    ExpectFailure([this] { Text("date", "1970-01-01"); }, {INVALID_VALUE_OF_TYPE, "1970-01-01", "double"});
}

TEST_F(ConstantReading, ADateTimeThatIsMissingIsUndefined) {
    EXPECT_EQ(Text("dateDaysSince[0]", "-1.7976931348623157e+308"), "Undefined");
    EXPECT_EQ(Text("dateDaysSince[0]", "-1e308"), "Undefined");
    EXPECT_EQ(Text("dateDaysSince[0]", "1e999"), "inf");
}

TEST_F(ConstantReading, ALargeDateTimeIsWrittenInFull) {
    const std::string text = Text("dateTime", "1e300");
    EXPECT_EQ(text.size(), 308U);
    EXPECT_EQ(std::stod(text), 1e300);
}

TEST_F(ConstantReading, TheFirstChildNodeIsTheContent) {
    EXPECT_EQ(Text("string", "<![CDATA[a<b]]>rest"), "a<b");
    EXPECT_EQ(Text("string", "<!--note-->rest"), "note");
    EXPECT_EQ(Text("string", "<Child/>rest"), "");
}

TEST_F(ConstantReading, AnElementAsFirstChildIsNoNumber) {
    ExpectFailure([this] { Text("", "<Child/>1"); }, {INVALID_VALUE_OF_TYPE, "", "double"});
}

TEST_F(ConstantReading, AValueOfEachKind) {
    EXPECT_EQ(ToText(Value("string", "abc").get()), "'abc'");
    const auto numeric = Value("integer", "2.5");
    EXPECT_EQ(numeric->GetType(), ScoreValue::NUMERIC_VALUE);
    EXPECT_EQ(numeric->GetDouble(), 2.5);
}

struct DateTimeRow {
    const char* name;
    const char* dataType;
    const char* content;
    double seconds;
    DateTimeValue::DateTimeValType kind;
};
class ConstantDateTime : public testing::TestWithParam<DateTimeRow> {};

TEST_P(ConstantDateTime, HoldsTheSecondsOfItsType) {
    const ParsedXml document = ParseXml(Constant(GetParam().dataType, GetParam().content));
    PMMLTranslator translator;
    const std::unique_ptr<ScoreValue> value(translator.HandelConstant(document.Root()));
    const auto& dateTime = dynamic_cast<const DateTimeValue&>(*value);
    const DateTimeValue expected(GetParam().seconds, GetParam().kind);
    EXPECT_EQ(dateTime.GetNumericString(), expected.GetNumericString());
    EXPECT_TRUE(dateTime == expected);
}

INSTANTIATE_TEST_SUITE_P(
    Types, ConstantDateTime,
    testing::Values(DateTimeRow{"Date", "date", "86400", 86400, DateTimeValue::VAL_DATE},
                    DateTimeRow{"Time", "time", "61", 61, DateTimeValue::VAL_TIME},
                    DateTimeRow{"DateTime", "dateTime", "61.5", 61.5, DateTimeValue::VAL_DATETIME},
                    DateTimeRow{"DaysSince1960", "dateDaysSince[1960]", "3654", 86400, DateTimeValue::VAL_DATE},
                    DateTimeRow{"TimeSeconds", "timeSeconds", "3600", 3600, DateTimeValue::VAL_TIME},
                    DateTimeRow{"SecondsSince1980", "dateTimeSecondsSince[1980]", "-315532799", 1,
                                DateTimeValue::VAL_DATETIME},
                    DateTimeRow{"TheMissingNumber", "date", "-1.7976931348623157e+308", -1.7976931348623157e+308,
                                DateTimeValue::VAL_DATE}),
    NameOfRow());

TEST_F(ConstantReading, AValueWithoutContentIsRefused) {
    ExpectFailure([this] { Value("", ""); }, {MISSING_NODE, "Constant"});
}

TEST_F(ConstantReading, AValueThatIsNoNumberIsRefused) {
    ExpectFailure([this] { Value("double", "x"); }, {INVALID_VALUE_OF_TYPE, "x", "double"});
}

TEST_F(ConstantReading, ByDefaultAText) {
    EXPECT_EQ(ToText(DefaultText("", "1").get()), "'1'");
    EXPECT_EQ(ToText(DefaultText("string", "a").get()), "'a'");
}

TEST_F(ConstantReading, ByDefaultATextOnly) {
    ExpectFailure([this] { DefaultText("double", ""); },
                  {INVALID_ATTRIBUTE_VALUE_IN, "double", "dataType", "Constant"});
    ExpectFailure([this] { DefaultText("", ""); }, {MISSING_NODE, "Constant"});
}

} // namespace
} // namespace veltrane::tests
