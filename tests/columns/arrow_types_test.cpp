#include "columns/support/echo.h"
#include "support/faults/failure.h"
#include "support/rows.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace veltrane::tests;
using veltrane::Document;

/// Every type of a column in every type of field that takes it.
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
using Cells = std::vector<std::string>;

/// A column and what its field gets: numbers as the field keeps them come back in a result of type double.
struct TypeRow {
    const char* name;
    const char* field;
    TestColumn column;
    Cells cells;
};

void PrintTo(const TypeRow& row, std::ostream* out) {
    *out << row.name;
}

class ColumnType : public testing::TestWithParam<TypeRow> {};

TEST_P(ColumnType, ComesAs) {
    const TypeRow& row = GetParam();
    const Document document = Echo(FieldText("x", row.field));
    TestBatch batch({row.column});
    TestResults results;
    Score(document, batch, results);
    EXPECT_EQ(results.Cells("x"), row.cells);
    EXPECT_EQ(batch.released, 1);
    EXPECT_EQ(batch.array.release, nullptr);
    EXPECT_NE(batch.schema.release, nullptr);
}

TestColumn Halves(const std::vector<std::uint16_t>& bits) {
    return Numbers<std::uint16_t>("x", "e", bits);
}

const TestTexts kTexts{"red",
                       std::nullopt,
                       "",
                       "a long text of many bytes",
                       "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80",
                       "another one that is long"};
const Cells kTextCells{
    "red", "null", "", "a long text of many bytes", "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80", "another one that is long"};

INSTANTIATE_TEST_SUITE_P(
    Numbers, ColumnType,
    testing::Values(
        TypeRow{"Int8",
                "double",
                Numbers<std::int8_t>("x", "c", {-128, 127, 3}, {true, true, false}),
                {"-128", "127", "null"}},
        TypeRow{"UInt8", "double", Numbers<std::uint8_t>("x", "C", {255, 0}), {"255", "0"}},
        TypeRow{"Int16", "double", Numbers<std::int16_t>("x", "s", {-32768, 32767}), {"-32768", "32767"}},
        TypeRow{"UInt16", "double", Numbers<std::uint16_t>("x", "S", {65535}), {"65535"}},
        TypeRow{"Int32",
                "double",
                Numbers<std::int32_t>("x", "i", {-2147483647 - 1, 5}, {true, true}),
                {"-2147483648", "5"}},
        TypeRow{"UInt32", "double", Numbers<std::uint32_t>("x", "I", {4294967295U}), {"4294967295"}},
        TypeRow{"Int64BeyondDoublesIsTheNearest",
                "double",
                Numbers<std::int64_t>("x", "l", {9007199254740993, -1, std::numeric_limits<std::int64_t>::max()}),
                {"9007199254740992", "-1", "9223372036854775808"}},
        TypeRow{
            "UInt64", "double", Numbers<std::uint64_t>("x", "L", {18446744073709551615U}), {"18446744073709551616"}},
        TypeRow{"Float16",
                "double",
                Halves({0x3C00, 0xC000, 0x7C00, 0xFC00, 0x7E00, 0x0001, 0x03FF, 0x0400, 0x7BFF, 0x8000}),
                {"1", "-2", "inf", "-inf", "null", Digits(std::ldexp(1, -24)), Digits(std::ldexp(1023, -24)),
                 Digits(std::ldexp(1, -14)), "65504", "-0"}},
        TypeRow{"Float32", "double", Numbers<float>("x", "f", {0.1F, -0.0F}), {"0.10000000149011612", "-0"}},
        TypeRow{"Float64InPlace", "double", Doubles("x", {0.1, -0.0, kNaN, kInfinity}), {"0.1", "-0", "null", "inf"}},
        TypeRow{"Float64WithNulls", "float", Doubles("x", {0.1, 7, 3}, {true, false, true}), {"0.1", "null", "3"}},
        TypeRow{"Booleans", "double", Truths("x", {true, false, true}, {true, true, false}), {"1", "0", "null"}},
        TypeRow{"Nulls", "double", Nothing("x", 2), {"null", "null"}},
        TypeRow{
            "Dictionary",
            "double",
            Encoded(Numbers<std::int16_t>("x", "s", {1, 0, 1, 0}, {true, true, true, false}), Doubles("", {2.5, -1})),
            {"-1", "2.5", "-1", "null"}},
        TypeRow{"WholeNumbers", "integer", Numbers<std::int32_t>("x", "i", {7, -7}), {"7", "-7"}},
        TypeRow{"Count", "timeSeconds", Doubles("x", {7.5}), {"7.5"}}),
    NameOfRow());

INSTANTIATE_TEST_SUITE_P(
    Texts, ColumnType,
    testing::Values(
        TypeRow{"Utf8", "string", Texts("x", "u", kTexts), kTextCells},
        TypeRow{"LargeUtf8", "string", Texts("x", "U", kTexts), kTextCells},
        TypeRow{"Utf8View", "string", Texts("x", "vu", kTexts), kTextCells},
        TypeRow{"Nulls", "string", Nothing("x", 1), {"null"}},
        TypeRow{
            "Booleans", "string", Truths("x", {true, false, false}, {true, true, false}), {"true", "false", "null"}},
        TypeRow{"Dictionary",
                "string",
                Encoded(Numbers<std::uint8_t>("x", "C", {5, 0, 1, 2}), Texts("", "u", kTexts)),
                {"another one that is long", "red", "null", ""}},
        TypeRow{"DictionaryInPlace",
                "string",
                Encoded(Numbers<std::int32_t>("x", "i", {1, 0}), Texts("", "U", {"red", "blue"})),
                {"blue", "red"}},
        TypeRow{"DictionaryWithNullCodes",
                "string",
                Encoded(Numbers<std::int64_t>("x", "l", {-1, 1}, {false, true}), Texts("", "vu", {"red", "blue"})),
                {"null", "blue"}},
        TypeRow{"DictionaryWithoutEntries",
                "string",
                Encoded(Numbers<std::int32_t>("x", "i", {0}, {false}), Texts("", "u", {})),
                {"null"}},
        TypeRow{"DictionaryOfBooleans",
                "string",
                Encoded(Numbers<std::int32_t>("x", "i", {1, 0}), Truths("", {true, false})),
                {"false", "true"}}),
    NameOfRow());

/// 2024-02-29 is day 19782; 1969-12-31 is day -1.
constexpr std::int64_t kDay = 86400;
constexpr std::int64_t kLeapDay = 19782;

INSTANTIATE_TEST_SUITE_P(
    Moments, ColumnType,
    testing::Values(
        TypeRow{"Date32",
                "date",
                Numbers<std::int32_t>("x", "tdD", {19782, -1, 0}, {true, true, false}),
                {"19782", "-1", "null"}},
        TypeRow{"Date64", "date", Numbers<std::int64_t>("x", "tdm", {kLeapDay * kDay * 1000, -1}), {"19782", "-1"}},
        TypeRow{
            "TimestampAsDate", "date", Numbers<std::int64_t>("x", "tss:", {kLeapDay * kDay + 5, -5}), {"19782", "-1"}},
        TypeRow{"Time32InSeconds", "time", Numbers<std::int32_t>("x", "tts", {3600}), {"3600000000"}},
        TypeRow{"Time32InMilliseconds", "time", Numbers<std::int32_t>("x", "ttm", {1500}), {"1500000"}},
        TypeRow{"Time64InMicroseconds", "time", Numbers<std::int64_t>("x", "ttu", {1500001}), {"1500001"}},
        TypeRow{"Time64InNanoseconds", "time", Numbers<std::int64_t>("x", "ttn", {1500001999}), {"1500002"}},
        TypeRow{"TimestampInSeconds",
                "dateTime",
                Numbers<std::int64_t>("x", "tss:", {kDay, -1}),
                {"86400000000", "-1000000"}},
        TypeRow{"TimestampInMillisecondsOfAZone",
                "dateTime",
                Numbers<std::int64_t>("x", "tsm:Europe/Paris", {1001}),
                {"1001000"}},
        TypeRow{"TimestampInMicroseconds", "dateTime", Numbers<std::int64_t>("x", "tsu:UTC", {-1}), {"-1"}},
        TypeRow{"TimestampInNanoseconds",
                "dateTime",
                Numbers<std::int64_t>("x", "tsn:", {1709164800123456789, -1700}),
                {"1709164800123457", "-2"}},
        TypeRow{"DateAsDateTime", "dateTime", Numbers<std::int32_t>("x", "tdD", {-1}), {"-86400000000"}},
        TypeRow{"DaysSince0", "dateDaysSince[0]", Numbers<std::int32_t>("x", "tdD", {0}), {"719528"}},
        TypeRow{"DaysSince1960", "dateDaysSince[1960]", Numbers<std::int32_t>("x", "tdD", {0}), {"3653"}},
        TypeRow{"DaysSince1970", "dateDaysSince[1970]", Numbers<std::int64_t>("x", "tsu:", {-1}), {"-1"}},
        TypeRow{"DaysSince1980", "dateDaysSince[1980]", Numbers<std::int32_t>("x", "tdD", {3652}), {"0"}},
        TypeRow{"DaysAsNumbers", "dateDaysSince[1980]", Numbers<std::int32_t>("x", "i", {5}), {"5"}},
        TypeRow{
            "SecondsSince0", "dateTimeSecondsSince[0]", Numbers<std::int64_t>("x", "tsm:", {500}), {"62167219200.5"}},
        TypeRow{
            "SecondsSince1960", "dateTimeSecondsSince[1960]", Numbers<std::int32_t>("x", "tdD", {0}), {"315619200"}},
        TypeRow{"SecondsSince1970",
                "dateTimeSecondsSince[1970]",
                Numbers<std::int64_t>("x", "tsn:", {1500000000}),
                {"1.5"}},
        TypeRow{
            "SecondsSince1980", "dateTimeSecondsSince[1980]", Numbers<std::int64_t>("x", "tss:", {0}), {"-315532800"}},
        TypeRow{"SecondsOfADay", "timeSeconds", Numbers<std::int64_t>("x", "ttu", {1500000}), {"1.5"}}),
    NameOfRow());

TEST(ColumnOfBooleans, SetsAsideWhatIsNeither) {
    const Document document = Echo(FieldText("x", "boolean"));
    TestBatch batch({Doubles("x", {1, 0, 2.5, kNaN, -1})});
    TestResults results;
    Score(document, batch, results);
    EXPECT_EQ(results.Cells("x"), (Cells{"true", "false", "null", "null", "null"}));
    EXPECT_EQ(results.Cells("x unreadable"), (Cells{"null", "null", "2.5", "null", "-1"}));
}

TEST(ColumnOfBooleans, TakesTruths) {
    const Document document = Echo(FieldText("x", "boolean"));
    TestBatch batch({Truths("x", {true, false, true}, {true, true, false})});
    TestResults results;
    Score(document, batch, results);
    EXPECT_EQ(results.Cells("x"), (Cells{"true", "false", "null"}));
}

TEST(ColumnOfTexts, OfAnotherEncodingIsOfTheBinaryTypes) {
    veltrane::DocumentOptions options = TestOptions();
    options.encoding = "ISO-8859-1";
    const Document document = Document::OfBytes(EchoText(FieldText("x", "string")), options);
    for (const char* format : {"z", "Z", "vz"}) {
        TestBatch batch({Texts("x", format, {"\xE4", std::nullopt, "a text of more than twelve \xFC"})});
        TestResults results;
        Score(document, batch, results);
        EXPECT_EQ(results.FormatOf("x"), "z");
        EXPECT_EQ(results.Cells("x"), (Cells{"\xE4", "null", "a text of more than twelve \xFC"}));
    }
    TestBatch batch({Texts("x", "u", {"a"})});
    TestResults results;
    ExpectFailure([&] { Score(document, batch, results); }, {UNFIT_COLUMN_TYPE, "x", "u", "string"});
}

struct UnfitType {
    const char* name;
    const char* field;
    const char* format;
};

void PrintTo(const UnfitType& row, std::ostream* out) {
    *out << row.field << " " << row.format;
}

class UnfitColumnType : public testing::TestWithParam<UnfitType> {};

TEST_P(UnfitColumnType, IsToldByColumn) {
    const Document document = Echo(FieldText("x", GetParam().field));
    TestBatch batch({Nothing("x", 1)});
    batch.ChildSchema(0).format = GetParam().format;
    TestResults results;
    ExpectFailure([&] { Score(document, batch, results); },
                  {UNFIT_COLUMN_TYPE, "x", GetParam().format, GetParam().field});
    EXPECT_EQ(batch.released, 1);
    EXPECT_EQ(results.array.release, nullptr);
    EXPECT_EQ(results.schema.release, nullptr);
}

INSTANTIATE_TEST_SUITE_P(
    Each, UnfitColumnType,
    testing::Values(UnfitType{"TextForANumber", "double", "u"}, UnfitType{"NumberForAText", "string", "g"},
                    UnfitType{"TextForADate", "date", "u"}, UnfitType{"TimeForADate", "date", "ttu"},
                    UnfitType{"DateForATime", "time", "tdD"}, UnfitType{"NumberForADate", "date", "l"},
                    UnfitType{"DateForANumber", "integer", "tdD"}, UnfitType{"BytesForAText", "string", "z"},
                    UnfitType{"Decimal", "double", "d:10,2"}, UnfitType{"Duration", "timeSeconds", "tDs"},
                    UnfitType{"Interval", "date", "tiM"}, UnfitType{"FixedBytes", "string", "w:4"},
                    UnfitType{"List", "double", "+l"}, UnfitType{"Struct", "double", "+s"},
                    UnfitType{"RunEndEncoded", "double", "+r"},
                    UnfitType{"TimestampWithoutItsColon", "dateTime", "tss"}, UnfitType{"Empty", "double", ""}),
    NameOfRow());

TEST(UnfitColumnTypes, AreThoseOfDictionariesToo) {
    const Document document = Echo(FieldText("x", "double"));
    TestResults results;
    TestBatch texts({Encoded(Numbers<std::int8_t>("x", "c", {0}), Texts("", "u", {"1"}))});
    ExpectFailure([&] { Score(document, texts, results); }, {UNFIT_COLUMN_TYPE, "x", "u", "double"});
    TestBatch codes({Encoded(Doubles("x", {0}), Doubles("", {1}))});
    ExpectFailure([&] { Score(document, codes, results); }, {UNFIT_COLUMN_TYPE, "x", "g", "double"});
    TestBatch nested(
        {Encoded(Numbers<std::int8_t>("x", "c", {0}), Encoded(Numbers<std::int8_t>("", "c", {0}), Doubles("", {1})))});
    ExpectFailure([&] { Score(document, nested, results); }, {UNFIT_COLUMN_TYPE, "x", "c", "double"});
    TestBatch none({Doubles("x", {1})});
    none.ChildSchema(0).format = nullptr;
    ExpectFailure([&] { Score(document, none, results); }, {UNFIT_COLUMN_TYPE, "x", "", "double"});
}

} // namespace
