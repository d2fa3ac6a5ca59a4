#include "support/dom.h"
#include "support/faults/failure.h"
#include "translators/frame/test_translator.h"

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/DictVar.h>
#include <MCVeltrane_900/NumericValue.h>

#include <gtest/gtest.h>

#include <memory>

namespace {

using namespace veltrane::tests;

struct DateTimeRow {
    const char* text;
    ScoreDictVar::DateTimeType type;
    double number;
};

class VerifyDateTimeAccepts : public testing::TestWithParam<DateTimeRow> {};

TEST_P(VerifyDateTimeAccepts, Text) {
    EXPECT_EQ(BaseTranslator::VerifyDateTime(std::string(GetParam().text), GetParam().type), GetParam().number);
}

// Dates come out in days since 1970, whatever epoch they are written with; the rest in seconds.
INSTANTIATE_TEST_SUITE_P(Texts, VerifyDateTimeAccepts,
                         testing::Values(DateTimeRow{"1970-01-02", ScoreDictVar::DT_DATE, 1.0},
                                         DateTimeRow{"1969-12-31", ScoreDictVar::DT_DATE, -1.0},
                                         DateTimeRow{"01:00:05", ScoreDictVar::DT_TIME, 3605.0},
                                         DateTimeRow{"1970-01-02T00:00:01", ScoreDictVar::DT_DATETIME, 86401.0},
                                         DateTimeRow{"719529", ScoreDictVar::DT_DAYS_SINCE_0, 1.0},
                                         DateTimeRow{"3654", ScoreDictVar::DT_DAYS_SINCE_1960, 1.0},
                                         DateTimeRow{"1.5", ScoreDictVar::DT_DAYS_SINCE_1970, 1.5},
                                         DateTimeRow{"0", ScoreDictVar::DT_DAYS_SINCE_1980, 3652.0},
                                         DateTimeRow{"12", ScoreDictVar::DT_TIME_SECONDS, 12.0},
                                         DateTimeRow{"62167219201", ScoreDictVar::DT_SECONDS_SINCE_0, 1.0},
                                         DateTimeRow{"315619201", ScoreDictVar::DT_SECONDS_SINCE_1960, 1.0},
                                         DateTimeRow{"1", ScoreDictVar::DT_SECONDS_SINCE_1970, 1.0},
                                         DateTimeRow{"1", ScoreDictVar::DT_SECONDS_SINCE_1980, 315532801.0}));

class VerifyDateTimeRefuses : public testing::TestWithParam<DateTimeRow> {};

TEST_P(VerifyDateTimeRefuses, Text) {
    ExpectFailure([] { BaseTranslator::VerifyDateTime(std::string(GetParam().text), GetParam().type); },
                  {INVALID_VALUE_OF_TYPE, GetParam().text, "dateTime"});
}

INSTANTIATE_TEST_SUITE_P(Texts, VerifyDateTimeRefuses,
                         testing::Values(DateTimeRow{"2001-02-29", ScoreDictVar::DT_DATE, 0},
                                         DateTimeRow{"25:00:00", ScoreDictVar::DT_TIME, 0},
                                         DateTimeRow{"1970-01-01 00:00:01", ScoreDictVar::DT_DATETIME, 0},
                                         DateTimeRow{"x", ScoreDictVar::DT_DAYS_SINCE_0, 0},
                                         DateTimeRow{"", ScoreDictVar::DT_DAYS_SINCE_1970, 0},
                                         DateTimeRow{"5.", ScoreDictVar::DT_SECONDS_SINCE_1980, 0}));

TEST(VerifyDateTime, ReadsDocumentTextAsStrings) {
    EXPECT_EQ(BaseTranslator::VerifyDateTime(u"1970-01-02", ScoreDictVar::DT_DATE), 1.0);
}

TEST(VerifyDateTime, OfNoTypeIsMissing) {
    EXPECT_EQ(BaseTranslator::VerifyDateTime(std::string("x"), ScoreDictVar::DT_NONE), NumericValue::GetSysmisValue());
}

class MakeVarValue : public testing::Test {
protected:
    MakeVarValue() { StartXml(); }

    std::unique_ptr<ScoreValue> Make(const DictVar& var, const std::string& text) {
        return std::unique_ptr<ScoreValue>(translator.CarefullyMakeVarValue(&var, text));
    }
    std::unique_ptr<ScoreValue> MakeWide(const DictVar& var, const XMLCh* text) {
        return std::unique_ptr<ScoreValue>(translator.CarefullyMakeVarValue(&var, text));
    }

    TestTranslator translator;
    DictVar string{"s", ScoreDictVar::STRING_VAR};
    DictVar number{"n", ScoreDictVar::kNUMERIC_VAR};
    DictVar dateTime{"d", ScoreDictVar::DATETIME_VAR};
};

TEST_F(MakeVarValue, MakesAStringOfTheText) {
    const auto value = Make(string, " a ");
    ASSERT_EQ(value->GetType(), ScoreValue::STRING_VALUE);
    EXPECT_EQ(value->GetString(), " a ");
}

TEST_F(MakeVarValue, TranscodesAStringOfTheDocument) {
    translator.CreateTranscoder("UTF-8");
    EXPECT_EQ(MakeWide(string, u"\u00E4")->GetString(), "\xC3\xA4");
}

TEST_F(MakeVarValue, MakesANumberOfAVerifiedText) {
    const auto value = Make(number, "1.5 ");
    ASSERT_EQ(value->GetType(), ScoreValue::NUMERIC_VALUE);
    EXPECT_EQ(value->GetDouble(), 1.5);
    EXPECT_EQ(MakeWide(number, u"-2")->GetDouble(), -2.0);
    ExpectFailure([&] { Make(number, "x"); }, {INVALID_VALUE_OF_TYPE, "x", "double"});
    ExpectFailure([&] { MakeWide(number, u""); }, {INVALID_VALUE_OF_TYPE, "", "double"});
}

TEST_F(MakeVarValue, MakesADateTimeOfANumber) {
    dateTime.SetDateTimeType(ScoreDictVar::DT_DAYS_SINCE_1960);
    for (const auto& value : {Make(dateTime, "0"), MakeWide(dateTime, u"0")}) {
        ASSERT_EQ(value->GetType(), ScoreValue::DATETIME_VALUE);
        EXPECT_TRUE(*value == DateTimeValue(-315619200.0, DateTimeValue::VAL_DATE));
    }
    ExpectFailure([&] { Make(dateTime, "1960-01-01"); }, {INVALID_VALUE_OF_TYPE, "1960-01-01", "double"});
}

TEST_F(MakeVarValue, GivesNullForOtherTypesWithoutAFailure) {
    for (int type : {2, 3, 5}) {
        const DictVar var("v", static_cast<ScoreDictVar::VariableType>(type));
        EXPECT_EQ(Make(var, "x"), nullptr);
        EXPECT_EQ(MakeWide(var, u"x"), nullptr);
    }
}

} // namespace
