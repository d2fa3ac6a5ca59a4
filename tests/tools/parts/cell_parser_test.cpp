#include "cases/cell_parser.h"
#include "support/rows.h"

#include <MCVeltrane_900/BaseDictionary.h>
#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/DictVar.h>
#include <MCVeltrane_900/NumericValue.h>

#include <gtest/gtest.h>

#include <bit>
#include <limits>

namespace veltrane::host {
namespace {

using namespace MCVeltrane_900;

class ReadableNumbers : public testing::TestWithParam<const char*> {};

TEST_P(ReadableNumbers, EqualWhatTheLibraryReads) {
    double number = -1;
    ASSERT_EQ(ReadNumber(GetParam(), number), nullptr);
    const double expected = NumericValue(std::string(GetParam())).GetDouble();
    EXPECT_EQ(std::bit_cast<std::uint64_t>(number), std::bit_cast<std::uint64_t>(expected)) << GetParam();
}

INSTANTIATE_TEST_SUITE_P(
    All, ReadableNumbers,
    testing::Values("0", "-0", "+0", "1", "+1", "-1", "17", "007", "0.1", ".5", "-.5", "+.5", "5.", "1e5", "1E5",
                    "-1.5E+3", "1e-5", "3.141592653589793", "0.30000000000000004", "9007199254740993",
                    "2.2250738585072014e-308", "4.9e-324", "1e-310", "1.7976931348623157e308",
                    "123456789012345678901234567890",
                    "0.000000000000000000000000000000000000000000000000000000000001234567890123456789", "1e-400",
                    "1e999", "100000000000000000000000000000e-20"));

struct BadNumber {
    const char* name;
    std::string text;
    const char* problem = "is not a number";
};

void PrintTo(const BadNumber& c, std::ostream* out) {
    *out << c.name;
}

class UnreadableNumbers : public testing::TestWithParam<BadNumber> {};

TEST_P(UnreadableNumbers, AreToldAndLeaveTheNumber) {
    double number = -1;
    EXPECT_STREQ(ReadNumber(GetParam().text, number), GetParam().problem);
    EXPECT_EQ(number, -1);
}

INSTANTIATE_TEST_SUITE_P(All, UnreadableNumbers,
                         testing::Values(BadNumber{"Empty", ""}, BadNumber{"Word", "abc"},
                                         BadNumber{"TextBehind", "12abc"}, BadNumber{"TwoNumbers", "1 2"},
                                         BadNumber{"DecimalComma", "1,5"}, BadNumber{"ThousandsPoint", "1.000.0"},
                                         BadNumber{"Infinity", "inf"}, BadNumber{"MinusInfinity", "-inf"},
                                         BadNumber{"NotANumber", "nan"}, BadNumber{"NotAnything", "NaN"},
                                         BadNumber{"Hexadecimal", "0x10"}, BadNumber{"Sign", "-"},
                                         BadNumber{"PlusMinus", "+-1"}, BadNumber{"TwoSigns", "--1"},
                                         BadNumber{"TwoPluses", "++1"}, BadNumber{"Point", "."},
                                         BadNumber{"SignAndPoint", "-."}, BadNumber{"OpenExponent", "1e"},
                                         BadNumber{"OpenSignedExponent", "1e+"}, BadNumber{"ExponentAlone", "e5"},
                                         BadNumber{"Blank", " 1"}, BadNumber{"Nul", std::string("1\0", 2)},
                                         BadNumber{"BelowTheRange", "-1e999", "is out of the range of numbers"}),
                         veltrane::tests::NameOfRow());

class CellParserFields : public testing::Test {
protected:
    CellParserFields() {
        Add("number", ScoreDictVar::kNUMERIC_VAR);
        Add("text", ScoreDictVar::STRING_VAR);
        Add("date", ScoreDictVar::DATETIME_VAR, ScoreDictVar::DT_DATE);
        Add("time", ScoreDictVar::DATETIME_VAR, ScoreDictVar::DT_TIME);
        Add("moment", ScoreDictVar::DATETIME_VAR, ScoreDictVar::DT_DATETIME);
        Add("days", ScoreDictVar::DATETIME_VAR, ScoreDictVar::DT_DAYS_SINCE_1960);
    }

    void Add(const std::string& name, ScoreDictVar::VariableType type,
             ScoreDictVar::DateTimeType dateTimeType = ScoreDictVar::DT_NONE) {
        auto variable = std::make_unique<DictVar>(name, type);
        variable->SetDateTimeType(dateTimeType);
        dictionary.AddVar(name, variable.release());
    }

    /// Reads a cell into a fresh case and gives what the case then holds for the field.
    const ScoreValue* Read(const std::string& name, std::string_view cell, const char* problem = nullptr) {
        CellParser parser({"NA", "-9"});
        row = std::make_unique<CaseRow>(dictionary);
        for (const CaseRow::Field& field : row->Fields()) {
            if (field.name == name) {
                EXPECT_STREQ(parser.Read(cell, field, *row), problem);
            }
        }
        return row->Get(name);
    }

    double Seconds(const std::string& name, std::string_view cell) {
        return static_cast<const DateTimeValue*>(Read(name, cell))->GetDoubleValue(ScoreDictVar::DT_DATETIME);
    }

    bool Missing(const std::string& name, std::string_view cell, const char* problem = nullptr) {
        return dictionary.GetVar(name)->IsMissingValue(Read(name, cell, problem));
    }

    BaseDictionary dictionary;
    std::unique_ptr<CaseRow> row;
};

TEST_F(CellParserFields, ReadsNumbersWithinBlanks) {
    EXPECT_EQ(Read("number", "17.5")->GetDouble(), 17.5);
    EXPECT_EQ(Read("number", " \t17.5\t ")->GetDouble(), 17.5);
    EXPECT_EQ(Read("number", "17.5")->GetType(), ScoreValue::NUMERIC_VALUE);
}

TEST_F(CellParserFields, TakesATextAsItStands) {
    EXPECT_EQ(Read("text", "  a b ")->GetString(), "  a b ");
    EXPECT_EQ(Read("text", " ")->GetString(), " ");
    EXPECT_EQ(Read("text", " NA")->GetString(), " NA");
    EXPECT_EQ(Read("text", "17")->GetType(), ScoreValue::STRING_VALUE);
}

TEST_F(CellParserFields, TakesWhatAFieldListsForMissingWhereItCannotBeRead) {
    CaseRow listing(dictionary);
    listing.KeepUnreadable();
    listing.SetMissingTexts({{"number", {"none", "7"}}, {"date", {"never"}}, {"text", {"no text"}}});
    CellParser parser({});
    const auto read = [&](const std::string& name, std::string_view cell) -> const ScoreValue* {
        for (const CaseRow::Field& field : listing.Fields()) {
            if (field.name == name) {
                EXPECT_EQ(parser.Read(cell, field, listing), nullptr) << name;
            }
        }
        return listing.Get(name);
    };
    EXPECT_TRUE(read("number", " none ")->IsSystemMissingValue());
    EXPECT_EQ(read("number", "7")->GetDouble(), 7.0); // the reader of the field tells
    EXPECT_TRUE(read("date", "never")->IsSystemMissingValue());
    EXPECT_EQ(read("text", "no text")->GetString(), "no text");
}

TEST_F(CellParserFields, TakesEmptyCellsAndTokensForMissing) {
    for (const char* name : {"number", "text", "date", "time", "moment", "days"}) {
        for (const char* cell : {"", "NA", "-9"}) {
            EXPECT_TRUE(Missing(name, cell)) << name << " \"" << cell << "\"";
        }
    }
}

TEST_F(CellParserFields, DropsBlanksAroundTokensExceptInTexts) {
    for (const char* name : {"number", "date", "time", "moment", "days"}) {
        EXPECT_TRUE(Missing(name, "  ")) << name;
        EXPECT_TRUE(Missing(name, " NA ")) << name;
    }
    EXPECT_FALSE(Missing("text", " NA "));
}

TEST_F(CellParserFields, TellsCellsThatCannotBeRead) {
    EXPECT_TRUE(Missing("number", "abc", "is not a number"));
    EXPECT_TRUE(Missing("number", "-1e999", "is out of the range of numbers"));
    EXPECT_TRUE(Missing("date", "2001-02-29", "is not a date"));
    EXPECT_TRUE(Missing("date", "yesterday", "is not a date"));
    EXPECT_TRUE(Missing("time", "24:00:00", "is not a time"));
    EXPECT_TRUE(Missing("time", "12:30", "is not a time"));
    EXPECT_TRUE(Missing("moment", "2001-01-01", "is not a date-time"));
    EXPECT_TRUE(Missing("moment", "2001-01-01T12:00:60", "is not a date-time"));
    EXPECT_TRUE(Missing("days", "2001-01-01", "is not a number"));
    EXPECT_TRUE(Missing("text", std::string_view("a\0b", 3), "holds a NUL character"));
    EXPECT_TRUE(Missing("number", std::string_view("1\0", 2), "holds a NUL character"));
}

TEST_F(CellParserFields, ReadsDatesInTheFieldsStorageType) {
    EXPECT_EQ(Seconds("date", "1970-01-02"), 86400);
    EXPECT_EQ(Seconds("date", " 2000-02-29 "), 951782400);
    EXPECT_EQ(Seconds("date", "1970-1-2"), 86400);
    EXPECT_EQ(Seconds("time", "12:30:01"), 45001);
    EXPECT_EQ(Seconds("moment", "1970-01-01T00:00:01"), 1);
    EXPECT_EQ(Seconds("moment", "1970-01-02 00:00:01"), 86401);
    EXPECT_EQ(Seconds("days", "0"), -315619200);
    EXPECT_EQ(Seconds("days", "3653.5"), 43200);
}

TEST_F(CellParserFields, GivesDatesTheirKind) {
    EXPECT_EQ(static_cast<const DateTimeValue*>(Read("date", "1970-01-02"))->GetDateTimeType(),
              DateTimeValue::VAL_DATE);
    EXPECT_EQ(static_cast<const DateTimeValue*>(Read("time", "00:00:02"))->GetDateTimeType(), DateTimeValue::VAL_TIME);
    EXPECT_EQ(static_cast<const DateTimeValue*>(Read("moment", "1970-01-02T00:00:00"))->GetDateTimeType(),
              DateTimeValue::VAL_DATETIME);
    EXPECT_EQ(static_cast<const DateTimeValue*>(Read("days", "1"))->GetDateTimeType(), DateTimeValue::VAL_DATE);
}

TEST_F(CellParserFields, FillsACaseOverAndOver) {
    CellParser parser({});
    CaseRow shared(dictionary);
    const CaseRow::Field& text = shared.Fields()[1];
    const CaseRow::Field& date = shared.Fields()[2];
    EXPECT_EQ(shared.Get("text"), nullptr);
    EXPECT_TRUE(shared.Get("date")->IsSystemMissingValue());
    parser.Read("first", text, shared);
    parser.Read("1970-01-02", date, shared);
    EXPECT_EQ(shared.Get("text")->GetString(), "first");
    parser.Read("", text, shared);
    parser.Read("", date, shared);
    EXPECT_EQ(shared.Get("text"), nullptr);
    EXPECT_TRUE(shared.Get("date")->IsSystemMissingValue());
    parser.Read("second", text, shared);
    parser.Read("1970-01-03", date, shared);
    EXPECT_EQ(shared.Get("text")->GetString(), "second");
    EXPECT_EQ(shared.Get("date")->GetDouble(), 2);
}

} // namespace
} // namespace veltrane::host
