#include "commands/verification_report.h"
#include "support/foreign_value.h"
#include "tools/parts/string_sink.h"

#include <MCVeltrane_900/DateTimeValue.h>
#include <MCVeltrane_900/StringValue.h>

#include <gtest/gtest.h>

namespace veltrane::host {
namespace {

using namespace MCVeltrane_900;
using veltrane::tests::ForeignValue;

/// A value's cell in a row that has another one behind it.
std::string Cell(const ScoreValue* value) {
    const std::string row = RowOf({value, nullptr});
    return row.substr(0, row.find(",\n"));
}

TEST(ResultValue, IsWrittenByItsKind) {
    const NumericValue number(1.5);
    const StringValue text("some, text");
    const DateTimeValue date(86400.0, DateTimeValue::VAL_DATE);
    EXPECT_EQ(Cell(&number), "1.5");
    EXPECT_EQ(Cell(&text), "\"some, text\"");
    EXPECT_EQ(Cell(&date), "1970-01-02");
    EXPECT_EQ(Cell(nullptr), "");
}

// A plug-in may give values of its own classes, which are known by their interface alone.
TEST(ResultValue, OfAForeignClassIsWrittenThroughItsInterface) {
    const ForeignValue number(ScoreValue::NUMERIC_VALUE, 1.5);
    const ForeignValue text(ScoreValue::STRING_VALUE, 0.0, 't');
    const ForeignValue date(ScoreValue::DATETIME_VALUE, 86400.0, 'd');
    EXPECT_EQ(Cell(&number), "1.5");
    EXPECT_EQ(Cell(&text), "t");
    EXPECT_EQ(Cell(&date), "d");
}

TEST(VerifiedDateTime, OfAForeignClassIsComparedByItsText) {
    const ForeignValue date(ScoreValue::DATETIME_VALUE, 86400.0, 'd');
    VerifiedField field(veltrane_kit::VerificationField{});
    field.Compare("d", &date);
    EXPECT_TRUE(field.AgreesThroughout());
    field.Compare("1970-01-02", &date);
    EXPECT_FALSE(field.AgreesThroughout());
}

} // namespace
} // namespace veltrane::host
