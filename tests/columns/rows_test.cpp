#include "columns/support/echo.h"
#include "support/faults/failure.h"
#include "support/rows.h"

#include <MCScore/MCStatus.h>
#include <MCVeltrane_900/CaseRecord.h>
#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/ModelFactory.h>
#include <MCVeltrane_900/NumericValue.h>
#include <MCVeltrane_900/ScoreModel.h>
#include <MCVeltrane_900/ScoreResult.h>
#include <MCVeltrane_900/ScoreResultField.h>
#include <MCVeltrane_900/StringValue.h>

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <ostream>
#include <sstream>

using namespace veltrane::tests;
using veltrane::Document;
using Cells = std::vector<std::string>;

/// Models whose plug-in scores case by case alone.
namespace {

/// Output fields of the plug-in, for the fields of a document.
std::string Output(const std::string& name, const std::string& type) {
    return "<ResultField name='" + name + "' optype='" + (type == "string" ? "categorical" : "continuous") +
           "' dataType='" + type + "' feature='predictedValue'/>";
}

const char* const kFields[][2] = {{"x", "double"}, {"t", "string"},   {"d", "date"},
                                  {"h", "time"},   {"m", "dateTime"}, {"n", "dateDaysSince[1960]"}};

std::string RowsText(const std::string& attributes, bool hasOutput = true) {
    std::string fields;
    std::string output;
    for (const auto& [name, type] : kFields) {
        fields += FieldText(name, type);
        output += Output(name, type) + Output(std::string("seen ") + name, "string");
    }
    return "<PMML version='4.4'><DataDictionary numberOfFields='6'>" + fields + "</DataDictionary><RowsModel " +
           attributes + ">" + (hasOutput ? output : "") + "</RowsModel></PMML>";
}

Document Rows(const std::string& attributes = "", bool hasOutput = true) {
    return Document::OfBytes(RowsText(attributes, hasOutput), TestOptions());
}

std::vector<TestColumn> SomeRows() {
    return {Doubles("x", {0.5, NAN, 3, -1}),
            Texts("t", "u", {"red", std::nullopt, "", "blue "}),
            Numbers<std::int32_t>("d", "tdD", {19782, 0, -1, 5}, {true, false, true, true}),
            Numbers<std::int64_t>("h", "ttu", {3600000000, 1, 0, 2}, {true, true, false, true}),
            Numbers<std::int64_t>("m", "tss:", {86400, -1, 0, 7}, {true, true, false, true}),
            Numbers<std::int32_t>("n", "i", {4000, 1, 0, 7}, {true, true, false, true})};
}

TEST(RowScorer, TellsItsFields) {
    const Document document = Rows();
    ASSERT_EQ(document.Inputs().size(), std::size(kFields));
    EXPECT_EQ(document.Inputs()[0].name, "x");
    EXPECT_TRUE(document.Inputs()[0].isNeeded);
    EXPECT_FALSE(document.Inputs()[1].isNeeded);
    EXPECT_EQ(document.Inputs()[5].type, veltrane::DataType::DATE_DAYS_SINCE_1960);
    EXPECT_EQ(document.Outputs()[0].name, "prediction");
    EXPECT_EQ(document.Outputs()[1].name, "x");
    EXPECT_EQ(Rows("target='t'").Outputs()[0].name, "predicted t");
    EXPECT_EQ(Rows("target='t'", false).Outputs()[0].name, "t");
    EXPECT_FALSE(document.NeedsOrder());
}

TEST(RowScorer, GivesRecordsTheirValuesAndColumnsTheirResults) {
    const Document document = Rows();
    TestBatch batch(SomeRows());
    TestResults results;
    Score(document, batch, results);
    EXPECT_EQ(results.Cells("prediction"), (Cells{"1", "2", "3", "null"}));
    EXPECT_EQ(results.Cells("x"), (Cells{"0.5", "null", "3", "null"}));
    EXPECT_EQ(results.Cells("t"), (Cells{"red", "null", "null", "null"}));
    EXPECT_EQ(results.Cells("seen t"), (Cells{"text red,3", "none", "text ,0", "null"}));
    EXPECT_EQ(results.Cells("d"), (Cells{"19782", "null", "-1", "null"}));
    EXPECT_EQ(results.Cells("seen d"),
              (Cells{"moment 0,1709164800.000000", "moment 2,Undefined", "moment 0,-86400.000000", "null"}));
    EXPECT_EQ(results.Cells("h"), (Cells{"3600", "1e-06", "null", "null"}));
    EXPECT_EQ(results.Cells("m"), (Cells{"86400", "-1", "null", "null"}));
    EXPECT_EQ(results.Cells("n"), (Cells{"347", "-3652", "null", "null"}));
    EXPECT_EQ(results.FormatOf("n"), "g");
}

TEST(RowScorer, ReadsTextsOfDictionariesAndTruths) {
    const Document document = Rows();
    TestBatch batch({Doubles("x", {1, 2, 3}), Encoded(Numbers<std::int8_t>("t", "c", {1, 0, 0}, {true, true, false}),
                                                      Texts("", "u", {std::nullopt, "red"}))});
    TestResults results;
    Score(document, batch, results);
    EXPECT_EQ(results.Cells("seen t"), (Cells{"text red,3", "none", "none"}));
    TestBatch truths({Doubles("x", {1}), Truths("t", {true})});
    TestResults more;
    Score(document, truths, more);
    EXPECT_EQ(more.Cells("seen t"), (Cells{"text true,4"}));
}

TEST(RowScorer, TakesARowThatThrowsForOneThatCannotBeScored) {
    const Document document = Rows();
    TestBatch batch({Doubles("x", {1, 1000, 2})});
    TestResults results;
    Score(document, batch, results);
    EXPECT_EQ(results.Cells("prediction"), (Cells{"1", "null", "2"}));
}

TEST(RowScorer, HasAModelForEachState) {
    const Document document = Rows();
    for (int round = 0; round < 3; ++round) {
        TestBatch batch({Doubles("x", {1, 2})});
        TestResults results;
        Score(document, batch, results);
        EXPECT_EQ(results.Cells("prediction"), (Cells{"1", "2"}));
    }
}

TEST(RowScorer, RefusesModelsWithoutResults) {
    ExpectFailure([] { Rows("fault='no result'"); }, {CANNOT_BUILD_MODEL});
    ExpectFailure([] { Rows("fault='a lie'"); }, {CANNOT_BUILD_MODEL});
}

TEST(RowScorer, ScoresABlockLikeCaseByCase) {
    const Document document = Rows();
    const veltrane::ColumnScorer& scorer = document.Scorer();
    const auto state = scorer.NewState();
    const double numbers[] = {1, NAN};
    const std::string_view texts[] = {"a", {}};
    const veltrane::UnreadableCell unreadable[] = {{1, "abc"}};
    std::vector<veltrane::InputColumn> columns(scorer.Inputs().size());
    columns[0].numbers = numbers;
    columns[0].unreadable = unreadable;
    columns[0].unreadableCount = 1;
    columns[1].texts = texts;
    std::vector<veltrane::OutputColumn> outputs(scorer.Outputs().size());
    std::string_view seen[2];
    std::uint8_t unscored[2] = {9, 9};
    outputs[2].texts = seen;
    scorer.Score({2, columns.data()}, *state, {outputs.data(), unscored});
    EXPECT_EQ(seen[0], "number 1");
    EXPECT_EQ(seen[1], "text abc,3");
    EXPECT_EQ(unscored[0], 0);
    EXPECT_EQ(unscored[1], 0);
}

TEST(RowScorer, LeavesUnreadableCellsOutWhereAModelDoesNotKnowThem) {
    const Document document = Rows("fault='knows no option'");
    const veltrane::ColumnScorer& scorer = document.Scorer();
    const auto state = scorer.NewState();
    const double numbers[] = {NAN};
    const veltrane::UnreadableCell unreadable[] = {{0, "abc"}};
    std::vector<veltrane::InputColumn> columns(scorer.Inputs().size());
    columns[0].numbers = numbers;
    columns[0].unreadable = unreadable;
    columns[0].unreadableCount = 1;
    std::vector<veltrane::OutputColumn> outputs(scorer.Outputs().size());
    std::string_view seen[1];
    outputs[2].texts = seen;
    scorer.Score({1, columns.data()}, *state, {outputs.data(), nullptr});
    EXPECT_EQ(seen[0], "number Undefined");
}

/// A value as a host makes it, of the number or the text of a row.
std::unique_ptr<ScoreValue> HostValue(const std::string& type, double number, const std::optional<std::string>& text) {
    if (type == "string") {
        return text ? std::make_unique<StringValue>(*text) : nullptr;
    }
    if (type == "double") {
        return std::make_unique<NumericValue>(std::isnan(number) ? NumericValue::GetSysmisValue() : number);
    }
    if (std::isnan(number)) {
        return std::make_unique<DateTimeValue>();
    }
    if (type == "date") {
        return std::make_unique<DateTimeValue>(number * DateTimeValue::SECONDS_PER_DAY, DateTimeValue::VAL_DATE);
    }
    return std::make_unique<DateTimeValue>(number, type == "time"       ? ScoreDictVar::DT_TIME
                                                   : type == "dateTime" ? ScoreDictVar::DT_DATETIME
                                                                        : ScoreDictVar::DT_DAYS_SINCE_1960);
}

/// The same rows by ScoreModel::Score: every field as the plug-in saw it agrees.
TEST(RowScorer, AgreesWithTheModelItself) {
    constexpr std::size_t kRows = 1500;
    std::vector<double> numbers;
    std::vector<std::int32_t> days;
    std::vector<std::int64_t> seconds;
    TestTexts texts;
    for (std::size_t row = 0; row < kRows; ++row) {
        numbers.push_back(row % 11 == 0 ? NAN : static_cast<double>(row) / 7 - 20);
        days.push_back(static_cast<std::int32_t>(row) * 37 - 9000);
        seconds.push_back(static_cast<std::int64_t>(row) * 1234567 - 99999999);
        texts.push_back(row % 13 == 0 ? std::nullopt : std::optional(std::to_string(row * row)));
    }
    const Document document = Rows();
    TestBatch batch({Doubles("x", numbers), Texts("t", "vu", texts), Numbers("d", "tdD", days),
                     Numbers("h", "tts", days), Numbers("m", "tss:", seconds), Numbers("n", "i", days)});
    TestResults results;
    Score(document, batch, results);

    std::istringstream in(RowsText(""));
    const std::unique_ptr<ScoreModel> model(ModelFactory::MakeModelFromXML(in, {"RowsModel"}, "UTF-8"));
    const std::unique_ptr<ScoreResult> result(model->CreateResult());
    for (std::size_t row = 0; row < kRows; ++row) {
        CaseRecord record;
        for (const auto& [name, type] : kFields) {
            const double number = std::string(name) == "x"   ? numbers[row]
                                  : std::string(name) == "m" ? static_cast<double>(seconds[row])
                                                             : static_cast<double>(days[row]);
            record.Add(name, HostValue(type, number, texts[row]).release());
        }
        const bool isScored = !model->Score(&record, result.get()).IsError();
        ASSERT_EQ(results.Cells("prediction")[row], isScored ? std::to_string(row + 1) : "null");
        for (const auto& [name, type] : kFields) {
            const std::string seen = std::string("seen ") + name;
            const ScoreValue* value = result->GetResultFields()->GetResultValue(seen);
            ASSERT_EQ(results.Cells(seen)[row], isScored ? value->GetString() : "null") << row << " " << name;
        }
        row += 48; // all cells are made texts for each
    }
}

/// A field of one of the types of moments, as a column of another.
struct MomentRow {
    const char* name;
    const char* type;
    TestColumn column; ///< its rows are a moment, and a null
    const char* seen;  ///< the kind of the moment and its seconds from 1970, or from midnight
    const char* given; ///< the result, in the format of the type
    const char* format;
};

void PrintTo(const MomentRow& row, std::ostream* out) {
    *out << row.name;
}

class MomentsInRows : public testing::TestWithParam<MomentRow> {};

/// 2024-02-29 is the day 19782 from 1970 on.
constexpr std::int64_t kSix = 19782 * std::int64_t{86400} + 6 * 3600;

TestColumn DayColumn() {
    return Numbers<std::int32_t>("d", "tdD", {19782, 0}, {true, false});
}
TestColumn SixColumn() {
    return Numbers<std::int64_t>("d", "tsm:", {kSix * 1000, 0}, {true, false});
}
TestColumn HourColumn() {
    return Numbers<std::int32_t>("d", "tts", {6 * 3600, 0}, {true, false});
}

TEST_P(MomentsInRows, AreThatOfTheirColumn) {
    const MomentRow& row = GetParam();
    const std::string text = "<PMML version='4.4'><DataDictionary numberOfFields='2'>" + FieldText("x", "double") +
                             FieldText("d", row.type) + "</DataDictionary><RowsModel typed='yes'>" +
                             Output("d", row.type) + Output("seen d", "string") + "</RowsModel></PMML>";
    const Document document = Document::OfBytes(text, TestOptions());
    TestBatch batch({Doubles("x", {1, 2}), row.column});
    TestResults results;
    Score(document, batch, results);
    EXPECT_EQ(results.Cells("seen d"), (Cells{std::string("moment ") + row.seen, "moment 2,Undefined"}));
    EXPECT_EQ(results.FormatOf("d"), row.format);
    EXPECT_EQ(results.Cells("d"), (Cells{row.given, "null"}));
}

INSTANTIATE_TEST_SUITE_P(
    Each, MomentsInRows,
    testing::Values(
        MomentRow{"DateOfDays", "date", DayColumn(), "0,1709164800.000000", "19782", "tdD"},
        MomentRow{"DateOfATimestamp", "date", SixColumn(), "0,1709164800.000000", "19782", "tdD"},
        MomentRow{"DateTimeOfDays", "dateTime", DayColumn(), "2,1709164800.000000", "1709164800000000", "tsu:"},
        MomentRow{"DateTimeOfATimestamp", "dateTime", SixColumn(), "2,1709186400.000000", "1709186400000000", "tsu:"},
        MomentRow{"TimeOfSeconds", "time", HourColumn(), "1,21600.000000", "21600000000", "ttu"},
        MomentRow{"TimeSecondsOfSeconds", "timeSeconds", HourColumn(), "1,21600.000000", "21600", "g"},
        MomentRow{"DaysFrom1960", "dateDaysSince[1960]", DayColumn(), "0,1709164800.000000", "23435", "g"},
        MomentRow{"DaysFrom1970", "dateDaysSince[1970]", SixColumn(), "0,1709164800.000000", "19782", "g"},
        MomentRow{"DaysFrom1980", "dateDaysSince[1980]", DayColumn(), "0,1709164800.000000", "16130", "g"},
        MomentRow{"DaysFrom0", "dateDaysSince[0]", DayColumn(), "0,1709164800.000000", "739310", "g"},
        MomentRow{"SecondsFrom1960", "dateTimeSecondsSince[1960]", SixColumn(), "2,1709186400.000000", "2024805600",
                  "g"},
        MomentRow{"SecondsFrom1970", "dateTimeSecondsSince[1970]", DayColumn(), "2,1709164800.000000", "1709164800",
                  "g"},
        MomentRow{"SecondsFrom1980", "dateTimeSecondsSince[1980]", SixColumn(), "2,1709186400.000000", "1393653600",
                  "g"},
        MomentRow{"SecondsFrom0", "dateTimeSecondsSince[0]", SixColumn(), "2,1709186400.000000", "63876405600", "g"}),
    NameOfRow());

} // namespace
